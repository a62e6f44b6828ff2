#include "export/vector/MakeVectorContent.h"

#include "app/session/SurveyContours.h"
#include "export/readback/ContentCheck.h"
#include "export/vector/CleanText.h"
#include "export/vector/VectorNumber.h"
#include "support/Surveys.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <set>

namespace terravo {
namespace {

VectorParts EveryPart() {
    VectorParts parts;
    for (const VectorPart part : AllVectorParts()) {
        parts.Add(part);
    }
    return parts;
}

VectorContent ContentOf(const Survey& survey, const LevelRule& rule, const VectorWish& wish) {
    SurveyContours contours(survey);
    EXPECT_TRUE(contours.Prepare(rule));
    return MakeVectorContent(
        SourceOf(survey.Surface(), rule, contours.Levels(), contours.Contours()), wish);
}

int DecimalsOf(double value) {
    std::string text;
    VectorNumber::AppendShort(text, value);
    const std::size_t point = text.find('.');
    return point == std::string::npos ? 0 : static_cast<int>(text.size() - point - 1);
}

template <class Place>
double AreaOf(std::span<const Place> ring) {
    double twice = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Place& a = ring[i];
        const Place& b = ring[(i + 1) % ring.size()];
        twice += (a.x - ring[0].x) * (b.y - ring[0].y) - (a.y - ring[0].y) * (b.x - ring[0].x);
    }
    return twice / 2;
}

double AreaOfHull(const VectorContent& content) {
    double area = 0;
    for (const SpaceLine& ring : content.hull) {
        area += AreaOf(std::span<const SpacePoint>(ring.vertices));
    }
    return area;
}

TEST(MakeVectorContentTest, HoldsTheSurveyToItsLastDigit) {
    const Survey survey(test::HillySurvey(test::RandomPoints(2000, 3), false));
    VectorWish wish;
    wish.parts = EveryPart();
    const VectorContent content = ContentOf(survey, RuleByInterval(2), wish);
    const PointSet& points = survey.Points();
    ASSERT_EQ(content.points.size(), 2000U);
    EXPECT_EQ(content.PointAt(77), (SpacePoint{points.x[77], points.y[77], points.z[77]}));
    double triangles = 0;
    for (const Triangle& triangle : content.triangles) {
        const std::array<SpacePoint, 3> corners{content.PointAt(triangle.Vertex(1)),
                                                content.PointAt(triangle.Vertex(2)),
                                                content.PointAt(triangle.Vertex(3))};
        triangles += AreaOf(std::span<const SpacePoint>(corners));
        EXPECT_GE(*std::min_element(triangle.neighbours.begin(), triangle.neighbours.end()), 0);
    }
    EXPECT_NEAR(AreaOfHull(content), triangles, triangles * 1e-12);
    double bands = 0;
    for (const LevelBand& band : content.bands) {
        EXPECT_LT(band.low, band.high);
        for (const BandPolygon& polygon : band.polygons) {
            bands += AreaOf(band.VerticesOf(polygon.outer));
            for (const RegionRing& hole : polygon.holes) {
                bands += AreaOf(band.VerticesOf(hole));
            }
        }
    }
    EXPECT_NEAR(bands, triangles, triangles * 1e-9);
    EXPECT_GT(content.labels.size(), 10U);
    for (const VectorLabel& label : content.labels) {
        EXPECT_TRUE(content.levels[static_cast<std::size_t>(label.level) - 1].index);
    }
    EXPECT_EQ(content.levels.front().value, 2 * std::ceil(points.extentZ.min / 2));
    EXPECT_TRUE(content.remarks.empty());
}

TEST(MakeVectorContentTest, RoundsOnceAndLeavesOutWhatThatFlattens) {
    const Survey survey(test::HillySurvey(test::RandomPoints(4000, 9), false));
    VectorWish wish;
    wish.parts = EveryPart();
    wish.decimals = 0; // of an area in which many points fall together
    const VectorContent content = ContentOf(survey, RuleByInterval(2.5), wish);
    ASSERT_FALSE(content.contours.empty());
    for (const VectorContour& contour : content.contours) {
        const std::span<const PlanPoint> line = content.VerticesOf(contour);
        EXPECT_GE(line.size(), contour.closed ? 3U : 2U);
        for (std::size_t i = 0; i < line.size(); ++i) {
            EXPECT_EQ(DecimalsOf(line[i].x) + DecimalsOf(line[i].y), 0);
            if (i > 0 || contour.closed) {
                EXPECT_NE(line[i], line[i == 0 ? line.size() - 1 : i - 1]);
            }
        }
    }
    EXPECT_EQ(content.levels[0].value, std::ceil(survey.Points().extentZ.min / 2.5) * 2.5)
        << "a level keeps the decimals of its rule";
    EXPECT_LT(content.triangles.size(),
              static_cast<std::size_t>(survey.Triangulation().triangles.count));
    const auto count = static_cast<Index>(content.triangles.size());
    for (Index t = 1; t <= count; ++t) {
        for (const Index neighbour :
             content.triangles[static_cast<std::size_t>(t) - 1].neighbours) {
            ASSERT_LE(neighbour, count);
            if (neighbour > 0) {
                const auto& back = content.triangles[static_cast<std::size_t>(neighbour) - 1];
                EXPECT_NE(std::find(back.neighbours.begin(), back.neighbours.end(), t),
                          back.neighbours.end());
            }
        }
    }
    ASSERT_EQ(content.remarks.size(), 1U);
    EXPECT_NE(content.remarks[0].sentence.find("without area"), std::string::npos);
}

TEST(MakeVectorContentTest, LeavesOutNarrowLoopsOfTheLowestLevel) {
    const Survey survey(
        test::MakeSurvey({{0, 0, 0}, {10, 0, 0}, {5, 8, 5}, {5, -8, 5}, {-8, 0, 5}, {18, 0, 5}}));
    VectorWish wish;
    wish.parts = {VectorPart::Contours};
    const VectorContent content = ContentOf(survey, RuleByCount(4), wish);
    std::vector<Index> levels;
    for (const VectorContour& contour : content.contours) {
        levels.push_back(contour.level);
    }
    EXPECT_EQ(levels, (std::vector<Index>{2, 3, 4}))
        << "nothing round the edge of two lowest points; the rim stays";
}

TEST(MakeVectorContentTest, TextsAreWhatEveryFormatCanHold) {
    struct Case {
        std::string text;
        std::string clean;
    };
    const Case cases[] = {{"Höhe €", "Höhe €"},
                          {"a\nb\tc\x7f", "a b c "},
                          {"\xff\xc3", "??"},
                          {"\xc0\x80", "??"},        // written too long
                          {"\xed\xa0\x80x", "???x"}, // half of a pair
                          {"\xef\xbf\xbe", "???"},   // never a character
                          {"\xc2\x85|", " |"},       // a control character of two bytes
                          {"\xf0\x9f\x97\xba", "\xf0\x9f\x97\xba"}};
    for (const Case& c : cases) {
        EXPECT_EQ(CleanText(c.text), c.clean);
        EXPECT_EQ(IsCleanText(c.text), c.text == c.clean);
    }
    std::string letters;
    for (int i = 0; i < 40; ++i) {
        letters += "\xE6\x97\xA5";
    }
    EXPECT_EQ(Quoted("short"), "\"short\"");
    EXPECT_EQ(Quoted(letters),
              '"' + letters.substr(0, std::size_t(23) * 3) + "..." + letters.substr(90) + '"');
    PointSet points = test::MakeSurvey({{0, 0, 1}, {9, 0, 4}, {0, 9, 5}});
    points.labels.Append("P\n1", "road");
    points.labels.Append("2", "");
    points.labels.Append("", "");
    points.sourceName = "old\tsurvey.v2.txt";
    VectorWish wish;
    wish.parts = {VectorPart::Points, VectorPart::Numbers};
    const VectorContent content = ContentOf(Survey(points), RuleByCount(3), wish);
    EXPECT_EQ(content.name, "old survey.v2");
    EXPECT_EQ(content.NameOf(1) + content.NameOf(2) + content.NameOf(3), "P 123");
    EXPECT_EQ(content.remarks.size(), 1U);
}

TEST(MakeVectorContentTest, PartsAreNamed) {
    for (const VectorPart part : AllVectorParts()) {
        EXPECT_EQ(ParseVectorParts(NameOf(part)), VectorParts{part});
    }
    EXPECT_EQ(ParseVectorParts(" hull, bands"), (VectorParts{VectorPart::Bands, VectorPart::Hull}));
    for (const char* wrong : {"", "hull,", "Hull", "hull bands"}) {
        EXPECT_EQ(ParseVectorParts(wrong), std::nullopt) << wrong;
    }
}

// A file that says what content says, and each of the ways in which it may not.
class ContentCheckTest : public ::testing::Test {
public:
    ContentCheckTest() {
        PointSet points = test::MakeSurvey({{0, 0, 1}, {9, 0, 4}, {0, 9, 5}, {9, 9, 3}});
        for (const char* name : {"1", "two", "", "4"}) {
            points.labels.Append(name, "c");
        }
        VectorWish wish;
        wish.parts = EveryPart();
        wish.textHeight = 0.5;
        content = ContentOf(Survey(points), RuleByInterval(1), wish);
    }

    VectorContent content;

    // Reads `read` back as if it were the file of the content.
    std::optional<std::string> Difference(const VectorContent& read) const {
        ContentCheck check(content, content.parts);
        for (const VectorContour& contour : read.contours) {
            std::vector<SpacePoint> vertices;
            for (const PlanPoint& p : read.VerticesOf(contour)) {
                vertices.push_back({p.x, p.y, read.LevelOf(contour).value});
            }
            check.Contour(read.LevelOf(contour).value, contour.closed, read.LevelOf(contour).index,
                          vertices);
        }
        for (const VectorLabel& label : read.labels) {
            const VectorLevel& level = read.levels[static_cast<std::size_t>(label.level) - 1];
            check.Label(level.value, level.text, label.middle,
                        label.angle * 180 / 3.14159265358979323846);
        }
        for (const LevelBand& band : read.bands) {
            for (const BandPolygon& polygon : band.polygons) {
                std::vector<std::span<const PlanPoint>> rings{band.VerticesOf(polygon.outer)};
                for (const RegionRing& hole : polygon.holes) {
                    rings.push_back(band.VerticesOf(hole));
                }
                check.BandPolygon(band.low, band.high, rings);
            }
        }
        for (Index i = 1; i <= static_cast<Index>(read.points.size()); ++i) {
            check.Point(read.PointAt(i), read.NameOf(i), read.CodeOf(i));
            check.PointLabel(PointText::Number, read.NameOf(i));
            check.PointLabel(PointText::Code, read.CodeOf(i));
            check.PointLabel(PointText::Height, std::to_string(read.PointAt(i).z));
        }
        for (const Triangle& triangle : read.triangles) {
            check.Corners({read.PointAt(triangle.Vertex(1)), read.PointAt(triangle.Vertex(2)),
                           read.PointAt(triangle.Vertex(3))});
            check.Neighbours(triangle.neighbours);
        }
        for (const SpaceLine& line : read.hull) {
            check.Line(SpaceLineKind::Hull, line.closed, line.vertices);
        }
        return check.Finish();
    }
};

TEST_F(ContentCheckTest, FindsWhateverDiffers) {
    EXPECT_EQ(Difference(content), std::nullopt);
    ASSERT_FALSE(content.labels.empty());
    const double off = std::nextafter(9.0, 10.0);
    const std::function<void(VectorContent&)> changes[] = {
        [&](VectorContent& c) { c.points[1].x = off; },
        [](VectorContent& c) {
            c.points.pop_back();
            c.triangles.clear(); // which have it as a corner
        },
        [](VectorContent& c) {
            c.points.push_back(c.points[0]);
            c.pointLabels.Append("5", "c");
        },
        [](VectorContent& c) { c.contourVertices[1].y += 1e-9; },
        [](VectorContent& c) { c.contours.pop_back(); },
        [](VectorContent& c) { c.contours.push_back(c.contours[0]); },
        [](VectorContent& c) { c.contours[0].closed = true; },
        [](VectorContent& c) { --c.contours[0].count; },
        [](VectorContent& c) { c.levels[0].value += 1e-9; },
        [](VectorContent& c) { c.levels[0].index = !c.levels[0].index; },
        [](VectorContent& c) { c.labels.pop_back(); },
        [](VectorContent& c) { c.labels[0].angle += 1e-6; },
        [](VectorContent& c) { c.labels[0].middle.x += 1e-9; },
        [](VectorContent& c) { c.levels.back().text = "x"; },
        [](VectorContent& c) { c.bands.pop_back(); },
        [](VectorContent& c) { c.bands[0].high += 1; },
        [](VectorContent& c) { c.bands[0].vertices[0].x += 1e-9; },
        [](VectorContent& c) { std::swap(c.triangles[0].vertices[0], c.triangles[0].vertices[1]); },
        [](VectorContent& c) {
            c.triangles[0].neighbours = {0, 0, 0};
        },
        [](VectorContent& c) { c.triangles.pop_back(); },
        [](VectorContent& c) { c.hull[0].vertices.pop_back(); },
        [](VectorContent& c) { c.hull[0].closed = false; },
        [](VectorContent& c) { c.hull.clear(); },
        [](VectorContent& c) { c.pointLabels = {}; },
    };
    std::set<std::string> sentences;
    for (const auto& change : changes) {
        VectorContent read = content;
        change(read);
        const std::optional<std::string> difference = Difference(read);
        ASSERT_TRUE(difference) << "change " << &change - changes;
        sentences.insert(*difference);
    }
    EXPECT_GT(sentences.size(), 18U) << "sentences tell what it is";
}

} // namespace
} // namespace terravo
