#include "survey/import/ImportPlan.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace terravo {
namespace {

using enum ColumnRole;

struct NamedColumns {
    const char* name;
    std::vector<ColumnRole> columns;
};

const std::vector<NamedColumns>& KnownColumns() {
    static const std::vector<NamedColumns> known{
        {"xyz", {Easting, Northing, Height}},
        {"yxz", {Northing, Easting, Height}},
        {"pxyz", {Name, Easting, Northing, Height}},
        {"pyxz", {Name, Northing, Easting, Height}},
        {"pnezd", {Name, Northing, Easting, Height, Code}},
        {"penzd", {Name, Easting, Northing, Height, Code}},
    };
    return known;
}

constexpr std::array<std::pair<ColumnRole, char>, 6> kLetters{
    {{Ignored, '-'}, {Name, 'p'}, {Easting, 'e'}, {Northing, 'n'}, {Height, 'z'}, {Code, 'c'}}};

std::optional<ColumnRole> RoleOf(std::string_view letter) {
    if (letter.size() != 1) {
        return std::nullopt;
    }
    const char c = letter[0] == 'x'   ? 'e'
                   : letter[0] == 'y' ? 'n'
                   : letter[0] == 'h' ? 'z'
                                      : letter[0];
    const auto* const found = std::find_if(kLetters.begin(), kLetters.end(),
                                           [c](const auto& l) { return l.second == c; });
    return found == kLetters.end() ? std::nullopt : std::optional(found->first);
}

bool IsSound(const std::vector<ColumnRole>& columns) {
    return std::all_of(kLetters.begin(), kLetters.end(), [&columns](const auto& letter) {
        const auto times = std::count(columns.begin(), columns.end(), letter.first);
        return letter.first == Ignored || (IsCoordinate(letter.first) ? times == 1 : times <= 1);
    });
}

constexpr std::array<std::pair<FieldSeparator, const char*>, 5> kSeparators{
    {{FieldSeparator::Comma, "comma"},
     {FieldSeparator::Semicolon, "semicolon"},
     {FieldSeparator::Tab, "tab"},
     {FieldSeparator::Blank, "blank"},
     {FieldSeparator::Bar, "bar"}}};

} // namespace

std::string NameOfColumns(const std::vector<ColumnRole>& columns) {
    for (const NamedColumns& known : KnownColumns()) {
        if (known.columns == columns) {
            return known.name;
        }
    }
    std::string list;
    for (const ColumnRole role : columns) {
        list += list.empty() ? "" : ",";
        list += std::find_if(kLetters.begin(), kLetters.end(), [role](const auto& letter) {
                    return letter.first == role;
                })->second;
    }
    return list;
}

std::optional<std::vector<ColumnRole>> ParseColumns(std::string_view text) {
    for (const NamedColumns& known : KnownColumns()) {
        if (known.name == text) {
            return known.columns;
        }
    }
    std::vector<ColumnRole> columns;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::optional<ColumnRole> role = RoleOf(text.substr(begin, end - begin));
        if (!role) {
            return std::nullopt;
        }
        columns.push_back(*role);
        begin = end + 1;
    }
    return IsSound(columns) ? std::optional(std::move(columns)) : std::nullopt;
}

const char* NameOf(FieldSeparator separator) {
    return kSeparators[static_cast<std::size_t>(separator)].second;
}

std::optional<FieldSeparator> ParseSeparator(std::string_view name) {
    const auto* const found = std::find_if(kSeparators.begin(), kSeparators.end(),
                                           [name](const auto& s) { return s.second == name; });
    return found == kSeparators.end() ? std::nullopt : std::optional(found->first);
}

char CharacterOf(FieldSeparator separator) {
    constexpr std::array<char, 5> kCharacters{',', ';', '\t', ' ', '|'};
    return kCharacters[static_cast<std::size_t>(separator)];
}

const char* NameOf(TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::Utf8:
        return "utf-8";
    case TextEncoding::Latin1:
        return "latin-1";
    case TextEncoding::Utf16Little:
    case TextEncoding::Utf16Big:
        break;
    }
    return "utf-16";
}

} // namespace terravo
