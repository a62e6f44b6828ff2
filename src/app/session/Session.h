// The commands of the main window, without the window.
//
// Data: the run state, the survey, the display options, the recent files. Method: each command of a
// user or of the start-up is one operation here; a window calls it and shows what it is told
// through MainView. Drawing and writing return what went wrong; here it is told. Dialogs,
// clipboard, settings and the program's end are services, so that tests drive the whole program
// without a widget.
#pragma once

#include "app/project/ProjectServices.h"
#include "app/session/ContourMap.h"
#include "app/session/DifferenceSheet.h"
#include "app/session/MeasureReport.h"
#include "app/session/PlanHistory.h"
#include "app/session/PointerText.h"
#include "app/session/ProjectState.h"
#include "app/session/SectionTable.h"
#include "app/session/SheetMaker.h"
#include "app/session/SurveyReview.h"
#include "app/settings/Configuration.h"
#include "app/settings/OpeningWindows.h"
#include "app/settings/RecentFiles.h"
#include "app/settings/WindowPosition.h"
#include "exchange/VectorFile.h"
#include "export/vector/MakeVectorContent.h"
#include "gis/GisChoice.h"
#include "gis/GisImport.h"
#include "survey/PointFile.h"
#include "survey/import/ImportChoice.h"
#include "survey/surface/LineFile.h"
#include "survey/surface/SurfacePick.h"
#include "util/SettingsStore.h"
#include "view3d/terrain/TerrainContent.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace terravo {

/// What the main window shows at a session's bidding.
class MainView {
public:
    virtual ~MainView() = default;

    /// The surface of the map, at its present size.
    virtual DrawSurface& MapSurface() = 0;
    virtual void ShowPointCount(Index count) = 0;
    /// The number of levels in force, whatever their rule.
    virtual void ShowLevelCount(Index count) = 0;
    /// Shows or hides the map and the 3D view, and lets or forbids saving.
    virtual void SetResultViewsVisible(bool visible) = 0;
    virtual void ShowRecentFiles() = 0;
    /// Opens the 3D window when there is none, and shows points and triangles in it.
    virtual void ShowTriangles3D(const PointSet& points, const TriangleList& triangles,
                                 const std::string& title) = 0;
    /// The counts of points and triangles, and one line for what would otherwise be silent.
    virtual void ShowStatus(const std::string& counts, const std::string& remark) = 0;
    /// Says for a short while that something was done.
    virtual void ShowNote(const std::string& text) = 0;
    /// The findings of the check, or which points are excluded, have changed.
    virtual void ShowFindings() = 0;
    /// A file that the user has opened is drawn, and a sheet is to be shown with it.
    virtual void ShowSheet() = 0;
    /// Whether a part of the surface can be shown by itself.
    [[nodiscard]] virtual bool TakesPatches() const { return false; }
    /// A small part of the surface has changed; all else is to be caught up with soon.
    virtual void ShowPatch(const SurfacePatch& /*patch*/) {}
    /// Another project, or other changes to it, are there or were saved.
    virtual void ShowProject() {}
    /// Marks a place on the map, or takes the mark away.
    virtual void ShowMark(std::optional<PlanPoint> place) = 0;
    /// A long command begins, advances and ends.
    virtual void BeginWork() = 0;
    /// May take the user's wish to stop, and pass it to RequestStop.
    virtual void ShowProgress(double done) = 0;
    virtual void EndWork() = 0;
    /// Selects contour lines and what belongs to them, without drawing.
    virtual void SelectLines() = 0;
    /// Place of the main window in its parent, logical pixels.
    [[nodiscard]] virtual WindowBox Box() const = 0;
    [[nodiscard]] virtual bool IsMinimised() const = 0;
    /// Closes the main window; queued while the windows are still being made.
    virtual void CloseWindow() = 0;
};

struct SessionServices {
    MessageService& messages;
    ClipboardService& clipboard;
    FileDialogService& dialogs;
    ProgramEndService& programEnd;
    LogService& log;
    ClockService& clock;
    SettingsStore& settings;
    ImportDialogService& imports;
    GisDialogService& gis;
    ProjectServices* projects = nullptr; // none: there are no projects, and nothing to save
};

/// What measurements depend on.
struct MeasureStand {
    std::uint64_t survey = 0; // each grows with every change
    std::uint64_t points = 0;
    std::uint64_t second = 0;
    std::uint64_t polygon = 0;

    bool operator==(const MeasureStand&) const = default;
};

/// The sheet of a difference, and where the surveys are on it.
struct DifferencePicture {
    SheetScene scene;
    MapView view;
};

struct MeasureAnswer {
    MeasureReport report;
    std::optional<CrossSectionFigures> cross; // of MeasureKind::Cross
};

/// The entries of the save menu, in its order.
enum class QrzKind { Triangles, Levels };

class Session {
public:
    Session(RunState& state, const SessionServices& services);

    /// To be called once, before any other operation.
    void SetView(MainView& view);

    [[nodiscard]] const MapOptions& Options() const { return options_; }
    [[nodiscard]] const PointSet& Points() const { return survey_.Points(); }
    [[nodiscard]] const RecentFiles& Recent() const { return recent_; }
    [[nodiscard]] bool ResultViewsVisible() const { return resultViewsVisible_; }
    /// What the status bar says of a place on the map.
    /// @param reach  in x and in y, within which a point is named.
    [[nodiscard]] std::string TextOfPlace(PlanPoint place, PlanPoint reach = {}) {
        return pointerText_.At(place, reach, state_.decimalSeparator);
    }

    /// The recent files of the last run; those that no longer exist are dropped.
    void LoadRecentFiles();

    /// Loads the file of the command line or of the clipboard, if one of them names a start-up
    /// file. The companion program's own file closes the main window again.
    void LoadStartUpFile(const std::string& rawCommandLine);
    /// Whether there is one.
    [[nodiscard]] bool NamesStartUpFile(const std::string& rawCommandLine) const;

    /// Loads a file that the user names directly, whatever its extension. One that is missing or
    /// cannot be read is told of, and leaves everything as it was.
    void LoadNamedFile(const std::string& path) { LoadNamedFile(path, false); }

    void OpenPointFile();

    /// Whether files are read as free lists of numbers, without a look at them; kept in the
    /// settings.
    void SetReadsFreeLists(bool on);
    [[nodiscard]] bool ReadsFreeLists() const { return readsFreeLists_; }
    void LoadReadingHabit();

    /// Asks where to and writes the points in use, or the excluded ones, there as a clean file of
    /// x, y, z.
    void SavePoints();
    void SaveExcludedPoints();

    /// The points with those that are excluded, and what is known of them.
    [[nodiscard]] const Survey& TheSurvey() const { return survey_; }
    [[nodiscard]] const SurveyReview& Review() const { return review_; }

    /// Checks the points in use and shows what is found.
    void CheckSurvey();

    /// Leaves points out of everything that is made of the survey, or takes them back; refuses, and
    /// says so, where fewer than three would remain.
    /// @param points  numbers among all points.
    /// @return whether anything changed.
    bool SetExcluded(const std::vector<Index>& points, bool excluded);

    /// Lays another plan over the points, as a step that can be undone; refuses, and says so, where
    /// fewer than three points would remain in use.
    /// @param step  its name.
    /// @return whether anything changed.
    bool ApplyPlan(SurfacePlan plan, Text step);
    bool Undo();
    bool Redo();
    [[nodiscard]] const PlanHistory& History() const { return history_; }

    /// Whether small edits have changed the surface since map, sheet and 3D view were made.
    [[nodiscard]] bool IsBehind() const { return isBehind_; }
    /// Small edits are about to be made: gets ready for them, so that the first one is quick too.
    void PrepareEdits();
    /// Makes everything that is behind anew, unless the user goes on meanwhile.
    void CatchUp();
    /// Whether the command at work gives way to what the user does.
    [[nodiscard]] bool GivesWay() const { return givesWay_; }
    /// Ends it, to be begun again later.
    void Interrupt();

    /// What is measured, and beside what.
    [[nodiscard]] const MeasureDesk& Measures() const { return measures_; }
    /// What measurements depend on; equal ones of equal questions are equal.
    [[nodiscard]] MeasureStand StandOfMeasures() const {
        return {survey_.Version(), survey_.PointsRevision(), secondRevision_, polygonRevision_};
    }
    /// @return nothing where there is no surface, another command is at work, or it was stopped;
    ///         the user has been told.
    std::optional<MeasureAnswer> Measure(const MeasureQuestion& question);
    /// For proposals; nothing as above.
    std::optional<AreaFigures> MeasureAreas();
    /// Asks for a file and makes it the survey to compare with.
    /// @return whether there is another one now.
    bool CompareWithFile();
    void ForgetSecond();
    /// Restricts areas and volumes to the ground within rings; refuses, and says so, where they
    /// cannot be taken.
    bool SetMeasuredPolygon(std::vector<PlanRing> rings);
    /// Asks for a file of rings.
    bool OpenMeasuredPolygon();
    /// The section of the present surfaces, which is kept as the one that is shown; nothing as
    /// above, or where the line has no length.
    std::optional<SectionFigures> MakeSection(std::vector<PlanPoint> line);
    [[nodiscard]] const std::vector<PlanPoint>& SectionLine() const { return sectionLine_; }
    void ForgetSection() { sectionLine_.clear(); }
    /// The second survey less this one; nothing as above, or where they have no ground in common.
    std::optional<DifferenceSurface> MakeDifference();
    /// A sheet of a difference; nothing where another command is at work, or it was stopped.
    std::optional<DifferencePicture> MakeDifferenceSheet(const DifferenceSurface& difference,
                                                         const TextMeasure& measure);
    /// Asks where to and writes a CSV there.
    void SaveCsv(const std::string& csv, const std::string& proposedName);
    void SaveSections(const std::vector<TableSection>& sections);

    /// Asks for a file and lays its lines over the points.
    void AddLineFile(LineRole role);
    /// Points of these codes make breaklines.
    void AddCodeLines(const std::vector<std::string>& codes);
    bool AddLines(LineRole role, std::vector<SurfaceLine> lines);
    void SetLongestSide(std::optional<double> length);
    [[nodiscard]] LongestSideProposal ProposeLongestSide() const;
    /// What a longest side would hide of the surface as it is without one.
    [[nodiscard]] terravo::LongestSideEffect EffectOfLongestSide(double length) const;
    /// Checks the surface as it is now and tells what came of it.
    void VerifySurface();

    // What the hand does on the sheet. `reach` is how far it may be off, data units.
    /// The survey point at a place: its number among all points.
    [[nodiscard]] std::optional<Index> SurveyPointAt(PlanPoint place, double reach);
    /// Puts the other side of the two triangles in its place, or takes a held side back.
    bool FlipSideAt(PlanPoint place);
    /// Holds a side, or lets it go.
    bool HoldSideAt(PlanPoint place);
    /// @param point  number among all points.
    bool SetHeight(Index point, double height);
    /// A vertex of a line that is being drawn: a point in reach, else the place on the surface.
    [[nodiscard]] SpacePoint VertexAt(PlanPoint place, double reach);
    bool AddDrawnLine(LineRole role, std::vector<SpacePoint> vertices);

    /// Marks a point on the map, or none.
    /// @param point  number among all points.
    void MarkPoint(std::optional<Index> point);
    /// The one that is marked, while it is one of the points.
    [[nodiscard]] std::optional<Index> MarkedPoint() const {
        return marked_ && *marked_ <= survey_.AllPoints().count ? marked_ : std::nullopt;
    }

    /// Loads a recent file; one that a choice was made for is read as it was then, while it has the
    /// same shape.
    /// @param position  1-based entry of the recent files.
    void OpenRecentFile(std::size_t position);

    // Options: each redraws the map.
    void SetShowPerimeter(bool on);
    void SetShowTriangles(bool on);
    void SetShowLevelValues(bool on);
    void SetMode(MapMode mode);
    /// The levels go by number from now on.
    void SetLevelCount(Index count);
    /// The levels follow the rule, until another file is read or a number is set. Where points that
    /// are excluded leave it no level, the user is told and the levels go by the last number again.
    /// @param rule  without a fault over the heights of the points.
    void SetLevelRule(const LevelRule& rule);

    /// Triangulates with exact signs at any size, or with plain arithmetic where the set is small;
    /// draws and hands over anew.
    void SetExact(bool on);

    /// Asks where to and writes a QRZ file from the exchange files of the last drawing. Contours
    /// are drawn as lines first, so that there are segments to write.
    void Export(QrzKind kind);

    /// Asks where to and has a picture written there, as `write` does it; a failure (AppError) is
    /// shown.
    /// @param proposedName  without an extension.
    /// @param extension     of a name that is typed without one.
    void ExportPicture(const std::string& proposedName,
                       const std::function<void(const std::string& path)>& write,
                       const std::string& extension = "png");

    /// Writes content to a path in a format, and tells how that went; the parts of the content are
    /// those of the wish.
    using VectorWrite = std::function<VectorOutcome(
        const std::string& path, const VectorFormat& format, VectorContent& content)>;

    /// Asks where to and has a file for other programs written there, of the levels in force; a
    /// failure (AppError) is shown, and what had to be changed.
    void ExportVector(const VectorFormat& format, const VectorWish& wish, const VectorWrite& write);
    /// The same of a difference of two surveys.
    void ExportDifference(const DifferenceSurface& difference, const VectorFormat& format,
                          const VectorWish& wish, const VectorWrite& write);

    /// The surface in use and the contours of the sheet's levels, ready to be drawn as a terrain.
    /// @param smoothing  of the contours; none: lines as they are cut. A large surface has those.
    /// @return nothing where there is no surface, another command is at work, or it was stopped.
    std::optional<TerrainContent> MakeTerrain(const std::optional<SmoothingOptions>& smoothing);

    /// The settings, for the habits of dialogs.
    [[nodiscard]] SettingsStore& Settings() { return services_.settings; }

    /// The levels that a sheet shows: those of the map, and round ones while nobody has chosen the
    /// levels of this file.
    [[nodiscard]] LevelRule SheetLevels() const;

    /// Makes a sheet of the points in use.
    /// @return nothing when there are no points, another command is at work, or it was stopped.
    /// Throws AppError for levels that cannot be.
    std::optional<SheetScene> MakeSheet(const SheetPlan& plan, const TextMeasure& measure);
    /// Of the sheet made last.
    [[nodiscard]] SheetLineFigures FiguresOfSheet() const { return sheets_.Figures(); }
    /// Makes the changed part of the sheet made last; nothing where there is none.
    [[nodiscard]] std::optional<SheetScene> MakeSheetPatch(const SheetPlan& plan,
                                                           const SurfacePatch& patch,
                                                           const TextMeasure& measure) const {
        return sheets_.MakePatch(plan, patch, measure);
    }
    /// The same as MakeSheet, but it gives way to what the user does.
    /// @param[out] wasInterrupted  whether it did.
    std::optional<SheetScene> MakeSheetMeanwhile(const SheetPlan& plan, const TextMeasure& measure,
                                                 bool& wasInterrupted);

    /// The sheet on the screen, to be kept in the project. The first one for a file is no change of
    /// its user's.
    void KeepSheet(const SheetPlan& plan);
    /// The sheet of the present file, as it was last kept or came with a project.
    [[nodiscard]] const std::optional<SheetPlan>& KeptSheet() const { return project_.sheet; }
    /// Grows when a project has brought a sheet.
    [[nodiscard]] std::uint64_t SheetRevision() const { return project_.sheetRevision; }

    /// The project of the present state; its checksum may not be known yet.
    [[nodiscard]] Project MakeProject() const;
    /// Lays what a project holds over the present points; nothing is drawn.
    /// @param project  whose point numbers are those of points.
    void TakeProject(const Project& project);

    /// Saves the project to its file, or asks where to.
    /// @return whether it was saved; else the user has been told why, or has cancelled.
    bool SaveProject();
    bool SaveProjectAs();
    /// Whether there is anything to save as a project.
    [[nodiscard]] bool CanSaveProject() const;

    /// The file name of the project, else that of the points where there is unsaved work, else
    /// nothing.
    [[nodiscard]] std::string ProjectName() const;
    /// Whether there is work that neither a project file holds nor opening the points would bring
    /// back. Looking at a file is none, and the start-up file has none until it is saved.
    [[nodiscard]] bool HasUnsavedWork() const;
    /// What the user has done, to be compared with what was done before.
    [[nodiscard]] ProjectWork Work() const;
    /// Asks whether to save unsaved work, where there is any, and does it.
    /// @return whether the work may go.
    bool AskToSave();
    /// The same before the program ends; work that is not to be saved counts as saved then.
    bool MayClose();

    /// The project as a recovery file holds it.
    [[nodiscard]] Project ProjectToRecover() const;
    /// Opens what a recovery file holds; the work then waits to be saved.
    /// @return false where its points cannot be read; the user has been told.
    bool Restore(const Project& recovered);

    /// Which windows open with a file that the user opens; kept in the settings.
    [[nodiscard]] OpeningWindows OpensWith() const;
    void SetOpensWith(OpeningWindows windows);

    /// Whether the hand-over of triangles opens the 3D window.
    [[nodiscard]] bool OpensView3D() const { return opensView3D_; }

    /// Says that the last drawing was stopped, and returns true, if it was: there is nothing
    /// complete to hand out.
    bool RefusesToExport();

    /// Draws the map once more, on another surface; the exchange files stay those of the window's
    /// map.
    /// @return false when the drawing was stopped or failed, or another command is at work.
    bool DrawMapOn(DrawSurface& surface);

    /// Redraws the map, as after a change of its size, and rewrites the segment file. During
    /// another command it waits for that one's end.
    void DrawContourMap();

    /// Hands the points as they are now to the 3D view once more, as after its window was closed.
    void ShowView3D();

    /// Whether a command is at work: its points may be half read.
    [[nodiscard]] bool IsAtWork() const { return depth_ > 0; }

    /// Asks the command that is at work to end soon. What has been drawn stays; nothing is exported
    /// until a drawing has come to its end.
    void RequestStop() { stop_.RequestStop(); }

    /// What the closing of the main window saves and exports.
    void Close();

private:
    class WorkGuard;

    // A file as its user wants it read.
    struct UserReading {
        ImportOutcome outcome;
        HowRead how;
    };

    bool LoadPointFile(const std::string& path);
    bool ReadUserFile(const std::string& path, bool isRecent);
    std::optional<UserReading> ReadTextFile(const std::string& path, bool isRecent,
                                            PointSet& points);
    std::optional<UserReading> ReadGisFile(const std::string& path, bool isRecent,
                                           PointSet& points);
    std::shared_ptr<Survey> ReadSecond(const std::string& path);
    std::shared_ptr<Survey> ReadSecondProject(const std::string& path);
    bool HasSurface(const Survey& survey, const std::string& path);
    void SaveTable(const std::string& proposedName, const std::function<void(OutputFile&)>& write);
    bool AtMeasuring(const std::function<void()>& measure);
    MeasureAnswer AnswerTo(const MeasureQuestion& question);
    [[nodiscard]] std::optional<GisPlan> PlanFor(const std::string& path, const GisSource& source,
                                                 bool isRecent);
    bool TakeReading(const std::string& path, const ImportOutcome& outcome, const HowRead& how,
                     PointSet points);
    void BeginProject(const std::string& pointFile, const HowRead& how);
    bool OpenProject(const std::string& path);
    bool OpenPoints(Project project, const std::string& path, std::vector<std::string> remarks);
    [[nodiscard]] std::optional<std::string> LookForSource(const ProjectSource& source,
                                                           const std::string& projectPath);
    [[nodiscard]] bool MayTake(ProjectSource& source, const std::string& file);
    [[nodiscard]] bool CompleteChecksum();
    bool MayReplaceProject(const std::string& path);
    bool WriteProject(const std::string& path);
    void TellOfProject(const std::string& fault, Text what);
    void ShowWhatWasRead();
    void TellOfFailure(const ReadFailure& failure);
    [[nodiscard]] std::optional<ImportChoice> ChoiceOfBefore(const std::string& path,
                                                             const Inspection& inspection) const;
    std::optional<ImportChoice> AskAbout(const std::string& path, Inspection inspection,
                                         const ReadFailure& failure,
                                         const std::optional<ImportPlan>& chosen);
    [[nodiscard]] std::string TextOfReading(const ImportOutcome& outcome) const;
    void TakePoints(PointSet points, const std::string& path);
    bool ShowPlan(SurfacePlan plan);
    bool MakeLive();
    std::optional<SurfacePatch> FollowPlan(const SurfacePlan& plan);
    void MakeAllAnew();
    [[nodiscard]] std::vector<std::string> LinesLeftOut() const;
    void TellOfLinesLeftOut(const std::vector<std::string>& before);
    /// Asks for a file of lines and reads it; nothing: cancelled, or the user has been told why.
    std::optional<LineReading> AskForLines(LineClosing closing);
    /// Sentences one below the other, if there are any; of very many the first.
    void TellRemarks(const std::vector<std::string>& remarks, const std::string& title = "");
    void SavePointSet(const PointSet& points, const std::string& proposedName);
    void DrawMap();
    void LeaveRuleThatDoesNotFit();
    MapReport DrawMapAndSegments();
    void TellOfDrawing(const MapReport& report);
    void TriangulateAndShow3D();
    void HandToView3D(const ShownSurface& shown);
    using VectorMaking = std::function<std::optional<VectorContent>()>;
    void ExportContent(const VectorFormat& format, const std::string& name,
                       const VectorMaking& make, const VectorWrite& write);
    void ExportTriangles();
    void ExportLevels();
    void TellOfExport();
    void LoadNamedFile(const std::string& path, bool isRecent);
    void LoadAndShow(const std::string& path, bool isRecent);
    void RunPipeline();
    void ExportOnExit();
    void ShowResultViews(bool visible);
    void UpdateStatus();
    [[nodiscard]] std::string RemarkOnHidden(const ShapedSurface& surface) const;

    RunState& state_;
    SessionServices services_;
    Survey survey_;
    TriangulationWish wish_; // for the next points
    MapOptions options_;
    StopToken stop_; // of the command at work
    ContourMap map_;
    PointerText pointerText_{survey_};
    std::unique_ptr<LiveSurface> live_; // while small edits are made to many points
    SurfacePick pick_{survey_, &live_};
    PlanHistory history_;
    SurveyReview review_{survey_};
    MeasureDesk measures_{survey_};
    std::vector<PlanPoint> sectionLine_;
    std::uint64_t secondRevision_ = 0; // grow with every change
    std::uint64_t polygonRevision_ = 0;
    SurveyContours contours_{survey_};
    SheetMaker sheets_{contours_, state_};
    std::optional<Index> marked_; // among all points
    bool levelsChosen_ = false;   // by the user, for the present points
    bool opensView3D_ = true;
    RecentFiles recent_;
    bool readsFreeLists_ = false;
    ProjectState project_;
    std::string readAs_; // how the present file was read; empty for that of the start-up
    MainView* view_ = nullptr;
    bool resultViewsVisible_ = false;
    bool isBehind_ = false;
    bool givesWay_ = false;
    bool wasInterrupted_ = false;
    int depth_ = 0;             // of commands at work
    bool redrawWanted_ = false; // asked for during a command
    bool complete_ = true;      // the last drawing came to its end
    bool drawn_ = false;        // the last drawing succeeded
    // The points have not been handed to the 3D view and the mesh file.
    bool handOverPending_ = false;
};

} // namespace terravo
