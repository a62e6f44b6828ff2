#include "export/readback/GeoJsonReadback.h"
#include "export/vector/GeoJsonWriter.h"
#include "support/VectorFiles.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

using test::FileOf;

TEST(GeoJsonTest, WritesOneFeatureALine) {
    VectorContent content = test::RichContent();
    content.breaklines.pop_back();
    content.boundary.pop_back();
    EXPECT_EQ(
        FileOf(WriteGeoJson, content),
        R"({"type":"FeatureCollection","name":"Hill_1",)"
        R"("crs":{"type":"name","properties":{"name":"urn:ogc:def:crs:EPSG::25832"}},)"
        R"("bbox":[10.0,20.0,1.0,14.0,24.0,9.0],"features":[
{"type":"Feature","id":1,"properties":{"kind":"band","min":1.5,"max":2.0},"geometry":)"
        R"({"type":"MultiPolygon","coordinates":[[[[10.0,20.0,1.5],[13.0,20.0,1.5],[10.0,24.0,1.5],)"
        R"([10.0,20.0,1.5]]],[[[13.0,23.0,1.5],[14.0,23.0,1.5],[14.0,24.0,1.5],[13.0,23.0,1.5]]]]}},
{"type":"Feature","id":2,"properties":{"kind":"band","min":2.0,"max":3.0},"geometry":)"
        R"({"type":"Polygon","coordinates":[[[13.0,20.0,2.0],[14.0,20.0,2.0],[14.0,24.0,2.0],)"
        R"([10.0,24.0,2.0],[13.0,20.0,2.0]],[[12.0,22.0,2.0],[12.5,23.0,2.0],[13.0,22.0,2.0],)"
        R"([12.0,22.0,2.0]]]}},
{"type":"Feature","id":3,"properties":{"kind":"triangle"},"geometry":{"type":"Polygon",)"
        R"("coordinates":[[[10.0,20.0,1.5],[14.0,20.0,2.25],[14.0,24.0,3.0],[10.0,20.0,1.5]]]}},
{"type":"Feature","id":4,"properties":{"kind":"triangle"},"geometry":{"type":"Polygon",)"
        R"("coordinates":[[[10.0,20.0,1.5],[14.0,24.0,3.0],[10.0,24.0,2.0],[10.0,20.0,1.5]]]}},
{"type":"Feature","id":5,"properties":{"kind":"contour","elevation":2.0,"index":true,)"
        R"("closed":false},"geometry":{"type":"LineString","coordinates":[[10.0,24.0,2.0],)"
        R"([11.5,21.5,2.0],[13.0,20.0,2.0]]}},
{"type":"Feature","id":6,"properties":{"kind":"contour","elevation":2.5,"index":false,)"
        R"("closed":true},"geometry":{"type":"LineString","coordinates":[[12.0,22.0,2.5],)"
        R"([13.0,22.0,2.5],[12.5,23.0,2.5],[12.0,22.0,2.5]]}},
{"type":"Feature","id":7,"properties":{"kind":"hull","name":"rim","closed":true},"geometry":)"
        R"({"type":"LineString","coordinates":[[10.0,20.0,1.5],[14.0,20.0,2.25],[14.0,24.0,3.0],)"
        R"([10.0,24.0,2.0],[10.0,20.0,1.5]]}},
{"type":"Feature","id":8,"properties":{"kind":"boundary","name":"hole","closed":true},)"
        R"("geometry":{"type":"LineString","coordinates":[[12.0,21.0,1.0],[13.0,21.0,1.0],)"
        R"([13.0,23.0,1.0],[12.0,21.0,1.0]]}},
{"type":"Feature","id":9,"properties":{"kind":"breakline","name":"edge","closed":false},)"
        R"("geometry":{"type":"LineString","coordinates":[[10.0,20.0,1.5],[14.0,24.0,3.0]]}},
{"type":"Feature","id":10,"properties":{"kind":"point","number":"A","code":"tree",)"
        R"("elevation":1.5},"geometry":{"type":"Point","coordinates":[10.0,20.0,1.5]}},
{"type":"Feature","id":11,"properties":{"kind":"point","number":"2","elevation":2.25},)"
        R"("geometry":{"type":"Point","coordinates":[14.0,20.0,2.25]}},
{"type":"Feature","id":12,"properties":{"kind":"point","number":"B <&> \"C\"\\",)"
        R"("elevation":3.0},"geometry":{"type":"Point","coordinates":[14.0,24.0,3.0]}},
{"type":"Feature","id":13,"properties":{"kind":"point","number":"D","code":"wall ü",)"
        R"("elevation":2.0},"geometry":{"type":"Point","coordinates":[10.0,24.0,2.0]}},
{"type":"Feature","id":14,"properties":{"kind":"point","number":"E","elevation":9.0},)"
        R"("geometry":{"type":"Point","coordinates":[14.0,20.0,9.0]}}
]}
)");
}

TEST(GeoJsonTest, TellsWhatReadersTakeTheCoordinatesFor) {
    struct Case {
        std::optional<int> epsg;
        double easting;
        LengthUnit unit;
        const char* member;
        std::vector<const char*> remarks; // a word of each
    };
    const Case cases[] = {
        {25832, 10, LengthUnit::Metre, "EPSG::25832", {"web maps"}},
        {{}, 10, LengthUnit::Metre, nullptr, {"longitude"}},
        {{}, 500000, LengthUnit::Metre, nullptr, {"wrong place"}},
        {4326, 10, LengthUnit::Metre, nullptr, {}},
        {4326, 500000, LengthUnit::Metre, nullptr, {"wrong place"}},
        {2263, 10, LengthUnit::UsSurveyFoot, "EPSG::2263", {"web maps", "feet"}},
    };
    for (const Case& c : cases) {
        VectorContent content = test::RichContent();
        content.epsg = c.epsg;
        content.points.front().x = c.easting;
        content.unit = c.unit;
        std::vector<std::string> remarks;
        const std::string file = FileOf(WriteGeoJson, content, &remarks);
        EXPECT_EQ(file.find("\"crs\"") != std::string::npos, c.member != nullptr);
        EXPECT_TRUE(c.member == nullptr || file.find(c.member) != std::string::npos);
        ASSERT_EQ(remarks.size(), c.remarks.size());
        for (std::size_t i = 0; i < remarks.size(); ++i) {
            EXPECT_NE(remarks[i].find(c.remarks[i]), std::string::npos) << remarks[i];
        }
        EXPECT_FALSE(test::CheckText(CheckGeoJson, file, content));
    }
}

TEST(GeoJsonTest, ReplacesWhatNoTextMayHold) {
    VectorContent content = test::RichContent();
    content.name = "\xC3\x28\n";
    content.pointLabels = PointLabels();
    for (int i = 0; i < 5; ++i) {
        content.pointLabels.Append("\xED\xA0\x80\x1F", "\xFF");
    }
    const std::string file = FileOf(WriteGeoJson, content);
    EXPECT_FALSE(test::CheckText(CheckGeoJson, file, content));
    EXPECT_EQ(file.find('\x1F'), std::string::npos);
    content.parts = VectorParts();
    EXPECT_EQ(FileOf(WriteGeoJson, content).substr(35),
              R"("?( ","crs":{"type":"name","properties":{"name":"urn:ogc:def:crs:EPSG::25832"}},)"
              "\"features\":[\n]}\n");
    EXPECT_FALSE(test::CheckText(CheckGeoJson, FileOf(WriteGeoJson, content), content));
}

// Each of these is JSON with a fault that a program that reads the coordinates alone passes over.
TEST(GeoJsonTest, NoticesFaultsThatAreValidJson) {
    const VectorContent content = test::RichContent();
    const std::string file = FileOf(WriteGeoJson, content);
    const std::pair<const char*, const char*> faults[] = {
        {"\"index\":true", "\"index\":false"},
        {"\"closed\":true", "\"closed\":false"},
        {"\"closed\":false", "\"closed\":true"},
        {"\"kind\":\"hull\"", "\"kind\":\"boundary\""},
        {"\"kind\":\"hull\"", "\"kind\":\"hulk\""},
        {"\"kind\":\"hull\"", "\"fid\":3,\"kind\":\"hull\""},
        {"\"kind\":\"hull\"", "\"kind\":\"hull\",\"kind\":\"hull\""},
        {"\"Polygon\"", "\"MultiPolygon\""},
        {"\"code\":\"tree\"", "\"code\":\"\""},
        {"\"type\":\"Feature\",", ""},
        {"\"id\":4", "\"id\":3"},
        {"[10.0,20.0,1.5]", "[20.0,10.0,1.5]"},
        {"[10.0,20.0,1.5]", "[10.0,20.0]"},
        {"[10.0,20.0,1.5]", "[10.0,20.0,1.5,0]"},
        {"[10.0,20.0,1.5]", "[10.0,20.0,\"1.5\"]"},
        {"[10.0,20.0,1.5]", "[10.0,20.0,null]"},
        {"\"bbox\":[9.0", "\"bbox\":[8.0"},
        {"FeatureCollection", "Features"},
        {"]}\n", "],\"more\":1}\n"},
    };
    for (const auto& [good, bad] : faults) {
        std::string other = file;
        ASSERT_NE(other.rfind(good), std::string::npos) << good;
        other.replace(other.rfind(good), std::string_view(good).size(), bad);
        EXPECT_TRUE(test::CheckText(CheckGeoJson, other, content)) << bad;
    }
}

} // namespace
} // namespace terravo
