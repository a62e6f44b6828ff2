#include "export/QrzWriter.h"

#include "contour/SegmentFile.h"
#include "export/MeshFile.h"
#include "util/AppError.h"
#include "util/NumberListReader.h"
#include "util/NumberText.h"
#include "util/OutputFile.h"
#include "util/Prefetch.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <array>
#include <cstdint>
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
std::optional<std::vector<Layer>> WriteLayers(OutputFile& file, NumberListReader& reader) {
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
void WriteSegments(OutputFile& file, NumberListReader& reader, const std::vector<Layer>& layers) {
    reader.Rewind();
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

// The coordinate lines of the points. Each is the corner of some six triangles, so printing it once
// and copying it saves most of the printing.
class PointLines {
public:
    void MakeRoom(std::size_t points, std::size_t bytes) {
        text_.reserve(bytes);
        ends_.reserve(points + 1);
    }
    void Append(const SpacePoint& point) {
        AppendPointLine(text_, point);
        ends_.push_back(text_.size());
    }
    [[nodiscard]] Index Count() const { return static_cast<Index>(ends_.size() - 1); }
    [[nodiscard]] bool Has(Index number) const { return number >= 1 && number <= Count(); }
    /// Number from 1 to Count.
    [[nodiscard]] std::string_view Line(Index number) const {
        const std::size_t start = ends_[static_cast<std::size_t>(number) - 1];
        return {text_.data() + start, ends_[static_cast<std::size_t>(number)] - start};
    }
    // Both together hide the wait for a line; the text can be asked for once its place is there.
    void AskForPlace(Index number) const {
        if (Has(number)) {
            PrefetchLine(&ends_[static_cast<std::size_t>(number) - 1]);
        }
    }
    void AskForText(Index number) const {
        if (Has(number)) {
            PrefetchLine(Line(number).data());
        }
    }

private:
    std::string text_;
    std::vector<std::size_t> ends_{0};
};

struct Mesh {
    std::vector<std::array<Index, 3>> triangles;
    PointLines points;
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
constexpr std::uint64_t kLeastLine = 6; // bytes of three numbers in the triangle file

Mesh ReadMesh(const std::string& path) {
    NumberListReader reader(path);
    RequireOpen(reader);
    Mesh mesh;
    const Index triangleCount = ReadIndex(reader, kMostTriangles);
    mesh.triangles.reserve(
        std::min(static_cast<std::uint64_t>(triangleCount), reader.FileSize() / kLeastLine));
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
    // The lines are printed as they stand in the file.
    const std::uint64_t bytesLeft =
        reader.FileSize() - std::min(reader.FileSize(), reader.BytesRead());
    mesh.points.MakeRoom(std::min(static_cast<std::uint64_t>(pointCount), bytesLeft / kLeastLine),
                         bytesLeft);
    for (Index i = 0; i < pointCount; ++i) {
        mesh.points.Append(ReadPoint(reader));
    }
    return mesh;
}

std::string_view CornerLine(const Mesh& mesh, Index number) {
    if (!mesh.points.Has(number)) {
        throw AppError(ErrorNumber::kSubscript, "QrzWriter",
                       "A triangle has a corner that is no point: " + std::to_string(number) + ".");
    }
    return mesh.points.Line(number);
}

void AppendTriangle(std::string& out, const Mesh& mesh, const std::array<Index, 3>& corners) {
    out += "Type Entity:\r\nPOLYLINE\r\nLayer:\r\n";
    AppendLine(out, kPointLayer);
    out += "Vertex:\r\n 3\r\nWidth:\r\n 0\r\nClosed : \r\n 1\r\nType :\r\n 0\r\n"
           "Lenght:\r\n 0\r\nArea :\r\n 0\r\n";
    for (const Index corner : corners) {
        out += CornerLine(mesh, corner);
    }
    out += "Texture:\r\n 0\r\n";
    AppendLine(out, kSeparator);
}

// In a survey without order the corners of a triangle lie anywhere among the points, so the memory
// of the triangles to come is asked for ahead.
void WriteTriangles(OutputFile& file, const Mesh& mesh) {
    constexpr std::size_t kPlacesAhead = 16;
    constexpr std::size_t kTextsAhead = 8;
    const std::size_t count = mesh.triangles.size();
    for (std::size_t t = 0; t < count; ++t) {
        if (t + kPlacesAhead < count) {
            for (const Index corner : mesh.triangles[t + kPlacesAhead]) {
                mesh.points.AskForPlace(corner);
            }
            for (const Index corner : mesh.triangles[t + kTextsAhead]) {
                mesh.points.AskForText(corner);
            }
        }
        AppendTriangle(file.Buffer(), mesh, mesh.triangles[t]);
        file.FlushWhenFull();
    }
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
        // One reader for both readings: another instance may put its own file in the place
        // meanwhile.
        NumberListReader reader(segmentPath);
        const std::optional<std::vector<Layer>> layers = WriteLayers(file, reader);
        if (layers) {
            WriteSegments(file, reader, *layers);
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
        WriteTriangles(file, mesh);
        file.Commit();
        ReportDone(state, clipboard);
    } catch (const std::exception& error) {
        log.Write(error.what());
        messages.ShowCritical("Error Point FILE QRZ..", "");
    }
}

} // namespace terravo::QrzWriter
