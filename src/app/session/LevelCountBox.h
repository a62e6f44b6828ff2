// What a key does in the box that holds the number of levels.
//
// Data: the text of the box and the count in force. Method: one pure rule. Enter confirms, Escape
// takes back; apart from these, digits and backspace alone reach the box.
#pragma once

#include "util/Array1.h"

#include <string>

namespace terravo {

enum class LevelCountKey { Digit, Backspace, Enter, Escape, Other };

/// The kind of a key from the character that it types: "0" to "9", U+0008, U+000D or U+000A,
/// U+001B.
LevelCountKey LevelCountKeyOf(char32_t character);

struct LevelCountAnswer {
    std::string boxText;    // what the box shows, before a key that is not discarded acts on it
    Index levelCount = 0;   // in force from now on
    bool redraw = false;    // the map, even when the same count is confirmed
    bool discarded = false; // the key goes no further
};

/// Answers one key press. A count that is confirmed is rounded, halves to even; one below
/// kFewestLevels or above kMostLevels gives the box its old count back.
/// @param boxText     before the key; its leading number counts, with a period as decimal point.
/// @param levelCount  in force so far.
LevelCountAnswer AnswerLevelCountKey(LevelCountKey key, const std::string& boxText,
                                     Index levelCount);

} // namespace terravo
