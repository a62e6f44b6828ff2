#include "survey/import/HeadReading.h"

#include "survey/import/Records.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace terravo {
namespace {

constexpr std::size_t kMostRecords = 400; // of the head that are looked at
constexpr std::size_t kCoordinates = 3;

std::size_t MostFrequent(const HeadReading& reading, std::size_t (*valueOf)(const HeadRecord&)) {
    std::map<std::size_t, std::size_t> times;
    for (std::size_t i = reading.first; i < reading.records.size(); ++i) {
        ++times[valueOf(reading.records[i])];
    }
    const auto most =
        std::max_element(times.begin(), times.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == times.end() ? 0 : most->first;
}

std::ptrdiff_t CountWords(const HeadRecord& record) {
    return std::count_if(record.fields.begin(), record.fields.end(), [](std::string_view field) {
        return !IsVoid(field, '.', {}) && std::any_of(field.begin(), field.end(), [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                   static_cast<unsigned char>(c) >= 0x80U;
        });
    });
}

// A line of column names or units has words and no number, a title at most one number and not the
// form of a record. Everything else is a record, if a damaged one: no point is lost unseen.
void FindFirst(HeadReading& reading) {
    while (reading.first < reading.records.size()) {
        const HeadRecord& record = reading.records[reading.first];
        const std::ptrdiff_t words = CountWords(record);
        const bool hasNoForm = record.fields.size() != reading.fieldCount ||
                               (words > 1 && reading.numbers == reading.fieldCount);
        const bool isTitle = record.numbers == 1 && hasNoForm;
        if (words == 0 || (record.numbers > 0 && !isTitle)) {
            break;
        }
        ++reading.first;
    }
}

// The lines from one on that are a record, as one text.
std::string_view RecordFrom(const std::vector<std::string_view>& lines, std::size_t first,
                            FieldSeparator separator, char decimal) {
    const char* const begin = lines[first].data();
    for (std::size_t i = first; i < lines.size() && i < first + kMostLinesOfRecord; ++i) {
        const char* const end = lines[i].data() + lines[i].size();
        const std::string_view text(begin, static_cast<std::size_t>(end - begin));
        const Quotes quotes =
            QuotesOf(WithoutComment(text, separator, decimal), separator, decimal);
        if (quotes == Quotes::Closed) {
            return text;
        }
        if (quotes != Quotes::Open) {
            break;
        }
    }
    return lines[first];
}

HeadReading Read(const std::vector<std::string_view>& lines, const ImportWish& wish,
                 FieldSeparator separator, char decimal) {
    HeadReading reading{separator, decimal, {}, {}, 0, 0, 0, 0};
    const auto skipped = static_cast<std::size_t>(wish.skip.value_or(0));
    for (std::size_t i = 0; i < lines.size() && reading.records.size() < kMostRecords; ++i) {
        if (IsBlankLine(lines[i])) {
            continue;
        }
        if (IsCommentLine(lines[i], separator)) {
            if (reading.records.empty()) {
                reading.comments.push_back(lines[i]);
            }
            continue;
        }
        std::string_view text = lines[i];
        if (text.find('"') != std::string_view::npos) {
            text = RecordFrom(lines, i, separator, decimal);
            while (lines[i].data() + lines[i].size() < text.data() + text.size()) {
                ++i;
            }
        }
        HeadRecord record{static_cast<Index>(i + 1), {}, 0, text};
        SplitWithoutComment(text, separator, decimal, record.fields);
        for (const std::string_view field : record.fields) {
            record.numbers += NumberOf(field, decimal) ? 1 : 0;
        }
        reading.records.push_back(std::move(record));
        reading.first = i < skipped ? reading.records.size() : reading.first;
    }
    if (!wish.skip) {
        reading.fieldCount =
            MostFrequent(reading, [](const HeadRecord& r) { return r.fields.size(); });
        reading.numbers = MostFrequent(reading, [](const HeadRecord& r) { return r.numbers; });
        FindFirst(reading);
    }
    reading.fieldCount = MostFrequent(reading, [](const HeadRecord& r) { return r.fields.size(); });
    reading.numbers = MostFrequent(reading, [](const HeadRecord& r) { return r.numbers; });
    std::size_t agreeing = 0;
    for (std::size_t i = reading.first; i < reading.records.size(); ++i) {
        const HeadRecord& record = reading.records[i];
        agreeing += record.numbers == reading.numbers ? 1 : 0;
    }
    const std::size_t points = reading.records.size() - reading.first;
    reading.agreement =
        points == 0 ? 0 : static_cast<double>(agreeing) / static_cast<double>(points);
    return reading;
}

// Better: three numbers at least; then, of two decimal signs, the one that makes more numbers; then
// more lines alike; then nothing but numbers; then the one tried first.
bool IsBetter(const HeadReading& reading, const HeadReading& than) {
    const std::size_t enough = std::min(reading.numbers, kCoordinates);
    const std::size_t thanEnough = std::min(than.numbers, kCoordinates);
    constexpr double kSame = 1e-9;
    if (enough == thanEnough && reading.separator == than.separator &&
        reading.numbers != than.numbers) {
        return reading.numbers > than.numbers;
    }
    if (enough != thanEnough) {
        return enough > thanEnough;
    }
    if (reading.agreement > than.agreement + kSame || than.agreement > reading.agreement + kSame) {
        return reading.agreement > than.agreement;
    }
    return reading.numbers == reading.fieldCount && than.numbers != than.fieldCount;
}

} // namespace

std::vector<std::string_view> LinesOf(std::string_view text, bool isAll) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of("\r\n");
        if (end == std::string_view::npos) {
            if (isAll) {
                lines.push_back(text);
            }
            break;
        }
        lines.push_back(text.substr(0, end));
        const bool isPair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
        text.remove_prefix(end + (isPair ? 2 : 1));
    }
    return lines;
}

HeadReading BestReading(const std::vector<std::string_view>& lines, const ImportWish& wish) {
    std::optional<HeadReading> best;
    const auto has = [&lines](char wanted) {
        return std::any_of(lines.begin(), lines.end(), [wanted](std::string_view line) {
            return line.find(wanted) != std::string_view::npos;
        });
    };
    const bool hasQuotes = has('"');
    const bool hasCommas = has(',');
    for (const FieldSeparator separator :
         {FieldSeparator::Tab, FieldSeparator::Semicolon, FieldSeparator::Bar,
          FieldSeparator::Comma, FieldSeparator::Blank}) {
        for (const char decimal : {'.', ','}) {
            // Quotes can hold a number with a comma together.
            const bool clashes = separator == FieldSeparator::Comma && decimal == ',' && !hasQuotes;
            if (wish.separator.value_or(separator) != separator ||
                wish.decimal.value_or(decimal) != decimal || (clashes && !wish.decimal) ||
                (decimal == ',' && !hasCommas && !wish.decimal) ||
                (separator != FieldSeparator::Blank && !has(CharacterOf(separator)) &&
                 !wish.separator)) {
                continue;
            }
            HeadReading reading = Read(lines, wish, separator, decimal);
            if (!best || IsBetter(reading, *best)) {
                best = std::move(reading);
            }
        }
    }
    return *std::move(best);
}

} // namespace terravo
