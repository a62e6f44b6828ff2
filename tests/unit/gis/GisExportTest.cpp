#include "gis/GisExport.h"
#include "gis/GisLibrary.h"
#include "support/TemporaryFolder.h"
#include "support/VectorExamples.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <limits>

namespace terravo {
namespace {

std::string SentenceOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const AppError& error) {
        return error.what();
    }
    return {};
}

std::vector<std::string> SortedNames(const test::TemporaryFolder& folder) {
    std::vector<std::string> names = folder.Names();
    std::sort(names.begin(), names.end());
    return names;
}

TEST(GisLibrary, SaysWhatIsMissingWhereItIsNotFound) {
    const test::TemporaryFolder folder;
    EXPECT_NE(SentenceOf([&] { LoadGisFrom(folder.Path()); }).find("terravo_gis.so"),
              std::string::npos);
    (void)folder.Write("terravo_gis.so", "no library at all");
    const std::string sentence = SentenceOf([&] { LoadGisFrom(folder.Path()); });
    EXPECT_NE(sentence.find("the package libgdal"), std::string::npos) << sentence;
}

TEST(GisExport, TheSameContentHasTheSameBytes) {
    const test::TemporaryFolder folder;
    const VectorContent content = test::SmallContent();
    std::vector<std::string> remarks;
    for (const char* name : {"a", "b"}) {
        WriteGeoPackage(folder.File(std::string(name) + ".gpkg"), content, remarks);
        WriteShapefiles(folder.File(name), content, remarks);
    }
    EXPECT_TRUE(remarks.empty());
    EXPECT_EQ(folder.Read("a.gpkg").substr(0, 15), "SQLite format 3");
    EXPECT_EQ(folder.Read("a.gpkg"), folder.Read("b.gpkg"));
    const std::vector<std::string> known = ShapefilePaths(folder.File("a"));
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.File("a"))) {
        const std::string name = entry.path().filename().string();
        EXPECT_EQ(folder.Read("a/" + name), folder.Read("b/" + name)) << name;
        EXPECT_EQ(std::count(known.begin(), known.end(), entry.path().string()), 1) << name;
        ++files;
    }
    EXPECT_EQ(files, 7 * 4) << "shp, shx, dbf and cpg of seven sets; no prj without a system";
    EXPECT_EQ(SortedNames(folder), (std::vector<std::string>{"a", "a.gpkg", "b", "b.gpkg"}));
}

TEST(GisExport, ReplacesOnlyItsOwnSetsAndOnlyWhenAllAreComplete) {
    const test::TemporaryFolder folder;
    std::filesystem::create_directory(folder.File("shp"));
    for (const char* name : {"points.shp", "points.prj", "points.qix", "roads.shp", "roads.prj"}) {
        (void)folder.Write("shp/" + std::string(name), "old");
    }
    VectorContent content = test::SmallContent();
    content.parts = {VectorPart::Points, VectorPart::Contours};
    std::vector<std::string> remarks;
    content.points.back().z = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(SentenceOf([&] {
                  WriteShapefiles(folder.File("shp"), content, remarks);
              }).find("no finite number"),
              std::string::npos);
    EXPECT_EQ(folder.Read("shp/points.shp"), "old");

    content.points.back().z = 3;
    {
        OutputGroup abandoned;
        WriteShapefiles({folder.File("shp"), &abandoned}, content, remarks);
        EXPECT_EQ(folder.Read("shp/points.shp"), "old");
    }
    EXPECT_EQ(folder.Read("shp/points.qix"), "old") << "nothing has changed";

    WriteShapefiles(folder.File("shp"), content, remarks);
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.File("shp"))) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names,
              (std::vector<std::string>{"contours.cpg", "contours.dbf", "contours.shp",
                                        "contours.shx", "points.cpg", "points.dbf", "points.shp",
                                        "points.shx", "roads.prj", "roads.shp"}));
    EXPECT_EQ(folder.Read("shp/roads.shp"), "old");
    EXPECT_NE(folder.Read("shp/points.shp"), "old");
}

TEST(GisExport, LeavesNothingBehindWhenItRefuses) {
    const test::TemporaryFolder folder;
    VectorContent content = test::SmallContent();
    content.epsg = 999999;
    std::vector<std::string> remarks;
    for (const auto& write :
         {std::function<void()>([&] { WriteGeoPackage(folder.File("a.gpkg"), content, remarks); }),
          std::function<void()>([&] { WriteShapefiles(folder.File("a"), content, remarks); })}) {
        const std::string sentence = SentenceOf(write);
        EXPECT_NE(sentence.find(": no coordinate system has the code EPSG:999999."),
                  std::string::npos)
            << sentence;
        EXPECT_EQ(sentence.find("tmp:"), std::string::npos) << "the name that the user gave";
        EXPECT_TRUE(folder.Names().empty());
    }
    EXPECT_NE(
        SentenceOf([&] { WriteGeoPackage("/dev/null", content, remarks); }).find("plain file"),
        std::string::npos);
    (void)folder.Write("file", "no folder");
    EXPECT_NE(SentenceOf([&] {
                  WriteShapefiles(folder.File("file"), content, remarks);
              }).find("Not a directory"),
              std::string::npos);
    EXPECT_EQ(folder.Read("file"), "no folder");
}

TEST(GisExport, RefusesShapesBeyondTheLimitBeforeItWrites) {
    const test::TemporaryFolder folder;
    const VectorContent content = test::SmallContent();
    std::vector<std::string> remarks;
    const auto write = [&](std::int64_t most) {
        return SentenceOf(
            [&] { LoadGis().writeShapefiles(folder.Path(), content, most, remarks); });
    };
    EXPECT_NE(write(150).find("please write a GeoPackage"), std::string::npos);
    EXPECT_TRUE(folder.Names().empty());
    EXPECT_EQ(write(100000), "");
    EXPECT_EQ(std::filesystem::file_size(folder.File("points.shp")),
              100U + content.points.size() * 36);
}

TEST(GisExport, TellsOfNamesThatTheColumnsCannotHold) {
    const test::TemporaryFolder folder;
    VectorContent content = test::SmallContent();
    PointLabels labels;
    labels.Append("torn \xFF", "");
    for (std::size_t i = 1; i < content.points.size(); ++i) {
        // 253 letters and one of two bytes
        labels.Append(i == 1 ? std::string(253, 'n') + "\xC3\xA9" : "", "code");
    }
    content.pointLabels = labels;
    std::vector<std::string> remarks;
    WriteGeoPackage(folder.File("a.gpkg"), content, remarks);
    EXPECT_EQ(remarks,
              std::vector<std::string>{"A text that no table can hold is written as \"torn ?\"."});
    remarks.clear();
    WriteShapefiles(folder.File("a"), content, remarks);
    ASSERT_EQ(remarks.size(), 2U);
    EXPECT_EQ(remarks[1].substr(remarks[1].find("too long")),
              "too long: it is written without \"\xC3\xA9\".");
    EXPECT_LT(remarks[1].size(), 200U) << "not with all of its letters";
}

} // namespace
} // namespace terravo
