// What the texts of a sheet are made with.
//
// Data: the texts of a language, the widths of texts, the decimal separator. Method: handed on
// together by whoever makes a sheet of something other than a survey.
#pragma once

#include "sheet/TextMeasure.h"
#include "util/TextCatalogue.h"

namespace terravo {

/// All of it outlives the sheet's making.
struct SheetWords {
    const TextCatalogue& texts;
    const TextMeasure& measure;
    char decimalSeparator = '.';
};

} // namespace terravo
