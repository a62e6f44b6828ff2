// Texts of a fixed width a letter, so that layouts need no font.
#pragma once

#include "sheet/TextMeasure.h"

namespace terravo::test {

struct FakeTextMeasure : TextMeasure {
    [[nodiscard]] double Width(const std::string& text, double height, bool bold) const override {
        const double letter = bold ? 0.85 : 0.8; // of the height
        return static_cast<double>(text.size()) * letter * height;
    }
};

} // namespace terravo::test
