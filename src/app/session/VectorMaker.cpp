#include "app/session/VectorMaker.h"

#include "contour/smoothing/ThinContours.h"

namespace terravo {

ContourSet StraightLinesOf(const SurveyContours& contours, const VectorWish& wish) {
    const double tolerance = ToleranceOf(wish, contours.TheSurvey().ShownPoints());
    return wish.fewerVertices ? ThinContours(contours.SourceOfSmooth(), *wish.smoothing,
                                             contours.Smooth(), tolerance)
                              : FlattenContours(contours.Smooth(), tolerance);
}

VectorContent MakeContent(const SurveyContours& contours, const LevelRule& rule,
                          const VectorWish& wish) {
    const ShownSurface shown = contours.TheSurvey().Surface();
    if (!wish.smoothing) {
        return MakeVectorContent(SourceOf(shown, rule, contours.Levels(), contours.Contours()),
                                 wish);
    }
    const ContourSet lines = StraightLinesOf(contours, wish);
    return MakeVectorContent(SourceOf(shown, rule, contours.Levels(), lines), wish);
}

} // namespace terravo
