#include "sheet/LineCourse.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

double Distance(SheetPoint a, SheetPoint b) {
    return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
}

SheetPoint Between(SheetPoint a, SheetPoint b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
}

} // namespace

double LengthOf(std::span<const SheetPoint> points, bool closed) {
    double length = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        length += Distance(points[i - 1], points[i]);
    }
    return closed && !points.empty() ? length + Distance(points.back(), points.front()) : length;
}

void TakeSamples(std::span<const SheetPoint> points, bool closed, double length, double about,
                 Samples& samples) {
    samples.places.clear();
    if (!(length > 0)) {
        return;
    }
    const auto steps = static_cast<std::size_t>(std::ceil(length / about));
    const std::size_t count = closed ? steps : steps + 1;
    samples.step = length / static_cast<double>(steps);
    samples.places.reserve(count);
    double walked = 0;
    double next = 0;
    for (std::size_t i = 1; i < points.size() + (closed ? 1 : 0); ++i) {
        const SheetPoint a = points[i - 1];
        const SheetPoint b = points[i == points.size() ? 0 : i];
        const double piece = Distance(a, b);
        while (next < walked + piece && samples.places.size() < count) {
            samples.places.push_back(Between(a, b, (next - walked) / piece));
            next = samples.step * static_cast<double>(samples.places.size());
        }
        walked += piece;
    }
    // What rounding has kept back.
    samples.places.resize(count, closed ? points.front() : points.back());
}

LineCourse::LineCourse(std::span<const SheetPoint> samples, bool closed, double step)
    : samples_(samples), closed_(closed), step_(step), count_(static_cast<int>(samples.size())),
      origin_(samples.front()), sums_(samples.size() + 1) {
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double x = samples[i].x - origin_.x;
        const double y = samples[i].y - origin_.y;
        const Sums& s = sums_[i];
        sums_[i + 1] = {s.x + x, s.y + y, s.xx + x * x, s.xy + x * y, s.yy + y * y};
    }
}

SheetPoint LineCourse::At(int i) const {
    if (closed_) {
        i %= count_;
        i += i < 0 ? count_ : 0;
    }
    return samples_[static_cast<std::size_t>(i)];
}

// Of the places from 0 to i - 1; round after round of a closed line.
LineCourse::Sums LineCourse::UpTo(int i) const {
    if (i >= 0 && i <= count_) {
        return sums_[static_cast<std::size_t>(i)];
    }
    const int rounds = i < 0 ? (i + 1) / count_ - 1 : i / count_;
    const Sums& part = sums_[static_cast<std::size_t>(i - rounds * count_)];
    const Sums& round = sums_.back();
    return {part.x + rounds * round.x, part.y + rounds * round.y, part.xx + rounds * round.xx,
            part.xy + rounds * round.xy, part.yy + rounds * round.yy};
}

StraightFit LineCourse::Fit(int centre, int reach) const {
    const int first = closed_ ? centre - reach : std::max(centre - reach, 0);
    const int last = closed_ ? centre + reach : std::min(centre + reach, count_ - 1);
    const Sums before = UpTo(first);
    const Sums upTo = UpTo(last + 1);
    const double n = last + 1 - first;
    const double x = (upTo.x - before.x) / n;
    const double y = (upTo.y - before.y) / n;
    const double xx = (upTo.xx - before.xx) / n - x * x;
    const double xy = (upTo.xy - before.xy) / n - x * y;
    const double yy = (upTo.yy - before.yy) / n - y * y;
    // Eigenvalues and the vector of the larger one.
    const double half = (xx - yy) / 2;
    const double root = std::sqrt(half * half + xy * xy);
    const double spread = std::sqrt(std::max(0.0, (xx + yy) / 2 - root));
    SheetPoint along = half >= 0 ? SheetPoint{root + half, xy} : SheetPoint{xy, root - half};
    const double size = std::sqrt(along.x * along.x + along.y * along.y);
    along = size > 0 ? SheetPoint{along.x / size, along.y / size} : SheetPoint{1, 0};
    const SheetPoint a = At(first);
    const SheetPoint b = At(last);
    if ((b.x - a.x) * along.x + (b.y - a.y) * along.y < 0) {
        along = {-along.x, -along.y};
    }
    return {{origin_.x + x, origin_.y + y}, along, spread};
}

} // namespace terravo
