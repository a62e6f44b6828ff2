// The windows of one run over fake services, and what a test does with them.
//
// Data: a private work folder, the texts of a shipped language, and fakes that remember what they
// were asked. Method: the objects are built as the program builds them; a test then clicks, types
// and looks. The picture that a map ought to be is drawn anew, without a window.
#pragma once

#include "app/settings/Language.h"
#include "app/settings/SupportFolder.h"
#include "app/windows/SchemeStyle.h"
#include "app/windows/StatusPanel.h"
#include "app/windows/SurfaceView.h"
#include "app/windows/frmOrografix.h"
#include "app/windows/frmProve.h"
#include "support/FakeRun.h"
#include "survey/PointFile.h"

#include <QAction>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace terravo {

/// A grid of side x side points over hills, at the coordinates of a national grid.
inline std::string HillsText(int side) {
    std::string text;
    for (int i = 0; i < side * side; ++i) {
        const double x = 10.0 * (i % side);
        const double y = 10.0 * std::floor(i / side);
        text += std::to_string(520000 + x) + "," + std::to_string(4520000 + y) + "," +
                std::to_string(100 + 9 * std::sin(x / 17) * std::cos(y / 13)) + "\n";
    }
    return text;
}

/// Waits, with events, until something holds.
inline bool Soon(const std::function<bool()>& holds) {
    constexpr int kMilliseconds = 5000;
    return QTest::qWaitFor(holds, kMilliseconds);
}

struct WindowFixture : FakeRun, ::testing::Test {
    ColourScheme scheme;
    std::unique_ptr<Session> session;
    std::unique_ptr<frmOrografix> parent;
    QPointer<frmProve> window;
    std::function<void()> beforeStart; // the windows are made, nothing is loaded

    WindowFixture() { std::filesystem::create_directories(folder.File("work")); }

    /// Builds the windows, shows them and starts, as the program does.
    void Open(const std::string& rawCommandLine = {}, const std::string& language = "en",
              ParentState parentState = ParentState::AsDesigned) {
        state.workFolder = folder.File("work/");
        state.pointsFolder = folder.File("points/");
        state.texts = TextCatalogue(
            LoadTextTable(FindSupportFolder(folder.Path()) + LanguageFileName(language)));
        session.reset(); // after the windows of an earlier call
        session = std::make_unique<Session>(state, Services());
        QApplication::setPalette(ApplicationPalette(scheme));
        parent = std::make_unique<frmOrografix>(scheme);
        window = new frmProve(state, *session, parent->Status());
        const WindowBox box =
            RestoreWindowPosition(settings, "frmProve", {0, 0, 640, 420}, 1280, 1024,
                                  [](int low, int /*high*/) { return low; });
        parent->AddMainWindow(window, {{box.left, box.top, box.width, box.height},
                                       HasSavedPlace(settings, "frmProve"),
                                       HasSavedSize(settings, "frmProve")});
        window->SetCaptions();
        window->SetColours(scheme);
        parent->ShowIn(parentState);
        window->show();
        if (beforeStart) {
            beforeStart();
        }
        window->Start(rawCommandLine, {});
        // The companion's file closes them again.
        EXPECT_TRUE(Soon([this] { return parent->isActiveWindow() || !parent->isVisible(); }));
    }

    /// The same with a file of hills, loaded by name.
    std::string OpenHills(int side = 8) {
        Open();
        std::string path = folder.Write("hills.dat", HillsText(side));
        session->LoadNamedFile(path);
        return path;
    }

    template <class Widget>
    Widget* Find(const char* name) const {
        auto* found = parent->findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    [[nodiscard]] SurfaceView* Map() const { return Find<SurfaceView>("picLivelli"); }
    [[nodiscard]] QMdiSubWindow* Frame() const { return Find<QMdiSubWindow>("frmProveFrame"); }
    [[nodiscard]] std::string LabelText(const char* name) const {
        return Find<QLabel>(name)->text().toStdString();
    }
    /// Chooses a menu command, as long as it can be chosen.
    void Choose(const char* name) const {
        auto* action = Find<QAction>(name);
        ASSERT_TRUE(action->isVisible() && action->isEnabled()) << name;
        action->trigger();
    }
    /// Clicks on the indicator of a check box or an option.
    void Click(const char* name) const {
        auto* button = Find<QAbstractButton>(name);
        ASSERT_TRUE(button->isVisible() && button->isEnabled()) << name;
        QTest::mouseClick(button, Qt::LeftButton, {}, {8, button->height() / 2});
    }

    /// The map of a file as it ought to be at the present size.
    [[nodiscard]] QImage ExpectedPicture(const std::string& path, const MapOptions& options) const {
        FakeMessages unseen;
        FakeClock still;
        PointSet points;
        EXPECT_FALSE(ReadPoints(path, points).has_value());
        const Survey survey(std::move(points));
        const ContourMap map(survey, state, unseen, still);
        const double ratio = Map()->devicePixelRatioF();
        const QSize pixels = (QSizeF(Map()->size()) * ratio).toSize();
        RasterSurface surface(pixels.width(), pixels.height(), ratio);
        surface.SetBackColor(kBlack);
        map.Draw(surface, options);
        return surface.Image();
    }
};

} // namespace terravo
