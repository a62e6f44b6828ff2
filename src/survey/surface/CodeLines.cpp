#include "survey/surface/CodeLines.h"

#include "survey/import/Records.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace terravo {
namespace {

enum class Mark { None, Begin, End, Close };

struct MarkedCode {
    std::string_view code;
    Mark mark = Mark::None;
};

Mark MarkOf(std::string_view word) {
    constexpr std::array<std::pair<std::string_view, Mark>, 10> kMarks{{
        {"B", Mark::Begin},
        {"BEG", Mark::Begin},
        {"BEGIN", Mark::Begin},
        {"ST", Mark::Begin},
        {"START", Mark::Begin},
        {"E", Mark::End},
        {"END", Mark::End},
        {"C", Mark::Close},
        {"CL", Mark::Close},
        {"CLOSE", Mark::Close},
    }};
    std::string upper(word);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    const auto* const found = std::find_if(kMarks.begin(), kMarks.end(),
                                           [&](const auto& mark) { return mark.first == upper; });
    return found != kMarks.end() ? found->second : Mark::None;
}

// A mark that stands alone is a code.
MarkedCode TakeApart(std::string_view label) {
    label = Trimmed(label);
    const std::size_t divider = label.find_last_of(" \t./");
    const Mark mark = divider == std::string_view::npos || divider == 0
                          ? Mark::None
                          : MarkOf(label.substr(divider + 1));
    return mark == Mark::None ? MarkedCode{label, mark}
                              : MarkedCode{Trimmed(label.substr(0, divider)), mark};
}

// Lines by the numbers of their points.
struct CodeLine {
    std::string_view code;
    std::vector<Index> points;
    bool closed = false;
};

// All lines of all points whose code is wanted.
template <class Wanted>
std::vector<CodeLine> JoinPoints(const PointSet& points, Wanted isWanted) {
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::vector<CodeLine> lines;
    std::unordered_map<std::string_view, std::size_t> open; // by code
    for (Index point = 1; points.labels.HasLabels() && point <= points.count; ++point) {
        const MarkedCode marked = TakeApart(points.labels.Code(point));
        if (marked.code.empty() || !isWanted(marked)) {
            continue;
        }
        std::size_t& line = open.try_emplace(marked.code, kNone).first->second;
        if (line == kNone || marked.mark == Mark::Begin) {
            line = lines.size();
            lines.push_back({marked.code, {}, false});
        }
        lines[line].points.push_back(point);
        lines[line].closed = marked.mark == Mark::Close;
        if (marked.mark == Mark::End || marked.mark == Mark::Close) {
            line = kNone;
        }
    }
    return lines;
}

SpaceLine LineOf(const PointSet& points, const CodeLine& from) {
    SpaceLine line;
    line.name = from.code;
    line.closed = from.closed;
    for (const Index point : from.points) {
        line.vertices.push_back({points.x[point], points.y[point], points.z[point]});
    }
    return line;
}

bool IsNamed(std::string_view code, const std::vector<std::string>& names) {
    return std::any_of(names.begin(), names.end(), [code](std::string_view name) {
        return name.ends_with('*') ? code.starts_with(name.substr(0, name.size() - 1))
                                   : code == name;
    });
}

} // namespace

std::vector<CodeCount> CodesOf(const PointSet& points) {
    std::unordered_map<std::string_view, CodeCount> counts;
    const std::vector<CodeLine> lines = JoinPoints(points, [&counts](const MarkedCode& marked) {
        CodeCount& count = counts[marked.code];
        ++count.points;
        count.hasMarks = count.hasMarks || marked.mark != Mark::None;
        return true;
    });
    LineReading reading;
    LineCollector collector(kCodesSource, LineClosing::AsTheyAre, reading);
    for (const CodeLine& line : lines) {
        counts[line.code].lines += collector.Add(LineOf(points, line), 0) ? 1 : 0;
    }
    std::vector<CodeCount> codes;
    for (auto& [code, count] : counts) {
        count.code = code;
        codes.push_back(std::move(count));
    }
    std::sort(codes.begin(), codes.end(), [](const CodeCount& a, const CodeCount& b) {
        return a.points != b.points ? a.points > b.points : a.code < b.code;
    });
    return codes;
}

CodeLineReading LinesFromCodes(const PointSet& points, const std::vector<std::string>& codes) {
    LineReading reading;
    LineCollector collector(kCodesSource, LineClosing::AsTheyAre, reading);
    const std::vector<CodeLine> lines = JoinPoints(
        points, [&codes](const MarkedCode& marked) { return IsNamed(marked.code, codes); });
    for (const CodeLine& line : lines) {
        collector.Add(LineOf(points, line), points.labels.Line(line.points.front()));
    }
    collector.Finish();
    return {std::move(reading.lines), std::move(reading.remarks)};
}

} // namespace terravo
