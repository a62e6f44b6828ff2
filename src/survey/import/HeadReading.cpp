#include "survey/import/HeadReading.h"

#include "survey/import/Records.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace terravo {
namespace {

constexpr std::size_t kMostLines = 400; // of the head that are looked at
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

// Headers have words where points have numbers; a line of numbers alone is never one.
void FindFirst(HeadReading& reading) {
    std::size_t most = 0;
    for (const HeadRecord& record : reading.records) {
        most = std::max(most, record.numbers);
    }
    const std::size_t enough = std::min(most, kCoordinates);
    while (reading.first < reading.records.size()) {
        const HeadRecord& record = reading.records[reading.first];
        if (record.numbers >= std::max<std::size_t>(enough, 1) ||
            record.numbers == record.fields.size()) {
            break;
        }
        ++reading.first;
    }
}

HeadReading Read(const std::vector<std::string_view>& lines, const ImportWish& wish,
                 FieldSeparator separator, char decimal) {
    HeadReading reading{separator, decimal, {}, 0, 0, 0, 0};
    for (std::size_t i = static_cast<std::size_t>(wish.skip.value_or(0)); i < lines.size(); ++i) {
        if (IsBlankLine(lines[i]) || IsCommentLine(lines[i], separator)) {
            continue;
        }
        HeadRecord record{static_cast<Index>(i + 1), {}, 0};
        SplitWithoutComment(lines[i], separator, decimal, record.fields);
        for (const std::string_view field : record.fields) {
            record.numbers += NumberOf(field, decimal) ? 1 : 0;
        }
        reading.records.push_back(std::move(record));
    }
    if (!wish.skip) {
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
// more lines alike; then the one tried first.
bool IsBetter(const HeadReading& reading, const HeadReading& than) {
    const std::size_t enough = std::min(reading.numbers, kCoordinates);
    const std::size_t thanEnough = std::min(than.numbers, kCoordinates);
    constexpr double kSame = 1e-9;
    if (enough == thanEnough && reading.separator == than.separator &&
        reading.numbers != than.numbers) {
        return reading.numbers > than.numbers;
    }
    return enough != thanEnough ? enough > thanEnough : reading.agreement > than.agreement + kSame;
}

} // namespace

std::vector<std::string_view> LinesOf(std::string_view text, bool isAll) {
    std::vector<std::string_view> lines;
    while (!text.empty() && lines.size() < kMostLines) {
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
