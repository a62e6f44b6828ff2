#include "view3d/terrain/TerrainPick.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace terravo {
namespace {

constexpr double kNowhere = std::numeric_limits<double>::infinity();

SpacePoint PlaceOf(const TerrainVertex& vertex) {
    return {vertex.x, vertex.y, vertex.z};
}

SpacePoint Minus(const SpacePoint& a, const SpacePoint& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

SpacePoint Cross(const SpacePoint& a, const SpacePoint& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double Dot(const SpacePoint& a, const SpacePoint& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

// How far along the ray a triangle is met, from either side; nowhere where it is missed.
double MetAt(const SightRay& ray, const SpacePoint& a, const SpacePoint& b, const SpacePoint& c) {
    const SpacePoint u = Minus(b, a);
    const SpacePoint v = Minus(c, a);
    const SpacePoint across = Cross(ray.direction, v);
    const double scale = Dot(u, across);
    if (!(std::fabs(scale) > 0)) {
        return kNowhere;
    }
    const SpacePoint from = Minus(ray.eye, a);
    const double alongU = Dot(from, across) / scale;
    const SpacePoint upright = Cross(from, u);
    const double alongV = Dot(ray.direction, upright) / scale;
    const double far = Dot(v, upright) / scale;
    return alongU >= 0 && alongV >= 0 && alongU + alongV <= 1 && far >= 0 ? far : kNowhere;
}

// How far along the ray it enters a box; nowhere where it misses it.
double EnteredAt(const SightRay& ray, const std::array<float, 3>& low,
                 const std::array<float, 3>& high) {
    const std::array<double, 3> eye{ray.eye.x, ray.eye.y, ray.eye.z};
    const std::array<double, 3> direction{ray.direction.x, ray.direction.y, ray.direction.z};
    double enter = 0;
    double leave = kNowhere;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (std::fabs(direction[axis]) > 0) {
            const double one = (low[axis] - eye[axis]) / direction[axis];
            const double other = (high[axis] - eye[axis]) / direction[axis];
            enter = std::max(enter, std::min(one, other));
            leave = std::min(leave, std::max(one, other));
        } else if (eye[axis] < low[axis] || eye[axis] > high[axis]) {
            return kNowhere;
        }
    }
    return enter <= leave ? enter : kNowhere;
}

} // namespace

TerrainPick::TerrainPick(const TerrainMesh& mesh) : mesh_(mesh) {
    const std::size_t triangles = mesh.corners.size() / 3;
    rows_.emplace_back();
    for (std::size_t t = 0; t < triangles; t += kFan) {
        rows_.back().push_back(BoxOf(t));
    }
    while (rows_.back().size() > 1) {
        const std::vector<Box>& below = rows_.back();
        std::vector<Box> row;
        for (std::size_t i = 0; i < below.size(); i += kFan) {
            Box box = below[i];
            for (std::size_t k = i + 1; k < std::min(i + kFan, below.size()); ++k) {
                for (std::size_t axis = 0; axis < 3; ++axis) {
                    box.low[axis] = std::min(box.low[axis], below[k].low[axis]);
                    box.high[axis] = std::max(box.high[axis], below[k].high[axis]);
                }
            }
            row.push_back(box);
        }
        rows_.push_back(std::move(row));
    }
}

TerrainPick::Box TerrainPick::BoxOf(std::size_t firstTriangle) const {
    constexpr float kFar = std::numeric_limits<float>::infinity();
    Box box{{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}};
    const std::size_t end = std::min(3 * (firstTriangle + kFan), mesh_.corners.size());
    for (std::size_t i = 3 * firstTriangle; i < end; ++i) {
        const TerrainVertex& vertex = mesh_.vertices[mesh_.corners[i]];
        const std::array<float, 3> at{vertex.x, vertex.y, vertex.z};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            box.low[axis] = std::min(box.low[axis], at[axis]);
            box.high[axis] = std::max(box.high[axis], at[axis]);
        }
    }
    return box;
}

std::optional<TerrainHit> TerrainPick::FirstOn(const SightRay& ray) const {
    struct Node {
        std::size_t row;
        std::size_t number;
        double enter;
    };
    TerrainHit hit;
    hit.far = kNowhere;
    std::vector<Node> open;
    const std::size_t top = rows_.size() - 1;
    if (!rows_[top].empty()) {
        open.push_back({top, 0, 0});
    }
    while (!open.empty()) {
        const Node node = open.back();
        open.pop_back();
        if (node.enter >= hit.far) {
            continue;
        }
        const std::size_t begin = node.number * kFan;
        if (node.row == 0) {
            const std::size_t end = std::min(begin + kFan, mesh_.corners.size() / 3);
            for (std::size_t t = begin; t < end; ++t) {
                const double far = MetAt(ray, PlaceOf(mesh_.vertices[mesh_.corners[3 * t]]),
                                         PlaceOf(mesh_.vertices[mesh_.corners[3 * t + 1]]),
                                         PlaceOf(mesh_.vertices[mesh_.corners[3 * t + 2]]));
                if (far < hit.far) {
                    hit.far = far;
                    hit.triangle = static_cast<Index>(t) + 1;
                }
            }
            continue;
        }
        // The farthest first, so that the nearest lies on top.
        const std::size_t first = open.size();
        const std::vector<Box>& below = rows_[node.row - 1];
        for (std::size_t i = begin; i < std::min(begin + kFan, below.size()); ++i) {
            const double enter = EnteredAt(ray, below[i].low, below[i].high);
            if (enter < hit.far) {
                open.push_back({node.row - 1, i, enter});
            }
        }
        std::sort(open.begin() + static_cast<std::ptrdiff_t>(first), open.end(),
                  [](const Node& a, const Node& b) { return a.enter > b.enter; });
    }
    if (hit.triangle == 0) {
        return std::nullopt;
    }
    hit.place = {ray.eye.x + hit.far * ray.direction.x, ray.eye.y + hit.far * ray.direction.y,
                 ray.eye.z + hit.far * ray.direction.z};
    return hit;
}

double SlopeOf(const TerrainMesh& mesh, Index triangle) {
    const std::size_t first = 3 * (static_cast<std::size_t>(triangle) - 1);
    const SpacePoint a = PlaceOf(mesh.vertices[mesh.corners[first]]);
    const SpacePoint normal = Cross(Minus(PlaceOf(mesh.vertices[mesh.corners[first + 1]]), a),
                                    Minus(PlaceOf(mesh.vertices[mesh.corners[first + 2]]), a));
    return std::atan2(std::hypot(normal.x, normal.y), std::fabs(normal.z)) * 180 / std::numbers::pi;
}

// A point a little beside the pixel may belong to a neighbour of the triangle that was met.
Index PointNear(const TerrainCamera& camera, const TerrainMesh& mesh, const TriangleList& triangles,
                Index surveyed, const TerrainHit& hit, const PicturePlace& pixel, double reach) {
    Index nearest = 0;
    double distance = reach;
    const auto consider = [&](Index triangle) {
        for (const Index corner : triangles.table[triangle].vertices) {
            const auto at =
                camera.Project(PlaceOf(mesh.vertices[static_cast<std::size_t>(corner) - 1]));
            const double off = at ? std::hypot(at->x - pixel.x, at->y - pixel.y) : kNowhere;
            if (corner <= surveyed && off < distance) {
                distance = off;
                nearest = corner;
            }
        }
    };
    consider(hit.triangle);
    for (int j = 1; j <= 3; ++j) {
        if (const Index next = triangles.Neighbour(j, hit.triangle); next > 0) {
            consider(next);
        }
    }
    return nearest;
}

} // namespace terravo
