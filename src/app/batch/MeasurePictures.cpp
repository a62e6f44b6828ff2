#include "app/batch/MeasurePictures.h"

#include "app/batch/RunFailure.h"
#include "app/session/DifferenceSheet.h"
#include "export/SheetExport.h"
#include "export/SheetPainter.h"
#include "sheet/section/SectionSheet.h"

#include <QFileInfo>

#include <algorithm>

namespace terravo {
namespace {

SectionPlan PlanOf(const BatchOptions& options) {
    const SheetPlan& sheet = options.sheet.plan;
    SectionPlan plan;
    plan.paper = sheet.paper;
    if (options.sheet.planIsChosen) { // that of a project is of its map
        plan.landscape = sheet.landscape;
        plan.scale = sheet.scale;
    }
    plan.exaggeration = options.measure.exaggeration;
    plan.theme = sheet.theme;
    plan.textHeight = sheet.textHeight;
    plan.title = options.sheet.titleOfOthers;
    return plan;
}

SectionSource SourceOf(const SectionFigures& figures, const std::string& firstName,
                       const std::string& secondName, const std::optional<double>& datum) {
    SectionSource source{figures.first};
    source.firstName = firstName;
    if (figures.second) {
        source.second = &*figures.second;
        source.secondName = secondName;
    } else {
        source.datum = datum;
    }
    source.areas = figures.areas;
    source.bends = BendsOf(figures.line);
    return source;
}

std::vector<SheetScene> ScenesOf(const PictureRun& to, const MeasureFigures& figures,
                                 const std::string& firstName, const std::string& secondName) {
    const SheetTextMeasure measure;
    const SheetWords words{to.run.texts, measure, to.run.decimalSeparator};
    const SectionPlan plan = PlanOf(to.options);
    std::optional<double> datum;
    if (!figures.volumes.empty()) {
        datum = figures.volumes.front().datum;
    }
    std::vector<SheetScene> scenes;
    for (const MeasuredSection& section : figures.sections) {
        scenes.push_back(
            MakeSectionSheet(plan, SourceOf(section.figures, firstName, secondName, datum), words)
                .scene);
        EndWhenStopped();
    }
    if (!figures.across) {
        return scenes;
    }
    std::vector<SectionSource> across;
    for (const SectionFigures& section : figures.across->figures.sections) {
        across.push_back(SourceOf(section, firstName, secondName, datum));
        across.back().station = section.station;
    }
    for (SheetScene& scene : MakeCrossSectionSheets(plan, across, words)) {
        scenes.push_back(std::move(scene));
    }
    return scenes;
}

QString Place(const std::string& file) {
    const QFileInfo info(QString::fromStdString(file));
    return info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
}

// How many sheets there are is known when they have been made; none has its name yet.
void RefuseNamed(const BatchOptions& options, const std::string& path) {
    std::vector<std::string> named = options.Outputs();
    const std::vector<std::string> inputs = options.measure.Inputs();
    named.insert(named.end(), inputs.begin(), inputs.end());
    named.push_back(options.pointFile);
    if (std::any_of(named.begin(), named.end(),
                    [&](const std::string& file) { return Place(file) == Place(path); })) {
        throw RunFailure(ExitCode::kUsage,
                         path + ": this sheet of sections has the name of another file.");
    }
}

} // namespace

std::vector<std::string> DrawSections(const PictureRun& to, const MeasureFigures& figures,
                                      const std::string& firstName, const std::string& secondName) {
    const std::string& file = to.options.measure.sectionPicture;
    const std::vector<SheetScene> scenes = ScenesOf(to, figures, firstName, secondName);
    const std::vector<std::string> files =
        WriteSheets({file, &to.group}, *PictureKindOf(file), scenes,
                    {firstName, to.options.sheet.dotsPerInch, &to.stop});
    EndWhenStopped();
    for (const std::string& path : files) {
        if (path != file) {
            RefuseNamed(to.options, path);
        }
    }
    return files;
}

void DrawDifference(const PictureRun& to, const DifferenceSurface& difference,
                    const VolumeFigures& volumes, const std::string& firstName,
                    const std::string& secondName) {
    const SheetCall& call = to.options.sheet;
    SheetPlan plan = DifferencePlan(call.plan);
    if (call.layersAreChosen) {
        plan.layers = call.plan.layers;
    }
    if (call.labelsAreChosen) {
        plan.labels = call.plan.labels;
    }
    plan.texts.title = call.titleOfOthers;
    const SheetTextMeasure measure;
    const std::optional<SheetScene> scene =
        MakeDifferenceSheet(plan, {difference, firstName, secondName, volumes, {}},
                            {to.run.texts, measure, to.run.decimalSeparator}, to.stop);
    EndWhenStopped();
    const std::string& file = to.options.measure.differenceSheet;
    WriteSheet({file, &to.group}, *PictureKindOf(file), *scene,
               {plan.texts.title.empty() ? secondName + " - " + firstName : plan.texts.title,
                call.dotsPerInch, &to.stop});
    EndWhenStopped();
}

} // namespace terravo
