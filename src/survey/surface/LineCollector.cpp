#include "survey/surface/LineCollector.h"

#include "util/NumberListReader.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace terravo {
namespace {

bool IsSamePlace(const SpacePoint& a, const SpacePoint& b) {
    return PlanOf(a) == PlanOf(b);
}

// Two missing heights are the same, too.
bool IsSame(const SpacePoint& a, const SpacePoint& b) {
    return IsSamePlace(a, b) && (HasHeight(a) ? a.z == b.z : !HasHeight(b));
}

// "The line "WALL" "; lines have no names everywhere.
std::string Described(const SpaceLine& line) {
    return line.name.empty() ? "the line" : "the line \"" + line.name + "\"";
}

// 1, 2, or 3 for more.
int CountPlaces(const SpaceLine& line) {
    const SpacePoint& first = line.vertices.front();
    const auto second = std::find_if(line.vertices.begin(), line.vertices.end(),
                                     [&](const SpacePoint& v) { return !IsSamePlace(v, first); });
    if (second == line.vertices.end()) {
        return 1;
    }
    const bool hasThird = std::any_of(second, line.vertices.end(), [&](const SpacePoint& v) {
        return !IsSamePlace(v, first) && !IsSamePlace(v, *second);
    });
    return hasThird ? 3 : 2;
}

} // namespace

void LineCollector::Remark(const std::string& cause, std::int64_t fileLine) {
    if (++remarks_ <= kMostRemarks) {
        ReadFailure failure = FailureOf(source_, cause);
        failure.line = fileLine;
        reading_.remarks.push_back(failure.Sentence());
    }
}

void LineCollector::Finish() {
    if (remarks_ > kMostRemarks) {
        reading_.remarks.push_back(
            FailureOf(source_, std::to_string(remarks_ - kMostRemarks) + " more remarks")
                .Sentence());
    }
}

bool LineCollector::LeaveOut(const SpaceLine& line, const char* cause, std::int64_t fileLine) {
    Remark(Described(line) + " is left out: " + cause, fileLine);
    return false;
}

bool LineCollector::Keep(SpaceLine line, std::int64_t fileLine) {
    reading_.lines.push_back({std::move(line), source_, fileLine});
    return true;
}

bool LineCollector::AddRing(SpaceLine line, std::int64_t fileLine) {
    if (CountPlaces(line) < 3) {
        return LeaveOut(line, "a ring has three places at least", fileLine);
    }
    const bool isTold = closing_ != LineClosing::InPlan;
    if (line.vertices.size() > 1 && IsSamePlace(line.vertices.front(), line.vertices.back())) {
        if (isTold && !IsSame(line.vertices.front(), line.vertices.back())) {
            Remark(Described(line) + " ends where it begins, at another height; that of the "
                                     "beginning is taken",
                   fileLine);
        }
        line.vertices.pop_back();
    } else if (isTold && !line.closed) {
        Remark(Described(line) + " was open and is closed to a ring", fileLine);
    }
    line.closed = true;
    return Keep(std::move(line), fileLine);
}

bool LineCollector::Add(SpaceLine line, std::int64_t fileLine) {
    std::vector<SpacePoint>& vertices = line.vertices;
    vertices.erase(std::unique(vertices.begin(), vertices.end(), IsSame), vertices.end());
    if (vertices.empty()) {
        return LeaveOut(line, "it has no vertex", fileLine);
    }
    if (CountPlaces(line) < 2) {
        return LeaveOut(line,
                        vertices.size() == 1 ? "it has one vertex"
                                             : "all its vertices are one above the other",
                        fileLine);
    }
    const bool isBackAtStart = vertices.size() > 3 && IsSame(vertices.front(), vertices.back());
    if (closing_ != LineClosing::AsTheyAre || line.closed || isBackAtStart) {
        return AddRing(std::move(line), fileLine);
    }
    return Keep(std::move(line), fileLine);
}

} // namespace terravo
