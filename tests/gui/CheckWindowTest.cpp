#include "app/windows/CheckWindow.h"

#include "app/windows/CloseUpView.h"
#include "app/windows/frm3D.h"
#include "gui/WindowFixture.h"

#include <QTreeView>

namespace terravo {
namespace {

// Hills of 20 x 20 points with names; one too high, one twice with another height, one far away.
std::string NamedHills() {
    std::string text = "name,easting,northing,height,code\n";
    for (int i = 0; i < 400; ++i) {
        const double x = 10.0 * (i % 20);
        const double y = 10.0 * std::floor(i / 20);
        const double z = 100 + 5 * std::sin(x / 40) * std::cos(y / 50) + (i == 210 ? 30 : 0);
        text += "P" + std::to_string(i + 1) + "," + std::to_string(520000 + x) + "," +
                std::to_string(4520000 + y) + "," + std::to_string(z) + ",TREE\n";
    }
    return text + "P401,520050,4520050,300,GATE\nP402,0,0,0,\n";
}

struct CheckWindowTest : WindowFixture {
    QPointer<CheckWindow> check;
    QTreeView* list = nullptr;

    void OpenCheck(const std::string& language = "en") {
        Open({}, language);
        parent->SetView3D([this] { return new frm3D(state, messages, scheme); }, settings);
        parent->SetCheck([this] { return new CheckWindow(state, *session, scheme); });
        session->LoadNamedFile(folder.Write("hills.csv", NamedHills()));
        Choose("mnuCheck");
        check = Find<CheckWindow>("CheckWindow");
        list = Find<QTreeView>("lstFindings");
        ASSERT_TRUE(Soon([this] { return session->Review().IsMade(); }));
    }
    [[nodiscard]] QString Cell(int row, int column, const QModelIndex& above = {}) const {
        return list->model()->index(row, column, above).data().toString();
    }
    void GoTo(int row, const QModelIndex& above = {}) const {
        list->setCurrentIndex(list->model()->index(row, 0, above));
    }
    [[nodiscard]] int Box(int row, const QModelIndex& above = {}) const {
        return list->model()->index(row, 0, above).data(Qt::CheckStateRole).toInt();
    }
    void Press(int key) const { QTest::keyClick(list, static_cast<Qt::Key>(key)); }
};

TEST_F(CheckWindowTest, ListsTheGravestFirstAndMarksThePointOfTheCurrentRow) {
    OpenCheck();
    ASSERT_EQ(list->model()->rowCount(), 3);
    EXPECT_EQ(LabelText("lblFindings"), "Errors: 2, warnings: 1, notes: 0");
    EXPECT_EQ(Cell(0, FindingsModel::Point), "P106");
    EXPECT_EQ(Cell(0, FindingsModel::Line), "107");
    EXPECT_EQ(Cell(0, FindingsModel::Finding).left(30), "Points P106, P401 have the sam");
    EXPECT_EQ(Cell(1, FindingsModel::Kind), "far outside");
    EXPECT_EQ(Cell(2, FindingsModel::Severity), "warning");
    EXPECT_EQ(Cell(2, FindingsModel::Point), "P211");
    EXPECT_EQ(LabelText("lblSentence"), Cell(0, FindingsModel::Finding).toStdString());

    GoTo(1);
    const QImage atOrigin = Map()->grab().toImage();
    GoTo(2);
    EXPECT_NE(Map()->grab().toImage(), atOrigin) << "the mark has moved";
    auto* closeUp = Find<CloseUpView>("picCloseUp");
    EXPECT_EQ(closeUp->PlaceOf({520100, 4520100}), QRectF(closeUp->rect()).center());
    const QModelIndex repeat = list->model()->index(0, 0);
    ASSERT_EQ(list->model()->rowCount(repeat), 2);
    GoTo(1, repeat);
    EXPECT_EQ(Cell(1, FindingsModel::Finding, repeat),
              "x: 520050.0   y: 4520050.0   z: 300.0   GATE");
}

TEST_F(CheckWindowTest, ExcludesByTheSpaceBarAndTakesBack) {
    OpenCheck();
    list->setFocus();
    GoTo(1);
    Press(Qt::Key_Space);
    EXPECT_EQ(session->Points().count, 401);
    EXPECT_EQ(Box(1), Qt::Checked);
    EXPECT_EQ(LabelText("lblND"), "401");
    EXPECT_NE(LabelText("lblFindings").find("changed since"), std::string::npos);

    // Of points at one place the first stays; both rows in one go.
    GoTo(0);
    list->selectionModel()->select(list->model()->index(2, 0),
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
    Press(Qt::Key_Space);
    EXPECT_EQ(session->TheSurvey().ExcludedPoints(), (std::vector<Index>{211, 401, 402}));
    const QModelIndex repeat = list->model()->index(0, 0);
    EXPECT_EQ(Box(0, repeat), Qt::Unchecked);
    EXPECT_EQ(Box(1, repeat), Qt::Checked);
    list->model()->setData(list->model()->index(0, 0, repeat), Qt::Checked, Qt::CheckStateRole);
    EXPECT_TRUE(session->TheSurvey().IsExcluded(106));

    Click("cmdCheck");
    EXPECT_EQ(LabelText("lblFindings"), "Errors: 2, warnings: 1, notes: 0")
        << "what is excluded stays in the list";
    EXPECT_EQ(Box(2), Qt::Checked);
    Click("cmdTakeBack");
    EXPECT_EQ(session->Points().count, 402);
    EXPECT_EQ(Box(1), Qt::Unchecked);
    EXPECT_FALSE(Find<QPushButton>("cmdTakeBack")->isEnabled());
}

TEST_F(CheckWindowTest, ChecksTheNextFileByItselfAndForgetsTheMarkWhenClosed) {
    OpenCheck("it");
    EXPECT_EQ(check->windowTitle(), "Controllo del rilievo");
    EXPECT_EQ(LabelText("lblFindings"), "Errori: 2, avvisi: 1, note: 0");
    const QImage marked = Map()->grab().toImage();
    QWidget* frame = check->parentWidget();
    frame->close();
    EXPECT_NE(Map()->grab().toImage(), marked);
    EXPECT_TRUE(Soon([this] { return check == nullptr; }));

    Choose("mnuCheck");
    session->LoadNamedFile(folder.Write("clean.dat", HillsText(12)));
    EXPECT_TRUE(Soon([this] {
        return LabelText("lblFindings") == "Nessun esito: nessun punto sembra errato.";
    })) << LabelText("lblFindings");
    EXPECT_EQ(Find<QTreeView>("lstFindings")->model()->rowCount(), 0);
}

} // namespace
} // namespace terravo
