#include "plot2d/AxisRule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace terravo {
namespace {

using namespace AxisRule;

TEST(AxisRule, ChoosesStepAndLimitsOfKnownRanges) {
    const struct {
        double min;
        double max;
        double step;
        double axisMin;
        double axisMax;
        std::size_t ticks;
    } cases[] = {
        {0, 100, 10, 0, 100, 11},      {0, 30, 5, 0, 30, 7},
        {0, 160, 20, 0, 160, 9},       {0, 2, 0.25, 0, 2, 9},
        {0, 0.02, 0.0025, 0, 0.02, 9}, // its logarithm comes out above -3 with ln 10 as a single
        {-73, 41, 20, -80, 60, 8},     {2.992, 3.008, 0.002, 2.992, 3.008, 9},
        {0.05, 99.95, 10, 0, 100, 11}, {500000, 500050, 10, 500000, 500050, 6},
    };
    for (const auto& c : cases) {
        const Axis axis = AxisLimits(c.min, c.max);
        EXPECT_DOUBLE_EQ(axis.step, c.step) << c.min << ".." << c.max;
        EXPECT_DOUBLE_EQ(axis.min, c.axisMin) << c.min << ".." << c.max;
        EXPECT_DOUBLE_EQ(axis.max, c.axisMax) << c.min << ".." << c.max;
        EXPECT_EQ(Ticks(axis).size(), c.ticks) << c.min << ".." << c.max;
    }
}

TEST(AxisRule, AnyRangeGetsFiveToTenStepsAndLimitsAroundIt) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> exponent(-6, 30);
    std::uniform_real_distribution<double> share(-2, 2);
    for (int i = 0; i < 2000; ++i) {
        const double range = std::pow(10.0, exponent(random));
        const double min = share(random) * range;
        const Axis axis = AxisLimits(min, min + range);
        const double steps = static_cast<double>(static_cast<float>(range)) / axis.step;
        ASSERT_GE(steps, 5) << range;
        ASSERT_LE(steps, 10) << range;
        ASSERT_LE(axis.min, min + 1e-5 * axis.step);
        ASSERT_GE(axis.max, min + range - 1e-5 * axis.step);
        ASSERT_GT(axis.min, min - axis.step);
        ASSERT_LT(axis.max, min + range + axis.step);
        const auto ticks = Ticks(axis);
        ASSERT_GE(ticks.size(), 6U);
        ASSERT_LE(ticks.size(), static_cast<std::size_t>(kMaxTicks));
    }
}

TEST(AxisRule, RoundsToFiveDecimalsHalvesToEven) {
    EXPECT_EQ(Round5(0.999996), 1.0);
    EXPECT_EQ(Round5(0.999994), 0.99999);
    EXPECT_EQ(Round5(0.5 / 100000), 0.0);
    EXPECT_EQ(Round5(1.5 / 100000), 2.0 / 100000);
    EXPECT_EQ(Round5(1e300), 1e300);
}

TEST(AxisRule, WidensOnlyNarrowRangesOfX) {
    const Limits narrow = WidenNarrow({7, 7});
    EXPECT_DOUBLE_EQ(narrow.min, 6.99995);
    EXPECT_DOUBLE_EQ(narrow.max, 7.00005);
    const Limits wide = WidenNarrow({7, 7.0002});
    EXPECT_EQ(wide.min, 7);
    EXPECT_EQ(wide.max, 7.0002);
}

TEST(AxisRule, WidensYByTenTimesTheDistanceThatTellsItsLabelsApart) {
    const Limits same = WidenEqualLabels({3, 3}, "#0.0##", '.');
    EXPECT_NEAR(same.min, 2.992, 1e-12);
    EXPECT_NEAR(same.max, 3.008, 1e-12);
    const Limits apart = WidenEqualLabels({3, 3.001}, "#0.0##", '.');
    EXPECT_EQ(apart.min, 3);
    EXPECT_EQ(apart.max, 3.001);
    const Limits huge = WidenEqualLabels({1e20, 1e20}, "#0.0##", '.');
    EXPECT_LT(huge.min, huge.max);
}

TEST(AxisRule, TicksEndWhereSinglePrecisionCannotAdvance) {
    const Axis axis = AxisLimits(4520000, 4520002); // step 0.25, single precision there is 0.5
    EXPECT_EQ(Ticks(axis), std::vector<float>{4520000.0F});
    EXPECT_EQ(Ticks({0, 1000, 1, 1000}).size(), static_cast<std::size_t>(kMaxTicks));
}

} // namespace
} // namespace terravo
