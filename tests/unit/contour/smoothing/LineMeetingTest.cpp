#include "contour/smoothing/LineMeeting.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace terravo {
namespace {

struct Drawn {
    std::vector<PlanPoint> places;
    bool closed = false;
};

StraightLines LinesOf(const std::vector<Drawn>& drawn) {
    StraightLines lines;
    for (const Drawn& line : drawn) {
        lines.lines.push_back({lines.places.size(), line.places.size(), line.closed});
        lines.places.insert(lines.places.end(), line.places.begin(), line.places.end());
    }
    return lines;
}

TEST(LineMeeting, TellsCrossingFromTouchingAndFromNeighbours) {
    struct Case {
        const char* name;
        std::vector<Drawn> lines;
        char expected; // '-' none, 'x' crossing, 't' touching
    };
    const double hair = std::nextafter(1.0, 2.0);
    const std::vector<Case> cases = {
        {"one bend", {{{{0, 0}, {1, 0}, {1, 1}}}}, '-'},
        {"closed", {{{{0, 0}, {2, 0}, {0, 2}}, true}}, '-'},
        {"straight on", {{{{0, 0}, {1, 1}, {2, 2}}}}, '-'},
        {"back on itself", {{{{0, 0}, {2, 2}, {1, 1}}}}, 't'},
        {"closed without area", {{{{0, 0}, {2, 0}}, true}}, 't'},
        {"closed, back at its end", {{{{1, 0}, {2, 0}, {2, 2}, {0, 0}}, true}}, '-'},
        {"figure of eight", {{{{0, 0}, {2, 2}, {2, 0}, {0, 2}}, true}}, 'x'},
        {"a cross", {{{{0, 1}, {2, 1}}}, {{{1, 0}, {1, 2}}}}, 'x'},
        {"a T", {{{{0, 1}, {2, 1}}}, {{{1, 1}, {1, 2}}}}, 't'},
        {"a T a hair apart", {{{{0, 1}, {2, 1}}}, {{{1, hair}, {1, 2}}}}, '-'},
        {"end to end", {{{{0, 0}, {1, 1}}}, {{{1, 1}, {2, 0}}}}, 't'},
        {"overlapping", {{{{0, 0}, {2, 2}}}, {{{1, 1}, {3, 3}}}}, 't'},
        {"in one straight, apart", {{{{0, 0}, {1, 1}}}, {{{2, 2}, {3, 3}}}}, '-'},
    };
    for (const Case& c : cases) {
        const auto meeting = FindMeeting(LinesOf(c.lines));
        EXPECT_EQ(meeting ? (meeting->isCrossing ? 'x' : 't') : '-', c.expected) << c.name;
    }
}

// All pairs of pieces in whole numbers.
bool MeetByBruteForce(const std::vector<Drawn>& drawn) {
    const auto side = [](PlanPoint a, PlanPoint b, PlanPoint c) {
        const double area = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
        return area > 0 ? 1 : area < 0 ? -1 : 0;
    };
    const auto overlap = [](double a, double b, double c, double d) {
        return std::max(std::min(a, b), std::min(c, d)) <= std::min(std::max(a, b), std::max(c, d));
    };
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        for (std::size_t k = i + 1; k < drawn.size(); ++k) {
            const PlanPoint a = drawn[i].places[0];
            const PlanPoint b = drawn[i].places[1];
            const PlanPoint c = drawn[k].places[0];
            const PlanPoint d = drawn[k].places[1];
            if (side(a, b, c) * side(a, b, d) <= 0 && side(c, d, a) * side(c, d, b) <= 0 &&
                overlap(a.x, b.x, c.x, d.x) && overlap(a.y, b.y, c.y, d.y)) {
                return true;
            }
        }
    }
    return false;
}

TEST(LineMeeting, FindsWhatAllPairsFind) {
    std::mt19937 engine(3);
    int met = 0;
    for (int round = 0; round < 2000; ++round) {
        const unsigned width = round % 2 == 0 ? 40 : 400;
        std::vector<Drawn> drawn;
        for (int k = 0; k < 30; ++k) {
            const auto any = [&](unsigned from) { return static_cast<double>(engine() % from); };
            const PlanPoint p{any(width), any(width)};
            drawn.push_back({{p, {p.x + any(5) - 2, p.y + 1 + any(4)}}});
        }
        const bool expected = MeetByBruteForce(drawn);
        ASSERT_EQ(FindMeeting(LinesOf(drawn)).has_value(), expected) << round;
        met += expected ? 1 : 0;
    }
    EXPECT_GT(met, 500);
    EXPECT_LT(met, 1900);
}

} // namespace
} // namespace terravo
