#include "sheet/section/SectionHead.h"

#include "sheet/FitText.h"
#include "sheet/GridLines.h"
#include "sheet/SheetLayout.h"
#include "util/NumberText.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

constexpr double kTitle = 1.8;    // in text heights
constexpr double kToScales = 3.9; // from the top to the base line of the scales
constexpr double kHead = 6;

std::string ScalesText(const SectionContext& context, const SectionScales& scales) {
    const auto number = [&](double value) {
        return ShortNumberText(value, context.words.decimalSeparator);
    };
    const TextCatalogue& texts = context.words.texts;
    return scales.exaggeration == 1
               ? WithValues(texts[Text::SectionOneScale], {number(scales.scale)})
               : WithValues(texts[Text::SectionScales],
                            {number(scales.scale), number(scales.scale / scales.exaggeration),
                             number(scales.exaggeration)});
}

} // namespace

SectionContext SectionContextOf(const SectionPlan& plan, const SheetWords& words,
                                const SectionStyle& style) {
    const double height = TextHeightOn(plan.paper, plan.textHeight);
    return {plan, words, style, height, std::min(0.8 * height, 2.0)};
}

SheetScene BlankSheet(const SectionContext& context, bool landscape) {
    const PaperSize& paper = context.plan.paper;
    SheetScene scene;
    scene.width = landscape ? paper.height : paper.width;
    scene.height = landscape ? paper.width : paper.height;
    const SheetPoint corners[] = {
        {0, 0}, {scene.width, 0}, {scene.width, scene.height}, {0, scene.height}};
    scene.AddArea(SheetLayer::Paper, context.style.theme.paper, corners);
    return scene;
}

double SectionHeadHeight(const SectionContext& context) {
    return kHead * context.textHeight;
}

void AddSectionHead(const SectionContext& context, const SheetBox& inside, const std::string& title,
                    const SectionScales& scales, const std::string& beside, SheetScene& scene) {
    const double h = context.textHeight;
    const TextMeasure& measure = context.words.measure;
    AddText(scene, SheetLayer::TitleBlock,
            FitText(measure, title, kTitle * h, true, inside.Width(), 0.6),
            {inside.left, inside.top + kTitle * h}, TextAnchor::Left, context.style.theme.text);
    const double base = inside.top + kToScales * h;
    const double taken = beside.empty() ? 0 : context.Width(beside) + 2 * h;
    AddText(scene, SheetLayer::TitleBlock,
            FitText(measure, ScalesText(context, scales), h, false, inside.Width() - taken),
            {inside.left, base}, TextAnchor::Left, context.style.theme.quietText);
    AddText(scene, SheetLayer::TitleBlock, {beside, h, false, 0}, {inside.right, base},
            TextAnchor::Right, context.style.theme.quietText);
}

std::string SectionTitle(const SectionContext& context, const SectionSource& source) {
    if (!context.plan.title.empty()) {
        return context.plan.title;
    }
    const std::string names = source.second != nullptr && !source.secondName.empty()
                                  ? source.firstName + ", " + source.secondName
                                  : source.firstName;
    const std::string title = source.station ? StationText(context, *source.station)
                                             : context.words.texts[Text::SectionTitle];
    return names.empty() ? title : title + ": " + names;
}

Statement SectionDoesNotFit(double width, double height, double roomAcross, double roomUpright) {
    const auto whole = [](double value) { return NumberText::General(std::ceil(value)); };
    return {Text::SectionDoesNotFit,
            {whole(width), whole(height), whole(roomAcross), whole(roomUpright)}};
}

std::string StationText(const SectionContext& context, double station) {
    return WithValues(
        context.words.texts[Text::SectionStation],
        {NumberText::FormatScreen(station, "#0.0##", context.words.decimalSeparator)});
}

} // namespace terravo
