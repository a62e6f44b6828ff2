#include "app/windows/ExportDialog.h"

#include "gui/WindowFixture.h"

#include <QTimer>

namespace terravo {
namespace {

struct ExportDialogTest : WindowFixture {
    template <class Widget>
    static Widget* In(const QDialog& dialog, const char* name) {
        auto* found = dialog.findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    static void ChooseFormat(const QDialog& dialog, const char* name) {
        auto* formats = In<QComboBox>(dialog, "cmbFormat");
        formats->setCurrentIndex(formats->findText(QLatin1String(name), Qt::MatchStartsWith));
    }
    /// What a user does in the dialog of the command.
    void WithDialog(const std::function<void(ExportDialog&)>& act) const {
        int opened = 0;
        QTimer::singleShot(0, parent.get(), [&] {
            if (auto* dialog = qobject_cast<ExportDialog*>(QApplication::activeModalWidget())) {
                ++opened;
                act(*dialog);
                if (dialog->isVisible()) {
                    dialog->reject();
                }
            }
        });
        Choose("mnuExportVector");
        EXPECT_EQ(opened, 1);
    }
};

TEST_F(ExportDialogTest, WritesWhatIsTickedAndKeepsTheChoiceOfEachFormat) {
    Open();
    EXPECT_FALSE(Find<QAction>("mnuExportVector")->isEnabled());
    session->LoadNamedFile(folder.Write("hills.dat", HillsText(8)));
    dialogs.answer = folder.File("hills.geojson");
    WithDialog([](ExportDialog& dialog) {
        auto* bands = In<QCheckBox>(dialog, "chk-bands");
        EXPECT_FALSE(bands->isEnabled()) << "a DXF has none";
        EXPECT_FALSE(bands->toolTip().isEmpty());
        EXPECT_FALSE(In<QGroupBox>(dialog, "grpDxf")->isHidden());
        ChooseFormat(dialog, "GeoJSON");
        EXPECT_TRUE(In<QGroupBox>(dialog, "grpDxf")->isHidden());
        EXPECT_TRUE(bands->isEnabled());
        bands->setChecked(true);
        In<QCheckBox>(dialog, "chk-points")->setChecked(false);
        In<QLineEdit>(dialog, "txtEpsg")->setText("0");
        EXPECT_FALSE(In<QPushButton>(dialog, "cmdExport")->isEnabled());
        In<QLineEdit>(dialog, "txtEpsg")->setText("25832");
        In<QPushButton>(dialog, "cmdExport")->click();
    });
    const std::string text = folder.Read("hills.geojson");
    EXPECT_NE(text.find("25832"), std::string::npos);
    EXPECT_NE(text.find("Polygon"), std::string::npos);
    EXPECT_EQ(text.find("\"Point\""), std::string::npos);
    EXPECT_TRUE(parent->Status().currentMessage().endsWith("verified"));
    ASSERT_EQ(messages.informations.size(), 1U);
    EXPECT_NE(messages.informations[0].text.find("web maps"), std::string::npos);
    EXPECT_EQ(dialogs.plans.back().name, "hills.geojson");

    dialogs.answer = folder.File("hills.dxf");
    WithDialog([](ExportDialog& dialog) {
        EXPECT_TRUE(In<QComboBox>(dialog, "cmbFormat")->currentText().startsWith("GeoJSON"));
        EXPECT_TRUE(In<QCheckBox>(dialog, "chk-bands")->isChecked());
        ChooseFormat(dialog, "DXF");
        EXPECT_TRUE(In<QCheckBox>(dialog, "chk-points")->isChecked());
        In<QComboBox>(dialog, "cmbDxfVersion")->setCurrentIndex(1);
        In<QPushButton>(dialog, "cmdExport")->click();
    });
    EXPECT_NE(folder.Read("hills.dxf").find("AC1009"), std::string::npos);
}

TEST_F(ExportDialogTest, SmoothLinesAreForFormatsWithLinesOfTheirOwn) {
    OpenHills();
    const auto write = [&](const char* file, bool click) {
        dialogs.answer = folder.File(file);
        WithDialog([click](ExportDialog& dialog) {
            auto* smooth = In<QCheckBox>(dialog, "chkSmooth");
            ChooseFormat(dialog, "LandXML");
            EXPECT_FALSE(smooth->isEnabled() || smooth->isChecked());
            EXPECT_FALSE(smooth->toolTip().isEmpty());
            ChooseFormat(dialog, "GeoJSON");
            if (click) {
                smooth->click();
            }
            In<QPushButton>(dialog, "cmdExport")->click();
        });
        return folder.Read(file).size();
    };
    const std::size_t straight = write("a.geojson", false);
    const std::size_t smooth = write("b.geojson", true);
    EXPECT_GT(smooth, straight);
    EXPECT_EQ(write("c.geojson", false), smooth) << "the tick is kept";
    EXPECT_EQ(write("d.geojson", true), straight);
}

TEST_F(ExportDialogTest, TellsWhatGoesWrongAndWhatWasChanged) {
    OpenHills();
    dialogs.answer = folder.File("none/hills.dxf");
    WithDialog([](ExportDialog& dialog) { In<QPushButton>(dialog, "cmdExport")->click(); });
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_NE(messages.boxes[0].text.find("none/hills.dxf"), std::string::npos);
    dialogs.answer.reset();
    WithDialog([](ExportDialog& dialog) { In<QPushButton>(dialog, "cmdExport")->click(); });
    EXPECT_EQ(messages.boxes.size(), 1U) << "a cancelled question is no failure";
    dialogs.answer = folder.File("hills.stl");
    WithDialog([](ExportDialog& dialog) {
        const int height = dialog.height();
        In<QLineEdit>(dialog, "txtTextHeight")->setText("1e-300");
        EXPECT_FALSE(In<QPushButton>(dialog, "cmdExport")->isEnabled()) << "no such texts";
        ChooseFormat(dialog, "STL");
        EXPECT_TRUE(In<QPushButton>(dialog, "cmdExport")->isEnabled()) << "which has no texts";
        EXPECT_LT(dialog.height(), height) << "no hole where the group was";
        In<QCheckBox>(dialog, "chk-triangles")->setChecked(false);
        EXPECT_FALSE(In<QPushButton>(dialog, "cmdExport")->isEnabled()) << "nothing to write";
        In<QCheckBox>(dialog, "chk-triangles")->setChecked(true);
        In<QPushButton>(dialog, "cmdExport")->click();
    });
    ASSERT_EQ(messages.informations.size(), 1U);
    EXPECT_NE(messages.informations[0].text.find("relative to"), std::string::npos);
}

} // namespace
} // namespace terravo
