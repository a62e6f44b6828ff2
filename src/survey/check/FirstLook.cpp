#include "survey/check/FirstLook.h"

#include <array>
#include <cmath>

namespace terravo {
namespace {

struct Weighed {
    double change = 0; // sum of weighted changes of height towards the neighbours
    double weight = 0;
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

// Each edge takes half its weight from either side; the common factor is of no matter.
void WeighEdges(const Triangle& triangle, const Corners& corners, Array1<Weighed>& sums) {
    const auto& [x, y, z] = corners;
    const double area = (x[1] - x[0]) * (y[2] - y[0]) - (x[2] - x[0]) * (y[1] - y[0]);
    const double inverse = area > 0 ? 1 / area : 0;
    for (std::size_t j = 0; j < 3; ++j) {
        const std::size_t k = j == 2 ? 0 : j + 1;
        const std::size_t l = k == 2 ? 0 : k + 1;
        const double weight =
            ((x[k] - x[j]) * (x[l] - x[j]) + (y[k] - y[j]) * (y[l] - y[j])) * inverse;
        const double change = weight * (z[l] - z[k]);
        Weighed& from = sums[triangle.vertices[k]];
        Weighed& to = sums[triangle.vertices[l]];
        from.change += change;
        from.weight += weight;
        to.change -= change;
        to.weight += weight;
    }
}

void MarkHull(const Triangle& triangle, Array1<char>& isOnHull) {
    for (int j = 1; j <= 3; ++j) {
        if (triangle.Neighbour(j) < 0) {
            isOnHull[triangle.Vertex(j)] = 1;
            isOnHull[triangle.Vertex(NextEdge(j))] = 1;
        }
    }
}

Array1<float> MeanSizeAbout(const Array1<float>& values, const TriangleList& triangles) {
    struct Sum {
        float total = 0;
        float count = 0;
    };
    Array1<Sum> sums(values.UpperBound());
    for (Index t = 1; t <= triangles.count; ++t) {
        const auto& vertices = triangles.table[t].vertices;
        float total = 0;
        for (const Index vertex : vertices) {
            total += std::abs(values[vertex]);
        }
        for (const Index vertex : vertices) {
            sums[vertex].total += total - std::abs(values[vertex]);
            sums[vertex].count += 2;
        }
    }
    Array1<float> means(values.UpperBound());
    for (Index i = 1; i <= means.UpperBound(); ++i) {
        means[i] = sums[i].total / sums[i].count;
    }
    return means;
}

} // namespace

FirstLook::FirstLook(const MeshOrder& points)
    : deviation(points.Count()), triangleOf(points.Count()), isOnHull(points.Count(), 0) {
    Array1<Weighed> sums(points.Count());
    for (Index t = 1; t <= points.triangles.count; ++t) {
        const Triangle& triangle = points.triangles.table[t];
        WeighEdges(triangle, CornersOf(triangle, points), sums);
        MarkHull(triangle, isOnHull);
        for (const Index vertex : triangle.vertices) {
            triangleOf[vertex] = t;
        }
    }
    for (Index i = 1; i <= points.Count(); ++i) {
        const auto size = static_cast<float>(-sums[i].change / sums[i].weight);
        deviation[i] = isOnHull[i] == 0 && std::isfinite(size) ? size : 0;
    }
    roughness = MeanSizeAbout(MeanSizeAbout(deviation, points.triangles), points.triangles);
}

} // namespace terravo
