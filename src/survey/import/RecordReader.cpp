#include "survey/import/RecordReader.h"

#include "survey/PointFile.h"
#include "survey/import/ColumnNames.h"
#include "survey/import/Records.h"

#include <algorithm>
#include <array>
#include <utility>

namespace terravo {
namespace {

constexpr std::int64_t kProgressStride = 65536; // lines
constexpr std::int64_t kFirstLook = 4096;       // enough lines to judge the room for all points
// Lines are read without a look at the end of the window; beyond it is at least a NUL.
constexpr std::ptrdiff_t kLongestQuick = 512;

// The start of a field for a message.
std::string Quoted(std::string_view field) {
    constexpr std::size_t kMost = 24;
    std::string text = "\"";
    for (const char c : field.substr(0, kMost)) {
        const auto byte = static_cast<unsigned char>(c);
        text += byte < 0x20 || byte == 0x7F ? '?' : c;
    }
    return text + (field.size() > kMost ? "...\"" : "\"");
}

} // namespace

// As many lines as there are in the window and are wanted. The first that is not of the usual form,
// or is cut off by the window, is left untaken.
void RecordReader::TakeQuickLines(std::int64_t most) {
    if (source_.Limit() - source_.Cursor() <= kLongestQuick) {
        source_.More();
    }
    const char* p = source_.Cursor();
    const char* const limit = source_.Limit();
    points_.labels.NoteLine(points_.count + 1, source_.LinesTaken() + 1);
    std::int64_t lines = 0;
    QuickRecord record;
    for (; lines < most && limit - p > kLongestQuick; ++lines) {
        const char* const end = quick_.Read(p, record);
        if (end == nullptr || end >= limit) {
            break;
        }
        points_.Append(record.coordinates[0], record.coordinates[1], record.coordinates[2]);
        if (hasLabels_) {
            points_.labels.Append(record.name, record.code);
        }
        p = end;
    }
    source_.TakeTo(p, lines);
    report_.records += lines;
}

void RecordReader::AddPoint(double x, double y, double z) {
    points_.Append(x, y, z);
    points_.labels.NoteLine(points_.count, line_);
}

// A bad record counts once.
void RecordReader::Refuse(std::size_t field, std::string cause) {
    ++report_.badRecords;
    if (report_.bad.size() < ImportReport::kMostListed) {
        report_.bad.push_back({line_, static_cast<std::int64_t>(field),
                               field == 0 ? std::string() : Quoted(fields_[field - 1]),
                               std::move(cause)});
    }
}

void RecordReader::LeaveOutVoid() {
    ++report_.voidHeights;
    if (report_.voidLines.size() < ImportReport::kMostListed) {
        report_.voidLines.push_back(line_);
    }
}

std::string RecordReader::CauseOf(Misfit misfit) const {
    switch (misfit) {
    case Misfit::FieldCount:
        return std::to_string(fields_.size()) + (fields_.size() == 1 ? " field" : " fields") +
               " where the other records have " +
               std::to_string(std::max(plan_.fieldCount, plan_.columns.size()));
    case Misfit::NumberForText:
        return "is a number where the other records have a text";
    case Misfit::NotANumber:
    case Misfit::None:
        break;
    }
    return "is not a number";
}

void RecordReader::TakeRecord() {
    const RecordFit fit = FitRecord(fields_, plan_);
    if (fit.misfit != Misfit::None) {
        Refuse(fit.field, CauseOf(fit.misfit));
    } else if (fit.isVoid) {
        LeaveOutVoid();
    } else {
        AddPoint(fit.x, fit.y, fit.z);
    }
}

// The code at the end of a line goes on to the end of the line, with its blanks.
void RecordReader::AddLabels() {
    std::string_view name;
    std::string_view code;
    for (std::size_t k = 0; k < std::min(plan_.columns.size(), fields_.size()); ++k) {
        if (plan_.columns[k] == ColumnRole::Name) {
            name = fields_[k];
        } else if (plan_.columns[k] == ColumnRole::Code) {
            code = fields_[k];
            if (plan_.codeTakesRest && k + 1 < fields_.size()) {
                const char* const end = fields_.back().data() + fields_.back().size();
                code = {code.data(), static_cast<std::size_t>(end - code.data())};
            }
        }
    }
    points_.labels.Append(LabelText(name, plan_.encoding), LabelText(code, plan_.encoding));
}

// A quoted field may go on in the next lines, which are then taken, too.
// @return false where these lines may as well be records of their own.
bool RecordReader::CompleteQuotes(std::string_view& line) {
    const std::size_t length = line.size();
    const std::ptrdiff_t lengthTaken = source_.Cursor() - line.data();
    const auto look = [this, &line] {
        return QuotesOf(WithoutComment(line, plan_.separator, plan_.decimal), plan_.separator,
                        plan_.decimal);
    };
    Quotes quotes = look();
    int lines = 1;
    for (; quotes == Quotes::Open && lines < kMostLinesOfRecord && source_.Extend(line); ++lines) {
        quotes = look();
    }
    if (lines > 1 && (quotes == Quotes::Open || quotes == Quotes::Stray)) {
        source_.TakeTo(line.data() + lengthTaken, 1 - lines);
        line = line.substr(0, length);
    }
    return quotes != Quotes::Records;
}

// @return false for a line of names that contradicts the columns so far.
bool RecordReader::NamesAgree(std::string_view line) {
    std::optional<std::vector<ColumnRole>> names = NamesIn(line, plan_.separator);
    if (!names) {
        return true;
    }
    const bool isHeader = report_.records == 0;
    if (!isHeader && !HaveSameCoordinates(*names, names_.empty() ? plan_.columns : names_)) {
        lineOfOtherNames_ = line_;
        return false;
    }
    names_ = *std::move(names);
    return true;
}

bool RecordReader::TakeRecordAt(std::string_view line) {
    const bool isOneRecord = line.find('"') == std::string_view::npos || CompleteQuotes(line);
    const std::int64_t badBefore = report_.badRecords;
    const Index before = points_.count;
    SplitWithoutComment(line, plan_.separator, plan_.decimal, fields_);
    if (isOneRecord) {
        TakeRecord();
    } else {
        Refuse(0, "a quoted field goes on over lines that may be records");
    }
    if (report_.badRecords > badBefore && !NamesAgree(line)) {
        return false;
    }
    ++report_.records;
    if (hasLabels_ && points_.count > before) {
        AddLabels();
    }
    return bad_ == BadRecords::Skip || report_.badRecords == 0;
}

// @return false when a record, or a line of other names, ends the reading.
bool RecordReader::TakeLine(std::string_view line) {
    line_ = source_.LinesTaken();
    if (line_ <= plan_.headerLines) {
        ++report_.headerLines;
        return NamesAgree(line);
    }
    if (IsBlankLine(line)) {
        ++report_.blankLines;
        return true;
    }
    if (IsCommentLine(line, plan_.separator)) {
        ++report_.commentLines;
        return NamesAgree(line);
    }
    return TakeRecordAt(line);
}

bool RecordReader::GoesOn(const StopToken& stop) {
    const double done = source_.FileSize() > 0 ? static_cast<double>(source_.BytesTaken()) /
                                                     static_cast<double>(source_.FileSize())
                                               : 0.0;
    return stop.GoesOn("read", done);
}

bool RecordReader::Read(const StopToken& stop) {
    hasLabels_ = std::any_of(plan_.columns.begin(), plan_.columns.end(), [](ColumnRole role) {
        return role == ColumnRole::Name || role == ColumnRole::Code;
    });
    std::string_view line;
    std::int64_t nextReport = kFirstLook;
    for (;;) {
        if (quick_.AreUsable() && source_.LinesTaken() >= plan_.headerLines) {
            TakeQuickLines(nextReport - source_.LinesTaken());
        }
        if (source_.LinesTaken() < nextReport) {
            if (!source_.NextLine(line)) {
                return !source_.Failure();
            }
            if (!TakeLine(line)) {
                return false;
            }
        }
        if (source_.LinesTaken() >= nextReport) {
            if (nextReport == kFirstLook) {
                MakeRoomForAll(points_, source_.BytesTaken(), source_.FileSize());
            }
            nextReport = source_.LinesTaken() + kProgressStride;
            if (points_.count >= kMostPoints || !GoesOn(stop)) {
                return false;
            }
        }
    }
}

} // namespace terravo
