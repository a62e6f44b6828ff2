#include "app/settings/ColourScheme.h"

#include "app/settings/Configuration.h"
#include "util/AppError.h"
#include "util/NumberListReader.h"
#include "util/OutputFile.h"
#include "util/PathText.h"
#include "util/modUtilita.h"

#include <filesystem>
#include <system_error>

namespace terravo {
namespace {

constexpr int kMostColour = 0xFFFFFF;

// Once a number could not be read, the reader refuses all that follow.
void ReadWhole(NumberListReader& reader, int most, int& value) {
    double number = 0;
    if (reader.Read(number)) {
        const int whole = modUtilita::RoundHalfEven(number);
        value = whole >= 0 && whole <= most ? whole : value;
    }
}

void ReadColour(NumberListReader& reader, Colour& colour) {
    int value = static_cast<int>(colour);
    ReadWhole(reader, kMostColour, value);
    colour = static_cast<Colour>(value);
}

ColourScheme ReadFile(const std::string& path) {
    ColourScheme scheme;
    NumberListReader reader(path);
    for (int unused = 0; unused < 3; ++unused) {
        int channel = 0;
        ReadWhole(reader, 255, channel);
    }
    ReadColour(reader, scheme.backColour);
    ReadColour(reader, scheme.foreColour);
    ReadColour(reader, scheme.accentColour);
    ReadWhole(reader, 255, scheme.greyLevel);
    scheme.greyColour = RGB(scheme.greyLevel, scheme.greyLevel, scheme.greyLevel);
    return scheme;
}

} // namespace

ColourScheme ReadColourScheme(const std::string& userFolder) {
    if (userFolder.empty()) {
        return {};
    }
    const std::string fileName = "color_menu.cff";
    const std::string own = userFolder + fileName;
    if (FileExists(own)) {
        return ReadFile(own);
    }
    const std::string shipped = SubFolder(userFolder, "supporto") + fileName;
    if (!FileExists(shipped)) {
        return {};
    }
    // Something else than a file has the name, a folder or a pipe: copying would write into it.
    std::error_code ignored;
    const bool free = !std::filesystem::exists(std::filesystem::symlink_status(own, ignored));
    try {
        if (free) {
            CopyFileWhole(shipped, own);
        }
    } catch (const AppError&) {
        // A folder that cannot be written to: the shipped file serves this run and the next.
    }
    return ReadFile(shipped);
}

} // namespace terravo
