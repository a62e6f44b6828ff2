#include "triangulation/exact/ExactTriangulation.h"

#include "triangulation/exact/ExactMesh.h"
#include "triangulation/exact/SeamJoiner.h"
#include "triangulation/exact/Strips.h"
#include "triangulation/modDelaunay2D.h"
#include "util/Parallel.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdint>
#include <thread>
#include <utility>
#include <vector>

namespace terravo {
namespace {

namespace Ierr = modDelaunay2D::Ierr;

constexpr std::int64_t kEffortStride = 131072; // between two looks at the wish to stop

// One strip on its way to triangles.
struct StripWork {
    Strips::Range range;
    Array1<Index> order; // in which its places are put in
    Index third = 0;     // position in the order of the first that is off the line of the first two
    Index lastSlot = 0;  // that holds a triangle of it
};

// A point is in round r or a later one with a chance of 1 in 8^r; the latest round comes first.
// Each round goes along the curve. The points of the rounds before hold the triangles of a new one
// in place, so that it changes few of them, whatever the shape and order of the set.
Array1<Index> OrderInRounds(const Strips::Range& range) {
    constexpr int kBitsARound = 3;
    const Index count = range.last - range.first + 1;
    const int rounds = std::bit_width(static_cast<std::uint32_t>(count)) / kBitsARound;
    Array1<std::uint8_t> roundOf(count);
    Array1<Index> next(rounds + 1); // place of the next point of round r at r + 1
    std::uint64_t random = 0x9E3779B97F4A7C15U;
    for (std::uint8_t& round : roundOf) {
        random ^= random << 13U;
        random ^= random >> 7U;
        random ^= random << 17U;
        round = static_cast<std::uint8_t>(std::min(std::countr_zero(random) / kBitsARound, rounds));
        ++next[round + 1];
    }
    Index place = 1;
    for (Index r = rounds + 1; r >= 1; --r) {
        place += std::exchange(next[r], place);
    }
    Array1<Index> order(count);
    for (Index c = 1; c <= count; ++c) {
        order[next[roundOf[c] + 1]++] = range.first + c - 1;
    }
    return order;
}

// 0 when all points lie on one line.
Index FindThird(const ExactMesh& mesh, const Array1<Index>& order) {
    for (Index i = 3; i <= order.UpperBound(); ++i) {
        if (mesh.Turn(order[1], order[2], order[i]) != 0) {
            return i;
        }
    }
    return 0;
}

StripWork Prepare(const ExactMesh& mesh, const Strips::Range& range) {
    StripWork strip{range, OrderInRounds(range), 0, 0};
    strip.third = FindThird(mesh, strip.order);
    return strip;
}

// Where a strip has no triangle of its own, all places make one strip.
std::vector<StripWork> PrepareAll(const ExactMesh& mesh, const std::vector<Strips::Range>& ranges) {
    std::vector<StripWork> work(ranges.size());
    InParallel(static_cast<int>(ranges.size()), [&](int k) {
        const auto strip = static_cast<std::size_t>(k);
        work[strip] = Prepare(mesh, ranges[strip]);
    });
    if (work.size() > 1 &&
        std::any_of(work.begin(), work.end(), [](const StripWork& s) { return s.third == 0; })) {
        work.clear();
        work.push_back(Prepare(mesh, {ranges.front().first, ranges.back().last}));
    }
    return work;
}

// Looks at the wish to stop on all threads, but tells of progress on the caller's alone.
class Progress {
public:
    Progress(const StopToken& stop, Index places) : stop_(stop), places_(places) {}

    /// @return whether the work is to go on.
    bool Add(Index places) {
        done_ += places;
        return std::this_thread::get_id() == caller_
                   ? stop_.GoesOn("triangulate", static_cast<double>(done_) / places_)
                   : !stop_.IsStopRequested();
    }

private:
    const StopToken& stop_;
    Index places_;
    std::atomic<Index> done_{0};
    std::thread::id caller_ = std::this_thread::get_id();
};

// A place has slots for two triangles. The site lies on the stack of its thread: side by side,
// those of two threads would share lines of the cache, and each change in one would cost the other
// its copy.
void InsertAll(ExactMesh& mesh, StripWork& strip, Progress& progress) {
    const Array1<Index>& order = strip.order;
    ExactMesh::Site site(2 * (strip.range.first - 1));
    mesh.Begin(site, order[1], order[2], order[strip.third]);
    std::int64_t nextLook = kEffortStride;
    Index told = 0;
    for (Index i = 3; i <= order.UpperBound(); ++i) {
        if (i != strip.third) {
            mesh.Insert(site, order[i]);
        }
        if (site.Effort() >= nextLook) {
            nextLook = site.Effort() + kEffortStride;
            if (!progress.Add(i - std::exchange(told, i))) {
                return;
            }
        }
    }
    strip.lastSlot = site.LastUsed();
}

// Joins the strips from the left to the right.
void JoinAll(ExactMesh& mesh, const std::vector<StripWork>& work) {
    std::vector<Index> freeSlots;
    for (const StripWork& strip : work) {
        for (Index slot = strip.lastSlot + 1; slot <= 2 * strip.range.last; ++slot) {
            freeSlots.push_back(slot);
        }
    }
    std::reverse(freeSlots.begin(), freeSlots.end()); // the first are taken first
    SeamJoiner joiner(mesh, freeSlots);
    for (std::size_t k = 1; k < work.size(); ++k) {
        joiner.Join(work[k - 1].range.right, work[k].range.left);
    }
    mesh.CloseGaps(std::move(freeSlots));
}

void NumberByFile(const Array1<Index>& fileNumber, TriangleList& triangles) {
    triangles.table.Resize(triangles.count);
    for (Triangle& triangle : triangles.table) {
        for (Index& vertex : triangle.vertices) {
            vertex = fileNumber[vertex];
        }
    }
}

} // namespace

Index TriangulateExactly(const Array1<PlanPoint>& coord, TriangleList& triangles,
                         const StopToken& stop, Index pointsAStrip) {
    triangles = {};
    if (!std::all_of(coord.begin(), coord.end(),
                     [](const PlanPoint& p) { return IsWithinReach(p.x) && IsWithinReach(p.y); })) {
        return Ierr::kOutOfReach;
    }
    Strips strips = DivideIntoStrips(coord, pointsAStrip);
    const Index places = strips.coord.UpperBound();
    ExactMesh mesh(std::move(strips.coord), strips.fileNumber);
    std::vector<StripWork> work = PrepareAll(mesh, strips.ranges);
    if (work.empty() || work.front().third == 0) {
        return Ierr::kAllCollinear;
    }
    Progress progress(stop, places);
    InParallel(static_cast<int>(work.size()),
               [&](int k) { InsertAll(mesh, work[static_cast<std::size_t>(k)], progress); });
    if (stop.IsStopRequested()) {
        return Ierr::kStopped;
    }
    JoinAll(mesh, work);
    triangles = mesh.TakeTriangles();
    NumberByFile(strips.fileNumber, triangles);
    return Ierr::kDone;
}

} // namespace terravo
