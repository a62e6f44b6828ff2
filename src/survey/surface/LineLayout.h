// How a text of lines is written.
//
// Data: the lines of the text. Method: a first line of column names says where the coordinates and
// the name of a line stand. Every separator and decimal sign is tried; the ones that make vertices
// of the most lines are taken, unless others make different ones of as many.
#pragma once

#include "survey/import/ImportPlan.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

struct LineLayout {
    FieldSeparator separator = FieldSeparator::Blank;
    char decimal = '.';
    std::size_t headerLine = 0; // from 1; 0 for none: x, y and perhaps a height
    std::size_t x = 0;          // columns, from 0
    std::size_t y = 1;
    std::optional<std::size_t> z = 2;
    std::optional<std::size_t> name; // of the line that a vertex belongs to

    /// The fields that a vertex has at least.
    [[nodiscard]] std::size_t FewestFields() const;
};

struct LayoutOutcome {
    LineLayout layout;
    std::string failure; // without a full stop
};

LayoutOutcome LayoutOf(const std::vector<std::string_view>& lines, TextEncoding encoding);

} // namespace terravo
