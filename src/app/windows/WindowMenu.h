// The menu of the windows inside the parent: side by side, one behind the other, the 3D view, and a
// list of those that are open.
//
// Data: the parent's documents. Method: the list is made anew whenever the menu opens; the 3D view
// itself is brought back by whoever has its points.
#pragma once

#include "app/windows/DocumentPlaces.h"
#include "util/RunState.h"

#include <QActionGroup>
#include <QMdiArea>
#include <QMenu>

class WindowMenu : public QMenu {
    Q_OBJECT

public:
    WindowMenu(QMdiArea& area, DocumentPlaces& places, QWidget* parent = nullptr);

    void SetCaptions(const terravo::RunState& state);

    /// Whether there is something that the 3D view can show; the entry says why where there is not.
    void SetView3DPossible(bool possible);

    /// Brings the document that holds a widget to the front, from an icon too.
    void Activate(const QWidget& content);

signals:
    void View3DAsked();

protected:
    bool event(QEvent* event) override;

private:
    void ListDocuments();

    QMdiArea& area_;
    QAction* mnuTile = nullptr;
    QAction* mnuCascade = nullptr;
    QAction* mnuView3D = nullptr;
    QString nothingToShow_;
    QActionGroup documents_;
};
