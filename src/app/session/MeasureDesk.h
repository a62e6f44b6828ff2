// What can be measured of a survey, alone or beside a second one.
//
// Data: the survey, perhaps another, perhaps a polygon that everything but places and sections is
// restricted to; the surfaces as they are measured, kept until a survey changes. Method: each
// question of a user is one operation that hands its figures back; who asked says them.
#pragma once

#include "analysis/AreaFigures.h"
#include "analysis/CrossSections.h"
#include "analysis/DifferenceSurface.h"
#include "analysis/MeasuredPolygon.h"
#include "analysis/PlaceFigures.h"
#include "analysis/Profile.h"
#include "analysis/Volumes.h"
#include "survey/Survey.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace terravo {

/// A section of one survey or of two.
struct SectionFigures {
    std::vector<PlanPoint> line; // data units
    double station = 0;          // of the axis, of a cross-section
    Profile first;
    std::optional<Profile> second;     // where there is a second survey
    std::optional<SectionAreas> areas; // to the second survey, else to a datum that was given
};

struct CrossSectionFigures {
    std::vector<SectionFigures> sections;
    std::optional<VolumeFigures> endAreas; // by neighbouring sections; none without a second
                                           // survey or a datum
    std::optional<VolumeFigures> exact;    // over the corridor; none too where that cannot be made
    std::optional<Text> remark;            // why it cannot, a full sentence
};

/// Two surveys are compared where they have ground in common.
class MeasureDesk {
public:
    /// @param survey  looked at in each call; outlives this.
    explicit MeasureDesk(const Survey& survey) : survey_(survey) {}

    [[nodiscard]] const Survey& First() const { return survey_; }

    /// The survey to compare with; null: none.
    void SetSecond(std::shared_ptr<const Survey> second);
    [[nodiscard]] const Survey* Second() const { return second_.get(); }

    /// Restricts areas, volumes and differences to the ground within rings; none: to no ground in
    /// particular.
    /// @return why they cannot be taken, a full sentence; those of before are kept then.
    std::optional<Text> SetPolygon(std::vector<PlanRing> rings);
    [[nodiscard]] const std::vector<PlanRing>& Polygon() const { return rings_; }

    /// Whether there is a surface to measure; it is made when there is none.
    [[nodiscard]] bool HasSurface(const StopToken& stop = StopToken()) const;

    AreaFigures Areas(const StopToken& stop = StopToken());
    /// @param heights  ascending; equal ones, as levels of a level survey are, count once.
    std::vector<HypsometryRow> Hypsometry(std::vector<double> heights,
                                          const StopToken& stop = StopToken());
    VolumeFigures VolumeToDatum(double datum, const StopToken& stop = StopToken());
    /// With a second survey only.
    VolumeFigures VolumeToSecond(const StopToken& stop = StopToken());
    DifferenceSurface Difference(const StopToken& stop = StopToken());

    /// @param datum  that the areas are taken to where there is no second survey.
    SectionFigures Section(const std::vector<PlanPoint>& line, std::optional<double> datum = {});
    CrossSectionFigures CrossSections(const CrossSectionPlan& plan,
                                      std::optional<double> datum = {},
                                      const StopToken& stop = StopToken());

    std::optional<PlaceOnSurface> At(PlanPoint place) const;
    NearestSurveyPoint Nearest(PlanPoint place) const;

private:
    // A survey as it is measured.
    struct Measured {
        std::uint64_t version = 0;
        bool isMade = false;
        MeasuredSurface whole;
        std::optional<MeasuredSurface> cut; // by the polygon
    };

    [[nodiscard]] PlanPoint OriginNow(const StopToken& stop) const;
    void Prepare(const StopToken& stop);
    static void Refresh(const Survey& survey, PlanPoint origin, Measured& measured);
    const MeasuredSurface& Within(Measured& measured, const StopToken& stop) const;
    static SectionFigures SectionBy(const std::vector<PlanPoint>& line, const SectionCutter& first,
                                    const SectionCutter* second, std::optional<double> datum);
    [[nodiscard]] std::unique_ptr<SectionCutter> SecondCutter() const;
    void TakeExact(const CrossSectionPlan& plan, std::optional<double> datum, const StopToken& stop,
                   CrossSectionFigures& figures) const;

    const Survey& survey_;
    std::shared_ptr<const Survey> second_;
    std::vector<PlanRing> rings_;
    MeasuredSurface polygon_;
    Measured first_;
    Measured other_;
};

} // namespace terravo
