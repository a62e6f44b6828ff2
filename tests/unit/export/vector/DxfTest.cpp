#include "export/vector/DxfWriter.h"

#include "export/readback/DxfCheck.h"
#include "export/readback/DxfPlainText.h"
#include "export/vector/DxfText.h"
#include "support/DxfExamples.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace terravo {
namespace {

struct DxfTest : ::testing::Test {
    test::TemporaryFolder folder;
    VectorContent content = test::DrawingContent();
    VectorOptions options;
    std::vector<std::string> remarks;

    std::string Write() { return test::DxfOf(folder, content, options, &remarks); }
    std::string Check(const std::string& dxf) {
        return CheckDxf(folder.Write("read.dxf", dxf), content, options).value_or("");
    }
    // The groups of the entities on one line each, codes and values.
    std::vector<std::string> Entities() {
        std::istringstream lines(Write());
        std::vector<std::string> entities;
        std::string code;
        std::string value;
        bool inside = false;
        while (std::getline(lines, code) && std::getline(lines, value)) {
            inside = value != "ENDSEC" && (inside || value == "ENTITIES");
            if (inside && std::stoi(code) == 0) {
                entities.push_back(value);
            } else if (inside && value != "ENTITIES") {
                entities.back() += " " + std::to_string(std::stoi(code)) + ":" + value;
            }
        }
        return entities;
    }
};

TEST_F(DxfTest, HoldsWhatItIsMadeOf) {
    for (const LengthUnit unit : {LengthUnit::Metre, LengthUnit::Foot, LengthUnit::UsSurveyFoot}) {
        content.unit = unit;
        for (const VectorOptions& choice : test::AllDxfOptions()) {
            options = choice;
            const std::string dxf = Write();
            EXPECT_EQ(Check(dxf), "");
            EXPECT_EQ(dxf, Write()) << "the same content gives the same bytes";
        }
    }
    EXPECT_TRUE(remarks.empty()) << remarks.front();
    for (std::size_t part = 0; part < kVectorPartCount; ++part) {
        content.parts = {static_cast<VectorPart>(part)};
        EXPECT_EQ(Check(Write()), "") << part;
    }
}

TEST_F(DxfTest, WritesEntitiesGroupByGroup) {
    content.parts = {VectorPart::IndexContours, VectorPart::Labels};
    content.labels.resize(1);
    const std::vector<std::string> lines = Entities();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "LWPOLYLINE 5:102 330:1F 100:AcDbEntity 8:CONTOUR_INDEX 100:AcDbPolyline "
                        "90:3 70:0 43:0.0 38:2.5 10:4.0 20:4.0 10:6.125 20:4.0 10:6.0 20:6.0");
    EXPECT_EQ(lines[1],
              "TEXT 5:103 330:1F 100:AcDbEntity 8:CONTOUR_LABELS 100:AcDbText 10:5.0 20:2.0 "
              "30:2.0 40:1.0 1:2.0 50:0.0 7:Standard 72:1 11:5.0 21:2.0 31:2.0 100:AcDbText 73:2");

    content.parts = {VectorPart::Contours, VectorPart::Triangles, VectorPart::Heights};
    options.dxfVersion = DxfVersion::R12;
    options.layerPerLevel = true;
    const std::vector<std::string> old = Entities();
    ASSERT_EQ(old.size(), 6U + 5U + 4U + 5U);
    EXPECT_EQ(old[0], "POLYLINE 8:CONT_2_0 66:1 10:0.0 20:0.0 30:2.0 70:1");
    EXPECT_EQ(old[1], "VERTEX 8:CONT_2_0 10:2.0 20:2.0 30:2.0");
    EXPECT_EQ(old[5], "SEQEND 8:CONT_2_0");
    EXPECT_EQ(old[11], "3DFACE 8:TIN 10:0.0 20:0.0 30:1.0 11:10.0 21:0.0 31:1.0 12:5.0 22:5.0 "
                       "32:3.25 13:5.0 23:5.0 33:3.25");
    EXPECT_EQ(old[15], "TEXT 8:POINT_HEIGHTS 10:0.75 20:-0.5 30:1.0 40:1.0 1:1.00 7:STANDARD");

    content.parts = {VectorPart::Breaklines};
    options.dxfVersion = DxfVersion::R2000;
    const std::vector<std::string> spatial = Entities();
    ASSERT_EQ(spatial.size(), 4U);
    EXPECT_EQ(spatial[0], "POLYLINE 5:101 330:1F 100:AcDbEntity 8:BREAKLINES 100:AcDb3dPolyline "
                          "66:1 10:0.0 20:0.0 30:0.0 70:8");
    EXPECT_EQ(spatial[2], "VERTEX 5:103 330:101 100:AcDbEntity 8:BREAKLINES 100:AcDbVertex "
                          "100:AcDb3dPolylineVertex 10:5.0 20:5.0 30:3.25 70:32");
    EXPECT_EQ(spatial[3], "SEQEND 5:104 330:101 100:AcDbEntity 8:BREAKLINES");
}

TEST_F(DxfTest, ShowsTextsLetterForLetter) {
    struct Case {
        const char* text;
        const char* bytes;
    };
    const Case cases[] = {
        {"A-17 (new)", "A-17 (new)"},
        {"H\xC3\xB6he 5 \xE2\x82\xAC \xC2\xA0", "H\xF6he 5 \x80 \xA0"},
        {"\xD0\x96", "\\U+0416"},
        {"\xF0\x9F\x98\x80", "\\U+D83D\\U+DE00"},
        {"50%", "50%"},
        {"a%%d%", "a%%%%%%d%"},
        {"%%%", "%%%%%%%%%"},
        {"^J", "^ J"},
        {"\\U+0041 \\M+1 \\P", "\\U+005CU+0041 \\U+005CM+1 \\P"},
    };
    for (const Case& c : cases) {
        const DxfText encoded = EncodeDxfText(c.text);
        EXPECT_EQ(encoded.bytes, c.bytes);
        EXPECT_EQ(ShownDxfText(encoded.bytes), c.text);
        EXPECT_EQ(encoded.cutOff, "");
    }
    EXPECT_EQ(EncodeDxfText("a\r\nb\xFF").bytes, "a  b?");
    for (const char* const bytes : {"%%d", "a%%", "^J", "^", "\\U+12", "\\U+00e9", "\\U+D83D",
                                    "\\U+D83D\\U+0041", "\\U+DE00", "\\M+1", "\x81", "\t"}) {
        EXPECT_EQ(ShownDxfText(bytes), std::nullopt) << bytes;
    }
}

TEST_F(DxfTest, CutsTextsThatAreTooLongAndSaysSo) {
    std::string name;
    for (int i = 0; i < 40; ++i) {
        name += "\xD0\x96";
    }
    content.pointLabels = {};
    for (int i = 0; i < 25; ++i) {
        content.pointLabels.Append(name, "");
        content.points.push_back({1.0 * i, 0, 0});
    }
    content.points.resize(25);
    const std::string dxf = Write();
    EXPECT_EQ(Check(dxf), "");
    ASSERT_EQ(remarks.size(), 21U);
    EXPECT_EQ(remarks[0], "The text \"" + name + "\" is too long: it is written without \"" +
                              name.substr(2 * (kMostDxfBytes / 7)) + "\".");
    EXPECT_EQ(remarks[20], "The same holds for 5 more texts.");
    const std::size_t end = dxf.find("\\U+0416\n");
    EXPECT_NE(Check(std::string(dxf).erase(end, 7)), "") << "a shorter text was not cut";
}

TEST_F(DxfTest, NamesLayersAfterLevels) {
    options.layerPerLevel = true;
    content.parts = {VectorPart::Contours};
    content.levels = {
        {-3, "-3"}, {0.25, "0.3"}, {0.3, "0.3"}, {1, "1/,*"}, {1e40, "1" + std::string(40, '0')},
        {2e40, ""}};
    content.contours.clear();
    for (Index level = 1; level <= 6; ++level) {
        content.contours.push_back({0, 4, level, true});
    }
    const std::string dxf = Write();
    EXPECT_EQ(Check(dxf), "");
    for (const char* const name :
         {"CONT_-3", "CONT_0_3", "LEVEL_3", "CONT_1", "LEVEL_5", "LEVEL_6"}) {
        EXPECT_NE(dxf.find("\n  2\n" + std::string(name) + "\n 70\n"), std::string::npos) << name;
    }
    EXPECT_EQ(remarks.size(), 4U);
}

TEST_F(DxfTest, FindsEveryDifference) {
    struct Case {
        const char* from; // the first of these
        const char* to;
        const char* sentence;
        DxfVersion version = DxfVersion::R2000;
    };
    const Case cases[] = {
        {"AC1015", "AC1018", "$ACADVER is AC1018 instead of AC1015"},
        {"ANSI_1252", "UTF-8", "$DWGCODEPAGE"},
        {"$EXTMAX\n 10\n1", "$EXTMAX\n 10\n2", "$EXTMAX is not that of the entities"},
        {"$INSUNITS\n 70\n6", "$INSUNITS\n 70\n1", "$INSUNITS is 1 instead of 6"},
        {"$HANDSEED\n  5\n1", "$HANDSEED\n  5\n", "$HANDSEED is not above all handles"},
        {"VIEW", "VIEWS", "the table VIEW is expected"},
        {"*ACTIVE", "ACTIVE", "the table VPORT has other entries"},
        {"ByLayer", "ByBlock", "the table LTYPE has other entries"},
        {"  5\n15\n", "  5\n14\n", "the handle 14 occurs twice"},
        {"POINT_CODES", "POINT,CODES", "is no name of its own"},
        {"POINT_CODES", "POINTS", "is no name of its own"},
        {"\n 62\n253\n", "\n 62\n256\n", "the look of layer TIN"},
        {"\n370\n9\n", "\n370\n8\n", "the look of layer TIN"},
        {"\n390\nF\n", "\n390\nFF\n", "a handle is referred to that nothing has"},
        {"\n390\nF\n", "\n", "the groups of LAYER are not what they have to be"},
        {"*Paper_Space", "*Paper", "the table BLOCK_RECORD has other entries"},
        {"AcDbBlockEnd", "AcDbBlock", "the groups of ENDBLK"},
        {"LWPOLYLINE\n  5\n10C\n", "LWPOLYLINE\n  5\n1\n", "the handle is not above those before"},
        {"LWPOLYLINE\n  5\n10C\n330\n1F", "LWPOLYLINE\n  5\n10C\n330\n1B", "another owner"},
        {"  8\nCONTOUR_MINOR", "  8\nCONTOUR", "the layer is not in the table"},
        {"  8\nCONTOUR_MINOR", "  8\nCONTOUR_INDEX", "is told to be an index contour"},
        {"  8\nCONTOUR_MINOR", "  8\nTIN", "such an entity is not expected on layer TIN"},
        {" 90\n4\n", " 90\n5\n", "the count of vertices"},
        {" 90\n4\n 70\n1", " 90\n4\n 70\n0", "contour 1 is open"},
        {" 90\n4\n 70\n1", " 90\n4\n 70\n129", "the line has other flags"},
        {" 43\n0.0\n 38", " 43\n0.5\n 38", "the line has a width"},
        {" 38\n2.0", " 38\n2.5", "contour 1: its level is 2.5 instead of 2"},
        {" 10\n6.125", " 10\n6.1250000000000009", "contour 2: vertex 2 lies at"},
        {" 10\n6.125", " 10\n6,125", "a number with a period is expected"},
        {" 10\n6.125", " 10\n6125e-3", "a number with a period is expected"},
        {" 10\n6.125", " 10\nnan", "a number with a period is expected"},
        {" 10\n6.125", " 11\n6.125", "the count of vertices"},
        {"\n 13\n5.0", "\n 13\n0.0", "the fourth corner is not the third"},
        {"3DFACE", "SOLID", "there is an entity SOLID"},
        {"SEQEND", "VERTEX", "group"},
        {" 70\n32\n", " 70\n64\n", "\"32\" is expected instead of \"64\""},
        {"  1\nP%%%%%%d1", "  1\nP%%d1", "letter for letter"},
        {"  1\nH\xF6he", "  1\nH\xC3\xB6he", "the number of point 2 reads"},
        {"\n 50\n0.0\n  7", "\n 50\n90.0\n  7", "is turned by"},
        {"\n 40\n1.0\n  1\n2.0", "\n 40\n2.0\n  1\n2.0", "the text has another height"},
        {"\n 10\n0.75\n 20\n1.0", "\n 10\n9.75\n 20\n1.0", "does not stand beside its point"},
        {"ENDSEC\n  0\nSECTION\n  2\nOBJECTS", "SECTION\n  2\nOBJECTS", "an entity SECTION"},
        {"EOF\n", "EOF", "ends within a line"},
        {"EOF\n", "EOF\n  0\n", "something follows the end"},
        {"  0\nEOF\n", "", "ends within a line"},
        {"VERTEX\n  8\nCONT_2_0", "VERTEX\n  8\nTIN", "on another layer", DxfVersion::R12},
        {"20\n0.0\n 30\n2.0", "20\n0.0\n 30\n2.5", "of another level", DxfVersion::R12},
        {"20\n2.0\n 30\n2.0", "20\n2.0\n 30\n0.0", "contour 1: vertex 1", DxfVersion::R12},
        {"CONT_2_5", "CONT_2_6", "is that of another level", DxfVersion::R12},
        {"POLYLINE\n", "LWPOLYLINE\n", "is not expected", DxfVersion::R12},
    };
    for (const Case& c : cases) {
        options.dxfVersion = c.version;
        options.layerPerLevel = c.version == DxfVersion::R12;
        std::string dxf = Write();
        const std::string from = c.from;
        std::size_t at = dxf.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        // A name stands in the table first; what is changed everywhere still has to differ.
        const bool everywhere = from == "CONT_2_5";
        do {
            dxf.replace(at, from.size(), c.to);
            at = everywhere ? dxf.find(from, at) : std::string::npos;
        } while (at != std::string::npos);
        EXPECT_NE(Check(dxf).find(c.sentence), std::string::npos) << from << ": " << Check(dxf);
    }
}

TEST_F(DxfTest, FindsWhatIsMissing) {
    for (const std::string type : {"LWPOLYLINE", "POLYLINE", "3DFACE", "POINT", "TEXT"}) {
        const std::string dxf = Write();
        const std::size_t begin = dxf.find("  0\n" + type + "\n");
        std::size_t end = dxf.find("\n  0\n", begin) + 1;
        if (type == "POLYLINE") {
            end = dxf.find("\n  0\n", dxf.find("SEQEND", begin)) + 1;
        }
        EXPECT_NE(Check(std::string(dxf).erase(begin, end - begin)), "") << type;
    }
}

TEST_F(DxfTest, HoldsTheExtremes) {
    for (SpacePoint& point : content.points) {
        point.x += 1e15;
        point.y -= 1e15;
        point.z *= 1e9;
    }
    EXPECT_EQ(Check(Write()), "");
    content = {};
    EXPECT_EQ(Check(Write()), "");
    content.parts = test::DrawingContent().parts;
    EXPECT_EQ(Check(Write()), "") << "all parts, nothing in them";

    content.contourVertices = {{0, 0}, {1, 0}, {0, 1}};
    options.layerPerLevel = true;
    for (Index level = 1; level <= 40000; ++level) {
        content.levels.push_back({level * 1e-6, "0.00"});
        content.contours.push_back({0, 3, level, true});
    }
    EXPECT_EQ(Check(Write()), "");
    EXPECT_EQ(remarks.size(), 21U);

    content.contourVertices[1].y = std::numeric_limits<double>::infinity();
    EXPECT_THROW(Write(), AppError);
    EXPECT_THROW(static_cast<void>(CheckDxf(folder.File("none.dxf"), content, options)), AppError);
}

} // namespace
} // namespace terravo
