#include "util/Parallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

namespace terravo {
namespace {

TEST(InParallel, DoesEveryPieceOnceAndHandsAnExceptionOn) {
    std::vector<int> times(1000, 0);
    InParallel(1000, [&times](int piece) { ++times[static_cast<std::size_t>(piece)]; });
    EXPECT_EQ(times, std::vector<int>(1000, 1));
    InParallel(0, [](int) { FAIL(); });

    std::atomic<int> begun{0};
    const auto failing = [&begun](int piece) {
        ++begun;
        if (piece == 3) {
            throw std::runtime_error("piece 3");
        }
    };
    EXPECT_THROW(InParallel(1000000, failing), std::runtime_error);
    EXPECT_LT(begun, 1000000) << "the rest is left out";
}

} // namespace
} // namespace terravo
