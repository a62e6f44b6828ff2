#include "app/windows/LevelsDialog.h"

#include "gui/WindowFixture.h"

#include <QTimer>

namespace terravo {
namespace {

struct LevelsDialogTest : WindowFixture {
    template <class Widget>
    static Widget* In(const QDialog& dialog, const char* name) {
        auto* found = dialog.findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    /// What a user does in the dialog that Ctrl+L opens.
    void WithDialog(const std::function<void(LevelsDialog&)>& act) const {
        parent->activateWindow();
        ASSERT_TRUE(Soon([this] { return parent->isActiveWindow(); }));
        int opened = 0;
        QTimer::singleShot(0, parent.get(), [&] {
            if (auto* dialog = qobject_cast<LevelsDialog*>(QApplication::activeModalWidget())) {
                ++opened;
                act(*dialog);
                if (dialog->isVisible()) {
                    dialog->reject();
                }
            }
        });
        QTest::keyClick(parent.get(), Qt::Key_L, Qt::ControlModifier);
        EXPECT_EQ(opened, 1);
    }
};

TEST_F(LevelsDialogTest, DrawsByTheRuleUntilANumberIsTypedOrAnotherFileOpened) {
    Open();
    auto* entry = Find<QAction>("mnuLevels");
    EXPECT_FALSE(entry->isEnabled());
    EXPECT_EQ(entry->toolTip(), "No points have been read yet.");
    const std::string path = folder.Write("hills.dat", HillsText(8)); // about 91 to 109
    session->LoadNamedFile(path);
    EXPECT_NE(entry->toolTip(), "No points have been read yet.");
    const QImage ten = Map()->Picture();
    WithDialog([](LevelsDialog& dialog) {
        EXPECT_TRUE(In<QRadioButton>(dialog, "optCount")->isChecked());
        In<QComboBox>(dialog, "cmbInterval")->setEditText("2.5");
        In<QPushButton>(dialog, "cmdDraw")->click();
    });
    MapOptions options;
    options.levels = RuleByInterval(2.5);
    EXPECT_EQ(Map()->Picture(), ExpectedPicture(path, options));
    EXPECT_EQ(Find<QLineEdit>("txtNLiv")->text(), "7");
    Click("optAree");
    options.mode = MapMode::Areas;
    EXPECT_EQ(Map()->Picture(), ExpectedPicture(path, options));
    WithDialog([](LevelsDialog& dialog) {
        EXPECT_TRUE(In<QRadioButton>(dialog, "optInterval")->isChecked());
        EXPECT_EQ(In<QSpinBox>(dialog, "spnCount")->value(), 10) << "the number is kept";
        In<QLineEdit>(dialog, "txtBase")->setText("1"); // not taken
    });
    EXPECT_EQ(session->Options().levels.base, 0);

    session->LoadNamedFile(path);
    EXPECT_EQ(Find<QLineEdit>("txtNLiv")->text(), "10");
    Click("optLinee");
    EXPECT_EQ(Map()->Picture(), ten);
    session->SetLevelRule(RuleByList({95, 100}));
    EXPECT_EQ(Find<QLineEdit>("txtNLiv")->text(), "2");
    auto* box = Find<QLineEdit>("txtNLiv");
    box->selectAll();
    QTest::keyClicks(box, "10");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(Map()->Picture(), ten);
}

TEST_F(LevelsDialogTest, ShowsTheLevelsOrWhyThereAreNone) {
    state.decimalSeparator = ',';
    LevelsDialog dialog(state, RuleByCount(10), {503.2, 612.7});
    const auto result = [&] { return In<QLabel>(dialog, "lblResult")->text().toStdString(); };
    const auto levels = [&] {
        return In<QPlainTextEdit>(dialog, "txtLevels")->toPlainText().toStdString();
    };
    auto* interval = In<QComboBox>(dialog, "cmbInterval");
    auto* list = In<QLineEdit>(dialog, "txtList");
    EXPECT_EQ(In<QLabel>(dialog, "lblRange")->text(),
              "The heights of the points go from 503,2 to 612,7.");
    EXPECT_EQ(result(), "Levels: 10");
    EXPECT_EQ(interval->currentText(), "10") << "proposed, not chosen";
    interval->setEditText("25,0");
    EXPECT_EQ(result(), "Levels: 4");
    EXPECT_EQ(levels(), "525   550   575   600");
    In<QLineEdit>(dialog, "txtBase")->setText("2,5");
    EXPECT_EQ(levels(), "527,5   552,5   577,5   602,5");
    EXPECT_EQ(dialog.Rule().base, 2.5);
    list->setText("520; 510,25 700");
    EXPECT_TRUE(In<QRadioButton>(dialog, "optList")->isChecked());
    EXPECT_EQ(result(), "Levels: 2; heights left out, because no surface crosses them: 1");
    EXPECT_EQ(levels(), "510,25   520,00");
    interval->setEditText("0,01");
    EXPECT_EQ(result(), "Levels: 10949");
    EXPECT_LT(levels().size(), 6000U) << "first and last ones";
    EXPECT_NE(levels().find("   ...   "), std::string::npos);
    for (const char* refused : {"0", "-5", "", "five", "0,0001", "1000"}) {
        interval->setEditText(refused);
        EXPECT_FALSE(In<QPushButton>(dialog, "cmdDraw")->isEnabled()) << refused;
        EXPECT_EQ(levels(), "");
        EXPECT_TRUE(result().ends_with('.')) << result();
    }
    In<QSpinBox>(dialog, "spnCount")->setValue(3);
    EXPECT_TRUE(In<QPushButton>(dialog, "cmdDraw")->isEnabled());
    EXPECT_EQ(levels(), "503,200   557,950   612,700");
}

} // namespace
} // namespace terravo
