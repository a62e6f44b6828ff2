// The arrow of a sheet that points to grid north.
//
// Data: the turn of the map and the box. Method: the arrow is drawn in a circle around the middle
// of the box, with north upwards, and turned with the map.
#include "sheet/FitText.h"
#include "sheet/MakeSheet.h"

#include <algorithm>

namespace terravo {
namespace {

class NorthArrow {
public:
    NorthArrow(const SheetContext& context, SheetScene& scene)
        : context_(context), scene_(scene), middle_(context.layout.northArrow.Middle()),
          radius_(
              std::min({context.layout.northArrow.Width() / 2,
                        context.layout.northArrow.Height() / 2, 7 * context.layout.textHeight})) {}

    // A needle of two halves, one dark and one light, and the letter beyond its tip.
    void Add() {
        const SheetPoint tip = At(0, kTip);
        const SheetPoint notch = At(0, kNotch);
        const SheetPoint dark[] = {tip, At(kHalfWidth, kTail), notch};
        const SheetPoint light[] = {tip, notch, At(-kHalfWidth, kTail)};
        scene_.AddArea(SheetLayer::NorthArrow, context_.theme.text, dark);
        const SheetInk ink{context_.theme.text, std::min(0.2, radius_ * 0.02), {}};
        scene_.AddLine(SheetLayer::NorthArrow, ink, dark, true);
        scene_.AddLine(SheetLayer::NorthArrow, ink, light, true);
        const double height = kLetter * radius_;
        AddText(scene_, SheetLayer::NorthArrow,
                {"N", height, true, context_.source.measure.Width("N", height, true)},
                At(0, 0.98 - kLetter / 2), TextAnchor::Centre, context_.theme.text, Turn());
    }

private:
    [[nodiscard]] double Turn() const {
        return std::atan2(context_.layout.view.sine, context_.layout.view.cosine);
    }
    // Eastwards and northwards of the middle, in radiuses.
    [[nodiscard]] SheetPoint At(double east, double north) const {
        const MapView& view = context_.layout.view;
        return {middle_.x + radius_ * (east * view.cosine - north * view.sine),
                middle_.y - radius_ * (east * view.sine + north * view.cosine)};
    }

    static constexpr double kLetter = 0.4; // height of the letter
    static constexpr double kTip = 0.44;
    static constexpr double kNotch = -0.6;
    static constexpr double kTail = -0.92;
    static constexpr double kHalfWidth = 0.34;

    const SheetContext& context_;
    SheetScene& scene_;
    SheetPoint middle_;
    double radius_;
};

} // namespace

void AddNorthArrow(const SheetContext& context, SheetScene& scene) {
    if (context.layout.northArrow.Width() > 0 && context.layout.northArrow.Height() > 0) {
        NorthArrow(context, scene).Add();
    }
}

} // namespace terravo
