// The frame of the map, its ticks and their values, and the grid inside it.
//
// Data: the layout of the sheet. Method: each side has the ticks of the grid lines that cross it
// more steeply, as their continuation outwards. Values stand below and to the left, every one, or
// every second, fifth, tenth, so that none touches another.
#include "sheet/Clip.h"
#include "sheet/FitText.h"
#include "sheet/GridLines.h"
#include "sheet/MakeSheet.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace terravo {
namespace {

constexpr double kCrossArm = 2; // millimetres

// A grid line at the frame: where it crosses, and where its tick ends.
struct Tick {
    double value = 0;
    SheetPoint place;
    SheetPoint end;
};

class FrameLayer {
public:
    FrameLayer(const SheetContext& context, SheetScene& scene)
        : context_(context), scene_(scene), map_(context.layout.map),
          spacing_(GridSpacing(context.layout)), across_(AlongHorizontalSides(context.layout)),
          upright_(AlongUprightSides(context.layout)) {}

    void AddFrame() {
        scene_.AddBox(SheetLayer::Frame, {context_.theme.text, context_.theme.frameWidth, {}},
                      map_);
        const std::vector<Tick> below = HorizontalSide(map_.bottom, 1);
        const std::vector<Tick> left = UprightSide(map_.left, -1);
        AddTicks({HorizontalSide(map_.top, -1), UprightSide(map_.right, 1), below, left});
        AddValuesBelow(below);
        AddValuesLeft(left);
    }

    void AddGrid() {
        const SheetInk ink{context_.theme.grid, context_.theme.thinWidth, {}};
        SheetLine line;
        line.layer = SheetLayer::Grid;
        line.ink = scene_.InkNumber(ink);
        line.firstPiece = scene_.pieces.size();
        ClippedLine inside;
        if (context_.plan.gridLines) {
            CollectLines(inside);
        } else {
            CollectCrosses(inside);
        }
        for (const ClippedLine::Part& part : inside.parts) {
            scene_.AddPiece(inside.PointsOf(part), part.closed);
        }
        line.pieces = scene_.pieces.size() - line.firstPiece;
        scene_.lines.push_back(line);
    }

private:
    [[nodiscard]] std::vector<double> ValuesBetween(const GridCoordinate& coordinate, SheetPoint a,
                                                    SheetPoint b) const {
        const auto [low, high] = std::minmax({coordinate.At(a), coordinate.At(b)});
        return MultiplesWithin(low, high, spacing_);
    }

    // All values on the map: that of a corner is the least, another one the greatest.
    [[nodiscard]] std::vector<double> ValuesOnMap(const GridCoordinate& coordinate) const {
        const double corners[] = {
            coordinate.At({map_.left, map_.top}), coordinate.At({map_.right, map_.top}),
            coordinate.At({map_.left, map_.bottom}), coordinate.At({map_.right, map_.bottom})};
        const auto [low, high] = std::minmax_element(std::begin(corners), std::end(corners));
        return MultiplesWithin(*low, *high, spacing_);
    }

    // @param outwards  1 downwards, -1 upwards.
    [[nodiscard]] std::vector<Tick> HorizontalSide(double y, double outwards) const {
        std::vector<Tick> ticks;
        const double end = y + outwards * context_.layout.tick;
        for (const double value : ValuesBetween(across_, {map_.left, y}, {map_.right, y})) {
            ticks.push_back({value, {across_.XOf(value, y), y}, {across_.XOf(value, end), end}});
        }
        return ticks;
    }

    [[nodiscard]] std::vector<Tick> UprightSide(double x, double outwards) const {
        std::vector<Tick> ticks;
        const double end = x + outwards * context_.layout.tick;
        for (const double value : ValuesBetween(upright_, {x, map_.top}, {x, map_.bottom})) {
            ticks.push_back({value, {x, upright_.YOf(value, x)}, {end, upright_.YOf(value, end)}});
        }
        return ticks;
    }

    void AddTicks(std::initializer_list<std::vector<Tick>> sides) {
        SheetLine line;
        line.layer = SheetLayer::Frame;
        line.ink = scene_.InkNumber({context_.theme.text, context_.theme.frameWidth / 2, {}});
        line.firstPiece = scene_.pieces.size();
        for (const std::vector<Tick>& side : sides) {
            for (const Tick& tick : side) {
                const SheetPoint ends[] = {tick.place, tick.end};
                scene_.AddPiece(ends, false);
            }
        }
        line.pieces = scene_.pieces.size() - line.firstPiece;
        scene_.lines.push_back(line);
    }

    // On a turned map it would not be plain which coordinate it is.
    [[nodiscard]] FittedText ValueText(const GridCoordinate& coordinate, double value) const {
        const bool isTurned = context_.layout.view.cosine != 1;
        const std::string text = (isTurned ? coordinate.IsEasting() ? "E " : "N " : "") +
                                 GridValueText(value, spacing_, context_.source.decimalSeparator);
        const double height = context_.layout.textHeight;
        return {text, height, false, context_.source.measure.Width(text, height, false)};
    }

    // The ticks that get a value. @param distance  between ticks; @param along  place of a tick.
    template <class Along>
    std::vector<const Tick*> ChooseValues(const std::vector<Tick>& ticks, double width,
                                          double distance, double from, double to,
                                          Along along) const {
        const double needed = width + 2 * context_.layout.textHeight;
        double every = 1;
        for (std::size_t i = 0; every * distance < needed; ++i) {
            every *= i % 3 == 1 ? 2.5 : 2; // 1, 2, 5, 10
        }
        std::vector<const Tick*> inside;
        for (const Tick& tick : ticks) {
            if (along(tick) - width / 2 >= from && along(tick) + width / 2 <= to) {
                inside.push_back(&tick);
            }
        }
        std::vector<const Tick*> chosen;
        for (const Tick* tick : inside) {
            if (std::fmod(std::round(tick->value / spacing_), every) == 0) {
                chosen.push_back(tick);
            }
        }
        if (chosen.empty() && !inside.empty()) {
            chosen.push_back(inside[inside.size() / 2]);
        }
        return chosen;
    }

    [[nodiscard]] double Widest(const GridCoordinate& coordinate,
                                const std::vector<Tick>& ticks) const {
        double width = 0;
        for (const Tick& tick : ticks) {
            width = std::max(width, ValueText(coordinate, tick.value).width);
        }
        return width;
    }

    void AddValuesBelow(const std::vector<Tick>& ticks) {
        const double y = map_.bottom + context_.layout.tick + 1.5 * context_.layout.textHeight;
        for (const Tick* tick :
             ChooseValues(ticks, Widest(across_, ticks), spacing_ / std::fabs(across_.ToTheRight()),
                          map_.left - context_.layout.valueRoom, map_.right + context_.layout.tick,
                          [](const Tick& each) { return each.end.x; })) {
            AddText(scene_, SheetLayer::Frame, ValueText(across_, tick->value), {tick->end.x, y},
                    TextAnchor::Middle, context_.theme.text);
        }
    }

    void AddValuesLeft(const std::vector<Tick>& ticks) {
        const double x = map_.left - context_.layout.tick - 0.5 * context_.layout.textHeight;
        for (const Tick* tick :
             ChooseValues(ticks, Widest(upright_, ticks), spacing_ / std::fabs(upright_.Down()),
                          map_.top - context_.layout.tick, map_.bottom,
                          [](const Tick& each) { return each.end.y; })) {
            AddText(scene_, SheetLayer::Frame, ValueText(upright_, tick->value), {x, tick->end.y},
                    TextAnchor::Middle, context_.theme.text, std::numbers::pi / 2);
        }
    }

    void CollectLines(ClippedLine& inside) const {
        for (const double value : ValuesOnMap(across_)) {
            const SheetPoint ends[] = {{across_.XOf(value, map_.top), map_.top},
                                       {across_.XOf(value, map_.bottom), map_.bottom}};
            ClipLine(ends, false, map_, inside);
        }
        for (const double value : ValuesOnMap(upright_)) {
            const SheetPoint ends[] = {{map_.left, upright_.YOf(value, map_.left)},
                                       {map_.right, upright_.YOf(value, map_.right)}};
            ClipLine(ends, false, map_, inside);
        }
    }

    void CollectCrosses(ClippedLine& inside) const {
        const GridCoordinate& east = across_.IsEasting() ? across_ : upright_;
        const GridCoordinate& north = across_.IsEasting() ? upright_ : across_;
        const MapView& view = context_.layout.view;
        const SheetPoint arm{kCrossArm * view.cosine, -kCrossArm * view.sine}; // eastwards
        const std::vector<double> northings = ValuesOnMap(north);
        for (const double x : ValuesOnMap(east)) {
            for (const double y : northings) {
                const SheetPoint p = view.ToPaper(x, y);
                if (map_.Contains(p)) {
                    const SheetPoint eastern[] = {{p.x - arm.x, p.y - arm.y},
                                                  {p.x + arm.x, p.y + arm.y}};
                    const SheetPoint northern[] = {{p.x - arm.y, p.y + arm.x},
                                                   {p.x + arm.y, p.y - arm.x}};
                    ClipLine(eastern, false, map_, inside);
                    ClipLine(northern, false, map_, inside);
                }
            }
        }
    }

    const SheetContext& context_;
    SheetScene& scene_;
    const SheetBox& map_;
    double spacing_;
    GridCoordinate across_;
    GridCoordinate upright_;
};

} // namespace

void AddFrameAndGrid(const SheetContext& context, SheetScene& scene) {
    FrameLayer layer(context, scene);
    layer.AddFrame();
    if (context.plan.Shows(SheetLayer::Grid)) {
        layer.AddGrid();
    }
}

} // namespace terravo
