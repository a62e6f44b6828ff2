// A plan while somebody is choosing it.
//
// Data: the file, the plan as it stands, what the plan makes of the head of the file, and what its
// columns may be. Method: every change looks at the head again. With another separator or decimal
// sign the file is inspected anew, and its columns are kept only where there are as many as before.
#pragma once

#include "survey/import/ImportPreview.h"
#include "survey/import/Inspection.h"

#include <optional>
#include <string>
#include <vector>

namespace terravo {

class ImportDraft {
public:
    /// @param remembered  the plan to begin with instead of the inspection's, where it gives
    /// points.
    ImportDraft(std::string path, const Inspection& inspection,
                const std::optional<ImportPlan>& remembered);

    [[nodiscard]] const ImportPlan& Plan() const { return plan_; }
    [[nodiscard]] const ImportPreview& Preview() const { return preview_; }
    /// What each column of the preview means.
    [[nodiscard]] const std::vector<ColumnRole>& Roles() const { return roles_; }
    [[nodiscard]] const std::vector<std::vector<ColumnRole>>& Candidates() const {
        return candidates_;
    }
    /// The candidate that the columns are, from 0.
    [[nodiscard]] std::optional<std::size_t> Candidate() const;
    /// Coordinates that no column holds; none for a free list.
    [[nodiscard]] std::vector<ColumnRole> MissingCoordinates() const;

    void ChooseCandidate(std::size_t candidate);
    /// Says what a column means; one that meant it takes over what this one was.
    /// @param column  from 0.
    void SetRole(std::size_t column, ColumnRole role);
    void SetSeparator(FieldSeparator separator);
    void SetDecimal(char decimal);
    void SetEncoding(TextEncoding encoding);
    /// From now on these many, whatever the file looks like.
    void SetHeaderLines(Index lines);
    /// @param voids  texts divided by blanks.
    void SetVoids(const std::string& voids);
    void SetFreeList(bool on);

private:
    void Refresh();
    void InspectAgain();
    void TakeColumns(const std::vector<ColumnRole>& roles);
    [[nodiscard]] std::vector<ColumnRole> Widened(std::vector<ColumnRole> columns) const;

    std::string path_;
    ImportPlan plan_;
    HeadText head_;
    ImportPreview preview_;
    std::vector<ColumnRole> roles_;
    std::vector<std::vector<ColumnRole>> candidates_;
    std::optional<Index> skip_; // chosen header lines
};

} // namespace terravo
