// A private folder for one test, removed at its end.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace terravo::test {

class TemporaryFolder {
public:
    TemporaryFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("terravo-test-" + std::to_string(std::random_device{}()))) {
        std::filesystem::create_directories(path_);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    /// The folder as text, ending in a separator.
    [[nodiscard]] std::string Path() const { return path_.string() + "/"; }
    [[nodiscard]] std::string File(const std::string& name) const { return Path() + name; }

    /// Writes a file and returns its path.
    [[nodiscard]] std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
        return File(name);
    }
    [[nodiscard]] std::string Read(const std::string& name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// Names of everything in the folder.
    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

private:
    std::filesystem::path path_;
};

} // namespace terravo::test
