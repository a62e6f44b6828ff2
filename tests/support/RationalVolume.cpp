#include "support/RationalVolume.h"

#include <gmpxx.h>

#include <array>
#include <vector>

namespace terravo::test {
namespace {

struct Corner {
    mpq_class x;
    mpq_class y;
    mpq_class z; // of the first triangle, later the difference
};

using Polygon = std::vector<Corner>;

Corner Between(const Corner& a, const Corner& b, const mpq_class& part) {
    return {a.x + part * (b.x - a.x), a.y + part * (b.y - a.y), a.z + part * (b.z - a.z)};
}

// What lies where a linear function is not negative.
template <class Value>
Polygon Cut(const Polygon& polygon, const Value& valueOf) {
    Polygon kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const Corner& a = polygon[i];
        const Corner& b = polygon[(i + 1) % polygon.size()];
        const mpq_class va = valueOf(a);
        const mpq_class vb = valueOf(b);
        if (sgn(va) >= 0) {
            kept.push_back(a);
        }
        if (sgn(va) * sgn(vb) < 0) {
            kept.push_back(Between(a, b, va / (va - vb)));
        }
    }
    return kept;
}

mpq_class Turn(const Corner& a, const Corner& b, const Corner& c) {
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
}

Polygon TriangleOf(const PointSet& points, const Triangle& triangle) {
    Polygon corners;
    for (int j = 1; j <= 3; ++j) {
        const Index i = triangle.Vertex(j);
        corners.push_back({points.x[i], points.y[i], points.z[i]});
    }
    return corners;
}

struct Sums {
    mpq_class area;
    mpq_class volume;

    void Add(const Polygon& polygon) {
        for (std::size_t k = 2; k < polygon.size(); ++k) {
            const mpq_class twice = Turn(polygon[0], polygon[k - 1], polygon[k]);
            area += twice / 2;
            volume += twice * (polygon[0].z + polygon[k - 1].z + polygon[k].z) / 6;
        }
    }
};

} // namespace

RationalVolumes RationalVolumeBetween(const PointSet& first, const TriangleList& firstTriangles,
                                      const PointSet& second, const TriangleList& secondTriangles) {
    Sums whole;
    Sums above;
    Sums below;
    for (Index t = 1; t <= firstTriangles.count; ++t) {
        const Polygon a = TriangleOf(first, firstTriangles.table[t]);
        for (Index u = 1; u <= secondTriangles.count; ++u) {
            const Polygon b = TriangleOf(second, secondTriangles.table[u]);
            Polygon common = a;
            for (std::size_t k = 0; k < 3 && !common.empty(); ++k) {
                common =
                    Cut(common, [&](const Corner& c) { return Turn(b[k], b[(k + 1) % 3], c); });
            }
            const mpq_class area = Turn(b[0], b[1], b[2]);
            for (Corner& c : common) {
                c.z -= (Turn(b[1], b[2], c) * b[0].z + Turn(b[2], b[0], c) * b[1].z +
                        Turn(b[0], b[1], c) * b[2].z) /
                       area;
            }
            whole.Add(common);
            above.Add(Cut(common, [](const Corner& c) { return c.z; }));
            below.Add(Cut(common, [](const Corner& c) { return mpq_class(-c.z); }));
        }
    }
    return {above.volume.get_d(), -below.volume.get_d(), whole.area.get_d()};
}

} // namespace terravo::test
