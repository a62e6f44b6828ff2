#include "app/windows/MeasureDocuments.h"

#include "app/windows/Controls.h"
#include "app/windows/SheetMeasure.h"
#include "app/windows/StatusPanel.h"
#include "app/windows/VectorChoice.h"
#include "contour/LevelRuleText.h"

#include <algorithm>
#include <cmath>

using terravo::MeasureEntry;
using terravo::MeasureKind;
using terravo::MeasureQuestion;
using terravo::PlanPoint;
using terravo::Text;

namespace {

constexpr terravo::Index kManyPoints = 20000; // fewer are measured again at once
constexpr int kLaterMilliseconds = 150;
const QColor kPolygonColour(20, 90, 170);
const QColor kSectionColour(200, 80, 0);
const QColor kCrossColour(150, 110, 60);

// 1, 2 or 5 times a power of ten, not above a number.
double RoundBelow(double value) {
    const double power = std::pow(10, std::floor(std::log10(value)));
    return value >= 5 * power ? 5 * power : value >= 2 * power ? 2 * power : power;
}

double LengthOf(const std::vector<PlanPoint>& line) {
    double length = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        length += DistanceOf(line[i - 1], line[i]).distance;
    }
    return length;
}

CrossDialog::Choice ProposedCross(const std::vector<PlanPoint>& line) {
    constexpr double kSections = 10;
    constexpr double kWidths = 4; // in the length
    const double length = std::max(LengthOf(line), 0.01);
    return {RoundBelow(length / kSections), RoundBelow(length / kWidths), {}};
}

} // namespace

MeasureDocuments::MeasureDocuments(const terravo::RunState& state, terravo::Session& session,
                                   StatusPanel& status, const terravo::ColourScheme& scheme,
                                   QObject* parent)
    : QObject(parent), state_(state), session_(session), status_(status), scheme_(scheme) {
    askHeight = [this](const DatumDialog::Proposal& proposal) {
        DatumDialog dialog(state_, proposal, &status_);
        return dialog.exec() == QDialog::Accepted ? std::optional(dialog.Height()) : std::nullopt;
    };
    askCross = [this](const CrossDialog::Choice& proposal, double height, bool hasSecond) {
        CrossDialog dialog(state_, proposal, height, hasSecond, &status_);
        return dialog.exec() == QDialog::Accepted ? std::optional(dialog.Chosen()) : std::nullopt;
    };
    follow_.setSingleShot(true);
    connect(&follow_, &QTimer::timeout, this, &MeasureDocuments::FollowNow);
}

void MeasureDocuments::SetSheet(SheetWindow* sheet) {
    sheet_ = sheet;
    const MeasureTools& tools = sheet->Measuring();
    connect(&tools, &MeasureTools::SectionDrawn, this, &MeasureDocuments::DrawSection);
    connect(&tools, &MeasureTools::PolygonDrawn, this, [this](const std::vector<PlanPoint>& ring) {
        if (!session_.SetMeasuredPolygon({ring})) {
            sheet_->Measuring().ResumePolygon(ring);
        }
        ChangeFrame();
    });
    connect(&tools, &MeasureTools::PlaceChosen, this, [this](double x, double y) {
        MeasureQuestion question;
        question.kind = MeasureKind::Place;
        question.place = {x, y};
        Ask(question);
    });
    connect(&sheet->View(), &SheetView::PointerMoved, this, &MeasureDocuments::PointOnSheet);
    connect(&sheet->View(), &SheetView::PointerLeft, this, &MeasureDocuments::PointAwayFromSheet);
    ShowOverlay();
}

void MeasureDocuments::Run(MeasureCommand command) {
    MeasureQuestion question;
    switch (command) {
    case MeasureCommand::Areas:
        question.kind = MeasureKind::Areas;
        return Ask(question);
    case MeasureCommand::Hypsometry:
        question.kind = MeasureKind::Hypsometry;
        return Ask(question);
    case MeasureCommand::ToDatum:
        return AskToDatum();
    case MeasureCommand::Compare:
        return Compare();
    case MeasureCommand::ForgetSecond:
        session_.ForgetSecond();
        RemakeSection();
        return ChangeFrame();
    case MeasureCommand::Place:
    case MeasureCommand::Section:
    case MeasureCommand::Polygon:
        return TakeTool(*ToolOf(command));
    case MeasureCommand::Cross:
        return AskCross();
    case MeasureCommand::RemoveSection:
        return ForgetSection();
    case MeasureCommand::PolygonFile:
        session_.OpenMeasuredPolygon();
        return ChangeFrame();
    case MeasureCommand::RemovePolygon:
        session_.SetMeasuredPolygon({});
        return ChangeFrame();
    case MeasureCommand::Results:
        return ShowResults(false, true);
    }
}

void MeasureDocuments::Ask(const MeasureQuestion& question) {
    std::optional<terravo::MeasureAnswer> answer = session_.Measure(question);
    if (!answer) {
        return;
    }
    if (question.kind == MeasureKind::Place) {
        status_.ShowNote(HeightIn(answer->report));
    }
    log_.Add({question, std::move(answer->report), session_.StandOfMeasures()});
    // The next click of that tool is on the sheet again.
    ShowResults(true, question.kind != MeasureKind::Place);
    if (answer->cross) {
        crossShown_ = question;
        ShowSection();
        section_->ShowCross(*std::move(answer->cross), question.crossDatum);
    }
}

// For who clicks on a sheet that covers the results.
QString MeasureDocuments::HeightIn(const terravo::MeasureReport& report) const {
    const QString title = ToQString(report.title) + QStringLiteral(": ");
    for (const std::vector<terravo::MeasureCell>& row : report.rows) {
        if (row[0].text == state_.texts[Text::MeasureHeight]) {
            return title + ToQString(row[1].text + " " + row[2].text);
        }
    }
    return title + ToQString(report.remark);
}

void MeasureDocuments::AskToDatum() {
    const std::optional<terravo::AreaFigures> areas = session_.MeasureAreas();
    if (!areas) {
        return;
    }
    const double balance = areas->meanHeight;
    const std::optional<double> height =
        askHeight({lastHeight_.value_or(balance), areas->z.min, areas->z.max, balance});
    if (height) {
        lastHeight_ = height;
        MeasureQuestion question;
        question.kind = MeasureKind::ToDatum;
        question.datum = *height;
        Ask(question);
    }
}

void MeasureDocuments::AskCross() {
    const std::vector<PlanPoint>& axis = session_.SectionLine();
    if (axis.empty()) {
        return;
    }
    const terravo::Extent& heights = session_.TheSurvey().ShownPoints().extentZ;
    const double height = lastHeight_.value_or(std::floor(heights.min));
    const std::optional<CrossDialog::Choice> chosen = askCross(
        lastCross_.value_or(ProposedCross(axis)), height, session_.Measures().Second() != nullptr);
    if (!chosen) {
        return;
    }
    lastCross_ = chosen;
    MeasureQuestion question;
    question.kind = MeasureKind::Cross;
    question.plan = {axis, chosen->spacing, chosen->width};
    question.crossDatum = chosen->datum;
    if (terravo::AreTooMany(question.plan)) {
        status_.ShowNote(Caption(state_, Text::MeasureTooMany).arg(terravo::kMostCrossSections));
        return;
    }
    Ask(question);
}

void MeasureDocuments::Again(std::size_t entry) {
    const MeasureQuestion question = log_.Entries()[entry].question;
    Ask(question);
}

void MeasureDocuments::TakeTool(SheetTool tool) {
    if (sheet_ == nullptr && room_.openSheet) {
        room_.openSheet();
    }
    if (sheet_ != nullptr) {
        room_.activate(*sheet_);
        sheet_->Toggle(tool);
    }
}

void MeasureDocuments::Compare() {
    if (!session_.CompareWithFile()) {
        return;
    }
    RemakeSection();
    ChangeFrame();
    MeasureQuestion question;
    question.kind = MeasureKind::ToSecond;
    Ask(question);
}

void MeasureDocuments::DrawSection(const std::vector<PlanPoint>& line) {
    if (std::optional<terravo::SectionFigures> section = session_.MakeSection(line)) {
        ShowSection();
        section_->ShowSection(*std::move(section));
        lastCross_.reset(); // of another axis
    }
    ChangeFrame();
}

void MeasureDocuments::RemakeSection() {
    if (section_ == nullptr || session_.SectionLine().empty()) {
        return;
    }
    if (std::optional<terravo::SectionFigures> section =
            session_.MakeSection(session_.SectionLine())) {
        section_->ShowSection(*std::move(section));
    }
}

// The section, and where there are cross-sections, those too.
void MeasureDocuments::RemakeCross() {
    const bool hasCross = section_ != nullptr && section_->Cross() != nullptr;
    RemakeSection();
    if (hasCross && crossShown_) {
        Ask(*crossShown_);
    }
}

void MeasureDocuments::ForgetSection() {
    session_.ForgetSection();
    if (section_ != nullptr) {
        section_->Clear();
    }
    ChangeFrame();
}

template <class Window>
void MeasureDocuments::AddDocument(Window* window, const DocumentKind& kind) {
    const std::function<void()> keepPlace = room_.add(window, kind);
    connect(window, &Window::Closing, this, keepPlace);
}

void MeasureDocuments::ShowResults(bool selectsNewest, bool comesToFront) {
    static constexpr DocumentKind kKind{"MeasureWindow", {520, 560}, {360, 300}, true};
    if (results_ == nullptr) {
        results_ = new MeasureWindow(state_, session_, log_, scheme_);
        AddDocument(results_.data(), kKind);
        connect(results_, &MeasureWindow::AgainAsked, this, &MeasureDocuments::Again);
        connect(results_, &MeasureWindow::DifferenceSheetAsked, this,
                &MeasureDocuments::ShowDifference);
        connect(results_, &MeasureWindow::DifferenceExportAsked, this,
                &MeasureDocuments::ExportDifference);
        connect(results_, &MeasureWindow::Noted, this,
                [this](const QString& text) { status_.ShowNote(text); });
    }
    results_->Refresh(selectsNewest);
    if (comesToFront) {
        room_.activate(*results_);
    }
}

void MeasureDocuments::ShowSection() {
    static constexpr DocumentKind kKind{"SectionWindow", {760, 460}, {420, 300}, true};
    if (section_ == nullptr) {
        section_ = new SectionWindow(state_, session_, scheme_);
        AddDocument(section_.data(), kKind);
        connect(section_, &SectionWindow::ShownChanged, this, &MeasureDocuments::ShowOverlay);
        connect(section_, &SectionWindow::Pointed, this, [this](double x, double y) {
            if (sheet_ != nullptr) {
                sheet_->View().SetMark(PlanPoint{x, y});
            }
        });
        connect(section_, &SectionWindow::PointerLeft, this, [this] {
            if (sheet_ != nullptr) {
                sheet_->View().SetMark(std::nullopt);
            }
        });
        connect(section_, &SectionWindow::AgainAsked, this, &MeasureDocuments::RemakeCross);
        connect(section_, &QObject::destroyed, this, &MeasureDocuments::ShowOverlay);
        RemakeSection();
    }
    room_.activate(*section_);
}

void MeasureDocuments::ShowDifference() {
    static constexpr DocumentKind kKind{"DifferenceWindow", {760, 600}, {420, 320}, true};
    std::optional<terravo::DifferenceSurface> made = session_.MakeDifference();
    if (!made) {
        return;
    }
    if (difference_ == nullptr) {
        difference_ = new DifferenceWindow(state_, session_, scheme_);
        AddDocument(difference_.data(), kKind);
        connect(difference_, &DifferenceWindow::ExportAsked, this,
                &MeasureDocuments::ExportDifference);
        connect(difference_, &DifferenceWindow::AgainAsked, this,
                &MeasureDocuments::ShowDifference);
    }
    const bool isShown = difference_->Show(*std::move(made));
    differenceStand_ = isShown ? std::optional(session_.StandOfMeasures()) : std::nullopt;
    room_.activate(*difference_);
}

// A comparison may take long: it is made again when it is asked for.
void MeasureDocuments::FollowDifference() {
    if (difference_ == nullptr) {
        return;
    }
    const terravo::MeasureStand now = session_.StandOfMeasures();
    std::optional<Text> since;
    if (differenceStand_ && now.points != differenceStand_->points) {
        since = Text::MeasureOther;
    } else if (!(now == differenceStand_)) {
        since = Text::MeasureStale;
    }
    difference_->SetStale(since, session_.Measures().Second() != nullptr);
}

void MeasureDocuments::ExportDifference() {
    const std::optional<terravo::DifferenceSurface> made = session_.MakeDifference();
    if (!made) {
        return;
    }
    const terravo::Extent& heights = made->points.extentZ;
    const auto levels = [&] {
        return ToQString(ResultText(terravo::RoundLevels(heights), heights, state_.texts));
    };
    if (const std::optional<VectorChoice> choice =
            AskForVector(state_, session_, levels, {}, &status_)) {
        session_.ExportDifference(*made, choice->format, choice->wish, choice->Writer());
    }
}

void MeasureDocuments::ShowOverlay() {
    if (sheet_ == nullptr) {
        return;
    }
    std::vector<KeptLine> lines;
    for (const terravo::PlanRing& ring : session_.Measures().Polygon()) {
        lines.push_back({ring, true, false, kPolygonColour});
    }
    const bool hasWindow = section_ != nullptr;
    if (hasWindow && section_->Cross() != nullptr) {
        for (const terravo::SectionFigures& section : section_->Cross()->sections) {
            lines.push_back({section.line, false, true, kCrossColour});
        }
    }
    if (!session_.SectionLine().empty()) {
        lines.push_back({session_.SectionLine(), false, false, kSectionColour});
    }
    if (hasWindow && section_->ShownLine() != nullptr &&
        *section_->ShownLine() != session_.SectionLine()) {
        lines.push_back({*section_->ShownLine(), false, false, kSectionColour});
    }
    sheet_->View().SetKept(std::move(lines));
}

void MeasureDocuments::ChangeFrame() {
    ShowOverlay();
    if (results_ != nullptr) {
        results_->Refresh();
    }
    FollowDifference();
    stand_ = session_.StandOfMeasures();
    emit FrameChanged();
}

void MeasureDocuments::FollowNow() {
    if (status_.IsWorking()) {
        follow_.start(kLaterMilliseconds);
        return;
    }
    const terravo::MeasureStand now = session_.StandOfMeasures();
    if (now == stand_) {
        return;
    }
    stand_ = now;
    if (section_ != nullptr) {
        if (session_.SectionLine().empty()) {
            section_->Clear();
        } else if (session_.Points().count <= kManyPoints && section_->Cross() == nullptr) {
            RemakeSection();
        } else {
            section_->SetStale(true);
        }
    }
    MeasureAgain(now);
    ChangeFrame();
}

// Of many points nobody wants to wait for figures after every edit; a comparison may take long.
void MeasureDocuments::MeasureAgain(const terravo::MeasureStand& now) {
    if (session_.Points().count > kManyPoints) {
        return;
    }
    for (MeasureEntry& entry : log_.Entries()) {
        const MeasureKind kind = entry.question.kind;
        if (!entry.IsStale(now) || !entry.CanBeRepeated(now) || kind == MeasureKind::Cross ||
            kind == MeasureKind::ToSecond) {
            continue;
        }
        if (std::optional<terravo::MeasureAnswer> answer = session_.Measure(entry.question)) {
            entry.report = std::move(answer->report);
            entry.stand = now;
        }
    }
}

// Near the line that the section shows, its station is marked in both windows.
void MeasureDocuments::PointOnSheet(double x, double y) {
    constexpr double kReachPixels = 14;
    const std::vector<PlanPoint>* line = section_ != nullptr ? section_->ShownLine() : nullptr;
    if (line == nullptr || sheet_ == nullptr) {
        return;
    }
    SheetView& view = sheet_->View();
    const double station = terravo::StationNearest(*line, {x, y});
    const PlanPoint place = terravo::PlaceAtStation(*line, station);
    const QPointF away = view.PixelAt(place) - view.PixelAt({x, y});
    if (std::hypot(away.x(), away.y()) > kReachPixels) {
        PointAwayFromSheet();
        return;
    }
    section_->MarkStation(station);
    view.SetMark(place);
    hasMarked_ = true;
}

void MeasureDocuments::PointAwayFromSheet() {
    if (!std::exchange(hasMarked_, false)) {
        return;
    }
    if (section_ != nullptr) {
        section_->MarkStation(std::nullopt);
    }
    if (sheet_ != nullptr) {
        sheet_->View().SetMark(std::nullopt);
    }
}
