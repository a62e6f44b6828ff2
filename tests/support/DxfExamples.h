// Drawings for the tests of DXF: content with everything that a drawing can have, written out.
#pragma once

#include "export/vector/DxfWriter.h"
#include "support/TemporaryFolder.h"
#include "support/VectorExamples.h"

namespace terravo::test {

/// The small content with index contours, values and the texts of points.
inline VectorContent DrawingContent() {
    VectorContent content = SmallContent();
    for (const VectorPart part : {VectorPart::IndexContours, VectorPart::Labels,
                                  VectorPart::Numbers, VectorPart::Codes, VectorPart::Heights}) {
        content.parts.Add(part);
    }
    content.labels = {{1, {5, 2}, 0}, {2, {6.125, 4}, -0.75}};
    for (const char* const name : {"P%%d1", "H\xC3\xB6he", "\xD0\x96 a^J", "", "\\U+0041 50%"}) {
        content.pointLabels.Append(name, *name == 'P' ? "" : "tree \xE2\x82\xAC");
    }
    return content;
}

/// Every choice of the options.
inline std::vector<VectorOptions> AllDxfOptions() {
    std::vector<VectorOptions> all;
    for (const DxfVersion version : {DxfVersion::R12, DxfVersion::R2000}) {
        for (const bool in3D : {false, true}) {
            for (const bool perLevel : {false, true}) {
                VectorOptions options;
                options.dxfVersion = version;
                options.contoursIn3D = in3D;
                options.layerPerLevel = perLevel;
                all.push_back(options);
            }
        }
    }
    return all;
}

/// Writes a drawing and returns its bytes.
inline std::string DxfOf(const TemporaryFolder& folder, const VectorContent& content,
                         const VectorOptions& options,
                         std::vector<std::string>* remarks = nullptr) {
    std::vector<std::string> ignored;
    OutputFile file(folder.File("drawing.dxf"));
    WriteDxf(file, content, options, remarks != nullptr ? *remarks : ignored);
    file.Commit();
    return folder.Read("drawing.dxf");
}

} // namespace terravo::test
