// What belongs to each point beside its coordinates: its name, its code, its line in the file.
//
// Data: one text that holds all names and codes, and where each ends; for the lines, the points at
// which they do not simply go on. Method: a set without names costs nothing, one whose points stand
// on every line of the file next to nothing.
#pragma once

#include "util/Array1.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

class PointLabels {
public:
    /// Notes the name and the code of the next point, UTF-8. Either all points have labels or none.
    void Append(std::string_view name, std::string_view code);
    /// Makes room for so many points whose labels are about as long as those so far.
    void Reserve(Index points);
    /// Notes the line, from 1, of a point. Points come in their order; where none is said for a
    /// point, it stands on the line after the one before.
    void NoteLine(Index point, std::int64_t line);

    [[nodiscard]] bool HasLabels() const { return !ends_.empty(); }
    /// Empty where there is none.
    [[nodiscard]] std::string_view Name(Index point) const { return Label(2 * Place(point)); }
    [[nodiscard]] std::string_view Code(Index point) const { return Label(2 * Place(point) + 1); }
    /// The name, or the number where there is no name.
    [[nodiscard]] std::string NameOrNumber(Index point) const;
    /// Both, with a blank between them.
    [[nodiscard]] std::string NameAndCode(Index point) const;
    /// Those of some points, one behind the other.
    [[nodiscard]] PointLabels Of(const std::vector<Index>& points) const;
    /// 0 where it is not known.
    [[nodiscard]] std::int64_t Line(Index point) const;

private:
    struct Run {
        Index point;
        std::int64_t line;
    };
    static std::size_t Place(Index point) { return static_cast<std::size_t>(point) - 1; }
    [[nodiscard]] std::string_view Label(std::size_t label) const;

    std::string text_;
    std::vector<std::uint64_t> ends_; // in the text: of name and code, point after point
    std::vector<Run> runs_;
};

} // namespace terravo
