#include "sheet/LineLabels.h"

#include "contour/ContourSet.h"
#include "sheet/LineGaps.h"
#include "support/Surveys.h"
#include "survey/Survey.h"

#include <gtest/gtest.h>
#include <numbers>

namespace terravo {
namespace {

using std::numbers::pi;
using Points = std::vector<SheetPoint>;

// Lines on a paper with what they need to be labelled.
struct Drawing {
    struct Line {
        Points points;
        bool closed = false;
        bool higherOnLeft = true;
    };
    std::vector<Line> lines;
    std::vector<Line> others;
    std::vector<SheetBox> taken;
    SheetBox frame{0, 0, 200, 150};
    double width = 6; // of every text
    LabelWish wish;

    static std::vector<LabelLine> Views(const std::vector<Line>& all) {
        std::vector<LabelLine> views;
        for (const Line& line : all) {
            views.push_back({line.points, line.closed, 0, line.higherOnLeft});
        }
        return views;
    }
    [[nodiscard]] LabelPlacement Place() const {
        const double widths[] = {width};
        return PlaceLineLabels(Views(lines), widths, frame, taken, wish, Views(others));
    }
};

double Distance(SheetPoint a, SheetPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

double LengthOf(const Drawing::Line& line) {
    double length = 0;
    for (std::size_t i = 0; i + (line.closed ? 0 : 1) < line.points.size(); ++i) {
        length += Distance(line.points[i], line.points[(i + 1) % line.points.size()]);
    }
    return length;
}

// The place so many millimetres along a line; round and round a closed one.
SheetPoint PlaceAlong(const Drawing::Line& line, double s) {
    for (std::size_t i = 0;; ++i) {
        const SheetPoint a = line.points[i % line.points.size()];
        const SheetPoint b = line.points[(i + 1) % line.points.size()];
        const double d = Distance(a, b);
        if (s <= d || (!line.closed && i + 2 >= line.points.size())) {
            return {a.x + (b.x - a.x) * s / d, a.y + (b.y - a.y) * s / d};
        }
        s -= d;
    }
}

// A place of the text: u and v from -1 to 1, along it and upwards.
SheetPoint PlaceOn(const LineLabel& label, const Drawing& drawing, double u, double v) {
    const double c = std::cos(label.angle);
    const double s = std::sin(label.angle);
    const double x = u * drawing.width / 2;
    const double y = v * drawing.wish.height / 2;
    return {label.middle.x + x * c - y * s, label.middle.y - x * s - y * c};
}

bool Covers(const LineLabel& label, const Drawing& drawing, SheetPoint p) {
    const double dx = p.x - label.middle.x;
    const double dy = p.y - label.middle.y;
    const double c = std::cos(label.angle);
    const double s = std::sin(label.angle);
    return std::abs(dx * c - dy * s) <= drawing.width / 2 &&
           std::abs(dx * s + dy * c) <= drawing.wish.height / 2;
}

// Calls use(place) for places all over a text; it returns what is wrong with one.
template <class Use>
std::string OfAllPlaces(const LineLabel& label, const Drawing& drawing, Use use) {
    for (double u = -1; u <= 1.001; u += 0.1) {
        for (double v = -1; v <= 1.001; v += 0.2) {
            if (std::string fault = use(PlaceOn(label, drawing, u, v)); !fault.empty()) {
                return fault;
            }
        }
    }
    return {};
}

std::string RoomFaultOf(const Drawing& drawing, const std::vector<LineLabel>& labels,
                        std::size_t i) {
    return OfAllPlaces(labels[i], drawing, [&](SheetPoint p) -> std::string {
        if (!drawing.frame.Contains(p)) {
            return "a text crosses the frame";
        }
        for (const SheetBox& box : drawing.taken) {
            if (box.Contains(p)) {
                return "a text is over what is taken";
            }
        }
        for (std::size_t j = 0; j < labels.size(); ++j) {
            if (j != i && Distance(labels[j].middle, p) < drawing.width &&
                Covers(labels[j], drawing, p)) {
                return "two texts are over each other";
            }
        }
        return {};
    });
}

std::string LineFaultOf(const Drawing& drawing, const LineLabel& label) {
    const Drawing::Line& line = drawing.lines[label.line];
    const double length = LengthOf(line);
    if (!(label.from >= 0 && label.from < label.to && label.to - label.from < length &&
          (line.closed ? label.from < length : label.to <= length))) {
        return "the stretch is not one of the line";
    }
    const SheetPoint from = PlaceAlong(line, label.from);
    const SheetPoint to = PlaceAlong(line, label.to);
    double nearest = 1e9;
    for (int i = 0; i <= 100; ++i) {
        const SheetPoint p = PlaceAlong(line, std::lerp(label.from, label.to, i / 100.0));
        nearest = std::min(nearest, Distance(p, label.middle));
    }
    if (nearest > drawing.wish.height * 0.6) {
        return "the text is beside its line";
    }
    const double far = std::hypot(drawing.width / 2 + drawing.wish.gap, drawing.wish.height);
    for (const SheetPoint end : {from, to}) {
        if (Covers(label, drawing, end) || Distance(end, label.middle) > far) {
            return "the line does not end beside the text";
        }
    }
    return {};
}

std::string AngleFaultOf(const Drawing& drawing, const LineLabel& label) {
    if (!drawing.wish.uphill) {
        return label.angle > -pi / 2 && label.angle <= pi / 2 ? "" : "a text is upside down";
    }
    const Drawing::Line& line = drawing.lines[label.line];
    const SheetPoint from = PlaceAlong(line, label.from);
    const SheetPoint to = PlaceAlong(line, label.to);
    // y is down.
    const double forward =
        (to.x - from.x) * std::cos(label.angle) - (to.y - from.y) * std::sin(label.angle);
    return (forward > 0) == line.higherOnLeft ? "" : "a text has its top downhill";
}

std::string FaultOf(const Drawing& drawing, const LabelPlacement& placement) {
    const std::vector<LineLabel>& labels = placement.labels;
    const LabelReport& report = placement.report;
    std::vector<int> texts(drawing.lines.size());
    for (std::size_t i = 0; i < labels.size(); ++i) {
        ++texts[labels[i].line];
        for (const std::string& fault :
             {RoomFaultOf(drawing, labels, i), LineFaultOf(drawing, labels[i]),
              AngleFaultOf(drawing, labels[i])}) {
            if (!fault.empty()) {
                return fault + ": text " + std::to_string(i);
            }
        }
        if (i > 0 && labels[i].line == labels[i - 1].line && labels[i].from < labels[i - 1].to) {
            return "two texts interrupt one stretch";
        }
    }
    std::size_t tooShort = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const bool isShort = LengthOf(drawing.lines[i]) <= 3 * drawing.width;
        tooShort += isShort ? 1 : 0;
        if (isShort && texts[i] > 0) {
            return "a line that is too short has a text";
        }
    }
    const auto labelled =
        texts.size() - static_cast<std::size_t>(std::count(texts.begin(), texts.end(), 0));
    return report.lines == texts.size() && report.texts == labels.size() &&
                   report.tooShort == tooShort && report.labelled == labelled &&
                   report.noRoom == texts.size() - labelled - tooShort
               ? ""
               : "the report is wrong";
}

Drawing::Line Circle(SheetPoint middle, double radius, bool clockwise = false) {
    Drawing::Line line{{}, true, true};
    for (int i = 0; i < 90; ++i) {
        const double a = (clockwise ? -1 : 1) * pi * i / 45;
        line.points.push_back({middle.x + radius * std::cos(a), middle.y + radius * std::sin(a)});
    }
    return line;
}

Drawing::Line Wave(double y, double height, double length) {
    Drawing::Line line;
    for (double x = 5; x <= 195; x += 0.5) {
        line.points.push_back({x, y + height * std::sin(2 * pi * x / length)});
    }
    return line;
}

// Contours of hills on a paper so wide; every one is labelled.
Drawing Hills(Index side, double interval, double width) {
    const PointSet points = test::HillySurvey(test::GridPoints(side), true);
    LevelSet levels;
    for (double z = 60; z < 160; z += interval) {
        levels.Append({z, 0, 1, {}, 0, 10});
    }
    const TriangleList triangles = Survey(points).Triangulation().triangles;
    const double scale = width / (points.extentX.max - points.extentX.min);
    const double height = (points.extentY.max - points.extentY.min) * scale;
    Drawing drawing;
    drawing.frame = {0, 0, width, height};
    const std::optional<ContourSet> contours = MakeContourSet(points, triangles, levels);
    for (const ContourLevel& level : contours.value()) {
        for (const ContourLine& line : level.lines) {
            Drawing::Line& drawn = drawing.lines.emplace_back();
            drawn.closed = line.closed;
            for (const ContourVertex& v : level.VerticesOf(line)) {
                drawn.points.push_back(
                    {(v.x - points.extentX.min) * scale, (points.extentY.max - v.y) * scale});
            }
        }
    }
    return drawing;
}

struct Case {
    const char* name;
    Drawing drawing;
    std::size_t labelled;
    std::size_t fewestTexts;
    std::size_t mostTexts;
};

std::vector<Case> Cases() {
    const Drawing empty;
    const auto with = [&](std::vector<Drawing::Line> lines) {
        Drawing drawing = empty;
        drawing.lines = std::move(lines);
        return drawing;
    };
    std::vector<Case> cases = {
        {"nothing", empty, 0, 0, 0},
        {"straight", with({{{{10, 70}, {190, 80}}}}), 1, 2, 3},
        {"straight up", with({{{{100, 10}, {100, 140}}}}), 1, 1, 2},
        {"a point", with({{{{10, 70}, {10, 70}, {10, 70}}, true}, {{{9, 9}}}, {}}), 0, 0, 0},
        {"circle", with({Circle({100, 70}, 50)}), 1, 4, 4},
        {"small circles", with({Circle({50, 70}, 3), Circle({100, 70}, 4), Circle({9, 9}, 1)}), 2,
         2, 2},
        {"square", with({{{{50, 50}, {90, 50}, {90, 90}, {50, 90}}, true}}), 1, 2, 2},
        {"saw", with({Wave(70, 4, 5)}), 1, 5, 9},
        {"a long wave", with({Wave(70, 30, 60)}), 1, 4, 7},
        {"along the frame", with({{{{5, 0.5}, {195, 0.5}}}}), 0, 0, 0},
        {"outside", with({{{{5, -20}, {195, -20}}}}), 0, 0, 0},
    };
    Drawing stack = empty;
    for (int i = 0; i < 60; ++i) {
        stack.lines.push_back({{{10, 20 + 0.7 * i}, {190, 20 + 0.7 * i}}});
    }
    cases.push_back({"dense stack", stack, 60, 60, 240});
    Drawing blocked = with({{{{10, 70}, {190, 70}}}, {{{10, 90}, {190, 90}}}});
    blocked.taken = {{0, 60, 200, 80}, {0, 85, 95, 95}};
    cases.push_back({"places taken", blocked, 1, 1, 2});
    return cases;
}

TEST(LineLabels, StandOnTheirLinesAndApart) {
    for (const bool uphill : {false, true}) {
        for (Case& c : Cases()) {
            c.drawing.wish.uphill = uphill;
            const LabelPlacement placement = c.drawing.Place();
            EXPECT_EQ(FaultOf(c.drawing, placement), "") << c.name;
            EXPECT_EQ(placement.report.labelled, c.labelled) << c.name;
            EXPECT_GE(placement.report.texts, c.fewestTexts) << c.name;
            EXPECT_LE(placement.report.texts, c.mostTexts) << c.name;
        }
    }
}

// Lines that are long enough and lie along the frame.
std::size_t AlongTheFrame(const Drawing& drawing) {
    const SheetBox inside = drawing.frame.Shrunk(drawing.wish.height / 2);
    return static_cast<std::size_t>(
        std::count_if(drawing.lines.begin(), drawing.lines.end(), [&](const Drawing::Line& line) {
            return LengthOf(line) > 3 * drawing.width &&
                   std::none_of(line.points.begin(), line.points.end(),
                                [&](SheetPoint p) { return inside.Contains(p); });
        }));
}

TEST(LineLabels, HoldOnTerrainAtEveryDensity) {
    struct Paper {
        double width;
        double interval;
        bool hasRoom; // for every line
    };
    for (const Paper& paper :
         {Paper{20, 5, false}, Paper{60, 1, false}, Paper{150, 5, true}, Paper{500, 5, true}}) {
        Drawing drawing = Hills(60, paper.interval, paper.width);
        for (const bool uphill : {false, true}) {
            drawing.wish.uphill = uphill;
            const LabelPlacement placement = drawing.Place();
            EXPECT_EQ(FaultOf(drawing, placement), "") << paper.width;
            EXPECT_GT(placement.report.labelled, 0U);
            if (paper.hasRoom) {
                EXPECT_EQ(placement.report.noRoom, AlongTheFrame(drawing)) << paper.width;
            }
        }
    }
}

TEST(LineLabels, ChooseStraightAndClearPlaces) {
    Drawing drawing;
    drawing.wish.spacing = 0;
    // Wavy but for the middle, where a bundle of other lines runs along one half.
    Drawing::Line line;
    for (double x = 5; x <= 195; x += 0.25) {
        line.points.push_back({x, 70 + (std::abs(x - 100) < 30 ? 0 : std::sin(x))});
    }
    drawing.lines = {line};
    for (const double y : {69.0, 71.0}) {
        drawing.others.push_back({{{60, y}, {100, y}}});
    }
    LabelPlacement placement = drawing.Place();
    ASSERT_EQ(placement.labels.size(), 1U);
    EXPECT_GT(placement.labels[0].middle.x, 103);
    EXPECT_LT(placement.labels[0].middle.x, 127);
    EXPECT_NEAR(placement.labels[0].middle.y, 70, 0.05);
    EXPECT_NEAR(placement.labels[0].angle, 0, 0.02);
    EXPECT_NEAR(placement.labels[0].to - placement.labels[0].from,
                drawing.width + 2 * drawing.wish.gap, 0.01);
}

TEST(LineLabels, KeepAboutTheWishedSpacing) {
    Drawing drawing;
    drawing.frame = {0, 0, 1200, 1200};
    drawing.lines = {Circle({600, 600}, 500), {{{20, 30}, {1180, 50}}}};
    const LabelPlacement placement = drawing.Place();
    EXPECT_EQ(FaultOf(drawing, placement), "");
    for (std::size_t i = 1; i < placement.labels.size(); ++i) {
        const LineLabel& a = placement.labels[i - 1];
        const LineLabel& b = placement.labels[i];
        if (a.line == b.line) {
            EXPECT_GT(b.from - a.from, 0.6 * drawing.wish.spacing);
            EXPECT_LT(b.from - a.from, 1.4 * drawing.wish.spacing);
        }
    }
    EXPECT_GT(placement.labels.size(), 45U);
}

TEST(LineLabels, StandInARowUpTheSlope) {
    Drawing drawing;
    drawing.wish.spacing = 0;
    for (int i = 0; i < 8; ++i) {
        drawing.lines.push_back({{{10, 20.0 + 9 * i}, {190 - 3.0 * i, 20.0 + 9 * i}}});
    }
    const LabelPlacement placement = drawing.Place();
    ASSERT_EQ(placement.labels.size(), 8U);
    for (const LineLabel& label : placement.labels) {
        EXPECT_NEAR(label.middle.x, placement.labels[0].middle.x, drawing.width);
    }
}

TEST(LineGaps, AreWhatTextsCover) {
    Drawing drawing = Hills(40, 2, 50);
    const LabelPlacement placement = drawing.Place();
    std::vector<TurnedBox> rooms;
    for (const LineLabel& label : placement.labels) {
        rooms.push_back(RoomOf(label, drawing.width, drawing.wish.height));
    }
    const std::vector<LineGap> gaps =
        GapsBeneath(Drawing::Views(drawing.lines), rooms, placement.labels);
    std::size_t gap = 0;
    for (std::size_t i = 0; i < drawing.lines.size(); ++i) {
        for (double s = 0; s < LengthOf(drawing.lines[i]); s += 0.37) {
            while (gap < gaps.size() &&
                   (gaps[gap].line < i || (gaps[gap].line == i && gaps[gap].to < s))) {
                ++gap;
            }
            const bool isLeftOut = gap < gaps.size() && gaps[gap].line == i && gaps[gap].from <= s;
            const SheetPoint p = PlaceAlong(drawing.lines[i], s);
            const bool isCovered =
                std::any_of(placement.labels.begin(), placement.labels.end(), [&](const auto& l) {
                    const double length = LengthOf(drawing.lines[i]);
                    return Covers(l, drawing, p) ||
                           (l.line == i && ((s >= l.from && s <= l.to) || s + length <= l.to));
                });
            EXPECT_EQ(isLeftOut, isCovered) << i << ' ' << s;
        }
    }
}

} // namespace
} // namespace terravo
