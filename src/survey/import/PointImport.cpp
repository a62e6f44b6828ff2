#include "survey/import/PointImport.h"

#include "survey/PointFile.h"
#include "survey/import/GridFile.h"
#include "survey/import/RecordReader.h"
#include "util/PathText.h"

#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

namespace terravo {
namespace {

std::optional<ReadFailure> RefuseFolder(const std::string& path) {
    std::error_code unknown;
    return std::filesystem::is_directory(path, unknown)
               ? std::optional(FailureOf(path, "Is a directory"))
               : std::nullopt;
}

// The columns that somebody may name, for the end of a sentence.
std::string Choices(const Inspection& inspection) {
    constexpr std::size_t kMostColumns = 16; // of more, what is left out at the end is not told
    std::string names;
    for (std::vector<ColumnRole> columns : inspection.candidates) {
        const bool isWide = columns.size() > kMostColumns;
        while (isWide && columns.back() == ColumnRole::Ignored) {
            columns.pop_back();
        }
        names += (names.empty() ? "" : ", ") + NameOfColumns(columns);
    }
    if (inspection.mayBeFreeList) {
        names += names.empty() ? "free" : ", free";
    }
    return names;
}

ReadFailure FailureOfDoubt(const std::string& path, const Inspection& inspection) {
    const std::string choices = Choices(inspection);
    return FailureOf(path,
                     inspection.doubt + (choices.empty() ? "" : "; the columns may be " + choices));
}

ReadFailure FailureOfRecord(const std::string& path, const BadRecord& bad) {
    ReadFailure failure =
        FailureOf(path, bad.content.empty() ? bad.cause : bad.content + " " + bad.cause);
    failure.line = bad.line;
    failure.field = bad.field;
    failure.content = bad.content;
    if (bad.cause == "is not a number") {
        failure.kind = ReadFailure::Kind::NotANumber;
    }
    return failure;
}

class Import {
public:
    Import(std::string path, BadRecords bad, const StopToken& stop)
        : path_(std::move(path)), bad_(bad), stop_(stop) {}

    // Reads what an inspection has begun.
    void Read(TextSource& source, ImportOutcome& outcome) {
        if (outcome.inspection.grid != GridFormat::None) {
            outcome.failure = ReadGrid(source, outcome.inspection.grid, outcome.inspection.plan,
                                       made_, outcome.report, stop_);
            return;
        }
        RecordReader reader(source, outcome.inspection.plan, bad_, made_, outcome.report);
        if (reader.Read(stop_)) {
            return;
        }
        if (source.Failure()) {
            outcome.failure = source.Failure();
        } else if (reader.LineOfOtherNames() > 0) {
            outcome.failure = FailureOf(path_, "this line names the columns in another order than "
                                               "before; split the file above it");
            outcome.failure->line = reader.LineOfOtherNames();
        } else if (!outcome.report.bad.empty() && bad_ == BadRecords::Refuse) {
            outcome.failure = FailureOfRecord(path_, outcome.report.bad.front());
            outcome.needsChoice = true;
        } else if (made_.count >= kMostPoints) {
            outcome.failure =
                FailureOf(path_, "the file holds more points than can be triangulated");
        } else {
            outcome.failure = FailureOf(path_, "reading was stopped");
            outcome.failure->isStop = true;
        }
    }

    // As ReadPoints would, from the start of the file.
    void ReadFreeList(ImportOutcome& outcome) {
        outcome.failure = ReadPoints(path_, made_, stop_);
        outcome.report.records = made_.count;
    }

    void HandOut(PointSet& points, const ImportOutcome& outcome) {
        if (outcome.failure) {
            return;
        }
        made_.sourceName = SplitPath(path_).name;
        made_.sourceFolder = std::move(points.sourceFolder);
        points = std::move(made_);
    }

private:
    std::string path_;
    BadRecords bad_;
    const StopToken& stop_;
    PointSet made_;
};

template <class Work>
ImportOutcome Guarded(const std::string& path, Work work) {
    ImportOutcome outcome;
    outcome.failure = RefuseFolder(path);
    if (outcome.failure) {
        return outcome;
    }
    try {
        work(outcome);
    } catch (const std::bad_alloc&) {
        outcome.failure = FailureOf(path, "there is not enough memory");
    }
    return outcome;
}

} // namespace

ImportOutcome ImportPoints(const std::string& path, const ImportWish& wish, BadRecords bad,
                           PointSet& points, const StopToken& stop) {
    return Guarded(path, [&](ImportOutcome& outcome) {
        Import import(path, bad, stop);
        if (wish.freeList) {
            outcome.inspection.plan.freeList = true;
            outcome.inspection.certain = true;
            import.ReadFreeList(outcome);
        } else {
            TextSource source(path);
            outcome.inspection = Inspect(source, wish);
            outcome.failure = outcome.inspection.failure;
            if (!outcome.failure && !outcome.inspection.certain) {
                outcome.failure = FailureOfDoubt(path, outcome.inspection);
                outcome.needsChoice = outcome.inspection.hasNumbers;
            }
            if (!outcome.failure) {
                import.Read(source, outcome);
            }
        }
        import.HandOut(points, outcome);
    });
}

ImportOutcome ImportByPlan(const std::string& path, const ImportPlan& plan, BadRecords bad,
                           PointSet& points, const StopToken& stop) {
    return Guarded(path, [&](ImportOutcome& outcome) {
        Import import(path, bad, stop);
        outcome.inspection.plan = plan;
        outcome.inspection.certain = true;
        if (plan.freeList) {
            import.ReadFreeList(outcome);
        } else {
            TextSource source(path);
            outcome.failure = source.Failure();
            if (!outcome.failure) {
                source.Begin(plan.encoding);
                import.Read(source, outcome);
            }
        }
        import.HandOut(points, outcome);
    });
}

std::string NameOfReading(const Inspection& inspection) {
    if (!inspection.readAs.empty()) {
        return inspection.readAs;
    }
    if (inspection.plan.freeList) {
        return "free list";
    }
    switch (inspection.grid) {
    case GridFormat::Esri:
        return "ESRI ASCII grid";
    case GridFormat::Surfer:
        return "Surfer ASCII grid";
    case GridFormat::None:
        break;
    }
    return NameOfColumns(inspection.plan.columns);
}

std::string DescribeImport(const ImportOutcome& outcome, Index points) {
    std::string text = NameOfReading(outcome.inspection);
    text += "; " + std::to_string(points) + " points";
    if (outcome.report.voidHeights > 0) {
        text += "; " + std::to_string(outcome.report.voidHeights) + " without height";
    }
    if (outcome.report.badRecords > 0) {
        text += "; " + std::to_string(outcome.report.badRecords) + " bad records left out";
    }
    return text;
}

} // namespace terravo
