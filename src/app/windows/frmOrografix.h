// The parent window: menu bar, status bar, and the documents.
#pragma once

#include "app/session/StartUpRules.h"
#include "app/settings/ColourScheme.h"
#include "app/windows/DocumentPlaces.h"
#include "util/SettingsStore.h"

#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>

#include <functional>
#include <optional>

class CheckWindow;
class EditMenu;
class MeasureDocuments;
class MeasureMenu;
class SheetMenu;
class SheetWindow;
class StatusPanel;
class TerrainMenu;
class TerrainWindow;
class WindowMenu;
class frm3D;
class frmProve;

/// The place that a document had when the program ended, or a random one.
/// @param designed  size that it takes when none is kept.
DocumentBox RestoredBox(const terravo::SettingsStore& settings, const std::string& windowName,
                        QSize designed);

class frmOrografix : public QMainWindow {
    Q_OBJECT

public:
    explicit frmOrografix(const terravo::ColourScheme& scheme);

    [[nodiscard]] StatusPanel& Status() { return *status_; }

    /// Takes the main contour window in: its menus, and its frame at the given place among the
    /// documents.
    void AddMainWindow(frmProve* window, const DocumentBox& box);

    /// How a 3D window is made, and where its place is kept. To be called before a file is loaded.
    void SetView3D(std::function<frm3D*()> make, terravo::SettingsStore& settings);

    /// How the window of the survey check is made. To be called after SetView3D.
    void SetCheck(std::function<CheckWindow*()> make);

    /// How the window of the sheet is made. To be called after SetView3D.
    void SetSheet(std::function<SheetWindow*()> make);

    /// How the window of the terrain is made. To be called after SetView3D.
    void SetTerrain(std::function<TerrainWindow*()> make);

    /// The windows of measuring become documents. To be called after SetSheet.
    void SetMeasures(MeasureDocuments* measures);

    /// Shows the window as designed, minimised or maximised.
    void ShowIn(terravo::ParentState state);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    frm3D* View3DWindow(bool open);
    QMdiSubWindow* OpenView3D();
    void ShowCheck();
    void ShowSheet();
    void ShowTerrain();
    QMdiSubWindow* AddDocument(QWidget* content, const DocumentKind& kind);
    void KeepPlace(const QMdiSubWindow* frame, const DocumentKind& kind);
    DocumentBox BoxFor(const DocumentKind& kind, QSize minimum);
    std::optional<QRect> BoxBesideMap(QSize size, QSize least);
    QRect BoxAtRightEdge(QSize size);

    QMdiArea* area_;
    DocumentPlaces* places_;
    StatusPanel* status_;

    std::function<frm3D*()> makeView3D_;
    std::function<CheckWindow*()> makeCheck_;
    std::function<SheetWindow*()> makeSheet_;
    std::function<TerrainWindow*()> makeTerrain_;
    terravo::SettingsStore* settings_ = nullptr;
    QPointer<frm3D> view3D_;
    QPointer<CheckWindow> check_;
    QPointer<SheetWindow> sheet_;
    QPointer<TerrainWindow> terrain_;
    EditMenu* editMenu_ = nullptr;
    SheetMenu* sheetMenu_ = nullptr;
    TerrainMenu* terrainMenu_ = nullptr;
    MeasureMenu* measureMenu_ = nullptr;
    MeasureDocuments* measures_ = nullptr;
    WindowMenu* windowMenu_ = nullptr;
    frmProve* mainWindow_ = nullptr;
    bool isAsking_ = false; // whether it may close
    QMdiSubWindow* mainFrame_ = nullptr;
};
