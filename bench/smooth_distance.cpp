// Prints how far contours are from the true ones, as a table in Markdown.
//
// Data: terrains given by formulas, with heights at scattered points, exact or with an error.
// Method: places at equal steps along every line are led down or up the slope of the formula to the
// height of their level; how far they had to go is counted. Beside the raw lines and the smooth
// ones stand splines through the vertices of the raw lines (centripetal, four points a piece), the
// usual way to round contours. Distances are parts of the mean spacing of the points. Lines within
// three spacings of the hull are left out: there long triangles say nothing of smoothing.
#include "contour/smoothing/FlattenContours.h"
#include "contour/smoothing/LineMeeting.h"
#include "contour/smoothing/SmoothContours.h"
#include "survey/Survey.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <numbers>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace terravo;
using Formula = std::function<double(double x, double y)>;

constexpr double kSide = 1000;
constexpr Index kPoints = 5000;
constexpr int kLevels = 25;
const double kSpacing = kSide / std::sqrt(kPoints);

double Hills(double x, double y) {
    struct Hill {
        double x, y, height, width;
    };
    constexpr std::array<Hill, 6> kHills{{{200, 250, 90, 150},
                                          {700, 300, 70, 120},
                                          {500, 720, 110, 180},
                                          {850, 800, 60, 90},
                                          {150, 800, 50, 110},
                                          {420, 420, -45, 90}}};
    double z = 0.02 * x;
    for (const Hill& hill : kHills) {
        const double dx = (x - hill.x) / hill.width;
        const double dy = (y - hill.y) / hill.width;
        z += hill.height * std::exp(-(dx * dx + dy * dy) / 2);
    }
    return z;
}

double Waves(double x, double y) {
    return 40 * std::sin(x / 75) * std::cos(y / 90) + 0.03 * x + 0.02 * y;
}

double Saddle(double x, double y) {
    const double a = x / 500 - 1;
    const double b = y / 500 - 1;
    return 100 * (a * a * a - 3 * a * b * b);
}

// Waves of all directions, the shorter the lower.
double Rough(double x, double y) {
    double z = 0;
    for (int k = 0; k < 40; ++k) {
        const double wave = 2 * std::numbers::pi / kSide * std::pow(1.09, k);
        const double angle = 2.4 * k;
        z += 60 / std::pow(1.09, 1.6 * k) *
             std::sin(wave * (std::cos(angle) * x + std::sin(angle) * y) + 1.7 * k);
    }
    return z;
}

struct Terrain {
    const char* name;
    Formula height;
    double error; // standard deviation, as a part of the spacing of the levels
};

struct Sampled {
    Survey survey;
    LevelSet levels;
};

Sampled Sample(const Terrain& terrain) {
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> anywhere(0, kSide);
    std::normal_distribution<double> error;
    PointSet points;
    for (Index i = 0; i < kPoints; ++i) {
        const double x = anywhere(engine);
        const double y = anywhere(engine);
        points.Append(x, y, terrain.height(x, y));
    }
    const auto [low, high] = points.extentZ;
    const double step = (high - low) / kLevels;
    Sampled sampled;
    for (int k = 0; k < kLevels; ++k) {
        sampled.levels.Append({low + (k + 0.5) * step, 0, 1, {}, 0, 10});
    }
    for (Index i = 1; i <= points.count; ++i) {
        points.z[i] += terrain.error * step * error(engine);
    }
    sampled.survey = Survey(std::move(points));
    return sampled;
}

using Line = std::vector<PlanPoint>; // a closed one repeats its first place

struct LevelLines {
    double level = 0;
    std::vector<Line> lines;
};

std::vector<LevelLines> LinesOf(const ContourSet& contours) {
    std::vector<LevelLines> all;
    for (const ContourLevel& level : contours) {
        all.push_back({level.value, {}});
        for (const ContourLine& line : level.lines) {
            Line places;
            for (const ContourVertex& v : level.VerticesOf(line)) {
                places.push_back({v.x, v.y});
            }
            if (line.closed) {
                places.push_back(PlanPoint(places.front()));
            }
            all.back().lines.push_back(std::move(places));
        }
    }
    return all;
}

PlanPoint Mix(PlanPoint a, PlanPoint b, double ta, double tb, double t) {
    const double part = (t - ta) / (tb - ta);
    return {a.x + part * (b.x - a.x), a.y + part * (b.y - a.y)};
}

// The piece between the second and the third of four places; knots grow with the root of length.
PlanPoint SplineAt(const std::array<PlanPoint, 4>& p, double part) {
    std::array<double, 4> knots{};
    for (std::size_t i = 1; i < 4; ++i) {
        const double length = std::hypot(p[i].x - p[i - 1].x, p[i].y - p[i - 1].y);
        knots[i] = knots[i - 1] + std::max(std::sqrt(length), 1e-9);
    }
    const double t = knots[1] + part * (knots[2] - knots[1]);
    const PlanPoint a = Mix(p[0], p[1], knots[0], knots[1], t);
    const PlanPoint b = Mix(p[1], p[2], knots[1], knots[2], t);
    const PlanPoint c = Mix(p[2], p[3], knots[2], knots[3], t);
    return Mix(Mix(a, b, knots[0], knots[2], t), Mix(b, c, knots[1], knots[3], t), knots[1],
               knots[2], t);
}

Line SplineThrough(const Line& line) {
    constexpr int kSteps = 8;
    const std::size_t n = line.size();
    const bool closed = line.front() == line.back();
    if (n < 3) {
        return line;
    }
    Line spline{line.front()};
    for (std::size_t i = 0; i + 1 < n; ++i) {
        const PlanPoint a = line[i];
        const PlanPoint b = line[i + 1];
        const PlanPoint before = i > 0    ? line[i - 1]
                                 : closed ? line[n - 2]
                                          : PlanPoint{2 * a.x - b.x, 2 * a.y - b.y};
        const PlanPoint after = i + 2 < n ? line[i + 2]
                                : closed  ? line[1]
                                          : PlanPoint{2 * b.x - a.x, 2 * b.y - a.y};
        for (int k = 1; k < kSteps; ++k) {
            spline.push_back(SplineAt({before, a, b, after}, static_cast<double>(k) / kSteps));
        }
        spline.push_back(b);
    }
    return spline;
}

PlanPoint SlopeAt(const Formula& height, PlanPoint p) {
    constexpr double kStep = 1e-4;
    return {(height(p.x + kStep, p.y) - height(p.x - kStep, p.y)) / (2 * kStep),
            (height(p.x, p.y + kStep) - height(p.x, p.y - kStep)) / (2 * kStep)};
}

// Negative where the slope leads nowhere: near a peak that the level does not reach.
double DistanceToLevel(const Formula& height, double level, PlanPoint from) {
    PlanPoint p = from;
    for (int step = 0; step < 20; ++step) {
        const double off = height(p.x, p.y) - level;
        const PlanPoint slope = SlopeAt(height, p);
        const double square = slope.x * slope.x + slope.y * slope.y;
        const double way = std::fabs(off) / std::sqrt(square);
        if (way < 1e-6 * kSpacing) {
            return std::hypot(p.x - from.x, p.y - from.y) / kSpacing;
        }
        const double part = std::min(1.0, 0.5 * kSpacing / way) * off / square;
        p = {p.x - part * slope.x, p.y - part * slope.y};
    }
    return -1;
}

bool IsInside(PlanPoint p) {
    const double margin = 3 * kSpacing;
    return p.x > margin && p.x < kSide - margin && p.y > margin && p.y < kSide - margin;
}

struct Distances {
    double mean = 0;
    double most95 = 0;
    std::size_t lost = 0;
    std::size_t all = 0;
};

Distances Measure(const Formula& height, const std::vector<LevelLines>& levels) {
    const double step = 0.1 * kSpacing;
    std::vector<double> found;
    Distances distances;
    for (const LevelLines& level : levels) {
        for (const Line& line : level.lines) {
            double ahead = step / 2; // way to the next place
            for (std::size_t i = 1; i < line.size(); ++i) {
                const PlanPoint a = line[i - 1];
                const PlanPoint b = line[i];
                const double length = std::hypot(b.x - a.x, b.y - a.y);
                for (; ahead < length; ahead += step) {
                    const PlanPoint p = Mix(a, b, 0, length, ahead);
                    const double distance =
                        IsInside(p) ? DistanceToLevel(height, level.level, p) : 0;
                    if (IsInside(p)) {
                        ++distances.all;
                        distances.lost += distance < 0 ? 1 : 0;
                    }
                    if (IsInside(p) && distance >= 0) {
                        found.push_back(distance);
                    }
                }
                ahead -= length;
            }
        }
    }
    std::sort(found.begin(), found.end());
    for (const double distance : found) {
        distances.mean += distance / static_cast<double>(found.size());
    }
    distances.most95 = found[found.size() * 95 / 100];
    return distances;
}

bool DoMeet(const std::vector<LevelLines>& levels) {
    StraightLines lines;
    for (const LevelLines& level : levels) {
        for (const Line& line : level.lines) {
            const bool closed = line.front() == line.back();
            const std::size_t first = lines.places.size();
            for (const PlanPoint& p : line) {
                if (lines.places.size() == first || !(lines.places.back() == p)) {
                    lines.places.push_back(p);
                }
            }
            if (closed) {
                lines.places.pop_back();
            }
            lines.lines.push_back({first, lines.places.size() - first, closed});
        }
    }
    return FindMeeting(lines).has_value();
}

void PrintRow(const Terrain& terrain, const char* lines, const std::vector<LevelLines>& levels) {
    const Distances found = Measure(terrain.height, levels);
    std::printf("| %s | %s | %.4f | %.4f | %s |\n", terrain.name, lines, found.mean, found.most95,
                DoMeet(levels) ? "yes" : "no");
    if (found.lost * 100 > found.all) {
        std::printf("(more than 1 %% of the places led nowhere)\n");
    }
}

void PrintTerrain(const Terrain& terrain) {
    const Sampled sampled = Sample(terrain);
    const PointSet& points = sampled.survey.Points();
    const TriangleList& triangles = sampled.survey.Triangulation().triangles;
    const std::vector<LevelLines> raw = LinesOf(*MakeContourSet(points, triangles, sampled.levels));
    PrintRow(terrain, "raw", raw);
    std::vector<LevelLines> splines = raw;
    for (LevelLines& level : splines) {
        for (Line& line : level.lines) {
            line = SplineThrough(line);
        }
    }
    PrintRow(terrain, "spline", splines);
    struct Kind {
        const char* name;
        SmoothingGoal goal;
        double fraction;
        double smoothness;
    };
    for (const Kind& kind : {Kind{"smooth, plain, 0.25", SmoothingGoal::Plain, 0.25, 0.5},
                             Kind{"smooth, plain, 0.45", SmoothingGoal::Plain, 0.45, 0.5},
                             Kind{"smooth, plain, 0.25, length 1", SmoothingGoal::Plain, 0.25, 1},
                             Kind{"smooth, surface, 0.25", SmoothingGoal::Surface, 0.25, 0.4},
                             Kind{"smooth, surface, 0.45", SmoothingGoal::Surface, 0.45, 0.4}}) {
        SmoothingOptions options;
        options.goal = kind.goal;
        options.fraction = kind.fraction;
        options.smoothness = kind.smoothness;
        const auto smooth =
            MakeSmoothContours({points, triangles, nullptr, sampled.levels}, options);
        PrintRow(terrain, kind.name, LinesOf(FlattenContours(*smooth, 1e-3 * kSpacing)));
    }
}

} // namespace

int main() {
    std::printf(
        "| terrain | lines | mean distance | 95 %% below | meet |\n|---|---|---:|---:|---|\n");
    for (const Terrain& terrain :
         {Terrain{"hills", Hills, 0}, Terrain{"waves", Waves, 0}, Terrain{"saddle", Saddle, 0},
          Terrain{"rough", Rough, 0}, Terrain{"hills, error 0.1 of the spacing", Hills, 0.1},
          Terrain{"hills, error 0.3 of the spacing", Hills, 0.3}}) {
        PrintTerrain(terrain);
    }
    return 0;
}
