#include "export/vector/LandXmlNames.h"

#include "export/vector/CleanText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
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

std::string CleanNameOf(const VectorContent& content, Index point) {
    std::string name = content.NameOf(point);
    return IsCleanText(name) ? name : CleanText(name);
}

// The names of all points, found by their hashes: a sorted list of these takes a fraction of the
// time that a set of texts takes.
class NameIndex {
public:
    explicit NameIndex(const VectorContent& content) : content_(content) {
        const auto count = static_cast<Index>(content.PointCount());
        keys_.reserve(content.PointCount());
        for (Index point = 1; point <= count; ++point) {
            const std::string name = content.NameOf(point);
            if (IsCleanText(name)) {
                keys_.emplace_back(HashOf(name), point);
            } else {
                keys_.emplace_back(HashOf(CleanText(name)), point);
                unclean_.push_back(point);
            }
        }
        std::sort(keys_.begin(), keys_.end());
    }

    [[nodiscard]] const std::vector<Index>& Unclean() const { return unclean_; }

    [[nodiscard]] bool Holds(const std::string& name) const {
        const Key key(HashOf(name), 0);
        for (auto at = std::lower_bound(keys_.begin(), keys_.end(), key);
             at != keys_.end() && at->first == key.first; ++at) {
            if (CleanNameOf(content_, at->second) == name) {
                return true;
            }
        }
        return false;
    }

    // Points whose name a point before them has, ascending.
    [[nodiscard]] std::vector<Index> Repeats() const {
        std::vector<Index> repeats;
        for (auto at = keys_.begin(); at != keys_.end();) {
            const auto end = std::find_if(at + 1, keys_.end(),
                                          [at](const Key& key) { return key.first != at->first; });
            if (end - at > 1) {
                AddRepeats(at, end, repeats);
            }
            at = end;
        }
        std::sort(repeats.begin(), repeats.end());
        return repeats;
    }

private:
    using Key = std::pair<std::size_t, Index>; // hash and point
    using Place = std::vector<Key>::const_iterator;

    static std::size_t HashOf(const std::string& name) { return std::hash<std::string>()(name); }

    // Of points whose names have one hash.
    void AddRepeats(Place at, Place end, std::vector<Index>& repeats) const {
        std::unordered_set<std::string> seen;
        for (; at != end; ++at) {
            if (!seen.insert(CleanNameOf(content_, at->second)).second) {
                repeats.push_back(at->second);
            }
        }
    }

    const VectorContent& content_;
    std::vector<Key> keys_;
    std::vector<Index> unclean_;
};

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
    const NameIndex given(content_);
    for (const Index point : given.Unclean()) {
        changed_[point] = CleanNameOf(content_, point);
    }
    std::unordered_set<std::string> fresh;
    std::unordered_map<std::string, std::int64_t> last;
    for (const Index point : given.Repeats()) {
        const std::string name = CleanNameOf(content_, point);
        std::int64_t& number = last.try_emplace(name, 1).first->second;
        std::string made;
        do {
            made = name + "_" + std::to_string(++number);
        } while (given.Holds(made) || !fresh.insert(made).second);
        changed_[point] = std::move(made);
    }
}

} // namespace terravo
