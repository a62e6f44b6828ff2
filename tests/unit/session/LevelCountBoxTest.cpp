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
        {"1.5", "1.5", 2, true},
        {"100000", "100000", 100000, true},
        {"1.2", "10", 10, false}, // greater than 1, and yet a single level
        {"1", "10", 10, false},
        {"-5", "10", 10, false},
        {"", "10", 10, false},
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

} // namespace
} // namespace terravo
