#include "export/vector/VectorLabels.h"

#include "sheet/LineLabels.h"
#include "sheet/MapView.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

constexpr double kCapital = 2;     // millimetres
constexpr double kWidth = 0.9;     // of a character, in capitals
constexpr double kSpacing = 300;   // from value to value, millimetres
constexpr double kGap = 0.3;       // beside a text, in capitals
constexpr double kFinest = 0.02;   // between vertices, millimetres
constexpr double kFrameWidth = 10; // around the points, millimetres

class Labelling {
public:
    Labelling(VectorContent& content, const Extent& extentX, const Extent& extentY)
        : content_(content) {
        view_.millimetresPerUnit = kCapital / content.textHeight;
        view_.centre = {extentX.min, extentY.max};
        const double edge = kFrameWidth;
        frame_ = {-edge, -edge, (extentX.max - extentX.min) * view_.millimetresPerUnit + edge,
                  (extentY.max - extentY.min) * view_.millimetresPerUnit + edge};
        onIndexOnly_ = std::any_of(
            content.contours.begin(), content.contours.end(),
            [this](const VectorContour& contour) { return content_.LevelOf(contour).index; });
    }

    void Place() {
        BringToPaper();
        std::vector<LabelLine> wanted;
        std::vector<LabelLine> others;
        std::vector<Index> levels;
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            const VectorContour& contour = content_.contours[i];
            const LabelLine line{std::span(paper_).subspan(lines_[i].first, lines_[i].count),
                                 contour.closed, static_cast<std::uint32_t>(contour.level - 1),
                                 true};
            if (HasValue(contour)) {
                wanted.push_back(line);
                levels.push_back(contour.level);
            } else if (content_.Shows(contour)) {
                others.push_back(line);
            }
        }
        const LabelWish wish{kCapital, kSpacing, false, kCapital * kGap};
        const LabelPlacement placed = PlaceLineLabels(wanted, Widths(), frame_, {}, wish, others);
        for (const LineLabel& label : placed.labels) {
            content_.labels.push_back(
                {levels[label.line], view_.ToPlan(label.middle), label.angle});
        }
    }

private:
    struct Part {
        std::size_t first;
        std::size_t count;
    };

    [[nodiscard]] bool HasValue(const VectorContour& contour) const {
        return content_.Shows(contour) && (!onIndexOnly_ || content_.LevelOf(contour).index);
    }

    [[nodiscard]] std::vector<double> Widths() const {
        std::vector<double> widths;
        for (const VectorLevel& level : content_.levels) {
            widths.push_back(kWidth * kCapital * static_cast<double>(level.text.size()));
        }
        return widths;
    }

    // Without the vertices that no eye could tell apart.
    void BringToPaper() {
        for (const VectorContour& contour : content_.contours) {
            const std::size_t first = paper_.size();
            for (const PlanPoint& vertex : content_.VerticesOf(contour)) {
                const SheetPoint place = view_.ToPaper(vertex.x, vertex.y);
                if (paper_.size() == first || std::fabs(place.x - paper_.back().x) > kFinest ||
                    std::fabs(place.y - paper_.back().y) > kFinest) {
                    paper_.push_back(place);
                }
            }
            if (paper_.size() == first + 1) { // a line has two places at least
                paper_.push_back(paper_.back());
            }
            lines_.push_back({first, paper_.size() - first});
        }
    }

    VectorContent& content_;
    MapView view_;
    SheetBox frame_;
    bool onIndexOnly_ = false;
    std::vector<SheetPoint> paper_;
    std::vector<Part> lines_;
};

} // namespace

void PlaceVectorLabels(VectorContent& content, const Extent& extentX, const Extent& extentY) {
    Labelling(content, extentX, extentY).Place();
}

} // namespace terravo
