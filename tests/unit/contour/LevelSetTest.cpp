#include "contour/LevelSet.h"

#include "plot2d/ColourScale.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

LevelSet Make(Extent range, LevelRequest request) {
    return MakeLevelSet(range, ColourScale::MakePalette(256), request);
}

TEST(MakeLevelSet, SpansTheHeightsWithColoursInProportion) {
    LevelRequest request;
    request.levelCount = 7;
    request.nudgeEnds = false;
    const LevelSet levels = Make({10, 40}, request);
    const std::vector<Colour> palette = ColourScale::MakePalette(256);
    const std::array<std::size_t, 7> entries{0, 42, 85, 128, 170, 212, 255};
    for (Index k = 1; k <= 7; ++k) {
        EXPECT_DOUBLE_EQ(levels[k].value, 10 + 5.0 * (k - 1));
        EXPECT_EQ(levels[k].colour, palette[entries[static_cast<std::size_t>(k) - 1]]);
        EXPECT_EQ(levels[k].labelColour, levels[k].colour);
        EXPECT_EQ(levels[k].width, 1);
        EXPECT_EQ(levels[k].labelSize, 10);
        EXPECT_TRUE(levels[k].label.empty());
    }
}

TEST(MakeLevelSet, EndsExactlyAtTheExtremesWhateverTheSpacing) {
    LevelRequest request;
    request.nudgeEnds = false;
    for (const Index count : {2, 3, 7, 10, 1000}) {
        request.levelCount = count;
        const LevelSet levels = Make({0.1, 0.7}, request);
        EXPECT_EQ(levels[1].value, 0.1);
        EXPECT_EQ(levels[count].value, 0.7);
    }
}

TEST(MakeLevelSet, NudgesTheEndsInwardsButLabelsThemUnmoved) {
    LevelRequest request;
    request.levelCount = 3;
    request.showValues = true;
    request.decimalSeparator = ',';
    const LevelSet levels = Make({-1, 3}, request);
    EXPECT_DOUBLE_EQ(levels[1].value, -1 + 2e-9);
    EXPECT_DOUBLE_EQ(levels[2].value, 1);
    EXPECT_DOUBLE_EQ(levels[3].value, 3 - 2e-9);
    EXPECT_GT(levels[1].value, -1);
    EXPECT_LT(levels[3].value, 3);
    EXPECT_EQ(levels[1].label, "-1,000");
    EXPECT_EQ(levels[3].label, "3,000");
}

} // namespace
} // namespace terravo
