#include "app/project/JsonNode.h"
#include "app/project/ProjectNames.h"
#include "app/project/ProjectSources.h"
#include "app/project/ProjectText.h"
#include "app/settings/SheetStyles.h"
#include "contour/LevelRuleText.h"
#include "survey/PointFile.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <limits>

namespace terravo {
namespace {

using Remarks = std::vector<std::string>;

constexpr std::int64_t kLargestWhole = std::int64_t{1} << 53; // that a double holds

std::vector<std::string> TextsOf(const JsonNode& node) {
    std::vector<std::string> texts;
    node.ForEach([&texts](const JsonNode& entry) { texts.push_back(entry.Text()); });
    return texts;
}

Index IndexOf(const JsonNode& node, Index low, Index high) {
    return static_cast<Index>(node.Whole(low, high));
}

// What a plan may say, of columns and of their number, is what the reader of tables takes.
void ReadTable(JsonMembers& members, HowRead& how) {
    ImportPlan& plan = how.plan;
    const JsonNode columns = members.At("columns");
    const auto parsed = ParseColumns(columns.Text());
    if (!parsed) {
        columns.Refuse("these are no columns: \"" + columns.Text() + "\"");
    }
    plan.columns = *parsed;
    const JsonNode separator = members.At("separator");
    const auto sign = ParseSeparator(separator.Text());
    if (!sign) {
        separator.Refuse("this is no separator: \"" + separator.Text() + "\"");
    }
    plan.separator = *sign;
    plan.headerLines = IndexOf(members.At("header_lines"), 0, kMostPoints);
    plan.fieldCount = static_cast<std::size_t>(members.At("fields").Whole(0, kMostPoints));
    plan.codeTakesRest = members.At("code_takes_rest").Flag();
    plan.othersAreText = members.At("others_are_text").Flag();
    how.bad = members.At("skip_bad_records").Flag() ? BadRecords::Skip : BadRecords::Refuse;
}

void ReadGis(JsonMembers& members, GisPlan& plan) {
    plan.layers = TextsOf(members.At("layers"));
    plan.heightField = members.At("height_field").Text();
    if (const auto system = members.Find("to_epsg")) {
        plan.toEpsg = static_cast<int>(system->Whole(1, std::numeric_limits<int>::max()));
    }
    plan.degreesAsTheyAre = members.At("degrees_as_they_are").Flag();
    if (const auto step = members.Find("raster_step")) {
        plan.rasterStep = IndexOf(*step, 1, kMostRasterStep);
    }
}

HowRead ReadHow(const JsonNode& node, Remarks& remarks) {
    JsonMembers members(node, remarks);
    HowRead how;
    how.reader = static_cast<SourceReader>(members.At("reader").Choice(kReaderNames));
    how.plan.freeList = how.reader == SourceReader::FreeList;
    if (how.reader == SourceReader::Gis) {
        ReadGis(members, how.gis);
    } else {
        how.plan.encoding =
            static_cast<TextEncoding>(members.At("encoding").Choice(kEncodingNames));
    }
    if (how.reader == SourceReader::Table) {
        ReadTable(members, how);
    }
    if (how.reader == SourceReader::Table || how.reader == SourceReader::Grid) {
        static constexpr std::array<const char*, 2> kSigns{".", ","};
        how.plan.decimal = *kSigns[members.At("decimal").Choice(kSigns)];
        how.plan.voids = TextsOf(members.At("missing_heights"));
    }
    members.RemarkOnOthers();
    return how;
}

bool IsChecksum(const std::string& text) {
    constexpr std::size_t kDigits = 64;
    return text.size() == kDigits &&
           text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

ProjectSource ReadSource(const JsonNode& node, Remarks& remarks) {
    JsonMembers members(node, remarks);
    ProjectSource source;
    source.path = members.At("path").Text();
    if (const auto relative = members.Find("relative_path")) {
        source.relativePath = relative->Text();
    }
    source.bytes = static_cast<std::uint64_t>(members.At("bytes").Whole(0, kLargestWhole));
    if (const auto checksum = members.Find("sha256")) {
        source.sha256 = checksum->Text();
        if (!IsChecksum(source.sha256)) {
            checksum->Refuse("64 digits of 0 to 9 and a to f are needed");
        }
    }
    source.points = IndexOf(members.At("points"), 0, kMostPoints);
    source.howRead = ReadHow(members.At("read_as"), remarks);
    members.RemarkOnOthers();
    return source;
}

SharedLine ReadLine(const JsonNode& node, Remarks& remarks) {
    JsonMembers members(node, remarks);
    auto line = std::make_shared<SurfaceLine>();
    line->line.name = members.At("name").Text();
    line->source = members.At("source").Text();
    line->fileLine = members.At("file_line").Whole(0, kLargestWhole);
    line->line.closed = members.At("closed").Flag();
    members.At("vertices").ForEach([&line](const JsonNode& entry) {
        const std::vector<double> place = entry.Numbers(2, 3);
        line->line.vertices.push_back(
            {place[0], place[1], place.size() == 3 ? place[2] : kNoHeight});
    });
    members.RemarkOnOthers();
    return line;
}

std::vector<SharedLine> ReadLines(const JsonNode& node, Remarks& remarks) {
    std::vector<SharedLine> lines;
    node.ForEach([&](const JsonNode& entry) { lines.push_back(ReadLine(entry, remarks)); });
    return lines;
}

// Plans keep their numbers in order, each once.
void RequireAscending(const JsonNode& node, Index before, Index point) {
    if (point <= before) {
        node.Refuse("point " + std::to_string(point) + " comes after point " +
                    std::to_string(before) + ", but the numbers have to ascend");
    }
}

std::vector<Index> ReadExcluded(const JsonNode& node, Index points) {
    std::vector<Index> excluded;
    node.ForEach([&](const JsonNode& entry) {
        const Index point = IndexOf(entry, 1, points);
        RequireAscending(entry, excluded.empty() ? 0 : excluded.back(), point);
        excluded.push_back(point);
    });
    if (!excluded.empty() && std::ssize(excluded) > points - kFewestInUse) {
        node.Refuse("three points have to stay in use");
    }
    return excluded;
}

std::vector<ChangedHeight> ReadHeights(const JsonNode& node, Index points) {
    std::vector<ChangedHeight> heights;
    node.ForEach([&](const JsonNode& entry) {
        const std::vector<double> pair = entry.Numbers(2, 2);
        const auto point = static_cast<Index>(entry.RequireWhole(pair[0], 1, points));
        RequireAscending(entry, heights.empty() ? 0 : heights.back().point, point);
        heights.push_back({point, pair[1]});
    });
    return heights;
}

double NotNegative(const JsonNode& node) {
    const double number = node.Number();
    if (number < 0) {
        node.Refuse("a number of 0 or more is needed");
    }
    return number;
}

SurfacePlan ReadSurface(const JsonNode& node, Index points, Remarks& remarks) {
    JsonMembers members(node, remarks);
    SurfacePlan plan;
    plan.excluded = ReadExcluded(members.At("excluded"), points);
    plan.heights = ReadHeights(members.At("heights"), points);
    plan.breaklines = ReadLines(members.At("breaklines"), remarks);
    plan.boundary = ReadLines(members.At("boundary"), remarks);
    plan.holes = ReadLines(members.At("holes"), remarks);
    members.At("held_sides").ForEach([&plan](const JsonNode& entry) {
        const std::vector<double> side = entry.Numbers(4, 4);
        plan.held.push_back({{side[0], side[1]}, {side[2], side[3]}});
    });
    if (const auto longest = members.Find("longest_side")) {
        plan.longestSide = NotNegative(*longest);
    }
    plan.crossings.tolerance = NotNegative(members.At("crossing_tolerance"));
    plan.crossings.earlierWins = members.At("earlier_line_wins").Flag();
    members.RemarkOnOthers();
    return plan;
}

LevelRule ReadLevels(const JsonNode& node, Remarks& remarks) {
    JsonMembers members(node, remarks);
    LevelRule rule;
    rule.kind = static_cast<LevelRuleKind>(members.At("rule").Choice(kLevelRuleNames));
    rule.count = IndexOf(members.At("count"), kFewestLevels, kMostLevels);
    if (rule.kind == LevelRuleKind::ByInterval) {
        rule.interval = members.At("interval").Number();
        rule.base = members.At("base").Number();
    }
    if (rule.kind == LevelRuleKind::ByList) {
        members.At("values").ForEach(
            [&rule](const JsonNode& entry) { rule.values.push_back(entry.Number()); });
    }
    if (const LevelFault fault = FaultOf(rule); fault != LevelFault::None) {
        node.Refuse(SentenceOf(fault, rule, {}, TextCatalogue(), '.'));
    }
    members.RemarkOnOthers();
    return rule;
}

// What a style does not know is as in a sheet that nobody has changed, and is remarked on.
void ReadStyle(const JsonNode& node, JsonMembers& members, SheetPlan& plan, Remarks& remarks) {
    std::string style;
    const auto known = StyleEntries(StyleText(SheetPlan()));
    for (const auto& [name, text] : known) {
        if (const auto entry = members.Find(name.c_str())) {
            style += name + "=" + entry->Text() + ";";
        }
    }
    plan = PlanOfStyle(style);
    const auto taken = StyleEntries(StyleText(plan));
    for (const auto& [name, text] : StyleEntries(style)) {
        if (std::find(taken.begin(), taken.end(), std::pair(name, text)) == taken.end()) {
            remarks.push_back(node.Place() + "." + name + ": \"" + text +
                              "\" is not known and is left out.");
        }
    }
}

SheetPlan ReadSheet(const JsonNode& node, Remarks& remarks) {
    JsonMembers members(node, remarks);
    SheetPlan plan;
    ReadStyle(node, members, plan, remarks);
    if (const auto centre = members.Find("centre")) {
        const std::vector<double> place = centre->Numbers(2, 2);
        plan.centre = {place[0], place[1]};
    }
    for (const auto& [name, field] : kSheetTextNames) {
        if (const auto text = members.Find(name)) {
            plan.texts.*field = text->Text();
        }
    }
    members.RemarkOnOthers();
    return plan;
}

void RequireVersion(JsonMembers& members) {
    const std::optional<JsonNode> version = members.Find("terravo_project");
    if (!version) {
        throw JsonFault("this is no Terravo project");
    }
    const std::int64_t number = version->Whole(1, std::numeric_limits<int>::max());
    if (number > kProjectVersion) {
        version->Refuse("this is version " + std::to_string(number) +
                        " of the format, of a newer program; this program reads version " +
                        std::to_string(kProjectVersion));
    }
}

Project ReadWhole(const JsonNode& node, Remarks& remarks) {
    JsonMembers members(node, remarks);
    RequireVersion(members);
    Project project;
    project.source = ReadSource(members.At("source"), remarks);
    project.surface = ReadSurface(members.At("surface"), project.source.points, remarks);
    project.triangulation.exact = members.At("exact_triangulation").Flag();
    project.triangulation.keepsFirstPointsRule = members.At("first_points_rule").Flag();
    if (const auto levels = members.Find("levels")) {
        project.levels = ReadLevels(*levels, remarks);
    }
    members.At("sheets").ForEach(
        [&](const JsonNode& entry) { project.sheets.push_back(ReadSheet(entry, remarks)); });
    if (const auto recovers = members.Find("recovers")) {
        project.recovers = recovers->Text();
    }
    members.RemarkOnOthers();
    return project;
}

// The parser has gone one further than the sign that it cannot take.
std::string LineAndColumn(const std::string& bytes, qsizetype offset) {
    const auto end = bytes.begin() + std::clamp<qsizetype>(offset - 1, 0, std::ssize(bytes));
    const auto lines = std::count(bytes.begin(), end, '\n');
    const auto lineBegin = std::find(std::make_reverse_iterator(end), bytes.rend(), '\n').base();
    return "line " + std::to_string(lines + 1) + ", column " +
           std::to_string(std::distance(lineBegin, end) + 1);
}

} // namespace

ProjectReading ProjectFromText(const std::string& bytes, const std::string& path) {
    ProjectReading reading;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(
        QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())), &error);
    if (error.error != QJsonParseError::NoError) {
        reading.fault = path + ": " + LineAndColumn(bytes, error.offset) +
                        ": this is no project: " + error.errorString().toStdString() + ".";
        return reading;
    }
    try {
        const JsonNode whole(document.isObject() ? QJsonValue(document.object())
                                                 : QJsonValue(document.array()));
        reading.project = ReadWhole(whole, reading.remarks);
    } catch (const JsonFault& fault) {
        reading.fault = path + ": " + fault.what() + ".";
        reading.remarks.clear();
    }
    return reading;
}

} // namespace terravo
