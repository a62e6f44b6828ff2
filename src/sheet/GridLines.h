// The lines of equal easting and of equal northing on a sheet: their spacing, and where they cross
// the frame.
//
// Data: the layout of a sheet. Method: a coordinate is a linear function of the place on the paper,
// so a line is the place where that function has a multiple of the spacing.
#pragma once

#include "sheet/SheetLayout.h"

#include <string>
#include <vector>

namespace terravo {

/// 1, 2 or 5 times a power of ten.
/// @param atLeast  above 0.
double RoundNumber(double atLeast);

/// Round distance between grid lines, data units: 1, 2 or 5 times a power of ten, 40 to 100
/// millimetres on the paper, less only where the map is small.
double GridSpacing(const SheetLayout& layout);

/// The multiples of a spacing from one value to another; none where they cannot be told apart.
std::vector<double> MultiplesWithin(double from, double to, double spacing);

/// A value with as many decimals as the spacing needs.
std::string GridValueText(double value, double spacing, char decimalSeparator);

/// An interval, a distance, a scale: 6 decimals at most, more for what is less than 0.001.
std::string ShortNumberText(double value, char decimalSeparator);

/// Easting or northing over the paper.
class GridCoordinate {
public:
    GridCoordinate(const SheetLayout& layout, bool isEasting);

    [[nodiscard]] bool IsEasting() const { return isEasting_; }
    [[nodiscard]] double At(SheetPoint place) const {
        return atMiddle_ + toTheRight_ * (place.x - middle_.x) + down_ * (place.y - middle_.y);
    }
    /// Where along a horizontal line the coordinate has a value.
    [[nodiscard]] double XOf(double value, double y) const {
        return middle_.x + (value - atMiddle_ - down_ * (y - middle_.y)) / toTheRight_;
    }
    /// Where along an upright line it has it.
    [[nodiscard]] double YOf(double value, double x) const {
        return middle_.y + (value - atMiddle_ - toTheRight_ * (x - middle_.x)) / down_;
    }
    /// Its growth per millimetre.
    [[nodiscard]] double ToTheRight() const { return toTheRight_; }
    [[nodiscard]] double Down() const { return down_; }

private:
    bool isEasting_;
    SheetPoint middle_; // of the map
    double atMiddle_;
    double toTheRight_;
    double down_;
};

/// The coordinate whose lines cross the horizontal sides of the frame more steeply: that of the
/// ticks there. The other one has the upright sides.
GridCoordinate AlongHorizontalSides(const SheetLayout& layout);
GridCoordinate AlongUprightSides(const SheetLayout& layout);

} // namespace terravo
