// The windows inside the parent: where they are put, what is kept of that, and the menu that
// arranges them.
#include "app/windows/DocumentPlaces.h"
#include "app/windows/WindowMenu.h"
#include "app/windows/frm3D.h"
#include "gui/WindowFixture.h"

#include <QMdiArea>

namespace terravo {
namespace {

struct DocumentsTest : WindowFixture {
    void Save(const std::string& key, const std::string& twips) {
        settings.Set("PosizioniForms", key, twips);
    }
    [[nodiscard]] std::string Saved(const std::string& key) const {
        return settings.Get("PosizioniForms", key).value_or("none");
    }
    void OpenWithView3D(int side) {
        OpenHills(side);
        parent->SetView3D([this] { return new frm3D(state, messages, scheme); }, settings);
    }
    void Load(const std::string& bytes) { session->LoadNamedFile(folder.Write("next.dat", bytes)); }
    [[nodiscard]] QMdiArea* Area() const { return Find<QMdiArea>("documents"); }
    [[nodiscard]] QRect Room() const { return Area()->viewport()->rect(); }
    [[nodiscard]] QMdiSubWindow* Frame3D() const {
        return parent->findChild<QMdiSubWindow*>("frm3DFrame");
    }
    void Resize(QSize size) const {
        parent->resize(size);
        EXPECT_TRUE(Soon([&] { return parent->size() == size; }));
        QTest::qWait(50); // the documents settle after the parent
    }
    /// Opens the Window menu and returns the captions of the list at its end, checked ones marked.
    [[nodiscard]] std::vector<std::string> Listed() const {
        auto* menu = Find<WindowMenu>("mnuWindow");
        emit menu->aboutToShow();
        std::vector<std::string> listed;
        for (const QAction* entry : menu->actions()) {
            if (entry->isCheckable()) {
                listed.push_back((entry->isChecked() ? "* " : "") + entry->text().toStdString());
            }
        }
        return listed;
    }
    void ChooseListed(int number) const {
        emit Find<WindowMenu>("mnuWindow")->aboutToShow();
        for (QAction* entry : Find<WindowMenu>("mnuWindow")->actions()) {
            if (entry->text().startsWith(QStringLiteral("&%1 ").arg(number))) {
                entry->trigger();
                return;
            }
        }
        ADD_FAILURE() << "nothing has number " << number;
    }
};

TEST_F(DocumentsTest, TheMapComesBackToItsPlaceAndNothingButItsUserChangesThat) {
    const auto isAt = [this](QRect box) {
        return Soon([&] { return Frame()->geometry() == box; });
    };
    // Reaches out of the parent as it is designed, with the size of a larger screen's.
    Save("frmProve_Left", "9000");
    Save("frmProve_Top", "3000");
    Save("frmProve_Width", "15000");
    Save("frmProve_Height", "12000");
    Open();
    const QRect saved(600, 200, 1000, 800);
    EXPECT_TRUE(isAt(saved));
    Resize({620, 480});
    Resize({1100, 760});
    EXPECT_TRUE(isAt(saved)) << "as large as before, and where it was";
    Choose("mnuEsci");
    EXPECT_EQ(Saved("frmProve_Left"), "9000");

    // Where its title would be out of reach it is shown inside, for as long as that lasts.
    Save("frmProve_Left", "60000");
    Save("frmProve_Top", "-3000");
    Open();
    EXPECT_TRUE(Soon([&] {
        return Frame()->pos() == QPoint(Room().width() - 1000, 0) || Frame()->pos() == QPoint(0, 0);
    })) << Frame()->x()
        << ", " << Frame()->y();
    Choose("mnuEsci");
    EXPECT_EQ(Saved("frmProve_Left"), "60000");
    EXPECT_EQ(Saved("frmProve_Top"), "-3000");

    // The companion's file, sent to a minimised parent.
    state.workFolder = folder.File("work/");
    const std::string sent = folder.Write("work/my_point.qrw", HillsText(4));
    Open('"' + sent + '"', "en", ParentState::Minimised);
    EXPECT_TRUE(Soon([this] { return !parent->isVisible(); }));
    EXPECT_EQ(Saved("frmProve_Left"), "60000");

    Open();
    Frame()->move(40, 30);
    Frame()->showMaximized();
    Choose("mnuEsci");
    EXPECT_EQ(Saved("frmProve_Left"), "600") << "the place before it filled the parent";
}

TEST_F(DocumentsTest, APlaceThatNobodyHasSeenIsNotKept) {
    state.workFolder = folder.File("work/");
    const std::string sent = folder.Write("work/my_point.qrw", HillsText(4));
    Open('"' + sent + '"', "en", ParentState::Minimised);
    EXPECT_TRUE(Soon([this] { return !parent->isVisible(); }));
    EXPECT_EQ(Saved("frmProve_Left"), "none");
}

TEST_F(DocumentsTest, AMaximisedMapHasNoCloseButtonInTheMenuBar) {
    OpenWithView3D(8);
    Load(HillsText(5));
    const auto pressLastButton = [this] {
        QWidget* buttons = parent->menuBar()->cornerWidget();
        ASSERT_TRUE(buttons != nullptr && buttons->isVisible());
        const QImage shown = buttons->grab().toImage();
        int inked = 0;
        for (int i = 0; i < shown.width() * shown.height(); ++i) {
            inked += shown.pixelColor(i % shown.width(), i / shown.width()).lightness() > 100;
        }
        EXPECT_GT(inked, 20) << "seen on a dark menu bar";
        QTest::mouseClick(buttons, Qt::LeftButton, {},
                          {buttons->width() - 8, buttons->height() / 2});
    };
    Frame3D()->showMaximized();
    ChooseListed(1); // now the map fills the parent
    ASSERT_TRUE(Soon([this] { return Frame()->isMaximized(); }));
    pressLastButton();
    ASSERT_TRUE(parent->isVisible());
    EXPECT_TRUE(Soon([this] { return !Frame()->isMaximized(); })) << "back to its size";

    ChooseListed(2);
    Frame3D()->showMaximized();
    pressLastButton();
    EXPECT_TRUE(Soon([this] { return Frame3D() == nullptr; })) << "the 3D window may be closed";
    EXPECT_TRUE(parent->isVisible());
}

TEST_F(DocumentsTest, TheWindowMenuListsArrangesAndBringsBackThe3DView) {
    Open();
    parent->SetView3D([this] { return new frm3D(state, messages, scheme); }, settings);
    const auto* view3D = Find<QAction>("mnuView3D");
    EXPECT_FALSE(view3D->isEnabled());
    EXPECT_EQ(view3D->toolTip().toStdString(), state.texts[Text::NothingIn3D]);
    EXPECT_EQ(Listed(), std::vector<std::string>{"* &1 Livelli"});
    Load(HillsText(5));
    EXPECT_EQ(Listed(), (std::vector<std::string>{"&1 Livelli", "* &2 Axonometric 3D view"}));

    Choose("mnuTile");
    EXPECT_EQ(Frame()->geometry().united(Frame3D()->geometry()), Room());
    EXPECT_FALSE(Frame()->geometry().intersects(Frame3D()->geometry()));
    Frame()->showMaximized();
    Choose("mnuCascade");
    EXPECT_TRUE(Room().contains(Frame()->geometry()) && Room().contains(Frame3D()->geometry()));
    EXPECT_NE(Frame()->y(), Frame3D()->y()) << "both titles are seen";
    Frame()->showMinimized();
    ChooseListed(1);
    EXPECT_TRUE(!Frame()->isMinimized() && Area()->activeSubWindow() == Frame());

    Choose("mnuView3D");
    EXPECT_EQ(Area()->activeSubWindow(), Frame3D()) << "the one that is open";
    Frame3D()->close();
    EXPECT_TRUE(Soon([this] { return Frame3D() == nullptr; }));
    EXPECT_EQ(Listed(), std::vector<std::string>{"* &1 Livelli"});
    std::filesystem::remove(folder.File("work/point_qrw.txt"));
    Choose("mnuView3D");
    ASSERT_NE(Frame3D(), nullptr);
    EXPECT_EQ(Area()->activeSubWindow(), Frame3D());
    auto* view = qobject_cast<frm3D*>(Frame3D()->widget());
    EXPECT_EQ(view->Commands().View().Data().PointCount(), 25);
    EXPECT_TRUE(view->findChild<QWidget*>("Picture1")->isVisible());
    EXPECT_FALSE(std::filesystem::exists(folder.File("work/point_qrw.txt"))) << "only the view";
    Load("1,1,1\n2,2,2\n3,3,3\n");
    EXPECT_FALSE(view3D->isEnabled());
}

TEST_F(DocumentsTest, TheFirst3DWindowOpensBesideTheMapWhereThereIsRoom) {
    OpenWithView3D(4);
    Resize({1500, 800});
    Load(HillsText(5));
    EXPECT_TRUE(Room().contains(Frame3D()->geometry()));
    EXPECT_FALSE(Frame()->geometry().intersects(Frame3D()->geometry()));
    const QRect before = Frame3D()->geometry();
    Resize({600, 400});
    Resize({1500, 800});
    EXPECT_EQ(Frame3D()->geometry(), before);
    Frame3D()->close();
    EXPECT_TRUE(Soon([this] { return Frame3D() == nullptr; }));
    Save("frm3D_Left", "300");
    Save("frm3D_Top", "450");
    Choose("mnuView3D");
    EXPECT_EQ(Frame3D()->pos(), QPoint(20, 30)) << "a saved place wins";

    const QSize room(1000, 700);
    const QSize least(400, 300);
    EXPECT_EQ(BoxBeside({0, 0, 500, 700}, room, {800, 600}, least), QRect(500, 0, 500, 600));
    EXPECT_EQ(BoxBeside({500, 50, 500, 600}, room, {400, 600}, least), QRect(100, 50, 400, 600));
    EXPECT_EQ(BoxBeside({100, 0, 700, 400}, room, {800, 600}, least), QRect(100, 400, 800, 300));
    EXPECT_EQ(BoxBeside({200, 200, 700, 400}, room, {800, 600}, least), std::nullopt);
}

TEST(DocumentBoxes, FillTheRoomWithoutOverlapOrShowEveryTitle) {
    constexpr QSize kRoom(1003, 701);
    for (int count = 0; count < 8; ++count) {
        const std::vector<QRect> tiles = TiledBoxes(count, kRoom);
        ASSERT_EQ(tiles.size(), static_cast<std::size_t>(count));
        int area = 0;
        for (std::size_t i = 0; i < tiles.size(); ++i) {
            area += tiles[i].width() * tiles[i].height();
            for (std::size_t j = 0; j < i; ++j) {
                EXPECT_FALSE(tiles[i].intersects(tiles[j])) << i << " and " << j << " of " << count;
            }
        }
        EXPECT_EQ(area, count == 0 ? 0 : kRoom.width() * kRoom.height()) << count;
        for (const QRect& box : CascadedBoxes(count, kRoom, 28)) {
            EXPECT_TRUE(QRect({0, 0}, kRoom).contains(box));
        }
    }
}

} // namespace
} // namespace terravo
