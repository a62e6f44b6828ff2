#include "plot2d/VectorSurface.h"

#include "plot2d/SurfaceFont.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace terravo {
namespace {

constexpr double kHalf = 0.5; // from the middle of a pixel to its edge

// To a thousandth. Corners of fills may lie anywhere and may not be numbers at all.
double RoundedCoordinate(double value) {
    constexpr double kParts = 1000;
    constexpr double kFarthest = 1e9;
    return std::isnan(value)
               ? 0
               : std::nearbyint(std::clamp(value, -kFarthest, kFarthest) * kParts) / kParts;
}

PixelPosition RoundedPlace(PixelPosition place) {
    return {RoundedCoordinate(place.x), RoundedCoordinate(place.y)};
}

// Dashes belong to pens one pixel wide.
std::span<const int> DashesOf(const Pen& pen) {
    return pen.width == 1 ? DashLengths(pen.style) : std::span<const int>();
}

} // namespace

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

std::optional<QColor> VectorSurface::ShownInside(std::optional<Colour> colour) const {
    return colour ? std::optional(Shown(*colour)) : std::nullopt;
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

void VectorSurface::StrokePixels(PixelPosition a, PixelPosition b, const Pen& pen) {
    AddLine(RoundedPlace(a), RoundedPlace(b), {ShownStroke(pen.colour), pen.width, DashesOf(pen)});
}

// As round as the end of a line.
void VectorSurface::SetPixels(PixelPosition centre, const Pen& pen) {
    AddCircle(RoundedPlace(centre), pen.width / 2.0, {ShownStroke(pen.colour)});
}

void VectorSurface::FillPixelRect(PixelPosition a, PixelPosition b, Colour colour,
                                  int /*drawMode*/) {
    if (paper_ == Paper::White && colour == BackColor()) {
        return;
    }
    const PixelPosition p = RoundedPlace({std::min(a.x, b.x), std::min(a.y, b.y)});
    const PixelPosition q = RoundedPlace({std::max(a.x, b.x), std::max(a.y, b.y)});
    AddRect({QPointF(p.x - kHalf, p.y - kHalf), QPointF(q.x + kHalf, q.y + kHalf)}, Shown(colour));
}

// The outline of an area in its own colour closes the seam to its neighbour, so it is shown as its
// inside is.
void VectorSurface::PaintPixelPolygons(std::span<const PixelPosition> corners,
                                       std::span<const std::int32_t> counts,
                                       std::optional<Colour> inside, const Pen& pen) {
    corners_.clear();
    std::transform(corners.begin(), corners.end(), std::back_inserter(corners_), RoundedPlace);
    const QColor edge = inside == pen.colour ? Shown(pen.colour) : ShownStroke(pen.colour);
    AddPolygons(corners_, counts, {ShownInside(inside), Outline{edge, pen.width, DashesOf(pen)}});
}

void VectorSurface::FillPixelDisc(PixelPosition centre, int radius, std::optional<Colour> inside,
                                  Colour rim, int /*drawMode*/) {
    AddCircle(RoundedPlace(centre), radius, {ShownInside(inside), Outline{ShownStroke(rim)}});
}

void VectorSurface::FloodPixels(PixelPoint /*seed*/, Colour /*border*/, Colour /*colour*/,
                                int /*drawMode*/) {}

void VectorSurface::DrawTextPixels(PixelPosition topLeft, std::string_view utf8, const Font& font,
                                   Colour colour, std::optional<Colour> background) {
    const TextSize size = MeasurePixels(utf8, font);
    const PixelPosition corner = RoundedPlace({topLeft.x - kHalf, topLeft.y - kHalf});
    if (background) {
        AddRect(QRectF(corner.x, corner.y, size.width, size.height), Shown(*background));
    }
    AddText({{corner.x, corner.y + Metrics(font).ascent()},
             PrintableText(utf8),
             font,
             size.width,
             ShownStroke(colour)});
}

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
