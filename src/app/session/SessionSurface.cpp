// The session's commands that shape the surface, each of which can be undone.
#include "app/session/FileDialog.h"
#include "app/session/Session.h"
#include "app/session/WorkGuard.h"
#include "gis/GisLines.h"
#include "survey/check/SurfaceFindings.h"
#include "survey/surface/CodeLines.h"
#include "survey/surface/VerifySurface.h"
#include "util/AppError.h"
#include "util/NumberText.h"

#include <algorithm>
#include <utility>

namespace terravo {
namespace {

constexpr Index kFewestInUse = 3;
constexpr Index kManyPoints = 20000; // fewer are made anew before anybody notices

std::vector<SharedLine>& ListOf(SurfacePlan& plan, LineRole role) {
    return role == LineRole::Breakline  ? plan.breaklines
           : role == LineRole::Boundary ? plan.boundary
                                        : plan.holes;
}

Text StepOf(LineRole role) {
    return role == LineRole::Breakline  ? Text::StepBreaklines
           : role == LineRole::Boundary ? Text::StepBoundary
                                        : Text::StepHoles;
}

// The held side between the ends of a side, whichever way it runs.
std::vector<HeldSide>::iterator FindHeld(SurfacePlan& plan, const PickedSide& side) {
    return std::find_if(plan.held.begin(), plan.held.end(), [&side](const HeldSide& held) {
        return (held.from == side.from && held.to == side.to) ||
               (held.from == side.to && held.to == side.from);
    });
}

std::string OneBelowTheOther(const std::vector<std::string>& sentences) {
    constexpr std::size_t kMost = 12;
    std::string text;
    for (std::size_t i = 0; i < std::min(sentences.size(), kMost); ++i) {
        text += (i == 0 ? "" : "\r\n") + sentences[i];
    }
    if (sentences.size() > kMost) {
        text += "\r\n... (" + std::to_string(sentences.size()) + ")";
    }
    return text;
}

} // namespace

// What everything shows follows the plan: of many points the changed part at once, all else when
// the user pauses.
bool Session::ShowPlan(SurfacePlan plan) {
    const std::optional<SurfacePatch> patch = FollowPlan(plan);
    if (!survey_.SetPlan(std::move(plan))) {
        return false;
    }
    view_->ShowPointCount(survey_.Points().count);
    if (patch) {
        isBehind_ = true;
        view_->ShowPatch(*patch);
    } else {
        MakeAllAnew();
    }
    return true;
}

void Session::MakeAllAnew() {
    RunPipeline();
    ShowResultViews(drawn_);
    view_->ShowFindings();
}

// Whether there is a live surface, for which it takes many points and somewhere to see the patches.
bool Session::MakeLive() {
    if (survey_.Points().count < kManyPoints || !view_->TakesPatches()) {
        return false;
    }
    if (live_ && live_->Holds()) {
        return true;
    }
    live_.reset();
    if (LiveSurface::CanFollow(survey_)) {
        live_ = std::make_unique<LiveSurface>(survey_);
    }
    return live_ != nullptr;
}

void Session::PrepareEdits() {
    if (depth_ == 0) {
        MakeLive();
    }
}

std::optional<SurfacePatch> Session::FollowPlan(const SurfacePlan& plan) {
    if (!MakeLive()) {
        return std::nullopt;
    }
    std::optional<SurfacePatch> patch = live_->Follow(plan);
    if (!patch) {
        live_.reset();
    }
    return patch;
}

void Session::CatchUp() {
    if (!isBehind_ || depth_ > 0) {
        return;
    }
    givesWay_ = true;
    RunPipeline();
    givesWay_ = false;
    if (wasInterrupted_) {
        isBehind_ = true;
        return;
    }
    ShowResultViews(drawn_);
    view_->ShowFindings();
}

void Session::Interrupt() {
    wasInterrupted_ = true;
    RequestStop();
}

bool Session::ApplyPlan(SurfacePlan plan, Text step) {
    if (depth_ > 0 || plan == survey_.Plan()) {
        return false;
    }
    if (static_cast<Index>(plan.excluded.size()) > survey_.AllPoints().count - kFewestInUse) {
        services_.messages.ShowCritical(state_.texts[Text::ThreeMustRemain], "");
        return false;
    }
    history_.Add(plan, state_.texts[step]);
    return ShowPlan(std::move(plan));
}

bool Session::Undo() {
    return depth_ == 0 && history_.CanUndo() && ShowPlan(history_.Undo());
}

bool Session::Redo() {
    return depth_ == 0 && history_.CanRedo() && ShowPlan(history_.Redo());
}

bool Session::AddLines(LineRole role, std::vector<SurfaceLine> lines) {
    if (lines.empty()) {
        return false;
    }
    const std::vector<std::string> leftOutBefore = LinesLeftOut();
    SurfacePlan plan = survey_.Plan();
    for (SurfaceLine& line : lines) {
        ListOf(plan, role).push_back(std::make_shared<const SurfaceLine>(std::move(line)));
    }
    const std::string count = std::to_string(lines.size());
    if (!ApplyPlan(std::move(plan), StepOf(role))) {
        return false;
    }
    view_->ShowNote(WithValues(state_.texts[Text::LinesAdded], {count}));
    TellOfLinesLeftOut(leftOutBefore);
    return true;
}

std::vector<std::string> Session::LinesLeftOut() const {
    std::vector<std::string> sentences;
    const std::optional<ShownSurface> shown = survey_.KnownSurface();
    if (shown && shown->shaped != nullptr) {
        for (const Finding& finding : LostLines(*shown->shaped, survey_.Plan(), survey_.Points())) {
            sentences.push_back(SentenceOf(finding, survey_.Points().labels, state_.texts,
                                           state_.decimalSeparator));
        }
    }
    return sentences;
}

// A bridge over a road, or a line beside the survey, must not be lost without a word; one is
// enough.
void Session::TellOfLinesLeftOut(const std::vector<std::string>& before) {
    std::vector<std::string> sentences = LinesLeftOut();
    std::erase_if(sentences, [&before](const std::string& sentence) {
        return std::find(before.begin(), before.end(), sentence) != before.end();
    });
    TellRemarks(sentences);
}

std::optional<LineReading> Session::AskForLines(LineClosing closing) {
    const FileQuestion question{.mode = "Open",
                                .description = state_.texts[Text::LineFileWord],
                                .pattern = "*.txt;*.csv;*.dxf;*.gpkg;*.shp;*.geojson;*.kml;*.xyz",
                                .initialFolder = survey_.Points().sourceFolder,
                                .defaultName = {},
                                .title = state_.texts[Text::ChooseFile],
                                .extension = {}};
    LineReading reading;
    try {
        const std::string path = FileDialog(services_.dialogs, question, state_);
        const WorkGuard work(*this);
        reading = ReadSurfaceLines(path, closing, {}, stop_);
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.messages.ShowCritical(error.what(), "");
        }
        return std::nullopt;
    }
    if (!reading.failure.empty()) {
        services_.log.Write(reading.failure);
        services_.messages.ShowCritical(reading.failure, "");
        return std::nullopt;
    }
    return reading;
}

void Session::TellRemarks(const std::vector<std::string>& remarks, const std::string& title) {
    if (!remarks.empty()) {
        services_.messages.ShowInformation(OneBelowTheOther(remarks), title);
    }
}

void Session::AddLineFile(LineRole role) {
    std::optional<LineReading> reading =
        AskForLines(role == LineRole::Breakline ? LineClosing::AsTheyAre : LineClosing::Always);
    if (reading) {
        AddLines(role, std::move(reading->lines));
        TellRemarks(reading->remarks);
    }
}

void Session::AddCodeLines(const std::vector<std::string>& codes) {
    CodeLineReading reading = LinesFromCodes(survey_.Points(), codes);
    AddLines(LineRole::Breakline, std::move(reading.lines));
    TellRemarks(reading.remarks);
}

void Session::SetLongestSide(std::optional<double> length) {
    SurfacePlan plan = survey_.Plan();
    plan.longestSide = length;
    ApplyPlan(std::move(plan), Text::StepLongestSide);
}

void Session::VerifySurface() {
    if (depth_ > 0 || survey_.Points().count == 0) {
        return;
    }
    std::optional<std::string> fault;
    {
        const WorkGuard work(*this);
        fault = terravo::VerifySurface(survey_);
    }
    if (fault) {
        services_.log.Write(*fault);
        services_.messages.ShowCritical(*fault, "");
        return;
    }
    const ShownSurface shown = survey_.Surface();
    const Index all =
        shown.shaped == nullptr ? shown.triangles.count : shown.shaped->all.triangles.count;
    services_.messages.ShowInformation(
        WithValues(state_.texts[Text::SurfaceSound],
                   {std::to_string(all), std::to_string(shown.triangles.count)}),
        "");
}

// A point that a line has added cannot be left out.
std::optional<Index> Session::SurveyPointAt(PlanPoint place, double reach) {
    const std::optional<PickedPoint> point = pick_.PointAt(place, reach);
    return point && point->number > 0 ? std::optional(point->number) : std::nullopt;
}

bool Session::FlipSideAt(PlanPoint place) {
    const std::optional<PickedSide> side = pick_.SideAt(place);
    if (!side) {
        return false;
    }
    SurfacePlan plan = survey_.Plan();
    const auto held = FindHeld(plan, *side);
    if (held != plan.held.end()) {
        plan.held.erase(held);
    } else if (side->flipped) {
        plan.held.push_back(*side->flipped);
    } else {
        view_->ShowNote(state_.texts[Text::CannotFlip]);
        return false;
    }
    return ApplyPlan(std::move(plan), Text::StepFlip);
}

bool Session::HoldSideAt(PlanPoint place) {
    const std::optional<PickedSide> side = pick_.SideAt(place);
    if (!side) {
        return false;
    }
    SurfacePlan plan = survey_.Plan();
    const auto held = FindHeld(plan, *side);
    if (held != plan.held.end()) {
        plan.held.erase(held);
    } else {
        plan.held.push_back({side->from, side->to});
    }
    return ApplyPlan(std::move(plan), Text::StepHold);
}

bool Session::SetHeight(Index point, double height) {
    SurfacePlan plan = survey_.Plan();
    const auto place =
        std::lower_bound(plan.heights.begin(), plan.heights.end(), point,
                         [](const ChangedHeight& h, Index wanted) { return h.point < wanted; });
    const bool isThere = place != plan.heights.end() && place->point == point;
    const bool isAsRead =
        !(height < survey_.AllPoints().z[point]) && !(height > survey_.AllPoints().z[point]);
    if (isAsRead && isThere) {
        plan.heights.erase(place);
    } else if (isThere) {
        place->height = height;
    } else if (!isAsRead) {
        plan.heights.insert(place, {point, height});
    }
    return ApplyPlan(std::move(plan), Text::StepHeight);
}

SpacePoint Session::VertexAt(PlanPoint place, double reach) {
    if (const std::optional<PickedPoint> point = pick_.PointAt(place, reach)) {
        return point->place;
    }
    return {place.x, place.y, pick_.HeightAt(place).value_or(kNoHeight)};
}

// A ring lies on the surface as it is, so that nothing inside it changes; so does a breakline that
// leaves the surface, where nobody knows its height.
bool Session::AddDrawnLine(LineRole role, std::vector<SpacePoint> vertices) {
    const bool isRing = role != LineRole::Breakline;
    if (vertices.size() < (isRing ? 3U : 2U)) {
        return false;
    }
    if (isRing || !std::all_of(vertices.begin(), vertices.end(), HasHeight)) {
        for (SpacePoint& vertex : vertices) {
            vertex.z = kNoHeight;
        }
    }
    SurfaceLine drawn;
    drawn.line.vertices = std::move(vertices);
    drawn.line.closed = isRing;
    return AddLines(role, {std::move(drawn)});
}

LongestSideProposal Session::ProposeLongestSide() const {
    const PointSet& points = survey_.Points();
    return terravo::ProposeLongestSide(PlacesOf(points), survey_.Triangulation().triangles);
}

LongestSideEffect Session::EffectOfLongestSide(double length) const {
    const ShownSurface shown = survey_.Surface();
    if (shown.shaped == nullptr) {
        return terravo::EffectOfLongestSide(PlacesOf(shown.points), shown.triangles, {}, length,
                                            HiddenTriangles(shown.triangles.count, 0));
    }
    const ConstrainedSurface& all = shown.shaped->all;
    return terravo::EffectOfLongestSide(PlacesOf(shown.points), all.triangles, all.constrained,
                                        length, HideByRings(all));
}

} // namespace terravo
