#include "survey/surface/VerifySurface.h"

#include "triangulation/TriangulationCheck.h"
#include "triangulation/constrained/SurfaceCheck.h"

namespace terravo {

std::optional<std::string> VerifySurface(const Survey& survey) {
    const ShownSurface shown = survey.Surface();
    if (shown.shaped == nullptr) {
        const bool isSound =
            shown.triangles.count == 0 || IsTriangulation(PlacesOf(shown.points), shown.triangles);
        return isSound ? std::nullopt : std::optional<std::string>("This is no triangulation.");
    }
    const ShapedSurface& surface = *shown.shaped;
    const std::string fault = SurfaceFaultOf(
        PlacesOf(survey.Points()), ConstraintsOf(survey.Plan()), surface.all,
        shown.arithmetic == Arithmetic::Exact ? BaseArithmetic::Exact : BaseArithmetic::Plain);
    return fault.empty() ? std::nullopt : std::optional(fault);
}

} // namespace terravo
