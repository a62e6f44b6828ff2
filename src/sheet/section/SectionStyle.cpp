#include "sheet/section/SectionStyle.h"

namespace terravo {

SectionStyle SectionStyleOf(std::string_view theme) {
    const SheetTheme* found = FindTheme(theme);
    SectionStyle style;
    style.theme = found != nullptr ? *found : SheetThemes()[0];
    const SheetTheme& of = style.theme;
    constexpr double kLine = 0.4; // millimetres
    constexpr double kThin = 0.18;
    style.first = {of.index, kLine, {}};
    style.second = {of.number, kLine, {2.4, 1.2}};
    style.datum = {of.number, kThin, {4, 1, 0.6, 1}};
    style.grid = {of.grid, of.thinWidth, {}};
    style.bend = {of.quietText, kThin, {}};
    style.axis = {of.quietText, kThin, {4, 1, 0.6, 1}};
    style.breakline = {of.breakline, 0.3, {}};
    constexpr double kGroundPart = 0.5; // of the heights
    style.ground = of.BandColour(kGroundPart);
    constexpr double kChangePart = 0.4;
    style.cut = of.ChangeColour(-kChangePart);
    style.fill = of.ChangeColour(kChangePart);
    return style;
}

} // namespace terravo
