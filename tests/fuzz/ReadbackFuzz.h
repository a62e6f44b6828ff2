// What holds for the readers that check vector files, whatever the bytes.
//
// Data: the input is a file, said to be of a small content. Method: the reader may find a
// difference or none, but never ends otherwise; a file that is verified for the content is not
// verified for one that differs from it in a single value.
#pragma once

#include "export/vector/VectorFormat.h"
#include "fuzz/FuzzInput.h"
#include "support/VectorFiles.h"

#include <functional>
#include <span>

namespace terravo::fuzz {

using ContentChange = std::function<void(VectorContent&)>;

/// Changes of single values that every format with lines, points and triangles must notice.
inline std::vector<ContentChange> ChangesOfContent() {
    return {
        [](VectorContent& c) { c.points[0].x += 1e-9; },
        [](VectorContent& c) { c.points[3].y += 1e-9; },
        [](VectorContent& c) { c.points[4].z -= 1; },
        [](VectorContent& c) { c.points.pop_back(); },
        [](VectorContent& c) { std::swap(c.triangles[0], c.triangles[1]); },
        [](VectorContent& c) {
            c.triangles[1].vertices = {4, 1, 3};
        },
        [](VectorContent& c) { c.levels[1].value = 2.75; },
        [](VectorContent& c) { c.contourVertices[2].y += 1e-9; },
        [](VectorContent& c) { c.contours[0].count = 2; },
        [](VectorContent& c) { c.hull[0].vertices[1].z = 7; },
        [](VectorContent& c) { c.boundary[1].vertices.pop_back(); },
        [](VectorContent& c) { c.breaklines[0].vertices[1].x = -14; },
        [](VectorContent& c) { c.epsg = 25833; },
        [](VectorContent& c) { c.pointLabels = PointLabels(); },
        [](VectorContent& c) { c.name = "Hill_2"; },
    };
}

/// One run of a reader on a file of any bytes.
inline void CheckReadback(VectorCheck check, std::span<const ContentChange> changes,
                          const std::uint8_t* data, std::size_t size) {
    static const VectorContent content = test::RichContent();
    static const test::TemporaryFolder folder;
    const std::string path = folder.Write("file", TextOf(data, size));
    const auto difference = check(path, content, VectorOptions());
    Require(!difference || !difference->empty(), "a difference is told");
    if (difference) {
        return;
    }
    for (const ContentChange& change : changes) {
        VectorContent other = content;
        change(other);
        Require(check(path, other, VectorOptions()).has_value(),
                "what is true of one content is not true of another");
    }
}

} // namespace terravo::fuzz
