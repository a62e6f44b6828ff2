#include "gis/GisLines.h"

#include "gis/GisExport.h"
#include "support/LineTexts.h"
#include "support/TemporaryFolder.h"
#include "support/VectorExamples.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

std::string Data(const std::string& name) {
    return std::string(TERRAVO_TEST_DATA_DIR) + "/gis/" + name;
}

std::string Collection(const std::string& geometries) {
    return R"({"type":"FeatureCollection","crs":{"type":"name","properties":{"name":)"
           R"("urn:ogc:def:crs:EPSG::25832"}},"features":[)" +
           geometries + "]}";
}

std::string Feature(const std::string& type, const std::string& coordinates,
                    const std::string& properties = "") {
    return R"({"type":"Feature","properties":{)" + properties + R"(},"geometry":{"type":")" + type +
           R"(","coordinates":)" + coordinates + "}}";
}

TEST(GisLines, AreReadFromEveryKindOfFile) {
    const test::TemporaryFolder folder;
    const auto write = [&](const char* name, const std::string& features) {
        return folder.Write(name, Collection(features));
    };
    const struct {
        std::string path;
        std::vector<std::string> layers;
        LineClosing closing;
        std::string lines;
        std::string remark = {};
    } cases[] = {
        {folder.Write("a.txt", "1 2 3\n4 5 6\n"), {}, LineClosing::AsTheyAre, "1: 1,2,3 4,5,6\n"},
        {Data("survey.geojson"),
         {},
         LineClosing::AsTheyAre,
         ": 691000,5335010,103 691010,5335010,102 691005,5335005,104.125\n"
         "closed: 691001,5335001,100 691004,5335001,100 691004,5335004,100.5\n"},
        {Data("drawing.dxf"), {"BREAK"}, LineClosing::AsTheyAre, "closed: 0,0,5 10,0,6 10,10,7\n"},
        {Data("drawing.dxf"), {"FRAME"}, LineClosing::AsTheyAre, ": -5,-5 50,-5\n"},
        {write("flat.geojson", Feature("LineString", "[[1000,2],[1003,4]]", R"("name":"kerb")") +
                                   "," + Feature("LineString", "[[1000,2,0],[1003,4,0]]")),
         {},
         LineClosing::AsTheyAre,
         "kerb: 1000,2 1003,4\n: 1000,2 1003,4\n"},
        {write("ring.geojson", Feature("LineString", "[[1000,2,1],[1003,4,1],[1000,9,1]]") + "," +
                                   Feature("LineString", "[[1000,2,1],[1000,2,1]]")),
         {},
         LineClosing::Always,
         "closed: 1000,2,1 1003,4,1 1000,9,1\n",
         "it has one vertex"},
        {write("field.geojson",
               Feature("LineString", "[[1000,2],[1003,4]]", R"("elevation":12.5)")),
         {},
         LineClosing::AsTheyAre,
         ": 1000,2,12.5 1003,4,12.5\n"},
    };
    for (const auto& [path, layers, closing, lines, remark] : cases) {
        SCOPED_TRACE(path);
        GisPlan plan;
        plan.layers = layers;
        const LineReading reading = ReadSurfaceLines(path, closing, plan);
        EXPECT_EQ(reading.failure, "");
        EXPECT_EQ(test::TextOf(reading.lines), lines);
        ASSERT_EQ(reading.remarks.size(), remark.empty() ? 0U : 2U);
        EXPECT_TRUE(remark.empty() || reading.remarks[1].find(remark) != std::string::npos);
    }
}

TEST(GisLines, ComeBackFromWrittenFiles) {
    const test::TemporaryFolder folder;
    const VectorContent content = test::SmallContent();
    std::vector<std::string> remarks;
    WriteGeoPackage(folder.File("a.gpkg"), content, remarks);
    WriteShapefiles(folder.File("a"), content, remarks);
    for (const std::string& path : {folder.File("a.gpkg"), folder.File("a")}) {
        GisPlan plan;
        plan.layers = {"breaklines"};
        const LineReading reading = ReadSurfaceLines(path, LineClosing::AsTheyAre, plan);
        EXPECT_EQ(reading.failure, "");
        ASSERT_EQ(reading.lines.size(), 1U);
        EXPECT_EQ(reading.lines[0].line.vertices, content.breaklines[0].vertices);
        EXPECT_EQ(reading.lines[0].source, path);
    }
}

TEST(GisLines, SayWhyThereAreNone) {
    const test::TemporaryFolder folder;
    const struct {
        std::string path;
        std::string layer;
        std::string failure;
    } cases[] = {
        {Data("drawing.dxf"), "POINTS", "no lines in the layer \"POINTS\"; lines are in BREAK"},
        {Data("drawing.dxf"), "X", "no layer \"X\"; lines are in BREAK"},
        {Data("heights.tif"), "", "this is a raster, which holds no lines"},
        {folder.Write("p.geojson", Collection(Feature("Point", "[1000,2,3]"))), "",
         "it holds points only, no lines and no polygons"},
        {folder.Write("d.geojson", R"({"type":"LineString","coordinates":[[11,48,3],[12,48,4]]})"),
         "", "is in longitude and latitude (WGS 84); project it to the system of the points"},
        {folder.Write("a.txt", "1 2 3\n4 5 6\n"), "X", "this is a text, which has no layers"},
    };
    for (const auto& [path, layer, failure] : cases) {
        GisPlan plan;
        if (!layer.empty()) {
            plan.layers = {layer};
        }
        const LineReading reading = ReadSurfaceLines(path, LineClosing::AsTheyAre, plan);
        EXPECT_NE(reading.failure.find(failure), std::string::npos) << reading.failure;
        EXPECT_TRUE(reading.lines.empty());
    }
}

} // namespace
} // namespace terravo
