#include "support/TemporaryFolder.h"
#include "util/AppError.h"
#include "util/OutputFile.h"
#include "util/PathText.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

TEST(SplitPath, TakesTheExtensionFromTheFirstPoint) {
    const PathParts plain = SplitPath("C:\\data\\pts.txt");
    EXPECT_EQ(plain.folder, "C:\\data\\");
    EXPECT_EQ(plain.name, "pts.txt");
    EXPECT_EQ(plain.extension, ".txt");
    const PathParts dotted = SplitPath("/home.old/my.data/pts");
    EXPECT_EQ(dotted.folder, "/home.old/my.data/");
    EXPECT_EQ(dotted.name, "pts");
    EXPECT_EQ(dotted.extension, ".old/my.data/pts");
    const PathParts bare = SplitPath("pts");
    EXPECT_EQ(bare.folder, "");
    EXPECT_EQ(bare.extension, "");
    EXPECT_FALSE(bare.exists);
}

TEST(OutputFile, ReplacesTheOldFileOnlyWhenComplete) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Write("out.txt", "old");
    {
        OutputFile file(path);
        file.Append("half");
    }
    EXPECT_EQ(folder.Read("out.txt"), "old");
    EXPECT_EQ(folder.Names().size(), 1U) << "nothing is left beside it";
    OutputFile file(path);
    file.Append("new");
    EXPECT_EQ(folder.Read("out.txt"), "old");
    file.Commit();
    EXPECT_EQ(folder.Read("out.txt"), "new");
    EXPECT_EQ(folder.Names().size(), 1U);
}

TEST(OutputFile, OpenRemovesTheOldFileAndKeepsTwoWritersApart) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Write("out.txt", "old");
    {
        OutputFile failed(path, OutputFile::Mode::Open);
        failed.Append("half");
    }
    EXPECT_TRUE(folder.Names().empty()) << "neither the old segments nor half of the new ones";
    OutputFile first(path, OutputFile::Mode::Open);
    first.Append(std::string(300000, 'a')); // more than the buffer holds
    OutputFile second(path, OutputFile::Mode::Open);
    second.Append("bb");
    second.Commit();
    EXPECT_EQ(folder.Read("out.txt"), "bb");
    first.Append("a");
    first.Commit();
    EXPECT_EQ(folder.Read("out.txt"), std::string(300001, 'a')) << "the last one wins";
    EXPECT_EQ(folder.Names().size(), 1U);

    const std::string target = folder.Write("target", "whole");
    std::filesystem::create_symlink(target, folder.File("link"));
    OutputFile linked(folder.File("link"), OutputFile::Mode::Open);
    linked.Commit();
    EXPECT_EQ(folder.Read("target"), "whole") << "what is behind a link stays";
}

TEST(OutputFile, WritesThroughLinksAndIntoDevices) {
    const test::TemporaryFolder folder;
    const std::string target = folder.Write("target", "old");
    std::filesystem::create_symlink(target, folder.File("link"));
    OutputFile file(folder.File("link"));
    file.Append("new");
    file.Commit();
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("link")));
    EXPECT_EQ(folder.Read("target"), "new");

    std::filesystem::create_symlink("fresh", folder.File("ahead"));
    OutputFile behind(folder.File("ahead"));
    behind.Commit();
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("ahead")));
    EXPECT_TRUE(std::filesystem::is_regular_file(folder.File("fresh")));

    std::filesystem::create_symlink("ring", folder.File("ring"));
    EXPECT_THROW(OutputFile{folder.File("ring")}, AppError);

    OutputFile device("/dev/null");
    device.Append("gone");
    device.Commit();
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(OutputFile, NamesTheFileAndTheCauseWhenItCannot) {
    const test::TemporaryFolder folder;
    try {
        const OutputFile file(folder.File("missing/out.txt"));
        FAIL() << "no error";
    } catch (const AppError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::kDeviceIo);
        EXPECT_EQ(error.what(), folder.File("missing/out.txt") + ": No such file or directory");
    }
    EXPECT_THROW(OutputFile{folder.Path()}, AppError) << "a folder";
    if (std::filesystem::exists("/dev/full")) {
        OutputFile full("/dev/full");
        full.Append("text");
        EXPECT_THROW(full.Commit(), AppError);
    }
}

TEST(OutputGroup, NamesItsFilesTogetherAndTellsOfEachByItsOwnName) {
    const test::TemporaryFolder folder;
    const std::string old = folder.Write("a.txt", "old");
    {
        OutputGroup abandoned;
        OutputFile file({old, &abandoned});
        file.Commit();
    }
    EXPECT_EQ(folder.Read("a.txt"), "old");
    EXPECT_EQ(folder.Names().size(), 1U) << "nothing is left beside it";
    OutputGroup group;
    for (const char* name : {"a.txt", "b.txt"}) {
        OutputFile file({folder.File(name), &group});
        file.Append("new");
        file.Commit();
    }
    EXPECT_EQ(folder.Read("a.txt"), "old") << "until all are there";
    group.Commit();
    EXPECT_EQ(folder.Read("a.txt"), "new");
    EXPECT_EQ(folder.Read("b.txt"), "new");
    try {
        const OutputFile file({folder.File("missing/c.txt"), &group});
        FAIL() << "no error";
    } catch (const AppError& error) {
        EXPECT_EQ(error.what(), folder.File("missing/c.txt") + ": No such file or directory");
    }
}

} // namespace
} // namespace terravo
