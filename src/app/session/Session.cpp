#include "app/session/Session.h"

#include "app/session/FileDialog.h"
#include "app/session/StartUpRules.h"
#include "export/MeshFile.h"
#include "export/QrzWriter.h"
#include "util/AppError.h"
#include "util/PathText.h"

namespace terravo {
namespace {

constexpr const char* kWindowName = "frmProve";
constexpr const char* kExitExportName = "px.qrz";

// The dialog's name box takes any name; whoever reads the file goes by its extension.
std::string WithExtension(const std::string& path, const char* extension) {
    return SplitPath(path).name.find('.') == std::string::npos ? path + extension : path;
}

} // namespace

// Tells the view that a command is at work, on every way out of it. A new command forgets the
// request to stop the one before.
class Session::WorkGuard {
public:
    explicit WorkGuard(Session& session) : session_(session) {
        if (session_.depth_++ == 0) {
            session_.map_.stopRequested = false;
        }
        session_.view_->BeginWork();
    }
    WorkGuard(const WorkGuard&) = delete;
    WorkGuard& operator=(const WorkGuard&) = delete;
    ~WorkGuard() {
        session_.view_->EndWork();
        --session_.depth_;
    }

private:
    Session& session_;
};

Session::Session(RunState& state, const SessionServices& services)
    : state_(state), services_(services), map_(state, services.messages, services.clock) {
    map_.showResultViews = [this](bool visible) { ShowResultViews(visible); };
    map_.showTriangles3D = [this](const PointSet& points, const TriangleList& triangles,
                                  const std::string& title) {
        view_->ShowTriangles3D(points, triangles, title);
    };
    map_.progress = [this](std::string_view, double done) {
        view_->ShowProgress(done);
        return !map_.stopRequested;
    };
}

void Session::SetView(MainView& view) {
    view_ = &view;
}

void Session::LoadRecentFiles() {
    recent_.Load(services_.settings);
    view_->ShowRecentFiles();
}

void Session::LoadStartUpFile(const std::string& rawCommandLine) {
    const std::optional<std::string> path =
        AcceptedStartUpFile(services_.clipboard.Text(), rawCommandLine);
    if (!path) {
        ShowResultViews(false);
        return;
    }
    if (!LoadPointFile(*path)) {
        return;
    }
    RunPipeline();
    if (IsCompanionFile(*path, state_.workFolder)) {
        view_->CloseWindow();
    } else if (state_.lastDrawError.empty()) {
        ShowResultViews(true);
    }
}

void Session::LoadNamedFile(const std::string& path) {
    state_.lastDrawError.clear();
    const PathParts parts = SplitPath(path);
    map_.points.sourceFolder = parts.folder;
    if (parts.exists) {
        LoadAndShow(path);
    } else {
        services_.log.Write(path + ": there is no such file.");
    }
}

void Session::OpenPointFile() {
    state_.lastDrawError.clear();
    const FileQuestion question{.mode = "Open",
                                .description = "Files ",
                                .pattern = "*.dat;*.txt;*.qrw",
                                .initialFolder = map_.points.sourceFolder,
                                .defaultName = {},
                                .title = state_.Text(TextIndex::kChooseFile)};
    try {
        LoadNamedFile(FileDialog(services_.dialogs, question, state_));
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.messages.ShowCritical("Error " + std::to_string(error.number()) + "\r\n" +
                                                error.what(),
                                            " Files/" + error.source());
            ShowResultViews(false);
        }
    }
}

void Session::OpenRecentFile(std::size_t position) {
    LoadNamedFile(recent_.Paths().at(position - 1));
}

void Session::SetShowPerimeter(bool on) {
    map_.options.showPerimeter = on;
    DrawContourMap();
}

void Session::SetShowTriangles(bool on) {
    map_.options.showTriangles = on;
    DrawContourMap();
}

void Session::SetShowLevelValues(bool on) {
    map_.options.showLevelValues = on;
    DrawContourMap();
}

void Session::SetMode(MapMode mode) {
    map_.options.mode = mode;
    DrawContourMap();
}

void Session::SetLevelCount(Index count) {
    map_.options.levelCount = count;
    DrawContourMap();
}

void Session::DrawContourMap() {
    // Until a file has been read there is nothing to draw, and no frame to complain about.
    if (map_.points.sourceName.empty()) {
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
}

void Session::DrawMap() {
    const bool wasComplete = complete_;
    const MapReport report = map_.DrawContourMap(view_->MapSurface());
    complete_ = !report.contours.stopped;
    if (complete_ && handOverPending_) {
        handOverPending_ = false;
        map_.TriangulateAndShow3D();
    }
    if (complete_ != wasComplete) {
        UpdateStatus();
    }
}

bool Session::RefusesToExport() {
    if (complete_) {
        return false;
    }
    services_.messages.ShowCritical(
        state_.TextOr(TextIndex::kSaveRefused,
                      "The last drawing was stopped. Draw the map to its end, then save."),
        "");
    return true;
}

bool Session::DrawMapOn(DrawSurface& surface) {
    if (depth_ > 0) {
        return false;
    }
    bool drawn = false;
    {
        const WorkGuard work(*this);
        const MapReport report = map_.DrawContourMap(surface);
        if (report.contours.stopped) {
            complete_ = false; // so are the exchange files
            UpdateStatus();
        }
        drawn = complete_ && state_.lastDrawError.empty();
    }
    if (redrawWanted_) {
        DrawContourMap();
    }
    return drawn;
}

void Session::ExportPicture(const std::string& proposedName,
                            const std::function<void(const std::string& path)>& write) {
    if (RefusesToExport()) {
        return;
    }
    const FileQuestion question{.mode = "Save",
                                .description = "PNG, SVG, PDF ",
                                .pattern = "*.png;*.svg;*.pdf",
                                .initialFolder = map_.points.sourceFolder,
                                .defaultName = proposedName + ".png",
                                .title = state_.Text(TextIndex::kChooseFile)};
    try {
        write(WithExtension(FileDialog(services_.dialogs, question, state_), ".png"));
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.log.Write(error.what());
            services_.messages.ShowCritical(
                state_.TextOr(TextIndex::kPictureNotWritten, "The picture cannot be written.") +
                    "\r\n" + error.what(),
                "");
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
                                .initialFolder = map_.points.sourceFolder,
                                .defaultName = "Point",
                                .title = state_.Text(TextIndex::kChooseFile)};
    try {
        state_.qrzExportPath =
            WithExtension(FileDialog(services_.dialogs, question, state_), ".qrz");
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.log.Write(error.what());
            services_.messages.ShowCritical("Error File QRZ....", "");
        }
        return;
    }
    if (kind == QrzKind::Triangles) {
        QrzWriter::WriteQrzTriangles(state_, services_.clipboard, services_.messages,
                                     services_.log);
        return;
    }
    map_.options.mode = MapMode::Lines;
    view_->SelectLines();
    DrawContourMap();
    if (RefusesToExport()) {
        return;
    }
    QrzWriter::WriteQrzLevels(state_, services_.clipboard, services_.log);
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
    QrzWriter::WriteQrzTriangles(state_, services_.clipboard, services_.messages, services_.log);
}

bool Session::LoadPointFile(const std::string& path) {
    const WorkGuard work(*this);
    map_.PointsChanged();
    const LoadServices services{services_.messages, services_.clipboard, services_.programEnd,
                                services_.log};
    if (!terravo::LoadPointFile(path, map_.points, state_, services, map_.progress)) {
        complete_ = false;
        view_->ShowPointCount(map_.points.count);
        UpdateStatus();
        return false;
    }
    view_->ShowPointCount(map_.points.count);
    recent_.Add(AbsolutePath(path));
    view_->ShowRecentFiles();
    return true;
}

void Session::LoadAndShow(const std::string& path) {
    if (LoadPointFile(path)) {
        RunPipeline();
        ShowResultViews(state_.lastDrawError.empty());
    }
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

void Session::UpdateStatus() {
    if (!complete_) {
        const bool hasPoints = map_.points.count > 0;
        view_->ShowStatus(std::to_string(map_.points.count) + " " +
                              state_.Text(TextIndex::kPointsWord),
                          hasPoints ? state_.Text(TextIndex::kDrawingStopped)
                                    : state_.TextOr(TextIndex::kReadingStopped,
                                                    "Reading was stopped: no points are loaded."));
        return;
    }
    const KeptTriangulation::Result& kept = map_.Triangulation();
    const Index triangleCount = kept.triangles.count;
    std::string remark;
    if (kept.ierr == modDelaunay2D::Ierr::kDone && map_.points.count > 0) {
        const Index unused = CountUnusedPoints(map_.points, kept.triangles);
        if (triangleCount == 0) {
            remark = state_.Text(TextIndex::kFirstPointsNotDistinct);
        } else if (unused > 0) {
            remark = state_.Text(TextIndex::kUnusedPoints) + " " + std::to_string(unused);
        }
    }
    view_->ShowStatus(
        std::to_string(map_.points.count) + " " + state_.Text(TextIndex::kPointsWord) + ", " +
            std::to_string(triangleCount) + " " + state_.Text(TextIndex::kTrianglesWord),
        remark);
}

} // namespace terravo
