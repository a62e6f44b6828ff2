// Records of the usual form, read straight from the text.
//
// Data: the columns of a plan; one line at a time. Method: numbers are read where they stand and
// texts are passed over, without taking the line apart first. A line with anything else in it
// (quotes, comments, exponents, missing heights, a wrong number of fields) is left to a reader that
// knows everything.
#pragma once

#include "survey/import/ImportPlan.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace terravo {

struct QuickRecord {
    std::array<double, 3> coordinates{}; // easting, northing, height
    std::string_view name;
    std::string_view code;
};

class QuickLines {
public:
    explicit QuickLines(const ImportPlan& plan);

    /// False for a plan whose lines all have to be taken apart.
    [[nodiscard]] bool AreUsable() const { return read_ != nullptr; }

    /// Reads a line and its end.
    /// @param line  ended by a line end or, where the text ends, by a NUL.
    /// @return the character after the line end; null for a line that is not of this form.
    const char* Read(const char* line, QuickRecord& record) const {
        return read_(*this, line, record);
    }

private:
    using Reader = const char* (*)(const QuickLines&, const char*, QuickRecord&);

    template <char kSeparator>
    [[nodiscard]] Reader ReaderFor(char decimal) const;
    template <char kSeparator, char kPoint>
    static const char* ReadTriple(const QuickLines& form, const char* p, QuickRecord& record);
    template <char kSeparator, char kPoint>
    static const char* ReadColumns(const QuickLines& form, const char* p, QuickRecord& record);
    const char* PassText(const char* p, std::string_view& text, bool isRest) const;
    void MakeTables(const ImportPlan& plan);

    std::vector<ColumnRole> columns_;
    std::array<std::size_t, 3> order_{}; // of three columns: where easting, northing, height stand
    std::array<bool, 256> endsText_{};   // bytes at which a text is looked at more closely
    char separator_ = ',';
    bool othersAreText_ = false;
    bool codeTakesRest_ = false;
    Reader read_ = nullptr;
};

} // namespace terravo
