#include "analysis/SurfaceOverlay.h"

#include "analysis/PlaneGeometry.h"
#include "analysis/TriangleTree.h"
#include "triangulation/exact/ExactSigns.h"
#include "util/Parallel.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

namespace terravo {
namespace {

constexpr Index kTrianglesOfPiece = 4096;

Array1<PlanPoint> PlacesOfBoth(const MeasuredSurface& first, const MeasuredSurface& second) {
    Array1<PlanPoint> places;
    for (const MeasuredSurface* surface : {&first, &second}) {
        for (Index t = 1; t <= surface->triangles.count; ++t) {
            for (int j = 1; j <= 3; ++j) {
                places.Append(PlanOf(surface->Corner(t, j)));
            }
        }
    }
    return places;
}

// A triangle as the overlay needs it.
struct Corners {
    std::array<SpacePoint, 3> at;
    std::array<PlanPoint, 3> plan;
    std::array<Index, 3> numbers;
};

Corners CornersOf(const MeasuredSurface& surface, Index triangle) {
    Corners corners{};
    for (std::size_t k = 0; k < 3; ++k) {
        corners.numbers[k] = surface.triangles.table[triangle].vertices[k];
        corners.at[k] = surface.corners[corners.numbers[k]];
        corners.plan[k] = PlanOf(corners.at[k]);
    }
    return corners;
}

// A side in the one direction that both its triangles see it in.
struct Side {
    SpacePoint from;
    SpacePoint to;
};

Side SideOf(const Corners& triangle, std::size_t side) {
    const std::size_t next = (side + 1) % 3;
    return triangle.numbers[side] < triangle.numbers[next]
               ? Side{triangle.at[side], triangle.at[next]}
               : Side{triangle.at[next], triangle.at[side]};
}

// The height of a triangle at a corner of the other one, which may lie on a side or at a corner.
double HeightAt(const Corners& triangle, const std::array<int, 3>& signs, PlanPoint place) {
    for (std::size_t side = 0; side < 3; ++side) {
        if (signs[side] != 0) {
            continue;
        }
        const std::size_t next = (side + 1) % 3;
        if (signs[next] == 0) {
            return triangle.at[next].z;
        }
        if (signs[(side + 2) % 3] == 0) {
            return triangle.at[side].z;
        }
        const Side along = SideOf(triangle, side);
        return HeightOnSide(along.from, along.to, place);
    }
    return HeightOnTriangle(triangle.at, place);
}

class Overlay {
public:
    Overlay(const MeasuredSurface& first, const MeasuredSurface& second)
        : first_(first), second_(second), placeRounding_(PlaceRounding(first.origin)),
          signs_(PlacesOfBoth(first, second)), tree_(second),
          isUpright_(static_cast<std::size_t>(second.triangles.count)) {
        for (Index t = 1; t <= second.triangles.count; ++t) {
            isUpright_[static_cast<std::size_t>(t) - 1] = IsUpright(CornersOf(second, t));
        }
    }

    template <class Sink>
    void Piece(Index from, Index to, const Sink& sink) const {
        std::vector<Index> found;
        for (Index t = from; t <= to; ++t) {
            const Corners first = CornersOf(first_, t);
            if (!IsUpright(first)) {
                continue;
            }
            tree_.Find(first.plan, found);
            for (const Index u : found) {
                if (isUpright_[static_cast<std::size_t>(u) - 1] != 0) {
                    Meet(t, first, u, sink);
                }
            }
        }
    }

private:
    [[nodiscard]] bool IsUpright(const Corners& triangle) const {
        return signs_.Turn(triangle.plan[0], triangle.plan[1], triangle.plan[2]) > 0;
    }

    [[nodiscard]] SideSigns SignsOf(const Corners& corners, const Corners& sides) const {
        SideSigns signs{};
        for (std::size_t side = 0; side < 3; ++side) {
            for (std::size_t corner = 0; corner < 3; ++corner) {
                signs[corner][side] =
                    signs_.Turn(sides.plan[side], sides.plan[(side + 1) % 3], corners.plan[corner]);
            }
        }
        return signs;
    }

    template <class Sink>
    void Meet(Index t, const Corners& first, Index u, const Sink& sink) const {
        const Corners second = CornersOf(second_, u);
        const SideSigns firstSigns = SignsOf(first, second);
        const SideSigns secondSigns = SignsOf(second, first);
        const TriangleOverlap overlap = OverlapOf(firstSigns, secondSigns);
        if (overlap.count == 0) {
            return;
        }
        OverlayFace face;
        face.first = t;
        face.second = u;
        face.count = overlap.count;
        for (std::size_t k = 0; k < overlap.count; ++k) {
            FaceCorner& corner = face.all[k];
            corner = CornerOf(overlap.corners[k], first, firstSigns, second, secondSigns);
            if (std::fabs(corner.first - corner.second) <= placeRounding_) {
                corner.second = corner.first;
            }
        }
        sink(face);
    }

    static FaceCorner CornerOf(OverlapCorner name, const Corners& first,
                               const SideSigns& firstSigns, const Corners& second,
                               const SideSigns& secondSigns) {
        using Kind = OverlapCorner::Kind;
        if (name.kind == Kind::First) {
            const SpacePoint& corner = first.at[name.first];
            const PlanPoint place = PlanOf(corner);
            return {place, corner.z, HeightAt(second, firstSigns[name.first], place), name};
        }
        if (name.kind == Kind::Second) {
            const SpacePoint& corner = second.at[name.second];
            const PlanPoint place = PlanOf(corner);
            return {place, HeightAt(first, secondSigns[name.second], place), corner.z, name};
        }
        const Side a = SideOf(first, name.first);
        const Side b = SideOf(second, name.second);
        const SpacePoint at = CrossingWithLine(a.from, a.to, PlanOf(b.from), PlanOf(b.to));
        return {PlanOf(at), at.z, HeightOnSide(b.from, b.to, PlanOf(at)), name};
    }

    // Corners that lines have made in a surface are rounded where the surface is: so much their
    // heights may be off on slopes, and no ground has changed by less.
    [[nodiscard]] static double PlaceRounding(PlanPoint origin) {
        constexpr double kSteep = 4;
        return kSteep * std::numeric_limits<double>::epsilon() *
               std::max(std::fabs(origin.x), std::fabs(origin.y));
    }

    const MeasuredSurface& first_;
    const MeasuredSurface& second_;
    double placeRounding_;
    ExactSigns signs_;
    TriangleTree tree_;
    std::vector<char> isUpright_; // of the second's triangles
};

} // namespace

int OverlayPieces(const MeasuredSurface& first) {
    return static_cast<int>((first.triangles.count + kTrianglesOfPiece - 1) / kTrianglesOfPiece);
}

bool OverlaySurfaces(const MeasuredSurface& first, const MeasuredSurface& second,
                     const FaceSink& sink, const StopToken& stop) {
    if (first.triangles.count == 0 || second.triangles.count == 0) {
        return true;
    }
    const Overlay overlay(first, second);
    const int pieces = OverlayPieces(first);
    const std::thread::id caller = std::this_thread::get_id();
    std::atomic<int> done{0};
    InParallel(pieces, [&](int piece) {
        const bool goesOn = std::this_thread::get_id() == caller
                                ? stop.GoesOn("measure", static_cast<double>(done) / pieces)
                                : !stop.IsStopRequested();
        if (!goesOn) {
            return;
        }
        const Index from = piece * kTrianglesOfPiece + 1;
        const Index to = std::min(from + kTrianglesOfPiece - 1, first.triangles.count);
        overlay.Piece(from, to, [&](const OverlayFace& face) { sink(piece, face); });
        ++done;
    });
    return !stop.IsStopRequested();
}

} // namespace terravo
