#include "sheet/LineLabels.h"

#include "sheet/LabelSearch.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

constexpr double kShortest = 3;       // text widths: only longer lines get a value
constexpr double kMostToRepeat = 3.5; // a place that costs more is not worth a second value
constexpr double kAnyCost = std::numeric_limits<double>::infinity();
constexpr double kLongEnough = 2; // spacings: of a longer line only the middle is looked at first
constexpr double kLeeway = 0.35;  // from value to value, in parts of the wished spacing

// A line that is to get values.
struct Task {
    std::size_t line = 0;
    double width = 0; // of its text
    double length = 0;
    double step = 0;
    std::size_t firstSample = 0;
    std::size_t samples = 0;
    double firstText = -1; // steps along the line; none yet
};

double Longest(std::span<const double> widths) {
    return widths.empty() ? 0 : *std::max_element(widths.begin(), widths.end());
}

class Placer {
public:
    Placer(std::span<const LabelLine> lines, std::span<const double> textWidths,
           const SheetBox& frame, const LabelWish& wish)
        : lines_(lines), wish_(wish),
          room_(frame, wish.height, Longest(textWidths) / 2 + wish.gap + wish.height) {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            Enter(i, textWidths[lines[i].text]);
        }
        // The shorter a line for its text, the less choice it has.
        std::stable_sort(tasks_.begin(), tasks_.end(), [](const Task& a, const Task& b) {
            return a.length / a.width < b.length / b.width;
        });
    }

    void KeepClearOf(std::span<const LabelLine> others) {
        for (const LabelLine& line : others) {
            TakeSamples(line.points, line.closed, LengthOf(line.points, line.closed), room_.Cell(),
                        buffer_);
            AddInk();
        }
    }

    void KeepOutOf(std::span<const SheetBox> taken) {
        for (const SheetBox& box : taken) {
            room_.Take(Upright(box));
        }
    }

    LabelPlacement Place() {
        for (Task& task : tasks_) {
            PlaceFirst(task);
        }
        for (const Task& task : tasks_) {
            if (task.firstText >= 0 && wish_.spacing > 0 && task.length > wish_.spacing) {
                Repeat(task);
            }
        }
        std::vector<LineLabel>& labels = placement_.labels;
        std::sort(labels.begin(), labels.end(), [](const LineLabel& a, const LineLabel& b) {
            return a.line != b.line ? a.line < b.line : a.from < b.from;
        });
        placement_.report.lines = lines_.size();
        placement_.report.texts = labels.size();
        return std::move(placement_);
    }

private:
    void AddInk() {
        for (const SheetPoint& place : buffer_.places) {
            room_.AddInk(place);
        }
    }

    void Enter(std::size_t line, double width) {
        const LabelLine& l = lines_[line];
        const double length = LengthOf(l.points, l.closed);
        TakeSamples(l.points, l.closed, length, room_.Cell(), buffer_);
        AddInk();
        if (!(length > kShortest * width)) {
            ++placement_.report.tooShort;
            return;
        }
        tasks_.push_back(
            {line, width, length, buffer_.step, samples_.size(), buffer_.places.size()});
        samples_.insert(samples_.end(), buffer_.places.begin(), buffer_.places.end());
    }

    [[nodiscard]] LineCourse CourseOf(const Task& task) const {
        return {std::span(samples_).subspan(task.firstSample, task.samples),
                lines_[task.line].closed, task.step};
    }
    [[nodiscard]] LabelSearch SearchOn(const LineCourse& course, const Task& task) const {
        return {course, room_, wish_, task.width, lines_[task.line].higherOnLeft};
    }

    void PlaceFirst(Task& task) {
        const LineCourse course = CourseOf(task);
        LabelSearch search = SearchOn(course, task);
        const double last = course.Count() - 1;
        const LabelStretch all{0, last, {}};
        std::optional<LabelPlace> place;
        const double most = kLongEnough * wish_.spacing / task.step;
        if (wish_.spacing > 0 && last > most) {
            place =
                search.Cheapest({(last - most) / 2, (last + most) / 2, {}}, kMostToRepeat, false);
        }
        if (!place) {
            place = search.Cheapest(all, kAnyCost, false);
        }
        if (!place) {
            place = search.Cheapest(all, kAnyCost, true);
        }
        if (place) {
            Accept(task, *place);
            task.firstText = place->centre;
            ++placement_.report.labelled;
        } else {
            ++placement_.report.noRoom;
        }
    }

    void Accept(const Task& task, const LabelPlace& place) {
        room_.TakeText(place.text);
        // Of a closed line the search may have gone round.
        const double rounds = lines_[task.line].closed
                                  ? std::floor(place.from / static_cast<double>(task.samples)) *
                                        static_cast<double>(task.samples)
                                  : 0;
        const SheetPoint along = place.text.along;
        placement_.labels.push_back({task.line, (place.from - rounds) * task.step,
                                     (place.to - rounds) * task.step, place.text.middle,
                                     std::atan2(-along.y, along.x)});
    }

    void Repeat(const Task& task) {
        const LineCourse course = CourseOf(task);
        LabelSearch search = SearchOn(course, task);
        const auto last = static_cast<double>(task.samples - 1);
        if (lines_[task.line].closed) {
            // Evenly round to the first text, which must not be come near to again.
            const double spacing =
                task.length / std::round(task.length / wish_.spacing) / task.step;
            RepeatTowards(task, search, spacing,
                          task.firstText + last + 1 - (1 - kLeeway) * spacing);
        } else {
            RepeatTowards(task, search, wish_.spacing / task.step, last);
            RepeatTowards(task, search, -wish_.spacing / task.step, 0);
        }
    }

    // From the first text to a place of the line.
    // @param spacing  steps, negative for the way back.
    void RepeatTowards(const Task& task, LabelSearch& search, double spacing, double end) {
        double before = task.firstText;
        while ((end - before) / spacing > 1 - kLeeway) {
            const double near = before + (1 - kLeeway) * spacing;
            const double far = before + (1 + kLeeway) * spacing;
            const LabelStretch stretch{spacing > 0 ? near : std::max(far, end),
                                       spacing > 0 ? std::min(far, end) : near, before + spacing};
            const std::optional<LabelPlace> place = search.Cheapest(stretch, kMostToRepeat, false);
            if (place) {
                Accept(task, *place);
                before = place->centre;
            } else {
                before += 2 * kLeeway * spacing;
            }
        }
    }

    std::span<const LabelLine> lines_;
    const LabelWish& wish_;
    LabelRoom room_;
    Samples buffer_;
    std::vector<SheetPoint> samples_; // of all tasks
    std::vector<Task> tasks_;
    LabelPlacement placement_;
};

} // namespace

LabelPlacement PlaceLineLabels(std::span<const LabelLine> lines, std::span<const double> textWidths,
                               const SheetBox& frame, std::span<const SheetBox> taken,
                               const LabelWish& wish, std::span<const LabelLine> others) {
    Placer placer(lines, textWidths, frame, wish);
    placer.KeepClearOf(others);
    placer.KeepOutOf(taken);
    return placer.Place();
}

} // namespace terravo
