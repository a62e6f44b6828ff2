// The records of a table with commas between its fields.
//
// Data: the bytes of a file, seen through a window that moves along it and grows with the longest
// record. Method: a field that begins with a quote goes to the quote that closes it, over commas
// and line breaks, and doubled quotes in it are one; every record ends with a line feed.
#pragma once

#include "util/FileHandle.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

/// Thrown when a file is no such table.
struct CsvFault {
    std::string sentence;
};

class CsvRecords {
public:
    /// Throws AppError when the file cannot be opened or read; that holds for Next, too.
    explicit CsvRecords(const std::string& path);

    /// Takes the next record; false at the end of the file. Throws CsvFault.
    /// @param[out] fields  until the next call.
    bool Next(std::vector<std::string_view>& fields);

    /// Of the record taken last, from 1.
    [[nodiscard]] std::int64_t Number() const { return number_; }

private:
    enum class Scan { Done, NeedsMore };

    bool Fill();
    Scan ScanRecord(std::vector<std::string_view>& fields);
    Scan ScanQuoted(char*& at, std::vector<std::string_view>& fields);
    Scan ScanPlain(char*& at, std::vector<std::string_view>& fields);

    std::string path_;
    FileHandle file_;
    std::vector<char> window_; // and a line feed behind what has been read
    char* begin_ = nullptr;    // of the record, in the window
    char* limit_ = nullptr;    // of what has been read
    char* next_ = nullptr;     // of the record behind
    std::int64_t number_ = 0;
    bool hasDoubled_ = false; // quotes, in the record
};

} // namespace terravo
