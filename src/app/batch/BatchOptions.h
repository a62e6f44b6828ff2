// The command line of terravo-batch.
//
// Data: the arguments; the options they stand for. Method: option parsing by the library, then
// every value is checked, so that a wrong call ends before anything is read or written.
#pragma once

#include "app/batch/ExchangeOptions.h"
#include "app/batch/GisOptions.h"
#include "app/batch/ImportOptions.h"
#include "app/batch/MeasureOptions.h"
#include "app/batch/SheetOptions.h"
#include "app/batch/SmoothOptions.h"
#include "app/batch/SurfaceOptions.h"
#include "app/batch/TerrainOptions.h"
#include "app/session/ContourMap.h"
#include "export/PictureExport.h"
#include "survey/check/SurveyCheck.h"

#include <QStringList>

#include <optional>
#include <string>
#include <vector>

namespace terravo {

enum class SummaryForm { Text, Json };

/// How the findings of the survey check are told; None: it is not made.
enum class CheckForm { None, Text, Json };

enum class View3DKind { Triangles, Points, Surface };

/// The axonometric picture of a run.
struct View3DOptions {
    View3DKind kind = View3DKind::Triangles;
    std::optional<double> theta; // degrees; drawn as while rotating
    std::optional<double> alfa;  // degrees
    std::optional<double> rayx;
    bool colour = true;
};

struct BatchOptions {
    std::string pointFile;
    std::string outFolder;    // made when it is missing; empty: none is to be made
    std::string mapFile;      // empty: not wanted; the same for the next ones
    std::string segmentsFile; // copy of livelli.txt
    std::string meshFile;     // copy of point_qrw.txt
    std::string qrzTrianglesFile;
    std::string qrzLevelsFile;
    std::string view3DFile;
    View3DOptions view3D;
    QPageSize::PageSizeId pageSize = QPageSize::A4; // of PDF files
    std::optional<Paper> paper;                     // of SVG and PDF files
    SheetCall sheet;
    ExchangeCall exchange; // its wish has the smoothing, too
    SmoothCall smooth;
    MeasureCall measure;
    TerrainCall terrain;
    ImportCall import;
    GisPlan gis; // of a file that goes through GDAL
    SurfaceCall surface;
    CheckForm check = CheckForm::None;
    CheckOptions checkOptions;
    TriangulationWish triangulation;
    MapOptions map;
    bool levelsAreChosen = false; // else those of a sheet are round
    int width = 1200;             // pixels
    int height = 900;
    std::string language; // prefix of the language file
    bool decimalComma = false;
    SummaryForm summary = SummaryForm::Text;
    bool summaryWanted = true;
    bool progress = false;

    /// The output files that are wanted.
    [[nodiscard]] std::vector<std::string> Outputs() const;

    /// How to write a vector file: where nothing is chosen, a PDF is on white paper and an SVG
    /// black.
    [[nodiscard]] VectorChoice ChoiceFor(PictureKind kind) const;
};

/// What a command line asks for: a run, or a text to print and an exit code.
struct BatchCall {
    bool run = false;
    BatchOptions options;
    std::string text; // help or version for standard output, or the error sentence
    int exitCode = 0;
};

BatchCall ParseBatchCall(const QStringList& arguments);

} // namespace terravo
