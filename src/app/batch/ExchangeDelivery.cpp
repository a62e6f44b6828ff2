#include "app/batch/ExchangeDelivery.h"

#include "app/session/VectorMaker.h"
#include "exchange/VectorFile.h"
#include "util/Stopwatch.h"

#include <algorithm>
#include <optional>

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

// What the files hold; lines are smooth in some of them only.
class Contents {
public:
    Contents(const ExchangeCall& call, const LevelRule& rule, const SurveyContours& contours)
        : call_(call), rule_(rule), contours_(contours) {}

    VectorContent& For(const ExchangeFile& file) {
        const bool isSmooth = IsSmooth(file);
        std::optional<VectorContent>& content = isSmooth ? smooth_ : straight_;
        if (!content) {
            content = Make(isSmooth);
        }
        content->parts = file.parts;
        return *content;
    }

private:
    [[nodiscard]] bool IsSmooth(const ExchangeFile& file) const {
        return call_.wish.smoothing && TakesSmoothLines(*file.format, file.parts);
    }

    [[nodiscard]] VectorContent Make(bool isSmooth) const {
        VectorWish wish = call_.wish;
        wish.parts = {};
        for (const ExchangeFile& file : call_.files) {
            if (IsSmooth(file) == isSmooth) {
                wish.parts.Add(file.parts);
            }
        }
        if (!isSmooth) {
            wish.smoothing.reset();
        }
        return MakeContent(contours_, rule_, wish);
    }

    const ExchangeCall& call_;
    const LevelRule& rule_;
    const SurveyContours& contours_;
    std::optional<VectorContent> smooth_;
    std::optional<VectorContent> straight_;
};

} // namespace

ExchangeFigures WriteExchangeFile(const ExchangeFile& file, const VectorContent& content,
                                  const VectorOptions& options, bool verify, OutputGroup& group) {
    Stopwatch watch;
    VectorOutcome outcome =
        WriteVectorFile({file.path, &group}, *file.format, content, options, verify);
    ExchangeFigures figures = FiguresOf(file, content);
    figures.writeMilliseconds = watch.Lap() * 1e3;
    figures.verified = outcome.verified;
    figures.remarks = std::move(outcome.remarks);
    return figures;
}

std::vector<ExchangeFigures> DeliverExchange(const ExchangeCall& call, const LevelRule& rule,
                                             const SurveyContours& contours, OutputGroup& group,
                                             const std::function<void()>& betweenTwo) {
    std::vector<ExchangeFigures> all;
    Contents contents(call, rule, contours);
    for (const ExchangeFile& file : call.files) {
        betweenTwo();
        all.push_back(
            WriteExchangeFile(file, contents.For(file), call.options, call.verify, group));
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
