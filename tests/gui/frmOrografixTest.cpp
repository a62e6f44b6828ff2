#include "app/settings/SettingsFiles.h"
#include "app/windows/AboutBox.h"
#include "app/windows/ColourContrast.h"
#include "app/windows/GradientButton.h"
#include "app/windows/QtTexts.h"
#include "gui/WindowFixture.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QTimer>

namespace terravo {
namespace {

struct frmOrografixTest : WindowFixture {
    [[nodiscard]] std::string Saved(const std::string& section, const std::string& key) const {
        return settings.Get(section, key).value_or("none");
    }
};

TEST_F(frmOrografixTest, KeepsTheRecentFilesAndThePlaceOfTheMainWindow) {
    const std::string path = OpenHills();
    Frame()->move(40, 30);
    Choose("mnuEsci");
    EXPECT_FALSE(parent->isVisible());
    EXPECT_EQ(Saved("PuntiDati", "1"), path);
    EXPECT_EQ(Saved("PosizioniForms", "frmProve_Left"), "600") << "15 twips to the pixel";
    EXPECT_EQ(Saved("PosizioniForms", "frmProve_Top"), "450");
    EXPECT_EQ(Saved("PosizioniForms", "frmProve_Width"), "none");

    Open();
    EXPECT_EQ(Frame()->pos(), QPoint(40, 30));
    EXPECT_EQ(session->Recent().Paths(), std::vector<std::string>{path});
    Frame()->showMinimized();
    QTest::keyClick(parent.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(parent->isVisible());
    EXPECT_EQ(Saved("PosizioniForms", "frmProve_Left"), "600") << "not the place of an icon";
}

TEST_F(frmOrografixTest, TheMainWindowHasNoCloseCommandOfItsOwn) {
    OpenHills();
    EXPECT_FALSE(Frame()->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    for (const QAction* action : Frame()->systemMenu()->actions()) {
        EXPECT_FALSE(action->text().contains("Close")) << action->text().toStdString();
    }
    for (const auto key : {Qt::Key_F4, Qt::Key_W}) {
        QTest::keyClick(window, key, Qt::ControlModifier);
        ASSERT_TRUE(window && window->isVisible());
    }
}

TEST_F(frmOrografixTest, EveryClosingOfTheMainWindowEndsTheProgram) {
    const std::string path = OpenHills();
    Frame()->close(); // as a double click on the icon of a maximised document does
    EXPECT_TRUE(Soon([this] { return !parent->isVisible(); }));
    EXPECT_EQ(Saved("PuntiDati", "1"), path);
}

TEST_F(frmOrografixTest, WearsTheColoursOfTheScheme) {
    scheme.backColour = RGB(10, 60, 20);
    scheme.foreColour = RGB(250, 240, 80);
    OpenHills();
    const QColor back(10, 60, 20);
    const QColor fore(250, 240, 80);
    for (const char* name : {"frmProve", "Frame1", "zLabel01", "lblND", "optLinee", "chkTriangoli",
                             "txtNLiv", "lblCounts"}) {
        const auto* widget = Find<QWidget>(name);
        EXPECT_EQ(widget->palette().color(QPalette::Window), back) << name;
        if (name != std::string("frmProve")) {
            EXPECT_EQ(widget->palette().color(QPalette::WindowText), fore) << name;
        }
    }
    const auto* button = Find<GradientButton>("XPButton1");
    EXPECT_TRUE(button->font().bold());
    EXPECT_EQ(button->StartColour(), QColor(Qt::black));
    EXPECT_EQ(button->EndColour(), back);
    EXPECT_EQ(button->ForeColour(), fore);
    EXPECT_EQ(window->grab().toImage().pixelColor(2, 2), back) << "not in the palette alone";
    EXPECT_EQ(Map()->Picture().pixelColor(1, 1), QColor(Qt::black)) << "the map stays black";
    AboutBox about(state, window);
    about.show();
    EXPECT_EQ(about.grab().toImage().pixelColor(1, 1), back);
    for (const auto* label : about.findChildren<QLabel*>()) {
        EXPECT_EQ(label->palette().color(QPalette::WindowText), fore);
    }
    EXPECT_EQ(Find<QMenu>("mnuFile")->palette().color(QPalette::Window), back);
    EXPECT_EQ(QMessageBox().palette().color(QPalette::Window), back);
}

// What is chosen, what cannot be chosen, and what is a link is read on each of the grounds.
TEST(ApplicationPaletteTest, IsReadableInEveryScheme) {
    ColourScheme black{RGB(0, 0, 0), RGB(255, 255, 255), RGB(0, 0, 0), 0, 0};
    ColourScheme warm{RGB(90, 40, 0), RGB(255, 230, 180), RGB(255, 255, 0), 0, 0};
    for (const ColourScheme& scheme : {ColourScheme{}, LightScheme(), black, warm}) {
        const QPalette palette = ApplicationPalette(scheme);
        const auto contrast = [&palette](QPalette::ColorGroup group, QPalette::ColorRole ink,
                                         QPalette::ColorRole ground) {
            return Contrast(palette.color(group, ink), palette.color(group, ground));
        };
        const auto active = QPalette::Active;
        EXPECT_EQ(palette.color(QPalette::Base), ToQColor(scheme.backColour));
        EXPECT_GE(contrast(active, QPalette::Text, QPalette::Base), 4.5);
        EXPECT_GE(contrast(active, QPalette::ButtonText, QPalette::Button), 4.5);
        EXPECT_GE(contrast(active, QPalette::Link, QPalette::Base), 4.5);
        EXPECT_GE(contrast(active, QPalette::HighlightedText, QPalette::Highlight), 4.5);
        EXPECT_GE(contrast(active, QPalette::Highlight, QPalette::Window), 1.3);
        EXPECT_GE(contrast(QPalette::Disabled, QPalette::Text, QPalette::Base), 3);
        EXPECT_GE(contrast(active, QPalette::Button, QPalette::Window), 1.1) << "buttons are seen";
    }
}

TEST(QtTextsTest, QtSpeaksTheLanguageOfTheProgram) {
    const auto cancel = [] {
        return QDialogButtonBox(QDialogButtonBox::Cancel)
            .button(QDialogButtonBox::Cancel)
            ->text()
            .remove(QLatin1Char('&'))
            .toStdString();
    };
    EXPECT_EQ(QtTextsIn(""), nullptr);
    EXPECT_EQ(QtTextsIn("en"), nullptr);
    EXPECT_EQ(QtTextsIn("no such language"), nullptr);
    EXPECT_EQ(cancel(), "Cancel");
    if (!QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) + "/qtbase_it.qm")) {
        GTEST_SKIP() << "Qt's translations are not installed.";
    }
    const std::pair<const char*, const char*> words[] = {
        {"it", "Annulla"}, {"de", "Abbrechen"}, {"fr", "Annuler"}, {"es", "Cancelar"}};
    for (const auto& [language, word] : words) {
        const std::unique_ptr<QTranslator> texts = QtTextsIn(language);
        ASSERT_NE(texts, nullptr) << language;
        QApplication::installTranslator(texts.get());
        EXPECT_EQ(cancel(), word);
    }
}

TEST_F(frmOrografixTest, HasItsIconInAllSizesAndShowsTheAboutBox) {
    Open({}, "it");
    EXPECT_EQ(parent->windowIcon().availableSizes().size(), 8);
    QString title;
    QString text;
    QTimer::singleShot(0, [&] {
        if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            for (const auto* label : box->findChildren<QLabel*>()) {
                text += label->text();
            }
            title = box->windowTitle();
            box->accept();
        }
    });
    Choose("mnuInformazioni");
    EXPECT_EQ(title, "Informazioni su Terravo");
    EXPECT_TRUE(text.contains("Terravo") && text.contains("0.") && text.contains("punti"))
        << text.toStdString();
}

} // namespace
} // namespace terravo
