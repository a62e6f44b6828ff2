// What a check of a survey finds.
//
// Data: plain values: a kind, how grave it is, the points and lines concerned, one sentence with
// its values, which is put together in the language of whoever reads it.
// Method: a collector keeps the first findings of each kind and gathers what comes after them in
// one more, so that a million repeats make neither a million sentences nor a million records.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/SpaceLine.h"
#include "util/TextCatalogue.h"

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
    NoPart,
    BreaklineHeight, // these four are of the lines laid over the points
    Crossing,
    LineLeftOut,
    LineHidden
};
inline constexpr std::size_t kFindingKinds = 14;

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
    bool hasPlace = false;           // the next three say where
    double x = 0;                    // of the first point, or of a crossing without one
    double y = 0;
    double z = 0;        // not a number where it is not known
    Statement statement; // %1 stands for the points, its values begin with %2

    static constexpr std::size_t kMostListed = 1000;
};

/// The sentence of a finding; points are called by their names where they have some.
/// @param decimalSeparator  in the values.
std::string SentenceOf(const Finding& finding, const PointLabels& labels,
                       const TextCatalogue& texts, char decimalSeparator = '.');

class FindingCollector {
public:
    /// @param mostOfAKind  findings that stand for themselves.
    FindingCollector(const PointSet& points, std::size_t mostOfAKind)
        : points_(points), most_(mostOfAKind) {}

    /// Adds a finding on these points, in this order.
    /// @param state  called for the statement when it is needed.
    template <class State>
    void Add(FindingKind kind, Severity severity, std::span<const Index> points, State state) {
        if (found_[static_cast<std::size_t>(kind)]++ < most_) {
            findings_.push_back(Make(kind, severity, points));
            findings_.back().statement = state();
        } else {
            AddToRest(kind, severity, points);
        }
    }
    /// Adds a finding on a place without a point.
    void AddPlace(FindingKind kind, Severity severity, const SpacePoint& place,
                  Statement statement);
    /// Adds a finding that is no matter of single points.
    void AddWhole(FindingKind kind, Severity severity, Statement statement);
    /// Adds a finding on lines that made no points.
    void AddLines(FindingKind kind, Severity severity, std::vector<std::int64_t> lines,
                  std::int64_t count, Statement statement);

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
