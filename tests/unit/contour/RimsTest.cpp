// Surfaces with notches, holes, several parts and rims that touch, through everything that takes a
// list of triangles.
#include "contour/LevelBands.h"
#include "contour/LevelRegions.h"
#include "contour/RingArea.h"
#include "export/vector/MakeVectorContent.h"
#include "support/CheckContours.h"
#include "support/RimSites.h"
#include "survey/SurfaceHeight.h"

#include <gtest/gtest.h>

#include <cmath>

namespace terravo {
namespace {

LevelSet LevelsOf(const PointSet& points, double step) {
    LevelSet levels;
    for (double z = step * std::ceil(points.extentZ.min / step); z <= points.extentZ.max;
         z += step) {
        levels.Append({});
        levels[levels.UpperBound()].value = z;
    }
    return levels;
}

double AreaFrom(const Array1<LevelBand>& bands, Index first) {
    double area = 0;
    for (Index k = first; k <= bands.UpperBound(); ++k) {
        area += AreaOf(bands[k]);
    }
    return area;
}

void CheckHull(const VectorContent& content, double area) {
    double ofRings = 0;
    for (const SpaceLine& ring : content.hull) {
        std::vector<PlanPoint> plan;
        for (const SpacePoint& vertex : ring.vertices) {
            plan.push_back(PlanOf(vertex));
        }
        EXPECT_TRUE(ring.closed);
        ofRings += AreaOfRing(std::span<const PlanPoint>(plan));
    }
    EXPECT_NEAR(ofRings, area, 1e-9 * area);
}

// From every triangle to every other.
void CheckHeights(const test::RimSurface& surface) {
    for (Index t = 1; t <= surface.all.count; ++t) {
        const PlanPoint centre = test::CentreOf(surface.plan, surface.all, t);
        Index inAll = t;
        const auto wanted = SurfaceHeight(surface.points, surface.all, centre, inAll);
        for (Index start = 1; start <= surface.visible.count; ++start) {
            Index near = start;
            const auto z = SurfaceHeight(surface.points, surface.visible, centre, near);
            ASSERT_EQ(z, surface.hidden[t] == 0 ? wanted : std::nullopt);
        }
    }
}

TEST(Rims, GoThroughEverythingThatTakesTriangles) {
    for (const test::RimSite& site : test::RimSites()) {
        for (const bool wholeMetres : {false, true}) {
            SCOPED_TRACE(site.name + (wholeMetres ? ", whole metres" : ""));
            const test::RimSurface surface = test::MakeRimSurface(site, wholeMetres);
            const PointSet& points = surface.points;
            const double area = test::AreaOf(surface.plan, surface.visible);
            const LevelSet levels = LevelsOf(points, 1);
            EXPECT_EQ(test::ContourFaultOf(points, surface.visible, levels), "");
            const ContourSet contours = *MakeContourSet(points, surface.visible, levels);
            const Array1<LevelBand> bands = MakeLevelBands(points, surface.visible, contours);
            EXPECT_NEAR(AreaFrom(bands, 1), area, 1e-9 * area);
            const auto regions = MakeLevelRegions(points, surface.visible, contours);
            for (Index k = 1; k <= levels.UpperBound(); ++k) {
                EXPECT_NEAR(AreaOf(regions[k]), AreaFrom(bands, k + 1), 1e-9 * area) << k;
            }
            VectorWish wish;
            wish.parts.Add(VectorPart::Hull);
            wish.parts.Add(VectorPart::Triangles);
            const LevelRule rule;
            const VectorContent content = MakeVectorContent(
                {points, points.count, surface.visible, rule, levels, contours}, wish);
            EXPECT_EQ(static_cast<int>(content.hull.size()), site.outerRims + site.holeRims);
            EXPECT_EQ(static_cast<Index>(content.triangles.size()), surface.visible.count);
            CheckHull(content, area);
            CheckHeights(surface);
        }
    }
}

} // namespace
} // namespace terravo
