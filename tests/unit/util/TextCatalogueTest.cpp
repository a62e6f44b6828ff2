#include "util/TextCatalogue.h"

#include "app/settings/Language.h"
#include "app/settings/SettingsFiles.h"
#include "app/settings/SupportFolder.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

TEST(TextCatalogue, CompletesAFileOfAnOlderProgramInEnglish) {
    const TextCatalogue texts({"Apri", ""});
    EXPECT_EQ(texts[Text::OpenFile], "Apri");
    EXPECT_EQ(texts[Text::Save], "") << "an empty line is a text";
    EXPECT_EQ(texts[Text::Exit], "E&xit");
    EXPECT_NE(texts[static_cast<Text>(kTextCount - 1)], "");
    const TextCatalogue newer(TextTable(kTextCount + 3, "more"));
    EXPECT_EQ(newer[static_cast<Text>(kTextCount - 1)], "more");
}

TEST(TextCatalogue, HasALineForEachTextInEveryShippedLanguage) {
    const std::string folder = FindSupportFolder({});
    const std::vector<LanguageChoice> languages = LanguageChoices(folder);
    EXPECT_EQ(languages.size(), 5U);
    for (const LanguageChoice& language : languages) {
        const TextTable lines = LoadTextTable(folder + LanguageFileName(language.prefix));
        EXPECT_EQ(lines.size(), kTextCount) << language.name;
        EXPECT_EQ(std::count(lines.begin(), lines.end(), ""), 0) << language.name;
    }
    const TextTable english = LoadTextTable(folder + LanguageFileName("en"));
    EXPECT_EQ(LoadTextTable(folder + LanguageFileName("")), english);
    const TextCatalogue builtIn;
    for (std::size_t i = 0; i < english.size(); ++i) {
        EXPECT_EQ(builtIn[static_cast<Text>(i)], english[i]) << "line " << i + 1;
    }
}

} // namespace
} // namespace terravo
