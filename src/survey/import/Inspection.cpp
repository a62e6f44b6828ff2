#include "survey/import/Inspection.h"

#include "survey/import/ColumnNames.h"
#include "survey/import/FileKind.h"
#include "survey/import/HeadReading.h"
#include "survey/import/Records.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace terravo {
namespace {

using enum ColumnRole;

constexpr std::size_t kCoordinates = 3;

// What the records hold, column by column.
struct Column {
    std::size_t numbers = 0;
    std::size_t voids = 0; // that are no numbers
    std::size_t texts = 0;
    std::string_view text; // the first of them
    bool counts = true;    // whole numbers that grow by one
    bool small = true;     // whole numbers below 1000
    std::optional<double> last;

    // A few texts among numbers are faults, which the reading names one by one.
    [[nodiscard]] bool IsNumeric() const {
        constexpr std::size_t kFew = 5;
        return numbers > 0 && numbers >= (numbers + texts < kFew ? 1 : 4) * texts;
    }
    [[nodiscard]] bool IsEmpty() const { return numbers == 0 && texts == 0; }
};

void Include(Column& column, std::string_view field, char decimal,
             const std::vector<std::string>& voids) {
    const std::optional<double> number = NumberOf(field, decimal);
    if (!number) {
        const bool isText = !IsVoid(field, decimal, voids);
        ++(isText ? column.texts : column.voids);
        column.text = isText && column.text.empty() ? field : column.text;
        return;
    }
    constexpr double kMostSmall = 1000;
    const bool isWhole = std::fabs(*number - std::floor(*number)) <= 0;
    ++column.numbers;
    column.counts =
        column.counts && isWhole && (!column.last || std::fabs(*number - *column.last - 1) <= 0);
    column.small = column.small && isWhole && *number >= 0 && *number < kMostSmall;
    column.last = number;
}

// ReadPoints takes such a file.
void DoubtOneLine(std::size_t numbers, Inspection& inspection) {
    inspection.certain = false;
    inspection.doubt = "all numbers stand on one line";
    inspection.doubtKind = DoubtKind::ManyNumbers;
    inspection.doubtCounts = {numbers, 0};
    inspection.hasNumbers = true;
    inspection.mayBeFreeList = true;
}

class Judge {
public:
    /// @param isAll  the reading is that of the whole file.
    Judge(const HeadReading& reading, bool isAll, const ImportWish& wish, Inspection& inspection)
        : reading_(reading), isAll_(isAll), wish_(wish), result_(inspection) {}

    void Run();

private:
    void LookAtColumns();
    [[nodiscard]] std::vector<std::size_t> NumericColumns() const;
    [[nodiscard]] std::optional<NamedHeader> Header() const;
    void TakeHeader(const NamedHeader& header);
    void TakeWrittenOrder(const std::vector<std::size_t>& numeric);
    void ListCandidates(const std::vector<std::size_t>& numeric);
    void Propose(const std::vector<std::size_t>& numeric, std::initializer_list<ColumnRole> roles);
    [[nodiscard]] bool CommasMayDivideThousands() const;
    [[nodiscard]] bool EachFieldMayBeThree() const;
    [[nodiscard]] bool IsOneLine(std::size_t numbers) const;
    void Doubt(DoubtKind kind, std::string sentence, std::size_t count = 0, std::size_t other = 0);

    const HeadReading& reading_;
    bool isAll_;
    const ImportWish& wish_;
    Inspection& result_;
    std::vector<Column> columns_;
};

void Judge::Doubt(DoubtKind kind, std::string sentence, std::size_t count, std::size_t other) {
    result_.certain = false;
    if (result_.doubt.empty()) {
        result_.doubt = std::move(sentence);
        result_.doubtKind = kind;
        result_.doubtCounts = {count, other};
    }
}

void Judge::LookAtColumns() {
    for (std::size_t i = reading_.first; i < reading_.records.size(); ++i) {
        const HeadRecord& record = reading_.records[i];
        if (record.fields.size() != reading_.fieldCount) {
            continue;
        }
        columns_.resize(reading_.fieldCount);
        for (std::size_t k = 0; k < record.fields.size(); ++k) {
            Include(columns_[k], record.fields[k], reading_.decimal, wish_.voids);
        }
    }
}

std::vector<std::size_t> Judge::NumericColumns() const {
    std::vector<std::size_t> numeric;
    for (std::size_t k = 0; k < columns_.size(); ++k) {
        if (columns_[k].IsNumeric()) {
            numeric.push_back(k);
        }
    }
    return numeric;
}

// The line of names next above the points, one in a comment if there is no other. Two that
// contradict each other are not complete.
std::optional<NamedHeader> Judge::Header() const {
    std::optional<NamedHeader> header;
    const auto take = [&header](NamedHeader found) {
        if (found.known < 2) {
            return;
        }
        if (!header) {
            header = std::move(found);
        } else if (found.complete && found.columns != header->columns) {
            header->complete = false;
        }
    };
    for (std::size_t i = reading_.first; i-- > 0;) {
        const HeadRecord& record = reading_.records[i];
        if (record.numbers == 0) {
            take(ReadHeader(record.fields, record.text));
        }
    }
    for (auto comment = reading_.comments.rbegin(); comment != reading_.comments.rend() && !header;
         ++comment) {
        const std::size_t name = comment->find_first_not_of("#;!*%/ \t");
        if (name != std::string_view::npos) {
            take(ReadHeader({}, comment->substr(name)));
        }
    }
    return header;
}

// "1,234" may be 1.234 or 1234 where no number says otherwise.
bool Judge::CommasMayDivideThousands() const {
    bool hasComma = false;
    for (std::size_t i = reading_.first; i < reading_.records.size(); ++i) {
        for (const std::string_view field : reading_.records[i].fields) {
            const std::size_t comma = field.find(',');
            if (comma == std::string_view::npos || !NumberOf(field, ',')) {
                continue;
            }
            hasComma = true;
            const std::size_t digits = field.find_first_of("0123456789");
            if (comma - digits > 3 || field.size() - comma != 4 || field[digits] == '0') {
                return false;
            }
        }
    }
    return hasComma;
}

// Groups of three digits at both commas of every field: three numbers each, or one?
bool Judge::EachFieldMayBeThree() const {
    const auto isThree = [this](std::string_view field) {
        return std::count(field.begin(), field.end(), ',') == 2 &&
               NumberOf(field, reading_.decimal);
    };
    const auto first = reading_.records.begin() + static_cast<std::ptrdiff_t>(reading_.first);
    return std::all_of(first, reading_.records.end(), [&isThree](const HeadRecord& record) {
        return std::all_of(record.fields.begin(), record.fields.end(), isThree);
    });
}

// One record of very many numbers: a list without line ends.
bool Judge::IsOneLine(std::size_t numbers) const {
    constexpr std::size_t kFewest = 9;
    return isAll_ && reading_.records.size() == 1 && numbers >= kFewest && numbers % 3 == 0 &&
           result_.mayBeFreeList;
}

void Judge::TakeHeader(const NamedHeader& header) {
    ImportPlan& plan = result_.plan;
    plan.columns = header.columns;
    plan.fieldCount = reading_.fieldCount;
    // A description at the end may have blanks.
    plan.codeTakesRest = plan.columns.back() == Code;
    if (plan.codeTakesRest) {
        plan.fieldCount = 0;
    }
    result_.candidates.insert(result_.candidates.begin(), plan.columns);
    result_.certain = true;
    for (std::size_t k = 0; k < plan.columns.size(); ++k) {
        const bool isBlank = plan.columns[k] == Height && k < columns_.size() &&
                             columns_[k].IsEmpty(); // so far no point has one
        if (IsCoordinate(plan.columns[k]) && !isBlank &&
            (k >= columns_.size() || !columns_[k].IsNumeric())) {
            if (plan.columns[k] == Height && k < columns_.size()) {
                result_.heightText = columns_[k].text;
            }
            Doubt(DoubtKind::NamedText,
                  "the column that is named as a coordinate does not hold numbers alone");
        }
    }
    if (plan.columns.size() != reading_.fieldCount && !plan.codeTakesRest) {
        Doubt(DoubtKind::HeaderCount,
              "the line of column names has " + std::to_string(plan.columns.size()) +
                  " fields where the records have " + std::to_string(reading_.fieldCount),
              plan.columns.size(), reading_.fieldCount);
    }
}

// Exactly three columns of numbers, in the order in which they are written.
void Judge::TakeWrittenOrder(const std::vector<std::size_t>& numeric) {
    ImportPlan& plan = result_.plan;
    result_.certain = true;
    plan.columns.assign(columns_.size(), Ignored);
    plan.columns[numeric[0]] = Easting;
    plan.columns[numeric[1]] = Northing;
    plan.columns[numeric[2]] = Height;
    plan.othersAreText = true;
    plan.fieldCount = reading_.fieldCount;
    for (std::size_t k = numeric[0]; k < numeric[2]; ++k) {
        if (columns_[k].texts > 0 && !columns_[k].IsNumeric()) {
            Doubt(DoubtKind::ManyNumbers, "a text stands between the columns of numbers", 3);
        }
    }
    for (std::size_t k = 0; k < numeric[0]; ++k) {
        if (columns_[k].texts > 0) {
            plan.columns[k] = Name;
            break;
        }
    }
    for (std::size_t k = numeric[2] + 1; k < columns_.size(); ++k) {
        if (columns_[k].texts > 0) {
            plan.columns[k] = Code;
            plan.codeTakesRest = reading_.separator == FieldSeparator::Blank;
            plan.columns.resize(plan.codeTakesRest ? k + 1 : plan.columns.size());
            plan.fieldCount = plan.codeTakesRest ? 0 : plan.fieldCount;
            break;
        }
    }
    result_.candidates.push_back(plan.columns);
}

// Roles for the columns of numbers, and what texts there are as name and code.
void Judge::Propose(const std::vector<std::size_t>& numeric,
                    std::initializer_list<ColumnRole> roles) {
    std::vector<ColumnRole> columns(columns_.size(), Ignored);
    std::size_t k = 0;
    for (const ColumnRole role : roles) {
        if (k < numeric.size()) {
            columns[numeric[k++]] = role;
        }
    }
    const auto has = [&columns](ColumnRole role) {
        return std::find(columns.begin(), columns.end(), role) != columns.end();
    };
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns_[i].texts == 0) {
            continue;
        }
        const ColumnRole role = i < numeric[0] ? Name : Code;
        if (!has(role) && columns[i] == Ignored) {
            columns[i] = role;
        }
    }
    if (std::find(result_.candidates.begin(), result_.candidates.end(), columns) ==
        result_.candidates.end()) {
        result_.candidates.push_back(std::move(columns));
    }
}

void Judge::ListCandidates(const std::vector<std::size_t>& numeric) {
    if (numeric.size() < kCoordinates) {
        return;
    }
    const bool isNumbered = numeric.size() > kCoordinates && columns_[numeric[0]].counts;
    const bool hasText = std::any_of(columns_.begin() + static_cast<std::ptrdiff_t>(numeric.back()),
                                     columns_.end(), [](const Column& c) { return c.texts > 0; });
    if (isNumbered && hasText) {
        Propose(numeric, {Name, Northing, Easting, Height});
        Propose(numeric, {Name, Easting, Northing, Height});
    } else if (isNumbered) {
        Propose(numeric, {Name, Easting, Northing, Height});
        Propose(numeric, {Name, Northing, Easting, Height});
    }
    if (numeric.size() > kCoordinates && columns_[numeric.back()].small && !hasText) {
        Propose(numeric, {Easting, Northing, Height, Code});
    }
    Propose(numeric, {Easting, Northing, Height});
    if (numeric.size() > kCoordinates && !isNumbered) {
        Propose(numeric, {Name, Easting, Northing, Height});
        Propose(numeric, {Name, Northing, Easting, Height});
    }
    Propose(numeric, {Northing, Easting, Height});
}

void Judge::Run() {
    ImportPlan& plan = result_.plan;
    plan.separator = reading_.separator;
    plan.decimal = reading_.decimal;
    plan.headerLines =
        wish_.skip.value_or(reading_.first < reading_.records.size() && reading_.first > 0
                                ? reading_.records[reading_.first - 1].line
                                : 0);
    LookAtColumns();
    const std::vector<std::size_t> numeric = NumericColumns();
    if (reading_.first == reading_.records.size() || numeric.empty()) {
        result_.isEmpty = reading_.records.empty() && isAll_;
        Doubt(result_.isEmpty ? DoubtKind::NoRecord : DoubtKind::NoNumbers,
              result_.isEmpty ? "the file holds no record"
                              : "no line holds numbers that could be a point");
        return;
    }
    result_.hasNumbers = true;
    result_.mayBeFreeList =
        std::all_of(reading_.records.begin() + static_cast<std::ptrdiff_t>(reading_.first),
                    reading_.records.end(),
                    [](const HeadRecord& r) { return r.numbers == r.fields.size(); }) &&
        reading_.first == 0 && reading_.decimal == '.';
    if (IsOneLine(numeric.size())) {
        DoubtOneLine(numeric.size(), result_);
        return;
    }
    const std::optional<NamedHeader> header = Header();
    if (header && header->complete) {
        TakeHeader(*header);
    } else if (numeric.size() == kCoordinates) {
        TakeWrittenOrder(numeric);
        if (header && std::any_of(header->columns.begin(), header->columns.end(), IsCoordinate)) {
            Doubt(DoubtKind::Names,
                  "the names of the columns do not tell easting, northing and height apart");
        }
    }
    ListCandidates(numeric);
    if (result_.candidates.empty()) {
        for (const Column& column : columns_) {
            result_.heightText =
                column.numbers > 0 && column.texts > 0 ? column.text : result_.heightText;
        }
        Doubt(DoubtKind::TooFewNumbers,
              std::to_string(numeric.size()) +
                  (numeric.size() == 1 ? " column holds" : " columns hold") +
                  " numbers, and a point has three",
              numeric.size());
    } else if (plan.columns.empty()) {
        plan.columns = result_.candidates.front();
        plan.fieldCount = reading_.fieldCount;
        Doubt(DoubtKind::ManyNumbers, std::to_string(numeric.size()) + " columns hold numbers",
              numeric.size());
    }
    if (reading_.decimal == ',' && !wish_.decimal && CommasMayDivideThousands()) {
        Doubt(DoubtKind::CommaOfNumbers, "a comma may be the decimal sign or divide thousands");
    }
    if (reading_.decimal == '.' && EachFieldMayBeThree()) {
        Doubt(DoubtKind::ManyNumbers, "commas may part numbers or divide thousands",
              3 * reading_.fieldCount);
    }
}

GridFormat GridOf(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    text.remove_prefix(std::min(first, text.size()));
    if (text.starts_with("DSAA") && text.substr(4, 1).find_first_of(" \t\r\n") == 0) {
        return GridFormat::Surfer;
    }
    std::string word(text.substr(0, 6));
    std::transform(word.begin(), word.end(), word.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return word == "ncols " || word == "ncols\t" || word == "nrows " ? GridFormat::Esri
                                                                     : GridFormat::None;
}

bool IsUtf16(TextEncoding encoding) {
    return encoding == TextEncoding::Utf16Little || encoding == TextEncoding::Utf16Big;
}

// Which byte of UTF-16 comes first is told by the file.
TextEncoding EncodingOf(TextEncoding guess, const std::optional<TextEncoding>& wish) {
    const bool isTold = !wish || (IsUtf16(*wish) && IsUtf16(guess));
    return isTold ? guess : *wish;
}

// The columns that somebody has named, on records as the head has them.
void TakeWish(const std::vector<ColumnRole>& columns, const HeadReading& reading,
              ImportPlan& plan) {
    plan.columns = columns;
    plan.othersAreText = false;
    plan.codeTakesRest = columns.back() == Code;
    plan.fieldCount =
        plan.codeTakesRest || reading.fieldCount < columns.size() ? 0 : reading.fieldCount;
}

// Numbers that are parted by commas and blanks alone, as far as the text goes.
std::size_t CountOfList(std::string_view text) {
    constexpr std::string_view kParting = ", \t";
    std::size_t numbers = 0;
    for (std::size_t end = 0; (end = text.find_first_of(kParting)) != std::string_view::npos;) {
        const std::string_view field = text.substr(0, end);
        if (!field.empty() && !NumberOf(field, '.')) {
            return 0;
        }
        numbers += field.empty() ? 0 : 1;
        text.remove_prefix(end + 1);
    }
    return numbers;
}

// Where no record is whole because a line goes on beyond the head.
void RefuseLongLine(const std::string& path, std::string_view text, Index whole,
                    Inspection& inspection) {
    const std::size_t numbers = whole == 0 ? CountOfList(text) : 0;
    if (numbers > 0) {
        DoubtOneLine(numbers, inspection);
        return;
    }
    inspection.failure = FailureOf(path, "this line is longer than any record");
    inspection.failure->line = whole + 1;
}

} // namespace

Inspection Inspect(TextSource& source, const ImportWish& wish) {
    Inspection inspection;
    if (source.Failure()) {
        inspection.failure = source.Failure();
        return inspection;
    }
    ImportPlan& plan = inspection.plan;
    plan.encoding = EncodingOf(source.GuessEncoding(), wish.encoding);
    const bool isWide = IsUtf16(plan.encoding);
    if (const auto foreign = ForeignFormatOf(source.Head(), isWide); foreign && !wish.freeList) {
        inspection.failure = FailureOf(source.Path(), *foreign);
        return inspection;
    }
    source.Begin(plan.encoding);
    plan.freeList = wish.freeList;
    plan.voids = wish.voids;
    if (wish.freeList) {
        inspection.certain = true;
        return inspection;
    }
    const std::string_view text(source.Cursor(),
                                static_cast<std::size_t>(source.Limit() - source.Cursor()));
    inspection.grid = GridOf(text);
    if (inspection.grid != GridFormat::None) {
        plan.decimal = wish.decimal.value_or('.');
        inspection.certain = true;
        return inspection;
    }
    const std::vector<std::string_view> lines = LinesOf(text, source.HeadIsAll());
    if (lines.empty() && !source.HeadIsAll()) {
        RefuseLongLine(source.Path(), text, 0, inspection);
        return inspection;
    }
    const HeadReading reading = BestReading(lines, wish);
    Judge(reading, source.HeadIsAll(), wish, inspection).Run();
    const bool isCut =
        !source.HeadIsAll() && text.size() - text.find_last_of("\r\n") > text.size() / 2;
    if (isCut && !inspection.hasNumbers) {
        RefuseLongLine(source.Path(), text, static_cast<Index>(lines.size()), inspection);
        return inspection;
    }
    if (wish.columns) {
        TakeWish(*wish.columns, reading, plan);
        // Columns do not tell what a comma means.
        inspection.certain = inspection.doubtKind != DoubtKind::CommaOfNumbers;
        if (inspection.certain) {
            inspection.doubt.clear();
            inspection.doubtKind = DoubtKind::None;
        }
    }
    return inspection;
}

Inspection InspectPointFile(const std::string& path, const ImportWish& wish) {
    TextSource source(path);
    return Inspect(source, wish);
}

} // namespace terravo
