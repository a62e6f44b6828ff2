#include "plot2d/DrawSurface.h"

#include "plot2d/PixelKernels.h"
#include "util/AppError.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace terravo {
namespace {

constexpr double kPointsPerInch = 72;

// Farther places are brought nearer before they become integers.
constexpr double kFarPixel = 1 << 20;

bool IsNear(PixelPosition p) {
    return std::fabs(p.x) <= kFarPixel && std::fabs(p.y) <= kFarPixel;
}

bool IsFinite(PixelPosition p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

PixelPosition BroughtNear(PixelPosition p) {
    return {std::clamp(p.x, -kFarPixel, kFarPixel), std::clamp(p.y, -kFarPixel, kFarPixel)};
}

void CheckExtent(double origin, double extent) {
    if (!std::isfinite(origin) || !std::isfinite(extent) || modUtilita::IsExactly(extent, 0)) {
        throw AppError(ErrorNumber::kInvalidCall, "Scale",
                       "The edges of a drawing area must be finite and apart.");
    }
}

} // namespace

DrawSurface::DrawSurface(int pixelWidth, int pixelHeight, double dotsPerInch)
    : pixelWidth_(std::max(pixelWidth, 1)), pixelHeight_(std::max(pixelHeight, 1)),
      dotsPerInch_(dotsPerInch) {
    UpdateMaps();
    UpdateFontPixels();
}

void DrawSurface::SetPixelSize(int pixelWidth, int pixelHeight) {
    pixelWidth_ = std::max(pixelWidth, 1);
    pixelHeight_ = std::max(pixelHeight, 1);
    UpdateMaps();
}

void DrawSurface::SetScaleMode(ScaleUnit mode) {
    scaleMode_ = mode;
    UpdateMaps();
}

DrawSurface::AxisMap DrawSurface::MapFor(const AxisMap& user, ScaleUnit unit, int pixels) const {
    switch (unit) {
    case ScaleUnit::Points:
        return {0, pixels / dotsPerInch_ * kPointsPerInch, static_cast<double>(pixels)};
    case ScaleUnit::Pixels:
        return {0, static_cast<double>(pixels), static_cast<double>(pixels)};
    case ScaleUnit::User:
        break;
    }
    return {user.origin, user.extent, static_cast<double>(pixels)};
}

void DrawSurface::UpdateMaps() {
    if (!hasUserSystem_) {
        xUser_.extent = pixelWidth_;
        yUser_.extent = pixelHeight_;
    }
    xUser_.pixels = pixelWidth_;
    yUser_.pixels = pixelHeight_;
    xAxis_ = MapFor(xUser_, scaleMode_, pixelWidth_);
    yAxis_ = MapFor(yUser_, scaleMode_, pixelHeight_);
}

void DrawSurface::SetUserSystem(const AxisMap& x, const AxisMap& y) {
    CheckExtent(x.origin, x.extent);
    CheckExtent(y.origin, y.extent);
    xUser_ = x;
    yUser_ = y;
    hasUserSystem_ = true;
    SetScaleMode(ScaleUnit::User);
}

void DrawSurface::SetScaleLeft(float left) {
    SetUserSystem({static_cast<double>(left), xUser_.extent, 1}, yUser_);
}

void DrawSurface::SetScaleTop(float top) {
    SetUserSystem(xUser_, {static_cast<double>(top), yUser_.extent, 1});
}

void DrawSurface::SetScaleWidth(float width) {
    SetUserSystem({xUser_.origin, static_cast<double>(width), 1}, yUser_);
}

void DrawSurface::SetScaleHeight(float height) {
    SetUserSystem(xUser_, {yUser_.origin, static_cast<double>(height), 1});
}

void DrawSurface::Scale(double x1, double y1, double x2, double y2) {
    SetUserSystem({x1, x2 - x1, 1}, {y1, y2 - y1, 1});
}

double DrawSurface::PixelsPer(ScaleUnit unit, const AxisMap& user) const {
    switch (unit) {
    case ScaleUnit::Points:
        return dotsPerInch_ / kPointsPerInch;
    case ScaleUnit::Pixels:
        return 1;
    case ScaleUnit::User:
        break;
    }
    return user.PixelsPerUnit();
}

double DrawSurface::ScaleX(double value, ScaleUnit from, ScaleUnit to) const {
    return value * PixelsPer(from, xUser_) / PixelsPer(to, xUser_);
}

double DrawSurface::ScaleY(double value, ScaleUnit from, ScaleUnit to) const {
    return value * PixelsPer(from, yUser_) / PixelsPer(to, yUser_);
}

void DrawSurface::SetFontSize(float points) {
    font_.size = points;
    UpdateFontPixels();
}

void DrawSurface::UpdateFontPixels() {
    const double pixels = static_cast<double>(font_.size) * dotsPerInch_ / kPointsPerInch;
    font_.pixelSize = std::max(modUtilita::RoundHalfEven(pixels), 1);
}

void DrawSurface::SetAutoRedraw(bool persistent) {
    if (persistent != autoRedraw_) {
        autoRedraw_ = persistent;
        AutoRedrawChanged();
    }
}

void DrawSurface::StrokeBetween(PixelPosition a, PixelPosition b, const Pen& pen) {
    // The test is false for not-a-number as well, which the clipping then refuses.
    if ((!IsNear(a) || !IsNear(b)) && !PixelKernels::ClipSegment(a, b, kFarPixel)) {
        return;
    }
    StrokePixels(a, b, pen);
}

void DrawSurface::Line(double x1, double y1, double x2, double y2, Colour colour, Box box) {
    const PixelPosition a = ToPixels(x1, y1);
    const PixelPosition b = ToPixels(x2, y2);
    cursor_ = {x2, y2};
    Pen pen = pen_;
    pen.colour = colour;
    if (box == Box::None) {
        StrokeBetween(a, b, pen);
        return;
    }
    if (!IsFinite(a) || !IsFinite(b)) {
        return;
    }
    const PixelPosition p = BroughtNear(a);
    const PixelPosition q = BroughtNear(b);
    if (box == Box::Filled) {
        FillPixelRect(p, q, colour, pen.mode);
    } else {
        constexpr std::int32_t kCorners = 4;
        PaintPixelPolygons(std::array{p, PixelPosition{q.x, p.y}, q, PixelPosition{p.x, q.y}},
                           std::span(&kCorners, 1), std::nullopt, pen);
    }
}

void DrawSurface::PSet(double x, double y, Colour colour) {
    cursor_ = {x, y};
    const PixelPosition place = ToPixels(x, y);
    if (IsNear(place)) {
        Pen pen = pen_;
        pen.colour = colour;
        SetPixels(place, pen);
    }
}

void DrawSurface::Print(std::string_view utf8, NewLine newLine) {
    const PixelPosition place = ToPixels(cursor_.x, cursor_.y);
    if (IsNear(place) && !utf8.empty()) {
        const auto background = fontTransparent_ ? std::nullopt : std::optional(backColor_);
        DrawTextPixels(place, utf8, font_, foreColor_, background);
    }
    if (newLine == NewLine::Yes) {
        cursor_ = {xAxis_.origin, cursor_.y + TextHeight(utf8)};
    } else {
        cursor_.x += TextWidth(utf8);
    }
}

double DrawSurface::TextWidth(std::string_view utf8) const {
    return MeasurePixels(utf8, font_).width / xAxis_.PixelsPerUnit();
}

double DrawSurface::TextHeight(std::string_view utf8) const {
    return MeasurePixels(utf8, font_).height / yAxis_.PixelsPerUnit();
}

void DrawSurface::CheckCounts(std::size_t corners, std::span<const std::int32_t> counts) {
    std::size_t total = 0;
    for (const std::int32_t count : counts) {
        total += static_cast<std::size_t>(std::max(count, 0));
        if (count < 0 || total > corners) {
            throw AppError(ErrorNumber::kInvalidCall, "FillPolyPolygon",
                           "The polygons to fill have more corners than were given.");
        }
    }
}

Pen DrawSurface::OutlinePen(const PaintTools& tools) const {
    return {tools.penColour, std::max(tools.penWidth, 1), tools.penStyle, pen_.mode};
}

void DrawSurface::FillPolygon(std::span<const PixelPosition> corners, const PaintTools& tools) {
    const auto count = static_cast<std::int32_t>(corners.size());
    FillPolyPolygon(corners, std::span(&count, 1), tools);
}

void DrawSurface::FillPolyPolygon(std::span<const PixelPosition> corners,
                                  std::span<const std::int32_t> counts, const PaintTools& tools) {
    CheckCounts(corners.size(), counts);
    PaintPixelPolygons(corners, counts, tools.brush, OutlinePen(tools));
}

void DrawSurface::FillDisc(PixelPosition centre, int radius, const PaintTools& tools) {
    FillPixelDisc(centre, radius, tools.brush, tools.penColour, pen_.mode);
}

void DrawSurface::FloodFill(int x, int y, Colour borderColour, const PaintTools& tools) {
    if (tools.brush) {
        FloodPixels({x, y}, borderColour, *tools.brush, pen_.mode);
    }
}

} // namespace terravo
