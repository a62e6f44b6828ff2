#include "app/settings/ColourScheme.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

ColourScheme SchemeOf(const std::string& text) {
    const test::TemporaryFolder folder;
    static_cast<void>(folder.Write("color_menu.cff", text));
    return ReadColourScheme(folder.Path());
}

TEST(ReadColourScheme, ReadsTheListInOrder) {
    EXPECT_EQ(SchemeOf("33,33,33\n2171169,16777148\n16777148\n200\n"), ColourScheme{});
    const ColourScheme read = SchemeOf("1 2 3\r\n255,65280\r\n16711680\r\n17\r\n");
    EXPECT_EQ(read,
              (ColourScheme{RGB(255, 0, 0), RGB(0, 255, 0), RGB(0, 0, 255), 17, RGB(17, 17, 17)}));
}

TEST(ReadColourScheme, KeepsTheDefaultOfWhatIsMissingOrMakesNoSense) {
    for (const char* text :
         {"", "1,2,3\n", "x,2,3\n1,2\n3\n4\n", "1,2,3\n-1,16777216\n1e30\n256\n"}) {
        EXPECT_EQ(SchemeOf(text), ColourScheme{}) << text;
    }
    ColourScheme expected;
    expected.backColour = 5;
    EXPECT_EQ(SchemeOf("1,2,3\n5,grey\n6\n7\n"), expected);
}

TEST(ReadColourScheme, GivesTheUserACopyOfTheShippedFile) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(ReadColourScheme(folder.Path()), ColourScheme{});
    EXPECT_TRUE(folder.Names().empty());
    std::filesystem::create_directory(folder.File("supporto"));
    const std::string shipped = "0,0,0\n1,2\n3\n4\n";
    static_cast<void>(folder.Write("supporto/color_menu.cff", shipped));
    EXPECT_EQ(ReadColourScheme(folder.Path()).backColour, 1U);
    EXPECT_EQ(folder.Read("color_menu.cff"), shipped);
    static_cast<void>(folder.Write("color_menu.cff", "0,0,0\n9,2\n3\n4\n"));
    EXPECT_EQ(ReadColourScheme(folder.Path()).backColour, 9U) << "the user's own file comes first";
    EXPECT_EQ(folder.Read("color_menu.cff"), "0,0,0\n9,2\n3\n4\n");
}

} // namespace
} // namespace terravo
