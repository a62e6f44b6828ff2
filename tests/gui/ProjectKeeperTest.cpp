#include "app/windows/ProjectKeeper.h"
#include "app/project/ProjectStore.h"
#include "app/windows/ProjectQuestionBoxes.h"
#include "gui/WindowFixture.h"

#include <QMessageBox>
#include <QTimer>

namespace terravo {
namespace {

struct ProjectKeeperTest : WindowFixture {
    ProjectStore store;
    FakeProjectQuestions questions;
    ProjectServices services{store, questions};
    std::unique_ptr<ProjectKeeper> keeper;

    ProjectKeeperTest() {
        projects = &services;
        beforeStart = [this] {
            keeper = std::make_unique<ProjectKeeper>(*session, *window, *parent, questions,
                                                     folder.File("recovery/"));
        };
    }
    ~ProjectKeeperTest() override { keeper.reset(); }

    [[nodiscard]] std::string Title() const {
        return parent->windowTitle().toStdString() + (parent->isWindowModified() ? " *" : "");
    }
    [[nodiscard]] std::size_t KeptFiles() const {
        std::size_t count = 0;
        std::error_code none;
        for (const auto& entry :
             std::filesystem::directory_iterator(folder.File("recovery"), none)) {
            count += entry.path().extension() == ".terravo" ? 1 : 0;
        }
        return count;
    }
};

TEST_F(ProjectKeeperTest, TheTitleTellsTheProjectAndWhetherItIsSaved) {
    OpenHills();
    EXPECT_EQ(Title(), "Terravo");
    session->SetExcluded({1}, true);
    EXPECT_EQ(Title(), "hills.dat[*] \u2013 Terravo *");
    dialogs.answer = folder.File("job.terravo");
    Choose("mnuSaveProject");
    EXPECT_EQ(Title(), "job.terravo[*] \u2013 Terravo");
    session->SetExact(true);
    EXPECT_EQ(Title(), "job.terravo[*] \u2013 Terravo *");
    Choose("mnuSaveProject");
    EXPECT_EQ(dialogs.plans.size(), 1U) << "asked where to the first time only";
    EXPECT_EQ(Title(), "job.terravo[*] \u2013 Terravo");
}

TEST_F(ProjectKeeperTest, ClosingAsksOnceAndCancellingKeepsTheWindow) {
    OpenHills();
    session->SetExcluded({1}, true);
    parent->close();
    EXPECT_TRUE(parent->isVisible());
    EXPECT_TRUE(window != nullptr);
    questions.save = SaveAnswer::Discard;
    keeper->KeepNow();
    EXPECT_EQ(KeptFiles(), 1U);
    parent->close();
    EXPECT_FALSE(parent->isVisible());
    EXPECT_EQ(questions.asked.size(), 2U);
    EXPECT_EQ(KeptFiles(), 0U);
}

TEST_F(ProjectKeeperTest, UnsavedWorkIsKeptAndRestoredAtTheNextStart) {
    OpenHills();
    session->SetExcluded({1, 3}, true);
    keeper->KeepNow();
    ASSERT_EQ(KeptFiles(), 1U);
    // As a program leaves it that was killed: the file without a living lock.
    std::filesystem::create_directories(folder.File("left"));
    std::filesystem::copy(folder.File("recovery"), folder.File("left"),
                          std::filesystem::copy_options::recursive);
    session->SetExcluded({1, 3}, false);
    EXPECT_EQ(KeptFiles(), 0U) << "there is nothing unsaved any more";
    for (const auto& entry : std::filesystem::directory_iterator(folder.File("left"))) {
        if (entry.path().extension() == ".terravo") {
            std::filesystem::copy(entry.path(),
                                  folder.File("recovery/" + entry.path().filename().string()));
        }
    }
    questions.restore = RestoreAnswer::Later;
    keeper.reset();
    Open();
    EXPECT_EQ(questions.asked, std::vector<std::string>{"restore hills.dat"});
    EXPECT_EQ(session->Points().count, 0);
    EXPECT_EQ(KeptFiles(), 1U) << "it waits";
    questions.restore = RestoreAnswer::Restore;
    keeper.reset();
    Open();
    EXPECT_EQ(session->TheSurvey().ExcludedPoints(), (std::vector<Index>{1, 3}));
    EXPECT_EQ(Title(), "hills.dat[*] \u2013 Terravo *");
    EXPECT_EQ(KeptFiles(), 1U) << "now as this program's own";
}

TEST_F(ProjectKeeperTest, TheBoxesAnswerWhatTheirButtonsSay) {
    Open();
    ProjectQuestionBoxes boxes(state);
    const auto press = [](const char* text) {
        QTimer::singleShot(0, [text] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            for (QAbstractButton* button : box->buttons()) {
                if (button->text().remove(QLatin1Char('&')) == QLatin1String(text)) {
                    button->click();
                    return;
                }
            }
            ADD_FAILURE() << text;
            box->reject();
        });
    };
    press("Save");
    EXPECT_EQ(boxes.AskToSave("x"), SaveAnswer::Save);
    press("Don't save");
    EXPECT_EQ(boxes.AskToSave("x"), SaveAnswer::Discard);
    press("Cancel");
    EXPECT_EQ(boxes.AskToSave("x"), SaveAnswer::Cancel);
    press("Restore");
    EXPECT_EQ(boxes.AskToRestore("x"), RestoreAnswer::Restore);
    press("Discard");
    EXPECT_EQ(boxes.AskToRestore("x"), RestoreAnswer::Discard);
    press("Not now");
    EXPECT_EQ(boxes.AskToRestore("x"), RestoreAnswer::Later);
    press("No");
    EXPECT_FALSE(boxes.AskToGoOn("x"));
    press("Yes");
    EXPECT_TRUE(boxes.AskToGoOn("x"));
}

} // namespace
} // namespace terravo
