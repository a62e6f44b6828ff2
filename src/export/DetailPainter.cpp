#include "export/DetailPainter.h"

#include "export/SheetPainter.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

// Wider lines and marks reach into what is visible from outside.
IndexBox WithBorder(const SheetBox& box, const SheetScene& scene) {
    double border = 0;
    for (const SheetInk& ink : scene.inks) {
        border = std::max(border, ink.width);
    }
    return {static_cast<float>(box.left - border), static_cast<float>(box.top - border),
            static_cast<float>(box.right + border), static_cast<float>(box.bottom + border)};
}

} // namespace

DetailPainter::DetailPainter(QPainter& painter, const SheetScene& scene, const SheetPaintWish& wish)
    : painter_(painter), scene_(scene), wish_(wish), detail_(*wish.detail),
      scaleX_(painter.worldTransform().m11()), scaleY_(painter.worldTransform().m22()),
      shiftX_(painter.worldTransform().dx()), shiftY_(painter.worldTransform().dy()),
      visible_(WithBorder(wish.visible, scene)) {}

void DetailPainter::PaintLayer(SheetLayer layer) {
    painter_.save();
    painter_.setWorldTransform(QTransform());
    painter_.setRenderHint(QPainter::Antialiasing, !wish_.coarse);
    PaintAreas(layer);
    PaintLines(layer);
    PaintMarks(layer);
    painter_.restore();
}

void DetailPainter::FillPolygon(std::span<const IndexPoint> points) {
    polygon_.resize(static_cast<qsizetype>(points.size()));
    std::transform(points.begin(), points.end(), polygon_.begin(),
                   [this](IndexPoint p) { return ToPixels(p); });
}

void DetailPainter::PaintAreas(SheetLayer layer) {
    const SheetArea* present = nullptr;
    QPainterPath path;
    const auto fill = [&] {
        if (present != nullptr) {
            painter_.fillPath(path, SheetColour(present->fill));
            path.clear();
        }
    };
    path.setFillRule(Qt::OddEvenFill);
    detail_.ForAreas(layer, visible_, ring_,
                     [&](const SheetArea& area, std::span<const IndexPoint> ring) {
                         if (&area != present) {
                             fill();
                             present = &area;
                         }
                         FillPolygon(ring);
                         path.addPolygon(polygon_);
                         path.closeSubpath();
                     });
    fill();
}

void DetailPainter::UsePen(const SheetInk& ink) {
    // Corners of a line of a few pixels look round however they are joined. In passing such a line
    // has one pixel, for which the painter has a quick way.
    constexpr double kBroad = 3;
    double width = std::max(ink.width, wish_.thinnest) * scaleX_;
    if (wish_.coarse && width < kBroad) {
        width = std::min(width, 1.0);
    }
    QPen pen(SheetColour(ink.colour), width, Qt::SolidLine,
             width < kBroad ? Qt::FlatCap : Qt::RoundCap,
             width < kBroad ? Qt::BevelJoin : Qt::RoundJoin);
    if (!ink.dashes.empty()) {
        QList<qreal> pattern;
        for (const double dash : ink.dashes) {
            pattern.append(dash * scaleX_ / width);
        }
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern(pattern);
    }
    painter_.setPen(pen);
}

void DetailPainter::PaintLines(SheetLayer layer) {
    painter_.setBrush(Qt::NoBrush);
    constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t ink = kNone;
    detail_.ForLines(layer, visible_,
                     [&](const SheetLine& line, std::span<const IndexPoint> points, bool closed) {
                         if (line.ink != ink) {
                             ink = line.ink;
                             UsePen(scene_.inks[ink]);
                         }
                         FillPolygon(closed ? points.first(points.size() - 1) : points);
                         if (closed) {
                             painter_.drawPolygon(polygon_);
                         } else {
                             painter_.drawPolyline(polygon_);
                         }
                     });
}

void DetailPainter::PaintMarks(SheetLayer layer) {
    const SheetMarks* present = nullptr;
    detail_.ForMarks(layer, visible_,
                     [&](const SheetMarks& marks, std::span<const IndexPoint> places) {
                         const bool isDot = marks.shape == SheetMarkShape::Dot;
                         const SheetInk& ink = scene_.inks[marks.ink];
                         if (&marks != present) {
                             present = &marks;
                             UsePen(ink);
                             MakeDots(ink.colour, std::max(marks.size * scaleX_, 1.0));
                         }
                         if (isDot && dots_.empty()) {
                             FillPolygon(places);
                             painter_.drawPoints(polygon_);
                         } else if (isDot) {
                             PaintDots(places);
                         } else {
                             PaintCrosses(places, marks.size / 2 * scaleX_);
                         }
                     });
}

void DetailPainter::MakeDots(Colour colour, double diameter) {
    constexpr double kPixel = 1.3;
    constexpr double kFewPixels = 4;
    dots_.clear();
    if (diameter < (wish_.coarse ? kFewPixels : kPixel)) {
        painter_.setPen(QPen(SheetColour(colour), 1));
        return;
    }
    const int side = static_cast<int>(std::ceil(diameter)) + 2;
    for (int phase = 0; phase < kPhases * kPhases; ++phase) {
        QImage dot(side, side, QImage::Format_ARGB32_Premultiplied);
        dot.fill(Qt::transparent);
        QPainter painter(&dot);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(SheetColour(colour));
        const QPointF place(phase % kPhases, std::floor(phase / kPhases));
        const double middle = (side - 1) / 2.0;
        painter.drawEllipse(place / kPhases + QPointF(middle, middle), diameter / 2, diameter / 2);
        painter.end();
        dots_.push_back(dot);
    }
}

void DetailPainter::PaintDots(std::span<const IndexPoint> places) {
    const double middle = (dots_.front().width() - 1) / 2.0;
    for (const IndexPoint place : places) {
        const QPointF corner = ToPixels(place) - QPointF(middle, middle);
        const QPointF whole(std::floor(corner.x()), std::floor(corner.y()));
        const auto phase = [](double part) { return static_cast<std::size_t>(part * kPhases); };
        const std::size_t number =
            phase(corner.y() - whole.y()) * kPhases + phase(corner.x() - whole.x());
        painter_.drawImage(whole.toPoint(), dots_[number]);
    }
}

void DetailPainter::PaintCrosses(std::span<const IndexPoint> places, double half) {
    for (const IndexPoint place : places) {
        const QPointF p = ToPixels(place);
        painter_.drawLine(p - QPointF(half, 0), p + QPointF(half, 0));
        painter_.drawLine(p - QPointF(0, half), p + QPointF(0, half));
    }
}

} // namespace terravo
