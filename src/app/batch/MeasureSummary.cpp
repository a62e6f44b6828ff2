#include "app/batch/MeasureSummary.h"

#include "util/NumberText.h"

#include <QJsonArray>

#include <algorithm>
#include <span>

namespace terravo {
namespace {

QString Utf8(const std::string& text) {
    return QString::fromStdString(text);
}

QJsonValue Count(std::size_t value) {
    return static_cast<qint64>(value);
}

QJsonArray ToJson(const Extent& extent) {
    return {extent.min, extent.max};
}

QJsonArray ToJson(const std::vector<std::string>& texts) {
    QJsonArray array;
    for (const std::string& text : texts) {
        array.append(Utf8(text));
    }
    return array;
}

QJsonArray ToJson(const std::vector<PlanPoint>& line) {
    QJsonArray array;
    for (const PlanPoint place : line) {
        array.append(QJsonArray{place.x, place.y});
    }
    return array;
}

QJsonObject ToJson(const AreaFigures& areas) {
    const bool hasGround = areas.triangles > 0;
    const auto extent = [&](const Extent& of) {
        return hasGround ? QJsonValue(ToJson(of)) : QJsonValue();
    };
    const auto mean = [&](double value) { return hasGround ? QJsonValue(value) : QJsonValue(); };
    return {{"plan", areas.plan},
            {"surface", areas.surface},
            {"perimeter", areas.perimeter},
            {"mean_height", mean(areas.meanHeight)},
            {"mean_slope", mean(areas.meanSlope)},
            {"max_slope", mean(areas.maxSlope)},
            {"x", extent(areas.x)},
            {"y", extent(areas.y)},
            {"z", extent(areas.z)},
            {"triangles", areas.triangles}};
}

QJsonArray ToJson(const std::vector<HypsometryRow>& rows) {
    QJsonArray array;
    for (const HypsometryRow& row : rows) {
        array.append(QJsonObject{{"height", row.height},
                                 {"area_above", row.areaAbove},
                                 {"volume_above", row.volumeAbove},
                                 {"band_area", row.bandArea},
                                 {"band_volume", row.bandVolume}});
    }
    return array;
}

QJsonObject ToJson(const VolumeFigures& figures) {
    return {{"cut", figures.cut},          {"fill", figures.fill},
            {"net", figures.net},          {"plan_area", figures.planArea},
            {"cut_area", figures.cutArea}, {"fill_area", figures.fillArea}};
}

QJsonObject ToJson(const DatumVolume& volume) {
    QJsonObject object = ToJson(volume.figures);
    object.insert("datum", volume.datum);
    return object;
}

QJsonObject ToJson(const SecondSurveyFigures& second) {
    QJsonObject object = ToJson(second.figures);
    object.insert("file", Utf8(second.file));
    object.insert("first_plan_area", second.firstArea);
    object.insert("second_plan_area", second.secondArea);
    return object;
}

QJsonObject ToJson(const Profile& profile) {
    const ProfileSummary summary = SummaryOf(profile);
    QJsonArray gaps;
    for (const Extent& gap : summary.gaps) {
        gaps.append(ToJson(gap));
    }
    QJsonArray crossed;
    for (const ProfileRun& run : profile.runs) {
        for (const ProfilePoint& point : run) {
            if (point.line > 0) {
                crossed.append(QJsonObject{{"station", point.station},
                                           {"height", point.z},
                                           {"name", Utf8(LineNameAt(profile, point))}});
            }
        }
    }
    const bool hasGround = summary.vertices > 0;
    return {{"vertices", Count(summary.vertices)},
            {"on_lines", Count(summary.onLines)},
            {"breaklines", crossed},
            {"ground_length", summary.groundLength},
            {"heights", hasGround ? QJsonValue(ToJson(summary.heights)) : QJsonValue()},
            {"gaps", gaps}};
}

QJsonObject ToJson(const SectionFigures& section) {
    QJsonObject object = ToJson(section.first);
    object.insert("length", section.first.length);
    object.insert("line", ToJson(section.line));
    if (section.second) {
        object.insert("second", ToJson(*section.second));
    }
    if (section.areas) {
        object.insert("areas", QJsonObject{{"cut", section.areas->cut},
                                           {"fill", section.areas->fill},
                                           {"length", section.areas->length}});
    }
    return object;
}

QJsonArray ToJson(const std::vector<MeasuredSection>& sections) {
    QJsonArray array;
    for (const MeasuredSection& section : sections) {
        QJsonObject object = ToJson(section.figures);
        object.insert("name", Utf8(section.line.name));
        object.insert("file", Utf8(section.line.file));
        array.append(object);
    }
    return array;
}

QJsonObject ToJson(const MeasuredAcross& across) {
    QJsonArray sections;
    for (const SectionFigures& section : across.figures.sections) {
        QJsonObject object = ToJson(section);
        object.insert("station", section.station);
        sections.append(object);
    }
    QJsonObject object{
        {"spacing", across.sizes.spacing}, {"width", across.sizes.width}, {"sections", sections}};
    if (const std::optional<VolumeFigures>& ends = across.figures.endAreas) {
        object.insert("end_areas", QJsonObject{{"cut", ends->cut},
                                               {"fill", ends->fill},
                                               {"net", ends->net},
                                               {"plan_area", ends->planArea}});
    }
    if (across.figures.exact) {
        object.insert("exact", ToJson(*across.figures.exact));
    }
    if (across.figures.remark) {
        object.insert("remark", Utf8(TextCatalogue()[*across.figures.remark]));
    }
    return object;
}

QJsonValue ToJson(const std::optional<PlaceOnSurface>& place) {
    return place
               ? QJsonValue(QJsonObject{
                     {"height", place->height}, {"slope", place->slope}, {"aspect", place->aspect}})
               : QJsonValue();
}

// Nothing stands for what is beside the surface.
QJsonObject ToJson(const MeasuredPlace& place, bool hasSecond) {
    QJsonObject object{{"x", place.place.x}, {"y", place.place.y}};
    const QJsonObject first = ToJson(place.first).toObject();
    for (const char* key : {"height", "slope", "aspect"}) {
        object.insert(QLatin1String(key), first.contains(QLatin1String(key))
                                              ? first[QLatin1String(key)]
                                              : QJsonValue());
    }
    if (place.nearest.number > 0) {
        object.insert("nearest", QJsonObject{{"number", place.nearest.number},
                                             {"name", Utf8(place.nearestName)},
                                             {"distance", place.nearest.distance}});
    }
    if (hasSecond) {
        object.insert("second", ToJson(place.second));
    }
    return object;
}

// Of the coordinates, in words.
std::string UnitText(const std::string& unit) {
    return unit == "metre"     ? "metres"
           : unit == "foot"    ? "feet"
           : unit == "us-foot" ? "US survey feet"
                               : unit;
}

std::string Number(double value) {
    return NumberText::FormatScreen(value, "#0.0##", '.');
}

std::string Percent(double tangent) {
    return NumberText::FormatScreen(100 * tangent, "#0.0#", '.') + " %";
}

// Rows of which there may be very many, up to a number.
constexpr std::size_t kMostRows = 100;

std::string MoreRows(std::size_t rows) {
    return rows > kMostRows
               ? std::to_string(rows - kMostRows) + " more; --summary json tells of all.\n"
               : "";
}

std::string AreasText(const AreaFigures& areas) {
    if (areas.triangles == 0) {
        return "areas: none\n";
    }
    return "areas: plan " + Number(areas.plan) + ", surface " + Number(areas.surface) +
           ", perimeter " + Number(areas.perimeter) + ", mean height " + Number(areas.meanHeight) +
           ", mean slope " + Percent(areas.meanSlope) + ", steepest " + Percent(areas.maxSlope) +
           "\n";
}

std::string HypsometryText(const std::vector<HypsometryRow>& rows) {
    std::string text = "height, area above, volume above, area and volume of the band:\n";
    for (const HypsometryRow& row : std::span(rows).first(std::min(rows.size(), kMostRows))) {
        text += "  " + Number(row.height) + "  " + Number(row.areaAbove) + "  " +
                Number(row.volumeAbove) + "  " + Number(row.bandArea) + "  " +
                Number(row.bandVolume) + "\n";
    }
    return text + MoreRows(rows.size());
}

std::string EarthText(const VolumeFigures& figures) {
    return "cut " + Number(figures.cut) + ", fill " + Number(figures.fill) + ", net " +
           Number(figures.net);
}

std::string VolumeText(const VolumeFigures& figures) {
    return EarthText(figures) + "; plan area " + Number(figures.planArea) + " (cut " +
           Number(figures.cutArea) + ", fill " + Number(figures.fillArea) + ")\n";
}

std::string SecondText(const SecondSurveyFigures& second) {
    return "volume to " + second.file + ": " + VolumeText(second.figures) +
           "plan area of the first survey " + Number(second.firstArea) + ", of the second " +
           Number(second.secondArea) + "\n";
}

std::string ProfileText(const Profile& profile) {
    const ProfileSummary summary = SummaryOf(profile);
    if (summary.vertices == 0) {
        return "no surface";
    }
    return std::to_string(summary.vertices) + " vertices, heights " + Number(summary.heights.min) +
           " to " + Number(summary.heights.max) +
           (summary.gaps.size() == 1  ? ", a gap"
            : summary.gaps.size() > 1 ? ", " + std::to_string(summary.gaps.size()) + " gaps"
                                      : "");
}

std::string SectionText(const SectionFigures& section) {
    std::string text = "length " + Number(section.first.length) + ", " + ProfileText(section.first);
    if (section.second) {
        text += "; second survey " + ProfileText(*section.second);
    }
    if (section.areas) {
        text += "; cut " + Number(section.areas->cut) + ", fill " + Number(section.areas->fill);
    }
    return text + "\n";
}

std::string SectionsText(const std::vector<MeasuredSection>& sections) {
    std::string text;
    for (std::size_t i = 0; i < std::min(sections.size(), kMostRows); ++i) {
        const SectionLine& line = sections[i].line;
        text += "section " + std::to_string(i + 1) + (line.name.empty() ? "" : " " + line.name) +
                ": " + SectionText(sections[i].figures);
    }
    return text + MoreRows(sections.size());
}

std::string AcrossText(const MeasuredAcross& across) {
    std::string text;
    const std::span sections(across.figures.sections);
    for (const SectionFigures& section : sections.first(std::min(sections.size(), kMostRows))) {
        text += "across at " + Number(section.station) + ": " + SectionText(section);
    }
    text += MoreRows(sections.size());
    if (across.figures.endAreas) {
        text += "by end areas: " + EarthText(*across.figures.endAreas) + "\n";
    }
    if (across.figures.exact) {
        text += "exact over the corridor: " + EarthText(*across.figures.exact) + "\n";
    }
    return across.figures.remark ? text + TextCatalogue()[*across.figures.remark] + "\n" : text;
}

std::string PlaceText(const PlaceOnSurface& place) {
    return Number(place.height) + ", slope " + Percent(place.slope) + ", aspect " +
           NumberText::FormatScreen(place.aspect, "#0.#", '.') + " degrees";
}

std::string PlaceText(const MeasuredPlace& place, bool hasSecond) {
    std::string text = "height at " + Number(place.place.x) + ", " + Number(place.place.y) + ": " +
                       (place.first ? PlaceText(*place.first) : "no surface");
    if (hasSecond) {
        text += "; second survey " + (place.second ? PlaceText(*place.second) : "no surface");
    }
    if (place.nearest.number > 0) {
        text +=
            "; nearest point " +
            (place.nearestName.empty() ? std::to_string(place.nearest.number) : place.nearestName) +
            " at " + Number(place.nearest.distance);
    }
    return text + "\n";
}

} // namespace

ProfileSummary SummaryOf(const Profile& profile) {
    ProfileSummary summary;
    double end = 0; // of the ground so far
    for (const ProfileRun& run : profile.runs) {
        if (run.front().station > end) {
            summary.gaps.push_back({end, run.front().station});
        }
        end = run.back().station;
        summary.groundLength += end - run.front().station;
        summary.vertices += run.size();
        for (const ProfilePoint& point : run) {
            summary.heights.Include(point.z);
            summary.onLines += point.line > 0 ? 1 : 0;
        }
    }
    if (profile.length > end) {
        summary.gaps.push_back({end, profile.length});
    }
    return summary;
}

QJsonObject MeasureToJson(const MeasureFigures& figures) {
    QJsonObject object{{"unit", Utf8(figures.unit)}, {"remarks", ToJson(figures.remarks)}};
    if (!figures.withinFiles.empty()) {
        object.insert("within", QJsonObject{{"files", ToJson(figures.withinFiles)},
                                            {"rings", Count(figures.rings)}});
    }
    if (figures.areas) {
        object.insert("areas", ToJson(*figures.areas));
    }
    if (figures.hypsometry) {
        object.insert("hypsometry", ToJson(*figures.hypsometry));
    }
    if (!figures.volumes.empty()) {
        object.insert("volume", ToJson(figures.volumes.front()));
    }
    if (figures.volumes.size() > 1) {
        QJsonArray volumes;
        for (const DatumVolume& volume : figures.volumes) {
            volumes.append(ToJson(volume));
        }
        object.insert("volumes", volumes);
    }
    if (figures.toSecond) {
        object.insert("volume_to", ToJson(*figures.toSecond));
    }
    if (!figures.sections.empty()) {
        object.insert("sections", ToJson(figures.sections));
    }
    if (figures.across) {
        object.insert("cross_sections", ToJson(*figures.across));
    }
    if (!figures.places.empty()) {
        QJsonArray heights;
        for (const MeasuredPlace& place : figures.places) {
            heights.append(ToJson(place, figures.toSecond.has_value()));
        }
        object.insert("heights", heights);
    }
    return object;
}

std::string MeasureText(const MeasureFigures& figures) {
    std::string text = "measured in " + UnitText(figures.unit) + ", their squares and cubes" +
                       (figures.rings > 0 ? ", within " + std::to_string(figures.rings) +
                                                (figures.rings == 1 ? " ring\n" : " rings\n")
                                          : "\n");
    if (figures.areas) {
        text += AreasText(*figures.areas);
    }
    if (figures.hypsometry) {
        text += HypsometryText(*figures.hypsometry);
    }
    for (const DatumVolume& volume : figures.volumes) {
        text += "volume to height " + Number(volume.datum) + ": " + VolumeText(volume.figures);
    }
    if (figures.toSecond) {
        text += SecondText(*figures.toSecond);
    }
    text += SectionsText(figures.sections);
    if (figures.across) {
        text += AcrossText(*figures.across);
    }
    for (const MeasuredPlace& place : figures.places) {
        text += PlaceText(place, figures.toSecond.has_value());
    }
    for (const std::string& remark : figures.remarks) {
        text += remark + "\n";
    }
    return text;
}

} // namespace terravo
