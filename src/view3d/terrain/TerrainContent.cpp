#include "view3d/terrain/TerrainContent.h"

#include "util/Parallel.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

std::array<float, 3> Rounded(const SpacePoint& place) {
    return {static_cast<float>(place.x), static_cast<float>(place.y), static_cast<float>(place.z)};
}

// The plane of a triangle: heights of places on it, and how far uphill a height is gained.
class Slope {
public:
    Slope(const ShownSurface& surface, Index triangle) {
        const auto& corners = surface.triangles.table[triangle].vertices;
        const PointSet& points = surface.points;
        from_ = {points.x[corners[0]], points.y[corners[0]], points.z[corners[0]]};
        const double ux = points.x[corners[1]] - from_.x;
        const double uy = points.y[corners[1]] - from_.y;
        const double uz = points.z[corners[1]] - from_.z;
        const double vx = points.x[corners[2]] - from_.x;
        const double vy = points.y[corners[2]] - from_.y;
        const double vz = points.z[corners[2]] - from_.z;
        const double area = ux * vy - vx * uy;
        if (area > 0) {
            eastwards_ = (uz * vy - vz * uy) / area;
            northwards_ = (ux * vz - vx * uz) / area;
        }
    }
    [[nodiscard]] double HeightAt(const ContourVertex& place) const {
        return from_.z + eastwards_ * (place.x - from_.x) + northwards_ * (place.y - from_.y);
    }
    /// Height gained by a unit of way.
    [[nodiscard]] double Steepness() const { return std::hypot(eastwards_, northwards_); }

private:
    SpacePoint from_;
    double eastwards_ = 0; // height gained by a unit
    double northwards_ = 0;
};

// Every piece of a contour lies in the triangle in which the line arrives at the piece's end. How
// far the next line is goes by the mean of the pieces about: single triangles differ too much.
class ContourPieces {
public:
    ContourPieces(const ShownSurface& surface, const TerrainFrame& frame, bool areSmooth,
                  std::vector<TerrainSegment>& pieces)
        : surface_(surface), frame_(frame), most_(2 * std::max(frame.reach.x, frame.reach.y)),
          areSmooth_(areSmooth), pieces_(pieces) {}

    /// @param rise  to the next level as heavy.
    void Add(const ContourLevel& level, double rise) {
        for (const ContourLine& line : level.lines) {
            const auto vertices = level.VerticesOf(line);
            const std::size_t first = pieces_.size();
            steepness_.assign(1, 0);
            for (std::size_t i = 1; i < vertices.size(); ++i) {
                AddPiece(level.value, vertices[i - 1], vertices[i]);
            }
            if (line.closed) {
                AddPiece(level.value, vertices.back(), vertices.front());
            }
            AddDistances(first, rise);
        }
    }

private:
    void AddPiece(double height, const ContourVertex& from, const ContourVertex& to) {
        const Slope slope(surface_, to.edge.triangle);
        const auto at = [&](const ContourVertex& vertex) {
            return Rounded(
                frame_.Local({vertex.x, vertex.y, areSmooth_ ? slope.HeightAt(vertex) : height}));
        };
        pieces_.push_back({at(from), at(to)});
        steepness_.push_back(steepness_.back() + slope.Steepness());
    }

    void AddDistances(std::size_t first, double rise) {
        const std::size_t about = areSmooth_ ? 15 : 5; // pieces to either side
        const std::size_t count = pieces_.size() - first;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t begin = i - std::min({i, about, count / 6});
            const std::size_t end = std::min({i + about, i + count / 6, count - 1}) + 1;
            const double steepness =
                (steepness_[end] - steepness_[begin]) / static_cast<double>(end - begin);
            const double run = rise < most_ * steepness ? rise / steepness : most_;
            const auto& from = pieces_[first + begin].from;
            const auto& to = pieces_[first + end - 1].to;
            const double east = to[0] - from[0];
            const double north = to[1] - from[1];
            const double way = std::hypot(east, north);
            TerrainSegment& piece = pieces_[first + i];
            piece.uphill = {static_cast<float>(way > 0 ? -north / way * run : run),
                            static_cast<float>(way > 0 ? east / way * run : 0)};
            piece.rise = static_cast<float>(rise);
        }
    }

    const ShownSurface& surface_;
    const TerrainFrame& frame_;
    double most_; // that two lines are said to be apart
    bool areSmooth_;
    std::vector<TerrainSegment>& pieces_;
    std::vector<double> steepness_; // of the line's pieces, added up
};

// To the level above; of the highest from the one below. One alone has the whole terrain.
double StepAt(const ContourSet& contours, Index level, double range) {
    const Index lower = level < contours.UpperBound() ? level : level - 1;
    return lower >= 1 ? std::fabs(contours[lower + 1].value - contours[lower].value) : range;
}

// Index lines are ranked among themselves: every fifth one, and of those every fifth, stands for
// more lines, so that there are some to be seen however small the picture is.
double LevelsFor(Index indexLine) {
    constexpr Index kEvery = 5;
    constexpr int kMostRanks = 4;
    double levels = kEvery;
    for (int rank = 1; rank < kMostRanks && indexLine % kEvery == 0; ++rank) {
        levels *= kEvery;
        indexLine /= kEvery;
    }
    return levels;
}

void AddContours(const ShownSurface& surface, const TerrainContours& contours,
                 TerrainContent& content) {
    Index indexLines = 0;
    for (Index k = 1; k <= contours.set.UpperBound(); ++k) {
        const bool isIndex = contours.isIndex(k);
        const TerrainLine kind = isIndex ? TerrainLine::IndexContour : TerrainLine::Contour;
        const double levels = isIndex ? LevelsFor(indexLines++) : 1;
        const double rise = levels * StepAt(contours.set, k, 2 * content.frame.reach.z);
        ContourPieces(surface, content.frame, contours.areSmooth,
                      content.lines[static_cast<std::size_t>(kind)])
            .Add(contours.set[k], rise);
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
        for (const Index t : content_.mesh.atRim) {
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

double ContourTolerance(const PointSet& points, Index triangles) {
    constexpr double kOfSide = 0.02;
    return std::max(kOfSide * UsualSide(FrameOf(points), triangles),
                    std::numeric_limits<double>::min());
}

TerrainContent MakeTerrainContent(const ShownSurface& surface, const TerrainContours& contours) {
    TerrainContent content;
    content.frame = FrameOf(surface.points);
    content.mesh = MakeTerrainMesh(content.frame, surface.points, surface.triangles);
    Builder builder(surface, content);
    // Each fills fields of its own.
    InParallel(4, [&](int piece) {
        if (piece == 0) {
            AddNormals(content.frame, content.mesh);
        } else if (piece == 1 && content.mesh.corners.size() / 3 > kTrianglesInMotion) {
            content.coarse = CoarseCorners(content.frame, content.mesh);
        } else if (piece == 2) {
            AddContours(surface, contours, content);
        } else if (piece == 3) {
            builder.AddRims(surface.triangles);
            builder.AddPoints(surface.SurveyedPoints());
        }
    });
    content.usualSide = UsualSide(content.frame, surface.triangles.count);
    if (surface.shaped != nullptr) {
        builder.AddCourses(*surface.shaped);
    }
    return content;
}

} // namespace terravo
