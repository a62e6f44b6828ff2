#include "export/readback/LandXmlReadback.h"
#include "export/vector/LandXmlNames.h"
#include "export/vector/LandXmlWriter.h"
#include "support/VectorFiles.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace terravo {
namespace {

using test::FileOf;

TEST(LandXmlTest, WritesNorthingBeforeEastingInTheOrderOfTheSchema) {
    VectorContent content = test::RichContent();
    content.breaklines.pop_back();
    const std::string file = FileOf(WriteLandXml, content);
    EXPECT_EQ(
        file.substr(file.find("<Units>")),
        R"(<Units><Metric linearUnit="meter" )"
        R"(areaUnit="squareMeter" volumeUnit="cubicMeter" temperatureUnit="celsius" pressureUnit="milliBars" )"
        R"(angularUnit="decimal degrees" directionUnit="decimal degrees" elevationUnit="meter"/></Units>
<CoordinateSystem epsgCode="25832" name="EPSG:25832"/>
<Project name="Hill_1"/>
<Application name="Terravo"/>
<CgPoints>
<CgPoint name="A" desc="tree">20.0 10.0 1.5</CgPoint>
<CgPoint name="2">20.0 14.0 2.25</CgPoint>
<CgPoint name="B &lt;&amp;&gt; &quot;C&quot;\">24.0 14.0 3.0</CgPoint>
<CgPoint name="D" desc="wall ü">24.0 10.0 2.0</CgPoint>
<CgPoint name="E">20.0 14.0 9.0</CgPoint>
</CgPoints>
<Surfaces>
<Surface name="Hill_1">
<SourceData>
<Boundaries>
<Boundary bndType="outer" edgeTrim="true" name="rim" desc="Hull"><PntList3D>)"
        R"(20.0 10.0 1.5 20.0 14.0 2.25 24.0 14.0 3.0 24.0 10.0 2.0 20.0 10.0 1.5</PntList3D></Boundary>
<Boundary bndType="void" edgeTrim="true" name="hole" desc="Boundary"><PntList3D>)"
        R"(21.0 12.0 1.0 21.0 13.0 1.0 23.0 13.0 1.0 21.0 12.0 1.0</PntList3D></Boundary>
<Boundary bndType="outer" edgeTrim="true" name="limit" desc="Boundary"><PntList3D>)"
        R"(19.0 9.0 1.0 25.0 9.0 1.0 25.0 15.0 1.0 19.0 15.0 1.0 19.0 9.0 1.0</PntList3D></Boundary>
</Boundaries>
<Breaklines>
<Breakline brkType="standard" name="edge"><PntList3D>20.0 10.0 1.5 24.0 14.0 3.0</PntList3D></Breakline>
</Breaklines>
<Contours>
<Contour elev="2.0"><PntList2D>24.0 10.0 21.5 11.5 20.0 13.0</PntList2D></Contour>
<Contour elev="2.5"><PntList2D>22.0 12.0 22.0 13.0 23.0 12.5 22.0 12.0</PntList2D></Contour>
</Contours>
</SourceData>
<Definition surfType="TIN" area2DSurf="16.0" area3DSurf="16.5830965415415" elevMax="3.0" elevMin="1.5">
<Pnts>
<P id="1">20.0 10.0 1.5</P>
<P id="2">20.0 14.0 2.25</P>
<P id="3">24.0 14.0 3.0</P>
<P id="4">24.0 10.0 2.0</P>
</Pnts>
<Faces>
<F n="0 0 2">1 2 3</F>
<F n="1 0 0">1 3 4</F>
</Faces>
</Definition>
</Surface>
</Surfaces>
</LandXML>
)");
}

TEST(LandXmlTest, GivesEachPointANameOfItsOwn) {
    VectorContent content = test::RichContent();
    content.pointLabels = PointLabels();
    for (const char* name : {"3", "17", "", "17", "17_2"}) {
        content.pointLabels.Append(name, "c\x01");
    }
    content.name = "a/b:\xFF";
    std::vector<std::string> remarks;
    const std::string file = FileOf(WriteLandXml, content, &remarks);
    EXPECT_EQ(test::CheckText(CheckLandXml, file, content).value_or(""), "");
    const PointNames names(content);
    std::vector<std::string> given;
    for (Index i = 1; i <= 5; ++i) {
        given.push_back(names.Of(i));
        EXPECT_NE(file.find("<CgPoint name=\"" + given.back() + "\" desc=\"c \">"),
                  std::string::npos);
    }
    EXPECT_EQ(given, (std::vector<std::string>{"3", "17", "3_2", "17_3", "17_2"}));
    EXPECT_EQ(remarks,
              (std::vector<std::string>{
                  "Point 3 is named \"3_2\" in the LandXML file instead of \"3\".",
                  "Point 4 is named \"17_3\" in the LandXML file instead of \"17\".",
                  "The surface in the LandXML file is named \"a_b__\" instead of \"a/b:?\"."}));
    content.parts = {VectorPart::Points};
    EXPECT_EQ(PointNames(content).Of(4), "4");
    EXPECT_EQ(test::CheckText(CheckLandXml, FileOf(WriteLandXml, content), content), std::nullopt);
}

TEST(LandXmlTest, RefusesWhatTheFormatCannotHold) {
    VectorContent content = test::RichContent();
    content.triangles.clear();
    EXPECT_THROW(FileOf(WriteLandXml, content), AppError);
    content.parts = {VectorPart::Bands, VectorPart::Labels};
    EXPECT_THROW(FileOf(WriteLandXml, content), AppError);
    content.parts = {VectorPart::Breaklines};
    EXPECT_EQ(FileOf(WriteLandXml, content).find("<Definition"), std::string::npos);
}

// Each of these is well-formed and has a fault that a schema would not notice.
TEST(LandXmlTest, NoticesFaultsThatAreValidXml) {
    const VectorContent content = test::RichContent();
    const std::string file = FileOf(WriteLandXml, content);
    const std::pair<const char*, const char*> faults[] = {
        {"<?xml", "<?XML"},
        {"<LandXML", "<!DOCTYPE LandXML [<!ENTITY a \"b\">]><LandXML"},
        {"20.0 10.0 1.5</P>", "10.0 20.0 1.5</P>"},
        {"20.0 10.0 1.5</P>", "20.0 10.0 1.5 4</P>"},
        {"20.0 10.0 1.5</P>", "20,0 10.0 1.5</P>"},
        {"20.0 10.0 1.5</P>", "nan 10.0 1.5</P>"},
        {"<F n=\"1 0 0\">", "<F>"},
        {"<F n=\"1 0 0\">", "<F n=\"1 0\">"},
        {"1 3 4</F>", "1 3 5</F>"},
        {"1 3 4</F>", "1 3 99999999999999999999</F>"},
        {"1 3 4</F>", "3 4 1</F>"},
        {"<P id=\"4\"", "<P id=\"0\""},
        {"<P id=\"4\"", "<P id=\"-4\""},
        {"</Pnts>", "<P id=\"5\">20.0 14.0 9.0</P></Pnts>"},
        {"\"meter\"", "\"foot\""},
        {"LandXML-1.2\"", "LandXML-1.1\""},
        {"<Faces>", "<Faces>text"},
        {"desc=\"tree\"", "desc=\"Tree\""},
        {"name=\"A\"", "name=\"a\""},
        {"<CgPoints>", "<CgPoints><Feature/>"},
        {"<CgPoints>\n", "<CgPoints>\n<CgPoints>\n</CgPoints>\n"},
        {"</F>\n<F", "</F>\n</Faces><Faces>\n<F"},
        {"</F>\n<F", "</F></Faces><Faces>\n<F"},
        {"</F>\n<F", "</F>\n</Faces>\n<F"},
        {"</F>\n<F", "</F>\n<!--\n<F n=\"1 0 0\">1 3 4</F>\n-->\n<!--<F"},
        {"</F>\n<F", "</F>\ntext <F"},
        {"</F>\n<F", "<F n=\"0 0 0\">1 2 3</F></F>\n<F"},
        {"<Pnts>\n", "<Pnts>\n</Pnts>\n<Pnts>\n"},
        {"</Surfaces>", "</Surfaces><Surfaces/><Surveys/>"},
    };
    for (const auto& [good, bad] : faults) {
        std::string other = file;
        ASSERT_NE(other.find(good), std::string::npos) << good;
        other.replace(other.find(good), std::string_view(good).size(), bad);
        EXPECT_TRUE(test::CheckText(CheckLandXml, other, content)) << bad;
    }
}

// The form of the lines does not matter: what is not as usual is left to the library.
TEST(LandXmlTest, ReadsOtherFormsOfTheSame) {
    const VectorContent content = test::RichContent();
    const std::string file = FileOf(WriteLandXml, content);
    const std::size_t body = file.find("<Units>");
    std::string other = file;
    other.erase(std::remove(other.begin() + static_cast<std::ptrdiff_t>(body), other.end(), '\n'),
                other.end());
    for (std::size_t at = body; (at = other.find(".0 ", at)) != std::string::npos; at += 4) {
        other.replace(at, 3, ".0\t\n");
    }
    EXPECT_EQ(test::CheckText(CheckLandXml, other, content).value_or(""), "");
    other.replace(other.rfind(" 4</F>"), 2, " 2");
    EXPECT_TRUE(test::CheckText(CheckLandXml, other, content));
    other = file;
    other.insert(other.find("<F n=\"1"), "<!--\n<F n=\"1 0 0\">1 2 3</F>\n--><![CDATA[]]><?go?>");
    EXPECT_EQ(test::CheckText(CheckLandXml, other, content).value_or(""), "");
}

} // namespace
} // namespace terravo
