#include "contour/TriangleCut.h"

#include "util/modUtilita.h"

namespace terravo {
namespace {

using modUtilita::IsExactly;

} // namespace

void CutEdgeByPlane(const SpacePoint& p, const SpacePoint& q, double sP, double sQ,
                    CutPoints& cut) {
    if (IsExactly(sP, 0.0)) {
        cut.Append(p);
    } else if (IsExactly(sQ, 0.0)) {
        cut.Append(q);
    } else if ((sP < 0) != (sQ < 0)) {
        const double t = sQ / (sQ - sP);
        cut.Append({(1 - t) * q.x + t * p.x, (1 - t) * q.y + t * p.y, (1 - t) * q.z + t * p.z});
    }
}

CutPoints CutTriangleByPlane(const std::array<SpacePoint, 3>& corners, const Plane& plane) {
    CutPoints cut;
    std::array<double, 3> s{};
    for (std::size_t i = 0; i < 3; ++i) {
        s[i] = plane.ValueAt(corners[i]);
        if (IsExactly(s[i], 0.0)) {
            cut.Append(corners[i]);
        }
    }
    if (cut.Count() >= 2) {
        return cut;
    }
    const auto cutEdge = [&](std::size_t from, std::size_t to) {
        CutEdgeByPlane(corners[from], corners[to], s[from], s[to], cut);
    };
    if (cut.Count() == 1) {
        const std::size_t on = IsExactly(s[0], 0.0) ? 0 : IsExactly(s[1], 0.0) ? 1 : 2;
        cutEdge(on == 0 ? 1 : 0, on == 2 ? 1 : 2);
        return cut;
    }
    // The corner that lies alone on its side has both cut edges.
    for (std::size_t alone = 0; alone < 3; ++alone) {
        const std::size_t first = alone == 0 ? 1 : 0;
        const std::size_t second = alone == 2 ? 1 : 2;
        if ((s[alone] < 0) != (s[first] < 0) && (s[alone] < 0) != (s[second] < 0)) {
            cutEdge(alone, first);
            cutEdge(alone, second);
            break;
        }
    }
    return cut;
}

} // namespace terravo
