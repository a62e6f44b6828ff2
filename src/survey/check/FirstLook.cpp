#include "survey/check/FirstLook.h"

#include "survey/check/TriangleFan.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace terravo {
namespace {

// Weighted changes of height towards the neighbours.
struct Weighed {
    double change = 0;
    double weight = 0;

    void operator+=(const Weighed& more) {
        change += more.change;
        weight += more.weight;
    }
};

// Sizes at the other corners of triangles.
struct SizeSum {
    float total = 0;
    float count = 0;

    void operator+=(const SizeSum& more) {
        total += more.total;
        count += more.count;
    }
    [[nodiscard]] float Mean() const { return total / count; }
};

struct Corners {
    std::array<double, 3> x{};
    std::array<double, 3> y{};
    std::array<double, 3> z{};
};

Corners CornersOf(const Triangle& triangle, const MeshOrder& points) {
    Corners corners;
    for (std::size_t j = 0; j < 3; ++j) {
        const Index p = triangle.vertices[j];
        corners.x[j] = points.x[p];
        corners.y[j] = points.y[p];
        corners.z[j] = points.z[p];
    }
    return corners;
}

// Calls add(vertex, what) for both ends of each edge. An edge takes half its weight from either
// side; the common factor is of no matter.
template <class Add>
void WeighEdges(const Triangle& triangle, const Corners& corners, Add add) {
    const auto& [x, y, z] = corners;
    const double area = (x[1] - x[0]) * (y[2] - y[0]) - (x[2] - x[0]) * (y[1] - y[0]);
    const double inverse = area > 0 ? 1 / area : 0;
    for (std::size_t j = 0; j < 3; ++j) {
        const std::size_t k = j == 2 ? 0 : j + 1;
        const std::size_t l = k == 2 ? 0 : k + 1;
        const double weight =
            ((x[k] - x[j]) * (x[l] - x[j]) + (y[k] - y[j]) * (y[l] - y[j])) * inverse;
        const double change = weight * (z[l] - z[k]);
        add(triangle.vertices[k], Weighed{change, weight});
        add(triangle.vertices[l], Weighed{-change, weight});
    }
}

// Calls add(vertex, what) for each corner.
template <class Add>
void AddSizes(const Triangle& triangle, const Array1<float>& values, Add add) {
    float total = 0;
    for (const Index vertex : triangle.vertices) {
        total += std::abs(values[vertex]);
    }
    for (const Index vertex : triangle.vertices) {
        add(vertex, SizeSum{total - std::abs(values[vertex]), 2});
    }
}

float DeviationOf(const Weighed& sum, bool isOnHull) {
    const auto size = static_cast<float>(-sum.change / sum.weight);
    return !isOnHull && std::isfinite(size) ? size : 0;
}

// Sums at each corner what visit(triangle, add) adds there.
template <class Sum, class Visit>
Array1<Sum> SumAtCorners(const MeshOrder& points, Visit visit) {
    Array1<Sum> sums(points.Count());
    for (Index t = 1; t <= points.triangles.count; ++t) {
        visit(points.triangles.table[t],
              [&](Index vertex, const Sum& what) { sums[vertex] += what; });
    }
    return sums;
}

Array1<float> Deviations(const MeshOrder& points) {
    const auto sums = SumAtCorners<Weighed>(points, [&](const Triangle& triangle, auto add) {
        WeighEdges(triangle, CornersOf(triangle, points), add);
    });
    Array1<float> deviations(points.Count());
    for (Index i = 1; i <= points.Count(); ++i) {
        deviations[i] = DeviationOf(sums[i], points.isOnHull[i] != 0);
    }
    return deviations;
}

Array1<float> MeanSizeAbout(const Array1<float>& values, const MeshOrder& points) {
    const auto sums = SumAtCorners<SizeSum>(
        points, [&](const Triangle& triangle, auto add) { AddSizes(triangle, values, add); });
    Array1<float> means(points.Count());
    for (Index i = 1; i <= points.Count(); ++i) {
        means[i] = sums[i].Mean();
    }
    return means;
}

// The same sums at single corners. Sums depend on the order of what is added, so the triangles are
// taken in the order of their numbers, as in a look at all.
class LookAtCorner {
public:
    explicit LookAtCorner(const MeshOrder& points) : points_(points) {}

    float Deviation(Index corner) {
        const auto sum = SumAt<Weighed>(corner, [this](const Triangle& triangle, auto add) {
            WeighEdges(triangle, CornersOf(triangle, points_), add);
        });
        return DeviationOf(sum, points_.isOnHull[corner] != 0);
    }

    float MeanSize(const Array1<float>& values, Index corner) {
        const auto sum = SumAt<SizeSum>(
            corner, [&](const Triangle& triangle, auto add) { AddSizes(triangle, values, add); });
        return sum.Mean();
    }

    std::vector<Index> WithNeighbours(const std::vector<Index>& corners) {
        std::vector<Index> all;
        for (const Index corner : corners) {
            for (const Index t : TrianglesAt(corner)) {
                const auto& vertices = points_.triangles.table[t].vertices;
                all.insert(all.end(), vertices.begin(), vertices.end());
            }
        }
        std::sort(all.begin(), all.end());
        all.erase(std::unique(all.begin(), all.end()), all.end());
        return all;
    }

private:
    template <class Sum, class Visit>
    Sum SumAt(Index corner, Visit visit) {
        Sum sum;
        for (const Index t : TrianglesAt(corner)) {
            visit(points_.triangles.table[t], [&](Index vertex, const Sum& what) {
                if (vertex == corner) {
                    sum += what;
                }
            });
        }
        return sum;
    }

    const std::vector<Index>& TrianglesAt(Index corner) {
        fan_.clear();
        ForTrianglesAt(corner, points_.triangleOf[corner], points_.triangles,
                       points_.triangles.count, [this](Index t) { fan_.push_back(t); });
        std::sort(fan_.begin(), fan_.end());
        return fan_;
    }

    const MeshOrder& points_;
    std::vector<Index> fan_;
};

} // namespace

FirstLook::FirstLook(const MeshOrder& points)
    : deviation(Deviations(points)), sizeAbout(MeanSizeAbout(deviation, points)),
      roughness(MeanSizeAbout(sizeAbout, points)) {}

void FirstLook::Renew(const MeshOrder& points, std::vector<Index> changed) {
    LookAtCorner look(points);
    for (const Index i : changed = look.WithNeighbours(changed)) {
        deviation[i] = look.Deviation(i);
    }
    for (const Index i : changed = look.WithNeighbours(changed)) {
        sizeAbout[i] = look.MeanSize(deviation, i);
    }
    for (const Index i : look.WithNeighbours(changed)) {
        roughness[i] = look.MeanSize(sizeAbout, i);
    }
}

} // namespace terravo
