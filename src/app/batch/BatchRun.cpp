#include "app/batch/BatchRun.h"

#include "app/batch/BatchSummary.h"
#include "app/batch/ExitCode.h"
#include "app/batch/MeasureRun.h"
#include "app/batch/OutputFolders.h"
#include "app/batch/PointInput.h"
#include "app/batch/RunFailure.h"
#include "app/batch/RunMessages.h"
#include "app/batch/SmoothReport.h"
#include "app/batch/SurfaceInput.h"
#include "app/batch/TerrainDrawing.h"
#include "app/batch/View3DInput.h"
#include "app/session/SheetMaker.h"
#include "app/session/TerrainMaker.h"
#include "app/settings/Language.h"
#include "app/settings/SupportFolder.h"
#include "contour/LevelRuleText.h"
#include "export/MeshFile.h"
#include "export/PictureExport.h"
#include "export/QrzWriter.h"
#include "export/SegmentFile.h"
#include "export/SheetExport.h"
#include "export/SheetPainter.h"
#include "plot2d/PictureFile.h"
#include "plot2d/RasterSurface.h"
#include "survey/PointFile.h"
#include "survey/check/SurfaceFindings.h"
#include "util/AppError.h"
#include "util/OutputFile.h"
#include "util/StopSignals.h"
#include "util/StopToken.h"
#include "util/Stopwatch.h"
#include "util/SystemServices.h"
#include "view3d/AxonometricView.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <stdexcept>

namespace terravo {
namespace {

// A picture, or the segments of the map, that cannot be drawn: the other outputs are written.
class DrawingFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

TextCatalogue LoadTexts(const std::string& prefix) {
    const std::string path =
        FindSupportFolder(QCoreApplication::applicationDirPath().toStdString()) +
        LanguageFileName(prefix);
    TextTable texts = LoadTextTable(path);
    if (texts.empty()) {
        throw RunFailure(ExitCode::kUsage,
                         "There is no language file \"" + LanguageFileName(prefix) + "\".");
    }
    return TextCatalogue(std::move(texts));
}

// The run itself: everything that lives for its length, and its stages.
class BatchRun {
public:
    BatchRun(const BatchOptions& options, ProjectInput* project)
        : options_(options), project_(project), stop_([this](std::string_view stage, double done) {
              if (options_.progress) {
                  progressLine_.Show(stage, done);
              }
              if (StopSignals::Received() != 0) {
                  stop_.RequestStop();
              }
          }),
          map_(survey_, state_, messages_, clock_), surface_(options.width, options.height) {
        state_.texts = LoadTexts(options.language);
        state_.decimalSeparator = options.decimalComma ? ',' : '.';
    }

    BatchFigures Run() {
        outputFolders_.Make(options_.outFolder);
        CheckOutputFolders(options_);
        if (!folder_.isValid()) {
            throw RunFailure(ExitCode::kOutput, "No temporary folder can be made: " +
                                                    folder_.errorString().toStdString() + ".");
        }
        state_.workFolder = folder_.path().toStdString() + "/";
        Stopwatch total;
        Stopwatch watch;
        Read();
        figures_.milliseconds.read = watch.Lap() * 1e3;
        survey_.Triangulation(stop_);
        EndWhenStopped();
        RequireTriangles(options_.pointFile, survey_.Points(), survey_.Triangulation());
        ShapeSurface();
        figures_.milliseconds.triangulate = watch.Lap() * 1e3;
        RequireLevels();
        Check();
        Measure(watch);
        Draw();
        watch.Lap();
        Deliver();
        TakeFigures();
        figures_.milliseconds.write += watch.Lap() * 1e3;
        figures_.milliseconds.total = total.Lap() * 1e3;
        return figures_;
    }

private:
    void Read();
    void ShapeSurface();
    void RequireLevels() const;
    void Check();
    void Measure(Stopwatch& watch);
    void Draw();
    template <class Drawing>
    static std::optional<std::string> FailureOf(Drawing draw);
    void DrawMap(DrawSurface& surface, const MapOptions& map, const LevelSink& sink);
    void DrawMapPicture(const LevelSink& sink);
    void DrawMapAndSegments();
    void DrawView3D();
    void DrawView3DOn(DrawSurface& surface, AxonometricView& view);
    template <class Drawing>
    void WriteVector(const std::string& file, const std::string& title, Drawing draw);
    void DrawTerrainPicture();
    void DrawSheet();
    void WriteExchange();
    void CountWhatWasMade();
    void Deliver();
    void TakeFigures();
    bool IsDrawn(const std::string& file, const std::optional<std::string>& failure);
    void DeliverPicture(const std::string& file, const QImage& picture,
                        const std::optional<std::string>& failure);
    template <class Writer>
    void DeliverFile(const std::string& file, Writer write);
    void WriteLevels(const OutputTarget& target) const;
    void ThrowMessage();
    [[nodiscard]] bool IsSheetAlone() const {
        return (!options_.sheet.file.empty() || !options_.terrain.file.empty()) &&
               options_.exchange.files.empty() && !MapIsWanted();
    }
    // A run without any output draws the map all the same: the summary tells of it.
    [[nodiscard]] bool MapIsWanted() const {
        return !options_.mapFile.empty() || SegmentsAreWanted();
    }
    // Without a choice the levels of a sheet are round.
    [[nodiscard]] LevelRule SheetLevels() const {
        return options_.levelsAreChosen ? options_.map.levels
                                        : RoundLevels(survey_.ShownPoints().extentZ);
    }
    [[nodiscard]] bool SegmentsAreWanted() const {
        return !options_.segmentsFile.empty() || !options_.qrzLevelsFile.empty();
    }

    const BatchOptions& options_;
    ProjectInput* project_; // none: the input is a point file
    RunState state_;
    KeptMessages messages_;
    SystemClock clock_;
    ProgressLine progressLine_;
    QTemporaryDir folder_;
    StopToken stop_;
    Survey survey_;
    SurveyContours contours_{survey_};
    SmoothReport smoothReport_{options_.pointFile, options_.smooth, options_.exchange.wish,
                               contours_};
    MeasureRun measure_{options_, survey_};
    ContourMap map_;
    RasterSurface surface_;
    OutputFolders outputFolders_;
    OutputGroup files_;
    QImage picture_;
    QImage viewPicture_;
    QImage terrainPicture_;
    // Why something could not be drawn.
    std::optional<std::string> mapFailure_;
    std::optional<std::string> segmentFailure_;
    std::optional<std::string> viewFailure_;
    std::optional<std::string> terrainFailure_;
    BatchFigures figures_;
};

void BatchRun::Read() {
    if (project_ != nullptr) {
        figures_.input = ReadProject(*project_, options_.triangulation, survey_, stop_);
        EndWhenStopped();
        if (figures_.input.failure) {
            throw RunFailure(ExitCode::kPointFile, figures_.input.failure->Sentence());
        }
        figures_.project = project_->figures;
        return;
    }
    PointSet points;
    figures_.input =
        ReadPointFile({options_.pointFile, options_.import, options_.gis}, points, stop_);
    survey_.Replace(std::move(points), options_.triangulation);
}

void BatchRun::ShapeSurface() {
    std::vector<std::string> remarks;
    ApplySurfaceCall(options_.surface, options_.pointFile, survey_, remarks, stop_);
    static_cast<void>(survey_.Surface(stop_));
    EndWhenStopped();
    TellOfLostLines(survey_, remarks);
    figures_.surface = SummariseSurface(options_.surface, options_.pointFile, survey_);
    if (figures_.surface) {
        figures_.surface->remarks.insert(figures_.surface->remarks.begin(), remarks.begin(),
                                         remarks.end());
    }
}

// Levels that the call asks for and the heights do not have; a count fits any.
void BatchRun::RequireLevels() const {
    const LevelRule& rule = options_.map.levels;
    const Extent& heights = survey_.ShownPoints().extentZ;
    const LevelFault fault = FaultOf(rule, heights);
    if (fault != LevelFault::None) {
        throw RunFailure(ExitCode::kUsage,
                         options_.pointFile + ": " +
                             SentenceOf(fault, rule, heights, TextCatalogue(), '.'));
    }
}

void BatchRun::Check() {
    if (options_.check == CheckForm::None) {
        return;
    }
    const PointSet& points = survey_.Points();
    figures_.findings = CheckSurvey(points, survey_.Triangulation(), &figures_.input.report,
                                    options_.checkOptions, stop_);
    figures_.labels = points.labels;
    EndWhenStopped();
    if (const ShownSurface shown = survey_.Surface(); shown.shaped != nullptr) {
        std::vector<Finding> more =
            FindingsOf(*shown.shaped, survey_.Plan(), points, options_.checkOptions.mostOfAKind);
        std::move(more.begin(), more.end(), std::back_inserter(figures_.findings));
        std::stable_sort(
            figures_.findings.begin(), figures_.findings.end(),
            [](const Finding& a, const Finding& b) { return a.severity < b.severity; });
    }
}

void BatchRun::Measure(Stopwatch& watch) {
    if (options_.measure.IsWanted()) {
        watch.Lap();
        measure_.Read(stop_);
        figures_.milliseconds.read += watch.Lap() * 1e3;
        measure_.Measure(LevelValuesOf(SheetLevels(), survey_.ShownPoints().extentZ), stop_);
        figures_.milliseconds.measure = watch.Lap() * 1e3;
    }
}

// Throws for the first message that a drawing has shown.
void BatchRun::ThrowMessage() {
    const std::string message = messages_.Take();
    if (!message.empty()) {
        throw DrawingFailure(options_.pointFile + ": " + message);
    }
}

// The end of a drawing that was not stopped: nothing, or the reason why there is no such picture.
// What a disk refuses and a lack of memory end the run.
template <class Drawing>
std::optional<std::string> BatchRun::FailureOf(Drawing draw) {
    try {
        draw();
        return std::nullopt;
    } catch (const DrawingFailure& failure) {
        return failure.what();
    } catch (const AppError& error) {
        if (error.number() == ErrorNumber::kDeviceIo) {
            throw;
        }
        return error.what();
    }
}

void BatchRun::Draw() {
    if (SegmentsAreWanted()) {
        DrawMapAndSegments();
    } else if (MapIsWanted() || (options_.sheet.file.empty() && options_.terrain.file.empty() &&
                                 options_.exchange.files.empty())) {
        DrawMapPicture({});
    }
    if (!options_.view3DFile.empty()) {
        Stopwatch watch;
        viewFailure_ = FailureOf([this] { DrawView3D(); });
        figures_.milliseconds.draw += watch.Lap() * 1e3;
    }
    if (!options_.terrain.file.empty()) {
        Stopwatch watch;
        terrainFailure_ = FailureOf([this] { DrawTerrainPicture(); });
        EndWhenStopped();
        figures_.milliseconds.draw += watch.Lap() * 1e3;
    }
    if (!options_.sheet.file.empty()) {
        Stopwatch watch;
        DrawSheet();
        figures_.milliseconds.draw += watch.Lap() * 1e3;
    }
    CountWhatWasMade();
}

// A surface without relief has no contours.
void BatchRun::DrawTerrainPicture() {
    const LevelRule rule = SheetLevels();
    const std::optional<SmoothingOptions>& smoothing = options_.sheet.plan.smoothing;
    const bool hasContours = FaultOf(rule, survey_.ShownPoints().extentZ) == LevelFault::None;
    if (hasContours && (!contours_.Prepare(rule, stop_) ||
                        (smoothing && !contours_.PrepareSmooth(*smoothing, stop_)))) {
        return;
    }
    const bool areSmooth = hasContours && smoothing;
    TerrainDrawing drawing = DrawTerrain(
        options_.terrain, MakeTerrainOf(contours_, hasContours ? &rule : nullptr, areSmooth),
        survey_.Surface().triangles, options_.width, options_.height, state_);
    if (areSmooth) {
        smoothReport_.Take(rule, *smoothing, stop_);
    }
    terrainPicture_ = std::move(drawing.picture);
    figures_.terrain = drawing.figures;
    if (!MapIsWanted()) {
        figures_.segments = drawing.figures.segments;
    }
}

void BatchRun::DrawSheet() {
    const SheetCall& call = options_.sheet;
    SheetMaker maker(contours_, state_);
    const std::optional<SheetScene> scene =
        maker.Make(call.plan, SheetLevels(), SheetTextMeasure(), stop_);
    EndWhenStopped();
    if (call.plan.smoothing) {
        smoothReport_.Take(SheetLevels(), *call.plan.smoothing, stop_);
    }
    const std::string title =
        call.plan.texts.title.empty() ? survey_.Points().sourceName : call.plan.texts.title;
    WriteSheet({call.file, &files_}, *PictureKindOf(call.file), *scene,
               {title, call.dotsPerInch, &stop_});
    EndWhenStopped();
    figures_.files.push_back(call.file);
    SheetFigures figures{scene->width, scene->height, scene->scale, {}, scene->labels, {}};
    for (const LevelRecord& level : contours_.Levels()) {
        figures.levels.push_back(level.value);
    }
    for (const Statement& remark : scene->remarks) {
        figures.remarks.push_back(WithValues(state_.texts[remark.sentence], remark.values));
    }
    figures_.sheet = std::move(figures);
}

// Areas have no segments: the lines are drawn as well, as the window's export does.
void BatchRun::DrawMapAndSegments() {
    SegmentFile segments(state_.workFolder + kSegmentFileName);
    const LevelSink sink = [&segments](double level, const std::vector<LevelPiece>& pieces) {
        segments.Write(level, pieces);
    };
    DrawMapPicture(sink);
    if (options_.map.mode == MapMode::Areas) {
        MapOptions lines = options_.map;
        lines.mode = MapMode::Lines;
        FailureOf([&] { DrawMap(surface_, lines, sink); }); // of the frame: it shows nowhere
    }
    if (!segmentFailure_) {
        segments.Close();
    }
}

void BatchRun::DrawMapPicture(const LevelSink& sink) {
    surface_.SetBackColor(kBlack);
    if (PictureKindOf(options_.mapFile) == PictureKind::Png) {
        mapFailure_ = FailureOf([&] { DrawMap(surface_, options_.map, sink); });
        picture_ = surface_.Image();
        return;
    }
    mapFailure_ = FailureOf([&] {
        WriteVector(options_.mapFile,
                    state_.texts[Text::PlotTitle] + " : " + survey_.Points().sourceName,
                    [&](DrawSurface& surface) { DrawMap(surface, options_.map, sink); });
    });
}

void BatchRun::CountWhatWasMade() {
    const PointSet& points = survey_.Points();
    const ShownSurface shown = survey_.Surface();
    const TriangleList& triangles = shown.triangles;
    figures_.arithmetic = shown.arithmetic;
    figures_.points = points.count;
    figures_.unusedPoints = CountUnusedPoints(points.count, triangles);
    figures_.triangles = triangles.count;
    figures_.hullEdges = CountHullEdges(triangles);
    figures_.x = points.extentX;
    figures_.y = points.extentY;
    figures_.z = points.extentZ;
    const LevelRule rule = IsSheetAlone() ? SheetLevels() : options_.map.levels;
    figures_.levels = LevelCountOf(rule, shown.points.extentZ);
    figures_.levelValues = LevelValuesOf(rule, shown.points.extentZ);
}

void BatchRun::DrawView3D() {
    AxonometricView view;
    view.Show(DataFor3D(options_.view3D.kind, options_.pointFile, survey_, messages_));
    view.SetParameters(ParametersOf(options_.view3D));
    if (PictureKindOf(options_.view3DFile) == PictureKind::Png) {
        RasterSurface surface(options_.width, options_.height);
        surface.SetBackColor(kBlack);
        DrawView3DOn(surface, view);
        viewPicture_ = surface.Image();
    } else {
        WriteVector(options_.view3DFile, view.Data().title,
                    [&](DrawSurface& surface) { DrawView3DOn(surface, view); });
    }
}

void BatchRun::DrawView3DOn(DrawSurface& surface, AxonometricView& view) {
    const std::optional<Message> failure = view.Redraw(surface, true, state_);
    EndWhenStopped();
    if (failure) {
        messages_.ShowCritical(failure->text, failure->title);
    }
    ThrowMessage();
}

// A drawing that fails throws, so the file is complete or there is none.
template <class Drawing>
void BatchRun::WriteVector(const std::string& file, const std::string& title, Drawing draw) {
    const PictureKind kind = *PictureKindOf(file);
    WritePicture({file, &files_}, kind,
                 {options_.width, options_.height, 1, title,
                  [&draw](DrawSurface& surface) {
                      draw(surface);
                      return true;
                  }},
                 options_.ChoiceFor(kind));
}

// The levels are complete even where their frame is not.
void BatchRun::DrawMap(DrawSurface& surface, const MapOptions& map, const LevelSink& sink) {
    const MapReport report = map_.Draw(surface, map, stop_, sink);
    EndWhenStopped();
    const ContourReport& contours = report.contours;
    segmentFailure_.reset();
    if (!contours.error.empty()) {
        segmentFailure_ =
            options_.pointFile + ": " + kDrawErrorTitle + ": " + OnOneLine(contours.error);
    }
    if (contours.errorNumber == ErrorNumber::kDeviceIo) {
        throw RunFailure(ExitCode::kOutput, *segmentFailure_);
    }
    figures_.segments = contours.segments;
    figures_.milliseconds.contour += contours.cut * 1e3;
    figures_.milliseconds.draw += (report.frameSeconds + contours.draw) * 1e3;
    figures_.milliseconds.write += contours.write * 1e3;
    if (report.frameFailure) {
        messages_.ShowCritical(report.frameFailure->text, report.frameFailure->title);
    }
    ThrowMessage();
    if (segmentFailure_) {
        throw DrawingFailure(*segmentFailure_);
    }
}

template <class Writer>
void BatchRun::DeliverFile(const std::string& file, Writer write) {
    if (!file.empty()) {
        write(OutputTarget(file, &files_));
        EndWhenStopped();
        figures_.files.push_back(file);
    }
}

bool BatchRun::IsDrawn(const std::string& file, const std::optional<std::string>& failure) {
    if (failure && !file.empty()) {
        figures_.failures.push_back(file + " is not drawn: " + *failure);
    }
    return !failure;
}

// A vector file was written while it was drawn.
void BatchRun::DeliverPicture(const std::string& file, const QImage& picture,
                              const std::optional<std::string>& failure) {
    if (!IsDrawn(file, failure)) {
        return;
    }
    if (PictureKindOf(file) == PictureKind::Png) {
        DeliverFile(file, [&](const OutputTarget& target) { SavePicture(picture, target); });
    } else {
        figures_.files.push_back(file);
    }
}

void BatchRun::WriteExchange() {
    if (options_.exchange.files.empty()) {
        return;
    }
    const std::optional<SmoothingOptions>& smoothing = options_.exchange.wish.smoothing;
    if (!contours_.Prepare(options_.map.levels, stop_) ||
        (smoothing && !contours_.PrepareSmooth(*smoothing, stop_))) {
        EndWhenStopped();
    }
    if (smoothing) {
        smoothReport_.Take(options_.map.levels, *smoothing, stop_);
    }
    try {
        figures_.exchange = DeliverExchange(options_.exchange, options_.map.levels, contours_,
                                            files_, [] { EndWhenStopped(); });
    } catch (const AppError& error) {
        throw RunFailure(ExitCode::kOutput, error.what());
    }
    EndWhenStopped();
    for (const ExchangeFigures& file : figures_.exchange) {
        figures_.files.push_back(file.file);
    }
}

void BatchRun::Deliver() {
    const std::string segmentFile = state_.workFolder + kSegmentFileName;
    const std::string meshFile = state_.workFolder + kMeshFileName;
    if (!options_.meshFile.empty() || !options_.qrzTrianglesFile.empty()) {
        const ShownSurface shown = survey_.Surface();
        WriteMeshFile(meshFile, shown.points, shown.triangles);
    }
    WriteExchange();
    measure_.Deliver(state_, files_, figures_.files, stop_);
    DeliverPicture(options_.mapFile, picture_, mapFailure_);
    DeliverPicture(options_.view3DFile, viewPicture_, viewFailure_);
    DeliverPicture(options_.terrain.file, terrainPicture_, terrainFailure_);
    if (IsDrawn(options_.segmentsFile, segmentFailure_)) {
        DeliverFile(options_.segmentsFile,
                    [&](const OutputTarget& target) { CopyFileWhole(segmentFile, target); });
    }
    DeliverFile(options_.meshFile,
                [&](const OutputTarget& target) { CopyFileWhole(meshFile, target); });
    DeliverFile(options_.qrzTrianglesFile, [&](const OutputTarget& target) {
        QrzWriter::WriteQrzTriangles(meshFile, target);
    });
    if (IsDrawn(options_.qrzLevelsFile, segmentFailure_)) {
        DeliverFile(options_.qrzLevelsFile,
                    [this](const OutputTarget& target) { WriteLevels(target); });
    }
    files_.Commit();
}

void BatchRun::TakeFigures() {
    figures_.smoothing = smoothReport_.Figures();
    if (options_.measure.IsWanted()) {
        figures_.measure = measure_.Figures();
        const std::vector<std::string>& failures = figures_.measure->failures;
        figures_.failures.insert(figures_.failures.end(), failures.begin(), failures.end());
        if (const auto& difference = figures_.measure->difference) {
            figures_.exchange.push_back(*difference);
        }
    }
}

void BatchRun::WriteLevels(const OutputTarget& target) const {
    const QrzWriter::Content content =
        QrzWriter::WriteQrzLevels(state_.workFolder + kSegmentFileName,
                                  LevelCountOf(options_.map.levels, survey_.ShownPoints().extentZ),
                                  target, QrzWriter::ZeroLevelFor(options_.map.levels));
    if (content == QrzWriter::Content::HeaderOnly) {
        throw RunFailure(ExitCode::kOutput,
                         options_.pointFile +
                             ": the first level is 0, so only the header was exported.");
    }
}

// Tells what a run that came to its end has done and what it has not.
int Report(const BatchOptions& options, const BatchFigures& figures) {
    if (options.summaryWanted && (figures.failures.empty() || !figures.files.empty())) {
        std::fputs(SummaryText(options, figures).c_str(), stdout);
    }
    for (const std::string& sentence : figures.failures) {
        std::fprintf(stderr, "terravo-batch: %s\n", sentence.c_str());
    }
    return figures.failures.empty() ? ExitCode::kDone : ExitCode::kNumeric;
}

} // namespace

int RunBatch(const BatchOptions& given) {
    BatchOptions options = given;
    StopSignals::Install();
    std::string sentence;
    int exitCode = ExitCode::kNumeric;
    try {
        std::optional<ProjectInput> project = OpenProjectInput(options, StopToken());
        BatchFigures figures;
        {
            BatchRun run(options, project ? &*project : nullptr);
            figures = run.Run();
        }
        return Report(options, figures);
    } catch (const RunFailure& failure) {
        sentence = failure.what();
        exitCode = failure.exitCode();
    } catch (const AppError& error) {
        sentence = error.what();
        if (error.number() == ErrorNumber::kDeviceIo) {
            exitCode = ExitCode::kOutput;
        }
    } catch (const std::bad_alloc&) {
        sentence = options.pointFile + ": there is not enough memory.";
    }
    std::fprintf(stderr, "terravo-batch: %s\n", sentence.c_str());
    return exitCode;
}

} // namespace terravo
