#include "plot2d/ColourScale.h"

#include "util/AppError.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <string>

namespace terravo::ColourScale {
namespace {

constexpr int kSegmentSteps = 256;

constexpr std::array<Colour, 16> kDisplayColours = {
    RGB(0, 0, 0),       RGB(0, 0, 128),   RGB(0, 128, 0),   RGB(0, 128, 128),
    RGB(128, 0, 0),     RGB(128, 0, 128), RGB(128, 128, 0), RGB(192, 192, 192),
    RGB(128, 128, 128), RGB(0, 0, 255),   RGB(0, 255, 0),   RGB(0, 255, 255),
    RGB(255, 0, 0),     RGB(255, 0, 255), RGB(255, 255, 0), RGB(255, 255, 255),
};

// What a channel does along one segment of a ramp.
enum class Run { Off, Full, Rise, Fall };

struct Segment {
    Run red;
    Run green;
    Run blue;
};

constexpr std::array<Segment, 7> kSegments = {{
    {Run::Full, Run::Fall, Run::Full}, // white to magenta
    {Run::Fall, Run::Off, Run::Full},  // magenta to blue
    {Run::Off, Run::Rise, Run::Full},  // blue to cyan
    {Run::Off, Run::Full, Run::Fall},  // cyan to green
    {Run::Rise, Run::Full, Run::Off},  // green to yellow
    {Run::Full, Run::Fall, Run::Off},  // yellow to red
    {Run::Fall, Run::Off, Run::Off},   // red to black
}};

int ChannelAt(Run run, int step) {
    switch (run) {
    case Run::Full:
        return 255;
    case Run::Rise:
        return step;
    case Run::Fall:
        return 255 - step;
    case Run::Off:
        break;
    }
    return 0;
}

void FillSegments(std::vector<Colour>& palette, std::span<const Segment> segments) {
    auto entry = palette.begin();
    for (const Segment& segment : segments) {
        for (int step = 0; step < kSegmentSteps; ++step) {
            *entry++ = RGB(ChannelAt(segment.red, step), ChannelAt(segment.green, step),
                           ChannelAt(segment.blue, step));
        }
    }
}

Colour PlanColour(int i) {
    const double along = std::sqrt(static_cast<double>(i)) / std::sqrt(255.0);
    const int fromNearerEnd = i < 128 ? i : 255 - i;
    const double inward = std::sqrt(static_cast<double>(fromNearerEnd)) / std::sqrt(127.0);
    return RGB(modUtilita::RoundHalfEven(255 * along), modUtilita::RoundHalfEven(255 * inward),
               modUtilita::RoundHalfEven(255 * (1 - along)));
}

} // namespace

std::vector<Colour> MakePalette(int count) {
    if (count < 1) {
        throw AppError(ErrorNumber::kInvalidCall, "MakePalette",
                       "A palette needs at least one colour, not " + std::to_string(count) + ".");
    }
    std::vector<Colour> palette(static_cast<std::size_t>(count), kBlack);
    const std::span<const Segment> segments(kSegments);
    switch (count) {
    case 2:
        palette = {kWhite, kGrey};
        break;
    case 16:
        std::copy(kDisplayColours.begin(), kDisplayColours.end(), palette.begin());
        break;
    case kPlanColours:
        for (int i = 0; i < kPlanColours; ++i) {
            palette[static_cast<std::size_t>(i)] = PlanColour(i);
        }
        break;
    case kViewColours:
        FillSegments(palette, segments.subspan(1, 5));
        break;
    case 1792:
        FillSegments(palette, segments);
        break;
    default:
        break;
    }
    return palette;
}

} // namespace terravo::ColourScale
