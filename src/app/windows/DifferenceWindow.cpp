#include "app/windows/DifferenceWindow.h"

#include "app/windows/Controls.h"
#include "app/windows/SchemeStyle.h"
#include "app/windows/SheetToFile.h"
#include "export/SheetPainter.h"
#include "survey/SurfaceHeight.h"
#include "util/NumberText.h"

#include <QBoxLayout>
#include <QCloseEvent>

using terravo::Text;

DifferenceWindow::DifferenceWindow(const terravo::RunState& state, terravo::Session& session,
                                   const terravo::ColourScheme& scheme)
    : state_(state), session_(session) {
    setObjectName(QStringLiteral("DifferenceWindow"));
    setWindowTitle(Caption(state_, Text::DifferenceTitle));
    MakeControls();
    ApplyColourScheme(*this, scheme);
}

void DifferenceWindow::MakeControls() {
    picDifference = Named(new SheetView(this), "picDifference");
    picDifference->setAccessibleName(windowTitle());
    lblDifference = Named(new QLabel(QStringLiteral(" "), this), "lblDifference");
    cmdExport = Named(new QPushButton(Caption(state_, Text::SectionExport), this), "cmdExport");
    cmdExportVector = Named(new QPushButton(Caption(state_, Text::MeasureExportDifference), this),
                            "cmdExportVector");
    cmdAgain = Named(new QPushButton(Caption(state_, Text::MeasureAgain), this), "cmdAgain");
    connect(picDifference, &SheetView::PointerMoved, this, &DifferenceWindow::ShowPointer);
    connect(picDifference, &SheetView::PointerLeft, this,
            [this] { lblDifference->setText(QStringLiteral(" ")); });
    connect(cmdExport, &QPushButton::clicked, this, &DifferenceWindow::Export);
    connect(cmdExportVector, &QPushButton::clicked, this, &DifferenceWindow::ExportAsked);
    connect(cmdAgain, &QPushButton::clicked, this, &DifferenceWindow::AgainAsked);
    auto* row = new QHBoxLayout;
    row->addWidget(cmdExport);
    row->addWidget(cmdExportVector);
    row->addWidget(cmdAgain);
    row->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(picDifference, 1);
    layout->addWidget(lblDifference);
    layout->addLayout(row);
}

bool DifferenceWindow::Show(terravo::DifferenceSurface difference) {
    difference_ = std::move(difference);
    triangle_ = 1;
    const terravo::SheetTextMeasure measure;
    std::optional<terravo::DifferencePicture> sheet =
        session_.MakeDifferenceSheet(difference_, measure);
    if (!sheet) {
        picDifference->Show(nullptr, {});
        SetStale(Text::MeasureStale, true);
        return false;
    }
    picDifference->Show(std::make_shared<const terravo::SheetScene>(std::move(sheet->scene)),
                        sheet->view);
    SetStale(std::nullopt, true);
    return true;
}

void DifferenceWindow::SetStale(std::optional<Text> since, bool canBeMade) {
    cmdExport->setEnabled(!since);
    cmdExportVector->setEnabled(!since);
    cmdAgain->setEnabled(since && canBeMade);
    const QString title = Caption(state_, Text::DifferenceTitle);
    setWindowTitle(since ? WithRemark(title, Caption(state_, *since)) : title);
}

void DifferenceWindow::ShowPointer(double x, double y) {
    const std::optional<double> height =
        terravo::SurfaceHeight(difference_.points, difference_.triangles, {x, y}, triangle_);
    const auto number = [this](double value) {
        return ToQString(
            terravo::NumberText::FormatScreen(value, "#0.000", state_.decimalSeparator));
    };
    QString text = QStringLiteral("x: ") + number(x) + QStringLiteral("   y: ") + number(y);
    if (height) {
        text += QStringLiteral("   ") + Caption(state_, Text::MeasureDifference) +
                QStringLiteral(": ") + number(*height) + QStringLiteral(" m");
    }
    lblDifference->setText(text);
}

void DifferenceWindow::Export() {
    const std::shared_ptr<const terravo::SheetScene> scene = picDifference->SharedScene();
    if (!scene) {
        return;
    }
    SheetToFile(state_, session_, "difference", *scene, state_.texts[Text::DifferenceTitle]);
}

void DifferenceWindow::closeEvent(QCloseEvent* event) {
    emit Closing();
    event->accept();
}
