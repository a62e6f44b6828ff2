#include "app/settings/RecentFiles.h"

#include "util/PathText.h"

#include <algorithm>
#include <utility>

namespace terravo {
namespace {

std::string UpperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return text;
}

} // namespace

void RecentFiles::Add(const std::string& path, std::size_t limit) {
    if (path.empty() || limit == 0) {
        return;
    }
    auto place = std::find_if(paths_.begin(), paths_.end(),
                              [wanted = UpperCase(path)](const std::string& entry) {
                                  return UpperCase(entry) == wanted;
                              });
    if (place == paths_.end()) {
        if (paths_.size() < std::min(limit, kHighestLimit)) {
            paths_.emplace_back();
        }
        place = paths_.end() - 1;
    }
    std::string newest = path; // the argument may be an entry of the list
    std::rotate(paths_.begin(), place, place + 1);
    paths_.front() = std::move(newest);
}

std::string RecentFiles::CaptionOf(std::size_t k) const {
    return "&" + std::to_string(k) + " " + paths_.at(k - 1);
}

void RecentFiles::Load(const SettingsStore& store, const std::string& section, std::size_t limit,
                       bool dropMissing) {
    for (std::size_t i = limit; i >= 1; --i) {
        const std::string path = store.Get(section, std::to_string(i)).value_or("");
        if (!dropMissing || FileExists(path)) {
            Add(path, limit);
        }
    }
}

void RecentFiles::Save(SettingsStore& store, const std::string& section) const {
    for (std::size_t i = 0; i < paths_.size(); ++i) {
        store.Set(section, std::to_string(i + 1), paths_[i]);
    }
}

} // namespace terravo
