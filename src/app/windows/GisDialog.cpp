#include "app/windows/GisDialog.h"

#include "app/windows/Controls.h"
#include "util/PathText.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

using terravo::Extent;
using terravo::GisFault;
using terravo::GisField;
using terravo::GisLayer;
using terravo::GisPlan;
using terravo::GisSource;
using terravo::GisSystem;
using terravo::GisVerdict;
using terravo::RunState;
using terravo::Text;

namespace {

constexpr int kUsualWidth = 760;
constexpr int kUsualHeight = 480;
constexpr int kWidestColumn = 300;
constexpr int kColumnGap = 14;

enum Coordinates { kAsTheyAre, kProjected };

QString Counted(std::int64_t count) {
    return count == 0 ? QString() : QLocale().toString(qlonglong{count});
}

// Of points, lines and rings, which a raster does not have.
void AlignCounts(QTreeWidgetItem& row, bool isRaster) {
    constexpr int kCounts = 3;
    for (int column = 1; column <= kCounts && !isRaster; ++column) {
        row.setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
}

QString HeightsOf(const Extent& z) {
    constexpr int kDigits = 7;
    const auto number = [](double value) {
        return QLocale().toString(value, 'g', kDigits).remove(QLocale().groupSeparator());
    };
    return number(z.min) + QStringLiteral(" – ") + number(z.max);
}

} // namespace

GisDialog::GisDialog(const RunState& state, const std::string& path, const GisSource& source,
                     const GisPlan& begin, QWidget* parent)
    : QDialog(parent), state_(state), source_(source),
      lstLayers(Named(new QTreeWidget(this), "lstLayers")),
      cmbHeights(Named(new QComboBox(this), "cmbHeights")),
      cmbCoordinates(Named(new QComboBox(this), "cmbCoordinates")),
      txtSystem(Named(new QLineEdit(this), "txtSystem")),
      spnStep(Named(new QSpinBox(this), "spnStep")), lblCount(Named(new QLabel(this), "lblCount")),
      lblReason(Named(new QLabel(this), "lblReason")),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setObjectName(QStringLiteral("GisDialog"));
    setWindowTitle(
        Caption(state_, Text::ImportTitle).arg(ToQString(terravo::SplitPath(path).name)));
    auto* layout = new QVBoxLayout(this);
    auto* heading =
        new QLabel(Caption(state_, Text::GisHeading).arg(ToQString(source.format)), this);
    heading->setBuddy(lstLayers);
    layout->addWidget(heading);
    lstLayers->setAccessibleName(Spoken(heading->text()));
    MakeLayers(begin);
    layout->addWidget(lstLayers, 1);
    layout->addLayout(MakeChoices(begin));
    layout->addLayout(MakeEnd());
    Connect();
    resize(kUsualWidth, kUsualHeight);
    ShowHeights();
    if (const int chosen = cmbHeights->findText(ToQString(begin.heightField)); chosen > 0) {
        cmbHeights->setCurrentIndex(chosen);
    }
    ShowPlan();
    lstLayers->setFocus();
}

QTreeWidgetItem* GisDialog::RowOf(const GisLayer& layer) const {
    QStringList cells{ToQString(layer.name)};
    if (source_.isRaster) {
        cells += QStringLiteral("%1 × %2").arg(Counted(layer.columns), Counted(layer.rows));
    } else {
        cells += {Counted(layer.points), Counted(layer.lines), Counted(layer.rings),
                  layer.hasHeights ? HeightsOf(layer.z) : Caption(state_, Text::GisNoHeights)};
    }
    cells += SystemText(layer.system);
    auto* row = new QTreeWidgetItem(cells);
    AlignCounts(*row, source_.isRaster);
    return row;
}

// Layers without a place, and pictures, are shown but cannot be chosen.
void GisDialog::MakeLayers(const GisPlan& begin) {
    QStringList captions{Caption(state_, Text::GisLayer)};
    if (source_.isRaster) {
        captions += Caption(state_, Text::GisCells);
    } else {
        captions += {Caption(state_, Text::GisPoints), Caption(state_, Text::GisLines),
                     Caption(state_, Text::GisPolygons), Caption(state_, Text::GisHeights)};
    }
    captions += Caption(state_, Text::GisSystem);
    lstLayers->setHeaderLabels(captions);
    lstLayers->setRootIsDecorated(false);
    lstLayers->setUniformRowHeights(true);
    lstLayers->setAlternatingRowColors(true);
    for (const GisLayer& layer : source_.layers) {
        QTreeWidgetItem* row = RowOf(layer);
        const bool mayBeRead = layer.vertices > 0 && (layer.hasHeights || !source_.isRaster);
        const bool isChosen =
            std::find(begin.layers.begin(), begin.layers.end(), layer.name) != begin.layers.end();
        row->setCheckState(0, mayBeRead && isChosen ? Qt::Checked : Qt::Unchecked);
        row->setDisabled(!mayBeRead);
        lstLayers->addTopLevelItem(row);
    }
    for (int column = 0; column < captions.size(); ++column) {
        lstLayers->resizeColumnToContents(column);
        lstLayers->setColumnWidth(
            column, std::min(lstLayers->columnWidth(column) + kColumnGap, kWidestColumn));
    }
    AlignCounts(*lstLayers->headerItem(), source_.isRaster);
    lstLayers->setCurrentItem(lstLayers->topLevelItem(0));
}

QString GisDialog::SystemText(const GisSystem& system) const {
    if (system.name.empty()) {
        return Caption(state_, Text::GisUnknownSystem);
    }
    const QString name = ToQString(system.name);
    return system.epsg ? name + QStringLiteral(" (EPSG:%1)").arg(*system.epsg) : name;
}

void GisDialog::AddChoice(QGridLayout& grid, int row, Text caption, QWidget* control) {
    auto* label = new QLabel(Caption(state_, caption), this);
    label->setBuddy(control);
    control->setAccessibleName(Spoken(label->text()));
    grid.addWidget(label, row, 0);
    grid.addWidget(control, row, 1);
}

QLayout* GisDialog::MakeChoices(const GisPlan& begin) {
    auto* grid = new QGridLayout;
    AddChoice(*grid, 0, Text::GisHeightsFrom, cmbHeights);
    AddChoice(*grid, 1, Text::GisCoordinates, cmbCoordinates);
    grid->addWidget(txtSystem, 1, 2);
    AddChoice(*grid, 2, Text::GisStep, spnStep);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 1);
    FillSystems(begin);
    spnStep->setRange(1, terravo::kMostRasterStep);
    spnStep->setValue(begin.rasterStep.value_or(1));
    // What a kind of file does not have is not shown.
    const int unused = source_.isRaster ? 0 : 2;
    for (const int column : {0, 1}) {
        grid->itemAtPosition(unused, column)->widget()->hide();
    }
    return grid;
}

// Nothing can be projected from a system that is not told.
void GisDialog::FillSystems(const GisPlan& begin) {
    cmbCoordinates->addItem(Caption(state_, Text::GisAsTheyAre));
    cmbCoordinates->addItem(Caption(state_, Text::GisProjectTo));
    cmbCoordinates->setCurrentIndex(begin.toEpsg ? kProjected : kAsTheyAre);
    const bool isKnown =
        std::any_of(source_.layers.begin(), source_.layers.end(),
                    [](const GisLayer& layer) { return !layer.system.name.empty(); });
    cmbCoordinates->setEnabled(isKnown);
    txtSystem->setAccessibleName(Spoken(Caption(state_, Text::GisProjectTo)));
    std::optional<int> proposed = begin.toEpsg;
    for (const GisLayer& layer : source_.layers) {
        if (!proposed && layer.system.isGeographic) {
            proposed = terravo::ZoneOf(layer);
        }
    }
    if (proposed) {
        txtSystem->setText(QStringLiteral("EPSG:%1").arg(*proposed));
    }
}

QLayout* GisDialog::MakeEnd() {
    QPushButton* read = Named(buttons_->button(QDialogButtonBox::Ok), "cmdRead");
    QPushButton* cancel = Named(buttons_->button(QDialogButtonBox::Cancel), "cmdCancel");
    read->setText(Caption(state_, Text::ImportRead));
    cancel->setText(Caption(state_, Text::Cancel));
    lblReason->setWordWrap(true);
    auto* last = new QHBoxLayout;
    last->addWidget(lblReason, 1);
    last->addWidget(buttons_);
    auto* end = new QVBoxLayout;
    end->addWidget(lblCount);
    end->addLayout(last);
    return end;
}

void GisDialog::Connect() {
    connect(lstLayers, &QTreeWidget::itemChanged, this, [this] {
        ShowHeights();
        ShowPlan();
    });
    connect(cmbHeights, &QComboBox::activated, this, &GisDialog::ShowPlan);
    connect(cmbCoordinates, &QComboBox::activated, this, &GisDialog::ShowPlan);
    connect(txtSystem, &QLineEdit::textEdited, this, &GisDialog::ShowPlan);
    connect(spnStep, &QSpinBox::valueChanged, this, &GisDialog::ShowPlan);
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

std::vector<std::string> GisDialog::ChosenLayers() const {
    std::vector<std::string> names;
    for (int i = 0; i < lstLayers->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* row = lstLayers->topLevelItem(i);
        if (!row->isDisabled() && row->checkState(0) == Qt::Checked) {
            names.push_back(row->text(0).toStdString());
        }
    }
    return names;
}

// The attribute that is named like a height, where a chosen layer has no heights of its own.
QString GisDialog::NamedHeights() const {
    const std::vector<std::string> chosen = ChosenLayers();
    for (const GisLayer& layer : source_.layers) {
        const std::string field = terravo::HeightFieldOf(layer, {});
        if (!field.empty() && std::find(chosen.begin(), chosen.end(), layer.name) != chosen.end()) {
            return ToQString(field);
        }
    }
    return {};
}

// The attributes that every chosen layer has as numbers; the choice stays where it can.
void GisDialog::ShowHeights() {
    const QString before = cmbHeights->currentIndex() > 0 ? cmbHeights->currentText() : QString();
    const std::vector<std::string> chosen = ChosenLayers();
    cmbHeights->clear();
    cmbHeights->addItem(Caption(state_, Text::GisOwnHeights));
    std::optional<QStringList> common;
    for (const GisLayer& layer : source_.layers) {
        if (std::find(chosen.begin(), chosen.end(), layer.name) == chosen.end()) {
            continue;
        }
        QStringList names;
        for (const GisField& field : layer.fields) {
            const QString name = ToQString(field.name);
            if (field.isNumber && (!common || common->contains(name))) {
                names += name;
            }
        }
        common = names;
    }
    cmbHeights->addItems(common.value_or(QStringList()));
    cmbHeights->setCurrentIndex(
        std::max(cmbHeights->findText(before.isEmpty() ? NamedHeights() : before), 0));
}

std::optional<int> GisDialog::TypedCode() const {
    const QString prefix = QStringLiteral("EPSG:");
    const QString text = txtSystem->text().trimmed();
    bool isNumber = false;
    const int code = (text.startsWith(prefix, Qt::CaseInsensitive) ? text.mid(prefix.size()) : text)
                         .toInt(&isNumber);
    return isNumber && code > 0 ? std::optional(code) : std::nullopt;
}

GisPlan GisDialog::Plan() const {
    GisPlan plan;
    plan.layers = ChosenLayers();
    if (cmbHeights->currentIndex() > 0) {
        plan.heightField = cmbHeights->currentText().toStdString();
    }
    plan.degreesAsTheyAre = cmbCoordinates->currentIndex() == kAsTheyAre;
    if (!plan.degreesAsTheyAre) {
        plan.toEpsg = TypedCode();
    }
    if (source_.isRaster) {
        plan.rasterStep = spnStep->value();
    }
    return plan;
}

// Why the plan cannot be carried out; empty when it can.
QString GisDialog::Reason(const GisPlan& plan) const {
    if (plan.layers.empty()) {
        return Caption(state_, Text::GisNeedsLayer);
    }
    if (!plan.degreesAsTheyAre && !plan.toEpsg) {
        return Caption(state_, Text::GisNeedsCode);
    }
    const GisVerdict verdict = terravo::Judge(source_, plan);
    switch (verdict.fault) {
    case GisFault::None:
        return {};
    case GisFault::NoHeights:
        return Caption(state_, Text::GisNeedsHeights).arg(ToQString(verdict.detail));
    case GisFault::NoSystem:
        return Caption(state_, Text::GisNeedsSystem).arg(ToQString(verdict.detail));
    case GisFault::ManySystems:
        return Caption(state_, Text::GisManySystems);
    case GisFault::TooManyPoints:
        return Caption(state_, Text::GisTooManyPoints);
    default: // what the controls do not let anybody choose
        return ToQString(SentenceOf(verdict, source_, plan));
    }
}

QString GisDialog::Warning(const GisPlan& plan) const {
    const std::vector<std::size_t> places = terravo::LayersOf(source_, plan);
    const bool areDegrees = plan.degreesAsTheyAre &&
                            std::any_of(places.begin(), places.end(), [this](std::size_t place) {
                                return source_.layers[place].system.isGeographic;
                            });
    return areDegrees ? Caption(state_, Text::GisDegrees) : QString();
}

void GisDialog::ShowPlan() {
    const GisPlan plan = Plan();
    const bool isProjected = cmbCoordinates->currentIndex() == kProjected;
    txtSystem->setEnabled(isProjected);
    txtSystem->setPlaceholderText(isProjected ? QStringLiteral("EPSG:25832") : QString());
    const std::int64_t count = plan.layers.empty() ? 0 : terravo::CountOf(source_, plan);
    lblCount->setText(Caption(state_, source_.isRaster ? Text::GisCellCount : Text::GisCount)
                          .arg(QLocale().toString(qlonglong{count})));
    const QString reason = Reason(plan);
    lblReason->setText(reason.isEmpty() ? Warning(plan) : reason);
    QPushButton* read = buttons_->button(QDialogButtonBox::Ok);
    read->setEnabled(reason.isEmpty());
    read->setAccessibleDescription(lblReason->text());
}

std::optional<GisPlan> QtGisDialogs::Ask(const std::string& path, const GisSource& source,
                                         const GisPlan& begin) {
    GisDialog dialog(state_, path, source, begin, QApplication::activeWindow());
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.Plan()) : std::nullopt;
}
