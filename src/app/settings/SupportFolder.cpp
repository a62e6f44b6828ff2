#include "app/settings/SupportFolder.h"

#include <filesystem>
#include <system_error>

namespace terravo {

std::string FindSupportFolder(const std::string& programFolder) {
    for (const std::string& folder :
         {programFolder + "/supporto/", programFolder + "/../share/terravo/supporto/",
          std::string(TERRAVO_SOURCE_SUPPORT_FOLDER)}) {
        std::error_code error;
        if (std::filesystem::is_directory(folder, error)) {
            return folder;
        }
    }
    return {};
}

} // namespace terravo
