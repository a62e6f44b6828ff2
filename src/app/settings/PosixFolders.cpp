// UserFolders on systems with POSIX calls.
#include "app/settings/UserFolders.h"

#include <QDir>

#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace terravo {

UserFolders::UserFolders(std::string programSupportFolder)
    : programSupportFolder_(std::move(programSupportFolder)) {}

std::string UserFolders::TemporaryFolder() const {
    return QDir::tempPath().toStdString();
}

std::string UserFolders::ApplicationDataFolder() const {
    const QString given = qEnvironmentVariable("XDG_DATA_HOME");
    // A relative path there means nothing: it would depend on where the program was started.
    return (QDir::isAbsolutePath(given) ? given
                                        : QDir::homePath() + QStringLiteral("/.local/share"))
        .toStdString();
}

std::string UserFolders::ProgramSupportFolder() const {
    return programSupportFolder_;
}

FolderKind UserFolders::KindOf(const std::string& path) const {
    struct stat status {};
    // Not following links: a link in the common temporary folder may lead anywhere.
    if (lstat(path.c_str(), &status) != 0) {
        return FolderKind::Missing;
    }
    return S_ISDIR(status.st_mode) && status.st_uid == geteuid() ? FolderKind::OwnFolder
                                                                 : FolderKind::Foreign;
}

void UserFolders::MakePrivate(const std::string& path) {
    constexpr mode_t kOwnerOnly = 0700;
    static_cast<void>(mkdir(path.c_str(), kOwnerOnly));
}

std::string UserFolders::UserIdText() const {
    return std::to_string(geteuid());
}

} // namespace terravo
