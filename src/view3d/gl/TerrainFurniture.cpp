#include "view3d/gl/TerrainFurniture.h"

#include "plot2d/SheetFont.h"
#include "util/NumberText.h"
#include "view3d/terrain/TerrainLegend.h"
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
        : painter_(painter), all_(all), capital_(TerrainTextHeight(all.height)) {
        FindLegend();
    }

    // Behind the legend there are none; one that would leave the picture is moved into it.
    void PaintPlateTexts() {
        const TerrainPlate plate = MakeTerrainPlate(all_.frame, all_.camera.Exaggeration());
        const QRectF legend = all_.plan.legend ? LegendBox() : QRectF();
        const double edge = capital_ / 2;
        std::vector<QRectF> taken;
        for (const TerrainText& text :
             TextsOfPlate(plate, all_.frame, all_.camera, capital_, all_.decimalSeparator)) {
            const double wide = WidthOf(text.text);
            QRectF box(text.x + (text.towardsX - 1) * wide / 2,
                       text.y + (text.towardsY - 1) * capital_ / 2, wide, capital_);
            const double before = box.left();
            box.moveLeft(std::clamp(before, edge, std::max(edge, all_.width - edge - wide)));
            const bool isFar = std::fabs(box.left() - before) > wide;
            const bool isCovered = box.intersects(legend) ||
                                   std::any_of(taken.begin(), taken.end(), [&](const QRectF& one) {
                                       return one.intersects(box.adjusted(-edge, 0, edge, 0));
                                   });
            if (!isFar && !isCovered) {
                Write(box.left(), box.bottom(), text.text);
                taken.push_back(box);
            }
        }
    }

    // Lower right: the bar, its values, its heading.
    void PaintLegend() {
        const QRectF box = LegendBox();
        if (box.isEmpty()) {
            return;
        }
        // What lies behind must not run through the values.
        QColor ground = all_.plan.dark ? QColor(34, 37, 42) : QColor(244, 244, 242);
        ground.setAlphaF(0.8F);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(ground);
        painter_.drawRoundedRect(box, capital_ / 2, capital_ / 2);
        const double left = box.left() + capital_;
        const double bottom = box.bottom() - capital_;
        const double barHeight = BarHeight();
        PaintBar(QRectF(left, bottom - barHeight, kBarWidth * capital_, barHeight));
        for (const LegendValue& value : values_) {
            Write(left + (kBarWidth + kBesideBar) * capital_,
                  bottom - value.part * barHeight + capital_ / 2, value.text);
        }
        double line = bottom - barHeight - capital_;
        for (auto heading = headings_.rbegin(); heading != headings_.rend(); ++heading) {
            Write(left, line, *heading);
            line -= kLine * capital_;
        }
    }

    // Upper right, as it lies on the ground; seen from the side it is raised so far that it can be
    // read.
    void PaintArrow() {
        constexpr double kRadians = 3.14159265358979323846 / 180;
        constexpr double kLeastElevation = 40; // degrees
        const double size = 3.2 * capital_;
        const QPointF middle(all_.width - 2.2 * size, 1.9 * size);
        const double turn = all_.camera.Azimuth() * kRadians;
        const double flat = std::sin(std::max(kLeastElevation, all_.camera.Elevation()) * kRadians);
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
        const std::string& north = all_.texts[Text::CompassNorth];
        Write(tip.x() - WidthOf(north) / 2, tip.y() + capital_ / 2, north);
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

    [[nodiscard]] double BarHeight() const { return std::min(all_.height * 0.4, 20 * capital_); }

    // Empty where there is none, or no room for one.
    [[nodiscard]] QRectF LegendBox() const {
        if (values_.empty()) {
            return {};
        }
        double wide = 0;
        for (const std::string& heading : headings_) {
            wide = std::max(wide, WidthOf(heading));
        }
        for (const LegendValue& value : values_) {
            wide = std::max(wide, (kBarWidth + kBesideBar) * capital_ + WidthOf(value.text));
        }
        const double headings = kLine * static_cast<double>(headings_.size()) * capital_;
        const QSizeF size(wide + 2 * capital_, BarHeight() + headings + 2.2 * capital_);
        const bool hasRoom = size.height() < all_.height * 0.75 && size.width() < all_.width * 0.5;
        const QPointF corner(all_.width - 0.5 * capital_ - size.width(),
                             all_.height - capital_ - size.height());
        return hasRoom ? QRectF(corner, size) : QRectF();
    }

    void FindLegend() {
        const auto one = [this](Text text) { headings_ = {all_.texts[text]}; };
        switch (all_.plan.colouring) {
        case TerrainColouring::Plain:
            return;
        case TerrainColouring::Aspect:
            one(Text::TerrainAspectLegend);
            values_ = {{0, all_.texts[Text::CompassNorth]},
                       {0.25, all_.texts[Text::CompassEast]},
                       {0.5, all_.texts[Text::CompassSouth]},
                       {0.75, all_.texts[Text::CompassWest]},
                       {1, all_.texts[Text::CompassNorth]}};
            return;
        case TerrainColouring::Slope:
            one(Text::TerrainSlopeLegend);
            TakeValues(0, kSteepest);
            return;
        case TerrainColouring::Height:
            headings_ = {
                WithValues(all_.texts[Text::TerrainHeightLegend], {std::string(all_.heightUnit)})};
            TakeValues(all_.frame.lowest, all_.frame.highest);
            return;
        }
    }

    void TakeValues(double lowest, double highest) {
        constexpr int kSteps = 4;
        const TerrainLegendTexts texts =
            MakeTerrainLegend(lowest, highest, kSteps, all_.decimalSeparator);
        for (std::size_t k = 0; k < texts.values.size(); ++k) {
            values_.push_back({static_cast<double>(k) / kSteps, texts.values[k]});
        }
        if (!texts.base.empty()) {
            headings_.push_back(texts.base);
        }
    }

    static constexpr double kBarWidth = 1.6; // all of these in heights of a capital
    static constexpr double kBesideBar = 0.7;
    static constexpr double kLine = 1.8;

    QPainter& painter_;
    const TerrainFurniture& all_;
    double capital_;
    std::vector<std::string> headings_; // of the legend
    std::vector<LegendValue> values_;
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
