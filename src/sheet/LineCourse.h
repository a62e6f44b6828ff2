// The course of a line, to ask how straight it runs somewhere.
//
// Data: places at equal steps along the line, and the running sums of their coordinates and
// products. Method: the straight line that fits a stretch best, by the squares of the distances,
// comes from differences of the sums: a stretch costs the same however long it is.
#pragma once

#include "sheet/SheetScene.h"

#include <cstddef>
#include <span>
#include <vector>

namespace terravo {

/// Millimetres along a line.
double LengthOf(std::span<const SheetPoint> points, bool closed);

/// Places at equal steps along a line. An open line has its first and its last point among them; of
/// a closed one the step from the last place leads to the first.
struct Samples {
    std::vector<SheetPoint> places;
    double step = 0; // mm
};

/// Walks a line in steps of about so many millimetres. No place when the line has no length.
void TakeSamples(std::span<const SheetPoint> points, bool closed, double length, double about,
                 Samples& samples);

/// A straight line through a stretch.
struct StraightFit {
    SheetPoint middle;
    SheetPoint along;  // unit vector in the direction of travel
    double spread = 0; // root of the mean square of the distances from it, mm
};

class LineCourse {
public:
    /// @param samples  of the line; kept, and must not change meanwhile.
    LineCourse(std::span<const SheetPoint> samples, bool closed, double step);

    [[nodiscard]] bool IsClosed() const { return closed_; }
    [[nodiscard]] double Step() const { return step_; }
    [[nodiscard]] int Count() const { return count_; }
    [[nodiscard]] double Length() const { return step_ * (closed_ ? count_ : count_ - 1); }

    /// Place i; of a closed line any i, of an open one 0 <= i < Count().
    [[nodiscard]] SheetPoint At(int i) const;
    /// The fit through the places from centre - reach to centre + reach, as far as they exist.
    [[nodiscard]] StraightFit Fit(int centre, int reach) const;

private:
    struct Sums {
        double x = 0;
        double y = 0;
        double xx = 0;
        double xy = 0;
        double yy = 0;
    };

    [[nodiscard]] Sums UpTo(int i) const;

    std::span<const SheetPoint> samples_;
    bool closed_;
    double step_;
    int count_;
    SheetPoint origin_;
    std::vector<Sums> sums_; // of the places before i, at i
};

} // namespace terravo
