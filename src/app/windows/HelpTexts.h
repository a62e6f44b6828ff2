// Places in RunState::textTable of the help window, the settings dialog and the accessibility
// texts.
#pragma once

#include <cstddef>

namespace terravo::HelpTextIndex {
inline constexpr std::size_t kSave = 1;
inline constexpr std::size_t kHelp = 47;
inline constexpr std::size_t kSettings = 48;
inline constexpr std::size_t kSettingsTitle = 49;
inline constexpr std::size_t kLanguage = 50;
inline constexpr std::size_t kColours = 51;
inline constexpr std::size_t kDark = 52;
inline constexpr std::size_t kLight = 53;
inline constexpr std::size_t kAsInTheFile = 54;
inline constexpr std::size_t kNextStart = 55;
inline constexpr std::size_t kNotSaved = 56;
inline constexpr std::size_t kCancel = 57;
inline constexpr std::size_t kHelpTitle = 58;
inline constexpr std::size_t kFind = 59;
inline constexpr std::size_t kNext = 60;
inline constexpr std::size_t kBack = 61;
inline constexpr std::size_t kContents = 62;
inline constexpr std::size_t kNotFound = 63;
inline constexpr std::size_t kNoGuide = 64;
inline constexpr std::size_t kArrowKeys = 65;
} // namespace terravo::HelpTextIndex
