#include "app/batch/OutputFolders.h"

#include "util/AppError.h"

#include <QFileInfo>

#include <system_error>

namespace terravo {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Throw(const std::string& folder, const std::string& sentence) {
    throw AppError(ErrorNumber::kDeviceIo, folder, "The folder " + folder + sentence);
}

} // namespace

OutputFolders::~OutputFolders() {
    for (auto folder = made_.rbegin(); folder != made_.rend(); ++folder) {
        std::error_code ignored;
        fs::remove(*folder, ignored);
    }
}

void OutputFolders::Make(const std::string& folder) {
    fs::path reached;
    for (const fs::path& part : fs::path(folder)) {
        reached /= part;
        std::error_code error;
        if (fs::is_directory(reached, error)) {
            continue;
        }
        if (fs::create_directory(reached, error)) {
            made_.push_back(reached);
        } else if (error) {
            Throw(reached.string(), " cannot be made: " + error.message() + ".");
        }
    }
}

void CheckOutputFolders(const BatchOptions& options) {
    for (const std::string& file : options.Outputs()) {
        const QFileInfo folder(QFileInfo(QString::fromStdString(file)).path());
        const std::string name = folder.filePath().toStdString();
        if (!folder.isDir()) {
            Throw(name, " for the output \"" + file + "\" does not exist.");
        }
        if (!folder.isWritable()) {
            Throw(name, " for the output \"" + file + "\" cannot be written to.");
        }
    }
}

} // namespace terravo
