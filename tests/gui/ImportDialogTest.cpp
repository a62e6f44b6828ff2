#include "app/windows/ImportDialog.h"
#include "app/windows/PlanPreview.h"
#include "gui/WindowFixture.h"

#include <QPushButton>
#include <QTimer>

namespace terravo {
namespace {

using enum ColumnRole;

const char* const kNumbered = "1,10,20,5\n2,11,40,6\n3,12,22,7\n";

struct ImportDialogTest : ::testing::Test {
    test::TemporaryFolder folder;
    RunState state;
    std::unique_ptr<ImportDialog> dialog;

    void Open(const std::string& text, const std::optional<ImportPlan>& remembered = std::nullopt) {
        const std::string path = folder.Write("p.txt", text);
        dialog = std::make_unique<ImportDialog>(state, path, InspectPointFile(path), remembered);
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
    /// Chooses an entry with the keys, as far from the present one.
    void Choose(const char* name, int entry) const {
        auto* list = Find<QComboBox>(name);
        while (list->currentIndex() != entry) {
            const int before = list->currentIndex();
            QTest::keyClick(list, before < entry ? Qt::Key_Down : Qt::Key_Up);
            ASSERT_NE(list->currentIndex(), before) << name;
        }
    }
    void ChooseRole(const char* name, ColumnRole role) const {
        Find<QComboBox>(name)->setCurrentIndex(static_cast<int>(role));
        emit Find<QComboBox>(name)->activated(static_cast<int>(role));
    }
    [[nodiscard]] std::string Columns() const {
        return NameOfColumns(dialog->Choice().plan.columns);
    }
    [[nodiscard]] bool CanBeRead() const { return Find<QPushButton>("cmdRead")->isEnabled(); }
    [[nodiscard]] std::string LabelText(const char* name) const {
        return Find<QLabel>(name)->text().toStdString();
    }
    [[nodiscard]] std::string LeftOut() const {
        return Find<QPlainTextEdit>("txtLeftOut")->toPlainText().toStdString();
    }
};

TEST_F(ImportDialogTest, OffersWhatTheColumnsMayBe) {
    Open(kNumbered);
    EXPECT_EQ(LabelText("lblDoubt"), "Columns with numbers: 4. Which are the coordinates?");
    auto* columns = Find<QComboBox>("cmbColumns");
    EXPECT_TRUE(columns->hasFocus());
    EXPECT_EQ(columns->currentText(), "pxyz: point number, easting (x), northing (y), height (z)");
    EXPECT_EQ(LabelText("lblPoints"), "Points: 3\nx: 10 \u2026 12\ny: 20 \u2026 40\nz: 5 \u2026 7");
    auto* plan = Find<PlanPreview>("picPlan");
    const QPointF before = plan->PlaceOf(11, 40) - plan->PlaceOf(10, 20);
    EXPECT_GT(before.x(), 0);
    EXPECT_NEAR(before.y(), -20 * before.x(), 1e-6) << "one scale, north is up";
    Choose("cmbColumns", 1);
    EXPECT_EQ(Columns(), "pyxz");
    EXPECT_EQ(Find<QComboBox>("cmbColumn2")->currentText(), "northing (y)");
    EXPECT_TRUE(CanBeRead());
}

TEST_F(ImportDialogTest, SwapsTwoColumnsAndSaysWhichOneIsMissing) {
    Open(kNumbered);
    ChooseRole("cmbColumn3", Easting);
    EXPECT_EQ(Columns(), "pyxz");
    ChooseRole("cmbColumn4", Ignored);
    EXPECT_FALSE(CanBeRead());
    EXPECT_EQ(LabelText("lblReason"), "No column is chosen for: height (z).");
    EXPECT_EQ(Find<QComboBox>("cmbColumns")->currentText(), "as chosen below");
    ChooseRole("cmbColumn1", Height);
    EXPECT_EQ(Columns(), "z,n,e,-");
    EXPECT_TRUE(CanBeRead());
    Find<QPushButton>("cmdRead")->click();
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(ImportDialogTest, ReadsAgainWithAnotherSeparatorOrDecimalSign) {
    Open("1,234;2,345;3,456\n4,567;5,678;6,789\n");
    EXPECT_EQ(LabelText("lblDoubt"), "A comma may be the decimal sign or divide thousands.");
    Choose("cmbDecimal", 0);
    EXPECT_FALSE(CanBeRead());
    Choose("cmbDecimal", 1);
    EXPECT_TRUE(CanBeRead());
    Choose("cmbSeparator", 0);
    EXPECT_EQ(dialog->Choice().plan.separator, FieldSeparator::Comma);
    Choose("cmbSeparator", 1);
    Find<QSpinBox>("spnHeaderLines")->setValue(1);
    EXPECT_TRUE(LabelText("lblPoints").starts_with("Points: 1\n"));
    EXPECT_EQ(LeftOut(), "Header lines: 1");
    QTest::keyClicks(Find<QLineEdit>("txtVoids"), "6,789");
    EXPECT_EQ(LabelText("lblReason"), "Read in this way no line gives a point.");
}

TEST_F(ImportDialogTest, ReadsOnWithoutBadRecordsOnlyWhenToldTo) {
    Open("1,2,3\n4,5\n7,x,9\n1,1,-\n4,5,6\n7,8,9\n3,3,3\n4,4,4\n5,5,5\n");
    EXPECT_FALSE(CanBeRead());
    EXPECT_EQ(LeftOut(), "Records that do not fit: 2\n  Line 2: fields 2 instead of 3\n"
                         "  Line 3, field 2: \"x\" is not a number\nWithout height: 1; lines: 4");
    auto* skip = Find<QCheckBox>("chkSkipBad");
    EXPECT_EQ(skip->text(), "&Leave out records that do not fit (2)");
    QTest::keyClick(dialog.get(), Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(Soon([this] { return CanBeRead(); }));
    EXPECT_EQ(dialog->Choice().bad, BadRecords::Skip);
    const auto* lines = Find<QTableView>("tblLines")->model();
    EXPECT_EQ(lines->index(1, 0).data().toString(), "2  does not fit");
    EXPECT_EQ(lines->index(2, 2).data().toString(), "x");
}

TEST_F(ImportDialogTest, ReadsAFreeList) {
    Open("1\n2\n3\n4 5 6\n");
    EXPECT_FALSE(CanBeRead());
    QTest::keyClick(dialog.get(), Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(Soon([this] { return dialog->Choice().plan.freeList; }));
    EXPECT_TRUE(CanBeRead());
    EXPECT_TRUE(LabelText("lblPoints").starts_with("Points: 2\n"));
    EXPECT_FALSE(Find<QComboBox>("cmbSeparator")->isEnabled());
    QTest::keyClick(dialog.get(), Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(Soon([this] { return !CanBeRead(); }));
}

TEST_F(ImportDialogTest, BeginsWithWhatIsRememberedAndCancelsToNothing) {
    ImportPlan remembered;
    remembered.columns = {Ignored, Height, Easting, Northing};
    Open(kNumbered, remembered);
    EXPECT_EQ(dialog->Choice().plan, remembered);
    QtImportDialogs dialogs(state);
    const std::string path = folder.File("p.txt");
    for (const auto key : {Qt::Key_Escape, Qt::Key_Return}) {
        QTimer::singleShot(0, [key] { QTest::keyClick(QApplication::activeModalWidget(), key); });
        const auto choice = dialogs.Ask(path, InspectPointFile(path), remembered);
        EXPECT_EQ(choice.has_value(), key == Qt::Key_Return);
        EXPECT_TRUE(!choice || choice->plan == remembered);
    }
}

} // namespace
} // namespace terravo
