#include "survey/PointLabels.h"

#include <algorithm>

namespace terravo {

void PointLabels::Append(std::string_view name, std::string_view code) {
    text_ += name;
    ends_.push_back(text_.size());
    text_ += code;
    ends_.push_back(text_.size());
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
