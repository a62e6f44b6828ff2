#include "PeerDelaunay.h"

#include "CpuStopwatch.h"

#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>

#include <vector>

namespace terravo::bench {

PeerRun TriangulateWithPeer(const Array1<PlanPoint>& points) {
    using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
    std::vector<Kernel::Point_2> input;
    input.reserve(static_cast<std::size_t>(points.UpperBound()));
    for (const PlanPoint& p : points) {
        input.emplace_back(p.x, p.y);
    }
    PeerRun run;
    CpuStopwatch watch;
    CGAL::Delaunay_triangulation_2<Kernel> mesh;
    mesh.insert(input.begin(), input.end());
    run.seconds = watch.Lap();
    run.triangles = static_cast<std::int64_t>(mesh.number_of_faces());
    return run;
}

} // namespace terravo::bench
