#include "app/windows/SheetPanel.h"

#include "app/windows/Controls.h"
#include "app/windows/NumberBox.h"
#include "sheet/SheetTheme.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <array>
#include <cmath>

using terravo::SheetLayer;
using terravo::SheetPlan;
using terravo::Text;

namespace {

constexpr std::array kUsualScales{100, 200, 250, 500, 1000, 2000, 2500, 5000, 10000, 25000};

// In the order of SwitchableLayers().
constexpr std::array kLayerTexts{
    Text::LayerContours,    Text::LayerBands,     Text::LayerTriangles, Text::LayerHull,
    Text::PartBreaklines,   Text::LayerPoints,    Text::LayerNumbers,   Text::LayerCodes,
    Text::LayerSpotHeights, Text::LayerGrid,      Text::LayerLegend,    Text::LayerScaleBar,
    Text::LayerNorthArrow,  Text::LayerTitleBlock};

Text TextOfTheme(const std::string& name) {
    return name == "height"  ? Text::ThemeHeight
           : name == "black" ? Text::ThemeBlack
           : name == "dark"  ? Text::ThemeDark
                             : Text::ThemeBrown;
}

// A long entry must not make the panel wide.
QComboBox* NarrowBox(QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(9);
    return box;
}

// A long text shows its beginning.
void ShowText(QComboBox& box, const QString& text) {
    box.setEditText(text);
    box.lineEdit()->setCursorPosition(0);
}

} // namespace

SheetPanel::SheetPanel(const terravo::RunState& state, QWidget* parent)
    : QWidget(parent), state_(state), layout_(new QVBoxLayout(this)) {
    layout_->setContentsMargins(0, 0, 0, 0);
    AddPaperGroup();
    AddLookGroup();
    AddValuesGroup();
    AddTitleGroup();
    SetPlan(plan_);
    ConnectControls();
    LeaveTheWheel();
}

QString SheetPanel::Say(Text text) const {
    return Caption(state_, text);
}

QFormLayout* SheetPanel::AddGroup(Text title, const char* name) {
    auto* group = Named(new QGroupBox(Say(title), this), name);
    auto* form = new QFormLayout(group);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout_->addWidget(group);
    return form;
}

// Only a caption with a letter is tied to its control; there are more controls than letters.
template <class Widget>
Widget* SheetPanel::AddRow(QFormLayout& form, Text label, Widget* control, const char* name) {
    Named(control, name);
    control->setAccessibleName(Spoken(Say(label)));
    auto* caption = new QLabel(Say(label), this);
    if (caption->text().contains(QLatin1Char('&'))) {
        caption->setBuddy(control);
    }
    form.addRow(caption, control);
    return control;
}

void SheetPanel::AddPaperGroup() {
    QFormLayout& form = *AddGroup(Text::GroupPaper, "grpPaper");
    cmbPaper = AddRow(form, Text::PanelPaper, NarrowBox(this), "cmbPaper");
    for (const terravo::PaperSize& size : terravo::PaperSizes()) {
        cmbPaper->addItem(ToQString(size.name));
    }
    cmbOrientation = AddRow(form, Text::PanelOrientation, NarrowBox(this), "cmbOrientation");
    cmbOrientation->addItems({Say(Text::OrientationAuto), Say(Text::OrientationPortrait),
                              Say(Text::OrientationLandscape)});
    cmbScale = AddRow(form, Text::PanelScale, NarrowBox(this), "cmbScale");
    cmbScale->addItem(Say(Text::PanelScaleFit));
    for (const int scale : kUsualScales) {
        cmbScale->addItem(QStringLiteral("1:%1").arg(scale));
    }
    for (const auto& [box, hint] :
         {std::pair{cmbPaper, Text::PanelPaperHint}, std::pair{cmbScale, Text::PanelScaleHint}}) {
        box->setEditable(true);
        box->setInsertPolicy(QComboBox::NoInsert);
        box->setCompleter(nullptr);
        box->setToolTip(Say(hint));
        box->setAccessibleDescription(Say(hint));
        box->lineEdit()->setAccessibleName(box->accessibleName());
    }
    spnRotation = AddRow(form, Text::PanelRotation, new NumberBox(this), "spnRotation");
    spnRotation->setRange(-360, 360);
    spnRotation->setDecimals(3);
    spnRotation->setSingleStep(5);
    spnRotation->setSuffix(QStringLiteral("°"));
}

void SheetPanel::AddLookGroup() {
    QFormLayout& form = *AddGroup(Text::GroupLook, "grpLook");
    cmbTheme = AddRow(form, Text::PanelTheme, NarrowBox(this), "cmbTheme");
    for (const terravo::SheetTheme& theme : terravo::SheetThemes()) {
        cmbTheme->addItem(Say(TextOfTheme(theme.name)), ToQString(theme.name));
    }
    lstLayers = AddRow(form, Text::PanelLayers, new QListWidget(this), "lstLayers");
    for (std::size_t i = 0; i < kLayerTexts.size(); ++i) {
        auto* item = new QListWidgetItem(Say(kLayerTexts[i]), lstLayers);
        item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        item->setCheckState(Qt::Unchecked);
    }
    lstLayers->setMinimumHeight(lstLayers->sizeHintForRow(0) * lstLayers->count() +
                                2 * lstLayers->frameWidth() + 2);
    lstLayers->setMinimumWidth(lstLayers->sizeHintForColumn(0) + 2 * lstLayers->frameWidth() + 2);
    lstLayers->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    cmbGrid = AddRow(form, Text::PanelGrid, NarrowBox(this), "cmbGrid");
    cmbGrid->addItems({Say(Text::GridCrosses), Say(Text::GridLines)});
    spnIndexEvery = AddRow(form, Text::PanelIndexEvery, new QSpinBox(this), "spnIndexEvery");
    spnIndexEvery->setRange(0, 1000);
    spnIndexEvery->setSpecialValueText(Say(Text::PanelIndexNone));
    sldSmooth = AddRow(form, Text::PanelSmooth, new SmoothSlider(state_, this), "pnlSmooth");
}

void SheetPanel::AddValuesGroup() {
    QFormLayout& form = *AddGroup(Text::GroupValues, "grpValues");
    cmbLabels = AddRow(form, Text::PanelLabels, NarrowBox(this), "cmbLabels");
    cmbLabels->addItems({Say(Text::LabelsNone), Say(Text::LabelsIndex), Say(Text::LabelsAll)});
    spnSpacing = AddRow(form, Text::PanelSpacing, new NumberBox(this), "spnSpacing");
    spnSpacing->setRange(5, 10000);
    spnSpacing->setDecimals(0);
    spnSpacing->setSingleStep(10);
    spnTextHeight = AddRow(form, Text::PanelTextHeight, new NumberBox(this), "spnTextHeight");
    spnTextHeight->setRange(0.5, 20);
    spnTextHeight->setDecimals(1);
    spnTextHeight->setSingleStep(0.2);
    for (QDoubleSpinBox* box : {spnSpacing, spnTextHeight}) {
        box->setSuffix(QStringLiteral(" mm"));
    }
    chkUphill = Named(new QCheckBox(Say(Text::PanelUphill), this), "chkUphill");
    form.addRow(chkUphill);
}

void SheetPanel::AddTitleGroup() {
    QFormLayout& form = *AddGroup(Text::GroupTitleBlock, "grpTitleBlock");
    const auto add = [&](Text label, const char* name) {
        return AddRow(form, label, new QLineEdit(this), name);
    };
    txtTitle = add(Text::PanelTitleText, "txtTitle");
    txtProject = add(Text::PanelProject, "txtProject");
    txtDate = add(Text::PanelDate, "txtDate");
    txtDatum = add(Text::PanelDatum, "txtDatum");
    txtAuthor = add(Text::PanelAuthor, "txtAuthor");
}

void SheetPanel::ConnectControls() {
    for (QComboBox* box : {cmbOrientation, cmbTheme, cmbGrid, cmbLabels}) {
        connect(box, &QComboBox::currentIndexChanged, this, &SheetPanel::ReadControls);
    }
    // A text counts when it is complete.
    for (QComboBox* box : {cmbPaper, cmbScale}) {
        connect(box, &QComboBox::activated, this, &SheetPanel::ReadControls);
        connect(box->lineEdit(), &QLineEdit::editingFinished, this, &SheetPanel::ReadControls);
    }
    for (QDoubleSpinBox* box : {spnRotation, spnSpacing, spnTextHeight}) {
        connect(box, &QDoubleSpinBox::valueChanged, this, &SheetPanel::ReadControls);
    }
    connect(spnIndexEvery, &QSpinBox::valueChanged, this, &SheetPanel::ReadControls);
    connect(sldSmooth, &SmoothSlider::Changed, this, &SheetPanel::ReadControls);
    connect(lstLayers, &QListWidget::itemChanged, this, &SheetPanel::ReadControls);
    connect(chkUphill, &QCheckBox::toggled, this, &SheetPanel::ReadControls);
    for (QLineEdit* text : {txtTitle, txtProject, txtDate, txtDatum, txtAuthor}) {
        connect(text, &QLineEdit::textChanged, this, &SheetPanel::ReadControls);
    }
}

// The wheel moves the column; on the way a control that happens to come by must not change.
void SheetPanel::LeaveTheWheel() {
    for (QWidget* control : findChildren<QWidget*>()) {
        if (qobject_cast<QComboBox*>(control) != nullptr ||
            qobject_cast<QAbstractSpinBox*>(control) != nullptr ||
            qobject_cast<QAbstractSlider*>(control) != nullptr) {
            control->setFocusPolicy(Qt::StrongFocus);
            control->installEventFilter(this);
        }
    }
}

bool SheetPanel::eventFilter(QObject* watched, QEvent* event) {
    const auto* control = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Wheel && control != nullptr && !control->hasFocus()) {
        event->ignore(); // for the column
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

QString SheetPanel::ScaleText() const {
    return plan_.scale ? QStringLiteral("1:%1").arg(*plan_.scale, 0, 'g', 10)
                       : Say(Text::PanelScaleFit);
}

void SheetPanel::SetPlan(const SheetPlan& plan) {
    const QScopedValueRollback<bool> showing(isShowing_, true);
    plan_ = plan;
    ShowText(*cmbPaper, ToQString(plan.paper.name));
    cmbOrientation->setCurrentIndex(!plan.landscape ? 0 : *plan.landscape ? 2 : 1);
    ShowText(*cmbScale, ScaleText());
    spnRotation->setValue(plan.rotation);
    cmbTheme->setCurrentIndex(cmbTheme->findData(ToQString(plan.theme)));
    for (int i = 0; i < lstLayers->count(); ++i) {
        const SheetLayer layer = terravo::SwitchableLayers()[static_cast<std::size_t>(i)];
        lstLayers->item(i)->setCheckState(plan.Shows(layer) ? Qt::Checked : Qt::Unchecked);
    }
    cmbGrid->setCurrentIndex(plan.gridLines ? 1 : 0);
    spnIndexEvery->setValue(plan.indexEvery);
    sldSmooth->SetFraction(plan.smoothing ? plan.smoothing->fraction : 0);
    cmbLabels->setCurrentIndex(static_cast<int>(plan.labels));
    spnSpacing->setValue(plan.labelSpacing);
    chkUphill->setChecked(plan.labelsUphill);
    spnTextHeight->setValue(plan.textHeight);
    txtTitle->setText(ToQString(plan.texts.title));
    txtProject->setText(ToQString(plan.texts.project));
    txtDate->setText(ToQString(plan.texts.date));
    txtDatum->setText(ToQString(plan.texts.datum));
    txtAuthor->setText(ToQString(plan.texts.author));
}

// What cannot be understood goes back to what it was.
void SheetPanel::ReadPaper() {
    const std::string text = cmbPaper->currentText().trimmed().toStdString();
    if (const std::optional<terravo::PaperSize> size = terravo::ParsePaperSize(text)) {
        plan_.paper = *size;
    }
    ShowText(*cmbPaper, ToQString(plan_.paper.name));
}

void SheetPanel::ReadScale() {
    constexpr double kLargest = 0.001;
    constexpr double kSmallest = 1e9;
    QString text = cmbScale->currentText().trimmed();
    if (text == Say(Text::PanelScaleFit) || text.isEmpty()) {
        plan_.scale.reset();
    } else {
        if (text.startsWith(QStringLiteral("1:"))) {
            text.remove(0, 2);
        }
        bool isNumber = false;
        const double scale = text.replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&isNumber);
        if (isNumber && scale >= kLargest && scale <= kSmallest) {
            plan_.scale = scale;
        }
    }
    ShowText(*cmbScale, ScaleText());
}

// What else the plan says of smoothing stays, and a fraction that the slider shows rounded.
void SheetPanel::ReadSmoothing() {
    const double fraction = sldSmooth->Fraction();
    if (fraction <= 0) {
        plan_.smoothing.reset();
        return;
    }
    terravo::SmoothingOptions smoothing = plan_.smoothing.value_or(terravo::SmoothingOptions());
    constexpr double kHalfStep = 0.005;
    if (!plan_.smoothing || std::fabs(smoothing.fraction - fraction) > kHalfStep) {
        smoothing.fraction = fraction;
    }
    plan_.smoothing = smoothing;
}

void SheetPanel::ReadControls() {
    if (isShowing_) {
        return;
    }
    const QScopedValueRollback<bool> showing(isShowing_, true);
    const SheetPlan before = plan_;
    ReadPaper();
    ReadScale();
    const int orientation = cmbOrientation->currentIndex();
    plan_.landscape = orientation == 0 ? std::nullopt : std::optional(orientation == 2);
    plan_.rotation = spnRotation->value();
    plan_.theme = cmbTheme->currentData().toString().toStdString();
    for (int i = 0; i < lstLayers->count(); ++i) {
        plan_.Show(terravo::SwitchableLayers()[static_cast<std::size_t>(i)],
                   lstLayers->item(i)->checkState() == Qt::Checked);
    }
    plan_.gridLines = cmbGrid->currentIndex() == 1;
    plan_.indexEvery = spnIndexEvery->value();
    ReadSmoothing();
    plan_.labels = static_cast<terravo::SheetLabels>(cmbLabels->currentIndex());
    plan_.labelSpacing = spnSpacing->value();
    plan_.labelsUphill = chkUphill->isChecked();
    plan_.textHeight = spnTextHeight->value();
    plan_.texts = {txtTitle->text().toStdString(), txtProject->text().toStdString(),
                   txtDate->text().toStdString(), txtDatum->text().toStdString(),
                   txtAuthor->text().toStdString()};
    if (plan_ != before) {
        emit Changed();
    }
}
