#include "app/batch/ProjectInput.h"

#include "app/batch/ExitCode.h"
#include "app/batch/RunFailure.h"
#include "app/project/ProjectSources.h"
#include "app/project/ProjectStore.h"

#include <QFileInfo>

namespace terravo {
namespace {

QString Canonical(const std::string& path) {
    return QFileInfo(QString::fromStdString(path)).canonicalFilePath();
}

// The project says how its file is read.
void RefuseReadingOptions(const BatchOptions& options) {
    for (const std::string& option :
         {ImportOptions::FirstIn(options.import), GisOptions::FirstIn(options.gis)}) {
        if (!option.empty()) {
            throw RunFailure(ExitCode::kUsage, options.pointFile +
                                                   ": this is a project, which says how its "
                                                   "points are read; " +
                                                   option + " means nothing for it.");
        }
    }
}

std::optional<bool> ChecksumFits(const ProjectSource& source, const std::string& file,
                                 const StopToken& stop) {
    return source.sha256.empty()
               ? std::nullopt
               : std::optional(ProjectStore().ChecksumOf(file, stop) == source.sha256);
}

void TakeChoices(const Project& project, BatchOptions& options) {
    options.triangulation.exact |= project.triangulation.exact;
    options.triangulation.keepsFirstPointsRule = project.triangulation.keepsFirstPointsRule;
    if (!options.levelsAreChosen && project.levels) {
        options.map.levels = *project.levels;
        options.levelsAreChosen = true;
    }
    if (!options.sheet.planIsChosen && !project.sheets.empty()) {
        options.sheet.plan = project.sheets.front();
    }
    if (options.smooth.isChosen) {
        options.sheet.plan.smoothing = options.smooth.options;
    }
}

} // namespace

void RefuseToReplace(const BatchOptions& options, const std::string& source) {
    for (const std::string& file : options.Outputs()) {
        if (QFileInfo(QString::fromStdString(file)).isFile() &&
            Canonical(file) == Canonical(source)) {
            throw RunFailure(ExitCode::kUsage, file + ": this is the point file of the project.");
        }
    }
}

ProjectInput OpenProject(const std::string& file, const StopToken& stop) {
    ProjectReading reading = ProjectStore().Read(file);
    if (!reading.project) {
        throw RunFailure(ExitCode::kPointFile, reading.fault);
    }
    ProjectInput input{*std::move(reading.project), {}};
    const std::optional<std::string> source = FindSource(input.project.source, file);
    if (!source) {
        throw RunFailure(ExitCode::kPointFile, file +
                                                   ": the point file of the project is not "
                                                   "there: " +
                                                   input.project.source.path + ".");
    }
    input.figures = {file, *source, ChecksumFits(input.project.source, *source, stop),
                     std::move(reading.remarks)};
    if (input.figures.checksumOk == false) {
        input.figures.remarks.push_back(*source + " has changed since the project was saved.");
    }
    return input;
}

std::optional<ProjectInput> OpenProjectInput(BatchOptions& options, const StopToken& stop) {
    if (!IsProjectFile(options.pointFile)) {
        return std::nullopt;
    }
    RefuseReadingOptions(options);
    ProjectInput input = OpenProject(options.pointFile, stop);
    RefuseToReplace(options, input.figures.source);
    options.pointFile = input.figures.source;
    TakeChoices(input.project, options);
    return input;
}

ImportOutcome ReadProject(ProjectInput& input, const TriangulationWish& wish, Survey& survey,
                          const StopToken& stop) {
    PointSet points;
    const ImportOutcome outcome =
        ReadAsBefore(input.figures.source, input.project.source.howRead, points, stop);
    if (outcome.failure) {
        return outcome;
    }
    const LostEdits lost = DropBeyond(input.project.surface, points.count);
    if (lost.Any()) {
        input.figures.remarks.push_back(
            input.figures.source + " has fewer points than the project knows: " +
            std::to_string(lost.excluded) + " excluded points and " + std::to_string(lost.heights) +
            " changed heights are left out.");
    }
    survey.Replace(std::move(points), wish);
    survey.SetPlan(input.project.surface);
    return outcome;
}

} // namespace terravo
