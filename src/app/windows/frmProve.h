// The main contour window: the map, its options and the menus, thin above a Session.
#pragma once

#include "app/session/Session.h"
#include "app/settings/ColourScheme.h"
#include "export/PictureExport.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QRadioButton>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>

class EditMenu;
class GradientButton;
class HelpWindow;
class LevelBox;
class MeasureMenu;
class SheetMenu;
class QBoxLayout;
class QMenuBar;
class QMimeData;
class StatusPanel;
class SurfaceView;
class TerrainMenu;
class WindowMenu;
class frm3D;

class frmProve : public QWidget, public terravo::MainView {
    Q_OBJECT

public:
    frmProve(terravo::RunState& state, terravo::Session& session, StatusPanel& status);

    /// Menus of the parent, which lives as long as this window.
    struct ParentMenus {
        EditMenu* edit = nullptr;
        SheetMenu* sheet = nullptr;
        TerrainMenu* terrain = nullptr;
        MeasureMenu* measure = nullptr;
        WindowMenu* windows = nullptr;
    };

    /// Puts this window's menus into the parent's menu bar, and among them those of the parent.
    void AddMenus(QMenuBar& menuBar, const ParentMenus& others);
    [[nodiscard]] terravo::Session& TheSession() { return session_; }

    /// The captions that the text table gives.
    void SetCaptions();

    /// The colours of the scheme; the map keeps its black background.
    void SetColours(const terravo::ColourScheme& scheme);

    /// Fills the recent files and loads the start-up file; the windows exist by now.
    void Start(const std::string& rawCommandLine, const std::string& namedFile);

    /// The 3D window: opened when there is none and `open` is set, else the one that is open or
    /// null. Where it is not set there are no 3D views.
    std::function<frm3D*(bool open)> view3D;

    /// Whether there is a sheet to see the changed part of. Where it is not set there is none.
    std::function<bool()> hasSheet;

    /// The place that is to be kept for the next run; none where this window has none that its user
    /// has seen. Where it is not set the window stands for itself.
    std::function<std::optional<QRect>()> placeToKeep;

    /// Offers work of a run that did not end properly, and opens it; true when it did. Where it is
    /// not set there is none.
    std::function<bool()> offerToRestore;

    /// Whether the windows may close: there is no unsaved work, or its user has said what becomes
    /// of it.
    [[nodiscard]] bool MayClose();

    // terravo::MainView
    terravo::DrawSurface& MapSurface() override;
    void ShowPointCount(terravo::Index count) override;
    void ShowLevelCount(terravo::Index count) override;
    void SetResultViewsVisible(bool visible) override;
    void ShowRecentFiles() override;
    void ShowTriangles3D(const terravo::PointSet& points, const terravo::TriangleList& triangles,
                         const std::string& title) override;
    void ShowNote(const std::string& text) override;
    void ShowFindings() override;
    void ShowSheet() override;
    void ShowProject() override;
    void ShowMark(std::optional<terravo::PlanPoint> place) override;
    void ShowStatus(const std::string& counts, const std::string& remark) override;
    [[nodiscard]] bool TakesPatches() const override;
    void ShowPatch(const terravo::SurfacePatch& patch) override;
    void BeginWork() override;
    void ShowProgress(double done) override;
    void EndWork() override;
    void SelectLines() override;
    [[nodiscard]] terravo::WindowBox Box() const override;
    [[nodiscard]] bool IsMinimised() const override;
    void CloseWindow() override;

signals:
    /// The exit command, or the companion program's file: the parent closes.
    void ExitAsked();
    /// The window of the survey check is wanted.
    void CheckAsked();
    /// Other findings, or other points are excluded.
    void FindingsChanged();
    /// The window of the sheet is wanted.
    void SheetAsked();
    /// A small part of the surface has changed.
    void PatchMade(const terravo::SurfacePatch& patch);
    /// The project, or what is unsaved of it, may have changed.
    void ProjectChanged();
    /// Another point is marked, or none.
    void MarkChanged();
    /// A command has come to its end; it may have changed anything.
    void WorkEnded();

public:
    // Files may be dropped anywhere on the program, so the parent passes its drags on.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] static std::string DroppedFile(const QMimeData& data);
    void MakeControls();
    QBoxLayout* MakeOptionsColumn();
    void ConnectControls();
    void ShowPointer(double x, double y);
    void CopyPicture();
    void TellOfCopy();
    void AddPictureEntries();
    void SetPictureCaptions();
    [[nodiscard]] terravo::Picture MapPicture();
    void ExportPicture(const std::string& proposedName, const terravo::Picture& picture);
    void PrintPicture(const terravo::Picture& picture);
    [[nodiscard]] terravo::Paper ChosenPaper() const;
    void Export3D();
    /// Asks for a format and its content and has a file for other programs written.
    void ExportVector();
    void Print3D();
    void AddSurfaceEntries();
    void SetSurfaceCaptions();
    void ShowLongestSide();
    void ShowCodes();
    void ShowLines();
    void ShowAbout();
    void ShowHelp();
    void ShowSettings();
    void ShowLevels();
    void CatchUp();
    void DescribeMap();
    void ShowView3D();
    void ShowMarkIn3D();

    terravo::RunState& state_;
    terravo::Session& session_;
    StatusPanel& status_;

    SurfaceView* picLivelli = nullptr;
    QWidget* Picture1 = nullptr;
    QGroupBox* Frame1 = nullptr;
    QCheckBox* chkValoriLivelli = nullptr;
    QCheckBox* chkPerimetro = nullptr;
    QCheckBox* chkTriangoli = nullptr;
    QRadioButton* optAree = nullptr;
    QRadioButton* optLinee = nullptr;
    LevelBox* txtNLiv = nullptr;
    QLabel* zLabel01 = nullptr;
    QLabel* zLabel02 = nullptr;
    QLabel* lblND = nullptr;
    GradientButton* XPButton1 = nullptr;

    QMenu* mnuFile = nullptr;
    QMenu* mnuSurvey = nullptr;
    EditMenu* mnuEdit = nullptr;
    SheetMenu* mnuSheet = nullptr;
    TerrainMenu* mnuTerrain = nullptr;
    MeasureMenu* mnuMeasures = nullptr;
    WindowMenu* mnuWindow = nullptr;
    QMenu* mnuQM = nullptr;
    QAction* mnuLeggiDati = nullptr;
    QAction* mnuSaveProject = nullptr;
    QAction* mnuSaveProjectAs = nullptr;
    QMenu* mnusalva = nullptr;
    std::vector<QAction*> mnut; // triangles, levels
    QAction* mnuExportMap = nullptr;
    QAction* mnuExportVector = nullptr;
    QAction* mnuPrint = nullptr;
    QAction* mnuWhitePaper = nullptr;
    QMenu* mnuPaperSize = nullptr;
    QPageSize::PageSizeId pageSize_ = QPageSize::A4;
    QAction* mnuEsci = nullptr;
    QAction* mnuFreeLists = nullptr;
    QAction* mnuSavePoints = nullptr;
    QAction* mnuCheck = nullptr;
    QAction* mnuLevels = nullptr;
    QAction* mnuExact = nullptr;
    std::vector<QAction*> surfaceEntries_; // of the survey menu, see frmProveSurface.cpp
    QAction* mnuHelp = nullptr;
    QAction* mnuSettings = nullptr;
    QAction* mnuInformazioni = nullptr;
    QPointer<HelpWindow> help_;
    QTimer catchUp_;                  // after the last small edit
    std::string language_;            // prefix in force
    QString counts_;                  // of points and triangles, as the status bar says them
    std::vector<QAction*> mnuRecenti; // entry 0 is the heading
};
