#include "sheet/FitText.h"

#include <algorithm>
#include <utility>

namespace terravo {
namespace {

constexpr const char* kEllipsis = "\xE2\x80\xA6";

bool BeginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

// The longest beginning that leaves room for the ellipsis behind it. Widths grow with the text.
std::string Cut(const TextMeasure& measure, const std::string& text, double height, bool bold,
                double room) {
    std::vector<std::size_t> ends; // of whole characters
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (BeginsCharacter(text[i])) {
            ends.push_back(i);
        }
    }
    const auto withEllipsis = [&](std::size_t end) {
        const std::size_t letters = text.find_last_not_of(' ', end == 0 ? 0 : end - 1);
        const std::size_t kept = end == 0 || letters == std::string::npos ? 0 : letters + 1;
        return text.substr(0, kept) + kEllipsis;
    };
    const auto beyond = std::partition_point(ends.begin(), ends.end(), [&](std::size_t end) {
        return measure.Width(withEllipsis(end), height, bold) <= room;
    });
    return beyond == ends.begin() ? std::string() : withEllipsis(*std::prev(beyond));
}

} // namespace

FittedText FitText(const TextMeasure& measure, std::string_view text, double height, bool bold,
                   double room, double least) {
    FittedText fitted{std::string(text), height, bold, 0};
    std::replace_if(
        fitted.text.begin(), fitted.text.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    fitted.width = measure.Width(fitted.text, height, bold);
    if (fitted.width > room) {
        fitted.height = height * std::clamp(room / fitted.width * 0.999, least, 1.0);
        fitted.width = measure.Width(fitted.text, fitted.height, bold);
    }
    if (fitted.width > room) {
        fitted.text = Cut(measure, fitted.text, fitted.height, bold, room);
        fitted.width = measure.Width(fitted.text, fitted.height, bold);
    }
    return fitted;
}

void AddText(SheetScene& scene, SheetLayer layer, const FittedText& fitted, SheetPoint place,
             TextAnchor anchor, Colour colour, double angle) {
    if (fitted.text.empty()) {
        return;
    }
    SheetText text;
    text.layer = layer;
    text.text = fitted.text;
    text.place = place;
    text.anchor = anchor;
    text.height = fitted.height;
    text.angle = angle;
    text.colour = colour;
    text.bold = fitted.bold;
    scene.texts.push_back(std::move(text));
}

} // namespace terravo
