// What was measured in this run, newest first.
//
// Data: questions, their answers as tables, and what each depended on. Method: an answer stays what
// it was until somebody measures again; whether it still holds is seen by comparing.
#pragma once

#include "app/session/Session.h"

#include <cstddef>
#include <vector>

namespace terravo {

struct MeasureEntry {
    MeasureQuestion question;
    MeasureReport report;
    MeasureStand stand;

    /// Whether the surfaces are no longer those that were measured.
    [[nodiscard]] bool IsStale(const MeasureStand& now) const { return stand.survey != now.survey; }
    /// Whether other points have been opened since.
    [[nodiscard]] bool IsOfOtherPoints(const MeasureStand& now) const {
        return stand.points != now.points;
    }
    /// Whether the same can be measured again: what it was measured of, beside the shape of the
    /// surface, is still there.
    [[nodiscard]] bool CanBeRepeated(const MeasureStand& now) const {
        const MeasureKind kind = question.kind;
        const bool isOfOne = kind == MeasureKind::Areas || kind == MeasureKind::Hypsometry ||
                             kind == MeasureKind::ToDatum;
        const bool isWithin = isOfOne || kind == MeasureKind::ToSecond;
        return stand.points == now.points && (isOfOne || stand.second == now.second) &&
               (!isWithin || stand.polygon == now.polygon);
    }
};

class MeasureLog {
public:
    void Add(MeasureEntry entry) { entries_.insert(entries_.begin(), std::move(entry)); }
    [[nodiscard]] std::vector<MeasureEntry>& Entries() { return entries_; }
    [[nodiscard]] const std::vector<MeasureEntry>& Entries() const { return entries_; }

private:
    std::vector<MeasureEntry> entries_;
};

} // namespace terravo
