#include "app/windows/SectionWindow.h"

#include "app/windows/Controls.h"
#include "app/windows/SchemeStyle.h"
#include "app/windows/SheetToFile.h"
#include "export/SheetPainter.h"
#include "util/NumberText.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QSignalBlocker>

#include <algorithm>

using terravo::PlanPoint;
using terravo::SectionFigures;
using terravo::Text;

namespace {

constexpr int kSoonMilliseconds = 60; // after the last change of the size
constexpr double kExaggerations[] = {1, 2, 5, 10, 20, 50, 100};

// Millimetres of the paper as places of a map, whose y goes up.
terravo::MapView PaperAsMap() {
    return {};
}

} // namespace

SectionWindow::SectionWindow(const terravo::RunState& state, terravo::Session& session,
                             const terravo::ColourScheme& scheme)
    : state_(state), session_(session) {
    setObjectName(QStringLiteral("SectionWindow"));
    setWindowTitle(Caption(state_, Text::SectionWindowTitle));
    MakeControls();
    ApplyColourScheme(*this, scheme);
    ConnectControls();
    soon_.setSingleShot(true);
    soon_.setInterval(kSoonMilliseconds);
    connect(&soon_, &QTimer::timeout, this, &SectionWindow::Draw);
    ListSections();
    Draw();
}

void SectionWindow::MakeControls() {
    picSection = Named(new SheetView(this), "picSection");
    picSection->setAccessibleName(Caption(state_, Text::SectionWindowTitle));
    picSection->setToolTip(Caption(state_, Text::SectionViewHint));
    picSection->SetHint(Caption(state_, Text::MeasureNoSection));
    lblPlace = Named(new QLabel(this), "lblPlace");
    lblVolumes = Named(new QLabel(this), "lblVolumes");
    lblPlace->setWordWrap(true);
    lblPlace->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblPlace->setFixedHeight(2 * lblPlace->fontMetrics().lineSpacing()); // the view keeps its size
    lblVolumes->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(picSection, 1);
    layout->addWidget(lblPlace);
    layout->addWidget(lblVolumes);
    layout->addLayout(MakeRow());
}

QBoxLayout* SectionWindow::MakeRow() {
    const auto labelled = [this](Text caption, const char* name) {
        auto* box = Named(new QComboBox(this), name);
        auto* label = new QLabel(Caption(state_, caption), this);
        label->setBuddy(box);
        box->setAccessibleName(Spoken(label->text()));
        return std::pair(label, box);
    };
    const auto [shown, shownBox] = labelled(Text::SectionShown, "cmbShown");
    const auto [times, timesBox] = labelled(Text::SectionExaggeration, "cmbExaggeration");
    cmbShown = shownBox;
    cmbExaggeration = timesBox;
    cmbShown->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    cmbExaggeration->addItem(Caption(state_, Text::SectionByItself));
    for (const double factor : kExaggerations) {
        cmbExaggeration->addItem(QString::number(factor), factor);
    }
    cmdExport = Named(new QPushButton(Caption(state_, Text::SectionExport), this), "cmdExport");
    cmdSaveCsv = Named(new QPushButton(Caption(state_, Text::SectionSaveCsv), this), "cmdSaveCsv");
    cmdAgain = Named(new QPushButton(Caption(state_, Text::MeasureAgain), this), "cmdAgain");
    auto* choices = new QHBoxLayout;
    choices->addWidget(shown);
    choices->addWidget(cmbShown);
    choices->addWidget(times);
    choices->addWidget(cmbExaggeration);
    choices->addStretch(1);
    auto* commands = new QHBoxLayout;
    commands->addWidget(cmdExport);
    commands->addWidget(cmdSaveCsv);
    commands->addWidget(cmdAgain);
    commands->addStretch(1);
    auto* rows = new QVBoxLayout;
    rows->addLayout(choices);
    rows->addLayout(commands);
    return rows;
}

void SectionWindow::ConnectControls() {
    connect(cmbShown, &QComboBox::currentIndexChanged, this, &SectionWindow::Draw);
    connect(cmbExaggeration, &QComboBox::currentIndexChanged, this, &SectionWindow::Draw);
    connect(cmdExport, &QPushButton::clicked, this, &SectionWindow::Export);
    connect(cmdSaveCsv, &QPushButton::clicked, this, &SectionWindow::SaveCsv);
    connect(cmdAgain, &QPushButton::clicked, this, &SectionWindow::AgainAsked);
    connect(picSection, &SheetView::PointerMoved, this, &SectionWindow::ShowPointer);
    connect(picSection, &SheetView::PointerLeft, this, [this] {
        MarkStation(std::nullopt);
        emit PointerLeft();
    });
}

void SectionWindow::ShowSection(SectionFigures section) {
    section_ = std::move(section);
    cross_.reset();
    ListSections();
    SetStale(false);
    Draw();
}

void SectionWindow::ShowCross(terravo::CrossSectionFigures cross, std::optional<double> datum) {
    cross_ = std::move(cross);
    datum_ = datum;
    ListSections();
    SetStale(false);
    cmbShown->setCurrentIndex(std::min(1, cmbShown->count() - 1));
    Draw();
}

void SectionWindow::Clear() {
    section_.reset();
    cross_.reset();
    ListSections();
    SetStale(false);
    Draw();
}

void SectionWindow::SetStale(bool isStale) {
    cmdAgain->setEnabled(isStale);
    isStale_ = isStale;
    EnableExports();
    const QString title = Caption(state_, Text::SectionWindowTitle);
    setWindowTitle(isStale ? WithRemark(title, Caption(state_, Text::MeasureStale)) : title);
}

// What is old is not handed out.
void SectionWindow::EnableExports() {
    for (QPushButton* button : {cmdExport, cmdSaveCsv}) {
        button->setEnabled(Shown() != nullptr && !isStale_);
    }
}

void SectionWindow::ListSections() {
    const QSignalBlocker quiet(cmbShown);
    cmbShown->clear();
    if (section_) {
        cmbShown->addItem(Caption(state_, Text::SectionAlong));
    }
    if (cross_) {
        for (const SectionFigures& section : cross_->sections) {
            cmbShown->addItem(Caption(state_, Text::SectionAcross).arg(Number(section.station)));
        }
    }
    cmbShown->setEnabled(cmbShown->count() > 1);
}

const SectionFigures* SectionWindow::Shown() const {
    const int row = cmbShown->currentIndex();
    if (row < 0) {
        return nullptr;
    }
    return row == 0 ? &*section_ : &cross_->sections[static_cast<std::size_t>(row) - 1];
}

const std::vector<PlanPoint>* SectionWindow::ShownLine() const {
    const SectionFigures* shown = Shown();
    return shown != nullptr ? &shown->line : nullptr;
}

std::optional<double> SectionWindow::Datum() const {
    return cmbShown->currentIndex() > 0 ? datum_ : std::nullopt;
}

// As large as it is looked at, so that its texts can be read.
terravo::PaperSize SectionWindow::PaperOfView() const {
    constexpr double kMillimetresPerInch = 25.4;
    constexpr double kLeast = 55; // smaller, the legend leaves no room
    constexpr double kMost = 2000;
    const double perPixel = kMillimetresPerInch / picSection->logicalDpiX();
    const auto length = [&](int pixels) { return std::clamp(pixels * perPixel, kLeast, kMost); };
    return {"", length(picSection->width()), length(picSection->height())};
}

// @param paper  its width is across.
terravo::SectionSheet SectionWindow::MakeSheet(const SectionFigures& shown,
                                               const terravo::PaperSize& paper) const {
    terravo::SectionPlan plan;
    plan.paper = {paper.name, std::min(paper.width, paper.height),
                  std::max(paper.width, paper.height)};
    plan.landscape = paper.width >= paper.height;
    if (cmbExaggeration->currentIndex() > 0) {
        plan.exaggeration = cmbExaggeration->currentData().toDouble();
    }
    const terravo::Survey* second = session_.Measures().Second();
    terravo::SectionSource source{shown.first};
    source.firstName = session_.Points().sourceName;
    if (shown.second && second != nullptr) {
        source.second = &*shown.second;
        source.secondName = second->Points().sourceName;
    }
    source.datum = Datum();
    source.areas = shown.areas;
    source.bends = terravo::BendsOf(shown.line);
    if (cmbShown->currentIndex() > 0) {
        source.station = shown.station;
    }
    const terravo::SheetTextMeasure measure;
    return MakeSectionSheet(plan, source, {state_.texts, measure, state_.decimalSeparator});
}

void SectionWindow::Draw() {
    const SectionFigures* shown = Shown();
    cmbExaggeration->setEnabled(shown != nullptr);
    EnableExports();
    lblPlace->clear();
    picSection->SetKept({});
    if (shown == nullptr) {
        picSection->Show(nullptr, {});
        lblVolumes->clear();
    } else {
        terravo::SectionSheet sheet = MakeSheet(*shown, PaperOfView());
        place_ = sheet.view;
        picSection->Show(std::make_shared<const terravo::SheetScene>(std::move(sheet.scene)),
                         PaperAsMap());
        lblVolumes->setText(TextOfVolumes(*shown));
    }
    lblVolumes->setVisible(!lblVolumes->text().isEmpty());
    emit ShownChanged();
}

void SectionWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    soon_.start();
}

QString SectionWindow::Number(double value) const {
    return ToQString(terravo::NumberText::FormatScreen(value, "#0.000", state_.decimalSeparator));
}

QString SectionWindow::TextOfVolumes(const SectionFigures& section) const {
    QStringList lines;
    if (section.areas) {
        lines += Caption(state_, Text::SectionAreasLine)
                     .arg(Number(section.areas->cut), Number(section.areas->fill));
    }
    if (cmbShown->currentIndex() > 0 && cross_->endAreas && cross_->exact) {
        lines += Caption(state_, Text::SectionVolumes)
                     .arg(Number(cross_->endAreas->cut), Number(cross_->endAreas->fill),
                          Number(cross_->exact->cut), Number(cross_->exact->fill));
    }
    if (cmbShown->currentIndex() > 0 && cross_->remark) {
        lines += Caption(state_, *cross_->remark);
    }
    return lines.join(QLatin1Char('\n'));
}

QString SectionWindow::TextAt(const SectionFigures& section, double station) const {
    const QString gap = QStringLiteral("   ");
    QString text = Caption(state_, Text::MeasureStation) + QStringLiteral(": ") +
                   Number(station - place_.zero) + QStringLiteral(" m");
    const std::optional<double> first = HeightAtStation(section.first, station);
    const std::optional<double> second =
        section.second ? HeightAtStation(*section.second, station) : std::nullopt;
    const auto add = [&](const QString& name, const std::optional<double>& height) {
        text += gap + name + QStringLiteral(": ") +
                (height ? Number(*height) + QStringLiteral(" m") : QStringLiteral("-"));
    };
    if (!section.second) {
        add(Caption(state_, Text::MeasureHeight), first);
        return text;
    }
    const terravo::Survey* other = session_.Measures().Second();
    add(ToQString(session_.Points().sourceName), first);
    add(other != nullptr ? ToQString(other->Points().sourceName)
                         : Caption(state_, Text::MeasureSecond),
        second);
    add(Caption(state_, Text::MeasureDifference),
        first && second ? std::optional(*second - *first) : std::nullopt);
    return text;
}

void SectionWindow::ShowPointer(double x, double /*y*/) {
    const SectionFigures* shown = Shown();
    if (shown == nullptr) {
        return;
    }
    const double station = place_.StationAt(x);
    if (station < 0 || station > shown->first.length) {
        MarkStation(std::nullopt);
        emit PointerLeft();
        return;
    }
    MarkStation(station);
    const PlanPoint place = terravo::PlaceAtStation(shown->line, station);
    emit Pointed(place.x, place.y);
}

void SectionWindow::MarkStation(std::optional<double> station) {
    const SectionFigures* shown = Shown();
    if (shown == nullptr || !station) {
        picSection->SetKept({});
        lblPlace->clear();
        return;
    }
    const double x = place_.ToPaper(*station, 0).x;
    KeptLine line;
    line.vertices = {{x, -place_.box.top}, {x, -place_.box.bottom}};
    line.isThin = true;
    line.colour = QColor(200, 30, 70);
    picSection->SetKept({line});
    lblPlace->setText(TextAt(*shown, *station));
}

void SectionWindow::Export() {
    const SectionFigures* shown = Shown();
    if (shown == nullptr) {
        return;
    }
    const terravo::PaperSize a4 = terravo::PaperSizes()[0];
    const terravo::SheetScene scene = MakeSheet(*shown, {a4.name, a4.height, a4.width}).scene;
    SheetToFile(state_, session_, "section", scene,
                state_.texts[Text::SectionWindowTitle] + " " + session_.Points().sourceName);
}

// All that can be shown.
void SectionWindow::SaveCsv() {
    std::vector<terravo::TableSection> sections;
    if (section_) {
        sections.push_back({&*section_, false});
    }
    if (cross_) {
        for (const SectionFigures& section : cross_->sections) {
            sections.push_back({&section, true});
        }
    }
    session_.SaveSections(sections);
}

void SectionWindow::closeEvent(QCloseEvent* event) {
    emit Closing();
    event->accept();
}
