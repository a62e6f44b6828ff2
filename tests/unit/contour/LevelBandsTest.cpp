#include "contour/LevelBands.h"

#include "contour/GroundRings.h"
#include "contour/LevelRegions.h"
#include "contour/RingArea.h"
#include "contour/smoothing/FlattenContours.h"
#include "support/TestSurface.h"
#include "survey/PointFile.h"
#include "survey/import/PointImport.h"
#include "triangulation/exact/ExactSigns.h"

#include <gtest/gtest.h>
#include <random>
#include <set>
#include <tuple>

namespace terravo {
namespace {

using test::AreaAbove;
using test::Surface;
using Ring = std::vector<PlanPoint>;

struct Polygon {
    std::vector<Ring> rings; // the outer one, then the holes
};

std::vector<Polygon> PolygonsOf(const LevelBand& band) {
    std::vector<Polygon> polygons;
    for (const BandPolygon& from : band.polygons) {
        Polygon& to = polygons.emplace_back();
        const auto add = [&](const RegionRing& ring) {
            to.rings.emplace_back(band.VerticesOf(ring).begin(), band.VerticesOf(ring).end());
        };
        add(from.outer);
        std::for_each(from.holes.begin(), from.holes.end(), add);
    }
    return polygons;
}

const PlanPoint& After(const Ring& ring, std::size_t i) {
    return ring[i + 1 < ring.size() ? i + 1 : 0];
}

// Whether a ray to the right from a place off the ring meets it an odd number of times.
bool IsInside(const Ring& ring, PlanPoint p) {
    bool inside = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const PlanPoint a = ring[i];
        const PlanPoint b = After(ring, i);
        if ((a.y > p.y) != (b.y > p.y) && a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x) > p.x) {
            inside = !inside;
        }
    }
    return inside;
}

bool IsInside(const Polygon& polygon, PlanPoint p) {
    return std::count_if(polygon.rings.begin(), polygon.rings.end(),
                         [&](const Ring& ring) { return IsInside(ring, p); }) == 1;
}

bool AnyEdgesCross(const Polygon& polygon) {
    struct Edge {
        PlanPoint a, b;
        double left, right;
    };
    std::vector<Edge> edges;
    Array1<PlanPoint> places;
    for (const Ring& ring : polygon.rings) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const PlanPoint a = ring[i];
            const PlanPoint b = After(ring, i);
            edges.push_back({a, b, std::min(a.x, b.x), std::max(a.x, b.x)});
            places.Append(a);
        }
    }
    const ExactSigns signs(places);
    std::sort(edges.begin(), edges.end(),
              [](const Edge& e, const Edge& f) { return e.left < f.left; });
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const auto& [a, b, left, right] = edges[i];
        for (std::size_t j = i + 1; j < edges.size() && edges[j].left < right; ++j) {
            const auto& [c, d, left2, right2] = edges[j];
            if (signs.Turn(a, b, c) * signs.Turn(a, b, d) < 0 &&
                signs.Turn(c, d, a) * signs.Turn(c, d, b) < 0) {
                return true;
            }
        }
    }
    return false;
}

// A place of a hole that no other ring has: a corner, or else the middle of an edge.
PlanPoint OwnPlace(const Ring& hole, const Ring& outer) {
    for (const PlanPoint& p : hole) {
        if (std::find(outer.begin(), outer.end(), p) == outer.end()) {
            return p;
        }
    }
    return {(hole[0].x + hole[1].x) / 2, (hole[0].y + hole[1].y) / 2};
}

// What is wrong with the form of a polygon.
std::string FaultOf(const Polygon& polygon) {
    for (std::size_t i = 0; i < polygon.rings.size(); ++i) {
        const Ring& ring = polygon.rings[i];
        std::set<std::pair<double, double>> places;
        for (const PlanPoint& p : ring) {
            places.emplace(p.x, p.y);
        }
        if (ring.size() < 3 || places.size() < ring.size()) {
            return "a ring comes to a place twice";
        }
        if ((AreaOfRing(ring) > 0) != (i == 0)) {
            return "a ring goes round the wrong way";
        }
        if (i > 0 && !IsInside(polygon.rings[0], OwnPlace(ring, polygon.rings[0]))) {
            return "a hole is outside";
        }
    }
    return AnyEdgesCross(polygon) ? "edges cross" : "";
}

Array1<LevelBand> BandsOf(const Surface& surface, std::vector<double> values) {
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return MakeLevelBands(surface.points, surface.triangles, test::ContoursOf(surface, values));
}

enum class Form { Checked, Unchecked };

std::string FaultOf(const Surface& surface, const std::vector<double>& levels,
                    Form form = Form::Checked) {
    const Array1<LevelBand> bands = BandsOf(surface, levels);
    const double whole = AreaAbove(surface, surface.points.extentZ.min);
    double sum = 0;
    for (Index k = 1; k <= bands.UpperBound(); ++k) {
        const LevelBand& band = bands[k];
        const std::string name =
            "from " + std::to_string(band.low) + " to " + std::to_string(band.high) + ": ";
        const double area = (k == 1 ? whole : AreaAbove(surface, band.low)) -
                            (k == bands.UpperBound() ? 0 : AreaAbove(surface, band.high));
        if (std::abs(AreaOf(band) - area) > 1e-9 * whole) {
            return name + "area " + std::to_string(AreaOf(band)) + ", not " + std::to_string(area);
        }
        sum += AreaOf(band);
        for (const Polygon& polygon : PolygonsOf(band)) {
            if (std::string fault = FaultOf(polygon); form == Form::Checked && !fault.empty()) {
                return name + fault;
            }
        }
    }
    return std::abs(sum - whole) > 1e-9 * whole ? "the areas do not add up" : "";
}

// The bands between smooth lines: the regions of the same lines are made another way.
std::string FaultOfSmooth(const Surface& surface, std::vector<double> values, Form form) {
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    LevelSet levels;
    for (const double value : values) {
        levels.Append({value, 0, 1, {}, 0, 10});
    }
    SmoothingOptions options;
    options.fraction = 0.45;
    const std::optional<SmoothSet> smooth =
        MakeSmoothContours({surface.points, surface.triangles, nullptr, levels}, options);
    const double width = surface.points.extentX.max - surface.points.extentX.min;
    const ContourSet contours = FlattenContours(*smooth, 1e-3 * width);
    const Array1<LevelRegion> regions =
        MakeLevelRegions(surface.points, surface.triangles, contours);
    const double whole = AreaAbove(surface, surface.points.extentZ.min);
    double above = whole;
    Index k = 0;
    for (const LevelBand& band : MakeLevelBands(surface.points, surface.triangles, contours)) {
        const double next = ++k <= regions.UpperBound() ? AreaOf(regions[k]) : 0;
        if (std::abs(AreaOf(band) - (above - next)) > 1e-7 * whole) {
            return "from " + std::to_string(band.low) + ": area " + std::to_string(AreaOf(band)) +
                   ", not " + std::to_string(above - next);
        }
        above = next;
        for (const Polygon& polygon : PolygonsOf(band)) {
            if (std::string fault = FaultOf(polygon); form == Form::Checked && !fault.empty()) {
                return "from " + std::to_string(band.low) + ": " + fault;
            }
        }
    }
    return "";
}

TEST(LevelBands, FillTheSurface) {
    for (const Index count : {60, 700}) {
        for (const bool hard : {false, true}) {
            for (const test::PointCloud& cloud :
                 hard ? test::HardClouds(count, 7) : test::CloudsOfEveryKind(count, 7)) {
                for (const bool wholeMetres : {false, true}) {
                    const Surface surface(test::HillySurvey(cloud.points, wholeMetres));
                    EXPECT_EQ(FaultOf(surface, test::LevelsOver(surface.points),
                                      hard ? Form::Unchecked : Form::Checked),
                              "")
                        << cloud.name << ' ' << count << ' ' << wholeMetres;
                    EXPECT_EQ(FaultOfSmooth(surface, test::LevelsOver(surface.points),
                                            hard ? Form::Unchecked : Form::Checked),
                              "")
                        << "smooth, " << cloud.name << ' ' << count << ' ' << wholeMetres;
                }
            }
        }
    }
}

TEST(LevelBands, HoldWhereManyPointsAreAtTheLevel) {
    std::mt19937 engine(3);
    for (int round = 0; round < 600; ++round) {
        const auto side = static_cast<Index>(3 + engine() % 4);
        PointSet points;
        for (const PlanPoint& p : test::GridPoints(side)) {
            const double shift = round % 2 == 0 ? 1 : 4.5e6;
            const double x = p.x + (static_cast<int>(p.y) % 20 == 0 ? 5 : 0);
            points.Append(x + shift, p.y + shift, 4 + static_cast<int>(engine() % 3));
        }
        const Surface surface(points);
        EXPECT_EQ(FaultOf(surface, {3, 4, 4.5, 5, 5.5, 6, 7}), "") << round;
        EXPECT_EQ(FaultOf(surface, {5, std::nextafter(5, 6), 5.5}, Form::Unchecked), "") << round;
    }
}

TEST(LevelBands, HoldOnSurfacesWithHolesAndParts) {
    for (const bool wholeMetres : {false, true}) {
        for (const Surface& surface :
             {test::SurfaceWithHoles(wholeMetres), test::SurfaceInParts(wholeMetres)}) {
            const std::vector<double> levels = test::LevelsOver(surface.points);
            EXPECT_EQ(FaultOf(surface, levels), "") << wholeMetres;
            EXPECT_EQ(FaultOfSmooth(surface, levels, Form::Checked), "") << wholeMetres;
        }
    }
}

TEST(LevelBands, FillRealSurveys) {
    for (const char* file : {"davis_hills.dat", "volcano.dat"}) {
        PointSet points;
        ASSERT_FALSE(
            ImportPoints(std::string(TERRAVO_SAMPLES "/") + file, {}, BadRecords::Refuse, points)
                .failure);
        const Surface surface(points);
        EXPECT_EQ(FaultOf(surface, test::LevelsOver(points)), "") << file;
    }
}

// Whole metres on a grid of 10 m: many places fall together, and the hull stays where it is.
TEST(LevelBands, HaveWholeRingsWhenTheirPlacesAreRounded) {
    PointSet points;
    ImportPoints(TERRAVO_SAMPLES "/volcano.dat", {}, BadRecords::Refuse, points);
    const Surface surface(points);
    const ContourSet contours = test::ContoursOf(surface, {100.3, 110, 120, 150, 177.7});
    double sum = 0;
    for (const LevelBand& band :
         MakeLevelBands(points, surface.triangles, contours, [](PlanPoint p) {
             return PlanPoint{std::round(p.x), std::round(p.y)};
         })) {
        sum += AreaOf(band);
        for (const Polygon& polygon : PolygonsOf(band)) {
            EXPECT_EQ(FaultOf(polygon), "") << band.low;
        }
    }
    EXPECT_EQ(sum, 516000);
}

TEST(LevelBands, AreTheWholeSurfaceWhereNoLevelCutsIt) {
    const Surface surface(test::MakeSurvey({{0, 0, 5}, {9, 0, 5}, {9, 9, 5}, {0, 9, 5}}));
    const auto areas = [&](const std::vector<double>& levels) {
        std::vector<std::tuple<double, double, double>> all;
        for (const LevelBand& band : BandsOf(surface, levels)) {
            all.emplace_back(band.low, band.high, AreaOf(band));
        }
        return all;
    };
    using Areas = std::vector<std::tuple<double, double, double>>;
    EXPECT_EQ(areas({}), (Areas{{5, 5, 81}}));
    EXPECT_EQ(areas({5}), (Areas{{5, 5, 0}, {5, 5, 81}}));
    EXPECT_EQ(areas({4, 6}), (Areas{{4, 4, 0}, {4, 6, 81}, {6, 6, 0}}));
    EXPECT_EQ(MakeLevelBands(PointSet(), TriangleList(), ContourSet(2))[3].polygons.size(), 0U);
}

TEST(LevelBands, HoldEveryPlaceOnceInTheBandOfItsHeight) {
    const Surface surface(test::HillySurvey(test::RandomPoints(500, 5), true));
    const Array1<LevelBand> bands = BandsOf(surface, test::LevelsOver(surface.points));
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> part(0.05, 0.45);
    for (Index t = 1; t <= surface.triangles.count; t += 3) {
        const double u = part(engine);
        const double v = part(engine);
        const auto mix = [&](double a, double b, double c) {
            return a + u * (b - a) + v * (c - a);
        };
        const PlanPoint a = surface.At(1, t);
        const PlanPoint b = surface.At(2, t);
        const PlanPoint c = surface.At(3, t);
        const PlanPoint p{mix(a.x, b.x, c.x), mix(a.y, b.y, c.y)};
        const double z = mix(surface.Height(1, t), surface.Height(2, t), surface.Height(3, t));
        for (const LevelBand& band : bands) {
            if (std::abs(z - band.low) > 1e-9 && std::abs(z - band.high) > 1e-9) {
                const std::vector<Polygon> polygons = PolygonsOf(band);
                EXPECT_EQ(std::count_if(polygons.begin(), polygons.end(),
                                        [&](const Polygon& one) { return IsInside(one, p); }),
                          band.low < z && z < band.high ? 1 : 0)
                    << t << ' ' << band.low;
            }
        }
    }
}

// Ground in squares, '#' in rows from bottom to top.
struct Squares {
    int side = 0;
    std::string rows;

    [[nodiscard]] bool IsGround(int x, int y) const {
        return x >= 0 && y >= 0 && x < side && y < side &&
               rows[static_cast<std::size_t>(y * side + x)] == '#';
    }
    // Takes the squares away that hang together with one, and counts them.
    int TakeAway(int x, int y) {
        if (!IsGround(x, y)) {
            return 0;
        }
        rows[static_cast<std::size_t>(y * side + x)] = '.';
        return 1 + TakeAway(x + 1, y) + TakeAway(x - 1, y) + TakeAway(x, y + 1) +
               TakeAway(x, y - 1);
    }
};

GroundLines RoundEverySquare(const Squares& squares) {
    GroundLines lines;
    for (int y = 0; y < squares.side; ++y) {
        for (int x = 0; x < squares.side; ++x) {
            if (squares.IsGround(x, y)) {
                lines.Begin();
                for (const auto& [dx, dy] : {std::pair(0, 0), {1, 0}, {1, 1}, {0, 1}, {0, 0}}) {
                    lines.Add({x + dx * 1.0, y + dy * 1.0});
                }
            }
        }
    }
    return lines;
}

// Touching corners, holes that touch, islands in holes: all that squares can be.
TEST(GroundRings, MakeOnePolygonOfEveryPieceOfGround) {
    std::mt19937 engine(11);
    for (int round = 0; round < 2000; ++round) {
        Squares squares{4 + round % 9, {}};
        for (int i = 0; i < squares.side * squares.side; ++i) {
            squares.rows += static_cast<int>(engine() % 10) < 3 + round % 6 ? '#' : '.';
        }
        const GroundEdges edges(RoundEverySquare(squares));
        const GroundRings rings = MakeGroundRings(edges);
        std::vector<double> areas;
        for (const GroundPiece& piece : rings.pieces) {
            Polygon polygon;
            const auto add = [&](const GroundRing& ring) {
                Ring& to = polygon.rings.emplace_back();
                for (const Index e : rings.EdgesOf(ring)) {
                    to.push_back(edges.Places()[edges[e].from]);
                }
            };
            add(piece.outer);
            std::for_each(piece.holes.begin(), piece.holes.end(), add);
            EXPECT_EQ(FaultOf(polygon), "") << squares.rows;
            areas.push_back(0);
            for (const Ring& ring : polygon.rings) {
                areas.back() += AreaOfRing(ring);
            }
        }
        std::vector<double> expected;
        Squares left = squares;
        for (int i = 0; i < squares.side * squares.side; ++i) {
            if (const int size = left.TakeAway(i % squares.side, i / squares.side); size > 0) {
                expected.push_back(size);
            }
        }
        std::sort(areas.begin(), areas.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(areas, expected) << squares.side << ' ' << squares.rows;
    }
}

TEST(GroundRings, LeaveOutWhatDoesNotClose) {
    GroundLines lines;
    lines.Begin();
    for (const auto& [x, y] : {std::pair(0., 0.), {4., 0.}, {4., 4.}}) {
        lines.Add({x, y});
    }
    EXPECT_TRUE(MakeGroundRings(GroundEdges(lines)).pieces.empty());
}

} // namespace
} // namespace terravo
