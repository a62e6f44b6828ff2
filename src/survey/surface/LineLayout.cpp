#include "survey/surface/LineLayout.h"

#include "survey/import/ColumnNames.h"
#include "survey/import/Records.h"

#include <algorithm>
#include <array>

namespace terravo {
namespace {

constexpr std::size_t kMostLooked = 1000; // lines

constexpr std::array kSeparators{FieldSeparator::Comma, FieldSeparator::Semicolon,
                                 FieldSeparator::Tab, FieldSeparator::Bar, FieldSeparator::Blank};

// The place of the only column with a role.
std::optional<std::size_t> OnlyPlace(const std::vector<ColumnRole>& columns, ColumnRole role) {
    const auto found = std::find(columns.begin(), columns.end(), role);
    return std::count(columns.begin(), columns.end(), role) == 1
               ? std::optional(static_cast<std::size_t>(found - columns.begin()))
               : std::nullopt;
}

bool IsNumber(std::string_view field) {
    return NumberOf(field, '.') || NumberOf(field, ',');
}

bool IsAxisLetter(std::string_view field) {
    return field.size() == 1 && std::string_view("xyXY").find(field[0]) != std::string_view::npos;
}

// Takes a first line of column names; what is wrong with it.
std::string TakeHeader(const std::vector<std::string_view>& fields, LineLayout& layout) {
    const std::vector<ColumnRole> columns = ReadHeader(fields).columns;
    layout.x = *OnlyPlace(columns, ColumnRole::Easting);
    layout.y = *OnlyPlace(columns, ColumnRole::Northing);
    layout.z = OnlyPlace(columns, ColumnRole::Height);
    layout.name = LineColumn(fields);
    if (layout.y < layout.x && IsAxisLetter(fields[layout.x]) && IsAxisLetter(fields[layout.y])) {
        return "y before x has two meanings; name the columns easting and northing";
    }
    const auto count = std::count(columns.begin(), columns.end(), ColumnRole::Height);
    if (count > 1) {
        return "more than one column is named as a height";
    }
    const bool hasLabels = std::any_of(columns.begin(), columns.end(), [](ColumnRole role) {
        return role == ColumnRole::Name || role == ColumnRole::Code;
    });
    return hasLabels && !layout.name
               ? "the columns are those of points; one named \"line\" would say which line a "
                 "vertex belongs to"
               : "";
}

bool NamesCoordinates(const std::vector<std::string_view>& fields) {
    if (std::any_of(fields.begin(), fields.end(), IsNumber)) {
        return false;
    }
    const std::vector<ColumnRole> columns = ReadHeader(fields).columns;
    return OnlyPlace(columns, ColumnRole::Easting) && OnlyPlace(columns, ColumnRole::Northing);
}

bool HasData(std::string_view line, FieldSeparator separator) {
    return !IsBlankLine(line) && !IsCommentLine(line, separator);
}

// The header, if the first line with data is one.
std::string FindHeader(const std::vector<std::string_view>& lines, TextEncoding encoding,
                       LineLayout& layout) {
    const auto first = std::find_if(lines.begin(), lines.end(), [](std::string_view line) {
        return HasData(line, FieldSeparator::Blank);
    });
    if (first == lines.end()) {
        return "there are no lines in it";
    }
    const std::string line = LabelText(*first, encoding);
    std::vector<std::string_view> fields;
    for (const FieldSeparator separator : kSeparators) {
        SplitRecord(line, separator, fields);
        if (NamesCoordinates(fields)) {
            layout.headerLine = static_cast<std::size_t>(first - lines.begin()) + 1;
            return TakeHeader(fields, layout);
        }
    }
    return {};
}

// Vertices of the lines at the top, read in one way.
struct Trial {
    LineLayout layout;
    std::size_t vertices = 0;
    std::vector<double> numbers;
    bool mayDivideThousands = true; // every comma in them
};

// "1,234" may be 1.234 or 1234.
bool MayDivideThousands(std::string_view field) {
    const std::size_t comma = field.find(',');
    return comma == std::string_view::npos ||
           (comma >= 1 && comma <= 4 && field.size() - comma == 4 &&
            field.find_first_of(",eEdD", comma + 1) == std::string_view::npos);
}

void Try(const std::vector<std::string_view>& fields, Trial& trial) {
    const LineLayout& layout = trial.layout;
    const bool fits = layout.headerLine > 0 ? fields.size() >= layout.FewestFields()
                                            : fields.size() == 2 || fields.size() == 3;
    if (!fits) {
        return;
    }
    const auto x = NumberOf(fields[layout.x], layout.decimal);
    const auto y = NumberOf(fields[layout.y], layout.decimal);
    const bool hasZ = layout.z && *layout.z < fields.size();
    const auto z = hasZ ? NumberOf(fields[*layout.z], layout.decimal) : std::nullopt;
    if (!x || !y || (hasZ && !z && !IsVoid(fields[*layout.z], layout.decimal, {}))) {
        return;
    }
    ++trial.vertices;
    trial.numbers.insert(trial.numbers.end(), {*x, *y, z.value_or(0)});
    for (const std::size_t column : {layout.x, layout.y, layout.z.value_or(layout.x)}) {
        trial.mayDivideThousands = trial.mayDivideThousands &&
                                   (column >= fields.size() || MayDivideThousands(fields[column]));
    }
}

Trial TryAll(const std::vector<std::string_view>& lines, const LineLayout& layout) {
    Trial trial{layout, 0, {}, true};
    std::vector<std::string_view> fields;
    std::size_t looked = 0;
    for (std::size_t i = layout.headerLine; i < lines.size() && looked < kMostLooked; ++i) {
        if (HasData(lines[i], layout.separator)) {
            SplitWithoutComment(lines[i], layout.separator, layout.decimal, fields);
            Try(fields, trial);
            ++looked;
        }
    }
    return trial;
}

bool HasComma(const std::vector<std::string_view>& lines, const LineLayout& layout) {
    return std::any_of(
        lines.begin() + static_cast<std::ptrdiff_t>(layout.headerLine), lines.end(),
        [](std::string_view line) { return line.find(',') != std::string_view::npos; });
}

} // namespace

std::size_t LineLayout::FewestFields() const {
    return std::max({x, y, headerLine > 0 ? z.value_or(0) : 0, name.value_or(0)}) + 1;
}

LayoutOutcome LayoutOf(const std::vector<std::string_view>& lines, TextEncoding encoding) {
    constexpr const char* kDoubt =
        "the commas may be decimal signs or divide something else; write "
        "decimal points, or semicolons between the columns";
    LayoutOutcome outcome;
    LineLayout layout;
    outcome.failure = FindHeader(lines, encoding, layout);
    if (!outcome.failure.empty()) {
        return outcome;
    }
    Trial best{layout, 0, {}, true};
    bool isDoubtful = false;
    for (const FieldSeparator separator : kSeparators) {
        for (const char decimal : {'.', ','}) {
            if (decimal == ',' &&
                (separator == FieldSeparator::Comma || !HasComma(lines, layout))) {
                continue;
            }
            layout.separator = separator;
            layout.decimal = decimal;
            Trial trial = TryAll(lines, layout);
            if (trial.vertices > best.vertices) {
                best = std::move(trial);
                isDoubtful = false;
            } else if (trial.vertices == best.vertices && trial.vertices > 0) {
                isDoubtful = isDoubtful || trial.numbers != best.numbers;
            }
        }
    }
    outcome.layout = best.layout;
    if (best.vertices == 0) {
        outcome.failure = "no line of it is a vertex: x y z or x y";
    } else if (isDoubtful || (best.layout.decimal == ',' && best.mayDivideThousands)) {
        outcome.failure = kDoubt;
    }
    return outcome;
}

} // namespace terravo
