// The bands between the levels of a sheet, filled.
//
// Data: the ground at or above each level, as rings. Method: the whole surface is filled with the
// colour of the lowest band, then the ground above each level with that of the band above it; what
// lies over each other leaves no seams.
#include "sheet/Clip.h"
#include "sheet/MakeSheet.h"

#include <cmath>

namespace terravo {
namespace {

constexpr double kFinest = 0.01; // millimetres, as of the lines on their edges

std::vector<SheetPoint> OnPaper(const MapView& view, std::span<const PlanPoint> ring) {
    std::vector<SheetPoint> paper;
    for (const PlanPoint& p : ring) {
        const SheetPoint place = view.ToPaper(p.x, p.y);
        if (paper.empty() || std::fabs(place.x - paper.back().x) > kFinest ||
            std::fabs(place.y - paper.back().y) > kFinest) {
            paper.push_back(place);
        }
    }
    return paper;
}

} // namespace

void AddBands(const SheetContext& context, SheetScene& scene) {
    if (context.source.regions == nullptr) {
        return;
    }
    const Array1<LevelRegion>& regions = *context.source.regions;
    for (Index k = 1; k <= regions.UpperBound(); ++k) {
        SheetArea area;
        area.layer = SheetLayer::Bands;
        area.fill = context.RegionColour(k);
        area.firstPiece = scene.pieces.size();
        for (const RegionRing& ring : regions[k].rings) {
            const std::vector<SheetPoint> inside = ClipRing(
                OnPaper(context.layout.view, regions[k].VerticesOf(ring)), context.layout.map);
            if (inside.size() > 2) {
                scene.AddPiece(inside, true);
            }
        }
        area.pieces = scene.pieces.size() - area.firstPiece;
        scene.areas.push_back(area);
    }
}

} // namespace terravo
