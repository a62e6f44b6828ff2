#include "triangulation/constrained/VisibleSurface.h"

#include "support/RimSites.h"
#include "triangulation/HullRings.h"

#include <gtest/gtest.h>

#include <cmath>

namespace terravo {
namespace {

// Marks the edges between triangles that are hidden and others, and the hull edges of the others.
EdgeMarks RimMarks(const TriangleList& triangles, const HiddenTriangles& hidden) {
    EdgeMarks marks(triangles.count, 0);
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            const Index across = triangles.Neighbour(j, t);
            if (hidden[t] != (across > 0 ? hidden[across] : 1)) {
                marks[t] = static_cast<std::uint8_t>(marks[t] | (1U << (j - 1)));
            }
        }
    }
    return marks;
}

HiddenTriangles Opposite(HiddenTriangles hidden) {
    for (char& isHidden : hidden) {
        isHidden = isHidden != 0 ? 0 : 1;
    }
    return hidden;
}

TEST(VisibleSurface, HidesWhatRingsHide) {
    for (const test::RimSite& site : test::RimSites()) {
        SCOPED_TRACE(site.name);
        const test::RimSurface made = test::MakeRimSurface(site);
        const EdgeMarks none(made.all.count, 0);
        const EdgeMarks rims = RimMarks(made.all, made.hidden);
        ConstrainedSurface surface;
        surface.triangles = made.all;
        surface.boundary = rims;
        surface.holes = none;
        surface.lines = {{LineRole::Boundary, 0, {}}};
        EXPECT_EQ(HideByRings(surface), made.hidden);
        surface.boundary = none; // the ring lies beside the hull
        EXPECT_EQ(HideByRings(surface), HiddenTriangles(made.all.count, 1));
        surface.lines.clear();
        EXPECT_EQ(HideByRings(surface), HiddenTriangles(made.all.count, 0));
        surface.lines = {{LineRole::Hole, 0, {}}};
        EXPECT_EQ(HideByRings(surface), HiddenTriangles(made.all.count, 0));
        surface.holes = RimMarks(made.all, Opposite(made.hidden));
        EXPECT_EQ(HideByRings(surface), made.hidden);
        surface.boundary = rims;
        surface.lines.push_back({LineRole::Boundary, 0, {}});
        EXPECT_EQ(HideByRings(surface), made.hidden);
    }
}

double AreaOf(const HullRing& ring, const Array1<PlanPoint>& plan) {
    double twice = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        twice +=
            test::TwiceArea({0, 0}, plan[ring[i].point], plan[ring[(i + 1) % ring.size()].point]);
    }
    return twice / 2;
}

bool IsClosed(const HullRing& ring, const TriangleList& triangles) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const TriangleEdge edge = ring[i].edge;
        if (triangles.Vertex(NextEdge(edge.edge), edge.triangle) !=
            ring[(i + 1) % ring.size()].point) {
            return false;
        }
    }
    return true;
}

bool AreNeighboursMutual(const TriangleList& triangles) {
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            const Index across = triangles.Neighbour(j, t);
            bool isMutual = across < 0;
            for (int k = 1; across > 0 && k <= 3; ++k) {
                isMutual =
                    isMutual || (triangles.Neighbour(k, across) == t &&
                                 triangles.Vertex(k, across) == triangles.Vertex(NextEdge(j), t));
            }
            if (!isMutual) {
                return false;
            }
        }
    }
    return true;
}

TEST(VisibleSurface, LinksEveryRimToARing) {
    for (const test::RimSite& site : test::RimSites()) {
        SCOPED_TRACE(site.name);
        const test::RimSurface surface = test::MakeRimSurface(site);
        EXPECT_TRUE(AreNeighboursMutual(surface.visible));
        const double area = 100 * site.cells;
        EXPECT_DOUBLE_EQ(test::AreaOf(surface.plan, surface.visible), area);
        int outer = 0;
        int holes = 0;
        double ringArea = 0;
        for (const HullRing& ring : HullRings(surface.visible)) {
            EXPECT_TRUE(IsClosed(ring, surface.visible));
            ringArea += AreaOf(ring, surface.plan);
            ++(AreaOf(ring, surface.plan) > 0 ? outer : holes);
        }
        EXPECT_DOUBLE_EQ(ringArea, area);
        EXPECT_EQ(outer, site.outerRims);
        EXPECT_EQ(holes, site.holeRims);
    }
}

// Lattice points of 10 m on an L of 100 m.
Array1<PlanPoint> LShapedLattice() {
    Array1<PlanPoint> plan;
    for (int j = 0; j <= 10; ++j) {
        for (int i = 0; i <= (j <= 5 ? 10 : 5); ++i) {
            plan.Append({10.0 * i, 10.0 * j});
        }
    }
    return plan;
}

TEST(VisibleSurface, TakesLongSidesAwayFromOutsideAlone) {
    const Array1<PlanPoint> plan = LShapedLattice();
    const TriangleList all = TriangulatePoints(plan).triangles;
    const double notch = 50 * 50 / 2.0;
    const struct {
        double longest;
        double area;
    } cases[] = {{71, 7500 + notch}, {14.2, 7550}, {14.1, 7500}, {10, 7500}};
    for (const auto& [longest, area] : cases) {
        SCOPED_TRACE(longest);
        HiddenTriangles hidden(all.count, 0);
        const LongestSideEffect effect = EffectOfLongestSide(plan, all, {}, longest, hidden);
        EXPECT_EQ(HideLongSides(plan, all, {}, longest, hidden), effect.triangles);
        const TriangleList visible = VisibleTriangles(all, hidden);
        EXPECT_EQ(visible.count, all.count - effect.triangles);
        EXPECT_NEAR(test::AreaOf(plan, visible), area, 1e-9);
        EXPECT_TRUE(effect.points.empty());
    }
    const EdgeMarks held(all.count, 7);
    HiddenTriangles hidden(all.count, 0);
    EXPECT_EQ(HideLongSides(plan, all, held, 5, hidden), 0) << "across a constrained edge";
    EXPECT_EQ(HideLongSides(plan, all, {}, 5, hidden), all.count);
    EXPECT_TRUE(HullRings(VisibleTriangles(all, hidden)).empty());
    EXPECT_EQ(PointsWithoutTriangle(all, hidden).size(), plan.end() - plan.begin());
}

Array1<PlanPoint> Joined(std::initializer_list<Array1<PlanPoint>> parts) {
    Array1<PlanPoint> all;
    for (const Array1<PlanPoint>& part : parts) {
        all = test::Followed(all, part);
    }
    return all;
}

TEST(VisibleSurface, ProposesThreeTimesTheLongestStep) {
    const Array1<PlanPoint> site = LShapedLattice(); // 96 points
    const Array1<PlanPoint> far = test::Moved(site, 5000, 300, 1);
    const Array1<PlanPoint> few{PlanPoint{-900, 0}, PlanPoint{-905, 3}, PlanPoint{-902, 9}};
    const struct {
        const char* name;
        Array1<PlanPoint> plan;
        double step;
        std::vector<Index> strays;
        Index sites;
    } cases[] = {
        {"one site", site, 10, {}, 1},
        {"repeats", Joined({site, site}), 10, {}, 1},
        {"a stray", Joined({{PlanPoint{-900, 0}}, site}), 10, {1}, 1},
        {"a leap of ten steps is none", Joined({{PlanPoint{-100, 0}}, site}), 100, {}, 1},
        {"a few strays", Joined({site, few}), 10, {97, 98, 99}, 1},
        {"two sites", Joined({site, far}), 10, {}, 2},
        {"two sites and strays", Joined({site, few, far}), 10, {97, 98, 99}, 2},
        {"two that lie close are no step",
         {{0, 0}, {0.001, 0}, {10, 0}, {5, 10}, {20, 8}},
         std::hypot(10, 8),
         {},
         1},
    };
    for (const auto& [name, plan, step, strays, sites] : cases) {
        SCOPED_TRACE(name);
        const TriangleList triangles = TriangulatePoints(plan).triangles;
        const LongestSideProposal proposal = ProposeLongestSide(plan, triangles);
        EXPECT_NEAR(proposal.step, step, 1e-9);
        EXPECT_NEAR(proposal.length, 3 * step, 1e-9);
        EXPECT_EQ(proposal.strays, strays);
        EXPECT_EQ(proposal.sites, sites);
        const HiddenTriangles none(triangles.count, 0);
        EXPECT_EQ(EffectOfLongestSide(plan, triangles, {}, proposal.length, none).points,
                  strays.size() == 1 ? strays : std::vector<Index>());
    }
    EXPECT_EQ(ProposeLongestSide({}, TriangleList()).length, 0);
}

} // namespace
} // namespace terravo
