#include "app/settings/WindowPosition.h"

#include "support/FakeSettings.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

constexpr WindowBox kCurrent{1, 2, 640, 480};

WindowBox Restore(const FakeSettings& settings, int twips = 4500) {
    return RestoreWindowPosition(settings, "frmProve", kCurrent, 1280, 800,
                                 [twips](int low, int high) {
                                     EXPECT_EQ(low, 5);
                                     EXPECT_EQ(high, 4500);
                                     return twips;
                                 });
}

TEST(WindowPosition, KeepsTwipsUnderTheNameOfTheWindow) {
    FakeSettings settings;
    SaveWindowPosition(settings, "frmProve", {100, -20, 640, 480}, true, true);
    EXPECT_TRUE(settings.values.empty()) << "a minimised window has no place of its own";
    SaveWindowPosition(settings, "frmProve", {100, -20, 640, 480}, false, false);
    EXPECT_EQ(settings.values.size(), 2U);
    EXPECT_EQ(settings.Get("PosizioniForms", "frmProve_Left"), "1500");
    EXPECT_EQ(settings.Get("PosizioniForms", "frmProve_Top"), "-300");
    SaveWindowPosition(settings, "frmProve", {100, -20, 500, 20000}, false, true);
    EXPECT_EQ(settings.Get("PosizioniForms", "frmProve_Height"), "300000");
    EXPECT_EQ(Restore(settings), (WindowBox{100, -20, 500, 799}));
}

TEST(WindowPosition, InventsAPlaceAndKeepsTheSizeWhenNoneIsSaved) {
    FakeSettings settings;
    EXPECT_EQ(Restore(settings), (WindowBox{300, 300, 640, 480}));
    EXPECT_EQ(Restore(settings, 5), (WindowBox{0, 0, 640, 480}));
    for (const char* text : {"", "left", "12px", "nan", "inf", "1e30", "-1e9", "0x10", "1,5"}) {
        settings.Set("PosizioniForms", "frmProve_Left", text);
        EXPECT_EQ(Restore(settings).left, 300) << text;
    }
    settings.Set("PosizioniForms", "frmProve_Width", "19184.4");
    EXPECT_EQ(Restore(settings).width, 1278) << "whole twips first";
    for (const char* text : {"", "wide", "nan", "0", "-300"}) {
        settings.Set("PosizioniForms", "frmProve_Width", text);
        EXPECT_EQ(Restore(settings).width, 640) << text;
    }
}

} // namespace
} // namespace terravo
