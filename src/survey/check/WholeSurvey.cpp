#include "survey/check/WholeSurvey.h"

#include "survey/FileDecimals.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace terravo {
namespace {

struct Column {
    const char* name;
    const Array1<double>& values;
    const Extent& extent;
};

// Extents are not asked: a set may have been put together without them.
bool IsConstant(const Column& column, Index count) {
    const auto end = column.values.begin() + count;
    return std::all_of(column.values.begin(), end,
                       [&](double value) { return value == column.values[1]; });
}

// A grid of unit spacing counts too, but steps back with each row.
bool CountsLines(const Array1<double>& values, Index count) {
    constexpr Index kFewest = 10;
    constexpr double kMostGaps = 0.02;
    if (count < kFewest || values[1] != std::floor(values[1])) {
        return false;
    }
    Index gaps = 0;
    for (Index i = 2; i <= count; ++i) {
        const double step = values[i] - values[i - 1];
        gaps += step == 1 ? 0 : 1;
        if (step <= 0 || gaps > kMostGaps * count) {
            return false;
        }
    }
    return values[count] - values[1] <= (1 + kMostGaps) * count;
}

bool Within(const Extent& extent, double most) {
    return extent.min >= -most && extent.max <= most;
}

// In degrees neighbours are a few ten-thousandths apart while heights differ by metres: a slope
// that no ground has.
bool LooksLikeDegrees(const PointSet& points) {
    constexpr int kFewestDecimals = 4;
    constexpr double kSteepest = 20;
    const bool inRange = (Within(points.extentX, 180) && Within(points.extentY, 90)) ||
                         (Within(points.extentX, 90) && Within(points.extentY, 180));
    if (!inRange || points.count < 3) {
        return false;
    }
    const int decimals =
        std::max(FileDecimals(points.x, points.count), FileDecimals(points.y, points.count));
    const Bulk x = BulkOf(points.x, points.count);
    const Bulk y = BulkOf(points.y, points.count);
    const Bulk z = BulkOf(points.z, points.count);
    return decimals >= kFewestDecimals &&
           z.high - z.low > kSteepest * std::hypot(x.high - x.low, y.high - y.low);
}

double Outside(double value, const Bulk& bulk) {
    return std::max({0.0, bulk.low - value, value - bulk.high});
}

// Distance of each point from the box of the bulk, those inside left out; the farthest last.
std::vector<std::pair<double, Index>> OutsideBulk(const PointSet& points, const Bulk& x,
                                                  const Bulk& y) {
    const double reach = std::hypot(x.high - x.low, y.high - y.low);
    std::vector<std::pair<double, Index>> outside;
    for (Index i = 1; i <= points.count; ++i) {
        const double dx = Outside(points.x[i], x);
        const double dy = Outside(points.y[i], y);
        if (dx == 0 && dy == 0) {
            continue;
        }
        if (const double distance = std::hypot(dx, dy); distance > reach / 2) {
            outside.emplace_back(distance, i);
        }
    }
    std::sort(outside.begin(), outside.end());
    return outside;
}

// Those behind the first wide gap, which must leave a gap of half the survey's size, lie as far
// from its bulk as it is large, and be few: anything else is a survey of more than one site.
std::vector<Index> BehindGap(const std::vector<std::pair<double, Index>>& outside, double size,
                             Index count) {
    const auto most = static_cast<std::ptrdiff_t>(std::max(3.0, 0.01 * count));
    double before = size / 2;
    for (auto it = outside.begin(); it != outside.end(); ++it) {
        if (it->first > size && it->first - before > size / 2 && outside.end() - it <= most) {
            std::vector<Index> lone;
            std::transform(it, outside.end(), std::back_inserter(lone),
                           [](const auto& item) { return item.second; });
            return lone;
        }
        before = it->first;
    }
    return {};
}

} // namespace

Bulk BulkOf(const Array1<double>& values, Index count) {
    constexpr Index kMostLooks = 10000;
    std::vector<double> sample;
    for (Index i = 1; i <= count; i += count / kMostLooks + 1) {
        sample.push_back(values[i]);
    }
    std::sort(sample.begin(), sample.end());
    const auto at = [&](double part) {
        return sample[static_cast<std::size_t>(part * static_cast<double>(sample.size() - 1))];
    };
    return {at(0.05), at(0.95), at(0.25), at(0.75)};
}

void CheckColumns(const PointSet& points, FindingCollector& findings) {
    constexpr Index kFewestForConstant = 4;
    const Column columns[] = {{"x", points.x, points.extentX},
                              {"y", points.y, points.extentY},
                              {"z", points.z, points.extentZ}};
    for (const Column& column : columns) {
        if (points.count >= kFewestForConstant && IsConstant(column, points.count)) {
            const bool isHeight = &column.values == &points.z;
            findings.AddWhole(FindingKind::ConstantColumn,
                              isHeight ? Severity::Warning : Severity::Error,
                              {Text::SaysConstant, {column.name}});
        } else if (CountsLines(column.values, points.count)) {
            findings.AddWhole(FindingKind::RunningNumber, Severity::Warning,
                              {Text::SaysRunning, {column.name}});
        }
    }
    if (LooksLikeDegrees(points)) {
        findings.AddWhole(FindingKind::Degrees, Severity::Error, {Text::SaysDegrees, {}});
    }
}

Array1<char> FindLonePoints(const PointSet& points, FindingCollector& findings) {
    constexpr Index kFewest = 8;
    Array1<char> isLone(points.count, 0);
    if (points.count < kFewest) {
        return isLone;
    }
    const Bulk x = BulkOf(points.x, points.count);
    const Bulk y = BulkOf(points.y, points.count);
    const double size = std::hypot(x.high - x.low, y.high - y.low);
    std::vector<Index> lone = BehindGap(OutsideBulk(points, x, y), size, points.count);
    std::sort(lone.begin(), lone.end());
    for (const Index i : lone) {
        isLone[i] = 1;
        const bool isOrigin = points.x[i] == 0 && points.y[i] == 0;
        const Severity severity = isOrigin ? Severity::Error : Severity::Warning;
        findings.Add(FindingKind::LonePoint, severity, std::span(&i, 1), [&] {
            return Statement{Text::SaysLonePoint, {}};
        });
    }
    return isLone;
}

} // namespace terravo
