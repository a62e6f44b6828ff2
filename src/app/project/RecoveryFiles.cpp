#include "app/project/RecoveryFiles.h"

#include "app/project/ProjectStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QUuid>

#include <algorithm>

namespace terravo {
namespace {

// Only the end of its program frees a lock, never its age.
std::unique_ptr<QLockFile> LockOf(const std::string& path) {
    auto lock = std::make_unique<QLockFile>(QString::fromStdString(path + ".lock"));
    lock->setStaleLockTime(0);
    return lock;
}

} // namespace

RecoveryFiles::RecoveryFiles(std::string folder) : folder_(std::move(folder)) {}

RecoveryFiles::~RecoveryFiles() = default;

void RecoveryFiles::Write(const Project& project) {
    if (folder_.empty()) {
        return;
    }
    if (own_.empty()) {
        QDir().mkpath(QString::fromStdString(folder_));
        const QString name = QStringLiteral("%1-%2")
                                 .arg(QCoreApplication::applicationPid())
                                 .arg(QUuid::createUuid().toString(QUuid::Id128).left(8));
        own_ = folder_ + name.toStdString() + kProjectEnding;
        lock_ = LockOf(own_);
        lock_->tryLock(0);
    }
    ProjectStore().Write(own_, project);
}

// The file goes before its lock, so that nobody finds it alone.
void RecoveryFiles::Remove() {
    if (!own_.empty()) {
        QFile::remove(QString::fromStdString(own_));
        lock_.reset();
        own_.clear();
    }
}

std::optional<RecoveryFiles::Leftover> RecoveryFiles::Take(const std::string& path) {
    std::unique_ptr<QLockFile> lock = LockOf(path);
    if (!lock->tryLock(0)) {
        return std::nullopt;
    }
    ProjectReading reading = ProjectStore().Read(path);
    if (!reading.project) {
        return std::nullopt;
    }
    return Leftover{*std::move(reading.project), path, std::move(lock)};
}

std::optional<RecoveryFiles::Leftover> RecoveryFiles::TakeLeftover() {
    const QDir folder(QString::fromStdString(folder_));
    if (folder_.empty() || !folder.exists()) {
        return std::nullopt;
    }
    const QString pattern = QStringLiteral("*") + QLatin1String(kProjectEnding);
    for (const QFileInfo& file : folder.entryInfoList({pattern}, QDir::Files, QDir::Time)) {
        const std::string path = file.filePath().toStdString();
        if (path == own_ ||
            std::find(handedOut_.begin(), handedOut_.end(), path) != handedOut_.end()) {
            continue;
        }
        handedOut_.push_back(path);
        if (std::optional<Leftover> leftover = Take(path)) {
            return leftover;
        }
    }
    return std::nullopt;
}

void RecoveryFiles::Drop(Leftover& leftover) {
    QFile::remove(QString::fromStdString(leftover.path));
    leftover.lock.reset();
}

} // namespace terravo
