#include "app/windows/HelpWindow.h"

#include "app/windows/Controls.h"

#include <QBoxLayout>
#include <QDesktopServices>
#include <QFile>
#include <QImage>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>

using terravo::Text;

namespace {

const QString kFolder = QStringLiteral(":/docs/");
constexpr int kWidestPicture = 560;

// Pictures of whole windows are wider than the text.
class GuideText : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

protected:
    QVariant loadResource(int type, const QUrl& name) override {
        if (type != QTextDocument::ImageResource) {
            return QTextBrowser::loadResource(type, name);
        }
        const QImage picture(kFolder + name.path());
        return picture.width() > kWidestPicture
                   ? picture.scaledToWidth(kWidestPicture, Qt::SmoothTransformation)
                   : picture;
    }
};

} // namespace

QString GuideFile(const std::string& language) {
    return language == "it" ? QStringLiteral("guida.md") : QStringLiteral("user-guide.md");
}

QString HeadingAnchor(const QString& heading) {
    QString anchor;
    for (const QChar c : heading.toLower()) {
        if (c.isLetterOrNumber() || c == QLatin1Char('-') || c == QLatin1Char('_')) {
            anchor += c;
        } else if (c.isSpace()) {
            anchor += QLatin1Char('-');
        }
    }
    return anchor;
}

HelpWindow::HelpWindow(const terravo::RunState& state, const std::string& language, QWidget* parent)
    : QDialog(parent, Qt::Window), state_(state), lstContents(new QListWidget(this)),
      txtGuide(new GuideText(this)), lblFind(new QLabel(this)), txtFind(new QLineEdit(this)),
      lblFound(new QLabel(this)), cmdNext(new QPushButton(this)), cmdBack(new QPushButton(this)) {
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(Caption(state_, Text::HelpTitle));
    resize(920, 680);
    MakeControls();
    ShowPage(GuideFile(language));
    txtGuide->setFocus();
}

void HelpWindow::MakeControls() {
    lstContents->setObjectName(QStringLiteral("lstContents"));
    lstContents->setAccessibleName(Caption(state_, Text::Contents));
    lstContents->setTextElideMode(Qt::ElideRight);
    lstContents->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    txtGuide->setObjectName(QStringLiteral("txtGuide"));
    txtGuide->setAccessibleName(windowTitle());
    txtGuide->setOpenLinks(false);
    txtGuide->document()->setDocumentMargin(14);
    txtFind->setObjectName(QStringLiteral("txtFind"));
    txtFind->setClearButtonEnabled(true);
    lblFind->setText(Caption(state_, Text::Find));
    lblFind->setBuddy(txtFind);
    txtFind->setAccessibleName(Spoken(lblFind->text()));
    lblFound->setObjectName(QStringLiteral("lblFound"));
    cmdNext->setObjectName(QStringLiteral("cmdNext"));
    cmdNext->setText(Caption(state_, Text::Next));
    cmdBack->setObjectName(QStringLiteral("cmdBack"));
    cmdBack->setText(Caption(state_, Text::Back));
    for (QPushButton* button : {cmdNext, cmdBack}) {
        button->setAutoDefault(false); // Enter in the search box searches, and does nothing else
    }
    cmdBack->setEnabled(false);

    auto* bar = new QHBoxLayout;
    for (QWidget* control : std::initializer_list<QWidget*>{cmdBack, lblFind, txtFind, cmdNext}) {
        bar->addWidget(control);
    }
    bar->insertStretch(1, 1);
    bar->insertWidget(2, lblFound);
    auto* panes = new QSplitter(this);
    panes->addWidget(lstContents);
    panes->addWidget(txtGuide);
    panes->setStretchFactor(1, 1);
    panes->setSizes({240, 680});
    panes->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(panes, 1);
    const QList<QWidget*> order{cmdBack, txtFind, cmdNext, lstContents, txtGuide};
    for (qsizetype i = 1; i < order.size(); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }

    connect(lstContents, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0) {
            ShowHeading(lstContents->item(row)->data(Qt::UserRole).toInt());
        }
    });
    connect(txtGuide, &QTextBrowser::anchorClicked, this, &HelpWindow::FollowLink);
    connect(txtFind, &QLineEdit::returnPressed, this, [this] { FindNext(false); });
    connect(txtFind, &QLineEdit::textEdited, lblFound, &QLabel::clear);
    connect(cmdNext, &QPushButton::clicked, this, [this] { FindNext(false); });
    connect(cmdBack, &QPushButton::clicked, this, &HelpWindow::GoBack);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        txtFind->setFocus();
        txtFind->selectAll();
    });
    connect(new QShortcut(Qt::Key_F3, this), &QShortcut::activated, this,
            [this] { FindNext(false); });
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F3, this), &QShortcut::activated, this,
            [this] { FindNext(true); });
    connect(new QShortcut(Qt::ALT | Qt::Key_Left, this), &QShortcut::activated, this,
            &HelpWindow::GoBack);
}

void HelpWindow::ShowPage(const QString& file, const QString& heading) {
    if (file != file_) {
        QFile page(kFolder + file);
        if (page.open(QIODevice::ReadOnly)) {
            txtGuide->setMarkdown(QString::fromUtf8(page.readAll()));
        } else {
            txtGuide->setPlainText(Caption(state_, Text::NoGuide) + QStringLiteral(" (") + file +
                                   QLatin1Char(')'));
        }
        file_ = file;
        FillContents();
    }
    for (int row = 0; row < lstContents->count(); ++row) {
        const QListWidgetItem& item = *lstContents->item(row);
        if (heading.isEmpty() ? row == 0 : HeadingAnchor(item.text().trimmed()) == heading) {
            lstContents->setCurrentRow(row);
            ShowHeading(item.data(Qt::UserRole).toInt());
            return;
        }
    }
}

void HelpWindow::FillContents() {
    lstContents->clear();
    for (QTextBlock block = txtGuide->document()->begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level == 0) {
            continue;
        }
        auto* item = new QListWidgetItem(
            QString(qsizetype{3} * (level - 1), QLatin1Char(' ')) + block.text(), lstContents);
        item->setData(Qt::UserRole, block.blockNumber());
        item->setToolTip(block.text());
    }
}

// Scrolls to the end first, so that the heading comes to stand at the top.
void HelpWindow::ShowHeading(int block) {
    QTextCursor cursor(txtGuide->document()->findBlockByNumber(block));
    txtGuide->moveCursor(QTextCursor::End);
    txtGuide->setTextCursor(cursor);
    txtGuide->ensureCursorVisible();
}

void HelpWindow::FollowLink(const QUrl& link) {
    if (!link.scheme().isEmpty()) {
        QDesktopServices::openUrl(link);
        return;
    }
    visited_.push_back({file_, txtGuide->verticalScrollBar()->value()});
    cmdBack->setEnabled(true);
    ShowPage(link.path().isEmpty() ? file_ : link.path(), link.fragment());
}

void HelpWindow::GoBack() {
    if (visited_.empty()) {
        return;
    }
    const Place place = visited_.back();
    visited_.pop_back();
    ShowPage(place.file);
    txtGuide->verticalScrollBar()->setValue(place.scroll);
    if (visited_.empty()) {
        txtGuide->setFocus(); // a button that goes grey would lose it
    }
    cmdBack->setEnabled(!visited_.empty());
}

void HelpWindow::FindNext(bool backward) {
    const QString wanted = txtFind->text();
    const QTextDocument::FindFlags flags =
        backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    bool found = !wanted.isEmpty() && txtGuide->find(wanted, flags);
    if (!found && !wanted.isEmpty()) {
        const QTextCursor before = txtGuide->textCursor();
        txtGuide->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
        found = txtGuide->find(wanted, flags);
        if (!found) {
            txtGuide->setTextCursor(before);
        }
    }
    lblFound->setText(found || wanted.isEmpty() ? QString() : Caption(state_, Text::NotFound));
}
