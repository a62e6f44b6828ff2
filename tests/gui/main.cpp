// GUI tests run the real windows on the offscreen platform.
//
// Everything that the program would keep for its user goes into one folder, removed at the end: it
// is redirected before Qt starts, so that no code finds the real places.
#include "app/windows/ProgramStyle.h"

#include <QApplication>
#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir user;
    if (!user.isValid()) {
        return 1;
    }
    for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                             "XDG_STATE_HOME", "TMPDIR"}) {
        const QString folder = user.filePath(QLatin1String(name));
        QDir().mkpath(folder);
        qputenv(name, QFile::encodeName(folder));
    }
    // A display, where one is meant to be used, says so; otherwise there is none.
    if (!qEnvironmentVariableIsSet("TERRAVO_TEST_DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qunsetenv("DISPLAY");
    }
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, user.filePath("settings"));
    QApplication application(argc, argv);
    QApplication::setStyle(new ProgramStyle);
    QApplication::setWindowIcon(ProgramIcon());
    // A test that closes its windows must not end the event loops of those after it.
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
