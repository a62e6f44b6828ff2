#include "support/PointClouds.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace terravo::test {
namespace {

// The engine's sequence is fixed by the standard, the distributions' is not.
double Unit(std::mt19937& engine) {
    return static_cast<double>(engine()) / 4294967296.0;
}

} // namespace

Array1<PlanPoint> RandomPoints(Index count, unsigned seed) {
    std::mt19937 engine(seed);
    Array1<PlanPoint> points(count);
    for (PlanPoint& p : points) {
        p.x = 1 + 1000 * Unit(engine);
        p.y = 1 + 700 * Unit(engine);
    }
    return points;
}

Array1<PlanPoint> GridPoints(Index side) {
    Array1<PlanPoint> points;
    for (Index row = 1; row <= side; ++row) {
        for (Index column = 1; column <= side; ++column) {
            points.Append({10.0 * column, 10.0 * row});
        }
    }
    return points;
}

Array1<PlanPoint> Shuffled(Array1<PlanPoint> points, unsigned seed) {
    std::mt19937 engine(seed);
    for (Index i = points.UpperBound(); i > 1; --i) {
        const auto j = static_cast<Index>(engine() % static_cast<unsigned>(i)) + 1;
        std::swap(points[i], points[j]);
    }
    return points;
}

Array1<PlanPoint> SurveyLines(Index count, unsigned seed) {
    std::mt19937 engine(seed);
    const auto perLine = static_cast<Index>(std::sqrt(static_cast<double>(count)) * 3) + 1;
    Array1<PlanPoint> points(count);
    for (Index i = 1; i <= count; ++i) {
        const Index line = (i - 1) / perLine;
        const Index along = (i - 1) % perLine;
        const Index place = line % 2 == 0 ? along : perLine - 1 - along;
        points[i] = {100 + 2.0 * place + 0.4 * Unit(engine), 50 + 25.0 * line + Unit(engine)};
    }
    return points;
}

Array1<PlanPoint> WithRepeats(Array1<PlanPoint> points, unsigned seed) {
    std::mt19937 engine(seed);
    for (Index i = 6; i <= points.UpperBound(); i += 3) {
        points[i] = points[static_cast<Index>(engine() % static_cast<unsigned>(i - 1)) + 1];
    }
    return points;
}

Array1<PlanPoint> Moved(Array1<PlanPoint> points, double dx, double dy, double scale) {
    for (PlanPoint& p : points) {
        p = {dx + scale * p.x, dy + scale * p.y};
    }
    return points;
}

Array1<PlanPoint> CirclePoints(Index count) {
    Array1<PlanPoint> points(count);
    for (Index i = 1; i <= count; ++i) {
        const double angle = 2 * std::numbers::pi * (i - 0.5) / count;
        points[i] = {500 + 300 * std::cos(angle), 500 + 300 * std::sin(angle)};
    }
    return points;
}

std::vector<PointCloud> CloudsOfEveryKind(Index count, unsigned seed) {
    const auto side = static_cast<Index>(std::sqrt(static_cast<double>(count)));
    return {
        {"random", RandomPoints(count, seed)},
        {"grid", GridPoints(side)},
        {"shuffled grid", Shuffled(GridPoints(side), seed)},
        {"survey lines", SurveyLines(count, seed)},
        {"repeats", WithRepeats(RandomPoints(count, seed + 1), seed)},
        {"grid with repeats", WithRepeats(Shuffled(GridPoints(side), seed + 2), seed)},
        {"national grid", Moved(RandomPoints(count, seed + 3), 500000, 4520000, 1)},
        {"regular survey on a national grid",
         Moved(Shuffled(GridPoints(side), seed + 4), 2667400, 6478700, 1)},
        {"millimetres", Moved(RandomPoints(count, seed + 5), 1, 1, 1e-3)},
    };
}

} // namespace terravo::test
