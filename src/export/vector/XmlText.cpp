#include "export/vector/XmlText.h"

#include "export/vector/VectorNumber.h"

#include <cmath>

namespace terravo::XmlText {
namespace {

using VectorNumber::AppendReal;

void AppendEscaped(std::string& out, std::string_view text) {
    if (text.find_first_of("&<>\"") == std::string_view::npos) {
        out += text;
        return;
    }
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
}

} // namespace

void AppendAttribute(std::string& out, std::string_view name, std::string_view value) {
    (out += ' ').append(name) += "=\"";
    AppendEscaped(out, value);
    out += '"';
}

void AppendAttribute(std::string& out, std::string_view name, double value) {
    if (std::isfinite(value)) {
        (out += ' ').append(name) += "=\"";
        AppendReal(out, value);
        out += '"';
    }
}

void AppendPlace(std::string& out, double easting, double northing) {
    AppendReal(out, northing);
    out += ' ';
    AppendReal(out, easting);
}

void AppendPlace(std::string& out, const SpacePoint& p) {
    AppendPlace(out, p.x, p.y);
    out += ' ';
    AppendReal(out, p.z);
}

} // namespace terravo::XmlText
