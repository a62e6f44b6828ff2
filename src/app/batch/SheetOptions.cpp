#include "app/batch/SheetOptions.h"

#include "app/batch/UsageError.h"
#include "export/PictureExport.h"
#include "sheet/SheetTheme.h"

#include <algorithm>
#include <optional>

namespace terravo {
namespace {

double NumberOf(const QCommandLineParser& parser, const QCommandLineOption& option, double low,
                double high) {
    bool isNumber = false;
    const QString text = parser.value(option);
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !(value >= low && value <= high)) {
        Refuse(option, QStringLiteral("a number from %1 to %2").arg(low).arg(high), text);
    }
    return value;
}

// "500" or "1:500".
std::optional<double> ScaleOf(const QCommandLineParser& parser, const QCommandLineOption& option) {
    QString text = parser.value(option);
    if (text == QLatin1String("fit")) {
        return std::nullopt;
    }
    if (text.startsWith(QLatin1String("1:"))) {
        text.remove(0, 2);
    }
    bool isNumber = false;
    const double scale = text.toDouble(&isNumber);
    constexpr double kSmallest = 1e9;
    if (!isNumber || !(scale >= 0.001 && scale <= kSmallest)) {
        Refuse(option, QStringLiteral("fit or the N of 1:N"), parser.value(option));
    }
    return scale;
}

QString NamesOfThemes() {
    QStringList names;
    for (const SheetTheme& theme : SheetThemes()) {
        names.append(QString::fromStdString(theme.name));
    }
    return names.join(QStringLiteral(", "));
}

QString NamesOfLayers() {
    QStringList names;
    for (const SheetLayer layer : SwitchableLayers()) {
        names.append(QLatin1String(NameOf(layer)));
    }
    return names.join(QStringLiteral(", "));
}

} // namespace

void SheetOptions::AddTo(QCommandLineParser& parser) const {
    parser.addOptions({sheet_, landscape_, portrait_, scale_, rotation_, dpi_, theme_, indexEvery_,
                       layers_, gridLines_, label_, labelSpacing_, labelUphill_, textHeight_,
                       title_, project_, author_, datum_, date_});
}

bool SheetOptions::IsAnySet(const QCommandLineParser& parser) const {
    const auto all = {&landscape_,  &portrait_,  &scale_,  &rotation_,     &theme_, &indexEvery_,
                      &layers_,     &gridLines_, &label_,  &labelSpacing_, &title_, &labelUphill_,
                      &textHeight_, &project_,   &author_, &datum_,        &date_};
    return std::any_of(all.begin(), all.end(),
                       [&](const QCommandLineOption* option) { return parser.isSet(*option); });
}

void SheetOptions::RefuseWithoutSheet(const QCommandLineParser& parser, bool withVectors) const {
    for (const QCommandLineOption* option :
         {&landscape_, &portrait_, &scale_, &rotation_, &dpi_, &theme_, &indexEvery_, &layers_,
          &gridLines_, &label_, &labelSpacing_, &labelUphill_, &textHeight_, &title_, &project_,
          &author_, &datum_, &date_}) {
        const bool isShared = option == &textHeight_ || option == &indexEvery_;
        if (parser.isSet(*option) && !(isShared && withVectors)) {
            throw UsageError(QStringLiteral("--%1 is for a sheet: --sheet FILE writes one.")
                                 .arg(option->names().last()));
        }
    }
}

SheetCall SheetOptions::Parse(const QCommandLineParser& parser, const QString& paper,
                              bool withVectors, bool withOthers) const {
    SheetCall call;
    if (!parser.isSet(sheet_) && !withOthers) {
        RefuseWithoutSheet(parser, withVectors);
        return call;
    }
    if (withVectors && parser.isSet(textHeight_)) {
        throw UsageError(
            QStringLiteral("--text-height is in millimetres for a sheet and in drawing units for "
                           "vector files: write them in two runs."));
    }
    call.file = parser.value(sheet_).toStdString();
    if (parser.isSet(sheet_) && call.file.empty()) {
        throw UsageError(QStringLiteral("--sheet needs a file name."));
    }
    if (!PictureKindOf(call.file)) {
        Refuse(sheet_, QStringLiteral("a PDF, SVG or PNG file"), parser.value(sheet_));
    }
    if (!paper.isEmpty()) {
        const std::optional<PaperSize> size = ParsePaperSize(paper.toStdString());
        if (!size) {
            throw UsageError(QStringLiteral("--paper takes A4, A3, A2, A1, A0, Letter, Tabloid or "
                                            "WxH in millimetres, not \"%1\".")
                                 .arg(paper));
        }
        call.plan.paper = *size;
        if (paper.contains(QLatin1Char('x'))) {
            call.plan.landscape = paper.section(QLatin1Char('x'), 0, 0).toDouble() >
                                  paper.section(QLatin1Char('x'), 1).toDouble();
        }
    }
    if (parser.isSet(landscape_) && parser.isSet(portrait_)) {
        throw UsageError(QStringLiteral("A sheet is either --landscape or --portrait."));
    }
    if (parser.isSet(landscape_) || parser.isSet(portrait_)) {
        call.plan.landscape = parser.isSet(landscape_);
    }
    call.layersAreChosen = parser.isSet(layers_);
    call.labelsAreChosen = parser.isSet(label_);
    call.planIsChosen = !paper.isEmpty() || IsAnySet(parser);
    call.plan.scale = ScaleOf(parser, scale_);
    if (parser.isSet(rotation_)) {
        call.plan.rotation = NumberOf(parser, rotation_, -360, 360);
    }
    constexpr double kMostDots = 2400;
    call.dotsPerInch = static_cast<int>(NumberOf(parser, dpi_, 10, kMostDots));
    ParseStyle(parser, call.plan);
    call.titleOfOthers = parser.isSet(sheet_) ? "" : call.plan.texts.title;
    ParseLabels(parser, call.plan);
    return call;
}

void SheetOptions::ParseStyle(const QCommandLineParser& parser, SheetPlan& plan) const {
    plan.theme = parser.value(theme_).toStdString();
    if (FindTheme(plan.theme) == nullptr) {
        Refuse(theme_, NamesOfThemes(), parser.value(theme_));
    }
    constexpr double kMostEvery = 100000;
    plan.indexEvery = static_cast<int>(NumberOf(parser, indexEvery_, 0, kMostEvery));
    if (parser.isSet(layers_)) {
        const std::optional<SheetLayers> layers = ParseLayers(parser.value(layers_).toStdString());
        if (!layers) {
            Refuse(layers_, NamesOfLayers(), parser.value(layers_));
        }
        plan.layers = *layers;
    }
    plan.gridLines = parser.isSet(gridLines_);
    const auto text = [&parser](const QCommandLineOption& option) {
        return parser.value(option).toStdString();
    };
    plan.texts = {text(title_), text(project_), text(date_), text(datum_), text(author_)};
}

void SheetOptions::ParseLabels(const QCommandLineParser& parser, SheetPlan& plan) const {
    const QString which = parser.value(label_);
    if (which == QLatin1String("none")) {
        plan.labels = SheetLabels::None;
    } else if (which == QLatin1String("all")) {
        plan.labels = SheetLabels::All;
    } else if (which != QLatin1String("index")) {
        Refuse(label_, QStringLiteral("none, index or all"), which);
    }
    if (parser.isSet(labelSpacing_)) {
        plan.labelSpacing = NumberOf(parser, labelSpacing_, 5, 10000);
    }
    plan.labelsUphill = parser.isSet(labelUphill_);
    if (parser.isSet(textHeight_)) {
        plan.textHeight = NumberOf(parser, textHeight_, 0.5, 20);
    }
}

} // namespace terravo
