#include "view3d/gl/TerrainFurniture.h"

#include "plot2d/SheetFont.h"
#include "util/NumberText.h"
#include "view3d/terrain/TerrainPalette.h"
#include "view3d/terrain/TerrainPlate.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace terravo {
namespace {

QColor ToQt(Colour colour) {
    return {RedOf(colour), GreenOf(colour), BlueOf(colour)};
}

// A value beside the bar of the legend; 0 at its foot, 1 at its top.
struct LegendValue {
    double part;
    std::string text;
};

class Furniture {
public:
    Furniture(QPainter& painter, const TerrainFurniture& all)
        : painter_(painter), all_(all), capital_(TerrainTextHeight(all.height)) {}

    void PaintPlateTexts() {
        const TerrainPlate plate = MakeTerrainPlate(all_.frame, all_.camera.Exaggeration());
        for (const TerrainText& text :
             TextsOfPlate(plate, all_.frame, all_.camera, capital_, all_.decimalSeparator)) {
            const double half = WidthOf(text.text) / 2;
            Write(text.x + text.towardsX * half - half,
                  text.y + text.towardsY * capital_ / 2 + capital_ / 2, text.text);
        }
    }

    // Lower right: the bar, its values, its heading.
    void PaintLegend() {
        if (all_.plan.colouring == TerrainColouring::Plain || all_.height < 12 * capital_) {
            return;
        }
        const double barWidth = 1.6 * capital_;
        const double barHeight = std::min(all_.height * 0.4, 20 * capital_);
        const std::vector<LegendValue> values = LegendValues();
        double wide = WidthOf(Heading());
        for (const LegendValue& value : values) {
            wide = std::max(wide, barWidth + capital_ + WidthOf(value.text));
        }
        const double left = all_.width - wide - 1.5 * capital_;
        const double bottom = all_.height - 2 * capital_;
        // What lies behind must not run through the values.
        QColor ground = all_.plan.dark ? QColor(34, 37, 42) : QColor(244, 244, 242);
        ground.setAlphaF(0.8F);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(ground);
        painter_.drawRoundedRect(QRectF(left - capital_, bottom - barHeight - 2.8 * capital_,
                                        wide + 2 * capital_, barHeight + 3.8 * capital_),
                                 capital_ / 2, capital_ / 2);
        PaintBar(QRectF(left, bottom - barHeight, barWidth, barHeight));
        for (const LegendValue& value : values) {
            Write(left + barWidth + capital_ * 0.7, bottom - value.part * barHeight + capital_ / 2,
                  value.text);
        }
        Write(left, bottom - barHeight - capital_, Heading());
    }

    // Upper right, as it lies on the ground.
    void PaintArrow() {
        constexpr double kRadians = 3.14159265358979323846 / 180;
        const double size = 3.2 * capital_;
        const QPointF middle(all_.width - 2.2 * size, 1.9 * size);
        const double turn = all_.camera.Azimuth() * kRadians;
        const double flat = std::max(0.25, std::sin(all_.camera.Elevation() * kRadians));
        const auto at = [&](double right, double ahead) {
            const double x = right * std::cos(turn) - ahead * std::sin(turn);
            const double y = right * std::sin(turn) + ahead * std::cos(turn);
            return middle + QPointF(x * size, -y * size * flat);
        };
        painter_.setPen(QPen(Ink(), capital_ * 0.12));
        painter_.setBrush(Ink());
        painter_.drawPolygon(QPolygonF({at(0, 1), at(0, -0.7), at(-0.42, -1)}));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawPolygon(QPolygonF({at(0, 1), at(0, -0.7), at(0.42, -1)}));
        const QPointF tip = at(0, 1.45);
        Write(tip.x() - WidthOf("N") / 2, tip.y() + capital_ / 2, "N");
    }

    // Lower left: how much heights are stretched.
    void PaintFactor() {
        const std::string factor =
            NumberText::FormatScreen(all_.camera.Exaggeration(), "#0.####", all_.decimalSeparator);
        Write(capital_ * 1.5, all_.height - 1.5 * capital_,
              WithValues(all_.texts[Text::TerrainFactor], {factor}));
    }

private:
    [[nodiscard]] QColor Ink() const {
        return all_.plan.dark ? QColor(236, 236, 230) : QColor(30, 30, 30);
    }
    [[nodiscard]] double WidthOf(const std::string& text) const {
        return SheetTextWidth(QString::fromStdString(text), false) * capital_;
    }

    void Write(double x, double y, const std::string& text) {
        painter_.save();
        painter_.translate(x, y);
        const double scale = capital_ / (kCapitalPart * kSheetFontSize);
        painter_.scale(scale, scale);
        painter_.setFont(SheetFont(false));
        painter_.setPen(Ink());
        painter_.drawText(QPointF(0, 0), QString::fromStdString(text));
        painter_.restore();
    }

    void PaintBar(const QRectF& bar) {
        const TerrainPalette palette = MakeTerrainPalette(all_.plan);
        const auto rows = static_cast<int>(bar.height());
        for (int row = 0; row < rows; ++row) {
            const auto entry = static_cast<std::size_t>(
                std::lround((1 - (row + 0.5) / rows) * (kTerrainColours - 1)));
            painter_.fillRect(QRectF(bar.left(), bar.top() + row * bar.height() / rows, bar.width(),
                                     bar.height() / rows + 0.5),
                              ToQt(palette[entry]));
        }
        painter_.setPen(QPen(Ink(), std::max(1.0, capital_ * 0.1)));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawRect(bar);
    }

    [[nodiscard]] const std::string& Heading() const {
        switch (all_.plan.colouring) {
        case TerrainColouring::Slope:
            return all_.texts[Text::TerrainSlopeLegend];
        case TerrainColouring::Aspect:
            return all_.texts[Text::TerrainAspectLegend];
        default:
            return all_.texts[Text::TerrainHeightLegend];
        }
    }

    [[nodiscard]] std::vector<LegendValue> LegendValues() const {
        std::vector<LegendValue> values;
        if (all_.plan.colouring == TerrainColouring::Aspect) {
            return {{0, "N"}, {0.25, "E"}, {0.5, "S"}, {0.75, "W"}, {1, "N"}};
        }
        const bool isSlope = all_.plan.colouring == TerrainColouring::Slope;
        const double low = isSlope ? 0 : all_.frame.lowest;
        const double high = isSlope ? kSteepest : all_.frame.highest;
        constexpr int kSteps = 4;
        const double step = (high - low) / kSteps;
        const std::string form = isSlope || !(step < 10) ? "#0"
                                 : step >= 1             ? "#0.0"
                                 : step >= 0.01          ? "#0.00#"
                                                         : "#0.00000#";
        for (int k = 0; k <= kSteps; ++k) {
            values.push_back(
                {static_cast<double>(k) / kSteps,
                 NumberText::FormatScreen(low + k * step, form, all_.decimalSeparator)});
            if (!(high > low)) {
                break;
            }
        }
        return values;
    }

    QPainter& painter_;
    const TerrainFurniture& all_;
    double capital_;
};

} // namespace

double TerrainTextHeight(int height) {
    return std::clamp(height / 75.0, 7.0, 60.0);
}

void PaintTerrainFurniture(QPainter& painter, const TerrainFurniture& furniture) {
    painter.setRenderHint(QPainter::Antialiasing);
    Furniture all(painter, furniture);
    if (furniture.plan.plate) {
        all.PaintPlateTexts();
    }
    if (furniture.plan.legend) {
        all.PaintLegend();
        all.PaintArrow();
        all.PaintFactor();
    }
}

} // namespace terravo
