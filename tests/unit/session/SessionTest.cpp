#include "app/session/Session.h"

#include "support/FakeRun.h"
#include "support/FakeView.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace terravo {
namespace {

struct SessionTest : FakeRun, ::testing::Test {
    FakeView view;
    Session session{state, Services()};

    const std::string hill = "1,1,0\n9,1,2\n9,9,4\n1,9,6\n5,4,9\n";

    SessionTest() {
        state.workFolder = folder.Path();
        state.pointsFolder = "/points/";
        session.SetView(view);
    }
    ~SessionTest() override { EXPECT_EQ(view.working, 0) << "every command has ended"; }
};

TEST_F(SessionTest, OpensAFileAndShowsItsMap) {
    dialogs.answer = folder.Write("a.dat", hill);
    session.OpenPointFile();
    ASSERT_EQ(dialogs.plans.size(), 1U);
    const FileDialogPlan& plan = dialogs.plans[0];
    EXPECT_FALSE(plan.save);
    EXPECT_EQ(plan.title, "Choose a file ");
    EXPECT_EQ(plan.folder, "/points/");
    EXPECT_EQ(plan.name, "");
    EXPECT_EQ(plan.filters,
              (std::vector<FileFilter>{{"Files  (*.dat;*.txt;*.qrw)", "*.dat;*.txt;*.qrw"},
                                       {"Tutti i Files (*.*)", "*.*"}}));
    EXPECT_EQ(view.pointCount, 5);
    EXPECT_EQ(view.visible, std::vector<bool>{true});
    EXPECT_EQ(view.title3D, "Delaunay 2D : a.dat, 4");
    EXPECT_EQ(session.Recent().Paths(), std::vector<std::string>{*dialogs.answer});
    EXPECT_FALSE(folder.Read("livelli.txt").empty());
    EXPECT_FALSE(folder.Read("point_qrw.txt").empty());

    dialogs.answer.reset();
    session.OpenPointFile();
    EXPECT_EQ(dialogs.plans[1].folder, folder.Path()) << "where the last file was chosen";
    EXPECT_EQ(view.visible.size(), 1U) << "a cancelled dialog changes nothing";
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(SessionTest, ABadFileAtTheStartEndsTheProgramAndSavesNothing) {
    const std::string path = folder.Write("bad.qrw", "1,2\n");
    clipboard.text = path;
    session.LoadStartUpFile("");
    EXPECT_EQ(programEnd.ends, 1);
    EXPECT_EQ(clipboard.clears, 1);
    EXPECT_TRUE(session.Recent().Paths().empty());
    EXPECT_TRUE(view.visible.empty());
}

TEST_F(SessionTest, AFileOpenedByTheUserThatCannotBeReadLeavesEverythingAsItWas) {
    clipboard.text = "something";
    const std::string good = folder.Write("a.dat", hill);
    session.LoadNamedFile(good);
    const std::string bad = folder.Write("bad.dat", "some words\n");
    const std::string missing = folder.File("none.dat");
    dialogs.answer = bad;
    session.OpenPointFile();
    session.LoadNamedFile(missing);
    session.SetReadsFreeLists(true);
    const std::string letter = folder.Write("letter.dat", "1,2,3\n4,x7,6\n");
    session.LoadNamedFile(letter);
    session.SetReadsFreeLists(false);
    ASSERT_EQ(messages.boxes.size(), 3U);
    EXPECT_EQ(messages.boxes[0].text, state.texts[Text::FileNotRead] + "\r\n" + bad +
                                          ": no line holds numbers that could be a point.");
    EXPECT_EQ(messages.boxes[1].text, state.texts[Text::FileMissing] + "\r\n" + missing);
    EXPECT_EQ(messages.boxes[2].text, state.texts[Text::FileNotRead] + "\r\n" + letter +
                                          ", line 2, field 2: \"x7\" is not a number.");
    EXPECT_EQ(log.lines.size(), 3U);
    EXPECT_EQ(programEnd.ends, 0);
    EXPECT_EQ(clipboard.text, "something");
    EXPECT_EQ(view.pointCount, 5);
    EXPECT_EQ(view.visible, std::vector<bool>{true});
    EXPECT_EQ(view.title3D, "Delaunay 2D : a.dat, 4");
    EXPECT_EQ(session.Recent().Paths(), std::vector<std::string>{good});
    session.SetShowPerimeter(true);
    EXPECT_EQ(messages.boxes.size(), 3U) << "the points are still there to be drawn";
}

TEST_F(SessionTest, AsksAboutAFileThatIsNotCertainUntilItFits) {
    const std::string path = folder.Write("p.txt", "7,1,1,0\n8,9,1,2\n9,9,9,4\n10,1,9,6\n");
    session.LoadNamedFile(path);
    ASSERT_EQ(imports.asked.size(), 1U) << "and the user cancels";
    EXPECT_EQ(imports.asked[0].doubt, "4 columns hold numbers");
    EXPECT_EQ(view.pointCount, -1);
    EXPECT_TRUE(messages.boxes.empty());

    imports.forgetsAfter = 2;
    imports.answer = ImportChoice{imports.asked[0].plan, BadRecords::Refuse};
    imports.answer->plan.fieldCount = 5;
    session.LoadNamedFile(path);
    ASSERT_EQ(imports.asked.size(), 3U) << "asked, asked again, and left";
    EXPECT_NE(imports.asked[2].doubt.find("line 1: 4 fields"), std::string::npos);
    EXPECT_EQ(imports.asked[2].doubtKind, DoubtKind::None);
    EXPECT_EQ(view.pointCount, -1);

    ImportChoice choice{imports.asked[0].plan, BadRecords::Refuse};
    choice.plan.columns = ParseColumns("pxyz").value();
    imports.answer = choice;
    session.LoadNamedFile(path);
    EXPECT_EQ(view.pointCount, 4);
    EXPECT_EQ(view.remark, "pxyz");
    EXPECT_EQ(session.TextOfPlace({9, 1}, {0.1, 0.1}), "x: 9   y: 1   z: 2   8");

    session.OpenRecentFile(1);
    EXPECT_EQ(imports.asked.size(), 4U) << "a recent file is read as it was chosen";
    EXPECT_EQ(view.remark, "pxyz");
    static_cast<void>(folder.Write("p.txt", "7,1,1,0\n8,9,1,2\n9,9,9\n10,1,9,6\n"));
    imports.answer.reset();
    session.OpenRecentFile(1);
    EXPECT_EQ(imports.asked.size(), 5U) << "until it no longer fits";
    EXPECT_EQ(view.pointCount, 4);

    dialogs.answer = folder.File("clean.txt");
    session.SavePoints();
    EXPECT_EQ(folder.Read("clean.txt"), "1,1,0\n9,1,2\n9,9,4\n1,9,6\n");
    session.SetReadsFreeLists(true);
    session.LoadNamedFile(folder.Write("free.txt", "1\n1 0 9 1\n2 9 9 4\n"));
    EXPECT_EQ(view.pointCount, 3);
    EXPECT_EQ(view.remark, "free list of numbers");
    Session next(state, Services());
    next.SetView(view);
    next.LoadRecentFiles();
    EXPECT_TRUE(next.ReadsFreeLists()) << "kept in the settings";
}

TEST_F(SessionTest, HidesWhatBelongsToAnEarlierFileWhenADrawingFails) {
    session.LoadNamedFile(folder.Write("a.dat", hill));
    session.LoadNamedFile(folder.Write("one.dat", "1,1,1\n"));
    EXPECT_EQ(view.visible, (std::vector<bool>{true, false})) << "no frame could be drawn";
    const std::string hillAgain = folder.Write("b.dat", hill);
    session.LoadNamedFile(hillAgain);
    session.LoadNamedFile(folder.Write("line.dat", "1,1,0\n2,2,1\n3,3,2\n"));
    EXPECT_EQ(view.visible, (std::vector<bool>{true, false, true, false}));
    session.LoadNamedFile(hillAgain);
    state.workFolder = folder.File("missing/");
    session.SetShowPerimeter(true);
    EXPECT_FALSE(session.ResultViewsVisible()) << "an option's drawing fails as well";
    state.workFolder = folder.Path();
    session.SetShowPerimeter(true);
    EXPECT_TRUE(session.ResultViewsVisible());
}

TEST_F(SessionTest, TellsPlaceAndHeightUnderThePointer) {
    EXPECT_EQ(session.TextOfPlace({1, 2}), "x: 1   y: 2");
    session.LoadNamedFile(folder.Write("p.dat", "1.25,1,0\n9,1,2.5\n9,9,4\n1,9,6\n"));
    EXPECT_EQ(session.TextOfPlace({9 - 1e-12, 5.004}), "x: 9.00   y: 5.00   z: 3.3");
    EXPECT_EQ(session.TextOfPlace({2.126, 8.999}), "x: 2.13   y: 9.00   z: 5.7");
    EXPECT_EQ(session.TextOfPlace({-3, 5}), "x: -3.00   y: 5.00") << "outside the triangles";
    state.decimalSeparator = ',';
    session.LoadNamedFile(folder.Write("q.dat", "0.123456789012,5e5,1\n1000,5e5,2\n1,4e5,3\n"));
    EXPECT_EQ(session.TextOfPlace({2.5, 450000}), "x: 2,50   y: 450000,00   z: 2")
        << "no finer than a ten-millionth of the extent";
}

TEST_F(SessionTest, KeepsTheMeshFileOfTheLastTriangulation) {
    session.LoadNamedFile(folder.Write("t.dat", "1,1,-.5\n5,1,1\n1,5,2e20\n"));
    const std::string bytes = folder.Read("point_qrw.txt");
    EXPECT_TRUE(bytes.ends_with("2E+20 \r\n")) << bytes;
    session.LoadNamedFile(folder.Write("line.dat", "1,1,0\n2,2,1\n3,3,2\n"));
    ASSERT_EQ(messages.boxes.size(), 2U);
    EXPECT_EQ(messages.boxes[1],
              (FakeMessages::Box{state.texts[Text::NoTriangulation] + " IERR = 225\r\n" +
                                     state.texts[Text::NoTriangulationAdvice],
                                 " Prova"}));
    EXPECT_EQ(folder.Read("point_qrw.txt"), bytes);
}

TEST_F(SessionTest, DrawsElsewhereWithoutTouchingTheExchangeFiles) {
    session.LoadNamedFile(folder.Write("a.dat", hill));
    const std::string segments = folder.Read("livelli.txt");
    ASSERT_FALSE(segments.empty());
    RecordingSurface paper(300, 200);
    static_cast<void>(folder.Write("livelli.txt", "of the window"));
    EXPECT_TRUE(session.DrawMapOn(paper));
    EXPECT_FALSE(paper.userCalls.empty());
    EXPECT_EQ(folder.Read("livelli.txt"), "of the window");

    view.AfterProgress(1, [this] { session.RequestStop(); });
    EXPECT_FALSE(session.DrawMapOn(paper)) << "stopped";
    EXPECT_FALSE(session.RefusesToExport()) << "the window's map is as complete as before";
    session.SetMode(MapMode::Areas);
    session.SetMode(MapMode::Lines);
    EXPECT_EQ(folder.Read("livelli.txt"), segments);
}

TEST_F(SessionTest, ReportsASegmentFileThatCannotBeWritten) {
    state.workFolder = folder.File("missing/");
    session.LoadNamedFile(folder.Write("a.dat", hill));
    EXPECT_EQ(state.lastDrawError, folder.File("missing/livelli.txt: No such file or directory"));
    EXPECT_EQ(messages.boxes.at(0), (FakeMessages::Box{state.lastDrawError, "Disegna/Livelli"}));
    EXPECT_EQ(session.ResultViewsVisible(), false);
}

TEST_F(SessionTest, TellsWhatWouldBeSilent) {
    session.LoadNamedFile(folder.Write("r.dat", hill + "5,4,9\n1,1,0\n"));
    EXPECT_EQ(view.remark, "xyz; " + state.texts[Text::UnusedPoints] + " 2");
    const std::string origin = "0,0,1\n5,5,2\n9,1,3\n";
    session.LoadNamedFile(folder.Write("z.dat", origin));
    EXPECT_EQ(view.counts, "3 points, 1 triangles, exact signs");
    session.LoadStartUpFile("\"" + folder.Write("z.qrw", origin) + "\"");
    EXPECT_EQ(view.counts, "3 points, 0 triangles") << "as the companion program knows it";
    EXPECT_EQ(view.remark, state.texts[Text::FirstPointsNotDistinct]);
    session.SetExact(true);
    EXPECT_EQ(view.counts, "3 points, 1 triangles, exact signs");
    EXPECT_EQ(view.title3D, "Delaunay 2D : z.qrw, 1") << "handed over anew";
    session.SetExact(false);
    session.LoadNamedFile(folder.Write("a.dat", hill));
    EXPECT_EQ(view.remark, "xyz");
    EXPECT_EQ(view.counts, "5 points, 4 triangles");
}

TEST_F(SessionTest, LoadsTheStartUpFileOfTheCommandLineOrTheClipboard) {
    const std::string survey = folder.Write("survey.QRW", hill);
    clipboard.text = survey;
    session.LoadStartUpFile("");
    EXPECT_EQ(view.visible, std::vector<bool>{true});
    clipboard.text = folder.File("other.qrw");
    session.LoadStartUpFile("\"" + survey + "\"");
    EXPECT_EQ(view.pointCount, 5) << "the command line replaces the clipboard";
    EXPECT_EQ(view.closes, 0);
}

TEST_F(SessionTest, ClosesAfterTheCompanionsFile) {
    const std::string request = folder.Write("my_point.qrw", hill);
    session.LoadStartUpFile("\"" + request + "\"");
    EXPECT_EQ(view.closes, 1);
    EXPECT_TRUE(view.visible.empty());
}

TEST_F(SessionTest, ExportsTrianglesAndLevelsWhereTheUserSays) {
    session.LoadNamedFile(folder.Write("a.dat", hill));
    dialogs.answer = folder.File("t.qrz");
    session.Export(QrzKind::Triangles);
    const FileDialogPlan& plan = dialogs.plans.back();
    EXPECT_TRUE(plan.save);
    EXPECT_EQ(plan.name, "Point");
    EXPECT_EQ(plan.folder, folder.Path());
    EXPECT_EQ(plan.extension, "qrz");
    EXPECT_EQ(clipboard.text, folder.File("t.qrz"));
    EXPECT_EQ(view.note, "Saved: " + folder.File("t.qrz"));
    EXPECT_NE(folder.Read("t.qrz").find("POLYLINE"), std::string::npos);

    session.SetMode(MapMode::Areas);
    EXPECT_EQ(folder.Read("livelli.txt"), "") << "areas write no segments";
    dialogs.answer = folder.File("l.x");
    session.Export(QrzKind::Levels);
    EXPECT_EQ(clipboard.text, folder.File("l.x"));
    EXPECT_NE(folder.Read("l.x").find("LL_0"), std::string::npos);
    EXPECT_EQ(session.Options().mode, MapMode::Lines);
    EXPECT_EQ(view.linesSelected, 1);

    static_cast<void>(folder.Write("point_qrw.txt", "no mesh"));
    session.Export(QrzKind::Triangles);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, "Error Point FILE QRZ..");
    EXPECT_NE(folder.Read("l.x").find("LL_0"), std::string::npos) << "the old file stays";
    messages.boxes.clear();

    dialogs.answer.reset();
    session.Export(QrzKind::Levels);
    EXPECT_TRUE(messages.boxes.empty()) << "cancelled";
    dialogs.error = AppError(70, "Dialog", "Permission denied");
    session.Export(QrzKind::Levels);
    EXPECT_EQ(messages.boxes.at(0).text, "Error File QRZ....");
}

TEST_F(SessionTest, FollowsARuleUntilItFitsNoMoreOrAnotherFileIsRead) {
    const std::string path = folder.Write("a.dat", hill); // heights 0, 2, 4, 6 and 9
    session.LoadNamedFile(path);
    session.SetLevelCount(12);
    EXPECT_EQ(view.levelCount, 12);
    const auto hasLevel = [this](const char* height) {
        return folder.Read("livelli.txt").find(height) != std::string::npos;
    };
    session.SetLevelRule(RuleByInterval(2.25));
    EXPECT_EQ(view.levelCount, 3);
    EXPECT_TRUE(hasLevel(" 2.25 ") && hasLevel(" 4.5 ") && hasLevel(" 6.75 "));
    session.SetMode(MapMode::Areas);
    dialogs.answer = folder.File("levels.qrz");
    session.Export(QrzKind::Levels);
    EXPECT_EQ(folder.Read("levels.qrz").find("N.Layer -\r\n 3 \r\n"), 0U) << "drawn as lines";

    session.SetLevelRule(RuleByList({8}));
    EXPECT_EQ(view.levelCount, 1);
    EXPECT_TRUE(messages.boxes.empty());
    EXPECT_TRUE(session.SetExcluded({5}, true));
    ASSERT_EQ(messages.boxes.size(), 1U) << "there is nothing above 6 any more";
    EXPECT_NE(messages.boxes[0].text.find("and the highest, 6."), std::string::npos);
    EXPECT_EQ(view.levelCount, 12);

    session.SetLevelRule(RuleByInterval(1));
    EXPECT_EQ(view.levelCount, 5);
    session.LoadNamedFile(path);
    EXPECT_EQ(session.Options().levels, RuleByCount(12));
    EXPECT_EQ(view.levelCount, 12);
}

TEST_F(SessionTest, EveryStepOnTheSurfaceCanBeUndoneAndDoneAgain) {
    session.LoadNamedFile(folder.Write("a.dat", hill));
    const auto triangles = [this] { return session.TheSurvey().Surface().triangles.count; };
    ASSERT_EQ(triangles(), 4);
    EXPECT_FALSE(session.Undo());

    EXPECT_EQ(session.SurveyPointAt({5.1, 4}, 0.2), 5);
    EXPECT_TRUE(session.SetHeight(5, 20));
    EXPECT_NE(folder.Read("point_qrw.txt").find(" 20"), std::string::npos) << "all follows";
    const SpacePoint start = session.VertexAt({1.1, 1}, 0.2);
    EXPECT_EQ(start, (SpacePoint{1, 1, 0})) << "the point itself";
    EXPECT_TRUE(session.AddDrawnLine(LineRole::Breakline, {start, session.VertexAt({7, 5}, 0.2)}));
    EXPECT_GT(triangles(), 4);
    dialogs.answer = folder.Write("ring.txt", "2 2\n8 2\n8 8\n2 8\n");
    session.AddLineFile(LineRole::Boundary);
    ASSERT_EQ(messages.informations.size(), 1U) << "the ring was open";
    EXPECT_EQ(session.TheSurvey().Plan().boundary.size(), 1U);
    EXPECT_NE(view.remark.find("hidden triangles: "), std::string::npos);
    session.VerifySurface();
    EXPECT_EQ(messages.informations.back().text.rfind("The surface is sound: ", 0), 0U);
    const Index bounded = triangles();
    session.SetLongestSide(1e-3);
    EXPECT_EQ(triangles(), bounded) << "no further than a boundary";
    SurfacePlan bare;
    bare.longestSide = 1e-3;
    EXPECT_TRUE(session.ApplyPlan(bare, Text::StepRemoveLines));
    EXPECT_EQ(triangles(), 0);
    EXPECT_NE(view.remark.find("No triangle is visible"), std::string::npos);

    const SurfacePlan last = session.TheSurvey().Plan();
    EXPECT_EQ(session.History().UndoName(), "remove lines");
    int steps = 0;
    while (session.Undo()) {
        ++steps;
    }
    EXPECT_EQ(steps, 5);
    EXPECT_EQ(session.TheSurvey().Plan(), SurfacePlan());
    EXPECT_EQ(triangles(), 4);
    while (session.Redo()) {
        --steps;
    }
    EXPECT_EQ(steps, 0);
    EXPECT_EQ(session.TheSurvey().Plan(), last);

    messages.boxes.clear();
    EXPECT_FALSE(session.SetExcluded({1, 2, 3}, true));
    EXPECT_EQ(messages.boxes.size(), 1U) << "three must remain";
    dialogs.answer = folder.Write("bad.txt", "1 2 3\n4 x 6\n");
    session.AddLineFile(LineRole::Breakline);
    EXPECT_EQ(messages.boxes.size(), 2U);
    EXPECT_EQ(session.TheSurvey().Plan(), last) << "nothing of a bad file is taken";
    session.LoadNamedFile(folder.Write("b.dat", hill));
    EXPECT_FALSE(session.History().CanUndo()) << "another file";
}

TEST_F(SessionTest, RefusesToExportWhatWasStoppedUntilADrawingIsComplete) {
    view.AfterProgress(3, [this] { session.RequestStop(); });
    session.LoadNamedFile(folder.Write("a.dat", hill));
    EXPECT_EQ(view.visible, std::vector<bool>{true}) << "what is drawn stays";
    EXPECT_EQ(view.remark, state.texts[Text::DrawingStopped]);
    EXPECT_EQ(view.title3D, "");
    EXPECT_TRUE(messages.boxes.empty());
    dialogs.answer = folder.File("out.qrz");
    for (const QrzKind kind : {QrzKind::Triangles, QrzKind::Levels}) {
        session.Export(kind);
    }
    ASSERT_EQ(messages.boxes.size(), 2U);
    EXPECT_NE(messages.boxes[0].text.find("to its end"), std::string::npos);
    EXPECT_TRUE(dialogs.plans.empty());
    session.Close();
    EXPECT_FALSE(std::filesystem::exists(folder.File("px.qrz")));

    session.SetShowPerimeter(true);
    EXPECT_EQ(view.remark, "xyz");
    EXPECT_EQ(view.title3D, "Delaunay 2D : a.dat, 4");
    session.Export(QrzKind::Triangles);
    EXPECT_FALSE(folder.Read("out.qrz").empty());

    // Contours are drawn anew before they are written; that drawing can be stopped as well.
    dialogs.answer = folder.File("levels.qrz");
    view.AfterProgress(2, [this] { session.RequestStop(); });
    session.Export(QrzKind::Levels);
    EXPECT_FALSE(std::filesystem::exists(folder.File("levels.qrz")));
}

TEST_F(SessionTest, StopsReadingAndTriangulatingWithoutAPoint) {
    std::string text;
    for (int i = 0; i < 70000; ++i) {
        text += std::to_string(1 + i % 300) + "," + std::to_string(1 + i / 300) + "," +
                std::to_string(i % 7) + "\n";
    }
    const std::string path = folder.Write("long.dat", text);
    view.AfterProgress(1, [this] { session.RequestStop(); });
    session.LoadNamedFile(path);
    EXPECT_EQ(view.pointCount, -1) << "nothing has changed";
    EXPECT_EQ(session.Points().count, 0);
    EXPECT_TRUE(messages.boxes.empty()) << "a stopped file is not a bad one";
    EXPECT_EQ(view.note, state.texts[Text::ReadingStopped]);

    view.AfterProgress(3, [this] { session.RequestStop(); });
    session.LoadNamedFile(path);
    EXPECT_EQ(view.pointCount, 70000);
    EXPECT_EQ(view.title3D, "");
    EXPECT_EQ(folder.Read("livelli.txt"), "") << "stopped before the first level";
    session.SetShowPerimeter(true);
    EXPECT_NE(view.title3D, "");
}

TEST_F(SessionTest, KeepsADrawingAskedForDuringACommandForLater) {
    view.AfterProgress(2, [this] { session.DrawContourMap(); });
    session.LoadNamedFile(folder.Write("a.dat", hill));
    EXPECT_LT(view.progressLeft, -10) << "ten levels were drawn once more";
}

TEST_F(SessionTest, HandsTheTrianglesBackAtTheEndUnlessSomethingWasExported) {
    session.Close();
    EXPECT_EQ(clipboard.text, std::nullopt) << "nothing to hand back";
    session.LoadNamedFile(folder.Write("a.dat", hill));
    session.Close();
    EXPECT_EQ(clipboard.text, folder.File("px.qrz"));
    EXPECT_EQ(state.lastQrzExportPath, folder.File("px.qrz"));
    clipboard.text = "else";
    session.Close();
    EXPECT_EQ(clipboard.text, "else");
}

TEST_F(SessionTest, ExcludesWhatTheCheckHasFoundFromAllThatIsMadeOfThePoints) {
    std::string text = "# levelled\nname,x,y,z\n";
    for (int i = 0; i < 100; ++i) {
        text += "P" + std::to_string(i + 1) + "," + std::to_string(10 * (i % 10)) + "," +
                std::to_string(10 * (i / 10)) + "," +
                (i == 44 ? "900" : std::to_string(100 + 2 * (i % 10) + i / 10)) + "\n";
    }
    const std::string path = folder.Write("a.csv", text + "P101,45,45,\n");
    session.LoadNamedFile(path);
    EXPECT_EQ(view.findingsShown, 1);
    EXPECT_FALSE(session.Review().IsMade());
    session.CheckSurvey();
    EXPECT_EQ(view.findingsShown, 2);
    const std::vector<Finding>& findings = session.Review().Findings();
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0].kind, FindingKind::VoidHeight);
    ASSERT_EQ(findings[1].kind, FindingKind::HeightOutlier);
    EXPECT_EQ(findings[1].points, std::vector<Index>{45});
    session.MarkPoint(45);
    EXPECT_EQ(view.mark->x, 40);

    EXPECT_TRUE(session.SetExcluded(PointsToExclude(findings[1]), true));
    EXPECT_EQ(view.pointCount, 99);
    EXPECT_NE(view.remark.find("Excluded points: 1"), std::string::npos) << view.remark;
    EXPECT_EQ(folder.Read("livelli.txt").find("900"), std::string::npos);
    EXPECT_TRUE(session.Review().IsStale());
    // A point behind the excluded one keeps its number; the excluded one stays in the list.
    EXPECT_TRUE(session.SetExcluded({44}, true));
    session.CheckSurvey();
    ASSERT_EQ(session.Review().Findings().size(), 2U);
    EXPECT_EQ(session.Review().Findings()[1].points, std::vector<Index>{45});
    EXPECT_TRUE(session.SetExcluded({44}, false));

    dialogs.answer = folder.File("rest.txt");
    session.SavePoints();
    EXPECT_EQ(folder.Read("rest.txt").find("900"), std::string::npos);
    dialogs.answer = folder.File("excluded.txt");
    session.SaveExcludedPoints();
    EXPECT_EQ(folder.Read("excluded.txt"), "40,40,900\n");
    EXPECT_NE(folder.Read("a.csv").find("900"), std::string::npos) << "the file stays";

    std::vector<Index> many;
    for (Index i = 1; i <= 98; ++i) {
        many.push_back(i);
    }
    EXPECT_FALSE(session.SetExcluded(many, true));
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, "Three points must remain.");
    EXPECT_EQ(session.Points().count, 99);

    session.LoadNamedFile(path);
    EXPECT_EQ(view.pointCount, 100);
    EXPECT_FALSE(view.mark) << "another file";
}

} // namespace
} // namespace terravo
