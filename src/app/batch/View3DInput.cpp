#include "app/batch/View3DInput.h"

#include "app/batch/ExitCode.h"
#include "app/batch/RunFailure.h"
#include "view3d/RegularGrid.h"

namespace terravo {

ViewData DataFor3D(View3DKind kind, const std::string& pointFile, const Survey& survey,
                   MessageService& messages) {
    const PointSet& points = survey.Points();
    switch (kind) {
    case View3DKind::Triangles:
        break;
    case View3DKind::Points:
        return ViewData::Punti(points.x, points.y, points.z, points.sourceName, messages);
    case View3DKind::Surface: {
        const std::optional<RegularGrid> grid =
            FindRegularGrid(points.x, points.y, points.z, points.count);
        if (!grid) {
            throw RunFailure(ExitCode::kUsage, pointFile +
                                                   ": the points do not form a regular grid, so "
                                                   "they cannot be drawn as a surface.");
        }
        return ViewData::Superficie(grid->x, grid->y, grid->z, points.sourceName);
    }
    }
    const ShownSurface shown = survey.Surface();
    return ViewData::Triangoli(shown.points.x, shown.points.y, shown.points.z,
                               TriangleTable(shown.triangles),
                               "Delaunay 2D : " + points.sourceName);
}

ViewParameters ParametersOf(const View3DOptions& chosen) {
    ViewParameters parameters;
    if (chosen.alfa) {
        parameters.alfa = static_cast<float>(*chosen.alfa / kDegreesPerRadian);
    }
    if (chosen.rayx) {
        parameters.rayx = static_cast<float>(*chosen.rayx);
    }
    parameters.theta = static_cast<float>(chosen.theta.value_or(0) / kDegreesPerRadian);
    parameters.rotating = chosen.theta.has_value();
    parameters.colour = chosen.colour;
    return parameters;
}

} // namespace terravo
