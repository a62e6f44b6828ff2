// The windows without a mouse and without a screen: the order of the Tab key, what a screen reader
// says, and the letters that go with Alt.
#include "app/windows/CheckWindow.h"
#include "app/windows/DifferenceWindow.h"
#include "app/windows/GisDialog.h"
#include "app/windows/HelpWindow.h"
#include "app/windows/ImportDialog.h"
#include "app/windows/LevelsDialog.h"
#include "app/windows/MeasureDialogs.h"
#include "app/windows/MeasureWindow.h"
#include "app/windows/SectionWindow.h"
#include "app/windows/SettingsDialog.h"
#include "app/windows/SheetWindow.h"
#include "app/windows/TerrainPanel.h"
#include "app/windows/frm3D.h"
#include "gui/WindowFixture.h"

#include <QAccessible>
#include <QMenu>
#include <QTextBrowser>

#include <map>

namespace terravo {
namespace {

// Whatever the Tab key ought to reach: one option of a group, and no insides of other controls.
int ReachableCount(const QWidget& window) {
    int count = 0;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* option = qobject_cast<const QRadioButton*>(widget);
        count += widget->isVisible() && widget->isEnabled() &&
                 widget->window() == window.window() &&
                 (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr &&
                 (option == nullptr || option->isChecked());
    }
    return count;
}

void ExpectSpoken(QWidget* widget) {
    const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(spoken, nullptr) << widget->objectName().toStdString();
    const QString name = spoken->text(QAccessible::Name).trimmed();
    EXPECT_FALSE(name.isEmpty() || name.contains('&'))
        << widget->objectName().toStdString() << ": \"" << name.toStdString() << '"';
}

// Names of the controls from the first on, by pressing Tab until it comes round.
std::vector<std::string> TabOrder(QWidget* first) {
    std::vector<std::string> names;
    first->setFocus(Qt::TabFocusReason);
    for (int press = 0; press < 100; ++press) { // links of a text take one press each
        QWidget* now = QApplication::focusWidget();
        if (now == nullptr || (now == first && names.size() > 1)) {
            return names;
        }
        const std::string name = now->objectName().toStdString();
        if (names.empty() || names.back() != name) {
            names.push_back(name);
            ExpectSpoken(now);
        }
        QTest::keyClick(now, Qt::Key_Tab);
    }
    ADD_FAILURE() << "the Tab key never comes back to " << names.front();
    return names;
}

struct AccessibilityTest : WindowFixture {
    void ExpectOrder(QWidget& shown, const std::vector<std::string>& names) const {
        shown.show();
        shown.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(shown.window()));
        auto* first = shown.findChild<QWidget*>(QString::fromStdString(names.front()));
        ASSERT_NE(first, nullptr);
        EXPECT_EQ(TabOrder(first), names);
        EXPECT_EQ(ReachableCount(shown), static_cast<int>(names.size()));
    }
};

TEST_F(AccessibilityTest, TheTabKeyReachesEveryControlInOrder) {
    OpenHills();
    ExpectOrder(*window, {"txtNLiv", "optLinee", "chkValoriLivelli", "chkTriangoli", "chkPerimetro",
                          "XPButton1"});
    ExpectSpoken(Find<QWidget>("optAree"));
    ExpectSpoken(Map());
    frm3D view(state, messages, scheme);
    view.Commands().Triangoli({0, 10, 0}, {0, 0, 20}, {0, 300, 600}, Table<Index>(0, 3), "three");
    ExpectOrder(view, {"optCol", "cmbKind", "cmdXY", "cmdZX", "cmdZY", "cmdInitial", "cmdRuota",
                       "cmdCopiaGrafico", "pic3D"});
    view.Commands().ToggleRotation();
    view.Commands().TogglePause();
    ExpectOrder(view, {"optCol", "cmbKind", "cmdXY", "cmdZX", "cmdZY", "cmdInitial", "cmdPausa",
                       "updTheta", "cmdCopiaGrafico", "pic3D"});
    HelpWindow help(state, "en");
    ExpectOrder(help, {"txtFind", "cmdNext", "lstContents", "txtGuide"});
    SettingsDialog dialog(state);
    ExpectOrder(dialog, {"cmbLanguage", "cmbColours", "cmbOpensWith", "cmdSave", "cmdCancel"});
    LevelsDialog levels(state, RuleByCount(10), session->Points().extentZ);
    ExpectOrder(levels, {"optCount", "spnCount", "cmbInterval", "txtBase", "txtList", "txtLevels",
                         "cmdDraw", "cmdCancel"});
    CheckWindow check(state, *session, scheme);
    session->SetExcluded({5}, true);
    check.Refresh();
    ExpectOrder(check,
                {"lstFindings", "cmdCheck", "cmdTakeBack", "cmdSaveRest", "cmdSaveExcluded"});
    SheetWindow sheet(state, *session, parent->Status(), settings, scheme);
    ASSERT_TRUE(Soon([&] { return sheet.HasSheet(); }));
    ExpectOrder(sheet,
                {"picSheet",      "cmdFit",      "cmdTrueSize",  "cmdMeasure", "cmdExport",
                 "cmdPrint",      "cmbStyle",    "cmdKeepStyle", "cmbPaper",   "cmbOrientation",
                 "cmbScale",      "spnRotation", "cmbTheme",     "lstLayers",  "cmbGrid",
                 "spnIndexEvery", "sldSmooth",   "cmbLabels",    "spnSpacing", "spnTextHeight",
                 "chkUphill",     "txtTitle",    "txtProject",   "txtDate",    "txtDatum",
                 "txtAuthor"});
    ::TerrainPanel terrain(state);
    ExpectOrder(terrain,
                {"cmdWholeTerrain", "cmdExportTerrain", "cmdCopyTerrain", "cmbColour",
                 "cmbTerrainTheme", "sldHeights", "cmdTrueScale", "chkParallel", "chkSmoothShading",
                 "chkDark", "lstTerrainLayers", "sldLightFrom", "sldLightHeight"});
    MeasureLog measured;
    measured.Add({{}, session->Measure({})->report, session->StandOfMeasures()});
    MeasureWindow measures(state, *session, measured, scheme);
    ExpectOrder(measures, {"lstMeasures", "tblFigures", "cmdCopyText", "cmdCopyCsv", "cmdSaveCsv"});
    SectionWindow section(state, *session, scheme);
    section.ShowSection(*session->MakeSection({{520010, 4520010}, {520060, 4520050}}));
    ExpectOrder(section, {"picSection", "cmbExaggeration", "cmdExport", "cmdSaveCsv"});
    CrossDialog cross(state, {5, 20, 100}, 0, false);
    ExpectOrder(cross, {"spnSpacing", "spnWidth", "chkDatum", "spnDatum", "cmdOk", "cmdCancel"});
    const std::string path = folder.Write("numbered.txt", "1,2,3,4\n2,3,4,5\n");
    ImportDialog import(state, path, InspectPointFile(path), std::nullopt);
    ExpectOrder(import,
                {"cmbColumns", "cmbSeparator", "cmbDecimal", "spnHeaderLines", "cmbEncoding",
                 "txtVoids", "chkFreeList", "cmbColumn1", "cmbColumn2", "cmbColumn3", "cmbColumn4",
                 "tblLines", "txtLeftOut", "chkSkipBad", "cmdRead", "cmdCancel"});
    GisSource source{"GeoPackage", false, false, {GisLayer()}};
    source.layers[0].system.name = "here";
    GisPlan plan;
    plan.toEpsg = 25832;
    GisDialog layers(state, path, source, plan);
    ExpectOrder(layers, {"lstLayers", "cmbHeights", "cmbCoordinates", "txtSystem", "cmdCancel"});
    source.isRaster = true;
    GisDialog raster(state, path, source, plan);
    ExpectOrder(raster, {"lstLayers", "cmbCoordinates", "txtSystem", "spnStep", "cmdCancel"});
}

TEST_F(AccessibilityTest, ThePicturesSayWhatTheyShow) {
    OpenHills();
    const auto description = [](QObject* picture) {
        return QAccessible::queryAccessibleInterface(picture)->text(QAccessible::Description);
    };
    EXPECT_EQ(description(Map()), "64 points, 98 triangles, Levels: 10, Lines");
    Click("optAree");
    Click("chkTriangoli");
    EXPECT_EQ(description(Map()), "64 points, 98 triangles, Levels: 10, Areas, Triangles");

    frm3D view(state, messages, scheme);
    view.Commands().Triangoli({0, 10, 0}, {0, 0, 20}, {0, 300, 600}, Table<Index>(0, 3), "three");
    auto* picture = view.findChild<SurfaceView*>();
    EXPECT_TRUE(description(picture).startsWith("three, ")) << description(picture).toStdString();
}

TEST_F(AccessibilityTest, TheArrowKeysMoveTheEndOfTheYAxisAsTheMouseDoes) {
    Open();
    frm3D view(state, messages, scheme);
    view.resize(820, 610);
    view.show();
    view.Commands().Triangoli({0, 10, 0}, {0, 0, 20}, {0, 300, 600}, Table<Index>(0, 3), "three");
    auto* picture = view.findChild<SurfaceView*>();
    const ViewParameters& shown = view.Commands().View().Parameters();
    const float alfa = shown.alfa;
    const float rayx = shown.rayx;
    QTest::keyClick(picture, Qt::Key_Up);
    EXPECT_GT(shown.alfa, alfa);
    QTest::keyClick(picture, Qt::Key_Down);
    EXPECT_NEAR(shown.alfa, alfa, 1e-3);
    EXPECT_NEAR(shown.rayx, rayx, 1e-3);
    QTest::keyClick(picture, Qt::Key_Right);
    EXPECT_GT(shown.rayx, rayx);
    EXPECT_LT(shown.alfa, alfa);
}

// Letters that mean two things at once, in one language.
struct Letters {
    std::string place;
    std::map<QString, QString> used;

    void Add(const QString& caption, bool isNeeded = true) {
        const QString letter = QKeySequence::mnemonic(caption).toString();
        if (letter.isEmpty()) {
            EXPECT_FALSE(isNeeded) << place << ": " << caption.toStdString() << " has no letter";
            return;
        }
        const auto [known, isNew] = used.emplace(letter, caption);
        EXPECT_TRUE(isNew) << place << ": " << known->second.toStdString() << " and "
                           << caption.toStdString();
    }
    void AddControls(const QWidget& window) {
        for (const auto* button : window.findChildren<QPushButton*>()) {
            Add(button->text(), button->objectName() != QStringLiteral("cmdCancel")); // Escape
        }
        for (const auto* option : window.findChildren<QAbstractButton*>()) {
            if (option->isCheckable() && qobject_cast<const QPushButton*>(option) == nullptr) {
                Add(option->text());
            }
        }
        for (const auto* label : window.findChildren<QLabel*>()) {
            if (label->buddy() != nullptr) {
                Add(label->text());
            }
        }
    }
};

struct LanguageTest : AccessibilityTest, ::testing::WithParamInterface<const char*> {};

TEST_P(LanguageTest, GivesEveryControlALetterThatMeansOneThingInItsWindow) {
    Open({}, GetParam());
    Letters map{"map", {}};
    Letters idle{"3D", {}};
    Letters check{"survey check", {}};
    Letters sheet{"sheet", {}};
    Letters measures{"measurements", {}};
    Letters section{"section", {}};
    Letters difference{"difference", {}};
    Letters terrain{"terrain", {}};
    for (const QAction* menu : parent->menuBar()->actions()) {
        for (Letters* document :
             {&map, &idle, &check, &sheet, &measures, &section, &difference, &terrain}) {
            // Where no letter is left for the terrain, its keys and F10 lead there.
            document->Add(menu->text(), menu->menu()->objectName() != QStringLiteral("mnuTerrain"));
        }
        Letters entries{"menu " + menu->text().toStdString(), {}};
        for (const QAction* entry : menu->menu()->actions()) {
            // The recent files are numbered, and their heading cannot be chosen.
            if (!entry->objectName().startsWith("mnuRecenti")) {
                entries.Add(entry->text(), false);
            }
        }
    }
    map.AddControls(*window);
    check.AddControls(CheckWindow(state, *session, scheme));
    sheet.AddControls(SheetWindow(state, *session, parent->Status(), settings, scheme));
    MeasureLog measured;
    measures.AddControls(MeasureWindow(state, *session, measured, scheme));
    section.AddControls(SectionWindow(state, *session, scheme));
    difference.AddControls(DifferenceWindow(state, *session, scheme));
    terrain.AddControls(::TerrainPanel(state));
    frm3D view(state, messages, scheme);
    idle.AddControls(view);
    Letters rotating{"rotating", {}};
    view.Commands().ToggleRotation();
    rotating.AddControls(view);
    Letters paused{"paused", {}};
    view.Commands().TogglePause();
    paused.AddControls(view);
    Letters{"help", {}}.AddControls(HelpWindow(state, GetParam()));
    Letters{"settings", {}}.AddControls(SettingsDialog(state));
    Letters{"levels", {}}.AddControls(LevelsDialog(state, {}, {0, 9}));
    Letters{"import", {}}.AddControls(ImportDialog(state, {}, {}, std::nullopt));
    for (const bool isRaster : {false, true}) {
        const GisSource source{"", isRaster, false, {}};
        Letters{"layers", {}}.AddControls(GisDialog(state, {}, source, {}));
    }
}

INSTANTIATE_TEST_SUITE_P(Shipped, LanguageTest,
                         ::testing::Values("", "en", "it", "de", "fr", "es"));

} // namespace
} // namespace terravo
