#include "app/windows/SheetWindow.h"

#include "app/windows/SheetPanel.h"
#include "app/windows/frm3D.h"
#include "gui/WindowFixture.h"

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPrinter>
#include <QSlider>
#include <QWheelEvent>

namespace terravo {
namespace {

struct SheetWindowTest : WindowFixture {
    QPointer<SheetWindow> sheet;
    SheetView* view = nullptr;

    void OpenSheet(const std::string& language = "en", QSize parentSize = {}) {
        Open({}, language);
        if (!parentSize.isEmpty()) {
            parent->resize(parentSize);
            QTest::qWait(50); // the documents settle after the parent
        }
        parent->SetView3D([this] { return new frm3D(state, messages, scheme); }, settings);
        parent->SetSheet([this] {
            return new SheetWindow(state, *session, parent->Status(), settings, scheme);
        });
        session->LoadNamedFile(folder.Write("hills.dat", HillsText(12)));
        Take();
    }
    void Take() {
        sheet = Find<SheetWindow>("SheetWindow");
        ASSERT_NE(sheet, nullptr);
        view = Find<SheetView>("picSheet");
        ASSERT_TRUE(Soon([this] { return sheet->HasSheet(); }));
    }
    /// Does something and waits for the sheet that comes of it.
    void Remake(const std::function<void()>& change) const {
        const SheetScene* before = view->Scene();
        change();
        ASSERT_TRUE(Soon([&] { return view->Scene() != before; }));
    }
    [[nodiscard]] QPointF MapPixel(double partX, double partY) const {
        const SheetBox& map = view->Scene()->map;
        return view->Place().ToPixels(
            {map.left + partX * map.Width(), map.top + partY * map.Height()});
    }
    void MoveTo(QPointF to, Qt::MouseButtons buttons = {},
                Qt::KeyboardModifiers keys = Qt::NoModifier) const {
        QMouseEvent move(QEvent::MouseMove, to, view->mapToGlobal(to), Qt::NoButton, buttons, keys);
        QApplication::sendEvent(view, &move);
    }
    void Drag(QPointF from, QPointF to, Qt::MouseButton button,
              Qt::KeyboardModifiers keys = Qt::NoModifier) const {
        QTest::mousePress(view, button, keys, from.toPoint());
        QTest::mouseMove(view, ((from + to) / 2).toPoint());
        MoveTo(to, button, keys);
        QTest::mouseRelease(view, button, keys, to.toPoint());
    }
};

TEST_F(SheetWindowTest, TheFirstOneCoversNotTheControlsOfTheMap) {
    OpenSheet("en", {1100, 700});
    const QRect place = sheet->parentWidget()->geometry();
    EXPECT_TRUE(QRect({}, sheet->parentWidget()->parentWidget()->size()).contains(place));
    const auto* levels = Find<QLineEdit>("txtNLiv");
    const QPoint right = levels->mapToGlobal(levels->rect().bottomRight());
    EXPECT_LT(right.x(), sheet->mapToGlobal(QPoint()).x());
    const auto* layers = Find<QListWidget>("lstLayers");
    EXPECT_GE(layers->viewport()->width(), layers->sizeHintForColumn(0)) << "whole words";
}

TEST_F(SheetWindowTest, OpensWithAFileOfTheUserByTheSettingAndNeverWithTheCompanions) {
    OpenSheet();
    EXPECT_NE(parent->findChild<frm3D*>(), nullptr);
    EXPECT_EQ(view->Scene()->scale, 1000);

    session->SetOpensWith(OpeningWindows::MapAnd3D);
    sheet->parentWidget()->close();
    ASSERT_TRUE(Soon([this] { return sheet == nullptr; }));
    session->LoadNamedFile(folder.Write("more.dat", HillsText(6)));
    EXPECT_EQ(parent->findChild<SheetWindow*>(), nullptr);
    Choose("mnuOpenSheet");
    Take();

    session->SetOpensWith(OpeningWindows::MapAndSheet);
    parent->findChild<frm3D*>()->parentWidget()->close();
    ASSERT_TRUE(Soon([this] { return parent->findChild<frm3D*>() == nullptr; }));
    session->LoadNamedFile(folder.Write("other.dat", HillsText(7)));
    EXPECT_EQ(parent->findChild<frm3D*>(), nullptr);
    session->SetExact(true); // all is made anew
    EXPECT_EQ(parent->findChild<frm3D*>(), nullptr) << "a change opens no window";
    session->ShowView3D();
    EXPECT_NE(parent->findChild<frm3D*>(), nullptr);
}

TEST_F(SheetWindowTest, AStartUpFileOpensTheDescribedWindowsAlone) {
    OpenSheet();
    const std::string path = folder.Write("start.qrw", HillsText(5));
    sheet->parentWidget()->close();
    ASSERT_TRUE(Soon([this] { return sheet == nullptr; }));
    session->LoadStartUpFile("\"" + path + "\"");
    EXPECT_EQ(session->Points().count, 25);
    EXPECT_EQ(parent->findChild<SheetWindow*>(), nullptr);
}

TEST_F(SheetWindowTest, EveryControlChangesTheSheet) {
    OpenSheet();
    Remake([this] { Find<QComboBox>("cmbOrientation")->setCurrentIndex(2); });
    EXPECT_GT(view->Scene()->width, view->Scene()->height);
    Remake([this] {
        auto* scale = Find<QComboBox>("cmbScale");
        scale->setEditText("1:750");
        emit scale->lineEdit()->editingFinished();
    });
    EXPECT_EQ(view->Scene()->scale, 750);
    EXPECT_TRUE(Find<QLabel>("lblSheet")->text().startsWith("Scale 1:750, paper 297 x 210 mm"));
    const auto has = [this](SheetLayer layer) {
        const auto of = [layer](const auto& element) { return element.layer == layer; };
        const SheetScene& scene = *view->Scene();
        return std::any_of(scene.lines.begin(), scene.lines.end(), of) ||
               std::any_of(scene.marks.begin(), scene.marks.end(), of);
    };
    EXPECT_FALSE(has(SheetLayer::Triangles));
    Remake([this] { Find<QListWidget>("lstLayers")->item(2)->setCheckState(Qt::Checked); });
    EXPECT_TRUE(has(SheetLayer::Triangles));
    const Colour before = view->Scene()->inks.front().colour;
    Remake([this] { Find<QComboBox>("cmbTheme")->setCurrentIndex(3); });
    EXPECT_NE(view->Scene()->inks.front().colour, before);
    // The wheel moves the column, and turns what has the focus alone.
    auto* theme = Find<QComboBox>("cmbTheme");
    const auto turn = [theme] {
        QWheelEvent wheel(QPointF(5, 5), theme->mapToGlobal(QPointF(5, 5)), {}, {0, 120}, {}, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(theme, &wheel);
        return theme->currentIndex();
    };
    theme->clearFocus();
    EXPECT_EQ(turn(), 3);
    theme->setFocus();
    Remake([&] { EXPECT_EQ(turn(), 2); });
    // What cannot be a scale or a paper leaves the sheet alone.
    for (const auto& [box, text] : {std::pair{"cmbScale", "north"}, std::pair{"cmbPaper", "9x9"}}) {
        auto* combo = Find<QComboBox>(box);
        const QString shown = combo->currentText();
        combo->setEditText(text);
        emit combo->lineEdit()->editingFinished();
        EXPECT_EQ(combo->currentText(), shown);
    }
}

TEST_F(SheetWindowTest, TheSliderSaysHowFarSmoothLinesLeaveTheSurfaceAndSmoothsThem) {
    OpenSheet();
    auto* slider = Find<QSlider>("sldSmooth");
    const auto* said = Find<QLabel>("lblSmooth");
    const auto curves = [this] { return view->Scene()->controls.size(); };
    EXPECT_EQ(slider->value(), 25);
    EXPECT_EQ(said->text(), "within 0.25 m") << "a quarter of 1 m";
    EXPECT_GT(curves(), 0U);
    EXPECT_TRUE(Find<QLabel>("lblSheet")->text().contains("Lines smoothed, within 0."));
    EXPECT_TRUE(parent->Status().currentMessage().startsWith("Lines smoothed, within 0."));
    slider->setValue(45);
    EXPECT_EQ(said->text(), "within 0.45 m") << "before any line is made";
    Remake([&] { slider->setValue(0); });
    EXPECT_EQ(said->text(), "exact");
    EXPECT_EQ(curves(), 0U);
    EXPECT_FALSE(Find<QLabel>("lblSheet")->text().contains("smoothed"));
}

TEST_F(SheetWindowTest, FollowsPointsAndLevels) {
    OpenSheet();
    const auto levels = [this] {
        std::vector<double> heights;
        for (const SheetLine& line : view->Scene()->lines) {
            if (line.IsContour()) {
                heights.push_back(line.level);
            }
        }
        return heights;
    };
    for (const double level : levels()) {
        EXPECT_EQ(level, std::round(level)) << "round while nobody has chosen";
    }
    Remake([this] { session->SetLevelCount(7); });
    const std::vector<double> byCount = levels();
    EXPECT_TRUE(std::any_of(byCount.begin(), byCount.end(),
                            [](double level) { return level != std::round(level); }));
    Remake([this] { session->SetExcluded({1, 2, 3}, true); });
    Remake([this] { session->LoadNamedFile(folder.Write("b.dat", HillsText(9))); });
    EXPECT_EQ(levels().front(), std::round(levels().front()));
}

TEST_F(SheetWindowTest, ToolsChangeTheSurfaceByHandAndByKeys) {
    OpenSheet();
    const Survey& survey = session->TheSurvey();
    const auto pixelOf = [&](Index point) {
        return view->PixelAt({survey.AllPoints().x[point], survey.AllPoints().y[point]}).toPoint();
    };
    const auto use = [&](const char* tool, const std::vector<QPoint>& clicks) {
        Find<QAction>(tool)->trigger();
        EXPECT_TRUE(Find<QAction>(tool)->isChecked());
        for (const QPoint& click : clicks) {
            QTest::mouseClick(view, Qt::LeftButton, {}, click);
        }
    };
    auto* undo = Find<QAction>("mnuUndo");
    EXPECT_FALSE(undo->isEnabled());
    Remake([&] { use("mnuToolExclude", {pixelOf(40)}); });
    EXPECT_EQ(survey.ExcludedPoints(), std::vector<Index>{40});
    EXPECT_EQ(undo->text(), "&Undo: exclude points");

    use("mnuToolBreakline", {pixelOf(14), pixelOf(77), pixelOf(90)});
    QTest::keyClick(view, Qt::Key_Backspace);
    Remake([&] { QTest::keyClick(view, Qt::Key_Return); });
    ASSERT_EQ(survey.Plan().breaklines.size(), 1U);
    EXPECT_EQ(survey.Plan().breaklines[0]->line.vertices[1].z, survey.AllPoints().z[77]);
    EXPECT_TRUE(std::any_of(view->Scene()->lines.begin(), view->Scene()->lines.end(),
                            [](const SheetLine& l) { return l.layer == SheetLayer::Breaklines; }));

    sheet->Tools().askHeight = [](const QString& label, double) {
        EXPECT_EQ(label, "New height of point 14:");
        return std::optional(123.5);
    };
    Remake([&] { use("mnuToolHeight", {pixelOf(14)}); });
    EXPECT_EQ(survey.Points().z[14], 123.5);

    Remake([&] {
        use("mnuToolHole", {pixelOf(27), pixelOf(30), pixelOf(66), pixelOf(63)});
        QTest::keyClick(view, Qt::Key_Enter);
    });
    EXPECT_GT(FiguresOf(*survey.Surface().shaped).hiddenTriangles, 0);
    use("mnuToolHold", {});
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_EQ(view->Tool(), SheetTool::Pan);
    for (int step = 0; step < 4; ++step) {
        Remake([&] { undo->trigger(); });
    }
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_EQ(survey.Plan(), SurfacePlan());
    EXPECT_TRUE(Find<QAction>("mnuRedo")->isEnabled());
}

// Of 22 500 points: the changed part is drawn over the sheet, which is made anew in a pause, and
// shows the same there.
TEST_F(SheetWindowTest, SmallEditsOfManyPointsShowAtOnceAndAllElseFollows) {
    OpenSheet();
    Remake([this] { session->LoadNamedFile(folder.Write("many.dat", HillsText(150))); });
    SheetPlan plan;
    plan.labels = SheetLabels::None;
    plan.smoothing.reset(); // patches have straight lines
    plan.Show(SheetLayer::Triangles, true);
    plan.Show(SheetLayer::Points, true);
    Remake([&] {
        sheet->findChild<SheetPanel*>()->SetPlan(plan);
        sheet->Refresh();
    });
    const Survey& survey = session->TheSurvey();
    constexpr Index kPoint = 75 * 150 + 75;
    const PlanPoint place{survey.AllPoints().x[kPoint], survey.AllPoints().y[kPoint]};
    view->Zoom(30, view->PixelAt(place));
    const auto around = [&] {
        const QPoint middle = view->PixelAt(place).toPoint();
        return view->grab(QRect(middle - QPoint(60, 60), QSize(121, 121))).toImage();
    };
    const auto differing = [](const QImage& a, const QImage& b) {
        int count = 0;
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x) {
                count += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 60 ? 1 : 0;
            }
        }
        return count;
    };
    QTest::qWait(250); // until the picture is no longer coarse
    const QImage before = around();
    const SheetScene* scene = view->Scene();
    Find<QAction>("mnuToolExclude")->trigger();
    QTest::mouseClick(view, Qt::LeftButton, {}, view->PixelAt(place).toPoint());
    EXPECT_EQ(survey.ExcludedPoints(), std::vector<Index>{kPoint});
    EXPECT_TRUE(session->IsBehind() && view->HasPatches() && view->Scene() == scene);
    const QImage patched = around();
    const int changed = differing(before, patched);
    EXPECT_GT(changed, 300);

    Find<QAction>("mnuUndo")->trigger();
    EXPECT_LT(differing(before, around()), changed / 2);
    Find<QAction>("mnuRedo")->trigger();
    QTest::mouseClick(view, Qt::LeftButton, {}, view->PixelAt(place).toPoint());
    EXPECT_EQ(survey.ExcludedPoints(), std::vector<Index>{kPoint}) << "it is not there any more";
    EXPECT_TRUE(session->IsBehind());
    ASSERT_TRUE(Soon([&] { return !session->IsBehind(); }));
    ASSERT_TRUE(Soon([&] { return !view->HasPatches(); }));
    EXPECT_NE(view->Scene(), scene);
    EXPECT_LT(differing(patched, around()), changed / 2);

    // A file that is written at once has the edit of this moment.
    dialogs.answer = folder.File("now.svg");
    Find<QAction>("mnuUndo")->trigger();
    ASSERT_TRUE(session->IsBehind());
    sheet->Export();
    EXPECT_FALSE(session->IsBehind() || view->HasPatches());
    QFile file(QString::fromStdString(folder.File("now.svg")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains(">22500<"));
}

TEST_F(SheetWindowTest, ZoomsAtThePointerAndPansWithoutLosingThePlace) {
    OpenSheet();
    const QPointF pixel = MapPixel(0.3, 0.4).toPoint();
    const PlanPoint place = view->PlanAt(pixel);
    const double before = view->Place().pixels;
    QWheelEvent wheel(pixel, view->mapToGlobal(pixel), {}, {0, 240}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(view, &wheel);
    EXPECT_NEAR(view->Place().pixels, before * 1.44, 1e-6);
    EXPECT_LT(QLineF(view->PixelAt(place), pixel).length(), 1);
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
        const QPointF from = view->PixelAt(place).toPoint();
        Drag(from, from + QPointF(31, -17), button);
        EXPECT_LT(QLineF(view->PixelAt(place), from + QPointF(31, -17)).length(), 1.5);
    }
    QTest::keyClick(view, Qt::Key_Plus);
    EXPECT_GT(view->Place().pixels, before * 1.44);
    QTest::keyClick(view, Qt::Key_F);
    EXPECT_NEAR(view->Place().pixels, before, 1e-9);
    const PlanPoint a = view->PlanAt(MapPixel(0.25, 0.25).toPoint());
    Drag(MapPixel(0.25, 0.25), MapPixel(0.5, 0.5), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_GT(view->Place().pixels, 2 * before);
    EXPECT_TRUE(QRectF(view->rect()).adjusted(-2, -2, 2, 2).contains(view->PixelAt(a)));
}

TEST_F(SheetWindowTest, MovesTheMapOnThePaperByDraggingWithCtrlAndPutsItBack) {
    OpenSheet();
    const QPointF from = MapPixel(0.5, 0.5).toPoint();
    const PlanPoint place = view->PlanAt(from);
    auto* centre = Find<QPushButton>("cmdCentre");
    EXPECT_FALSE(centre->isEnabled());
    Remake([&] { Drag(from, from + QPointF(40, 25), Qt::LeftButton, Qt::ControlModifier); });
    EXPECT_LT(QLineF(view->PixelAt(place), from + QPointF(40, 25)).length(), 1.5);
    EXPECT_TRUE(centre->isEnabled());
    Remake([&] { centre->click(); });
    EXPECT_LT(QLineF(view->PixelAt(place), from).length(), 1.5);
}

TEST_F(SheetWindowTest, MeasuresByTwoClicksOrTheKeysAndEscapeEndsIt) {
    OpenSheet();
    QString said;
    QObject::connect(view, &SheetView::Measured, view, [&](const QString& text) { said = text; });
    Choose("mnuMeasure");
    EXPECT_TRUE(Find<QPushButton>("cmdMeasure")->isChecked());
    const QPoint a = MapPixel(0.3, 0.6).toPoint();
    const QPoint b = MapPixel(0.6, 0.3).toPoint();
    QTest::mouseClick(view, Qt::LeftButton, {}, a);
    QTest::mouseClick(view, Qt::LeftButton, {}, b);
    const SheetDistance expected = DistanceOf(view->PlanAt(a), view->PlanAt(b));
    EXPECT_EQ(said, QStringLiteral("distance %1, azimuth %2°")
                        .arg(expected.distance, 0, 'f', 3)
                        .arg(expected.azimuth, 0, 'f', 3));
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_TRUE(said.isEmpty());
    EXPECT_FALSE(Find<QPushButton>("cmdMeasure")->isChecked());

    QTest::keyClick(view, Qt::Key_Plus);
    sheet->Toggle(SheetTool::Measure);
    QTest::keyClick(view, Qt::Key_Space);
    QTest::keyClick(view, Qt::Key_Right);
    QTest::keyClick(view, Qt::Key_Space);
    EXPECT_TRUE(said.endsWith("azimuth 90.000°")) << said.toStdString();
    EXPECT_NEAR(DistanceOf({0, 0}, {-3, -4}).azimuth, 216.87, 0.01);
}

TEST_F(SheetWindowTest, SaysWhereThePointerIsAndHowHighTheSurfaceThere) {
    OpenSheet();
    MoveTo(MapPixel(0.5, 0.5));
    const std::string text = LabelText("lblPointer");
    EXPECT_NE(text.find("52005"), std::string::npos) << text;
    EXPECT_NE(text.find("z"), std::string::npos) << text;
}

TEST_F(SheetWindowTest, WritesTheSheetOfTheScreenInThreeKinds) {
    OpenSheet();
    for (const auto& [name, head] :
         {std::pair{"a.pdf", "%PDF"}, std::pair{"a.svg", "<?xml"}, std::pair{"a.png", "\x89PNG"}}) {
        dialogs.answer = folder.File(name);
        Choose("mnuExportSheet");
        QFile file(QString::fromStdString(folder.File(name)));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        EXPECT_TRUE(file.readAll().startsWith(head)) << name;
    }
    EXPECT_EQ(dialogs.plans.back().name, "sheet.pdf");
    dialogs.answer = folder.File("a.doc");
    Choose("mnuExportSheet");
    EXPECT_EQ(messages.boxes.size(), 1U);
}

TEST_F(SheetWindowTest, PrintsAtTrueScaleAndWarnsOfAPageThatIsTooSmall) {
    OpenSheet();
    const QString path = QString::fromStdString(folder.File("printed.pdf"));
    QPageSize::PageSizeId size = QPageSize::A4;
    QStringList warnings;
    bool anyway = false;
    sheet->askPrinter = [&](QPrinter& printer) {
        printer.setOutputFileName(path);
        printer.setPageSize(QPageSize(size));
        return true;
    };
    sheet->askAnyway = [&](const QString& sentence) {
        warnings += sentence;
        return anyway;
    };
    sheet->Print();
    EXPECT_TRUE(warnings.isEmpty());
    EXPECT_TRUE(QFile::exists(path));
    QFile::remove(path);
    size = QPageSize::A5;
    sheet->Print();
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings[0].startsWith("The page of the printer has 210 x 148 mm, the sheet 297"))
        << warnings[0].toStdString();
    EXPECT_FALSE(QFile::exists(path));
    anyway = true;
    sheet->Print();
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(SheetWindowTest, KeepsChoosesAndDeletesStyles) {
    OpenSheet();
    auto* styles = sheet->findChild<SheetStyleBox*>();
    styles->askName = [](const QString&) { return QStringLiteral("my style"); };
    Remake([this] { Find<QComboBox>("cmbTheme")->setCurrentIndex(3); });
    Find<QPushButton>("cmdKeepStyle")->click();
    Remake([this] { Find<QComboBox>("cmbTheme")->setCurrentIndex(0); });
    auto* names = Find<QComboBox>("cmbStyle");
    ASSERT_EQ(names->count(), 2);
    Remake([&] { emit names->activated(1); });
    EXPECT_EQ(Find<QComboBox>("cmbTheme")->currentIndex(), 3);
    names->setCurrentIndex(1);
    Find<QPushButton>("cmdRemoveStyle")->click();
    EXPECT_EQ(names->count(), 1);
    EXPECT_TRUE(SheetStyles(settings).Names().empty());
    EXPECT_EQ(SheetStyles(settings).Last().theme, "dark") << "the next window begins with it";
}

} // namespace
} // namespace terravo
