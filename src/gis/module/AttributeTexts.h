// Texts on their way into the columns of a table.
//
// Data: how long a text may be, and what had to be changed so far. Method: what no format holds is
// replaced, what is too long is cut between characters; the first few changes are told one by one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

class AttributeTexts {
public:
    /// @param mostBytes  that a text may have in UTF-8; 0 where there is no limit.
    explicit AttributeTexts(std::size_t mostBytes = 0) : mostBytes_(mostBytes) {}

    /// The text as the column can hold it.
    std::string Fit(std::string_view text);

    /// Sentences on what was changed.
    void TellIn(std::vector<std::string>& remarks) const;

private:
    std::size_t mostBytes_;
    std::size_t changed_ = 0;
    std::vector<std::string> sentences_;
};

} // namespace terravo
