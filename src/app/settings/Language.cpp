#include "app/settings/Language.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace terravo {

std::string LanguageFileName(const std::string& prefix) {
    return prefix + "_p.trl";
}

TextTable LoadTextTable(const std::string& path) {
    TextTable texts = ReadSmallFile(path);
    if (!texts.empty() && texts.front().starts_with("\xEF\xBB\xBF")) {
        texts.front().erase(0, 3);
    }
    return texts;
}

// Looks before it opens: opening a pipe waits for a writer, who may never come.
std::vector<std::string> ReadSmallFile(const std::string& path) {
    namespace fs = std::filesystem;
    constexpr std::uintmax_t kMostBytes = std::uintmax_t{1} << 20;
    std::vector<std::string> lines;
    std::error_code error;
    // The system would end such a path at the NUL and open another file.
    const bool namesNoFile = path.find('\0') != std::string::npos;
    if (namesNoFile || !fs::is_regular_file(path, error) ||
        fs::file_size(path, error) > kMostBytes) {
        return lines;
    }
    std::ifstream file(path, std::ios::binary);
    std::string line;
    while (std::getline(file, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
    }
    return lines;
}

} // namespace terravo
