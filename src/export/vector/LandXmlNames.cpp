#include "export/vector/LandXmlNames.h"

#include "export/vector/CleanText.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace terravo {
namespace {

bool IsPlain(char c) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    const bool isAscii = static_cast<unsigned char>(c) < 0x80;
    return !isAscii || isLetter || (c >= '0' && c <= '9') || c == ' ' || c == '_' || c == '-';
}

std::string WithoutBlanksAround(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

} // namespace

std::string SurfaceNameOf(const VectorContent& content) {
    std::string name = CleanText(content.name);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !IsPlain(c); }, '_');
    name = WithoutBlanksAround(name);
    return name.empty() ? "Surface" : name;
}

PointNames::PointNames(const VectorContent& content)
    : content_(content),
      named_(content.parts.Has(VectorPart::Numbers) && content.pointLabels.HasLabels()) {
    if (named_) {
        MakeUnique();
    }
}

std::string PointNames::Of(Index point) const {
    if (!named_) {
        return std::to_string(point);
    }
    const auto changed = changed_.find(point);
    return changed == changed_.end() ? content_.NameOf(point) : changed->second;
}

// A name goes to the first point that has it; all of these are taken before any is made up.
void PointNames::MakeUnique() {
    std::unordered_set<std::string> taken;
    taken.reserve(content_.points.size());
    std::vector<std::pair<Index, std::string>> repeats;
    for (Index point = 1; point <= static_cast<Index>(content_.points.size()); ++point) {
        const std::string given = content_.NameOf(point);
        std::string name = CleanText(given);
        if (!taken.insert(name).second) {
            repeats.emplace_back(point, std::move(name));
        } else if (name != given) {
            changed_[point] = std::move(name);
        }
    }
    std::unordered_map<std::string, std::int64_t> last;
    for (const auto& [point, name] : repeats) {
        std::int64_t& number = last.try_emplace(name, 1).first->second;
        std::string fresh;
        do {
            fresh = name + "_" + std::to_string(++number);
        } while (!taken.insert(fresh).second);
        changed_[point] = std::move(fresh);
    }
}

} // namespace terravo
