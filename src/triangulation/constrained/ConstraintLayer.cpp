#include "triangulation/constrained/ConstraintLayer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace terravo {
namespace {

constexpr double kSameHeight = 1e-9; // data units; less is rounding
constexpr int kDeepest = 20;         // parts of parts that are laid anew
constexpr std::int64_t kCrossingsAMarkedEdge = 4;
constexpr std::int64_t kCrossingsASide = 32;

double Reachable(double coordinate) {
    return IsWithinReach(coordinate) ? coordinate : 0;
}

// Twice the area of a triangle, without a sign.
double AreaOf(PlanPoint a, PlanPoint b, PlanPoint c) {
    return std::fabs((a.x - c.x) * (b.y - c.y) - (a.y - c.y) * (b.x - c.x));
}

} // namespace

double GivenSide::PartAt(PlanPoint place) const {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double squared = dx * dx + dy * dy;
    return squared > 0 ? ((place.x - from.x) * dx + (place.y - from.y) * dy) / squared : 0;
}

double GivenSide::HeightAt(PlanPoint place) const {
    return fromHeight + std::clamp(PartAt(place), 0.0, 1.0) * (toHeight - fromHeight);
}

double GivenSide::DistanceTo(PlanPoint place) const {
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    return length > 0 ? AreaOf(from, to, place) / length
                      : std::hypot(place.x - from.x, place.y - from.y);
}

ConstraintLayer::ConstraintLayer(ExactMesh& mesh, std::vector<double> heights,
                                 const std::vector<LineToLay>& lines,
                                 const SurfaceConstraints& constraints)
    : mesh_(mesh), inserter_(mesh), grid_(mesh), lines_(lines), constraints_(constraints),
      surveyPoints_(mesh.PointCount()), heights_(std::move(heights)), corners_(lines.size()),
      chains_(lines.size() + constraints.held.size()), sides_(lines.size()),
      reachesOutside_(lines.size()), isRefused_(chains_.size()) {
    std::size_t sides = constraints.held.size();
    for (const LineToLay& line : lines) {
        sides += line.SideCount();
    }
    pieces_.Reserve(2 * sides);
}

Index ConstraintLayer::StartNear(PlanPoint place) const {
    const Index near = grid_.Near(place);
    const Index from = near != 0 ? near : lastPut_;
    return from != 0 ? mesh_.TriangleAt(from) : 1;
}

bool ConstraintLayer::IsNear(Index point, PlanPoint place) const {
    const PlanPoint& p = mesh_.Position(point);
    return IsWithin(std::hypot(p.x - place.x, p.y - place.y));
}

SurfaceRemark ConstraintLayer::RemarkOn(SurfaceRemarkKind kind, LineNumber line, PlanPoint place,
                                        double height) const {
    SurfaceRemark remark;
    remark.kind = kind;
    const bool isHeld = line >= lines_.size();
    remark.role = isHeld ? LineRole::HeldSide : lines_[line].role;
    remark.line = isHeld ? line - lines_.size() : lines_[line].number;
    remark.place = {place.x, place.y, height};
    return remark;
}

void ConstraintLayer::NameOther(SurfaceRemark& remark, LineNumber other) const {
    if (other < lines_.size()) {
        remark.otherRole = lines_[other].role;
        remark.otherLine = lines_[other].number;
    }
}

void ConstraintLayer::Refuse(LineNumber line, const SurfaceRemark& remark) {
    if (isRefused_[line] == 0) {
        isRefused_[line] = 1;
        refused.emplace_back(line, remark);
    }
}

GivenSide ConstraintLayer::SideBetween(Index from, Index to) const {
    return {mesh_.Position(from), mesh_.Position(to), Height(from), Height(to)};
}

// ---- Vertices
// ------------------------------------------------------------------------------------

Index ConstraintLayer::PutNew(PlanPoint position, const MeshPlace& place, double height,
                              LineNumber line) {
    const TriangleEdge edge{place.triangle, place.location};
    const bool divides = place.location > 0 && inserter_.IsConstrained(edge);
    Index from = 0;
    Index to = 0;
    PieceNumber divided = 0;
    if (divides) {
        from = inserter_.Triangles().Vertex(edge.edge, edge.triangle);
        to = inserter_.Triangles().Vertex(NextEdge(edge.edge), edge.triangle);
        divided = pieces_.Retire(from, to);
    }
    const Index point = inserter_.Put(position, place);
    heights_.push_back(height);
    ownerOf_.push_back(line);
    lastPut_ = point;
    if (divides) {
        const LineNumber owner = pieces_.At(divided).line;
        pieces_.SetParts(divided,
                         {pieces_.Claim(from, point, owner), pieces_.Claim(point, to, owner)});
    }
    return point;
}

Index ConstraintLayer::PutVertex(LineNumber line, const SpacePoint& vertex) {
    const PlanPoint position = PlanOf(vertex);
    const MeshPlace place = inserter_.Locate(position, StartNear(position));
    const Index nearest = inserter_.Nearest(position, place);
    if (!IsNear(nearest, position)) {
        return PutNew(position, place, vertex.z, line);
    }
    if (std::fabs(vertex.z - Height(nearest)) > kSameHeight) {
        SurfaceRemark remark = RemarkOn(SurfaceRemarkKind::OtherHeight, line, position, vertex.z);
        remark.otherHeight = Height(nearest);
        if (nearest <= surveyPoints_) {
            remark.point = nearest;
        } else {
            NameOther(remark, ownerOf_[static_cast<std::size_t>(nearest - surveyPoints_) - 1]);
        }
        remarks.push_back(remark);
    }
    return nearest;
}

void ConstraintLayer::PutVertices(LineNumber line) {
    std::vector<Index>& corners = corners_[line];
    for (const SpacePoint& vertex : lines_[line].vertices) {
        corners.push_back(PutVertex(line, vertex));
    }
    if (lines_[line].isClosed) {
        corners.push_back(corners.front());
    }
    corners.erase(std::unique(corners.begin(), corners.end()), corners.end());
    if (corners.size() < (lines_[line].role == LineRole::Breakline ? 2U : 4U)) {
        const SpacePoint& first = lines_[line].vertices.front();
        Refuse(line, RemarkOn(SurfaceRemarkKind::TooShort, line, PlanOf(first), first.z));
    }
}

// ---- Crossings
// -----------------------------------------------------------------------------------

// Of nearly parallel sides rounding may take the place anywhere along them, so it is sought on the
// shorter one and kept within the extents of both.
PlanPoint ConstraintLayer::CrossingOf(PlanPoint a, PlanPoint b, PlanPoint c, PlanPoint d) {
    if (std::hypot(d.x - c.x, d.y - c.y) < std::hypot(b.x - a.x, b.y - a.y)) {
        std::swap(a, c);
        std::swap(b, d);
    }
    const double before = AreaOf(c, d, a);
    const double behind = AreaOf(c, d, b);
    const double part = before + behind > 0 ? before / (before + behind) : 0.5;
    const auto within = [part](double a1, double b1, double c1, double d1) {
        const double low = std::max(std::min(a1, b1), std::min(c1, d1));
        const double high = std::min(std::max(a1, b1), std::max(c1, d1));
        return Reachable(std::clamp(a1 + part * (b1 - a1), low, std::max(low, high)));
    };
    return {within(a.x, b.x, c.x, d.x), within(a.y, b.y, c.y, d.y)};
}

ConstraintLayer::Meeting ConstraintLayer::Meet(LineNumber line, LineNumber other, PlanPoint place,
                                               double height, double otherHeight, bool tells) {
    const CrossingRule& rule = constraints_.crossings;
    const double difference = std::fabs(height - otherHeight);
    if (difference <= kSameHeight) {
        return Meeting::Agree;
    }
    const bool agrees = difference <= rule.tolerance;
    SurfaceRemark remark = RemarkOn(agrees             ? SurfaceRemarkKind::HeightsMet
                                    : rule.earlierWins ? SurfaceRemarkKind::HeightTaken
                                                       : SurfaceRemarkKind::RefusedCrossing,
                                    line, place, height);
    remark.otherHeight = otherHeight;
    NameOther(remark, other);
    if (!agrees && !rule.earlierWins) {
        Refuse(line, remark);
        return Meeting::Refused;
    }
    if (tells) {
        remarks.push_back(remark);
    }
    return agrees ? Meeting::Agree : Meeting::Taken;
}

// Where a side goes through a point. Survey points keep their height, and of two lines the earlier
// one has the word: it may be the vertex of a line that follows.
bool ConstraintLayer::PassThrough(Index point, const Course& course, bool tells) {
    const PlanPoint& place = mesh_.Position(point);
    const double height = course.given.HeightAt(place);
    const double there = Height(point);
    if (std::fabs(height - there) <= std::max(constraints_.crossings.tolerance, kSameHeight)) {
        return true;
    }
    if (point <= surveyPoints_) {
        if (tells) {
            SurfaceRemark remark =
                RemarkOn(SurfaceRemarkKind::OffPoint, course.line, place, height);
            remark.otherHeight = there;
            remark.point = point;
            remarks.push_back(remark);
        }
        return true;
    }
    const LineNumber owner = ownerOf_[static_cast<std::size_t>(point - surveyPoints_) - 1];
    if (owner == kNoLine || isRefused_[owner] != 0) {
        return true;
    }
    if (owner <= course.line) {
        return Meet(course.line, owner, place, height, there, tells) != Meeting::Refused;
    }
    if (tells && Meet(owner, course.line, place, there, height, tells) == Meeting::Taken) {
        heights_[static_cast<std::size_t>(point) - 1] = height;
    }
    return true;
}

// ---- The dry run
// ---------------------------------------------------------------------------------

bool ConstraintLayer::CanPass(Index from, Index to, LineNumber line) {
    const Course course{SideBetween(from, to), line, 0};
    bool passes = true;
    for (Index current = from; current != to && passes;) {
        const SegmentInserter::Start start = inserter_.Leave(current, to);
        Index next = start.to;
        if (start.way == SegmentInserter::Way::Across) {
            next =
                inserter_.Follow(current, to, start.edge, [&](const auto& edge, TriangleEdge at) {
                    passes = !inserter_.IsConstrained(at) || CanCross(edge, course);
                    return passes;
                });
        }
        passes = passes && (next == to || PassThrough(next, course, false));
        current = next;
    }
    return passes;
}

bool ConstraintLayer::CanCross(const SegmentInserter::Crossed& edge, const Course& course) {
    ++budget_;
    for (const Index end : {edge.right, edge.left}) {
        if (IsWithin(course.given.DistanceTo(mesh_.Position(end)))) {
            return PassThrough(end, course, false);
        }
    }
    const GivenSide other = SideBetween(edge.right, edge.left);
    const PlanPoint place = CrossingOf(course.given.from, course.given.to, other.from, other.to);
    return Meet(course.line, pieces_.Of(edge.right, edge.left).line, place,
                course.given.HeightAt(place), other.HeightAt(place), false) != Meeting::Refused;
}

// Leaves in the budget what the line may take.
bool ConstraintLayer::CanBeLaid(LineNumber line) {
    const std::vector<Index>& corners = corners_[line];
    budget_ = 0;
    for (std::size_t i = 1; i < corners.size(); ++i) {
        if (!CanPass(corners[i - 1], corners[i], line)) {
            return false;
        }
    }
    budget_ = kCrossingsAMarkedEdge * budget_ +
              kCrossingsASide * static_cast<std::int64_t>(corners.size());
    return true;
}

// ---- Laying
// --------------------------------------------------------------------------------------

ConstraintLayer::Result ConstraintLayer::LayWithHeights(LineNumber line) {
    if (isRefused_[line] != 0 || !CanBeLaid(line)) {
        return Result::Refused;
    }
    const std::vector<Index>& corners = corners_[line];
    for (std::size_t i = 1; i < corners.size(); ++i) {
        settled_.clear();
        if (!Lay(corners[i - 1], corners[i], {SideBetween(corners[i - 1], corners[i]), line, 0},
                 chains_[line])) {
            const PlanPoint& place = mesh_.Position(corners[i - 1]);
            Refuse(line,
                   RemarkOn(SurfaceRemarkKind::NotFinished, line, place, Height(corners[i - 1])));
            return Result::Unfinished;
        }
        sides_[line].push_back(
            {mesh_.Position(corners[i - 1]), mesh_.Position(corners[i]), chains_[line].size()});
    }
    return Result::Laid;
}

void ConstraintLayer::RefuseIfBentAway(LineNumber line) {
    std::size_t next = 0;
    for (const LaidSide& side : sides_[line]) {
        for (; next < side.end; ++next) {
            const PieceNumber piece = chains_[line][next];
            if (!pieces_.At(piece).parts.empty() && IsBentAway(piece, side)) {
                Refuse(line, RemarkOn(SurfaceRemarkKind::NotFinished, line, side.from,
                                      lines_[line].isDraped ? kNoHeight
                                                            : Height(pieces_.At(piece).from)));
                return;
            }
        }
    }
}

bool ConstraintLayer::IsBentAway(PieceNumber piece, const LaidSide& side) const {
    constexpr double kTolerances = 3; // a crossing may be moved, and what it is moved to as well
    constexpr double kRounding = 5e-14;
    const GivenSide given{side.from, side.to, 0, 0};
    const double reach =
        std::max(kTolerances * constraints_.vertexTolerance,
                 kRounding * std::max({std::fabs(side.from.x), std::fabs(side.from.y),
                                       std::fabs(side.to.x), std::fabs(side.to.y)}));
    bool isBent = false;
    pieces_.ForEachEdge(piece, [&](Index p, Index q) {
        for (const Index end : {p, q}) {
            const PlanPoint& place = mesh_.Position(end);
            const double part = std::clamp(given.PartAt(place), 0.0, 1.0);
            isBent = isBent ||
                     std::hypot(place.x - (side.from.x + part * (side.to.x - side.from.x)),
                                place.y - (side.from.y + part * (side.to.y - side.from.y))) > reach;
        }
    });
    return isBent;
}

void ConstraintLayer::ClaimEdge(Index p, Index q, TriangleEdge edge, LineNumber line,
                                PieceChain& chain) {
    if (!inserter_.IsConstrained(edge)) {
        inserter_.Constrain(edge);
    }
    chain.push_back(pieces_.Claim(p, q, line));
}

// Goals are places to go to, the next one last: points near the side and crossings on the way.
bool ConstraintLayer::Lay(Index from, Index to, const Course& course, PieceChain& chain) {
    std::vector<Index> goals{to};
    Index current = from;
    while (!goals.empty()) {
        const Index goal = goals.back();
        if (current == goal) {
            goals.pop_back();
            continue;
        }
        const SegmentInserter::Start start = inserter_.Leave(current, goal);
        if (start.way == SegmentInserter::Way::None) {
            return false;
        }
        const Index before = current;
        if (start.way == SegmentInserter::Way::Edge) {
            ClaimEdge(current, start.to, start.edge, course.line, chain);
            current = start.to;
        } else if (!StepAcross(before, start, course, goals, current, chain)) {
            return false;
        }
        if (current != before && current != to && course.depth == 0 &&
            std::find(settled_.begin(), settled_.end(), current) == settled_.end() &&
            !PassThrough(current, course, true)) {
            return false;
        }
    }
    return true;
}

bool ConstraintLayer::StepAcross(Index from, const SegmentInserter::Start& start,
                                 const Course& course, std::vector<Index>& goals, Index& current,
                                 PieceChain& chain) {
    const Index goal = goals.back();
    Index near = 0;
    SegmentInserter::Crossed inTheWay;
    crossed_.clear();
    const Index reached =
        inserter_.Follow(from, goal, start.edge, [&](const auto& edge, TriangleEdge at) {
            near = course.depth == 0 ? NearAhead(edge, from, goal, course) : 0;
            if (near == 0 && inserter_.IsConstrained(at)) {
                inTheWay = edge;
            }
            crossed_.push_back(edge);
            return near == 0 && inTheWay.right == 0;
        });
    if (near != 0) {
        goals.push_back(near);
        return true;
    }
    if (inTheWay.right != 0) {
        return Cross(from, goal, inTheWay, course, goals);
    }
    inserter_.MakeEdge(from, reached, crossed_);
    chain.push_back(pieces_.Claim(from, reached, course.line));
    current = reached;
    return true;
}

// The earlier one of the ends of a crossed edge that lie within the tolerance of the side as it was
// given, between here and the goal. Each goal lies strictly before the last one, so this ends.
Index ConstraintLayer::NearAhead(const SegmentInserter::Crossed& crossed, Index from, Index goal,
                                 const Course& course) const {
    Index nearest = 0;
    double least = 0;
    for (const Index point : {crossed.right, crossed.left}) {
        const PlanPoint& place = mesh_.Position(point);
        if (point == goal || !IsWithin(course.given.DistanceTo(place))) {
            continue;
        }
        const double part = course.given.PartAt(place);
        if (part > course.given.PartAt(mesh_.Position(from)) &&
            part < course.given.PartAt(mesh_.Position(goal)) && (nearest == 0 || part < least)) {
            nearest = point;
            least = part;
        }
    }
    return nearest;
}

Index ConstraintLayer::SnapCrossing(PlanPoint place, Index from, Index goal,
                                    const SegmentInserter::Crossed& edge) {
    const MeshPlace found = inserter_.Locate(place, edge.triangle);
    const std::array<Index, 3>& corners = inserter_.Triangles().table[found.triangle].vertices;
    Index nearest = 0;
    double least = constraints_.vertexTolerance;
    for (const Index point :
         {edge.right, edge.left, from, goal, corners[0], corners[1], corners[2]}) {
        const PlanPoint& p = mesh_.Position(point);
        const double distance = std::hypot(p.x - place.x, p.y - place.y);
        if (distance < least || (nearest == 0 && distance <= least)) {
            nearest = point;
            least = distance;
        }
    }
    return nearest;
}

// A constrained edge stands in the way from a point to the goal: a crossing is made and becomes the
// next goal.
bool ConstraintLayer::Cross(Index from, Index goal, const SegmentInserter::Crossed& edge,
                            const Course& course, std::vector<Index>& goals) {
    if (--budget_ < 0 || course.depth > kDeepest) {
        return false;
    }
    const auto [p, q, triangle] = edge;
    const PlanPoint place = CrossingOf(mesh_.Position(from), mesh_.Position(goal),
                                       mesh_.Position(p), mesh_.Position(q));
    const LineNumber other = pieces_.Of(p, q).line;
    const double height = course.given.HeightAt(place);
    const double there = SideBetween(p, q).HeightAt(place);
    const Index snapped = SnapCrossing(place, from, goal, edge);
    if (snapped == p || snapped == q) {
        goals.push_back(snapped);
        return true;
    }
    if (snapped != 0) {
        const bool isEnd = snapped == from || snapped == goal;
        if (isEnd && course.depth == 0 &&
            Meet(course.line, other, place, Height(snapped), there, false) == Meeting::Refused) {
            return false;
        }
        if (!isEnd) {
            goals.push_back(snapped);
        }
        return DivideAt(p, q, snapped, course.depth);
    }
    Meeting meeting = Meeting::Agree;
    if (course.depth == 0) {
        meeting = Meet(course.line, other, place, height, there, true);
        if (meeting == Meeting::Refused) {
            return false;
        }
    }
    const Index point = DivideEdge(
        p, q, place, meeting == Meeting::Taken ? there : (height + there) / 2, course.depth);
    if (point == 0) {
        return false;
    }
    settled_.push_back(point);
    if (point != from && point != goal) {
        goals.push_back(point);
    }
    return true;
}

/// @return the point at the crossing; 0 when the parts of the edge cannot be laid.
Index ConstraintLayer::DivideEdge(Index p, Index q, PlanPoint place, double height, int depth) {
    const LineNumber owner = pieces_.Of(p, q).line;
    const PieceNumber divided = pieces_.Retire(p, q);
    const GivenSide side = SideBetween(p, q);
    inserter_.Release(p, q);
    const MeshPlace found = inserter_.Locate(place, mesh_.TriangleAt(p));
    Index point = 0;
    if (found.location > 3) {
        point = inserter_.Triangles().Vertex(found.location - 3, found.triangle);
    } else {
        point = PutNew(place, found, height, owner);
        crossings_ += owner == kNoLine ? 0 : 1;
    }
    PieceChain parts;
    const Course course{side, owner, depth + 1};
    const bool isLaid = Lay(p, point, course, parts) && Lay(point, q, course, parts);
    pieces_.SetParts(divided, std::move(parts));
    isHalfLaid_ = isHalfLaid_ || !isLaid;
    return isLaid ? point : 0;
}

bool ConstraintLayer::DivideAt(Index p, Index q, Index point, int depth) {
    const LineNumber owner = pieces_.Of(p, q).line;
    const PieceNumber divided = pieces_.Retire(p, q);
    const Course course{SideBetween(p, q), owner, depth + 1};
    inserter_.Release(p, q);
    PieceChain parts;
    const bool isLaid = Lay(p, point, course, parts) && Lay(point, q, course, parts);
    pieces_.SetParts(divided, std::move(parts));
    return isLaid;
}

// ---- Held sides
// ----------------------------------------------------------------------------------

ConstraintLayer::Result ConstraintLayer::Hold(std::size_t held) {
    const HeldSide& side = constraints_.held[held];
    const auto number = static_cast<LineNumber>(lines_.size() + held);
    const auto cornerAt = [&](PlanPoint place) {
        if (!IsWithinReach(place.x) || !IsWithinReach(place.y)) {
            return Index{0};
        }
        const MeshPlace found = inserter_.Locate(place, StartNear(place));
        return found.location > 3 ? inserter_.Triangles().Vertex(found.location - 3, found.triangle)
                                  : Index{0};
    };
    const Index from = cornerAt(side.from);
    const Index to = cornerAt(side.to);
    if (from != 0 && to != 0 && from != to) {
        const SegmentInserter::Start start = inserter_.Leave(from, to);
        if (start.way == SegmentInserter::Way::Edge && start.to == to) {
            ClaimEdge(from, to, start.edge, number, chains_[number]);
            return Result::Laid;
        }
        crossed_.clear();
        if (start.way == SegmentInserter::Way::Across &&
            inserter_.Follow(from, to, start.edge, [&](const auto& edge, TriangleEdge at) {
                crossed_.push_back(edge);
                return !inserter_.IsConstrained(at);
            }) == to) {
            inserter_.MakeEdge(from, to, crossed_);
            chains_[number].push_back(pieces_.Claim(from, to, number));
            return Result::Laid;
        }
    }
    remarks.push_back(RemarkOn(SurfaceRemarkKind::LostSide, number, side.from,
                               from != 0 ? Height(from) : kNoHeight));
    return Result::Refused;
}

} // namespace terravo
