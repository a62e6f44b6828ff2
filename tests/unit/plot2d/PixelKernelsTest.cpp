#include "plot2d/PixelKernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace terravo {
namespace {

using namespace PixelKernels;

constexpr std::uint32_t kBlank = 0xFF000000U;
constexpr std::uint32_t kInk = 0xFFFFFFFFU;
constexpr Paint kCopyInk{kInk, RasterOp::Copy};
constexpr Paint kFlip{0, RasterOp::Invert}; // shows pixels painted twice

// A picture with a margin around the buffer that no routine may touch.
class Picture {
public:
    Picture(int width, int height) : width_(width), height_(height), stride_(width + 2 * kMargin) {
        words_.assign(Place(width + kMargin - 1, height + kMargin - 1) + 1, kBlank);
    }

    PixelBuffer Buffer() { return {&words_[Place(0, 0)], width_, height_, stride_}; }
    std::uint32_t At(int x, int y) const { return words_[Place(x, y)]; }
    bool IsSet(int x, int y) const { return At(x, y) != kBlank; }
    std::set<std::pair<int, int>> Set() const {
        std::set<std::pair<int, int>> pixels;
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                if (IsSet(x, y)) {
                    pixels.insert({x, y});
                }
            }
        }
        return pixels;
    }
    // The margin counts as well.
    bool operator==(const Picture&) const = default;
    bool MarginIsClean() const {
        const auto painted = std::count_if(words_.begin(), words_.end(),
                                           [](std::uint32_t word) { return word != kBlank; });
        return painted == static_cast<std::ptrdiff_t>(Set().size());
    }

private:
    static constexpr int kMargin = 3;

    std::size_t Place(int x, int y) const {
        return static_cast<std::size_t>(y + kMargin) * static_cast<std::size_t>(stride_) +
               static_cast<std::size_t>(x + kMargin);
    }

    int width_;
    int height_;
    int stride_;
    std::vector<std::uint32_t> words_;
};

TEST(PixelKernels, LineAndItsReverseShareTheirPixels) {
    for (int dx = -12; dx <= 12; ++dx) {
        for (int dy = -12; dy <= 12; ++dy) {
            const PixelPoint a{15, 15};
            const PixelPoint b{15 + dx, 15 + dy};
            Picture forward(32, 32);
            Picture backward(32, 32);
            DrawLine(forward.Buffer(), a, b, kFlip);
            DrawLine(backward.Buffer(), b, a, kFlip);
            auto there = forward.Set();
            auto back = backward.Set();
            ASSERT_EQ(there.size(), static_cast<std::size_t>(std::max(std::abs(dx), std::abs(dy))));
            ASSERT_FALSE(there.contains({b.x, b.y}));
            there.insert({b.x, b.y});
            back.insert({a.x, a.y});
            ASSERT_EQ(there, back) << dx << ", " << dy;
            const double length = std::hypot(dx, dy);
            for (const auto& [x, y] : there) {
                const double cross = dx * (y - a.y) - dy * (x - a.x);
                ASSERT_TRUE(length == 0 || std::fabs(cross) / length <= 0.5 + 1e-9);
            }
        }
    }
}

TEST(PixelKernels, LinesThatLeaveTheBufferKeepTheirPixelsAndDashes) {
    std::mt19937 random(3);
    // Short lines, so that many pass exactly between two pixels where the buffer ends.
    std::uniform_int_distribution<int> place(0, 47);
    const int left = 14;
    const int top = 12;
    for (int i = 0; i < 6000; ++i) {
        const PixelPoint a{place(random), place(random)};
        const PixelPoint b{place(random), place(random)};
        const DashPattern dashes = DashPatternForStyle(i % 4);
        Picture whole(48, 48);
        Picture window(20, 24);
        DrawLine(whole.Buffer(), a, b, kFlip, dashes);
        DrawLine(window.Buffer(), {a.x - left, a.y - top}, {b.x - left, b.y - top}, kFlip, dashes);
        for (int y = 0; y < 24; ++y) {
            for (int x = 0; x < 20; ++x) {
                ASSERT_EQ(window.IsSet(x, y), whole.IsSet(x + left, y + top)) << i;
            }
        }
        ASSERT_TRUE(window.MarginIsClean());
    }
}

TEST(PixelKernels, EveryRoutineTakesCoordinatesFarOutside) {
    constexpr int kLow = std::numeric_limits<int>::min();
    constexpr int kHigh = std::numeric_limits<int>::max();
    const PixelPoint corners[] = {{kLow, kLow}, {kHigh, kHigh}, {kLow, kHigh}, {kHigh, kLow},
                                  {kLow, 5},    {kHigh, 5},     {5, kLow},     {5, kHigh},
                                  {5, 5},       {-4000, 7}};
    Picture picture(20, 10);
    const PixelBuffer buffer = picture.Buffer();
    for (const PixelPoint a : corners) {
        for (const PixelPoint b : corners) {
            DrawLine(buffer, a, b, kCopyInk, DashPatternForStyle(1));
            DrawLine(buffer, a, b, kCopyInk);
            DrawWideLine(buffer, a, b, 5, kCopyInk);
            FillRect(buffer, a, b, kCopyInk);
            const PixelPoint triangle[] = {a, b, {3, 3}};
            const std::int32_t three = 3;
            FillPolygons(buffer, triangle, std::span(&three, 1), kCopyInk);
        }
        SetPoint(buffer, a, 7, kCopyInk);
        DrawCircle(buffer, a, 3, kCopyInk);
        FloodFill(buffer, a, kInk, kCopyInk);
    }
    EXPECT_TRUE(picture.MarginIsClean());
    Picture crossed(20, 10);
    DrawLine(crossed.Buffer(), {kLow, 5}, {kHigh, 5}, kCopyInk);
    EXPECT_EQ(crossed.Set().size(), 20U);
}

TEST(PixelKernels, ClipsSegmentsOfAnyLengthAlongTheirLine) {
    PixelPosition a{1e300, 1e300};
    PixelPosition b{0, 0};
    ASSERT_TRUE(ClipSegment(a, b, 1000));
    EXPECT_DOUBLE_EQ(a.x, 1000);
    EXPECT_DOUBLE_EQ(a.y, 1000);
    EXPECT_EQ(b.x, 0);

    a = {-3000, 100};
    b = {1000, 500};
    ASSERT_TRUE(ClipSegment(a, b, 1000));
    EXPECT_DOUBLE_EQ(a.x, -1000);
    EXPECT_DOUBLE_EQ(a.y, 300);

    a = {-3000, 0};
    b = {0, 3000};
    EXPECT_FALSE(ClipSegment(a, b, 1000)) << "passes the corner outside";
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    constexpr double kLargest = std::numeric_limits<double>::max();
    for (const double bad : {kInfinite, -kInfinite, std::nan("")}) {
        a = {0, bad};
        b = {0, 0};
        EXPECT_FALSE(ClipSegment(a, b, 1000));
    }
    a = {-kLargest, -kLargest};
    b = {kLargest, kLargest};
    if (ClipSegment(a, b, 1000)) {
        for (const double v : {a.x, a.y, b.x, b.y}) {
            EXPECT_LE(std::fabs(v), 1000);
        }
    }
}

TEST(PixelKernels, WideLinesAreTheUnionOfDiscsPaintedOnce) {
    std::mt19937 random(5);
    std::uniform_int_distribution<int> place(-15, 55);
    for (int i = 0; i < 800; ++i) {
        const PixelPoint a{place(random), place(random)};
        const PixelPoint b = i % 10 == 0 ? a : PixelPoint{place(random), place(random)};
        const int width = 2 + i % 6;
        Picture line(40, 40);
        DrawWideLine(line.Buffer(), a, b, width, kFlip);

        Picture centres(110, 110);
        const int shift = 35;
        DrawLine(centres.Buffer(), {a.x + shift, a.y + shift}, {b.x + shift, b.y + shift},
                 kCopyInk);
        Picture discs(40, 40);
        for (const auto& [x, y] : centres.Set()) {
            SetPoint(discs.Buffer(), {x - shift, y - shift}, width, kCopyInk);
        }
        SetPoint(discs.Buffer(), b, width, kCopyInk);
        ASSERT_EQ(line.Set(), discs.Set()) << i;
        ASSERT_TRUE(line.MarginIsClean());
    }
}

// Even-odd by counting edges left of the pixel, in exact integer arithmetic.
bool IsInside(const std::vector<PixelPoint>& polygon, int x, int y) {
    bool inside = false;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        PixelPoint p = polygon[i];
        PixelPoint q = polygon[(i + 1) % polygon.size()];
        if (p.y > q.y) {
            std::swap(p, q);
        }
        if (y >= p.y && y < q.y && (x - p.x) * (q.y - p.y) >= (y - p.y) * (q.x - p.x)) {
            inside = !inside;
        }
    }
    return inside;
}

TEST(PixelKernels, FillsPolygonsByTheEvenOddRule) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> place(-20, 60);
    std::uniform_int_distribution<std::size_t> corners(3, 9);
    for (int i = 0; i < 500; ++i) {
        std::vector<PixelPoint> polygon(corners(random));
        for (PixelPoint& p : polygon) {
            p = {place(random), place(random)};
        }
        const auto count = static_cast<std::int32_t>(polygon.size());
        Picture picture(40, 40);
        FillPolygons(picture.Buffer(), polygon, std::span(&count, 1), kFlip);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x) {
                ASSERT_EQ(picture.IsSet(x, y), IsInside(polygon, x, y)) << i;
            }
        }
        ASSERT_TRUE(picture.MarginIsClean());
    }
}

TEST(PixelKernels, FloodFillTakesInWhatHasItsColourAndEndsWhateverItsMode) {
    Picture picture(9, 7);
    const std::uint32_t border = 0xFF0000FFU;
    FillRect(picture.Buffer(), {2, 2}, {3, 5}, kCopyInk);
    ASSERT_TRUE(FloodFill(picture.Buffer(), {4, 3}, border, kCopyInk));
    EXPECT_EQ(picture.Set().size(), 63U);
    Picture open(9, 7);
    ASSERT_TRUE(FloodFill(open.Buffer(), {4, 3}, border, kFlip));
    EXPECT_EQ(open.Set().size(), 63U);
    EXPECT_FALSE(FloodFill(open.Buffer(), {9, 3}, border, kCopyInk));
    EXPECT_TRUE(open.MarginIsClean());
}

TEST(PixelKernels, OutlinedPolygonsHaveThePixelsOfTheirFillAndTheirLines) {
    std::mt19937 random(17);
    std::uniform_int_distribution<std::size_t> corners(0, 9);
    // Few pixels, so that corners coincide and lie in a row; then many; then beyond the picture.
    const std::array<std::pair<int, int>, 4> ranges{std::pair{5, 8}, std::pair{3, 9},
                                                    std::pair{0, 89}, std::pair{-40, 130}};
    for (std::size_t i = 0; i < 40000; ++i) {
        const auto [low, high] = ranges[i < 36000 ? i % 2 : 2 + i % 2];
        std::uniform_int_distribution<int> place(low, high);
        std::vector<PixelPoint> polygon(i % 3 == 0 ? corners(random) : 3 + corners(random) % 3);
        for (PixelPoint& p : polygon) {
            p = {place(random), place(random)};
        }
        const int side = i < 36000 ? 10 : 90;
        Picture expectedOutline(side, side);
        for (std::size_t k = 0; k < polygon.size(); ++k) {
            DrawLine(expectedOutline.Buffer(), polygon[k], polygon[(k + 1) % polygon.size()],
                     kCopyInk);
        }
        Picture expected = expectedOutline;
        const auto count = static_cast<std::int32_t>(polygon.size());
        FillPolygons(expected.Buffer(), polygon, std::span(&count, 1), kCopyInk);
        Picture filled(side, side);
        FillWithOutline(filled.Buffer(), polygon, kInk);
        ASSERT_TRUE(filled == expected) << i;
        Picture outline(side, side);
        DrawOutline(outline.Buffer(), polygon, kInk);
        ASSERT_TRUE(outline == expectedOutline) << i;
    }
}

} // namespace
} // namespace terravo
