// Drawings of any bytes, read back as if they had just been written.
//
// Data: the input chooses the options; then it is the file, or says what to change in the file that
// belongs to a small content. Method: the reader never breaks, and a file in which it finds no
// difference has the places of the entities that were written, as a slow reading of its groups
// tells.
#include "export/readback/DxfCheck.h"
#include "fuzz/FuzzInput.h"
#include "support/DxfExamples.h"

#include <algorithm>
#include <cstdlib>

namespace terravo {
namespace {

using fuzz::Require;

constexpr int kIsWholeFile = 8; // of the first byte; the bits below choose the options

// Codes and values of all places of entities; those of texts may differ in their last digits.
std::vector<std::pair<int, double>> PlacesOf(const std::string& dxf) {
    const std::vector<std::string> lines = fuzz::SplitAt(dxf, '\n');
    std::vector<std::pair<int, double>> places;
    bool inEntities = false;
    bool inText = false;
    for (std::size_t i = 0; i + 1 < lines.size(); i += 2) {
        const int code = std::atoi(lines[i].c_str());
        const std::string& value = lines[i + 1];
        if (code == 0) {
            inText = value == "TEXT";
            inEntities = inEntities && value != "ENDSEC";
        }
        inEntities = inEntities || (code == 2 && value == "ENTITIES");
        if (inEntities && !inText && code >= 10 && code < 40) {
            places.emplace_back(code, std::strtod(value.c_str(), nullptr));
        }
    }
    return places;
}

// Each change: where, how many bytes go, how many come, these.
std::string Changed(std::string dxf, fuzz::InputBytes& input) {
    while (!input.IsEmpty()) {
        const std::size_t at = static_cast<std::uint16_t>(input.Short()) % dxf.size();
        dxf.erase(at, static_cast<std::size_t>(input.Byte() % 16));
        std::string added(static_cast<std::size_t>(input.Byte() % 16), ' ');
        std::generate(added.begin(), added.end(),
                      [&input] { return static_cast<char>(input.Byte()); });
        dxf.insert(std::min(at, dxf.size()), added);
        if (dxf.empty()) {
            break;
        }
    }
    return dxf;
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    if (size == 0) {
        return 0;
    }
    static const test::TemporaryFolder folder;
    static const VectorContent content = test::DrawingContent();
    static const std::vector<VectorOptions> options = test::AllDxfOptions();
    static const std::vector<std::string> written = [] {
        std::vector<std::string> files;
        for (const VectorOptions& choice : options) {
            files.push_back(test::DxfOf(folder, content, choice));
        }
        return files;
    }();
    fuzz::InputBytes input(data + 1, size - 1);
    const std::size_t choice = data[0] % options.size();
    const bool isWhole = (data[0] & kIsWholeFile) != 0;
    const std::string dxf =
        isWhole ? fuzz::TextOf(data + 1, size - 1) : Changed(written[choice], input);
    const auto difference = CheckDxf(folder.Write("changed.dxf", dxf), content, options[choice]);
    Require(dxf != written[choice] || !difference, "what was written is found to be true");
    Require(difference || PlacesOf(dxf) == PlacesOf(written[choice]),
            "a file without a difference has the same places");
    Require(!difference || !difference->empty(), "a difference is a sentence");
    return 0;
}
