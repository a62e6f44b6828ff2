// The exchange files of any bytes, as the writers of vector files read them.
//
// Data: the input is the segment file and then the triangle file. Method: an export either leaves a
// whole file and its path on the clipboard, or neither; nothing else is left in the folder.
#include "contour/SegmentFile.h"
#include "export/MeshFile.h"
#include "export/QrzWriter.h"
#include "fuzz/FuzzInput.h"
#include "support/FakeServices.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>

namespace terravo {
namespace {

using fuzz::Require;

struct Export {
    const test::TemporaryFolder& folder;
    RunState state;
    FakeClipboard clipboard;
    FakeMessages messages;
    FakeLog log;

    explicit Export(const test::TemporaryFolder& folderOfRun) : folder(folderOfRun) {
        state.workFolder = folder.Path();
        state.qrzExportPath = folder.File("out.qrz");
        state.lastLevelCount = 7;
        std::filesystem::remove(state.qrzExportPath);
    }
    [[nodiscard]] bool IsDone() const { return clipboard.text.has_value(); }
    [[nodiscard]] bool IsWritten() const { return std::filesystem::exists(state.qrzExportPath); }
};

std::size_t CountOf(const std::string& text, std::string_view word) {
    std::size_t count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos;
         at = text.find(word, at + word.size())) {
        ++count;
    }
    return count;
}

void CheckWritten(const Export& run) {
    if (!run.IsWritten()) {
        return;
    }
    const std::string qrz = run.folder.Read("out.qrz");
    Require(qrz.starts_with("N.Layer -\r\n") && qrz.ends_with("\r\n"), "a file is whole");
    Require(CountOf(qrz, "\n") == CountOf(qrz, "\r\n"), "every line ends in CR LF");
}

void ExportLevels(const test::TemporaryFolder& folder, const std::string& text) {
    static_cast<void>(folder.Write(kSegmentFileName, text));
    Export run(folder);
    QrzWriter::WriteQrzLevels(run.state, run.clipboard, run.log);
    Require(run.IsDone() == run.log.lines.empty(), "an export is done or the log tells why");
    Require(!run.IsDone() || run.IsWritten(), "what is done is written");
    CheckWritten(run);
}

void ExportTriangles(const test::TemporaryFolder& folder, const std::string& text) {
    static_cast<void>(folder.Write(kMeshFileName, text));
    Export run(folder);
    QrzWriter::WriteQrzTriangles(run.state, run.clipboard, run.messages, run.log);
    Require(run.IsDone() == run.IsWritten(), "what is done is written, and nothing else");
    Require(run.messages.boxes.size() == (run.IsDone() ? 0 : 1), "one message tells of a failure");
    CheckWritten(run);
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static const test::TemporaryFolder folder;
    const std::string text = fuzz::TextOf(data, size);
    ExportLevels(folder, text);
    ExportTriangles(folder, text);
    Require(folder.Names().size() <= 3, "no unfinished file is left");
    return 0;
}
