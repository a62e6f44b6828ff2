#include "contour/smoothing/ThinContours.h"

#include "contour/ContourLineBuilder.h"
#include "contour/smoothing/FlattenContours.h"
#include "contour/smoothing/Slider.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

using namespace smoothing;

constexpr std::size_t kMostPieces = 64; // under a chord
constexpr int kMostFailures = 4;        // of longer chords in a row
constexpr double kFromInterval = 0.001; // of its width, between its ends and a chord
constexpr double kLeastStep = 1e-9;     // of a chord, between two edges
constexpr double kLeastSine = 1e-9;     // between a chord and an edge

double DistanceFrom(PlanPoint place, PlanPoint a, PlanPoint b) {
    const PlanPoint chord = b - a;
    const double along = std::clamp(Dot(place - a, chord) / Dot(chord, chord), 0.0, 1.0);
    return Length(place - a - along * chord);
}

// One line: its vertices, numbered from 0; a closed one ends with its first vertex again.
class LineThinner {
public:
    LineThinner(const SliderMaker& sliderMaker, double tolerance)
        : sliderMaker_(sliderMaker), tolerance_(tolerance) {}

    void Begin(const SmoothLevel& level, const SmoothLine& line, const LevelSpacing& spacing) {
        controls_ = level.ControlsOf(line);
        edges_ = level.EdgesOf(line);
        isClose_ = spacing.isClose;
        vertices_.clear();
        for (const TriangleEdge edge : edges_) {
            vertices_.push_back({0, 0, edge});
        }
        sliderMaker_.Make(vertices_, level.value, spacing, sliders_);
        SetPlaces();
    }

    /// The vertex to which a chord from another goes; the next one where the piece stays a curve.
    /// @param[out] isChord  whether one does.
    [[nodiscard]] std::size_t Next(std::size_t from, bool& isChord) const {
        std::size_t next = from + 1;
        isChord = false;
        const std::size_t most = std::min(from + kMostPieces, sliders_.size() - 1);
        int failures = 0;
        for (std::size_t to = from + 1; to <= most && failures < kMostFailures; ++to) {
            if (isClose_ || IsFlat(sliders_[to - 1], sliders_[to])) {
                break;
            }
            if (IsGood(from, to)) {
                next = to;
                isChord = true;
                failures = 0;
            } else {
                ++failures;
            }
            if (sliders_[to].isCorner) {
                break;
            }
        }
        return next;
    }

    [[nodiscard]] std::size_t Last() const { return sliders_.size() - 1; }
    [[nodiscard]] PlanPoint PlaceOf(std::size_t vertex) const { return controls_[3 * vertex]; }
    [[nodiscard]] TriangleEdge EdgeOf(std::size_t vertex) const { return edges_[vertex]; }
    /// The control points from a vertex to the next one.
    [[nodiscard]] std::span<const PlanPoint> PieceFrom(std::size_t vertex) const {
        return controls_.subspan(3 * vertex, 4);
    }

private:
    // Half of the tolerance is for these places, half for the way from them to a chord.
    void SetPlaces() {
        places_.clear();
        firstPlaces_.clear();
        std::vector<std::size_t> pieces;
        for (std::size_t i = 0; i < Last(); ++i) {
            firstPlaces_.push_back(places_.size());
            FlattenLine(PieceFrom(i), false, tolerance_ / 2, places_, pieces);
        }
        firstPlaces_.push_back(places_.size());
    }

    [[nodiscard]] bool IsGood(std::size_t from, std::size_t to) const {
        const PlanPoint a = PlaceOf(from);
        const PlanPoint b = PlaceOf(to);
        return Dot(b - a, b - a) > 0 && CrossesEdges(from, to) && IsNear(from, to);
    }

    // One edge after the other, uphill from right to left.
    [[nodiscard]] bool CrossesEdges(std::size_t from, std::size_t to) const {
        const PlanPoint a = PlaceOf(from);
        const PlanPoint chord = PlaceOf(to) - a;
        double before = 0;
        for (std::size_t i = from + 1; i < to; ++i) {
            const Slider& slider = sliders_[i];
            const double turn = Cross(chord, slider.along);
            if (!(turn > kLeastSine * Length(chord) * Length(slider.along))) {
                return false;
            }
            const double part = Cross(a - slider.low, chord) / -turn;
            const double along = Cross(slider.low - a, slider.along) / turn;
            const double room = kFromInterval * slider.Width();
            if (!(part >= slider.from + room && part <= slider.to - room &&
                  along >= before + kLeastStep)) {
                return false;
            }
            before = along;
        }
        return before <= 1 - kLeastStep;
    }

    [[nodiscard]] bool IsNear(std::size_t from, std::size_t to) const {
        const PlanPoint a = PlaceOf(from);
        const PlanPoint b = PlaceOf(to);
        return std::all_of(places_.begin() + static_cast<std::ptrdiff_t>(firstPlaces_[from]),
                           places_.begin() + static_cast<std::ptrdiff_t>(firstPlaces_[to]),
                           [&](PlanPoint p) { return DistanceFrom(p, a, b) <= tolerance_ / 2; });
    }

    const SliderMaker& sliderMaker_;
    double tolerance_;
    std::span<const PlanPoint> controls_;
    std::span<const TriangleEdge> edges_;
    bool isClose_ = false;
    std::vector<ContourVertex> vertices_; // edges alone
    std::vector<Slider> sliders_;
    std::vector<PlanPoint> places_;        // along the line
    std::vector<std::size_t> firstPlaces_; // of each piece, and the end
};

class LineWriter {
public:
    LineWriter(LineThinner& thinner, PlanPoint origin, double tolerance)
        : thinner_(thinner), origin_(origin), tolerance_(tolerance) {}

    void Write(bool closed, ContourLineBuilder& lines) {
        Add(lines, thinner_.PlaceOf(0), thinner_.EdgeOf(0));
        for (std::size_t at = 0; at < thinner_.Last();) {
            bool isChord = false;
            const std::size_t next = thinner_.Next(at, isChord);
            if (!isChord) {
                AddInner(lines, at);
            }
            Add(lines, thinner_.PlaceOf(next), thinner_.EdgeOf(next));
            at = next;
        }
        if (closed) {
            lines.EndClosed();
        } else {
            lines.EndOpen(thinner_.EdgeOf(thinner_.Last()));
        }
    }

private:
    void Add(ContourLineBuilder& lines, PlanPoint place, TriangleEdge edge) const {
        const PlanPoint there = place + origin_;
        lines.Add({there.x, there.y, edge}, false);
    }

    // The places between two vertices.
    void AddInner(ContourLineBuilder& lines, std::size_t from) {
        places_.clear();
        pieces_.clear();
        FlattenLine(thinner_.PieceFrom(from), false, tolerance_, places_, pieces_);
        for (std::size_t i = 1; i + 1 < places_.size(); ++i) {
            Add(lines, places_[i], {thinner_.EdgeOf(from + 1).triangle, 0});
        }
    }

    LineThinner& thinner_;
    PlanPoint origin_;
    double tolerance_;
    std::vector<PlanPoint> places_; // of one piece
    std::vector<std::size_t> pieces_;
};

} // namespace

ContourSet ThinContours(const SmoothingSource& source, const SmoothingOptions& options,
                        const SmoothSet& smooth, double tolerance) {
    SmoothingOptions allowed = options;
    allowed.fraction = std::clamp(options.fraction, kLeastFraction, kMostFraction);
    const SliderMaker sliders(source, allowed, smooth.origin);
    const Array1<LevelSpacing> spacings = SpacingsOf(source.levels, source.points.extentZ);
    LineThinner thinner(sliders, tolerance);
    LineWriter writer(thinner, smooth.origin, tolerance);
    ContourSet contours(smooth.levels.UpperBound());
    for (Index k = 1; k <= smooth.levels.UpperBound(); ++k) {
        const SmoothLevel& level = smooth.levels[k];
        ContourLineBuilder lines(Repeats::LeaveOut);
        lines.Begin(level.value);
        for (const SmoothLine& line : level.lines) {
            thinner.Begin(level, line, spacings[k]);
            writer.Write(line.closed, lines);
        }
        contours[k] = lines.Level();
    }
    return contours;
}

} // namespace terravo
