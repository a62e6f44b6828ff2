#include "export/SheetPainter.h"

#include "export/DetailPainter.h"
#include "sheet/SheetCurve.h"

#include <QPainterPath>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace terravo {
namespace {

QPen PenOf(const SheetInk& ink, double thinnest) {
    const double width = std::max(ink.width, thinnest);
    QPen pen(SheetColour(ink.colour), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    if (!ink.dashes.empty()) {
        QList<qreal> pattern;
        for (const double dash : ink.dashes) {
            pattern.append(dash / width);
        }
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern(pattern);
    }
    return pen;
}

class ScenePainter {
public:
    ScenePainter(QPainter& painter, const SheetScene& scene, const SheetPaintWish& wish)
        : painter_(painter), scene_(scene), wish_(wish) {}

    void Paint() {
        painter_.save();
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.setRenderHint(QPainter::TextAntialiasing);
        for (std::size_t i = wish_.fromLayer; i < wish_.toLayer; ++i) {
            PaintLayer(static_cast<SheetLayer>(i));
        }
        painter_.restore();
    }

private:
    void PaintLayer(SheetLayer layer) {
        const auto forThose = [this, layer](const auto& elements, auto paint) {
            for (const auto& element : elements) {
                if (element.layer == layer && GoesOn()) {
                    paint(element);
                }
            }
        };
        if (wish_.detail != nullptr) {
            DetailPainter(painter_, scene_, wish_).PaintLayer(layer);
        } else {
            forThose(scene_.areas, [this](const SheetArea& area) { PaintArea(area); });
            forThose(scene_.lines, [this](const SheetLine& line) { PaintLine(line); });
            forThose(scene_.marks, [this](const SheetMarks& marks) { PaintMarks(marks); });
        }
        forThose(scene_.texts, [this](const SheetText& text) { PaintText(text); });
    }

    [[nodiscard]] bool GoesOn() const {
        return wish_.stop == nullptr || wish_.stop->GoesOn("sheet", 1);
    }

    const QPolygonF& Thinned(const SheetPiece& piece) {
        polygon_.clear();
        const std::span<const SheetPoint> points = scene_.VerticesOf(piece);
        for (std::size_t i = 0; i < points.size(); ++i) {
            const SheetPoint p = points[i];
            const bool isEnd = i == 0 || i + 1 == points.size();
            if (isEnd || std::fabs(p.x - polygon_.last().x()) > wish_.finest ||
                std::fabs(p.y - polygon_.last().y()) > wish_.finest) {
                polygon_.append(QPointF(p.x, p.y));
            }
        }
        return polygon_;
    }

    [[nodiscard]] QPainterPath PathOf(const SheetPiece& piece) const {
        constexpr double kUnseen = 0.0005; // millimetres
        const std::span<const SheetPoint> controls = scene_.ControlsOf(piece);
        const auto at = [&](std::size_t i) { return QPointF(controls[i].x, controls[i].y); };
        QPainterPath path(at(0));
        for (std::size_t i = 0; i + 3 < controls.size(); i += 3) {
            if (IsStraight(controls.subspan(i).first<4>(), kUnseen)) {
                path.lineTo(at(i + 3));
            } else {
                path.cubicTo(at(i + 1), at(i + 2), at(i + 3));
            }
        }
        if (piece.closed) {
            path.closeSubpath();
        }
        return path;
    }

    void PaintArea(const SheetArea& area) {
        QPainterPath path;
        path.setFillRule(Qt::OddEvenFill);
        for (const SheetPiece& piece : scene_.PiecesOf(area)) {
            path.addPolygon(Thinned(piece));
            path.closeSubpath();
        }
        painter_.fillPath(path, SheetColour(area.fill));
    }

    void PaintLine(const SheetLine& line) {
        painter_.setPen(PenOf(scene_.inks[line.ink], wish_.thinnest));
        painter_.setBrush(Qt::NoBrush);
        for (const SheetPiece& piece : scene_.PiecesOf(line)) {
            if (wish_.curves && piece.cubics > 0) {
                painter_.drawPath(PathOf(piece));
                continue;
            }
            const QPolygonF& points = Thinned(piece);
            if (piece.closed) {
                painter_.drawPolygon(points);
            } else {
                painter_.drawPolyline(points);
            }
        }
    }

    void PaintMarks(const SheetMarks& marks) {
        const SheetInk& ink = scene_.inks[marks.ink];
        const double half = marks.size / 2;
        const bool isDot = marks.shape == SheetMarkShape::Dot;
        painter_.setPen(isDot ? QPen(SheetColour(ink.colour), std::max(marks.size, wish_.thinnest),
                                     Qt::SolidLine, Qt::RoundCap)
                              : PenOf(ink, wish_.thinnest));
        for (const SheetPoint& place : marks.places) {
            if (!wish_.visible.Contains(place)) {
                continue;
            }
            if (isDot) {
                painter_.drawPoint(QPointF(place.x, place.y));
            } else {
                painter_.drawLine(QPointF(place.x - half, place.y),
                                  QPointF(place.x + half, place.y));
                painter_.drawLine(QPointF(place.x, place.y - half),
                                  QPointF(place.x, place.y + half));
            }
        }
    }

    // A text that may be seen; wider than any is.
    [[nodiscard]] bool IsVisible(const SheetText& text) const {
        constexpr double kWidestCharacter = 1.6; // in heights of a capital
        const double reach =
            text.height * (2 + kWidestCharacter * static_cast<double>(text.text.size()));
        const SheetBox& box = wish_.visible;
        return text.place.x > box.left - reach && text.place.x < box.right + reach &&
               text.place.y > box.top - reach && text.place.y < box.bottom + reach;
    }

    // Too small to be read in pixels: a bar of its length. Returns whether it is so small.
    bool PaintSmallText(const SheetText& text) {
        constexpr double kReadable = 1.8; // pixels of a capital
        constexpr double kReadableInPassing = 5;
        constexpr double kSeen = 0.4;
        constexpr double kFaint = 0.5;
        const double pixels = text.height * painter_.worldTransform().m11();
        if (wish_.detail == nullptr || pixels >= (wish_.coarse ? kReadableInPassing : kReadable)) {
            return false;
        }
        if (pixels > kSeen) {
            constexpr double kUsualCharacter = 0.78;
            const double width =
                text.height * kUsualCharacter * static_cast<double>(text.text.size());
            const double left = text.anchor == TextAnchor::Left    ? 0
                                : text.anchor == TextAnchor::Right ? -width
                                                                   : -width / 2;
            const double up = text.anchor == TextAnchor::Centre ? 0 : text.height / 2;
            const QPointF along(std::cos(text.angle), -std::sin(text.angle));
            const QPointF across(-std::sin(text.angle), -std::cos(text.angle));
            const QPointF start = QPointF(text.place.x, text.place.y) + across * up + along * left;
            QColor colour = SheetColour(text.colour);
            colour.setAlphaF(kFaint);
            painter_.setPen(QPen(colour, text.height / 2, Qt::SolidLine, Qt::FlatCap));
            painter_.drawLine(start, start + along * width);
        }
        return true;
    }

    void PaintText(const SheetText& text) {
        if (text.text.empty() || !IsVisible(text) || PaintSmallText(text)) {
            return;
        }
        const QString characters = PrintableText(text.text);
        const double size = kSheetFontSize * kCapitalPart; // of a capital, in units of the font
        const double width = SheetTextWidth(characters, text.bold) * size;
        const double left = text.anchor == TextAnchor::Left    ? 0
                            : text.anchor == TextAnchor::Right ? -width
                                                               : -width / 2;
        const double base = text.anchor == TextAnchor::Centre ? size / 2 : 0;
        painter_.save();
        painter_.translate(text.place.x, text.place.y);
        painter_.rotate(-text.angle * 180 / std::numbers::pi);
        painter_.scale(text.height / size, text.height / size);
        painter_.setFont(SheetFont(text.bold));
        painter_.setPen(SheetColour(text.colour));
        painter_.drawText(QPointF(left, base), characters);
        painter_.restore();
    }

    QPainter& painter_;
    const SheetScene& scene_;
    const SheetPaintWish& wish_;
    QPolygonF polygon_;
};

} // namespace

void PaintSheet(QPainter& painter, const SheetScene& scene, const SheetPaintWish& wish) {
    ScenePainter(painter, scene, wish).Paint();
}

} // namespace terravo
