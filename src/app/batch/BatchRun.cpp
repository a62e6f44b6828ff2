#include "app/batch/BatchRun.h"

#include "app/batch/BatchSummary.h"
#include "app/batch/ExitCode.h"
#include "app/settings/Language.h"
#include "app/settings/SupportFolder.h"
#include "export/MeshFile.h"
#include "export/QrzWriter.h"
#include "plot2d/PictureFile.h"
#include "plot2d/RasterSurface.h"
#include "survey/PointFile.h"
#include "util/AppError.h"
#include "util/OutputFile.h"
#include "util/OutputGroup.h"
#include "util/StopSignals.h"
#include "util/Stopwatch.h"
#include "util/SystemServices.h"
#include "view3d/RegularGrid.h"
#include "view3d/Rendering.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <stdexcept>

namespace terravo {
namespace {

// A failed run: the sentence for the user and the exit code.
class RunFailure : public std::runtime_error {
public:
    RunFailure(int exitCode, const std::string& sentence)
        : std::runtime_error(sentence), exitCode_(exitCode) {}
    [[nodiscard]] int exitCode() const { return exitCode_; }

private:
    int exitCode_;
};

// Keeps the first message, which becomes the sentence of a failed run.
class KeptMessages : public MessageService {
public:
    void ShowCritical(const std::string& text, const std::string& title) override {
        if (!text_.empty()) {
            return;
        }
        text_ = title.empty() ? text : title + ": " + text;
        for (char& c : text_) {
            c = c == '\n' || c == '\r' ? ' ' : c;
        }
    }
    [[nodiscard]] const std::string& Text() const { return text_; }

private:
    std::string text_;
};

// Keeps the last line, which says why an export failed.
class KeptLog : public LogService {
public:
    void Write(const std::string& line) override { line_ = line; }
    [[nodiscard]] const std::string& Last() const { return line_; }

private:
    std::string line_;
};

// The user's clipboard is not this program's business.
class NoClipboard : public ClipboardService {
public:
    [[nodiscard]] std::optional<std::string> Text() const override { return std::nullopt; }
    void SetText(const std::string& /*text*/) override {}
    void Clear() override {}
};

// One line on standard error, rewritten when the percentage changes.
class ProgressLine {
public:
    ~ProgressLine() {
        if (percent_ >= 0) {
            std::fputs("\n", stderr);
        }
    }
    void Show(std::string_view stage, double done) {
        const int percent = static_cast<int>(done * 100);
        if (percent != percent_ || stage != stage_) {
            percent_ = percent;
            stage_ = stage;
            std::fprintf(stderr, "\r%-12s%3d %%", stage_.c_str(), percent);
            std::fflush(stderr);
        }
    }

private:
    int percent_ = -1;
    std::string stage_;
};

std::vector<std::string> LoadTexts(const std::string& prefix) {
    const std::string path =
        FindSupportFolder(QCoreApplication::applicationDirPath().toStdString()) +
        LanguageFileName(prefix);
    std::vector<std::string> texts = LoadTextTable(path);
    if (texts.empty()) {
        throw RunFailure(ExitCode::kUsage,
                         "There is no language file \"" + LanguageFileName(prefix) + "\".");
    }
    return texts;
}

// Finds a missing folder before the work, not after it.
void CheckFolders(const BatchOptions& options) {
    for (const std::string& file : options.Outputs()) {
        const QFileInfo folder(QFileInfo(QString::fromStdString(file)).path());
        const std::string name = folder.filePath().toStdString();
        if (!folder.isDir()) {
            throw RunFailure(ExitCode::kOutput, "The folder " + name + " for the output \"" + file +
                                                    "\" does not exist.");
        }
        if (!folder.isWritable()) {
            throw RunFailure(ExitCode::kOutput, "The folder " + name + " for the output \"" + file +
                                                    "\" cannot be written to.");
        }
    }
}

void RequireTriangles(const std::string& file, const PointSet& points,
                      const KeptTriangulation::Result& kept) {
    if (kept.ierr == modDelaunay2D::Ierr::kAllCollinear) {
        throw RunFailure(ExitCode::kNoTriangulation,
                         file + ": no triangulation of " + std::to_string(points.count) +
                             (points.count == 1 ? " point; three are needed."
                                                : " points: all of them lie on one line."));
    }
    if (kept.ierr != modDelaunay2D::Ierr::kDone) {
        throw RunFailure(ExitCode::kNumeric, file + ": the triangulation failed: " +
                                                 modDelaunay2D::DescribeIerr(kept.ierr) + ".");
    }
    if (points.count == 0) {
        throw RunFailure(ExitCode::kNoTriangulation, file + ": the file holds no points.");
    }
    if (kept.triangles.count == 0) {
        throw RunFailure(
            ExitCode::kNoTriangulation,
            file + ": no triangles, because the first two points do not count as "
                   "distinct (in each coordinate they differ by too little, or one is zero "
                   "or nearly so).");
    }
}

// The run itself: everything that lives for its length, and its stages.
class BatchRun {
public:
    explicit BatchRun(const BatchOptions& options)
        : options_(options), map_(state_, messages_, clock_),
          surface_(options.width, options.height) {
        state_.textTable = LoadTexts(options.language);
        state_.decimalSeparator = options.decimalComma ? ',' : '.';
        map_.options = options.map;
        map_.progress = [this](std::string_view stage, double done) {
            if (options_.progress) {
                progressLine_.Show(stage, done);
            }
            map_.stopRequested = StopSignals::Received() != 0;
            return !map_.stopRequested;
        };
    }

    BatchFigures Run() {
        CheckFolders(options_);
        if (!folder_.isValid()) {
            throw RunFailure(ExitCode::kOutput, "No temporary folder can be made: " +
                                                    folder_.errorString().toStdString() + ".");
        }
        state_.workFolder = folder_.path().toStdString() + "/";
        Stopwatch total;
        Stopwatch watch;
        Read();
        figures_.milliseconds.read = watch.Lap() * 1e3;
        map_.Triangulation();
        EndWhenStopped();
        RequireTriangles(options_.pointFile, map_.points, map_.Triangulation());
        figures_.milliseconds.triangulate = watch.Lap() * 1e3;
        NamingFilesFinally([this] { Draw(); });
        watch.Lap();
        NamingFilesFinally([this] { Deliver(); });
        figures_.milliseconds.write += watch.Lap() * 1e3;
        figures_.milliseconds.total = total.Lap() * 1e3;
        return figures_;
    }

private:
    static void EndWhenStopped();
    void Read();
    void Draw();
    void DrawMap(DrawSurface& surface);
    void DrawView3D();
    void DrawView3DOn(DrawSurface& surface, AxonometricView& view);
    template <class Drawing>
    void WriteVector(const std::string& file, const std::string& title, Drawing draw);
    template <class Work>
    void NamingFilesFinally(Work work);
    void Deliver();
    void ThrowMessages(bool deviceFailed);
    template <class Writer>
    void WriteQrz(const std::string& file, Writer write);

    const BatchOptions& options_;
    RunState state_;
    KeptMessages messages_;
    KeptLog log_;
    NoClipboard clipboard_;
    SystemClock clock_;
    ProgressLine progressLine_;
    QTemporaryDir folder_;
    ContourMap map_;
    RasterSurface surface_;
    OutputGroup files_;
    QImage picture_;
    QImage viewPicture_;
    BatchFigures figures_;
};

// For the places between two pieces of work.
void BatchRun::EndWhenStopped() {
    if (StopSignals::Received() != 0) {
        throw RunFailure(ExitCode::kSignalBase + StopSignals::Received(),
                         "stopped; no file has been written.");
    }
}

void BatchRun::Read() {
    const std::optional<ReadFailure> failure =
        ReadPoints(options_.pointFile, map_.points, map_.progress);
    EndWhenStopped();
    if (failure) {
        throw RunFailure(ExitCode::kPointFile, failure->Sentence());
    }
}

// Throws for the first message that a drawing or an export has shown.
void BatchRun::ThrowMessages(bool deviceFailed) {
    if (!messages_.Text().empty()) {
        throw RunFailure(deviceFailed ? ExitCode::kOutput : ExitCode::kNumeric,
                         options_.pointFile + ": " + messages_.Text());
    }
}

void BatchRun::Draw() {
    surface_.SetBackColor(kBlack);
    if (PictureKindOf(options_.mapFile) == PictureKind::Png) {
        DrawMap(surface_);
        picture_ = surface_.Image();
    } else {
        WriteVector(options_.mapFile,
                    state_.Text(TextIndex::kPlotTitle) + " : " + map_.points.sourceName,
                    [this](DrawSurface& surface) { DrawMap(surface); });
    }
    const bool segmentsWanted = !options_.segmentsFile.empty() || !options_.qrzLevelsFile.empty();
    if (options_.map.mode == MapMode::Areas && segmentsWanted) {
        // Areas write no segments: the lines are drawn as well, as the window's export does.
        map_.options.mode = MapMode::Lines;
        DrawMap(surface_);
    }
    if (!options_.view3DFile.empty()) {
        Stopwatch watch;
        DrawView3D();
        figures_.milliseconds.draw += watch.Lap() * 1e3;
    }
    const TriangleList& triangles = map_.Triangulation().triangles;
    figures_.points = map_.points.count;
    figures_.unusedPoints = CountUnusedPoints(map_.points, triangles);
    figures_.triangles = triangles.count;
    figures_.hullEdges = CountHullEdges(triangles);
    figures_.x = map_.points.extentX;
    figures_.y = map_.points.extentY;
    figures_.z = map_.points.extentZ;
    figures_.levels = options_.map.levelCount;
}

void BatchRun::DrawView3D() {
    const View3DOptions& chosen = options_.view3D;
    const PointSet& points = map_.points;
    AxonometricView view;
    switch (chosen.kind) {
    case View3DKind::Triangles:
        view.Triangoli(points.x, points.y, points.z, TriangleTable(map_.Triangulation().triangles),
                       "Delaunay 2D : " + points.sourceName);
        break;
    case View3DKind::Points:
        view.Punti(points.x, points.y, points.z, points.sourceName, messages_);
        break;
    case View3DKind::Surface: {
        const std::optional<RegularGrid> grid = FindRegularGrid(points);
        if (!grid) {
            throw RunFailure(ExitCode::kUsage, options_.pointFile +
                                                   ": the points do not form a regular grid, so "
                                                   "they cannot be drawn as a surface.");
        }
        view.Superficie(grid->x, grid->y, grid->z, points.sourceName);
        break;
    }
    }
    view.alfa = static_cast<float>(chosen.alfa ? *chosen.alfa / kDegreesPerRadian
                                               : static_cast<double>(view.alfa));
    view.rayx = static_cast<float>(chosen.rayx.value_or(static_cast<double>(view.rayx)));
    view.theta = static_cast<float>(chosen.theta.value_or(0) / kDegreesPerRadian);
    view.rotating = chosen.theta.has_value();
    if (PictureKindOf(options_.view3DFile) == PictureKind::Png) {
        RasterSurface surface(options_.width, options_.height);
        surface.SetBackColor(kBlack);
        DrawView3DOn(surface, view);
        viewPicture_ = surface.Image();
    } else {
        WriteVector(options_.view3DFile, view.title,
                    [&](DrawSurface& surface) { DrawView3DOn(surface, view); });
    }
}

void BatchRun::DrawView3DOn(DrawSurface& surface, AxonometricView& view) {
    Rendering::Redraw(surface, view, true, options_.view3D.colour, state_, messages_);
    EndWhenStopped();
    ThrowMessages(false);
}

// A drawing that fails throws, so the file is complete or there is none.
template <class Drawing>
void BatchRun::WriteVector(const std::string& file, const std::string& title, Drawing draw) {
    const PictureKind kind = *PictureKindOf(file);
    WritePicture(files_.NameFor(file), kind,
                 {options_.width, options_.height, 1, title,
                  [&draw](DrawSurface& surface) {
                      draw(surface);
                      return true;
                  }},
                 options_.ChoiceFor(kind));
}

void BatchRun::DrawMap(DrawSurface& surface) {
    const MapReport report = map_.DrawContourMap(surface);
    EndWhenStopped();
    ThrowMessages(report.contours.errorNumber == ErrorNumber::kDeviceIo);
    figures_.segments = report.segments;
    figures_.milliseconds.contour += report.contours.cut * 1e3;
    figures_.milliseconds.draw += (report.frameSeconds + report.contours.draw) * 1e3;
    figures_.milliseconds.write += report.contours.write * 1e3;
}

void BatchRun::Deliver() {
    const auto deliver = [&](const std::string& file, auto write) {
        if (!file.empty()) {
            write(files_.NameFor(file));
            EndWhenStopped();
            figures_.files.push_back(file);
        }
    };
    if (!options_.meshFile.empty() || !options_.qrzTrianglesFile.empty()) {
        map_.TriangulateAndShow3D();
        ThrowMessages(true);
    }
    // A vector file was written while it was drawn.
    const auto deliverPicture = [&](const std::string& file, const QImage& picture) {
        if (PictureKindOf(file) == PictureKind::Png) {
            deliver(file, [&](const std::string& name) { SavePicture(picture, name); });
        } else {
            figures_.files.push_back(file);
        }
    };
    deliverPicture(options_.mapFile, picture_);
    deliverPicture(options_.view3DFile, viewPicture_);
    deliver(options_.segmentsFile, [&](const std::string& name) {
        CopyFileWhole(state_.workFolder + kSegmentFileName, name);
    });
    deliver(options_.meshFile, [&](const std::string& name) {
        CopyFileWhole(state_.workFolder + kMeshFileName, name);
    });
    deliver(options_.qrzTrianglesFile, [&](const std::string& name) {
        WriteQrz(name,
                 [this] { QrzWriter::WriteQrzTriangles(state_, clipboard_, messages_, log_); });
    });
    deliver(options_.qrzLevelsFile, [&](const std::string& name) {
        WriteQrz(name, [this] { QrzWriter::WriteQrzLevels(state_, clipboard_, log_); });
    });
    files_.Commit();
}

// A failure tells of the files by the names that their reader knows.
template <class Work>
void BatchRun::NamingFilesFinally(Work work) {
    try {
        work();
    } catch (const AppError& error) {
        throw AppError(error.number(), error.source(), files_.WithFinalNames(error.what()));
    } catch (const RunFailure& failure) {
        throw RunFailure(failure.exitCode(), files_.WithFinalNames(failure.what()));
    }
}

// The writers of the windows report in their own ways; here what they log is the sentence.
template <class Writer>
void BatchRun::WriteQrz(const std::string& file, Writer write) {
    state_.qrzExportPath = file;
    write();
    if (state_.lastQrzExportPath != file) {
        // The exchange files are in a folder of this run, of which its user knows nothing.
        std::string sentence = log_.Last();
        if (sentence.starts_with(state_.workFolder)) {
            sentence = options_.pointFile + sentence.substr(sentence.find(": "));
        }
        throw RunFailure(ExitCode::kOutput, sentence);
    }
}

} // namespace

int RunBatch(const BatchOptions& options) {
    StopSignals::Install();
    std::string sentence;
    int exitCode = ExitCode::kDone;
    try {
        BatchFigures figures;
        {
            BatchRun run(options);
            figures = run.Run();
        }
        if (options.summaryWanted) {
            std::fputs(SummaryText(options, figures).c_str(), stdout);
        }
    } catch (const RunFailure& failure) {
        sentence = failure.what();
        exitCode = failure.exitCode();
    } catch (const AppError& error) {
        sentence = error.what();
        exitCode =
            error.number() == ErrorNumber::kDeviceIo ? ExitCode::kOutput : ExitCode::kNumeric;
    } catch (const std::bad_alloc&) {
        sentence = options.pointFile + ": there is not enough memory.";
        exitCode = ExitCode::kNumeric;
    }
    if (exitCode != ExitCode::kDone) {
        std::fprintf(stderr, "terravo-batch: %s\n", sentence.c_str());
    }
    return exitCode;
}

} // namespace terravo
