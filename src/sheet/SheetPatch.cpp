// A changed part of the surface, to be drawn over a sheet that was made before.
//
// Data: the triangles that are new and those that are gone. Method: paper over both, then the
// layers that show the surface itself; what stands along lines or beside points comes back with the
// next whole sheet.
#include "sheet/Clip.h"
#include "sheet/MakeSheet.h"

#include <array>

namespace terravo {
namespace {

constexpr double kSeam =
    0.1; // millimetres, of paper along the sides, so that nothing shines through

class PatchMaker {
public:
    PatchMaker(const SheetContext& context, SheetScene& scene) : context_(context), scene_(scene) {}

    void Cover(const std::array<PlanPoint, 3>& corners) {
        std::array<SheetPoint, 3> paper;
        for (std::size_t i = 0; i < 3; ++i) {
            paper[i] = context_.layout.view.ToPaper(corners[i].x, corners[i].y);
        }
        const std::vector<SheetPoint> inside = ClipRing(paper, context_.layout.map);
        if (inside.size() > 2) {
            scene_.AddArea(SheetLayer::Paper, context_.theme.paper, inside);
            scene_.AddLine(SheetLayer::Paper, {context_.theme.paper, kSeam, {}}, inside, true);
        }
    }

    void AddSidesOnLines(const SurfacePatch& patch) {
        for (Index t = 1; t <= patch.triangles.count; ++t) {
            for (int j = 1; j <= 3; ++j) {
                const unsigned bit = patch.onLines[t] >> static_cast<unsigned>(j - 1) & 1U;
                if (bit != 0) {
                    AddSide(patch.points, patch.triangles.Vertex(j, t),
                            patch.triangles.Vertex(NextEdge(j), t));
                }
            }
        }
    }

private:
    void AddSide(const PointSet& points, Index a, Index b) {
        const SheetPoint ends[] = {context_.layout.view.ToPaper(points.x[a], points.y[a]),
                                   context_.layout.view.ToPaper(points.x[b], points.y[b])};
        ClippedLine inside;
        ClipLine(ends, false, context_.layout.map, inside);
        for (const ClippedLine::Part& part : inside.parts) {
            scene_.AddLine(SheetLayer::Breaklines, context_.theme.BreaklineInk(),
                           inside.PointsOf(part));
        }
    }

    const SheetContext& context_;
    SheetScene& scene_;
};

} // namespace

SheetScene MakeSheetPatch(const SheetPlan& plan, const SheetSource& source,
                          const SheetLayout& layout, const SurfacePatch& patch) {
    SheetPlan bare = plan;
    bare.labels = SheetLabels::None;
    const SheetTheme* theme = FindTheme(plan.theme);
    const SheetContext context{bare, source, layout, theme ? *theme : SheetThemes()[0], {}};
    SheetScene scene;
    scene.width = layout.paper.right;
    scene.height = layout.paper.bottom;
    scene.map = layout.map;
    scene.scale = layout.scale;
    PatchMaker maker(context, scene);
    for (const std::array<PlanPoint, 3>& gone : patch.before) {
        maker.Cover(gone);
    }
    for (Index t = 1; t <= patch.triangles.count; ++t) {
        const auto [a, b, c] = patch.triangles.table[t].vertices;
        const PointSet& p = patch.points;
        maker.Cover(
            {PlanPoint{p.x[a], p.y[a]}, PlanPoint{p.x[b], p.y[b]}, PlanPoint{p.x[c], p.y[c]}});
    }
    using LayerFunction = void (*)(const SheetContext&, SheetScene&);
    constexpr std::pair<SheetLayer, LayerFunction> kLayers[] = {
        {SheetLayer::Bands, AddBands},
        {SheetLayer::Triangles, AddTriangles},
        {SheetLayer::Contours, AddContours},
        {SheetLayer::Points, AddPoints}};
    for (const auto& [layer, add] : kLayers) {
        if (plan.Shows(layer)) {
            add(context, scene);
        }
    }
    if (plan.Shows(SheetLayer::Breaklines)) {
        maker.AddSidesOnLines(patch);
    }
    return scene;
}

} // namespace terravo
