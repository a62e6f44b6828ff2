// Content of vector files, made by hand, and such files as texts.
#pragma once

#include "export/vector/VectorFormat.h"
#include "support/TemporaryFolder.h"

#include <optional>
#include <string>
#include <vector>

namespace terravo::test {

/// Two triangles and a point beside them that no triangle uses, contours of two levels, two bands
/// (one of two polygons, one with a hole), a hull, a boundary with a hole, a breakline, names and
/// codes; every part is asked for.
inline VectorContent RichContent() {
    VectorContent content;
    content.name = "Hill_1";
    content.epsg = 25832;
    for (unsigned part = 0; part < kVectorPartCount; ++part) {
        content.parts.Add(static_cast<VectorPart>(part));
    }
    content.points = {{10, 20, 1.5}, {14, 20, 2.25}, {14, 24, 3}, {10, 24, 2}, {14, 20, 9}};
    content.pointLabels.Append("A", "tree");
    content.pointLabels.Append("", "");
    content.pointLabels.Append("B <&> \"C\"\\", "");
    content.pointLabels.Append("D", "wall \xC3\xBC");
    content.pointLabels.Append("E", "");
    content.triangles = {{{1, 2, 3}, {0, 0, 2}}, {{1, 3, 4}, {1, 0, 0}}};
    content.levels = {{2, "2", true}, {2.5, "2.5", false}};
    content.contourVertices = {{10, 24}, {11.5, 21.5}, {13, 20}, {12, 22}, {13, 22}, {12.5, 23}};
    content.contours = {{0, 3, 1, false}, {3, 3, 2, true}};
    content.bands = {{1.5,
                      2,
                      {{10, 20}, {13, 20}, {10, 24}, {13, 23}, {14, 23}, {14, 24}},
                      {{{0, 3}, {}}, {{3, 3}, {}}}},
                     {2,
                      3,
                      {{13, 20}, {14, 20}, {14, 24}, {10, 24}, {12, 22}, {12.5, 23}, {13, 22}},
                      {{{0, 4}, {{4, 3}}}}}};
    content.hull = {{{content.points.begin(), content.points.begin() + 4}, true, "rim"}};
    content.boundary = {{{{12, 21, 1}, {13, 21, 1}, {13, 23, 1}}, true, "hole"},
                        {{{9, 19, 1}, {9, 25, 1}, {15, 25, 1}, {15, 19, 1}}, true, "limit"}};
    content.breaklines = {{{{10, 20, 1.5}, {14, 24, 3}}, false, "edge"},
                          {{{10, 20, 1.5}, {14, 20, 2.25}, {14, 24, 3}, {10, 20, 1.5}}, false, ""}};
    return content;
}

/// The file that a writer makes; the remarks are added.
inline std::string FileOf(VectorWriter write, const VectorContent& content,
                          std::vector<std::string>* remarks = nullptr) {
    const TemporaryFolder folder;
    OutputFile file(folder.File("file"));
    std::vector<std::string> unheard;
    write(file, content, VectorOptions(), remarks != nullptr ? *remarks : unheard);
    file.Commit();
    return folder.Read("file");
}

/// What a check says of a file with that text.
inline std::optional<std::string> CheckText(VectorCheck check, const std::string& text,
                                            const VectorContent& content) {
    static const TemporaryFolder folder;
    return check(folder.Write("file", text), content, VectorOptions());
}

/// Lines with their ends.
inline std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
        lines.push_back(text.substr(at, end - at));
        at = end;
    }
    return lines;
}

} // namespace terravo::test
