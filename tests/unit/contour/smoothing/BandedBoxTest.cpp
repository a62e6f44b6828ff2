#include "contour/smoothing/BandedBox.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace terravo::smoothing {
namespace {

// H as a sum of squares of three neighbouring unknowns each, so that it has a minimum.
BandedBox RandomBox(std::size_t n, bool closed, double width, std::mt19937& engine) {
    std::uniform_real_distribution<double> any(-1, 1);
    BandedBox box;
    box.Begin(n, closed);
    for (std::size_t i = 0; i < n; ++i) {
        box.diagonal[i] += 0.1;
        box.right[i] = any(engine);
        box.low[i] = -width * std::fabs(any(engine));
        box.high[i] = width * std::fabs(any(engine));
        if (closed || (i > 0 && i + 1 < n)) {
            const std::size_t a = box.Before(i, 1);
            const std::size_t c = box.After(i, 1);
            const double ja = any(engine);
            const double jb = any(engine);
            const double jc = any(engine);
            box.diagonal[a] += ja * ja;
            box.diagonal[i] += jb * jb;
            box.diagonal[c] += jc * jc;
            box.toNext[a] += ja * jb;
            box.toNext[i] += jb * jc;
            box.toSecond[a] += ja * jc;
        }
    }
    return box;
}

// How far x is from a minimum: what pulls an unknown that is free to follow.
double PullOn(const BandedBox& box, const std::vector<double>& x, std::size_t i) {
    constexpr double kAtBound = 1e-12;
    const double pull = box.right[i] - box.Row(i, x);
    const bool isHeld = pull > 0 ? x[i] >= box.high[i] - kAtBound : x[i] <= box.low[i] + kAtBound;
    return isHeld ? 0 : std::fabs(pull);
}

double EnergyOf(const BandedBox& box, const std::vector<double>& x) {
    double energy = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        energy += x[i] * (box.Row(i, x) / 2 - box.right[i]);
    }
    return energy;
}

TEST(BandedBox, BothWaysComeToTheMinimum) {
    std::mt19937 engine(5);
    BoxSolver solver;
    std::vector<double> x;
    int settled = 0;
    for (int round = 0; round < 400; ++round) {
        const std::size_t n = 3 + static_cast<std::size_t>(round) % 20;
        const bool closed = round % 2 == 1;
        const BandedBox box = RandomBox(n, closed, round % 3 == 0 ? 100 : 0.5, engine);
        const std::size_t held = engine() % n;
        solver.SolveByActiveSet(box, held, x);
        double most = 0;
        for (std::size_t i = 0; i < n; ++i) {
            const bool isHeld = closed && (i == held || i == box.After(held, 1));
            most = std::max(most, isHeld ? std::fabs(x[i]) : PullOn(box, x, i));
        }
        settled += most < 1e-9 ? 1 : 0;
        std::vector<double> swept;
        solver.SolveBySweeps(box, swept);
        for (std::size_t i = 0; i < n; ++i) {
            ASSERT_TRUE(swept[i] >= box.low[i] && swept[i] <= box.high[i]) << round;
        }
        ASSERT_LE(EnergyOf(box, swept), 0) << round;
        if (!closed && most < 1e-9) {
            ASSERT_GE(EnergyOf(box, swept), EnergyOf(box, x) - 1e-9) << round;
        }
    }
    EXPECT_GE(settled, 380);
}

} // namespace
} // namespace terravo::smoothing
