// The contour lines of a sheet and their values.
//
// Data: the contour set or the smooth lines, in data units. Method: every line is brought to the
// paper, without the vertices that no printer could tell apart, a smooth one flattened, and cut off
// at the frame; then the values are placed, and the lines are added without the stretches that
// these cover, smooth ones with their curves.
#include "sheet/Clip.h"
#include "sheet/CutOut.h"
#include "sheet/LineGaps.h"
#include "sheet/LineLabels.h"
#include "sheet/MakeSheet.h"
#include "sheet/SheetCurve.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

// Vertices nearer to the one before are left out: the line moves by no more than this.
constexpr double kFinest = 0.01; // millimetres

class ContourLayer {
public:
    ContourLayer(const SheetContext& context, SheetScene& scene)
        : context_(context), scene_(scene), smooth_(context.source.smooth) {}

    void Add() {
        for (Index k = 1; k <= context_.source.levels.UpperBound(); ++k) {
            if (smooth_ != nullptr) {
                CollectSmooth(k);
            } else {
                Collect(k);
            }
        }
        LabelPlacement placement = Place();
        scene_.labels = placement.report;
        for (LineLabel& label : placement.labels) {
            label.line = labelled_[label.line]; // of all parts from here on
            AddText(label);
        }
        AddLines(StretchesBeneath(placement.labels));
    }

private:
    struct Part {
        Index level = 0;
        std::size_t line = 0; // running number of the contour it belongs to
        const SmoothLine* smooth = nullptr;
    };

    void Collect(Index level) {
        const ContourLevel& contours = context_.source.contours[level];
        for (const ContourLine& line : contours.lines) {
            OnPaper(contours.VerticesOf(line), line.closed);
            ClipLine(paper_, line.closed, context_.layout.map, clipped_);
            parts_.resize(clipped_.parts.size(), {level, lineCount_});
            ++lineCount_;
        }
    }

    void CollectSmooth(Index level) {
        for (const SmoothLine& line : smooth_->levels[level].lines) {
            CurveOnPaper(level, line);
            flat_.Clear();
            Flatten(curve_, line.closed, kCurveTolerance, flat_);
            ClipLine(flat_.points, line.closed, context_.layout.map, clipped_,
                     {flat_.places, static_cast<double>(CubicsOf(curve_))});
            parts_.resize(clipped_.parts.size(), {level, lineCount_, &line});
            ++lineCount_;
        }
    }

    // The same whenever it is asked for, so that only places on it have to be kept.
    void CurveOnPaper(Index level, const SmoothLine& line) {
        const auto controls = smooth_->levels[level].ControlsOf(line);
        curve_.resize(controls.size());
        std::transform(controls.begin(), controls.end(), curve_.begin(), [this](PlanPoint p) {
            return context_.layout.view.ToPaper(smooth_->origin.x + p.x, smooth_->origin.y + p.y);
        });
        LeaveOutTiny(curve_, kFinest);
    }

    void OnPaper(std::span<const ContourVertex> vertices, bool closed) {
        paper_.clear();
        for (const ContourVertex& vertex : vertices) {
            const SheetPoint place = context_.layout.view.ToPaper(vertex.x, vertex.y);
            if (paper_.empty() || std::fabs(place.x - paper_.back().x) > kFinest ||
                std::fabs(place.y - paper_.back().y) > kFinest) {
                paper_.push_back(place);
            }
        }
        if (!closed || paper_.size() < 2) {
            paper_.push_back(context_.layout.view.ToPaper(vertices.back().x, vertices.back().y));
        }
    }

    [[nodiscard]] bool HasValue(Index level) const {
        return context_.plan.labels == SheetLabels::All ||
               (context_.plan.labels == SheetLabels::IndexLines && context_.IsIndex(level));
    }

    // The difference of two surveys has many small rings that nobody reads a value from.
    [[nodiscard]] bool IsLongEnough(std::size_t part) const {
        constexpr double kLeast = 40; // millimetres
        double length = 0;
        const std::span<const SheetPoint> points = clipped_.PointsOf(clipped_.parts[part]);
        for (std::size_t i = 1; i < points.size(); ++i) {
            length += std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y);
        }
        return context_.source.difference == nullptr || length >= kLeast;
    }

    LabelPlacement Place() {
        const SheetPlan& plan = context_.plan;
        if (plan.labels == SheetLabels::None) {
            return {};
        }
        for (Index k = 1; k <= context_.source.levels.UpperBound(); ++k) {
            widths_.push_back(HasValue(k) ? context_.source.measure.Width(context_.TextOfLevel(k),
                                                                          plan.textHeight, false)
                                          : 0);
        }
        std::vector<LabelLine> wanted;
        std::vector<LabelLine> others = HullLines();
        for (std::size_t i = 0; i < parts_.size(); ++i) {
            if (HasValue(parts_[i].level) && IsLongEnough(i)) {
                labelled_.push_back(i);
                wanted.push_back(LineOf(i));
            } else {
                others.push_back(LineOf(i));
            }
        }
        const LabelWish wish{plan.textHeight, plan.labelSpacing, plan.labelsUphill,
                             plan.textHeight * 0.3};
        return PlaceLineLabels(wanted, widths_, context_.layout.map, {}, wish, others);
    }

    [[nodiscard]] LabelLine LineOf(std::size_t part) const {
        return {clipped_.PointsOf(clipped_.parts[part]), clipped_.parts[part].closed,
                static_cast<std::uint32_t>(parts_[part].level - 1), true};
    }

    // Of every part: where dense lines are, a value covers its neighbours as well.
    [[nodiscard]] std::vector<std::vector<Stretch>>
    StretchesBeneath(const std::vector<LineLabel>& labels) const {
        std::vector<std::vector<Stretch>> beneath(parts_.size());
        if (labels.empty()) {
            return beneath;
        }
        std::vector<LabelLine> lines;
        lines.reserve(parts_.size());
        for (std::size_t i = 0; i < parts_.size(); ++i) {
            lines.push_back(LineOf(i));
        }
        std::vector<TurnedBox> rooms;
        rooms.reserve(labels.size());
        for (const LineLabel& label : labels) {
            rooms.push_back(
                RoomOf(label, widths_[lines[label.line].text], context_.plan.textHeight));
        }
        for (const LineGap& gap : GapsBeneath(lines, rooms, labels)) {
            beneath[gap.line].push_back({gap.from, gap.to});
        }
        return beneath;
    }

    // Those that the scene has already.
    [[nodiscard]] std::vector<LabelLine> HullLines() const {
        std::vector<LabelLine> lines;
        for (const SheetLine& line : scene_.lines) {
            if (line.layer == SheetLayer::Hull) {
                for (const SheetPiece& piece : scene_.PiecesOf(line)) {
                    lines.push_back({scene_.VerticesOf(piece), piece.closed, 0, true});
                }
            }
        }
        return lines;
    }

    void AddText(const LineLabel& label) {
        const Index level = parts_[label.line].level;
        SheetText text;
        text.layer = SheetLayer::Labels;
        text.text = context_.TextOfLevel(level);
        text.place = label.middle;
        text.anchor = TextAnchor::Centre;
        text.height = context_.plan.textHeight;
        text.angle = label.angle;
        text.colour = InkOf(level).colour;
        scene_.texts.push_back(std::move(text));
    }

    [[nodiscard]] SheetInk InkOf(Index level) const {
        return context_.theme.ContourInk(context_.IsIndex(level), context_.PartOf(level));
    }

    // All parts of one contour are one line.
    void AddLines(std::vector<std::vector<Stretch>> out) {
        for (std::size_t i = 0; i < parts_.size(); ++i) {
            if (i == 0 || parts_[i].line != parts_[i - 1].line) {
                SheetLine line;
                line.layer = context_.IsIndex(parts_[i].level) ? SheetLayer::IndexContours
                                                               : SheetLayer::Contours;
                line.ink = scene_.InkNumber(InkOf(parts_[i].level));
                line.level = context_.source.levels[parts_[i].level].value;
                line.firstPiece = scene_.pieces.size();
                scene_.lines.push_back(line);
                if (smooth_ != nullptr) {
                    CurveOnPaper(parts_[i].level, *parts_[i].smooth);
                }
            }
            const ClippedLine::Part& part = clipped_.parts[i];
            AddWithout(clipped_.PointsOf(part), part.closed, std::move(out[i]), scene_,
                       {curve_, clipped_.PlacesOf(part)});
            SheetLine& line = scene_.lines.back();
            line.pieces = scene_.pieces.size() - line.firstPiece;
        }
    }

    const SheetContext& context_;
    SheetScene& scene_;
    const SmoothSet* smooth_;
    std::vector<SheetPoint> paper_; // of one line
    std::vector<SheetPoint> curve_; // of one smooth line
    FlatCurve flat_;
    ClippedLine clipped_;     // all parts inside the frame
    std::vector<Part> parts_; // what each of them is
    std::size_t lineCount_ = 0;
    std::vector<double> widths_;        // of the values, by level from 0
    std::vector<std::size_t> labelled_; // numbers of the parts that may have values
};

} // namespace

void AddContours(const SheetContext& context, SheetScene& scene) {
    ContourLayer(context, scene).Add();
}

} // namespace terravo
