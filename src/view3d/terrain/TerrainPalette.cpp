#include "view3d/terrain/TerrainPalette.h"

#include "sheet/SheetTheme.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace terravo {
namespace {

Colour Between(Colour a, Colour b, double part) {
    const auto mix = [part](int from, int to) {
        return static_cast<int>(std::lround(from + part * (to - from)));
    };
    return RGB(mix(RedOf(a), RedOf(b)), mix(GreenOf(a), GreenOf(b)), mix(BlueOf(a), BlueOf(b)));
}

// Equal steps from stop to stop.
Colour Along(std::span<const Colour> stops, double part) {
    const double place = part * static_cast<double>(stops.size() - 1);
    const auto stop = std::min(static_cast<std::size_t>(place), stops.size() - 2);
    return Between(stops[stop], stops[stop + 1], place - static_cast<double>(stop));
}

Colour ColourAt(const TerrainPlan& plan, double part) {
    static constexpr std::array kSlopes{RGB(236, 240, 220), RGB(170, 205, 130), RGB(245, 205, 90),
                                        RGB(225, 110, 50), RGB(140, 30, 40)};
    static constexpr std::array kAspects{RGB(70, 110, 190), RGB(90, 180, 150), RGB(235, 215, 90),
                                         RGB(215, 90, 70), RGB(70, 110, 190)};
    switch (plan.colouring) {
    case TerrainColouring::Height: {
        const SheetTheme* theme = FindTheme(plan.theme);
        return (theme != nullptr ? *theme : SheetThemes().front()).BandColour(part);
    }
    case TerrainColouring::Slope:
        return Along(kSlopes, part);
    case TerrainColouring::Aspect:
        return Along(kAspects, part);
    case TerrainColouring::Plain:
        break;
    }
    return RGB(214, 206, 190);
}

} // namespace

TerrainPalette MakeTerrainPalette(const TerrainPlan& plan) {
    TerrainPalette palette{};
    for (std::size_t i = 0; i < palette.size(); ++i) {
        palette[i] = ColourAt(plan, static_cast<double>(i) / (kTerrainColours - 1));
    }
    return palette;
}

} // namespace terravo
