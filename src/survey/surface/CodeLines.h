// Breaklines out of the codes of points.
//
// Data: the points in file order with their codes, and which codes make lines. Method: points of
// one code follow each other in one line until a mark begins another, ends it or closes it. A mark
// is the last word of a code, behind a blank, "." or "/": B, BEG, BEGIN, ST or START begins a line,
// E or END ends it, C, CL or CLOSE ends and closes it, in any case.
#pragma once

#include "survey/PointSet.h"
#include "survey/surface/LineCollector.h"

#include <string>
#include <vector>

namespace terravo {

/// The source of lines that were made from codes, in the place of a file.
inline constexpr const char* kCodesSource = "codes";

/// A code that makes lines, as many as its marks say.
struct CodeCount {
    std::string code;
    Index points = 0;
    Index lines = 0;       // that would be made
    bool hasMarks = false; // begin, end or close

    bool operator==(const CodeCount&) const = default;
};

/// The codes of the points, without their marks, the most frequent first, then by their bytes.
/// Points without a code do not count.
std::vector<CodeCount> CodesOf(const PointSet& points);

struct CodeLineReading {
    std::vector<SurfaceLine> lines;
    std::vector<std::string> remarks; // full sentences
};

/// Lines in the order in which they begin, each named by its code and with the source "codes".
/// Lines of one point, or of points in one place, are left out with a remark.
/// @param codes  that make lines, as they are written; "*" at the end stands for any ending:
///               "WALL*".
CodeLineReading LinesFromCodes(const PointSet& points, const std::vector<std::string>& codes);

} // namespace terravo
