#include "analysis/DifferenceSurface.h"

#include "analysis/FaceMesh.h"

namespace terravo {

DifferenceSurface MakeDifference(const MeasuredSurface& first, const MeasuredSurface& second,
                                 const StopToken& stop) {
    MeasuredSurface mesh = MeshOfFaces(first, second, FaceHeight::SecondLessFirst, stop);
    DifferenceSurface difference;
    difference.points = PointsOf(mesh);
    difference.triangles = std::move(mesh.triangles);
    return difference;
}

} // namespace terravo
