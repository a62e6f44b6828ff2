// The records of a text, as points.
//
// Data: a text that has been begun, a plan. Method: see PointImport.
#pragma once

#include "survey/import/PointImport.h"
#include "survey/import/QuickLines.h"
#include "survey/import/RecordFit.h"
#include "survey/import/TextSource.h"

#include <string>
#include <string_view>
#include <vector>

namespace terravo {

class RecordReader {
public:
    /// @param[out] points  whose arrays are filled.
    RecordReader(TextSource& source, const ImportPlan& plan, BadRecords bad, PointSet& points,
                 ImportReport& report)
        : source_(source), plan_(plan), bad_(bad), points_(points), report_(report) {}

    /// Reads to the end of the text.
    /// @return false when the work was stopped, when a bad record ended it, when the source failed,
    ///         and when there are too many points.
    bool Read(const StopToken& stop);

    /// The line that ended the reading because it names the columns in another order than before
    /// it: none of the records behind it is to be left to the old order. 0 for none.
    [[nodiscard]] std::int64_t LineOfOtherNames() const { return lineOfOtherNames_; }

private:
    void TakeQuickLines(std::int64_t most);
    bool TakeLine(std::string_view line);
    bool TakeRecordAt(std::string_view line);
    bool CompleteQuotes(std::string_view& line);
    bool NamesAgree(std::string_view line);
    void TakeRecord();
    void AddPoint(double x, double y, double z);
    void LeaveOutVoid();
    void Refuse(std::size_t field, std::string cause);
    [[nodiscard]] std::string CauseOf(Misfit misfit) const;
    void AddLabels();
    bool GoesOn(const StopToken& stop);

    TextSource& source_;
    const ImportPlan& plan_;
    BadRecords bad_;
    PointSet& points_;
    ImportReport& report_;
    std::vector<std::string_view> fields_;
    QuickLines quick_{plan_};
    std::vector<ColumnRole> names_; // as the last line of names has them; else those of the plan
    std::int64_t line_ = 0;         // on which the record begins
    std::int64_t lineOfOtherNames_ = 0;
    bool hasLabels_ = false;
};

} // namespace terravo
