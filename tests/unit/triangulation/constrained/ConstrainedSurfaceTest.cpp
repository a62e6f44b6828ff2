#include "triangulation/constrained/ConstrainedSurface.h"

#include "support/ExactCheck.h"
#include "support/PointClouds.h"
#include "triangulation/TriangulatePoints.h"
#include "triangulation/constrained/SurfaceCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <optional>
#include <random>
#include <set>

namespace terravo {
namespace {

using Kind = SurfaceRemarkKind;

class Dice {
public:
    explicit Dice(unsigned seed) : engine_(seed) {}
    double Real(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
    bool Once(int in) { return Whole(1, in) == 1; }

private:
    std::mt19937 engine_;
};

// Points, their triangulation and what is laid into it.
struct Case {
    Array1<PlanPoint> coord;
    Array1<double> heights;
    TriangleList base;
    SurfaceConstraints constraints;

    void Triangulate(bool exact = true) {
        TriangulationOutcome outcome = TriangulatePoints(coord, {.exact = exact});
        base = std::move(outcome.triangles);
    }
    [[nodiscard]] ConstrainedSurface Make() const {
        return MakeConstrainedSurface(coord, heights, base, constraints);
    }
};

Case CaseOf(Array1<PlanPoint> coord, const std::function<double(PlanPoint)>& height,
            bool exact = true) {
    Case made{std::move(coord), {}, {}, {}};
    for (const PlanPoint& p : made.coord) {
        made.heights.Append(height(p));
    }
    made.Triangulate(exact);
    return made;
}

Array1<SpacePoint> AllPoints(const Case& from, const ConstrainedSurface& surface) {
    Array1<SpacePoint> points;
    for (Index i = 1; i <= from.coord.UpperBound(); ++i) {
        points.Append({from.coord[i].x, from.coord[i].y, from.heights[i]});
    }
    for (const SpacePoint& p : surface.added) {
        points.Append(p);
    }
    return points;
}

// ---- Random sets
// ---------------------------------------------------------------------------------

class RandomCase {
public:
    explicit RandomCase(unsigned seed) : dice_(seed), layout_(static_cast<int>(seed % 7)) {
        if (dice_.Once(2)) {
            origin_ = {5e5, 4.5e6};
        }
    }

    std::optional<Case> Make() {
        Array1<PlanPoint> coord;
        for (int i = dice_.Whole(4, 60); i > 0; --i) {
            coord.Append(Place());
        }
        made_ = CaseOf(std::move(coord),
                       [this](PlanPoint p) { return Height(p) + (dice_.Once(10) ? 1 : 0); });
        if (made_.base.count == 0) {
            return std::nullopt;
        }
        constexpr std::array kTolerances{0.0, 1e-6, 1e-3};
        SurfaceConstraints& wanted = made_.constraints;
        wanted.vertexTolerance = kTolerances[static_cast<std::size_t>(dice_.Whole(0, 2))];
        wanted.crossings.earlierWins = dice_.Once(2);
        AddLines(wanted.breaklines, dice_.Whole(0, 8), LineRole::Breakline);
        AddLines(wanted.boundary, dice_.Whole(0, 2), LineRole::Boundary);
        AddLines(wanted.holes, dice_.Whole(0, 2), LineRole::Hole);
        if (!wanted.breaklines.empty() && dice_.Once(4)) {
            wanted.breaklines.push_back(wanted.breaklines.front());
        }
        if (!wanted.boundary.empty() && dice_.Once(4)) {
            wanted.holes.push_back(wanted.boundary.front());
        }
        for (int i = dice_.Whole(0, 3); i > 0; --i) {
            wanted.held.push_back({AnyPoint(), AnyPoint()});
        }
        return made_;
    }

private:
    [[nodiscard]] double Height(PlanPoint p) const {
        return (p.x - origin_.x) * 0.1 + (p.y - origin_.y) * 0.05;
    }
    PlanPoint AnyPoint() { return made_.coord[dice_.Whole(1, made_.coord.UpperBound())]; }

    PlanPoint Place() {
        const double x = dice_.Real(0, 100);
        const double y = dice_.Real(0, 100);
        const double column = 10 * std::floor(x / 11);
        const double row = 10 * std::floor(y / 11);
        const auto at = [this](double dx, double dy) {
            return PlanPoint{origin_.x + dx, origin_.y + dy};
        };
        switch (layout_) {
        case 0: // millimetres
            return at(std::round(x * 1000) / 1000, std::round(y * 1000) / 1000);
        case 1: // a lattice
            return at(column, row);
        case 2: // a lattice that is none in doubles
            return at(column * std::cos(0.3) - row * std::sin(0.3),
                      column * std::sin(0.3) + row * std::cos(0.3));
        case 3: // nearly on one line
            return at(x, x * 0.37 + (y - 50) * 2e-10);
        case 4:
            return at(x, x * 0.37 + (y - 50) * 6e-5);
        default:
            return at(x, y);
        }
    }

    SpacePoint Vertex(bool hasHeight) {
        PlanPoint p = dice_.Once(3) ? AnyPoint() : Place();
        if (dice_.Once(6)) {
            p.x += dice_.Real(-1e-4, 1e-4);
        }
        if (dice_.Once(20)) {
            p = {p.x + dice_.Real(-100, 200), p.y + dice_.Real(-100, 200)};
        }
        const double aside = dice_.Once(10) ? dice_.Real(0, 0.2) : 0;
        return {p.x, p.y, hasHeight ? Height(p) + aside : kNoHeight};
    }

    void AddLines(std::vector<SpaceLine>& lines, int count, LineRole role) {
        const bool isRing = role != LineRole::Breakline;
        for (; count > 0; --count) {
            SpaceLine line;
            line.closed = isRing || dice_.Once(6);
            const bool hasHeights = !dice_.Once(3);
            for (int i = dice_.Whole(isRing ? 3 : 2, 6); i > 0; --i) {
                line.vertices.push_back(Vertex(hasHeights));
            }
            if (isRing && !dice_.Once(3)) {
                Untangle(line.vertices);
            }
            lines.push_back(std::move(line));
        }
    }

    // Sorts the vertices round their middle.
    static void Untangle(std::vector<SpacePoint>& ring) {
        PlanPoint middle;
        for (const SpacePoint& p : ring) {
            middle.x += p.x / static_cast<double>(ring.size());
            middle.y += p.y / static_cast<double>(ring.size());
        }
        const auto angle = [&](const SpacePoint& p) {
            return std::atan2(p.y - middle.y, p.x - middle.x);
        };
        std::sort(ring.begin(), ring.end(),
                  [&](const SpacePoint& a, const SpacePoint& b) { return angle(a) < angle(b); });
    }

    Dice dice_;
    int layout_;
    PlanPoint origin_;
    Case made_;
};

// Whether the rings that were laid go round a place an odd number of times; `distance` is that to
// the nearest side.
bool IsWithinRings(const std::vector<SpaceLine>& rings, const std::set<std::size_t>& leftOut,
                   PlanPoint place, double& distance) {
    bool inside = false;
    for (std::size_t k = 0; k < rings.size(); ++k) {
        const std::vector<SpacePoint>& ring = rings[k].vertices;
        for (std::size_t i = 0; i < ring.size() && !leftOut.contains(k); ++i) {
            const SpacePoint& a = ring[i];
            const SpacePoint& b = ring[(i + 1) % ring.size()];
            const double dx = b.x - a.x;
            const double dy = b.y - a.y;
            const double squared = std::max(dx * dx + dy * dy, 1e-30);
            const double part =
                std::clamp(((place.x - a.x) * dx + (place.y - a.y) * dy) / squared, 0.0, 1.0);
            distance = std::min(distance,
                                std::hypot(place.x - a.x - part * dx, place.y - a.y - part * dy));
            if ((a.y > place.y) != (b.y > place.y) && place.x < a.x + (place.y - a.y) / dy * dx) {
                inside = !inside;
            }
        }
    }
    return inside;
}

// Counts the marks from the hull inwards; compares with where the middles of the triangles lie.
std::string RingFault(const Case& from, const ConstrainedSurface& surface, LineRole role) {
    const bool isHole = role == LineRole::Hole;
    const EdgeMarks& marks = isHole ? surface.holes : surface.boundary;
    const std::vector<SpaceLine>& rings =
        isHole ? from.constraints.holes : from.constraints.boundary;
    std::set<std::size_t> leftOut;
    for (const SurfaceRemark& remark : surface.remarks) {
        if (remark.role == role &&
            (remark.kind == Kind::RefusedCrossing || remark.kind == Kind::NotFinished ||
             remark.kind == Kind::TooShort || remark.kind == Kind::CrossesItself)) {
            leftOut.insert(remark.line);
        }
    }
    const TriangleList& triangles = surface.triangles;
    Array1<int> side(triangles.count, -1);
    std::vector<Index> waiting;
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            if (triangles.Neighbour(j, t) < 0 && side[t] < 0) {
                side[t] = marks[t] >> (j - 1) & 1;
                waiting.push_back(t);
            }
        }
    }
    while (!waiting.empty()) {
        const Index t = waiting.back();
        waiting.pop_back();
        for (int j = 1; j <= 3; ++j) {
            const Index u = triangles.Neighbour(j, t);
            const int across = side[t] ^ (marks[t] >> (j - 1) & 1);
            if (u > 0 && side[u] < 0) {
                side[u] = across;
                waiting.push_back(u);
            } else if ((u > 0 ? side[u] : 0) != across) {
                return "A ring is open at triangle " + std::to_string(t);
            }
        }
    }
    const Array1<SpacePoint> points = AllPoints(from, surface);
    const double near = 4 * from.constraints.vertexTolerance + 1e-6;
    for (Index t = 1; t <= triangles.count; ++t) {
        const auto [a, b, c] = triangles.table[t].vertices;
        const PlanPoint middle{(points[a].x + points[b].x + points[c].x) / 3,
                               (points[a].y + points[b].y + points[c].y) / 3};
        const double area = (points[b].x - points[a].x) * (points[c].y - points[a].y) -
                            (points[b].y - points[a].y) * (points[c].x - points[a].x);
        double distance = 1e300;
        const bool isWithin = IsWithinRings(rings, leftOut, middle, distance);
        if (distance > near && area > 500 * near && isWithin != (side[t] == 1)) {
            return "Triangle " + std::to_string(t) + " lies on the other side";
        }
    }
    return "";
}

TEST(ConstrainedSurface, HoldsWhateverIsLaidIntoAnyTriangulation) {
    std::set<Kind> seen;
    std::int64_t crossings = 0;
    for (unsigned seed = 1; seed <= 6000; ++seed) {
        const std::optional<Case> made = RandomCase(seed).Make();
        if (!made) {
            continue;
        }
        SCOPED_TRACE("seed " + std::to_string(seed));
        const ConstrainedSurface surface = made->Make();
        ASSERT_EQ(SurfaceFaultOf(made->coord, made->constraints, surface), "");
        if (seed % 7 != 3 && seed % 7 != 4) { // on a line rounding decides what lies within a ring
            ASSERT_EQ(RingFault(*made, surface, LineRole::Boundary), "");
            ASSERT_EQ(RingFault(*made, surface, LineRole::Hole), "");
        }
        crossings += surface.crossings;
        for (const SurfaceRemark& remark : surface.remarks) {
            seen.insert(remark.kind);
        }
    }
    EXPECT_GT(crossings, 50000);
    EXPECT_EQ(seen, (std::set<Kind>{Kind::OtherHeight, Kind::OffPoint, Kind::HeightsMet,
                                    Kind::HeightTaken, Kind::RefusedCrossing, Kind::NotFinished,
                                    Kind::TooShort, Kind::CrossesItself, Kind::LostSide}));
}

// ---- Rules
// ---------------------------------------------------------------------------------------

double Level(PlanPoint) {
    return 0;
}

// A square of side 10 with points at its corners alone.
Case Square() {
    return CaseOf({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, Level);
}

SpaceLine Line(std::vector<SpacePoint> vertices) {
    return {std::move(vertices), false, ""};
}

TEST(ConstrainedSurface, SettlesCrossingsByTheirHeights) {
    struct Row {
        const char* name;
        double height; // of the second line at the crossing; that of the first is 5
        bool earlierWins;
        std::optional<Kind> remark;
        std::optional<double> made; // height of the crossing
    };
    for (const Row& row :
         {Row{"equal", 5, false, std::nullopt, 5}, Row{"near", 5.04, false, Kind::HeightsMet, 5.02},
          Row{"far", 5.2, false, Kind::RefusedCrossing, std::nullopt},
          Row{"far, the earlier wins", 5.2, true, Kind::HeightTaken, 5}}) {
        SCOPED_TRACE(row.name);
        Case made = Square();
        made.constraints.crossings.earlierWins = row.earlierWins;
        made.constraints.breaklines = {Line({{1, 1, 4}, {9, 9, 6}}),
                                       Line({{2, 8, row.height}, {8, 2, row.height}})};
        const ConstrainedSurface surface = made.Make();
        ASSERT_EQ(SurfaceFaultOf(made.coord, made.constraints, surface), "");
        ASSERT_EQ(surface.remarks.size(), row.remark ? 1U : 0U);
        if (row.remark) {
            const SurfaceRemark& remark = surface.remarks.front();
            EXPECT_EQ(remark.kind, *row.remark);
            EXPECT_EQ(remark.line, 1U);
            EXPECT_EQ(remark.otherRole, LineRole::Breakline);
            EXPECT_EQ(remark.otherLine, 0U);
            EXPECT_NEAR(remark.place.x, 5, 1e-12);
            EXPECT_NEAR(remark.place.z, row.height, 1e-12);
            EXPECT_NEAR(remark.otherHeight, 5, 1e-12);
        }
        EXPECT_EQ(surface.crossings, row.made ? 1 : 0);
        EXPECT_EQ(surface.lineEdges, row.made ? 4 : 1);
        ASSERT_EQ(surface.added.size(), row.made ? 5U : 2U);
        if (row.made) {
            EXPECT_NEAR(surface.added.back().z, *row.made, 1e-12);
        }
    }
}

TEST(ConstrainedSurface, TellsOfPointsWithOtherHeightsAndOfShapesThatCannotBe) {
    Case made = Square();
    made.coord.Append({5, 5});
    made.heights.Append(1);
    made.Triangulate();
    made.constraints.breaklines = {
        Line({{0.0004, 0, 3}, {2, 2, 3}}),      // a vertex at point 1
        Line({{3, 3, 0}, {7, 7, 0}}),           // through point 5
        Line({{6, 1, 0}, {6.0002, 1, 0}}),      // one place
        Line({{3, 5.0004, 0}, {8, 5.0004, 0}}), // within the tolerance of point 5
        Line({{2.0003, 2, 4}, {2, 4, 4}})};     // a vertex at that of an earlier line
    made.constraints.boundary = {
        Line({{1, 1, kNoHeight}, {9, 9, kNoHeight}, {9, 1, kNoHeight}, {1, 9, kNoHeight}}),
        Line({{1, 1, kNoHeight}, {9, 9, kNoHeight}})};
    made.constraints.held = {{{0, 0}, {3, 2}}, {{0, 10}, {10, 0}}};
    const ConstrainedSurface surface = made.Make();
    ASSERT_EQ(SurfaceFaultOf(made.coord, made.constraints, surface), "");
    std::multiset<std::tuple<Kind, LineRole, std::size_t, Index>> remarks;
    for (const SurfaceRemark& remark : surface.remarks) {
        remarks.insert({remark.kind, remark.role, remark.line, remark.point});
    }
    EXPECT_EQ(remarks, (std::multiset<std::tuple<Kind, LineRole, std::size_t, Index>>{
                           {Kind::CrossesItself, LineRole::Boundary, 0, 0},
                           {Kind::TooShort, LineRole::Boundary, 1, 0},
                           {Kind::TooShort, LineRole::Breakline, 2, 0},
                           {Kind::OtherHeight, LineRole::Breakline, 0, 1},
                           {Kind::OtherHeight, LineRole::Breakline, 4, 0},
                           {Kind::OffPoint, LineRole::Breakline, 1, 5},
                           {Kind::OffPoint, LineRole::Breakline, 3, 5},
                           {Kind::LostSide, LineRole::HeldSide, 0, 0},
                           {Kind::LostSide, LineRole::HeldSide, 1, 0}}));
}

TEST(ConstrainedSurface, IsThatOfTheAcceptedLinesAlone) {
    int refusals = 0;
    for (unsigned seed = 1; seed <= 400; ++seed) {
        std::optional<Case> made = RandomCase(7 * seed + 5).Make();
        if (!made) {
            continue;
        }
        made->constraints.boundary.clear();
        made->constraints.holes.clear();
        made->constraints.held.clear();
        const ConstrainedSurface whole = made->Make();
        std::set<std::size_t> leftOut;
        for (const SurfaceRemark& remark : whole.remarks) {
            if (remark.kind == Kind::RefusedCrossing || remark.kind == Kind::NotFinished) {
                leftOut.insert(remark.line);
            }
        }
        refusals += static_cast<int>(leftOut.size());
        for (const std::size_t line : leftOut) {
            made->constraints.breaklines[line].vertices.clear();
        }
        const ConstrainedSurface again = made->Make();
        ASSERT_EQ(again.added, whole.added) << seed;
        ASSERT_EQ(test::NumbersOf(again.triangles), test::NumbersOf(whole.triangles)) << seed;
        ASSERT_EQ(again.constrained, whole.constrained) << seed;
    }
    EXPECT_GT(refusals, 50);
}

// ---- What must not change
// ------------------------------------------------------------------------

// Corners of all triangles by place and sorted: point numbers depend on the order of the lines.
std::vector<std::array<std::pair<double, double>, 3>> PlacesOf(const Case& from,
                                                               const ConstrainedSurface& surface) {
    const Array1<SpacePoint> points = AllPoints(from, surface);
    std::vector<std::array<std::pair<double, double>, 3>> places;
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        std::array<std::pair<double, double>, 3> corners;
        for (int j = 1; j <= 3; ++j) {
            const SpacePoint& p = points[surface.triangles.Vertex(j, t)];
            corners[static_cast<std::size_t>(j) - 1] = {p.x, p.y};
        }
        std::sort(corners.begin(), corners.end());
        places.push_back(corners);
    }
    std::sort(places.begin(), places.end());
    return places;
}

TEST(ConstrainedSurface, IsTheSameInWhateverOrderSegmentsThatDoNotCrossCome) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        Dice dice(seed);
        // On a lattice, where nearly all circles are ties and segments go through points.
        Case made = CaseOf(test::GridPoints(12), Level);
        made.constraints.vertexTolerance = 0;
        std::vector<SpaceLine>& lines = made.constraints.breaklines;
        for (int tries = 0; tries < 40; ++tries) {
            const PlanPoint& a = made.coord[dice.Whole(1, 144)];
            const PlanPoint& b = made.coord[dice.Whole(1, 144)];
            lines.push_back(Line({{a.x, a.y, 0}, {b.x, b.y, 0}}));
            if (made.Make().crossings > 0) {
                lines.pop_back();
            }
        }
        const ConstrainedSurface first = made.Make();
        ASSERT_EQ(SurfaceFaultOf(made.coord, made.constraints, first), "");
        std::reverse(lines.begin(), lines.end());
        for (SpaceLine& line : lines) {
            std::reverse(line.vertices.begin(), line.vertices.end());
        }
        ASSERT_EQ(PlacesOf(made, made.Make()), PlacesOf(made, first)) << "seed " << seed;
    }
}

double HeightAt(const Array1<SpacePoint>& points, const TriangleList& triangles, PlanPoint place) {
    double best = -1e300;
    double height = kNoHeight;
    for (Index t = 1; t <= triangles.count; ++t) {
        const SpacePoint& a = points[triangles.Vertex(1, t)];
        const SpacePoint& b = points[triangles.Vertex(2, t)];
        const SpacePoint& c = points[triangles.Vertex(3, t)];
        const auto area = [](PlanPoint p, PlanPoint q, PlanPoint r) {
            return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
        };
        const double whole = area(PlanOf(a), PlanOf(b), PlanOf(c));
        const double toB = area(PlanOf(a), place, PlanOf(c)) / whole;
        const double toC = area(PlanOf(a), PlanOf(b), place) / whole;
        const double least = std::min({toB, toC, 1 - toB - toC});
        if (least > best) { // the triangle that holds it best, for places on edges
            best = least;
            height = a.z + toB * (b.z - a.z) + toC * (c.z - a.z);
        }
    }
    return height;
}

TEST(ConstrainedSurface, LeavesTheSurfaceAsItIsUnderDrapedLines) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        Dice dice(seed);
        const bool isLattice = seed % 4 == 0;
        Case made = CaseOf(
            isLattice ? test::GridPoints(14) : test::RandomPoints(200, seed),
            [&dice](PlanPoint) { return dice.Real(0, 20); }, seed % 2 == 0);
        const auto [left, right] =
            std::minmax_element(made.coord.begin(), made.coord.end(),
                                [](PlanPoint p, PlanPoint q) { return p.x < q.x; });
        const double x = left->x;
        const double y = made.coord[1].y;
        const double size = right->x - left->x;
        const ConstrainedSurface before = made.Make();
        const auto vertex = [&](double angle, double radius) {
            return SpacePoint{x + size * (0.5 + radius * std::cos(angle)),
                              y + size * (0.5 + radius * std::sin(angle)), kNoHeight};
        };
        for (const double radius : {0.2, 0.35, 0.8}) { // the last leaves the hull
            SpaceLine ring{{}, true, ""};
            for (int i = 0; i < 9; ++i) {
                ring.vertices.push_back(vertex(i * 0.698, radius * dice.Real(0.7, 1)));
            }
            made.constraints.boundary.push_back(ring);
        }
        made.constraints.breaklines = {Line({vertex(0, 0.6), vertex(2.5, 0.3), vertex(5, 0.9)})};
        const ConstrainedSurface after = made.Make();
        ASSERT_EQ(SurfaceFaultOf(made.coord, made.constraints, after,
                                 seed % 2 == 0 ? BaseArithmetic::Exact : BaseArithmetic::Plain),
                  "");
        ASSERT_EQ(RingFault(made, after, LineRole::Boundary), "");
        ASSERT_EQ(after.remarks.size(), 0U);
        ASSERT_GT(after.added.size(), 30U);
        const Array1<SpacePoint> pointsBefore = AllPoints(made, before);
        const Array1<SpacePoint> pointsAfter = AllPoints(made, after);
        for (int k = 0; k < 200; ++k) {
            const SpacePoint place = vertex(dice.Real(0, 6.28), 0.4 * std::sqrt(dice.Real(0, 1)));
            const double there = HeightAt(pointsBefore, before.triangles, PlanOf(place));
            ASSERT_NEAR(HeightAt(pointsAfter, after.triangles, PlanOf(place)), there, 1e-9)
                << "seed " << seed;
        }
    }
}

TEST(ConstrainedSurface, ChangesNothingFarFromALine) {
    Case made = CaseOf(test::RandomPoints(5000, 3), Level, false);
    made.constraints.breaklines = {Line({{200, 200, 0}, {230, 215, 0}})};
    const ConstrainedSurface surface = made.Make();
    ASSERT_EQ(SurfaceFaultOf(made.coord, made.constraints, surface, BaseArithmetic::Plain), "");
    std::set<std::array<Index, 3>> before;
    for (const auto& corners : test::NumbersOf(made.base)) {
        before.insert(corners);
    }
    int changed = 0;
    for (const auto& corners : test::NumbersOf(surface.triangles)) {
        changed += before.contains(corners) ? 0 : 1;
    }
    EXPECT_GT(changed, 4);
    EXPECT_LT(changed, 60);
}

// ---- Sets that other programs failed on
// ----------------------------------------------------------

TEST(ConstrainedSurface, ManagesSetsThatAreKnownToBeHard) {
    const auto fan = [](double lean) { // lines that cross each other at small angles in one region
        std::vector<SpaceLine> lines;
        for (int i = 0; i < 40; ++i) {
            lines.push_back(Line({{1, 4 + i * lean, 0}, {9, 6 - i * lean, 0}}));
        }
        return lines;
    };
    struct Row {
        const char* name;
        std::vector<SpaceLine> lines;
    };
    const double third = 1.0 / 3;
    for (const Row& row :
         {Row{"repeated", {Line({{1, 1, 0}, {9, 3, 0}}), Line({{9, 3, 0}, {1, 1, 0}})}},
          Row{"touching at ends",
              {Line({{1, 1, 0}, {5, 5, 0}, {9, 1, 0}}), Line({{5, 5, 0}, {5, 9, 0}})}},
          Row{"a vertex on a side",
              {Line({{1, 1, 0}, {9, 1, 0}}), Line({{3 * third * 4, 1, 0}, {4, 9, 0}})}},
          Row{"through a corner", {Line({{-1, -1, 0}, {11, 11, 0}})}},
          Row{"all over each other",
              {Line({{1, 5, 0}, {6, 5, 0}}), Line({{3, 5, 0}, {9, 5, 0}}),
               Line({{2, 5, 0}, {8, 5, 0}})}},
          Row{"to and fro", {Line({{1, 5, 0}, {9, 5, 0}, {3, 5, 0}, {7, 5, 0}})}},
          Row{"a star", {Line({{5, 1, 0}, {8, 9, 0}, {1, 4, 0}, {9, 4, 0}, {2, 9, 0}, {5, 1, 0}})}},
          Row{"crossing at one place",
              {Line({{1, 1, 0}, {9, 9, 0}}), Line({{1, 9, 0}, {9, 1, 0}}),
               Line({{5, 1, 0}, {5, 9, 0}}), Line({{1, 5, 0}, {9, 5, 0}})}},
          Row{"nearly parallel", fan(1e-9)}, Row{"ulp by ulp", fan(1e-15)},
          Row{"along the hull", {Line({{0, 0, 0}, {10, 0, 0}}), Line({{2, 0, 0}, {8, 0, 0}})}},
          Row{"far outside", {Line({{-1e6, 5, 0}, {1e6, 5.5, 0}})}}}) {
        for (const double tolerance : {0.0, 0.001}) {
            SCOPED_TRACE(row.name);
            Case made = Square();
            made.constraints.vertexTolerance = tolerance;
            made.constraints.breaklines = row.lines;
            const ConstrainedSurface surface = made.Make();
            EXPECT_EQ(SurfaceFaultOf(made.coord, made.constraints, surface), "");
            EXPECT_GT(surface.lineEdges, 0);
            EXPECT_TRUE(surface.remarks.empty());
        }
    }
}

// Swaps alone would take the square of the number of corners: minutes in a debug build.
TEST(ConstrainedSurface, LaysASegmentBetweenLongChainsInLittleTime) {
    for (const double bulge : {-1.0, 1.0}) { // towards the segment, away from it
        Array1<PlanPoint> coord{{0, 0}, {1000, 0}};
        constexpr int kCorners = 16000;
        for (int i = 1; i <= kCorners; ++i) {
            const double x = static_cast<double>(i) / (kCorners + 1);
            for (const double side : {-1.0, 1.0}) {
                coord.Append({1000 * x, side * (1.5 + bulge * (4 * x * (1 - x) - 0.5))});
            }
        }
        Case made = CaseOf(std::move(coord), Level);
        made.constraints.breaklines = {Line({{0, 0, 0}, {1000, 0, 0}})};
        const auto begin = std::chrono::steady_clock::now();
        const ConstrainedSurface surface = made.Make();
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
        EXPECT_EQ(SurfaceFaultOf(made.coord, made.constraints, surface), "");
        EXPECT_EQ(surface.lineEdges, 1);
        EXPECT_LT(elapsed.count(), 20);
    }
}

TEST(ConstrainedSurface, EndsWhenAskedTo) {
    Case made = Square();
    made.constraints.breaklines = {Line({{1, 1, 0}, {9, 3, 0}})};
    StopToken stop;
    stop.RequestStop();
    const ConstrainedSurface surface =
        MakeConstrainedSurface(made.coord, made.heights, made.base, made.constraints, stop);
    EXPECT_TRUE(surface.isStopped);
    EXPECT_EQ(surface.triangles.count, 0);
}

} // namespace
} // namespace terravo
