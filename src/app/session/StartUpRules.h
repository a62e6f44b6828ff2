// What the program opens by itself, and in which state its parent window starts.
//
// Data: the text of the clipboard, if it holds any, and the raw command line. Method: pure rules.
// The companion program passes a path between double quotes on the command line, or leaves it on
// the clipboard; text of any other kind is ignored without a word.
#pragma once

#include <optional>
#include <span>
#include <string>

namespace terravo {

/// The command line as a caller's raw text would read, where a shell has taken the quotes off: the
/// first argument between double quotes, which are added unless it still carries them.
/// @param arguments  without the program's name.
/// @return empty when there is no argument.
std::string RawCommandLine(std::span<const std::string> arguments);

/// The text that may name a start-up file, empty for none. A command line replaces the clipboard
/// and loses its first and its last character, whatever they are; one of a single character leaves
/// nothing.
std::string StartUpCandidate(const std::optional<std::string>& clipboardText,
                             const std::string& rawCommandLine);

/// The path that a clipboard text stands for. The first line of a text that is a file:// address,
/// as file managers copy it, becomes the path of a file of this machine; other text is itself.
/// @return nothing for an address of another machine and for one of a file that does not exist.
std::optional<std::string> PathFromClipboard(const std::string& text);

/// True when the last three characters are "QRW" in any letter case.
bool IsStartUpFile(const std::string& candidate);

/// The file to load at start-up, if there is one.
std::optional<std::string> AcceptedStartUpFile(const std::optional<std::string>& clipboardText,
                                               const std::string& rawCommandLine);

/// Start state of the parent window, with its stored numbers.
enum class ParentState { AsDesigned = 0, Minimised = 1, Maximised = 2 };

/// Minimised when the clipboard names a start-up file, maximised when it holds no text at all.
ParentState ParentStateFor(const std::optional<std::string>& clipboardText);

/// True for the file of the companion program, which gets its points triangulated and returned
/// without the user. Letter case counts.
bool IsCompanionFile(const std::string& path, const std::string& workFolder);

} // namespace terravo
