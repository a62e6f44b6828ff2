// What every call into GDAL stands in: its drivers, its settings, its errors.
//
// Data: the settings of a thread and the messages of one call. Method: only the drivers for the
// formats that the program names are registered, none of which looks into a network; nothing is
// printed, the first failure is kept as the cause for a sentence.
#pragma once

#include <cpl_conv.h>
#include <cpl_error.h>

#include <string>

namespace terravo {

/// Registers the drivers at the first one, and keeps GDAL quiet while it lives.
class GdalScope {
public:
    GdalScope();
    GdalScope(const GdalScope&) = delete;
    GdalScope& operator=(const GdalScope&) = delete;
    ~GdalScope();

    [[nodiscard]] bool HasFailed() const { return !failure_.empty(); }
    /// Throws AppError for the first failure so far, in the name of a file.
    [[noreturn]] void Throw(const std::string& path) const;
    /// Does so only when there is one.
    void ThrowIfFailed(const std::string& path) const {
        if (HasFailed()) {
            Throw(path);
        }
    }
    void Forget() { failure_.clear(); }

private:
    static void CPL_STDCALL Note(CPLErr kind, CPLErrorNum number, const char* message);

    std::string failure_;
};

} // namespace terravo
