#include "app/session/LevelCountBox.h"

#include "contour/LevelSet.h"
#include "util/NumberText.h"
#include "util/modUtilita.h"

namespace terravo {

LevelCountKey LevelCountKeyOf(char32_t character) {
    if (character >= U'0' && character <= U'9') {
        return LevelCountKey::Digit;
    }
    switch (character) {
    case U'\b':
        return LevelCountKey::Backspace;
    case U'\r':
    case U'\n':
        return LevelCountKey::Enter;
    case U'\x1B':
        return LevelCountKey::Escape;
    default:
        return LevelCountKey::Other;
    }
}

LevelCountAnswer AnswerLevelCountKey(LevelCountKey key, const std::string& boxText,
                                     Index levelCount) {
    LevelCountAnswer answer{boxText, levelCount};
    answer.discarded = key != LevelCountKey::Digit && key != LevelCountKey::Backspace;
    if (key == LevelCountKey::Enter) {
        const Index typed = modUtilita::RoundHalfEven(NumberText::LeadingNumber(boxText));
        answer.redraw = typed >= kFewestLevels && typed <= kMostLevels;
        answer.levelCount = answer.redraw ? typed : levelCount;
    }
    if (key == LevelCountKey::Escape || (key == LevelCountKey::Enter && !answer.redraw)) {
        answer.boxText = std::to_string(levelCount);
    }
    return answer;
}

} // namespace terravo
