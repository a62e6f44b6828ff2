// The user guide in a window of its own: contents, text, search.
//
// Data: the guide's Markdown and its pictures, built into the program. Method: the headings of the
// text become the contents; a link leads to a heading, to another page of the guide, or out to the
// system's browser.
#pragma once

#include "util/RunState.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>

#include <vector>

class HelpWindow : public QDialog {
    Q_OBJECT

public:
    /// @param state     texts of the window's controls.
    /// @param language  prefix of the language in force; chooses the guide.
    HelpWindow(const terravo::RunState& state, const std::string& language,
               QWidget* parent = nullptr);

    /// Shows a page, by its file name, from its start or from a heading. A page that is missing
    /// gives a sentence.
    /// @param heading  as links write it: lower case, hyphens for blanks; empty for the start.
    void ShowPage(const QString& file, const QString& heading = {});

private:
    struct Place {
        QString file;
        int scroll = 0;
    };

    void MakeControls();
    void FillContents();
    void ShowHeading(int block);
    void FollowLink(const QUrl& link);
    void GoBack();
    void FindNext(bool backward);

    const terravo::RunState& state_;
    QString file_;
    std::vector<Place> visited_;
    QListWidget* lstContents;
    QTextBrowser* txtGuide;
    QLabel* lblFind;
    QLineEdit* txtFind;
    QLabel* lblFound;
    QPushButton* cmdNext;
    QPushButton* cmdBack;
};

/// File name of the guide in a language; English where there is none.
QString GuideFile(const std::string& language);

/// The name by which links mean a heading: its letters and digits in lower case, hyphens for
/// blanks.
QString HeadingAnchor(const QString& heading);
