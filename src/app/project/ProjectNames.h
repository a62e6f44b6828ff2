// The words of project files.
//
// Data: names of choices, in no language. Method: one table each, which writing and reading share.
#pragma once

#include "app/project/Project.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace terravo {

inline constexpr std::array<const char*, 4> kReaderNames{"table", "free list", "grid", "gis"};
inline constexpr std::array<const char*, 4> kEncodingNames{"utf-8", "latin-1", "utf-16le",
                                                           "utf-16be"};
inline constexpr std::array<const char*, 3> kLevelRuleNames{"count", "interval", "list"};

inline const char* NameOf(SourceReader reader) {
    return kReaderNames[static_cast<std::size_t>(reader)];
}
inline const char* ExactNameOf(TextEncoding encoding) {
    return kEncodingNames[static_cast<std::size_t>(encoding)];
}
inline const char* NameOf(LevelRuleKind kind) {
    return kLevelRuleNames[static_cast<std::size_t>(kind)];
}

struct SheetTextName {
    const char* name;
    std::string SheetTexts::*field;
};
inline constexpr std::array<SheetTextName, 5> kSheetTextNames{{{"title", &SheetTexts::title},
                                                               {"project", &SheetTexts::project},
                                                               {"date", &SheetTexts::date},
                                                               {"datum", &SheetTexts::datum},
                                                               {"author", &SheetTexts::author}}};

/// The parts "name=value" of the text of a style.
inline std::vector<std::pair<std::string, std::string>> StyleEntries(std::string_view style) {
    std::vector<std::pair<std::string, std::string>> entries;
    while (!style.empty()) {
        const std::string_view entry = style.substr(0, style.find(';'));
        const std::size_t equals = std::min(entry.find('='), entry.size());
        entries.emplace_back(entry.substr(0, equals),
                             entry.substr(std::min(equals + 1, entry.size())));
        style.remove_prefix(std::min(entry.size() + 1, style.size()));
    }
    return entries;
}

} // namespace terravo
