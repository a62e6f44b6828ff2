#include "export/vector/CsvField.h"

namespace terravo {
namespace {

// Marks that open a comment for some readers count wherever they may.
bool NeedsQuotes(std::string_view text) {
    return !text.empty() && (text.find_first_of("\",;|\t\r\n\f\v#!*%/") != std::string_view::npos ||
                             text.front() == ' ' || text.back() == ' ');
}

} // namespace

void AppendCsvField(std::string& out, std::string_view text) {
    if (!NeedsQuotes(text)) {
        out += text;
        return;
    }
    out += '"';
    for (const char c : text) {
        out += c;
        if (c == '"') {
            out += c;
        }
    }
    out += '"';
}

} // namespace terravo
