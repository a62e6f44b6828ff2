#include "app/batch/BatchSummary.h"

#include "app/batch/MeasureSummary.h"
#include "contour/LevelRuleText.h"
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

QJsonArray ToJson(const std::vector<double>& values) {
    QJsonArray array;
    for (const double value : values) {
        array.append(value);
    }
    return array;
}

QJsonObject InputToJson(const ImportOutcome& input) {
    const ImportPlan& plan = input.inspection.plan;
    const ImportReport& report = input.report;
    const std::string& readAs = input.inspection.readAs;
    const bool isTable =
        !plan.freeList && input.inspection.grid == GridFormat::None && readAs.empty();
    const auto ifTable = [isTable](const char* name) {
        return isTable ? QJsonValue(QLatin1String(name)) : QJsonValue();
    };
    const auto count = [](std::int64_t value) { return static_cast<qint64>(value); };
    return {{"columns", isTable           ? QString::fromStdString(NameOfColumns(plan.columns))
                        : !readAs.empty() ? QString::fromStdString(readAs)
                        : plan.freeList   ? QStringLiteral("free")
                                          : QStringLiteral("grid")},
            {"separator", ifTable(NameOf(plan.separator))},
            {"decimal", ifTable(plan.decimal == ',' ? "comma" : "point")},
            {"encoding",
             readAs.empty() ? QJsonValue(QLatin1String(NameOf(plan.encoding))) : QJsonValue()},
            {"records", count(report.records)},
            {"header_lines", count(report.headerLines)},
            {"comment_lines", count(report.commentLines)},
            {"blank_lines", count(report.blankLines)},
            {"void_heights", count(report.voidHeights)},
            {"bad_records", count(report.badRecords)}};
}

// What scripts read is in one language.
const TextCatalogue& English() {
    static const TextCatalogue kEnglish;
    return kEnglish;
}

QJsonObject FindingToJson(const Finding& finding, const PointLabels& labels) {
    QJsonArray points;
    QJsonArray lines;
    QJsonArray names;
    for (const Index point : finding.points) {
        points.append(point);
        if (labels.HasLabels()) {
            names.append(QString::fromStdString(std::string(labels.Name(point))));
        }
    }
    for (const std::int64_t line : finding.lines) {
        lines.append(static_cast<qint64>(line));
    }
    QJsonObject object{{"kind", NameOf(finding.kind)},
                       {"severity", NameOf(finding.severity)},
                       {"count", static_cast<qint64>(finding.count)},
                       {"points", points},
                       {"lines", lines},
                       {"names", names},
                       {"text", QString::fromStdString(SentenceOf(finding, labels, English()))}};
    if (finding.hasPlace) {
        object.insert("x", finding.x);
        object.insert("y", finding.y);
        object.insert("z", std::isfinite(finding.z) ? QJsonValue(finding.z) : QJsonValue());
    }
    return object;
}

QJsonArray FindingsToJson(const BatchFigures& figures) {
    QJsonArray findings;
    for (const Finding& finding : figures.findings) {
        findings.append(FindingToJson(finding, figures.labels));
    }
    return findings;
}

QJsonObject ToJson(const TerrainFigures& terrain) {
    return {{"azimuth", terrain.azimuth},
            {"elevation", terrain.elevation},
            {"exaggeration", terrain.exaggeration},
            {"width", terrain.width},
            {"height", terrain.height}};
}

QJsonObject SheetToJson(const SheetFigures& sheet) {
    QJsonArray levels;
    for (const double level : sheet.levels) {
        levels.append(level);
    }
    QJsonArray remarks;
    for (const std::string& remark : sheet.remarks) {
        remarks.append(QString::fromStdString(remark));
    }
    const auto count = [](std::size_t value) { return static_cast<qint64>(value); };
    const LabelReport& labels = sheet.labels;
    return {{"width_mm", sheet.width},
            {"height_mm", sheet.height},
            {"scale", sheet.scale},
            {"level_values", levels},
            {"labels", QJsonObject{{"texts", count(labels.texts)},
                                   {"lines", count(labels.lines)},
                                   {"labelled", count(labels.labelled)},
                                   {"too_short", count(labels.tooShort)},
                                   {"no_room", count(labels.noRoom)}}},
            {"remarks", remarks}};
}

QJsonObject ToJson(const SurfaceSummary& surface) {
    QJsonArray remarks;
    for (const std::string& remark : surface.remarks) {
        remarks.append(QString::fromStdString(remark));
    }
    const SurfaceFigures& figures = surface.figures;
    QJsonObject object{{"visible_triangles", figures.visibleTriangles},
                       {"hidden_triangles", figures.hiddenTriangles},
                       {"constrained_edges", static_cast<qint64>(figures.constrainedEdges)},
                       {"crossings", static_cast<qint64>(figures.crossings)},
                       {"plan_area", figures.planArea},
                       {"rings", figures.rings},
                       {"verified", surface.verified},
                       {"remarks", remarks}};
    if (surface.longestSide) {
        object.insert("longest_side", *surface.longestSide);
    }
    return object;
}

QJsonObject ProjectToJson(const ProjectFigures& project) {
    QJsonArray remarks;
    for (const std::string& remark : project.remarks) {
        remarks.append(QString::fromStdString(remark));
    }
    return {{"file", QString::fromStdString(project.file)},
            {"source", QString::fromStdString(project.source)},
            {"checksum_ok", project.checksumOk ? QJsonValue(*project.checksumOk) : QJsonValue()},
            {"remarks", remarks}};
}

QJsonObject ToJson(const SmoothFigures& smoothing) {
    return {{"fraction", smoothing.fraction},
            {"worst_height_error", smoothing.worst.height},
            {"worst_interval_part", smoothing.worst.interval},
            {"vertices", static_cast<qint64>(smoothing.vertices)},
            {"verified", smoothing.verified}};
}

QJsonArray ToJson(const std::vector<ExchangeFigures>& files) {
    const auto count = [](std::size_t value) { return static_cast<qint64>(value); };
    QJsonArray array;
    for (const ExchangeFigures& file : files) {
        QJsonArray remarks;
        for (const std::string& remark : file.remarks) {
            remarks.append(QString::fromStdString(remark));
        }
        array.append(QJsonObject{{"file", QString::fromStdString(file.file)},
                                 {"format", QString::fromStdString(file.format)},
                                 {"verified", file.verified},
                                 {"contours", count(file.contours)},
                                 {"labels", count(file.labels)},
                                 {"polygons", count(file.polygons)},
                                 {"points", count(file.points)},
                                 {"triangles", count(file.triangles)},
                                 {"milliseconds", Tenths(file.writeMilliseconds)},
                                 {"remarks", remarks}});
    }
    return array;
}

std::string JsonSummary(const BatchOptions& options, const BatchFigures& figures) {
    QJsonArray files;
    for (const std::string& file : figures.files) {
        files.append(QString::fromStdString(file));
    }
    const auto& spent = figures.milliseconds;
    QJsonObject summary{
        {"input", InputToJson(figures.input)},
        {"points", figures.points},
        {"unused_points", figures.unusedPoints},
        {"triangles", figures.triangles},
        {"hull_edges", figures.hullEdges},
        {"arithmetic", figures.arithmetic == Arithmetic::Exact ? "exact" : "plain"},
        {"extents",
         QJsonObject{{"x", ToJson(figures.x)}, {"y", ToJson(figures.y)}, {"z", ToJson(figures.z)}}},
        {"levels", figures.levels},
        {"level_values", ToJson(figures.levelValues)},
        {"segments", static_cast<qint64>(figures.segments)},
        {"files", files},
        {"milliseconds", QJsonObject{{"read", Tenths(spent.read)},
                                     {"triangulate", Tenths(spent.triangulate)},
                                     {"contour", Tenths(spent.contour)},
                                     {"draw", Tenths(spent.draw)},
                                     {"write", Tenths(spent.write)},
                                     {"total", Tenths(spent.total)}}},
    };
    if (figures.surface) {
        summary.insert("surface", ToJson(*figures.surface));
    }
    if (figures.project) {
        summary.insert("project", ProjectToJson(*figures.project));
    }
    if (figures.sheet) {
        summary.insert("sheet", SheetToJson(*figures.sheet));
    }
    if (figures.terrain) {
        summary.insert("terrain", ToJson(*figures.terrain));
    }
    if (figures.smoothing) {
        summary.insert("smoothing", ToJson(*figures.smoothing));
    }
    if (figures.measure) {
        QJsonObject measure = MeasureToJson(*figures.measure);
        measure.insert("milliseconds", Tenths(spent.measure));
        summary.insert("measure", measure);
    }
    if (!figures.exchange.empty()) {
        summary.insert("exchange", ToJson(figures.exchange));
    }
    if (options.check != CheckForm::None) {
        summary.insert("findings", FindingsToJson(figures));
    }
    return QJsonDocument(summary).toJson(QJsonDocument::Indented).toStdString();
}

std::string RangeText(const char* name, const Extent& extent) {
    return std::string(name) + " " + NumberText::FormatScreen(extent.min, "#0.0##", '.') + " to " +
           NumberText::FormatScreen(extent.max, "#0.0##", '.');
}

std::string TerrainText(const TerrainFigures& terrain) {
    const auto number = [](double value) { return NumberText::General(value); };
    return "terrain " + number(terrain.width) + " x " + number(terrain.height) +
           " pixels, looking to " + number(terrain.azimuth) + ", down " +
           number(terrain.elevation) + " degrees, heights x " + number(terrain.exaggeration) + "\n";
}

std::string SheetText(const SheetFigures& sheet) {
    std::string text =
        "sheet " + NumberText::General(sheet.width) + " x " + NumberText::General(sheet.height) +
        " mm, 1:" + NumberText::General(sheet.scale) + ", " + std::to_string(sheet.levels.size()) +
        " levels, " + std::to_string(sheet.labels.texts) + " values on " +
        std::to_string(sheet.labels.labelled) + " of " + std::to_string(sheet.labels.lines) +
        " lines";
    if (sheet.labels.labelled < sheet.labels.lines) {
        text += " (" + std::to_string(sheet.labels.tooShort) + " too short, " +
                std::to_string(sheet.labels.noRoom) + " without room)";
    }
    text += "\n";
    for (const std::string& remark : sheet.remarks) {
        text += remark + "\n";
    }
    return text;
}

std::string SurfaceText(const SurfaceSummary& surface) {
    const SurfaceFigures& figures = surface.figures;
    std::string text = "surface: " + std::to_string(figures.visibleTriangles) + " visible and " +
                       std::to_string(figures.hiddenTriangles) + " hidden triangles, " +
                       std::to_string(figures.constrainedEdges) + " constrained edges, " +
                       std::to_string(figures.crossings) + " crossings, plan area " +
                       NumberText::FormatScreen(figures.planArea, "#0.0##", '.') + ", " +
                       std::to_string(figures.rings) + (figures.rings == 1 ? " ring" : " rings") +
                       (surface.verified ? ", verified\n" : "\n");
    for (const std::string& remark : surface.remarks) {
        text += remark + "\n";
    }
    return text;
}

std::string SmoothText(const SmoothFigures& smoothing) {
    // What is said to be the most must not be less.
    const auto rounded = [](double value) { return NumberText::RoundedUp(value, 3, '.'); };
    return "smooth lines: fraction " + rounded(smoothing.fraction) + ", " +
           std::to_string(smoothing.vertices) + " vertices, off their height by " +
           rounded(smoothing.worst.height) + " at most, " + rounded(smoothing.worst.interval) +
           " of the way to the next level" + (smoothing.verified ? ", verified\n" : "\n");
}

std::string ExchangeText(const std::vector<ExchangeFigures>& files) {
    std::string text;
    for (const ExchangeFigures& file : files) {
        text += file.format + " " + file.file + ": " + CountsOf(file) +
                (file.verified ? ", verified\n" : ", not verified\n");
        for (const std::string& remark : file.remarks) {
            text += remark + "\n";
        }
    }
    return text;
}

std::string RuleText(const LevelRule& rule) {
    switch (rule.kind) {
    case LevelRuleKind::ByCount:
        break;
    case LevelRuleKind::ByInterval:
        return " every " + TypedNumber(rule.interval, '.') +
               (rule.base > 0 || rule.base < 0 ? " on base " + TypedNumber(rule.base, '.') : "");
    case LevelRuleKind::ByList:
        return " of the list";
    }
    return {};
}

std::string PlainSummary(const BatchOptions& options, const BatchFigures& figures) {
    std::string text;
    if (figures.project) {
        text += "project " + figures.project->file + "\n";
        for (const std::string& remark : figures.project->remarks) {
            text += remark + "\n";
        }
    }
    text += options.pointFile + ": " + DescribeImport(figures.input, figures.points);
    if (figures.unusedPoints > 0) {
        text += " (" + std::to_string(figures.unusedPoints) +
                (figures.surface ? " took no part)" : " took no part: repeats)");
    }
    text += ", " + std::to_string(figures.triangles) + " triangles, " +
            std::to_string(figures.hullEdges) + " hull edges" +
            (figures.arithmetic == Arithmetic::Exact ? ", exact signs\n" : "\n");
    text += RangeText("x", figures.x) + ", " + RangeText("y", figures.y) + ", " +
            RangeText("z", figures.z) + "\n";
    text += std::to_string(figures.levels) + (figures.levels == 1 ? " level" : " levels") +
            RuleText(options.map.levels) + ", " + std::to_string(figures.segments) + " segments, " +
            NumberText::General(Tenths(figures.milliseconds.total)) + " ms\n";
    if (figures.surface) {
        text += SurfaceText(*figures.surface);
    }
    if (figures.sheet) {
        text += SheetText(*figures.sheet);
    }
    if (figures.terrain) {
        text += TerrainText(*figures.terrain);
    }
    if (figures.smoothing) {
        text += SmoothText(*figures.smoothing);
    }
    if (figures.measure) {
        text += MeasureText(*figures.measure);
    }
    text += ExchangeText(figures.exchange);
    for (const std::string& file : figures.files) {
        text += "wrote " + file + "\n";
    }
    if (options.check == CheckForm::Text) {
        text += std::to_string(figures.findings.size()) + " findings\n";
        for (const Finding& finding : figures.findings) {
            text += std::string(NameOf(finding.severity)) + ", " + NameOf(finding.kind) + ": " +
                    SentenceOf(finding, figures.labels, English()) + "\n";
        }
    }
    return text;
}

} // namespace

std::string SummaryText(const BatchOptions& options, const BatchFigures& figures) {
    return options.summary == SummaryForm::Json ? JsonSummary(options, figures)
                                                : PlainSummary(options, figures);
}

} // namespace terravo
