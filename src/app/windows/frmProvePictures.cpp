// The main window's commands that hand pictures out: the map and the 3D picture as files and on
// paper.
#include "app/windows/Controls.h"
#include "app/windows/SurfaceView.h"
#include "app/windows/frm3D.h"
#include "app/windows/frmProve.h"
#include "export/PictureExport.h"
#include "util/AppError.h"

#include <QActionGroup>
#include <QPrintPreviewDialog>
#include <QPrinter>

using terravo::Text;

void frmProve::AddPictureEntries() {
    mnuExportMap = Named(mnuFile->addAction(QString()), "mnuExportMap");
    mnuExportMap->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    mnuExportMap->setEnabled(false);
    mnuExportVector = Named(mnuFile->addAction(QString()), "mnuExportVector");
    mnuExportVector->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D));
    mnuExportVector->setEnabled(false);
    connect(mnuExportVector, &QAction::triggered, this, &frmProve::ExportVector);
    mnuPrint = Named(mnuFile->addAction(QString()), "mnuPrint");
    mnuPrint->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    mnuPrint->setEnabled(false);
    mnuPaperSize = Named(mnuFile->addMenu(QString()), "mnuPaperSize");
    auto* sizes = new QActionGroup(mnuPaperSize);
    for (const char* name : {"A4", "A3", "A2", "A1", "A0", "Letter"}) {
        QAction* size = Named(mnuPaperSize->addAction(QLatin1String(name)), name);
        size->setCheckable(true);
        size->setChecked(sizes->actions().isEmpty());
        sizes->addAction(size);
    }
    connect(sizes, &QActionGroup::triggered, this, [this](const QAction* size) {
        pageSize_ = terravo::PaperSizeOf(size->objectName()).value_or(QPageSize::A4);
    });
    mnuWhitePaper = Named(mnuFile->addAction(QString()), "mnuWhitePaper");
    mnuWhitePaper->setCheckable(true);
    mnuWhitePaper->setChecked(true);
    connect(mnuExportMap, &QAction::triggered, this,
            [this] { ExportPicture("map", MapPicture()); });
    connect(mnuPrint, &QAction::triggered, this, [this] { PrintPicture(MapPicture()); });
}

void frmProve::SetPictureCaptions() {
    mnuExportMap->setText(Caption(state_, Text::ExportMap));
    mnuExportVector->setText(Caption(state_, Text::ExportVector));
    mnuPrint->setText(Caption(state_, Text::Print));
    mnuWhitePaper->setText(Caption(state_, Text::WhitePaper));
    mnuPaperSize->setTitle(Caption(state_, Text::PaperSize));
}

// As large as it is in the window, so that it looks the same.
terravo::Picture frmProve::MapPicture() {
    const terravo::RasterSurface& shown = picLivelli->Surface();
    return {shown.PixelWidth(), shown.PixelHeight(), picLivelli->devicePixelRatioF(),
            state_.texts[Text::PlotTitle] + " : " + session_.Points().sourceName,
            [this](terravo::DrawSurface& surface) { return session_.DrawMapOn(surface); }};
}

terravo::Paper frmProve::ChosenPaper() const {
    return mnuWhitePaper->isChecked() ? terravo::Paper::White : terravo::Paper::Black;
}

// An SVG is for the screen, so it is black as the window is; the paper is for PDF files.
void frmProve::ExportPicture(const std::string& proposedName, const terravo::Picture& picture) {
    session_.ExportPicture(proposedName, [&](const std::string& path) {
        const std::optional<terravo::PictureKind> kind = terravo::PictureKindOf(path);
        if (!kind) {
            throw terravo::AppError(terravo::ErrorNumber::kDeviceIo, path,
                                    path + ": " + state_.texts[Text::UnknownPictureKind]);
        }
        const bool onPaper = kind == terravo::PictureKind::Pdf;
        terravo::WritePicture(path, *kind, picture,
                              {onPaper ? ChosenPaper() : terravo::Paper::Black, pageSize_});
    });
}

void frmProve::PrintPicture(const terravo::Picture& picture) {
    if (session_.RefusesToExport()) {
        return;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(terravo::PageAcross(pageSize_));
    printer.setDocName(QString::fromStdString(picture.title));
    printer.setCreator(QStringLiteral("Terravo"));
    QPrintPreviewDialog preview(&printer, this);
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, [&](QPrinter* page) {
        QPainter painter(page);
        painter.setRenderHint(QPainter::Antialiasing);
        const QSize room = page->pageLayout().paintRectPixels(page->resolution()).size();
        terravo::DrawFitted(painter, QRectF({0, 0}, QSizeF(room)), picture, ChosenPaper());
    });
    preview.exec();
}

void frmProve::Export3D() {
    if (session_.RefusesToExport()) { // it brings the view up to date, too
        return;
    }
    if (const frm3D* view = view3D ? view3D(false) : nullptr) {
        ExportPicture("view3d", view->PictureNow());
    }
}

void frmProve::Print3D() {
    if (session_.RefusesToExport()) {
        return;
    }
    if (const frm3D* view = view3D ? view3D(false) : nullptr) {
        PrintPicture(view->PictureNow());
    }
}
