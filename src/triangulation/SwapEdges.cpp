// Swaps by the empty-circle rule: the new point is the latest of every quadrilateral about it.
#include "triangulation/EdgeSwaps.h"
#include "triangulation/modGeometria.h"

namespace terravo::modDelaunay2D {

Index SwapEdges(Index m, Workspace& work) {
    const PlanPoint& pm = work.coord[m];
    return SwapAbout(m, work, [&](Index /*m*/, Index b, Index d, Index c) {
        const PlanPoint& pb = work.coord[b];
        const PlanPoint& pd = work.coord[d];
        const PlanPoint& pc = work.coord[c];
        return modGeometria::DiagonalChoice(pm.x, pm.y, pb.x, pb.y, pd.x, pd.y, pc.x, pc.y) == 1;
    });
}

} // namespace terravo::modDelaunay2D
