#include "contour/smoothing/PointGradients.h"

#include "triangulation/SpaceLine.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace terravo::smoothing {
namespace {

constexpr std::size_t kFewestForSurface = 7;
constexpr std::size_t kMostInRing = 64; // beside the first ring: a hub would cost all its spokes
constexpr double kWeightRadius = 0.1;   // squared, in squares of the mean edge
constexpr double kLeastPivot = 1e-9;
constexpr double kFlattest = 1e-6; // determinant of a plane's equations by the squared trace
constexpr std::size_t kPieces = 64;
constexpr std::size_t kPointsAPiece = 10000;

struct Neighbour {
    PlanPoint away; // from the point
    double rise = 0;
};

// For xx, xy, yy, x and y: the upper half, with the right side.
using Equations = std::array<std::array<double, 6>, 5>;

// Gauss by the diagonal, which is positive where the equations have one solution. Only the last two
// unknowns are asked for.
std::optional<PlanPoint> SolveForSlope(Equations& a) {
    for (std::size_t r = 0; r < a.size(); ++r) {
        if (!(a[r][r] > kLeastPivot)) {
            return std::nullopt;
        }
        for (std::size_t q = r + 1; q < a.size(); ++q) {
            const double factor = a[r][q] / a[r][r];
            for (std::size_t c = q; c <= a.size(); ++c) {
                a[q][c] -= factor * a[r][c];
            }
        }
    }
    const double y = a[4][5] / a[4][4];
    return PlanPoint{(a[3][5] - a[3][4] * y) / a[3][3], y};
}

std::optional<PlanPoint> SlopeOfSurface(const std::vector<Neighbour>& ring, double unit) {
    Equations equations{};
    for (const Neighbour& neighbour : ring) {
        const PlanPoint d = (1 / unit) * neighbour.away;
        const double falling = kWeightRadius + Dot(d, d);
        const double weight = 1 / (falling * falling);
        const std::array<double, 6> row{d.x * d.x, d.x * d.y, d.y * d.y, d.x, d.y, neighbour.rise};
        for (std::size_t r = 0; r < equations.size(); ++r) {
            const double weighed = weight * row[r];
            for (std::size_t c = r; c < row.size(); ++c) {
                equations[r][c] += weighed * row[c];
            }
        }
    }
    const std::optional<PlanPoint> slope = SolveForSlope(equations);
    return slope ? std::optional((1 / unit) * *slope) : std::nullopt;
}

std::optional<PlanPoint> SlopeOfPlane(std::span<const Neighbour> ring) {
    double xx = 0;
    double xy = 0;
    double yy = 0;
    double xz = 0;
    double yz = 0;
    for (const auto& [d, rise] : ring) {
        const double weight = 1 / Dot(d, d);
        xx += weight * d.x * d.x;
        xy += weight * d.x * d.y;
        yy += weight * d.y * d.y;
        xz += weight * d.x * rise;
        yz += weight * d.y * rise;
    }
    const double determinant = xx * yy - xy * xy;
    if (!(determinant > kFlattest * (xx + yy) * (xx + yy))) {
        return std::nullopt;
    }
    return PlanPoint{(xz * yy - yz * xy) / determinant, (xx * yz - xy * xz) / determinant};
}

bool IsInner(const TriangleList& triangles, TriangleEdge edge) {
    return TriangleAcross(triangles, edge) != 0;
}

} // namespace

// The points about one point, each once.
class PointGradients::Ring {
public:
    /// @param points  point i at i.
    explicit Ring(const std::vector<SpacePoint>& points)
        : points_(points), stamps_(points.size()) {}

    void Begin(Index point) {
        centre_ = point;
        neighbours_.clear();
        stamps_[static_cast<std::size_t>(point)] = centre_;
    }
    void Add(Index point) {
        Index& stamp = stamps_[static_cast<std::size_t>(point)];
        if (stamp != centre_) {
            stamp = centre_;
            const SpacePoint& here = points_[static_cast<std::size_t>(centre_)];
            const SpacePoint& there = points_[static_cast<std::size_t>(point)];
            neighbours_.push_back({PlanOf(there) - PlanOf(here), there.z - here.z});
        }
    }
    void EndFirst() { firstCount_ = neighbours_.size(); }
    [[nodiscard]] bool IsFull() const { return neighbours_.size() >= firstCount_ + kMostInRing; }

    [[nodiscard]] std::optional<PlanPoint> Slope() const {
        const std::span first = std::span(neighbours_).first(firstCount_);
        if (neighbours_.size() >= kFewestForSurface) {
            double squares = 0;
            for (const Neighbour& neighbour : first) {
                squares += Dot(neighbour.away, neighbour.away);
            }
            const double unit = std::sqrt(squares / static_cast<double>(firstCount_));
            if (const auto slope = SlopeOfSurface(neighbours_, unit)) {
                return slope;
            }
        }
        return SlopeOfPlane(first);
    }

private:
    const std::vector<SpacePoint>& points_;
    Index centre_ = 0;
    std::size_t firstCount_ = 0;
    std::vector<Neighbour> neighbours_;
    std::vector<Index> stamps_; // the last centre that point i was about, at i
};

PointGradients::PointGradients(const SmoothingSource& source, const ContourSet& contours,
                               const PieceRunner& inPieces) {
    constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
    gradients_.assign(static_cast<std::size_t>(source.points.count) + 1, {kUnknown, kUnknown});
    std::vector<SpacePoint> points(gradients_.size());
    for (Index i = 1; i <= source.points.count; ++i) {
        points[static_cast<std::size_t>(i)] = {source.points.x[i], source.points.y[i],
                                               source.points.z[i]};
    }
    FindNeighbours(source.triangles);
    FindBreaklines(source);
    const std::vector<Index> wanted = FindWanted(source.triangles, contours);
    const std::size_t pieces = std::clamp<std::size_t>(wanted.size() / kPointsAPiece, 1, kPieces);
    inPieces(static_cast<int>(pieces), [&](int piece) {
        Ring ring(points);
        const std::size_t first = wanted.size() * static_cast<std::size_t>(piece) / pieces;
        const std::size_t end = wanted.size() * (static_cast<std::size_t>(piece) + 1) / pieces;
        for (std::size_t i = first; i < end; ++i) {
            Collect(wanted[i], ring);
            gradients_[static_cast<std::size_t>(wanted[i])] =
                ring.Slope().value_or(PlanPoint{kUnknown, kUnknown});
        }
    });
}

// In the order in which the triangles come to them: neighbours follow each other.
std::vector<Index> PointGradients::FindWanted(const TriangleList& triangles,
                                              const ContourSet& contours) const {
    std::vector<char> isWanted(gradients_.size());
    for (const ContourLevel& level : contours) {
        for (const ContourVertex& vertex : level.vertices) {
            const Triangle& triangle = triangles.table[vertex.edge.triangle];
            for (const int corner : {vertex.edge.edge, NextEdge(vertex.edge.edge)}) {
                isWanted[static_cast<std::size_t>(triangle.Vertex(corner))] = 1;
            }
        }
    }
    std::vector<Index> wanted;
    for (Index t = 1; t <= triangles.count; ++t) {
        for (const Index point : triangles.table[t].vertices) {
            const auto i = static_cast<std::size_t>(point);
            if (isWanted[i] != 0 && isOnBreakline_[i] == 0) {
                wanted.push_back(point);
            }
            isWanted[i] = 0;
        }
    }
    return wanted;
}

// Each edge is taken from the triangle with the higher number, or the only one.
void PointGradients::FindNeighbours(const TriangleList& triangles) {
    const auto forEachEdge = [&](auto&& take) {
        for (Index t = 1; t <= triangles.count; ++t) {
            for (int j = 1; j <= 3; ++j) {
                if (triangles.Neighbour(j, t) < t) {
                    take(static_cast<std::size_t>(triangles.Vertex(j, t)),
                         static_cast<std::size_t>(triangles.Vertex(NextEdge(j), t)));
                }
            }
        }
    };
    first_.assign(gradients_.size() + 1, 0);
    forEachEdge([&](std::size_t a, std::size_t b) {
        ++first_[a + 1];
        ++first_[b + 1];
    });
    for (std::size_t i = 1; i < first_.size(); ++i) {
        first_[i] += first_[i - 1];
    }
    neighbours_.resize(first_.back());
    std::vector<std::size_t> next(first_.begin(), first_.end() - 1);
    forEachEdge([&](std::size_t a, std::size_t b) {
        neighbours_[next[a]++] = static_cast<Index>(b);
        neighbours_[next[b]++] = static_cast<Index>(a);
    });
}

void PointGradients::FindBreaklines(const SmoothingSource& source) {
    isOnBreakline_.assign(gradients_.size(), 0);
    if (source.constrained == nullptr) {
        return;
    }
    for (Index t = 1; t <= source.triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            const auto bit = static_cast<unsigned>(j - 1);
            if (((*source.constrained)[t] >> bit & 1U) != 0 && IsInner(source.triangles, {t, j})) {
                for (const int corner : {j, NextEdge(j)}) {
                    isOnBreakline_[static_cast<std::size_t>(source.triangles.Vertex(corner, t))] =
                        1;
                }
            }
        }
    }
}

void PointGradients::Collect(Index point, Ring& ring) const {
    ring.Begin(point);
    for (const Index neighbour : NeighboursOf(point)) {
        ring.Add(neighbour);
    }
    ring.EndFirst();
    for (const Index member : NeighboursOf(point)) {
        if (isOnBreakline_[static_cast<std::size_t>(member)] != 0) {
            continue;
        }
        for (const Index neighbour : NeighboursOf(member)) {
            if (ring.IsFull()) {
                return;
            }
            ring.Add(neighbour);
        }
    }
}

} // namespace terravo::smoothing
