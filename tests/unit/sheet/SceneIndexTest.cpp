#include "sheet/SceneIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>

namespace terravo {
namespace {

// Winding lines of all sorts, two rings in one area, and marks, from a seeded chance.
SheetScene Scene() {
    SheetScene scene;
    scene.width = 200;
    scene.height = 100;
    std::mt19937 chance(7);
    std::uniform_real_distribution<double> part(0, 1);
    for (int i = 0; i < 120; ++i) {
        std::vector<SheetPoint> points{{200 * part(chance), 100 * part(chance)}};
        double way = 6 * part(chance);
        const int count = i % 7 == 0 ? 2 : 300;
        while (static_cast<int>(points.size()) < count) {
            way += part(chance) - 0.5;
            const SheetPoint last = points.back();
            points.push_back({last.x + 0.3 * std::cos(way), last.y + 0.3 * std::sin(way)});
        }
        const SheetInk ink{kBlack, 0.1 + i % 3 * 0.1,
                           i % 11 == 0 ? std::vector<double>{1, 1} : std::vector<double>{}};
        scene.AddLine(i % 2 == 0 ? SheetLayer::Contours : SheetLayer::Hull, ink, points,
                      i % 5 == 0);
    }
    SheetMarks marks;
    marks.ink = scene.InkNumber({});
    for (int i = 0; i < 5000; ++i) {
        marks.places.push_back({200 * part(chance), 100 * part(chance)});
    }
    scene.marks.push_back(marks);
    return scene;
}

constexpr IndexBox kVisible{60, 30, 90, 60};

bool IsVisible(SheetPoint p) {
    return p.x >= kVisible.left && p.x <= kVisible.right && p.y >= kVisible.top &&
           p.y <= kVisible.bottom;
}

double DistanceToChain(SheetPoint p, std::span<const IndexPoint> chain) {
    double least = 1e9;
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const double dx = chain[i + 1].x - chain[i].x;
        const double dy = chain[i + 1].y - chain[i].y;
        const double along = ((p.x - chain[i].x) * dx + (p.y - chain[i].y) * dy) /
                             std::max(dx * dx + dy * dy, 1e-12);
        const double t = std::clamp(along, 0.0, 1.0);
        least = std::min(least, std::hypot(p.x - chain[i].x - t * dx, p.y - chain[i].y - t * dy));
    }
    return least;
}

TEST(SceneIndexTest, HandsOutWhateverIsVisibleToWithinItsTolerance) {
    const SheetScene scene = Scene();
    for (const double tolerance : {0.0, 0.02, 0.5}) {
        const SceneDetail detail(scene, tolerance);
        for (const SheetLayer layer : {SheetLayer::Contours, SheetLayer::Hull}) {
            std::map<const SheetLine*, std::vector<std::vector<IndexPoint>>> found;
            detail.ForLines(layer, kVisible,
                            [&](const SheetLine& line, std::span<const IndexPoint> points, bool) {
                                EXPECT_EQ(line.layer, layer);
                                found[&line].emplace_back(points.begin(), points.end());
                            });
            for (const SheetLine& line : scene.lines) {
                if (line.layer != layer) {
                    continue;
                }
                for (const SheetPoint p : scene.VerticesOf(scene.PiecesOf(line)[0])) {
                    double least = 1e9;
                    for (const auto& chain : found[&line]) {
                        least = std::min(least, DistanceToChain(p, chain));
                    }
                    // The square of the tolerance has a diagonal.
                    const bool isTiny = scene.PiecesOf(line)[0].count == 2;
                    EXPECT_TRUE(!IsVisible(p) || isTiny || least < 1.5 * tolerance + 1e-4)
                        << p.x << ", " << p.y << ": " << least;
                }
            }
        }
    }
}

TEST(SceneIndexTest, LooksAtFewVerticesForASmallPart) {
    const SheetScene scene = Scene();
    const SceneDetail detail(scene, 0);
    std::size_t handed = 0;
    const IndexBox small{60, 30, 63, 33};
    for (const SheetLayer layer : {SheetLayer::Contours, SheetLayer::Hull}) {
        detail.ForLines(layer, small,
                        [&](const SheetLine&, std::span<const IndexPoint> points, bool) {
                            handed += points.size();
                        });
    }
    EXPECT_GT(handed, 0);
    EXPECT_LT(handed, scene.vertices.size() / 10);
}

// Even-odd: how often a ray to the right meets the rings.
bool IsInside(SheetPoint p, const std::vector<std::vector<IndexPoint>>& rings) {
    bool inside = false;
    for (const auto& ring : rings) {
        for (std::size_t i = 0, j = ring.size() - 1; i < ring.size(); j = i++) {
            if ((ring[i].y > p.y) != (ring[j].y > p.y) &&
                p.x < (ring[j].x - ring[i].x) * (p.y - ring[i].y) / (ring[j].y - ring[i].y) +
                          ring[i].x) {
                inside = !inside;
            }
        }
    }
    return inside;
}

std::vector<SheetPoint> Star(double radius) {
    std::vector<SheetPoint> points;
    constexpr int kCount = 700;
    for (int i = 0; i < kCount; ++i) {
        const double turn = 2 * std::acos(-1.0) * i / kCount;
        const double r = radius * (1 + 0.3 * std::sin(9 * turn));
        points.push_back({100 + r * std::cos(turn), 50 + r * std::sin(turn)});
    }
    return points;
}

TEST(SceneIndexTest, FillsTheSamePlacesFromAPartOfItsRings) {
    SheetScene scene;
    scene.areas.push_back({SheetLayer::Bands, kRed, 0, 2});
    scene.AddPiece(Star(60), true);
    scene.AddPiece(Star(20), true); // a hole
    const SceneDetail detail(scene, 0);
    const auto ringsIn = [&](const IndexBox& visible, std::size_t& vertices) {
        std::vector<std::vector<IndexPoint>> rings;
        std::vector<IndexPoint> scratch;
        detail.ForAreas(SheetLayer::Bands, visible, scratch,
                        [&](const SheetArea&, std::span<const IndexPoint> ring) {
                            rings.emplace_back(ring.begin(), ring.end());
                            vertices += ring.size();
                        });
        return rings;
    };
    std::size_t all = 0;
    const auto whole = ringsIn({-1000, -1000, 1000, 1000}, all);
    for (const IndexBox visible : {IndexBox{90, 30, 120, 40}, IndexBox{150, 40, 190, 90},
                                   IndexBox{98, 48, 102, 52}, IndexBox{20, 0, 60, 20}}) {
        std::size_t some = 0;
        const auto rings = ringsIn(visible, some);
        EXPECT_LT(some, all / 2);
        for (int i = 0; i < 400; ++i) {
            const SheetPoint p{visible.left + (visible.right - visible.left) * (i % 20 + 0.5) / 20,
                               visible.top + (visible.bottom - visible.top) *
                                                 (std::floor(i / 20) + 0.5) / 20};
            EXPECT_EQ(IsInside(p, rings), IsInside(p, whole)) << p.x << ", " << p.y;
        }
    }
}

TEST(SceneIndexTest, KeepsOneMarkForEachPixelAndEveryMarkWhereTheyAreApart) {
    const SheetScene scene = Scene();
    const auto placesAt = [&](double tolerance) {
        std::vector<IndexPoint> places;
        SceneDetail(scene, tolerance)
            .ForMarks(SheetLayer::Points, kVisible,
                      [&](const SheetMarks&, std::span<const IndexPoint> some) {
                          places.insert(places.end(), some.begin(), some.end());
                      });
        return places;
    };
    for (const double tolerance : {0.0005, 0.1, 1.0}) {
        const std::vector<IndexPoint> places = placesAt(tolerance);
        const double reach = 3 * tolerance * 2.9; // three tolerances, a square and its neighbour
        for (const SheetPoint mark : scene.marks[0].places) {
            const bool isThere =
                !IsVisible(mark) || std::any_of(places.begin(), places.end(), [&](IndexPoint p) {
                    return std::hypot(p.x - mark.x, p.y - mark.y) < reach + 1e-4;
                });
            EXPECT_TRUE(isThere) << mark.x << ", " << mark.y << " at " << tolerance;
        }
    }
    const auto visibleAt = [&](double tolerance) {
        const std::vector<IndexPoint> places = placesAt(tolerance);
        return std::count_if(places.begin(), places.end(), [](IndexPoint p) {
            return IsVisible({p.x, p.y});
        });
    };
    EXPECT_LT(visibleAt(1.0), visibleAt(0.0005) / 2);
}

TEST(SceneIndexTest, TakesTheCoarsestDetailThatIsFineEnough) {
    const SheetScene scene = Scene();
    SceneIndex index(scene);
    for (const double finest : {1e-6, 0.001, 0.01, 0.1, 1.0, 50.0}) {
        const double tolerance = index.DetailFor(finest).Tolerance();
        EXPECT_TRUE(tolerance <= std::max(finest, 0.0005)) << finest;
        EXPECT_TRUE(finest > 5 || tolerance * 4 > finest) << finest;
        EXPECT_EQ(&index.DetailFor(finest), &index.DetailFor(finest));
    }
}

} // namespace
} // namespace terravo
