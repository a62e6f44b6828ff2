#include "app/session/MeasureReport.h"

#include "export/vector/CsvField.h"
#include "export/vector/VectorNumber.h"
#include "util/NumberText.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace terravo {
namespace {

constexpr const char* kSquare = "m²";
constexpr const char* kCubic = "m³";

std::string InUnit(const std::string& name, const char* unit) {
    return name + " [" + unit + "]";
}

// Letters, not bytes: of a UTF-8 letter only the first byte counts.
std::size_t WidthOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

std::string Padded(const MeasureCell& cell, std::size_t width) {
    const std::string room(width - WidthOf(cell.text), ' ');
    return cell.number ? room + cell.text : cell.text + room;
}

void AppendLine(std::string& out, const std::vector<MeasureCell>& cells,
                const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += (i == 0 ? "" : "  ") + Padded(cells[i], widths[i]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out += line + "\n";
}

std::string CsvText(const std::string& text) {
    std::string field;
    AppendCsvField(field, text);
    return field;
}

std::string CsvCell(const MeasureCell& cell) {
    if (!cell.number || !std::isfinite(*cell.number)) {
        return CsvText(cell.text);
    }
    std::string number;
    VectorNumber::AppendShort(number, *cell.number);
    return number;
}

void AppendRecord(std::string& out, const std::vector<MeasureCell>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        out += (i == 0 ? "" : ",") + CsvCell(cells[i]);
    }
    out += "\n";
}

std::vector<MeasureCell> HeadingsOf(const MeasureReport& report) {
    std::vector<MeasureCell> headings;
    for (const std::string& column : report.columns) {
        headings.push_back({column, std::nullopt});
    }
    return headings;
}

std::vector<std::size_t> WidthsOf(const MeasureReport& report) {
    std::vector<std::size_t> widths;
    for (const std::string& column : report.columns) {
        widths.push_back(WidthOf(column));
    }
    for (const std::vector<MeasureCell>& row : report.rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], WidthOf(row[i].text));
        }
    }
    return widths;
}

std::string NameOfFile(const Survey& survey) {
    return survey.Points().sourceName;
}

} // namespace

std::string ShownNumber(double value, char separator) {
    constexpr int kDecimals = 3;
    constexpr int kDigits = 4; // that show of a small number
    std::string pattern = "#0.000";
    const double size = std::abs(value);
    if (size > 0 && size < 1) {
        const int zeros = static_cast<int>(-std::floor(std::log10(size))) - 1;
        pattern.append(static_cast<std::size_t>(std::clamp(zeros + kDigits - kDecimals, 0, 9)),
                       '#');
    }
    return NumberText::FormatScreen(value, pattern, separator);
}

MeasureCell MeasureReporter::Cell(double value) const {
    return {Shown(value), value};
}

MeasureReport MeasureReporter::Begin(std::string title, bool comparesSurveys, bool isWithin) const {
    MeasureReport report;
    report.title = std::move(title);
    report.about.emplace_back(Word(Text::MeasureSurvey), NameOfFile(desk_.First()));
    if (comparesSurveys && desk_.Second() != nullptr) {
        report.about.emplace_back(Word(Text::MeasureSecond), NameOfFile(*desk_.Second()));
    }
    if (isWithin) {
        std::size_t vertices = 0;
        for (const PlanRing& ring : desk_.Polygon()) {
            vertices += ring.size();
        }
        report.about.emplace_back(
            Word(Text::MeasureWithin),
            vertices == 0 ? Word(Text::MeasureWhole)
                          : WithValues(Word(Text::MeasureInPolygon), {std::to_string(vertices)}));
    }
    return report;
}

void MeasureReporter::AddColumns(MeasureReport& report) const {
    report.columns = {Word(Text::MeasureWhat), Word(Text::MeasureValue), Word(Text::MeasureUnit)};
}

void MeasureReporter::AddExtent(MeasureReport& report, const std::string& name,
                                const Extent& extent) const {
    report.rows.push_back(
        {{name + ": " + Word(Text::MeasureLowest), {}}, Cell(extent.min), {"m", {}}});
    report.rows.push_back(
        {{name + ": " + Word(Text::MeasureHighest), {}}, Cell(extent.max), {"m", {}}});
}

MeasureReport MeasureReporter::Areas(const AreaFigures& figures) const {
    MeasureReport report = Begin(Word(Text::MeasureAreasTitle), false, true);
    AddColumns(report);
    const auto add = [&](Text name, MeasureCell value, const char* unit) {
        report.rows.push_back({{Word(name), {}}, std::move(value), {unit, {}}});
    };
    add(Text::MeasurePlanArea, Cell(figures.plan), kSquare);
    if (figures.triangles == 0) {
        report.remark = Word(Text::MeasureNothingWithin);
        return report;
    }
    add(Text::MeasureSurfaceArea, Cell(figures.surface), kSquare);
    add(Text::MeasurePerimeter, Cell(figures.perimeter), "m");
    add(Text::MeasureMeanHeight, Cell(figures.meanHeight), "m");
    AddSlope(report, Text::MeasureMeanSlope, figures.meanSlope);
    AddSlope(report, Text::MeasureMaxSlope, figures.maxSlope);
    AddExtent(report, "x", figures.x);
    AddExtent(report, "y", figures.y);
    AddExtent(report, "z", figures.z);
    add(Text::MeasureTriangles,
        {std::to_string(figures.triangles), static_cast<double>(figures.triangles)}, "");
    return report;
}

// In both units that slopes are told in.
void MeasureReporter::AddSlope(MeasureReport& report, Text name, double tangent) const {
    const double degrees = std::atan(tangent) * 180 / std::numbers::pi;
    report.rows.push_back({{Word(name), {}}, Cell(100 * tangent), {"%", {}}});
    report.rows.push_back({{Word(name), {}}, Cell(degrees), {"°", {}}});
}

MeasureReport MeasureReporter::Hypsometry(const std::vector<HypsometryRow>& rows) const {
    MeasureReport report = Begin(Word(Text::MeasureHypsometryTitle), false, true);
    report.columns = {InUnit(Word(Text::MeasureHeight), "m"),
                      InUnit(Word(Text::MeasureAreaAbove), kSquare),
                      InUnit(Word(Text::MeasureVolumeAbove), kCubic),
                      InUnit(Word(Text::MeasureBandArea), kSquare),
                      InUnit(Word(Text::MeasureBandVolume), kCubic)};
    for (const HypsometryRow& row : rows) {
        report.rows.push_back({Cell(row.height), Cell(row.areaAbove), Cell(row.volumeAbove),
                               Cell(row.bandArea), Cell(row.bandVolume)});
    }
    return report;
}

void MeasureReporter::AddVolume(MeasureReport& report, const VolumeFigures& figures) const {
    AddColumns(report);
    const auto add = [&](Text name, double value, const char* unit) {
        report.rows.push_back({{Word(name), {}}, Cell(value), {unit, {}}});
    };
    add(Text::MeasureCut, figures.cut, kCubic);
    add(Text::MeasureFill, figures.fill, kCubic);
    add(Text::MeasureNet, figures.net, kCubic);
    add(Text::MeasureCommonArea, figures.planArea, kSquare);
    add(Text::MeasureCutArea, figures.cutArea, kSquare);
    add(Text::MeasureFillArea, figures.fillArea, kSquare);
}

MeasureReport MeasureReporter::ToDatum(const VolumeFigures& figures, double datum) const {
    MeasureReport report =
        Begin(WithValues(Word(Text::MeasureDatumTitle), {Shown(datum)}), false, true);
    AddVolume(report, figures);
    if (!(figures.planArea > 0)) {
        report.remark = Word(Text::MeasureNothingWithin);
    }
    return report;
}

MeasureReport MeasureReporter::ToSecond(const VolumeFigures& figures) const {
    MeasureReport report = Begin(
        WithValues(Word(Text::MeasureCompareTitle), {NameOfFile(*desk_.Second())}), true, true);
    AddVolume(report, figures);
    if (!(figures.planArea > 0)) {
        report.remark = Word(Text::MeasureNotCommon);
    }
    return report;
}

MeasureReport MeasureReporter::Place(PlanPoint place, const std::optional<PlaceOnSurface>& found,
                                     const NearestSurveyPoint& nearest) const {
    MeasureReport report = Begin(
        WithValues(Word(Text::MeasurePlaceTitle), {Shown(place.x), Shown(place.y)}), true, false);
    AddColumns(report);
    const auto add = [&](const std::string& name, MeasureCell value, const char* unit) {
        report.rows.push_back({{name, {}}, std::move(value), {unit, {}}});
    };
    add("x", Cell(place.x), "m");
    add("y", Cell(place.y), "m");
    if (found) {
        add(Word(Text::MeasureHeight), Cell(found->height), "m");
        if (const std::optional<double> second = HeightOfSecond(place)) {
            add(Word(Text::MeasureHeight) + ": " + NameOfFile(*desk_.Second()), Cell(*second), "m");
            add(Word(Text::MeasureDifference), Cell(*second - found->height), "m");
        }
        AddSlope(report, Text::MeasureSlope, found->slope);
        add(Word(Text::MeasureAspect), Cell(found->aspect), "°");
    } else {
        report.remark = Word(Text::MeasureNothingHere);
    }
    AddNearest(report, nearest);
    return report;
}

std::optional<double> MeasureReporter::HeightOfSecond(PlanPoint place) const {
    if (desk_.Second() == nullptr) {
        return std::nullopt;
    }
    const ShownSurface shown = desk_.Second()->Surface();
    const std::optional<PlaceOnSurface> found = LookAt(shown.points, shown.triangles, place);
    return found ? std::optional(found->height) : std::nullopt;
}

void MeasureReporter::AddNearest(MeasureReport& report, const NearestSurveyPoint& nearest) const {
    if (nearest.number == 0) {
        return;
    }
    const std::string label = desk_.First().Points().labels.NameAndCode(nearest.number);
    report.rows.push_back({{Word(Text::MeasureNearest), {}},
                           {label.empty() ? std::to_string(nearest.number) : label, {}},
                           {}});
    report.rows.push_back(
        {{Word(Text::MeasureNearestDistance), {}}, Cell(nearest.distance), {"m", {}}});
}

MeasureReport MeasureReporter::Cross(const CrossSectionFigures& figures,
                                     const MeasureQuestion& question) const {
    MeasureReport report =
        Begin(WithValues(Word(Text::MeasureCrossTitle),
                         {Shown(question.plan.spacing), Shown(question.plan.width)}),
              true, false);
    report.columns = {InUnit(Word(Text::MeasureStation), "m"),
                      InUnit(Word(Text::MeasureCutArea), kSquare),
                      InUnit(Word(Text::MeasureFillArea), kSquare)};
    for (const SectionFigures& section : figures.sections) {
        const SectionAreas areas = section.areas.value_or(SectionAreas());
        report.rows.push_back({Cell(section.station),
                               section.areas ? Cell(areas.cut) : MeasureCell(),
                               section.areas ? Cell(areas.fill) : MeasureCell()});
    }
    const auto addVolume = [&](Text name, const std::optional<VolumeFigures>& volume) {
        if (volume) {
            report.rows.push_back(
                {{InUnit(Word(name), kCubic), {}}, Cell(volume->cut), Cell(volume->fill)});
        }
    };
    addVolume(Text::MeasureEndAreas, figures.endAreas);
    addVolume(Text::MeasureExact, figures.exact);
    if (question.crossDatum && desk_.Second() == nullptr) {
        report.about.emplace_back(Word(Text::MeasureHeight), Shown(*question.crossDatum) + " m");
    }
    report.remark = figures.remark ? Word(*figures.remark) : std::string();
    return report;
}

std::string TextOf(const MeasureReport& report) {
    std::string text = report.title + "\n";
    for (const auto& [name, value] : report.about) {
        text += name + ": " + value + "\n";
    }
    const std::vector<std::size_t> widths = WidthsOf(report);
    std::vector<MeasureCell> headings = HeadingsOf(report);
    for (std::size_t i = 0; i < headings.size() && !report.rows.empty(); ++i) {
        headings[i].number = report.rows.front()[i].number; // aligned like what is below
    }
    AppendLine(text, headings, widths);
    for (const std::vector<MeasureCell>& row : report.rows) {
        AppendLine(text, row, widths);
    }
    return report.remark.empty() ? text : text + report.remark + "\n";
}

std::string CsvOf(const MeasureReport& report) {
    constexpr std::size_t kColumnsOfValues = 3; // what, value, unit
    std::string text;
    AppendRecord(text, HeadingsOf(report));
    if (report.columns.size() == kColumnsOfValues && !report.rows.empty() &&
        !report.rows.front().front().number) {
        for (const auto& [name, value] : report.about) {
            AppendRecord(text, {{name, {}}, {value, {}}, {}});
        }
    }
    for (const std::vector<MeasureCell>& row : report.rows) {
        AppendRecord(text, row);
    }
    return text;
}

} // namespace terravo
