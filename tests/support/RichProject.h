// A project that has something of everything, for tests.
#pragma once

#include "app/project/Project.h"

#include <limits>

namespace terravo::test {

/// Doubles that a careless writer or reader changes.
inline const std::vector<double>& HardDoubles() {
    using Limits = std::numeric_limits<double>;
    static const std::vector<double> kHard{0.1,
                                           -0.0,
                                           0.0,
                                           1.0 / 3,
                                           5e-324,
                                           Limits::max(),
                                           -Limits::min(),
                                           9007199254740993.0,
                                           4523456.7890123,
                                           -1e300,
                                           123456789012345680.0};
    return kHard;
}

inline SharedLine LineOf(std::vector<SpacePoint> vertices, bool closed, std::string name) {
    return std::make_shared<const SurfaceLine>(
        SurfaceLine{{std::move(vertices), closed, std::move(name)}, "codes", 17});
}

/// @param path  of its point file.
inline Project RichProject(const std::string& path = "/survey/points \"A\".txt") {
    Project project;
    project.source = {path, "../points.txt", 12345, std::string(64, 'a'), 400, {}};
    HowRead& how = project.source.howRead;
    how.plan.encoding = TextEncoding::Utf16Big;
    how.plan.separator = FieldSeparator::Semicolon;
    how.plan.decimal = ',';
    how.plan.headerLines = 2;
    how.plan.columns = *ParseColumns("p,n,e,z,-,c");
    how.plan.codeTakesRest = true;
    how.plan.voids = {"n/a", "\xC3\xA8 \t"};
    how.bad = BadRecords::Skip;
    std::vector<SpacePoint> hard;
    for (const double value : HardDoubles()) {
        hard.push_back({value, -value, value / 2});
        hard.push_back({-value, value, kNoHeight});
    }
    SurfacePlan& plan = project.surface;
    plan.breaklines = {LineOf(hard, false, "ridge \\ \xC3\xA9\n"), LineOf({{1, 2, 3}}, false, "")};
    plan.boundary = {LineOf({{0, 0, 0}, {9, 0, kNoHeight}, {9, 9, 1}}, true, "rim")};
    plan.holes = {LineOf({{1, 1, kNoHeight}, {2, 1, kNoHeight}, {2, 2, kNoHeight}}, true, "pond")};
    plan.held = {{{0.1, -0.0}, {1e-7, 3}}};
    plan.heights = {{3, 0.1 + 0.2}, {400, -0.0}};
    for (Index point = 1; point < 400; point += 3) {
        plan.excluded.push_back(point);
    }
    plan.longestSide = 1.0 / 3;
    plan.crossings = {0.1 + 0.2, true};
    project.triangulation = {true, true};
    project.levels = RuleByInterval(0.1 + 0.2, -1.0 / 7);
    project.levels->count = 33;
    SheetPlan sheet;
    sheet.paper = *ParsePaperSize("500x700");
    sheet.landscape = true;
    sheet.scale = 1.0 / 3 * 1000;
    sheet.rotation = 12.25;
    sheet.centre = {-0.0, 1.0 / 3};
    sheet.Show(SheetLayer::Bands, true);
    sheet.theme = "dark";
    sheet.texts = {"A \"title\"", "p", "1 May", "sea", "\xC3\x84"};
    project.sheets = {sheet, SheetPlan()};
    return project;
}

} // namespace terravo::test
