#include "plot2d/RasterSurface.h"

#include "plot2d/SurfaceFont.h"
#include "util/modUtilita.h"

#include <QColor>
#include <QPainter>
#include <QString>

#include <algorithm>
#include <cmath>
#include <utility>

namespace terravo {
namespace {

constexpr double kMetresPerInch = 0.0254;

QRgb ToQRgb(Colour colour) {
    return PixelKernels::ToPixelWord(colour);
}

} // namespace

RasterSurface::RasterSurface(int width, int height, double pixelRatio)
    : PixelSurface(width, height, kDotsPerInch * pixelRatio), image_(BlankImage()) {}

QImage RasterSurface::BlankImage() const {
    QImage image(PixelWidth(), PixelHeight(), QImage::Format_RGB32);
    // The default comes from the screen and would show in the picture files.
    const int dotsPerMetre = modUtilita::RoundHalfEven(DotsPerInch() / kMetresPerInch);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    image.fill(ToQRgb(BackColor()));
    return image;
}

void RasterSurface::Resize(int width, int height) {
    SetPixelSize(width, height);
    image_ = BlankImage();
    if (!AutoRedraw()) {
        screen_ = image_.copy();
    }
    AskRepaint();
}

void RasterSurface::SetRepaintCallback(std::function<void()> repaint) {
    repaint_ = std::move(repaint);
    repaintAsked_ = false;
}

void RasterSurface::AskRepaint() {
    if (!repaintAsked_) {
        repaintAsked_ = true;
        if (repaint_) {
            repaint_();
        }
    }
}

PixelKernels::PixelBuffer RasterSurface::Buffer() {
    AskRepaint();
    // bits() first parts from copies that a caller still holds. Rows of 32-bit pixels have no gaps.
    auto* const pixels = reinterpret_cast<std::uint32_t*>(Target().bits());
    return {pixels, PixelWidth(), PixelHeight(), PixelWidth()};
}

const RasterSurface::LoadedFont& RasterSurface::Load(const Font& font) const {
    constexpr std::size_t kMostFonts = 16;
    const auto found = std::find_if(fonts_.begin(), fonts_.end(),
                                    [&font](const LoadedFont& item) { return item.key == font; });
    if (found != fonts_.end()) {
        return *found;
    }
    if (fonts_.size() >= kMostFonts) {
        fonts_.clear();
    }
    const QFont made = MakeSurfaceFont(font);
    fonts_.push_back({font, made, QFontMetrics(made, &image_)});
    return fonts_.back();
}

TextSize RasterSurface::MeasurePixels(std::string_view utf8, const Font& font) const {
    const QFontMetrics& metrics = Load(font).metrics;
    return {metrics.horizontalAdvance(SurfaceText(utf8)), metrics.height()};
}

void RasterSurface::DrawTextPixels(PixelPosition topLeft, std::string_view utf8, const Font& font,
                                   Colour colour, std::optional<Colour> background) {
    AskRepaint();
    const PixelPoint corner = NearestPixel(topLeft);
    const LoadedFont& loaded = Load(font);
    const QString text = SurfaceText(utf8);
    QPainter painter(&Target());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing, false);
    painter.setFont(loaded.font);
    if (background) {
        painter.fillRect(corner.x, corner.y, loaded.metrics.horizontalAdvance(text),
                         loaded.metrics.height(), QColor(ToQRgb(*background)));
    }
    painter.setPen(QColor(ToQRgb(colour)));
    painter.drawText(corner.x, corner.y + loaded.metrics.ascent(), text);
}

void RasterSurface::RefreshPixels() {
    if (!AutoRedraw()) {
        screen_ = image_.copy();
    }
    if (repaint_) {
        repaintAsked_ = true;
        repaint_();
    }
}

void RasterSurface::AutoRedrawChanged() {
    screen_ = AutoRedraw() ? QImage() : image_.copy();
    AskRepaint();
}

} // namespace terravo
