// Single edits, followed in place, against the surface that the survey makes anew.
#include "survey/surface/LiveSurface.h"

#include "support/PointClouds.h"
#include "support/Surveys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>

namespace terravo {
namespace {

using Corners = std::array<Index, 3>;
using CornerSet = std::set<Corners>;

CornerSet TrianglesOf(const Survey& survey) {
    const ShownSurface shown = survey.Surface();
    CornerSet all;
    for (Index t = 1; t <= shown.triangles.count; ++t) {
        Corners corners = shown.triangles.table[t].vertices;
        for (Index& corner : corners) {
            corner = corner <= shown.SurveyedPoints()
                         ? survey.NumberAmongAll(corner)
                         : survey.AllPoints().count + corner - shown.SurveyedPoints();
        }
        std::rotate(corners.begin(), std::min_element(corners.begin(), corners.end()),
                    corners.end());
        all.insert(corners);
    }
    return all;
}

std::array<PlanPoint, 3> PlacesOfPatch(const SurfacePatch& patch, Index t) {
    std::array<PlanPoint, 3> places;
    std::transform(patch.triangles.table[t].vertices.begin(),
                   patch.triangles.table[t].vertices.end(), places.begin(), [&](Index corner) {
                       return PlanPoint{patch.points.x[corner], patch.points.y[corner]};
                   });
    return places;
}

// Every triangle of the survey that was not there before is in the patch, with its heights.
void ExpectToShowWhatIsNew(const SurfacePatch& patch, const Survey& survey, const CornerSet& before,
                           const CornerSet& after) {
    std::set<std::array<double, 9>> shown;
    for (Index t = 1; t <= patch.triangles.count; ++t) {
        const std::array<PlanPoint, 3> places = PlacesOfPatch(patch, t);
        std::array<double, 9> key{};
        std::size_t first = 0;
        for (std::size_t i = 1; i < 3; ++i) {
            first =
                std::pair(places[i].x, places[i].y) < std::pair(places[first].x, places[first].y)
                    ? i
                    : first;
        }
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t corner = (first + i) % 3;
            key[3 * i] = places[corner].x;
            key[3 * i + 1] = places[corner].y;
            key[3 * i + 2] = patch.points.z[patch.triangles.table[t].vertices[corner]];
        }
        shown.insert(key);
    }
    const PointSet& points = survey.Surface().points;
    const auto inUse = [&survey](Index all) {
        const std::vector<Index>& out = survey.ExcludedPoints();
        return all -
               static_cast<Index>(std::lower_bound(out.begin(), out.end(), all) - out.begin());
    };
    for (const Corners& corners : after) {
        if (before.count(corners) != 0 || corners[2] > survey.AllPoints().count) {
            continue;
        }
        std::array<std::array<double, 3>, 3> own{};
        for (std::size_t i = 0; i < 3; ++i) {
            const Index p = inUse(corners[i]);
            own[i] = {points.x[p], points.y[p], points.z[p]};
        }
        std::rotate(own.begin(), std::min_element(own.begin(), own.end()), own.end());
        std::array<double, 9> key{};
        for (std::size_t i = 0; i < 9; ++i) {
            key[i] = own[i / 3][i % 3];
        }
        EXPECT_EQ(shown.count(key), 1U) << corners[0] << ' ' << corners[1] << ' ' << corners[2];
    }
}

std::string NotIn(const std::vector<Corners>& some, const CornerSet& others) {
    std::string text;
    for (const Corners& corners : some) {
        if (others.count(corners) == 0) {
            text += '(' + std::to_string(corners[0]) + ' ' + std::to_string(corners[1]) + ' ' +
                    std::to_string(corners[2]) + ')';
        }
    }
    return text.empty() ? text : text + ';';
}

class Editor {
public:
    Editor(Array1<PlanPoint> places, unsigned seed)
        : survey_(test::HillySurvey(std::move(places), false)), random_(seed) {
        survey_.SetWish({.exact = true});
    }

    // A wall across, a ring without heights about most of it, or nothing.
    void LayLines(unsigned kind) {
        const PointSet& p = survey_.Points();
        const auto at = [&p](double x, double y, double z) {
            return SpacePoint{std::lerp(p.extentX.min, p.extentX.max, x),
                              std::lerp(p.extentY.min, p.extentY.max, y), z};
        };
        const auto line = [](std::vector<SpacePoint> vertices, bool closed) {
            return std::make_shared<const SurfaceLine>(
                SurfaceLine{{std::move(vertices), closed, {}}, {}, 0});
        };
        if (kind == 1) {
            plan_.breaklines = {line({at(0.21, 0.33, 5), at(0.8, 0.41, 9)}, false)};
        } else if (kind == 2) {
            plan_.boundary = {line({at(0.1, 0.1, kNoHeight), at(0.9, 0.12, kNoHeight),
                                    at(0.87, 0.9, kNoHeight), at(0.14, 0.83, kNoHeight)},
                                   true)};
        } else if (kind == 3) {
            plan_.longestSide = (p.extentX.max - p.extentX.min) / 3;
        }
        survey_.SetPlan(plan_);
        static_cast<void>(survey_.Surface());
    }

    void Run(int edits) {
        CornerSet before = TrianglesOf(survey_);
        auto live = std::make_unique<LiveSurface>(survey_);
        for (int i = 0; i < edits && !::testing::Test::HasFailure(); ++i) {
            SurfacePlan plan = Edited(*live);
            const std::optional<SurfacePatch> patch = live->Follow(plan);
            survey_.SetPlan(plan);
            plan_ = std::move(plan);
            CornerSet after = TrianglesOf(survey_);
            if (!patch) {
                ++refused;
                if (!LiveSurface::CanFollow(survey_)) {
                    plan_.held.clear();
                    survey_.SetPlan(plan_);
                    static_cast<void>(survey_.Surface());
                    if (!LiveSurface::CanFollow(survey_)) {
                        return;
                    }
                }
                live = std::make_unique<LiveSurface>(survey_);
                after = TrianglesOf(survey_);
            } else {
                ++followed;
                ExpectToShowWhatIsNew(*patch, survey_, before, after);
            }
            const std::vector<Corners> own = live->Triangles();
            ASSERT_EQ(NotIn(own, after) +
                          NotIn({after.begin(), after.end()}, {own.begin(), own.end()}),
                      "")
                << "after edit " << i;
            ASSERT_EQ(own.size(), after.size());
            before = after;
        }
    }

    int followed = 0;
    int refused = 0;

private:
    Index Below(Index count) {
        return static_cast<Index>(random_() % static_cast<unsigned>(count));
    }

    SurfacePlan Edited(LiveSurface& live) {
        SurfacePlan plan = plan_;
        const Index point = 1 + Below(survey_.AllPoints().count);
        const auto few = static_cast<Index>(survey_.AllPoints().count / 3);
        switch (Below(6)) {
        case 0:
        case 1:
            return static_cast<Index>(plan.excluded.size()) < few
                       ? WithExcluded(std::move(plan), {point}, true)
                       : plan;
        case 2:
            return plan.excluded.empty()
                       ? plan
                       : WithExcluded(plan,
                                      {plan.excluded[static_cast<std::size_t>(
                                          Below(static_cast<Index>(plan.excluded.size())))]},
                                      false);
        case 3:
            plan.heights = {{point, 0.25 * Below(100)}};
            return plan;
        case 4:
            if (!plan.held.empty()) {
                plan.held.pop_back();
            }
            return plan;
        default:
            Flip(live, plan, point);
            return plan;
        }
    }

    void Flip(LiveSurface& live, SurfacePlan& plan, Index point) {
        const PointSet& all = survey_.AllPoints();
        const std::optional<TriangleHere> here = live.At({all.x[point], all.y[point]});
        for (std::size_t j = 0; here && j < 3; ++j) {
            if (here->beyond[j] && !here->isConstrained[j]) {
                plan.held.push_back({PlanOf(here->corners[(j + 2) % 3]), *here->beyond[j]});
                return;
            }
        }
    }

    Survey survey_;
    SurfacePlan plan_;
    std::mt19937 random_;
};

TEST(LiveSurfaceTest, MakesTheTrianglesThatTheSurveyMakes) {
    int followed = 0;
    int refused = 0;
    for (unsigned seed = 1; seed <= 8; ++seed) {
        std::vector<test::PointCloud> clouds = test::CloudsOfEveryKind(90, seed);
        for (test::PointCloud& hard : test::HardClouds(60, seed)) {
            clouds.push_back(std::move(hard));
        }
        for (test::PointCloud& cloud : clouds) {
            SCOPED_TRACE(cloud.name + ' ' + std::to_string(seed));
            Editor editor(std::move(cloud.points), seed);
            editor.LayLines(seed % 4);
            editor.Run(25);
            followed += editor.followed;
            refused += editor.refused;
        }
    }
    EXPECT_GT(followed, refused);
}

} // namespace
} // namespace terravo
