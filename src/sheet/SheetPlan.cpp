#include "sheet/SheetPlan.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace terravo {
namespace {

std::string InLowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

std::optional<double> Number(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value)
                                                                    : std::nullopt;
}

} // namespace

std::span<const PaperSize> PaperSizes() {
    static const std::array<PaperSize, 7> kSizes{{{"A4", 210, 297},
                                                  {"A3", 297, 420},
                                                  {"A2", 420, 594},
                                                  {"A1", 594, 841},
                                                  {"A0", 841, 1189},
                                                  {"Letter", 215.9, 279.4},
                                                  {"Tabloid", 279.4, 431.8}}};
    return kSizes;
}

std::optional<PaperSize> ParsePaperSize(std::string_view text) {
    constexpr double kLeast = 50;
    constexpr double kMost = 5000;
    const std::string wanted = InLowerCase(text);
    for (const PaperSize& size : PaperSizes()) {
        if (InLowerCase(size.name) == wanted) {
            return size;
        }
    }
    const std::size_t cross = wanted.find('x');
    if (cross == std::string::npos) {
        return std::nullopt;
    }
    const std::optional<double> a = Number(std::string_view(wanted).substr(0, cross));
    const std::optional<double> b = Number(std::string_view(wanted).substr(cross + 1));
    if (!a || !b || !(std::min(*a, *b) >= kLeast) || !(std::max(*a, *b) <= kMost)) {
        return std::nullopt;
    }
    return PaperSize{wanted, std::min(*a, *b), std::max(*a, *b)};
}

SheetLayers SheetPlan::DefaultLayers() {
    SheetLayers layers;
    layers.set(); // all but these
    for (const SheetLayer layer :
         {SheetLayer::Bands, SheetLayer::Triangles, SheetLayer::Points, SheetLayer::Numbers,
          SheetLayer::Codes, SheetLayer::SpotHeights}) {
        layers.reset(static_cast<std::size_t>(layer));
    }
    return layers;
}

std::span<const SheetLayer> SwitchableLayers() {
    static constexpr std::array kLayers{
        SheetLayer::Contours,    SheetLayer::Bands,     SheetLayer::Triangles, SheetLayer::Hull,
        SheetLayer::Breaklines,  SheetLayer::Points,    SheetLayer::Numbers,   SheetLayer::Codes,
        SheetLayer::SpotHeights, SheetLayer::Grid,      SheetLayer::Legend,    SheetLayer::ScaleBar,
        SheetLayer::NorthArrow,  SheetLayer::TitleBlock};
    return kLayers;
}

std::optional<SheetLayers> ParseLayers(std::string_view list) {
    SheetLayers layers;
    layers.set();
    for (const SheetLayer layer : SwitchableLayers()) {
        layers.reset(static_cast<std::size_t>(layer));
    }
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(','), list.size());
        const std::string name = InLowerCase(list.substr(0, end));
        const auto found = std::find_if(SwitchableLayers().begin(), SwitchableLayers().end(),
                                        [&](SheetLayer layer) { return name == NameOf(layer); });
        if (found == SwitchableLayers().end()) {
            return std::nullopt;
        }
        layers.set(static_cast<std::size_t>(*found));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return layers;
}

double UsualScale(double atLeast) {
    double power = std::pow(10, std::floor(std::log10(atLeast)));
    for (;; power *= 10) {
        for (const double step : {1.0, 2.0, 2.5, 5.0}) {
            if (step * power >= atLeast) {
                return step * power;
            }
        }
    }
}

} // namespace terravo
