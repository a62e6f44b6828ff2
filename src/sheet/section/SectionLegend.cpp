#include "sheet/section/SectionLegend.h"

#include "sheet/FitText.h"
#include "util/NumberText.h"

#include <algorithm>
#include <functional>

namespace terravo {
namespace {

// In text heights.
constexpr double kSample = 6;
constexpr double kToText = 7.2;
constexpr double kBetween = 3;
constexpr double kPitch = 2.3;

double WidthOf(const SectionContext& context, const SectionLegendItem& item, double most) {
    return std::min(kToText * context.textHeight + context.Width(item.text), most);
}

// Calls place(item, x, row) with x from 0. @return the number of rows.
int Arrange(const SectionContext& context, const std::vector<SectionLegendItem>& items,
            double width, const std::function<void(const SectionLegendItem&, double, int)>& place) {
    double x = 0;
    int row = 0;
    for (const SectionLegendItem& item : items) {
        const double needed = WidthOf(context, item, width);
        if (x > 0 && x + needed > width) {
            x = 0;
            ++row;
        }
        place(item, x, row);
        x += needed + kBetween * context.textHeight;
    }
    return items.empty() ? 0 : row + 1;
}

bool AnyRun(const Profile* profile) {
    return profile != nullptr && !profile->runs.empty();
}

bool CrossesBreaklines(const SectionSource& source) {
    const auto has = [](const Profile& profile) {
        return std::any_of(profile.runs.begin(), profile.runs.end(), [](const ProfileRun& run) {
            return std::any_of(run.begin(), run.end(),
                               [](const ProfilePoint& point) { return point.line > 0; });
        });
    };
    return has(source.first) || (source.second != nullptr && has(*source.second));
}

class Items {
public:
    Items(const SectionContext& context, std::span<const SectionSource> sources)
        : context_(context), sources_(sources) {}

    std::vector<SectionLegendItem> Collect() {
        const SectionSource& named = sources_.front();
        const SectionStyle& style = context_.style;
        AddLine(named.firstName, style.first,
                [](const SectionSource& source) { return AnyRun(&source.first); });
        AddLine(named.secondName, style.second,
                [](const SectionSource& source) { return AnyRun(source.second); });
        if (named.datum) {
            AddLine(WithValues(Word(Text::SectionDatum), {Number(*named.datum)}), style.datum,
                    [](const SectionSource& source) {
                        return source.second == nullptr && AnyRun(&source.first);
                    });
        }
        AddAreas();
        AddLine(Word(Text::LayerBreaklines), style.breakline, CrossesBreaklines);
        AddLine(Word(Text::SectionBend), style.bend,
                [](const SectionSource& source) { return !source.bends.empty(); });
        AddLine(Word(Text::SectionAxis), style.axis,
                [](const SectionSource& source) { return source.station.has_value(); });
        return std::move(items_);
    }

private:
    [[nodiscard]] const std::string& Word(Text text) const { return context_.words.texts[text]; }
    [[nodiscard]] std::string Number(double value) const {
        return NumberText::FormatScreen(value, "#0.0##", context_.words.decimalSeparator);
    }

    template <class Has>
    void AddLine(const std::string& text, const SheetInk& ink, Has has) {
        if (!text.empty() && std::any_of(sources_.begin(), sources_.end(), has)) {
            items_.push_back({text, ink});
        }
    }

    void AddAreas() {
        const bool areCompared =
            std::any_of(sources_.begin(), sources_.end(), [](const SectionSource& source) {
                return AnyRun(&source.first) &&
                       (AnyRun(source.second) || (source.second == nullptr && source.datum));
            });
        if (!areCompared || !context_.plan.areas) {
            return;
        }
        const bool areTold = sources_.size() == 1 && sources_.front().areas;
        const SectionAreas areas = areTold ? *sources_.front().areas : SectionAreas();
        const auto add = [&](Text word, double area, Colour fill) {
            const std::string value =
                areTold ? " " + AreaText(area, context_.words.decimalSeparator) : std::string();
            items_.push_back({Word(word) + value, {}, fill, true});
        };
        add(Text::SectionCut, areas.cut, context_.style.cut);
        add(Text::SectionFill, areas.fill, context_.style.fill);
    }

    const SectionContext& context_;
    std::span<const SectionSource> sources_;
    std::vector<SectionLegendItem> items_;
};

void AddSample(const SectionContext& context, const SectionLegendItem& item, SheetPoint left,
               SheetScene& scene) {
    const double right = left.x + kSample * context.textHeight;
    if (!item.isArea) {
        const SheetPoint ends[] = {left, {right, left.y}};
        scene.AddLine(SheetLayer::Legend, item.ink, ends);
        return;
    }
    const double half = 0.8 * context.textHeight;
    const SheetBox box{left.x, left.y - half, right, left.y + half};
    const SheetPoint ring[] = {
        {box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}, {box.left, box.bottom}};
    scene.AddArea(SheetLayer::Legend, item.fill, ring);
    scene.AddBox(SheetLayer::Legend, {context.style.theme.text, context.style.theme.thinWidth, {}},
                 box);
}

} // namespace

std::vector<SectionLegendItem> SectionLegendItems(const SectionContext& context,
                                                  std::span<const SectionSource> sources) {
    return Items(context, sources).Collect();
}

double SectionLegendHeight(const SectionContext& context,
                           const std::vector<SectionLegendItem>& items, double width) {
    const int rows = Arrange(context, items, width, [](const auto&, double, int) {});
    return rows * kPitch * context.textHeight;
}

void AddSectionLegend(const SectionContext& context, const std::vector<SectionLegendItem>& items,
                      const SheetBox& box, SheetScene& scene) {
    const double h = context.textHeight;
    Arrange(context, items, box.Width(), [&](const SectionLegendItem& item, double x, int row) {
        const double middle = box.top + (row + 0.5) * kPitch * h;
        AddSample(context, item, {box.left + x, middle}, scene);
        AddText(scene, SheetLayer::Legend,
                FitText(context.words.measure, item.text, h, false,
                        WidthOf(context, item, box.Width()) - kToText * h + 1e-6),
                {box.left + x + kToText * h, middle + h / 2}, TextAnchor::Left,
                context.style.theme.text);
    });
}

std::string AreaText(double area, char decimalSeparator) {
    return NumberText::FormatScreen(area, area < 1 ? "#0.00##" : "#0.00", decimalSeparator) +
           " m\xC2\xB2";
}

} // namespace terravo
