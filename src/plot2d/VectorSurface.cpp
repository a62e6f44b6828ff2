#include "plot2d/VectorSurface.h"

#include "plot2d/SurfaceFont.h"

#include <algorithm>

namespace terravo {
VectorSurface::VectorSurface(int width, int height, double pixelRatio, Paper paper)
    : DrawSurface(width, height, kDotsPerInch * pixelRatio), paper_(paper),
      measuring_(1, 1, QImage::Format_RGB32) {
    SetBackColor(kBlack);
}

QColor VectorSurface::Shown(Colour colour) const {
    if (paper_ == Paper::White && (colour == kBlack || colour == kWhite)) {
        return colour == kBlack ? Qt::white : Qt::black;
    }
    return {RedOf(colour), GreenOf(colour), BlueOf(colour)};
}

QColor VectorSurface::ShownStroke(Colour colour) const {
    constexpr double kLightest = 128; // of 255, weighted as the eye does
    const double light = 0.3 * RedOf(colour) + 0.59 * GreenOf(colour) + 0.11 * BlueOf(colour);
    if (paper_ == Paper::Black || colour == kWhite || light <= kLightest) {
        return Shown(colour);
    }
    const auto darker = [part = kLightest / light](int channel) {
        return static_cast<int>(channel * part);
    };
    return {darker(RedOf(colour)), darker(GreenOf(colour)), darker(BlueOf(colour))};
}

void VectorSurface::FloodPixels(PixelPoint /*seed*/, Colour /*border*/, Colour /*colour*/,
                                int /*drawMode*/) {}

const QFontMetrics& VectorSurface::Metrics(const Font& font) const {
    const auto found = std::find_if(fonts_.begin(), fonts_.end(),
                                    [&font](const MeasuredFont& item) { return item.key == font; });
    if (found != fonts_.end()) {
        return found->metrics;
    }
    fonts_.push_back({font, QFontMetrics(MakeSurfaceFont(font), &measuring_)});
    return fonts_.back().metrics;
}

TextSize VectorSurface::MeasurePixels(std::string_view utf8, const Font& font) const {
    const QFontMetrics& metrics = Metrics(font);
    return {metrics.horizontalAdvance(SurfaceText(utf8)), metrics.height()};
}

} // namespace terravo
