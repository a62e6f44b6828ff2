// Rectangles, polygons and the seed fill of PixelKernels.
#include "plot2d/PixelKernelsDetail.h"
#include "plot2d/PixelShapes.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace terravo::PixelKernels {
namespace {

using namespace Detail;

// An edge of a polygon between two rows. `crossing` is the first pixel at or right of the edge in
// the current row and `remainder` how far it overshoots, in units of 1 / rows.
struct Edge {
    int top;
    int end;
    int crossing;
    int remainder;
    int crossingStep;
    int remainderStep;
    int rows;

    void Advance() {
        crossing += crossingStep;
        remainder -= remainderStep;
        if (remainder < 0) {
            remainder += rows;
            ++crossing;
        }
    }
};

void AppendEdge(std::vector<Edge>& edges, PixelPoint a, PixelPoint b, int height) {
    if (a.y > b.y) {
        std::swap(a, b);
    }
    if (a.y == b.y || b.y <= 0 || a.y >= height) {
        return;
    }
    const int rows = b.y - a.y;
    const int dx = b.x - a.x;
    const int top = std::max(a.y, 0);
    const std::int64_t run = static_cast<std::int64_t>(top - a.y) * dx;
    const std::int64_t ceiling = CeilDivide(run, rows);
    const auto stepFloor = static_cast<int>(FloorDivide(dx, rows));
    edges.push_back({top, std::min(b.y, height), a.x + static_cast<int>(ceiling),
                     static_cast<int>(ceiling * rows - run), stepFloor, dx - stepFloor * rows,
                     rows});
}

void CollectEdges(std::vector<Edge>& edges, std::span<const PixelPoint> points,
                  std::span<const std::int32_t> counts, int height) {
    std::size_t start = 0;
    for (const std::int32_t count : counts) {
        if (count < 0 || static_cast<std::size_t>(count) > points.size() - start) {
            break;
        }
        const auto polygon = points.subspan(start, static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const std::size_t next = i + 1 == polygon.size() ? 0 : i + 1;
            AppendEdge(edges, Limited(polygon[i]), Limited(polygon[next]), height);
        }
        start += static_cast<std::size_t>(count);
    }
}

// Sorts a row's crossings; they come nearly sorted from the row above.
void SortByCrossing(std::vector<Edge>& active) {
    for (std::size_t i = 1; i < active.size(); ++i) {
        const Edge edge = active[i];
        std::size_t place = i;
        for (; place > 0 && active[place - 1].crossing > edge.crossing; --place) {
            active[place] = active[place - 1];
        }
        active[place] = edge;
    }
}

template <class Op>
void PaintBetweenEdges(const PixelBuffer& buffer, std::vector<Edge>& edges,
                       std::vector<Edge>& active, Op op) {
    std::sort(edges.begin(), edges.end(),
              [](const Edge& p, const Edge& q) { return p.top < q.top; });
    active.clear();
    std::size_t next = 0;
    for (int y = 0; next < edges.size() || !active.empty(); ++y) {
        if (active.empty()) {
            y = edges[next].top;
        }
        for (; next < edges.size() && edges[next].top == y; ++next) {
            active.push_back(edges[next]);
        }
        SortByCrossing(active);
        for (std::size_t i = 0; i + 1 < active.size(); i += 2) {
            PaintSpan(buffer, y, active[i].crossing, active[i + 1].crossing - 1, op);
        }
        std::erase_if(active, [y](const Edge& edge) { return edge.end == y + 1; });
        for (Edge& edge : active) {
            edge.Advance();
        }
    }
}

void DrawEdges(const PixelBuffer& buffer, std::span<const PixelPoint> corners, std::uint32_t word) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        DrawLine(buffer, corners[i], corners[i + 1 == corners.size() ? 0 : i + 1], {word});
    }
}

// Whatever the corners are.
void FillAndDrawEdges(const PixelBuffer& buffer, std::span<const PixelPoint> corners,
                      std::uint32_t word) {
    const auto count = static_cast<std::int32_t>(corners.size());
    FillPolygons(buffer, corners, std::span(&count, 1), {word});
    DrawEdges(buffer, corners, word);
}

bool IsInside(const Window& bounds, const PixelBuffer& buffer) {
    return bounds.left >= 0 && bounds.top >= 0 && bounds.right < buffer.width &&
           bounds.bottom < buffer.height;
}

// Pixels that the seed fill has reached or may not enter.
class FloodMap {
public:
    FloodMap(const PixelBuffer& buffer, std::uint32_t borderWord)
        : width_(buffer.width), closed_(static_cast<std::size_t>(buffer.width) *
                                        static_cast<std::size_t>(buffer.height)) {
        auto cell = closed_.begin();
        for (int y = 0; y < buffer.height; ++y) {
            const std::uint32_t* const row = PixelAt(buffer, 0, y);
            for (int x = 0; x < buffer.width; ++x) {
                *cell++ = (row[x] & kColourBits) == (borderWord & kColourBits) ? 1 : 0;
            }
        }
    }

    [[nodiscard]] bool IsOpen(int x, int y) const { return closed_[CellOf(x, y)] == 0; }
    void Close(int x, int y) { closed_[CellOf(x, y)] = 1; }

private:
    [[nodiscard]] std::size_t CellOf(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_;
    std::vector<std::uint8_t> closed_;
};

// Puts one seed on the stack for every run of open pixels among x0..x1 of row y.
void PushRuns(const FloodMap& map, std::vector<PixelPoint>& stack, int x0, int x1, int y) {
    bool inRun = false;
    for (int x = x0; x <= x1; ++x) {
        const bool open = map.IsOpen(x, y);
        if (open && !inRun) {
            stack.push_back({x, y});
        }
        inRun = open;
    }
}

} // namespace

void FillRect(const PixelBuffer& buffer, PixelPoint a, PixelPoint b, const Paint& paint) {
    const int top = std::max(std::min(a.y, b.y), 0);
    const int bottom = std::min(std::max(a.y, b.y), buffer.height - 1);
    WithOperation(paint, [&](auto op) {
        for (int y = top; y <= bottom; ++y) {
            PaintSpan(buffer, y, std::min(a.x, b.x), std::max(a.x, b.x), op);
        }
    });
}

void FillPolygons(const PixelBuffer& buffer, std::span<const PixelPoint> points,
                  std::span<const std::int32_t> counts, const Paint& paint) {
    // Maps fill hundreds of thousands of small polygons: the lists keep their memory.
    thread_local std::vector<Edge> edges;
    thread_local std::vector<Edge> active;
    edges.clear();
    CollectEdges(edges, points, counts, buffer.height);
    WithOperation(paint, [&](auto op) { PaintBetweenEdges(buffer, edges, active, op); });
}

void FillWithOutline(const PixelBuffer& buffer, std::span<const PixelPoint> corners,
                     std::uint32_t word) {
    if (corners.empty()) {
        return;
    }
    const Window bounds = BoundsOf(corners);
    if (!IsInside(bounds, buffer) || corners.size() > DistinctCorners::kMost) {
        FillAndDrawEdges(buffer, corners, word);
        return;
    }
    if (corners.size() == 3 && Fits(bounds, TriangleMasks::kSide)) {
        static const TriangleMasks masks(FillAndDrawEdges);
        masks.Paint(buffer, corners, bounds, word);
        return;
    }
    const DistinctCorners distinct(corners);
    if (distinct.Count() < 2) {
        return; // lines leave out their last pixel, so nothing remains of a single one
    }
    if (distinct.AreMonotone()) {
        FillMonotone(buffer, distinct, bounds, word);
    } else {
        FillAndDrawEdges(buffer, corners, word);
    }
}

void DrawOutline(const PixelBuffer& buffer, std::span<const PixelPoint> corners,
                 std::uint32_t word) {
    if (corners.size() == 3) {
        const Window bounds = BoundsOf(corners);
        if (IsInside(bounds, buffer) && Fits(bounds, TriangleMasks::kSide)) {
            static const TriangleMasks masks(DrawEdges);
            masks.Paint(buffer, corners, bounds, word);
            return;
        }
    }
    DrawEdges(buffer, corners, word);
}

bool FloodFill(const PixelBuffer& buffer, PixelPoint seed, std::uint32_t borderWord,
               const Paint& paint) {
    const Window window{0, 0, buffer.width - 1, buffer.height - 1};
    if (!window.Holds(seed)) {
        return false;
    }
    FloodMap map(buffer, borderWord);
    if (!map.IsOpen(seed.x, seed.y)) {
        return false;
    }
    std::vector<PixelPoint> stack{seed};
    WithOperation(paint, [&](auto op) {
        while (!stack.empty()) {
            const PixelPoint p = stack.back();
            stack.pop_back();
            if (!map.IsOpen(p.x, p.y)) {
                continue;
            }
            int first = p.x;
            int last = p.x;
            while (first > 0 && map.IsOpen(first - 1, p.y)) {
                --first;
            }
            while (last < buffer.width - 1 && map.IsOpen(last + 1, p.y)) {
                ++last;
            }
            for (int x = first; x <= last; ++x) {
                map.Close(x, p.y);
            }
            PaintSpan(buffer, p.y, first, last, op);
            if (p.y > 0) {
                PushRuns(map, stack, first, last, p.y - 1);
            }
            if (p.y < buffer.height - 1) {
                PushRuns(map, stack, first, last, p.y + 1);
            }
        }
    });
    return true;
}

} // namespace terravo::PixelKernels
