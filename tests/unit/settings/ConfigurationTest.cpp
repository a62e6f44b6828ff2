#include "app/settings/Configuration.h"

#include "support/FakeFolders.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

namespace fs = std::filesystem;

std::string WorkFolderOf(FakeFolders& folders) {
    RunState state;
    StartUpConfiguration(state, folders);
    return state.workFolder.substr(folders.root.Path().size());
}

TEST(StartUpConfiguration, MakesTheFoldersAndCopiesTheSupportOnTheFirstRun) {
    FakeFolders folders;
    fs::create_directory(folders.root.File("program/supporto/more"));
    folders.Put("program/supporto/more/deep.txt", "deep");
    fs::permissions(folders.root.Write("program/supporto/_p.trl", "Open\r\nSave\n"),
                    fs::perms::owner_read);
    RunState state;
    state.texts = TextCatalogue({"old", "old", "old"});
    StartUpConfiguration(state, folders);

    const std::string user = folders.root.File("home/data/VORTAK24/");
    EXPECT_EQ(state.applicationDataFolder, folders.root.File("home/data/"));
    EXPECT_EQ(state.userFolder, user);
    EXPECT_EQ(state.supportFolder, user + "supporto/");
    EXPECT_EQ(state.pointsFolder, user + "points/");
    EXPECT_EQ(state.workFolder, folders.root.File("tmp/VORTAK24/"));
    EXPECT_TRUE(IsFolder(state.pointsFolder));
    EXPECT_EQ(fs::status(state.workFolder).permissions(), fs::perms::owner_all);
    EXPECT_EQ(folders.root.Read("home/data/VORTAK24/supporto/more/deep.txt"), "deep");
    EXPECT_EQ(state.texts[Text::Save], "Save");
    EXPECT_EQ(state.texts[Text::Exit], "E&xit") << "English follows";
    EXPECT_NE(fs::status(state.supportFolder + "_p.trl").permissions() & fs::perms::owner_write,
              fs::perms::none);

    folders.Put("home/data/VORTAK24/supporto/_p.trl", "mine");
    StartUpConfiguration(state, folders);
    EXPECT_EQ(state.texts[Text::OpenFile], "mine") << "the user's copy is kept";
    EXPECT_EQ(std::distance(fs::directory_iterator(user), {}), 2) << "nothing unfinished is left";
}

TEST(StartUpConfiguration, LoadsTheLanguageOfTheSixthLine) {
    FakeFolders folders;
    folders.Put("program/supporto/it_p.trl", "Apri\n");
    folders.Put("program/supporto/_p.trl", "Open\n");
    RunState state;
    StartUpConfiguration(state, folders);
    EXPECT_EQ(state.texts[Text::OpenFile], "Open");
    const auto settings = [&](const char* file) {
        const std::string path = folders.root.Write("home/data/VORTAK24/sxconf.cff", file);
        StartUpConfiguration(state, folders);
        return state.texts[Text::OpenFile] + std::to_string(ReadStartUpSettings(path).number);
    };
    EXPECT_EQ(settings("1\r\n2\r\n3\r\n4\r\n5\r\nit\r\n7.5\r\n"), "Apri8");
    EXPECT_EQ(settings("\n\n\n\n\n\n-3x\nit\n"), "Open-3");
    EXPECT_EQ(settings("\n\n\n\n\nxx\n40000\n"), "&Open file...0");
}

TEST(StartUpConfiguration, NeverUsesAWorkFolderThatSomebodyElseTook) {
    FakeFolders folders;
    EXPECT_EQ(WorkFolderOf(folders), "tmp/VORTAK24/");
    EXPECT_EQ(WorkFolderOf(folders), "tmp/VORTAK24/") << "its own, on the second run";
    folders.othersFolders = {folders.root.File("tmp/VORTAK24")};
    EXPECT_EQ(WorkFolderOf(folders), "tmp/VORTAK24-1000/");
    EXPECT_EQ(fs::status(folders.root.File("tmp/VORTAK24-1000")).permissions(),
              fs::perms::owner_all);
    folders.othersFolders.insert(folders.root.File("tmp/VORTAK24-1000"));
    EXPECT_EQ(WorkFolderOf(folders), "home/data/VORTAK24/exchange/");
    EXPECT_TRUE(IsFolder(folders.root.File("home/data/VORTAK24/exchange")));
}

TEST(StartUpConfiguration, IgnoresWhatCannotBeMade) {
    FakeFolders folders;
    folders.Put("program/supporto/_p.trl", "Open\n");
    folders.Put("home", "a file where a folder should be");
    fs::remove_all(folders.root.File("tmp"));
    RunState state;
    EXPECT_NO_THROW(StartUpConfiguration(state, folders));
    EXPECT_EQ(state.texts[Text::OpenFile], "&Open file...");
    EXPECT_EQ(state.workFolder, folders.root.File("home/data/VORTAK24/exchange/"));

    // No temporary folder, or a full one.
    FakeFolders full;
    fs::remove_all(full.root.File("tmp"));
    EXPECT_EQ(WorkFolderOf(full), "home/data/VORTAK24/exchange/");
    EXPECT_TRUE(IsFolder(full.root.File("home/data/VORTAK24/exchange")));

    // Something in the shipped folder that cannot be copied: no half copy stays.
    FakeFolders broken;
    broken.Put("program/supporto/_p.trl", "Open\n");
    fs::create_symlink("nowhere", broken.root.File("program/supporto/a"));
    EXPECT_NO_THROW(StartUpConfiguration(state, broken));
    EXPECT_FALSE(IsFolder(state.supportFolder));
    EXPECT_EQ(std::distance(fs::directory_iterator(state.userFolder), {}), 1) << "points alone";
}

} // namespace
} // namespace terravo
