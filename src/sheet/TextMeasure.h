// How wide a text is on the paper: what the layout of a sheet has to know of fonts.
//
// Data: the fonts of whoever draws. Method: an interface, so that the layout needs no font and a
// test none of the machine's.
#pragma once

#include <string>

namespace terravo {

class TextMeasure {
public:
    virtual ~TextMeasure() = default;

    /// Width in millimetres of one line whose capital letters are that high.
    /// @param text    UTF-8.
    /// @param height  of a capital letter, millimetres.
    [[nodiscard]] virtual double Width(const std::string& text, double height, bool bold) const = 0;
};

} // namespace terravo
