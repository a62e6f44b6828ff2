#include "util/OutputFile.h"

#include "util/AppError.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

namespace terravo {
namespace {

namespace fs = std::filesystem;

// A name beside the final one that nobody else takes at the same time.
std::string TemporaryName(const std::string& finalPath) {
    std::random_device source;
    constexpr std::string_view kDigits = "0123456789abcdefghijklmnopqrstuv";
    // A name may have 255 bytes; the marks need some of them.
    constexpr std::size_t kMostKept = 200;
    const fs::path path(finalPath);
    std::string name =
        (path.parent_path() / path.filename().string().substr(0, kMostKept)).string() + ".";
    for (int i = 0; i < 8; ++i) {
        name += kDigits[source() % kDigits.size()];
    }
    return name + ".tmp";
}

// Where the bytes end up: a link keeps pointing at the file that is replaced behind it, or that
// does not exist yet. A ring of links has no end: then the result is one of them.
std::string ResolveLink(const std::string& path) {
    constexpr int kMostLinks = 40;
    fs::path end(path);
    std::error_code unknown; // of what is missing, too
    for (int i = 0; i < kMostLinks && fs::is_symlink(end, unknown); ++i) {
        end = end.parent_path() / fs::read_symlink(end, unknown); // an absolute target stands alone
    }
    return end.string();
}

bool MustBeWrittenInPlace(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return fs::exists(status) && !fs::is_regular_file(status);
}

} // namespace

OutputGroup::~OutputGroup() {
    for (const Member& member : members_) {
        std::error_code ignored;
        fs::remove(member.writtenPath, ignored);
    }
}

void OutputGroup::Commit() {
    while (!members_.empty()) {
        const Member& member = members_.back();
        std::error_code error;
        fs::rename(member.writtenPath, member.finalPath, error);
        if (error) {
            throw AppError(ErrorNumber::kDeviceIo, member.path,
                           member.path + ": " + error.message());
        }
        members_.pop_back();
    }
    for (const std::string& path : outdated_) {
        std::error_code ignored;
        fs::remove(path, ignored);
    }
    outdated_.clear();
}

void OutputFile::ChoosePlace() {
    finalPath_ = ResolveLink(target_.path);
    std::error_code unknown;
    if (fs::is_symlink(finalPath_, unknown)) {
        Throw(ELOOP);
    }
    writtenPath_ = MustBeWrittenInPlace(finalPath_) ? finalPath_ : TemporaryName(finalPath_);
}

// The segments of an earlier drawing must not pass for those of one that fails. Whatever has the
// name goes, a link or a pipe as well; the bytes behind a link stay.
void OutputFile::ChooseEmptiedPlace() {
    std::error_code error;
    fs::remove(target_.path, error);
    if (error) {
        Throw(error.value());
    }
    finalPath_ = target_.path;
    writtenPath_ = TemporaryName(finalPath_);
}

OutputFile::OutputFile(OutputTarget target, Mode mode) : target_(std::move(target)) {
    mode == Mode::Open ? ChooseEmptiedPlace() : ChoosePlace();
    const bool inPlace = writtenPath_ == finalPath_;
    errno = 0;
    file_.reset(std::fopen(writtenPath_.c_str(), inPlace ? "wb" : "wbx"));
    if (!file_) {
        const int cause = errno;
        writtenPath_ = finalPath_;
        Throw(cause);
    }
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
    buffer_.reserve(kEnough + 1024);
}

OutputFile::~OutputFile() {
    if (writtenPath_ != finalPath_) {
        file_.reset();
        std::error_code ignored;
        fs::remove(writtenPath_, ignored);
    }
}

void OutputFile::Flush() {
    errno = 0;
    const std::size_t written = std::fwrite(buffer_.data(), 1, buffer_.size(), file_.get());
    if (written != buffer_.size()) {
        Throw(errno);
    }
    buffer_.clear();
}

void OutputFile::Finish() {
    if (!file_) {
        return;
    }
    Flush();
    errno = 0;
    if (std::fclose(file_.release()) != 0) {
        Throw(errno);
    }
}

void OutputFile::Commit() {
    Finish();
    if (writtenPath_ != finalPath_) {
        TakeFinalName();
        writtenPath_ = finalPath_;
    }
}

void OutputFile::TakeFinalName() {
    if (target_.group != nullptr) {
        target_.group->members_.push_back({target_.path, finalPath_, writtenPath_});
        return;
    }
    std::error_code error;
    fs::rename(writtenPath_, finalPath_, error);
    if (error) {
        Throw(error.value());
    }
}

void OutputFile::Throw(int cause) const {
    const std::string reason = cause != 0 ? std::strerror(cause) : "the file cannot be written";
    throw AppError(ErrorNumber::kDeviceIo, target_.path, target_.path + ": " + reason);
}

void CopyFileWhole(const std::string& from, const OutputTarget& to) {
    errno = 0;
    const FileHandle source(std::fopen(from.c_str(), "rb"));
    if (!source) {
        throw AppError(ErrorNumber::kDeviceIo, from, from + ": " + std::strerror(errno));
    }
    OutputFile target(to);
    std::array<char, 1 << 16> block{};
    std::size_t got = 0;
    while ((got = std::fread(block.data(), 1, block.size(), source.get())) > 0) {
        target.Append({block.data(), got});
    }
    if (std::ferror(source.get()) != 0) {
        throw AppError(ErrorNumber::kDeviceIo, from, from + ": " + std::strerror(errno));
    }
    target.Commit();
}

} // namespace terravo
