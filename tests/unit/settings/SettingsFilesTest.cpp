#include "app/settings/SettingsFiles.h"

#include "support/TemporaryFolder.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

TEST(SettingsFiles, ChangeTheSixthLineAndKeepTheOthers) {
    const test::TemporaryFolder folder;
    const struct {
        const char* before;
        const char* after;
    } cases[] = {{"a\r\n\r\nc \r\nd\r\ne\r\nen\r\n12\r\nmore\r\n",
                  "a\r\n\r\nc \r\nd\r\ne\r\nit\r\n12\r\nmore\r\n"},
                 {"a\nb\nc\nd\ne", "a\r\nb\r\nc\r\nd\r\ne\r\nit\r\n0\r\n"},
                 {"", "\r\n\r\n\r\n\r\n\r\nit\r\n0\r\n"}};
    for (const auto& each : cases) {
        static_cast<void>(folder.Write("sxconf.cff", each.before));
        WriteLanguage(folder.Path(), "it");
        EXPECT_EQ(folder.Read("sxconf.cff"), each.after);
        EXPECT_EQ(LanguageAtNextStart(folder.Path()), "it");
    }
    const test::TemporaryFolder empty;
    WriteLanguage(empty.Path(), "de");
    EXPECT_EQ(LanguageAtNextStart(empty.Path()), "de");
}

TEST(SettingsFiles, SayWhatCannotBeWrittenAndLeaveItAsItWas) {
    const test::TemporaryFolder folder;
    std::filesystem::create_directory(folder.File("sxconf.cff"));
    std::filesystem::create_directory(folder.File("color_menu.cff"));
    EXPECT_THROW(WriteLanguage(folder.Path(), "it"), AppError);
    EXPECT_THROW(WriteColourScheme(folder.Path(), LightScheme()), AppError);
    EXPECT_THROW(WriteLanguage(folder.File("missing/"), "it"), AppError);
    EXPECT_THROW(WriteLanguage("", "it"), AppError);
    const test::TemporaryFolder other;
    const std::string tooLong(std::size_t{2} << 20, 'x');
    static_cast<void>(other.Write("sxconf.cff", tooLong));
    EXPECT_THROW(WriteLanguage(other.Path(), "it"), AppError);
    EXPECT_EQ(other.Read("sxconf.cff"), tooLong);
}

TEST(LanguageChoices, AreTheFilesOfTheFolder) {
    const test::TemporaryFolder folder;
    for (const char* name : {"_p.trl", "it_p.trl", "xx_p.trl", "notes.txt", "color_menu.cff"}) {
        static_cast<void>(folder.Write(name, "text\n"));
    }
    const auto names = [&] {
        std::string all;
        for (const LanguageChoice& choice : LanguageChoices(folder.Path())) {
            all += choice.prefix + "=" + choice.name + " ";
        }
        return all;
    };
    EXPECT_EQ(names(), "=English it=Italiano xx=xx ");
    static_cast<void>(folder.Write("en_p.trl", "text\n"));
    EXPECT_EQ(names(), "en=English it=Italiano xx=xx ");
    EXPECT_TRUE(LanguageChoices(folder.File("missing/")).empty());
}

} // namespace
} // namespace terravo
