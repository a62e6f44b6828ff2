#include "survey/import/ImportMemory.h"

#include "survey/import/ImportPreview.h"
#include "survey/import/Records.h"
#include "util/EscapedText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <vector>

namespace terravo {
namespace {

constexpr std::size_t kMostHeader = 200; // characters that tell one header from another
constexpr std::size_t kFieldsOfPlan = 9;
constexpr std::array<const char*, 4> kEncodings{"utf-8", "latin-1", "utf-16le", "utf-16be"};

template <class Number>
std::optional<Number> WholeNumber(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value)
                                                                    : std::nullopt;
}

// Of the voids each begins with a comma, so that none and an empty one differ.
std::string VoidsText(const std::vector<std::string>& voids) {
    std::string text;
    for (const std::string& one : voids) {
        text += "," + Escaped(one);
    }
    return text;
}

std::optional<std::vector<std::string>> VoidsFrom(std::string_view text) {
    std::vector<std::string> voids;
    if (text.empty()) {
        return voids;
    }
    for (const std::string_view part : Split(text.substr(1), ',')) {
        std::optional<std::string> one = Unescaped(part);
        if (!one) {
            return std::nullopt;
        }
        voids.push_back(*std::move(one));
    }
    return voids;
}

std::optional<bool> FlagFrom(std::string_view text) {
    return text == "1" || text == "0" ? std::optional(text == "1") : std::nullopt;
}

// 'n' where most records have a number, 't' a text, '-' nothing.
std::string KindsOf(const ImportPreview& preview, char decimal) {
    std::vector<std::array<std::size_t, 2>> counts(preview.usualFields); // numbers, texts
    for (const PreviewLine& line : preview.lines) {
        const bool isRecord = line.kind == LineKind::Point || line.kind == LineKind::NoHeight ||
                              line.kind == LineKind::Bad;
        if (!isRecord || line.fieldCount != preview.usualFields) {
            continue;
        }
        for (std::size_t k = 0; k < line.fields.size(); ++k) {
            if (NumberOf(line.fields[k], decimal)) {
                ++counts[k][0];
            } else if (!IsVoid(line.fields[k], decimal, {})) {
                ++counts[k][1];
            }
        }
    }
    std::string kinds;
    for (const auto& [numbers, texts] : counts) {
        kinds += numbers == 0 && texts == 0 ? '-' : numbers >= texts ? 'n' : 't';
    }
    return kinds;
}

std::string HeaderOf(const ImportPreview& preview) {
    std::string header;
    for (const PreviewLine& line : preview.lines) {
        if (line.kind == LineKind::Header) {
            header.clear();
            for (const std::string& field : line.fields) {
                header += field + "|";
            }
        }
    }
    return Escaped(std::string_view(header).substr(0, kMostHeader));
}

struct Entry {
    std::string plan;
    std::string shape;
    std::string path; // escaped

    [[nodiscard]] std::string Text() const { return plan + " " + shape + " " + path; }
};

std::vector<Entry> Entries(const SettingsStore& store) {
    std::vector<Entry> entries;
    for (std::size_t i = 1; i <= ImportMemory::kMost; ++i) {
        const auto text = store.Get(ImportMemory::kSection, std::to_string(i)).value_or("");
        const std::vector<std::string_view> parts = Split(text, ' ');
        if (parts.size() == 3) {
            entries.push_back(
                {std::string(parts[0]), std::string(parts[1]), std::string(parts[2])});
        }
    }
    return entries;
}

} // namespace

std::string TextOf(const ImportPlan& plan) {
    const auto flag = [](bool on) { return on ? "1;" : "0;"; };
    return std::string(plan.freeList ? "free" : NameOfColumns(plan.columns)) + ";" +
           kEncodings[static_cast<std::size_t>(plan.encoding)] + ";" + NameOf(plan.separator) +
           ";" + plan.decimal + ";" + std::to_string(plan.headerLines) + ";" +
           std::to_string(plan.fieldCount) + ";" + flag(plan.codeTakesRest) +
           flag(plan.othersAreText) + VoidsText(plan.voids);
}

std::optional<ImportPlan> PlanFromText(std::string_view text) {
    const std::vector<std::string_view> parts = Split(text, ';');
    if (parts.size() != kFieldsOfPlan) {
        return std::nullopt;
    }
    const bool freeList = parts[0] == "free";
    const auto columns = freeList ? std::vector<ColumnRole>() : ParseColumns(parts[0]);
    const auto* const encoding = std::find(kEncodings.begin(), kEncodings.end(), parts[1]);
    const auto separator = ParseSeparator(parts[2]);
    const auto headerLines = WholeNumber<Index>(parts[4]);
    const auto fieldCount = WholeNumber<std::size_t>(parts[5]);
    const auto codeTakesRest = FlagFrom(parts[6]);
    const auto othersAreText = FlagFrom(parts[7]);
    auto voids = VoidsFrom(parts[8]);
    if (!columns || encoding == kEncodings.end() || !separator ||
        (parts[3] != "." && parts[3] != ",") || !headerLines || *headerLines < 0 || !fieldCount ||
        !codeTakesRest || !othersAreText || !voids) {
        return std::nullopt;
    }
    return ImportPlan{
        freeList,       static_cast<TextEncoding>(std::distance(kEncodings.begin(), encoding)),
        *separator,     parts[3][0],
        *headerLines,   *columns,
        *codeTakesRest, *fieldCount,
        *othersAreText, *std::move(voids)};
}

std::string ShapeOf(const std::string& path, const Inspection& inspection) {
    const ImportPlan& plan = inspection.plan;
    const ImportPreview preview = PreviewOf(ReadHeadText(path, plan.encoding), plan);
    return std::string(NameOf(plan.separator)) + ";" + plan.decimal + ";" +
           std::to_string(plan.headerLines) + ";" + KindsOf(preview, plan.decimal) + ";" +
           HeaderOf(preview);
}

std::optional<ImportPlan> ImportMemory::Recall(const std::string& path,
                                               const Inspection& inspection) const {
    if (std::optional<ImportPlan> own = RecallOwn(path, inspection)) {
        return own;
    }
    const std::string shape = ShapeOf(path, inspection);
    for (const Entry& entry : Entries(store_)) {
        if (std::optional<ImportPlan> plan = PlanFromText(entry.plan);
            plan && entry.shape == shape) {
            plan->encoding = inspection.plan.encoding;
            return plan;
        }
    }
    return std::nullopt;
}

std::optional<ImportPlan> ImportMemory::RecallOwn(const std::string& path,
                                                  const Inspection& inspection) const {
    const std::string shape = ShapeOf(path, inspection);
    const std::string name = Escaped(path);
    for (const Entry& entry : Entries(store_)) {
        if (entry.path == name && entry.shape == shape) {
            return PlanFromText(entry.plan);
        }
    }
    return std::nullopt;
}

void ImportMemory::Remember(const std::string& path, const Inspection& inspection,
                            const ImportPlan& plan) {
    std::vector<Entry> entries = Entries(store_);
    const Entry newest{TextOf(plan), ShapeOf(path, inspection), Escaped(path)};
    std::erase_if(entries, [&newest](const Entry& entry) { return entry.path == newest.path; });
    entries.insert(entries.begin(), newest);
    for (std::size_t i = 0; i < std::min(entries.size(), kMost); ++i) {
        store_.Set(kSection, std::to_string(i + 1), entries[i].Text());
    }
}

} // namespace terravo
