// SharedLibrary on systems with POSIX calls.
#include "util/SharedLibrary.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace terravo::SharedLibrary {

std::string ProgramFolder() {
    std::error_code unknown;
    return std::filesystem::read_symlink("/proc/self/exe", unknown).parent_path().string();
}

void* SymbolOf(const std::string& file, const char* symbol, std::string& reason) {
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* address = library != nullptr ? dlsym(library, symbol) : nullptr;
    if (address == nullptr) {
        const char* words = dlerror();
        reason = words != nullptr ? words : "the symbol is empty";
    }
    return address;
}

} // namespace terravo::SharedLibrary
