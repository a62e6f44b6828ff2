#include "plot2d/ColourScale.h"

#include "util/AppError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace terravo {
namespace {

using ColourScale::MakePalette;

TEST(ColourScale, PlanRampRunsFromBlueOverGreenToRed) {
    const auto palette = MakePalette(256);
    ASSERT_EQ(palette.size(), 256U);
    const struct {
        std::size_t entry;
        Colour colour;
    } samples[] = {
        {0, RGB(0, 0, 255)},      {1, RGB(16, 23, 239)},    {64, RGB(128, 181, 127)},
        {127, RGB(180, 255, 75)}, {128, RGB(181, 255, 74)}, {200, RGB(226, 168, 29)},
        {255, RGB(255, 0, 0)},
    };
    for (const auto& sample : samples) {
        EXPECT_EQ(palette[sample.entry], sample.colour) << "entry " << sample.entry;
    }
}

TEST(ColourScale, ViewRampsPassTheirCornerColoursAndNeverJump) {
    const struct {
        int size;
        std::vector<Colour> corners; // at the ends of the segments
    } ramps[] = {
        {1280,
         {RGB(255, 0, 255), RGB(0, 0, 255), RGB(0, 255, 255), RGB(0, 255, 0), RGB(255, 255, 0),
          RGB(255, 0, 0)}},
        {1792,
         {RGB(255, 255, 255), RGB(255, 0, 255), RGB(0, 0, 255), RGB(0, 255, 255), RGB(0, 255, 0),
          RGB(255, 255, 0), RGB(255, 0, 0), RGB(0, 0, 0)}},
    };
    for (const auto& ramp : ramps) {
        const auto palette = MakePalette(ramp.size);
        ASSERT_EQ(palette.size(), static_cast<std::size_t>(ramp.size));
        for (std::size_t k = 0; k + 1 < ramp.corners.size(); ++k) {
            EXPECT_EQ(palette[256 * k], ramp.corners[k]) << "segment " << k;
            EXPECT_EQ(palette[256 * k + 255], ramp.corners[k + 1]) << "segment " << k;
        }
        for (std::size_t i = 1; i < palette.size(); ++i) {
            const int change = std::abs(RedOf(palette[i]) - RedOf(palette[i - 1])) +
                               std::abs(GreenOf(palette[i]) - GreenOf(palette[i - 1])) +
                               std::abs(BlueOf(palette[i]) - BlueOf(palette[i - 1]));
            EXPECT_LE(change, 1) << "entry " << i << " of " << ramp.size;
        }
    }
}

TEST(ColourScale, OtherSizesAreFixedOrBlackOrRefused) {
    EXPECT_EQ(MakePalette(2), (std::vector<Colour>{kWhite, kGrey}));
    EXPECT_EQ(MakePalette(100), std::vector<Colour>(100, kBlack));
    auto sixteen = MakePalette(16);
    std::sort(sixteen.begin(), sixteen.end());
    EXPECT_EQ(std::unique(sixteen.begin(), sixteen.end()), sixteen.end());
    EXPECT_THROW(MakePalette(0), AppError);
    EXPECT_THROW(MakePalette(-5), AppError);
}

} // namespace
} // namespace terravo
