// The system's folders, all inside the private folder of one test.
//
// The application-data folder does not exist at first, as on a new machine; "program/supporto" is
// the shipped one.
#pragma once

#include "app/settings/Configuration.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <set>

namespace terravo {

struct FakeFolders : SystemFolders {
    test::TemporaryFolder root;
    std::set<std::string> othersFolders; // real folders that belong to another user

    FakeFolders() {
        std::filesystem::create_directories(root.File("tmp"));
        std::filesystem::create_directories(root.File("program/supporto"));
    }

    /// Writes a file below the root.
    void Put(const std::string& name, const std::string& bytes) const {
        static_cast<void>(root.Write(name, bytes));
    }

    [[nodiscard]] std::string TemporaryFolder() const override { return root.File("tmp"); }
    [[nodiscard]] std::string ApplicationDataFolder() const override {
        return root.File("home/data");
    }
    [[nodiscard]] std::string ProgramSupportFolder() const override {
        return root.File("program/supporto");
    }
    [[nodiscard]] FolderKind KindOf(const std::string& path) const override {
        const auto status = std::filesystem::symlink_status(path);
        if (!std::filesystem::exists(status)) {
            return FolderKind::Missing;
        }
        return std::filesystem::is_directory(status) && !othersFolders.contains(path)
                   ? FolderKind::OwnFolder
                   : FolderKind::Foreign;
    }
    void MakePrivate(const std::string& path) override {
        std::error_code ignored;
        if (std::filesystem::create_directory(path, ignored)) {
            std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        }
    }
    [[nodiscard]] std::string UserIdText() const override { return "1000"; }
};

} // namespace terravo
