// Heights, numbers and codes of points on a sheet, as many as have room.
//
// Data: the points, the level values that are already placed. Method: the map is divided into
// squares; each offers its points from its middle outwards, the highest and the lowest point of all
// come before them. On sparse maps every point may be written, on dense ones one a square, so that
// the texts cover the map evenly at every density. The lines of a point stand together, to its
// right, to its left, above or below: where no text stands and, if that can be, no other point, and
// rather between the contours than across them.
#include "sheet/FitText.h"
#include "sheet/LabelRoom.h"
#include "sheet/MakeSheet.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace terravo {
namespace {

// In text heights.
constexpr double kSquare = 8;
constexpr double kLine = 1.45;    // from base line to base line
constexpr double kFromDot = 0.55; // from the dot's edge to the text
constexpr double kApart = 0.5;    // at least between two texts

constexpr double kDense = 6; // points in a square

struct TextLine {
    SheetLayer layer = SheetLayer::SpotHeights;
    std::string text;
    double width = 0;
    Colour colour = 0;
};

// A point of a square.
struct Offer {
    double distance = 0; // squared, from the middle of the square
    Index point = 0;

    bool operator<(const Offer& other) const {
        return distance != other.distance ? distance < other.distance : point < other.point;
    }
};

// The points nearest to the middle of a square, which keeps the distances to those of the
// neighbours even.
class Square {
public:
    static constexpr std::size_t kMost = 8;

    [[nodiscard]] std::size_t Points() const { return points_; }
    [[nodiscard]] std::span<const Offer> Nearest() const {
        return std::span(nearest_).first(std::min(points_, nearest_.size()));
    }
    void Add(const Offer& offer) {
        std::size_t place = points_++;
        if (place >= nearest_.size()) {
            if (!(offer < nearest_.back())) {
                return;
            }
            place = nearest_.size() - 1;
        }
        for (; place > 0 && offer < nearest_[place - 1]; --place) {
            nearest_[place] = nearest_[place - 1];
        }
        nearest_[place] = offer;
    }

private:
    std::size_t points_ = 0;
    std::array<Offer, kMost> nearest_;
};

// The points of the map, square by square.
class PointSquares {
public:
    PointSquares(const SheetContext& context, double side)
        : map_(context.layout.map), side_(side),
          columns_(static_cast<std::size_t>(std::max(1.0, std::ceil(map_.Width() / side)))),
          rows_(static_cast<std::size_t>(std::max(1.0, std::ceil(map_.Height() / side)))),
          squares_(columns_ * rows_) {
        const PointSet& points = context.source.points;
        for (Index i = 1; i <= context.source.surveyed; ++i) {
            const SheetPoint place = context.layout.view.ToPaper(points.x[i], points.y[i]);
            if (map_.Contains(place)) {
                Add(i, place, points.z);
            }
        }
    }

    [[nodiscard]] const std::vector<Square>& Squares() const { return squares_; }
    /// 0 where no point is on the map.
    [[nodiscard]] Index Highest() const { return highest_; }
    [[nodiscard]] Index Lowest() const { return lowest_; }

    /// Mean number of points in a square that has any.
    [[nodiscard]] double Density() const {
        std::size_t filled = 0;
        std::size_t points = 0;
        for (const Square& square : squares_) {
            filled += square.Points() > 0 ? 1 : 0;
            points += square.Points();
        }
        return filled == 0 ? 0 : static_cast<double>(points) / static_cast<double>(filled);
    }

private:
    void Add(Index point, SheetPoint place, const Array1<double>& z) {
        const auto column =
            std::min(static_cast<std::size_t>((place.x - map_.left) / side_), columns_ - 1);
        const auto row =
            std::min(static_cast<std::size_t>((place.y - map_.top) / side_), rows_ - 1);
        const double dx = place.x - map_.left - (static_cast<double>(column) + 0.5) * side_;
        const double dy = place.y - map_.top - (static_cast<double>(row) + 0.5) * side_;
        squares_[row * columns_ + column].Add({dx * dx + dy * dy, point});
        highest_ = highest_ == 0 || z[point] > z[highest_] ? point : highest_;
        lowest_ = lowest_ == 0 || z[point] < z[lowest_] ? point : lowest_;
    }

    const SheetBox& map_;
    double side_;
    std::size_t columns_;
    std::size_t rows_;
    std::vector<Square> squares_;
    Index highest_ = 0;
    Index lowest_ = 0;
};

class PointTexts {
public:
    PointTexts(const SheetContext& context, SheetScene& scene)
        : context_(context), scene_(scene), height_(context.plan.textHeight),
          room_(context.layout.map.Shrunk(kApart / 2 * height_), height_, kSquare / 2 * height_),
          squares_(context, kSquare * height_), isDense_(squares_.Density() > kDense) {}

    void Add() {
        TakeLabels();
        NoteLines();
        if (!isDense_) {
            NotePoints();
        }
        PlaceExtremes();
        PlaceSquares();
        AddDots();
    }

private:
    enum class Side : unsigned char { Right, Left, Above, Below };

    [[nodiscard]] SheetPoint PlaceOf(Index point) const {
        const PointSet& points = context_.source.points;
        return context_.layout.view.ToPaper(points.x[point], points.y[point]);
    }

    void TakeLabels() {
        for (const SheetText& text : scene_.texts) {
            if (text.layer == SheetLayer::Labels) {
                const double width =
                    context_.source.measure.Width(text.text, text.height, text.bold);
                room_.Take({text.place,
                            {std::cos(text.angle), -std::sin(text.angle)},
                            width / 2,
                            text.height / 2});
            }
        }
    }

    void NoteLines() {
        for (const SheetLine& line : scene_.lines) {
            if (line.IsContour() || line.layer == SheetLayer::Hull) {
                for (const SheetPiece& piece : scene_.PiecesOf(line)) {
                    NotePiece(scene_.VerticesOf(piece));
                }
            }
        }
    }

    void NotePiece(std::span<const SheetPoint> points) {
        for (std::size_t i = 1; i < points.size(); ++i) {
            const SheetPoint a = points[i - 1];
            const SheetPoint b = points[i];
            const int steps = 1 + static_cast<int>(std::hypot(b.x - a.x, b.y - a.y) / room_.Cell());
            for (int k = 0; k < steps; ++k) {
                const double t = static_cast<double>(k) / steps;
                room_.AddInk({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)});
            }
        }
    }

    static SheetBox DotAt(SheetPoint place) {
        return SheetBox{place.x, place.y, place.x, place.y}.Shrunk(-kPointDot / 2);
    }

    void PlaceExtremes() {
        if (!context_.plan.Shows(SheetLayer::SpotHeights)) {
            return;
        }
        for (const Index point : {squares_.Highest(), squares_.Lowest()}) {
            if (Place(point, false)) {
                extremes_.push_back(point);
            }
        }
    }

    void PlaceSquares() {
        constexpr double kSparse = 3; // points in a square
        const std::size_t wanted = squares_.Density() <= kSparse ? Square::kMost : isDense_ ? 1 : 2;
        const bool mustAvoidPoints = !isDense_ && context_.plan.Shows(SheetLayer::Points);
        for (const Square& square : squares_.Squares()) {
            std::size_t placed = 0;
            for (const Offer& offer : square.Nearest()) {
                placed += placed < wanted && Place(offer.point, mustAvoidPoints) ? 1 : 0;
            }
        }
    }

    // All dots, where they are few enough for texts between them.
    void NotePoints() {
        dotGrid_.emplace(context_.layout.map, 2 * height_);
        for (Index i = 1; i <= context_.source.surveyed; ++i) {
            const SheetPoint place = PlaceOf(i);
            if (std::vector<SheetPoint>* cell = dotGrid_->At(place)) {
                cell->push_back(place);
            }
        }
    }

    // @return whether the point has its texts now.
    bool Place(Index point, bool mustAvoidPoints) {
        if (point == 0 || HasTexts(point)) {
            return false;
        }
        MakeLines(point);
        if (lines_.empty()) {
            return false;
        }
        const SheetPoint place = PlaceOf(point);
        if (!IsFree(DotAt(place))) {
            return false;
        }
        for (const bool avoidsPoints : {true, false}) {
            if (avoidsPoints ? isDense_ : mustAvoidPoints) {
                continue;
            }
            if (const std::optional<Side> side = BestSide(place, avoidsPoints)) {
                Write(place, BoxBeside(place, *side), *side);
                return true;
            }
        }
        return false;
    }

    // The one that covers least of the lines; to the right where that is no worse.
    [[nodiscard]] std::optional<Side> BestSide(SheetPoint place, bool avoidsPoints) {
        constexpr double kUsual = 0.15; // what an earlier side may cover more
        std::optional<Side> best;
        double least = 0;
        double handicap = 0;
        for (const Side side : {Side::Right, Side::Left, Side::Above, Side::Below}) {
            const SheetBox box = BoxBeside(place, side);
            if (IsFree(Padded(box)) && !(avoidsPoints && LiesOnPoint(box))) {
                const double covered = Covered(box) + handicap;
                if (!best || covered < least) {
                    best = side;
                    least = covered;
                }
            }
            handicap += kUsual;
        }
        return best;
    }

    // How much of contours lies beneath the lines of a text.
    [[nodiscard]] double Covered(const SheetBox& box) const {
        constexpr double kMost = 1e9;
        double covered = 0;
        double top = box.top;
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            covered += room_.InkBeside(Upright({box.left, top, box.right, top + height_}), kMost);
            top += kLine * height_;
        }
        return covered;
    }

    [[nodiscard]] bool HasTexts(Index point) const {
        return std::find(extremes_.begin(), extremes_.end(), point) != extremes_.end();
    }

    void MakeLines(Index point) {
        lines_.clear();
        const PointLabels& labels = context_.source.points.labels;
        const SheetTheme& theme = context_.theme;
        AddLine(
            SheetLayer::Numbers, [&] { return labels.NameOrNumber(point); }, theme.number);
        AddLine(
            SheetLayer::SpotHeights, [&] { return context_.HeightText(point); }, theme.point);
        AddLine(
            SheetLayer::Codes, [&] { return std::string(labels.Code(point)); }, theme.code);
    }

    template <class MakeText>
    void AddLine(SheetLayer layer, MakeText makeText, Colour colour) {
        if (!context_.plan.Shows(layer)) {
            return;
        }
        std::string text = makeText();
        if (!text.empty()) {
            const double width = context_.source.measure.Width(text, height_, false);
            lines_.push_back({layer, std::move(text), width, colour});
        }
    }

    [[nodiscard]] SheetBox BoxBeside(SheetPoint place, Side side) const {
        double width = 0;
        for (const TextLine& line : lines_) {
            width = std::max(width, line.width);
        }
        const double tall = height_ * (1 + kLine * static_cast<double>(lines_.size() - 1));
        const double away = kPointDot / 2 + kFromDot * height_;
        switch (side) {
        case Side::Right:
            return {place.x + away, place.y - tall / 2, place.x + away + width, place.y + tall / 2};
        case Side::Left:
            return {place.x - away - width, place.y - tall / 2, place.x - away, place.y + tall / 2};
        case Side::Above:
            return {place.x - width / 2, place.y - away - tall, place.x + width / 2,
                    place.y - away};
        case Side::Below:
            break;
        }
        return {place.x - width / 2, place.y + away, place.x + width / 2, place.y + away + tall};
    }

    [[nodiscard]] bool IsFree(const SheetBox& box) const { return room_.IsFree(Upright(box)); }
    [[nodiscard]] SheetBox Padded(const SheetBox& box) const {
        return box.Shrunk(-kApart / 2 * height_);
    }

    [[nodiscard]] bool LiesOnPoint(const SheetBox& box) {
        const SheetBox wide = box.Shrunk(-kPointDot / 2);
        return dotGrid_ && !dotGrid_->ForEachIn(wide, [&](const std::vector<SheetPoint>& dots) {
            return std::none_of(dots.begin(), dots.end(),
                                [&](SheetPoint dot) { return wide.Contains(dot); });
        });
    }

    void Write(SheetPoint place, const SheetBox& box, Side side) {
        const TextAnchor anchor = side == Side::Right  ? TextAnchor::Left
                                  : side == Side::Left ? TextAnchor::Right
                                                       : TextAnchor::Middle;
        const double x = side == Side::Right ? box.left : side == Side::Left ? box.right : place.x;
        double y = box.top + height_;
        for (TextLine& line : lines_) {
            AddText(scene_, line.layer, {std::move(line.text), height_, false, line.width}, {x, y},
                    anchor, line.colour);
            y += kLine * height_;
        }
        room_.Take(Upright(Padded(box)));
        room_.Take(Upright(DotAt(place)));
        dots_.push_back(place);
    }

    // Where the points are not shown, those with a text are.
    void AddDots() {
        if (context_.plan.Shows(SheetLayer::Points) || dots_.empty()) {
            return;
        }
        SheetMarks marks;
        marks.layer = context_.plan.Shows(SheetLayer::SpotHeights) ? SheetLayer::SpotHeights
                      : context_.plan.Shows(SheetLayer::Numbers)   ? SheetLayer::Numbers
                                                                   : SheetLayer::Codes;
        marks.ink = scene_.InkNumber({context_.theme.point, 0.1, {}});
        marks.size = kPointDot;
        marks.places = std::move(dots_);
        scene_.marks.push_back(std::move(marks));
    }

    const SheetContext& context_;
    SheetScene& scene_;
    double height_;
    LabelRoom room_;
    PointSquares squares_;
    std::optional<PaperGrid<std::vector<SheetPoint>>> dotGrid_;
    std::vector<Index> extremes_; // those with texts
    bool isDense_;                // no place is free of points
    std::vector<TextLine> lines_; // of the point at work
    std::vector<SheetPoint> dots_;
};

} // namespace

void AddPointTexts(const SheetContext& context, SheetScene& scene) {
    const SheetPlan& plan = context.plan;
    if (plan.Shows(SheetLayer::SpotHeights) || plan.Shows(SheetLayer::Numbers) ||
        plan.Shows(SheetLayer::Codes)) {
        PointTexts(context, scene).Add();
    }
}

} // namespace terravo
