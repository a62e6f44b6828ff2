#include "gui/WindowFixture.h"

#include <QClipboard>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QRegularExpression>

#include <utility>

namespace terravo {
namespace {

struct frmProveTest : WindowFixture {
    /// Types into the box of the number of levels, over what it holds.
    void TypeLevels(const QString& digits, Qt::Key last) const {
        auto* box = Find<QLineEdit>("txtNLiv");
        box->selectAll();
        QTest::keyClicks(box, digits);
        QTest::keyClick(box, last);
    }
    void Move(QPoint place) const {
        QTest::mouseMove(Map(), place);
        QMouseEvent move(QEvent::MouseMove, place, Map()->mapToGlobal(place), Qt::NoButton, {}, {});
        QApplication::sendEvent(Map(), &move);
    }
    /// Drags what a file manager would onto the map.
    bool Drop(const QList<QUrl>& urls) const {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({30, 30}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(window, &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDropEvent drop({30, 30}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(window, &drop);
        return true;
    }
};

TEST_F(frmProveTest, TakesItsCaptionsFromTheLanguage) {
    Open({}, "it");
    const std::pair<const char*, const char*> captions[] = {
        {"mnuLeggiDati", "&Apri file..."},
        {"mnuEsci", "&Esci"},
        {"mnuRecenti0", "File &recenti:"},
        {"mnuInformazioni", "&Informazioni su Terravo..."},
        {"XPButton1", "&Copia disegno"},
        {"zLabel01", " punti:"},
        {"zLabel02", " Livell&i:"},
        {"optLinee", "&Linee"},
        {"optAree", "&Aree"},
        {"chkTriangoli", "&Triangoli"},
        {"chkPerimetro", "&Perimetro"},
        {"chkValoriLivelli", "&Valori dei livelli"},
        {"mnuExportMap", "Esporta &mappa..."},
        {"mnut0", "&Triangoli"}};
    for (const auto& [name, caption] : captions) {
        EXPECT_EQ(Find<QObject>(name)->property("text").toString().toStdString(), caption) << name;
    }
    EXPECT_EQ(Map()->accessibleName(), "Curve di livello");
}

TEST_F(frmProveTest, StartsEmptyAndSaysHowToGetAMap) {
    Open();
    EXPECT_EQ(Find<QLineEdit>("txtNLiv")->text(), "10");
    EXPECT_EQ(LabelText("lblND"), "0");
    EXPECT_FALSE(Find<QWidget>("Picture1")->isVisible());
    EXPECT_FALSE(Find<QWidget>("XPButton1")->isEnabled()) << "there is nothing to copy";
    EXPECT_FALSE(Find<QMenu>("mnusalva")->isEnabled());
    EXPECT_FALSE(Find<QAction>("mnuRecenti0")->isVisible());
    const QImage hint = window->grab(Find<QWidget>("Picture1")->geometry()).toImage();
    int inked = 0;
    for (int i = 0; i < hint.width() * hint.height(); ++i) {
        inked += hint.pixelColor(i % hint.width(), i / hint.width()) != QColor(33, 33, 33) ? 1 : 0;
    }
    EXPECT_GT(inked, 100);
    // No option finds anything to draw, or to complain about.
    for (const char* option : {"chkTriangoli", "chkPerimetro", "optAree", "optLinee"}) {
        Click(option);
    }
    TypeLevels("7", Qt::Key_Return);
    EXPECT_TRUE(messages.boxes.empty());
    EXPECT_EQ(session->Options().levels.count, 7);
}

TEST_F(frmProveTest, OpensAFileWithTheKeyboardAndHidesItsMapAfterAnError) {
    dialogs.answer = folder.Write("hills.dat", HillsText(8) + "520000,4520000,7\n");
    Open();
    QTest::keyClick(parent.get(), Qt::Key_O, Qt::ControlModifier);
    ASSERT_EQ(dialogs.plans.size(), 1U);
    EXPECT_EQ(dialogs.plans[0].title, "Choose a file ");
    EXPECT_TRUE(Map()->isVisible());
    EXPECT_TRUE(Find<QWidget>("XPButton1")->isEnabled());
    EXPECT_TRUE(Find<QMenu>("mnusalva")->isEnabled());
    EXPECT_EQ(LabelText("lblND"), "65");
    EXPECT_EQ(LabelText("lblCounts"), "65 points, 98 triangles");
    EXPECT_EQ(LabelText("lblRemark"), "xyz; " + state.texts[Text::UnusedPoints] + " 1");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "the wait is over";

    dialogs.error = AppError(53, "Choose", "No dialog.");
    Choose("mnuLeggiDati");
    EXPECT_EQ(messages.boxes,
              (std::vector<FakeMessages::Box>{{"Error 53\r\nNo dialog.", " Files/Choose"}}));
    EXPECT_FALSE(Map()->isVisible());
    EXPECT_FALSE(Find<QWidget>("XPButton1")->isEnabled());
    EXPECT_FALSE(Find<QMenu>("mnusalva")->isEnabled());
}

TEST_F(frmProveTest, TheMapIsBlackWhereTheFirstDrawingFails) {
    Open();
    session->LoadNamedFile(folder.Write("empty.dat", ""));
    EXPECT_EQ(messages.boxes.size(), 1U);
    const QImage shown = Map()->grab().toImage();
    EXPECT_EQ(shown.pixelColor(shown.rect().center()), QColor(Qt::black));
}

TEST_F(frmProveTest, ListsTheRecentFilesAndLoadsTheOneChosen) {
    for (int k = 1; k <= 6; ++k) {
        const std::string key = std::to_string(k);
        const std::string name = k == 2 ? "a & b.dat" : key + ".dat";
        settings.Set("PuntiDati", key, folder.Write(name, HillsText(k + 1)));
    }
    settings.Set("PuntiDati", "3", folder.File("deleted.dat"));
    Open();
    EXPECT_TRUE(Find<QAction>("mnuRecenti0")->isVisible());
    EXPECT_EQ(Find<QAction>("mnuRecenti1")->text().toStdString(), "&1 " + folder.File("1.dat"));
    EXPECT_EQ(Find<QAction>("mnuRecenti2")->text().toStdString(),
              "&2 " + folder.File("a && b.dat"));
    EXPECT_EQ(Find<QAction>("mnuRecenti3")->text().toStdString(), "&3 " + folder.File("4.dat"));
    EXPECT_FALSE(Find<QAction>("mnuRecenti5")->isVisible()) << "one of the five is missing";

    Choose("mnuRecenti2");
    EXPECT_EQ(LabelText("lblND"), "9");
    EXPECT_EQ(Find<QAction>("mnuRecenti1")->text().toStdString(),
              "&1 " + folder.File("a && b.dat"));
    EXPECT_EQ(Find<QAction>("mnuRecenti2")->text().toStdString(), "&2 " + folder.File("1.dat"));
}

TEST_F(frmProveTest, ShowsTheSamePictureAsADrawingWithoutAWindow) {
    const std::string path = OpenHills();
    MapOptions options;
    EXPECT_EQ(Map()->Picture(), ExpectedPicture(path, options));
    EXPECT_EQ(Map()->grab().toImage().convertToFormat(QImage::Format_RGB32), Map()->Picture())
        << "pixel for pixel on the screen too";
    ASSERT_TRUE(std::filesystem::remove(folder.File("work/point_qrw.txt")));

    // Every click redraws, and nothing but the map.
    const std::vector<std::pair<const char*, bool*>> boxes{
        {"chkPerimetro", &options.showPerimeter},
        {"chkTriangoli", &options.showTriangles},
        {"chkValoriLivelli", &options.showLevelValues},
        {"chkTriangoli", &options.showTriangles}};
    for (const auto& [name, option] : boxes) {
        const QImage before = Map()->Picture();
        Click(name);
        *option = !*option;
        EXPECT_NE(Map()->Picture(), before) << name;
        EXPECT_EQ(Map()->Picture(), ExpectedPicture(path, options)) << name;
    }
    const QImage lines = Map()->Picture();
    Click("optAree");
    options.mode = MapMode::Areas;
    EXPECT_FALSE(Find<QWidget>("chkValoriLivelli")->isVisible());
    EXPECT_NE(Map()->Picture(), lines);
    EXPECT_EQ(Map()->Picture(), ExpectedPicture(path, options));
    QTest::keyClick(Find<QWidget>("optAree"), Qt::Key_Up); // the keyboard chooses as a click does
    EXPECT_TRUE(Find<QWidget>("chkValoriLivelli")->isVisible());
    EXPECT_EQ(Map()->Picture(), lines);
    EXPECT_FALSE(std::filesystem::exists(folder.File("work/point_qrw.txt")))
        << "no option triangulates";

    Click("optAree");
    dialogs.answer = folder.File("levels.qrz");
    Choose("mnut1");
    EXPECT_TRUE(Find<QAbstractButton>("optLinee")->isChecked()) << "levels are saved as lines";
    EXPECT_TRUE(Find<QWidget>("chkValoriLivelli")->isVisible());
    EXPECT_EQ(Map()->Picture(), lines);
    EXPECT_NE(folder.Read("levels.qrz"), "");
}

TEST_F(frmProveTest, TakesTheNumberOfLevelsWithEnterAndDigitsOnly) {
    const std::string path = OpenHills();
    const QImage ten = Map()->Picture();
    TypeLevels("7", Qt::Key_Return);
    MapOptions options;
    options.levels = RuleByCount(7);
    EXPECT_NE(Map()->Picture(), ten);
    EXPECT_EQ(Map()->Picture(), ExpectedPicture(path, options));

    const auto shown = [this] { return Find<QLineEdit>("txtNLiv")->text().toStdString(); };
    TypeLevels("1", Qt::Key_Enter);
    EXPECT_EQ(shown(), "7");
    TypeLevels("45", Qt::Key_Escape);
    EXPECT_EQ(shown(), "7");
    TypeLevels("1-.a2 e", Qt::Key_Backspace);
    EXPECT_EQ(shown(), "1");
    EXPECT_EQ(session->Options().levels.count, 7);
}

TEST_F(frmProveTest, TellsWhereThePointerIsWhileItIsOnTheMap) {
    Open();
    session->LoadNamedFile(folder.Write("fine.dat", HillsText(8) + "520001.125,4520001.25,100\n"));
    const QPoint middle(Map()->width() / 2, Map()->height() / 2);
    const QRegularExpression form("^x: (\\d+\\.\\d{3})   y: (\\d+\\.\\d{3})   z: (\\d+\\.\\d+)$");
    const auto place = [&](QPoint at) {
        Move(at);
        const QString text = Find<QLabel>("lblPointer")->text();
        const QRegularExpressionMatch found = form.match(text);
        EXPECT_TRUE(found.hasMatch()) << text.toStdString();
        const QStringList tip = Map()->toolTip().split(", ");
        EXPECT_EQ(tip.size(), 2);
        for (int i = 0; i < 2; ++i) {
            EXPECT_NEAR(tip[i].toFloat(), found.captured(i + 1).toDouble(), 1);
        }
        EXPECT_NEAR(found.captured(3).toDouble(), 100, 9);
        return QPointF(found.captured(1).toDouble(), found.captured(2).toDouble());
    };
    const QPointF here = place(middle);
    EXPECT_TRUE(QRectF(520000, 4520000, 70, 70).contains(here));
    const QPointF right = place(middle + QPoint(1, 0));
    const QPointF below = place(middle + QPoint(0, 1));
    // A pixel is a fraction of a metre: a status bar in single precision would not tell them apart.
    EXPECT_GT(right.x() - here.x(), 0.05);
    EXPECT_LT(right.x() - here.x(), 0.5);
    EXPECT_GT(here.y() - below.y(), 0.05);
    EXPECT_LT(here.y() - below.y(), 0.5);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(Map(), &leave);
    EXPECT_EQ(LabelText("lblPointer"), "");
}

TEST_F(frmProveTest, ShowsThatACountIsNotYetInForceAndLeavesShortcutsToTheMenus) {
    OpenHills();
    auto* box = Find<QLineEdit>("txtNLiv");
    box->setFocus();
    const auto note = [this] { return parent->Status().currentMessage().toStdString(); };
    EXPECT_FALSE(box->font().italic());
    box->selectAll();
    QTest::keyClicks(box, "7");
    EXPECT_TRUE(box->font().italic());
    EXPECT_EQ(note(), state.texts[Text::EnterConfirms]);
    QTest::keyClick(box, Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(dialogs.plans.size(), 1U) << "a line edit takes Ctrl+E for itself elsewhere";
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(box->font().italic());
}

TEST_F(frmProveTest, CopiesThePictureToTheClipboard) {
    OpenHills();
    QGuiApplication::clipboard()->setText("old");
    Click("XPButton1");
    EXPECT_EQ(QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32),
              Map()->Picture());
    EXPECT_FALSE(QGuiApplication::clipboard()->mimeData()->hasText());
    EXPECT_EQ(parent->Status().currentMessage().toStdString(), state.texts[Text::PictureCopied]);
}

TEST_F(frmProveTest, LoadsAFileThatIsDroppedOnIt) {
    Open();
    const std::string path = folder.Write("dropped è.txt", HillsText(5));
    EXPECT_TRUE(Drop({QUrl::fromLocalFile(QString::fromStdString(path))}));
    EXPECT_EQ(LabelText("lblND"), "25");
    EXPECT_EQ(session->Points().sourceName, "dropped è.txt");
    EXPECT_FALSE(Drop({QUrl("http://localhost/points.txt")}));
    EXPECT_FALSE(Drop({})) << "a list of addresses may be empty";
}

TEST_F(frmProveTest, DrawsTheMapAnewOnceItsSizeHasSettled) {
    const std::string path = OpenHills();
    const QImage before = Map()->Picture();
    Frame()->resize(Frame()->size() - QSize(90, 60));
    EXPECT_EQ(Map()->Picture(), before) << "stretched while the user drags";
    EXPECT_TRUE(Soon([&] { return Map()->Picture().size() != before.size(); }));
    EXPECT_EQ(Map()->Picture(), ExpectedPicture(path, MapOptions{}));
}

} // namespace
} // namespace terravo
