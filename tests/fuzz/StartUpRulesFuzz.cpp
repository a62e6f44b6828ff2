// Clipboard texts and command lines of any bytes.
//
// Data: the input up to the first line feed is an argument of the command line, the rest the text
// of the clipboard. Method: what a shell takes off and the program puts back must cancel out; what
// is accepted must be a file to start with.
#include "app/session/StartUpRules.h"
#include "fuzz/FuzzInput.h"
#include "util/PathText.h"

#include <array>

namespace terravo {
namespace {

using fuzz::Require;

bool IsQuoted(const std::string& text) {
    return text.size() > 1 && text.front() == '"' && text.back() == '"';
}

void CheckCommandLine(const std::string& argument) {
    const std::string raw = RawCommandLine(std::array{argument});
    Require(IsQuoted(raw), "a raw command line is quoted");
    const std::string expected =
        IsQuoted(argument) ? argument.substr(1, argument.size() - 2) : argument;
    Require(StartUpCandidate("other", raw) == expected, "the quotes come off again");
    // Text that was never quoted loses a character at each end.
    Require(StartUpCandidate("other", argument).size() <=
                (argument.empty() ? 5 : argument.size() - 1),
            "the command line replaces the clipboard");
    const auto accepted = AcceptedStartUpFile(std::nullopt, raw);
    Require(accepted.has_value() == IsStartUpFile(expected), "a start-up file is accepted");
    Require(!accepted || *accepted == expected, "the accepted file is the argument");
}

void CheckClipboard(const std::string& text) {
    const std::optional<std::string> path = PathFromClipboard(text);
    if (path && *path != text) {
        Require(FileExists(*path) && path->find('\0') == std::string::npos,
                "an address stands for a file that exists");
    }
    const auto accepted = AcceptedStartUpFile(text, "");
    Require(!accepted || (accepted == path && IsStartUpFile(*accepted)),
            "the accepted file is that of the clipboard");
    const ParentState state = ParentStateFor(text);
    Require(state == (accepted ? ParentState::Minimised : ParentState::AsDesigned),
            "the window starts as its clipboard says");
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    const std::string text = fuzz::TextOf(data, size);
    const std::size_t split = std::min(text.find('\n'), text.size());
    CheckCommandLine(text.substr(0, split));
    CheckClipboard(text.substr(std::min(split + 1, text.size())));
    const PathParts parts = SplitPath(text.substr(0, split));
    Require(parts.folder + parts.name == text.substr(0, split), "a path is folder and name");
    static_cast<void>(IsCompanionFile(text, parts.folder));
    return 0;
}
