// What a check of a survey finds.
//
// Data: plain values: a kind, how grave it is, the points and lines concerned, one sentence.
// Method: a collector keeps the first findings of each kind and gathers what comes after them in
// one more, so that a million repeats make neither a million sentences nor a million records.
#pragma once

#include "survey/PointSet.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace terravo {

enum class FindingKind : unsigned char {
    VoidHeight,
    Repeat,
    RepeatOtherHeight,
    NearRepeat,
    HeightOutlier,
    LonePoint,
    Degrees,
    ConstantColumn,
    RunningNumber,
    NoPart
};
inline constexpr std::size_t kFindingKinds = 10;

enum class Severity : unsigned char { Error, Warning, Note };

/// "void-height", "repeat" and the like.
const char* NameOf(FindingKind kind);
/// "error", "warning" or "note".
const char* NameOf(Severity severity);

struct Finding {
    FindingKind kind = FindingKind::NoPart;
    Severity severity = Severity::Note;
    std::vector<Index> points;       // the first kMostListed; empty for a finding on all points
    std::vector<std::int64_t> lines; // of these points in the file, where they are known
    std::int64_t count = 0;          // of points, or of lines without a point, in all
    double x = 0;                    // of the first point
    double y = 0;
    double z = 0;
    std::string text; // one sentence

    static constexpr std::size_t kMostListed = 1000;
};

class FindingCollector {
public:
    /// @param mostOfAKind  findings that stand for themselves.
    FindingCollector(const PointSet& points, std::size_t mostOfAKind)
        : points_(points), most_(mostOfAKind) {}

    /// Adds a finding on these points, in this order.
    /// @param text  called for the sentence when it is needed.
    template <class Text>
    void Add(FindingKind kind, Severity severity, std::span<const Index> points, Text text) {
        if (found_[static_cast<std::size_t>(kind)]++ < most_) {
            findings_.push_back(Make(kind, severity, points));
            findings_.back().text = text();
        } else {
            AddToRest(kind, severity, points);
        }
    }
    /// Adds a finding that is no matter of single points.
    void AddWhole(FindingKind kind, Severity severity, std::string text);
    /// Adds a finding on lines that made no points.
    void AddLines(FindingKind kind, Severity severity, std::vector<std::int64_t> lines,
                  std::int64_t count, std::string text);

    /// All of them, the gravest first, then in the order of their first points.
    [[nodiscard]] std::vector<Finding> Take();

private:
    [[nodiscard]] Finding Make(FindingKind kind, Severity severity,
                               std::span<const Index> points) const;
    void List(Finding& finding, std::span<const Index> points) const;
    void AddToRest(FindingKind kind, Severity severity, std::span<const Index> points);

    const PointSet& points_;
    std::size_t most_;
    std::vector<Finding> findings_;
    std::array<std::size_t, kFindingKinds> found_{};
    std::array<Finding, kFindingKinds> rest_{}; // counts without sentences
};

} // namespace terravo
