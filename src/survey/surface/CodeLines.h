// Breaklines out of the codes of points.
//
// Data: the points in file order with their codes, and which codes make lines. Method: points of
// one code follow each other in one line until a mark begins another, ends it or closes it.
#pragma once

#include "survey/PointSet.h"
#include "survey/surface/SurfacePlan.h"

#include <string>
#include <vector>

namespace terravo {

/// A code that makes lines, as many as its marks say.
struct CodeCount {
    std::string code;
    Index points = 0;
    Index lines = 0;       // that would be made
    bool hasMarks = false; // begin, end or close
};

/// The codes of the points, without their marks, the most frequent first.
std::vector<CodeCount> CodesOf(const PointSet& points);

struct CodeLineReading {
    std::vector<SurfaceLine> lines;
    std::vector<std::string> remarks; // full sentences
};

/// @param codes  that make lines; "*" at the end stands for any ending: "WALL*".
CodeLineReading LinesFromCodes(const PointSet& points, const std::vector<std::string>& codes);

} // namespace terravo
