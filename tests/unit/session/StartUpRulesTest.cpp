#include "app/session/StartUpRules.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <vector>

namespace terravo {
namespace {

TEST(RawCommandLine, QuotesTheFirstArgumentOnce) {
    const auto raw = [](std::vector<std::string> arguments) { return RawCommandLine(arguments); };
    EXPECT_EQ(raw({}), "");
    EXPECT_EQ(raw({"a b.qrw", "c.qrw"}), "\"a b.qrw\"");
    EXPECT_EQ(raw({"\"a.qrw\""}), "\"a.qrw\"");
    EXPECT_EQ(raw({"\""}), "\"\"\"");
    EXPECT_EQ(raw({""}), "\"\"");
}

TEST(AcceptedStartUpFile, PrefersTheCommandLineAndStripsItUnconditionally) {
    const auto accepted = [](const std::optional<std::string>& clipboard, const std::string& raw) {
        return AcceptedStartUpFile(clipboard, raw).value_or("nothing");
    };
    EXPECT_EQ(accepted("a.qrw", ""), "a.qrw") << "it need not exist";
    EXPECT_EQ(accepted("a.qrw", "\"b.QrW\""), "b.QrW");
    EXPECT_EQ(accepted("a.qrw", "\"b.dat\""), "nothing")
        << "the clipboard is replaced all the same";
    EXPECT_EQ(accepted({}, "C:\\b.qrw"), "nothing") << "loses its last character";
    EXPECT_EQ(accepted({}, "\xC3\xA8:\\b.qrw\xC3\xA8"), ":\\b.qrw") << "characters, not bytes";
    for (const char* raw : {"x", "\xC3\xA8", "\"\"", "xy"}) {
        EXPECT_EQ(StartUpCandidate("a.qrw", raw), "") << raw;
    }
    EXPECT_EQ(accepted({}, ""), "nothing");
    EXPECT_EQ(accepted("rw", ""), "nothing");
    EXPECT_EQ(accepted("a.qrw\n", ""), "nothing");
    EXPECT_EQ(accepted("file:///missing/a.qrw", ""), "nothing");
}

TEST(PathFromClipboard, DecodesTheAddressOfAFileOfThisMachine) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Write("a b%\xC3\xA8.qrw", "");
    const std::string address = "file://" + folder.Path() + "a%20b%25%C3%a8.qrw";
    const std::string rest = address.substr(7);
    for (const std::string& text :
         {address, address + "\r\n", address + "\nfile:///b.qrw", "File://LocalHost" + rest}) {
        EXPECT_EQ(PathFromClipboard(text), path) << text;
    }
    EXPECT_EQ(PathFromClipboard("file://" + path), path) << "a lone % stands for itself";
    for (const std::string& text :
         {"file://server" + rest, "file://local" + rest, address + "x", address + "%00.qrw",
          "file://" + folder.Path(), std::string("file://")}) {
        EXPECT_EQ(PathFromClipboard(text), std::nullopt) << text;
    }
    for (const char* text : {"", "/no/such.qrw\r\n", "see file:///a.qrw", "file:/a"}) {
        EXPECT_EQ(PathFromClipboard(text), text);
    }
}

TEST(ParentStateFor, FollowsTheClipboard) {
    EXPECT_EQ(ParentStateFor(std::nullopt), ParentState::Maximised);
    EXPECT_EQ(ParentStateFor("C:\\x\\MY_POINT.Qrw"), ParentState::Minimised);
    for (const char* text : {"", "some words", "a.qrw ", "file:///missing/a.qrw"}) {
        EXPECT_EQ(ParentStateFor(text), ParentState::AsDesigned) << text;
    }
}

} // namespace
} // namespace terravo
