#include "survey/PointLabels.h"

#include <algorithm>

namespace terravo {

void PointLabels::Append(std::string_view name, std::string_view code) {
    text_ += name;
    ends_.push_back(text_.size());
    text_ += code;
    ends_.push_back(text_.size());
}

void PointLabels::Reserve(Index points) {
    if (ends_.empty()) {
        return;
    }
    constexpr double kMargin = 1.1; // point numbers grow longer
    const double lengthOfBoth =
        static_cast<double>(text_.size()) / (static_cast<double>(ends_.size()) / 2);
    ends_.reserve(2 * static_cast<std::size_t>(points));
    text_.reserve(static_cast<std::size_t>(kMargin * lengthOfBoth * points));
}

void PointLabels::NoteLine(Index point, std::int64_t line) {
    if (runs_.empty() || runs_.back().line + (point - runs_.back().point) != line) {
        runs_.push_back({point, line});
    }
}

std::int64_t PointLabels::Line(Index point) const {
    const auto after =
        std::upper_bound(runs_.begin(), runs_.end(), point,
                         [](Index wanted, const Run& run) { return wanted < run.point; });
    if (after == runs_.begin()) {
        return 0;
    }
    const Run& run = *std::prev(after);
    return run.line + (point - run.point);
}

std::string PointLabels::NameOrNumber(Index point) const {
    const std::string_view name = Name(point);
    return name.empty() ? std::to_string(point) : std::string(name);
}

PointLabels PointLabels::Of(const std::vector<Index>& points) const {
    PointLabels some;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (HasLabels()) {
            some.Append(Name(points[i]), Code(points[i]));
        }
        if (const std::int64_t line = Line(points[i]); line > 0) {
            some.NoteLine(static_cast<Index>(i) + 1, line);
        }
    }
    return some;
}

std::string PointLabels::NameAndCode(Index point) const {
    std::string both(Name(point));
    both += both.empty() || Code(point).empty() ? "" : " ";
    return both += Code(point);
}

std::string_view PointLabels::Label(std::size_t label) const {
    if (label >= ends_.size()) {
        return {};
    }
    const std::uint64_t begin = label == 0 ? 0 : ends_[label - 1];
    return std::string_view(text_).substr(begin, ends_[label] - begin);
}

} // namespace terravo
