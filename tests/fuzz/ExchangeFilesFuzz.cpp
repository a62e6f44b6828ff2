// The exchange files of any bytes, as the writers of vector files read them.
//
// Data: the input is the segment file and then the triangle file. Method: an export either leaves a
// whole file or throws and leaves none; nothing else is left in the folder.
#include "export/MeshFile.h"
#include "export/QrzWriter.h"
#include "export/SegmentFile.h"
#include "fuzz/FuzzInput.h"
#include "support/TemporaryFolder.h"
#include "util/AppError.h"

#include <filesystem>

namespace terravo {
namespace {

using fuzz::Require;

std::size_t CountOf(const std::string& text, std::string_view word) {
    std::size_t count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos;
         at = text.find(word, at + word.size())) {
        ++count;
    }
    return count;
}

// Runs one export of a file with this text.
template <class Writer>
void CheckExport(const test::TemporaryFolder& folder, const char* name, const std::string& text,
                 Writer write) {
    static_cast<void>(folder.Write(name, text));
    const std::string path = folder.File("out.qrz");
    std::filesystem::remove(path);
    bool done = true;
    try {
        write(folder.File(name), path);
    } catch (const AppError&) {
        done = false;
    }
    Require(done == std::filesystem::exists(path), "what is done is written, and nothing else");
    if (done) {
        const std::string qrz = folder.Read("out.qrz");
        Require(qrz.starts_with("N.Layer -\r\n") && qrz.ends_with("\r\n"), "a file is whole");
        Require(CountOf(qrz, "\n") == CountOf(qrz, "\r\n"), "every line ends in CR LF");
    }
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static const test::TemporaryFolder folder;
    const std::string text = fuzz::TextOf(data, size);
    CheckExport(folder, kSegmentFileName, text,
                [](const auto& from, const auto& to) { QrzWriter::WriteQrzLevels(from, 7, to); });
    CheckExport(folder, kMeshFileName, text, QrzWriter::WriteQrzTriangles);
    Require(folder.Names().size() <= 3, "no unfinished file is left");
    return 0;
}
