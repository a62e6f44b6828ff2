#include "BenchData.h"

#include <charconv>
#include <cmath>
#include <map>
#include <numbers>
#include <random>
#include <utility>

namespace terravo::bench {
namespace {

constexpr double kSpacing = 10; // mean distance of neighbouring points, metres
constexpr PlanPoint kOrigin{500000, 4520000};
constexpr double kLinesApart = 5; // distance of survey lines in spacings along them

// The engine's sequence is fixed by the standard, the distributions' is not.
double Unit(std::mt19937_64& engine) {
    return static_cast<double>(engine() >> 11) * 0x1p-53;
}

// Height at a place given in parts of the square: hills of three sizes on a slope.
double Terrain(double u, double v) {
    using std::numbers::pi;
    const double ridges = 60 * std::sin(2 * pi * (1.3 * u + 0.2)) * std::cos(2 * pi * 1.1 * v);
    const double hills = 20 * std::sin(2 * pi * (3.7 * u + 2.1 * v));
    const double humps = 5 * std::cos(2 * pi * 9.3 * u) * std::sin(2 * pi * (8.9 * v + 0.4));
    return 300 + 80 * v + ridges + hills + humps;
}

PlanPoint RandomPlace(double side, std::mt19937_64& engine) {
    const double x = side * Unit(engine);
    return {x, side * Unit(engine)};
}

PlanPoint GridPlace(Index number, Index columns) {
    return {kSpacing * (number % columns), kSpacing * (number / columns)};
}

PlanPoint Turned(PlanPoint place) {
    constexpr double kAngle = 0.3; // radians
    return {place.x * std::cos(kAngle) - place.y * std::sin(kAngle),
            place.x * std::sin(kAngle) + place.y * std::cos(kAngle)};
}

PlanPoint LinePlace(Index number, Index pointsOnLine, double spacing, std::mt19937_64& engine) {
    const Index line = number / pointsOnLine;
    const Index onLine = number % pointsOnLine;
    const Index column = line % 2 == 0 ? onLine : pointsOnLine - 1 - onLine;
    const double alongOff = 0.3 * (Unit(engine) - 0.5);
    const double acrossOff = 0.5 * (Unit(engine) - 0.5);
    return {spacing * (column + alongOff), spacing * (kLinesApart * line + acrossOff)};
}

void Append(PointSet& points, PlanPoint place, double side) {
    const double z = Terrain(place.x / side, place.y / side);
    points.x.Append(kOrigin.x + place.x);
    points.y.Append(kOrigin.y + place.y);
    points.z.Append(z);
    points.extentX.Include(kOrigin.x + place.x);
    points.extentY.Include(kOrigin.y + place.y);
    points.extentZ.Include(z);
    ++points.count;
}

void AppendNumber(std::string& out, double value, Digits digits) {
    std::array<char, 40> text{};
    char* const end = text.data() + text.size();
    const auto written = digits == Digits::Full
                             ? std::to_chars(text.data(), end, value)
                             : std::to_chars(text.data(), end, value, std::chars_format::fixed, 3);
    out.append(text.data(), written.ptr);
}

} // namespace

std::string_view Name(Layout layout) {
    switch (layout) {
    case Layout::Random:
        return "random";
    case Layout::Grid:
        return "grid";
    case Layout::Lines:
        return "lines";
    case Layout::TurnedGrid:
        return "turned";
    }
    return {};
}

std::optional<Layout> LayoutFromName(std::string_view name) {
    for (const Layout layout : kLayouts) {
        if (Name(layout) == name) {
            return layout;
        }
    }
    return std::nullopt;
}

PointSet MakeSurvey(Layout layout, Index count) {
    std::mt19937_64 engine(20240917);
    const double side = kSpacing * std::sqrt(count);
    const auto columns = static_cast<Index>(std::lround(std::sqrt(count)));
    const auto pointsOnLine = static_cast<Index>(std::lround(std::sqrt(kLinesApart * count)));
    const double lineSpacing = kSpacing / std::sqrt(kLinesApart);
    PointSet points;
    for (Index i = 0; i < count; ++i) {
        switch (layout) {
        case Layout::Random:
            Append(points, RandomPlace(side, engine), side);
            break;
        case Layout::Grid:
            Append(points, GridPlace(i, columns), side);
            break;
        case Layout::Lines:
            Append(points, LinePlace(i, pointsOnLine, lineSpacing, engine), side);
            break;
        case Layout::TurnedGrid:
            Append(points, Turned(GridPlace(i, columns)), side);
            break;
        }
    }
    points.sourceName = std::string(Name(layout)) + "-" + std::to_string(count);
    return points;
}

const PointSet& KeptSurvey(Layout layout, Index count) {
    static std::map<std::pair<Layout, Index>, PointSet> kept;
    const auto [place, isNew] = kept.try_emplace({layout, count});
    if (isNew) {
        place->second = MakeSurvey(layout, count);
    }
    return place->second;
}

Array1<PlanPoint> PlanOf(const PointSet& points) {
    Array1<PlanPoint> plan(points.count);
    for (Index i = 1; i <= points.count; ++i) {
        plan[i] = {points.x[i], points.y[i]};
    }
    return plan;
}

std::string PointText(const PointSet& points, Digits digits) {
    std::string text;
    for (Index i = 1; i <= points.count; ++i) {
        AppendNumber(text, points.x[i], digits);
        text += ',';
        AppendNumber(text, points.y[i], digits);
        text += ',';
        AppendNumber(text, points.z[i], digits);
        text += '\n';
    }
    return text;
}

} // namespace terravo::bench
