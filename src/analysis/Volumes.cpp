#include "analysis/Volumes.h"

#include "analysis/CompensatedSum.h"
#include "analysis/SurfaceOverlay.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

namespace terravo {
namespace {

struct Sums {
    CompensatedSum above;
    CompensatedSum below;
    CompensatedSum area;
    CompensatedSum areaAbove;
    CompensatedSum areaBelow;

    void Add(const Sums& other) {
        above.Add(other.above);
        below.Add(other.below);
        area.Add(other.area);
        areaAbove.Add(other.areaAbove);
        areaBelow.Add(other.areaBelow);
    }
    void AddAbove(double plan, double volume) {
        above.Add(volume);
        areaAbove.Add(plan);
    }
    void AddBelow(double plan, double volume) {
        below.Add(volume);
        areaBelow.Add(plan);
    }
    [[nodiscard]] VolumeFigures Figures() const {
        VolumeFigures figures;
        figures.cut = above.Value();
        figures.fill = below.Value();
        figures.net = figures.cut - figures.fill;
        figures.planArea = area.Value();
        figures.cutArea = areaAbove.Value();
        figures.fillArea = areaBelow.Value();
        return figures;
    }
};

double Third(double a, double b, double c) {
    return (a + b + c) / 3;
}

// A corner on one hand of the zero line, the two others on the other hand or on the line: all terms
// have one sign, so nothing cancels.
struct Divided {
    double tipArea;
    double tipVolume;
    double restArea;
    double restVolume;
};

Divided Divide(double area, double tip, double b, double c) {
    const double toB = tip / (tip - b); // part of the side that belongs to the tip
    const double toC = tip / (tip - c);
    const double restB = b / (b - tip);
    const double restC = c / (c - tip);
    const double tipArea = area * toB * toC;
    const double wide = area * restB;
    const double narrow = area * toB * restC;
    return {tipArea, tipArea * std::fabs(tip) / 3, wide + narrow,
            wide * (std::fabs(b) + std::fabs(c)) / 3 + narrow * std::fabs(c) / 3};
}

// @param d  how far the first lies above the other at the corners.
void AddTriangle(double area, const std::array<double, 3>& d, Sums& sums) {
    sums.area.Add(area);
    const auto [low, high] = std::minmax({d[0], d[1], d[2]});
    if (low >= 0) {
        if (high > 0) {
            sums.AddAbove(area, area * Third(d[0], d[1], d[2]));
        }
        return;
    }
    if (high <= 0) {
        sums.AddBelow(area, -area * Third(d[0], d[1], d[2]));
        return;
    }
    std::size_t tip = 0; // the only one of its sign
    for (std::size_t k = 0; k < 3; ++k) {
        const double b = d[(k + 1) % 3];
        const double c = d[(k + 2) % 3];
        tip = (d[k] > 0 && b <= 0 && c <= 0) || (d[k] < 0 && b >= 0 && c >= 0) ? k : tip;
    }
    const Divided parts = Divide(area, d[tip], d[(tip + 1) % 3], d[(tip + 2) % 3]);
    if (d[tip] > 0) {
        sums.AddAbove(parts.tipArea, parts.tipVolume);
        sums.AddBelow(parts.restArea, parts.restVolume);
    } else {
        sums.AddBelow(parts.tipArea, parts.tipVolume);
        sums.AddAbove(parts.restArea, parts.restVolume);
    }
}

double PlanAreaOf(PlanPoint a, PlanPoint b, PlanPoint c) {
    return ((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y)) / 2;
}

void AddFace(const OverlayFace& face, Sums& sums) {
    const auto corners = face.Corners();
    for (std::size_t k = 2; k < corners.size(); ++k) {
        const FaceCorner& a = corners[0];
        const FaceCorner& b = corners[k - 1];
        const FaceCorner& c = corners[k];
        AddTriangle(PlanAreaOf(a.place, b.place, c.place),
                    {a.Difference(), b.Difference(), c.Difference()}, sums);
    }
}

// Any order will do, so long as it is the same whichever of two comes first.
bool GoesFirst(const MeasuredSurface& a, const MeasuredSurface& b) {
    if (a.triangles.count != b.triangles.count) {
        return a.triangles.count < b.triangles.count;
    }
    for (Index t = 1; t <= a.triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            const SpacePoint& p = a.Corner(t, j);
            const SpacePoint& q = b.Corner(t, j);
            if (p != q) {
                return std::tie(p.x, p.y, p.z) < std::tie(q.x, q.y, q.z);
            }
        }
    }
    return true;
}

} // namespace

VolumeFigures VolumeAgainst(const MeasuredSurface& surface, double datum) {
    Sums sums;
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        const SpacePoint& a = surface.Corner(t, 1);
        const SpacePoint& b = surface.Corner(t, 2);
        const SpacePoint& c = surface.Corner(t, 3);
        AddTriangle(PlanAreaOf(PlanOf(a), PlanOf(b), PlanOf(c)),
                    {a.z - datum, b.z - datum, c.z - datum}, sums);
    }
    return sums.Figures();
}

VolumeFigures VolumeBetween(const MeasuredSurface& first, const MeasuredSurface& second,
                            const StopToken& stop) {
    if (!GoesFirst(first, second)) {
        VolumeFigures turned = VolumeBetween(second, first, stop);
        std::swap(turned.cut, turned.fill);
        std::swap(turned.cutArea, turned.fillArea);
        turned.net = turned.cut - turned.fill;
        return turned;
    }
    std::vector<Sums> pieces(static_cast<std::size_t>(OverlayPieces(first)));
    OverlaySurfaces(
        first, second,
        [&](int piece, const OverlayFace& face) {
            AddFace(face, pieces[static_cast<std::size_t>(piece)]);
        },
        stop);
    Sums sums;
    for (const Sums& piece : pieces) {
        sums.Add(piece);
    }
    return sums.Figures();
}

} // namespace terravo
