// Writes a point file to standard output.
//
// Data: a survey of the benchmarks, or an awkward set: one that is hard by its shape, by its order,
// or by both. Method: the awkward ones are made place by place and written with every digit, so
// that what was meant to lie on one line or circle does, up to the rounding of its coordinates.
#include "BenchData.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <numbers>
#include <random>
#include <string_view>
#include <vector>

namespace {

using namespace terravo;
using Places = std::vector<PlanPoint>;

constexpr double kTwoPi = 2 * std::numbers::pi;

// Places on a curve that is given over 0 to 1.
template <class Curve>
Places Along(Index count, Curve curve) {
    Places places;
    for (Index i = 0; i < count; ++i) {
        places.push_back(curve(static_cast<double>(i) / count));
    }
    return places;
}

Places Random(Index count) {
    const PointSet points = bench::MakeSurvey(bench::Layout::Random, count);
    Places places;
    for (Index i = 1; i <= count; ++i) {
        places.push_back({points.x[i], points.y[i]});
    }
    return places;
}

// Rows of a square grid, all in the same direction.
Places Grid(Index count, double spacing, double turn) {
    const auto columns = static_cast<Index>(std::lround(std::sqrt(count)));
    Places places;
    for (Index i = 0; i < count; ++i) {
        const double x = spacing * (i % columns);
        const double y = spacing * (i / columns);
        places.push_back({1000 + x * std::cos(turn) - y * std::sin(turn),
                          2000 + x * std::sin(turn) + y * std::cos(turn)});
    }
    return places;
}

// Steps of a decimetre, each coordinate the double next to its decimal.
Places DecimalGrid(Index count) {
    Places places = Grid(count, 1, 0);
    for (PlanPoint& p : places) {
        p = {p.x / 10, p.y / 10};
    }
    return places;
}

PlanPoint OnCircle(double t) {
    return {1000 + 500 * std::cos(kTwoPi * t), 2000 + 500 * std::sin(kTwoPi * t)};
}

PlanPoint OnParabola(double t) {
    return {1 + t, 1 + t * t};
}

// A thousand turns outwards.
PlanPoint OnSpiral(double t) {
    const double radius = 10000 * std::sqrt(t);
    const double angle = kTwoPi * 1000 * std::sqrt(t);
    return {20000 + radius * std::cos(angle), 20000 + radius * std::sin(angle)};
}

// Three corners about all others, a row, then places above its middle that come nearer and nearer:
// each new one takes the whole row over from the one before. In small units the fixed tolerance
// takes them for ties.
Places RowThenApproach(Index count, double scale) {
    Places places{{1, 1}, {5, 1}, {1, 5}};
    for (Index i = 0; i < count - 3; ++i) {
        const bool inRow = i < count / 2;
        const double t = 2.0 * (inRow ? i : i - count / 2) / count;
        places.push_back(inRow ? PlanPoint{2.5 + t, 1.5} : PlanPoint{3.0001, 2.9 - 1.3 * t});
    }
    for (PlanPoint& p : places) {
        p = {scale * p.x, scale * p.y};
    }
    return places;
}

bool IsFurtherWest(const PlanPoint& a, const PlanPoint& b) {
    return a.x < b.x;
}

Places SortedAlongX(Index count) {
    Places places = Random(count);
    std::sort(places.begin(), places.end(), IsFurtherWest);
    return places;
}

// From corner to opposite corner and back again, each time a little less far.
Places ZigZag(Index count) {
    Places sorted = Random(count);
    std::sort(sorted.begin(), sorted.end(),
              [](const PlanPoint& a, const PlanPoint& b) { return a.x + a.y < b.x + b.y; });
    Places places;
    for (std::size_t low = 0, high = sorted.size(); low < high;) {
        places.push_back(sorted[low++]);
        if (low < high) {
            places.push_back(sorted[--high]);
        }
    }
    return places;
}

Places OnLine(Index count) {
    Places places;
    for (Index i = 1; i <= count; ++i) {
        places.push_back({1.0 * i, 2.0 * i});
    }
    return places;
}

Places NearlyOnLine(Index count) {
    std::mt19937_64 engine(7);
    return Along(count, [&](double t) {
        const double off = 1e-12 * (static_cast<double>(engine() >> 11U) * 0x1p-53 - 0.5);
        return PlanPoint{1 + t, 1 + 0.7 * t + off};
    });
}

Places Shuffled(Places places) {
    std::mt19937_64 engine(11);
    for (std::size_t i = places.size(); i > 1; --i) {
        std::swap(places[i - 1], places[engine() % i]);
    }
    return places;
}

Places Reversed(Places places) {
    std::reverse(places.begin(), places.end());
    return places;
}

struct AwkwardSet {
    std::string_view name;
    Places (*make)(Index count);
};

constexpr std::array kAwkwardSets{
    AwkwardSet{"one-place",
               [](Index n) {
                   return Places(static_cast<std::size_t>(n), {3, 4});
               }},
    AwkwardSet{"two-places",
               [](Index n) {
                   Index i = 0;
                   return Along(n, [&](double) { return PlanPoint{3.0 + i++ % 2, 4}; });
               }},
    AwkwardSet{"line", OnLine},
    AwkwardSet{"nearly-line", NearlyOnLine},
    AwkwardSet{"nearly-line-shuffled", [](Index n) { return Shuffled(NearlyOnLine(n)); }},
    AwkwardSet{"circle", [](Index n) { return Along(n, OnCircle); }},
    AwkwardSet{"circle-shuffled", [](Index n) { return Shuffled(Along(n, OnCircle)); }},
    AwkwardSet{"parabola", [](Index n) { return Along(n, OnParabola); }},
    AwkwardSet{"parabola-shuffled", [](Index n) { return Shuffled(Along(n, OnParabola)); }},
    AwkwardSet{"spiral-out", [](Index n) { return Along(n, OnSpiral); }},
    AwkwardSet{"spiral-in", [](Index n) { return Reversed(Along(n, OnSpiral)); }},
    AwkwardSet{"sorted", SortedAlongX},
    AwkwardSet{"zigzag", ZigZag},
    AwkwardSet{"approach", [](Index n) { return RowThenApproach(n, 1000); }},
    AwkwardSet{"approach-refused", [](Index n) { return RowThenApproach(n, 1); }},
    AwkwardSet{"turned-grid", [](Index n) { return Grid(n, 10, 0.3); }},
    AwkwardSet{"turned-grid-shuffled", [](Index n) { return Shuffled(Grid(n, 10, 0.3)); }},
    AwkwardSet{"decimal-grid", DecimalGrid},
    AwkwardSet{"decimal-grid-shuffled", [](Index n) { return Shuffled(DecimalGrid(n)); }},
};

std::string AwkwardText(const AwkwardSet& set, Index count) {
    const Places places = set.make(count);
    const auto [west, east] = std::minmax_element(places.begin(), places.end(), IsFurtherWest);
    const double wave = kTwoPi / std::max(east->x - west->x, 1e-9);
    PointSet points;
    for (const PlanPoint& place : places) {
        points.Append(place.x, place.y, 100 + 50 * std::sin(wave * (place.x - west->x)));
    }
    return bench::PointText(points, bench::Digits::Full);
}

// Empty when the arguments do not say what to make.
std::string TextFor(int argc, char** argv) {
    const bool full = argc == 4 && std::strcmp(argv[3], "full") == 0;
    if (argc != 3 && !full) {
        return {};
    }
    const char* const end = argv[2] + std::strlen(argv[2]);
    Index count = 0;
    const auto read = std::from_chars(argv[2], end, count);
    if (read.ec != std::errc{} || read.ptr != end || count <= 0) {
        return {};
    }
    if (const auto layout = bench::LayoutFromName(argv[1])) {
        return bench::PointText(bench::MakeSurvey(*layout, count),
                                full ? bench::Digits::Full : bench::Digits::Millimetres);
    }
    const auto set = std::find_if(kAwkwardSets.begin(), kAwkwardSets.end(),
                                  [&](const AwkwardSet& s) { return s.name == argv[1]; });
    return set == kAwkwardSets.end() ? std::string{} : AwkwardText(*set, count);
}

} // namespace

int main(int argc, char** argv) {
    const std::string text = TextFor(argc, argv);
    if (text.empty()) {
        std::fputs("usage: make_points random|grid|lines COUNT [full]\n       make_points", stderr);
        for (const AwkwardSet& set : kAwkwardSets) {
            std::fprintf(stderr, " %s", set.name.data());
        }
        std::fputs(" COUNT\n", stderr);
        return 2;
    }
    const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return whole && std::fflush(stdout) == 0 ? 0 : 1;
}
