#include "survey/surface/LineFile.h"

#include "survey/import/FileKind.h"
#include "survey/import/Records.h"
#include "survey/import/TextSource.h"
#include "survey/surface/LineLayout.h"

#include <filesystem>
#include <new>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace terravo {
namespace {

constexpr std::size_t kProgressStride = 65536; // lines

// A file as text, line by line.
struct LinesOfText {
    std::string text;
    std::vector<std::size_t> ends; // of each line in the text
    TextEncoding encoding = TextEncoding::Utf8;

    [[nodiscard]] std::vector<std::string_view> All() const {
        std::vector<std::string_view> lines;
        lines.reserve(ends.size());
        std::size_t begin = 0;
        for (const std::size_t end : ends) {
            lines.push_back(std::string_view(text).substr(begin, end - begin));
            begin = end;
        }
        return lines;
    }
};

// What stands on one line of the text.
struct Row {
    enum class Kind { Blank, Comment, Name, Vertex, Bad };
    Kind kind = Kind::Blank;
    SpacePoint vertex;
    std::string_view name; // of the line that the vertex belongs to, or that begins here
    std::string cause;     // of what is bad
};

Row BadRow(std::string cause) {
    Row row;
    row.kind = Row::Kind::Bad;
    row.cause = std::move(cause);
    return row;
}

std::string Quoted(std::string_view field) {
    constexpr std::size_t kMost = 24;
    return "\"" + std::string(field.substr(0, kMost)) + (field.size() > kMost ? "...\"" : "\"");
}

// Takes lines of the text apart.
class RowReader {
public:
    explicit RowReader(const LineLayout& layout) : layout_(layout) {}

    Row Read(std::string_view line, bool mayBeName) {
        Row row;
        if (IsBlankLine(line)) {
            return row;
        }
        if (IsCommentLine(line, layout_.separator)) {
            row.kind = Row::Kind::Comment;
            return row;
        }
        SplitWithoutComment(line, layout_.separator, layout_.decimal, fields_);
        if (!layout_.name && IsName(mayBeName)) {
            row.kind = Row::Kind::Name;
            row.name = NameIn(line);
            return row;
        }
        row = VertexRow();
        if (layout_.name && *layout_.name < fields_.size()) {
            row.name = fields_[*layout_.name];
        }
        return row;
    }

private:
    [[nodiscard]] std::optional<double> Number(std::size_t column) const {
        return NumberOf(fields_[column], layout_.decimal);
    }

    // A line without numbers, or of a text and one number; a number alone where a line may begin.
    [[nodiscard]] bool IsName(bool mayBeName) const {
        std::size_t numbers = 0;
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            numbers += Number(i) ? 1 : 0;
        }
        if (fields_.size() == 1 && numbers == 1) {
            return mayBeName;
        }
        return numbers == 0 || (numbers == 1 && !Number(0));
    }

    // ">" marks the beginning of a line in some files.
    static std::string_view NameIn(std::string_view line) {
        std::string_view name = Trimmed(line);
        if (name.starts_with('>')) {
            name = Trimmed(name.substr(1));
        }
        if (name.size() >= 2 && name.starts_with('"') && name.ends_with('"')) {
            name = name.substr(1, name.size() - 2);
        }
        return name;
    }

    [[nodiscard]] std::string CauseOfCount() const {
        const std::string count =
            std::to_string(fields_.size()) + (fields_.size() == 1 ? " field" : " fields");
        return count + (layout_.headerLine > 0 ? " where the header names more"
                                               : " where a vertex has two or three");
    }

    Row VertexRow() const {
        const bool fits = layout_.headerLine > 0 ? fields_.size() >= layout_.FewestFields()
                                                 : fields_.size() == 2 || fields_.size() == 3;
        if (!fits) {
            return BadRow(CauseOfCount());
        }
        Row row;
        row.kind = Row::Kind::Vertex;
        for (const std::size_t column : {layout_.x, layout_.y}) {
            const std::optional<double> number = Number(column);
            if (!number) {
                return BadRow(Quoted(fields_[column]) + " is not a number");
            }
            (column == layout_.x ? row.vertex.x : row.vertex.y) = *number;
        }
        row.vertex.z = kNoHeight;
        if (layout_.z && *layout_.z < fields_.size() &&
            !IsVoid(fields_[*layout_.z], layout_.decimal, {})) {
            const std::optional<double> number = Number(*layout_.z);
            if (!number) {
                return BadRow(Quoted(fields_[*layout_.z]) + " is not a number");
            }
            row.vertex.z = *number;
        }
        return row;
    }

    const LineLayout& layout_;
    std::vector<std::string_view> fields_;
};

// Puts the rows together to lines.
class LineJoiner {
public:
    LineJoiner(const LineLayout& layout, TextEncoding encoding, LineCollector& collector)
        : isTable_(layout.name.has_value()), encoding_(encoding), reader_(layout),
          collector_(collector) {}

    // False where a line has heights at some vertices only.
    bool Take(std::string_view text, std::int64_t fileLine) {
        const Row row = reader_.Read(text, line_.vertices.empty() && !isBad_);
        switch (row.kind) {
        case Row::Kind::Comment:
            return true;
        case Row::Kind::Blank:
            if (!isTable_) {
                End();
            }
            return true;
        case Row::Kind::Name:
            End();
            line_.name = LabelText(row.name, encoding_);
            return true;
        case Row::Kind::Bad:
            TakeNameOf(row);
            Spoil(row.cause, fileLine);
            return true;
        case Row::Kind::Vertex:
            TakeNameOf(row);
            return TakeVertex(row.vertex, fileLine);
        }
        return true;
    }

    void End() {
        if (!line_.vertices.empty() && !isBad_) {
            collector_.Add(std::move(line_), firstLine_);
        }
        // A name waits for its vertices.
        if (!line_.vertices.empty() || isBad_) {
            line_ = {};
        }
        isBad_ = false;
    }

private:
    // The line is left out, whatever follows of it.
    void Spoil(const std::string& cause, std::int64_t fileLine) {
        if (!isBad_) {
            collector_.Remark(cause + "; the line with this vertex is left out", fileLine);
        }
        isBad_ = true;
    }

    // In a table another name begins another line.
    void TakeNameOf(const Row& row) {
        std::string name = isTable_ ? LabelText(row.name, encoding_) : line_.name;
        if (name != line_.name) {
            End();
            line_.name = std::move(name);
        }
    }

    bool TakeVertex(const SpacePoint& vertex, std::int64_t fileLine) {
        if (line_.vertices.empty()) {
            firstLine_ = fileLine;
        } else if (HasHeight(vertex) != HasHeight(line_.vertices.front())) {
            return false;
        }
        line_.vertices.push_back(vertex);
        return true;
    }

    bool isTable_;
    TextEncoding encoding_;
    RowReader reader_;
    LineCollector& collector_;
    SpaceLine line_;
    std::int64_t firstLine_ = 0;
    bool isBad_ = false;
};

class LineFileReader {
public:
    LineFileReader(const std::string& path, LineClosing closing, const StopToken& stop)
        : path_(path), collector_(path, closing, reading_), stop_(stop) {}

    LineReading Run() {
        LinesOfText text;
        if (Load(text)) {
            Read(text);
        }
        if (!reading_.failure.empty() || reading_.isStopped) {
            reading_.lines.clear();
        }
        return std::move(reading_);
    }

private:
    bool Fail(std::string cause, std::int64_t line = 0) {
        ReadFailure failure = FailureOf(path_, std::move(cause));
        failure.line = line;
        reading_.failure = failure.Sentence();
        return false;
    }

    bool Load(LinesOfText& text) {
        std::error_code unknown;
        if (std::filesystem::is_directory(path_, unknown)) {
            return Fail("Is a directory");
        }
        TextSource source(path_);
        if (source.Failure()) {
            return Fail(source.Failure()->cause);
        }
        text.encoding = source.GuessEncoding();
        const bool isWide =
            text.encoding == TextEncoding::Utf16Little || text.encoding == TextEncoding::Utf16Big;
        if (ForeignFormatOf(source.Head(), isWide)) {
            return Fail("this is no text of lines; save them as a text of x y z, or as DXF, "
                        "GeoPackage, Shapefile, GeoJSON or KML");
        }
        source.Begin(text.encoding);
        std::string_view line;
        while (source.NextLine(line)) {
            text.text.append(line);
            text.ends.push_back(text.text.size());
            if (text.ends.size() % kProgressStride == 0 && !GoesOn(source)) {
                return false;
            }
        }
        return !source.Failure() || Fail(source.Failure()->cause, source.Failure()->line);
    }

    bool GoesOn(const TextSource& source) {
        const auto size = static_cast<double>(source.FileSize());
        reading_.isStopped =
            !stop_.GoesOn("read", size > 0 ? static_cast<double>(source.BytesTaken()) / size : 0.0);
        return !reading_.isStopped;
    }

    void Read(const LinesOfText& text) {
        const std::vector<std::string_view> lines = text.All();
        const LayoutOutcome found = LayoutOf(lines, text.encoding);
        if (!found.failure.empty()) {
            Fail(found.failure);
            return;
        }
        LineJoiner joiner(found.layout, text.encoding, collector_);
        for (std::size_t i = found.layout.headerLine; i < lines.size(); ++i) {
            const auto fileLine = static_cast<std::int64_t>(i) + 1;
            if (!joiner.Take(lines[i], fileLine)) {
                Fail("a line has heights at some vertices and none at others", fileLine);
                return;
            }
        }
        joiner.End();
        collector_.Finish();
        if (reading_.lines.empty()) {
            FailWithoutLines();
        }
    }

    // What was left out first tells why.
    void FailWithoutLines() {
        if (reading_.remarks.empty()) {
            Fail("there is no line in it with two places or more");
            return;
        }
        reading_.failure = reading_.remarks.front();
        reading_.failure.pop_back(); // the full stop
        reading_.failure += ", and no other line is there.";
    }

    const std::string& path_;
    LineReading reading_;
    LineCollector collector_;
    const StopToken& stop_;
};

} // namespace

LineReading ReadLineFile(const std::string& path, LineClosing closing, const StopToken& stop) {
    try {
        return LineFileReader(path, closing, stop).Run();
    } catch (const std::bad_alloc&) {
        LineReading reading;
        reading.failure = FailureOf(path, "there is not enough memory").Sentence();
        return reading;
    }
}

} // namespace terravo
