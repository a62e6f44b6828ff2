// Triangles, edge and points of the survey on a sheet.
//
// Data: the points and triangles, in data units. Method: each edge once; what lies outside the
// frame is left out or cut off.
#include "sheet/Clip.h"
#include "sheet/MakeSheet.h"
#include "triangulation/HullRings.h"

#include <vector>

namespace terravo {
namespace {

SheetPoint OnPaper(const SheetContext& context, Index point) {
    const PointSet& points = context.source.points;
    return context.layout.view.ToPaper(points.x[point], points.y[point]);
}

// One line of many pieces.
void AddParts(SheetLayer layer, const SheetInk& ink, const ClippedLine& inside, SheetScene& scene) {
    SheetLine line;
    line.layer = layer;
    line.ink = scene.InkNumber(ink);
    line.firstPiece = scene.pieces.size();
    line.pieces = inside.parts.size();
    for (const ClippedLine::Part& part : inside.parts) {
        scene.AddPiece(inside.PointsOf(part), part.closed);
    }
    scene.lines.push_back(line);
}

} // namespace

void AddTriangles(const SheetContext& context, SheetScene& scene) {
    const TriangleList& list = context.source.triangles;
    ClippedLine inside;
    for (Index t = 1; t <= list.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            const Index a = list.Vertex(j, t);
            const Index b = list.Vertex(NextEdge(j), t);
            if (a < b || list.Neighbour(j, t) < 0) {
                const SheetPoint ends[] = {OnPaper(context, a), OnPaper(context, b)};
                ClipLine(ends, false, context.layout.map, inside);
            }
        }
    }
    AddParts(SheetLayer::Triangles, {context.theme.triangle, context.theme.thinWidth, {}}, inside,
             scene);
}

// As whole rings, along which the dashes run on.
void AddHull(const SheetContext& context, SheetScene& scene) {
    ClippedLine inside;
    for (const HullRing& ring : HullRings(context.source.triangles)) {
        std::vector<SheetPoint> paper;
        paper.reserve(ring.size());
        for (const HullStep& step : ring) {
            paper.push_back(OnPaper(context, step.point));
        }
        ClipLine(paper, true, context.layout.map, inside);
    }
    AddParts(SheetLayer::Hull, context.theme.HullInk(), inside, scene);
}

bool HasBreaklines(const SheetSource& source) {
    return source.shaped != nullptr && !VisibleCourses(*source.shaped, LineRole::Breakline).empty();
}

// Only where the surface is shown.
void AddBreaklines(const SheetContext& context, SheetScene& scene) {
    if (!HasBreaklines(context.source)) {
        return;
    }
    ClippedLine inside;
    for (const VisibleCourse& course :
         VisibleCourses(*context.source.shaped, LineRole::Breakline)) {
        std::vector<SheetPoint> paper;
        paper.reserve(course.points.size());
        for (const Index point : course.points) {
            paper.push_back(OnPaper(context, point));
        }
        ClipLine(paper, false, context.layout.map, inside);
    }
    AddParts(SheetLayer::Breaklines, context.theme.BreaklineInk(), inside, scene);
}

void AddPoints(const SheetContext& context, SheetScene& scene) {
    SheetMarks marks;
    marks.layer = SheetLayer::Points;
    marks.ink = scene.InkNumber({context.theme.point, 0.1, {}});
    marks.size = kPointDot;
    for (Index i = 1; i <= context.source.surveyed; ++i) {
        const SheetPoint place = OnPaper(context, i);
        if (context.layout.map.Contains(place)) {
            marks.places.push_back(place);
        }
    }
    scene.marks.push_back(std::move(marks));
}

} // namespace terravo
