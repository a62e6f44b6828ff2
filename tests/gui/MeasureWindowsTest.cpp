// The windows of measuring, over a slope whose figures are known by heart: 100 by 100, from height
// 100 at the west to 110 at the east.
#include "app/windows/MeasureDocuments.h"
#include "app/windows/frm3D.h"
#include "gui/WindowFixture.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>

#include <fstream>
#include <sstream>

namespace terravo {
namespace {

/// A grid of 11 x 11 points.
std::string SlopeText(double lift = 0) {
    std::string text;
    for (int i = 0; i < 121; ++i) {
        const int x = 10 * (i % 11);
        const int y = 10 * (i / 11);
        text += std::to_string(5000000 + x) + "," + std::to_string(600000 + y) + "," +
                std::to_string(100 + x / 10.0 + lift) + "\n";
    }
    return text;
}

struct MeasureWindowsTest : WindowFixture {
    MeasureDocuments* measures = nullptr;

    void OpenWindows() {
        Open();
        parent->SetView3D([this] { return new frm3D(state, messages, scheme); }, settings);
        session->SetOpensWith(OpeningWindows::MapAndSheet);
        parent->SetSheet([this] {
            return new SheetWindow(state, *session, parent->Status(), settings, scheme);
        });
        measures = new MeasureDocuments(state, *session, parent->Status(), scheme, parent.get());
        parent->SetMeasures(measures);
    }
    void OpenSlope() {
        OpenWindows();
        session->LoadNamedFile(folder.Write("slope.dat", SlopeText()));
        ASSERT_TRUE(Soon([this] { return View()->Scene() != nullptr; }));
    }
    [[nodiscard]] SheetView* View() const { return Find<SheetView>("picSheet"); }
    [[nodiscard]] MeasureWindow* Results() const { return Find<MeasureWindow>("MeasureWindow"); }
    [[nodiscard]] SectionWindow* Section() const { return Find<SectionWindow>("SectionWindow"); }

    /// The value in a row of the table that is shown.
    [[nodiscard]] std::string Value(const char* what) const {
        const auto* table = Find<QTableWidget>("tblFigures");
        for (int row = 0; row < table->rowCount(); ++row) {
            if (table->item(row, 0)->text() == QLatin1String(what)) {
                return table->item(row, 1)->text().toStdString();
            }
        }
        return std::string("no ") + what;
    }
    void ClickAt(double x, double y) const {
        QTest::mouseClick(View(), Qt::LeftButton, {},
                          View()->PixelAt({5000000 + x, 600000 + y}).toPoint());
    }
    void Draw(const char* tool, const std::vector<PlanPoint>& places) const {
        Choose(tool);
        for (const PlanPoint& place : places) {
            ClickAt(place.x, place.y);
        }
        QTest::keyClick(View(), Qt::Key_Return);
    }
    void PointAt(SheetView& view, QPointF to) const {
        QMouseEvent move(QEvent::MouseMove, to, view.mapToGlobal(to), Qt::NoButton, {}, {});
        QApplication::sendEvent(&view, &move);
    }
    void Compare(const std::string& path) {
        dialogs.answer = path;
        Choose("mnuCompare");
    }
};

TEST_F(MeasureWindowsTest, WhatCannotBeMeasuredSaysWhy) {
    OpenWindows();
    const auto tip = [this](const char* name) {
        const auto* entry = Find<QAction>(name);
        return entry->isEnabled() ? std::string() : entry->toolTip().toStdString();
    };
    for (const char* name : {"mnuAreas", "mnuHypsometry", "mnuVolume", "mnuCompare", "mnuSection",
                             "mnuPlaceHeight", "mnuPolygon", "mnuPolygonFile"}) {
        EXPECT_EQ(tip(name), state.texts[Text::CheckNoPoints]) << name;
    }
    Choose("mnuMeasureResults");
    EXPECT_TRUE(Find<QLabel>("lblNothing")->isVisible());
    EXPECT_FALSE(Find<QPushButton>("cmdCopyText")->isEnabled());
    session->LoadNamedFile(folder.Write("slope.dat", SlopeText()));
    EXPECT_EQ(tip("mnuAreas"), "");
    EXPECT_EQ(tip("mnuCrossSections"), state.texts[Text::MeasureNoSection]);
    EXPECT_EQ(tip("mnuRemoveSection"), state.texts[Text::MeasureNoSection]);
    EXPECT_EQ(tip("mnuRemovePolygon"), state.texts[Text::MeasureNoPolygon]);
    EXPECT_EQ(tip("mnuForgetSecond"), state.texts[Text::MeasureNoSecond]);
}

TEST_F(MeasureWindowsTest, FiguresAreShownCopiedAndSaved) {
    OpenSlope();
    Choose("mnuAreas");
    EXPECT_EQ(Value("Plan area"), "10000.000");
    EXPECT_EQ(Value("Mean height"), "105.000");
    EXPECT_EQ(Value("Mean slope"), "10.000");
    DatumDialog::Proposal proposed;
    measures->askHeight = [&](const DatumDialog::Proposal& proposal) {
        proposed = proposal;
        return 104.0;
    };
    Choose("mnuVolume");
    EXPECT_DOUBLE_EQ(proposed.height, 105);
    EXPECT_DOUBLE_EQ(proposed.balance, 105);
    EXPECT_DOUBLE_EQ(proposed.lowest, 100);
    EXPECT_EQ(Value("Cut"), "18000.000");
    EXPECT_EQ(Value("Fill"), "8000.000");
    EXPECT_EQ(Value("Net: cut less fill"), "10000.000");
    EXPECT_EQ(LabelText("lblAbout"), "Survey: slope.dat\nWithin: the whole surface");

    Click("cmdCopyCsv");
    const std::string csv = QGuiApplication::clipboard()->text().toStdString();
    EXPECT_TRUE(csv.starts_with("What,Value,Unit\nSurvey,slope.dat,\n")) << csv;
    EXPECT_NE(csv.find("\nFill,8000,m³\n"), std::string::npos) << csv;
    Click("cmdCopyText");
    const std::string text = QGuiApplication::clipboard()->text().toStdString();
    EXPECT_TRUE(text.starts_with("Volume against height 104.000 m\nSurvey: slope.dat\n")) << text;
    dialogs.answer = folder.File("volume.csv");
    Click("cmdSaveCsv");
    std::stringstream saved;
    saved << std::ifstream(*dialogs.answer).rdbuf();
    EXPECT_EQ(saved.str(), csv);

    Choose("mnuHypsometry");
    EXPECT_EQ(Find<QTableWidget>("tblFigures")->columnCount(), 5);
    EXPECT_EQ(Find<QListWidget>("lstMeasures")->count(), 3) << "newest first";
    Find<QListWidget>("lstMeasures")->setCurrentRow(2);
    EXPECT_EQ(Value("Plan area"), "10000.000");
}

TEST_F(MeasureWindowsTest, ASectionIsClickedAndItsWindowAndTheSheetFollowEachOther) {
    OpenSlope();
    Draw("mnuSection", {{10, 50}, {90, 50}});
    ASSERT_EQ(session->SectionLine().size(), 2U);
    EXPECT_EQ(View()->Tool(), SheetTool::Pan) << "a section is drawn once";
    SectionWindow* section = Section();
    ASSERT_TRUE(Soon([&] { return section->isVisible() && section->View().Scene() != nullptr; }));

    PointAt(*View(), View()->PixelAt({5000050, 600050}));
    EXPECT_TRUE(LabelText("lblPlace").starts_with("Station: 40.")) << LabelText("lblPlace");
    EXPECT_NE(LabelText("lblPlace").find("Height: 105."), std::string::npos);
    PointAt(*View(), View()->PixelAt({5000050, 600090}));
    EXPECT_EQ(LabelText("lblPlace"), "") << "far from the line";

    std::optional<PlanPoint> pointed;
    QObject::connect(section, &SectionWindow::Pointed, section, [&](double x, double y) {
        pointed = PlanPoint{x, y};
    });
    const SheetBox& box = section->View().Scene()->map;
    PointAt(section->View(), section->View().Place().ToPixels(box.Middle()));
    ASSERT_TRUE(pointed);
    EXPECT_NEAR(pointed->x, 5000050, 20);
    EXPECT_NEAR(pointed->y, 600050, 1e-6);

    dialogs.answer = folder.File("profile.csv");
    section->findChild<QPushButton*>("cmdSaveCsv")->click();
    std::ifstream profile(*dialogs.answer);
    std::string header;
    std::getline(profile, header);
    EXPECT_TRUE(header.starts_with("station,") && header.ends_with(",height")) << header;

    measures->askCross = [](const CrossDialog::Choice&, double, bool hasSecond) {
        EXPECT_FALSE(hasSecond);
        return CrossDialog::Choice{20, 60, 100};
    };
    Choose("mnuCrossSections");
    const auto* shown = Find<QComboBox>("cmbShown");
    EXPECT_EQ(shown->count(), 6) << "the axis, and at 0, 20, ... 80";
    EXPECT_EQ(shown->currentIndex(), 1);
    EXPECT_NE(LabelText("lblVolumes").find("By end areas: cut 24"), std::string::npos)
        << LabelText("lblVolumes");
    Choose("mnuRemoveSection");
    EXPECT_EQ(section->ShownLine(), nullptr);
    EXPECT_FALSE(Find<QAction>("mnuCrossSections")->isEnabled());
}

TEST_F(MeasureWindowsTest, ASecondSurveyIsReadWithCareAndCompared) {
    OpenSlope();
    Compare(folder.Write("broken.dat", "no points at all\nin here\n"));
    EXPECT_EQ(session->Measures().Second(), nullptr);
    EXPECT_EQ(messages.boxes.size() + imports.asked.size(), 1U) << "told or asked";
    const std::size_t asked = imports.asked.size();
    Compare(folder.Write("four.txt", "1,2,3,4\n2,3,4,5\n3,4,6,7\n"));
    EXPECT_EQ(imports.asked.size(), asked + 1) << "four columns";
    EXPECT_EQ(session->Measures().Second(), nullptr) << "which nobody has chosen";

    const std::size_t told = messages.boxes.size();
    Compare(folder.Write("row.dat", "1,1,1\n2,2,5\n3,3,4\n"));
    EXPECT_EQ(messages.boxes.size(), told + 1) << "a row of points has no surface";
    EXPECT_EQ(session->Measures().Second(), nullptr);

    Compare(folder.Write("raised.dat", SlopeText(1.5)));
    EXPECT_EQ(Value("Cut"), "0.000");
    EXPECT_EQ(Value("Fill"), "15000.000");
    EXPECT_EQ(Value("Plan area compared"), "10000.000");
    EXPECT_EQ(session->Points().count, 121) << "the survey itself stays";
    Click("cmdDifferenceSheet");
    auto* sheet = Find<SheetView>("picDifference");
    ASSERT_NE(sheet->Scene(), nullptr);
    PointAt(*sheet, sheet->PixelAt({5000050, 600050}));
    EXPECT_NE(LabelText("lblDifference").find("Difference: 1.500 m"), std::string::npos);

    Draw("mnuSection", {{10, 50}, {90, 50}});
    PointAt(*View(), View()->PixelAt({5000050, 600050}));
    EXPECT_NE(LabelText("lblPlace").find("Difference: 1.500 m"), std::string::npos)
        << LabelText("lblPlace");
    // What is of before says so, is not handed out, and is made anew when that is asked for.
    auto* difference = Find<DifferenceWindow>("DifferenceWindow");
    const auto isOld = [&] { return difference->windowTitle().contains("before the last change"); };
    const auto can = [&](const char* name) {
        return difference->findChild<QPushButton*>(name)->isEnabled();
    };
    EXPECT_FALSE(isOld() || can("cmdAgain"));
    Compare(folder.Write("raised more.dat", SlopeText(2.5)));
    EXPECT_TRUE(isOld() && can("cmdAgain"));
    EXPECT_FALSE(can("cmdExport") || can("cmdExportVector"));
    difference->findChild<QPushButton*>("cmdAgain")->click();
    EXPECT_FALSE(isOld() || !can("cmdExport"));
    PointAt(*sheet, sheet->PixelAt({5000050, 600050}));
    EXPECT_NE(LabelText("lblDifference").find("Difference: 2.500 m"), std::string::npos);

    Choose("mnuForgetSecond");
    EXPECT_TRUE(isOld());
    EXPECT_FALSE(can("cmdAgain"));
    EXPECT_FALSE(Find<QPushButton>("cmdDifferenceSheet")->isEnabled());
}

TEST_F(MeasureWindowsTest, APolygonHoldsUntilItIsRemoved) {
    OpenSlope();
    Draw("mnuPolygon", {{10, 10}, {90, 10}, {90, 50}, {10, 50}}); // near points of the grid
    ASSERT_EQ(session->Measures().Polygon().size(), 1U);
    Choose("mnuAreas");
    EXPECT_EQ(Value("Plan area"), "3200.000");
    // One that crosses itself is refused, not lost: its last vertex is taken back.
    Draw("mnuPolygon", {{10, 10}, {90, 10}, {10, 90}, {90, 90}});
    EXPECT_EQ(session->Measures().Polygon()[0].size(), 4U) << "that of before";
    QTest::keyClick(View(), Qt::Key_Backspace);
    QTest::keyClick(View(), Qt::Key_Return);
    EXPECT_EQ(session->Measures().Polygon()[0].size(), 3U);
    Draw("mnuPolygon", {{10, 10}, {90, 10}, {90, 50}, {10, 50}});
    Choose("mnuAreas");
    EXPECT_EQ(LabelText("lblAbout"), "Survey: slope.dat\nWithin: polygon of 4 vertices");
    dialogs.answer = folder.Write("ring.txt", "5000010 600010\n5000020 600010\n5000020 600020\n");
    const std::size_t told = messages.boxes.size();
    Choose("mnuPolygonFile");
    EXPECT_EQ(messages.boxes.size(), told) << "an open ring is as good as a closed one";
    Choose("mnuAreas");
    EXPECT_EQ(Value("Plan area"), "50.000");
    Choose("mnuRemovePolygon");
    Choose("mnuAreas");
    EXPECT_EQ(Value("Plan area"), "10000.000");

    Choose("mnuPlaceHeight");
    ClickAt(50, 50);
    EXPECT_NEAR(std::stod(Value("Height")), 105, 0.1) << "within a pixel";
    EXPECT_EQ(Value("Falls towards"), "270.000");
}

// A sign between thousands is typed by nobody: 150,5 is no 1505.
TEST(NumberBoxTest, TakesPointAndCommaForTheDecimalSign) {
    RunState state;
    for (const char* name : {"C", "it_IT", "en_US", "de_CH"}) {
        QLocale::setDefault(QLocale(QString::fromLatin1(name)));
        for (const char* typed : {"150,5", "150.5"}) {
            DatumDialog dialog(state, {1.0 / 3, 0, 1, 1.0 / 3});
            EXPECT_EQ(dialog.Height(), 1.0 / 3) << "all digits of what is proposed";
            auto* box = dialog.findChild<QDoubleSpinBox*>("spnHeight");
            box->selectAll();
            QTest::keyClicks(box, typed);
            QTest::keyClick(box, Qt::Key_Tab);
            EXPECT_EQ(dialog.Height(), 150.5) << name << " " << typed;
        }
    }
    QLocale::setDefault(QLocale::c());
}

TEST_F(MeasureWindowsTest, ResultsFollowTheSurveyAndOthersAreMarked) {
    OpenSlope();
    Choose("mnuAreas");
    Compare(folder.Write("raised.dat", SlopeText(1.5)));
    const auto* list = Find<QListWidget>("lstMeasures");
    Draw("mnuSection", {{10, 50}, {90, 50}});
    session->SetExcluded({1}, true); // a corner: half a square of the grid goes
    ASSERT_TRUE(Soon([&] { return list->item(0)->text().contains("before the last change"); }));
    EXPECT_FALSE(list->item(1)->text().contains("before"));
    Find<QListWidget>("lstMeasures")->setCurrentRow(1);
    EXPECT_EQ(Value("Plan area"), "9950.000");
    Find<QListWidget>("lstMeasures")->setCurrentRow(0);
    EXPECT_EQ(Value("Fill"), "15000.000") << "as it was";
    Click("cmdAgain");
    EXPECT_EQ(Value("Fill"), "14925.000");

    session->LoadNamedFile(folder.Write("other.dat", HillsText(6)));
    ASSERT_TRUE(Soon([&] { return Section()->ShownLine() == nullptr; }));
    EXPECT_EQ(session->Measures().Second(), nullptr);
    EXPECT_EQ(list->count(), 3) << "what was measured stays";
    EXPECT_TRUE(list->item(0)->text().contains("of points opened before"));
    Find<QListWidget>("lstMeasures")->setCurrentRow(2);
    EXPECT_FALSE(Find<QPushButton>("cmdAgain")->isEnabled()) << "of other points";
}

} // namespace
} // namespace terravo
