#include "app/windows/MeasureWindow.h"

#include "app/windows/Controls.h"
#include "app/windows/SchemeStyle.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QSplitter>

using terravo::MeasureEntry;
using terravo::MeasureReport;
using terravo::Text;

MeasureWindow::MeasureWindow(const terravo::RunState& state, terravo::Session& session,
                             terravo::MeasureLog& log, const terravo::ColourScheme& scheme)
    : state_(state), session_(session), log_(log) {
    setObjectName(QStringLiteral("MeasureWindow"));
    setWindowTitle(Caption(state_, Text::MeasureTitle));
    MakeControls();
    ApplyColourScheme(*this, scheme);
    ConnectControls();
    Refresh(true);
}

void MeasureWindow::MakeControls() {
    lblNothing = Named(new QLabel(Caption(state_, Text::MeasureNoResults), this), "lblNothing");
    lblNothing->setWordWrap(true);
    lstMeasures = Named(new QListWidget(this), "lstMeasures");
    lstMeasures->setAccessibleName(windowTitle());
    lblAbout = Named(new QLabel(this), "lblAbout");
    lblAbout->setWordWrap(true);
    tblFigures = Named(new QTableWidget(this), "tblFigures");
    tblFigures->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tblFigures->setTabKeyNavigation(false);
    tblFigures->setAlternatingRowColors(true);
    tblFigures->verticalHeader()->hide();
    tblFigures->verticalHeader()->setDefaultSectionSize(tblFigures->fontMetrics().height() + 6);
    auto* figures = new QWidget(this);
    auto* figuresLayout = new QVBoxLayout(figures);
    figuresLayout->setContentsMargins(0, 0, 0, 0);
    figuresLayout->addWidget(lblAbout);
    figuresLayout->addWidget(tblFigures, 1);
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(lstMeasures);
    splitter->addWidget(figures);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 3);
    splitter->setChildrenCollapsible(false);
    constexpr int kRows = 3; // of the list, at least
    lstMeasures->setMinimumHeight(kRows * lstMeasures->fontMetrics().lineSpacing());
    splitter->setSizes({lstMeasures->minimumHeight() * 2, height()});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblNothing);
    layout->addWidget(splitter, 1);
    layout->addLayout(MakeButtons());
}

QBoxLayout* MeasureWindow::MakeButtons() {
    auto* grid = new QGridLayout;
    const auto button = [&](Text caption, const char* name, int row, int column) {
        auto* made = Named(new QPushButton(Caption(state_, caption), this), name);
        grid->addWidget(made, row, column);
        return made;
    };
    cmdCopyText = button(Text::MeasureCopyText, "cmdCopyText", 0, 0);
    cmdCopyCsv = button(Text::MeasureCopyCsv, "cmdCopyCsv", 0, 1);
    cmdSaveCsv = button(Text::MeasureSaveCsv, "cmdSaveCsv", 1, 0);
    cmdAgain = button(Text::MeasureAgain, "cmdAgain", 1, 1);
    cmdDifferenceSheet = button(Text::MeasureDifferenceSheet, "cmdDifferenceSheet", 2, 0);
    cmdExportDifference = button(Text::MeasureExportDifference, "cmdExportDifference", 2, 1);
    auto* row = new QHBoxLayout;
    row->addLayout(grid);
    return row;
}

void MeasureWindow::ConnectControls() {
    connect(lstMeasures, &QListWidget::currentRowChanged, this, &MeasureWindow::ShowCurrent);
    connect(cmdCopyText, &QPushButton::clicked, this, [this] { Copy(TextOf(Current()->report)); });
    connect(cmdCopyCsv, &QPushButton::clicked, this, [this] { Copy(CsvOf(Current()->report)); });
    connect(cmdSaveCsv, &QPushButton::clicked, this,
            [this] { session_.SaveCsv(CsvOf(Current()->report), "measure"); });
    connect(cmdAgain, &QPushButton::clicked, this,
            [this] { emit AgainAsked(static_cast<std::size_t>(lstMeasures->currentRow())); });
    connect(cmdDifferenceSheet, &QPushButton::clicked, this, &MeasureWindow::DifferenceSheetAsked);
    connect(cmdExportDifference, &QPushButton::clicked, this,
            &MeasureWindow::DifferenceExportAsked);
}

const MeasureEntry* MeasureWindow::Current() const {
    const int row = lstMeasures->currentRow();
    return row < 0 ? nullptr : &log_.Entries()[static_cast<std::size_t>(row)];
}

void MeasureWindow::Refresh(bool selectsNewest) {
    const terravo::MeasureStand now = session_.StandOfMeasures();
    const int before = lstMeasures->currentRow();
    const QSignalBlocker quiet(lstMeasures);
    lstMeasures->clear();
    for (const MeasureEntry& entry : log_.Entries()) {
        QString title = ToQString(entry.report.title);
        if (entry.IsOfOtherPoints(now)) {
            title = WithRemark(title, Caption(state_, Text::MeasureOther));
        } else if (entry.IsStale(now)) {
            title = WithRemark(title, Caption(state_, Text::MeasureStale));
        }
        lstMeasures->addItem(title);
    }
    const int last = lstMeasures->count() - 1;
    lstMeasures->setCurrentRow(selectsNewest ? std::min(0, last) : std::min(before, last));
    lblNothing->setVisible(last < 0);
    ShowCurrent();
}

void MeasureWindow::ShowCurrent() {
    const MeasureEntry* entry = Current();
    const terravo::MeasureStand now = session_.StandOfMeasures();
    for (QPushButton* button : {cmdCopyText, cmdCopyCsv, cmdSaveCsv}) {
        button->setEnabled(entry != nullptr);
    }
    cmdAgain->setEnabled(entry != nullptr && entry->IsStale(now) && entry->CanBeRepeated(now));
    const bool isComparison = entry != nullptr && session_.Measures().Second() != nullptr &&
                              entry->question.kind == terravo::MeasureKind::ToSecond &&
                              entry->CanBeRepeated(now) && !entry->IsStale(now);
    cmdDifferenceSheet->setEnabled(isComparison);
    cmdExportDifference->setEnabled(isComparison);
    ShowTable(entry != nullptr ? entry->report : MeasureReport());
}

void MeasureWindow::ShowTable(const MeasureReport& report) {
    QStringList about;
    for (const auto& [name, value] : report.about) {
        about += ToQString(name) + QStringLiteral(": ") + ToQString(value);
    }
    if (!report.remark.empty()) {
        about += ToQString(report.remark);
    }
    lblAbout->setText(about.join(QLatin1Char('\n')));
    lblAbout->setVisible(!about.isEmpty());
    tblFigures->setAccessibleName(ToQString(report.title));
    tblFigures->clear();
    tblFigures->setColumnCount(static_cast<int>(report.columns.size()));
    tblFigures->setRowCount(static_cast<int>(report.rows.size()));
    for (int column = 0; column < tblFigures->columnCount(); ++column) {
        const auto at = static_cast<std::size_t>(column);
        tblFigures->setHorizontalHeaderItem(column,
                                            new QTableWidgetItem(ToQString(report.columns[at])));
        for (int row = 0; row < tblFigures->rowCount(); ++row) {
            const terravo::MeasureCell& cell = report.rows[static_cast<std::size_t>(row)][at];
            auto* item = new QTableWidgetItem(ToQString(cell.text));
            item->setTextAlignment(Qt::AlignVCenter |
                                   (cell.number ? Qt::AlignRight : Qt::AlignLeft));
            tblFigures->setItem(row, column, item);
        }
    }
    tblFigures->resizeColumnsToContents();
}

void MeasureWindow::Copy(const std::string& text) {
    QGuiApplication::clipboard()->setText(ToQString(text));
    emit Noted(Caption(state_, Text::MeasureCopied));
}

void MeasureWindow::closeEvent(QCloseEvent* event) {
    emit Closing();
    event->accept();
}
