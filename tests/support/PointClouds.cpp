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

Array1<PlanPoint> Turned(Array1<PlanPoint> points, double angle) {
    for (PlanPoint& p : points) {
        p = {3000 + p.x * std::cos(angle) - p.y * std::sin(angle),
             2000 + p.x * std::sin(angle) + p.y * std::cos(angle)};
    }
    return points;
}

Array1<PlanPoint> RoundedTo(double step, Array1<PlanPoint> points) {
    for (PlanPoint& p : points) {
        p = {std::round(p.x / step) * step, std::round(p.y / step) * step};
    }
    return points;
}

Array1<PlanPoint> Followed(Array1<PlanPoint> points, const Array1<PlanPoint>& more) {
    for (const PlanPoint& p : more) {
        points.Append(p);
    }
    return points;
}

Array1<PlanPoint> RowThenApproach(Index count) {
    Array1<PlanPoint> points{{1000, 1000}, {5000, 1000}, {1000, 5000}};
    for (Index i = 0; i < count; ++i) {
        points.Append({2500 + 1000.0 * i / count, 1500});
    }
    for (Index i = 0; i < count; ++i) {
        points.Append({3000.1, 2900 - 1300.0 * i / count});
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

std::vector<PointCloud> HardClouds(Index count, unsigned seed) {
    const auto side = static_cast<Index>(std::sqrt(static_cast<double>(count)));
    const double angle = 0.001 * seed;
    const auto random = [&](unsigned more) { return RandomPoints(count, seed + more); };
    const auto squashed = [&] {
        Array1<PlanPoint> points = random(9);
        for (PlanPoint& p : points) {
            p.y = 700 + 1e-7 * p.y + 0.3 * p.x;
        }
        return points;
    };
    const auto parabola = [&] {
        Array1<PlanPoint> points(count);
        for (Index i = 1; i <= count; ++i) {
            const double x = (i % 2 == 0 ? i : count - i) / 7.0;
            points[i] = {x, x * x};
        }
        return points;
    };
    const auto sides = [&] {
        Array1<PlanPoint> points(count);
        for (Index i = 1; i <= count; ++i) {
            const double along = 0.1 * (i / 4);
            const double end = 0.1 * (count / 4 + 1);
            points[i] = i % 4 == 0   ? PlanPoint{along, 0}
                        : i % 4 == 1 ? PlanPoint{end, along}
                        : i % 4 == 2 ? PlanPoint{end - along, end}
                                     : PlanPoint{0, end - along};
        }
        return points;
    };
    return {
        {"decimal grid", Moved(GridPoints(side), 0.7, 0.3, 0.01)},
        {"decimal grid, shuffled", Moved(Shuffled(GridPoints(side), seed), 0.7, 0.3, 0.01)},
        {"turned grid", Turned(GridPoints(side), angle)},
        {"turned grid in millimetres", RoundedTo(1e-3, Turned(GridPoints(side), angle))},
        {"turned grid, then random", Followed(Turned(GridPoints(side), angle), random(3))},
        {"random, then turned grid",
         Followed(Moved(random(4), 0, 0, 9), Turned(GridPoints(side), angle))},
        {"few whole numbers", RoundedTo(100, random(5))},
        {"many whole numbers", RoundedTo(1, random(6))},
        {"decimetres", RoundedTo(0.1, random(7))},
        {"circle", CirclePoints(count)},
        {"circle, shuffled", Shuffled(CirclePoints(count), seed)},
        {"parabola", parabola()},
        {"sides of a square", sides()},
        {"circle among random", Followed(random(8), Moved(CirclePoints(20), 300, 200, 0.01))},
        {"almost a line", squashed()},
        {"two clusters", Followed(random(10), Moved(random(11), 90000, 1, 1e-3))},
        {"far stray point", Followed(Moved(random(12), 500000, 4520000, 1), {{1, 1}})},
        {"too small to tell", Moved(random(13), 1e-9, 1e-9, 1e-9)},
    };
}

} // namespace terravo::test
