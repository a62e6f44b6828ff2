#include "view3d/Rendering.h"

#include "view3d/Frame3D.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

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

} // namespace

void DrawPoints(DrawSurface& surface, AxonometricView& view, bool colour) {
    PaintTools tools = MarkTools();
    for (Index i = 1; i <= view.pointCount; ++i) {
        view.screenPoint[i] = view.Project(view.X[i], view.Y[i], view.Z[i]);
        if (colour) {
            tools.brush = view.pointColour[i];
        }
        surface.FillDisc(view.screenPoint[i], kMarkRadius, tools);
    }
}

void DrawTriangles(DrawSurface& surface, AxonometricView& view, bool colour) {
    DrawPoints(surface, view, colour);
    PaintTools tools = MarkTools();
    tools.brush.reset();
    const Index count = view.triangles.Rows();
    for (Index before = 0; before < count; before += kTrianglesAtATime) {
        const Index last = before + std::min(count - before, kTrianglesAtATime);
        std::size_t corner = 0;
        for (Index t = before + 1; t <= last; ++t) {
            for (Index j = 1; j <= 3; ++j) {
                view.polyPoints[corner++] = view.screenPoint[view.triangles(t, j)];
            }
        }
        surface.FillPolyPolygon(std::span(view.polyPoints).first(corner),
                                std::span(view.polyCounts).first(corner / 3), tools);
    }
}

void DrawGridSurface(DrawSurface& surface, AxonometricView& view, bool colour) {
    for (Index i = 1; i <= view.nx; ++i) {
        for (Index j = 1; j <= view.ny; ++j) {
            view.screenPoint[NodeIndex(view, i, j)] =
                view.Project(view.X[i], view.Y[j], view.gridZ(i, j));
        }
    }
    const double quarter = std::floor(static_cast<double>(view.theta) / kQuarterTurn);
    if (!(quarter >= 0 && quarter < 4)) {
        return;
    }
    PaintTools tools = MarkTools();
    const auto drawCell = [&](Index i, Index j) {
        const std::array<PixelPoint, 4> quad{view.screenPoint[NodeIndex(view, i, j)],
                                             view.screenPoint[NodeIndex(view, i, j + 1)],
                                             view.screenPoint[NodeIndex(view, i + 1, j + 1)],
                                             view.screenPoint[NodeIndex(view, i + 1, j)]};
        if (colour) {
            tools.brush = view.cellColour(i, j);
        }
        surface.FillPolygon(quad, tools);
    };
    const CellOrder order = kCellOrders[static_cast<std::size_t>(quarter)];
    const Index columns = view.nx - 1;
    const Index rows = view.ny - 1;
    if (order.rowsOutside) {
        ForEach(rows, order.jUpwards, [&](Index j) {
            ForEach(columns, order.iUpwards, [&](Index i) { drawCell(i, j); });
        });
    } else {
        ForEach(columns, order.iUpwards,
                [&](Index i) { ForEach(rows, order.jUpwards, [&](Index j) { drawCell(i, j); }); });
    }
}

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
    switch (view.mode) {
    case ViewMode::Points:
        DrawPoints(surface, view, colour);
        break;
    case ViewMode::Surface:
        DrawGridSurface(surface, view, colour);
        break;
    case ViewMode::Triangles:
        DrawTriangles(surface, view, colour);
        break;
    }
    if (view.rotating) {
        DrawRotationMarker(surface, view);
    }
    surface.Refresh();
    return true;
}

} // namespace terravo::Rendering
