// The folders of the user at the keyboard, and who owns what lies there.
//
// The operating system answers; its calls are in one source file per system.
#pragma once

#include "app/settings/Configuration.h"

#include <string>

namespace terravo {

class UserFolders : public SystemFolders {
public:
    /// @param programSupportFolder  of FindSupportFolder.
    explicit UserFolders(std::string programSupportFolder);

    [[nodiscard]] std::string TemporaryFolder() const override;
    [[nodiscard]] std::string ApplicationDataFolder() const override;
    [[nodiscard]] std::string ProgramSupportFolder() const override;
    [[nodiscard]] FolderKind KindOf(const std::string& path) const override;
    void MakePrivate(const std::string& path) override;
    [[nodiscard]] std::string UserIdText() const override;

private:
    std::string programSupportFolder_;
};

} // namespace terravo
