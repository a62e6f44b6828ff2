#include "app/session/Session.h"

#include "app/session/FileDialog.h"
#include "app/session/StartUpRules.h"
#include "app/session/WorkGuard.h"
#include "contour/LevelRuleText.h"
#include "export/MeshFile.h"
#include "export/QrzWriter.h"
#include "export/SegmentFile.h"
#include "triangulation/modDelaunay2D.h"
#include "util/AppError.h"
#include "util/PathText.h"

#include <utility>

namespace terravo {
namespace {

constexpr const char* kWindowName = "frmProve";
constexpr const char* kExitExportName = "px.qrz";

} // namespace

Session::Session(RunState& state, const SessionServices& services)
    : state_(state), services_(services),
      stop_([this](std::string_view, double done) { view_->ShowProgress(done); }),
      map_(survey_, state, services.messages, services.clock) {}

void Session::SetView(MainView& view) {
    view_ = &view;
}

void Session::LoadRecentFiles() {
    recent_.Load(services_.settings);
    LoadReadingHabit();
    view_->ShowRecentFiles();
}

bool Session::NamesStartUpFile(const std::string& rawCommandLine) const {
    return AcceptedStartUpFile(services_.clipboard.Text(), rawCommandLine).has_value();
}

void Session::LoadStartUpFile(const std::string& rawCommandLine) {
    const std::optional<std::string> path =
        AcceptedStartUpFile(services_.clipboard.Text(), rawCommandLine);
    if (!path) {
        ShowResultViews(false);
        return;
    }
    // The companion program expects what it has always had.
    opensView3D_ = true;
    wish_.keepsFirstPointsRule = true;
    const bool loaded = LoadPointFile(*path);
    wish_.keepsFirstPointsRule = false;
    if (!loaded) {
        return;
    }
    RunPipeline();
    if (IsCompanionFile(*path, state_.workFolder)) {
        view_->CloseWindow();
    } else if (drawn_) {
        ShowResultViews(true);
        view_->ShowFindings();
    }
}

void Session::SetShowPerimeter(bool on) {
    options_.showPerimeter = on;
    DrawContourMap();
}

void Session::SetShowTriangles(bool on) {
    options_.showTriangles = on;
    DrawContourMap();
}

void Session::SetShowLevelValues(bool on) {
    options_.showLevelValues = on;
    DrawContourMap();
}

void Session::SetMode(MapMode mode) {
    options_.mode = mode;
    DrawContourMap();
}

void Session::SetLevelCount(Index count) {
    options_.levels = RuleByCount(count);
    levelsChosen_ = true;
    DrawContourMap();
}

void Session::SetLevelRule(const LevelRule& rule) {
    const Index count = options_.levels.count;
    options_.levels = rule;
    levelsChosen_ = true;
    if (rule.kind != LevelRuleKind::ByCount) {
        options_.levels.count = count; // to return to
    }
    DrawContourMap();
}

void Session::SetExact(bool on) {
    wish_.exact = on;
    TriangulationWish wish = survey_.Wish();
    wish.exact = on;
    survey_.SetWish(wish);
    if (!survey_.Points().sourceName.empty()) {
        RunPipeline();
        ShowResultViews(drawn_);
    }
}

void Session::DrawContourMap() {
    // Until a file has been read there is nothing to draw, and no frame to complain about.
    if (survey_.Points().sourceName.empty()) {
        return;
    }
    if (depth_ > 0) {
        redrawWanted_ = true; // its points may be half read
        return;
    }
    do {
        redrawWanted_ = false;
        const WorkGuard work(*this);
        DrawMap();
    } while (redrawWanted_);
    ShowResultViews(drawn_);
}

void Session::DrawMap() {
    const bool wasComplete = complete_;
    if (std::exchange(isBehind_, false)) {
        handOverPending_ = true;
    }
    LeaveRuleThatDoesNotFit();
    const MapReport report = DrawMapAndSegments();
    state_.lastDrawError = report.contours.error;
    if (report.contours.levelCount > 0) { // else the contour routine never began
        state_.lastLevelCount = report.contours.levelCount;
    }
    TellOfDrawing(report);
    drawn_ = !report.frameFailure && report.contours.error.empty();
    complete_ = !report.contours.stopped;
    if (complete_ && handOverPending_) {
        handOverPending_ = false;
        TriangulateAndShow3D();
    }
    if (complete_ != wasComplete) {
        UpdateStatus();
    }
}

void Session::LeaveRuleThatDoesNotFit() {
    LevelRule& rule = options_.levels;
    const Extent& heights = survey_.ShownPoints().extentZ;
    const LevelFault fault =
        rule.kind == LevelRuleKind::ByCount ? LevelFault::None : FaultOf(rule, heights);
    if (fault != LevelFault::None) {
        const std::string reason =
            SentenceOf(fault, rule, heights, state_.texts, state_.decimalSeparator);
        rule = RuleByCount(rule.count);
        services_.messages.ShowCritical(reason + "\r\n" + state_.texts[Text::LevelsByCountAgain],
                                        kDrawErrorTitle);
    }
    view_->ShowLevelCount(LevelCountOf(rule, heights));
}

// The segments of an earlier drawing go first: what the file holds belongs to the map in the
// window.
MapReport Session::DrawMapAndSegments() {
    try {
        SegmentFile segments(state_.workFolder + kSegmentFileName);
        MapReport report =
            map_.Draw(view_->MapSurface(), options_, stop_,
                      [&segments](double level, const std::vector<LevelPiece>& pieces) {
                          segments.Write(level, pieces);
                      });
        segments.Close();
        return report;
    } catch (const AppError& failure) {
        MapReport report;
        report.contours.error = failure.what();
        return report;
    }
}

void Session::TellOfDrawing(const MapReport& report) {
    if (report.frameFailure) {
        services_.messages.ShowCritical(report.frameFailure->text, report.frameFailure->title);
    }
    if (!report.contours.error.empty()) {
        services_.messages.ShowCritical(report.contours.error, kDrawErrorTitle);
    }
}

// Hands the triangles to the 3D view and writes the mesh file; an old one stays where there is no
// triangulation.
void Session::TriangulateAndShow3D() {
    const ShownSurface made = survey_.Surface(stop_);
    if (made.ierr == modDelaunay2D::Ierr::kStopped) {
        return;
    }
    if (made.ierr != modDelaunay2D::Ierr::kDone) {
        services_.messages.ShowCritical(state_.texts[Text::NoTriangulation] +
                                            " IERR = " + std::to_string(made.ierr) + "\r\n" +
                                            TriangulationAdvice(made.ierr, state_),
                                        " Prova");
        return;
    }
    HandToView3D(made);
    try {
        WriteMeshFile(state_.workFolder + kMeshFileName, made.points, made.triangles);
    } catch (const AppError& error) {
        services_.messages.ShowCritical(error.what(), " Prova");
    }
}

void Session::HandToView3D(const ShownSurface& shown) {
    view_->ShowTriangles3D(shown.points, shown.triangles,
                           "Delaunay 2D : " + shown.points.sourceName);
}

void Session::ShowView3D() {
    if (depth_ > 0 || !resultViewsVisible_) {
        return;
    }
    const WorkGuard work(*this);
    const ShownSurface made = survey_.Surface(stop_);
    if (made.ierr == modDelaunay2D::Ierr::kDone) {
        const bool opens = std::exchange(opensView3D_, true);
        HandToView3D(made);
        opensView3D_ = opens;
    }
}

bool Session::RefusesToExport() {
    if (isBehind_ && depth_ == 0) {
        MakeAllAnew();
    }
    if (complete_) {
        return false;
    }
    services_.messages.ShowCritical(state_.texts[Text::SaveRefused], "");
    return true;
}

bool Session::DrawMapOn(DrawSurface& surface) {
    if (depth_ > 0) {
        return false;
    }
    bool drawn = false;
    {
        const WorkGuard work(*this);
        const MapReport report = map_.Draw(surface, options_, stop_);
        TellOfDrawing(report);
        drawn = !report.frameFailure && !report.contours.stopped && report.contours.error.empty();
    }
    if (redrawWanted_) {
        DrawContourMap();
    }
    return drawn;
}

void Session::ExportPicture(const std::string& proposedName,
                            const std::function<void(const std::string& path)>& write,
                            const std::string& extension) {
    if (RefusesToExport()) {
        return;
    }
    const FileQuestion question{.mode = "Save",
                                .description = "PNG, SVG, PDF ",
                                .pattern = "*.png;*.svg;*.pdf",
                                .initialFolder = survey_.Points().sourceFolder,
                                .defaultName = proposedName + "." + extension,
                                .title = state_.texts[Text::ChooseFile],
                                .extension = extension};
    try {
        const std::string path = FileDialog(services_.dialogs, question, state_);
        write(path);
        view_->ShowNote(state_.texts[Text::SavedAs] + " " + path);
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.log.Write(error.what());
            services_.messages.ShowCritical(
                state_.texts[Text::PictureNotWritten] + "\r\n" + error.what(), "");
        }
    }
}

void Session::Close() {
    recent_.Save(services_.settings);
    SaveWindowPosition(services_.settings, kWindowName, view_->Box(), view_->IsMinimised(), false);
    ExportOnExit();
}

void Session::Export(QrzKind kind) {
    if (RefusesToExport()) {
        return;
    }
    const FileQuestion question{.mode = "Save",
                                .description = "Files ",
                                .pattern = ".qrz",
                                .initialFolder = survey_.Points().sourceFolder,
                                .defaultName = "Point",
                                .title = state_.texts[Text::ChooseFile],
                                .extension = "qrz"};
    try {
        state_.qrzExportPath = FileDialog(services_.dialogs, question, state_);
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.log.Write(error.what());
            services_.messages.ShowCritical("Error File QRZ....", "");
        }
        return;
    }
    if (kind == QrzKind::Triangles) {
        ExportTriangles();
        return;
    }
    options_.mode = MapMode::Lines;
    view_->SelectLines();
    DrawContourMap();
    if (RefusesToExport()) {
        return;
    }
    ExportLevels();
}

void Session::ExportTriangles() {
    try {
        QrzWriter::WriteQrzTriangles(state_.workFolder + kMeshFileName, state_.qrzExportPath);
        TellOfExport();
    } catch (const std::exception& error) {
        services_.log.Write(error.what());
        services_.messages.ShowCritical("Error Point FILE QRZ..", "");
    }
}

// A failure shows in the log alone, with the clipboard and the last exported path as they were.
void Session::ExportLevels() {
    const std::string segments = state_.workFolder + kSegmentFileName;
    try {
        const QrzWriter::Content content =
            QrzWriter::WriteQrzLevels(segments, state_.lastLevelCount, state_.qrzExportPath,
                                      QrzWriter::ZeroLevelFor(options_.levels));
        if (content == QrzWriter::Content::Whole) {
            TellOfExport();
        } else {
            services_.log.Write(segments +
                                ": the first level is 0, so only the header was exported.");
        }
    } catch (const std::exception& error) {
        services_.log.Write(error.what());
    }
}

void Session::TellOfExport() {
    state_.lastQrzExportPath = state_.qrzExportPath;
    services_.clipboard.SetText(state_.qrzExportPath);
    view_->ShowNote(state_.texts[Text::SavedAs] + " " + state_.qrzExportPath);
}

// How the companion program gets the triangles of the points it sent, unless the user has exported
// something by hand.
void Session::ExportOnExit() {
    if (!state_.lastQrzExportPath.empty() || !FileExists(state_.workFolder + kMeshFileName)) {
        return;
    }
    if (!complete_) {
        services_.log.Write("The last drawing was stopped: no triangles are exported at the end.");
        return;
    }
    state_.qrzExportPath = state_.workFolder + kExitExportName;
    ExportTriangles();
}

// Of the start-up: a bad file ends the program.
bool Session::LoadPointFile(const std::string& path) {
    const WorkGuard work(*this);
    const LoadServices services{services_.messages, services_.clipboard, services_.programEnd,
                                services_.log};
    PointSet points = survey_.Take();
    readAs_.clear();
    project_ = ProjectState{};
    const bool loaded = terravo::LoadPointFile(path, points, state_, services, stop_);
    review_.Begin({});
    if (!loaded) {
        survey_.Replace(std::move(points), wish_);
        history_.Clear();
        view_->ShowPointCount(survey_.Points().count);
        complete_ = false;
        UpdateStatus();
        return false;
    }
    TakePoints(std::move(points), path);
    HowRead how;
    how.reader = SourceReader::FreeList;
    how.plan.freeList = true;
    BeginProject(path, how);
    project_.isStartUp = true;
    return true;
}

void Session::TakePoints(PointSet points, const std::string& path) {
    survey_.Replace(std::move(points), wish_);
    live_.reset(); // as large as the points
    history_.Clear();
    measures_.SetPolygon({}); // they belong to the points before
    measures_.SetSecond(nullptr);
    sectionLine_.clear();
    ++secondRevision_;
    ++polygonRevision_;
    options_.levels = RuleByCount(options_.levels.count);
    levelsChosen_ = false;
    MarkPoint(std::nullopt);
    view_->ShowPointCount(survey_.Points().count);
    recent_.Add(AbsolutePath(path));
    view_->ShowRecentFiles();
}

void Session::LoadAndShow(const std::string& path, bool isRecent) {
    if (ReadUserFile(path, isRecent)) {
        ShowWhatWasRead();
    }
}

void Session::ShowWhatWasRead() {
    const OpeningWindows windows = OpensWith();
    opensView3D_ = windows != OpeningWindows::MapAndSheet;
    RunPipeline();
    ShowResultViews(drawn_);
    view_->ShowFindings();
    if (drawn_ && windows != OpeningWindows::MapAnd3D) {
        view_->ShowSheet();
    }
    view_->ShowProject();
}

// The drawing comes first: it is the one that triangulates, and the hand-over takes the kept
// result.
void Session::RunPipeline() {
    {
        const WorkGuard work(*this);
        handOverPending_ = true;
        redrawWanted_ = false;
        DrawMap();
        UpdateStatus();
    }
    if (redrawWanted_) {
        DrawContourMap();
    }
}

void Session::ShowResultViews(bool visible) {
    if (visible != resultViewsVisible_) {
        resultViewsVisible_ = visible;
        view_->SetResultViewsVisible(visible);
    }
}

std::string Session::RemarkOnHidden(const ShapedSurface& surface) const {
    const Index hidden = surface.all.triangles.count - surface.visible.count;
    if (surface.visible.count == 0) {
        return state_.texts[Text::NothingVisible];
    }
    return hidden == 0
               ? std::string()
               : WithValues(state_.texts[Text::HiddenTrianglesCount], {std::to_string(hidden)});
}

void Session::UpdateStatus() {
    if (wasInterrupted_) {
        return; // what it says soon holds again
    }
    if (!complete_) {
        const bool hasPoints = survey_.Points().count > 0;
        view_->ShowStatus(
            std::to_string(survey_.Points().count) + " " + state_.texts[Text::PointsWord],
            hasPoints ? state_.texts[Text::DrawingStopped] : state_.texts[Text::ReadingStopped]);
        return;
    }
    const ShownSurface made = survey_.Surface();
    const Index triangleCount = made.triangles.count;
    std::string remark;
    if (made.ierr == modDelaunay2D::Ierr::kDone && survey_.Points().count > 0) {
        const Index unused = CountUnusedPoints(survey_.Points().count, made.triangles);
        if (made.shaped != nullptr) {
            remark = RemarkOnHidden(*made.shaped);
        } else if (triangleCount == 0) {
            remark = state_.texts[Text::FirstPointsNotDistinct];
        } else if (unused > 0) {
            remark = state_.texts[Text::UnusedPoints] + " " + std::to_string(unused);
        }
    }
    if (const std::size_t excluded = survey_.ExcludedPoints().size(); excluded > 0) {
        remark = WithValues(state_.texts[Text::ExcludedPoints], {std::to_string(excluded)}) +
                 (remark.empty() ? "" : "; " + remark);
    }
    if (!readAs_.empty()) {
        remark = readAs_ + (remark.empty() ? "" : "; " + remark);
    }
    std::string counts = std::to_string(survey_.Points().count) + " " +
                         state_.texts[Text::PointsWord] + ", " + std::to_string(triangleCount) +
                         " " + state_.texts[Text::TrianglesWord];
    if (triangleCount > 0 && made.arithmetic == Arithmetic::Exact) {
        counts += ", " + state_.texts[Text::ExactSigns];
    }
    view_->ShowStatus(counts, remark);
}

} // namespace terravo
