#include "app/windows/StatusPanel.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace terravo {
namespace {

// A window with a status bar and a field to type into, during a command of more than a second.
struct LongWork : ::testing::Test {
    QMainWindow window;
    StatusPanel* status = new StatusPanel(&window);
    QLineEdit* field = new QLineEdit(&window);
    QSignalSpy stops{status, &StatusPanel::StopAsked};
    QSignalSpy closes{status, &StatusPanel::CloseWanted};

    LongWork() {
        window.setStatusBar(status);
        window.setCentralWidget(field);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        field->setFocus();
        status->BeginWork(QStringLiteral("Working..."), QStringLiteral("&Stop"));
        QTest::qSleep(1050);
        status->ShowProgress(0.5);
    }
    ~LongWork() override {
        if (status->IsWorking()) {
            status->EndWork();
        }
    }

    void Post(QObject* receiver, QEvent* event) const {
        QCoreApplication::postEvent(receiver, event);
        status->ShowProgress(0.6);
    }
    void Key(int key, const QString& text = {}) const {
        Post(window.windowHandle(), new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
    }
};

TEST_F(LongWork, IsStoppedByEscapeAndByTheButtonAndTakesNoOtherInput) {
    auto* button = status->findChild<QPushButton*>(QStringLiteral("cmdStop"));
    ASSERT_TRUE(button != nullptr && button->isVisible());
    Key(Qt::Key_A, QStringLiteral("a"));
    EXPECT_EQ(field->text(), QString()) << "typing waits for no command";
    QAction open(&window);
    open.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    window.addAction(&open);
    const QSignalSpy opened(&open, &QAction::triggered);
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(opened.count(), 0) << "no command begins inside another by its shortcut either";
    EXPECT_EQ(stops.count(), 0);
    Key(Qt::Key_Escape);
    EXPECT_EQ(stops.count(), 1);
    EXPECT_FALSE(button->isEnabled());

    status->EndWork();
    EXPECT_FALSE(button->isVisible());
    status->BeginWork(QStringLiteral("Working..."), QStringLiteral("&Stop"));
    QTest::qSleep(1050);
    status->ShowProgress(0.1);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(stops.count(), 2);
    status->EndWork();
    QTest::keyClick(field, Qt::Key_A);
    EXPECT_EQ(field->text(), QStringLiteral("a"));
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(opened.count(), 1);
}

TEST_F(LongWork, ThatGivesWayEndsForWhatTheUserDoesAndHandsItOn) {
    status->EndWork();
    const QSignalSpy interrupts(status, &StatusPanel::InterruptAsked);
    status->BeginWork(QStringLiteral("Working..."), QStringLiteral("&Stop"), true);
    Post(window.windowHandle(),
         new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a")));
    EXPECT_EQ(interrupts.count(), 1) << "long before the progress bar is shown";
    EXPECT_EQ(stops.count(), 0);
    EXPECT_EQ(field->text(), QString());
    status->EndWork();
    QCoreApplication::processEvents();
    EXPECT_EQ(field->text(), QStringLiteral("a"));
}

TEST_F(LongWork, IsStoppedWhenItsWindowIsToCloseWhichWaitsForItsEnd) {
    Post(&window, new QCloseEvent);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(stops.count(), 1);
    QTest::qWait(10);
    EXPECT_EQ(closes.count(), 0);
    status->EndWork();
    EXPECT_TRUE(QTest::qWaitFor([&] { return closes.count() == 1; }));
}

} // namespace
} // namespace terravo
