#include "sheet/SheetLayout.h"

#include "util/NumberText.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace terravo {
namespace {

constexpr double kLeastMap = 30;     // a map below is none, millimetres
constexpr double kFillPart = 0.98;   // of the map that a survey takes at most
constexpr double kMillimetres = 1e3; // of a metre
constexpr double kGap = 2.8;         // between map and boxes, in text heights

bool HasBoxes(const SheetPlan& plan) {
    return plan.Shows(SheetLayer::TitleBlock) || plan.Shows(SheetLayer::Legend) ||
           plan.Shows(SheetLayer::ScaleBar) || plan.Shows(SheetLayer::NorthArrow);
}

// From the bottom: title block, scale bar; from the top: north arrow; the legend gets the rest.
void FillColumn(const SheetPlan& plan, SheetBox column, SheetLayout& layout) {
    const double h = layout.textHeight;
    const double all = column.Height();
    const double gap = std::min(kGap * h, all * 0.03);
    if (plan.Shows(SheetLayer::TitleBlock)) {
        layout.titleBlock = column;
        layout.titleBlock.top = column.bottom - std::min(TitleBlockHeight(plan) * h, all * 0.42);
        column.bottom = layout.titleBlock.top - gap;
    }
    if (plan.Shows(SheetLayer::ScaleBar)) {
        layout.scaleBar = column;
        layout.scaleBar.top = column.bottom - std::min(5.5 * h, all * 0.12);
        column.bottom = layout.scaleBar.top - gap;
    }
    if (plan.Shows(SheetLayer::NorthArrow)) {
        layout.northArrow = column;
        layout.northArrow.bottom = column.top + std::min(12 * h, all * 0.14);
        column.top = layout.northArrow.bottom + gap;
    }
    if (plan.Shows(SheetLayer::Legend)) {
        layout.legend = column;
    }
}

// From the right: title block; from the left: legend; scale bar below the north arrow between them.
void FillStrip(const SheetPlan& plan, SheetBox strip, SheetLayout& layout) {
    const double h = layout.textHeight;
    const double gap = std::min(kGap * h, strip.Width() * 0.03);
    if (plan.Shows(SheetLayer::TitleBlock)) {
        layout.titleBlock = strip;
        layout.titleBlock.left = strip.right - std::min(38 * h, strip.Width() * 0.38);
        strip.right = layout.titleBlock.left - gap;
    }
    if (plan.Shows(SheetLayer::ScaleBar) || plan.Shows(SheetLayer::NorthArrow)) {
        SheetBox between = strip;
        if (plan.Shows(SheetLayer::Legend)) {
            between.left = strip.right - std::min(25 * h, strip.Width() * 0.36);
            strip.right = between.left - gap;
        }
        SheetBox arrow = between;
        if (plan.Shows(SheetLayer::ScaleBar)) {
            layout.scaleBar = between;
            layout.scaleBar.top = between.bottom - std::min(5.5 * h, strip.Height() * 0.35);
            arrow.bottom = layout.scaleBar.top - gap;
        }
        if (plan.Shows(SheetLayer::NorthArrow)) {
            layout.northArrow = arrow;
        }
    }
    if (plan.Shows(SheetLayer::Legend)) {
        layout.legend = strip;
    }
}

// The map leaves room for its values.
SheetBox InsideFrame(const SheetBox& room, const SheetLayout& layout) {
    return {room.left + layout.valueRoom, room.top + layout.tick, room.right - layout.tick,
            room.bottom - layout.valueRoom};
}

bool IsLargeEnough(const SheetBox& map) {
    return std::min(map.Width(), map.Height()) >= kLeastMap;
}

// A column as high as the map.
void LayOutAcross(const SheetPlan& plan, const SheetBox& inside, SheetLayout& layout) {
    const double h = layout.textHeight;
    const double usual = std::clamp(inside.Width() * 0.2, 30 * h, 42 * h);
    SheetBox boxes = inside;
    boxes.left = inside.right - std::min(usual, inside.Width() * 0.36);
    SheetBox room = inside;
    room.right = boxes.left - kGap * h;
    const SheetBox map = InsideFrame(room, layout);
    if (IsLargeEnough(map)) {
        layout.map = map;
        boxes.top = map.top;
        boxes.bottom = map.bottom;
        FillColumn(plan, boxes, layout);
    }
}

// A strip as wide as the map.
void LayOutUpright(const SheetPlan& plan, const SheetBox& inside, SheetLayout& layout) {
    const double h = layout.textHeight;
    const double usual = std::max(inside.Height() * 0.15, TitleBlockHeight(plan) * h);
    SheetBox boxes = inside;
    boxes.top = inside.bottom - std::min(usual, inside.Height() * 0.32);
    SheetBox room = inside;
    room.bottom = boxes.top - kGap * h;
    const SheetBox map = InsideFrame(room, layout);
    if (IsLargeEnough(map)) {
        layout.map = map;
        boxes.left = map.left;
        boxes.right = map.right;
        FillStrip(plan, boxes, layout);
    }
}

SheetLayout BoxesFor(const SheetPlan& plan, bool landscape) {
    SheetLayout layout;
    layout.paper = landscape ? SheetBox{0, 0, plan.paper.height, plan.paper.width}
                             : SheetBox{0, 0, plan.paper.width, plan.paper.height};
    layout.textHeight = TextHeightOn(plan.paper, plan.textHeight);
    layout.tick = std::min(0.8 * layout.textHeight, 2.0);
    layout.valueRoom = layout.tick + 1.6 * layout.textHeight;
    const SheetBox inside = layout.paper.Shrunk(MarginOf(plan.paper));
    layout.map = InsideFrame(inside, layout);
    if (HasBoxes(plan)) {
        const double height = layout.map.Height();
        const double width = layout.map.Width();
        landscape ? LayOutAcross(plan, inside, layout) : LayOutUpright(plan, inside, layout);
        if (layout.map.Height() == height && layout.map.Width() == width) {
            layout.remarks.push_back({Text::SheetNoBoxes, {}});
        }
    }
    return layout;
}

// At which the extent fills the map.
double FillingScale(const SheetBox& map, const TurnedExtent& extent) {
    return std::max(extent.width / map.Width(), extent.height / map.Height()) * kMillimetres /
           kFillPart;
}

bool IsBetterAcross(const SheetPlan& plan, const TurnedExtent& extent) {
    return FillingScale(BoxesFor(plan, true).map, extent) <=
           FillingScale(BoxesFor(plan, false).map, extent);
}

void TellWhatIsOutside(const TurnedExtent& extent, SheetLayout& layout) {
    const double part = 1e-9; // what rounding adds
    const double width = extent.width * kMillimetres / layout.scale;
    const double height = extent.height * kMillimetres / layout.scale;
    const PlanPoint centre = layout.view.centre;
    const double offX = std::fabs(extent.centre.x - centre.x) * 2 * kMillimetres / layout.scale;
    const double offY = std::fabs(extent.centre.y - centre.y) * 2 * kMillimetres / layout.scale;
    const bool isTurned = layout.view.sine != 0;
    const double away = isTurned ? std::hypot(offX, offY) : 0;
    const bool fits = width + (isTurned ? away : offX) <= layout.map.Width() * (1 + part) &&
                      height + (isTurned ? away : offY) <= layout.map.Height() * (1 + part);
    if (!fits) {
        const auto whole = [](double value) { return NumberText::General(std::ceil(value)); };
        layout.remarks.push_back(
            {Text::SheetDoesNotFit,
             {whole(width), whole(height), whole(layout.map.Width()), whole(layout.map.Height())}});
    }
}

} // namespace

double MarginOf(const PaperSize& paper) {
    return std::clamp(paper.width / 20, 5.0, 10.0);
}

double TextHeightOn(const PaperSize& paper, double usual) {
    constexpr double kUsualPaper = 210;
    const double growth = std::clamp(std::sqrt(paper.width / kUsualPaper), 0.6, 1.6);
    return std::min(usual * growth, paper.width / 65);
}

double TitleBlockHeight(const SheetPlan& plan) {
    const SheetTexts& texts = plan.texts;
    const auto lines = 4 + (texts.date.empty() ? 0 : 1) + (texts.datum.empty() ? 0 : 1) +
                       (texts.author.empty() ? 0 : 1);
    return 6.9 + (texts.project.empty() ? 0 : 2) + 1.9 * lines;
}

SheetLayout LayOut(const SheetPlan& plan, const PointSet& points) {
    const double rotation = plan.rotation * std::numbers::pi / 180;
    const TurnedExtent extent = ExtentOf(points, rotation);
    SheetLayout layout = BoxesFor(plan, plan.landscape.value_or(IsBetterAcross(plan, extent)));
    const double filling = FillingScale(layout.map, extent);
    layout.scale = plan.scale ? *plan.scale : filling > 0 ? UsualScale(filling) : 1000;
    layout.view.millimetresPerUnit = kMillimetres / layout.scale;
    if (plan.rotation != 0) {
        layout.view.cosine = std::cos(rotation);
        layout.view.sine = std::sin(rotation);
    }
    layout.view.centre = plan.centre.value_or(extent.centre);
    layout.view.middle = layout.map.Middle();
    TellWhatIsOutside(extent, layout);
    return layout;
}

} // namespace terravo
