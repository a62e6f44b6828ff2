// The free-format list reader: numbers out of a text file, one after the other.
//
// Data: the bytes of a text file, seen through one buffer of fixed size. Method: a field ends at a
// comma, at a line end, or at the first blank after its first other character; a number that ends
// at a blank takes the blanks after it and then one comma or one line end as well. An empty field
// is 0. A last line without a line end is a whole line. Tabs are blanks; CR, LF and CR LF are line
// ends; a UTF-8 byte-order mark is skipped.
#pragma once

#include "util/FileHandle.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace terravo {

/// Why a text file of numbers could not be read.
struct ReadFailure {
    /// The causes that the windows tell in the user's language.
    enum class Kind { Other, NotANumber, TooLarge, EndsEarly };

    std::string file;
    std::int64_t line = 0;  // 1-based; 0 when the file could not be opened or read at all
    std::int64_t field = 0; // 1-based within the line
    std::string cause;      // without a full stop
    Kind kind = Kind::Other;
    std::string content; // what stands in the field, quoted; empty where it is not to blame
    bool isStop = false; // the work was asked to end; nothing is wrong with the file

    /// One sentence: file, line, field, cause.
    [[nodiscard]] std::string Sentence() const;
};

/// A failure of a file as a whole.
ReadFailure FailureOf(std::string file, std::string cause);

class NumberListReader {
public:
    /// Opens the file. Failure() tells afterwards whether it can be read.
    /// @param bufferSize  bytes held at a time; a field longer than half of it is refused.
    explicit NumberListReader(const std::string& path,
                              std::size_t bufferSize = std::size_t{1} << 20);

    /// True when every byte has been read. Tested before a record, it ends a file whose last line
    /// has a line end after exactly its records.
    [[nodiscard]] bool AtEnd() { return cursor_ == limit_ && !Refill(); }

    /// Goes back to the first byte, of the same file even when its name now means another one.
    void Rewind();

    /// Reads the next number.
    /// @return false on reading past the end, a field that is not a plain decimal number, or an
    ///         error of the file; Failure() tells which.
    [[nodiscard]] bool Read(double& value);

    /// Reads the rest of the present line as text, without its line end.
    /// @return false at the end of the file, after a failure, and for a line longer than the
    /// buffer.
    [[nodiscard]] bool ReadLine(std::string& line);

    [[nodiscard]] bool HasFailed() const { return failed_; }
    [[nodiscard]] const ReadFailure& Failure() const { return failure_; }

    /// Bytes read so far and bytes of the file as found when it was opened.
    [[nodiscard]] std::uint64_t BytesRead() const {
        return offset_ - static_cast<std::uint64_t>(limit_ - cursor_);
    }
    [[nodiscard]] std::uint64_t FileSize() const { return size_; }

private:
    bool Refill();
    void Begin();
    void SkipBlanks();
    void TakeLineEnd();
    bool ReadField(double& value);
    bool ReadAnyField(double& value);
    void LeaveField(const char* end);
    bool Fail(std::string cause);
    bool FailAt(ReadFailure::Kind kind, const char* fieldEnd, const char* cause);
    void SkipByteOrderMark();

    FileHandle file_;
    std::size_t room_;               // of the buffer, without an added line end and the NUL
    std::unique_ptr<char[]> buffer_; // not filled in advance: most files need little of it
    const char* cursor_ = nullptr;
    const char* limit_ = nullptr;
    bool sourceEnded_ = false;
    bool endsWithLineEnd_ = true; // of all bytes seen so far
    std::uint64_t offset_ = 0;
    std::uint64_t size_ = 0;
    std::int64_t line_ = 1;
    std::int64_t field_ = 0;
    bool failed_ = false;
    ReadFailure failure_;
};

} // namespace terravo
