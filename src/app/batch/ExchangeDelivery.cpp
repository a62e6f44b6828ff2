#include "app/batch/ExchangeDelivery.h"

#include "exchange/VectorFile.h"
#include "util/Stopwatch.h"

#include <algorithm>

namespace terravo {
namespace {

ExchangeFigures FiguresOf(const ExchangeFile& file, const VectorContent& content) {
    ExchangeFigures figures;
    figures.file = file.path;
    figures.format = std::string(file.format->name);
    figures.contours = static_cast<std::size_t>(
        std::count_if(content.contours.begin(), content.contours.end(),
                      [&](const VectorContour& contour) { return content.Shows(contour); }));
    const auto ifHas = [&](VectorPart part, std::size_t count) {
        return content.parts.Has(part) ? count : 0;
    };
    figures.labels = ifHas(VectorPart::Labels, content.labels.size());
    figures.points = ifHas(VectorPart::Points, content.PointCount());
    figures.triangles = ifHas(VectorPart::Triangles, content.triangles.size());
    for (const LevelBand& band : content.bands) {
        figures.polygons += ifHas(VectorPart::Bands, band.polygons.size());
    }
    return figures;
}

} // namespace

std::vector<ExchangeFigures> DeliverExchange(const ExchangeCall& call, const LevelRule& rule,
                                             const SurveyContours& contours, OutputGroup& group,
                                             const std::function<void()>& betweenTwo) {
    VectorContent content = MakeVectorContent(
        SourceOf(contours.TheSurvey().Surface(), rule, contours.Levels(), contours.Contours()),
        call.wish);
    std::vector<ExchangeFigures> all;
    for (const ExchangeFile& file : call.files) {
        betweenTwo();
        content.parts = file.parts;
        Stopwatch watch;
        VectorOutcome outcome =
            WriteVectorFile({file.path, &group}, *file.format, content, call.options, call.verify);
        ExchangeFigures figures = FiguresOf(file, content);
        figures.writeMilliseconds = watch.Lap() * 1e3;
        figures.verified = outcome.verified;
        figures.remarks = std::move(outcome.remarks);
        all.push_back(std::move(figures));
    }
    return all;
}

std::string CountsOf(const ExchangeFigures& figures) {
    std::string text;
    const auto add = [&text](std::size_t count, const char* one, const char* many) {
        if (count > 0) {
            text += (text.empty() ? "" : ", ") + std::to_string(count) + " " +
                    (count == 1 ? one : many);
        }
    };
    add(figures.contours, "contour", "contours");
    add(figures.labels, "value", "values");
    add(figures.polygons, "polygon", "polygons");
    add(figures.points, "point", "points");
    add(figures.triangles, "triangle", "triangles");
    return text.empty() ? "nothing" : text;
}

} // namespace terravo
