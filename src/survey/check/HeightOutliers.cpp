#include "survey/check/HeightOutliers.h"

#include "survey/FileDecimals.h"
#include "survey/check/FirstLook.h"
#include "survey/check/TriangleFan.h"
#include "survey/check/WholeSurvey.h"
#include "util/NumberText.h"
#include "util/Parallel.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

namespace terravo {
namespace {

// Largest group that is looked for, and how many known outliers beside it may be looked through.
// In a small survey a group is part of the ground.
constexpr Index kLargestGroup = 5;
constexpr Index kPointsAMember = 50;
constexpr std::ptrdiff_t kMostHidden = 8;
// A deviation from the mean of the neighbours is worth a second look from so many times the mean
// deviation about; from fewer, since the members of a group deviate together, when it is large
// beside the usual deviation in the whole survey.
constexpr float kWorthALook = 2.5F;
constexpr float kLargeWorthALook = 1.5F;
constexpr double kLarge = 10;
// The step down from an outlier, in the change of height that four of five edges about stay below,
// and in the largest one.
constexpr double kTimesUsualChange = 5;
constexpr double kTimesLargestChange = 1;
constexpr double kUsualPart = 0.8;
// Triangles that a trend needs, and those looked at about one point.
constexpr std::size_t kFewestTriangles = 4;
constexpr std::ptrdiff_t kEnoughShort = 12;
constexpr Index kMostTrianglesAbout = 64;
constexpr int kMostRounds = 5;
constexpr Index kPointsALevelled = 1000;

// Beyond these the arithmetic could leave the doubles.
constexpr double kSteepest = 1e100;
constexpr double kLargestValue = 1e60;

struct Slope {
    double x = 0;
    double y = 0;
};

template <class T>
void SortUnique(std::vector<T>& items) {
    std::sort(items.begin(), items.end());
    items.erase(std::unique(items.begin(), items.end()), items.end());
}

// Leaves each number once, the first time that it comes. The order is of no matter, so this need
// not sort, which takes longer.
void LeaveOnce(std::vector<Index>& items) {
    std::vector<Index> slots(std::bit_ceil(2 * items.size() + 1), 0);
    const std::size_t mask = slots.size() - 1;
    std::erase_if(items, [&](Index item) {
        std::size_t at = static_cast<std::size_t>(item) & mask;
        while (slots[at] != 0 && slots[at] != item) {
            at = (at + 1) & mask;
        }
        return std::exchange(slots[at], item) == item;
    });
}

double TakeQuantile(std::vector<double>& values, double part) {
    const auto at =
        values.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

/// The surroundings of a group of points.
struct Surroundings {
    std::vector<Index> group;     // with the known outliers that border on it, behind its own
    std::ptrdiff_t own = 0;       // members that are judged
    std::vector<Index> border;    // points next to the group
    std::vector<Index> near;      // triangles at the border, but not at the group
    std::vector<Index> triangles; // these and the ones that border on them
};

struct Verdict {
    bool stands = false;       // apart from its border
    bool mayGrow = false;      // a larger group is worth a look
    std::vector<double> above; // of each point of the group, over the middle of the border
    Index highest = 0;         // point of the border
};

class OutlierSearch {
public:
    OutlierSearch(MeshOrder points, const Array1<char>& isLone)
        : points_(std::move(points)), triangles_(points_.triangles), look_(points_),
          isKnown_(points_.Count()), isDue_(points_.Count(), 1) {
        for (Index i = 1; i <= points_.Count(); ++i) {
            isKnown_[i] = isLone[points_.number[i]];
        }
        const Bulk bulk = BulkOf(points_.z, points_.Count());
        relief_ = bulk.high - bulk.low;
        usual_ = UsualDeviation();
        least_ = LeastChange(bulk);
    }

    // An outlier hides smaller ones beside it, so what has been found is levelled and all that it
    // was beside is looked at again.
    void Run(FindingCollector& findings) {
        for (int round = 0; round < kMostRounds; ++round) {
            const std::vector<Index> levelled = FindMore(findings);
            if (levelled.empty()) {
                return;
            }
            LookAgain(levelled);
        }
    }

private:
    // The points found.
    std::vector<Index> FindMore(FindingCollector& findings) {
        std::vector<Index> found;
        for (const Index i : Suspects(Candidates())) {
            for (const double sign : {1.0, -1.0}) {
                const std::optional<Outlier> outlier = Judge(i, sign);
                if (outlier) {
                    Tell(*outlier, findings);
                    found.insert(found.end(), outlier->group.begin(), outlier->group.end());
                }
            }
        }
        return found;
    }

    // Where many have been found it is as quick to look at everything.
    void LookAgain(const std::vector<Index>& levelled) {
        if (std::ssize(levelled) > points_.Count() / kPointsALevelled) {
            look_ = FirstLook(points_);
            std::fill(isDue_.begin(), isDue_.end(), char{1});
            return;
        }
        look_.Renew(points_, levelled);
        std::fill(isDue_.begin(), isDue_.end(), char{0});
        MarkDue(levelled);
    }

    // Marks the points from which a group, its surroundings and so the verdict may reach one of
    // these. Known outliers beside a group join it, so they do not count on the way.
    void MarkDue(std::vector<Index> ring) {
        constexpr int kEdgesBehindGroup = 2;
        for (int edges = 0; edges < kLargestGroup + kEdgesBehindGroup; ++edges) {
            std::vector<Index> next;
            while (!ring.empty()) {
                const Index from = ring.back();
                ring.pop_back();
                ForNeighbours(from, [&](Index to) {
                    if (std::exchange(isDue_[to], char{1}) == 0) {
                        (isKnown_[to] != 0 ? ring : next).push_back(to);
                    }
                });
            }
            ring = std::move(next);
        }
    }

    template <class Use>
    void ForNeighbours(Index point, Use use) const {
        ForTrianglesAt(point, points_.triangleOf[point], triangles_, triangles_.count,
                       [&](Index t) {
                           const auto& vertices = triangles_.table[t].vertices;
                           std::for_each(vertices.begin(), vertices.end(), use);
                       });
    }

    // Heights as coarse as whole metres make steps of their own, and one part in ten thousand of
    // the relief is no matter.
    [[nodiscard]] double LeastChange(const Bulk& bulk) const {
        const double unit = std::pow(10.0, -FileDecimals(points_.z, points_.Count()));
        return std::max(
            {unit, StepOfHeights(), usual_, (bulk.upperQuarter - bulk.lowerQuarter) * 1e-4});
    }

    [[nodiscard]] double UsualDeviation() const {
        std::vector<double> sizes;
        for (Index i = 1; i <= points_.Count(); i += points_.Count() / 10000 + 1) {
            if (points_.isOnHull[i] == 0) {
                sizes.push_back(std::abs(look_.deviation[i]));
            }
        }
        return sizes.empty() ? 0 : TakeQuantile(sizes, 0.5);
    }

    // Usual distance of heights where they take few values, as along contours; else 0.
    [[nodiscard]] double StepOfHeights() const {
        std::vector<double> heights;
        for (Index i = 1; i <= points_.Count(); i += points_.Count() / 10000 + 1) {
            heights.push_back(points_.z[i]);
        }
        const std::size_t looks = heights.size();
        SortUnique(heights);
        if (heights.size() < 3 || heights.size() * 10 > looks) {
            return 0;
        }
        std::vector<double> steps;
        for (std::size_t i = 1; i < heights.size(); ++i) {
            steps.push_back(heights[i] - heights[i - 1]);
        }
        return TakeQuantile(steps, 0.5);
    }

    // The most conspicuous first.
    [[nodiscard]] std::vector<Index> Candidates() const {
        std::vector<Index> candidates;
        for (Index i = 1; i <= points_.Count(); ++i) {
            if (isDue_[i] != 0 && (points_.isOnHull[i] != 0 || IsWorthALook(i))) {
                candidates.push_back(i);
            }
        }
        std::stable_sort(candidates.begin(), candidates.end(), [this](Index i, Index j) {
            return std::abs(look_.deviation[i]) > std::abs(look_.deviation[j]);
        });
        return candidates;
    }

    [[nodiscard]] bool IsWorthALook(Index i) const {
        const float size = std::abs(look_.deviation[i]);
        const float times = size > kLarge * usual_ ? kLargeWorthALook : kWorthALook;
        return size > times * look_.roughness[i] && size > least_;
    }

    // Those that are outliers as long as no others of them are known.
    [[nodiscard]] std::vector<Index> Suspects(const std::vector<Index>& candidates) const {
        constexpr std::size_t kPiece = 512;
        std::vector<char> isSuspect(candidates.size(), 0);
        const std::size_t pieces = (candidates.size() + kPiece - 1) / kPiece;
        InParallel(static_cast<int>(pieces), [&](int piece) {
            const std::size_t first = static_cast<std::size_t>(piece) * kPiece;
            for (std::size_t i = first; i < std::min(first + kPiece, candidates.size()); ++i) {
                isSuspect[i] = Judge(candidates[i], 1) || Judge(candidates[i], -1) ? 1 : 0;
            }
        });
        std::vector<Index> suspects;
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            if (isSuspect[i] != 0) {
                suspects.push_back(candidates[i]);
            }
        }
        return suspects;
    }

    struct Outlier {
        std::vector<Index> group;
        std::vector<double> above; // of each member, over the middle of the border
    };

    // Lets a group grow from a point until it stands apart.
    [[nodiscard]] std::optional<Outlier> Judge(Index first, double sign) const {
        if (isKnown_[first] != 0 || look_.deviation[first] * sign < 0) {
            return {};
        }
        const Index largest = std::clamp<Index>(points_.Count() / kPointsAMember, 1, kLargestGroup);
        std::vector<Index> group{first};
        while (group.size() <= static_cast<std::size_t>(largest)) {
            const std::optional<Surroundings> s = Gather(group);
            if (!s) {
                return {};
            }
            Verdict verdict = Weigh(*s, sign);
            if (verdict.stands) {
                return Outlier{group, std::move(verdict.above)};
            }
            if (!verdict.mayGrow) {
                return {};
            }
            group.push_back(verdict.highest);
        }
        return {};
    }

    void Tell(const Outlier& outlier, FindingCollector& findings) {
        std::vector<Index> group;
        for (std::size_t i = 0; i < outlier.group.size(); ++i) {
            const Index member = outlier.group[i];
            isKnown_[member] = 1;
            points_.z[member] -= outlier.above[i];
            group.push_back(points_.number[member]);
        }
        std::sort(group.begin(), group.end());
        const double above =
            *std::min_element(outlier.above.begin(), outlier.above.end(),
                              [](double a, double b) { return std::abs(a) < std::abs(b); });
        findings.Add(FindingKind::HeightOutlier, Severity::Warning, group,
                     [&] { return StatementOf(group, above); });
    }

    static Statement StatementOf(const std::vector<Index>& group, double above) {
        const bool isOne = group.size() == 1;
        const Text sentence = above > 0 ? (isOne ? Text::SaysTooHigh : Text::SaysGroupTooHigh)
                                        : (isOne ? Text::SaysTooLow : Text::SaysGroupTooLow);
        return {sentence, {NumberText::FormatScreen(std::abs(above), "#0.0##", '.')}};
    }

    // Calls use(t) for the triangles at a point; false when there are too many.
    template <class Use>
    bool ForSomeTrianglesAt(Index point, Use use) const {
        return ForTrianglesAt(point, points_.triangleOf[point], triangles_, kMostTrianglesAbout,
                              use);
    }

    static bool Has(const std::vector<Index>& items, Index item) {
        return std::find(items.begin(), items.end(), item) != items.end();
    }

    // Nothing where a point has too many neighbours.
    [[nodiscard]] std::optional<Surroundings> Gather(const std::vector<Index>& group) const {
        Surroundings s;
        s.group = group;
        s.own = static_cast<std::ptrdiff_t>(group.size());
        std::vector<Index> inner;
        for (std::size_t i = 0; i < s.group.size(); ++i) {
            const bool all = ForSomeTrianglesAt(s.group[i], [&](Index t) { inner.push_back(t); });
            if (!all || std::ssize(s.group) > s.own + kMostHidden) {
                return {};
            }
            AddBorder(inner, s);
        }
        SortUnique(inner);
        s.near = TrianglesAt(s.border, inner);
        std::vector<Index> next;
        for (const Index t : s.near) {
            const auto& corners = triangles_.table[t].vertices;
            next.insert(next.end(), corners.begin(), corners.end());
        }
        LeaveOnce(next);
        s.triangles = TrianglesAt(next, inner);
        return s;
    }

    // Triangles at any of the points, without the sorted ones and those at known outliers.
    [[nodiscard]] std::vector<Index> TrianglesAt(const std::vector<Index>& points,
                                                 const std::vector<Index>& without) const {
        std::vector<Index> triangles;
        for (const Index i : points) {
            ForSomeTrianglesAt(i, [&](Index t) { triangles.push_back(t); });
        }
        LeaveOnce(triangles);
        std::erase_if(triangles, [&](Index t) {
            const auto& [a, b, c] = triangles_.table[t].vertices;
            return isKnown_[a] + isKnown_[b] + isKnown_[c] > 0 ||
                   std::binary_search(without.begin(), without.end(), t);
        });
        return triangles;
    }

    // Known outliers join the group, so that the border lies behind them.
    void AddBorder(const std::vector<Index>& inner, Surroundings& s) const {
        for (const Index t : inner) {
            for (const Index vertex : triangles_.table[t].vertices) {
                if (Has(s.group, vertex) || Has(s.border, vertex)) {
                    continue;
                }
                (isKnown_[vertex] != 0 ? s.group : s.border).push_back(vertex);
            }
        }
    }

    [[nodiscard]] std::optional<Slope> TrendOf(const std::vector<Index>& triangles) const {
        std::vector<double> x;
        std::vector<double> y;
        for (const Index t : triangles) {
            const auto& [a, b, c] = triangles_.table[t].vertices;
            const double bx = points_.x[b] - points_.x[a];
            const double by = points_.y[b] - points_.y[a];
            const double cx = points_.x[c] - points_.x[a];
            const double cy = points_.y[c] - points_.y[a];
            const double bz = points_.z[b] - points_.z[a];
            const double cz = points_.z[c] - points_.z[a];
            const double area = bx * cy - cx * by;
            const Slope slope{(bz * cy - cz * by) / area, (bx * cz - cx * bz) / area};
            if (area > 0 && std::abs(slope.x) + std::abs(slope.y) < kSteepest) {
                x.push_back(slope.x);
                y.push_back(slope.y);
            }
        }
        if (x.size() < kFewestTriangles) {
            return {};
        }
        return Slope{TakeQuantile(x, 0.5), TakeQuantile(y, 0.5)};
    }

    // Height of a point over another one, the trend taken off.
    [[nodiscard]] double Rise(Index from, Index to, Slope trend) const {
        return points_.z[to] - points_.z[from] - trend.x * (points_.x[to] - points_.x[from]) -
               trend.y * (points_.y[to] - points_.y[from]);
    }

    [[nodiscard]] double Distance(Index from, Index to) const {
        const double x = points_.x[to] - points_.x[from];
        const double y = points_.y[to] - points_.y[from];
        return std::sqrt(x * x + y * y);
    }

    // An edge of the surroundings: how long it is and how much the height changes along it.
    struct Change {
        double length;
        double rise;
    };

    [[nodiscard]] std::vector<Change> Changes(const std::vector<Index>& triangles,
                                              Slope trend) const {
        std::vector<Change> changes;
        for (const Index t : triangles) {
            for (int j = 1; j <= 3; ++j) {
                const Index a = triangles_.Vertex(j, t);
                const Index b = triangles_.Vertex(NextEdge(j), t);
                changes.push_back({Distance(a, b), std::abs(Rise(a, b, trend))});
            }
        }
        return changes;
    }

    // Changes as they would be over another length: more over a longer way, as on a slope. Less
    // over a shorter one only where enough edges as short show how rough the ground is.
    static std::vector<double> ChangesOver(const std::vector<Change>& changes, double length) {
        constexpr double kMostTimes = 4;
        const auto isShort = [&](const Change& c) { return c.length <= 2 * length; };
        const bool shrinks = std::count_if(changes.begin(), changes.end(), isShort) >= kEnoughShort;
        std::vector<double> over;
        for (const Change& c : changes) {
            const double least = shrinks && !isShort(c) ? 0.1 : 1;
            const double times = c.length > 0 ? length / c.length : kMostTimes;
            over.push_back(c.rise * std::clamp(times, least, kMostTimes));
        }
        return over;
    }

    // The group against its border, along the sign.
    struct Step {
        double low = 1e300;        // lowest of the group
        double length = 1e300;     // shortest way to the border
        double top = -1e300;       // highest of the border
        double middle = 0;         // median of the border
        std::vector<double> rises; // of the group
        Index highest = 0;
    };

    [[nodiscard]] Step StepOf(const Surroundings& s, Slope trend, double sign) const {
        const Index origin = s.group.front();
        Step step;
        std::vector<double> rises;
        for (const Index j : s.border) {
            rises.push_back(sign * Rise(origin, j, trend));
            if (rises.back() > step.top) {
                step.top = rises.back();
                step.highest = j;
            }
        }
        step.middle = TakeQuantile(rises, 0.5);
        for (auto i = s.group.begin(); i != s.group.begin() + s.own; ++i) {
            step.rises.push_back(sign * Rise(origin, *i, trend));
            step.low = std::min(step.low, step.rises.back());
            for (const Index j : s.border) {
                step.length = std::min(step.length, Distance(*i, j));
            }
        }
        return step;
    }

    [[nodiscard]] bool IsGroupOnHull(const Surroundings& s) const {
        return s.own > 1 && std::any_of(s.group.begin(), s.group.end(),
                                        [this](Index i) { return points_.isOnHull[i] != 0; });
    }

    [[nodiscard]] Verdict Weigh(const Surroundings& s, double sign) const {
        const std::optional<Slope> trend = TrendOf(s.triangles);
        if (!trend || s.border.size() < 3) {
            return {};
        }
        const Step step = StepOf(s, *trend, sign);
        Verdict verdict;
        verdict.highest = step.highest;
        for (const double rise : step.rises) {
            verdict.above.push_back(sign * (rise - step.middle));
        }
        if (step.low - step.middle <= kTimesUsualChange * least_) {
            return verdict;
        }
        std::vector<double> changes = ChangesOver(Changes(s.triangles, *trend), step.length);
        verdict.mayGrow = step.low - step.middle >
                          kTimesUsualChange * std::max(TakeQuantile(changes, 0.5), least_);
        verdict.stands = verdict.mayGrow && step.low - step.top > LimitOf(s, *trend, step, changes);
        return verdict;
    }

    // What the step down must exceed.
    [[nodiscard]] double LimitOf(const Surroundings& s, Slope trend, const Step& step,
                                 std::vector<double>& changes) const {
        const double usual = std::max(TakeQuantile(changes, kUsualPart), least_);
        const std::vector<double> near = ChangesOver(Changes(s.near, trend), step.length);
        const double limit =
            std::max(kTimesUsualChange * usual,
                     kTimesLargestChange * *std::max_element(near.begin(), near.end()));
        return IsGroupOnHull(s) ? std::max(limit, relief_) : limit;
    }

    MeshOrder points_; // with outliers levelled
    const TriangleList& triangles_;
    FirstLook look_;
    Array1<char> isKnown_;
    Array1<char> isDue_; // for a look
    double relief_;      // between the lowest and the highest heights, a few left out
    double usual_;       // deviation from the mean of the neighbours
    double least_;       // change of height that is never worth a finding
};

} // namespace

void FindHeightOutliers(MeshOrder points, const Array1<char>& isLone, FindingCollector& findings) {
    const auto isSound = [](const Array1<double>& values) {
        return std::all_of(values.begin(), values.end(),
                           [](double value) { return std::abs(value) < kLargestValue; });
    };
    if (points.triangles.count > 0 && isSound(points.x) && isSound(points.y) && isSound(points.z)) {
        OutlierSearch(std::move(points), isLone).Run(findings);
    }
}

} // namespace terravo
