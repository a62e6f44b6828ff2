// A file of the C library that closes itself.
//
// Whoever needs to know whether the closing went well takes the file out and closes it by hand.
#pragma once

#include <cstdio>
#include <memory>

namespace terravo {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

} // namespace terravo
