#include "sheet/SheetTheme.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

struct Stop {
    double part;
    int red;
    int green;
    int blue;
};

// From lowland green over yellow and brown to the grey of the heights.
constexpr std::array<Stop, 6> kGround{{{0.0, 122, 178, 128},
                                       {0.25, 190, 214, 150},
                                       {0.45, 240, 231, 172},
                                       {0.65, 222, 188, 132},
                                       {0.85, 190, 148, 112},
                                       {1.0, 228, 222, 216}}};

// From where ground was taken away to where it was added; each side has its hue from the first
// step.
constexpr std::array<Stop, 5> kChange{{{-1.0, 196, 84, 44},
                                       {-0.1, 250, 222, 200},
                                       {0.0, 252, 252, 250},
                                       {0.1, 208, 228, 244},
                                       {1.0, 56, 118, 180}}};

// Dark enough to be read on white.
constexpr std::array<Stop, 5> kLineHeights{{{0.0, 32, 92, 160},
                                            {0.3, 24, 128, 112},
                                            {0.55, 120, 130, 20},
                                            {0.8, 186, 96, 16},
                                            {1.0, 170, 28, 40}}};

Colour Blend(std::span<const Stop> stops, double part, double lightness) {
    const double at = std::clamp(part, stops.front().part, stops.back().part);
    std::size_t i = 1;
    while (i + 1 < stops.size() && stops[i].part < at) {
        ++i;
    }
    const Stop& a = stops[i - 1];
    const Stop& b = stops[i];
    const double t = (at - a.part) / (b.part - a.part);
    const auto mix = [&](int from, int to) {
        return static_cast<int>(std::lround((from + t * (to - from)) * lightness));
    };
    return RGB(mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue));
}

SheetTheme Brown() {
    SheetTheme theme;
    theme.name = "brown";
    theme.text = RGB(30, 30, 30);
    theme.contour = RGB(168, 102, 58);
    theme.index = RGB(140, 74, 34);
    theme.grid = RGB(70, 130, 160);
    theme.triangle = RGB(190, 190, 190);
    theme.hull = RGB(90, 90, 90);
    theme.point = RGB(30, 30, 30);
    theme.number = RGB(20, 80, 140);
    theme.code = RGB(30, 110, 60);
    return theme;
}

SheetTheme ByHeight() {
    SheetTheme theme = Brown();
    theme.name = "height";
    theme.byHeight = true;
    theme.contourWidth = 0.2;
    return theme;
}

SheetTheme Black() {
    SheetTheme theme;
    theme.name = "black";
    theme.grid = kBlack;
    theme.triangle = RGB(150, 150, 150);
    theme.quietText = kBlack;
    theme.greyBands = true;
    return theme;
}

SheetTheme Dark() {
    SheetTheme theme;
    theme.name = "dark";
    theme.paper = RGB(22, 25, 28);
    theme.text = RGB(222, 226, 228);
    theme.contour = RGB(196, 150, 104);
    theme.index = RGB(232, 186, 136);
    theme.grid = RGB(86, 140, 160);
    theme.triangle = RGB(74, 82, 88);
    theme.hull = RGB(170, 176, 180);
    theme.breakline = RGB(240, 120, 150);
    theme.point = RGB(232, 236, 238);
    theme.quietText = RGB(150, 156, 160);
    theme.number = RGB(126, 186, 236);
    theme.code = RGB(140, 208, 150);
    theme.bandLightness = 0.42;
    return theme;
}

} // namespace

SheetInk SheetTheme::ContourInk(bool isIndex, double partOfHeight) const {
    const Colour plain = isIndex ? index : contour;
    return {byHeight ? Blend(kLineHeights, partOfHeight, 1) : plain,
            isIndex ? indexWidth : contourWidth,
            {}};
}

Colour SheetTheme::BandColour(double partOfHeight) const {
    if (greyBands) {
        constexpr double kDarkest = 0.78;
        const auto grey = static_cast<int>(
            std::lround(255 * (1 - (1 - kDarkest) * std::clamp(partOfHeight, 0.0, 1.0))));
        return RGB(grey, grey, grey);
    }
    return Blend(kGround, partOfHeight, bandLightness);
}

Colour SheetTheme::ChangeColour(double part) const {
    if (greyBands) {
        constexpr double kMiddle = 210;
        const auto grey = static_cast<int>(std::lround(kMiddle + 45 * std::clamp(part, -1.0, 1.0)));
        return RGB(grey, grey, grey);
    }
    if (bandLightness < 1) { // out of the dark
        const Stop& most = part < 0 ? kChange.front() : kChange.back();
        const std::array stops{Stop{0, RedOf(paper) + 20, GreenOf(paper) + 20, BlueOf(paper) + 20},
                               Stop{1, most.red, most.green, most.blue}};
        return Blend(stops, 0.75 * std::fabs(part), 1);
    }
    return Blend(kChange, part, 1);
}

std::span<const SheetTheme> SheetThemes() {
    static const std::array kThemes{Brown(), ByHeight(), Black(), Dark()};
    return kThemes;
}

const SheetTheme* FindTheme(std::string_view name) {
    const auto themes = SheetThemes();
    const auto found = std::find_if(themes.begin(), themes.end(),
                                    [&](const SheetTheme& theme) { return theme.name == name; });
    return found == themes.end() ? nullptr : &*found;
}

} // namespace terravo
