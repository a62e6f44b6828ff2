#include "app/windows/QtServices.h"

#include "app/settings/UserFolders.h"
#include "support/TemporaryFolder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

#include <filesystem>

namespace terravo {
namespace {

namespace fs = std::filesystem;

TEST(QtServicesTest, ShowsAMessageUnderAnOrdinaryPointer) {
    QApplication::setOverrideCursor(Qt::WaitCursor); // as while a file is being read
    QString seen;
    Qt::CursorShape pointer = Qt::BlankCursor;
    QTimer::singleShot(0, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            seen = box->windowTitle() + "|" + box->text();
            EXPECT_EQ(box->icon(), QMessageBox::Critical);
            const QCursor* over = QApplication::overrideCursor();
            pointer = over != nullptr ? over->shape() : Qt::ArrowCursor;
            box->accept();
        }
    });
    QtMessages().ShowCritical("Error 53\r\nNo file.", " Files/Choose");
    EXPECT_EQ(seen, " Files/Choose|Error 53\r\nNo file.");
    EXPECT_EQ(pointer, Qt::ArrowCursor) << "the user is to press a button, not to wait";
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QApplication::restoreOverrideCursor();
}

TEST(QtServicesTest, CarriesOutThePlanOfAFileDialog) {
    const test::TemporaryFolder folder;
    static_cast<void>(folder.Write("a.qrw", ""));
    FileDialogPlan plan{
        .save = false,
        .filters = {{"Files  (*.dat;*.qrw)", "*.dat;*.qrw"}, {"Tutti i Files (*.*)", "*.*"}},
        .folder = folder.Path(),
        .name = {},
        .title = "Choose a file ",
        .extension = {}};
    const auto choose = [&](bool accept) {
        QTimer::singleShot(0, [&plan, accept] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            EXPECT_EQ(dialog->windowTitle(), QString::fromStdString(plan.title));
            EXPECT_EQ(dialog->directory(), QDir(QString::fromStdString(plan.folder)));
            EXPECT_EQ(dialog->selectedNameFilter(), "Files (*.dat;*.qrw)");
            EXPECT_EQ(dialog->findChild<QFileSystemModel*>()->nameFilters(),
                      (QStringList{"*.dat", "*.qrw"}));
            EXPECT_EQ(dialog->acceptMode(),
                      plan.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
            if (accept) {
                dialog->selectFile("a.qrw");
                static_cast<QDialog*>(dialog)->accept();
            } else {
                dialog->reject();
            }
        });
        return QtFileDialogs().Choose(plan);
    };
    EXPECT_EQ(choose(true), folder.File("a.qrw"));
    EXPECT_EQ(choose(false), std::nullopt);
    plan.save = true;
    EXPECT_EQ(choose(false), std::nullopt);
}

TEST(QtServicesTest, AsksBeforeAFileIsReplacedWhoseExtensionWasNotTyped) {
    const test::TemporaryFolder folder;
    static_cast<void>(folder.Write("Point.qrz", "old"));
    const FileDialogPlan plan{.save = true,
                              .filters = {{"Files  (.qrz)", ".qrz"}},
                              .folder = folder.Path(),
                              .name = "Point",
                              .title = "Save ",
                              .extension = "qrz"};
    const auto save = [&plan](QMessageBox::StandardButton answer, int& questions) {
        QTimer::singleShot(0, [&questions, answer] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            QTimer::singleShot(0, [&questions, answer, dialog] {
                if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                    ++questions;
                    if (answer == QMessageBox::No) {
                        QTimer::singleShot(0, dialog, [dialog] { dialog->reject(); });
                    }
                    box->button(answer)->click();
                }
            });
            static_cast<QDialog*>(dialog)->accept();
        });
        return QtFileDialogs().Choose(plan);
    };
    int questions = 0;
    EXPECT_EQ(save(QMessageBox::No, questions), std::nullopt) << "then the dialog was left";
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(save(QMessageBox::Yes, questions), folder.File("Point.qrz"));
    EXPECT_EQ(questions, 2);
}

TEST(QtServicesTest, AFolderThatIsThereCanBeChosenToSaveIn) {
    const test::TemporaryFolder folder;
    fs::create_directory(folder.File("maps"));
    const FileDialogPlan plan{.save = true,
                              .filters = {{"Shapefile (*)", "*"}},
                              .folder = folder.Path(),
                              .name = "maps",
                              .title = "Save ",
                              .extension = {},
                              .isFolder = true};
    int questions = 0;
    const auto save = [&plan, &questions] {
        QTimer::singleShot(0, [&questions] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            QTimer::singleShot(0, [&questions, dialog] {
                if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                    ++questions;
                    QTimer::singleShot(0, dialog, [dialog] { dialog->reject(); });
                    box->button(QMessageBox::No)->click();
                }
            });
            static_cast<QDialog*>(dialog)->accept();
            if (dialog->isVisible()) {
                dialog->reject();
            }
        });
        return QtFileDialogs().Choose(plan);
    };
    EXPECT_EQ(save(), folder.File("maps"));
    EXPECT_EQ(questions, 0) << "nothing in it would be replaced";
    static_cast<void>(folder.Write("maps/points.shp", "old"));
    EXPECT_EQ(save(), std::nullopt);
    EXPECT_EQ(questions, 1);
}

TEST(QtServicesTest, KeepsSettingsInOneFileOfTheProgramsName) {
    {
        QtSettingsStore store;
        store.Set("PuntiDati", "1", "/a, b/è %20.dat");
    }
    EXPECT_EQ(QtSettingsStore().Get("PuntiDati", "1"), "/a, b/è %20.dat") << "commas and all";
    EXPECT_EQ(QtSettingsStore().Get("PuntiDati", "2"), std::nullopt);
    const QSettings file(QSettings::IniFormat, QSettings::UserScope, "Terravo Vortak");
    EXPECT_TRUE(file.fileName().endsWith("settings/Terravo Vortak.ini"))
        << file.fileName().toStdString();
}

TEST(UserFoldersTest, KnowsItsOwnFoldersFromOtherPeoples) {
    const test::TemporaryFolder folder;
    UserFolders folders("/shipped/");
    EXPECT_EQ(folders.KindOf(folder.File("new")), FolderKind::Missing);
    folders.MakePrivate(folder.File("new"));
    EXPECT_EQ(folders.KindOf(folder.File("new")), FolderKind::OwnFolder);
    EXPECT_EQ(fs::status(folder.File("new")).permissions(), fs::perms::owner_all);
    fs::create_directory_symlink(folder.File("new"), folder.File("link"));
    EXPECT_EQ(folders.KindOf(folder.File("link")), FolderKind::Foreign);
    EXPECT_EQ(folders.KindOf(folder.Write("file", "")), FolderKind::Foreign);
}

TEST(UserFoldersTest, ObeysTheVariablesOfTheSystem) {
    const QByteArray data = qgetenv("XDG_DATA_HOME");
    EXPECT_EQ(UserFolders("").ApplicationDataFolder(), data.toStdString());
    EXPECT_EQ(UserFolders("").TemporaryFolder(), qgetenv("TMPDIR").toStdString());
    const std::string inHome = qgetenv("HOME").toStdString() + "/.local/share";
    for (const char* value : {"", "relative/folder"}) {
        qputenv("XDG_DATA_HOME", value);
        EXPECT_EQ(UserFolders("").ApplicationDataFolder(), inHome);
    }
    qputenv("XDG_DATA_HOME", data);
}

} // namespace
} // namespace terravo
