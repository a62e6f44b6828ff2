#include "export/readback/LineBlocks.h"

#include "util/AppError.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

namespace terravo {

LineBlocks::LineBlocks(std::string path, std::size_t size) : path_(std::move(path)), size_(size) {
    errno = 0;
    file_.reset(std::fopen(path_.c_str(), "rb"));
    if (!file_) {
        throw AppError(ErrorNumber::kDeviceIo, path_, path_ + ": " + std::strerror(errno));
    }
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
}

std::string_view LineBlocks::Next() {
    buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(given_));
    used_ -= given_;
    given_ = 0;
    // Only what is new can hold a line end: the rest was behind the last one.
    for (std::size_t searched = used_; Fill(); searched = used_) {
        const std::string_view fresh(buffer_.data() + searched, used_ - searched);
        const std::size_t end = fresh.rfind('\n');
        if (end != std::string_view::npos) {
            given_ = searched + end + 1;
            return {buffer_.data(), given_};
        }
    }
    given_ = used_;
    return {buffer_.data(), given_};
}

// Reads another block behind what is there; false at the end of the file.
bool LineBlocks::Fill() {
    if (buffer_.size() < used_ + size_) {
        buffer_.resize(std::max(used_ + size_, 2 * used_));
    }
    errno = 0;
    const std::size_t got = std::fread(buffer_.data() + used_, 1, size_, file_.get());
    if (std::ferror(file_.get()) != 0) {
        throw AppError(ErrorNumber::kDeviceIo, path_, path_ + ": " + std::strerror(errno));
    }
    used_ += got;
    return got > 0;
}

} // namespace terravo
