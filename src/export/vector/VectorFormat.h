// What a vector format is: how it is called, what it holds, who writes it and who reads it back.
//
// Data: one record a format; the list of them is in exchange/VectorFormats. Method: the functions
// of all formats have the same arguments, so that nobody needs to know which one it is.
#pragma once

#include "export/vector/VectorContent.h"
#include "util/OutputFile.h"
#include "util/TextCatalogue.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

enum class DxfVersion : unsigned char { R12, R2000 };

/// What the user may choose about a file; each format looks at what it knows.
struct VectorOptions {
    DxfVersion dxfVersion = DxfVersion::R2000;
    bool contoursIn3D = false;  // DXF: as 3D polylines
    bool layerPerLevel = false; // DXF: the height in the name of the layer
};

/// Writes the parts of the content that the format knows.
/// Throws AppError for content that the format cannot hold, and when the file cannot be written.
/// What had to be changed, such as a name, is told in `remarks`, one sentence each.
using VectorWriter = void (*)(OutputFile& out, const VectorContent& content,
                              const VectorOptions& options, std::vector<std::string>& remarks);

/// Reads a file back and compares it with what it was made from.
/// @return the first difference as a sentence, nothing when there is none.
/// Throws AppError when the file cannot be read.
using VectorCheck = std::optional<std::string> (*)(const std::string& path,
                                                   const VectorContent& content,
                                                   const VectorOptions& options);

/// Writes a format that is a folder of files, whole or not at all.
using VectorFolderWriter = void (*)(const OutputTarget& folder, const VectorContent& content,
                                    std::vector<std::string>& remarks);

struct VectorFormat {
    std::string_view option;      // of the batch program, and the key in settings: "dxf"
    std::string_view name;        // "DXF"
    std::string_view extension{}; // without a period; empty for a folder
    Text purpose{};               // what it is for, for menus
    std::string_view help;        // of the option, a sentence
    VectorParts known;            // parts that the format can hold
    VectorParts usual;            // those written where none are chosen
    VectorWriter write = nullptr;
    VectorCheck check = nullptr;              // null: the file is not read back
    VectorFolderWriter writeFolder = nullptr; // in place of both: the format is a folder
    bool isOfTriangles = false; // its contours are those of the triangles beside them, never smooth
};

/// Whether a file of such parts has lines that may be smooth.
inline bool TakesSmoothLines(const VectorFormat& format, const VectorParts& parts) {
    const VectorParts lines{VectorPart::Contours, VectorPart::IndexContours, VectorPart::Labels,
                            VectorPart::Bands};
    return !format.isOfTriangles && !parts.And(lines).IsEmpty();
}

} // namespace terravo
