#include "survey/check/ClosePoints.h"

#include "survey/FileDecimals.h"
#include "triangulation/exact/CurveOrder.h"
#include "triangulation/modDelaunay2D.h"
#include "util/NumberText.h"
#include "util/Parallel.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>
#include <utility>

namespace terravo {
namespace {

// With three digits that count.
std::string DistanceText(double distance) {
    const int decimals = std::clamp(2 - static_cast<int>(std::floor(std::log10(distance))), 0, 15);
    return NumberText::FormatScreen(
        distance, "#0.0" + std::string(static_cast<std::size_t>(decimals), '#'), '.');
}

bool SamePlace(const PointSet& points, Index i, Index j) {
    return points.x[i] == points.x[j] && points.y[i] == points.y[j];
}

template <class Points>
double Distance(const Points& points, Index i, Index j) {
    return std::hypot(points.x[i] - points.x[j], points.y[i] - points.y[j]);
}

class CloseSearch {
public:
    CloseSearch(const PointSet& points, const TriangulationOutcome& outcome, const MeshOrder& mesh,
                FindingCollector& findings)
        : points_(points), outcome_(outcome), mesh_(mesh), findings_(findings),
          hasUnused_(mesh.Count() < points.count) {}

    void FindRepeats() {
        if (!hasUnused_) {
            return;
        }
        isRepeat_ = Array1<char>(points_.count, 0);
        const std::vector<Index> order = InOrder();
        ForRuns(
            order, [this](Index i, Index j) { return SamePlace(points_, i, j); },
            [this](std::vector<Index>& run) { AddRepeat(run); });
    }

    void FindNearRepeats(double tolerance) {
        if (Triangles().count > 0) {
            FindAlongEdges(tolerance);
            return;
        }
        // Points on one line: neighbours in this order are neighbours on it.
        ForRuns(
            InOrder(), [&](Index i, Index j) { return Distance(points_, i, j) <= tolerance; },
            [this](std::vector<Index>& run) { AddNear(run); });
    }

    void FindThoseWithoutPart() {
        if (outcome_.ierr == modDelaunay2D::Ierr::kStopped || !hasUnused_) {
            return;
        }
        if (Triangles().count == 0) {
            findings_.AddWhole(FindingKind::NoPart, Severity::Error, WhyNoTriangles());
            return;
        }
        Array1<char> isCorner(points_.count, 0);
        for (const Index i : mesh_.number) {
            isCorner[i] = 1;
        }
        for (Index i = 1; i <= points_.count; ++i) {
            if (isCorner[i] == 0 && isRepeat_[i] == 0) {
                findings_.Add(FindingKind::NoPart, Severity::Warning, std::span(&i, 1), [&] {
                    return Statement{Text::SaysNoPart, {}};
                });
            }
        }
    }

private:
    [[nodiscard]] Statement WhyNoTriangles() const {
        switch (outcome_.ierr) {
        case modDelaunay2D::Ierr::kDone:
            return {Text::FirstPointsNotDistinct, {}};
        case modDelaunay2D::Ierr::kAllCollinear:
            return {Text::SaysAllOnOneLine, {}};
        default:
            return {Text::SaysNoTriangles, {std::to_string(outcome_.ierr)}};
        }
    }

    [[nodiscard]] const TriangleList& Triangles() const { return mesh_.triangles; }

    // Points without triangles lie on one line, or nothing is known of them.
    [[nodiscard]] std::vector<Index> InOrder() const {
        std::vector<Index> order(static_cast<std::size_t>(points_.count));
        std::iota(order.begin(), order.end(), 1);
        if (Triangles().count > 0) {
            Array1<PlanPoint> coord(points_.count);
            for (Index i = 1; i <= points_.count; ++i) {
                coord[i] = {points_.x[i], points_.y[i]};
            }
            SortAlongCurve(coord, order);
            return order;
        }
        std::sort(order.begin(), order.end(), [this](Index i, Index j) {
            return std::tuple(points_.x[i], points_.y[i], i) <
                   std::tuple(points_.x[j], points_.y[j], j);
        });
        return order;
    }

    // Runs of two and more, in the order of their first points in the file.
    template <class Together, class Use>
    static void ForRuns(const std::vector<Index>& order, Together together, Use use) {
        std::vector<std::vector<Index>> runs;
        for (std::size_t first = 0; first < order.size();) {
            std::size_t end = first + 1;
            while (end < order.size() && together(order[end - 1], order[end])) {
                ++end;
            }
            if (end - first > 1) {
                runs.emplace_back(order.begin() + static_cast<std::ptrdiff_t>(first),
                                  order.begin() + static_cast<std::ptrdiff_t>(end));
                std::sort(runs.back().begin(), runs.back().end());
            }
            first = end;
        }
        std::sort(runs.begin(), runs.end(),
                  [](const auto& a, const auto& b) { return a.front() < b.front(); });
        std::for_each(runs.begin(), runs.end(), use);
    }

    void AddRepeat(const std::vector<Index>& place) {
        double low = points_.z[place.front()];
        double high = low;
        for (const Index i : place) {
            isRepeat_[i] = 1;
            low = std::min(low, points_.z[i]);
            high = std::max(high, points_.z[i]);
        }
        if (low == high) {
            findings_.Add(FindingKind::Repeat, Severity::Note, place, [] {
                return Statement{Text::SaysRepeat, {}};
            });
            return;
        }
        findings_.Add(FindingKind::RepeatOtherHeight, Severity::Error, place, [&] {
            return Statement{Text::SaysRepeatOtherHeight,
                             {NumberText::FormatScreen(low, "#0.0##", '.'),
                              NumberText::FormatScreen(high, "#0.0##", '.')}};
        });
    }

    void AddNear(const std::vector<Index>& chain) {
        double farthest = 0;
        for (const Index i : chain) {
            farthest = std::max(farthest, Distance(points_, chain.front(), i));
        }
        if (farthest == 0) {
            return; // repeats, on one line
        }
        findings_.Add(FindingKind::NearRepeat, Severity::Warning, chain, [&] {
            return Statement{Text::SaysNearRepeat, {DistanceText(farthest)}};
        });
    }

    using Edges = std::vector<std::pair<Index, Index>>;

    void FindAlongEdges(double tolerance) {
        constexpr Index kPiece = 65536;
        const Index count = Triangles().count;
        std::vector<Edges> found(static_cast<std::size_t>(count / kPiece + 1));
        InParallel(static_cast<int>(found.size()), [&](int piece) {
            const Index first = piece * kPiece + 1;
            found[static_cast<std::size_t>(piece)] =
                ShortEdges(first, std::min(first + kPiece, count + 1), tolerance);
        });
        Edges all;
        for (const Edges& some : found) {
            all.insert(all.end(), some.begin(), some.end());
        }
        Join(all);
    }

    // Of the triangles from the first up to the end, in numbers of the point set.
    [[nodiscard]] Edges ShortEdges(Index first, Index end, double tolerance) const {
        Edges edges;
        for (Index t = first; t < end; ++t) {
            for (int j = 1; j <= 3; ++j) {
                const Index a = Triangles().Vertex(j, t);
                const Index b = Triangles().Vertex(NextEdge(j), t);
                const double dx = mesh_.x[a] - mesh_.x[b];
                const double dy = mesh_.y[a] - mesh_.y[b];
                // The length first: it hardly ever passes, so the processor guesses right.
                if (dx * dx + dy * dy <= tolerance * tolerance &&
                    (a < b || Triangles().Neighbour(j, t) < 0)) {
                    edges.emplace_back(mesh_.number[a], mesh_.number[b]);
                }
            }
        }
        return edges;
    }

    void Join(const Edges& edges) {
        std::vector<Index> ends;
        for (const auto& [a, b] : edges) {
            ends.push_back(a);
            ends.push_back(b);
        }
        std::sort(ends.begin(), ends.end());
        ends.erase(std::unique(ends.begin(), ends.end()), ends.end());
        std::vector<std::size_t> leaders = LeadersOf(ends, edges);
        std::vector<std::vector<Index>> chains(ends.size());
        for (std::size_t i = 0; i < ends.size(); ++i) {
            chains[Leader(leaders, i)].push_back(ends[i]);
        }
        for (const std::vector<Index>& chain : chains) {
            if (!chain.empty()) {
                AddNear(chain);
            }
        }
    }

    // For each end another one of its chain, the first one for the first.
    static std::vector<std::size_t> LeadersOf(const std::vector<Index>& ends, const Edges& edges) {
        const auto place = [&](Index point) {
            return static_cast<std::size_t>(std::lower_bound(ends.begin(), ends.end(), point) -
                                            ends.begin());
        };
        std::vector<std::size_t> leaders(ends.size());
        std::iota(leaders.begin(), leaders.end(), std::size_t{0});
        for (const auto& [a, b] : edges) {
            const std::size_t one = Leader(leaders, place(a));
            const std::size_t other = Leader(leaders, place(b));
            leaders[std::max(one, other)] = std::min(one, other);
        }
        return leaders;
    }

    // Shortens the way for the next time.
    static std::size_t Leader(std::vector<std::size_t>& leaders, std::size_t i) {
        while (leaders[i] != i) {
            i = leaders[i] = leaders[leaders[i]];
        }
        return i;
    }

    const PointSet& points_;
    const TriangulationOutcome& outcome_;
    const MeshOrder& mesh_;
    FindingCollector& findings_;
    Array1<char> isRepeat_;
    bool hasUnused_;
};

// Median of the shortest sides of up to 10 000 triangles; 0 without triangles.
double UsualDistance(const MeshOrder& mesh) {
    const TriangleList& triangles = mesh.triangles;
    constexpr Index kMostLooks = 10000;
    std::vector<double> shortest;
    for (Index t = 1; t <= triangles.count; t += triangles.count / kMostLooks + 1) {
        double least = Distance(mesh, triangles.Vertex(3, t), triangles.Vertex(1, t));
        for (const int j : {1, 2}) {
            least =
                std::min(least, Distance(mesh, triangles.Vertex(j, t), triangles.Vertex(j + 1, t)));
        }
        shortest.push_back(least);
    }
    if (shortest.empty()) {
        return 0;
    }
    const auto middle = shortest.begin() + static_cast<std::ptrdiff_t>(shortest.size() / 2);
    std::nth_element(shortest.begin(), middle, shortest.end());
    return *middle;
}

} // namespace

double DefaultTolerance(const PointSet& points, const MeshOrder& mesh) {
    const int decimals =
        std::max(FileDecimals(points.x, points.count), FileDecimals(points.y, points.count));
    const double usual = UsualDistance(mesh);
    // A difference of coordinates is a little off the decimals that it had.
    const double unit = std::pow(10.0, -decimals) * 1.0001;
    return std::min(std::max(usual / 1000, unit), usual / 10);
}

void CheckClosePoints(const PointSet& points, const TriangulationOutcome& outcome,
                      const MeshOrder& mesh, std::optional<double> tolerance,
                      FindingCollector& findings) {
    CloseSearch search(points, outcome, mesh, findings);
    search.FindRepeats();
    search.FindNearRepeats(tolerance ? *tolerance : DefaultTolerance(points, mesh));
    search.FindThoseWithoutPart();
}

} // namespace terravo
