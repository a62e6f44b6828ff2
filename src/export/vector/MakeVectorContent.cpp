#include "export/vector/MakeVectorContent.h"

#include "export/vector/CleanText.h"
#include "export/vector/DecimalRounding.h"
#include "export/vector/VectorLabels.h"
#include "export/vector/VectorNumber.h"
#include "sheet/SheetPlan.h"
#include "triangulation/HullRings.h"
#include "util/PathText.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <utility>

namespace terravo {
namespace {

// Without decimals: contours shorter than this part of the survey are what rounding leaves of a
// level at the very top or bottom.
constexpr double kShortestContour = 1e-7;
// The same of loops round an edge or a ridge of that level, by their mean width.
constexpr double kNarrowestContour = 1e-8;
// Letters in a row across the survey, beyond which labels are refused.
constexpr double kSmallestText = 1.0 / 20000;

double LengthOf(std::span<const PlanPoint> line) {
    double length = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        length += std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
    }
    return length;
}

// Twice the area inside.
double DoubleAreaOf(std::span<const PlanPoint> ring) {
    double area = 0;
    for (std::size_t i = 2; i < ring.size(); ++i) {
        area += (ring[i - 1].x - ring[0].x) * (ring[i].y - ring[0].y) -
                (ring[i].x - ring[0].x) * (ring[i - 1].y - ring[0].y);
    }
    return std::fabs(area);
}

// The N of 1:N at which the points fit a sheet of 380 by 257 mm.
double SheetScaleOf(const PointSet& points, LengthUnit unit) {
    const double perUnit = MillimetresIn(unit);
    const double width = (points.extentX.max - points.extentX.min) * perUnit;
    const double height = (points.extentY.max - points.extentY.min) * perUnit;
    return std::max(std::max(width, height) / 380, std::min(width, height) / 257);
}

// Rounding moves a place by half a last decimal: with so many more than the tolerance has, lines
// that nearly touch stay apart but for the narrowest places.
constexpr int kMoreDecimals = 3;

int DecimalsFor(double tolerance) {
    const int decimals = static_cast<int>(std::ceil(-std::log10(tolerance) - 1e-9));
    return std::min(decimals + kMoreDecimals, kMostVectorDecimals);
}

class Maker {
public:
    Maker(const VectorSource& source, const VectorWish& wish)
        : source_(source), wish_(wish), round_(wish.decimals),
          width_(source.points.extentX.max - source.points.extentX.min),
          height_(source.points.extentY.max - source.points.extentY.min) {}

    VectorContent Make() {
        content_.name = CleanText(NameWithoutExtension(source_.points.sourceName));
        content_.unit = wish_.unit;
        content_.epsg = wish_.epsg;
        content_.parts = wish_.parts;
        content_.textHeight = wish_.textHeight ? *wish_.textHeight : UsualTextHeight();
        AddPoints();
        if (Wants(VectorPart::Triangles)) {
            AddTriangles();
        }
        if (Wants(VectorPart::Contours) || Wants(VectorPart::IndexContours) ||
            Wants(VectorPart::Bands)) {
            AddLevels();
        }
        if (Wants(VectorPart::Contours) || Wants(VectorPart::IndexContours)) {
            AddContours();
        }
        if (Wants(VectorPart::Labels)) {
            AddLabels();
        }
        if (Wants(VectorPart::Bands)) {
            AddBands();
        }
        RemarkOnFewDecimals();
        if (Wants(VectorPart::Hull)) {
            AddHull();
        }
        if (Wants(VectorPart::Boundary) && source_.shaped != nullptr) {
            AddLaidLines(LineRole::Boundary, content_.boundary);
            AddLaidLines(LineRole::Hole, content_.boundary);
        }
        if (Wants(VectorPart::Breaklines) && source_.shaped != nullptr) {
            AddLaidLines(LineRole::Breakline, content_.breaklines);
        }
        return std::move(content_);
    }

private:
    [[nodiscard]] bool Wants(VectorPart part) const { return wish_.parts.Has(part); }

    // Two millimetres on a sheet.
    [[nodiscard]] double UsualTextHeight() const {
        const double scale = UsualScale(std::max(SheetScaleOf(source_.points, wish_.unit), 1.0));
        return 2 * scale / MillimetresIn(wish_.unit);
    }

    void RemarkOnFewDecimals() {
        if (!wish_.smoothing || !wish_.decimals) {
            return;
        }
        const double tolerance = ToleranceOf(wish_, source_.points);
        const int enough = DecimalsFor(tolerance);
        if (*wish_.decimals < enough) {
            std::string told;
            VectorNumber::AppendShort(told, tolerance);
            Remark({VectorPart::Contours, VectorPart::IndexContours, VectorPart::Bands},
                   "Rounding to " + std::to_string(*wish_.decimals) +
                       (*wish_.decimals == 1 ? " decimal" : " decimals") +
                       " could make smooth lines touch that run close together; for a tolerance "
                       "of " +
                       told + ", " + std::to_string(enough) + " are safer.");
        }
    }

    void AddPoints() {
        const PointSet& points = source_.points;
        content_.points.reserve(static_cast<std::size_t>(points.count));
        for (Index i = 1; i <= points.count; ++i) {
            content_.points.push_back(round_(SpacePoint{points.x[i], points.y[i], points.z[i]}));
        }
        content_.addedPoints = static_cast<std::size_t>(points.count - source_.surveyed);
        if (points.labels.HasLabels()) {
            AddLabelsOfPoints(points.labels);
        }
    }

    void AddLabelsOfPoints(const PointLabels& labels) {
        const auto isClean = [&labels](Index i) {
            return IsCleanText(labels.Name(i)) && IsCleanText(labels.Code(i));
        };
        Index changed = 0;
        for (Index i = 1; i <= source_.points.count; ++i) {
            changed += isClean(i) ? 0 : 1;
        }
        if (changed == 0) {
            content_.pointLabels = labels;
            return;
        }
        for (Index i = 1; i <= source_.points.count; ++i) {
            content_.pointLabels.Append(CleanText(labels.Name(i)), CleanText(labels.Code(i)));
        }
        Remark({VectorPart::Numbers, VectorPart::Codes},
               "Control characters in the names or codes of " + std::to_string(changed) +
                   (changed == 1 ? " point" : " points") + " became blanks.");
    }

    void Remark(const VectorParts& parts, std::string sentence) {
        content_.remarks.push_back({parts, std::move(sentence)});
    }

    void AddTriangles() {
        const TriangleList& triangles = source_.triangles;
        content_.triangles.reserve(static_cast<std::size_t>(triangles.count));
        for (Index t = 1; t <= triangles.count; ++t) {
            Triangle triangle = triangles.table[t];
            for (Index& neighbour : triangle.neighbours) {
                neighbour = std::max<Index>(neighbour, 0);
            }
            content_.triangles.push_back(triangle);
        }
        if (round_.Rounds()) {
            LeaveOutFlattened();
        }
    }

    // Rounding may lay the corners of a narrow triangle on one line, or over it.
    [[nodiscard]] bool IsFlattened(const Triangle& triangle) const {
        const SpacePoint& a = content_.PointAt(triangle.vertices[0]);
        const SpacePoint& b = content_.PointAt(triangle.vertices[1]);
        const SpacePoint& c = content_.PointAt(triangle.vertices[2]);
        return !((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x) > 0);
    }

    void LeaveOutFlattened() {
        std::vector<Triangle>& triangles = content_.triangles;
        std::vector<Index> number(triangles.size() + 1);
        Index kept = 0;
        for (std::size_t t = 0; t < triangles.size(); ++t) {
            number[t + 1] = IsFlattened(triangles[t]) ? 0 : ++kept;
        }
        const std::size_t before = triangles.size();
        if (static_cast<std::size_t>(kept) == before) {
            return;
        }
        for (std::size_t t = 0; t < before; ++t) {
            if (number[t + 1] != 0) {
                Triangle& triangle = triangles[static_cast<std::size_t>(number[t + 1]) - 1];
                triangle = triangles[t];
                for (Index& neighbour : triangle.neighbours) {
                    neighbour = number[static_cast<std::size_t>(neighbour)];
                }
            }
        }
        triangles.resize(static_cast<std::size_t>(kept));
        Remark({VectorPart::Triangles},
               std::to_string(before - triangles.size()) +
                   " triangles without area at so few decimals are left out.");
    }

    // Decimals are for places: a level keeps those of its rule.
    [[nodiscard]] DecimalRounding LevelRounding() const {
        if (!wish_.decimals || source_.rule.kind == LevelRuleKind::ByCount) {
            return round_;
        }
        return DecimalRounding(
            std::min(std::max(*wish_.decimals, LevelDecimals(source_.rule)), kMostVectorDecimals));
    }

    void AddLevels() {
        const std::vector<double> values = LevelValuesOf(source_.rule, source_.points.extentZ);
        const DecimalRounding round = LevelRounding();
        bool distinct = true;
        for (std::size_t k = 1; k < values.size(); ++k) {
            distinct = distinct && round(values[k]) > round(values[k - 1]);
        }
        for (std::size_t k = 0; k < values.size(); ++k) {
            content_.levels.push_back({distinct ? round(values[k]) : values[k],
                                       LevelText(source_.rule, values[k], '.'),
                                       IsIndexLevel(source_.rule, source_.levels,
                                                    static_cast<Index>(k) + 1, wish_.indexEvery)});
        }
    }

    [[nodiscard]] bool IsLine(std::span<const PlanPoint> vertices, Index level, bool closed) const {
        if (vertices.size() < (closed ? 3U : 2U)) {
            return false;
        }
        const double side = std::max(width_, height_);
        const double length = LengthOf(vertices);
        const bool isNarrow = closed && IsExtreme(level) &&
                              DoubleAreaOf(vertices) < kNarrowestContour * side * length;
        return length >= kShortestContour * side && !isNarrow;
    }

    // Of levels by count the first and the last lie at the lowest and the highest point.
    [[nodiscard]] bool IsExtreme(Index level) const {
        return source_.rule.kind == LevelRuleKind::ByCount &&
               (level == 1 || level == static_cast<Index>(content_.levels.size()));
    }

    // The last vertices are taken back when they make no line.
    void AddContour(Index level, std::span<const ContourVertex> vertices, bool closed) {
        std::vector<PlanPoint>& all = content_.contourVertices;
        const std::size_t first = all.size();
        for (const ContourVertex& vertex : vertices) {
            const PlanPoint place = round_(PlanPoint{vertex.x, vertex.y});
            if (all.size() == first || place != all.back()) {
                all.push_back(place);
            }
        }
        while (closed && all.size() > first + 1 && all.back() == all[first]) {
            all.pop_back();
        }
        if (IsLine(std::span(all).subspan(first), level, closed)) {
            content_.contours.push_back({first, all.size() - first, level, closed});
        } else {
            all.resize(first);
        }
    }

    void AddContours() {
        for (Index k = 1; k <= source_.contours.UpperBound(); ++k) {
            const ContourLevel& level = source_.contours[k];
            for (const ContourLine& line : level.lines) {
                AddContour(k, level.VerticesOf(line), line.closed);
            }
        }
    }

    void AddLabels() {
        if (content_.textHeight < kSmallestText * std::max(width_, height_)) {
            Remark({VectorPart::Labels},
                   "The contours have no values: such small texts would be too many.");
            return;
        }
        PlaceVectorLabels(content_, source_.points.extentX, source_.points.extentY);
        for (VectorLabel& label : content_.labels) {
            label.middle = round_(label.middle);
        }
    }

    void AddBands() {
        std::function<PlanPoint(PlanPoint)> round;
        if (round_.Rounds()) {
            round = round_;
        }
        Array1<LevelBand> bands =
            MakeLevelBands(source_.points, source_.triangles, source_.contours, round);
        for (Index k = 1; k <= bands.UpperBound(); ++k) {
            LevelBand& band = bands[k];
            const auto above = static_cast<std::size_t>(k) - 1;
            band.low =
                above == 0 ? round_(source_.points.extentZ.min) : content_.levels[above - 1].value;
            band.high = above == content_.levels.size() ? round_(source_.points.extentZ.max)
                                                        : content_.levels[above].value;
            if (!band.polygons.empty()) {
                content_.bands.push_back(std::move(band));
            }
        }
    }

    // As they run through the triangles, so that they lie on the surface everywhere.
    void AddLaidLines(LineRole role, std::vector<SpaceLine>& lines) {
        for (const VisibleCourse& course : VisibleCourses(*source_.shaped, role)) {
            const std::vector<Index>& points = course.points;
            SpaceLine line;
            line.name = CleanText(LinesOf(source_.shaped->plan, role)[course.number]->line.name);
            line.closed = points.size() > 3 && points.front() == points.back();
            for (const Index point : points) {
                const SpacePoint& place = content_.PointAt(point);
                if (line.vertices.empty() || !(place == line.vertices.back())) {
                    line.vertices.push_back(place);
                }
            }
            if (line.closed && line.vertices.size() > 1) {
                line.vertices.pop_back();
            }
            if (line.vertices.size() >= (line.closed ? 3U : 2U)) {
                lines.push_back(std::move(line));
            }
        }
    }

    void AddHull() {
        for (const HullRing& ring : HullRings(source_.triangles)) {
            SpaceLine line;
            line.closed = true;
            for (const HullStep& step : ring) {
                const SpacePoint& place = content_.PointAt(step.point);
                if (line.vertices.empty() || !(place == line.vertices.back())) {
                    line.vertices.push_back(place);
                }
            }
            while (line.vertices.size() > 1 && line.vertices.back() == line.vertices.front()) {
                line.vertices.pop_back();
            }
            if (line.vertices.size() >= 3) {
                content_.hull.push_back(std::move(line));
            }
        }
    }

    const VectorSource& source_;
    const VectorWish& wish_;
    DecimalRounding round_;
    double width_; // of the survey
    double height_;
    VectorContent content_;
};

} // namespace

double UsualTolerance(const PointSet& points, LengthUnit unit) {
    constexpr double kOnPaper = 0.02; // millimetres
    constexpr double kLeastScale = 1e-9;
    const double scale = UsualScale(std::max(SheetScaleOf(points, unit), kLeastScale));
    return kOnPaper * scale / MillimetresIn(unit);
}

double ToleranceOf(const VectorWish& wish, const PointSet& points) {
    return wish.tolerance ? *wish.tolerance : UsualTolerance(points, wish.unit);
}

VectorContent MakeVectorContent(const VectorSource& source, const VectorWish& wish) {
    return Maker(source, wish).Make();
}

} // namespace terravo
