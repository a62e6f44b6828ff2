#include "app/settings/RecentFiles.h"

#include "support/FakeSettings.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

using Paths = std::vector<std::string>;

Paths After(const Paths& opened, std::size_t limit = RecentFiles::kUsualLimit) {
    RecentFiles recent;
    for (const std::string& path : opened) {
        recent.Add(path, limit);
    }
    return recent.Paths();
}

TEST(RecentFiles, MovesAFileToTheTopAndDropsTheOldest) {
    EXPECT_EQ(After({"A", "B", "A"}), (Paths{"A", "B"}));
    EXPECT_EQ(After({"1", "2", "3", "4", "5", "6"}), (Paths{"6", "5", "4", "3", "2"}));
    EXPECT_EQ(After({"1", "2", "3", "4", "2"}), (Paths{"2", "4", "3", "1"}));
    EXPECT_EQ(After({"/x/a.dat", "b", "/X/A.DAT"}), (Paths{"/X/A.DAT", "b"})) << "newest spelling";
    EXPECT_EQ(After({"\xC3\xA8", "\xC3\x88"}).size(), 2U) << "other letters keep their case";
    EXPECT_EQ(After({"", "a", ""}), Paths{"a"});
    EXPECT_EQ(After(Paths(20, "")).size(), 0U);
    EXPECT_EQ(After({"1", "2", "3", "4", "5", "6", "7", "8", "9", "0"}, 20).size(), 9U);
}

TEST(RecentFiles, ComesBackFromTheSettingsWithoutMissingFiles) {
    const test::TemporaryFolder folder;
    const std::string a = folder.Write("a", "");
    const std::string b = folder.Write("b", "");
    FakeSettings settings;
    settings.Set("PuntiDati", "5", "old");
    RecentFiles recent;
    recent.Add(a);
    recent.Add("/gone");
    recent.Add(b);
    recent.Save(settings);
    EXPECT_EQ(settings.Get("PuntiDati", "1"), b);
    EXPECT_EQ(settings.Get("PuntiDati", "3"), a);
    EXPECT_EQ(settings.Get("PuntiDati", "5"), "old") << "keys beyond the list stay";

    RecentFiles present;
    present.Load(settings);
    EXPECT_EQ(present.Paths(), (Paths{b, a}));
    RecentFiles all;
    all.Load(settings, "PuntiDati", 5, false);
    EXPECT_EQ(all.Paths(), (Paths{b, "/gone", a, "old"}));
}

} // namespace
} // namespace terravo
