#include "app/settings/SettingsFiles.h"
#include "app/windows/HelpWindow.h"
#include "app/windows/SettingsDialog.h"
#include "gui/OpenedAddresses.h"
#include "gui/WindowFixture.h"

#include <QDesktopServices>
#include <QScrollBar>
#include <QTextBlock>

namespace terravo {
namespace {

struct HelpTest : WindowFixture {
    QListWidget* contents = nullptr;
    QTextBrowser* text = nullptr;
    std::unique_ptr<HelpWindow> help;

    void OpenHelp(const std::string& language) {
        help = std::make_unique<HelpWindow>(state, language);
        help->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(help.get()));
        contents = help->findChild<QListWidget*>(QStringLiteral("lstContents"));
        text = help->findChild<QTextBrowser*>(QStringLiteral("txtGuide"));
        ASSERT_TRUE(contents != nullptr && text != nullptr);
    }
    [[nodiscard]] QString Heading() const { return text->textCursor().block().text(); }
};

TEST_F(HelpTest, OpensOnF1InTheLanguageInForce) {
    std::filesystem::create_directories(folder.File("user"));
    state.userFolder = folder.File("user/");
    WriteLanguage(state.userFolder, "it");
    Open({}, "it");
    WriteLanguage(state.userFolder, "en"); // for the next start
    QTest::keyClick(parent.get(), Qt::Key_F1);
    auto* guide = parent->findChild<HelpWindow*>();
    ASSERT_TRUE(guide != nullptr && guide->isVisible());
    EXPECT_TRUE(guide->findChild<QTextBrowser*>()->toPlainText().startsWith("Guida di Terravo"));
    QTest::keyClick(guide, Qt::Key_Escape);
    EXPECT_FALSE(guide->isVisible());
}

// A link that leads nowhere, and a picture that is not there, show in the text.
TEST_F(HelpTest, EveryLinkAndPictureOfTheGuidesIsThere) {
    for (const char* language : {"en", "it"}) {
        OpenHelp(language);
        int links = 0;
        for (QTextBlock block = text->document()->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextCharFormat format = part.fragment().charFormat();
                if (format.isImageFormat()) {
                    const QString name = format.toImageFormat().name();
                    EXPECT_FALSE(QImage(":/docs/" + name).isNull()) << name.toStdString();
                }
                const QUrl link(format.anchorHref());
                if (link.isEmpty()) {
                    continue;
                }
                ++links;
                HelpWindow target(state, language);
                target.ShowPage(link.path(), link.fragment());
                const QTextCursor at = target.findChild<QTextBrowser*>()->textCursor();
                EXPECT_GT(at.block().blockFormat().headingLevel(), 0);
                EXPECT_TRUE(link.fragment().isEmpty() ||
                            HeadingAnchor(at.block().text()) == link.fragment())
                    << link.toString().toStdString();
            }
        }
        EXPECT_GT(links, 3);
    }
}

TEST_F(HelpTest, FindsFollowsAndGoesBack) {
    OpenHelp("en");
    auto* find = help->findChild<QLineEdit*>(QStringLiteral("txtFind"));
    auto* found = help->findChild<QLabel*>(QStringLiteral("lblFound"));
    QTest::keyClick(text, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(find->hasFocus());
    QTest::keyClicks(find, "escape");
    QTest::keyClick(find, Qt::Key_Return);
    const int first = text->textCursor().position();
    EXPECT_EQ(text->textCursor().selectedText().toLower(), "escape");
    QTest::keyClick(help.get(), Qt::Key_F3);
    EXPECT_GT(text->textCursor().position(), first);
    QTest::keyClick(help.get(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(text->textCursor().position(), first);
    find->setText("no such words");
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_FALSE(found->text().isEmpty());
    EXPECT_TRUE(help->isVisible()) << "Enter closes nothing";

    contents->setCurrentRow(contents->count() - 1);
    EXPECT_EQ(Heading(), "Without a window");
    const int scroll = text->verticalScrollBar()->value();
    EXPECT_GT(scroll, 0);
    emit text->anchorClicked(QUrl("formats.md#the-round-trip"));
    EXPECT_EQ(Heading(), "The round trip");
    QTest::keyClick(help.get(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_TRUE(text->toPlainText().startsWith("Terravo user guide"));
    EXPECT_EQ(text->verticalScrollBar()->value(), scroll);

    OpenedAddresses browser;
    QDesktopServices::setUrlHandler("https", &browser, "Open");
    emit text->anchorClicked(QUrl("https://example.org/a"));
    QDesktopServices::unsetUrlHandler("https");
    EXPECT_EQ(browser.opened, QList<QUrl>{QUrl("https://example.org/a")});
    help->ShowPage("missing.md");
    EXPECT_TRUE(text->toPlainText().contains("missing.md"));
}

TEST(SettingsDialogTest, WritesOnlyWhatWasChangedAndSaysWhatCannotBe) {
    const test::TemporaryFolder folder;
    RunState state;
    state.userFolder = folder.Path();
    state.supportFolder = FindSupportFolder(folder.Path());
    const auto choose = [](SettingsDialog& dialog, const char* box, const char* entry) {
        auto* combo = dialog.findChild<QComboBox*>(QLatin1String(box));
        ASSERT_NE(combo, nullptr);
        ASSERT_GE(combo->findText(entry), 0) << entry;
        combo->setCurrentText(entry);
    };
    static_cast<void>(folder.Write("color_menu.cff", "1,2,3\n7,8\n9\n10\n"));
    SettingsDialog own(state);
    choose(own, "cmbColours", "As in the file");
    choose(own, "cmbLanguage", "Italiano");
    own.accept();
    EXPECT_EQ(own.result(), QDialog::Accepted);
    EXPECT_EQ(LanguageAtNextStart(folder.Path()), "it");
    EXPECT_EQ(folder.Read("color_menu.cff"), "1,2,3\n7,8\n9\n10\n");
    std::filesystem::remove(folder.File("sxconf.cff"));

    SettingsDialog light(state);
    choose(light, "cmbColours", "Light");
    light.accept();
    EXPECT_EQ(ReadColourScheme(folder.Path()), LightScheme());
    EXPECT_EQ(LanguageAtNextStart(folder.Path()), "");

    std::filesystem::create_directory(folder.File("sxconf.cff"));
    SettingsDialog refused(state);
    choose(refused, "cmbLanguage", "Deutsch");
    refused.show();
    refused.accept();
    EXPECT_TRUE(refused.isVisible());
    EXPECT_TRUE(refused.findChild<QLabel*>("lblNote")->text().contains("sxconf.cff"));
}

} // namespace
} // namespace terravo
