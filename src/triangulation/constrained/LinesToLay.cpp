#include "triangulation/constrained/LinesToLay.h"

#include "triangulation/constrained/RingCrossing.h"
#include "triangulation/exact/ExactSigns.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace terravo {
namespace {

bool IsWithinReach(const SpacePoint& place) {
    return terravo::IsWithinReach(place.x) && terravo::IsWithinReach(place.y);
}

bool IsKnown(const SpacePoint& place) {
    return std::isfinite(place.z);
}

double Distance(const SpacePoint& a, const SpacePoint& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

// Vertices first + 1 .. last - 1 have no height; the two around them have.
void FillBetween(std::vector<SpacePoint>& vertices, std::size_t first, std::size_t last) {
    double length = 0;
    for (std::size_t i = first; i < last; ++i) {
        length += Distance(vertices[i], vertices[i + 1]);
    }
    const double from = vertices[first].z;
    const double rise = vertices[last].z - from;
    double gone = 0;
    for (std::size_t i = first + 1; i < last; ++i) {
        gone += Distance(vertices[i - 1], vertices[i]);
        vertices[i].z = length > 0 ? from + rise * (gone / length) : from;
    }
}

// Before the first height and behind the last the line is level.
void CompleteHeights(LineToLay& line) {
    std::vector<SpacePoint>& vertices = line.vertices;
    const auto firstKnown = std::find_if(vertices.begin(), vertices.end(), IsKnown);
    line.isDraped = firstKnown == vertices.end();
    if (line.isDraped) {
        return;
    }
    if (line.isClosed) { // begins and ends at a height while the gaps are filled
        std::rotate(vertices.begin(), firstKnown, vertices.end());
        vertices.push_back(vertices.front());
    }
    std::size_t known = vertices.size();
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        if (!IsKnown(vertices[i])) {
            continue;
        }
        if (known == vertices.size()) {
            std::for_each(vertices.begin(), vertices.begin() + static_cast<std::ptrdiff_t>(i),
                          [&](SpacePoint& before) { before.z = vertices[i].z; });
        } else {
            FillBetween(vertices, known, i);
        }
        known = i;
    }
    for (std::size_t i = known + 1; i < vertices.size(); ++i) {
        vertices[i].z = vertices[known].z;
    }
    if (line.isClosed) {
        vertices.pop_back();
    }
}

class Preparation {
public:
    explicit Preparation(const SurfaceConstraints& constraints) : constraints_(constraints) {}

    LinesToLay Prepare() {
        AddAll(constraints_.breaklines, LineRole::Breakline);
        AddAll(constraints_.boundary, LineRole::Boundary);
        AddAll(constraints_.holes, LineRole::Hole);
        std::stable_partition(result_.lines.begin(), result_.lines.end(),
                              [](const LineToLay& line) { return !line.isDraped; });
        return std::move(result_);
    }

private:
    void AddAll(const std::vector<SpaceLine>& lines, LineRole role) {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            Add(lines[i], role, i);
        }
    }

    void Add(const SpaceLine& source, LineRole role, std::size_t number) {
        const bool isRing = role != LineRole::Breakline;
        LineToLay line{role, number, source.closed || isRing, false, {}};
        for (const SpacePoint& vertex : source.vertices) {
            if (!IsWithinReach(vertex)) {
                Refuse(line, SurfaceRemarkKind::NotFinished, vertex);
                return;
            }
            if (line.vertices.empty() || !(PlanOf(vertex) == PlanOf(line.vertices.back()))) {
                line.vertices.push_back(vertex);
            }
        }
        while (line.isClosed && line.vertices.size() > 1 &&
               PlanOf(line.vertices.front()) == PlanOf(line.vertices.back())) {
            line.vertices.pop_back();
        }
        if (line.vertices.size() < (isRing ? 3U : 2U)) {
            Refuse(line, SurfaceRemarkKind::TooShort,
                   source.vertices.empty() ? SpacePoint{} : source.vertices.front());
            return;
        }
        if (isRing) {
            if (const std::optional<PlanPoint> place = FindRingCrossing(line.vertices)) {
                Refuse(line, SurfaceRemarkKind::CrossesItself, {place->x, place->y, kNoHeight});
                return;
            }
        }
        CompleteHeights(line);
        result_.lines.push_back(std::move(line));
    }

    void Refuse(const LineToLay& line, SurfaceRemarkKind kind, const SpacePoint& place) {
        SurfaceRemark remark;
        remark.kind = kind;
        remark.role = line.role;
        remark.line = line.number;
        remark.place = place;
        result_.refused.push_back(remark);
    }

    const SurfaceConstraints& constraints_;
    LinesToLay result_;
};

} // namespace

LinesToLay PrepareLines(const SurfaceConstraints& constraints) {
    return Preparation(constraints).Prepare();
}

} // namespace terravo
