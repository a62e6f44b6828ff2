#include "view3d/terrain/TerrainContent.h"

#include "util/Parallel.h"

#include <cmath>

namespace terravo {
namespace {

std::array<float, 3> Rounded(const SpacePoint& place) {
    return {static_cast<float>(place.x), static_cast<float>(place.y), static_cast<float>(place.z)};
}

void AddContours(const ContourLevel& level, const TerrainFrame& frame,
                 std::vector<TerrainSegment>& segments) {
    const auto at = [&](const ContourVertex& vertex) {
        return Rounded(frame.Local({vertex.x, vertex.y, level.value}));
    };
    for (const ContourLine& line : level.lines) {
        const auto vertices = level.VerticesOf(line);
        for (std::size_t i = 1; i < vertices.size(); ++i) {
            segments.push_back({at(vertices[i - 1]), at(vertices[i])});
        }
        if (line.closed) {
            segments.push_back({at(vertices.back()), at(vertices.front())});
        }
    }
}

// That of equal triangles over the plan.
double UsualSide(const TerrainFrame& frame, Index triangles) {
    constexpr double kOfArea = 1.52; // of the root of an equilateral triangle's area
    return triangles > 0 ? kOfArea * std::sqrt(4 * frame.reach.x * frame.reach.y / triangles) : 0;
}

class Builder {
public:
    Builder(const ShownSurface& surface, TerrainContent& content)
        : points_(surface.points), content_(content) {}

    void AddSide(Index a, Index b, TerrainLine kind) {
        content_.lines[static_cast<std::size_t>(kind)].push_back({At(a), At(b)});
    }

    void AddRims(const TriangleList& triangles) {
        for (Index t = 1; t <= triangles.count; ++t) {
            for (int j = 1; j <= 3; ++j) {
                if (triangles.Neighbour(j, t) <= 0) {
                    AddSide(triangles.Vertex(j, t), triangles.Vertex(NextEdge(j), t),
                            TerrainLine::Rim);
                }
            }
        }
    }

    void AddCourses(const ShapedSurface& shaped) {
        for (const VisibleCourse& course : VisibleCourses(shaped, LineRole::Breakline)) {
            for (std::size_t i = 1; i < course.points.size(); ++i) {
                AddSide(course.points[i - 1], course.points[i], TerrainLine::Breakline);
            }
        }
    }

    void AddPoints(Index surveyed) {
        std::vector<char> isCorner(static_cast<std::size_t>(points_.count));
        for (const std::uint32_t corner : content_.mesh.corners) {
            isCorner[corner] = 1;
        }
        for (Index i = 1; i <= surveyed; ++i) {
            if (isCorner[static_cast<std::size_t>(i) - 1] != 0) {
                content_.points.push_back(static_cast<std::uint32_t>(i - 1));
            }
        }
    }

private:
    [[nodiscard]] std::array<float, 3> At(Index i) const {
        return Rounded(content_.frame.Local({points_.x[i], points_.y[i], points_.z[i]}));
    }

    const PointSet& points_;
    TerrainContent& content_;
};

} // namespace

TerrainContent MakeTerrainContent(const ShownSurface& surface, const ContourSet& contours,
                                  const std::function<bool(Index level)>& isIndex) {
    TerrainContent content;
    content.frame = FrameOf(surface.points);
    content.mesh = MakeTerrainMesh(content.frame, surface.points, surface.triangles);
    Builder builder(surface, content);
    // Each fills fields of its own.
    InParallel(3, [&](int piece) {
        if (piece == 0) {
            AddNormals(content.frame, content.mesh);
        } else if (piece == 1 && content.mesh.corners.size() / 3 > kTrianglesInMotion) {
            content.coarse = CoarseCorners(content.frame, content.mesh);
        } else if (piece == 2) {
            builder.AddRims(surface.triangles);
            builder.AddPoints(surface.SurveyedPoints());
        }
    });
    content.usualSide = UsualSide(content.frame, surface.triangles.count);
    if (surface.shaped != nullptr) {
        builder.AddCourses(*surface.shaped);
    }
    for (Index k = 1; k <= contours.UpperBound(); ++k) {
        const TerrainLine kind = isIndex(k) ? TerrainLine::IndexContour : TerrainLine::Contour;
        AddContours(contours[k], content.frame, content.lines[static_cast<std::size_t>(kind)]);
    }
    return content;
}

} // namespace terravo
