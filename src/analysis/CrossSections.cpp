#include "analysis/CrossSections.h"

#include "analysis/CompensatedSum.h"

#include <cmath>

namespace terravo {
namespace {

struct Direction {
    double x = 0;
    double y = 0;
};

double DistanceOf(PlanPoint a, PlanPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

Direction DirectionOf(PlanPoint from, PlanPoint to) {
    const double length = DistanceOf(from, to);
    return {(to.x - from.x) / length, (to.y - from.y) / length};
}

// The axis without vertices that repeat the one before.
std::vector<PlanPoint> BendsOf(const std::vector<PlanPoint>& axis) {
    std::vector<PlanPoint> bends;
    for (const PlanPoint& place : axis) {
        if (bends.empty() || bends.back() != place) {
            bends.push_back(place);
        }
    }
    return bends;
}

double LengthOf(const std::vector<PlanPoint>& line) {
    CompensatedSum length;
    for (std::size_t i = 1; i < line.size(); ++i) {
        length.Add(DistanceOf(line[i - 1], line[i]));
    }
    return length.Value();
}

std::vector<double> StationsOf(double length, double spacing) {
    constexpr double kNear = 1e-9; // of the spacing: a last section this near the end is its own
    std::vector<double> stations;
    for (std::size_t k = 0; static_cast<double>(k) * spacing < length - kNear * spacing; ++k) {
        stations.push_back(static_cast<double>(k) * spacing);
    }
    stations.push_back(length);
    return stations;
}

CrossSection SectionAt(const std::vector<PlanPoint>& axis, double station, double width) {
    std::size_t leg = 1;
    double before = 0;
    for (; leg + 1 < axis.size(); ++leg) {
        const double length = DistanceOf(axis[leg - 1], axis[leg]);
        if (station < before + length) {
            break;
        }
        before += length;
    }
    const Direction along = DirectionOf(axis[leg - 1], axis[leg]);
    const double ahead = station - before;
    const PlanPoint middle{axis[leg - 1].x + ahead * along.x, axis[leg - 1].y + ahead * along.y};
    const double half = width / 2;
    return {station,
            {{middle.x - half * along.y, middle.y + half * along.x},
             {middle.x + half * along.y, middle.y - half * along.x}}};
}

// Beside a bend, along the line that halves it, so that both legs keep their distance.
PlanPoint Beside(const std::vector<PlanPoint>& axis, std::size_t bend, double distance) {
    const bool isFirst = bend == 0;
    const bool isLast = bend + 1 == axis.size();
    const Direction in =
        isFirst ? DirectionOf(axis[0], axis[1]) : DirectionOf(axis[bend - 1], axis[bend]);
    const Direction out = isLast ? in : DirectionOf(axis[bend], axis[bend + 1]);
    const double scale = distance / (1 + in.x * out.x + in.y * out.y);
    return {axis[bend].x - scale * (in.y + out.y), axis[bend].y + scale * (in.x + out.x)};
}

} // namespace

bool AreTooMany(const CrossSectionPlan& plan) {
    return LengthOf(BendsOf(plan.axis)) / plan.spacing >
           static_cast<double>(kMostCrossSections - 2);
}

std::vector<CrossSection> LayCrossSections(const CrossSectionPlan& plan) {
    const std::vector<PlanPoint> axis = BendsOf(plan.axis);
    const double length = LengthOf(axis);
    std::vector<CrossSection> sections;
    if (axis.size() < 2 || !(plan.spacing > 0) || !(plan.width > 0) || AreTooMany(plan)) {
        return sections;
    }
    for (const double station : StationsOf(length, plan.spacing)) {
        sections.push_back(SectionAt(axis, station, plan.width));
    }
    return sections;
}

PlanRing CorridorOf(const CrossSectionPlan& plan) {
    const std::vector<PlanPoint> axis = BendsOf(plan.axis);
    PlanRing ring;
    if (axis.size() < 2) {
        return ring;
    }
    for (std::size_t i = 0; i < axis.size(); ++i) {
        ring.push_back(Beside(axis, i, -plan.width / 2));
    }
    for (std::size_t i = axis.size(); i-- > 0;) {
        ring.push_back(Beside(axis, i, plan.width / 2));
    }
    return ring;
}

VolumeFigures EndAreaVolume(const std::vector<CrossSection>& sections,
                            const std::vector<SectionAreas>& areas) {
    CompensatedSum cut;
    CompensatedSum fill;
    CompensatedSum plan;
    for (std::size_t i = 1; i < sections.size(); ++i) {
        const double half = (sections[i].station - sections[i - 1].station) / 2;
        cut.Add((areas[i - 1].cut + areas[i].cut) * half);
        fill.Add((areas[i - 1].fill + areas[i].fill) * half);
        plan.Add((areas[i - 1].length + areas[i].length) * half);
    }
    VolumeFigures figures;
    figures.cut = cut.Value();
    figures.fill = fill.Value();
    figures.net = figures.cut - figures.fill;
    figures.planArea = plan.Value();
    return figures;
}

} // namespace terravo
