#include "app/windows/GisDialog.h"

#include "gui/WindowFixture.h"

#include <QPushButton>

namespace terravo {
namespace {

GisLayer LayerOf(const std::string& name, std::int64_t points, std::int64_t vertices) {
    GisLayer layer;
    layer.name = name;
    layer.points = points;
    layer.lines = points == 0 ? 1 : 0;
    layer.vertices = vertices;
    layer.system.name = "here";
    return layer;
}

GisField Number(const std::string& name) {
    return {name, true, {0, 9}};
}

struct GisDialogTest : ::testing::Test {
    RunState state;
    GisSource source;
    std::unique_ptr<GisDialog> dialog;

    void Open() {
        dialog = std::make_unique<GisDialog>(state, "a.gpkg", source, ProposedPlan(source));
        dialog->show();
        dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }
    template <class Widget>
    Widget* Find(const char* name) const {
        auto* found = dialog->findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    [[nodiscard]] QTreeWidgetItem* Row(int i) const {
        return Find<QTreeWidget>("lstLayers")->topLevelItem(i);
    }
    void Tick(int i, bool on) const { Row(i)->setCheckState(0, on ? Qt::Checked : Qt::Unchecked); }
    /// Chooses an entry with the keys, as far from the present one.
    void Choose(const char* name, int entry) const {
        auto* list = Find<QComboBox>(name);
        while (list->currentIndex() != entry) {
            const int before = list->currentIndex();
            QTest::keyClick(list, before < entry ? Qt::Key_Down : Qt::Key_Up);
            ASSERT_NE(list->currentIndex(), before) << name;
        }
    }
    [[nodiscard]] bool CanBeRead() const { return Find<QPushButton>("cmdRead")->isEnabled(); }
    [[nodiscard]] std::string LabelText(const char* name) const {
        return Find<QLabel>(name)->text().toStdString();
    }
};

TEST_F(GisDialogTest, OffersLayersAndTheAttributesThatTheyShare) {
    source = {"GeoPackage", false, false, {LayerOf("spots", 1200, 1200), LayerOf("lines", 0, 40)}};
    source.layers[0].hasHeights = true;
    source.layers[0].z = {1, 99.5};
    source.layers[0].fields = {Number("year"), Number("quota")};
    source.layers[1].fields = {Number("year"), {"text", false, {}}};
    Open();
    EXPECT_EQ(Row(0)->text(4).toStdString(), "1 \xE2\x80\x93 99.5");
    EXPECT_EQ(Row(1)->text(4), "none");
    EXPECT_TRUE(CanBeRead());
    EXPECT_EQ(dialog->Plan().layers, std::vector<std::string>{"spots"});
    EXPECT_EQ(Find<QComboBox>("cmbHeights")->count(), 3);

    Tick(1, true);
    EXPECT_EQ(Find<QComboBox>("cmbHeights")->count(), 2) << "both have only the year";
    EXPECT_FALSE(CanBeRead());
    EXPECT_EQ(
        LabelText("lblReason"),
        "The layer lines has no heights: choose the attribute that holds them, or leave it out.");
    Choose("cmbHeights", 1);
    EXPECT_TRUE(CanBeRead());
    EXPECT_EQ(dialog->Plan().heightField, "year");
    EXPECT_EQ(LabelText("lblCount").substr(0, 5), "1,240");

    Tick(0, false);
    EXPECT_EQ(dialog->Plan().heightField, "year") << "it stays chosen";
    Tick(1, false);
    EXPECT_EQ(LabelText("lblReason"), "Choose at least one layer.");
    EXPECT_FALSE(CanBeRead());
}

TEST_F(GisDialogTest, ProposesToProjectDegreesAndWarnsOfThem) {
    source = {"KML", false, false, {LayerOf("peaks", 3, 3)}};
    source.layers[0].hasHeights = true;
    source.layers[0].x = {11, 11};
    source.layers[0].y = {48, 48};
    source.layers[0].system = {"WGS 84", 4326, true};
    Open();
    EXPECT_EQ(Row(0)->text(5), "WGS 84 (EPSG:4326)");
    EXPECT_EQ(dialog->Plan().toEpsg, 32632);
    EXPECT_EQ(LabelText("lblReason"), "");
    auto* system = Find<QLineEdit>("txtSystem");
    system->selectAll();
    QTest::keyClicks(system, "somewhere");
    EXPECT_FALSE(CanBeRead());
    system->selectAll();
    QTest::keyClicks(system, "25832");
    EXPECT_EQ(dialog->Plan().toEpsg, 25832);
    EXPECT_TRUE(CanBeRead());
    Choose("cmbCoordinates", 0);
    EXPECT_FALSE(system->isEnabled());
    EXPECT_TRUE(CanBeRead()) << "degrees, when they are wanted";
    EXPECT_NE(LabelText("lblReason"), "");
    EXPECT_TRUE(dialog->Plan().degreesAsTheyAre);
    EXPECT_FALSE(dialog->Plan().toEpsg);
}

TEST_F(GisDialogTest, ThinsARaster) {
    GisLayer band;
    band.name = "band 1";
    band.columns = 3000;
    band.rows = 2000;
    band.vertices = band.columns * band.rows;
    band.hasHeights = true;
    GisLayer colours = band;
    colours.name = "band 2";
    colours.hasHeights = false;
    source = {"GeoTIFF", true, false, {band, colours}};
    Open();
    EXPECT_TRUE(Row(1)->isDisabled());
    EXPECT_FALSE(Find<QComboBox>("cmbHeights")->isVisible());
    EXPECT_FALSE(Find<QComboBox>("cmbCoordinates")->isEnabled()) << "it has no system";
    EXPECT_EQ(dialog->Plan().rasterStep, 3);
    Find<QSpinBox>("spnStep")->setValue(10);
    EXPECT_EQ(dialog->Plan().rasterStep, 10);
    EXPECT_EQ(LabelText("lblCount").substr(0, 6), "60,000");
}

} // namespace
} // namespace terravo
