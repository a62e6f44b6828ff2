#include "export/QrzWriter.h"

#include "contour/SegmentFile.h"
#include "triangulation/MeshFile.h"
#include "util/AppError.h"
#include "util/NumberListReader.h"
#include "util/NumberText.h"
#include "util/OutputFile.h"
#include "util/modUtilita.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace terravo::QrzWriter {
namespace {

constexpr std::string_view kSeparator = "----------------------------------------------";
constexpr std::string_view kPointLayer = "Lay_Point";
constexpr const char* kMeshMark = "----";

void AppendLine(std::string& out, std::string_view text) {
    out += text;
    out += "\r\n";
}

void AppendNumberLine(std::string& out, Index number) {
    NumberText::AppendPrinted(out, std::int64_t{number});
    out += "\r\n";
}

void AppendPointLine(std::string& out, const SpacePoint& point) {
    NumberText::AppendPrintedLine(out, point.x, point.y, point.z);
}

void AppendHeader(std::string& out, std::optional<Index> layerCount, Index entityCount) {
    AppendLine(out, "N.Layer -");
    if (layerCount) {
        AppendNumberLine(out, *layerCount);
    } else {
        AppendLine(out, " 1");
    }
    AppendLine(out, "N.Entity -");
    AppendNumberLine(out, entityCount);
    AppendLine(out, "N.Block -");
    AppendLine(out, " 0");
    AppendLine(out, "N.Styles Dim.-");
    AppendLine(out, " 0");
    AppendLine(out, kSeparator);
}

[[noreturn]] void ThrowReadFailure(const NumberListReader& reader) {
    throw AppError(ErrorNumber::kDeviceIo, "QrzWriter", reader.Failure().Sentence());
}

double ReadNumber(NumberListReader& reader) {
    double value = 0;
    if (!reader.Read(value)) {
        ThrowReadFailure(reader);
    }
    return value;
}

SpacePoint ReadPoint(NumberListReader& reader) {
    SpacePoint point;
    point.x = ReadNumber(reader);
    point.y = ReadNumber(reader);
    point.z = ReadNumber(reader);
    return point;
}

void RequireOpen(NumberListReader& reader) {
    if (reader.AtEnd() && reader.HasFailed()) {
        ThrowReadFailure(reader);
    }
}

void ReportDone(RunState& state, ClipboardService& clipboard) {
    state.lastQrzExportPath = state.qrzExportPath;
    clipboard.SetText(state.qrzExportPath);
}

// --- Contour lines ---

// One run of segments of equal level, which becomes a layer.
struct Layer {
    std::string name;
    std::int64_t segmentCount = 0;
};

// First pass over the segments: writes the layer blocks and counts the segments of each layer.
// Nothing when the first level is exactly 0: it equals the level before the first, so no layer is
// open to count its segment in.
std::optional<std::vector<Layer>> WriteLayers(OutputFile& file, const std::string& segmentPath) {
    NumberListReader reader(segmentPath);
    RequireOpen(reader);
    std::vector<Layer> layers;
    double previousLevel = 0;
    while (!reader.AtEnd()) {
        const SpacePoint start = ReadPoint(reader);
        ReadPoint(reader);
        if (!modUtilita::IsExactly(start.z, previousLevel)) {
            previousLevel = start.z;
            // Layer numbers count from 1, layer names from 0.
            layers.push_back({"LL_" + std::to_string(layers.size()), 0});
            WriteQrzLayerBlock(file.Buffer(), static_cast<Index>(layers.size()),
                               layers.back().name);
            file.FlushWhenFull();
        }
        if (layers.empty()) {
            return std::nullopt;
        }
        ++layers.back().segmentCount;
    }
    if (reader.HasFailed()) {
        ThrowReadFailure(reader);
    }
    return layers;
}

// Second pass: each layer takes the segments that were counted for it.
void WriteSegments(OutputFile& file, const std::string& segmentPath,
                   const std::vector<Layer>& layers) {
    NumberListReader reader(segmentPath);
    for (const Layer& layer : layers) {
        for (std::int64_t i = 0; i < layer.segmentCount; ++i) {
            const SpacePoint start = ReadPoint(reader);
            const SpacePoint end = ReadPoint(reader);
            WriteQrzLineEntity(file.Buffer(), layer.name, start, end);
            file.FlushWhenFull();
        }
    }
}

// --- Triangles ---

struct Mesh {
    std::vector<std::array<Index, 3>> triangles;
    Array1<SpacePoint> points;
};

Index ReadIndex(NumberListReader& reader, Index most) {
    const double value = ReadNumber(reader);
    const Index index = modUtilita::RoundHalfEven(value);
    if (index < 0 || index > most) {
        throw AppError(
            ErrorNumber::kSubscript, "QrzWriter",
            "A number of the triangle file is out of range: " + NumberText::General(value) + ".");
    }
    return index;
}

constexpr Index kMostTriangles = 2147483647 / 3;

Mesh ReadMesh(const std::string& path) {
    NumberListReader reader(path);
    RequireOpen(reader);
    Mesh mesh;
    const Index triangleCount = ReadIndex(reader, kMostTriangles);
    for (Index t = 0; t < triangleCount; ++t) {
        std::array<Index, 3> corners{};
        for (Index& corner : corners) {
            corner = ReadIndex(reader, kMostTriangles);
        }
        mesh.triangles.push_back(corners);
    }
    std::string mark;
    if (!reader.ReadLine(mark)) {
        ThrowReadFailure(reader);
    }
    if (mark != kMeshMark) {
        throw AppError(ErrorNumber::kDeviceIo, "QrzWriter",
                       path + ": the line between triangles and points is missing.");
    }
    const Index pointCount = ReadIndex(reader, kMostTriangles);
    for (Index i = 0; i < pointCount; ++i) {
        mesh.points.Append(ReadPoint(reader));
    }
    return mesh;
}

const SpacePoint& CornerPoint(const Mesh& mesh, Index number) {
    if (number < 1 || number > mesh.points.UpperBound()) {
        throw AppError(ErrorNumber::kSubscript, "QrzWriter",
                       "A triangle has a corner that is no point: " + std::to_string(number) + ".");
    }
    return mesh.points[number];
}

void AppendTriangle(std::string& out, const Mesh& mesh, const std::array<Index, 3>& corners) {
    out += "Type Entity:\r\nPOLYLINE\r\nLayer:\r\n";
    AppendLine(out, kPointLayer);
    out += "Vertex:\r\n 3\r\nWidth:\r\n 0\r\nClosed : \r\n 1\r\nType :\r\n 0\r\n"
           "Lenght:\r\n 0\r\nArea :\r\n 0\r\n";
    for (const Index corner : corners) {
        AppendPointLine(out, CornerPoint(mesh, corner));
    }
    out += "Texture:\r\n 0\r\n";
    AppendLine(out, kSeparator);
}

} // namespace

void WriteQrzLayerBlock(std::string& out, Index number, const std::string& name) {
    out += " " + std::to_string(number) + ")Name Layer:\r\n";
    AppendLine(out, name);
    out += "Texture n.\r\n 0\r\nLevel :\r\n 0\r\nColor :\r\n 7\r\n 16777215\r\n"
           "lineweight :\r\n-3 \r\nidentifier of layer's linetype :\r\n-294934531 \r\n"
           "Lock :\r\n 0\r\nVisibility layer :\r\n 1\r\nPrintable layer :\r\n 1\r\n"
           "Deleted layer :\r\n 0\r\ntext data :\r\n\r\n";
    AppendLine(out, kSeparator);
}

void WriteQrzLineEntity(std::string& out, const std::string& layer, const SpacePoint& start,
                        const SpacePoint& end) {
    out += "Type Entity:\r\nLINE\r\nLayer:\r\n";
    AppendLine(out, layer);
    AppendPointLine(out, start);
    AppendPointLine(out, end);
    AppendLine(out, kSeparator);
}

void WriteQrzLevels(RunState& state, ClipboardService& clipboard, LogService& log) {
    const std::string segmentPath = state.workFolder + kSegmentFileName;
    try {
        OutputFile file(state.qrzExportPath);
        AppendHeader(file.Buffer(), state.lastLevelCount, state.lastLevelCount);
        const std::optional<std::vector<Layer>> layers = WriteLayers(file, segmentPath);
        if (layers) {
            WriteSegments(file, segmentPath, *layers);
        }
        file.Commit();
        if (layers) {
            ReportDone(state, clipboard);
        } else {
            log.Write(segmentPath + ": the first level is 0, so only the header was exported.");
        }
    } catch (const std::exception& error) {
        log.Write(error.what());
    }
}

void WriteQrzTriangles(RunState& state, ClipboardService& clipboard, MessageService& messages,
                       LogService& log) {
    try {
        const Mesh mesh = ReadMesh(state.workFolder + kMeshFileName);
        OutputFile file(state.qrzExportPath);
        AppendHeader(file.Buffer(), std::nullopt, static_cast<Index>(mesh.triangles.size()));
        WriteQrzLayerBlock(file.Buffer(), 1, std::string(kPointLayer));
        for (const std::array<Index, 3>& corners : mesh.triangles) {
            AppendTriangle(file.Buffer(), mesh, corners);
            file.FlushWhenFull();
        }
        file.Commit();
        ReportDone(state, clipboard);
    } catch (const std::exception& error) {
        log.Write(error.what());
        messages.ShowCritical("Error Point FILE QRZ..", "");
    }
}

} // namespace terravo::QrzWriter
