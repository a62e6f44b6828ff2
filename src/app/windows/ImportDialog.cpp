#include "app/windows/ImportDialog.h"

#include "app/windows/Controls.h"
#include "app/windows/ImportWords.h"
#include "app/windows/PlanPreview.h"
#include "app/windows/PreviewModel.h"
#include "app/windows/RoleHeader.h"
#include "util/PathText.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QVBoxLayout>

using terravo::BadRecords;
using terravo::ColumnRole;
using terravo::FieldSeparator;
using terravo::ImportChoice;
using terravo::ImportPlan;
using terravo::ImportPreview;
using terravo::Inspection;
using terravo::RunState;
using terravo::Text;
using terravo::TextEncoding;

namespace {

constexpr int kUsualWidth = 940;
constexpr int kUsualHeight = 640;
constexpr int kMostHeaderLines = 100000;
constexpr int kWidestColumn = 260;
constexpr int kFewestLeftOut = 2; // lines
constexpr int kMostLeftOut = 7;

// A list that may be narrower than its longest entry, so that the dialog can be.
QComboBox* NarrowList(QComboBox* list) {
    constexpr int kFewest = 8;
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(kFewest);
    return list;
}

} // namespace

ImportDialog::ImportDialog(const RunState& state, const std::string& path,
                           const Inspection& inspection,
                           const std::optional<ImportPlan>& remembered, QWidget* parent)
    : QDialog(parent), state_(state), draft_(path, inspection, remembered),
      lblDoubt(Named(new QLabel(this), "lblDoubt")),
      cmbColumns(Named(NarrowList(new QComboBox(this)), "cmbColumns")),
      cmbSeparator(Named(NarrowList(new QComboBox(this)), "cmbSeparator")),
      cmbDecimal(Named(NarrowList(new QComboBox(this)), "cmbDecimal")),
      spnHeaderLines(Named(new QSpinBox(this), "spnHeaderLines")),
      cmbEncoding(Named(NarrowList(new QComboBox(this)), "cmbEncoding")),
      txtVoids(Named(new QLineEdit(this), "txtVoids")),
      chkFreeList(Named(new QCheckBox(Caption(state, Text::ImportFreeList), this), "chkFreeList")),
      tblLines(Named(new QTableView(this), "tblLines")), header_(new RoleHeader(state, tblLines)),
      model_(new PreviewModel(state, this)), picPlan(Named(new PlanPreview(this), "picPlan")),
      lblPoints(Named(new QLabel(this), "lblPoints")),
      txtLeftOut(Named(new QPlainTextEdit(this), "txtLeftOut")),
      chkSkipBad(Named(new QCheckBox(this), "chkSkipBad")),
      lblReason(Named(new QLabel(this), "lblReason")),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setObjectName(QStringLiteral("ImportDialog"));
    setWindowTitle(
        Caption(state_, Text::ImportTitle).arg(ToQString(terravo::SplitPath(path).name)));
    lblDoubt->setText(DoubtSentence(state_, inspection));
    QFont bold = lblDoubt->font();
    bold.setBold(true);
    lblDoubt->setFont(bold);
    lblDoubt->setWordWrap(true);
    FillLists();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblDoubt);
    layout->addLayout(MakeChoices());
    layout->addWidget(MakePreview(), 1);
    layout->addLayout(MakeEnd());
    Connect();
    resize(kUsualWidth, kUsualHeight);
    ShowDraft();
    cmbColumns->setFocus();
}

// The entries stand in the order of their enumerations.
void ImportDialog::FillLists() {
    for (const Text text : {Text::SeparatorComma, Text::SeparatorSemicolon, Text::SeparatorTab,
                            Text::SeparatorBlank, Text::SeparatorBar}) {
        cmbSeparator->addItem(Caption(state_, text));
    }
    cmbDecimal->addItem(Caption(state_, Text::DecimalPoint));
    cmbDecimal->addItem(Caption(state_, Text::SeparatorComma));
    for (const char* name : {"UTF-8", "ISO 8859-1", "UTF-16 LE", "UTF-16 BE"}) {
        cmbEncoding->addItem(QLatin1String(name));
    }
    spnHeaderLines->setMaximum(kMostHeaderLines);
    txtVoids->setToolTip(Caption(state_, Text::ImportVoidsHint));
    txtVoids->setAccessibleDescription(txtVoids->toolTip());
    QString voids;
    for (const std::string& text : draft_.Plan().voids) {
        voids += ToQString(text) + QLatin1Char(' ');
    }
    txtVoids->setText(voids.trimmed());
}

void ImportDialog::AddChoice(QGridLayout& grid, int row, int column, Text caption, QWidget* control,
                             int width) {
    auto* label = new QLabel(Caption(state_, caption), this);
    label->setBuddy(control);
    control->setAccessibleName(Spoken(label->text()));
    grid.addWidget(label, row, column);
    grid.addWidget(control, row, column + 1, 1, width);
}

QLayout* ImportDialog::MakeChoices() {
    auto* grid = new QGridLayout;
    auto* columns = new QGridLayout;
    AddChoice(*columns, 0, 0, Text::ImportColumns, cmbColumns);
    columns->setColumnStretch(1, 1);
    AddChoice(*grid, 0, 0, Text::ImportSeparator, cmbSeparator);
    AddChoice(*grid, 0, 2, Text::ImportDecimal, cmbDecimal);
    AddChoice(*grid, 0, 4, Text::ImportHeaderLines, spnHeaderLines);
    AddChoice(*grid, 1, 0, Text::ImportEncoding, cmbEncoding);
    AddChoice(*grid, 1, 2, Text::ImportVoids, txtVoids, 3);
    grid->addWidget(chkFreeList, 2, 0, 1, 6);
    for (const int column : {1, 3, 5}) {
        grid->setColumnStretch(column, 1);
    }
    auto* choices = new QVBoxLayout;
    choices->addLayout(columns);
    choices->addLayout(grid);
    return choices;
}

QWidget* ImportDialog::MakePreview() {
    tblLines->setAccessibleName(Caption(state_, Text::FirstLines));
    tblLines->setHorizontalHeader(header_);
    tblLines->setModel(model_);
    tblLines->verticalHeader()->hide();
    tblLines->verticalHeader()->setDefaultSectionSize(tblLines->fontMetrics().height() + 6);
    tblLines->setTabKeyNavigation(false);
    tblLines->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    tblLines->setWordWrap(false);
    tblLines->setAlternatingRowColors(true);
    tblLines->setMinimumHeight(6 * tblLines->fontMetrics().height());
    header_->setMaximumSectionSize(kWidestColumn);
    txtLeftOut->setReadOnly(true);
    txtLeftOut->setTabChangesFocus(true);
    txtLeftOut->setAccessibleName(Spoken(Caption(state_, Text::LeftOut)));
    const int line = txtLeftOut->fontMetrics().height();
    txtLeftOut->setMinimumHeight(kFewestLeftOut * line + 12);
    txtLeftOut->setMaximumHeight(kMostLeftOut * line + 12);
    picPlan->setAccessibleName(Caption(state_, Text::PlanOfPoints));
    lblPoints->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* side = new QWidget(this);
    auto* sideLayout = new QVBoxLayout(side);
    sideLayout->setContentsMargins({});
    sideLayout->addWidget(picPlan, 1);
    sideLayout->addWidget(lblPoints);
    auto* lines = new QWidget(this);
    auto* linesLayout = new QVBoxLayout(lines);
    linesLayout->setContentsMargins({});
    linesLayout->addWidget(tblLines, 4);
    linesLayout->addWidget(new QLabel(Caption(state_, Text::LeftOut), this));
    linesLayout->addWidget(txtLeftOut, 1);
    auto* preview = new QSplitter(this);
    preview->addWidget(lines);
    preview->addWidget(side);
    preview->setChildrenCollapsible(false);
    preview->setStretchFactor(0, 3);
    preview->setStretchFactor(1, 1);
    return preview;
}

QLayout* ImportDialog::MakeEnd() {
    QPushButton* read = Named(buttons_->button(QDialogButtonBox::Ok), "cmdRead");
    QPushButton* cancel = Named(buttons_->button(QDialogButtonBox::Cancel), "cmdCancel");
    read->setText(Caption(state_, Text::ImportRead));
    cancel->setText(Caption(state_, Text::Cancel));
    lblReason->setWordWrap(true);
    auto* last = new QHBoxLayout;
    last->addWidget(lblReason, 1);
    last->addWidget(buttons_);
    auto* end = new QVBoxLayout;
    end->addWidget(chkSkipBad);
    end->addLayout(last);
    return end;
}

void ImportDialog::Connect() {
    const auto change = [this](auto changeDraft) {
        return [this, changeDraft](auto value) {
            changeDraft(draft_, value);
            ShowDraft();
        };
    };
    using Draft = terravo::ImportDraft;
    connect(cmbColumns, &QComboBox::activated, this, change([](Draft& draft, int entry) {
                if (const auto k = static_cast<std::size_t>(entry); k < draft.Candidates().size()) {
                    draft.ChooseCandidate(k);
                }
            }));
    connect(cmbSeparator, &QComboBox::activated, this, change([](Draft& draft, int entry) {
                draft.SetSeparator(static_cast<FieldSeparator>(entry));
            }));
    connect(cmbDecimal, &QComboBox::activated, this,
            change([](Draft& draft, int entry) { draft.SetDecimal(entry == 0 ? '.' : ','); }));
    connect(cmbEncoding, &QComboBox::activated, this, change([](Draft& draft, int entry) {
                draft.SetEncoding(static_cast<TextEncoding>(entry));
            }));
    connect(spnHeaderLines, &QSpinBox::valueChanged, this,
            change([](Draft& draft, int lines) { draft.SetHeaderLines(lines); }));
    connect(txtVoids, &QLineEdit::textEdited, this,
            change([](Draft& draft, const QString& text) { draft.SetVoids(text.toStdString()); }));
    connect(chkFreeList, &QCheckBox::clicked, this,
            change([](Draft& draft, bool on) { draft.SetFreeList(on); }));
    connect(header_, &RoleHeader::RoleChosen, this, [this](int column, ColumnRole role) {
        draft_.SetRole(static_cast<std::size_t>(column), role);
        ShowDraft();
    });
    connect(header_, &RoleHeader::ColumnEntered, this, &ImportDialog::ScrollToColumn);
    connect(chkSkipBad, &QCheckBox::clicked, this, &ImportDialog::ShowReason);
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void ImportDialog::ShowDraft() {
    const ImportPreview& preview = draft_.Preview();
    ShowChoices();
    ShowColumns();
    ShowTable();
    picPlan->Show(preview.points);
    lblPoints->setText(PointsText(state_, preview));
    picPlan->setAccessibleDescription(lblPoints->text());
    txtLeftOut->setPlainText(LeftOutText(state_, preview, draft_.Plan()));
    chkSkipBad->setText(Caption(state_, Text::ImportSkipBad).arg(qlonglong{preview.badRecords}));
    ShowReason();
}

void ImportDialog::ShowChoices() {
    const ImportPlan& plan = draft_.Plan();
    cmbSeparator->setCurrentIndex(static_cast<int>(plan.separator));
    cmbDecimal->setCurrentIndex(plan.decimal == '.' ? 0 : 1);
    cmbEncoding->setCurrentIndex(static_cast<int>(plan.encoding));
    const QSignalBlocker silent(spnHeaderLines);
    spnHeaderLines->setValue(static_cast<int>(plan.headerLines));
    chkFreeList->setChecked(plan.freeList);
    const std::initializer_list<QWidget*> ofRecords{
        cmbColumns, cmbSeparator, cmbDecimal, cmbEncoding, txtVoids, spnHeaderLines, chkSkipBad};
    for (QWidget* control : ofRecords) {
        control->setEnabled(!plan.freeList);
    }
}

void ImportDialog::ShowColumns() {
    cmbColumns->clear();
    for (const std::vector<ColumnRole>& columns : draft_.Candidates()) {
        cmbColumns->addItem(ColumnsLine(state_, columns));
    }
    const std::optional<std::size_t> chosen = draft_.Candidate();
    if (!chosen) {
        cmbColumns->addItem(Caption(state_, Text::OwnColumns));
    }
    cmbColumns->setCurrentIndex(static_cast<int>(chosen.value_or(draft_.Candidates().size())));
}

// The lines stay where they were scrolled to.
void ImportDialog::ShowTable() {
    const ImportPlan& plan = draft_.Plan();
    const std::size_t boxes = header_->Boxes().size();
    const int right = tblLines->horizontalScrollBar()->value();
    const int down = tblLines->verticalScrollBar()->value();
    model_->Show(draft_.Preview(), plan, draft_.Roles());
    header_->Show(plan.freeList
                      ? std::vector{ColumnRole::Easting, ColumnRole::Northing, ColumnRole::Height}
                      : draft_.Roles());
    for (QComboBox* box : header_->Boxes()) {
        box->setEnabled(!plan.freeList);
    }
    tblLines->resizeColumnsToContents();
    tblLines->horizontalScrollBar()->setValue(right);
    tblLines->verticalScrollBar()->setValue(down);
    if (boxes != header_->Boxes().size()) {
        OrderTabs();
    }
}

// Whatever is not named here was made in its order.
void ImportDialog::OrderTabs() {
    QWidget* before = chkFreeList;
    for (QComboBox* box : header_->Boxes()) {
        setTabOrder(before, box);
        before = box;
    }
    setTabOrder(before, tblLines);
}

void ImportDialog::ScrollToColumn(int column) {
    const int top = std::max(tblLines->rowAt(0), 0);
    tblLines->scrollTo(model_->index(top, column + 1));
}

// Why the file cannot be read like this; empty when it can.
QString ImportDialog::Reason() const {
    const ImportPreview& preview = draft_.Preview();
    QStringList missing;
    for (const ColumnRole role : draft_.MissingCoordinates()) {
        missing += RoleWord(state_, role);
    }
    if (!missing.isEmpty()) {
        return Caption(state_, Text::NeedsColumns).arg(missing.join(QStringLiteral(", ")));
    }
    if (preview.failure) {
        return LeftOutText(state_, preview, draft_.Plan());
    }
    if (preview.points.count == 0) {
        return Caption(state_, Text::NeedsPoints);
    }
    return preview.badRecords > 0 && !chkSkipBad->isChecked() ? Caption(state_, Text::NeedsSkipping)
                                                              : QString();
}

void ImportDialog::ShowReason() {
    lblReason->setText(Reason());
    QPushButton* read = buttons_->button(QDialogButtonBox::Ok);
    read->setEnabled(lblReason->text().isEmpty());
    read->setAccessibleDescription(lblReason->text());
}

ImportChoice ImportDialog::Choice() const {
    return {draft_.Plan(), chkSkipBad->isChecked() ? BadRecords::Skip : BadRecords::Refuse};
}

std::optional<ImportChoice> QtImportDialogs::Ask(const std::string& path,
                                                 const Inspection& inspection,
                                                 const std::optional<ImportPlan>& remembered) {
    ImportDialog dialog(state_, path, inspection, remembered, QApplication::activeWindow());
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.Choice()) : std::nullopt;
}
