#include "gis/module/AttributeTexts.h"

#include "export/vector/CleanText.h"

namespace terravo {
namespace {

constexpr std::size_t kMostSentences = 10;

bool IsInsideCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xc0U) == 0x80;
}

} // namespace

std::string AttributeTexts::Fit(std::string_view text) {
    std::string fitted = CleanText(text);
    if (mostBytes_ > 0 && fitted.size() > mostBytes_) {
        std::size_t end = mostBytes_;
        while (end > 0 && IsInsideCharacter(fitted[end])) {
            --end;
        }
        fitted.resize(end);
    }
    if (fitted != text && ++changed_ <= kMostSentences) {
        const std::string clean = CleanText(text);
        sentences_.push_back(
            clean == fitted ? "A text that no table can hold is written as " + Quoted(fitted) + "."
                            : "The text " + Quoted(clean) + " is too long: it is written without " +
                                  Quoted(std::string_view(clean).substr(fitted.size())) + ".");
    }
    return fitted;
}

void AttributeTexts::TellIn(std::vector<std::string>& remarks) const {
    remarks.insert(remarks.end(), sentences_.begin(), sentences_.end());
    if (changed_ > kMostSentences) {
        remarks.push_back(std::to_string(changed_ - kMostSentences) +
                          " more names and codes are not written letter for letter.");
    }
}

} // namespace terravo
