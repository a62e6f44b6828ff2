#include "app/batch/BatchSummary.h"

#include "util/NumberText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace terravo {
namespace {

double Tenths(double value) {
    return std::round(value * 10) / 10;
}

QJsonArray ToJson(const Extent& extent) {
    return {extent.min, extent.max};
}

std::string JsonSummary(const BatchFigures& figures) {
    QJsonArray files;
    for (const std::string& file : figures.files) {
        files.append(QString::fromStdString(file));
    }
    const auto& spent = figures.milliseconds;
    const QJsonObject summary{
        {"points", figures.points},
        {"unused_points", figures.unusedPoints},
        {"triangles", figures.triangles},
        {"hull_edges", figures.hullEdges},
        {"arithmetic", figures.arithmetic == Arithmetic::Exact ? "exact" : "plain"},
        {"extents",
         QJsonObject{{"x", ToJson(figures.x)}, {"y", ToJson(figures.y)}, {"z", ToJson(figures.z)}}},
        {"levels", figures.levels},
        {"segments", static_cast<qint64>(figures.segments)},
        {"files", files},
        {"milliseconds", QJsonObject{{"read", Tenths(spent.read)},
                                     {"triangulate", Tenths(spent.triangulate)},
                                     {"contour", Tenths(spent.contour)},
                                     {"draw", Tenths(spent.draw)},
                                     {"write", Tenths(spent.write)},
                                     {"total", Tenths(spent.total)}}},
    };
    return QJsonDocument(summary).toJson(QJsonDocument::Indented).toStdString();
}

std::string RangeText(const char* name, const Extent& extent) {
    return std::string(name) + " " + NumberText::FormatScreen(extent.min, "#0.0##", '.') + " to " +
           NumberText::FormatScreen(extent.max, "#0.0##", '.');
}

std::string PlainSummary(const BatchOptions& options, const BatchFigures& figures) {
    std::string text = options.pointFile + ": " + std::to_string(figures.points) + " points";
    if (figures.unusedPoints > 0) {
        text += " (" + std::to_string(figures.unusedPoints) + " took no part: repeats)";
    }
    text += ", " + std::to_string(figures.triangles) + " triangles, " +
            std::to_string(figures.hullEdges) + " hull edges" +
            (figures.arithmetic == Arithmetic::Exact ? ", exact signs\n" : "\n");
    text += RangeText("x", figures.x) + ", " + RangeText("y", figures.y) + ", " +
            RangeText("z", figures.z) + "\n";
    text += std::to_string(figures.levels) + " levels, " + std::to_string(figures.segments) +
            " segments, " + NumberText::General(Tenths(figures.milliseconds.total)) + " ms\n";
    for (const std::string& file : figures.files) {
        text += "wrote " + file + "\n";
    }
    return text;
}

} // namespace

std::string SummaryText(const BatchOptions& options, const BatchFigures& figures) {
    return options.summary == SummaryForm::Json ? JsonSummary(figures)
                                                : PlainSummary(options, figures);
}

} // namespace terravo
