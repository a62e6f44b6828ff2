#include "app/project/ProjectStore.h"

#include "app/project/ProjectText.h"
#include "survey/PointFile.h"
#include "util/OutputFile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace terravo {
namespace {

constexpr qint64 kMostBytes = qint64{1} << 29; // of a project: all of it is held in memory
constexpr qint64 kPiece = qint64{1} << 20;

// Why there is nothing to read; empty: there is.
std::string FaultOf(const QFile& file, const std::string& path) {
    if (const auto refused = RefuseDevice(path)) {
        return refused->Sentence();
    }
    if (QFileInfo(file).isDir()) {
        return path + ": Is a directory.";
    }
    return file.size() > kMostBytes ? path + ": this is too large for a project." : std::string();
}

} // namespace

ProjectReading ProjectStore::Read(const std::string& path) {
    QFile file(QString::fromStdString(path));
    ProjectReading reading;
    reading.fault = FaultOf(file, path);
    if (!reading.fault.empty()) {
        return reading;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        reading.fault = path + ": " + file.errorString().toStdString() + ".";
        return reading;
    }
    return ProjectFromText(file.readAll().toStdString(), path);
}

void ProjectStore::Write(const std::string& path, const Project& project) {
    OutputFile file(path);
    file.Append(TextOfProject(project));
    file.Commit();
}

// A folder of Shapefiles, a pipe and a device have none.
std::string ProjectStore::ChecksumOf(const std::string& path, const StopToken& stop) {
    const QString name = QString::fromStdString(path);
    QFile file(name);
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QByteArray piece(kPiece, Qt::Uninitialized);
    qint64 done = 0;
    while (const qint64 count = file.read(piece.data(), kPiece)) {
        done += count;
        const double part = static_cast<double>(done) / static_cast<double>(file.size());
        if (count < 0 || !stop.GoesOn("checksum", part)) {
            return {};
        }
        hash.addData(QByteArrayView(piece.constData(), count));
    }
    return hash.result().toHex().toStdString();
}

} // namespace terravo
