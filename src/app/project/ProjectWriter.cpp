#include "app/project/JsonText.h"
#include "app/project/ProjectNames.h"
#include "app/project/ProjectText.h"
#include "app/settings/SheetStyles.h"

namespace terravo {
namespace {

void AddTexts(JsonText& json, const std::vector<std::string>& texts) {
    json.Begin('[');
    for (const std::string& text : texts) {
        json.Add(text);
    }
    json.End();
}

void AddTable(JsonText& json, const HowRead& how) {
    const ImportPlan& plan = how.plan;
    json.Key("columns").Add(NameOfColumns(plan.columns));
    json.Key("separator").Add(NameOf(plan.separator));
    json.Key("header_lines").AddWhole(plan.headerLines);
    json.Key("fields").AddWhole(static_cast<std::int64_t>(plan.fieldCount));
    json.Key("code_takes_rest").Add(plan.codeTakesRest);
    json.Key("others_are_text").Add(plan.othersAreText);
    json.Key("skip_bad_records").Add(how.bad == BadRecords::Skip);
}

void AddGis(JsonText& json, const GisPlan& plan) {
    json.Key("layers");
    AddTexts(json, plan.layers);
    json.Key("height_field").Add(plan.heightField);
    if (plan.toEpsg) {
        json.Key("to_epsg").AddWhole(*plan.toEpsg);
    }
    json.Key("degrees_as_they_are").Add(plan.degreesAsTheyAre);
    if (plan.rasterStep) {
        json.Key("raster_step").AddWhole(*plan.rasterStep);
    }
}

void AddHowRead(JsonText& json, const HowRead& how) {
    json.Begin('{');
    json.Key("reader").Add(NameOf(how.reader));
    if (how.reader == SourceReader::Gis) {
        AddGis(json, how.gis);
    } else {
        json.Key("encoding").Add(ExactNameOf(how.plan.encoding));
    }
    if (how.reader == SourceReader::Table) {
        AddTable(json, how);
    }
    if (how.reader == SourceReader::Table || how.reader == SourceReader::Grid) {
        json.Key("decimal").Add(std::string_view(&how.plan.decimal, 1));
        json.Key("missing_heights");
        AddTexts(json, how.plan.voids);
    }
    json.End();
}

void AddSource(JsonText& json, const ProjectSource& source) {
    json.Begin('{');
    json.Key("path").Add(source.path);
    if (!source.relativePath.empty()) {
        json.Key("relative_path").Add(source.relativePath);
    }
    json.Key("bytes").AddWhole(static_cast<std::int64_t>(source.bytes));
    if (!source.sha256.empty()) {
        json.Key("sha256").Add(source.sha256);
    }
    json.Key("points").AddWhole(source.points);
    json.Key("read_as");
    AddHowRead(json, source.howRead);
    json.End();
}

void AddLine(JsonText& json, const SurfaceLine& line) {
    json.Begin('{');
    json.Key("name").Add(line.line.name);
    json.Key("source").Add(line.source);
    json.Key("file_line").AddWhole(line.fileLine);
    json.Key("closed").Add(line.line.closed);
    json.Key("vertices").Begin('[');
    for (const SpacePoint& vertex : line.line.vertices) {
        if (HasHeight(vertex)) {
            json.AddRow({vertex.x, vertex.y, vertex.z});
        } else {
            json.AddRow({vertex.x, vertex.y});
        }
    }
    json.End();
    json.End();
}

void AddLines(JsonText& json, const char* name, const std::vector<SharedLine>& lines) {
    json.Key(name).Begin('[');
    for (const SharedLine& line : lines) {
        AddLine(json, *line);
    }
    json.End();
}

void AddSurface(JsonText& json, const SurfacePlan& plan) {
    json.Begin('{');
    json.Key("excluded").Begin('[');
    for (const Index point : plan.excluded) {
        json.AddInLine(point);
    }
    json.End();
    json.Key("heights").Begin('[');
    for (const ChangedHeight& change : plan.heights) {
        json.AddRow({static_cast<double>(change.point), change.height});
    }
    json.End();
    AddLines(json, "breaklines", plan.breaklines);
    AddLines(json, "boundary", plan.boundary);
    AddLines(json, "holes", plan.holes);
    json.Key("held_sides").Begin('[');
    for (const HeldSide& side : plan.held) {
        json.AddRow({side.from.x, side.from.y, side.to.x, side.to.y});
    }
    json.End();
    if (plan.longestSide) {
        json.Key("longest_side").Add(*plan.longestSide);
    }
    json.Key("crossing_tolerance").Add(plan.crossings.tolerance);
    json.Key("earlier_line_wins").Add(plan.crossings.earlierWins);
    json.End();
}

void AddLevels(JsonText& json, const LevelRule& rule) {
    json.Begin('{');
    json.Key("rule").Add(NameOf(rule.kind));
    json.Key("count").AddWhole(rule.count);
    if (rule.kind == LevelRuleKind::ByInterval) {
        json.Key("interval").Add(rule.interval);
        json.Key("base").Add(rule.base);
    }
    if (rule.kind == LevelRuleKind::ByList) {
        json.Key("values").Begin('[');
        for (const double value : rule.values) {
            json.Add(value);
        }
        json.End();
    }
    json.End();
}

void AddSheet(JsonText& json, const SheetPlan& plan) {
    json.Begin('{');
    for (const auto& [name, text] : StyleEntries(StyleText(plan))) {
        json.Key(name).Add(text);
    }
    if (plan.centre) {
        json.Key("centre").AddRow({plan.centre->x, plan.centre->y});
    }
    for (const auto& [name, field] : kSheetTextNames) {
        json.Key(name).Add(plan.texts.*field);
    }
    json.End();
}

} // namespace

std::string TextOfProject(const Project& project) {
    JsonText json;
    json.Begin('{');
    json.Key("terravo_project").AddWhole(kProjectVersion);
    if (!project.recovers.empty()) {
        json.Key("recovers").Add(project.recovers);
    }
    json.Key("source");
    AddSource(json, project.source);
    json.Key("surface");
    AddSurface(json, project.surface);
    json.Key("exact_triangulation").Add(project.triangulation.exact);
    json.Key("first_points_rule").Add(project.triangulation.keepsFirstPointsRule);
    if (project.levels) {
        json.Key("levels");
        AddLevels(json, *project.levels);
    }
    json.Key("sheets").Begin('[');
    for (const SheetPlan& plan : project.sheets) {
        AddSheet(json, plan);
    }
    json.End();
    json.End();
    return json.Take();
}

} // namespace terravo
