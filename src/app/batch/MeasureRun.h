// What a run of terravo-batch measures.
//
// Data: the options, the survey with its surface. Method: what is to be read beside the points is
// read first, so that nothing is measured in vain; then each question of the call is put to the
// desk. Files wait in the group of the run.
#pragma once

#include "app/batch/ExchangeDelivery.h"
#include "app/batch/MeasureInput.h"
#include "app/session/MeasureDesk.h"
#include "util/OutputFile.h"
#include "util/RunState.h"

#include <optional>
#include <string>
#include <vector>

namespace terravo {

struct DatumVolume {
    double datum = 0;
    VolumeFigures figures;
};

struct SecondSurveyFigures {
    std::string file;
    VolumeFigures figures;
    double firstArea = 0; // in plan, within the rings where there are some
    double secondArea = 0;
};

struct MeasuredSection {
    SectionLine line;
    SectionFigures figures;
};

struct MeasuredAcross {
    CrossSizes sizes;
    CrossSectionFigures figures;
};

struct MeasuredPlace {
    PlanPoint place;
    std::optional<PlaceOnSurface> first;
    std::optional<PlaceOnSurface> second; // of the second survey
    NearestSurveyPoint nearest;           // its number is among all points
    std::string nearestName;              // empty where points have none
};

/// The figures of a run; what was not asked for is empty.
struct MeasureFigures {
    std::string unit; // of the coordinates
    std::vector<std::string> withinFiles;
    std::size_t rings = 0;
    std::optional<AreaFigures> areas;
    std::optional<std::vector<HypsometryRow>> hypsometry;
    std::vector<DatumVolume> volumes;
    std::optional<SecondSurveyFigures> toSecond;
    std::vector<MeasuredSection> sections;
    std::optional<MeasuredAcross> across;
    std::vector<MeasuredPlace> places;
    std::optional<ExchangeFigures> difference; // of its file
    std::vector<std::string> remarks;          // sentences
    std::vector<std::string> failures;         // sentences, each of a file that is left out
};

class MeasureRun {
public:
    /// @param options, survey  outlive this; the survey has its surface.
    MeasureRun(const BatchOptions& options, const Survey& survey)
        : options_(options), call_(options.measure), survey_(survey), desk_(survey) {}

    /// Reads the second survey, the rings and the lines.
    /// Throws RunFailure.
    void Read(const StopToken& stop);

    /// @param heights  of the hypsographic table.
    /// Throws RunFailure.
    void Measure(const std::vector<double>& heights, const StopToken& stop);

    /// Writes the files.
    /// @param run             its texts.
    /// @param[in,out] files   that were written.
    /// Throws RunFailure, AppError.
    void Deliver(const RunState& run, OutputGroup& group, std::vector<std::string>& files,
                 const StopToken& stop);

    [[nodiscard]] const MeasureFigures& Figures() const { return figures_; }

private:
    void RefuseTooMany() const;
    void MeasureVolumes(const StopToken& stop);
    void MeasureSections(const StopToken& stop);
    void MeasurePlace(PlanPoint place);
    [[nodiscard]] std::optional<double> SectionDatum() const;
    [[nodiscard]] double SecondArea(const StopToken& stop) const;
    void RemarkOnGround();
    [[nodiscard]] std::string DifferenceFile() const;
    void WriteTable(const OutputTarget& target) const;
    void DeliverDifference(const RunState& run, OutputGroup& group, std::vector<std::string>& files,
                           const StopToken& stop);
    void WriteDifference(OutputGroup& group, const DifferenceSurface& difference,
                         const StopToken& stop);

    const BatchOptions& options_;
    const MeasureCall& call_;
    const Survey& survey_;
    MeasureDesk desk_;
    std::shared_ptr<const Survey> second_;
    std::vector<PlanRing> rings_;
    std::vector<SectionLine> lines_;
    MeasureFigures figures_;
};

} // namespace terravo
