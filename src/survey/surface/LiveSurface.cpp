#include "survey/surface/LiveSurface.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace terravo {
namespace {

constexpr std::size_t kMostEdits = 64;   // of one step; more are not quickly done
constexpr std::size_t kMostCrossed = 30; // by a held side

bool HasDrapedLine(const SurfacePlan& plan) {
    const auto isDraped = [](const SharedLine& line) {
        const std::vector<SpacePoint>& vertices = line->line.vertices;
        return !std::all_of(vertices.begin(), vertices.end(), HasHeight);
    };
    return std::any_of(plan.breaklines.begin(), plan.breaklines.end(), isDraped) ||
           std::any_of(plan.boundary.begin(), plan.boundary.end(), isDraped) ||
           std::any_of(plan.holes.begin(), plan.holes.end(), isDraped);
}

bool HasLines(const SurfacePlan& plan) {
    return !plan.breaklines.empty() || !plan.boundary.empty() || !plan.holes.empty();
}

// Whether a plan says the same as another one of everything that cannot be followed.
bool HasSameLines(const SurfacePlan& plan, const SurfacePlan& other) {
    return plan.breaklines == other.breaklines && plan.boundary == other.boundary &&
           plan.holes == other.holes && plan.longestSide == other.longestSide &&
           plan.crossings == other.crossings;
}

std::vector<Index> OnlyInFirst(const std::vector<Index>& first, const std::vector<Index>& second) {
    std::vector<Index> only;
    std::set_difference(first.begin(), first.end(), second.begin(), second.end(),
                        std::back_inserter(only));
    return only;
}

// There are few of either where an edit is to be followed.
template <class Item>
std::vector<Item> NotIn(const std::vector<Item>& first, const std::vector<Item>& second) {
    std::vector<Item> only;
    std::copy_if(first.begin(), first.end(), std::back_inserter(only), [&second](const Item& item) {
        return std::find(second.begin(), second.end(), item) == second.end();
    });
    return only;
}

std::vector<Index> PointsOf(const std::vector<ChangedHeight>& heights) {
    std::vector<Index> points;
    points.reserve(heights.size());
    for (const ChangedHeight& height : heights) {
        points.push_back(height.point);
    }
    return points;
}

// Points whose heights two plans give differently.
std::vector<Index> MovedPoints(const SurfacePlan& before, const SurfacePlan& after) {
    std::vector<Index> moved = PointsOf(NotIn(before.heights, after.heights));
    for (const Index point : PointsOf(NotIn(after.heights, before.heights))) {
        moved.push_back(point);
    }
    std::sort(moved.begin(), moved.end());
    moved.erase(std::unique(moved.begin(), moved.end()), moved.end());
    return moved;
}

} // namespace

// A held side without its place may get one by the next edit.
bool LiveSurface::CanFollow(const Survey& survey) {
    const std::optional<ShownSurface> shown = survey.KnownSurface();
    if (!shown || shown->arithmetic != Arithmetic::Exact || shown->triangles.count == 0) {
        return false;
    }
    return shown->shaped == nullptr ||
           std::none_of(shown->shaped->all.remarks.begin(), shown->shaped->all.remarks.end(),
                        [](const SurfaceRemark& remark) {
                            return remark.kind == SurfaceRemarkKind::LostSide;
                        });
}

// Ties go by the number among all points, as they do when the points in use are triangulated.
ExactMesh LiveSurface::MeshOf(const Survey& survey) {
    const ShownSurface shown = survey.Surface();
    Array1<Index> ranks(shown.points.count);
    for (Index i = 1; i <= shown.points.count; ++i) {
        ranks[i] =
            i <= shown.SurveyedPoints() ? survey.NumberAmongAll(i) : survey.AllPoints().count + i;
    }
    const TriangleList& triangles =
        shown.shaped == nullptr ? shown.triangles : shown.shaped->all.triangles;
    ExactMesh mesh(PlacesOf(shown.points), std::move(ranks), triangles);
    if (shown.shaped != nullptr) {
        const EdgeMarks& marks = shown.shaped->all.constrained;
        for (Index t = 1; t <= triangles.count; ++t) {
            for (int j = 1; marks[t] != 0 && j <= 3; ++j) {
                if ((static_cast<unsigned>(marks[t]) >> static_cast<unsigned>(j - 1) & 1U) != 0) {
                    mesh.Constrain({t, j});
                }
            }
        }
    }
    return mesh;
}

LiveSurface::LiveSurface(const Survey& survey)
    : survey_(survey), revision_(survey.PointsRevision()), plan_(survey.Plan()),
      leftOut_(plan_.excluded), hasDrapedLines_(HasDrapedLine(plan_)), mesh_(MeshOf(survey)) {
    const ShownSurface shown = survey.Surface();
    surveyed_ = shown.SurveyedPoints();
    addedByLines_ = shown.points.count - surveyed_;
    for (Index i = surveyed_ + 1; i <= shown.points.count; ++i) {
        addedHeights_.push_back(shown.points.z[i]);
    }
    if (shown.shaped != nullptr) {
        hidden_ = shown.shaped->hidden;
    }
    for (Index i = 1; i <= surveyed_; ++i) {
        if (mesh_.TriangleAt(i) == 0) {
            repeats_.push_back(i);
        }
    }
    inserter_.NoteWrittenIn(&written_);
}

// Excluded ones had no number in the mesh when it began.
Index LiveSurface::InMesh(Index numberAmongAll) const {
    const auto place = std::lower_bound(leftOut_.begin(), leftOut_.end(), numberAmongAll);
    if (place != leftOut_.end() && *place == numberAmongAll) {
        const auto found = comeBack_.find(numberAmongAll);
        return found == comeBack_.end() ? 0 : found->second;
    }
    return numberAmongAll - static_cast<Index>(place - leftOut_.begin());
}

// Number m of those in use has as many before it that were left out as make up the difference.
Index LiveSurface::AmongAll(Index pointOfMesh) const {
    if (pointOfMesh > surveyed_) {
        const auto found = cameFrom_.find(pointOfMesh);
        return found == cameFrom_.end() ? 0 : found->second;
    }
    std::size_t before = 0;
    std::size_t most = leftOut_.size();
    while (before < most) {
        const std::size_t middle = (before + most) / 2;
        if (leftOut_[middle] - static_cast<Index>(middle) <= pointOfMesh) {
            before = middle + 1;
        } else {
            most = middle;
        }
    }
    return pointOfMesh + static_cast<Index>(before);
}

SpacePoint LiveSurface::CornerOf(Index pointOfMesh) const {
    const PlanPoint& place = mesh_.Position(pointOfMesh);
    if (IsAdded(pointOfMesh)) {
        return {place.x, place.y,
                addedHeights_[static_cast<std::size_t>(pointOfMesh - surveyed_) - 1]};
    }
    const Index number = AmongAll(pointOfMesh);
    const auto changed = std::lower_bound(
        plan_.heights.begin(), plan_.heights.end(), number,
        [](const ChangedHeight& height, Index wanted) { return height.point < wanted; });
    const bool isChanged = changed != plan_.heights.end() && changed->point == number;
    return {place.x, place.y, isChanged ? changed->height : survey_.AllPoints().z[number]};
}

// Of points at one place the earliest is the corner; which that is now would have to be found.
bool LiveSurface::SharesItsPlace(Index numberAmongAll) const {
    const PointSet& all = survey_.AllPoints();
    const PlanPoint place{all.x[numberAmongAll], all.y[numberAmongAll]};
    return std::any_of(repeats_.begin(), repeats_.end(),
                       [&](Index repeat) { return mesh_.Position(repeat) == place; });
}

void LiveSurface::NoteStar(Index pointOfMesh) {
    inserter_.AroundPoint(pointOfMesh, [this](Index t, int /*edge*/) {
        written_.push_back(t);
        return true;
    });
}

bool LiveSurface::Exclude(Index numberAmongAll, SurfacePatch& patch) {
    const Index point = InMesh(numberAmongAll);
    if (point == 0 || mesh_.TriangleAt(point) == 0 || SharesItsPlace(numberAmongAll)) {
        return false;
    }
    bool isSound = true;
    inserter_.AroundPoint(point, [&](Index t, int /*edge*/) {
        const auto [a, b, c] = mesh_.Triangles().table[t].vertices;
        patch.before.push_back({mesh_.Position(a), mesh_.Position(b), mesh_.Position(c)});
        isSound = isSound && IsSound(t);
        return true;
    });
    return isSound && inserter_.Remove(point);
}

bool LiveSurface::Restore(Index numberAmongAll) {
    const PointSet& all = survey_.AllPoints();
    if (SharesItsPlace(numberAmongAll)) {
        return false;
    }
    Index point = InMesh(numberAmongAll);
    if (point == 0) {
        point = mesh_.Append({all.x[numberAmongAll], all.y[numberAmongAll]}, numberAmongAll);
        comeBack_[numberAmongAll] = point;
        cameFrom_[point] = numberAmongAll;
    }
    if (mesh_.TriangleAt(point) != 0) {
        return false;
    }
    mesh_.Insert(point);
    if (mesh_.TriangleAt(point) == 0) {
        return false;
    }
    NoteStar(point);
    return !HasLines(plan_) || !MayTurnLines(point);
}

// Whether a point is so near to a line that the line would be led through it.
bool LiveSurface::MayTurnLines(Index pointOfMesh) const {
    const double reach = SurfaceConstraints().vertexTolerance;
    bool isNear = false;
    inserter_.AroundPoint(pointOfMesh, [&](Index t, int edge) {
        const PlanPoint& p = mesh_.Position(pointOfMesh);
        const Triangle& triangle = mesh_.Triangles().table[t];
        const PlanPoint& a = mesh_.Position(triangle.Vertex(NextEdge(edge)));
        const PlanPoint& b = mesh_.Position(triangle.Vertex(PreviousEdge(edge)));
        isNear = mesh_.IsConstrained({t, NextEdge(edge)}) && DistanceToSide(a, b, p) <= reach;
        return !isNear;
    });
    return isNear;
}

Index LiveSurface::CornerAt(PlanPoint place) {
    const MeshPlace found = inserter_.Locate(place, mesh_.AnyTriangle());
    return found.location < 4 ? 0 : mesh_.Triangles().Vertex(found.location - 3, found.triangle);
}

bool LiveSurface::Hold(const HeldSide& side) {
    const Index from = CornerAt(side.from);
    const Index to = CornerAt(side.to);
    if (from == 0 || to == 0 || from == to) {
        return false;
    }
    const SegmentInserter::Start start = inserter_.Leave(from, to);
    if (start.way == SegmentInserter::Way::Edge) {
        if (start.to != to) {
            return false;
        }
        inserter_.Constrain(start.edge);
        NoteStar(from);
        return true;
    }
    std::vector<SegmentInserter::Crossed> crossed;
    const auto note = [&](const SegmentInserter::Crossed& edge, TriangleEdge at) {
        crossed.push_back(edge);
        return crossed.size() <= kMostCrossed && !inserter_.IsConstrained(at);
    };
    if (start.way != SegmentInserter::Way::Across ||
        inserter_.Follow(from, to, start.edge, note) != to) {
        return false;
    }
    inserter_.MakeEdge(from, to, crossed);
    return true;
}

// Where there are lines, one of them may run along the same side.
bool LiveSurface::LetGo(const HeldSide& side) {
    const Index from = CornerAt(side.from);
    const Index to = CornerAt(side.to);
    if (HasLines(plan_) || from == 0 || to == 0) {
        return false;
    }
    const TriangleEdge edge = inserter_.FindEdge(from, to);
    if (edge.triangle == 0 || !inserter_.IsConstrained(edge)) {
        return false;
    }
    NoteStar(from);
    inserter_.Release(from, to);
    return true;
}

// What is hidden, or might come to be, is left to the survey, and so is what lies beside lines that
// follow the ground: they cross other sides then.
bool LiveSurface::IsSound(Index triangle) const {
    const auto isHidden = [this](Index t) { return t <= hidden_.UpperBound() && hidden_[t] != 0; };
    if (isHidden(triangle)) {
        return false;
    }
    const bool isRimLoose = plan_.longestSide || !plan_.boundary.empty() || !plan_.holes.empty();
    for (int j = 1; j <= 3; ++j) {
        const Index across = mesh_.Triangles().Neighbour(j, triangle);
        if (isRimLoose && (across < 1 || isHidden(across))) {
            return false;
        }
        if (hasDrapedLines_ && IsAdded(mesh_.Triangles().Vertex(j, triangle))) {
            return false;
        }
    }
    return !hasDrapedLines_ || mesh_.Marks()[triangle] == 0;
}

bool LiveSurface::IsHeld(PlanPoint from, PlanPoint to) const {
    return std::any_of(plan_.held.begin(), plan_.held.end(), [&](const HeldSide& side) {
        return (side.from == from && side.to == to) || (side.from == to && side.to == from);
    });
}

EdgeMark LiveSurface::MarkOfLines(Index triangle) const {
    unsigned mark = mesh_.Marks()[triangle];
    for (int j = 1; j <= 3; ++j) {
        const Index from = mesh_.Triangles().Vertex(j, triangle);
        const Index to = mesh_.Triangles().Vertex(NextEdge(j), triangle);
        if (mark != 0 && IsHeld(mesh_.Position(from), mesh_.Position(to))) {
            mark &= ~(1U << static_cast<unsigned>(j - 1));
        }
    }
    return static_cast<EdgeMark>(mark);
}

bool LiveSurface::FillPatch(SurfacePatch& patch) {
    std::sort(written_.begin(), written_.end());
    written_.erase(std::unique(written_.begin(), written_.end()), written_.end());
    std::erase_if(written_, [this](Index t) { return mesh_.Triangles().table[t].Vertex(1) == 0; });
    if (!std::all_of(written_.begin(), written_.end(), [this](Index t) { return IsSound(t); })) {
        return false;
    }
    std::vector<Index> corners;
    for (const Index t : written_) {
        const std::array<Index, 3>& vertices = mesh_.Triangles().table[t].vertices;
        corners.insert(corners.end(), vertices.begin(), vertices.end());
        near_ = t;
    }
    const auto comesBefore = [this](Index a, Index b) {
        return std::pair(IsAdded(a), a) < std::pair(IsAdded(b), b);
    };
    std::sort(corners.begin(), corners.end(), comesBefore);
    corners.erase(std::unique(corners.begin(), corners.end()), corners.end());
    for (const Index corner : corners) {
        const SpacePoint point = CornerOf(corner);
        patch.points.Append(point.x, point.y, point.z);
        patch.surveyed += IsAdded(corner) ? 0 : 1;
    }
    const auto numberIn = [](const std::vector<Index>& list, auto found) {
        return static_cast<Index>(found - list.begin()) + 1;
    };
    TriangleList loose(static_cast<Index>(written_.size()));
    loose.count = static_cast<Index>(written_.size());
    for (Index t = 1; t <= loose.count; ++t) {
        const Index slot = written_[static_cast<std::size_t>(t) - 1];
        const Triangle& triangle = mesh_.Triangles().table[slot];
        for (int j = 1; j <= 3; ++j) {
            loose.table[t].vertices[static_cast<std::size_t>(j) - 1] =
                numberIn(corners, std::lower_bound(corners.begin(), corners.end(),
                                                   triangle.Vertex(j), comesBefore));
            const auto across =
                std::lower_bound(written_.begin(), written_.end(), triangle.Neighbour(j));
            const bool isHere = across != written_.end() && *across == triangle.Neighbour(j);
            loose.table[t].SetNeighbour(j, isHere ? numberIn(written_, across) : 0);
        }
        patch.onLines.Append(MarkOfLines(slot));
    }
    patch.triangles = WithRims(loose);
    return true;
}

std::optional<SurfacePatch> LiveSurface::Follow(const SurfacePlan& plan) {
    const std::vector<HeldSide> letGo = NotIn(plan_.held, plan.held);
    const std::vector<HeldSide> held = NotIn(plan.held, plan_.held);
    const std::vector<Index> excluded = OnlyInFirst(plan.excluded, plan_.excluded);
    const std::vector<Index> restored = OnlyInFirst(plan_.excluded, plan.excluded);
    const std::vector<Index> moved = MovedPoints(plan_, plan);
    if (!HasSameLines(plan, plan_) ||
        letGo.size() + held.size() + excluded.size() + restored.size() + moved.size() >
            kMostEdits) {
        return std::nullopt;
    }
    written_.clear();
    SurfacePatch patch;
    const auto done = [](const auto& items, auto edit) {
        return std::all_of(items.begin(), items.end(), edit);
    };
    if (!done(letGo, [this](const HeldSide& side) { return LetGo(side); }) ||
        !done(excluded, [&](Index point) { return Exclude(point, patch); })) {
        return std::nullopt;
    }
    plan_ = plan; // heights are those of the new plan from here on
    if (!done(restored, [this](Index point) { return Restore(point); }) ||
        !done(held, [this](const HeldSide& side) { return Hold(side); })) {
        return std::nullopt;
    }
    for (const Index point : moved) {
        if (const Index corner = InMesh(point); corner != 0 && mesh_.TriangleAt(corner) != 0) {
            NoteStar(corner);
        }
    }
    return FillPatch(patch) ? std::optional(std::move(patch)) : std::nullopt;
}

std::optional<TriangleHere> LiveSurface::At(PlanPoint place) {
    if (near_ > mesh_.Triangles().count || mesh_.Triangles().Vertex(1, near_) == 0) {
        near_ = mesh_.AnyTriangle();
    }
    const MeshPlace found = inserter_.Locate(place, near_);
    near_ = found.triangle;
    const Triangle& triangle = mesh_.Triangles().table[near_];
    TriangleHere here;
    here.holdsPlace =
        found.location >= 0 && !(near_ <= hidden_.UpperBound() && hidden_[near_] != 0);
    for (int j = 1; j <= 3; ++j) {
        const auto i = static_cast<std::size_t>(j) - 1;
        here.numbers[i] = AmongAll(triangle.Vertex(j));
        here.corners[i] = CornerOf(triangle.Vertex(j));
        here.isConstrained[i] = mesh_.IsConstrained({near_, j});
        if (triangle.Neighbour(j) > 0) {
            const TriangleEdge across = inserter_.Across({near_, j});
            here.beyond[i] = mesh_.Position(
                mesh_.Triangles().Vertex(PreviousEdge(across.edge), across.triangle));
        }
    }
    return here;
}

std::vector<std::array<Index, 3>> LiveSurface::Triangles() const {
    std::vector<std::array<Index, 3>> triangles;
    for (Index t = 1; t <= mesh_.Triangles().count; ++t) {
        const Triangle& triangle = mesh_.Triangles().table[t];
        if (triangle.Vertex(1) == 0 || (t <= hidden_.UpperBound() && hidden_[t] != 0)) {
            continue;
        }
        std::array<Index, 3> numbers{};
        std::transform(triangle.vertices.begin(), triangle.vertices.end(), numbers.begin(),
                       [this](Index corner) {
                           return IsAdded(corner) ? survey_.AllPoints().count + corner - surveyed_
                                                  : AmongAll(corner);
                       });
        std::rotate(numbers.begin(), std::min_element(numbers.begin(), numbers.end()),
                    numbers.end());
        triangles.push_back(numbers);
    }
    return triangles;
}

} // namespace terravo
