#include "survey/PointFile.h"

#include "support/FakeServices.h"
#include "support/TemporaryFolder.h"
#include "util/NumberText.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

// All numbers of a text, or the sentence of the failure without the folder.
std::string Numbers(const std::string& text, std::size_t bufferSize = 1 << 20) {
    const test::TemporaryFolder folder;
    NumberListReader reader(folder.Write("p", text), bufferSize);
    std::string numbers;
    while (!reader.AtEnd()) {
        double value = 0;
        if (!reader.Read(value)) {
            break;
        }
        numbers += NumberText::General(value) + ";";
    }
    if (reader.HasFailed()) {
        return numbers + reader.Failure().Sentence().substr(folder.Path().size());
    }
    return numbers;
}

TEST(NumberListReader, ReadsEveryDialectOfTheList) {
    const struct {
        const char* text;
        const char* numbers;
    } cases[] = {
        {"", ""},
        {"1,2,3\n4,5,6\n", "1;2;3;4;5;6;"},
        {"1,2,3\r\n4,5,6\r\n", "1;2;3;4;5;6;"},
        {"1,2,3\r4,5,6", "1;2;3;4;5;6;"},
        {"1 2 3 4 5 6", "1;2;3;4;5;6;"},
        {" 1             2             3 \r\n 4 5 6 \r\n", "1;2;3;4;5;6;"},
        {"1\t2 , 3\n", "1;2;3;"},
        {"1 ,2\t,\t3", "1;2;3;"},
        {"1\n2\n3", "1;2;3;"},
        {"+1.5E+03,-.5,5.", "1500;-.5;5;"},
        {"1,,3\n", "1;0;3;"},
        {"1,  ,3\n", "1;0;3;"},
        {"\n1\n", "0;1;"},
        {"1,2,", "1;2;0;"}, // the last line counts as if it were ended
        {"1,2,\n", "1;2;0;"},
        {"\xEF\xBB\xBF"
         "1,2\n",
         "1;2;"},
        {"\xEF\xBB\xBF", ""},
        {"\xEF\xBB\xBF\n", "0;"},
        {"1e-999,-1e-999,0e999999999999", "0;0;0;"},
        {"1e308", "1E+308;"},
    };
    for (const auto& c : cases) {
        // Buffers as small as a field make every field straddle two readings.
        for (const std::size_t bufferSize : {std::size_t{1} << 20, std::size_t{16}}) {
            EXPECT_EQ(Numbers(c.text, bufferSize), c.numbers) << c.text << " " << bufferSize;
        }
    }
}

TEST(NumberListReader, NamesLineFieldAndCauseOfABadField) {
    EXPECT_EQ(Numbers("1,2,3\n4,x5,6\n"), "1;2;3;4;p, line 2, field 2: \"x5\" is not a number.");
    for (const std::string bad : {"nan", "inf", "-inf", "0x10", "1.2.3", "1;2", "--1", "1e", ".",
                                  "1d5", "\"1\"", "+-1", "1_000", "\xC2\xA0\x31"}) {
        EXPECT_EQ(Numbers("7\n" + bad + ",8\n"),
                  "7;p, line 2, field 1: \"" + bad + "\" is not a number.");
    }
    for (const std::string before : {"1,\n", "\n", "\r\n", "1 \r", "1,2,3\r\n", "1,2, \n"}) {
        const std::string told = Numbers(before + "x,2\n");
        EXPECT_NE(told.find("p, line 2, field 1: \"x\""), std::string::npos) << before << told;
    }
    EXPECT_EQ(Numbers("\t x,2\n"), "p, line 1, field 1: \"x\" is not a number.");
    const test::TemporaryFolder folder;
    NumberListReader empty(folder.Write("p", ""));
    double value = 0;
    EXPECT_FALSE(empty.Read(value));
    EXPECT_EQ(empty.Failure().line, 1);
    EXPECT_EQ(Numbers(std::string("1,\0002\n", 5)),
              "1;p, line 1, field 2: \"?2\" is not a number.");
    EXPECT_EQ(Numbers("1e999"), "p, line 1, field 1: \"1e999\" is too large a number.");
    EXPECT_EQ(Numbers("1,-123456789012345678901234567890x"),
              "1;p, line 1, field 2: \"-12345678901234567890123...\" is not a number.");
}

TEST(NumberListReader, RefusesAFieldLongerThanItsBuffer) {
    const std::string digits(5000, '1');
    EXPECT_EQ(Numbers(digits, 1024),
              "p, line 1, field 1: \"111111111111111111111111...\" is too long for a number.");
    EXPECT_EQ(Numbers("0." + digits), ".111111111111111;");
}

TEST(ReadPoints, ReadsThreeNumbersAPointAndTheirBounds) {
    const test::TemporaryFolder folder;
    for (const std::string text : {"1,2,3\n4,5,6\n", "1 2 3 4 5 6", "1\n2\n3\n4\n5\n6"}) {
        PointSet points;
        EXPECT_FALSE(ReadPoints(folder.Write("two.dat", text), points));
        EXPECT_EQ(points.count, 2);
        EXPECT_EQ(points.sourceName, "two.dat");
        EXPECT_EQ(points.x, (Array1<double>{1, 4}));
        EXPECT_EQ(points.z, (Array1<double>{3, 6}));
        EXPECT_EQ(points.extentX, (Extent{1, 4}));
        EXPECT_EQ(points.extentY, (Extent{2, 5}));
        EXPECT_EQ(points.extentZ, (Extent{3, 6}));
    }
}

TEST(ReadPoints, LeavesTheArraysWhenAFileHoldsNoPoint) {
    const test::TemporaryFolder folder;
    PointSet points;
    EXPECT_FALSE(ReadPoints(folder.Write("a", "1,2,3\n4,5,6\n7,8,9"), points));
    EXPECT_FALSE(ReadPoints(folder.Write("b", ""), points));
    EXPECT_EQ(points.count, 0);
    EXPECT_EQ(points.x.UpperBound(), 3);
    EXPECT_EQ(points.extentX, (Extent{1e38, -1e38}));
    EXPECT_FALSE(ReadPoints(folder.Write("c", "5,5,5\n"), points));
    EXPECT_EQ(points.x, (Array1<double>{5}));
}

TEST(ReadPoints, FailsOnAnIncompletePointAndOnWhatIsNoFile) {
    const test::TemporaryFolder folder;
    const auto failure = [&folder](const std::string& path) {
        PointSet points;
        const auto found = ReadPoints(path, points);
        return found ? found->Sentence().substr(folder.Path().size()) : std::string("none");
    };
    const std::string end = ": the file ends where a number is expected.";
    EXPECT_EQ(failure(folder.Write("p", "1 2 3 4 5 6 7")), "p, line 1" + end);
    EXPECT_EQ(failure(folder.Write("p", "1,2,3\n4,5\n")), "p, line 2" + end);
    EXPECT_EQ(failure(folder.Write("p", "1,2,3\n\n")), "p, line 2" + end) << "trailing empty line";
    EXPECT_EQ(failure(folder.Write("p", "1,2,3\n   ")), "p, line 2" + end);
    EXPECT_EQ(failure(folder.File("missing")), "missing: No such file or directory.");
    EXPECT_EQ(failure(folder.Path()), ": Is a directory.");
}

TEST(LoadPointFile, EndsTheProgramAfterABadFile) {
    const test::TemporaryFolder folder;
    FakeMessages messages;
    FakeClipboard clipboard;
    FakeProgramEnd programEnd;
    FakeLog log;
    const RunState state;
    PointSet points;
    const LoadServices services{messages, clipboard, programEnd, log};
    EXPECT_TRUE(LoadPointFile(folder.Write("good", "1,2,3\n"), points, state, services));
    EXPECT_TRUE(messages.boxes.empty());
    EXPECT_EQ(clipboard.clears + programEnd.ends, 0);

    EXPECT_FALSE(LoadPointFile(folder.Write("bad", "1,2,x\n"), points, state, services));
    ASSERT_EQ(messages.boxes.size(), 1U);
    const std::string reason = folder.File("bad") + ", line 1, field 3: \"x\" is not a number.";
    EXPECT_EQ(messages.boxes[0],
              (FakeMessages::Box{state.texts[Text::BadPointFile] + "\r\n" + reason, "....."}));
    EXPECT_EQ(clipboard.clears, 1);
    EXPECT_EQ(programEnd.ends, 1);
    ASSERT_EQ(log.lines.size(), 1U);
    EXPECT_EQ(log.lines[0], reason);
}

} // namespace
} // namespace terravo
