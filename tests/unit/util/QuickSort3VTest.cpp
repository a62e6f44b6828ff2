#include "util/QuickSort3V.h"

#include "support/FakeServices.h"
#include "util/modUtilita.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <numbers>
#include <random>

namespace terravo {
namespace {

struct Rows {
    Array1<double> keys;
    Array1<double> tens;
    Array1<double> hundreds;

    bool operator==(const Rows&) const = default;
};

Rows MakeRows(const Array1<double>& keys) {
    Rows rows{keys, keys, keys};
    for (Index i = 1; i <= keys.UpperBound(); ++i) {
        rows.tens[i] = 10 * keys[i];
        rows.hundreds[i] = 100 * keys[i];
    }
    return rows;
}

Rows Sorted(Rows rows, Index low, Index high, Index order) {
    FakeMessages messages;
    QuickSort3V(rows.keys, rows.tens, rows.hundreds, low, high, order, messages);
    EXPECT_TRUE(messages.boxes.empty());
    return rows;
}

TEST(QuickSort3V, MovesWholeRowsInEitherOrder) {
    const Rows rows = MakeRows({3, 1, 2});
    EXPECT_EQ(Sorted(rows, 1, 3, 1), MakeRows({1, 2, 3}));
    EXPECT_EQ(Sorted(rows, 1, 3, -1), MakeRows({3, 2, 1}));
    EXPECT_EQ(Sorted(rows, 1, 3, 0), rows);
    EXPECT_EQ(Sorted(rows, 3, 1, 1), rows);
    EXPECT_EQ(Sorted(rows, 1, 2, 1), MakeRows({1, 3, 2})) << "two rows";
    EXPECT_EQ(Sorted(MakeRows({9, 4, 3, 2, 0}), 2, 4, 1), MakeRows({9, 2, 3, 4, 0})) << "a part";
}

TEST(QuickSort3V, SortsEveryKindOfColumn) {
    std::mt19937 engine(3);
    for (const unsigned distinct : {1U, 2U, 7U, 1000000U}) {
        for (const Index count : {4, 5, 100, 30000}) {
            Array1<double> keys(count);
            for (double& key : keys) {
                key = static_cast<double>(engine() % distinct);
            }
            Array1<double> expected = keys;
            std::sort(expected.begin(), expected.end());
            EXPECT_EQ(Sorted(MakeRows(keys), 1, count, 1), MakeRows(expected));
            std::sort(expected.begin(), expected.end(), std::greater<>());
            EXPECT_EQ(Sorted(MakeRows(keys), 1, count, -1), MakeRows(expected));
        }
    }
}

TEST(QuickSort3V, ReportsAnIndexOutsideAnArray) {
    FakeMessages messages;
    Rows rows = MakeRows({3, 1, 2});
    rows.hundreds.Resize(2);
    QuickSort3V(rows.keys, rows.tens, rows.hundreds, 1, 3, 1, messages);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0],
              (FakeMessages::Box{"Errore 9\r\nSubscript out of range", " QuickSort3V"}));
}

TEST(PolarAngle, RunsOnceRoundFromTheXAxis) {
    using modUtilita::PolarAngle;
    using std::numbers::pi;
    const struct {
        double y;
        double x;
        double angle;
    } cases[] = {{0, 1, 0},   {1, 1, pi / 4},       {1, 0, pi / 2},      {1, -1, 3 * pi / 4},
                 {0, -1, pi}, {-1, -1, 5 * pi / 4}, {-1, 0, 3 * pi / 2}, {-1, 1, 7 * pi / 4}};
    for (const auto& c : cases) {
        EXPECT_NEAR(PolarAngle(c.y, c.x), c.angle, 1e-13) << c.y << ", " << c.x;
    }
    EXPECT_EQ(PolarAngle(1, std::numeric_limits<double>::quiet_NaN()), 0);
}

} // namespace
} // namespace terravo
