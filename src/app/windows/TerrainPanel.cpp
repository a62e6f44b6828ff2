#include "app/windows/TerrainPanel.h"

#include "app/windows/Controls.h"
#include "sheet/SheetTheme.h"
#include "util/NumberText.h"
#include "view3d/terrain/TerrainCamera.h"

#include <QHBoxLayout>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <array>
#include <cmath>

using terravo::TerrainCamera;
using terravo::TerrainColouring;
using terravo::TerrainPlan;
using terravo::Text;

namespace {

constexpr double kStepsOfTen = 100; // of the slider, for a factor of ten

int SliderOf(double factor) {
    return static_cast<int>(std::lround(std::log10(factor) * kStepsOfTen));
}

// Two significant digits, and whole steps of the slider that come near a usual factor are it.
double FactorOf(int place) {
    const double factor = std::pow(10, place / kStepsOfTen);
    const double power = std::pow(10, std::floor(std::log10(factor)) - 1);
    return std::round(factor / power) * power;
}

struct Layer {
    Text text;
    bool TerrainPlan::*field;
};

constexpr std::array kLayers{Layer{Text::TerrainTriangles, &TerrainPlan::triangles},
                             Layer{Text::TerrainContours, &TerrainPlan::contours},
                             Layer{Text::TerrainPoints, &TerrainPlan::points},
                             Layer{Text::TerrainLines, &TerrainPlan::lines},
                             Layer{Text::TerrainPlate, &TerrainPlan::plate},
                             Layer{Text::TerrainLegend, &TerrainPlan::legend}};

Text TextOfTheme(const std::string& name) {
    return name == "height"  ? Text::ThemeHeight
           : name == "black" ? Text::ThemeBlack
           : name == "dark"  ? Text::ThemeDark
                             : Text::ThemeBrown;
}

} // namespace

TerrainPanel::TerrainPanel(const terravo::RunState& state, QWidget* parent)
    : QWidget(parent), state_(state), layout_(new QVBoxLayout(this)) {
    layout_->setContentsMargins(0, 0, 0, 0);
    connect(AddButton(Text::TerrainReset, "cmdWholeTerrain"), &QPushButton::clicked, this,
            &TerrainPanel::WholeAsked);
    connect(AddButton(Text::TerrainExport, "cmdExportTerrain"), &QPushButton::clicked, this,
            &TerrainPanel::ExportAsked);
    connect(AddButton(Text::TerrainCopy, "cmdCopyTerrain"), &QPushButton::clicked, this,
            &TerrainPanel::CopyAsked);
    AddColours();
    AddHeights();
    AddLook();
    AddLayers();
    AddLight();
    layout_->addStretch(1);
    SetPlan(plan_);
}

QPushButton* TerrainPanel::AddButton(Text text, const char* name) {
    auto* button = Named(new QPushButton(Caption(state_, text), this), name);
    layout_->addWidget(button);
    return button;
}

void TerrainPanel::AddColours() {
    const auto addBox = [this](Text text, const char* name) {
        auto* label = new QLabel(Caption(state_, text), this);
        auto* box = Named(new QComboBox(this), name);
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(10);
        box->setAccessibleName(Spoken(label->text()));
        layout_->addWidget(label);
        layout_->addWidget(box);
        return box;
    };
    cmbColour = addBox(Text::TerrainColour, "cmbColour");
    for (const Text text :
         {Text::TerrainByHeight, Text::TerrainBySlope, Text::TerrainByAspect, Text::TerrainPlain}) {
        cmbColour->addItem(Caption(state_, text));
    }
    connect(cmbColour, &QComboBox::activated, this, [this](int row) {
        plan_.colouring = static_cast<TerrainColouring>(row);
        cmbTheme->setEnabled(plan_.colouring == TerrainColouring::Height);
        emit Changed();
    });
    cmbTheme = addBox(Text::TerrainTheme, "cmbTerrainTheme");
    for (const terravo::SheetTheme& theme : terravo::SheetThemes()) {
        cmbTheme->addItem(Caption(state_, TextOfTheme(theme.name)), ToQString(theme.name));
    }
    connect(cmbTheme, &QComboBox::activated, this, [this](int row) {
        plan_.theme = cmbTheme->itemData(row).toString().toStdString();
        emit Changed();
    });
}

void TerrainPanel::AddHeights() {
    auto* label = new QLabel(Caption(state_, Text::TerrainHeights), this);
    lblFactor = Named(new QLabel(this), "lblFactor");
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(lblFactor, 1, Qt::AlignRight);
    layout_->addLayout(row);
    sldHeights = Named(new QSlider(Qt::Horizontal, this), "sldHeights");
    sldHeights->setRange(SliderOf(0.01), SliderOf(100));
    sldHeights->setAccessibleName(Spoken(label->text()));
    layout_->addWidget(sldHeights);
    connect(sldHeights, &QSlider::valueChanged, this, [this](int place) {
        if (!isShowing_) {
            ShowFactor(FactorOf(place));
            emit ExaggerationChanged(FactorOf(place));
        }
    });
    cmdTrueScale = AddButton(Text::TerrainTrueScale, "cmdTrueScale");
    connect(cmdTrueScale, &QPushButton::clicked, this, [this] { sldHeights->setValue(0); });
}

void TerrainPanel::AddLook() {
    chkParallel = Named(new QCheckBox(Caption(state_, Text::TerrainParallel), this), "chkParallel");
    layout_->addWidget(chkParallel);
    connect(chkParallel, &QCheckBox::clicked, this,
            [this](bool on) { emit PerspectiveChanged(!on); });
    AddCheck(Text::TerrainSmooth, "chkSmoothShading", &TerrainPlan::smooth);
    AddCheck(Text::TerrainDark, "chkDark", &TerrainPlan::dark);
}

void TerrainPanel::AddLayers() {
    auto* label = new QLabel(Caption(state_, Text::TerrainShown), this);
    lstTerrainLayers = Named(new QListWidget(this), "lstTerrainLayers");
    lstTerrainLayers->setAccessibleName(label->text());
    for (const Layer& layer : kLayers) {
        auto* item = new QListWidgetItem(Caption(state_, layer.text), lstTerrainLayers);
        item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        item->setCheckState(Qt::Unchecked);
    }
    const int frame = 2 * lstTerrainLayers->frameWidth() + 2;
    lstTerrainLayers->setFixedHeight(
        lstTerrainLayers->sizeHintForRow(0) * lstTerrainLayers->count() + frame);
    lstTerrainLayers->setMinimumWidth(lstTerrainLayers->sizeHintForColumn(0) + frame);
    lstTerrainLayers->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    layout_->addWidget(label);
    layout_->addWidget(lstTerrainLayers);
    connect(lstTerrainLayers, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!isShowing_) {
            const auto row = static_cast<std::size_t>(lstTerrainLayers->row(item));
            plan_.*kLayers[row].field = item->checkState() == Qt::Checked;
            emit Changed();
        }
    });
}

QCheckBox* TerrainPanel::AddCheck(Text text, const char* name, bool TerrainPlan::*field) {
    auto* box = Named(new QCheckBox(Caption(state_, text), this), name);
    layout_->addWidget(box);
    checks_.push_back({box, field});
    connect(box, &QCheckBox::clicked, this, [this, field](bool on) {
        plan_.*field = on;
        emit Changed();
    });
    return box;
}

QSlider* TerrainPanel::AddSlider(Text text, const char* name, int low, int high) {
    auto* label = new QLabel(Caption(state_, text), this);
    auto* slider = Named(new QSlider(Qt::Horizontal, this), name);
    slider->setRange(low, high);
    slider->setAccessibleName(Spoken(label->text()));
    layout_->addWidget(label);
    layout_->addWidget(slider);
    return slider;
}

void TerrainPanel::AddLight() {
    constexpr int kFullTurn = 360;
    sldLightFrom = AddSlider(Text::TerrainLightFrom, "sldLightFrom", 0, kFullTurn);
    sldLightHeight = AddSlider(Text::TerrainLightHeight, "sldLightHeight", 5, 90);
    const auto moved = [this] {
        if (!isShowing_) {
            plan_.lightAzimuth = sldLightFrom->value();
            plan_.lightElevation = sldLightHeight->value();
            emit Changed();
        }
    };
    connect(sldLightFrom, &QSlider::valueChanged, this, moved);
    connect(sldLightHeight, &QSlider::valueChanged, this, moved);
}

void TerrainPanel::SetPlan(const TerrainPlan& plan) {
    const QScopedValueRollback<bool> showing(isShowing_, true);
    plan_ = plan;
    cmbColour->setCurrentIndex(static_cast<int>(plan.colouring));
    cmbTheme->setCurrentIndex(cmbTheme->findData(ToQString(plan.theme)));
    cmbTheme->setEnabled(plan.colouring == TerrainColouring::Height);
    for (const Check& check : checks_) {
        check.box->setChecked(plan.*check.field);
    }
    for (std::size_t row = 0; row < kLayers.size(); ++row) {
        lstTerrainLayers->item(static_cast<int>(row))
            ->setCheckState(plan.*kLayers[row].field ? Qt::Checked : Qt::Unchecked);
    }
    sldLightFrom->setValue(static_cast<int>(std::lround(plan.lightAzimuth)));
    sldLightHeight->setValue(static_cast<int>(std::lround(plan.lightElevation)));
}

void TerrainPanel::ShowCamera(double exaggeration, bool perspective) {
    const QScopedValueRollback<bool> showing(isShowing_, true);
    sldHeights->setValue(SliderOf(exaggeration));
    chkParallel->setChecked(!perspective);
    ShowFactor(exaggeration);
}

void TerrainPanel::ShowFactor(double factor) {
    lblFactor->setText(QStringLiteral("× ") + ToQString(terravo::NumberText::FormatScreen(
                                                  factor, "#0.####", state_.decimalSeparator)));
}
