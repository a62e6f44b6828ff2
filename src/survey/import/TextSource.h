// The text of a file, seen through a window that moves along it.
//
// Data: the bytes of a file or pipe. Method: blocks go through a decoder (UTF-16 becomes UTF-8,
// other encodings stay as they are) into one buffer; byte-order marks are skipped and Ctrl-Z ends
// the text. Whoever reads takes characters from the window and asks for more when a line is not
// whole. CR, LF and CR LF end a line alike.
#pragma once

#include "survey/import/ImportPlan.h"
#include "util/FileHandle.h"
#include "util/NumberListReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

class TextSource {
public:
    /// Opens a file and reads its first bytes; Failure() tells whether that went well.
    explicit TextSource(const std::string& path);

    [[nodiscard]] const std::string& Path() const { return path_; }
    [[nodiscard]] const std::optional<ReadFailure>& Failure() const { return failure_; }

    /// The first bytes as they are in the file, up to kHeadBytes.
    [[nodiscard]] std::string_view Head() const { return head_; }
    /// True when they are all of it.
    [[nodiscard]] bool HeadIsAll() const { return ended_; }

    /// How the text is written: by its mark, else UTF-16 when every other byte of an ASCII text is
    /// 0, else UTF-8 where the head is, else Latin-1.
    [[nodiscard]] TextEncoding GuessEncoding() const;

    /// Begins the text, in an encoding. To be called once, before any of the next.
    void Begin(TextEncoding encoding);

    /// The characters that have been read and not been taken, followed by a NUL.
    [[nodiscard]] const char* Cursor() const { return cursor_; }
    [[nodiscard]] const char* Limit() const { return limit_; }
    /// Takes the characters up to a place in the window, which are so many lines.
    void TakeTo(const char* place, std::int64_t lines) {
        cursor_ = place;
        lines_ += lines;
    }
    /// Reads more behind what is in the window, which moves in memory.
    /// @return false at the end of the text, and when the window is full.
    bool More();

    /// Takes the next line, without its end.
    /// @param[out] line  until the next call of any member.
    /// @return false at the end of the text and after a failure; a line that is longer than the
    ///         window is a failure.
    bool NextLine(std::string_view& line);

    /// Takes the line behind the last one, too.
    /// @param[in,out] line  of the last call of NextLine or Extend; then both with the end between
    ///                      them. It may move in memory.
    /// @return false, with nothing taken, at the end of the text and where the window cannot hold
    ///         both.
    bool Extend(std::string_view& line);

    /// Lines that have been taken.
    [[nodiscard]] std::int64_t LinesTaken() const { return lines_; }

    /// Bytes of the file whose characters were taken, about, and its size; 0 where that is not
    /// known.
    [[nodiscard]] std::uint64_t BytesTaken() const {
        const auto waiting = static_cast<std::uint64_t>(limit_ - cursor_);
        return bytes_ - std::min(bytes_, waiting);
    }
    [[nodiscard]] std::uint64_t FileSize() const { return size_; }

    static constexpr std::size_t kHeadBytes = std::size_t{1} << 17;

private:
    void ReadHead();
    bool TakeLine(std::size_t begun, std::string_view& line);
    std::size_t ReadBlock(char* to, std::size_t room);
    void Decode(std::string_view bytes);
    void Append(std::string_view text);
    void DecodeUtf16(std::string_view bytes);
    void Fail(const char* cause);

    std::string path_;
    FileHandle file_;
    std::string head_;
    std::vector<char> block_;
    std::vector<char> window_;
    const char* cursor_ = nullptr;
    const char* limit_ = nullptr;
    TextEncoding encoding_ = TextEncoding::Utf8;
    std::string pending_;        // of UTF-16: bytes of a character cut off by the block
    std::uint32_t highHalf_ = 0; // of a pair
    bool ended_ = false;         // the file
    bool textEnded_ = false;     // by Ctrl-Z
    std::int64_t lines_ = 0;
    std::uint64_t bytes_ = 0;
    std::uint64_t size_ = 0;
    std::optional<ReadFailure> failure_;
};

} // namespace terravo
