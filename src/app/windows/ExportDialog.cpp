#include "app/windows/ExportDialog.h"

#include "app/windows/Controls.h"
#include "contour/LevelRuleText.h"
#include "exchange/VectorFormats.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QIntValidator>

using terravo::Text;
using terravo::VectorFormat;
using terravo::VectorPart;
using terravo::VectorParts;

namespace {

// By the number of the part.
constexpr std::array<Text, terravo::kVectorPartCount> kPartTexts{
    Text::LayerContours,  Text::PartIndex,   Text::PartValues,   Text::PartBands,
    Text::LayerTriangles, Text::LayerPoints, Text::LayerNumbers, Text::LayerCodes,
    Text::PartHeights,    Text::LayerHull,   Text::PartBoundary, Text::PartBreaklines};

QString ToText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

ExportDialog::ExportDialog(const terravo::RunState& state, const terravo::SettingsStore& settings,
                           const QString& levels, QWidget* parent)
    : QDialog(parent), state_(state), settings_(settings),
      cmbFormat(Named(new QComboBox(this), "cmbFormat")),
      lblLevels(Named(new QLabel(levels, this), "lblLevels")),
      cmbDxfVersion(Named(new QComboBox(this), "cmbDxfVersion")),
      chkIn3D(Named(new QCheckBox(Caption(state, Text::VectorIn3D), this), "chkIn3D")),
      chkLayerPerLevel(
          Named(new QCheckBox(Caption(state, Text::VectorPerLevel), this), "chkLayerPerLevel")),
      chkSmooth(Named(new QCheckBox(Caption(state, Text::VectorSmooth), this), "chkSmooth")),
      cmbUnit(Named(new QComboBox(this), "cmbUnit")),
      txtEpsg(Named(new QLineEdit(this), "txtEpsg")),
      cmbDecimals(Named(new QComboBox(this), "cmbDecimals")),
      txtTextHeight(Named(new QLineEdit(this), "txtTextHeight")) {
    setObjectName(QStringLiteral("ExportDialog"));
    setWindowTitle(Caption(state_, Text::VectorTitle));
    MakeControls();
    FillIn(terravo::LoadExportHabit(settings));
    connect(cmbFormat, &QComboBox::currentIndexChanged, this, [this] {
        ShowParts(terravo::LoadExportHabit(settings_, std::string(Format().option)).wish.parts);
        ShowFormat();
    });
    connect(chkSmooth, &QCheckBox::clicked, this, [this](bool on) { wantsSmooth_ = on; });
    connect(txtEpsg, &QLineEdit::textChanged, this, &ExportDialog::ShowWhetherItCan);
    connect(txtTextHeight, &QLineEdit::textChanged, this, &ExportDialog::ShowWhetherItCan);
    ShowFormat();
}

void ExportDialog::MakeControls() {
    for (const VectorFormat& format : terravo::VectorFormats()) {
        cmbFormat->addItem(ToText(format.name) + QStringLiteral(": ") +
                           Caption(state_, format.purpose));
    }
    cmdLevels = Named(new QPushButton(Caption(state_, Text::LevelsEntry), this), "cmdLevels");
    connect(cmdLevels, &QPushButton::clicked, this, &ExportDialog::LevelsAsked);
    auto* levels = new QHBoxLayout;
    levels->addWidget(lblLevels, 1);
    levels->addWidget(cmdLevels);

    auto* form = new QFormLayout;
    form->addRow(Caption(state_, Text::VectorFormatLabel), cmbFormat);
    form->addRow(levels);
    form->addRow(MakeContent());
    form->addRow(chkSmooth);
    form->addRow(MakeDxf());
    AddValues(*form);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addStretch(1);
    layout->addWidget(MakeButtons());
}

QWidget* ExportDialog::MakeContent() {
    auto* group =
        Named(new QGroupBox(Caption(state_, Text::VectorContentGroup), this), "grpContent");
    auto* grid = new QGridLayout(group);
    constexpr int kColumns = 3;
    int place = 0;
    for (const VectorPart part : terravo::AllVectorParts()) {
        const auto number = static_cast<std::size_t>(part);
        auto* box = new QCheckBox(Caption(state_, kPartTexts[number]), group);
        box->setObjectName(QStringLiteral("chk-") + QLatin1String(NameOf(part)));
        connect(box, &QCheckBox::toggled, this, &ExportDialog::ShowWhetherItCan);
        grid->addWidget(box, place / kColumns, place % kColumns);
        parts_[number] = box;
        ++place;
    }
    return group;
}

QWidget* ExportDialog::MakeDxf() {
    grpDxf = Named(new QGroupBox(QStringLiteral("DXF"), this), "grpDxf");
    auto* form = new QFormLayout(grpDxf);
    cmbDxfVersion->addItems({QStringLiteral("R2000"), QStringLiteral("R12")});
    form->addRow(Caption(state_, Text::VectorDxfVersion), cmbDxfVersion);
    txtTextHeight->setPlaceholderText(Caption(state_, Text::UsualHeight));
    form->addRow(Caption(state_, Text::VectorTextHeight), txtTextHeight);
    form->addRow(chkIn3D);
    form->addRow(chkLayerPerLevel);
    return grpDxf;
}

void ExportDialog::AddValues(QFormLayout& form) {
    cmbUnit->addItems({Caption(state_, Text::UnitMetre), Caption(state_, Text::UnitFoot),
                       Caption(state_, Text::UnitUsFoot)});
    form.addRow(Caption(state_, Text::VectorUnit), cmbUnit);
    txtEpsg->setPlaceholderText(Caption(state_, Text::CrsUnknown));
    txtEpsg->setValidator(new QIntValidator(1, terravo::kLargestEpsg, txtEpsg));
    form.addRow(Caption(state_, Text::VectorCrs), txtEpsg);
    cmbDecimals->addItem(Caption(state_, Text::EveryDigit));
    for (int decimals = 0; decimals <= terravo::kMostVectorDecimals; ++decimals) {
        cmbDecimals->addItem(QString::number(decimals));
    }
    form.addRow(Caption(state_, Text::VectorDecimals), cmbDecimals);
}

QWidget* ExportDialog::MakeButtons() {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    cmdExport = Named(buttons->button(QDialogButtonBox::Ok), "cmdExport");
    cmdExport->setText(Caption(state_, Text::VectorExport));
    auto* cancel = Named(buttons->button(QDialogButtonBox::Cancel), "cmdCancel");
    cancel->setText(Caption(state_, Text::Cancel));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return buttons;
}

void ExportDialog::FillIn(const terravo::ExportHabit& habit) {
    const VectorFormat* format = terravo::VectorFormatOf(habit.format);
    cmbFormat->setCurrentIndex(static_cast<int>(format - terravo::VectorFormats().data()));
    ShowParts(habit.wish.parts);
    cmbDxfVersion->setCurrentIndex(habit.options.dxfVersion == terravo::DxfVersion::R12 ? 1 : 0);
    chkIn3D->setChecked(habit.options.contoursIn3D);
    chkLayerPerLevel->setChecked(habit.options.layerPerLevel);
    wantsSmooth_ = habit.smooth;
    cmbUnit->setCurrentIndex(static_cast<int>(habit.wish.unit));
    txtEpsg->setText(habit.wish.epsg ? QString::number(*habit.wish.epsg) : QString());
    cmbDecimals->setCurrentIndex(habit.wish.decimals ? *habit.wish.decimals + 1 : 0);
}

const VectorFormat& ExportDialog::Format() const {
    return terravo::VectorFormats()[static_cast<std::size_t>(cmbFormat->currentIndex())];
}

void ExportDialog::ShowParts(const VectorParts& parts) {
    for (const VectorPart part : terravo::AllVectorParts()) {
        parts_[static_cast<std::size_t>(part)]->setChecked(parts.Has(part));
    }
}

// What the survey does not have yet cannot be ticked in any format.
void ExportDialog::ShowFormat() {
    for (const VectorPart part : terravo::AllVectorParts()) {
        const bool isThere = part != VectorPart::Boundary && part != VectorPart::Breaklines;
        QCheckBox* box = parts_[static_cast<std::size_t>(part)];
        box->setVisible(isThere);
        box->setEnabled(Format().known.Has(part));
        if (!box->isEnabled()) {
            box->setChecked(false);
        }
        box->setToolTip(box->isEnabled()
                            ? QString()
                            : ToQString(terravo::WithValues(state_.texts[Text::FormatCannotHold],
                                                            {std::string(Format().name)})));
    }
    grpDxf->setVisible(Format().option == "dxf");
    layout()->activate(); // else the size is still the one with the group
    adjustSize();
    ShowWhetherItCan();
}

void ExportDialog::ShowWhetherItCan() {
    cmdExport->setEnabled(!Parts().IsEmpty() && EpsgIsGood() && HeightIsGood());
    ShowSmooth();
}

void ExportDialog::HideChoiceOfLines() {
    cmdLevels->hide();
    chkSmooth->hide();
}

// The tick comes back with the lines.
void ExportDialog::ShowSmooth() {
    const bool hasLines = TakesSmoothLines(Format(), Parts());
    chkSmooth->setEnabled(hasLines);
    chkSmooth->setChecked(hasLines && wantsSmooth_);
    chkSmooth->setToolTip(hasLines ? QString() : Caption(state_, Text::VectorKeepsPieces));
}

bool ExportDialog::EpsgIsGood() const {
    return txtEpsg->text().isEmpty() || txtEpsg->hasAcceptableInput();
}

bool ExportDialog::HeightIsGood() const {
    const std::string text = txtTextHeight->text().trimmed().toStdString();
    const double height = terravo::ParseLevelNumber(text, state_.decimalSeparator).value_or(0);
    return Format().option != "dxf" || text.empty() ||
           (height >= terravo::kLeastTextHeight && height <= terravo::kMostTextHeight);
}

VectorParts ExportDialog::Parts() const {
    VectorParts parts;
    for (const VectorPart part : terravo::AllVectorParts()) {
        if (parts_[static_cast<std::size_t>(part)]->isChecked()) {
            parts.Add(part);
        }
    }
    return parts;
}

terravo::ExportHabit ExportDialog::Habit() const {
    terravo::ExportHabit habit;
    habit.format = std::string(Format().option);
    habit.wish.parts = Parts();
    habit.wish.unit = static_cast<terravo::LengthUnit>(cmbUnit->currentIndex());
    if (!txtEpsg->text().isEmpty()) {
        habit.wish.epsg = txtEpsg->text().toInt();
    }
    if (cmbDecimals->currentIndex() > 0) {
        habit.wish.decimals = cmbDecimals->currentIndex() - 1;
    }
    habit.wish.textHeight = terravo::ParseLevelNumber(txtTextHeight->text().trimmed().toStdString(),
                                                      state_.decimalSeparator);
    habit.options.dxfVersion =
        cmbDxfVersion->currentIndex() == 1 ? terravo::DxfVersion::R12 : terravo::DxfVersion::R2000;
    habit.options.contoursIn3D = chkIn3D->isChecked();
    habit.options.layerPerLevel = chkLayerPerLevel->isChecked();
    habit.smooth = wantsSmooth_;
    return habit;
}
