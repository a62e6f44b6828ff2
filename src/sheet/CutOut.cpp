#include "sheet/CutOut.h"

#include "sheet/SheetCurve.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

constexpr double kLeastOfCurve = 1e-5; // millimetres: less is nothing but rounding

class MeasuredLine {
public:
    MeasuredLine(std::span<const SheetPoint> line, bool closed) : line_(line) {
        const std::size_t sides = closed ? line.size() : line.size() - 1;
        distance_.reserve(sides + 1);
        distance_.push_back(0);
        for (std::size_t i = 0; i < sides; ++i) {
            const SheetPoint a = line[i];
            const SheetPoint b = At(i + 1);
            distance_.push_back(distance_.back() + std::hypot(b.x - a.x, b.y - a.y));
        }
    }
    [[nodiscard]] double Length() const { return distance_.back(); }

    // On the curve, once round or less beyond its end for distances beyond the length.
    [[nodiscard]] double PlaceOnCurve(double distance, const CurveOfLine& curve) const {
        const auto round = static_cast<double>(CubicsOf(curve.controls));
        if (distance > Length()) {
            return PlaceOnCurve(distance - Length(), curve) + round;
        }
        const std::size_t i = SideOf(distance);
        const double end =
            i + 1 < curve.places.size() ? curve.places[i + 1] : curve.places.front() + round;
        return std::lerp(curve.places[i], end, PartOfSide(i, distance));
    }

    // From one distance to another one, at most once round.
    [[nodiscard]] std::vector<SheetPoint> Between(double from, double to) const {
        std::vector<SheetPoint> points{PlaceAt(from)};
        const double length = Length();
        std::size_t i = SideOf(from) + 1;
        double turn = 0;
        while (distance_[i] + turn < to) {
            if (distance_[i] + turn > from) {
                points.push_back(At(i));
            }
            if (++i == distance_.size()) {
                i = 1;
                turn += length;
            }
        }
        points.push_back(PlaceAt(to > length ? to - length : to));
        return points;
    }

private:
    [[nodiscard]] SheetPoint At(std::size_t i) const { return line_[i % line_.size()]; }
    [[nodiscard]] std::size_t SideOf(double distance) const {
        const auto above = std::upper_bound(distance_.begin(), distance_.end(), distance);
        const auto place = static_cast<std::size_t>(above - distance_.begin());
        return std::min(place, distance_.size() - 1) - 1;
    }
    [[nodiscard]] double PartOfSide(std::size_t i, double distance) const {
        const double side = distance_[i + 1] - distance_[i];
        return side > 0 ? std::clamp((distance - distance_[i]) / side, 0.0, 1.0) : 0;
    }
    [[nodiscard]] SheetPoint PlaceAt(double distance) const {
        const std::size_t i = SideOf(distance);
        const double t = PartOfSide(i, distance);
        const SheetPoint a = At(i);
        const SheetPoint b = At(i + 1);
        return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
    }

    std::span<const SheetPoint> line_;
    std::vector<double> distance_;
};

} // namespace

void AddWithout(std::span<const SheetPoint> line, bool closed, std::vector<Stretch> out,
                SheetScene& scene, const CurveOfLine& curve) {
    const bool isCurve = !curve.controls.empty();
    if (out.empty()) {
        scene.AddPiece(line, closed);
        if (isCurve) {
            const double first = curve.places.front();
            scene.CurveLastPiece(curve.controls, first,
                                 closed ? first + static_cast<double>(CubicsOf(curve.controls))
                                        : curve.places.back());
        }
        return;
    }
    const MeasuredLine measured(line, closed);
    const double length = measured.Length();
    std::sort(out.begin(), out.end(),
              [](const Stretch& a, const Stretch& b) { return a.from < b.from; });
    const double least = isCurve ? kLeastOfCurve : 0;
    const auto add = [&](double from, double to) {
        if (to - from > least) {
            scene.AddPiece(measured.Between(from, to), false);
            if (isCurve) {
                scene.CurveLastPiece(curve.controls, measured.PlaceOnCurve(from, curve),
                                     measured.PlaceOnCurve(to, curve));
            }
        }
    };
    if (!closed) {
        double from = 0;
        for (const Stretch& stretch : out) {
            add(from, stretch.from);
            from = stretch.to;
        }
        add(from, length);
        return;
    }
    for (std::size_t i = 0; i < out.size(); ++i) {
        const double begin = out[i].to > length ? out[i].to - length : out[i].to;
        const double next = out[(i + 1) % out.size()].from;
        add(begin, next >= begin ? next : next + length);
    }
}

} // namespace terravo
