// Files of any bytes, read as breaklines and as rings.
//
// Data: the input is the file. Method: there are lines or a failure, each line is one, and written
// plainly they come back the same.
#include "fuzz/FuzzInput.h"
#include "support/TemporaryFolder.h"
#include "survey/surface/LineFile.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace terravo {
namespace {

using fuzz::Require;

void CheckLine(const SurfaceLine& line) {
    const std::vector<SpacePoint>& vertices = line.line.vertices;
    Require(vertices.size() >= (line.line.closed ? 3U : 2U), "a line has vertices enough");
    for (const SpacePoint& vertex : vertices) {
        Require(std::isfinite(vertex.x) && std::isfinite(vertex.y), "every place is finite");
        Require(HasHeight(vertex) == HasHeight(vertices.front()), "all have heights or none");
        Require(!HasHeight(vertex) || std::isfinite(vertex.z), "every height is finite");
    }
    Require(line.fileLine > 0, "it has a line of the file");
}

void Append(std::string& text, double value) {
    char digits[32];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    text += ' ';
}

std::string PlainTextOf(const std::vector<SurfaceLine>& lines) {
    std::string text;
    for (const SurfaceLine& line : lines) {
        std::vector<SpacePoint> vertices = line.line.vertices;
        if (line.line.closed) {
            vertices.push_back(vertices.front());
        }
        for (const SpacePoint& vertex : vertices) {
            Append(text, vertex.x);
            Append(text, vertex.y);
            if (HasHeight(vertex)) {
                Append(text, vertex.z);
            }
            text += '\n';
        }
        text += '\n';
    }
    return text;
}

bool IsSame(const SpacePoint& a, const SpacePoint& b) {
    return PlanOf(a) == PlanOf(b) && (a.z == b.z || (!HasHeight(a) && !HasHeight(b)));
}

void CheckComesBack(const test::TemporaryFolder& folder, const std::vector<SurfaceLine>& lines) {
    const LineReading again =
        ReadLineFile(folder.Write("plain.txt", PlainTextOf(lines)), LineClosing::AsTheyAre);
    Require(again.lines.size() == lines.size() && again.remarks.empty(), "as many come back");
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const SpaceLine& a = lines[i].line;
        const SpaceLine& b = again.lines[i].line;
        Require(a.closed == b.closed && a.vertices.size() == b.vertices.size() &&
                    std::equal(a.vertices.begin(), a.vertices.end(), b.vertices.begin(), IsSame),
                "each comes back");
    }
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static const test::TemporaryFolder folder;
    const std::string path = folder.Write("lines.txt", fuzz::TextOf(data, size));
    for (const LineClosing closing : {LineClosing::AsTheyAre, LineClosing::Always}) {
        const LineReading reading = ReadLineFile(path, closing);
        Require(reading.lines.empty() != reading.failure.empty(), "there are lines or a failure");
        for (const SurfaceLine& line : reading.lines) {
            CheckLine(line);
        }
        if (!reading.lines.empty()) {
            CheckComesBack(folder, reading.lines);
        }
    }
    return 0;
}
