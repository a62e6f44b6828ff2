// Draws areas, lines and marks of a sheet in pixels, from one level of detail of its index.
//
// Data: the detail; the painter's transformation from millimetres, which neither turns nor shears.
// Method: places are computed in pixels here, and lines of up to a pixel go through the painter's
// quick way for such. A dot of a pixel is a point of the painter; a larger one is an image that is
// drawn once for each of a few places within its pixel and then copied.
#pragma once

#include "sheet/SceneIndex.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

namespace terravo {

struct SheetPaintWish;

class DetailPainter {
public:
    /// @param wish  with a detail.
    DetailPainter(QPainter& painter, const SheetScene& scene, const SheetPaintWish& wish);

    void PaintLayer(SheetLayer layer);

private:
    static constexpr int kPhases = 4; // of a dot, in x and in y

    [[nodiscard]] QPointF ToPixels(IndexPoint p) const {
        return {p.x * scaleX_ + shiftX_, p.y * scaleY_ + shiftY_};
    }
    void FillPolygon(std::span<const IndexPoint> points);
    void PaintAreas(SheetLayer layer);
    void PaintLines(SheetLayer layer);
    void PaintMarks(SheetLayer layer);
    void PaintDots(std::span<const IndexPoint> places);
    void PaintCrosses(std::span<const IndexPoint> places, double half);
    void MakeDots(Colour colour, double diameter);
    void UsePen(const SheetInk& ink);

    QPainter& painter_;
    const SheetScene& scene_;
    const SheetPaintWish& wish_;
    const SceneDetail& detail_;
    double scaleX_;
    double scaleY_;
    double shiftX_;
    double shiftY_;
    IndexBox visible_;
    QPolygonF polygon_;
    std::vector<IndexPoint> ring_;
    std::vector<QImage> dots_; // of the present marks; none for dots of a pixel
};

} // namespace terravo
