// Surface lines as text, to compare with.
#pragma once

#include "survey/surface/SurfacePlan.h"

#include <sstream>
#include <string>
#include <vector>

namespace terravo::test {

/// One text line each: "2 Wall closed: 1,2,3 4,5,6" with the line of the file first, where it is
/// known, and no third number where a vertex has no height.
inline std::string TextOf(const std::vector<SurfaceLine>& lines) {
    std::ostringstream text;
    text.precision(12);
    for (const SurfaceLine& line : lines) {
        std::string head = line.fileLine > 0 ? std::to_string(line.fileLine) : std::string();
        for (const std::string& word :
             {line.line.name, std::string(line.line.closed ? "closed" : "")}) {
            head += (head.empty() || word.empty() ? "" : " ") + word;
        }
        text << head << ':';
        for (const SpacePoint& v : line.line.vertices) {
            text << ' ' << v.x << ',' << v.y;
            if (HasHeight(v)) {
                text << ',' << v.z;
            }
        }
        text << '\n';
    }
    return text.str();
}

} // namespace terravo::test
