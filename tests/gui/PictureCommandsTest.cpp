// The commands that write the map and the 3D picture as files, and that print them.
#include "app/windows/frm3D.h"
#include "gui/WindowFixture.h"

#include <QDialog>
#include <QPrintPreviewWidget>
#include <QTimer>

namespace terravo {
namespace {

// A PNG file of few colours reads back as numbers of a palette.
QImage PictureIn(const std::string& path) {
    return QImage(QString::fromStdString(path)).convertToFormat(QImage::Format_RGB32);
}

struct PictureCommandsTest : WindowFixture {
    void OpenWith3D() {
        Open();
        parent->SetView3D([this] { return new frm3D(state, messages, scheme); }, settings);
    }
    void LoadHills(int side) { session->LoadNamedFile(folder.Write("h.dat", HillsText(side))); }

    /// Chooses a command that opens a print preview, and closes that.
    /// @return the pages that it showed; nothing when there was no preview.
    int PagesPreviewed(const char* command) {
        int pages = -1;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            const auto* preview =
                dialog != nullptr ? dialog->findChild<QPrintPreviewWidget*>() : nullptr;
            if (preview != nullptr && preview->pageCount() > 0) {
                pages = preview->pageCount();
                dialog->reject();
            }
        });
        watch.start(20);
        Choose(command);
        return pages;
    }
};

TEST_F(PictureCommandsTest, WriteTheMapThatIsShown) {
    Open();
    EXPECT_FALSE(Find<QAction>("mnuExportMap")->isEnabled());
    EXPECT_FALSE(Find<QAction>("mnuPrint")->isEnabled());
    const std::string path = folder.Write("hills.dat", HillsText(8));
    session->LoadNamedFile(path);
    const std::string segments = folder.Read("work/livelli.txt");
    for (const char* name : {"map.png", "map.svg", "map.pdf"}) {
        dialogs.answer = folder.File(name);
        Choose("mnuExportMap");
    }
    EXPECT_EQ(PictureIn(folder.File("map.png")), ExpectedPicture(path, session->Options()));
    EXPECT_NE(folder.Read("map.svg").find(">Contour map : hills.dat</text>"), std::string::npos);
    EXPECT_TRUE(folder.Read("map.pdf").starts_with("%PDF-"));
    EXPECT_EQ(folder.Read("work/livelli.txt"), segments);
    EXPECT_TRUE(messages.boxes.empty());

    dialogs.answer = folder.File("missing/map.svg");
    Choose("mnuExportMap");
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_TRUE(messages.boxes[0].text.starts_with("The picture cannot be written.\r\n"));
    dialogs.answer.reset();
    Choose("mnuExportMap");
    EXPECT_EQ(messages.boxes.size(), 1U) << "a cancelled dialog says nothing";
}

TEST_F(PictureCommandsTest, WriteAndPrintThe3DPictureAsItIsTurned) {
    OpenWith3D();
    LoadHills(4);
    auto* view = parent->findChild<frm3D*>("frm3D");
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->PictureNow().title, "Delaunay 2D : h.dat");
    view->Commands().ToggleRotation();
    view->Commands().TogglePause();
    view->Commands().StepAngle(30);
    dialogs.answer = folder.File("v.png");
    Choose("mnuExport3D");
    EXPECT_EQ(PictureIn(folder.File("v.png")), view->findChild<SurfaceView*>("pic3D")->Picture());
    EXPECT_EQ(PagesPreviewed("mnuPrint3D"), 1);
    EXPECT_EQ(PagesPreviewed("mnuPrint"), 1);
    EXPECT_TRUE(messages.boxes.empty());
}

} // namespace
} // namespace terravo
