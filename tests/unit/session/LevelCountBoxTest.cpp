#include "app/session/LevelCountBox.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

TEST(LevelCountBox, ConfirmsOrTakesBackOnEnter) {
    const struct {
        const char* typed;
        const char* shown;
        Index count;
        bool redraw;
    } cases[] = {
        {"7", "7", 7, true},
        {"10", "10", 10, true}, // confirmed again, drawn again
        {" 12abc", " 12abc", 12, true},
        {"2.5", "2.5", 2, true}, // halves to even
        {"3.5", "3.5", 4, true},
        {"1.5", "1.5", 2, true},
        {"100000", "100000", 100000, true},
        {"1.2", "10", 10, false}, // greater than 1, and yet a single level
        {"1", "10", 10, false},
        {"0", "10", 10, false},
        {"-5", "10", 10, false},
        {"", "10", 10, false},
        {"abc", "10", 10, false},
        {"100001", "10", 10, false},
        {"99999999999", "10", 10, false},
    };
    for (const auto& c : cases) {
        const LevelCountAnswer answer = AnswerLevelCountKey(LevelCountKey::Enter, c.typed, 10);
        EXPECT_EQ(answer.boxText, c.shown) << c.typed;
        EXPECT_EQ(answer.levelCount, c.count) << c.typed;
        EXPECT_EQ(answer.redraw, c.redraw) << c.typed;
        EXPECT_TRUE(answer.discarded);
    }
}

TEST(LevelCountBox, LetsDigitsAndBackspaceThroughAlone) {
    for (const char32_t character : U"0123456789\b\r\n\x1B-+., aE\u0663") {
        const LevelCountKey key = LevelCountKeyOf(character);
        const LevelCountAnswer answer = AnswerLevelCountKey(key, "77", 10);
        const bool passes = (character >= U'0' && character <= U'9') || character == U'\b';
        const bool enters = character == U'\r' || character == U'\n';
        EXPECT_EQ(answer.discarded, !passes) << static_cast<int>(character);
        EXPECT_EQ(answer.redraw, enters) << static_cast<int>(character);
        EXPECT_EQ(answer.boxText, character == U'\x1B' ? "10" : "77");
        EXPECT_EQ(answer.levelCount, enters ? 77 : 10);
    }
}

} // namespace
} // namespace terravo
