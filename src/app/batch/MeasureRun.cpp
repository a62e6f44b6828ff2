#include "app/batch/MeasureRun.h"

#include "app/batch/MeasurePictures.h"
#include "app/batch/RunFailure.h"
#include "app/session/DifferenceContent.h"
#include "app/session/SectionTable.h"
#include "exchange/VectorFile.h"
#include "util/AppError.h"
#include "util/PathText.h"

#include <utility>

namespace terravo {
namespace {

std::string NameOf(const ExchangeCall& call) {
    if (!call.unitIsChosen) {
        return "data units";
    }
    switch (call.wish.unit) {
    case LengthUnit::Metre:
        return "metre";
    case LengthUnit::Foot:
        return "foot";
    case LengthUnit::UsSurveyFoot:
        break;
    }
    return "us-foot";
}

std::optional<PlaceOnSurface> LookAt(const Survey& survey, PlanPoint place) {
    const ShownSurface shown = survey.Surface();
    return LookAt(shown.points, shown.triangles, place);
}

} // namespace

void MeasureRun::Read(const StopToken& stop) {
    std::vector<std::string>& remarks = figures_.remarks;
    if (!call_.secondFile.empty()) {
        second_ = ReadSecondSurvey(options_, remarks, stop);
        desk_.SetSecond(second_);
    }
    rings_ = ReadRings(call_.withinFiles, remarks, stop);
    if (const std::optional<Text> failure = desk_.SetPolygon(rings_)) {
        throw RunFailure(ExitCode::kPointFile,
                         call_.withinFiles.front() + ": " + TextCatalogue()[*failure]);
    }
    lines_ = ReadSections(call_.sections, remarks, stop);
    if (call_.crossSections && lines_.size() != 1) {
        throw RunFailure(ExitCode::kUsage,
                         call_.sections.front().file +
                             ": --cross-sections needs one line as its axis; this file has " +
                             std::to_string(lines_.size()) + ".");
    }
    RefuseTooMany();
}

void MeasureRun::RefuseTooMany() const {
    if (!call_.crossSections) {
        return;
    }
    const CrossSizes& sizes = *call_.crossSections;
    if (AreTooMany({lines_.front().places, sizes.spacing, sizes.width})) {
        throw RunFailure(ExitCode::kUsage, "--cross-sections: there would be more than " +
                                               std::to_string(kMostCrossSections) +
                                               " of them; a larger spacing makes fewer.");
    }
}

void MeasureRun::Measure(const std::vector<double>& heights, const StopToken& stop) {
    figures_.unit = NameOf(options_.exchange);
    figures_.withinFiles = call_.withinFiles;
    figures_.rings = rings_.size();
    if (call_.areas) {
        figures_.areas = desk_.Areas(stop);
        EndWhenStopped();
    }
    if (call_.hypsometry) {
        figures_.hypsometry = desk_.Hypsometry(heights, stop);
        EndWhenStopped();
    }
    MeasureVolumes(stop);
    MeasureSections(stop);
    for (const PlanPoint place : call_.places) {
        MeasurePlace(place);
    }
    RemarkOnGround();
}

void MeasureRun::MeasureVolumes(const StopToken& stop) {
    for (const double datum : call_.datums) {
        figures_.volumes.push_back({datum, desk_.VolumeToDatum(datum, stop)});
        EndWhenStopped();
    }
    if (second_ != nullptr) {
        figures_.toSecond = SecondSurveyFigures{call_.secondFile, desk_.VolumeToSecond(stop),
                                                desk_.Areas(stop).plan, SecondArea(stop)};
        EndWhenStopped();
    }
}

// Sections are compared with a second survey, else with a datum where the call has one.
std::optional<double> MeasureRun::SectionDatum() const {
    return call_.datums.empty() ? std::nullopt : std::optional(call_.datums.front());
}

void MeasureRun::MeasureSections(const StopToken& stop) {
    for (const SectionLine& line : lines_) {
        figures_.sections.push_back({line, desk_.Section(line.places, SectionDatum())});
        EndWhenStopped();
    }
    if (!call_.crossSections) {
        return;
    }
    const CrossSizes& sizes = *call_.crossSections;
    CrossSectionFigures across = desk_.CrossSections(
        {lines_.front().places, sizes.spacing, sizes.width}, SectionDatum(), stop);
    EndWhenStopped();
    figures_.across = MeasuredAcross{sizes, std::move(across)};
}

void MeasureRun::MeasurePlace(PlanPoint place) {
    MeasuredPlace measured;
    measured.place = place;
    measured.first = desk_.At(place);
    if (second_ != nullptr) {
        measured.second = LookAt(*second_, place);
    }
    measured.nearest = desk_.Nearest(place);
    if (const Index inUse = measured.nearest.number; inUse > 0) {
        const PointLabels& labels = survey_.Points().labels;
        measured.nearestName = labels.HasLabels() ? std::string(labels.Name(inUse)) : "";
        measured.nearest.number = survey_.NumberAmongAll(inUse);
    }
    figures_.places.push_back(std::move(measured));
}

double MeasureRun::SecondArea(const StopToken& stop) const {
    MeasureDesk desk(*second_);
    static_cast<void>(desk.SetPolygon(rings_)); // was good for the first
    return desk.Areas(stop).plan;
}

void MeasureRun::RemarkOnGround() {
    if (!rings_.empty() && !(desk_.Areas().plan > 0)) {
        figures_.remarks.emplace_back("No part of the surface lies within the rings.");
    } else if (figures_.toSecond && !(figures_.toSecond->figures.planArea > 0)) {
        figures_.remarks.emplace_back("The two surveys have no ground in common.");
    }
}

void MeasureRun::WriteTable(const OutputTarget& target) const {
    std::vector<TableSection> sections;
    for (const MeasuredSection& section : figures_.sections) {
        sections.push_back({&section.figures, false});
    }
    if (figures_.across) {
        for (const SectionFigures& section : figures_.across->figures.sections) {
            sections.push_back({&section, true});
        }
    }
    OutputFile out(target);
    WriteSectionTable(out, sections);
    out.Commit();
}

void MeasureRun::WriteDifference(OutputGroup& group, const DifferenceSurface& difference,
                                 const StopToken& stop) {
    const ExchangeCall& exchange = options_.exchange;
    const ExchangeFile& file = *exchange.difference;
    VectorWish wish = exchange.wish;
    wish.parts = file.parts;
    const std::string name = NameWithoutExtension(second_->Points().sourceName) + " less " +
                             NameWithoutExtension(survey_.Points().sourceName);
    const std::optional<VectorContent> content =
        MakeDifferenceContent(difference, name, wish, stop);
    EndWhenStopped();
    if (!HasLevels(difference.points.extentZ)) {
        figures_.remarks.emplace_back("The difference is the same everywhere: it has no contours.");
    }
    try {
        figures_.difference =
            WriteExchangeFile(file, *content, exchange.options, exchange.verify, group);
    } catch (const AppError& error) {
        throw RunFailure(ExitCode::kOutput, error.what());
    }
}

void MeasureRun::Deliver(const RunState& run, OutputGroup& group, std::vector<std::string>& files,
                         const StopToken& stop) {
    if (!call_.sectionTable.empty()) {
        WriteTable({call_.sectionTable, &group});
        files.push_back(call_.sectionTable);
    }
    if (!call_.sectionPicture.empty()) {
        const std::vector<std::string> drawn =
            DrawSections({options_, run, group, stop}, figures_, survey_.Points().sourceName,
                         second_ == nullptr ? "" : second_->Points().sourceName);
        files.insert(files.end(), drawn.begin(), drawn.end());
    }
    if (!call_.differenceSheet.empty() || options_.exchange.difference) {
        DeliverDifference(run, group, files, stop);
    }
}

std::string MeasureRun::DifferenceFile() const {
    return options_.exchange.difference ? options_.exchange.difference->path : std::string();
}

void MeasureRun::DeliverDifference(const RunState& run, OutputGroup& group,
                                   std::vector<std::string>& files, const StopToken& stop) {
    const DifferenceSurface difference = desk_.Difference(stop);
    EndWhenStopped();
    if (difference.triangles.count == 0) {
        for (const std::string& file : {call_.differenceSheet, DifferenceFile()}) {
            if (!file.empty()) {
                figures_.failures.push_back(
                    file +
                    ": there is no difference to write, the surveys have no ground in common.");
            }
        }
        return;
    }
    if (!call_.differenceSheet.empty()) {
        DrawDifference({options_, run, group, stop}, difference, figures_.toSecond->figures,
                       survey_.Points().sourceName, second_->Points().sourceName);
        files.push_back(call_.differenceSheet);
    }
    if (options_.exchange.difference) {
        WriteDifference(group, difference, stop);
        files.push_back(options_.exchange.difference->path);
    }
}

} // namespace terravo
