// The rule that rounds an axis: tick step, outward rounded limits, tick list.
//
// Data: the limits of one axis as doubles in data units, its range in single precision. Method: the
// step starts from a power of ten and is halved or doubled until 5 to 10 steps span the range; the
// limits then move outward to whole steps. The decisions are taken on the single-precision range,
// the limits stay double, so that large coordinates keep their place.
#pragma once

#include <string_view>
#include <vector>

namespace terravo::AxisRule {

/// Most grid lines across an axis: 10 steps and one more at each end after rounding outward.
inline constexpr int kMaxTicks = 13;

/// Lower and upper limit of an axis, data units.
struct Limits {
    double min = 0;
    double max = 0;
};

/// An axis ready to be drawn.
struct Axis {
    double min = 0;  ///< a whole number of steps
    double max = 0;  ///< a whole number of steps
    double step = 0; ///< greater than 0
    float range = 0; ///< max - min
};

/// v rounded to 5 decimals, halves to even. A value too large to have 5 decimals is kept.
double Round5(double v);

/// v itself when it is whole, else the next whole number above.
double Ceiling(double v);

/// The tick step for a range, such that 5 to 10 steps span it.
/// @throws AppError when the range is zero, negative or not finite.
double ChooseAxisStep(float range);

/// The axis for these limits: the step, and the limits moved outward to whole steps.
/// @throws AppError when the range has no step, or a result leaves single precision.
Axis AxisLimits(double min, double max);

/// The x limits, moved apart by 0.0001 when they are closer than that.
Limits WidenNarrow(Limits limits);

/// The y limits. When both print as the same label, they are moved apart by ten times the first
/// distance, counted up from 0.0001 by doubling, at which their labels differ; else kept.
/// @param labelFormat, separator  as for NumberText::FormatScreen.
/// @throws AppError when the labels stay the same within the range of numbers.
Limits WidenEqualLabels(Limits limits, std::string_view labelFormat, char separator);

/// The ticks from axis.min to axis.max, accumulated in single precision. Ends early when the step
/// is too small to move a single-precision tick; at most kMaxTicks.
std::vector<float> Ticks(const Axis& axis);

} // namespace terravo::AxisRule
