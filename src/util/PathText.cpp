#include "util/PathText.h"

#include <filesystem>
#include <system_error>

namespace terravo {

PathParts SplitPath(const std::string& path) {
    PathParts parts;
    const std::size_t separator = path.find_last_of("\\/");
    const std::size_t nameStart = separator == std::string::npos ? 0 : separator + 1;
    parts.folder = path.substr(0, nameStart);
    parts.name = path.substr(nameStart);
    const std::size_t dot = path.find('.');
    if (dot != std::string::npos) {
        parts.extension = path.substr(dot);
    }
    parts.exists = FileExists(path);
    return parts;
}

std::string NameWithoutExtension(const std::string& name) {
    const std::size_t point = name.rfind('.');
    return point == std::string::npos || point == 0 ? name : name.substr(0, point);
}

std::string AbsolutePath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

bool FileExists(const std::string& path) {
    std::error_code error;
    static_cast<void>(std::filesystem::file_size(path, error));
    return !error;
}

} // namespace terravo
