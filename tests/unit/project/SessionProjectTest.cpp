#include "app/project/ProjectStore.h"
#include "app/project/ProjectText.h"
#include "app/session/Session.h"
#include "support/FakeRun.h"
#include "support/FakeView.h"
#include "support/RichProject.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace terravo {
namespace {

struct SessionProject : FakeRun, ::testing::Test {
    FakeView view;
    ProjectStore store;
    FakeProjectQuestions questions;
    ProjectServices services{store, questions};
    std::unique_ptr<Session> session;

    // Four columns of numbers: it has to be asked how it is read.
    const std::string hill = "1;1,5;1;0\n2;9;1;2\n3;9;9;4\n4;1;9;6\n5;5;4;9\n6;3;3;5\n";

    SessionProject() {
        state.workFolder = folder.Path();
        ImportChoice choice;
        choice.plan.columns = *ParseColumns("pyxz");
        choice.plan.separator = FieldSeparator::Semicolon;
        choice.plan.decimal = ',';
        choice.plan.fieldCount = 4;
        imports.answer = choice;
        Start();
    }

    void Start() {
        projects = &services;
        session = std::make_unique<Session>(state, Services());
        session->SetView(view);
    }

    std::string Open(const std::string& name = "points.txt") {
        std::string path = folder.Write(name, hill);
        session->LoadNamedFile(path);
        EXPECT_EQ(session->Points().count, 6);
        return path;
    }

    /// With excluded points, levels and a sheet, saved.
    std::string SaveAProject() {
        Open();
        session->KeepSheet({});
        session->SetExcluded({2, 5}, true);
        session->SetLevelRule(RuleByInterval(0.5));
        SheetPlan sheet;
        sheet.texts.title = "Hill";
        sheet.centre = PlanPoint{1.0 / 3, 2};
        session->KeepSheet(sheet);
        dialogs.answer = folder.File("job"); // without its ending
        EXPECT_TRUE(session->SaveProject());
        return folder.File("job.terravo");
    }
};

TEST_F(SessionProject, LookingAtAFileIsNoWork) {
    Open();
    session->SetLevelCount(7);
    session->SetShowTriangles(true);
    session->SetMode(MapMode::Areas);
    session->KeepSheet({});
    SheetPlan styled;
    styled.theme = "dark";
    styled.centre = PlanPoint{1, 1};
    session->KeepSheet(styled);
    EXPECT_FALSE(session->HasUnsavedWork());
    EXPECT_EQ(session->ProjectName(), "");
    Open("other.txt");
    EXPECT_TRUE(session->MayClose());
    EXPECT_TRUE(questions.asked.empty());
}

TEST_F(SessionProject, WorkIsAskedAboutAndCancellingLeavesEverything) {
    Open();
    session->SetExcluded({1}, true);
    EXPECT_TRUE(session->HasUnsavedWork());
    EXPECT_EQ(session->ProjectName(), "points.txt");
    const std::string other = folder.Write("other.txt", hill);
    session->LoadNamedFile(other);
    EXPECT_EQ(session->TheSurvey().ExcludedPoints(), std::vector<Index>{1});
    EXPECT_EQ(session->Points().sourceName, "points.txt");
    EXPECT_FALSE(session->MayClose());
    EXPECT_EQ(questions.asked, (std::vector<std::string>{"save points.txt", "save points.txt"}));
    session->SetExcluded({1}, false);
    EXPECT_FALSE(session->HasUnsavedWork()) << "what is taken back is no work";

    session->SetExcluded({1}, true);
    questions.save = SaveAnswer::Save; // but the dialog that asks where to is cancelled
    EXPECT_FALSE(session->MayClose());
    questions.save = SaveAnswer::Discard;
    session->LoadNamedFile(other);
    EXPECT_EQ(session->Points().sourceName, "other.txt");
    session->SetLevelRule(RuleByList({3, 4}));
    EXPECT_TRUE(session->MayClose());
    EXPECT_FALSE(session->HasUnsavedWork()) << "asked once";
}

TEST_F(SessionProject, TheStartUpFileIsNeverAskedAbout) {
    clipboard.text = folder.Write("start.qrw", "1 1 0\n9 1 2\n9 9 4\n1 9 6\n");
    session->LoadStartUpFile("");
    session->SetExcluded({1}, true);
    EXPECT_FALSE(session->HasUnsavedWork());
    EXPECT_TRUE(session->MayClose());
    dialogs.answer = folder.File("kept.terravo");
    EXPECT_TRUE(session->SaveProject()) << "but it may be kept";
    session->SetExcluded({1}, false);
    EXPECT_TRUE(session->HasUnsavedWork());
}

TEST_F(SessionProject, AProjectBringsEverythingBackWithoutAQuestion) {
    const std::string path = SaveAProject();
    EXPECT_FALSE(session->HasUnsavedWork());
    EXPECT_EQ(session->ProjectName(), "job.terravo");
    EXPECT_EQ(session->Recent().Paths().front(), path);
    const ProjectWork work = session->Work();
    const std::size_t importQuestions = imports.asked.size();
    EXPECT_GT(importQuestions, 0U) << "reading the points takes a choice";
    Start();
    dialogs.answer = path;
    session->OpenPointFile();
    EXPECT_EQ(session->Work(), work);
    EXPECT_EQ(session->Points().count, 4);
    EXPECT_EQ(session->TheSurvey().AllPoints().x[1], 1);
    EXPECT_EQ(session->TheSurvey().AllPoints().y[1], 1.5);
    EXPECT_EQ(view.pointCount, 4);
    EXPECT_EQ(session->KeptSheet()->texts.title, "Hill");
    EXPECT_EQ(imports.asked.size(), importQuestions);
    EXPECT_TRUE(questions.asked.empty());
    EXPECT_TRUE(messages.boxes.empty());
    EXPECT_TRUE(messages.informations.empty());
    EXPECT_FALSE(session->HasUnsavedWork());
    session->SetLevelCount(20);
    EXPECT_TRUE(session->HasUnsavedWork()) << "of a project every change counts";
    EXPECT_TRUE(session->SaveProject()) << "where it was";
    EXPECT_EQ(store.Read(path).project->levels, RuleByCount(20));
}

TEST_F(SessionProject, SaysThatThePointsHaveChanged) {
    const std::string path = SaveAProject();
    Start();
    const std::string same = folder.Write("points.txt", "1;1,5;1;7\n2;9;1;2\n3;9;9;4\n4;1;9;6\n"
                                                        "5;5;4;9\n6;3;3;5\n");
    session->LoadNamedFile(path);
    ASSERT_EQ(questions.asked.size(), 1U);
    EXPECT_NE(questions.asked[0].find(same), std::string::npos) << questions.asked[0];
    EXPECT_EQ(session->TheSurvey().AllPoints().count, 0) << "not opened";
    questions.goesOn = true;
    session->LoadNamedFile(path);
    EXPECT_EQ(session->TheSurvey().ExcludedPoints(), (std::vector<Index>{2, 5}));
    EXPECT_FALSE(session->HasUnsavedWork());

    static_cast<void>(folder.Write("points.txt", "1;1,5;1;7\n2;9;1;2\n3;9;9;4\n4;1;9;6\n"));
    session->LoadNamedFile(path);
    EXPECT_EQ(session->TheSurvey().ExcludedPoints(), std::vector<Index>{2});
    ASSERT_EQ(messages.informations.size(), 1U);
    EXPECT_NE(messages.informations[0].text.find("1 excluded"), std::string::npos);
    EXPECT_TRUE(session->HasUnsavedWork()) << "the file holds more than there is now";
}

TEST_F(SessionProject, AsksBeforeItReplacesWhatAnotherProgramHasSaved) {
    const std::string path = SaveAProject();
    session->SetExcluded({2}, false);
    EXPECT_TRUE(session->SaveProject());
    EXPECT_TRUE(questions.asked.empty()) << "its own file";

    const std::string other = folder.Read("job.terravo") + "\n\n";
    static_cast<void>(folder.Write("job.terravo", other));
    session->SetExcluded({5}, false);
    EXPECT_FALSE(session->SaveProject());
    ASSERT_EQ(questions.asked.size(), 1U);
    EXPECT_NE(questions.asked[0].find(path), std::string::npos) << questions.asked[0];
    EXPECT_EQ(folder.Read("job.terravo"), other);
    EXPECT_TRUE(session->HasUnsavedWork());

    questions.goesOn = true;
    EXPECT_TRUE(session->SaveProject());
    std::filesystem::remove(path);
    EXPECT_TRUE(session->SaveProject()) << "nothing there to be lost";
    EXPECT_EQ(questions.asked.size(), 2U);
}

TEST_F(SessionProject, LooksForPointsThatAreGone) {
    const std::string path = SaveAProject();
    std::filesystem::create_directories(folder.File("moved"));
    Start();
    std::filesystem::rename(folder.File("points.txt"), folder.File("moved/points.txt"));
    session->LoadNamedFile(path);
    EXPECT_EQ(session->TheSurvey().AllPoints().count, 0);
    EXPECT_NE(questions.asked.at(0).find("points.txt"), std::string::npos);
    questions.goesOn = true;
    dialogs.answer = folder.File("moved/points.txt");
    session->LoadNamedFile(path);
    EXPECT_EQ(session->TheSurvey().AllPoints().count, 6);
    Start();
    std::filesystem::rename(path, folder.File("moved/job.terravo"));
    std::filesystem::rename(folder.File("moved"), folder.File("elsewhere"));
    questions.asked.clear();
    session->LoadNamedFile(folder.File("elsewhere/job.terravo"));
    EXPECT_TRUE(questions.asked.empty()) << "project and points were moved together";
    EXPECT_EQ(session->TheSurvey().AllPoints().count, 6);
}

TEST_F(SessionProject, ABrokenProjectLeavesEverything) {
    Open();
    for (const char* text : {"{", "{\"terravo_project\": 2}", "{\"terravo_project\": 1}"}) {
        session->LoadNamedFile(folder.Write("bad.terravo", text));
    }
    EXPECT_EQ(messages.boxes.size(), 3U);
    EXPECT_EQ(session->Points().count, 6);
    EXPECT_EQ(session->ProjectName(), "");
}

TEST_F(SessionProject, IsRestoredAsUnsavedWork) {
    const std::string path = SaveAProject();
    session->SetExcluded({1}, true);
    const ProjectReading kept =
        ProjectFromText(TextOfProject(session->ProjectToRecover()), "recovery");
    Start();
    ASSERT_TRUE(session->Restore(*kept.project));
    EXPECT_EQ(session->TheSurvey().ExcludedPoints(), (std::vector<Index>{1, 2, 5}));
    EXPECT_EQ(session->ProjectName(), "job.terravo");
    EXPECT_TRUE(session->HasUnsavedWork());
    EXPECT_TRUE(session->SaveProject());
    EXPECT_EQ(store.Read(path).project->surface.excluded, (std::vector<Index>{1, 2, 5}));
    EXPECT_FALSE(session->HasUnsavedWork());
    std::filesystem::remove(folder.File("points.txt"));
    Start();
    EXPECT_FALSE(session->Restore(*kept.project));
}

TEST_F(SessionProject, PointsThatChangedWhileTheyWereAtWorkHaveNoChecksum) {
    Open();
    static_cast<void>(folder.Write("points.txt", hill + "7;4;4;4\n"));
    session->SetExcluded({1}, true);
    dialogs.answer = folder.File("job.terravo");
    EXPECT_TRUE(session->SaveProject());
    EXPECT_EQ(messages.informations.size(), 1U);
    EXPECT_EQ(store.Read(folder.File("job.terravo")).project->source.sha256, "");
    Start();
    session->LoadNamedFile(folder.File("job.terravo"));
    EXPECT_EQ(questions.asked.size(), 1U) << "their length tells it";
}

} // namespace
} // namespace terravo
