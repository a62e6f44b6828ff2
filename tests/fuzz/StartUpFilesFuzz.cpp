// The files that the program reads at its start: settings, language, colours.
//
// Data: the input is each of the files in turn. Method: whatever they hold, the start goes on with
// values in their ranges, and the language prefix leads to a file of that name or to none.
#include "app/settings/ColourScheme.h"
#include "app/settings/Configuration.h"
#include "app/settings/Language.h"
#include "fuzz/FuzzInput.h"
#include "support/TemporaryFolder.h"

#include <algorithm>

namespace terravo {
namespace {

using fuzz::Require;

std::string LineOf(const std::string& text, std::size_t number) {
    const std::vector<std::string> lines = fuzz::SplitAt(text, '\n');
    std::string line = number <= lines.size() ? lines[number - 1] : std::string();
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return line;
}

void CheckTexts(const std::vector<std::string>& texts, const std::string& file) {
    const auto lineEnds = static_cast<std::size_t>(std::count(file.begin(), file.end(), '\n'));
    const bool hasRest = !file.empty() && file.back() != '\n';
    Require(texts.size() == lineEnds + (hasRest ? 1 : 0), "every line is a text");
    for (std::size_t i = 1; i < texts.size(); ++i) {
        Require(texts[i] == LineOf(file, i + 1), "a text is its line");
    }
}

void CheckScheme(const ColourScheme& scheme) {
    for (const Colour colour : {scheme.backColour, scheme.foreColour, scheme.accentColour}) {
        Require(colour <= 0xFFFFFF, "a colour has three channels");
    }
    Require(scheme.greyLevel >= 0 && scheme.greyLevel <= 255, "a grey level has eight bits");
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static const test::TemporaryFolder folder;
    const std::string text = fuzz::TextOf(data, size);

    const StartUpSettings settings = ReadStartUpSettings(folder.Write("sxconf.cff", text));
    Require(settings.language == LineOf(text, 6), "the sixth line is the language");
    const std::string languageFile = folder.Path() + LanguageFileName(settings.language);
    const std::vector<std::string> texts = LoadTextTable(languageFile);
    Require(texts.empty() || languageFile.find('\0') == std::string::npos,
            "no other file stands in for one that cannot exist");

    CheckTexts(LoadTextTable(folder.Write("xx_p.trl", text)), text);

    static_cast<void>(folder.Write("color_menu.cff", text));
    CheckScheme(ReadColourScheme(folder.Path()));
    return 0;
}
