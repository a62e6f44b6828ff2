#include "triangulation/constrained/CavityFill.h"

#include "triangulation/constrained/SegmentInserter.h"
#include "triangulation/exact/ExactTriangulation.h"

#include <algorithm>
#include <utility>

namespace terravo {

// The corners of a side, triangulated by themselves, with every step of the chain an edge. What
// lies between the chain and the edge from its first corner to its last is what is sought.
class CavitySide::OwnMesh {
public:
    explicit OwnMesh(const ExactMesh& mesh, const std::vector<Index>& corners)
        : mesh_(MeshOf(mesh, corners)), inserter_(mesh_) {}

    [[nodiscard]] bool HoldSteps() {
        for (Index i = 1; i < mesh_.PointCount(); ++i) {
            const SegmentInserter::Start start = inserter_.Leave(i, i + 1);
            if (start.way == SegmentInserter::Way::Edge && start.to == i + 1) {
                continue;
            }
            std::vector<SegmentInserter::Crossed> crossed;
            if (start.way != SegmentInserter::Way::Across ||
                inserter_.Follow(i, i + 1, start.edge,
                                 [&](const SegmentInserter::Crossed& edge, TriangleEdge at) {
                                     crossed.push_back(edge);
                                     return !inserter_.IsConstrained(at);
                                 }) != i + 1) {
                return false;
            }
            inserter_.MakeEdge(i, i + 1, crossed, SegmentInserter::Road::SwapsAlone);
        }
        return true;
    }

    /// The triangle beyond an edge, seen from its right, with the edge as it lies in it.
    [[nodiscard]] TriangleEdge First() const { return inserter_.FindEdge(1, mesh_.PointCount()); }
    [[nodiscard]] TriangleEdge Beyond(TriangleEdge edge) const { return inserter_.Across(edge); }
    /// As a place in the chain.
    [[nodiscard]] std::size_t Apex(TriangleEdge edge) const {
        return static_cast<std::size_t>(
                   mesh_.Triangles().Vertex(PreviousEdge(edge.edge), edge.triangle)) -
               1;
    }
    [[nodiscard]] bool IsWhole() const { return mesh_.Triangles().count > 0; }

private:
    static ExactMesh MeshOf(const ExactMesh& mesh, const std::vector<Index>& corners) {
        Array1<PlanPoint> points;
        Array1<Index> ranks;
        for (const Index corner : corners) {
            points.Append(mesh.Position(corner));
            ranks.Append(points.UpperBound());
        }
        TriangleList triangles;
        TriangulateExactly(points, triangles);
        return ExactMesh(std::move(points), std::move(ranks), std::move(triangles));
    }

    ExactMesh mesh_;
    SegmentInserter inserter_;
};

bool CavitySide::Plan(const ExactMesh& mesh) {
    std::vector<Index> sorted = corners;
    std::sort(sorted.begin(), sorted.end());
    if (std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end()) {
        return false;
    }
    OwnMesh own(mesh, corners);
    if (!own.IsWhole() || !own.HoldSteps()) {
        return false;
    }
    struct Waiting {
        Planned planned;
        TriangleEdge edge;
    };
    std::vector<Waiting> waiting{{{0, corners.size() - 1, 0, 0, 0}, own.First()}};
    while (!waiting.empty()) {
        auto [next, edge] = waiting.back();
        waiting.pop_back();
        next.apex = own.Apex(edge);
        if (next.apex <= next.from || next.apex >= next.to) {
            return false;
        }
        const std::size_t number = plan.size();
        plan.push_back(next);
        if (next.apex + 1 < next.to) {
            waiting.push_back({{next.apex, next.to, 0, number, 2},
                               own.Beyond({edge.triangle, NextEdge(edge.edge)})});
        }
        if (next.from + 1 < next.apex) {
            waiting.push_back({{next.from, next.apex, 0, number, 3},
                               own.Beyond({edge.triangle, PreviousEdge(edge.edge)})});
        }
    }
    return plan.size() + 2 == corners.size();
}

void SegmentInserter::CollectCavity(Index from, Index to, CavitySide& left, CavitySide& right,
                                    std::vector<Index>& slots) const {
    const auto bank = [this](TriangleEdge edge) {
        return CavitySide::Bank{Triangles().Neighbour(edge.edge, edge.triangle),
                                mesh_.IsConstrained(edge)};
    };
    left.corners = {from};
    right.corners = {from};
    Follow(from, to, Leave(from, to).edge, [&](const Crossed& crossed, TriangleEdge edge) {
        slots.push_back(edge.triangle);
        // The triangle lies between the edge crossed before and this one: one of its other edges
        // is a bank.
        if (left.corners.back() != crossed.left) {
            left.corners.push_back(crossed.left);
            left.banks.push_back(bank({edge.triangle, NextEdge(edge.edge)}));
        }
        if (right.corners.back() != crossed.right) {
            right.corners.push_back(crossed.right);
            right.banks.push_back(bank({edge.triangle, PreviousEdge(edge.edge)}));
        }
        return true;
    });
    const Index last = LastCrossed(to, left.corners.back(), right.corners.back());
    slots.push_back(last);
    const int edge = EdgeFrom(Triangles().table[last], to); // to -> left, right -> to
    left.banks.push_back(bank({last, edge}));
    right.banks.push_back(bank({last, PreviousEdge(edge)}));
    left.corners.push_back(to);
    right.corners.push_back(to);
    std::reverse(right.corners.begin(), right.corners.end());
    std::reverse(right.banks.begin(), right.banks.end());
}

/// The triangle at `to` in which a segment arrives between two corners.
Index SegmentInserter::LastCrossed(Index to, Index left, Index right) const {
    Index last = 0;
    AroundPoint(to, [&](Index t, int edge) {
        const Triangle& triangle = Triangles().table[t];
        if (triangle.Vertex(NextEdge(edge)) == left &&
            triangle.Vertex(PreviousEdge(edge)) == right) {
            last = t;
        }
        return last == 0;
    });
    return last;
}

bool SegmentInserter::FillCavity(Index from, Index to) {
    CavitySide left;
    CavitySide right;
    std::vector<Index> slots;
    CollectCavity(from, to, left, right, slots);
    if (!left.Plan(mesh_) || !right.Plan(mesh_)) {
        return false;
    }
    const auto leftCount = left.plan.size();
    std::vector<TriangleEdge> banks;
    WriteSide(left, slots, 0, slots[leftCount], banks);
    WriteSide(right, slots, leftCount, slots[0], banks);
    for (const TriangleEdge& edge : banks) {
        IsHullEdge(edge) ? mesh_.NoteHullEdge(edge) : mesh_.Relink(edge);
    }
    for (const TriangleEdge& edge : banks) {
        if (IsHullEdge(edge)) {
            mesh_.LinkPredecessor(edge);
        }
    }
    return true;
}

// Triangle k of the plan goes into slot first + k. The first one has the segment as edge 1.
void SegmentInserter::WriteSide(const CavitySide& side, const std::vector<Index>& slots,
                                std::size_t first, Index across, std::vector<TriangleEdge>& banks) {
    for (std::size_t k = 0; k < side.plan.size(); ++k) {
        const CavitySide::Planned& planned = side.plan[k];
        const Index t = slots[first + k];
        const Index from = side.corners[planned.from];
        const Index to = side.corners[planned.to];
        const Index apex = side.corners[planned.apex];
        Triangle& triangle = mesh_.triangles_.table[t];
        triangle = {{from, to, apex}, {across, 0, 0}};
        mesh_.marks_[t] = 0;
        if (k > 0) {
            const Index parent = slots[first + planned.parent];
            triangle.SetNeighbour(1, parent);
            mesh_.triangles_.table[parent].SetNeighbour(planned.parentEdge, t);
            fresh_.push_back({from, to, t});
        }
        const auto moor = [&](std::size_t step, int edge) {
            triangle.SetNeighbour(edge, side.banks[step].outer);
            if (side.banks[step].isConstrained) {
                mesh_.SetConstrained({t, edge});
            }
            banks.push_back({t, edge});
            fresh_.push_back({side.corners[step], side.corners[step + 1], t});
        };
        if (planned.apex + 1 == planned.to) {
            moor(planned.apex, 2);
        }
        if (planned.from + 1 == planned.apex) {
            moor(planned.from, 3);
        }
        for (const Index corner : triangle.vertices) {
            mesh_.triangleOf_[corner] = t;
        }
    }
}

} // namespace terravo
