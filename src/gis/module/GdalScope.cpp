#include "gis/module/GdalScope.h"

#include "util/AppError.h"

#include <gdal_frmts.h>
#include <gdal_priv.h>
#include <ogr_srs_api.h>
#include <ogrsf_frmts.h>

#include <algorithm>
#include <mutex>

namespace terravo {
namespace {

// No GDALAllRegister: that would load plug-ins and drivers that open addresses and databases.
void Register() {
    RegisterOGRGeoPackage();
    RegisterOGRShape();
    RegisterOGRDXF();
    RegisterOGRGeoJSON();
    RegisterOGRLIBKML();
    GDALRegister_GTiff();
    GDALRegister_HFA();
    GDALRegister_EHdr();
    GDALRegister_SRTMHGT();
    GDALRegister_DTED();
    GDALRegister_GSBG();
    GDALRegister_GS7BG();
    OSRSetPROJEnableNetwork(0);
}

struct Setting {
    const char* name;
    const char* value;
};

constexpr Setting kSettings[] = {
    // No statistics beside the user's files.
    {"GDAL_PAM_ENABLED", "NO"},
    // The same content has the same bytes.
    {"OGR_CURRENT_DATE", "2000-01-01T00:00:00.000Z"},
    // The file has another name until it is whole; a journal would only slow it down.
    {"OGR_SQLITE_SYNCHRONOUS", "OFF"},
    {"GDAL_HTTP_MAX_RETRY", "0"},
};

struct Rewording {
    std::string_view words; // of GDAL
    const char* cause;
};

constexpr Rewording kRewordings[] = {
    {"not recognized as", "GDAL does not know this format, or the file is damaged"},
    {"Read error", "the file ends too early, or is damaged"},
    {"Error in fread", "the file ends too early, or is damaged"},
    {"Failure seeking", "the disk is full or cannot be written to"},
    {"Failure writing", "the disk is full or cannot be written to"},
    {"disk is full", "the disk is full or cannot be written to"},
    {"SHAPE_RESTORE_SHX", "the file of the same name that ends in .shx is missing or damaged"},
};

void EraseAll(std::string& text, std::string_view part) {
    for (std::size_t at = 0; (at = text.find(part)) != std::string::npos;) {
        text.erase(at, part.size());
    }
}

// One line, without the file, which stands in front, the places in GDAL's sources, and what would
// double our own punctuation.
std::string Tidied(std::string text, const std::string& path) {
    for (const Rewording& known : kRewordings) {
        if (text.find(known.words) != std::string::npos) {
            return known.cause;
        }
    }
    EraseAll(text, path + ": ");
    EraseAll(text, path + ":");
    EraseAll(text, " of " + path);
    EraseAll(text, path + " ");
    if (const std::size_t source = text.find(".cpp, "); source != std::string::npos) {
        const std::size_t end = text.find(": ", source);
        text.erase(0, end != std::string::npos ? end + 2 : 0);
    }
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    while (!text.empty() && (text.back() == '.' || text.back() == ' ')) {
        text.pop_back();
    }
    return text;
}

} // namespace

GdalScope::GdalScope() {
    static std::once_flag once;
    CPLPushErrorHandlerEx(&GdalScope::Note, this);
    for (const Setting& setting : kSettings) {
        CPLSetThreadLocalConfigOption(setting.name, setting.value);
    }
    std::call_once(once, Register);
}

GdalScope::~GdalScope() {
    for (const Setting& setting : kSettings) {
        CPLSetThreadLocalConfigOption(setting.name, nullptr);
    }
    CPLPopErrorHandler();
}

void CPL_STDCALL GdalScope::Note(CPLErr kind, CPLErrorNum number, const char* message) {
    auto* scope = static_cast<GdalScope*>(CPLGetErrorHandlerUserData());
    if (scope != nullptr && (kind == CE_Failure || kind == CE_Fatal) && scope->failure_.empty()) {
        scope->failure_ = number == CPLE_OutOfMemory ? "there is not enough memory" : message;
    }
}

void GdalScope::Throw(const std::string& path) const {
    const std::string cause = Tidied(failure_, path);
    throw AppError(ErrorNumber::kDeviceIo, path,
                   path + ": " + (cause.empty() ? "GDAL gives no reason" : cause) + ".");
}

} // namespace terravo
