#include "contour/smoothing/FlattenContours.h"

#include "contour/ContourLineBuilder.h"
#include "contour/smoothing/PlanVector.h"

#include <algorithm>

namespace terravo {
namespace {

using namespace smoothing;

constexpr double kMostChords = 4096; // a piece, whatever the tolerance

// By the second derivative of a cubic: chords over equal steps leave it by no more than an eighth
// of it times the squared step.
int ChordsOf(std::span<const PlanPoint, 4> c, double tolerance) {
    const double bend = std::max(Length(c[0] - 2 * c[1] + c[2]), Length(c[1] - 2 * c[2] + c[3]));
    return static_cast<int>(
        std::clamp(std::ceil(std::sqrt(0.75 * bend / tolerance)), 1.0, kMostChords));
}

PlanPoint PlaceAt(std::span<const PlanPoint, 4> c, double t) {
    const double s = 1 - t;
    return s * s * (s * c[0] + 3 * t * c[1]) + t * t * (3 * s * c[2] + t * c[3]);
}

// Calls take(place, piece, isVertex) for all places but the first of the line.
template <class Take>
void WalkAlong(std::span<const PlanPoint> controls, double tolerance, const Take& take) {
    for (std::size_t piece = 0; 3 * piece + 1 < controls.size(); ++piece) {
        const auto c = controls.subspan(3 * piece).first<4>();
        const int chords = ChordsOf(c, tolerance);
        for (int i = 1; i < chords; ++i) {
            take(PlaceAt(c, static_cast<double>(i) / chords), piece, false);
        }
        take(c[3], piece, true);
    }
}

} // namespace

void FlattenLine(std::span<const PlanPoint> controls, bool closed, double tolerance,
                 std::vector<PlanPoint>& places, std::vector<std::size_t>& pieces) {
    const std::size_t first = places.size();
    places.push_back(controls.front());
    pieces.push_back(0);
    const std::size_t lastPiece = (controls.size() - 1) / 3 - 1;
    WalkAlong(controls, tolerance, [&](PlanPoint place, std::size_t piece, bool isVertex) {
        const std::size_t onward = std::min(isVertex ? piece + 1 : piece, lastPiece);
        if (place == places.back()) {
            pieces.back() = onward;
        } else {
            places.push_back(place);
            pieces.push_back(onward);
        }
    });
    if (closed && places.size() > first + 1) {
        places.pop_back();
        pieces.pop_back();
    }
}

ContourSet FlattenContours(const SmoothSet& smooth, double tolerance) {
    ContourSet contours(smooth.levels.UpperBound());
    for (Index k = 1; k <= smooth.levels.UpperBound(); ++k) {
        const SmoothLevel& level = smooth.levels[k];
        ContourLineBuilder lines(Repeats::LeaveOut);
        lines.Begin(level.value);
        for (const SmoothLine& line : level.lines) {
            const auto edges = level.EdgesOf(line);
            const auto add = [&](PlanPoint place, TriangleEdge edge) {
                const PlanPoint there = place + smooth.origin;
                lines.Add({there.x, there.y, edge}, false);
            };
            const auto controls = level.ControlsOf(line);
            add(controls.front(), edges.front());
            WalkAlong(controls, tolerance, [&](PlanPoint place, std::size_t piece, bool isVertex) {
                const TriangleEdge arrived = edges[piece + 1];
                add(place, isVertex ? arrived : TriangleEdge{arrived.triangle, 0});
            });
            if (line.closed) {
                lines.EndClosed();
            } else {
                lines.EndOpen(edges.back());
            }
        }
        contours[k] = lines.Level();
    }
    return contours;
}

} // namespace terravo
