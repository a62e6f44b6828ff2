#include "sheet/section/SectionSheet.h"

#include "sheet/section/BetweenProfiles.h"
#include "support/FakeTextMeasure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace terravo {
namespace {

using Places = std::vector<SectionPlace>;

ProfileRun RunOf(const Places& places) {
    ProfileRun run;
    for (const SectionPlace& place : places) {
        run.push_back({place.station, {place.station, 0}, place.z});
    }
    return run;
}

Profile ProfileOf(double length, const std::vector<Places>& runs) {
    Profile profile;
    profile.length = length;
    for (const Places& run : runs) {
        profile.runs.push_back(RunOf(run));
    }
    return profile;
}

double AreaOf(const Places& ring) {
    double twice = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const SectionPlace& a = ring[i];
        const SectionPlace& b = ring[(i + 1) % ring.size()];
        twice += (a.station - ring[0].station) * (b.z - ring[0].z) -
                 (b.station - ring[0].station) * (a.z - ring[0].z);
    }
    return std::fabs(twice) / 2;
}

TEST(BetweenProfilesTest, PiecesEndWhereTheProfilesCrossOrMeet) {
    const Profile first = ProfileOf(8, {{{0, 10}, {4, 10}, {8, 10}}});
    const Profile second = ProfileOf(8, {{{0, 9}, {2, 11}, {4, 10}, {6, 10}, {8, 12}}});
    const std::vector<SectionPiece> pieces = PiecesBetween(first, second);
    ASSERT_EQ(pieces.size(), 3U);
    const auto sizes = [](const SectionPiece& piece) {
        const auto [left, right] =
            std::minmax_element(piece.ring.begin(), piece.ring.end(),
                                [](const auto& a, const auto& b) { return a.station < b.station; });
        return std::tuple(piece.isCut, left->station, right->station, piece.ring.size());
    };
    EXPECT_EQ(sizes(pieces[0]), std::tuple(true, 0., 1., 3U));
    EXPECT_EQ(sizes(pieces[1]), std::tuple(false, 1., 4., 4U)) << "it is there twice at 2 alone";
    EXPECT_EQ(sizes(pieces[2]), std::tuple(false, 6., 8., 3U))
        << "level with the other from 4 to 6";
    EXPECT_TRUE(PiecesBetween(first, first).empty());
    EXPECT_EQ(PiecesBetween(first, LevelProfile(first, 9)).size(), 1U);
}

Profile RandomProfile(std::mt19937& random) {
    std::uniform_real_distribution<double> step(0.2, 3);
    std::uniform_real_distribution<double> height(4520000, 4520010);
    Profile profile;
    double station = step(random);
    for (int k = 0; k < 4; ++k) {
        Places run;
        for (int i = 0; i < 9; ++i) {
            run.push_back({station, height(random)});
            station += step(random);
        }
        profile.runs.push_back(RunOf(run));
        station += step(random);
    }
    profile.length = station;
    return profile;
}

TEST(BetweenProfilesTest, PiecesHaveTheAreasBetweenTheProfiles) {
    std::mt19937 random(20);
    for (int i = 0; i < 50; ++i) {
        const Profile first = RandomProfile(random);
        const Profile second = RandomProfile(random);
        double cut = 0;
        double fill = 0;
        for (const SectionPiece& piece : PiecesBetween(first, second)) {
            (piece.isCut ? cut : fill) += AreaOf(piece.ring);
        }
        const SectionAreas areas = AreasBetween(first, second);
        EXPECT_NEAR(cut, areas.cut, 1e-6);
        EXPECT_NEAR(fill, areas.fill, 1e-6);
    }
}

TEST(SectionScalesTest, LengthsFillTheirRoomAndHeightsAUsualMultiple) {
    struct Case {
        std::optional<double> scale;
        std::optional<double> exaggeration;
        double length;
        double range;
        double wantedScale;
        double wantedExaggeration;
    };
    // In 200 x 100 mm, of which heights take 85 mm.
    const Case cases[] = {
        {{}, {}, 100, 4, 500, 10},      // 8 mm become 80
        {{}, {}, 100, 30, 500, 1},      // twice would be steeper than is usual
        {{}, {}, 100, 0.001, 500, 100}, // no more than that
        {{}, {}, 100, 0, 500, 1},       {{}, {}, 10, 60, 1000, 1},     // as high as it can be
        {{}, 20., 100, 4, 1000, 20},    {2000., {}, 100, 4, 2000, 10}, // of 50 mm
        {100., 3., 100, 50, 100, 3},    {{}, {}, 0, 0, 1000, 1},
    };
    for (const Case& c : cases) {
        SectionPlan plan;
        plan.scale = c.scale;
        plan.exaggeration = c.exaggeration;
        const SectionScales scales = ChooseScales(plan, c.length, c.range, 200, 100);
        EXPECT_DOUBLE_EQ(scales.scale, c.wantedScale) << c.length << ' ' << c.range;
        EXPECT_DOUBLE_EQ(scales.exaggeration, c.wantedExaggeration) << c.length << ' ' << c.range;
    }
}

struct SectionSheetTest : ::testing::Test {
    test::FakeTextMeasure measure;
    TextCatalogue texts;
    SheetWords words{texts, measure, '.'};
    SectionPlan plan;

    [[nodiscard]] SheetBox BoxOf(const SheetText& text) const {
        const double width = measure.Width(text.text, text.height, text.bold);
        const double shift = text.anchor == TextAnchor::Left    ? 0
                             : text.anchor == TextAnchor::Right ? width
                                                                : width / 2;
        const double below = text.anchor == TextAnchor::Centre ? text.height / 2 : 0;
        const double left = text.place.x - shift;
        return {left, text.place.y + below - text.height, left + width, text.place.y + below};
    }

    // Everything is on the paper, and no text touches another.
    void Check(const SheetScene& scene, const std::string& name) {
        const SheetBox paper = SheetBox{0, 0, scene.width, scene.height}.Shrunk(-1e-6);
        for (const SheetPoint& p : scene.vertices) {
            EXPECT_TRUE(paper.Contains(p)) << name << ' ' << p.x << ' ' << p.y;
        }
        std::vector<SheetBox> boxes;
        for (const SheetText& text : scene.texts) {
            const SheetBox box = BoxOf(text);
            EXPECT_TRUE(paper.Contains({box.left, box.top}) &&
                        paper.Contains({box.right, box.bottom}))
                << name << ": " << text.text;
            for (const SheetBox& other : boxes) {
                EXPECT_TRUE(box.left >= other.right || box.right <= other.left ||
                            box.top >= other.bottom || box.bottom <= other.top)
                    << name << ": " << text.text;
            }
            boxes.push_back(box);
        }
    }

    static std::size_t Count(const SheetScene& scene, SheetLayer layer) {
        return static_cast<std::size_t>(
            std::count_if(scene.lines.begin(), scene.lines.end(),
                          [&](const SheetLine& line) { return line.layer == layer; }));
    }
    static bool Says(const SheetScene& scene, const std::string& part) {
        return std::any_of(scene.texts.begin(), scene.texts.end(), [&](const SheetText& text) {
            return text.text.find(part) != std::string::npos;
        });
    }
};

TEST_F(SectionSheetTest, DrawsEveryRunWhereItsStationsAndHeightsAre) {
    Profile profile = ProfileOf(100, {{{5, 20}, {30, 24}}, {{40, 22}, {90, 21}, {95, 19.5}}});
    profile.runs[1][1].line = 1;
    const Profile other = ProfileOf(100, {{{0, 21}, {60, 23}}});
    SectionSource source{profile, &other, "before", "after"};
    source.areas = SectionAreas{1.25, 33};
    source.bends = {50};
    const SectionSheet sheet = MakeSectionSheet(plan, source, words);
    Check(sheet.scene, "section");
    std::size_t runs = 0;
    for (const SheetLine& line : sheet.scene.lines) {
        if (line.layer == SheetLayer::Profiles &&
            line.ink == sheet.scene.lines.back().ink) { // legend last: no profile
            ADD_FAILURE();
        }
        if (line.layer == SheetLayer::Profiles && line.pieces == 2) {
            for (const SheetPiece& piece : sheet.scene.PiecesOf(line)) {
                const auto drawn = sheet.scene.VerticesOf(piece);
                ASSERT_EQ(drawn.size(), profile.runs[runs].size());
                for (std::size_t i = 0; i < drawn.size(); ++i) {
                    EXPECT_NEAR(sheet.view.StationAt(drawn[i].x), profile.runs[runs][i].station,
                                1e-9);
                    EXPECT_NEAR(sheet.view.HeightAt(drawn[i].y), profile.runs[runs][i].z, 1e-9);
                }
                ++runs;
            }
        }
    }
    EXPECT_EQ(runs, 2U);
    EXPECT_EQ(Count(sheet.scene, SheetLayer::Profiles), 2U);
    EXPECT_EQ(Count(sheet.scene, SheetLayer::Breaklines), 1U);
    EXPECT_TRUE(Says(sheet.scene, "before") && Says(sheet.scene, "after") &&
                Says(sheet.scene, "1.25 m") && Says(sheet.scene, "33.00 m") &&
                Says(sheet.scene, texts[Text::SectionBend]));
    EXPECT_TRUE(sheet.scene.remarks.empty());
}

// However many lines are met, their names stand in the frame and on no other name.
TEST_F(SectionSheetTest, NamesTheLinesThatAreMet) {
    const auto names = [&](std::size_t count, double highest) {
        Profile profile = ProfileOf(100, {{}});
        auto lineNames = std::make_shared<std::vector<std::string>>();
        for (std::size_t i = 0; i <= count; ++i) {
            const double part = static_cast<double>(i) / static_cast<double>(count);
            profile.runs[0].push_back({100 * part, {100 * part, 0}, highest * part * part});
            profile.runs[0].back().line = i + 1;
            lineNames->push_back("wall " + std::to_string(i + 1));
        }
        profile.lineNames = lineNames;
        const SectionSheet sheet = MakeSectionSheet(plan, SectionSource{profile}, words);
        std::vector<SheetBox> boxes;
        for (const SheetText& text : sheet.scene.texts) {
            if (text.layer != SheetLayer::Breaklines) {
                continue;
            }
            const double width = measure.Width(text.text, text.height, text.bold);
            const SheetBox box{text.place.x - text.height, text.place.y - width, text.place.x,
                               text.place.y};
            EXPECT_TRUE(sheet.view.box.Contains({box.left, box.top}) &&
                        sheet.view.box.Contains({box.right, box.bottom}))
                << text.text;
            for (const SheetBox& other : boxes) {
                EXPECT_TRUE(box.left >= other.right || box.right <= other.left ||
                            box.top >= other.bottom || box.bottom <= other.top)
                    << text.text << " of " << count;
            }
            boxes.push_back(box);
        }
        return boxes.size();
    };
    EXPECT_EQ(names(5, 10), 6U);
    for (const std::size_t count : {30U, 400U}) {
        for (const double highest : {0.0, 10.0, 90.0}) {
            const std::size_t named = names(count, highest);
            EXPECT_GT(named, 15U);
            EXPECT_LT(named, 200U) << count;
        }
    }
}

TEST_F(SectionSheetTest, OddProfilesHaveReadableSheetsToo) {
    const std::pair<const char*, Profile> cases[] = {
        {"no length", ProfileOf(0, {})},
        {"misses", ProfileOf(250, {})},
        {"one point", ProfileOf(10, {{{5, 3}}})},
        {"level", ProfileOf(1000, {{{0, 17.25}, {1000, 17.25}}})},
        {"hardly not level", ProfileOf(1000, {{{0, 5e6}, {1000, 5e6 + 1e-7}}})},
        {"far up", ProfileOf(123456789, {{{0, -8000}, {123456789, 8848}}})},
        {"tiny", ProfileOf(1e-6, {{{0, 0}, {1e-6, 1e-7}}})},
        {"cliff", ProfileOf(0.5, {{{0, 0}, {0.2, 1}, {0.5, 3000}}})},
        {"spike", ProfileOf(100, {{{0, 0}, {50, 1e9}, {100, 0}}})},
    };
    for (const auto& [name, profile] : cases) {
        for (const char* paper : {"A4", "A0", "60x90"}) {
            plan.paper = ParsePaperSize(paper).value();
            SectionSource source{profile};
            source.firstName = "survey";
            Check(MakeSectionSheet(plan, source, words).scene, std::string(name) + ' ' + paper);
            source.datum = 12.5;
            source.station = 1234.5;
            Check(MakeSectionSheet(plan, source, words).scene, std::string(name) + ' ' + paper);
        }
    }
    const Profile& missed = cases[1].second;
    EXPECT_TRUE(Says(MakeSectionSheet(plan, SectionSource{missed}, words).scene,
                     texts[Text::SectionMisses].substr(0, 8)));
}

TEST_F(SectionSheetTest, SaysWhatLiesOutsideAtScalesThatWereAskedFor) {
    const Profile profile = ProfileOf(100, {{{0, 0}, {100, 50}}});
    plan.scale = 100;
    plan.exaggeration = 2;
    const SectionSheet sheet = MakeSectionSheet(plan, SectionSource{profile}, words);
    Check(sheet.scene, "large");
    ASSERT_EQ(sheet.scene.remarks.size(), 1U);
    EXPECT_EQ(sheet.scene.remarks[0].values[0], "1000");
    EXPECT_EQ(sheet.scene.remarks[0].values[1], "1000");
}

TEST_F(SectionSheetTest, CrossSectionsShareTheirScalesAndFillAsManySheetsAsTheyNeed) {
    std::vector<Profile> profiles;
    for (int i = 0; i < 23; ++i) {
        profiles.push_back(ProfileOf(40, {{{0, 100. + i}, {20, 101. + 2 * i}, {40, 99. + i}}}));
    }
    profiles[4].runs.clear();
    std::vector<SectionSource> sources;
    for (const Profile& profile : profiles) {
        sources.push_back({profile});
        sources.back().firstName = "survey";
        sources.back().datum = 100;
        sources.back().areas = AreasAgainst(profile, 100);
        sources.back().station = 10. * static_cast<double>(sources.size());
    }
    for (const auto& [paper, landscape] : {std::pair("A4", false), {"A4", true}, {"A1", true}}) {
        plan.paper = ParsePaperSize(paper).value();
        plan.landscape = landscape;
        const std::vector<SheetScene> sheets = MakeCrossSectionSheets(plan, sources, words);
        std::vector<std::string> titles;
        for (const SheetScene& scene : sheets) {
            Check(scene, paper);
            EXPECT_EQ(scene.scale, sheets[0].scale);
            for (const SheetText& text : scene.texts) {
                if (text.bold && text.text.rfind("Station", 0) == 0) {
                    titles.push_back(text.text);
                }
            }
        }
        ASSERT_EQ(titles.size(), sources.size());
        EXPECT_EQ(titles.front(), "Station 10.0");
        EXPECT_EQ(titles.back(), "Station 230.0");
        EXPECT_EQ(sheets.size() > 1, plan.paper.name == "A4");
    }
    EXPECT_TRUE(MakeCrossSectionSheets(plan, {}, words).empty());
}

} // namespace
} // namespace terravo
