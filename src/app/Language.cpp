#include "app/Language.h"

#include <fstream>

namespace terravo {

std::string LanguageFileName(const std::string& prefix) {
    return prefix + "_p.trl";
}

std::vector<std::string> LoadTextTable(const std::string& path) {
    std::vector<std::string> texts;
    std::ifstream file(path, std::ios::binary);
    std::string line;
    while (std::getline(file, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (texts.empty() && line.starts_with("\xEF\xBB\xBF")) {
            line.erase(0, 3);
        }
        texts.push_back(line);
    }
    return texts;
}

} // namespace terravo
