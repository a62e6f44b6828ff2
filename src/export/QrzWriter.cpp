#include "export/QrzWriter.h"

#include "export/MeshFile.h"
#include "export/SegmentFile.h"
#include "util/NumberText.h"
#include "util/OutputFile.h"
#include "util/Prefetch.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

namespace terravo::QrzWriter {
namespace {

constexpr std::string_view kSeparator = "----------------------------------------------";
constexpr std::string_view kPointLayer = "Lay_Point";

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

// --- Contour lines ---

// One run of segments of equal level, which becomes a layer.
struct Layer {
    std::string name;
    std::int64_t segmentCount = 0;
};

// First pass over the segments: writes the layer blocks and counts the segments of each layer.
// Nothing when the first level is 0 and has no layer: it equals the level before the first, so none
// is open to count its segment in.
std::optional<std::vector<Layer>> WriteLayers(OutputFile& file, SegmentReader& segments,
                                              ZeroLevel zero) {
    std::vector<Layer> layers;
    double previousLevel =
        zero == ZeroLevel::HasLayer ? std::numeric_limits<double>::quiet_NaN() : 0;
    LevelSegment segment;
    while (segments.Next(segment)) {
        if (!modUtilita::IsExactly(segment.start.z, previousLevel)) {
            previousLevel = segment.start.z;
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
    return layers;
}

// Second pass: each layer takes the segments that were counted for it.
void WriteSegments(OutputFile& file, SegmentReader& segments, const std::vector<Layer>& layers) {
    segments.Rewind();
    LevelSegment segment;
    for (const Layer& layer : layers) {
        for (std::int64_t i = 0; i < layer.segmentCount && segments.Next(segment); ++i) {
            WriteQrzLineEntity(file.Buffer(), layer.name, segment.start, segment.end);
            file.FlushWhenFull();
        }
    }
}

// --- Triangles ---

// The coordinate lines of the points. Each is the corner of some six triangles, so printing it once
// and copying it saves most of the printing. In a survey without order the corners of a triangle
// lie anywhere among the points, so the lines of triangles to come are asked for ahead.
class PointLines {
public:
    explicit PointLines(const Array1<SpacePoint>& points) {
        constexpr std::size_t kUsualLine = 40; // bytes
        const auto count = static_cast<std::size_t>(points.UpperBound());
        text_.reserve(count * kUsualLine);
        ends_.reserve(count + 1);
        for (const SpacePoint& point : points) {
            AppendPointLine(text_, point);
            ends_.push_back(text_.size());
        }
    }
    /// Number from 1 to the count of points.
    [[nodiscard]] std::string_view Line(Index number) const {
        const std::size_t start = ends_[static_cast<std::size_t>(number) - 1];
        return {text_.data() + start, ends_[static_cast<std::size_t>(number)] - start};
    }
    /// Triangle t is about to be used, those behind it soon. The text of a line can be asked for
    /// once its place is there.
    void LookAhead(const std::vector<std::array<Index, 3>>& triangles, std::size_t t) const {
        constexpr std::size_t kPlacesAhead = 16;
        constexpr std::size_t kTextsAhead = 8;
        if (t + kPlacesAhead < triangles.size()) {
            for (const Index corner : triangles[t + kPlacesAhead]) {
                PrefetchLine(&ends_[static_cast<std::size_t>(corner) - 1]);
            }
            for (const Index corner : triangles[t + kTextsAhead]) {
                PrefetchLine(Line(corner).data());
            }
        }
    }

private:
    std::string text_;
    std::vector<std::size_t> ends_{0};
};

void AppendTriangle(std::string& out, const PointLines& lines,
                    const std::array<Index, 3>& corners) {
    out += "Type Entity:\r\nPOLYLINE\r\nLayer:\r\n";
    AppendLine(out, kPointLayer);
    out += "Vertex:\r\n 3\r\nWidth:\r\n 0\r\nClosed : \r\n 1\r\nType :\r\n 0\r\n"
           "Lenght:\r\n 0\r\nArea :\r\n 0\r\n";
    for (const Index corner : corners) {
        out += lines.Line(corner);
    }
    out += "Texture:\r\n 0\r\n";
    AppendLine(out, kSeparator);
}

void WriteTriangles(OutputFile& file, const MeshContents& mesh) {
    const PointLines lines(mesh.points);
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        lines.LookAhead(mesh.triangles, t);
        AppendTriangle(file.Buffer(), lines, mesh.triangles[t]);
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

Content WriteQrzLevels(const std::string& segmentFile, Index levelCount, const OutputTarget& target,
                       ZeroLevel zero) {
    OutputFile file(target);
    AppendHeader(file.Buffer(), levelCount, levelCount);
    // One reader for both readings: another instance may put its own file in the place meanwhile.
    SegmentReader segments(segmentFile);
    const std::optional<std::vector<Layer>> layers = WriteLayers(file, segments, zero);
    if (layers) {
        WriteSegments(file, segments, *layers);
    }
    file.Commit();
    return layers ? Content::Whole : Content::HeaderOnly;
}

void WriteQrzTriangles(const std::string& meshFile, const OutputTarget& target) {
    const MeshContents mesh = ReadMeshFile(meshFile);
    OutputFile file(target);
    AppendHeader(file.Buffer(), std::nullopt, static_cast<Index>(mesh.triangles.size()));
    WriteQrzLayerBlock(file.Buffer(), 1, std::string(kPointLayer));
    WriteTriangles(file, mesh);
    file.Commit();
}

} // namespace terravo::QrzWriter
