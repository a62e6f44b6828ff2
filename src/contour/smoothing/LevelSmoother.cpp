#include "contour/smoothing/LevelSmoother.h"

#include "contour/smoothing/SmoothGoal.h"

#include <algorithm>

namespace terravo::smoothing {
namespace {

constexpr double kRoom = 0.05; // of its interval, between what smoothing may reach and its ends

} // namespace

SmoothError LevelSmoother::Make(const ContourLevel& contours, const LevelSpacing& spacing,
                                SmoothLevel& made) {
    ErrorMeter meter(spacing);
    made.value = contours.value;
    for (const ContourLine& line : contours.lines) {
        const auto vertices = contours.VerticesOf(line);
        if (sliderMaker_.IsPeak(vertices, contours.value)) {
            continue;
        }
        BeginLine(vertices, line.closed, contours.value, spacing);
        if (!spacing.isClose) {
            SolveChains();
        }
        AddLine(line.closed, spacing, made);
        Measure(made, meter);
    }
    return meter.Worst();
}

void LevelSmoother::BeginLine(std::span<const ContourVertex> vertices, bool closed, double level,
                              const LevelSpacing& spacing) {
    sliderMaker_.Make(vertices, level, spacing, sliders_);
    isRing_ = closed;
    if (closed) {
        BeginAtCorner();
    }
    SetParts();
}

void LevelSmoother::BeginAtCorner() {
    const auto corner = std::find_if(sliders_.begin(), sliders_.end(),
                                     [](const Slider& slider) { return slider.isCorner; });
    if (corner != sliders_.end()) {
        std::rotate(sliders_.begin(), corner, sliders_.end());
        sliders_.push_back(Slider(sliders_.front()));
        isRing_ = false;
    }
}

// A vertex that is near an end of its interval may stay there, but is not moved there: a curve
// needs room.
void LevelSmoother::SetParts() {
    const std::size_t n = sliders_.size();
    for (std::vector<double>* values : {&goals_, &parts_, &lowest_, &highest_}) {
        values->resize(n);
    }
    for (std::size_t i = 0; i < n; ++i) {
        const Slider& slider = sliders_[i];
        const double width = slider.Width();
        goals_[i] = GoalOf(slider, gradients_);
        parts_[i] =
            std::clamp(goals_[i], slider.from + kMargin * width, slider.to - kMargin * width);
        lowest_[i] = highest_[i] = parts_[i];
        if (!slider.isCorner) {
            lowest_[i] = std::min(parts_[i], slider.from + kRoom * width);
            highest_[i] = std::max(parts_[i], slider.to - kRoom * width);
        }
    }
}

void LevelSmoother::SolveChains() {
    const std::size_t n = sliders_.size();
    if (isRing_) {
        SolveChain(0, n);
        return;
    }
    std::size_t first = 0;
    for (std::size_t i = 1; i < n; ++i) {
        if (i + 1 == n || sliders_[i].isCorner) {
            SolveChain(first, i + 1 - first);
            first = i;
        }
    }
}

void LevelSmoother::SolveChain(std::size_t first, std::size_t count) {
    const auto of = [&](auto& values) { return std::span(values).subspan(first, count); };
    Chain chain{of(sliders_), of(goals_), of(parts_), of(lowest_), of(highest_), isRing_};
    solver_.Solve(chain);
}

void LevelSmoother::AddLine(bool closed, const LevelSpacing& spacing, SmoothLevel& made) {
    const CourseView course{sliders_, parts_, isRing_};
    SmoothLine line;
    line.firstVertex = made.edges.size();
    line.firstControl = made.controls.size();
    line.pieces = isRing_ ? sliders_.size() : sliders_.size() - 1;
    line.closed = closed;
    if (spacing.isClose) {
        curve_.AppendStraight(course, made.controls);
    } else {
        curve_.Append(course, made.controls);
    }
    for (const Slider& slider : sliders_) {
        made.edges.push_back(slider.edge);
    }
    if (isRing_) {
        made.controls.push_back(PlanPoint(made.controls[line.firstControl]));
        made.edges.push_back(sliders_.front().edge);
    }
    made.lines.push_back(line);
}

void LevelSmoother::Measure(const SmoothLevel& made, ErrorMeter& meter) const {
    const SmoothLine& line = made.lines.back();
    const std::span<const PlanPoint> controls = made.ControlsOf(line);
    for (std::size_t i = 0; i < line.pieces; ++i) {
        const std::size_t next = i + 1 < sliders_.size() ? i + 1 : 0;
        meter.Take(controls.subspan(3 * i).first<4>(), sliders_[i], parts_[i], sliders_[next],
                   parts_[next]);
    }
}

} // namespace terravo::smoothing
