#include "app/batch/MeasureInput.h"

#include "analysis/Profile.h"
#include "app/batch/PointInput.h"
#include "app/batch/ProjectInput.h"
#include "app/batch/RunFailure.h"
#include "app/project/ProjectSources.h"
#include "gis/GisLines.h"

#include <utility>

namespace terravo {
namespace {

void Add(const std::vector<std::string>& some, std::vector<std::string>& all) {
    all.insert(all.end(), some.begin(), some.end());
}

void FillFromProject(const BatchOptions& options, Survey& survey, std::vector<std::string>& remarks,
                     const StopToken& stop) {
    ProjectInput project = OpenProject(options.measure.secondFile, stop);
    RefuseToReplace(options, project.figures.source);
    TriangulationWish wish = project.project.triangulation;
    wish.exact |= options.triangulation.exact;
    const ImportOutcome outcome = ReadProject(project, wish, survey, stop);
    EndWhenStopped();
    if (outcome.failure) {
        throw RunFailure(ExitCode::kPointFile, outcome.failure->Sentence());
    }
    Add(project.figures.remarks, remarks);
}

void FillFromFile(const BatchOptions& options, Survey& survey, const StopToken& stop) {
    PointCall call;
    call.file = options.measure.secondFile;
    call.optionsHold = false;
    PointSet points;
    static_cast<void>(ReadPointFile(call, points, stop));
    TriangulationWish wish;
    wish.exact = options.triangulation.exact;
    survey.Replace(std::move(points), wish);
}

LineReading ReadLines(const std::string& file, LineClosing closing,
                      std::vector<std::string>& remarks, const StopToken& stop) {
    LineReading reading = ReadSurfaceLines(file, closing, {}, stop);
    EndWhenStopped();
    if (!reading.failure.empty()) {
        throw RunFailure(ExitCode::kPointFile, reading.failure);
    }
    Add(reading.remarks, remarks);
    return reading;
}

std::vector<PlanPoint> PlacesOf(const SpaceLine& line) {
    std::vector<PlanPoint> places;
    for (const SpacePoint& vertex : line.vertices) {
        places.push_back(PlanOf(vertex));
    }
    return places;
}

} // namespace

std::shared_ptr<const Survey> ReadSecondSurvey(const BatchOptions& options,
                                               std::vector<std::string>& remarks,
                                               const StopToken& stop) {
    const std::string& file = options.measure.secondFile;
    auto survey = std::make_shared<Survey>();
    IsProjectFile(file) ? FillFromProject(options, *survey, remarks, stop)
                        : FillFromFile(options, *survey, stop);
    survey->Triangulation(stop);
    EndWhenStopped();
    RequireTriangles(file, survey->Points(), survey->Triangulation());
    const bool showsNothing = survey->Surface(stop).triangles.count == 0;
    EndWhenStopped();
    if (showsNothing) {
        throw RunFailure(ExitCode::kNoTriangulation, file + ": no triangle is visible.");
    }
    return survey;
}

std::vector<PlanRing> ReadRings(const std::vector<std::string>& files,
                                std::vector<std::string>& remarks, const StopToken& stop) {
    std::vector<PlanRing> rings;
    for (const std::string& file : files) {
        for (const SurfaceLine& ring : ReadLines(file, LineClosing::InPlan, remarks, stop).lines) {
            rings.push_back(PlacesOf(ring.line));
        }
    }
    return rings;
}

std::vector<SectionLine> ReadSections(const std::vector<SectionCall>& calls,
                                      std::vector<std::string>& remarks, const StopToken& stop) {
    std::vector<SectionLine> lines;
    for (const SectionCall& call : calls) {
        if (call.file.empty()) {
            lines.push_back({{}, {}, call.places});
            continue;
        }
        const LineReading reading = ReadLines(call.file, LineClosing::AsTheyAre, remarks, stop);
        for (const SurfaceLine& read : reading.lines) {
            SectionLine line{read.line.name, call.file, PlacesOf(read.line)};
            if (read.line.closed) {
                line.places.push_back(line.places.front());
            }
            if (HasLength(line.places)) {
                lines.push_back(std::move(line));
            } else {
                remarks.push_back(
                    call.file + ": a line without a length is no section" +
                    (read.fileLine > 0 ? " (line " + std::to_string(read.fileLine) + ")" : "") +
                    ".");
            }
        }
        if (lines.empty()) {
            throw RunFailure(ExitCode::kPointFile, call.file + ": no line of it has a length.");
        }
    }
    return lines;
}

} // namespace terravo
