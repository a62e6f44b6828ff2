#include "sheet/Clip.h"
#include "sheet/CutOut.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace terravo {
namespace {

double Length(std::span<const SheetPoint> line, bool closed) {
    double length = 0;
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        length += std::hypot(line[i + 1].x - line[i].x, line[i + 1].y - line[i].y);
    }
    return closed
               ? length + std::hypot(line.front().x - line.back().x, line.front().y - line.back().y)
               : length;
}

// Of the line inside the box, by many small steps.
double LengthInside(std::vector<SheetPoint> line, bool closed, const SheetBox& box) {
    constexpr int kSteps = 20000;
    if (closed) {
        line.push_back(line.front());
    }
    double inside = 0;
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        const SheetPoint a = line[i];
        const SheetPoint b = line[i + 1];
        const double step = std::hypot(b.x - a.x, b.y - a.y) / kSteps;
        for (int k = 0; k < kSteps; ++k) {
            const double t = (k + 0.5) / kSteps;
            inside += box.Contains({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)}) ? step : 0;
        }
    }
    return inside;
}

std::vector<SheetPoint> Wander(std::mt19937& chance, std::size_t count) {
    std::vector<SheetPoint> line;
    for (std::size_t i = 0; i < count; ++i) {
        // Some vertices lie exactly on the edges of the box below.
        line.push_back({static_cast<double>(chance() % 13), static_cast<double>(chance() % 11)});
    }
    return line;
}

// A line as a curve of straight cubics, which a place on the curve is a place on the line of.
struct StraightCurve {
    std::vector<SheetPoint> controls;
    std::vector<double> places;

    StraightCurve(std::span<const SheetPoint> line, bool closed) : controls{line.front()} {
        for (std::size_t i = 0; i < line.size(); ++i) {
            places.push_back(static_cast<double>(i));
        }
        for (std::size_t i = 1; i < line.size() + (closed ? 1 : 0); ++i) {
            const SheetPoint a = line[i - 1];
            const SheetPoint b = line[i % line.size()];
            controls.push_back({(2 * a.x + b.x) / 3, (2 * a.y + b.y) / 3});
            controls.push_back({(a.x + 2 * b.x) / 3, (a.y + 2 * b.y) / 3});
            controls.push_back(b);
        }
    }
};

// Whether the vertices of a piece are those of its curve.
bool HasItsCurve(const SheetScene& scene, const SheetPiece& piece) {
    const auto line = scene.VerticesOf(piece);
    const auto controls = scene.ControlsOf(piece);
    bool has = controls.size() == 3 * (line.size() - (piece.closed ? 0 : 1)) + 1;
    for (std::size_t i = 0; has && i < line.size(); ++i) {
        has = std::hypot(line[i].x - controls[3 * i].x, line[i].y - controls[3 * i].y) < 1e-9;
    }
    return has;
}

TEST(Clip, KeepsWhatIsInsideAndNothingElse) {
    const SheetBox box{2, 3, 9, 8};
    std::mt19937 chance(3);
    for (int round = 0; round < 300; ++round) {
        const std::vector<SheetPoint> line = Wander(chance, 2 + round % 9);
        const bool closed = round % 2 == 0;
        ClippedLine inside;
        const StraightCurve curve(line, closed);
        ClipLine(line, closed, box, inside, {curve.places, static_cast<double>(line.size())});
        ASSERT_EQ(inside.places.size(), inside.points.size());
        double length = 0;
        for (const ClippedLine::Part& part : inside.parts) {
            const std::span<const SheetPoint> points = inside.PointsOf(part);
            ASSERT_GE(points.size(), 2U);
            length += Length(points, part.closed);
            SheetScene scene;
            AddWithout(points, part.closed, {}, scene, {curve.controls, inside.PlacesOf(part)});
            EXPECT_TRUE(HasItsCurve(scene, scene.pieces[0])) << round;
            for (const SheetPoint& p : points) {
                EXPECT_TRUE(SheetBox({1.999999, 2.999999, 9.000001, 8.000001}).Contains(p));
            }
        }
        EXPECT_NEAR(length, LengthInside(line, closed, box), 0.01) << round;
    }
}

TEST(Clip, ARoundThatBeginsInsideIsNotTornThere) {
    const std::vector<SheetPoint> round{{5, 5}, {5, 20}, {20, 20}, {20, 5}};
    ClippedLine inside;
    ClipLine(round, true, {0, 0, 10, 10}, inside);
    ASSERT_EQ(inside.parts.size(), 1U);
    const std::vector<SheetPoint> expected{{10, 5}, {5, 5}, {5, 10}};
    const auto points = inside.PointsOf(inside.parts[0]);
    EXPECT_EQ(std::vector<SheetPoint>(points.begin(), points.end()), expected);
    inside.Clear();
    ClipLine(round, true, {0, 0, 30, 30}, inside);
    ASSERT_EQ(inside.parts.size(), 1U);
    EXPECT_TRUE(inside.parts[0].closed);
}

TEST(Clip, CutsARingAlongTheEdges) {
    const std::vector<SheetPoint> ring{{5, 5}, {15, 5}, {15, 15}, {5, 15}};
    const std::vector<SheetPoint> cut = ClipRing(ring, {0, 0, 10, 10});
    EXPECT_EQ(Length(cut, true), 20);
    EXPECT_TRUE(ClipRing(ring, {20, 20, 30, 30}).empty());
    EXPECT_EQ(Length(ClipRing(ring, {7, 7, 9, 9}), true), 8) << "the box itself";
}

TEST(CutOut, LeavesTheStretchesOut) {
    const std::vector<SheetPoint> square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const struct {
        bool closed;
        std::vector<Stretch> out;
        std::size_t pieces;
        double left;
    } cases[] = {{false, {}, 1, 30},
                 {false, {{12, 15}}, 2, 27},
                 {false, {{20, 25}, {3, 4}}, 3, 24},
                 {false, {{0, 5}, {25, 30}}, 1, 20},
                 {true, {}, 1, 40},
                 {true, {{12, 15}}, 1, 37},
                 {true, {{38, 43}}, 1, 35},
                 {true, {{38, 3}}, 1, 35},
                 {true, {{5, 8}, {38, 41}}, 2, 34}};
    for (const auto& test : cases) {
        SheetScene scene;
        const StraightCurve curve(square, test.closed);
        AddWithout(square, test.closed, test.out, scene, {curve.controls, curve.places});
        EXPECT_EQ(scene.pieces.size(), test.pieces);
        double left = 0;
        for (const SheetPiece& piece : scene.pieces) {
            left += Length(scene.VerticesOf(piece), piece.closed);
            EXPECT_TRUE(HasItsCurve(scene, piece));
        }
        EXPECT_NEAR(left, test.left, 1e-12);
    }
    SheetScene scene;
    AddWithout(square, true, {{38, 43}}, scene);
    EXPECT_EQ(scene.vertices.front(), (SheetPoint{3, 0}));
    EXPECT_EQ(scene.vertices.back(), (SheetPoint{0, 2}));
}

} // namespace
} // namespace terravo
