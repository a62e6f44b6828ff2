#include "app/session/MeasureDesk.h"

#include <algorithm>

namespace terravo {
namespace {

Extent Joined(Extent a, const Extent& b) {
    a.Include(b.min);
    a.Include(b.max);
    return a;
}

PlanPoint OriginOf(const PointSet& first, const PointSet* second) {
    return second == nullptr || second->count == 0
               ? LocalOrigin(first.extentX, first.extentY)
               : LocalOrigin(Joined(first.extentX, second->extentX),
                             Joined(first.extentY, second->extentY));
}

LineSides LinesOf(const ShownSurface& surface) {
    return surface.shaped == nullptr ? LineSides() : SidesOfLines(*surface.shaped);
}

} // namespace

void MeasureDesk::SetSecond(std::shared_ptr<const Survey> second) {
    second_ = std::move(second);
    other_ = {};
}

std::optional<Text> MeasureDesk::SetPolygon(std::vector<PlanRing> rings) {
    MeasuredSurface ground;
    if (!rings.empty()) {
        PolygonReading reading = MakePolygon(OriginNow({}), rings);
        if (reading.failure) {
            return reading.failure;
        }
        ground = std::move(reading.ground);
    }
    rings_ = std::move(rings);
    polygon_ = std::move(ground);
    first_.cut.reset();
    other_.cut.reset();
    return {};
}

bool MeasureDesk::HasSurface(const StopToken& stop) const {
    return survey_.Surface(stop).triangles.count > 0;
}

PlanPoint MeasureDesk::OriginNow(const StopToken& stop) const {
    return OriginOf(survey_.ShownPoints(stop),
                    second_ == nullptr ? nullptr : &second_->ShownPoints(stop));
}

// All is moved to one origin; another one needs everything anew.
void MeasureDesk::Prepare(const StopToken& stop) {
    const PlanPoint origin = OriginNow(stop);
    Refresh(survey_, origin, first_);
    if (second_ != nullptr) {
        Refresh(*second_, origin, other_);
    }
    if (!rings_.empty() && polygon_.origin != origin) {
        polygon_ = MakePolygon(origin, rings_).ground;
    }
}

void MeasureDesk::Refresh(const Survey& survey, PlanPoint origin, Measured& measured) {
    const ShownSurface shown = survey.Surface();
    const bool isFresh =
        measured.version == survey.Version() && measured.isMade && measured.whole.origin == origin;
    if (!isFresh) {
        measured = {survey.Version(),
                    shown.ierr == 0,
                    MeasureFrom(origin, shown.points, shown.triangles),
                    {}};
    }
}

const MeasuredSurface& MeasureDesk::Within(Measured& measured, const StopToken& stop) const {
    if (rings_.empty()) {
        return measured.whole;
    }
    if (!measured.cut) {
        MeasuredSurface cut = CutByPolygon(measured.whole, polygon_, stop);
        if (stop.IsStopRequested()) {
            static const MeasuredSurface kNone;
            return kNone;
        }
        measured.cut = std::move(cut);
    }
    return *measured.cut;
}

AreaFigures MeasureDesk::Areas(const StopToken& stop) {
    Prepare(stop);
    return MeasureAreas(Within(first_, stop));
}

std::vector<HypsometryRow> MeasureDesk::Hypsometry(std::vector<double> heights,
                                                   const StopToken& stop) {
    Prepare(stop);
    heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
    return MeasureHypsometry(Within(first_, stop), heights);
}

VolumeFigures MeasureDesk::VolumeToDatum(double datum, const StopToken& stop) {
    Prepare(stop);
    return VolumeAgainst(Within(first_, stop), datum);
}

// The polygon cuts both, so that the two can change places.
VolumeFigures MeasureDesk::VolumeToSecond(const StopToken& stop) {
    Prepare(stop);
    return VolumeBetween(Within(first_, stop), Within(other_, stop), stop);
}

DifferenceSurface MeasureDesk::Difference(const StopToken& stop) {
    Prepare(stop);
    return MakeDifference(Within(first_, stop), other_.whole, stop);
}

SectionFigures MeasureDesk::SectionBy(const std::vector<PlanPoint>& line,
                                      const SectionCutter& first, const SectionCutter* second,
                                      std::optional<double> datum) {
    SectionFigures section;
    section.line = line;
    section.first = first.Cut(line);
    if (second != nullptr) {
        section.second = second->Cut(line);
        section.areas = AreasBetween(section.first, *section.second);
    } else if (datum) {
        section.areas = AreasAgainst(section.first, *datum);
    }
    return section;
}

std::unique_ptr<SectionCutter> MeasureDesk::SecondCutter() const {
    return second_ == nullptr
               ? nullptr
               : std::make_unique<SectionCutter>(other_.whole, LinesOf(second_->Surface()));
}

SectionFigures MeasureDesk::Section(const std::vector<PlanPoint>& line,
                                    std::optional<double> datum) {
    Prepare({});
    const SectionCutter first(first_.whole, LinesOf(survey_.Surface()));
    return SectionBy(line, first, SecondCutter().get(), datum);
}

CrossSectionFigures MeasureDesk::CrossSections(const CrossSectionPlan& plan,
                                               std::optional<double> datum, const StopToken& stop) {
    Prepare(stop);
    CrossSectionFigures figures;
    const SectionCutter first(first_.whole, LinesOf(survey_.Surface()));
    const std::unique_ptr<SectionCutter> second = SecondCutter();
    const std::vector<CrossSection> laid = LayCrossSections(plan);
    std::vector<SectionAreas> areas;
    for (const CrossSection& across : laid) {
        const double done =
            static_cast<double>(figures.sections.size()) / static_cast<double>(laid.size());
        if (!stop.GoesOn("measure", done)) {
            return {};
        }
        figures.sections.push_back(SectionBy(across.line, first, second.get(), datum));
        figures.sections.back().station = across.station;
        areas.push_back(figures.sections.back().areas.value_or(SectionAreas()));
    }
    if (!laid.empty() && (second != nullptr || datum)) {
        figures.endAreas = EndAreaVolume(laid, areas);
        TakeExact(plan, datum, stop, figures);
    }
    return figures;
}

void MeasureDesk::TakeExact(const CrossSectionPlan& plan, std::optional<double> datum,
                            const StopToken& stop, CrossSectionFigures& figures) const {
    const PolygonReading corridor = MakePolygon(first_.whole.origin, {CorridorOf(plan)});
    if (corridor.failure) {
        figures.remark = Text::CrossOverlap;
        return;
    }
    const MeasuredSurface first = CutByPolygon(first_.whole, corridor.ground, stop);
    figures.exact =
        second_ != nullptr
            ? VolumeBetween(first, CutByPolygon(other_.whole, corridor.ground, stop), stop)
            : VolumeAgainst(first, *datum);
}

std::optional<PlaceOnSurface> MeasureDesk::At(PlanPoint place) const {
    const ShownSurface shown = survey_.Surface();
    return LookAt(shown.points, shown.triangles, place);
}

NearestSurveyPoint MeasureDesk::Nearest(PlanPoint place) const {
    const ShownSurface shown = survey_.Surface();
    return NearestTo(shown.points, shown.SurveyedPoints(), place);
}

} // namespace terravo
