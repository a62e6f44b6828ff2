// The check of the survey at work, as its user goes through it.
//
// Data: the findings of the last check, their points numbered among all points of the survey, and
// for which state of the survey they hold. Method: only points in use are checked; a finding on a
// point that has been excluded since stays in the list, so that it can be taken back.
#pragma once

#include "survey/Survey.h"
#include "survey/check/Finding.h"
#include "survey/import/PointImport.h"

#include <array>
#include <cstdint>
#include <vector>

namespace terravo {

class SurveyReview {
public:
    explicit SurveyReview(Survey& survey) : survey_(survey) {}

    /// Other points have been read: forgets the findings.
    /// @param report  of the reading; an empty one where there is none.
    void Begin(ImportReport report);

    /// Checks the points in use; false when it was stopped, with the findings as they were.
    bool Check(const StopToken& stop);

    /// The gravest first.
    [[nodiscard]] const std::vector<Finding>& Findings() const { return findings_; }
    /// Grows with every change of the findings.
    [[nodiscard]] std::uint64_t Revision() const { return revision_; }
    [[nodiscard]] bool IsMade() const { return isMade_; }
    /// The points in use are others than those of the check.
    [[nodiscard]] bool IsStale() const { return isMade_ && version_ != survey_.Version(); }
    /// Number of findings of each severity.
    [[nodiscard]] std::array<std::size_t, 3> Counts() const;

private:
    [[nodiscard]] bool HasExcluded(const Finding& finding) const;

    Survey& survey_;
    ImportReport report_;
    std::vector<Finding> findings_;
    bool isMade_ = false;
    std::uint64_t version_ = 0; // of the survey that was checked
    std::uint64_t revision_ = 0;
};

/// The points that a finding suggests to leave out: of points at one place all but the first, which
/// is the one in use, else all that it lists.
std::vector<Index> PointsToExclude(const Finding& finding);

} // namespace terravo
