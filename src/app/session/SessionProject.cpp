// The session's commands that keep and open projects.
#include "app/project/ProjectSources.h"
#include "app/session/FileDialog.h"
#include "app/session/Session.h"
#include "app/session/WorkGuard.h"
#include "util/AppError.h"
#include "util/PathText.h"

#include <system_error>

namespace terravo {
namespace {

namespace fs = std::filesystem;

// Length and time of a file; of a folder, and of what is not there, nothing is known.
void LookAt(const std::string& path, std::uint64_t& bytes, fs::file_time_type& changed) {
    std::error_code error;
    bytes = fs::is_regular_file(path, error) ? fs::file_size(path, error) : 0;
    bytes = error ? 0 : bytes;
    changed = fs::last_write_time(path, error);
}

FileLook LookOf(const std::string& path) {
    FileLook look;
    LookAt(path, look.bytes, look.changed);
    return look;
}

bool HasTexts(const SheetTexts& texts) {
    return !(texts == SheetTexts());
}

// Without a project file: what opening the points again would not bring back. A number of levels
// and the style of a sheet are chosen in passing, and the style is remembered anyway.
bool IsWorthKeeping(const ProjectWork& work, const ProjectWork& begin) {
    const bool hasRule = work.levels && work.levels->kind != LevelRuleKind::ByCount;
    const SheetTexts before = begin.sheet ? begin.sheet->texts : SheetTexts();
    const bool hasTexts =
        work.sheet && HasTexts(work.sheet->texts) && !(work.sheet->texts == before);
    return !(work.surface == SurfacePlan()) || hasRule || hasTexts;
}

std::string FirstOf(const std::vector<std::string>& remarks) {
    constexpr std::size_t kMost = 8;
    std::string text;
    for (std::size_t i = 0; i < std::min(kMost, remarks.size()); ++i) {
        text += (i > 0 ? "\r\n" : "") + remarks[i];
    }
    return text + (remarks.size() > kMost ? "\r\n..." : "");
}

} // namespace

// The points have just been read, and nothing has been done with them.
void Session::BeginProject(const std::string& pointFile, const HowRead& how) {
    const std::uint64_t revision = project_.sheetRevision;
    project_ = ProjectState{};
    project_.sheetRevision = revision;
    project_.source.path = AbsolutePath(pointFile);
    project_.source.points = survey_.AllPoints().count;
    project_.source.howRead = how;
    LookAt(pointFile, project_.source.bytes, project_.changed);
    project_.saved = Work();
}

ProjectWork Session::Work() const {
    return {survey_.Plan(), survey_.Wish().exact,
            levelsChosen_ ? std::optional(options_.levels) : std::nullopt, project_.sheet};
}

void Session::KeepSheet(const SheetPlan& plan) {
    if (project_.sheet == plan) {
        return;
    }
    if (!project_.sheet && project_.saved) {
        project_.saved->sheet = plan;
    }
    project_.sheet = plan;
    view_->ShowProject();
}

Project Session::MakeProject() const {
    Project project;
    project.source = project_.source;
    project.surface = survey_.Plan();
    project.triangulation = survey_.Wish();
    const ProjectWork work = Work();
    project.levels = work.levels;
    if (work.sheet) {
        project.sheets.push_back(*work.sheet);
    }
    return project;
}

void Session::TakeProject(const Project& project) {
    survey_.SetWish(project.triangulation);
    wish_.exact = project.triangulation.exact;
    survey_.SetPlan(project.surface);
    history_.Clear(project.surface);
    if (project.levels) {
        options_.levels = *project.levels;
        levelsChosen_ = true;
    }
    if (!project.sheets.empty()) {
        project_.sheet = project.sheets.front();
        ++project_.sheetRevision;
    }
    view_->ShowPointCount(survey_.Points().count);
}

bool Session::CanSaveProject() const {
    return services_.projects != nullptr && !project_.source.path.empty() &&
           survey_.AllPoints().count > 0;
}

std::string Session::ProjectName() const {
    if (!project_.path.empty()) {
        return SplitPath(project_.path).name;
    }
    return HasUnsavedWork() ? SplitPath(project_.source.path).name : std::string();
}

bool Session::HasUnsavedWork() const {
    if (!CanSaveProject() || (project_.isStartUp && project_.path.empty())) {
        return false;
    }
    const ProjectWork work = Work();
    if (!project_.saved) {
        return true;
    }
    return !(*project_.saved == work) &&
           (!project_.path.empty() || IsWorthKeeping(work, *project_.saved));
}

bool Session::AskToSave() {
    if (!HasUnsavedWork()) {
        return true;
    }
    switch (services_.projects->questions.AskToSave(ProjectName())) {
    case SaveAnswer::Save:
        return SaveProject();
    case SaveAnswer::Discard:
        return true;
    case SaveAnswer::Cancel:
        break;
    }
    return false;
}

bool Session::MayClose() {
    if (!AskToSave()) {
        return false;
    }
    project_.saved = Work();
    view_->ShowProject();
    return true;
}

bool Session::SaveProject() {
    return project_.path.empty() ? SaveProjectAs() : WriteProject(project_.path);
}

bool Session::SaveProjectAs() {
    if (!CanSaveProject()) {
        return false;
    }
    const std::string& known = project_.path.empty() ? project_.source.path : project_.path;
    const PathParts parts = SplitPath(known);
    const FileQuestion question{.mode = "Save",
                                .description = "Terravo ",
                                .pattern = std::string("*") + kProjectEnding,
                                .initialFolder = parts.folder,
                                .defaultName = NameWithoutExtension(parts.name) + kProjectEnding,
                                .title = state_.texts[Text::ChooseFile],
                                .extension = kProjectEnding + 1};
    try {
        std::string path = AbsolutePath(FileDialog(services_.dialogs, question, state_));
        path += IsProjectFile(path) ? "" : kProjectEnding; // else it could not be opened
        return WriteProject(path);
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            TellOfProject(error.what(), Text::ProjectNotSaved);
        }
        return false;
    }
}

// The checksum of the points as they were read; a file that has changed since has another one,
// which would hide the change.
// @return false when it was stopped.
bool Session::CompleteChecksum() {
    ProjectSource& source = project_.source;
    std::uint64_t bytes = 0;
    fs::file_time_type changed;
    LookAt(source.path, bytes, changed);
    if (bytes != source.bytes || changed != project_.changed) {
        source.sha256.clear();
        services_.messages.ShowInformation(
            WithValues(state_.texts[Text::PointsChangedSince], {source.path}), "");
    } else if (source.sha256.empty()) {
        source.sha256 = services_.projects->files.ChecksumOf(source.path, stop_);
    }
    return !stop_.IsStopRequested();
}

// What somebody else has saved meanwhile must not be lost without a word.
bool Session::MayReplaceProject(const std::string& path) {
    const FileLook look = LookOf(path);
    return path != project_.path || look.bytes == 0 || look == project_.file ||
           services_.projects->questions.AskToGoOn(
               WithValues(state_.texts[Text::ProjectChangedSince], {path}));
}

bool Session::WriteProject(const std::string& path) {
    if (depth_ > 0) {
        return false;
    }
    try {
        if (!MayReplaceProject(path)) {
            return false;
        }
        const WorkGuard work(*this);
        if (!CompleteChecksum()) {
            return false;
        }
        project_.source.relativePath = WayFrom(path, project_.source.path);
        services_.projects->files.Write(path, MakeProject());
        project_.path = path;
        project_.file = LookOf(path);
        project_.saved = Work();
    } catch (const AppError& error) {
        TellOfProject(error.what(), Text::ProjectNotSaved);
        return false;
    }
    recent_.Add(path);
    view_->ShowRecentFiles();
    view_->ShowNote(state_.texts[Text::SavedAs] + " " + path);
    view_->ShowProject();
    return true;
}

void Session::TellOfProject(const std::string& fault, Text what) {
    services_.log.Write(fault);
    services_.messages.ShowCritical(state_.texts[what] + "\r\n" + fault, "");
}

bool Session::OpenProject(const std::string& path) {
    ProjectReading reading = services_.projects->files.Read(path);
    if (!reading.project) {
        TellOfProject(reading.fault, Text::ProjectNotOpened);
        return false;
    }
    return OpenPoints(*std::move(reading.project), AbsolutePath(path), std::move(reading.remarks));
}

Project Session::ProjectToRecover() const {
    Project project = MakeProject();
    project.source.relativePath.clear();
    project.recovers = project_.path;
    return project;
}

bool Session::Restore(const Project& recovered) {
    if (!OpenPoints(recovered, recovered.recovers, {})) {
        return false;
    }
    project_.saved.reset();
    ShowWhatWasRead();
    return true;
}

// The points of a project as they were read, and what it holds laid over them; or everything as it
// was.
// @param path  of the project file; empty where there is none.
bool Session::OpenPoints(Project project, const std::string& path,
                         std::vector<std::string> remarks) {
    const FileLook look = LookOf(path);
    const std::optional<std::string> file = LookForSource(project.source, path);
    if (!file || !MayTake(project.source, *file)) {
        return false;
    }
    PointSet points;
    points.sourceFolder = survey_.Points().sourceFolder;
    const ImportOutcome outcome = [&] {
        const WorkGuard work(*this);
        return ReadAsBefore(*file, project.source.howRead, points, stop_);
    }();
    if (outcome.failure) {
        TellOfFailure(*outcome.failure);
        return false;
    }
    const LostEdits lost = DropBeyond(project.surface, points.count);
    readAs_ = TextOfReading(outcome);
    TakePoints(std::move(points), path.empty() ? *file : path);
    review_.Begin(outcome.report);
    BeginProject(*file, project.source.howRead);
    project_.source.sha256 = project.source.sha256;
    project_.path = path;
    project_.file = look;
    TakeProject(project);
    project_.saved = lost.Any() ? std::nullopt : std::optional(Work());
    if (lost.Any()) {
        remarks.push_back(
            WithValues(state_.texts[Text::EditsDropped],
                       {std::to_string(lost.excluded), std::to_string(lost.heights)}));
    }
    if (!remarks.empty()) {
        services_.messages.ShowInformation(FirstOf(remarks), "");
    }
    return true;
}

std::optional<std::string> Session::LookForSource(const ProjectSource& source,
                                                  const std::string& projectPath) {
    if (std::optional<std::string> found = FindSource(source, projectPath)) {
        return found;
    }
    if (!services_.projects->questions.AskToGoOn(
            WithValues(state_.texts[Text::PointsMissing], {source.path}))) {
        return std::nullopt;
    }
    const FileQuestion question{.mode = "Open",
                                .description = "Files ",
                                .pattern = SplitPath(source.path).name,
                                .initialFolder = SplitPath(projectPath).folder,
                                .defaultName = {},
                                .title = state_.texts[Text::ChooseFile],
                                .extension = {}};
    try {
        return FileDialog(services_.dialogs, question, state_);
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            TellOfProject(error.what(), Text::ProjectNotOpened);
        }
        return std::nullopt;
    }
}

// Whether the file is the one that the project was made of, or its user takes it all the same; its
// checksum is then unknown. Of a length alone no more can be said than that it is another.
bool Session::MayTake(ProjectSource& source, const std::string& file) {
    std::uint64_t bytes = 0;
    fs::file_time_type changed;
    LookAt(file, bytes, changed);
    bool isSame = bytes == source.bytes;
    if (isSame && !source.sha256.empty()) {
        const WorkGuard work(*this);
        isSame = services_.projects->files.ChecksumOf(file, stop_) == source.sha256;
        if (stop_.IsStopRequested()) {
            return false;
        }
    }
    if (isSame) {
        return true;
    }
    source.sha256.clear();
    return services_.projects->questions.AskToGoOn(
        WithValues(state_.texts[Text::PointsChanged], {file}));
}

} // namespace terravo
