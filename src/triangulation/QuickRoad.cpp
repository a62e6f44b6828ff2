#include "triangulation/QuickRoad.h"

#include "triangulation/Certificate.h"
#include "triangulation/CurveOrder.h"
#include "triangulation/EdgeSwaps.h"
#include "triangulation/FileOrderChoice.h"
#include "triangulation/FirstTriangle.h"
#include "triangulation/HullHistory.h"
#include "triangulation/Inserter.h"
#include "triangulation/modGeometria.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdint>
#include <future>
#include <numeric>
#include <optional>
#include <utility>

namespace terravo {
namespace {

using namespace modDelaunay2D;

// Along the curve a point takes some ten steps and swaps. A set that takes this many goes in again
// in rounds.
constexpr std::int64_t kMostEffortAPoint = 48;
constexpr int kLastRound = 20;
// Beyond these spans a product of four differences could overflow, or lose digits near zero.
constexpr double kLeastSpan = 1e-30;
constexpr double kMostSpan = 1e30;

// The points along the curve. Position c on the curve stands for a point's number in the tables
// until the triangles are done.
struct CurvePoints {
    CurvePoints(const Array1<PlanPoint>& fileCoord, const PlanExtent& extent)
        : fileNumber(CurveOrder(fileCoord, extent)), coord(fileCoord.UpperBound()) {
        for (Index c = 1; c <= coord.UpperBound(); ++c) {
            coord[c] = fileCoord[fileNumber[c]];
        }
    }

    Array1<Index> fileNumber;
    Array1<PlanPoint> coord;
};

void NumberByFile(const CurvePoints& points, TriangleList& triangles) {
    for (Index t = 1; t <= triangles.count; ++t) {
        for (Index& vertex : triangles.table[t].vertices) {
            vertex = points.fileNumber[vertex];
        }
    }
}

// The order of insertion: straight along the curve, or in rounds of a random half, quarter, eighth
// and so on of the points, the small rounds first, each along the curve. Straight is faster, but
// there are sets in which nearly every point then takes all triangles over from the one before; in
// random rounds no set has that.
enum class Sequence { Straight, InRounds };

enum class Outcome { Done, Failed, TooLaborious };

// Half of all places are in round 0, a quarter in round 1: the number of trailing zeros of a number
// that looks random. Equal places share a round, so the first of them still goes in first.
int RoundOf(PlanPoint p) {
    std::uint64_t mixed = std::bit_cast<std::uint64_t>(p.x + 0.0) * 0x9E3779B97F4A7C15U +
                          std::bit_cast<std::uint64_t>(p.y + 0.0);
    mixed = (mixed ^ mixed >> 30U) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ mixed >> 27U) * 0x94D049BB133111EBU;
    return std::min(std::countr_zero(mixed ^ mixed >> 31U), kLastRound);
}

// Inserts points in the order of the curve.
class CurveInserter {
public:
    CurveInserter(const CurvePoints& points, const Array1<Index>& rank, TriangleList& triangles)
        : coord_(points.coord), rank_(rank), work_(points.coord, triangles, coord_.UpperBound()),
          inserter_(work_) {}

    /// @return Failed when there is no triangle to begin with, on a fault, or when stopped;
    ///         TooLaborious only when straight.
    Outcome InsertAll(Sequence sequence, const std::atomic<bool>& refused, const StopToken& stop);

private:
    bool MakeFirst();
    Outcome InsertRound(std::optional<int> round, const std::atomic<bool>& refused,
                        const StopToken& stop);
    bool Insert(Index c);
    [[nodiscard]] bool IsRepeatOf(Index c, Index corner) const {
        return coord_[c] == coord_[corner] && rank_[corner] < rank_[c];
    }

    const Array1<PlanPoint>& coord_;
    const Array1<Index>& rank_;
    Workspace work_;
    Inserter inserter_;
    Index second_ = 0;
    Index third_ = 0;
    Index inserted_ = 3;
};

bool CurveInserter::MakeFirst() {
    const Index count = coord_.UpperBound();
    second_ = 2;
    while (second_ <= count && coord_[second_] == coord_[1]) {
        ++second_;
    }
    for (third_ = second_ + 1; third_ <= count; ++third_) {
        const PlanPoint& p = coord_[third_];
        const int side = modGeometria::SideOfLine(p.x, p.y, coord_[1].x, coord_[1].y,
                                                  coord_[second_].x, coord_[second_].y, 0.0);
        if (side != 0) {
            MakeFirstTriangle(work_, 1, second_, third_, side);
            return true;
        }
    }
    return false;
}

bool CurveInserter::Insert(Index c) {
    const WalkResult place = WalkToPoint(coord_[c], coord_, work_.triangles, work_.triangles.count);
    work_.effort += 1 + std::int64_t{place.steps};
    if (place.ierr != Ierr::kDone) {
        return false;
    }
    if (place.location >= 4) {
        return IsRepeatOf(c, work_.triangles.Vertex(place.location - 3, place.triangle));
    }
    return inserter_.MakeFan(c, place) == Ierr::kDone &&
           SwapAbout(c, work_, [&](Index m, Index b, Index d, Index e) {
               return UsesFirstDiagonal(coord_, rank_, m, b, d, e);
           }) == Ierr::kDone;
}

// All points when there is no number of a round.
Outcome CurveInserter::InsertRound(std::optional<int> round, const std::atomic<bool>& refused,
                                   const StopToken& stop) {
    const Index count = coord_.UpperBound();
    for (Index c = 2; c <= count; ++c) {
        if (c == second_ || c == third_ || (round && RoundOf(coord_[c]) != *round)) {
            continue;
        }
        if (!Insert(c)) {
            return Outcome::Failed;
        }
        ++inserted_;
        if (!work_.ReportIsDue()) {
            continue;
        }
        if (refused.load(std::memory_order_relaxed) ||
            !stop.GoesOn("triangulate",
                         static_cast<double>(inserted_) / static_cast<double>(count))) {
            return Outcome::Failed;
        }
        if (!round && work_.effort > kMostEffortAPoint * count) {
            return Outcome::TooLaborious;
        }
    }
    return Outcome::Done;
}

Outcome CurveInserter::InsertAll(Sequence sequence, const std::atomic<bool>& refused,
                                 const StopToken& stop) {
    if (!MakeFirst()) {
        return Outcome::Failed;
    }
    if (sequence == Sequence::Straight) {
        return InsertRound(std::nullopt, refused, stop);
    }
    Outcome outcome = Outcome::Done;
    for (int round = kLastRound; round >= 0 && outcome == Outcome::Done; --round) {
        outcome = InsertRound(round, refused, stop);
    }
    return outcome;
}

// Place of each point of the curve in the insertion order of the file, where the third place goes
// to the first point off the line through the first two.
Array1<Index> RanksOf(const CurvePoints& points, Index thirdPosition) {
    Array1<Index> rank(points.fileNumber.UpperBound());
    for (Index c = 1; c <= rank.UpperBound(); ++c) {
        const Index number = points.fileNumber[c];
        rank[c] = number == 3 ? thirdPosition : number == thirdPosition ? 3 : number;
    }
    return rank;
}

// What both roads need to know of the points.
struct Survey {
    const Array1<PlanPoint>& coord;
    double span;
    Index thirdPosition;
};

struct StopOnExit {
    std::atomic<bool>& stop;
    ~StopOnExit() { stop = true; }
};

// Inserts along the curve while the hulls of file order are followed on another thread; either one
// stops the other when it finds the set not certain.
bool InsertAndFollowHulls(const Survey& survey, const CurvePoints& points,
                          const Array1<Index>& rank, double exactReach, TriangleList& triangles,
                          const StopToken& stop) {
    std::atomic<bool> refused = false;
    auto hullsAreClear = std::async(std::launch::async, [&] {
        const bool clear = HullHistoryIsClear(survey.coord, survey.thirdPosition, survey.span,
                                              exactReach, refused);
        if (!clear) {
            refused = true;
        }
        return clear;
    });
    const StopOnExit stopOnExit{refused}; // also when a report of progress throws
    const auto insert = [&](Sequence sequence) {
        return CurveInserter(points, rank, triangles).InsertAll(sequence, refused, stop);
    };
    Outcome outcome = insert(Sequence::Straight);
    if (outcome == Outcome::TooLaborious) {
        outcome = insert(Sequence::InRounds);
    }
    const bool inserted = outcome == Outcome::Done;
    if (!inserted) {
        refused = true;
    }
    return hullsAreClear.get() && inserted;
}

bool MakeCertain(const Survey& survey, const CurvePoints& points, TriangleList& triangles,
                 const StopToken& stop) {
    if (!(survey.span >= kLeastSpan && survey.span <= kMostSpan)) {
        return false;
    }
    const Array1<Index> rank = RanksOf(points, survey.thirdPosition);
    const double exactReach = ExactReach(survey.coord, survey.span);
    if (!InsertAndFollowHulls(survey, points, rank, exactReach, triangles, stop) ||
        !IsCertain({points.coord, rank, triangles, survey.span, exactReach})) {
        return false;
    }
    NumberByFile(points, triangles);
    return true;
}

// File order, with the tables laid out along the curve: what is near on the ground is near in
// memory.
Index InsertInFileOrder(const CurvePoints& points, TriangleList& triangles, const StopToken& stop) {
    Array1<Index> order(points.fileNumber.UpperBound());
    for (Index c = 1; c <= order.UpperBound(); ++c) {
        order[points.fileNumber[c]] = c;
    }
    const Index ierr = Triangulate(points.coord, order, triangles, StartRule::NearbyTriangle, stop);
    NumberByFile(points, triangles);
    return ierr;
}

Array1<Index> FileOrder(Index count) {
    Array1<Index> order(count);
    std::iota(order.begin(), order.end(), 1);
    return order;
}

} // namespace

Index TriangulateQuickly(const Array1<PlanPoint>& coord, TriangleList& triangles,
                         const StopToken& stop, Road* road) {
    if (road != nullptr) {
        *road = Road::FileOrder;
    }
    const auto plainly = [&] {
        Array1<Index> order = FileOrder(coord.UpperBound());
        return Triangulate(coord, order, triangles, StartRule::NearbyTriangle, stop);
    };
    if (coord.UpperBound() < kLeastForCurve) {
        return plainly();
    }
    const FirstTriangle first = FindFirstTriangle(coord, FileOrder(coord.UpperBound()));
    const std::optional<PlanExtent> extent = ExtentOf(coord);
    if (!first.found || !extent) {
        return plainly();
    }
    const CurvePoints points(coord, *extent);
    if (!MakeCertain({coord, extent->Span(), first.thirdPosition}, points, triangles, stop)) {
        triangles.count = 0;
        if (stop.IsStopRequested()) {
            return Ierr::kStopped;
        }
        return InsertInFileOrder(points, triangles, stop);
    }
    if (road != nullptr) {
        *road = Road::AlongCurve;
    }
    return Ierr::kDone;
}

bool TriangulateAlongCurve(const Array1<PlanPoint>& coord, TriangleList& triangles,
                           const StopToken& stop) {
    if (coord.UpperBound() < 3) {
        return false;
    }
    const FirstTriangle first = FindFirstTriangle(coord, FileOrder(coord.UpperBound()));
    const std::optional<PlanExtent> extent = ExtentOf(coord);
    return first.found && extent &&
           MakeCertain({coord, extent->Span(), first.thirdPosition}, CurvePoints(coord, *extent),
                       triangles, stop);
}

} // namespace terravo
