#include "export/vector/DxfPlan.h"

#include "util/NumberText.h"

#include <cmath>

namespace terravo {
namespace {

// Of the texts of points, in text heights: the gap to the point, and the lines that they stand on.
constexpr double kBeside = 0.75;
constexpr double kNumberLine = 1;
constexpr double kHeightLine = -0.5;
constexpr double kCodeLine = -2;

// Decimals, three at most, that a height needs; one that is too large to tell needs none.
int DecimalsOf(double height) {
    const double thousandths = std::round(std::fabs(height) * 1000);
    if (!(thousandths < 1e15)) {
        return 0;
    }
    const auto last = static_cast<int>(std::fmod(thousandths, 1000));
    return last == 0 ? 0 : last % 100 == 0 ? 1 : last % 10 == 0 ? 2 : 3;
}

// Decimals in a place that keep it to a hundredth of the text height; none where that takes too
// many.
std::optional<int> DecimalsForTexts(double textHeight) {
    constexpr int kMost = 12;
    for (int decimals = 0; decimals <= kMost; ++decimals) {
        if (textHeight * DecimalText::kPowersOfTen[static_cast<std::size_t>(decimals)] >= 100) {
            return decimals;
        }
    }
    return std::nullopt;
}

} // namespace

DxfPlan::DxfPlan(const VectorContent& content, const VectorOptions& options,
                 std::vector<std::string>& remarks)
    : content_(content), isR12_(options.dxfVersion == DxfVersion::R12),
      contoursIn3D_(options.contoursIn3D), layers_(content, options, remarks),
      roundText_(DecimalsForTexts(content.textHeight)) {
    MeasureContours();
    MeasureLabels();
    MeasureTriangles();
    MeasureLines(VectorPart::Hull, content.hull);
    MeasureLines(VectorPart::Boundary, content.boundary);
    MeasureLines(VectorPart::Breaklines, content.breaklines);
    MeasurePoints();
    for (const VectorPart kind : kDxfPointTexts) {
        MeasureTexts(kind);
    }
    if (Has(VectorPart::Heights)) {
        ChooseHeightForm();
    }
}

std::string DxfPlan::TextOf(VectorPart kind, Index point) const {
    if (kind == VectorPart::Heights) {
        return NumberText::FormatScreen(content_.PointAt(point).z, heightForm_, '.');
    }
    return kind == VectorPart::Numbers ? content_.NameOf(point)
                                       : std::string(content_.CodeOf(point));
}

SpacePoint DxfPlan::TextPlace(VectorPart kind, Index point) const {
    const double line = kind == VectorPart::Numbers   ? kNumberLine
                        : kind == VectorPart::Heights ? kHeightLine
                                                      : kCodeLine;
    const SpacePoint& place = content_.PointAt(point);
    return {roundText_(place.x + kBeside * content_.textHeight),
            roundText_(place.y + line * content_.textHeight), place.z};
}

SpacePoint DxfPlan::LabelPlace(const VectorLabel& label) const {
    return {label.middle.x, label.middle.y,
            content_.levels[static_cast<std::size_t>(label.level) - 1].value};
}

void DxfPlan::MeasureContours() {
    for (const VectorContour& contour : content_.contours) {
        if (!content_.Shows(contour)) {
            continue;
        }
        const double height = content_.LevelOf(contour).value;
        for (const PlanPoint& vertex : content_.VerticesOf(contour)) {
            box_.Add({vertex.x, vertex.y, height});
        }
        entities_ += contoursIn3D_ ? contour.count + 2 : 1;
    }
}

void DxfPlan::MeasureLabels() {
    if (Has(VectorPart::Labels)) {
        for (const VectorLabel& label : content_.labels) {
            box_.Add(LabelPlace(label));
        }
        entities_ += content_.labels.size();
    }
}

void DxfPlan::MeasureTriangles() {
    if (Has(VectorPart::Triangles)) {
        for (const Triangle& triangle : content_.triangles) {
            for (const Index corner : triangle.vertices) {
                box_.Add(content_.PointAt(corner));
            }
        }
        entities_ += content_.triangles.size();
    }
}

void DxfPlan::MeasureLines(VectorPart part, const std::vector<SpaceLine>& lines) {
    if (Has(part)) {
        for (const SpaceLine& line : lines) {
            for (const SpacePoint& vertex : line.vertices) {
                box_.Add(vertex);
            }
            entities_ += line.vertices.size() + 2;
        }
    }
}

void DxfPlan::MeasurePoints() {
    if (Has(VectorPart::Points)) {
        for (const SpacePoint& point : content_.SurveyPoints()) {
            box_.Add(point);
        }
        entities_ += content_.PointCount();
    }
}

void DxfPlan::MeasureTexts(VectorPart kind) {
    for (Index point = 1; Has(kind) && point <= PointCount(); ++point) {
        if (HasText(kind, point)) {
            box_.Add(TextPlace(kind, point));
            ++entities_;
        }
    }
}

// All heights have as many decimals as the one that needs most.
void DxfPlan::ChooseHeightForm() {
    int decimals = 0;
    for (const SpacePoint& point : content_.SurveyPoints()) {
        decimals = std::max(decimals, DecimalsOf(point.z));
    }
    heightForm_ = "#0" + (decimals == 0 ? "" : "." + std::string(std::size_t(decimals), '0'));
}

} // namespace terravo
