#include "contour/smoothing/PointGradients.h"

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
constexpr int kPieces = 64;

struct Neighbour {
    PlanPoint away; // from the point
    double rise = 0;
};

using Equations = std::array<std::array<double, 6>, 5>; // with the right side

// Gauss by the diagonal, which is positive where the equations have one solution.
std::optional<PlanPoint> SolveForSlope(Equations& a) {
    for (std::size_t r = 0; r < a.size(); ++r) {
        if (!(a[r][r] > kLeastPivot)) {
            return std::nullopt;
        }
        for (std::size_t q = r + 1; q < a.size(); ++q) {
            const double factor = a[q][r] / a[r][r];
            for (std::size_t c = r; c <= a.size(); ++c) {
                a[q][c] -= factor * a[r][c];
            }
        }
    }
    std::array<double, 5> solution{};
    for (std::size_t r = a.size(); r-- > 0;) {
        double value = a[r][a.size()];
        for (std::size_t c = r + 1; c < a.size(); ++c) {
            value -= a[r][c] * solution[c];
        }
        solution[r] = value / a[r][r];
    }
    return PlanPoint{solution[0], solution[1]};
}

std::optional<PlanPoint> SlopeOfSurface(const std::vector<Neighbour>& ring, double unit) {
    Equations equations{};
    for (const Neighbour& neighbour : ring) {
        const PlanPoint d = (1 / unit) * neighbour.away;
        const double falling = kWeightRadius + Dot(d, d);
        const double weight = 1 / (falling * falling);
        const std::array<double, 6> row{d.x, d.y, d.x * d.x, d.x * d.y, d.y * d.y, neighbour.rise};
        for (std::size_t r = 0; r < equations.size(); ++r) {
            for (std::size_t c = 0; c < row.size(); ++c) {
                equations[r][c] += weight * row[r] * row[c];
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
    explicit Ring(const PointSet& points)
        : points_(points), stamps_(static_cast<std::size_t>(points.count) + 1) {}

    void Begin(Index point) {
        centre_ = point;
        members_.clear();
        neighbours_.clear();
        stamps_[static_cast<std::size_t>(point)] = centre_;
    }
    void Add(Index point) {
        Index& stamp = stamps_[static_cast<std::size_t>(point)];
        if (stamp != centre_) {
            stamp = centre_;
            members_.push_back(point);
            neighbours_.push_back(
                {{points_.x[point] - points_.x[centre_], points_.y[point] - points_.y[centre_]},
                 points_.z[point] - points_.z[centre_]});
        }
    }
    void EndFirst() { firstCount_ = members_.size(); }
    [[nodiscard]] std::size_t FirstCount() const { return firstCount_; }
    [[nodiscard]] bool IsFull() const { return members_.size() >= firstCount_ + kMostInRing; }
    [[nodiscard]] Index Member(std::size_t i) const { return members_[i]; }

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
    const PointSet& points_;
    Index centre_ = 0;
    std::size_t firstCount_ = 0;
    std::vector<Index> members_;
    std::vector<Neighbour> neighbours_;
    std::vector<Index> stamps_; // the last centre that point i was about, at i
};

PointGradients::PointGradients(const SmoothingSource& source, const PieceRunner& inPieces) {
    const Index count = source.points.count;
    constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
    gradients_.assign(static_cast<std::size_t>(count) + 1, {kUnknown, kUnknown});
    FindNeighbours(source.triangles);
    FindBreaklines(source);
    const int pieces = std::clamp(count / 10000, 1, kPieces);
    inPieces(pieces, [&](int piece) {
        Ring ring(source.points);
        const auto bound = [&](int k) {
            return static_cast<Index>(static_cast<std::int64_t>(count) * k / pieces);
        };
        for (Index i = bound(piece) + 1; i <= bound(piece + 1); ++i) {
            if (isOnBreakline_[static_cast<std::size_t>(i)] == 0 && !NeighboursOf(i).empty()) {
                Collect(i, ring);
                gradients_[static_cast<std::size_t>(i)] =
                    ring.Slope().value_or(PlanPoint{kUnknown, kUnknown});
            }
        }
    });
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
    for (std::size_t i = 0; i < ring.FirstCount(); ++i) {
        if (isOnBreakline_[static_cast<std::size_t>(ring.Member(i))] != 0) {
            continue;
        }
        for (const Index neighbour : NeighboursOf(ring.Member(i))) {
            if (ring.IsFull()) {
                return;
            }
            ring.Add(neighbour);
        }
    }
}

} // namespace terravo::smoothing
