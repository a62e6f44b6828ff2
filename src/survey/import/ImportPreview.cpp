#include "survey/import/ImportPreview.h"

#include "survey/import/Records.h"
#include "survey/import/TextSource.h"
#include "util/NumberText.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <utility>

namespace terravo {
namespace {

using Fields = std::vector<std::string_view>;

constexpr Index kMostOfFreeList = 5000;

class Preview {
public:
    Preview(const HeadText& head, const ImportPlan& plan, std::size_t most)
        : head_(head), plan_(plan), most_(most),
          hasCoordinates_(std::count_if(plan.columns.begin(), plan.columns.end(), IsCoordinate) ==
                          3) {}

    ImportPreview Take();

private:
    [[nodiscard]] bool IsRecord(std::string_view line) const;
    std::size_t EndOfRecord(std::string_view text, std::size_t end);
    void TakeLine(std::string_view line);
    void TakeRecord(std::string_view line);
    void Keep(LineKind kind, const Fields& fields, const RecordFit& fit = {});

    const HeadText& head_;
    const ImportPlan& plan_;
    std::size_t most_;
    bool hasCoordinates_; // else no record is a point yet
    ImportPreview made_;
    Fields fields_;
    std::int64_t followingLines_ = 0; // of the record, behind its first
    bool isOneRecord_ = true;         // else its lines may be records of their own
    std::map<std::size_t, std::int64_t> fieldCounts_;
};

// Lines between the records are kept as well; a file that holds little else has enough of them.
void Preview::Keep(LineKind kind, const Fields& fields, const RecordFit& fit) {
    const bool isShown =
        made_.records <= static_cast<std::int64_t>(most_) && made_.lines.size() < 4 * most_;
    const bool isListed = kind == LineKind::Bad && made_.bad.size() < ImportPreview::kMostListed;
    if (!isShown && !isListed) {
        return;
    }
    PreviewLine line{made_.linesRead, kind, {}, fields.size(), fit.misfit, fit.field};
    const std::size_t kept = std::min(fields.size(), ImportPreview::kMostColumns);
    for (std::size_t k = 0; k < kept; ++k) {
        line.fields.push_back(LabelText(fields[k], plan_.encoding));
    }
    if (isListed) {
        made_.bad.push_back(line);
    }
    if (isShown) {
        made_.columns = kind == LineKind::Comment ? made_.columns : std::max(made_.columns, kept);
        made_.lines.push_back(std::move(line));
    }
}

void Preview::TakeRecord(std::string_view line) {
    ++made_.records;
    SplitWithoutComment(line, plan_.separator, plan_.decimal, fields_);
    ++fieldCounts_[fields_.size()];
    RecordFit fit = FitRecord(fields_, plan_);
    if (!isOneRecord_) {
        fit.misfit = Misfit::FieldCount;
        fit.field = 0;
    }
    if (fit.misfit != Misfit::None) {
        ++made_.badRecords;
        Keep(LineKind::Bad, fields_, fit);
    } else if (fit.isVoid) {
        ++made_.voidHeights;
        if (made_.voidLines.size() < ImportPreview::kMostListed) {
            made_.voidLines.push_back(made_.linesRead);
        }
        Keep(LineKind::NoHeight, fields_);
    } else {
        if (hasCoordinates_) {
            made_.points.Append(fit.x, fit.y, fit.z);
        }
        Keep(LineKind::Point, fields_);
    }
}

// The line behind those that were read.
bool Preview::IsRecord(std::string_view line) const {
    return made_.linesRead >= plan_.headerLines && !IsBlankLine(line) &&
           !IsCommentLine(line, plan_.separator);
}

void Preview::TakeLine(std::string_view line) {
    ++made_.linesRead;
    const bool isComment = IsCommentLine(line, plan_.separator);
    if (made_.linesRead <= plan_.headerLines) {
        ++made_.headerLines;
        SplitRecord(line, plan_.separator, fields_);
        Keep(LineKind::Header, isComment ? Fields{line} : fields_);
    } else if (IsBlankLine(line)) {
        ++made_.blankLines;
        Keep(LineKind::Blank, {});
    } else if (isComment) {
        ++made_.commentLines;
        Keep(LineKind::Comment, {line});
    } else {
        TakeRecord(line);
    }
}

// Where a line that begins at a place ends.
std::size_t EndOfLine(std::string_view text, std::size_t from) {
    return std::min(text.find_first_of("\r\n", from), text.size());
}

// Where the next one begins.
std::size_t BehindEnd(std::string_view text, std::size_t end) {
    const bool isPair = text.substr(end).starts_with("\r\n");
    return std::min(end + (isPair ? 2 : 1), text.size());
}

// The end of the record whose first line ends at a place; see RecordReader.
std::size_t Preview::EndOfRecord(std::string_view text, std::size_t end) {
    const std::size_t first = end;
    followingLines_ = 0;
    isOneRecord_ = true;
    for (int lines = 1; lines <= kMostLinesOfRecord; ++lines) {
        const Quotes quotes =
            QuotesOf(WithoutComment(text.substr(0, end), plan_.separator, plan_.decimal),
                     plan_.separator, plan_.decimal);
        const std::size_t next = BehindEnd(text, end);
        if (quotes == Quotes::Closed || quotes == Quotes::Records) {
            followingLines_ = lines - 1;
            isOneRecord_ = quotes == Quotes::Closed;
            return end;
        }
        if (quotes == Quotes::Stray || next == text.size()) {
            break;
        }
        end = EndOfLine(text, next);
    }
    return first;
}

ImportPreview Preview::Take() {
    std::string_view text = head_.text;
    while (!text.empty()) {
        std::size_t end = EndOfLine(text, 0);
        if (IsRecord(text.substr(0, end)) &&
            text.substr(0, end).find('"') != std::string_view::npos) {
            end = EndOfRecord(text, end);
        }
        TakeLine(text.substr(0, end));
        text.remove_prefix(BehindEnd(text, end));
        made_.linesRead += std::exchange(followingLines_, 0);
        isOneRecord_ = true;
    }
    for (const auto& [count, times] : fieldCounts_) {
        const auto before = fieldCounts_.find(made_.usualFields);
        if (before == fieldCounts_.end() || times > before->second) {
            made_.usualFields = count;
        }
    }
    made_.columns = std::max(made_.columns, plan_.columns.size());
    made_.isAll = head_.isAll;
    return std::move(made_);
}

ImportPreview PreviewOfFreeList(const std::string& path, std::size_t most) {
    ImportPreview made;
    made.columns = made.usualFields = 3;
    NumberListReader reader(path, std::size_t{1} << 16);
    std::array<double, 3> point{};
    while (!reader.HasFailed() && made.points.count < kMostOfFreeList && !reader.AtEnd()) {
        PreviewLine line{made.points.count + 1, LineKind::Point, {}, 3, Misfit::None, 0};
        for (double& value : point) {
            if (!reader.Read(value)) {
                made.failure = reader.Failure();
                return made;
            }
            line.fields.push_back(NumberText::FormatScreen(value, "#0.######", '.'));
        }
        made.points.Append(point[0], point[1], point[2]);
        ++made.records;
        if (made.lines.size() < most) {
            made.lines.push_back(std::move(line));
        }
    }
    if (reader.HasFailed()) {
        made.failure = reader.Failure();
    }
    made.isAll = !made.failure && reader.AtEnd();
    return made;
}

} // namespace

HeadText ReadHeadText(const std::string& path, TextEncoding encoding) {
    HeadText head;
    head.path = path;
    TextSource source(path);
    head.failure = source.Failure();
    if (head.failure) {
        return head;
    }
    source.Begin(encoding);
    head.text.assign(source.Cursor(), source.Limit());
    head.isAll = source.HeadIsAll();
    if (!head.isAll) {
        const std::size_t end = head.text.find_last_of('\n');
        const std::size_t whole = end == std::string::npos ? head.text.find_last_of('\r') : end;
        head.text.resize(whole == std::string::npos ? 0 : whole + 1);
    }
    return head;
}

ImportPreview PreviewOf(const HeadText& head, const ImportPlan& plan, std::size_t most) {
    return plan.freeList ? PreviewOfFreeList(head.path, most) : Preview(head, plan, most).Take();
}

} // namespace terravo
