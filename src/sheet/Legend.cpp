// The legend of a sheet: a sample of everything that it shows, beside its name.
//
// Data: rows, first of symbols, then of heights, where colours tell these; the highest comes first,
// as on a slope. Method: rows fill columns from the left, each as wide as its texts need. Of a few
// arrangements the first that fits is taken: every height a row, or one scale of all heights; in
// one column or several; with the usual texts or smaller ones. Where none fits, texts and rows at
// the end are cut off, which an ellipsis says.
#include "sheet/FitText.h"
#include "sheet/LegendRows.h"

#include <algorithm>
#include <array>

namespace terravo {
namespace {

// In text heights.
constexpr double kPitch = 2.1;        // from row to row
constexpr double kSample = 6;         // width of the samples
constexpr double kToText = 7.2;       // from the left of a sample to its text
constexpr double kBetween = 2.4;      // from column to column
constexpr double kHeading = 2.9;      // height of the heading with the space below
constexpr double kAboveHeading = 0.6; // rows above that of the heights
constexpr double kLeastRows = 4;      // of a scale, with its heading
constexpr double kUsualRows = 10;     // with fewer left it is better off in a column of its own
constexpr double kMostRows = 16;
constexpr double kMostColumns = 8;
constexpr double kSlack = 1e-6; // what rounding adds

enum class Heights : unsigned char { Rows, ScaleApart, Scale };

struct Arrangement {
    double height = 0; // of the texts
    double rows = 0;   // in a column
    std::vector<std::vector<LegendRow>> columns;
    std::vector<double> widths;
};

class Legend {
public:
    Legend(const SheetContext& context, SheetScene& scene)
        : context_(context), scene_(scene), box_(context.layout.legend),
          symbols_(SymbolRows(context)), heights_(HeightRows(context)),
          figures_(FigureRows(context)) {}

    void Add() {
        if (!symbols_.empty() || !heights_.empty() || !figures_.empty()) {
            Draw(Arranged());
        }
    }

private:
    [[nodiscard]] double Width(const LegendRow& row, double height) const {
        const double text = context_.source.measure.Width(row.text, height, false);
        return (row.sample == LegendSample::None ? 0 : kToText * height) + text;
    }

    [[nodiscard]] double RowsAt(double height) const {
        return (box_.Height() / height - kHeading) / kPitch;
    }

    // Slightly smaller texts are better than a scale squeezed in below the symbols.
    [[nodiscard]] Arrangement Arranged() const {
        const double usual = std::min(context_.layout.textHeight, box_.Height() / 5);
        constexpr std::array kFirst{1.0, 0.9, 0.8};
        constexpr std::array kThen{1.0, 0.9, 0.8, 0.7, 0.6, 0.5};
        for (const double part : kFirst) {
            for (const Heights heights : {Heights::Rows, Heights::ScaleApart}) {
                if (Arrangement tried = ArrangedAs(part * usual, heights); FitsIn(tried)) {
                    return tried;
                }
            }
        }
        for (const double part : kThen) {
            for (const Heights heights : {Heights::Rows, Heights::ScaleApart, Heights::Scale}) {
                if (Arrangement tried = ArrangedAs(part * usual, heights); FitsIn(tried)) {
                    return tried;
                }
            }
        }
        return CutOff(kThen.back() * usual);
    }

    [[nodiscard]] bool FitsIn(const Arrangement& tried) const {
        double width = -kBetween * tried.height;
        for (const double column : tried.widths) {
            width += column + kBetween * tried.height;
        }
        return !tried.columns.empty() && width <= box_.Width();
    }

    // All rows in as few columns as hold them.
    [[nodiscard]] Arrangement ArrangedAs(double height, Heights heights) const {
        Arrangement made;
        made.height = height;
        made.rows = RowsAt(height);
        const auto count = static_cast<double>(symbols_.size() + heights_.size() + figures_.size());
        const bool asScale = heights != Heights::Rows;
        if (asScale ? made.rows < kLeastRows : made.rows < 1 || count > made.rows * kMostColumns) {
            return made;
        }
        double used = made.rows; // of the column at work
        const auto place = [&](LegendRow row, double needed) {
            if (used + needed > made.rows + kSlack) {
                made.columns.emplace_back();
                made.widths.push_back(0);
                used = 0;
            }
            const bool isBelowOthers = row.sample == LegendSample::None && used > 0;
            row.rows += isBelowOthers ? kAboveHeading : 0;
            used += row.rows;
            made.widths.back() = std::max(made.widths.back(), Width(row, height));
            made.columns.back().push_back(std::move(row));
        };
        for (const LegendRow& row : symbols_) {
            place(row, 1);
        }
        if (asScale && !heights_.empty()) {
            PlaceScale(made.rows, made.rows - used, heights == Heights::ScaleApart, place);
        } else {
            double needed = static_cast<double>(heights_.size()) + kAboveHeading;
            for (const LegendRow& row : heights_) { // together, if that can be
                place(row, needed);
                needed = 1;
            }
        }
        double needed = FigureRoom(); // together, if that can be
        for (const LegendRow& row : figures_) {
            place(row, needed);
            needed = 1;
        }
        return made;
    }

    // Of the figures, rows.
    [[nodiscard]] double FigureRoom() const {
        return figures_.empty() ? 0 : static_cast<double>(figures_.size()) + kAboveHeading;
    }

    // In what is left of the column, or in one of its own.
    template <class Place>
    void PlaceScale(double all, double left, bool apart, Place place) const {
        const double below = all - FigureRoom() >= kLeastRows ? FigureRoom() : 0;
        const bool staysHere = left - below >= (apart ? kUsualRows : kLeastRows) + kAboveHeading;
        const double rows = std::min((staysHere ? left - kAboveHeading : all) - below, kMostRows);
        place(heights_.front(), staysHere ? 1 + kAboveHeading : all);
        const auto longest = std::max_element(
            heights_.begin() + 1, heights_.end(),
            [](const LegendRow& a, const LegendRow& b) { return a.text.size() < b.text.size(); });
        LegendRow scale{LegendSample::Scale, longest->text};
        scale.rows = rows - 1;
        place(scale, scale.rows);
    }

    // What does not fit is left out, and the last row says so.
    [[nodiscard]] Arrangement CutOff(double height) const {
        Arrangement made =
            ArrangedAs(height, heights_.empty() || RowsAt(height) < kLeastRows ? Heights::Rows
                                                                               : Heights::Scale);
        const double least = 12 * height; // of a column
        const auto most = static_cast<std::size_t>(
            std::max(1.0, (box_.Width() + kBetween * height) / (least + kBetween * height)));
        if (made.columns.size() > most) {
            made.columns.resize(most);
            SayMoreIn(made.columns.back(), made.rows);
        }
        const auto count = static_cast<double>(made.columns.size());
        made.widths.assign(made.columns.size(),
                           (box_.Width() + kBetween * height) / count - kBetween * height);
        return made;
    }

    // @param room  rows.
    static void SayMoreIn(std::vector<LegendRow>& column, double room) {
        double used = 0;
        for (const LegendRow& row : column) {
            used += row.rows;
        }
        if (used + 1 > room + kSlack) {
            column.pop_back();
        }
        column.push_back({LegendSample::None, "\xE2\x80\xA6"});
    }

    void Draw(const Arrangement& made) {
        if (made.columns.empty()) {
            return;
        }
        height_ = made.height;
        const double heading = 1.2 * height_;
        AddText(scene_, SheetLayer::Legend,
                FitText(context_.source.measure, context_.source.texts[Text::LegendTitle], heading,
                        true, box_.Width()),
                {box_.left, box_.top + heading}, TextAnchor::Left, context_.theme.text);
        double x = box_.left;
        for (std::size_t i = 0; i < made.columns.size(); ++i) {
            double y = box_.top + kHeading * height_;
            for (const LegendRow& row : made.columns[i]) {
                DrawRow(row, x, y, made.widths[i]);
                y += row.rows * kPitch * height_;
            }
            x += made.widths[i] + kBetween * height_;
        }
    }

    void DrawRow(const LegendRow& row, double x, double y, double width) {
        const double middle = y + (row.rows - 0.5) * kPitch * height_; // of a heading's own row
        if (row.sample == LegendSample::Scale) {
            DrawScale({x, y, x + width, y + row.rows * kPitch * height_});
            return;
        }
        DrawSample(row, x, y, middle);
        const bool isHeading = row.sample == LegendSample::None;
        const double indent = isHeading ? 0 : kToText * height_;
        Write(row.text, {x + indent, middle + height_ / 2}, width - indent,
              isHeading ? context_.theme.quietText : context_.theme.text);
    }

    void Write(const std::string& text, SheetPoint place, double room, Colour colour) {
        AddText(scene_, SheetLayer::Legend,
                FitText(context_.source.measure, text, height_, false, room + kSlack), place,
                TextAnchor::Left, colour);
    }

    void DrawSample(const LegendRow& row, double x, double y, double middle) {
        const double right = x + kSample * height_;
        switch (row.sample) {
        case LegendSample::Line:
            DrawLine(row.ink, {x, middle}, {right, middle});
            break;
        case LegendSample::Band:
            DrawBand(row, {x, y, right, y + kPitch * height_});
            break;
        case LegendSample::Triangles:
            DrawTriangles(row.ink, {x, middle - 0.7 * height_, right, middle + 0.7 * height_});
            break;
        case LegendSample::Dot:
            DrawDot(row, {x, middle});
            break;
        case LegendSample::Cross:
            DrawCross(row.ink, {(x + right) / 2, middle});
            break;
        case LegendSample::None:
        case LegendSample::Remark:
        case LegendSample::Scale:
            break;
        }
    }

    void DrawLine(const SheetInk& ink, SheetPoint from, SheetPoint to) {
        const SheetPoint ends[] = {from, to};
        scene_.AddLine(SheetLayer::Legend, ink, ends);
    }

    void Fill(Colour colour, const SheetBox& box) {
        const SheetPoint ring[] = {{box.left, box.top},
                                   {box.right, box.top},
                                   {box.right, box.bottom},
                                   {box.left, box.bottom}};
        scene_.AddArea(SheetLayer::Legend, colour, ring);
    }

    // Its lower edge is the contour that it begins at.
    void DrawBand(const LegendRow& row, const SheetBox& box) {
        Fill(row.fill, box);
        scene_.AddBox(SheetLayer::Legend, {context_.theme.text, context_.theme.thinWidth, {}}, box);
        if (row.ink.width > 0) {
            DrawLine(row.ink, {box.left, box.bottom}, {box.right, box.bottom});
        }
    }

    void DrawTriangles(const SheetInk& ink, const SheetBox& box) {
        const double third = box.Width() / 3;
        const SheetPoint strip[] = {{box.left, box.bottom},
                                    {box.left + third, box.top},
                                    {box.left + 2 * third, box.bottom},
                                    {box.right, box.top}};
        scene_.AddLine(SheetLayer::Legend, ink, strip);
        DrawLine(ink, strip[0], strip[2]);
        DrawLine(ink, strip[1], strip[3]);
    }

    void DrawDot(const LegendRow& row, SheetPoint left) {
        SheetMarks dot;
        dot.layer = SheetLayer::Legend;
        dot.ink = scene_.InkNumber({context_.theme.point, 0.1, {}});
        dot.size = kPointDot;
        const double gap = row.beside.empty() ? 0 : 0.5 * height_;
        const double room = kSample * height_ - kPointDot - gap;
        const FittedText beside =
            FitText(context_.source.measure, row.beside, height_, false, room);
        const double x = left.x + (room - beside.width) / 2; // both stand in the middle
        dot.places = {{x + kPointDot / 2, left.y}};
        scene_.marks.push_back(dot);
        AddText(scene_, SheetLayer::Legend, beside,
                {x + kPointDot + gap, left.y + beside.height / 2}, TextAnchor::Left,
                row.ink.colour);
    }

    void DrawCross(const SheetInk& ink, SheetPoint middle) {
        const double arm = std::min(2.0, 0.8 * height_);
        DrawLine(ink, {middle.x - arm, middle.y}, {middle.x + arm, middle.y});
        DrawLine(ink, {middle.x, middle.y - arm}, {middle.x, middle.y + arm});
    }

    // All heights one above the other; at many levels a slice stands for several of them.
    void DrawScale(const SheetBox& box) {
        SheetBox bar = box;
        bar.right = bar.left + kSample * height_;
        constexpr Index kMostSlices = 200;
        const bool hasBands = HasBands(context_);
        const Index first = hasBands ? FirstBand(context_) : 1;
        const Index last = hasBands ? LastBand(context_) : context_.source.levels.UpperBound();
        const Index slices = std::min(last - first + 1, kMostSlices);
        const double slice = bar.Height() / slices;
        for (Index i = 0; i < slices; ++i) {
            const Index k = slices == 1 ? first : first + (last - first) * i / (slices - 1);
            const Colour colour =
                hasBands ? context_.BandColour(k) : ContourInkOf(context_, k).colour;
            Fill(colour,
                 {bar.left, bar.bottom - slice * (i + 1), bar.right, bar.bottom - slice * i});
        }
        scene_.AddBox(SheetLayer::Legend, {context_.theme.text, context_.theme.thinWidth, {}}, bar);
        DrawScaleValues(bar, box.right, first, last);
    }

    // A level is where its band begins, or in the middle of its own slice.
    void DrawScaleValues(const SheetBox& bar, double right, Index first, Index last) {
        const double slice = bar.Height() / (last - first + 1);
        const Index every = LevelsBetweenValues(slice);
        const double tick = 0.6 * height_;
        for (Index k = std::max<Index>(first, 1); k <= context_.source.levels.UpperBound(); ++k) {
            const double y = bar.bottom - slice * (k - first + (HasBands(context_) ? 0 : 0.5));
            const bool fits = y - height_ / 2 >= bar.top && y + height_ / 2 <= bar.bottom;
            if (fits && IsMultiple(k, every)) {
                DrawLine({context_.theme.text, context_.theme.thinWidth, {}}, {bar.right, y},
                         {bar.right + tick, y});
                Write(context_.TextOfLevel(k), {bar.left + kToText * height_, y + height_ / 2},
                      right - bar.left - kToText * height_, context_.theme.text);
            }
        }
    }

    [[nodiscard]] Index LevelsBetweenValues(double slice) const {
        Index every = 1;
        for (int i = 0; every * slice < 1.7 * height_; ++i) {
            every = i % 3 == 1 ? every / 2 * 5 : every * 2; // 1, 2, 5, 10
        }
        return every;
    }

    [[nodiscard]] bool IsMultiple(Index level, Index every) const {
        const LevelRule& rule = context_.source.rule;
        return rule.kind == LevelRuleKind::ByInterval
                   ? IsIndexLevel(rule, context_.source.levels, level, every)
                   : (level - 1) % every == 0;
    }

    const SheetContext& context_;
    SheetScene& scene_;
    const SheetBox& box_;
    double height_ = 0;
    std::vector<LegendRow> symbols_;
    std::vector<LegendRow> heights_; // a heading comes first
    std::vector<LegendRow> figures_; // likewise
};

} // namespace

void AddLegend(const SheetContext& context, SheetScene& scene) {
    if (context.layout.legend.Width() > 0 && context.layout.legend.Height() > 0) {
        Legend(context, scene).Add();
    }
}

} // namespace terravo
