#include "gis/GisLibrary.h"

#include "util/AppError.h"
#include "util/PathText.h"
#include "util/SharedLibrary.h"

namespace terravo {
namespace {

constexpr const char* kFileName = "terravo_gis.so";
// Empty in a build without GDAL.
constexpr std::string_view kPackage = TERRAVO_GDAL_PACKAGE;

[[noreturn]] void Throw(const std::string& sentence) {
    throw AppError(ErrorNumber::kDeviceIo, "GisLibrary", sentence);
}

std::string FileIn(const std::string& programFolder) {
    for (const char* folder : {"/", "/../lib/terravo/"}) {
        std::string file = programFolder + folder + kFileName;
        if (FileExists(file)) {
            return file;
        }
    }
    Throw("this format needs the file lib/terravo/" + std::string(kFileName) +
          " of this program, which is missing; please install the program again.");
}

GisEntry EntryOf(const std::string& file) {
    std::string reason;
    void* symbol = SharedLibrary::SymbolOf(file, kGisSymbol, reason);
    if (symbol == nullptr) {
        Throw("this format goes through the library GDAL, which cannot be loaded; please install "
              "the package " +
              std::string(kPackage) + " (" + reason + ").");
    }
    return reinterpret_cast<GisEntry>(symbol);
}

} // namespace

const GisFunctions& LoadGisFrom(const std::string& programFolder) {
    if (kPackage.empty()) {
        Throw("this format goes through the library GDAL, and this program was built without it; "
              "please install the package libgdal-dev and build the program again.");
    }
    const GisFunctions* functions = EntryOf(FileIn(programFolder))();
    if (functions == nullptr || functions->version != kGisVersion ||
        functions->sizeOfValues != kSizeOfGisValues) {
        Throw("the file " + std::string(kFileName) +
              " belongs to another version of this program; please install the program again.");
    }
    return *functions;
}

const GisFunctions& LoadGis() {
    static const GisFunctions* const kept = &LoadGisFrom(SharedLibrary::ProgramFolder());
    return *kept;
}

} // namespace terravo
