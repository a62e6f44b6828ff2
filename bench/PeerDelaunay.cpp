#include "PeerDelaunay.h"

#include "CpuStopwatch.h"

#include <CGAL/Constrained_Delaunay_triangulation_2.h>
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

PeerRun ConstrainWithPeer(const Array1<PlanPoint>& points,
                          const std::vector<std::pair<Index, Index>>& segments) {
    using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
    using Mesh = CGAL::Constrained_Delaunay_triangulation_2<Kernel>;
    std::vector<Kernel::Point_2> input;
    input.reserve(static_cast<std::size_t>(points.UpperBound()));
    for (const PlanPoint& p : points) {
        input.emplace_back(p.x, p.y);
    }
    Mesh mesh;
    mesh.insert(input.begin(), input.end());
    std::vector<std::pair<Mesh::Vertex_handle, Mesh::Vertex_handle>> ends;
    Mesh::Face_handle near;
    const auto vertexAt = [&](Index point) {
        const Mesh::Vertex_handle vertex =
            mesh.insert(input[static_cast<std::size_t>(point) - 1], near); // it is there already
        near = vertex->face();
        return vertex;
    };
    ends.reserve(segments.size());
    for (const auto& [from, to] : segments) {
        const Mesh::Vertex_handle first = vertexAt(from);
        ends.emplace_back(first, vertexAt(to));
    }
    PeerRun run;
    CpuStopwatch watch;
    for (const auto& [from, to] : ends) {
        mesh.insert_constraint(from, to);
    }
    run.seconds = watch.Lap();
    run.triangles = static_cast<std::int64_t>(mesh.number_of_faces());
    for (auto edge = mesh.finite_edges_begin(); edge != mesh.finite_edges_end(); ++edge) {
        run.constrained += mesh.is_constrained(*edge) ? 1 : 0;
    }
    return run;
}

} // namespace terravo::bench
