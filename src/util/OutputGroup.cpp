#include "util/OutputGroup.h"

#include "util/AppError.h"
#include "util/OutputFile.h"

#include <filesystem>
#include <system_error>

namespace terravo {

namespace fs = std::filesystem;

OutputGroup::~OutputGroup() {
    for (const Member& member : members_) {
        std::error_code ignored;
        fs::remove(member.writtenPath, ignored);
    }
}

std::string OutputGroup::NameFor(const std::string& path) {
    const OutputPlace place = PlaceFor(path);
    if (place.writtenPath != place.finalPath) {
        members_.push_back({path, place.finalPath, place.writtenPath});
    }
    return place.writtenPath;
}

std::string OutputGroup::WithFinalNames(std::string text) const {
    for (const Member& member : members_) {
        for (std::size_t at = 0; (at = text.find(member.writtenPath, at)) != std::string::npos;) {
            text.replace(at, member.writtenPath.size(), member.path);
            at += member.path.size();
        }
    }
    return text;
}

void OutputGroup::Commit() {
    while (!members_.empty()) {
        const Member& member = members_.back();
        std::error_code error;
        fs::rename(member.writtenPath, member.finalPath, error);
        if (error) {
            throw AppError(ErrorNumber::kDeviceIo, member.path,
                           member.path + ": " + error.message());
        }
        members_.pop_back();
    }
}

} // namespace terravo
