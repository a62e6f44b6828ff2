// The lines in space that are asked for: hull, boundaries, breaklines.
//
// Data: lists of the content. Method: parts that are not asked for have no lines.
#pragma once

#include "export/vector/VectorContent.h"

#include <algorithm>
#include <span>

namespace terravo {

/// The lines of a part; none where it is not asked for.
/// @param part  Hull, Boundary or Breaklines.
inline std::span<const SpaceLine> LinesOf(const VectorContent& content, VectorPart part) {
    if (!content.parts.Has(part)) {
        return {};
    }
    return part == VectorPart::Hull       ? content.hull
           : part == VectorPart::Boundary ? content.boundary
                                          : content.breaklines;
}

/// Whether a line that is asked for has fewer than two vertices, which no format holds.
inline bool HasShortLine(const VectorContent& content) {
    const auto hasShort = [&content](VectorPart part) {
        const std::span<const SpaceLine> lines = LinesOf(content, part);
        return std::any_of(lines.begin(), lines.end(),
                           [](const SpaceLine& line) { return line.vertices.size() < 2; });
    };
    return hasShort(VectorPart::Hull) || hasShort(VectorPart::Boundary) ||
           hasShort(VectorPart::Breaklines);
}

} // namespace terravo
