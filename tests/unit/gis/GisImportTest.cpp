#include "gis/GisImport.h"
#include "gis/GisExport.h"
#include "support/TemporaryFolder.h"
#include "support/VectorExamples.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>

namespace terravo {
namespace {

std::string Data(const std::string& name) {
    return std::string(TERRAVO_TEST_DATA_DIR) + "/gis/" + name;
}

std::vector<SpacePoint> PlacesOf(const PointSet& points) {
    std::vector<SpacePoint> places;
    for (Index i = 1; i <= points.count; ++i) {
        places.push_back({points.x[i], points.y[i], points.z[i]});
    }
    return places;
}

std::string NamesOf(const PointSet& points) {
    std::string names;
    for (Index i = 1; i <= points.count; ++i) {
        names += points.labels.HasLabels() ? std::string(points.labels.Name(i)) + "/" +
                                                 std::string(points.labels.Code(i)) + " "
                                           : "- ";
    }
    return names;
}

struct Reading {
    GisOutcome outcome;
    PointSet points;

    [[nodiscard]] std::string Failure() const {
        return outcome.import.failure ? outcome.import.failure->cause : std::string();
    }
};

Reading Read(const std::string& path, const GisPlan& plan = {}) {
    Reading reading;
    reading.outcome = ImportGis(path, plan, reading.points);
    return reading;
}

TEST(GisImport, TellsItsFilesFromTexts) {
    const test::TemporaryFolder folder;
    for (const char* name : {"survey.geojson", "degrees.kml", "drawing.dxf", "heights.tif"}) {
        EXPECT_TRUE(IsGisFile(Data(name))) << name;
    }
    EXPECT_FALSE(IsGisFile(folder.Write("a.txt", "1 2 3\n4 5 6\n")));
    EXPECT_FALSE(IsGisFile(folder.Write("a.dxf", "1,2,3\n4,5,6\n"))) << "a text, whatever its name";
    EXPECT_FALSE(IsGisFile(folder.Write("a.xml", "<LandXML/>")));
    EXPECT_FALSE(IsGisFile(folder.Path())) << "a folder without Shapefiles";
    EXPECT_FALSE(IsGisFile(folder.File("missing.hgt")));
}

TEST(GisImport, ReadsPointsLinesAndRingsEachPlaceOnce) {
    const Reading read = Read(Data("survey.geojson"));
    ASSERT_EQ(read.Failure(), "");
    EXPECT_EQ(PlacesOf(read.points), (std::vector<SpacePoint>{{691000.5, 5335000.25, 100},
                                                              {691010, 5335000, 101},
                                                              {691010, 5335010, 102},
                                                              {691000, 5335010, 103},
                                                              {691005, 5335005, 104.125},
                                                              {691001, 5335001, 100},
                                                              {691004, 5335001, 100},
                                                              {691004, 5335004, 100.5}}));
    EXPECT_EQ(NamesOf(read.points), "P1/tree P2/ P2/ /edge /edge / / / ");
    EXPECT_EQ(read.points.sourceName, "survey.geojson");
    EXPECT_EQ(read.outcome.repeatedVertices, 1);
    EXPECT_EQ(read.outcome.import.report.voidHeights, 1) << "a point without z";
    ASSERT_EQ(read.outcome.lines.size(), 1U);
    EXPECT_EQ(read.outcome.lines[0].vertices.size(), 3U);
    EXPECT_FALSE(read.outcome.lines[0].closed);
    ASSERT_EQ(read.outcome.rings.size(), 1U);
    EXPECT_EQ(read.outcome.rings[0].vertices.size(), 3U);
    EXPECT_TRUE(read.outcome.rings[0].closed);
}

TEST(GisImport, TakesHeightsFromAnAttribute) {
    GisPlan plan;
    plan.heightField = "quota";
    const Reading read = Read(Data("survey.geojson"), plan);
    ASSERT_EQ(read.Failure(), "");
    ASSERT_EQ(read.points.count, 7);
    EXPECT_EQ(read.points.z[1], 101.5);
    EXPECT_EQ(read.points.z[4], 1) << "a point without z has the attribute";
    EXPECT_EQ(read.outcome.import.report.voidHeights, 3) << "of the polygon, whose quota is null";
}

TEST(GisImport, AsksForALayerOfADrawingAndLeavesOutTextsAndPaper) {
    EXPECT_EQ(Read(Data("drawing.dxf")).Failure(),
              "more than one layer has heights; --layer takes one of POINTS (2 points), BREAK (1 "
              "line), TIN (2 rings), FRAME (1 line, no heights)");
    GisPlan plan;
    plan.layers = {"TIN", "BREAK", "POINTS"};
    const Reading read = Read(Data("drawing.dxf"), plan);
    ASSERT_EQ(read.Failure(), "");
    EXPECT_EQ(
        PlacesOf(read.points),
        (std::vector<SpacePoint>{
            {1.5, 2.5, 10.25}, {11.5, 2.5, 11}, {0, 0, 5}, {10, 0, 6}, {10, 10, 7}, {0, 10, 8}}));
    EXPECT_EQ(NamesOf(read.points), "/POINTS /POINTS /BREAK /BREAK /BREAK /TIN ");
    ASSERT_EQ(read.outcome.lines.size(), 1U);
    EXPECT_TRUE(read.outcome.lines[0].closed);
}

TEST(GisImport, ProjectsDegreesOnlyWhenItIsTold) {
    EXPECT_EQ(Read(Data("degrees.kml")).Failure(),
              "the coordinates are longitude and latitude (WGS 84); --to-crs EPSG:32632 projects "
              "them to the zone that they lie in, --to-crs none takes the degrees as they are");
    GisPlan plan;
    plan.toEpsg = 32632;
    const Reading projected = Read(Data("degrees.kml"), plan);
    ASSERT_EQ(projected.Failure(), "");
    // 2 degrees east of the central meridian of 9, after the series of the transverse Mercator.
    EXPECT_NEAR(projected.points.x[1], 649187.87, 0.01);
    EXPECT_NEAR(projected.points.y[1], 5318235.61, 0.01);
    EXPECT_EQ(projected.points.z[2], 600.5);
    EXPECT_EQ(projected.points.labels.Name(1), "S\xC3\xBC"
                                               "d");
    plan = {};
    plan.degreesAsTheyAre = true;
    EXPECT_EQ(Read(Data("degrees.kml"), plan).points.x[1], 11);
    plan.toEpsg = 4326;
    EXPECT_EQ(Read(Data("degrees.kml"), plan).Failure(), "EPSG:4326 is no projected system");
    plan.toEpsg = 25832;
    plan.layers = {"POINTS"};
    EXPECT_NE(Read(Data("drawing.dxf"), plan).Failure().find("--to-crs cannot project"),
              std::string::npos);
}

TEST(GisImport, PutsEastBeforeNorthWhateverTheOrderOfTheAxes) {
    GisPlan plan;
    plan.toEpsg = 3035; // its first axis is north
    const Reading read = Read(Data("degrees.kml"), plan);
    ASSERT_EQ(read.Failure(), "");
    EXPECT_NEAR(read.points.x[1], 4395662, 1);
    EXPECT_NEAR(read.points.y[1], 2765663, 1);
}

TEST(GisImport, ReadsTheMiddlesOfCellsWithData) {
    const Reading all = Read(Data("heights.tif"));
    ASSERT_EQ(all.Failure(), "");
    EXPECT_EQ(all.points.count, 19);
    EXPECT_EQ(all.outcome.import.report.voidHeights, 1);
    EXPECT_EQ(PlacesOf(all.points)[6], (SpacePoint{1025, 1985, 107.5})) << "beside the gap";
    GisPlan plan;
    for (const auto& [step, count] : {std::pair{2, 6}, std::pair{3, 2}, std::pair{100, 1}}) {
        plan.rasterStep = step;
        const GisListing listing = ListGisFile(Data("heights.tif"));
        EXPECT_EQ(CountOf(listing.source, plan), count);
        const Reading read = Read(Data("heights.tif"), plan);
        EXPECT_EQ(read.points.count + read.outcome.import.report.voidHeights, count);
    }
    EXPECT_EQ(Read(Data("picture.tif")).Failure(), "this is a picture, which holds no heights");
}

TEST(GisImport, ReadsBackWhatIsWritten) {
    const test::TemporaryFolder folder;
    VectorContent content = test::SmallContent();
    content.epsg = 31467; // its first axis is north
    std::vector<std::string> remarks;
    WriteGeoPackage(folder.File("a.gpkg"), content, remarks);
    WriteShapefiles(folder.File("a"), content, remarks);
    for (const std::string& path : {folder.File("a.gpkg"), folder.File("a")}) {
        SCOPED_TRACE(path);
        const GisListing listing = ListGisFile(path);
        ASSERT_FALSE(listing.failure);
        std::map<std::string, std::vector<std::int64_t>> counts;
        for (const GisLayer& layer : listing.source.layers) {
            counts[layer.name] = {layer.points, layer.lines, layer.rings, layer.vertices};
            EXPECT_EQ(layer.system.epsg, 31467) << layer.name;
            EXPECT_EQ(layer.hasHeights, layer.name != "bands") << layer.name;
        }
        EXPECT_EQ(counts,
                  (std::map<std::string, std::vector<std::int64_t>>{{"contours", {0, 2, 0, 7}},
                                                                    {"bands", {0, 0, 2, 8}},
                                                                    {"triangles", {0, 0, 4, 12}},
                                                                    {"points", {5, 0, 0, 5}},
                                                                    {"hull", {0, 1, 0, 4}},
                                                                    {"boundary", {0, 1, 0, 3}},
                                                                    {"breaklines", {0, 1, 0, 2}}}));
        GisPlan plan;
        plan.layers = {"points"};
        Reading read = Read(path, plan);
        EXPECT_EQ(PlacesOf(read.points), content.points);
        EXPECT_EQ(NamesOf(read.points), "1/ 2/ 3/ 4/ 5/ ");
        plan.layers = {"boundary"};
        read = Read(path, plan);
        ASSERT_EQ(read.outcome.lines.size(), 1U);
        EXPECT_EQ(read.outcome.lines[0].vertices, content.boundary[0].vertices);
        EXPECT_TRUE(read.outcome.lines[0].closed);
        EXPECT_EQ(read.outcome.lines[0].name, "fence");
        plan.layers = {"triangles"};
        read = Read(path, plan);
        EXPECT_EQ(read.outcome.rings.size(), 4U);
        EXPECT_EQ(read.points.count, 5) << "each corner once";
        plan.layers = {"contours"};
        read = Read(path, plan);
        EXPECT_EQ(PlacesOf(read.points).back(), (SpacePoint{6, 6, 2.5}));
        EXPECT_TRUE(read.outcome.lines.at(0).closed);
        EXPECT_FALSE(read.outcome.lines.at(1).closed);
    }
}

TEST(GisImport, SaysWhyAFileCannotBeRead) {
    const test::TemporaryFolder folder;
    std::ifstream whole(Data("survey.geojson"));
    const std::string bytes{std::istreambuf_iterator<char>(whole), {}};
    const std::pair<std::string, std::string> cases[] = {
        {folder.Write("half.geojson", bytes.substr(0, 500)), "Unterminated"},
        {folder.Write("a.tif", std::string("II*\0\x08\0\0\0", 8)), "TIFF directory"},
        {folder.Write("a.shp", std::string("\0\0\x27\x0A\0\0\0\0", 8) + std::string(92, '\0')),
         ".shx"},
        {folder.Write("none.geojson", R"({"type":"FeatureCollection","features":[]})"),
         "no points, lines or polygons"},
    };
    for (const auto& [path, cause] : cases) {
        const Reading read = Read(path);
        EXPECT_NE(read.Failure().find(cause), std::string::npos) << path << read.Failure();
        EXPECT_EQ(read.Failure().find(folder.Path()), std::string::npos) << read.Failure();
        EXPECT_EQ(read.points.count, 0);
    }
}

TEST(GisImport, EndsWhenItIsStopped) {
    StopToken stop;
    stop.RequestStop();
    PointSet points;
    const GisOutcome outcome = ImportGis(Data("survey.geojson"), GisPlan(), points, stop);
    ASSERT_TRUE(outcome.import.failure);
    EXPECT_TRUE(outcome.import.failure->isStop);
}

} // namespace
} // namespace terravo
