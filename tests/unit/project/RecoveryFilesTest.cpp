#include "app/project/RecoveryFiles.h"

#include "support/RichProject.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

namespace terravo {
namespace {

Project Recovering(const std::string& path) {
    Project project = test::RichProject();
    project.recovers = path;
    return project;
}

// A program that writes its work and is killed.
void CrashAfterWriting(const std::string& folder, const std::string& name) {
    const pid_t child = fork();
    if (child == 0) {
        RecoveryFiles files(folder);
        files.Write(Recovering(name));
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
}

TEST(RecoveryFiles, HandOutWhatAProgramThatWasKilledHasLeft) {
    const test::TemporaryFolder folder;
    const std::string place = folder.File("recovery/");
    CrashAfterWriting(place, "/a.terravo");
    RecoveryFiles next(place);
    std::optional<RecoveryFiles::Leftover> left = next.TakeLeftover();
    ASSERT_TRUE(left);
    EXPECT_EQ(left->project.recovers, "/a.terravo");
    EXPECT_EQ(left->project.surface.excluded, test::RichProject().surface.excluded);
    EXPECT_FALSE(RecoveryFiles(place).TakeLeftover()) << "another program does not get it as well";
    EXPECT_FALSE(next.TakeLeftover()) << "nor the same one twice";
    left.reset();
    left = RecoveryFiles(place).TakeLeftover();
    ASSERT_TRUE(left) << "it is offered again at the next start";
    RecoveryFiles::Drop(*left);
    EXPECT_FALSE(RecoveryFiles(place).TakeLeftover());
    EXPECT_TRUE(std::filesystem::is_empty(place));
}

TEST(RecoveryFiles, AreNotTakenFromARunningProgram) {
    const test::TemporaryFolder folder;
    RecoveryFiles running(folder.Path());
    running.Write(Recovering("/a.terravo"));
    running.Write(Recovering("/b.terravo"));
    EXPECT_EQ(folder.Names().size(), 2U) << "one file and its lock";
    EXPECT_FALSE(RecoveryFiles(folder.Path()).TakeLeftover());
    EXPECT_FALSE(running.TakeLeftover()) << "nor by itself";
    running.Remove();
    EXPECT_TRUE(folder.Names().empty());
    EXPECT_FALSE(folder.Write("1-x.terravo", "no project").empty());
    EXPECT_FALSE(RecoveryFiles(folder.Path()).TakeLeftover());
    RecoveryFiles nowhere("");
    nowhere.Write(Recovering("/a.terravo"));
    EXPECT_FALSE(nowhere.TakeLeftover());
}

} // namespace
} // namespace terravo
