#include "export/readback/CsvCheck.h"
#include "export/readback/CsvRecords.h"
#include "export/vector/CsvWriter.h"
#include "support/TemporaryFolder.h"
#include "support/VectorExamples.h"
#include "survey/import/PointImport.h"
#include "util/AppError.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace terravo {
namespace {

std::string Written(const test::TemporaryFolder& folder, VectorWriter write,
                    const VectorContent& content) {
    std::vector<std::string> remarks;
    OutputFile out(folder.File("table.csv"));
    write(out, content, {}, remarks);
    out.Commit();
    EXPECT_TRUE(remarks.empty());
    return folder.Read("table.csv");
}

struct Table {
    const char* name;
    VectorWriter write;
    VectorCheck check;
    std::string expected;
};

VectorContent LabelledContent() {
    VectorContent content = test::SmallContent();
    for (const auto& [name, code] : {std::pair("A1", "tree, old"),
                                     {"", ""},
                                     {"say \"A\"", "=1+1"},
                                     {"-5", " a"},
                                     {"#7", "b\nc"}}) {
        content.pointLabels.Append(name, code);
    }
    content.points[4].x = 1e-70;
    return content;
}

std::vector<Table> Tables() {
    return {{"points", WriteCsvPoints, CheckCsvPoints,
             "number,easting,northing,height,code\n"
             "A1,0,0,1,\"tree, old\"\n"
             "2,10,0,1,\n"
             "\"say \"\"A\"\"\",10,10,1,=1+1\n"
             "-5,0,10,1,\" a\"\n"
             "\"#7\",1e-70,5,3.25,\"b\nc\"\n"},
            {"contours", WriteCsvContours, CheckCsvContours,
             "level,line,x,y\n"
             "2,1,2,2\n2,1,8,2\n2,1,8,8\n2,1,2,8\n2,1,2,2\n"
             "2.5,2,4,4\n2.5,2,6.125,4\n2.5,2,6,6\n"},
            {"triangles", WriteCsvTriangles, CheckCsvTriangles,
             "point1,point2,point3\n1,2,5\n2,3,5\n3,4,5\n4,1,5\n"}};
}

TEST(CsvTest, WritesATableAndFindsEveryByteThatIsAnother) {
    const test::TemporaryFolder folder;
    const VectorContent content = LabelledContent();
    for (const Table& table : Tables()) {
        EXPECT_EQ(Written(folder, table.write, content), table.expected);
        EXPECT_EQ(table.check(folder.File("table.csv"), content, {}), std::nullopt) << table.name;
        const std::string others = "7,\"\nx";
        for (std::size_t i = 0; i < table.expected.size(); ++i) {
            std::string changed = table.expected;
            changed[i] = others[i % others.size()];
            changed[i] = changed[i] == table.expected[i] ? '8' : changed[i];
            EXPECT_NE(table.check(folder.Write("x.csv", changed), content, {}), std::nullopt)
                << changed;
            if (i % 4 == 0) {
                EXPECT_NE(
                    table.check(folder.Write("x.csv", table.expected.substr(0, i)), content, {}),
                    std::nullopt)
                    << table.name << ' ' << i;
            }
        }
        EXPECT_THROW(table.check(folder.File("nothing.csv"), content, {}), AppError);
    }
}

TEST(CsvTest, WritesOnlyTheContoursThatAreAskedFor) {
    const test::TemporaryFolder folder;
    VectorContent content = test::SmallContent();
    content.parts = {VectorPart::IndexContours};
    EXPECT_EQ(Written(folder, WriteCsvContours, content),
              "level,line,x,y\n2.5,1,4,4\n2.5,1,6.125,4\n2.5,1,6,6\n");
    EXPECT_EQ(CheckCsvContours(folder.File("table.csv"), content, {}), std::nullopt);
}

TEST(CsvTest, WritesPointsThatComeBackAsTheyAre) {
    const test::TemporaryFolder folder;
    const std::vector<std::string> texts = {
        "A1",          "tree, old", "\"",       "\"q\"",    "say \"A\" twice",
        "=SUM(A1:A9)", "+3",        "@x",       "-",        "#9",
        "a #b",        "//x",       "a; b | c", " lead",    "end ",
        "\ttab",       "é ß",       "日本",     "\xC2\xA0", "1,5",
        "2.5",         "nan",       "void",     "% 5 ! *"};
    std::mt19937_64 engine(5);
    const auto number = [&engine] {
        const double scale = std::pow(10, static_cast<double>(engine() % 26) - 12);
        return (static_cast<double>(engine() % 2000001) - 1e6) / 3 * scale;
    };
    for (std::size_t first = 0; first < texts.size(); ++first) {
        VectorContent content;
        for (std::size_t i = 0; i < 2 * texts.size(); ++i) {
            content.points.push_back({number(), number(), number()});
            content.pointLabels.Append(texts[(first + i) % texts.size()],
                                       i % 3 == 0 ? "" : texts[(first + 2 * i) % texts.size()]);
        }
        content.points.push_back({1e-300, -1.0 / 3 * 1e-200, 0});
        content.pointLabels.Append("", "");
        Written(folder, WriteCsvPoints, content);
        EXPECT_EQ(CheckCsvPoints(folder.File("table.csv"), content, {}), std::nullopt);

        PointSet points;
        const ImportOutcome outcome =
            ImportPoints(folder.File("table.csv"), {}, BadRecords::Refuse, points);
        ASSERT_FALSE(outcome.failure || outcome.needsChoice) << first;
        ASSERT_EQ(points.count, static_cast<Index>(content.points.size()));
        for (Index i = 1; i <= points.count; ++i) {
            EXPECT_EQ((SpacePoint{points.x[i], points.y[i], points.z[i]}), content.PointAt(i));
            EXPECT_EQ(points.labels.Name(i), content.NameOf(i));
            EXPECT_EQ(points.labels.Code(i), content.CodeOf(i));
        }
    }
}

TEST(CsvTest, TakesRecordsApartWhateverTheirLength) {
    const test::TemporaryFolder folder;
    const std::string longText(700000, 'l');
    CsvRecords records(
        folder.Write("long.csv", "a,\"" + longText + "\"\"\",\n\n\"" + longText + "\"\nb\n"));
    std::vector<std::string_view> fields;
    using Fields = std::vector<std::string_view>;
    const std::string doubled = longText + "\"";
    for (const Fields& expected :
         {Fields{"a", doubled, ""}, Fields{""}, Fields{longText}, Fields{"b"}}) {
        ASSERT_TRUE(records.Next(fields));
        EXPECT_EQ(fields, expected);
    }
    EXPECT_FALSE(records.Next(fields));
    EXPECT_EQ(records.Number(), 5);
}

} // namespace
} // namespace terravo
