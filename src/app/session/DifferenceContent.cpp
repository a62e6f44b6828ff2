#include "app/session/DifferenceContent.h"

#include "app/session/DifferenceSheet.h"
#include "contour/ContourSet.h"
#include "export/vector/CleanText.h"
#include "plot2d/ColourScale.h"

#include <utility>

namespace terravo {
namespace {

// Level ground has no contours.
VectorParts WithoutContours(const VectorParts& parts) {
    const VectorParts others{VectorPart::Triangles, VectorPart::Points,    VectorPart::Numbers,
                             VectorPart::Codes,     VectorPart::Heights,   VectorPart::Hull,
                             VectorPart::Boundary,  VectorPart::Breaklines};
    return parts.And(others);
}

} // namespace

bool HasLevels(const Extent& heights) {
    return DifferenceLevels(heights).kind == LevelRuleKind::ByInterval;
}

std::optional<VectorContent> MakeDifferenceContent(const DifferenceSurface& difference,
                                                   const std::string& name, VectorWish wish,
                                                   const StopToken& stop) {
    const PointSet& points = difference.points;
    const LevelRule rule = DifferenceLevels(points.extentZ);
    LevelSet levels;
    ContourSet contours;
    wish.smoothing.reset();
    if (HasLevels(points.extentZ)) {
        levels = MakeLevelSet(rule, points.extentZ,
                              ColourScale::MakePalette(ColourScale::kPlanColours), {});
        std::optional<ContourSet> made = MakeContourSet(points, difference.triangles, levels, stop);
        if (!made) {
            return std::nullopt;
        }
        contours = *std::move(made);
    } else {
        wish.parts = WithoutContours(wish.parts);
    }
    VectorContent content = MakeVectorContent(
        {points, points.count, difference.triangles, rule, levels, contours}, wish);
    content.name = CleanText(name);
    return content;
}

} // namespace terravo
