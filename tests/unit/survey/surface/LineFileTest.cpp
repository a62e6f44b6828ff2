#include "survey/surface/LineFile.h"

#include "support/LineTexts.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

struct Case {
    const char* name;
    std::string text;
    std::string lines;
    std::string remarks = {}; // one behind the other, without the path
};

class LineFileTest : public testing::Test {
protected:
    // The sentences without the path of the file.
    std::string WithoutPath(std::string text) const {
        for (std::size_t at = 0; (at = text.find(path_, at)) != std::string::npos;) {
            text.erase(at, path_.size());
        }
        return text;
    }

    void Check(const Case& c, LineClosing closing = LineClosing::AsTheyAre) {
        SCOPED_TRACE(c.name);
        const LineReading reading = ReadLineFile(folder_.Write("lines.txt", c.text), closing);
        EXPECT_EQ(WithoutPath(reading.failure), "");
        EXPECT_EQ(test::TextOf(reading.lines), c.lines);
        std::string remarks;
        for (const std::string& remark : reading.remarks) {
            remarks += WithoutPath(remark);
        }
        EXPECT_EQ(remarks, c.remarks);
    }

    test::TemporaryFolder folder_;
    std::string path_ = folder_.File("lines.txt");
};

TEST_F(LineFileTest, ReadsPolylines) {
    const Case cases[] = {
        {"one line", "1 2 3\n4 5 6\n", "1: 1,2,3 4,5,6\n"},
        {"no line end", "1 2 3\n4 5 6", "1: 1,2,3 4,5,6\n"},
        {"without heights", "1 2\n4 5\n", "1: 1,2 4,5\n"},
        {"void heights", "1 2 -\n4 5 nan\n", "1: 1,2 4,5\n"},
        {"blank lines", "\n1 2 3\n4 5 6\n\n\n7 8\n9 10\n", "2: 1,2,3 4,5,6\n6: 7,8 9,10\n"},
        {"names", "Wall 1\n1 2 3\n4 5 6\n\"Kerb 2 3\"\n7 8 9\n9 10 11\n",
         "2 Wall 1: 1,2,3 4,5,6\n5 Kerb 2 3: 7,8,9 9,10,11\n"},
        {"a name waits", "Wall\n\n1 2 3\n4 5 6\n\n7 8 9\n1 1 1\n",
         "3 Wall: 1,2,3 4,5,6\n6: 7,8,9 1,1,1\n"},
        {"marks and END", "> a\n1 2 3\n4 5 6\nEND\n12\n1 2 3\n4 5 7\nEND\nEND\n",
         "2 a: 1,2,3 4,5,6\n6 12: 1,2,3 4,5,7\n"},
        {"comments", "# x\n1 2 3 # here\n! y\n4 5 6\n", "2: 1,2,3 4,5,6\n"},
        {"comma", "1,2,3\n4,5,6\n", "1: 1,2,3 4,5,6\n"},
        {"comma and blank", "1, 2, 3\n4, 5, 6\n", "1: 1,2,3 4,5,6\n"},
        {"tab", "1.5\t2\t3\r\n4\t5\t6\r\n", "1: 1.5,2,3 4,5,6\n"},
        {"semicolon, decimal comma", "1,5;2;3\n4;5,25;6\n", "1: 1.5,2,3 4,5.25,6\n"},
        {"blank, decimal comma", "1,5 2 3\n4 5,25 6\n", "1: 1.5,2,3 4,5.25,6\n"},
        {"header", "E N Z\n1 2 3\n4 5 6\n", "2: 1,2,3 4,5,6\n"},
        {"header in another order", "north,east,z\n1,2,3\n4,5,6\n", "2: 2,1,3 5,4,6\n"},
        {"UTF-16", std::string("\xFF\xFE", 2) + std::string("1\0 \0002\0\n\0003\0 \0004\0", 14),
         "1: 1,2 3,4\n"},
        {"Latin-1",
         "Stra\xDF"
         "e\n1 2\n3 4\n",
         "2 Stra\xC3\x9F"
         "e: 1,2 3,4\n"},
        {"ring", "0 0 1\n9 0 1\n9 9 1\n0 0 1\n", "1 closed: 0,0,1 9,0,1 9,9,1\n"},
        {"there and back is no ring", "0 0 1\n9 0 1\n0 0 1\n", "1: 0,0,1 9,0,1 0,0,1\n"},
        {"end above the beginning", "0 0 1\n9 0 1\n9 9 1\n0 0 2\n", "1: 0,0,1 9,0,1 9,9,1 0,0,2\n"},
        {"repeats", "1 2 3\n1 2 3\n4 5 6\n", "1: 1,2,3 4,5,6\n"},
    };
    for (const Case& c : cases) {
        Check(c);
    }
}

TEST_F(LineFileTest, ReadsTablesWithANameOfTheLine) {
    const std::string lines = "2 A: 1,2,3 4,5,6\n4 B: 7,8,9 9,9,9\n";
    for (const char* header :
         {"line,x,y,z", "Line name,Easting,Northing,Elevation", "Bruchkante,Rechtswert,Hochwert,H",
          "linea,est,nord,quota", "ligne,x,y,altitude", "L\xC3\xADnea,este,norte,cota",
          "Polyline;X;Y;Z"}) {
        Check({header, std::string(header) + "\nA,1,2,3\nA,4,5,6\nB,7,8,9\nB,9,9,9\n", lines});
    }
    const Case cases[] = {
        {"any columns", "x;y;point;z;line\n1,5;2;p1;3;A\n4;5;p2;6;A\n", "2 A: 1.5,2,3 4,5,6\n"},
        {"no height", "line x y\nA 1 2\nA 4 5\n", "2 A: 1,2 4,5\n"},
        {"a line comes back",
         "name,x,y,z\nA,1,2,3\nA,4,5,6\nB,1,1,1\nB,2,2,2\n\nA,7,8,9\nA,8,8,8\n",
         "2 A: 1,2,3 4,5,6\n4 B: 1,1,1 2,2,2\n7 A: 7,8,9 8,8,8\n"},
        {"a bad vertex is of its line",
         "line,x,y,z\nA,1,2,3\nA,4,5,6\nB,1,y,1\nB,2,2,2\nB,3,3,3\nA,7,8,9\nA,8,8,8\n",
         "2 A: 1,2,3 4,5,6\n7 A: 7,8,9 8,8,8\n",
         ", line 4: \"y\" is not a number; the line with this vertex is left out."},
    };
    for (const Case& c : cases) {
        Check(c);
    }
}

TEST_F(LineFileTest, LeavesOutWhatIsNoLine) {
    const std::string good = "\n1 2 3\n4 5 6\n";
    const Case cases[] = {
        {"one vertex", "a\n1 1 1\n" + good, "4: 1,2,3 4,5,6\n",
         ", line 2: the line \"a\" is left out: it has one vertex."},
        {"no length", "1 1 1\n1 1 2\n" + good, "4: 1,2,3 4,5,6\n",
         ", line 1: the line is left out: all its vertices are one above the other."},
        {"a number that is none", "1 1 1\n2 z2 3\n3 3 3\n" + good, "5: 1,2,3 4,5,6\n",
         ", line 2: \"z2\" is not a number; the line with this vertex is left out."},
        {"too many columns", "1 1 1\n2 2 2 9\n" + good, "4: 1,2,3 4,5,6\n",
         ", line 2: 4 fields where a vertex has two or three; the line with this vertex is left "
         "out."},
        {"half a vertex", "1 1 1\n2\n" + good, "4: 1,2,3 4,5,6\n",
         ", line 2: 1 field where a vertex has two or three; the line with this vertex is left "
         "out."},
    };
    for (const Case& c : cases) {
        Check(c);
    }
}

TEST_F(LineFileTest, ClosesRings) {
    const Case cases[] = {
        {"closed", "0 0 1\n9 0 1\n9 9 1\n0 0 1\n", "1 closed: 0,0,1 9,0,1 9,9,1\n"},
        {"open", "0 0\n9 0\n9 9\n", "1 closed: 0,0 9,0 9,9\n",
         ", line 1: the line was open and is closed to a ring."},
        {"another height", "0 0 1\n9 0 1\n9 9 1\n0 0 2\n", "1 closed: 0,0,1 9,0,1 9,9,1\n",
         ", line 1: the line ends where it begins, at another height; that of the beginning is "
         "taken."},
        {"two places", "a\n0 0\n9 0\n0 0\n\n0 0\n9 0\n9 9\n0 0\n", "6 closed: 0,0 9,0 9,9\n",
         ", line 2: the line \"a\" is left out: a ring has three places at least."},
    };
    for (const Case& c : cases) {
        Check(c, LineClosing::Always);
    }
}

TEST_F(LineFileTest, RefusesWhatMakesNoSense) {
    const struct {
        std::string text;
        std::string failure;
    } cases[] = {
        {"", "there are no lines in it"},
        {"just a text\n", "no line of it is a vertex: x y z or x y"},
        {"P1 1 2 3\nP2 4 5 6\n", "no line of it is a vertex: x y z or x y"},
        {"point,x,y,z,code\n1,1,2,3,a\n",
         "the columns are those of points; one named \"line\" would say which line a vertex "
         "belongs to"},
        {"y x z\n1 2 3\n4 5 6\n",
         "y before x has two meanings; name the columns easting and northing"},
        {"1,234 5,678\n1,235 5,679\n",
         "the commas may be decimal signs or divide something else; write decimal points, or "
         "semicolons between the columns"},
        {"Wall\n1 2 3\n4\n7 8 9\n",
         ", line 3: 1 field where a vertex has two or three; the line with this vertex is left "
         "out, and no other line is there"},
        {std::string("\x89PNG\r\n\0\0", 8),
         "this is no text of lines; save them as a text of x y z, or as DXF, GeoPackage, "
         "Shapefile, GeoJSON or KML"},
    };
    for (const auto& [text, failure] : cases) {
        const LineReading reading =
            ReadLineFile(folder_.Write("lines.txt", text), LineClosing::AsTheyAre);
        EXPECT_EQ(WithoutPath(reading.failure),
                  (failure.starts_with(",") ? "" : ": ") + failure + ".")
            << text;
        EXPECT_TRUE(reading.lines.empty());
    }
    const LineReading mixed = ReadLineFile(
        folder_.Write("lines.txt", "1 2 3\n4 5 6\n\n1 2 3\n4 5\n"), LineClosing::AsTheyAre);
    EXPECT_EQ(WithoutPath(mixed.failure),
              ", line 5: a line has heights at some vertices and none at others.");
    EXPECT_TRUE(mixed.lines.empty());
    EXPECT_NE(ReadLineFile(folder_.File("none"), LineClosing::Always).failure, "");
    EXPECT_NE(ReadLineFile(folder_.Path(), LineClosing::Always).failure, "");
}

} // namespace
} // namespace terravo
