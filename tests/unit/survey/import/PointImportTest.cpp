#include "survey/import/PointImport.h"

#include "support/TemporaryFolder.h"
#include "survey/PointFile.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace terravo {
namespace {

using namespace std::string_literals;

struct ImportTest : ::testing::Test {
    test::TemporaryFolder folder;
    PointSet points;
    ImportOutcome outcome;

    void Import(const std::string& text, const ImportWish& wish = {},
                BadRecords bad = BadRecords::Refuse) {
        points = {};
        outcome = ImportPoints(folder.Write("p", text), wish, bad, points);
    }
    /// How the file was read and its second point, or why it was not.
    [[nodiscard]] std::string Told() const {
        if (outcome.failure) {
            std::string sentence = outcome.failure->Sentence();
            return sentence.substr(folder.File("p").size());
        }
        std::string text = DescribeImport(outcome, points.count);
        if (points.count >= 2) {
            for (const double value : {points.x[2], points.y[2], points.z[2]}) {
                text += " " + std::to_string(value).substr(0, std::to_string(value).find('.') + 2);
            }
            const auto label = [](std::string_view name) { return " '" + std::string(name) + "'"; };
            if (points.labels.HasLabels()) {
                text += label(points.labels.Name(2)) + label(points.labels.Code(2));
            }
        }
        return text;
    }
};

struct Trap {
    std::string text;
    const char* told;
};

TEST_F(ImportTest, ReadsWhatIsCertain) {
    const Trap traps[] = {
        {"1,2,3\n4,5,6", "xyz; 2 points 4.0 5.0 6.0"},
        {"1;2;3\r\n4;5;6\r\n", "xyz; 2 points 4.0 5.0 6.0"},
        {"1\t2\t3\r4\t5\t6\r", "xyz; 2 points 4.0 5.0 6.0"},
        {"1|2|3\n4|-5.5|6\n", "xyz; 2 points 4.0 -5.5 6.0"},
        {"  1   2  3 \n 4\t5 6\n", "xyz; 2 points 4.0 5.0 6.0"},
        {"1, 2, 3\n4 ,5 ,6\n", "xyz; 2 points 4.0 5.0 6.0"},
        {"+1 +2 +3\n4.5D2 5e-1 6E0\n", "xyz; 2 points 450.0 0.5 6.0"},
        {"1,5;2,5;3,5\n4,5;5,5;6,5\n", "xyz; 2 points 4.5 5.5 6.5"},
        {"1,5 2,5 3,5\n4,5 5,5 6\n", "xyz; 2 points 4.5 5.5 6.0"},
        {"\"1,5\",\"2,5\",\"3,5\"\n\"4,5\",\"5\",\"6\"\n", "xyz; 2 points 4.5 5.0 6.0"},
        {"1 500;2 000 000,5;3\n1 501;2 000 001;4\n", "xyz; 2 points 1501.0 2000001.0 4.0"},
        {"1'000;2'000'000.5;3\n4\xE2\x80\xAF"
         "000;5\xC2\xA0"
         "000;6\n",
         "xyz; 2 points 4000.0 5000.0 6.0"},
        // Commas and points that can only divide thousands.
        {"1,234,567.5\t2,345.5\t3.5\n1,234,568.5\t-2,346.5\t4.5\n",
         "xyz; 2 points 1234568.5 -2346.5 4.5"},
        {"\"1,234,567\",\"2,345.5\",\"3\"\n\"1,234,568\",\"2,346.5\",\"4\"\n",
         "xyz; 2 points 1234568.0 2346.5 4.0"},
        {"1.234.567,5;2.345,5;3,5\n1.234.568;2.346,5;4,5\n", "xyz; 2 points 1234568.0 2346.5 4.5"},
        // Minus signs, blanks and page breaks beyond the usual ones.
        {"1,2,3\n\xE2\x88\x92"
         "4,5,6\n",
         "xyz; 2 points -4.0 5.0 6.0"},
        {"1.5\xC2\xA0"
         "2.5\xE2\x80\xAF"
         "3.5\n\xC2\xA0"
         "4.5\xC2\xA0 5.5 6.5\xC2\xA0\n",
         "xyz; 2 points 4.5 5.5 6.5"},
        {"1.5\xA0"
         "2.5\xA0"
         "3.5\n4.5\xA0"
         "5.5\xA0"
         "6.5\n",
         "xyz; 2 points 4.5 5.5 6.5"},
        {"1\xC2\xA0"
         "234,5 2 3\n4\xC2\xA0"
         "234,5 5 6\n",
         "xyz; 2 points 4234.5 5.0 6.0"},
        {"P\xC2\xA0"
         "1 1 2 3\nP\xC2\xA0"
         "2 4 5 6\n",
         "pxyz; 2 points 4.0 5.0 6.0 'P\xC2\xA0"
         "2' ''"},
        {"\f1 2 3\n\f\n\v4 5 6\n", "xyz; 2 points 4.0 5.0 6.0"},
        // Quotes.
        {"1,2,3,\"a\"\n4,5,6,\"b\r\nc\"\n", "e,n,z,c; 2 points 4.0 5.0 6.0 '' 'b c'"},
        {"\"A\nB\",1,2,3\n\"C\nD\",4,5,6\n", "pxyz; 2 points 4.0 5.0 6.0 'C D' ''"},
        {"\"Point\nno\",\"E\n(m)\",N,Z\n1,1,2,3\n2,4,5,6\n", "pxyz; 2 points 4.0 5.0 6.0 '2' ''"},
        {"1,2,3,oak\n4,5,6,\"\n", "e,n,z,c; 2 points 4.0 5.0 6.0 '' '\"'"},
        {"1,2,3,\"5 inch\n4,5,6,7\" pipe\n", "e,n,z,c; 2 points 4.0 5.0 6.0 '' '7\" pipe'"},
        {"1,2,3,a\n4,5,6,\"lot # five\"\n", "e,n,z,c; 2 points 4.0 5.0 6.0 '' 'lot # five'"},
        {"P1 1 2 3\nP2 4 5 6\n", "pxyz; 2 points 4.0 5.0 6.0 'P2' ''"},
        {"P1 1 2 3 oak tree\nP2 4 5 6 big old oak\n",
         "penzd; 2 points 4.0 5.0 6.0 'P2' 'big old oak'"},
        {"1,2,3,\"a, \"\"b\"\"\"\n4,5,6,\"c, \"\"d\"\"\"\n",
         "e,n,z,c; 2 points 4.0 5.0 6.0 '' 'c, \"d\"'"},
        {"1,2,3,\n4,5,6,\n", "e,n,z,-; 2 points 4.0 5.0 6.0"},
        {"Survey of a pit\nlevel 5\n\n1 2 3\n4 5 6\n", "xyz; 2 points 4.0 5.0 6.0"},
        {"# a\n; b\n// c\n! d\n* e\n% f\n1 2 3 # first\n4 5 6 ! second\n",
         "xyz; 2 points 4.0 5.0 6.0"},
        {"1,2,3\n\n4,5,6\n\n\n\x1A rest", "xyz; 2 points 4.0 5.0 6.0"},
        {"\xEF\xBB\xBF"
         "1,2,3\n4,5,6\n",
         "xyz; 2 points 4.0 5.0 6.0"},
        {"\xFF\xFE"s + "1\0,\0002\0,\0003\0\n\0004\0,\0005\0,\0006\0"s,
         "xyz; 2 points 4.0 5.0 6.0"},
        {"\xFE\xFF"s + "\0001\0,\0002\0,\0003\0\n\0004\0,\0005\0,\0006"s,
         "xyz; 2 points 4.0 5.0 6.0"},
        {"1\0,\0002\0,\0003\0\n\0004\0,\0005\0,\0006\0"s, "xyz; 2 points 4.0 5.0 6.0"},
    };
    for (const Trap& trap : traps) {
        Import(trap.text);
        EXPECT_EQ(Told(), trap.told) << trap.text;
    }
}

TEST_F(ImportTest, GoesByTheNamesOfColumns) {
    const Trap traps[] = {
        {"Northing,Easting,Elevation\n1,2,3\n4,5,6\n", "yxz; 2 points 5.0 4.0 6.0"},
        {"Point,Northing,Easting,Elev,Desc\n1,1,2,3,a\n2,4,5,6,b\n",
         "pnezd; 2 points 5.0 4.0 6.0 '2' 'b'"},
        {"Punto;Est;Nord;Quota;Codice\n1;1,5;2;3;a\n2;4,5;5;6;b\n",
         "penzd; 2 points 4.5 5.0 6.0 '2' 'b'"},
        {"Punktnr;Rechtswert;Hochwert;H\xC3\xB6he\n1;1;2;3\n2;4;5;6\n",
         "pxyz; 2 points 4.0 5.0 6.0 '2' ''"},
        {"Nr.;Hochwert;Rechtswert;H\xF6he;Code\n1;1;2;3;\xE8\n2;4;5;6;\xE9\n",
         "pnezd; 2 points 5.0 4.0 6.0 '2' '\xC3\xA9'"},
        {"Matricule\tX\tY\tAltitude\nP1\t1\t2\t3\nP2\t4\t5\t6\n",
         "pxyz; 2 points 4.0 5.0 6.0 'P2' ''"},
        {"Punto,Este,Norte,Cota\n1,1,2,3\n2,4,5,6\n", "pxyz; 2 points 4.0 5.0 6.0 '2' ''"},
        {"E N Z\n(m) (m) (m)\n1 2 3\n4 5 6\n", "xyz; 2 points 4.0 5.0 6.0"},
        {"X [m],Y [m],H_m\n1,2,3\n4,5,6\n", "xyz; 2 points 4.0 5.0 6.0"},
        {"N X Y Z\n1 1 2 3\n2 4 5 6\n", "pxyz; 2 points 4.0 5.0 6.0 '2' ''"},
        {"PtID,E,N,Z,Code,Time\n1,1,2,3,a,12:00\n2,4,5,6,b,12:01\n",
         "p,e,n,z,c,-; 2 points 4.0 5.0 6.0 '2' 'b'"},
        {"Latitude,Longitude,Altitude\n44.1,11.2,3\n44.5,11.3,6\n", "yxz; 2 points 11.3 44.5 6.0"},
        {"foo,bar,baz\n1,2,3\n4,5,6\n", "xyz; 2 points 4.0 5.0 6.0"},
        {"X(Nord);Y(Est);Quota\n1;2;3\n4;5;6\n", "yxz; 2 points 5.0 4.0 6.0"},
        {"latitude_deg,longitude_deg,height_m\n1,2,3\n4,5,6\n", "yxz; 2 points 5.0 4.0 6.0"},
        {"COORD_N;COORD_E;COORD_Z\n1;2;3\n4;5;6\n", "yxz; 2 points 5.0 4.0 6.0"},
        {"N;E;Z\n1,2,3\n4,5,6\n", "yxz; 2 points 5.0 4.0 6.0"},
        {"# N E Z\n1,2,3\n4,5,6\n", "yxz; 2 points 5.0 4.0 6.0"},
        {"E;N;H\n1;2;12,5\n4;5;13\n7;8;9\n7;9;9\n", "xyz; 4 points 4.0 5.0 13.0"},
        {"P,N,E,Z\nA1,1,2,\nA2,4,5,-\nA3,7,8,9\nA4,1,5,6\n",
         "pyxz; 2 points; 2 without height 5.0 1.0 6.0 'A4' ''"},
    };
    for (const Trap& trap : traps) {
        Import(trap.text);
        EXPECT_EQ(Told(), trap.told) << trap.text;
    }
}

TEST_F(ImportTest, AsksAboutWhatIsNotCertain) {
    const Trap traps[] = {
        {"1,10,20,3\n2,40,50,6\n",
         ": 4 columns hold numbers; the columns may be pxyz, pyxz, e,n,z,c, e,n,z,-, n,e,z,-, "
         "free."},
        {"1,10,20,3,a\n2,40,50,6,\n",
         ": 4 columns hold numbers; the columns may be pnezd, penzd, e,n,z,-,c, n,e,z,-,c."},
        {"10.5 20 3000 7\n40 50 6000 2\n",
         ": 4 columns hold numbers; the columns may be e,n,z,c, e,n,z,-, pxyz, pyxz, n,e,z,-, "
         "free."},
        {"1,5,2,5,3,5\n4,5,5,5,6,5\n",
         ": 6 columns hold numbers; the columns may be e,n,z,c,-,-, e,n,z,-,-,-, p,e,n,z,-,-, "
         "p,n,e,z,-,-, n,e,z,-,-,-, free."},
        {"1 2\n4 5\n", ": 2 columns hold numbers, and a point has three; the columns may be free."},
        {"1\n2\n3\n", ": 1 column holds numbers, and a point has three; the columns may be free."},
        {"1,234\t2,345\t3,456\n4,567\t5,678\t6,789\n",
         ": a comma may be the decimal sign or divide thousands; the columns may be xyz, yxz."},
        {"1,234\t2,345\t3.5\n4,567\t5,678\t6.5\n",
         ": 2 columns hold numbers, and a point has three."},
        {"1,200,300 2,300,400 3,400,500\n",
         ": commas may part numbers or divide thousands; the columns may be xyz, yxz, free."},
        {"1 2 3 4 5 6 7 8 9\n", ": all numbers stand on one line; the columns may be free."},
        {"1,2,3,\"tree\n7,7,77,\"\n4,5,6,\"b\"\n",
         ", line 1: a quoted field goes on over lines that may be records."},
        {"Y X H\n1 2 3\n4 5 6\n", ": the names of the columns do not tell easting, northing and "
                                  "height apart; the columns may be xyz, yxz."},
        {"N,E,Z\nX,Y,Z\n1,2,3\n4,5,6\n", ": the names of the columns do not tell easting, "
                                         "northing and height apart; the columns may be xyz, "
                                         "yxz."},
        {"1,2,red,3\n4,5,red,6\n",
         ": a text stands between the columns of numbers; the columns may be e,n,-,z, e,n,c,z, "
         "n,e,c,z."},
        {"1O.5,3,4\n1,2,3\n4,5,6\n7,8,9\n1,5,7\n", ", line 1, field 1: \"1O.5\" is not a number."},
        {"P1,10,20\nP2,1,2,3\nP3,4,5,6\n", ", line 1: 3 fields where the other records have 4."},
        {"1,2,3\n4,5,6\n7,8,9\n1;2;3\n4;5;6\n",
         ", line 4: 1 field where the other records have 3."},
        {"2\n1,2,3\n4,5,6\n", ", line 1: 1 field where the other records have 3."},
        {"1,2,3\n4,5,6\n7,8,9,0\n", ", line 3: 4 fields where the other records have 3."},
        {"1,2,3\n4,5,6\n7,8\n", ", line 3: 2 fields where the other records have 3."},
        {"1,2,3\n4,5,6\n7,8,9\n1,2,3\n7,O8,9\n", ", line 5, field 2: \"O8\" is not a number."},
        {"1,2,3\n4,5,6\nEND\n", ", line 3: 1 field where the other records have 3."},
        {"P1 1 2 3\nP2 1 2 3\n3 4 5 6\n",
         ", line 3, field 1: \"3\" is a number where the other records have a text."},
    };
    for (const Trap& trap : traps) {
        Import(trap.text);
        EXPECT_EQ(Told(), trap.told) << trap.text;
        EXPECT_TRUE(outcome.needsChoice) << trap.text;
        EXPECT_EQ(points.count, 0);
    }
}

TEST_F(ImportTest, NamesFilesThatAreNoTextOfPoints) {
    const Trap traps[] = {
        {"", "the file holds no record"},
        {"# a\n# b\n", "the file holds no record"},
        {"Dear all,\nhere it is.\n", "no line holds numbers that could be a point"},
        {"  0\nSECTION\n  2\nHEADER\n", "this is a DXF drawing"},
        {"<?xml version=\"1.0\"?>\n<LandXML>", "this is a LandXML file"},
        {"<html>", "this is an XML or HTML file"},
        {"{\"type\": \"FeatureCollection\"}", "this is a GeoJSON"},
        {"\0\0\x27\x0A\0\0\0\0\0\0"s, "this is a shapefile"},
        {"LASF\0\0"s, "this is a LAS or LAZ point cloud"},
        {"PK\x03\x04 xl/workbook.xml", "this is a spreadsheet"},
        {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", "this is a spreadsheet"},
        {"PK\x03\x04 a.txt", "this is an archive"},
        {"\x89PNG\r\n", "this is a picture"},
        {"II*\0\0"s, "this is a picture"},
        {"BM", "no line holds numbers"},
        {"v 1 2 3\nv 4 5 6\nf 1 2 3\n", "this is a mesh"},
        {"%PDF-1.4", "this is a PDF document"},
        {"AC1015\0\0"s, "this is a CAD drawing"},
        {"1,2,3\n\0\0\0"s, "this is a binary file"},
        {"\xFF\xFE\0\0001\0\0\0"s, "this is a UTF-32 text"},
        {"\0\0\0001\0\0\0,\0\0\0002\0\0\0,\0\0\0003"s, "this is a UTF-32 text"},
        {"X,Y,Z\n1,2,3" + std::string(200000, 'x'), "line 2: this line is longer than any record"},
    };
    for (const Trap& trap : traps) {
        Import(trap.text);
        EXPECT_NE(Told().find(trap.told), std::string::npos) << trap.told << " is not " << Told();
    }
    points = {};
    outcome = ImportPoints(folder.Path(), {}, BadRecords::Refuse, points);
    EXPECT_TRUE(outcome.failure) << "a folder";
    outcome = ImportPoints(folder.File("none"), {}, BadRecords::Refuse, points);
    EXPECT_NE(outcome.failure->Sentence().find("No such file"), std::string::npos);
}

// Files that were put together: what follows the second names is not left to the first ones.
TEST_F(ImportTest, EndsAtNamesInAnotherOrder) {
    const std::string other = ", line 4: this line names the columns in another order than before; "
                              "split the file above it.";
    const std::string left = "yxz; 3 points; 1 bad records left out 5.0 4.0 6.0";
    const std::pair<std::string, std::string> files[] = {
        {"N,E,Z\n1,2,3\n4,5,6\nE,N,Z\n7,8,9\n", other},
        {"N,E,Z\n1,2,3\n4,5,6\n# E,N,Z\n7,8,9\n", other},
        {"# N E Z\n1,2,3\n4,5,6\nEasting,Northing,Foo\n7,8,9\n", other},
        {"1,2,3\n4,5,6\n7,8,9\nY;X;H\n7,8,9\n", other},
        {"N,E,Z\n1,2,3\n4,5,6\nNorth [m],East [m],Height\n7,8,9\n", left},
        {"N,E,Z\n1,2,3\n4,5,6\nEnd of the first part\n7,8,9\n", left},
        {"N,E,Z\n1,2,3\n4,5,6\n# height at point E of N\n7,8,9\n", "yxz; 3 points 5.0 4.0 6.0"},
    };
    for (const auto& [text, told] : files) {
        Import(text, {}, BadRecords::Skip);
        EXPECT_EQ(Told(), told) << text;
    }
    // Somebody has said what an order of two meanings is.
    ImportWish wish;
    wish.columns = ParseColumns("xyz");
    Import("Y,X,H\n1,2,3\n4,5,6\nY,X,H\n7,8,9\n", wish, BadRecords::Skip);
    EXPECT_EQ(Told(), "xyz; 3 points; 1 bad records left out 4.0 5.0 6.0");
}

TEST_F(ImportTest, TellsTheLineOnWhichARecordOfManyBegins) {
    Import("1,2,3,\"a\nb\nc\"\n4,5,6,d\n7,8,,\"e\n\"\n7,8,9,f\n7,8,9,f\n");
    EXPECT_EQ(Told(), "e,n,z,c; 4 points; 1 without height 4.0 5.0 6.0 '' 'd'");
    EXPECT_EQ(points.labels.Line(1), 1);
    EXPECT_EQ(points.labels.Line(2), 4);
    EXPECT_EQ(points.labels.Line(3), 7);
    EXPECT_EQ(points.labels.Line(4), 8);
    EXPECT_EQ(outcome.report.voidLines, std::vector<std::int64_t>{5});
}

TEST_F(ImportTest, LeavesOutPointsWithoutHeightAndCountsThem) {
    for (const char* missing :
         {"", "nan", "VOID", "Null", "-", "-9999", "-99999.000", "-32768", "1.70141e+38", " "}) {
        Import("1,2,3\n4,5," + std::string(missing) + "\n7,8,9\n");
        EXPECT_EQ(Told(), "xyz; 2 points; 1 without height 7.0 8.0 9.0") << missing;
        EXPECT_EQ(outcome.report.voidLines, std::vector<std::int64_t>{2});
        EXPECT_EQ(outcome.report.records, 3);
        EXPECT_EQ(points.labels.Line(1), 1);
        EXPECT_EQ(points.labels.Line(2), 3);
    }
    ImportWish wish;
    wish.voids = {"0", "no data"};
    Import("1 2 3\n4 5 0.00\n7 8 9\n", wish);
    EXPECT_EQ(Told(), "xyz; 2 points; 1 without height 7.0 8.0 9.0");
    wish.voids = {"N/A"};
    Import("E,N,Z\n1,2,3\n4,5,N/A\n4,5,N/A\n7,8,9\n", wish);
    EXPECT_EQ(Told(), "xyz; 2 points; 2 without height 7.0 8.0 9.0");
}

TEST_F(ImportTest, ReadsGridsAsThePointsOfTheirNodes) {
    Import("ncols 3\nnrows 2\nxllcorner 100\nyllcorner 200\ncellsize 10\nNODATA_value -1\n"
           "1 2 3\n4 -1 6\n");
    EXPECT_EQ(Told(), "ESRI ASCII grid; 5 points; 1 without height 115.0 215.0 2.0");
    EXPECT_EQ(points.y[5], 205);
    Import("DSAA\n3 2\n100 120\n200 210\n1 6\n1 2 3\n4 1.70141e38 6\n");
    EXPECT_EQ(Told(), "Surfer ASCII grid; 5 points; 1 without height 110.0 200.0 2.0");
    EXPECT_EQ(points.y[5], 210);
    ImportWish wish;
    wish.decimal = ',';
    wish.columns = ParseColumns("xyz");
    Import("ncols 2\nnrows 2\nxllcorner 0,5\nyllcorner 0\ncellsize 1\n1,5 2,5\n3 4\n", wish);
    EXPECT_EQ(Told(), "ESRI ASCII grid; 4 points 2.0 1.5 2.5");
    const Trap wrong[] = {{"DSAA\n3 2\n1 2\n1 2\n1 6\n1 2 3\n4 5\n", "before the heights of all"},
                          {"DSAA\n2 1\n1 2\n1 2\n1 6\n1 2 3\n", "more heights than"},
                          {"ncols 3\nnrows 2\n1 2 3 4 5 6\n", "header of the grid is not complete"},
                          {"ncols 1e9\nnrows 1e9\ncellsize 1\n1 2\n", "more points than"},
                          {"ncols 2\nnrows 1\ncellsize 1\n1 x\n", "\"x\" is not a number"}};
    for (const Trap& trap : wrong) {
        Import(trap.text);
        EXPECT_NE(Told().find(trap.told), std::string::npos) << Told();
    }
}

TEST_F(ImportTest, ObeysWhatSomebodySays) {
    ImportWish wish;
    wish.columns = ParseColumns("pnezd");
    Import("1,10,20,3,oak, old\n2,40,50,6,elm\n3,40,50,x,elm\n", wish, BadRecords::Skip);
    EXPECT_EQ(Told(), "pnezd; 2 points; 1 bad records left out 50.0 40.0 6.0 '2' 'elm'");
    EXPECT_EQ(points.labels.Code(1), "oak, old");
    EXPECT_EQ(outcome.report.bad.at(0).line, 3);
    wish = {};
    wish.columns = ParseColumns("-,e,n,z");
    wish.skip = 2;
    wish.decimal = ',';
    wish.separator = FieldSeparator::Semicolon;
    Import("9;9;9;9\n8;8;8;8\n1;1,5;2;3\n2;4,5;5;6\n", wish);
    EXPECT_EQ(Told(), "-,e,n,z; 2 points 4.5 5.0 6.0");
    EXPECT_EQ(outcome.report.headerLines, 2);
    wish = {};
    wish.freeList = true;
    Import("1\n2\n3 4 5 6\n", wish);
    EXPECT_EQ(Told(), "free list; 2 points 4.0 5.0 6.0");
    for (const char* text : {"", "e,n", "e,n,z,z", "e,n,z,q", "xy", "p,p,e,n,z", "e,n,z,"}) {
        EXPECT_EQ(ParseColumns(text), std::nullopt) << text;
    }
    for (const char* text : {"xyz", "yxz", "pxyz", "pyxz", "pnezd", "penzd", "z,-,-,n,e,c"}) {
        EXPECT_EQ(NameOfColumns(ParseColumns(text).value()), text);
    }
}

TEST_F(ImportTest, ReadsLongFilesAsThePlainReaderDoes) {
    std::string text;
    for (int i = 0; i < 30000; ++i) {
        text += std::to_string(500000 + i * 0.37) + "," + std::to_string(4520000 + i % 211) + "," +
                (i % 1000 == 7 ? "1e-3" : std::to_string(i % 7)) +
                (i % 3 == 0   ? "\r\n"
                 : i % 5 == 0 ? " \n"
                              : "\n");
    }
    Import(text);
    PointSet plain;
    ASSERT_FALSE(ReadPoints(folder.File("p"), plain));
    EXPECT_EQ(points.count, 30000);
    EXPECT_EQ(points.x, plain.x);
    EXPECT_EQ(points.y, plain.y);
    EXPECT_EQ(points.z, plain.z);
    EXPECT_EQ(points.extentX, plain.extentX);
    EXPECT_EQ(points.labels.Line(29999), 29999);
    // A fault far beyond what the inspection has seen.
    Import(text + "1,2\n");
    EXPECT_EQ(Told(), ", line 30001: 2 fields where the other records have 3.");
    Import(text + std::string(3000000, 'x'));
    EXPECT_NE(Told().find("longer than any record"), std::string::npos) << Told();
}

} // namespace
} // namespace terravo
