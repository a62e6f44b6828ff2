// Lines, points and circles of PixelKernels.
#include "plot2d/DrawCodes.h"
#include "plot2d/PixelKernelsDetail.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace terravo::PixelKernels {
namespace {

using namespace Detail;

struct StepRange {
    std::int64_t first;
    std::int64_t last;
};

// Steps k at which start + step * k lies in low..high.
StepRange StepsInside(int start, int step, int low, int high) {
    return step > 0 ? StepRange{std::int64_t{low} - start, std::int64_t{high} - start}
                    : StepRange{std::int64_t{start} - high, std::int64_t{start} - low};
}

// Keeps the part of the walk inside the window, on the same pixels as the whole walk.
void CutWalk(Walk& walk, const Window& window) {
    int& major = walk.xIsMajor ? walk.x : walk.y;
    int& minor = walk.xIsMajor ? walk.y : walk.x;
    const int majorLow = walk.xIsMajor ? window.left : window.top;
    const int majorHigh = walk.xIsMajor ? window.right : window.bottom;
    const int minorLow = walk.xIsMajor ? window.top : window.left;
    const int minorHigh = walk.xIsMajor ? window.bottom : window.right;

    StepRange steps = StepsInside(major, walk.majorStep, majorLow, majorHigh);
    const StepRange turns = StepsInside(minor, walk.minorStep, minorLow, minorHigh);
    const std::int64_t turn = walk.errorTurn;
    const std::int64_t start = turn + walk.error; // 0 <= start < turn
    if (walk.errorStep == 0) {
        if (turns.first > 0 || turns.last < 0) {
            walk.count = 0;
            return;
        }
    } else {
        steps.first = std::max(steps.first, CeilDivide(turns.first * turn - start, walk.errorStep));
        steps.last =
            std::min(steps.last, FloorDivide((turns.last + 1) * turn - start - 1, walk.errorStep));
    }
    const std::int64_t first = std::max<std::int64_t>(steps.first, 0);
    const std::int64_t last = std::min<std::int64_t>(steps.last, walk.count - 1);
    if (first > last) {
        walk.count = 0;
        return;
    }
    const std::int64_t reached = first * walk.errorStep + start;
    major += walk.majorStep * static_cast<int>(first);
    minor += walk.minorStep * static_cast<int>(reached / turn);
    walk.error = static_cast<int>(reached % turn - turn);
    walk.skipped = static_cast<int>(first);
    walk.count = static_cast<int>(last - first + 1);
}

// Brings ends that are too far for integer arithmetic nearer, along the line.
bool BringNear(PixelPoint& a, PixelPoint& b) {
    constexpr Window kNear{-kFarPixel, -kFarPixel, kFarPixel, kFarPixel};
    if (kNear.Holds(a) && kNear.Holds(b)) {
        return true;
    }
    PixelPosition from{static_cast<double>(a.x), static_cast<double>(a.y)};
    PixelPosition to{static_cast<double>(b.x), static_cast<double>(b.y)};
    if (!ClipSegment(from, to, kFarPixel)) {
        return false;
    }
    a = {modUtilita::RoundHalfEven(from.x), modUtilita::RoundHalfEven(from.y)};
    b = {modUtilita::RoundHalfEven(to.x), modUtilita::RoundHalfEven(to.y)};
    return true;
}

Walk MakeWalk(PixelPoint a, PixelPoint b, const Window& window, bool withLast) {
    const bool inside = window.Holds(a) && window.Holds(b);
    if (!inside && !BringNear(a, b)) {
        return {};
    }
    Walk walk = WholeWalk(a, b);
    if (withLast) {
        ++walk.count;
        walk.errorTurn = std::max(walk.errorTurn, 1); // a single pixel never turns
    }
    if (!inside && walk.count > 0) {
        CutWalk(walk, window);
    }
    return walk;
}

template <class Op>
void PlotWalk(const PixelBuffer& buffer, const Walk& walk, Op op) {
    const std::ptrdiff_t stride = buffer.stride;
    const std::ptrdiff_t majorMove = walk.xIsMajor ? walk.majorStep : walk.majorStep * stride;
    const std::ptrdiff_t minorMove = walk.xIsMajor ? walk.minorStep * stride : walk.minorStep;
    std::uint32_t* pixel = PixelAt(buffer, walk.x, walk.y);
    int error = walk.error;
    for (int left = walk.count; left > 0; --left) {
        op(*pixel);
        error += walk.errorStep;
        // All ones where the line turns: which pixels do is unpredictable, so a branch here would
        // cost more than the rest of the loop.
        const int turns = ~(error >> 31);
        pixel += majorMove + (minorMove & static_cast<std::ptrdiff_t>(turns));
        error -= walk.errorTurn & turns;
    }
}

template <class Op>
void PlotDashedWalk(const PixelBuffer& buffer, const Walk& walk, DashPattern dashes, Op op) {
    int phase = walk.skipped % dashes.length;
    const auto dashed = [&](std::uint32_t& pixel) {
        if ((dashes.bits >> static_cast<unsigned>(phase) & 1U) != 0) {
            op(pixel);
        }
        phase = phase + 1 == dashes.length ? 0 : phase + 1;
    };
    PlotWalk(buffer, walk, dashed);
}

// Rows of a disc `width` pixels across: row j spans inset..width-1-inset.
std::vector<int> DiscInsets(int width) {
    // A quarter less than the squared radius keeps small discs from filling their square.
    const double centre = (width - 1) / 2.0;
    const double limit = width * width / 4.0 - 0.25;
    std::vector<int> insets(static_cast<std::size_t>(width), 0);
    for (int row = 0; row < width; ++row) {
        const double dy = row - centre;
        int inset = 0;
        while ((inset - centre) * (inset - centre) + dy * dy >= limit && 2 * inset + 1 < width) {
            ++inset;
        }
        insets[static_cast<std::size_t>(row)] = inset;
    }
    return insets;
}

const std::vector<int>& CachedDiscInsets(int width) {
    thread_local std::vector<int> insets;
    if (static_cast<int>(insets.size()) != width) {
        insets = DiscInsets(width);
    }
    return insets;
}

int LimitedWidth(int width) {
    constexpr int kWidest = 4096;
    return std::clamp(width, 1, kWidest);
}

constexpr DashPattern PatternOf(int drawStyle) {
    DashPattern pattern;
    bool isDash = true;
    for (const int length : DashLengths(drawStyle)) {
        for (int i = 0; i < length; ++i, ++pattern.length) {
            pattern.bits |= isDash ? 1U << static_cast<unsigned>(pattern.length) : 0U;
        }
        isDash = !isDash;
    }
    return pattern;
}

// First and last pixel painted in one row; none while first > last.
struct RowExtent {
    int first = kFarPixel * 2;
    int last = -kFarPixel * 2;
};

} // namespace

RasterOp RasterOpFromDrawMode(int drawMode) {
    switch (drawMode) {
    case DrawModes::kInvert:
        return RasterOp::Invert;
    case DrawModes::kXor:
        return RasterOp::Xor;
    case DrawModes::kNotXor:
        return RasterOp::NotXor;
    default:
        return RasterOp::Copy;
    }
}

DashPattern DashPatternForStyle(int drawStyle) {
    using namespace DrawStyles;
    static constexpr std::array kPatterns{PatternOf(kSolid), PatternOf(kDash), PatternOf(kDot),
                                          PatternOf(kDashDot), PatternOf(kDashDotDot)};
    const bool isNamed = drawStyle >= kSolid && drawStyle <= kDashDotDot;
    return kPatterns[static_cast<std::size_t>(isNamed ? drawStyle : kDot)];
}

bool ClipSegment(PixelPosition& a, PixelPosition& b, double limit) {
    if (!std::isfinite(a.x) || !std::isfinite(a.y) || !std::isfinite(b.x) || !std::isfinite(b.y)) {
        return false;
    }
    // A quarter of everything: differences of the largest doubles stay finite, and the division by
    // four is exact.
    const double edge = limit / 4;
    PixelPosition p{a.x / 4, a.y / 4};
    PixelPosition q{b.x / 4, b.y / 4};
    // Moves the end that lies beyond side * edge onto it, reckoned from the other end, which is the
    // one with the digits to spare.
    const auto cut = [edge](PixelPosition& out, const PixelPosition& in, double PixelPosition::*u,
                            double PixelPosition::*v, double side) {
        if (side * out.*u > edge) {
            const double t = (side * edge - in.*u) / (out.*u - in.*u);
            out.*v = in.*v + t * (out.*v - in.*v);
            out.*u = side * edge;
        }
    };
    for (const double side : {-1.0, 1.0}) {
        for (const auto& [u, v] : {std::pair{&PixelPosition::x, &PixelPosition::y},
                                   std::pair{&PixelPosition::y, &PixelPosition::x}}) {
            if (side * p.*u > edge && side * q.*u > edge) {
                return false;
            }
            cut(p, q, u, v, side);
            cut(q, p, u, v, side);
        }
    }
    a = {std::clamp(p.x * 4, -limit, limit), std::clamp(p.y * 4, -limit, limit)};
    b = {std::clamp(q.x * 4, -limit, limit), std::clamp(q.y * 4, -limit, limit)};
    return true;
}

void DrawLine(const PixelBuffer& buffer, PixelPoint a, PixelPoint b, const Paint& paint,
              DashPattern dashes) {
    const Window window{0, 0, buffer.width - 1, buffer.height - 1};
    if (dashes.length == 0 && window.Holds(a) && window.Holds(b)) {
        // Nearly every line of a map. The walk stays in registers here: handed over as a whole it
        // takes as long as drawing it.
        WithOperation(paint, [&](auto op) { PlotWalk(buffer, WholeWalk(a, b), op); });
        return;
    }
    const Walk walk = MakeWalk(a, b, window, false);
    if (walk.count == 0) {
        return;
    }
    WithOperation(paint, [&](auto op) {
        if (dashes.length == 0) {
            PlotWalk(buffer, walk, op);
        } else {
            PlotDashedWalk(buffer, walk, dashes, op);
        }
    });
}

void DrawWideLine(const PixelBuffer& buffer, PixelPoint a, PixelPoint b, int width,
                  const Paint& paint) {
    const int across = LimitedWidth(width);
    const Window window{-across, -across, buffer.width + across, buffer.height + across};
    const Walk walk = MakeWalk(a, b, window, true);
    // In every row the discs along a line join into one span, so each pixel is painted once: a
    // stamp for each centre would undo itself under xor.
    const std::vector<int>& insets = CachedDiscInsets(across);
    const int top = std::max(std::min(Limited(a).y, Limited(b).y) - across, 0);
    const int bottom = std::min(std::max(Limited(a).y, Limited(b).y) + across, buffer.height - 1);
    if (walk.count == 0 || top > bottom) {
        return;
    }
    thread_local std::vector<RowExtent> rows;
    rows.assign(static_cast<std::size_t>(bottom - top) + 1, RowExtent{});
    PixelPoint centre{walk.x, walk.y};
    int error = walk.error;
    for (int left = walk.count; left > 0; --left) {
        const int firstX = centre.x - (across - 1) / 2;
        const int firstY = centre.y - (across - 1) / 2;
        const int lowRow = std::max(0, top - firstY);
        const int highRow = std::min(across, bottom + 1 - firstY);
        for (int row = lowRow; row < highRow; ++row) {
            const int inset = insets[static_cast<std::size_t>(row)];
            RowExtent& extent = rows[static_cast<std::size_t>(firstY + row - top)];
            extent.first = std::min(extent.first, firstX + inset);
            extent.last = std::max(extent.last, firstX + across - 1 - inset);
        }
        error += walk.errorStep;
        const bool turns = error >= 0;
        const int minor = turns ? walk.minorStep : 0;
        error -= turns ? walk.errorTurn : 0;
        centre.x += walk.xIsMajor ? walk.majorStep : minor;
        centre.y += walk.xIsMajor ? minor : walk.majorStep;
    }
    WithOperation(paint, [&](auto op) {
        for (int y = top; y <= bottom; ++y) {
            const RowExtent& extent = rows[static_cast<std::size_t>(y - top)];
            PaintSpan(buffer, y, extent.first, extent.last, op);
        }
    });
}

void SetPoint(const PixelBuffer& buffer, PixelPoint centre, int width, const Paint& paint) {
    const Window window{0, 0, buffer.width - 1, buffer.height - 1};
    if (width <= 1) {
        if (window.Holds(centre)) {
            WithOperation(paint, [&](auto op) { op(*PixelAt(buffer, centre.x, centre.y)); });
        }
        return;
    }
    const int across = LimitedWidth(width);
    const PixelPoint near = Limited(centre);
    const std::vector<int>& insets = CachedDiscInsets(across);
    WithOperation(paint, [&](auto op) {
        const int firstX = near.x - (across - 1) / 2;
        const int firstY = near.y - (across - 1) / 2;
        for (int row = 0; row < across; ++row) {
            const int inset = insets[static_cast<std::size_t>(row)];
            PaintSpan(buffer, firstY + row, firstX + inset, firstX + across - 1 - inset, op);
        }
    });
}

void DrawCircle(const PixelBuffer& buffer, PixelPoint centre, int radius, const Paint& paint) {
    const int across = LimitedWidth(2 * std::clamp(radius, 0, kFarPixel) + 1);
    const PixelPoint near = Limited(centre);
    const int firstX = near.x - (across - 1) / 2;
    const int firstY = near.y - (across - 1) / 2;
    const std::vector<int>& insets = CachedDiscInsets(across);
    const auto insetOf = [&](int row) {
        return row < 0 || row >= across ? across : insets[static_cast<std::size_t>(row)];
    };
    WithOperation(paint, [&](auto op) {
        for (int row = 0; row < across; ++row) {
            // A pixel is on the rim when the row above or below does not reach over it.
            const int inset = insetOf(row);
            const int covered = std::max(insetOf(row - 1), insetOf(row + 1));
            const int rim = std::max(inset, covered - 1);
            const int mirrored = across - 1 - rim;
            if (rim >= mirrored) {
                PaintSpan(buffer, firstY + row, firstX + inset, firstX + across - 1 - inset, op);
            } else {
                PaintSpan(buffer, firstY + row, firstX + inset, firstX + rim, op);
                PaintSpan(buffer, firstY + row, firstX + mirrored, firstX + across - 1 - inset, op);
            }
        }
    });
}

} // namespace terravo::PixelKernels
