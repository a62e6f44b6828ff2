#include "view3d/Rendering.h"

#include "plot2d/PixelSurface.h"
#include "view3d/Frame3D.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

namespace terravo::Rendering {
namespace {

constexpr int kMarkRadius = 3;
constexpr Colour kTurningFrame = RGB(128, 64, 64);
constexpr double kQuarterTurn = 1.570796326794895;

PaintTools MarkTools() {
    PaintTools tools;
    tools.penColour = kWhite;
    tools.brush = kGrey;
    return tools;
}

// The order of the cells: which loop is the outer one, and which way each runs.
struct CellOrder {
    bool rowsOutside; // the outer loop runs over j
    bool iUpwards;
    bool jUpwards;
};

constexpr std::array<CellOrder, 4> kCellOrders{{
    {true, true, false},
    {false, false, false},
    {true, false, true},
    {false, true, true},
}};

template <class Visit>
void ForEach(Index count, bool upwards, Visit visit) {
    for (Index k = 1; k <= count; ++k) {
        visit(upwards ? k : count + 1 - k);
    }
}

Index NodeIndex(const AxonometricView& view, Index i, Index j) {
    return (i - 1) * view.ny + j;
}

template <class Surface>
using Places = Array1<typename Surface::Place>;

// Marks of all points, in storage order; where they are.
template <class Surface>
Places<Surface> DrawPoints(Surface& surface, const AxonometricView& view, bool colour) {
    PaintTools tools = MarkTools();
    Places<Surface> places(view.pointCount);
    for (Index i = 1; i <= view.pointCount; ++i) {
        places[i] = Surface::PlaceAt(view.Project(view.X[i], view.Y[i], view.Z[i]));
        if (colour) {
            tools.brush = view.pointColour[i];
        }
        surface.FillDisc(places[i], kMarkRadius, tools);
    }
    return places;
}

// Marks of all points, then the edges of all triangles, many in one call: all corners at once would
// take more memory than the points and the triangles together.
template <class Surface>
Places<Surface> DrawTriangles(Surface& surface, const AxonometricView& view, bool colour) {
    constexpr Index kAtATime = 16384;
    Places<Surface> places = DrawPoints(surface, view, colour);
    PaintTools tools = MarkTools();
    tools.brush.reset();
    const Index count = view.triangles.Rows();
    const std::vector<std::int32_t> threes(static_cast<std::size_t>(std::min(count, kAtATime)), 3);
    std::vector<typename Surface::Place> corners;
    corners.reserve(3 * threes.size());
    for (Index before = 0; before < count; before += kAtATime) {
        const Index last = before + std::min(count - before, kAtATime);
        corners.clear();
        for (Index t = before + 1; t <= last; ++t) {
            for (Index j = 1; j <= 3; ++j) {
                corners.push_back(places[view.triangles(t, j)]);
            }
        }
        surface.FillPolyPolygon(corners, std::span(threes).first(corners.size() / 3), tools);
    }
    return places;
}

template <class Surface>
Places<Surface> NodePlaces(const AxonometricView& view) {
    Places<Surface> places(view.nx * view.ny);
    for (Index i = 1; i <= view.nx; ++i) {
        for (Index j = 1; j <= view.ny; ++j) {
            places[NodeIndex(view, i, j)] =
                Surface::PlaceAt(view.Project(view.X[i], view.Y[j], view.gridZ(i, j)));
        }
    }
    return places;
}

// Visits the cells of a grid, those farthest from the viewer first.
template <class Visit>
void ForEachCell(const AxonometricView& view, Visit visit) {
    const double quarter = std::floor(static_cast<double>(view.theta) / kQuarterTurn);
    if (!(quarter >= 0 && quarter < 4)) {
        return;
    }
    const CellOrder order = kCellOrders[static_cast<std::size_t>(quarter)];
    const Index columns = view.nx - 1;
    const Index rows = view.ny - 1;
    if (order.rowsOutside) {
        ForEach(rows, order.jUpwards,
                [&](Index j) { ForEach(columns, order.iUpwards, [&](Index i) { visit(i, j); }); });
    } else {
        ForEach(columns, order.iUpwards,
                [&](Index i) { ForEach(rows, order.jUpwards, [&](Index j) { visit(i, j); }); });
    }
}

template <class Surface>
Places<Surface> DrawGridSurface(Surface& surface, const AxonometricView& view, bool colour) {
    Places<Surface> places = NodePlaces<Surface>(view);
    const auto node = [&](Index i, Index j) { return places[NodeIndex(view, i, j)]; };
    PaintTools tools = MarkTools();
    ForEachCell(view, [&](Index i, Index j) {
        const std::array quad{node(i, j), node(i, j + 1), node(i + 1, j + 1), node(i + 1, j)};
        if (colour) {
            tools.brush = view.cellColour(i, j);
        }
        surface.FillPolygon(quad, tools);
    });
    return places;
}

template <class Surface>
Places<Surface> DrawMarks(Surface& surface, const AxonometricView& view, bool colour) {
    switch (view.mode) {
    case ViewMode::Points:
        return DrawPoints(surface, view, colour);
    case ViewMode::Surface:
        return DrawGridSurface(surface, view, colour);
    case ViewMode::Triangles:
        break;
    }
    return DrawTriangles(surface, view, colour);
}

Array1<PixelPoint> Pixels(Array1<PixelPoint> places) {
    return places;
}

Array1<PixelPoint> Pixels(const Array1<PixelPosition>& places) {
    Array1<PixelPoint> pixels(places.UpperBound());
    std::transform(places.begin(), places.end(), pixels.begin(), NearestPixel);
    return pixels;
}

} // namespace

void DrawRotationMarker(DrawSurface& surface, const AxonometricView& view) {
    const auto wide = [](float value) { return static_cast<double>(value); };
    const auto onBase = [&](double x, double y) {
        const double back = y - wide(view.extents.ymin);
        return UserPosition{x + back * wide(view.slantX),
                            wide(view.extents.zmin) + back * wide(view.slantZ)};
    };
    surface.SetForeColor(kGreen);
    const UserPosition foot = onBase(view.centreX, view.centreY);
    surface.SetDrawStyle(DrawStyles::kDashDot);
    surface.Line(foot.x, foot.y, foot.x, foot.y + wide(view.zRange), kGreen);
    const UserPosition end = onBase(wide(view.halfX) * std::cos(wide(view.theta)) + view.centreX,
                                    wide(view.halfY) * std::sin(wide(view.theta)) + view.centreY);
    surface.SetDrawStyle(DrawStyles::kSolid);
    surface.Line(foot.x, foot.y, end.x, end.y, kGreen);
    surface.Print("x", NewLine::No);
}

bool Redraw(DrawSurface& surface, AxonometricView& view, bool full, bool colour,
            const RunState& run, MessageService& messages) {
    view.extents = view.dataExtents;
    if (!DrawFrame3D(surface, view, view.rotating ? kTurningFrame : kGreen, run, messages)) {
        return false;
    }
    if (full) {
        view.TakeFrame();
    }
    WithPlaces(surface,
               [&](auto& places) { view.screenPoint = Pixels(DrawMarks(places, view, colour)); });
    if (view.rotating) {
        DrawRotationMarker(surface, view);
    }
    surface.Refresh();
    return true;
}

} // namespace terravo::Rendering
