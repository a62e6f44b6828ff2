// The survey points that the whole program works on.
//
// Data: three parallel arrays counted from 1, in file order, duplicates kept, and the bounds.
// Method: `count` governs every reader, never the length of an array: a file without points sets
// the count to 0 and leaves the arrays of the file before in place.
#pragma once

#include "survey/PointLabels.h"
#include "util/Array1.h"

#include <string>

namespace terravo {

/// Lowest and highest value of one coordinate; reversed until a value has been taken in.
struct Extent {
    double min = 1e38;
    double max = -1e38;

    /// Each test on its own, strict: an equal value changes nothing.
    void Include(double value) {
        if (value < min) {
            min = value;
        }
        if (value > max) {
            max = value;
        }
    }

    bool operator==(const Extent&) const = default;
};

struct PointSet {
    Index count = 0;
    Array1<double> x;
    Array1<double> y;
    Array1<double> z; // height
    Extent extentX;
    Extent extentY;
    Extent extentZ;
    PointLabels labels;       // where the file has them
    std::string sourceFolder; // of the last file chosen by the user, ending in a separator
    std::string sourceName;   // file name without folder of the last file read

    /// Adds a point behind the last one of the arrays and widens the bounds.
    void Append(double px, double py, double pz) {
        ++count;
        x.Append(px);
        y.Append(py);
        z.Append(pz);
        extentX.Include(px);
        extentY.Include(py);
        extentZ.Include(pz);
    }
};

} // namespace terravo
