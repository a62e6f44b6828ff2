#include "analysis/Profile.h"

#include "analysis/PlaneGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

namespace terravo {
namespace {

// What two neighbouring triangles agree on of the place where the line leaves one for the other.
using EventKey = std::uint64_t;

constexpr EventKey kLegBegin = 0;
constexpr EventKey kLegEnd = 1;
constexpr EventKey kCorner = EventKey{1} << 63U; // and the number of the corner

EventKey SideKey(Index a, Index b) {
    return static_cast<EventKey>(std::min(a, b)) << 32U | static_cast<EventKey>(std::max(a, b));
}

// A place at which the line enters or leaves a triangle.
struct Event {
    bool isCorner = false;
    int number = 0; // of the corner, or of the side
};

struct Node {
    EventKey key = kLegBegin;
    double along = 0; // from the beginning of the leg
    SpacePoint at;    // relative to the origin
    ProfileMark mark = ProfileMark::End;
    std::size_t line = 0; // that is met here; 0: none
};

// The line within one triangle.
struct Stretch {
    Node from;
    Node to;
    bool beginsLeg = false;
    bool endsLeg = false;
};

// One leg of the line and the triangles that it meets.
class LegCutter {
public:
    LegCutter(const MeasuredSurface& surface, const LineSides& lines, const ExactSigns& signs,
              PlanPoint from, PlanPoint to)
        : surface_(surface), lines_(lines), signs_(signs), from_(from), to_(to), dx_(to.x - from.x),
          dy_(to.y - from.y), length_(std::hypot(dx_, dy_)) {}

    void Take(Index triangle) {
        std::array<int, 4> hands{}; // by corner, from 1
        for (int j = 1; j <= 3; ++j) {
            hands[static_cast<std::size_t>(j)] =
                signs_.Turn(from_, to_, PlanOf(surface_.Corner(triangle, j)));
        }
        NoteCornersOfLines(triangle, hands);
        Event in;
        Event out;
        if (FindEvents(triangle, hands, in, out)) {
            Add(triangle, in, out);
        }
    }

    // The stretches in the order of the leg, chained where one ends as another begins.
    std::vector<std::vector<Stretch>> Chains() {
        std::unordered_set<EventKey> ends;
        for (const auto& [key, stretch] : stretches_) {
            ends.insert(stretch.to.key);
        }
        std::vector<std::vector<Stretch>> chains;
        for (const auto& [key, stretch] : stretches_) {
            if (!ends.contains(key)) {
                chains.push_back(ChainFrom(key));
            }
        }
        std::sort(chains.begin(), chains.end(), [](const auto& a, const auto& b) {
            return a.front().from.along < b.front().from.along;
        });
        return chains;
    }

private:
    static int HandOf(const std::array<int, 4>& hands, int j) {
        return hands[static_cast<std::size_t>(j)];
    }

    // Where the line enters and leaves; nothing where it only touches. With the line to the right
    // and the triangle counter-clockwise, the side that comes down from the left hand is entered.
    bool FindEvents(Index triangle, const std::array<int, 4>& hands, Event& in, Event& out) const {
        std::array<int, 3> zeros{};
        std::size_t zeroCount = 0;
        int down = 0;
        int up = 0;
        for (int j = 1; j <= 3; ++j) {
            const int here = HandOf(hands, j);
            const int next = HandOf(hands, NextEdge(j));
            if (here == 0) {
                zeros[zeroCount++] = j;
            }
            down = here > 0 && next < 0 ? j : down;
            up = here < 0 && next > 0 ? j : up;
        }
        if (zeroCount == 2) {
            in = {true, zeros[0]};
            out = {true, zeros[1]};
            if (AlongOf(Plan(triangle, zeros[0])) > AlongOf(Plan(triangle, zeros[1]))) {
                std::swap(in, out);
            }
            return true;
        }
        if (zeroCount == 3 || (down == 0 && up == 0)) {
            return false;
        }
        in = down > 0 ? Event{false, down} : Event{true, zeros[0]};
        out = up > 0 ? Event{false, up} : Event{true, zeros[0]};
        return true;
    }

    // +1 where a place of the leg comes behind an event, -1 before it, 0 at it. `isIn`: the line
    // enters there.
    [[nodiscard]] int Behind(Index triangle, const Event& event, bool isIn, PlanPoint place) const {
        const PlanPoint corner = Plan(triangle, event.number);
        if (event.isCorner) {
            const double difference = std::fabs(dx_) >= std::fabs(dy_)
                                          ? (place.x - corner.x) * (dx_ > 0 ? 1 : -1)
                                          : (place.y - corner.y) * (dy_ > 0 ? 1 : -1);
            return difference > 0 ? 1 : difference < 0 ? -1 : 0;
        }
        const int inside = signs_.Turn(corner, Plan(triangle, NextEdge(event.number)), place);
        return isIn ? inside : -inside;
    }

    void Add(Index triangle, const Event& in, const Event& out) {
        const int beginBeyond = Behind(triangle, out, false, from_);
        const int endBeyond = Behind(triangle, in, true, to_);
        if (beginBeyond >= 0 || endBeyond <= 0) {
            return;
        }
        const int beginsIn = Behind(triangle, in, true, from_);
        const int endsIn = -Behind(triangle, out, false, to_);
        Stretch stretch;
        stretch.from = beginsIn > 0 ? LegNode(triangle, kLegBegin) : NodeOf(triangle, in);
        stretch.to = endsIn > 0 ? LegNode(triangle, kLegEnd) : NodeOf(triangle, out);
        stretch.beginsLeg = beginsIn >= 0;
        stretch.endsLeg = endsIn >= 0;
        if (stretch.beginsLeg) {
            stretch.from.along = 0;
        }
        if (stretch.endsLeg) {
            stretch.to.along = length_;
        }
        stretches_.try_emplace(stretch.from.key, stretch);
    }

    [[nodiscard]] Node LegNode(Index triangle, EventKey key) const {
        const PlanPoint place = key == kLegBegin ? from_ : to_;
        const double z =
            HeightOnTriangle({surface_.Corner(triangle, 1), surface_.Corner(triangle, 2),
                              surface_.Corner(triangle, 3)},
                             place);
        return {key, key == kLegBegin ? 0 : length_, {place.x, place.y, z}, ProfileMark::End};
    }

    [[nodiscard]] Node NodeOf(Index triangle, const Event& event) const {
        const Index a = surface_.triangles.Vertex(event.number, triangle);
        if (event.isCorner) {
            const SpacePoint& corner = surface_.corners[a];
            return {kCorner | static_cast<EventKey>(a), AlongOf(PlanOf(corner)), corner,
                    ProfileMark::Corner};
        }
        const Index b = surface_.triangles.Vertex(NextEdge(event.number), triangle);
        const SpacePoint at = CrossingWithLine(surface_.corners[std::min(a, b)],
                                               surface_.corners[std::max(a, b)], from_, to_);
        return {SideKey(a, b), AlongOf(PlanOf(at)), at, ProfileMark::Edge,
                LineAlong(SideKey(a, b))};
    }

    // Every triangle about a corner on the line is taken, so all sides that end there are seen.
    void NoteCornersOfLines(Index triangle, const std::array<int, 4>& hands) {
        for (int j = 1; !lines_.lines.empty() && j <= 3; ++j) {
            const Index a = surface_.triangles.Vertex(j, triangle);
            const Index b = surface_.triangles.Vertex(NextEdge(j), triangle);
            const std::size_t line = LineAlong(SideKey(a, b));
            if (line == 0) {
                continue;
            }
            if (HandOf(hands, j) == 0) {
                NoteCorner(a, line);
            }
            if (HandOf(hands, NextEdge(j)) == 0) {
                NoteCorner(b, line);
            }
        }
    }

    std::vector<Stretch> ChainFrom(EventKey key) {
        std::vector<Stretch> chain;
        for (auto next = stretches_.find(key);
             next != stretches_.end() && chain.size() < stretches_.size();
             next = stretches_.find(chain.back().to.key)) {
            Stretch stretch = next->second;
            for (Node* node : {&stretch.from, &stretch.to}) {
                if (const auto corner = cornersOfLines_.find(node->key);
                    corner != cornersOfLines_.end()) {
                    node->line = corner->second;
                }
            }
            // Rounding must not turn the line back.
            if (!chain.empty()) {
                stretch.from.along = chain.back().to.along;
            }
            stretch.to.along = std::max(stretch.to.along, stretch.from.along);
            chain.push_back(stretch);
        }
        return chain;
    }

    // Where lines meet, the first of them counts.
    void NoteCorner(Index corner, std::size_t line) {
        std::size_t& noted = cornersOfLines_[kCorner | static_cast<EventKey>(corner)];
        noted = noted == 0 ? line : std::min(noted, line);
    }
    [[nodiscard]] std::size_t LineAlong(EventKey side) const {
        const auto found = lines_.lines.find(side);
        return found == lines_.lines.end() ? 0 : found->second;
    }

    [[nodiscard]] PlanPoint Plan(Index triangle, int j) const {
        return PlanOf(surface_.Corner(triangle, j));
    }
    [[nodiscard]] double AlongOf(PlanPoint place) const {
        const double along = ((place.x - from_.x) * dx_ + (place.y - from_.y) * dy_) / length_;
        return std::clamp(along, 0.0, length_);
    }

    const MeasuredSurface& surface_;
    const LineSides& lines_;
    const ExactSigns& signs_;
    PlanPoint from_;
    PlanPoint to_;
    double dx_;
    double dy_;
    double length_;
    std::unordered_map<EventKey, Stretch> stretches_; // by where they begin
    std::unordered_map<EventKey, std::size_t> cornersOfLines_;
};

Array1<PlanPoint> PlacesOf(const MeasuredSurface& surface) {
    Array1<PlanPoint> places;
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            places.Append(PlanOf(surface.Corner(t, j)));
        }
    }
    return places;
}

ProfilePoint PointOf(const Node& node, double before, PlanPoint origin) {
    return {before + node.along,
            {origin.x + node.at.x, origin.y + node.at.y},
            node.at.z,
            node.mark,
            node.line};
}

// @param goesOn  the run before ended where this leg begins, and so does this chain.
void AppendChain(const std::vector<Stretch>& chain, double before, PlanPoint origin, bool goesOn,
                 Profile& profile) {
    if (!goesOn) {
        profile.runs.push_back({PointOf(chain.front().from, before, origin)});
    }
    for (const Stretch& stretch : chain) {
        profile.runs.back().push_back(PointOf(stretch.to, before, origin));
    }
}

} // namespace

bool HasLength(std::span<const PlanPoint> line) {
    return std::adjacent_find(line.begin(), line.end(),
                              [](PlanPoint a, PlanPoint b) { return !(a == b); }) != line.end();
}

std::string LineNameAt(const Profile& profile, const ProfilePoint& point) {
    return point.line == 0 || profile.lineNames == nullptr ? std::string()
                                                           : (*profile.lineNames)[point.line - 1];
}

LineSides SidesOfLines(const ShapedSurface& surface) {
    LineSides sides;
    std::vector<std::string> names;
    for (const LineRole role : {LineRole::Breakline, LineRole::Boundary, LineRole::Hole}) {
        const std::size_t before = names.size();
        for (const SharedLine& line : LinesOf(surface.plan, role)) {
            names.push_back(line->line.name);
        }
        for (const VisibleCourse& course : VisibleCourses(surface, role)) {
            for (std::size_t i = 1; i < course.points.size(); ++i) {
                sides.lines.try_emplace(SideKey(course.points[i - 1], course.points[i]),
                                        before + course.number + 1);
            }
        }
    }
    sides.names = std::make_shared<const std::vector<std::string>>(std::move(names));
    return sides;
}

SectionCutter::SectionCutter(const MeasuredSurface& surface, LineSides lines)
    : surface_(surface), lines_(std::move(lines)), tree_(surface), signs_(PlacesOf(surface)) {}

Profile SectionCutter::Cut(std::span<const PlanPoint> line) const {
    Profile profile;
    profile.lineNames = lines_.names;
    ExactSigns signs = signs_;
    std::vector<Index> found;
    bool reachesEnd = false; // the leg before ended on the surface
    for (std::size_t i = 1; i < line.size(); ++i) {
        const PlanPoint from{line[i - 1].x - surface_.origin.x, line[i - 1].y - surface_.origin.y};
        const PlanPoint to{line[i].x - surface_.origin.x, line[i].y - surface_.origin.y};
        if (from == to) {
            continue;
        }
        signs.Admit(from);
        signs.Admit(to);
        LegCutter leg(surface_, lines_, signs, from, to);
        tree_.Find(std::array{from, to}, found);
        for (const Index triangle : found) {
            leg.Take(triangle);
        }
        bool endsLeg = false;
        for (const std::vector<Stretch>& chain : leg.Chains()) {
            const bool goesOn = reachesEnd && chain.front().beginsLeg && !profile.runs.empty();
            AppendChain(chain, profile.length, surface_.origin, goesOn, profile);
            endsLeg = chain.back().endsLeg;
        }
        reachesEnd = endsLeg;
        profile.length += std::hypot(to.x - from.x, to.y - from.y);
    }
    return profile;
}

} // namespace terravo
