#include "app/windows/CodesDialog.h"
#include "app/windows/LinesDialog.h"
#include "app/windows/LongestSideDialog.h"
#include "gui/WindowFixture.h"

#include <QTimer>

namespace terravo {
namespace {

struct SurfaceDialogsTest : WindowFixture {
    template <class Widget>
    static Widget* In(const QDialog& dialog, const char* name) {
        auto* found = dialog.findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    /// What a user does in the dialog that a menu entry opens.
    template <class Dialog>
    void With(const char* entry, const std::function<void(Dialog&)>& act) const {
        int opened = 0;
        QTimer::singleShot(0, parent.get(), [&] {
            if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget())) {
                ++opened;
                act(*dialog);
                if (dialog->isVisible()) {
                    dialog->reject();
                }
            }
        });
        Find<QAction>(entry)->trigger();
        EXPECT_EQ(opened, 1) << entry;
    }
    [[nodiscard]] const SurfacePlan& Plan() const { return session->TheSurvey().Plan(); }
};

TEST_F(SurfaceDialogsTest, LayLinesOverThePointsAndTakeThemAway) {
    Open();
    EXPECT_FALSE(Find<QAction>("mnuLines")->isEnabled());
    std::string text = "name,x,y,z,code\n";
    for (int i = 0; i < 64; ++i) {
        text += std::to_string(i + 1) + "," + std::to_string(i % 8 * 10) + "," +
                std::to_string(i / 8 * 10) + "," + std::to_string(i % 5) + "," +
                (i / 8 == 3   ? "WALL"
                 : i / 8 == 5 ? "KERB"
                              : "") +
                "\n";
    }
    text += "65,900,900,1,\n";
    session->LoadNamedFile(folder.Write("codes.csv", text));
    With<CodesDialog>("mnuCodes", [](CodesDialog& dialog) {
        auto* codes = In<QListWidget>(dialog, "lstCodes");
        ASSERT_EQ(codes->count(), 2);
        EXPECT_FALSE(In<QPushButton>(dialog, "cmdOk")->isEnabled()) << "none has marks";
        codes->item(0)->setCheckState(Qt::Checked);
        In<QPushButton>(dialog, "cmdOk")->click();
    });
    ASSERT_EQ(Plan().breaklines.size(), 1U);
    EXPECT_EQ(Plan().breaklines[0]->line.vertices.size(), 8U);

    With<LongestSideDialog>("mnuLongestSide", [](LongestSideDialog& dialog) {
        EXPECT_TRUE(In<QRadioButton>(dialog, "optNone")->isChecked());
        In<QLineEdit>(dialog, "txtLength")->setText("x");
        In<QRadioButton>(dialog, "optLength")->setChecked(true);
        EXPECT_FALSE(In<QPushButton>(dialog, "cmdOk")->isEnabled());
        In<QPushButton>(dialog, "cmdPropose")->click();
        EXPECT_EQ(In<QLineEdit>(dialog, "txtLength")->text(), "30.0");
        EXPECT_TRUE(In<QLabel>(dialog, "lblWhy")->text().contains("isolated leap: 1;"));
        EXPECT_TRUE(In<QLabel>(dialog, "lblEffect")->text().endsWith("without a triangle: 1"));
        In<QPushButton>(dialog, "cmdOk")->click();
    });
    EXPECT_EQ(Plan().longestSide, 30);
    session->SetExcluded({1}, true);
    session->SetHeight(2, 7);

    With<LinesDialog>("mnuLines", [this](LinesDialog& dialog) {
        auto* lines = In<QTreeWidget>(dialog, "lstLines");
        ASSERT_EQ(lines->topLevelItemCount(), 3);
        lines->selectAll();
        In<QPushButton>(dialog, "cmdRemove")->click();
        EXPECT_EQ(lines->topLevelItemCount(), 0);
        EXPECT_EQ(Plan().breaklines.size(), 1U) << "not before OK";
        In<QPushButton>(dialog, "cmdOk")->click();
    });
    EXPECT_TRUE(Plan().breaklines.empty() && Plan().excluded.empty() && Plan().heights.empty());
    EXPECT_TRUE(session->Undo());
    EXPECT_EQ(Plan().breaklines.size(), 1U) << "one step";
}

} // namespace
} // namespace terravo
