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
    Scan ScanRecord();
    Scan ScanQuoted(std::size_t& at);
    Scan ScanPlain(std::size_t& at);

    std::string path_;
    FileHandle file_;
    std::vector<char> window_;
    std::size_t begin_ = 0; // of the record, in the window
    std::size_t limit_ = 0; // of what has been read
    std::size_t next_ = 0;  // of the record behind
    // Where the fields are, and whether they have doubled quotes.
    struct Field {
        std::size_t first;
        std::size_t last;
        bool hasDoubled;
    };
    std::vector<Field> found_;
    std::int64_t number_ = 0;
};

} // namespace terravo
