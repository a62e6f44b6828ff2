#include "app/batch/PointInput.h"

#include "app/batch/ExitCode.h"
#include "app/batch/RunFailure.h"
#include "gis/GisImport.h"
#include "triangulation/modDelaunay2D.h"

#include <optional>

namespace terravo {
namespace {

// A text without a digit in the column of heights may say that there is none.
std::string VoidHint(const std::string& text) {
    constexpr std::size_t kMost = 24;
    const bool mayBe = !text.empty() && text.size() <= kMost &&
                       text.find_first_of("0123456789'\"") == std::string::npos;
    const bool hasComma = text.find(',') != std::string::npos;
    const std::string quoted = hasComma ? "'\"" + text + "\"'" : "'" + text + "'";
    return mayBe ? " --void " + quoted + " takes that for a missing height." : std::string();
}

std::string VoidHintFor(const ImportOutcome& input) {
    const ReadFailure& failure = *input.failure;
    const std::vector<ColumnRole>& columns = input.inspection.plan.columns;
    const auto column = static_cast<std::size_t>(failure.field);
    const bool isHeight = failure.kind == ReadFailure::Kind::NotANumber && column > 0 &&
                          column <= columns.size() && columns[column - 1] == ColumnRole::Height;
    const std::string& content = failure.content; // quoted
    return isHeight && content.size() > 2 ? VoidHint(content.substr(1, content.size() - 2)) : "";
}

// Which option decides what is not certain.
std::string HintFor(const ImportOutcome& input) {
    if (input.inspection.grid != GridFormat::None &&
        input.failure->content.find(',') != std::string::npos) {
        return " --decimal comma reads such numbers.";
    }
    if (!input.needsChoice) {
        return {};
    }
    if (input.failure->line > 0) {
        return VoidHintFor(input) +
               " --bad-records skip leaves such records out, --columns says what the columns are.";
    }
    if (const std::string hint = VoidHint(input.inspection.heightText); !hint.empty()) {
        return hint;
    }
    if (input.inspection.doubtKind == DoubtKind::CommaOfNumbers) {
        return " --decimal says which.";
    }
    return input.inspection.candidates.empty() && !input.inspection.mayBeFreeList
               ? " --columns, --separator and --decimal say how it is to be read."
               : " --columns says which.";
}

std::string HintForProject(const ImportOutcome& input) {
    return input.needsChoice ? " A project of it (*.terravo) says how it is read." : "";
}

// Only a look into the file tells that it is one.
void RefuseForGrid(const PointCall& call, const Inspection& inspection) {
    const std::string option = ImportOptions::UnusedForGrid(call.import);
    if (inspection.grid != GridFormat::None && !option.empty()) {
        throw RunFailure(ExitCode::kUsage, call.file + ": this is a grid of heights (" +
                                               NameOfReading(inspection) + "), for which " +
                                               option + " means nothing.");
    }
}

// Options of one kind of file say nothing of the other.
void RefuseUnused(const PointCall& call, const std::string& option, const char* kind) {
    if (!option.empty()) {
        throw RunFailure(ExitCode::kUsage, call.file + ": this is " + kind + ", for which " +
                                               option + " means nothing.");
    }
}

ImportOutcome ReadText(const PointCall& call, PointSet& points, const StopToken& stop) {
    ImportOutcome input = ImportPoints(call.file, call.import.wish, call.import.bad, points, stop);
    EndWhenStopped();
    RefuseForGrid(call, input.inspection);
    if (input.failure && !input.inspection.isEmpty) {
        throw RunFailure(ExitCode::kPointFile,
                         input.failure->Sentence() +
                             (call.optionsHold ? HintFor(input) : HintForProject(input)));
    }
    RefuseUnused(call, GisOptions::FirstIn(call.gis), "a text of points");
    return input;
}

ImportOutcome ReadGis(const PointCall& call, PointSet& points, const StopToken& stop) {
    RefuseUnused(call, ImportOptions::FirstIn(call.import), "no text of points");
    ImportOutcome input = ImportGis(call.file, call.gis, points, stop).import;
    EndWhenStopped();
    if (input.failure) {
        throw RunFailure(ExitCode::kPointFile, input.failure->Sentence());
    }
    return input;
}

} // namespace

ImportOutcome ReadPointFile(const PointCall& call, PointSet& points, const StopToken& stop) {
    ImportOutcome input =
        IsGisFile(call.file) ? ReadGis(call, points, stop) : ReadText(call, points, stop);
    if (points.count == 0 && input.report.voidHeights > 0) {
        throw RunFailure(
            ExitCode::kNoTriangulation,
            call.file + ": none of its " + std::to_string(input.report.voidHeights) +
                " points has a height (a number beyond 1.7e38 says that there is none).");
    }
    return input;
}

void RequireTriangles(const std::string& file, const PointSet& points,
                      const TriangulationOutcome& made) {
    if (made.ierr == modDelaunay2D::Ierr::kAllCollinear) {
        throw RunFailure(ExitCode::kNoTriangulation,
                         file + ": no triangulation of " + std::to_string(points.count) +
                             (points.count == 1   ? " point; three are needed."
                              : points.count == 2 ? " points; three are needed."
                                                  : " points: all of them lie on one line."));
    }
    if (made.ierr != modDelaunay2D::Ierr::kDone) {
        throw RunFailure(ExitCode::kNumeric, file + ": the triangulation failed: " +
                                                 modDelaunay2D::DescribeIerr(made.ierr) + ".");
    }
    if (points.count == 0) {
        throw RunFailure(ExitCode::kNoTriangulation, file + ": the file holds no points.");
    }
}

} // namespace terravo
