#include "view3d/Rendering.h"

#include "plot2d/PixelSurface.h"
#include "view3d/Frame3D.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>
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

template <class Surface>
using Places = Array1<typename Surface::Place>;

// Marks of all points, in storage order; where they are.
template <class Surface>
Places<Surface> DrawPoints(Surface& surface, const ViewData& data, const Projection& projection) {
    PaintTools tools = MarkTools();
    Places<Surface> places(data.PointCount());
    for (Index i = 1; i <= data.PointCount(); ++i) {
        places[i] = Surface::PlaceAt(projection.Project(data.X[i], data.Y[i], data.Z[i]));
        if (projection.Parameters().colour) {
            tools.brush = data.pointColour[i];
        }
        surface.FillDisc(places[i], kMarkRadius, tools);
    }
    return places;
}

// Marks of all points, then the edges of all triangles, many in one call: all corners at once would
// take more memory than the points and the triangles together.
template <class Surface>
Places<Surface> DrawTriangles(Surface& surface, const ViewData& data,
                              const Projection& projection) {
    constexpr Index kAtATime = 16384;
    Places<Surface> places = DrawPoints(surface, data, projection);
    PaintTools tools = MarkTools();
    tools.brush.reset();
    const Index count = data.triangles.Rows();
    const std::vector<std::int32_t> threes(static_cast<std::size_t>(std::min(count, kAtATime)), 3);
    std::vector<typename Surface::Place> corners(3 * threes.size());
    for (Index before = 0; before < count; before += kAtATime) {
        const Index last = before + std::min(count - before, kAtATime);
        std::size_t used = 0;
        for (Index t = before + 1; t <= last; ++t) {
            for (Index j = 1; j <= 3; ++j) {
                corners[used++] = places[data.triangles(t, j)];
            }
        }
        surface.FillPolyPolygon(std::span<const typename Surface::Place>(corners).first(used),
                                std::span(threes).first(used / 3), tools);
    }
    return places;
}

// Where the nodes of a grid are; i over x, j over y.
template <class Surface>
class Nodes {
public:
    Nodes(const ViewData& data, const Projection& projection)
        : ny_(data.Ny()), places_(data.Nx() * data.Ny()) {
        for (Index i = 1; i <= data.Nx(); ++i) {
            for (Index j = 1; j <= data.Ny(); ++j) {
                places_[Number(i, j)] =
                    Surface::PlaceAt(projection.Project(data.X[i], data.Y[j], data.gridZ(i, j)));
            }
        }
    }

    /// The corners of the cell between i, i + 1 and j, j + 1.
    [[nodiscard]] std::array<typename Surface::Place, 4> Cell(Index i, Index j) const {
        return {places_[Number(i, j)], places_[Number(i, j + 1)], places_[Number(i + 1, j + 1)],
                places_[Number(i + 1, j)]};
    }
    [[nodiscard]] const Places<Surface>& All() const { return places_; }

private:
    [[nodiscard]] Index Number(Index i, Index j) const { return (i - 1) * ny_ + j; }

    Index ny_;
    Places<Surface> places_;
};

// Visits the cells of a grid, those farthest from the viewer first.
template <class Visit>
void ForEachCell(const ViewData& data, float theta, Visit visit) {
    const double quarter = std::floor(static_cast<double>(theta) / kQuarterTurn);
    if (!(quarter >= 0 && quarter < 4)) {
        return;
    }
    const CellOrder order = kCellOrders[static_cast<std::size_t>(quarter)];
    const Index columns = data.Nx() - 1;
    const Index rows = data.Ny() - 1;
    if (order.rowsOutside) {
        ForEach(rows, order.jUpwards,
                [&](Index j) { ForEach(columns, order.iUpwards, [&](Index i) { visit(i, j); }); });
    } else {
        ForEach(columns, order.iUpwards,
                [&](Index i) { ForEach(rows, order.jUpwards, [&](Index j) { visit(i, j); }); });
    }
}

template <class Surface>
Places<Surface> DrawGridSurface(Surface& surface, const ViewData& data,
                                const Projection& projection) {
    const Nodes<Surface> nodes(data, projection);
    PaintTools tools = MarkTools();
    ForEachCell(data, projection.Parameters().theta, [&](Index i, Index j) {
        if (projection.Parameters().colour) {
            tools.brush = data.cellColour(i, j);
        }
        surface.FillPolygon(nodes.Cell(i, j), tools);
    });
    return nodes.All();
}

template <class Surface>
Places<Surface> DrawMarks(Surface& surface, const ViewData& data, const Projection& projection) {
    switch (data.mode) {
    case ViewMode::Points:
        return DrawPoints(surface, data, projection);
    case ViewMode::Surface:
        return DrawGridSurface(surface, data, projection);
    case ViewMode::Triangles:
        break;
    }
    return DrawTriangles(surface, data, projection);
}

Array1<PixelPoint> Pixels(Array1<PixelPoint> places) {
    return places;
}

Array1<PixelPoint> Pixels(const Array1<PixelPosition>& places) {
    Array1<PixelPoint> pixels(places.UpperBound());
    std::transform(places.begin(), places.end(), pixels.begin(), NearestPixel);
    return pixels;
}

// The axis of rotation and the turned direction of x.
void DrawRotationMarker(DrawSurface& surface, const Projection& projection) {
    const auto wide = [](float value) { return static_cast<double>(value); };
    const FrameMeasures& m = projection.Measures();
    const double theta = wide(projection.Parameters().theta);
    surface.SetForeColor(kGreen);
    const UserPosition foot = projection.ToUser(m.centreX, m.centreY);
    surface.SetDrawStyle(DrawStyles::kDashDot);
    surface.Line(foot.x, foot.y, foot.x, foot.y + wide(m.zRange), kGreen);
    const UserPosition end = projection.ToUser(wide(m.halfX) * std::cos(theta) + m.centreX,
                                               wide(m.halfY) * std::sin(theta) + m.centreY);
    surface.SetDrawStyle(DrawStyles::kSolid);
    surface.Line(foot.x, foot.y, end.x, end.y, kGreen);
    surface.Print("x", NewLine::No);
}

} // namespace

std::variant<Drawing3D, Message> Redraw(DrawSurface& surface, const ViewData& data,
                                        const ViewParameters& parameters, const FrameMeasures* kept,
                                        const RunState& run) {
    auto framed =
        DrawFrame3D(surface, data, parameters, parameters.rotating ? kTurningFrame : kGreen, run);
    if (auto* const failure = std::get_if<Message>(&framed)) {
        return std::move(*failure);
    }
    const Frame3D& frame = std::get<Frame3D>(framed);
    Drawing3D drawing;
    drawing.projection = {parameters, frame,
                          kept != nullptr ? *kept : MeasureFrame(frame, parameters.alfa)};
    WithPlaces(surface, [&](auto& places) {
        drawing.screenPoint = Pixels(DrawMarks(places, data, drawing.projection));
    });
    if (parameters.rotating) {
        DrawRotationMarker(surface, drawing.projection);
    }
    surface.Refresh();
    return drawing;
}

} // namespace terravo::Rendering
