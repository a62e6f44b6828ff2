#include "sheet/SheetCurve.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace terravo {
namespace {

constexpr double kMostChords = 4096; // a cubic, whatever the tolerance
constexpr double kNoExtent = 1e-9;   // of a stretch: it is less than rounding adds

using Cubic = std::array<SheetPoint, 4>;

Cubic CubicAt(std::span<const SheetPoint> controls, std::size_t number) {
    const auto c = controls.subspan(3 * number).first<4>();
    return {c[0], c[1], c[2], c[3]};
}

SheetPoint Between(SheetPoint a, SheetPoint b, double t) {
    return {std::lerp(a.x, b.x, t), std::lerp(a.y, b.y, t)};
}

// With three equal parameters the place on a cubic; with others a control of one of its parts.
SheetPoint Blossom(const Cubic& c, double r, double s, double t) {
    const SheetPoint a = Between(c[0], c[1], r);
    const SheetPoint b = Between(c[1], c[2], r);
    const SheetPoint d = Between(c[2], c[3], r);
    return Between(Between(a, b, s), Between(b, d, s), t);
}

Cubic PartOf(const Cubic& c, double from, double to) {
    if (from <= 0 && to >= 1) {
        return c;
    }
    return {Blossom(c, from, from, from), Blossom(c, from, from, to), Blossom(c, from, to, to),
            Blossom(c, to, to, to)};
}

double Bend(SheetPoint a, SheetPoint b, SheetPoint c) {
    return std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y);
}

// Chords over equal steps leave a curve by no more than an eighth of its second derivative times
// the squared step.
int ChordsOf(const Cubic& c, double tolerance) {
    const double bend = std::max(Bend(c[0], c[1], c[2]), Bend(c[1], c[2], c[3]));
    return static_cast<int>(
        std::clamp(std::ceil(std::sqrt(0.75 * bend / tolerance)), 1.0, kMostChords));
}

bool IsNear(SheetPoint a, SheetPoint b, double near) {
    return std::fabs(a.x - b.x) <= near && std::fabs(a.y - b.y) <= near;
}

} // namespace

void LeaveOutTiny(std::vector<SheetPoint>& controls, double near) {
    if (controls.empty() || std::all_of(controls.begin(), controls.end(), [&](SheetPoint p) {
            return IsNear(p, controls.front(), near);
        })) {
        return;
    }
    const SheetPoint end = controls.back();
    std::size_t kept = 0; // place of the last vertex
    for (std::size_t i = 0; i + 3 < controls.size(); i += 3) {
        if (IsNear(controls[i + 1], controls[kept], near) &&
            IsNear(controls[i + 2], controls[kept], near) &&
            IsNear(controls[i + 3], controls[kept], near)) {
            continue;
        }
        for (int k = 1; k <= 3; ++k) {
            controls[++kept] = controls[i + static_cast<std::size_t>(k)];
        }
    }
    controls.resize(kept + 1);
    controls.back() = end;
}

void Flatten(std::span<const SheetPoint> controls, bool closed, double tolerance, FlatCurve& flat) {
    flat.points.push_back(controls.front());
    flat.places.push_back(0);
    for (std::size_t i = 0; i < CubicsOf(controls); ++i) {
        const Cubic cubic = CubicAt(controls, i);
        const int chords = ChordsOf(cubic, tolerance);
        for (int k = 1; k < chords; ++k) {
            const double t = static_cast<double>(k) / chords;
            flat.points.push_back(Blossom(cubic, t, t, t));
            flat.places.push_back(static_cast<double>(i) + t);
        }
        flat.points.push_back(cubic[3]);
        flat.places.push_back(static_cast<double>(i + 1));
    }
    if (closed) {
        flat.points.pop_back();
        flat.places.pop_back();
    }
}

void AppendStretch(std::span<const SheetPoint> controls, double from, double to,
                   std::vector<SheetPoint>& out) {
    bool isFirst = true;
    for (double number = std::floor(from); number < to; ++number) {
        const double begin = std::max(from - number, 0.0);
        const double end = std::min(to - number, 1.0);
        if (end - begin < kNoExtent) {
            continue;
        }
        const Cubic part = PartOf(
            CubicAt(controls, static_cast<std::size_t>(number) % CubicsOf(controls)), begin, end);
        out.insert(out.end(), part.begin() + (isFirst ? 0 : 1), part.end());
        isFirst = false;
    }
}

bool IsStraight(std::span<const SheetPoint, 4> cubic, double near) {
    const double dx = cubic[3].x - cubic[0].x;
    const double dy = cubic[3].y - cubic[0].y;
    const double length = std::hypot(dx, dy);
    return std::all_of(cubic.begin() + 1, cubic.begin() + 3, [&](SheetPoint p) {
        const double x = p.x - cubic[0].x;
        const double y = p.y - cubic[0].y;
        const double along = x * dx + y * dy;
        return std::fabs(x * dy - y * dx) <= near * length && along >= -near * length &&
               along <= (length + near) * length;
    });
}

} // namespace terravo
