// The scale of a sheet, as a text and as a bar.
//
// Data: the scale and the box. Method: of the lengths 1, 2 and 4 times a power of ten, whose
// quarters are round, the longest is taken that leaves room for its values.
#include "sheet/FitText.h"
#include "sheet/MakeSheet.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

class ScaleBar {
public:
    ScaleBar(const SheetContext& context, SheetScene& scene)
        : context_(context), scene_(scene), box_(context.layout.scaleBar),
          height_(
              std::min({context.layout.textHeight, box_.Height() / kHeights, box_.Width() / 12})) {}

    void Add() {
        const double length = LongestLength();
        if (length <= 0) {
            return;
        }
        const double onPaper = length * context_.layout.view.millimetresPerUnit;
        const double left = box_.Middle().x - onPaper / 2;
        const double top = box_.bottom - 3 * height_;
        AddBar(left, top, onPaper);
        AddValues(left, onPaper, length);
        const FittedText scale =
            FitText(context_.source.measure, "1:" + context_.ShortNumber(context_.layout.scale),
                    1.25 * height_, true, box_.Width());
        Write(scale, {box_.Middle().x, top - 0.9 * height_});
    }

private:
    [[nodiscard]] FittedText Value(const std::string& text) const {
        return {text, height_, false, context_.source.measure.Width(text, height_, false)};
    }

    static bool IsInKilometres(double length) { return length >= 2000; }
    [[nodiscard]] std::string ValueText(double value, double length) const {
        return context_.ShortNumber(IsInKilometres(length) ? value / 1000 : value);
    }
    static const char* UnitOf(double length) { return IsInKilometres(length) ? " km" : " m"; }

    // Its last value stands in the middle below its end, its unit behind.
    [[nodiscard]] double WidthOf(double length) const {
        const double number = Value(ValueText(length, length)).width;
        const double behind = Value(ValueText(length, length) + UnitOf(length)).width - number / 2;
        return length * context_.layout.view.millimetresPerUnit + 2 * behind;
    }

    [[nodiscard]] double LongestLength() const {
        constexpr double kLongest = 100; // millimetres
        const double most = std::min(kLongest, box_.Width());
        const double power = std::pow(
            10, std::floor(std::log10(most / context_.layout.view.millimetresPerUnit)) - 1);
        double longest = 0;
        for (const double length :
             {power, 2 * power, 4 * power, 10 * power, 20 * power, 40 * power}) {
            if (length * context_.layout.view.millimetresPerUnit <= kLongest &&
                WidthOf(length) <= box_.Width()) {
                longest = length;
            }
        }
        return longest;
    }

    void AddBar(double left, double top, double length) {
        const double bottom = top + 0.8 * height_;
        for (int i = 0; i < 4; ++i) {
            const double a = left + length * i / 4;
            const double b = left + length * (i + 1) / 4;
            const SheetPoint part[] = {{a, top}, {b, top}, {b, bottom}, {a, bottom}};
            scene_.AddArea(SheetLayer::ScaleBar,
                           i % 2 == 0 ? context_.theme.text : context_.theme.paper, part);
        }
        scene_.AddBox(SheetLayer::ScaleBar,
                      {context_.theme.text, std::min(kOutline, 0.1 * height_), {}},
                      {left, top, left + length, bottom});
    }

    // At every quarter where these have whole numbers and room, else at the halves, else the ends.
    void AddValues(double left, double onPaper, double length) {
        const int parts = HasRoomFor(4, onPaper, length)   ? 4
                          : HasRoomFor(2, onPaper, length) ? 2
                                                           : 1;
        const double base = box_.bottom - 0.3 * height_;
        for (int i = 0; i <= parts; ++i) {
            const FittedText value = Value(ValueText(length * i / parts, length));
            const double x = left + onPaper * i / parts;
            Write(value, {x, base});
            if (i == parts) {
                AddText(scene_, SheetLayer::ScaleBar, Value(UnitOf(length)),
                        {x + value.width / 2, base}, TextAnchor::Left, context_.theme.text);
            }
        }
    }

    [[nodiscard]] bool HasRoomFor(int parts, double onPaper, double length) const {
        double widest = 0;
        double decimals = 0;
        for (int i = 0; i <= parts; ++i) {
            const std::string text = ValueText(length * i / parts, length);
            widest = std::max(widest, Value(text).width);
            const std::size_t point = text.find(context_.source.decimalSeparator);
            decimals = std::max(decimals, point == std::string::npos
                                              ? 0.0
                                              : static_cast<double>(text.size() - point - 1));
        }
        return onPaper / parts >= widest + height_ && (parts < 4 || decimals == 0);
    }

    void Write(const FittedText& text, SheetPoint place) {
        AddText(scene_, SheetLayer::ScaleBar, text, place, TextAnchor::Middle, context_.theme.text);
    }

    static constexpr double kHeights = 5.5; // of the whole, in text heights
    static constexpr double kOutline = 0.2; // millimetres

    const SheetContext& context_;
    SheetScene& scene_;
    const SheetBox& box_;
    double height_;
};

} // namespace

void AddScaleBar(const SheetContext& context, SheetScene& scene) {
    if (context.layout.scaleBar.Width() > 0 && context.layout.scaleBar.Height() > 0) {
        ScaleBar(context, scene).Add();
    }
}

} // namespace terravo
