#include "app/batch/BatchOptions.h"

#include "app/batch/ExitCode.h"
#include "app/batch/LevelOptions.h"
#include "app/batch/UsageError.h"
#include "export/MeshFile.h"
#include "export/SegmentFile.h"
#include "gis/GisExport.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QRegularExpression>

#include <optional>
#include <stdexcept>

namespace terravo {
namespace {

constexpr int kLargestSide = 16384; // a picture of 1 GiB

struct Options {
    QCommandLineOption out{
        {QStringLiteral("o"), QStringLiteral("out")},
        QStringLiteral("Write map.png, livelli.txt, point_qrw.txt, triangles.qrz, levels.qrz and "
                       "view3d.png into the folder <dir>, which is made when it is missing."),
        QStringLiteral("dir")};
    QCommandLineOption map{QStringLiteral("map"),
                           QStringLiteral("Write the map as a PNG, SVG or PDF picture, by "
                                          "the extension."),
                           QStringLiteral("file")};
    QCommandLineOption segments{QStringLiteral("segments"),
                                QStringLiteral("Write the contour segments (livelli.txt form)."),
                                QStringLiteral("file")};
    QCommandLineOption mesh{QStringLiteral("mesh"),
                            QStringLiteral("Write the triangles and points (point_qrw.txt form)."),
                            QStringLiteral("file")};
    QCommandLineOption qrzTriangles{QStringLiteral("qrz-triangles"),
                                    QStringLiteral("Write the triangles as a vector file for CAD."),
                                    QStringLiteral("file")};
    QCommandLineOption qrzLevels{
        QStringLiteral("qrz-levels"),
        QStringLiteral("Write the contour lines as a vector file for CAD."),
        QStringLiteral("file")};
    QCommandLineOption view3D{QStringLiteral("view3d"),
                              QStringLiteral("Write the axonometric picture as PNG, SVG or PDF."),
                              QStringLiteral("file")};
    QCommandLineOption paper{
        QStringLiteral("paper"),
        QStringLiteral(
            "Page of PDF pictures, across, and of the sheet: A4, A3, A2, A1, A0 or Letter; of the "
            "sheet also Tabloid or WxH in millimetres. Default: A4."),
        QStringLiteral("size"), QStringLiteral("A4")};
    QCommandLineOption background{
        QStringLiteral("background"),
        QStringLiteral("black or white, of SVG and PDF pictures; on white, what is white becomes "
                       "black. Default: black for SVG, white for PDF."),
        QStringLiteral("colour")};
    QCommandLineOption view3DKind{
        QStringLiteral("view3d-kind"),
        QStringLiteral("triangles or points in the axonometric picture. Default: triangles."),
        QStringLiteral("kind"), QStringLiteral("triangles")};
    QCommandLineOption surface{
        QStringLiteral("surface"),
        QStringLiteral("Draw the points, which must form a regular grid, as a surface instead.")};
    QCommandLineOption theta{QStringLiteral("theta"),
                             QStringLiteral("Turn the data, degrees from 0 to below 360."),
                             QStringLiteral("deg")};
    QCommandLineOption alfa{QStringLiteral("alfa"),
                            QStringLiteral("Slant of the y axis, degrees. Default: 30."),
                            QStringLiteral("deg")};
    QCommandLineOption rayx{
        QStringLiteral("rayx"),
        QStringLiteral("Length of the y axis in lengths of the x axis, 0 to 1000. Default: 1."),
        QStringLiteral("r")};
    QCommandLineOption blackAndWhite{QStringLiteral("bw"),
                                     QStringLiteral("Draw the marks grey, not by height.")};
    QCommandLineOption mode{QStringLiteral("mode"),
                            QStringLiteral("lines or areas. Default: lines."),
                            QStringLiteral("mode"), QStringLiteral("lines")};
    QCommandLineOption exact{QStringLiteral("exact"),
                             QStringLiteral("Triangulate with exact signs at any size.")};
    QCommandLineOption labels{QStringLiteral("labels"), QStringLiteral("Write level values.")};
    QCommandLineOption triangles{QStringLiteral("triangles"),
                                 QStringLiteral("Draw the edges of the triangles.")};
    QCommandLineOption perimeter{QStringLiteral("perimeter"),
                                 QStringLiteral("Draw the hull of the points.")};
    QCommandLineOption size{QStringLiteral("size"),
                            QStringLiteral("Pixels of the map. Default: 1200x900."),
                            QStringLiteral("WxH"), QStringLiteral("1200x900")};
    QCommandLineOption language{QStringLiteral("language"),
                                QStringLiteral("Texts of the map: en, it, de, fr or es. "
                                               "Default: English."),
                                QStringLiteral("prefix")};
    QCommandLineOption comma{QStringLiteral("decimal-comma"),
                             QStringLiteral("Write numbers on the map with a comma.")};
    QCommandLineOption summary{QStringLiteral("summary"),
                               QStringLiteral("Tell what was done on standard output, as text or "
                                              "json. Default: text."),
                               QStringLiteral("form"), QStringLiteral("text")};
    QCommandLineOption check{
        QStringLiteral("check"),
        QStringLiteral("Check the survey and tell what is likely to be wrong, as text or in the "
                       "json summary."),
        QStringLiteral("form")};
    QCommandLineOption tolerance{
        QStringLiteral("tolerance"),
        QStringLiteral("Distance below which the check takes two points for one. Default: a "
                       "thousandth of the usual distance."),
        QStringLiteral("d")};
    QCommandLineOption progress{QStringLiteral("progress"),
                                QStringLiteral("Show progress on standard error.")};
    QCommandLineOption quiet{QStringLiteral("quiet"),
                             QStringLiteral("Print nothing but errors (and a summary that is "
                                            "asked for).")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            QStringLiteral("Print this help.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               QStringLiteral("Print the version.")};

    ImportOptions import;
    GisOptions gis;
    SurfaceOptions shape;
    LevelOptions levels;
    SheetOptions sheet;
    ExchangeOptions exchange;
    SmoothOptions smooth;
    MeasureOptions measure;
    TerrainOptions terrain;

    void AddTo(QCommandLineParser& parser) const {
        import.AddTo(parser);
        gis.AddTo(parser);
        shape.AddTo(parser);
        levels.AddTo(parser);
        sheet.AddTo(parser);
        exchange.AddTo(parser);
        smooth.AddTo(parser);
        measure.AddTo(parser);
        terrain.AddTo(parser);
        parser.addOptions({out,           map,        segments, mesh,      qrzTriangles, qrzLevels,
                           view3D,        view3DKind, surface,  theta,     alfa,         rayx,
                           blackAndWhite, mode,       labels,   triangles, perimeter,    size,
                           language,      comma,      summary,  progress,  quiet,        paper,
                           background,    exact,      check,    tolerance, help,         version});
    }
};

void ParseSize(const QString& text, BatchOptions& options) {
    static const QRegularExpression form(QStringLiteral("^(\\d{1,6})x(\\d{1,6})$"));
    const QRegularExpressionMatch match = form.match(text);
    options.width = match.captured(1).toInt();
    options.height = match.captured(2).toInt();
    const auto isAllowed = [](int side) { return side >= 1 && side <= kLargestSide; };
    if (!match.hasMatch() || !isAllowed(options.width) || !isAllowed(options.height)) {
        throw UsageError(
            QStringLiteral("--size takes WxH with sides from 1 to %1 pixels, not \"%2\".")
                .arg(kLargestSide)
                .arg(text));
    }
}

template <class Value>
Value ParseChoice(const QString& option, const QString& text, const QString& first,
                  Value firstValue, const QString& second, Value secondValue) {
    if (text == first) {
        return firstValue;
    }
    if (text == second) {
        return secondValue;
    }
    throw UsageError(
        QStringLiteral("--%1 takes %2 or %3, not \"%4\".").arg(option, first, second, text));
}

std::optional<double> ParseNumber(const QCommandLineParser& parser,
                                  const QCommandLineOption& option, double low, double high) {
    if (!parser.isSet(option)) {
        return std::nullopt;
    }
    bool isNumber = false;
    const double value = parser.value(option).toDouble(&isNumber);
    if (!isNumber || !(value >= low && value <= high)) {
        throw UsageError(QStringLiteral("--%1 takes a number from %2 to %3, not \"%4\".")
                             .arg(option.names().last())
                             .arg(low)
                             .arg(high)
                             .arg(parser.value(option)));
    }
    return value;
}

void ParseView3D(const QCommandLineParser& parser, const Options& known, View3DOptions& view) {
    constexpr double kBelowFullTurn = 359.999;
    view.kind = ParseChoice(QStringLiteral("view3d-kind"), parser.value(known.view3DKind),
                            QStringLiteral("triangles"), View3DKind::Triangles,
                            QStringLiteral("points"), View3DKind::Points);
    if (parser.isSet(known.surface)) {
        view.kind = View3DKind::Surface;
    }
    view.theta = ParseNumber(parser, known.theta, 0, kBelowFullTurn);
    view.alfa = ParseNumber(parser, known.alfa, -180, 180);
    view.rayx = ParseNumber(parser, known.rayx, 0, 1000);
    view.colour = !parser.isSet(known.blackAndWhite);
}

void ParseOutputs(const QCommandLineParser& parser, const Options& known, BatchOptions& options) {
    if (parser.isSet(known.out)) {
        QString folder = parser.value(known.out);
        if (folder.isEmpty()) {
            throw UsageError(QStringLiteral("--out needs the name of a folder."));
        }
        options.outFolder = folder.toStdString();
        if (!folder.endsWith(QLatin1Char('/'))) {
            folder += QLatin1Char('/');
        }
        options.mapFile = (folder + QStringLiteral("map.png")).toStdString();
        options.segmentsFile = folder.toStdString() + kSegmentFileName;
        options.meshFile = folder.toStdString() + kMeshFileName;
        options.qrzTrianglesFile = folder.toStdString() + "triangles.qrz";
        options.qrzLevelsFile = folder.toStdString() + "levels.qrz";
        options.view3DFile = folder.toStdString() + "view3d.png";
    }
    const auto take = [&](const QCommandLineOption& option, std::string& file) {
        if (!parser.isSet(option)) {
            return;
        }
        if (parser.value(option).isEmpty()) {
            throw UsageError(QStringLiteral("--%1 needs a file name.").arg(option.names().last()));
        }
        file = parser.value(option).toStdString();
    };
    take(known.map, options.mapFile);
    take(known.segments, options.segmentsFile);
    take(known.mesh, options.meshFile);
    take(known.qrzTriangles, options.qrzTrianglesFile);
    take(known.qrzLevels, options.qrzLevelsFile);
    take(known.view3D, options.view3DFile);
    for (const std::string& picture : {options.mapFile, options.view3DFile}) {
        if (!PictureKindOf(picture)) {
            throw UsageError(
                QStringLiteral("Pictures are written as PNG, SVG or PDF, not as \"%1\" files.")
                    .arg(QFileInfo(QString::fromStdString(picture)).suffix().toLower()));
        }
    }
}

// The json findings are a part of the json summary.
void ParseCheck(const QCommandLineParser& parser, const Options& known, BatchOptions& options) {
    if (parser.isSet(known.check)) {
        options.check =
            ParseChoice(QStringLiteral("check"), parser.value(known.check), QStringLiteral("text"),
                        CheckForm::Text, QStringLiteral("json"), CheckForm::Json);
        if (options.check == CheckForm::Json) {
            options.summary = SummaryForm::Json;
        }
        options.summaryWanted = true;
    }
    if (parser.isSet(known.tolerance) && !parser.isSet(known.check)) {
        throw UsageError(QStringLiteral("--tolerance means nothing without --check."));
    }
    options.checkOptions.tolerance = ParseNumber(parser, known.tolerance, 0, 1e9);
}

void ParseSheets(const QCommandLineParser& parser, const Options& known, BatchOptions& options) {
    options.measure = known.measure.Parse(parser);
    options.sheet =
        known.sheet.Parse(parser, parser.isSet(known.paper) ? parser.value(known.paper) : QString(),
                          known.exchange.AreWanted(parser), options.measure.HasSheets());
    const std::optional<QPageSize::PageSizeId> size = PaperSizeOf(parser.value(known.paper));
    if (!size && options.sheet.file.empty() && !options.measure.HasSheets()) {
        throw UsageError(QStringLiteral("--paper takes A4, A3, A2, A1, A0 or Letter, not \"%1\".")
                             .arg(parser.value(known.paper)));
    }
    options.pageSize = size.value_or(QPageSize::A4);
    if (parser.isSet(known.background)) {
        options.paper = ParseChoice(QStringLiteral("background"), parser.value(known.background),
                                    QStringLiteral("black"), Paper::Black, QStringLiteral("white"),
                                    Paper::White);
    }
}

// The outputs, and the files that those come to hold which are folders.
std::vector<std::string> OutputsAndTheirFiles(const BatchOptions& options) {
    std::vector<std::string> files = options.Outputs();
    for (const ExchangeFile& file : options.exchange.files) {
        if (file.format->writeFolder != nullptr) {
            const std::vector<std::string> inside = ShapefilePaths(file.path);
            files.insert(files.end(), inside.begin(), inside.end());
        }
    }
    return files;
}

// A file that is not there yet may be named through links to its folder.
QString PathOf(const QFileInfo& info) {
    const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath();
    return info.exists()      ? info.canonicalFilePath()
           : folder.isEmpty() ? info.absoluteFilePath()
                              : folder + QLatin1Char('/') + info.fileName();
}

// No output may replace a file that is read, nor another output.
void RefuseCollisions(const BatchOptions& options) {
    QStringList seen{QFileInfo(QString::fromStdString(options.pointFile)).canonicalFilePath()};
    for (const std::string& file : options.measure.Inputs()) {
        seen.append(QFileInfo(QString::fromStdString(file)).canonicalFilePath());
    }
    for (const std::string& file : OutputsAndTheirFiles(options)) {
        const QFileInfo info(QString::fromStdString(file));
        if (info.exists() && !info.isFile()) {
            continue; // a device or a pipe takes any number of writers
        }
        const QString path = PathOf(info);
        if (seen.contains(path)) {
            throw UsageError(QStringLiteral("The file %1 is named twice.").arg(info.filePath()));
        }
        seen.append(path);
    }
}

void ParseVectors(const QCommandLineParser& parser, const Options& known, BatchOptions& options) {
    const bool namesUnit = options.measure.IsWanted() || !options.terrain.file.empty();
    options.exchange =
        known.exchange.Parse(parser, namesUnit, known.sheet.TextHeight(), known.sheet.IndexEvery());
    if (options.exchange.difference && options.measure.secondFile.empty()) {
        throw UsageError(QStringLiteral("--difference needs a second survey: --volume-to FILE."));
    }
}

const char* SignOf(LengthUnit unit) {
    switch (unit) {
    case LengthUnit::Metre:
        break;
    case LengthUnit::Foot:
        return "ft";
    case LengthUnit::UsSurveyFoot:
        return "US ft";
    }
    return "m";
}

void ParseTerrain(const QCommandLineParser& parser, const Options& known, BatchOptions& options) {
    const QCommandLineOption& exaggeration = known.measure.Exaggeration();
    options.terrain = known.terrain.Parse(parser, exaggeration);
    options.terrain.plan.triangles = options.map.showTriangles;
    if (parser.isSet(exaggeration) && options.terrain.file.empty() &&
        options.measure.sectionPicture.empty()) {
        throw UsageError(
            QStringLiteral("--exaggeration is for --section-picture FILE and --terrain FILE."));
    }
}

BatchOptions ReadOptions(const QCommandLineParser& parser, const Options& known) {
    BatchOptions options;
    const QStringList files = parser.positionalArguments();
    if (files.size() != 1) {
        throw UsageError(
            files.isEmpty()
                ? QStringLiteral("No point file is given (--help tells the options).")
                : QStringLiteral("One point file at a time, not %1.").arg(files.size()));
    }
    options.pointFile = files.first().toStdString();
    options.import = known.import.Parse(parser);
    options.gis = known.gis.Parse(parser);
    options.surface = known.shape.Parse(parser);
    options.triangulation.exact = parser.isSet(known.exact);
    options.map.levels = known.levels.Parse(parser);
    options.levelsAreChosen = known.levels.AreChosen(parser);
    options.map.mode =
        ParseChoice(QStringLiteral("mode"), parser.value(known.mode), QStringLiteral("lines"),
                    MapMode::Lines, QStringLiteral("areas"), MapMode::Areas);
    options.map.showLevelValues = parser.isSet(known.labels);
    options.map.showTriangles = parser.isSet(known.triangles);
    options.map.showPerimeter = parser.isSet(known.perimeter);
    ParseSize(parser.value(known.size), options);
    options.language = parser.value(known.language).toStdString();
    options.decimalComma = parser.isSet(known.comma);
    options.summary =
        ParseChoice(QStringLiteral("summary"), parser.value(known.summary), QStringLiteral("text"),
                    SummaryForm::Text, QStringLiteral("json"), SummaryForm::Json);
    options.summaryWanted = !parser.isSet(known.quiet) || parser.isSet(known.summary);
    ParseCheck(parser, known, options);
    options.progress = parser.isSet(known.progress) && !parser.isSet(known.quiet);
    ParseView3D(parser, known, options.view3D);
    ParseOutputs(parser, known, options);
    ParseSheets(parser, known, options);
    ParseTerrain(parser, known, options);
    ParseVectors(parser, known, options);
    options.terrain.heightUnit = SignOf(options.exchange.wish.unit);
    options.smooth = known.smooth.Parse(
        parser, !options.sheet.file.empty() || !options.terrain.file.empty(), options.exchange);
    options.sheet.plan.smoothing = options.smooth.options;
    options.exchange.wish.smoothing = options.smooth.options;
    options.exchange.wish.tolerance = options.smooth.tolerance;
    options.exchange.wish.fewerVertices = options.smooth.fewerVertices;
    RefuseCollisions(options);
    return options;
}

} // namespace

std::vector<std::string> BatchOptions::Outputs() const {
    std::vector<std::string> outputs;
    for (const std::string& file :
         {mapFile, segmentsFile, meshFile, qrzTrianglesFile, qrzLevelsFile, view3DFile,
          terrain.file, sheet.file, measure.sectionTable}) {
        if (!file.empty()) {
            outputs.push_back(file);
        }
    }
    for (const ExchangeFile& file : exchange.files) {
        outputs.push_back(file.path);
    }
    if (exchange.difference) {
        outputs.push_back(exchange.difference->path);
    }
    return outputs;
}

VectorChoice BatchOptions::ChoiceFor(PictureKind kind) const {
    return {paper.value_or(kind == PictureKind::Pdf ? Paper::White : Paper::Black), pageSize};
}

namespace {

// The parser takes the last of them without a word. Of numbers that is what scripts rely on, but a
// file that was asked for would not be written.
void RefuseRepeatedFiles(const QCommandLineParser& parser, const Options& known) {
    QStringList names = known.exchange.FileNames();
    names << "map"
          << "segments"
          << "mesh"
          << "qrz-triangles"
          << "qrz-levels"
          << "view3d"
          << "sheet"
          << "terrain"
          << "section-csv"
          << "section-picture"
          << "difference-sheet"
          << "difference"
          << "out"
          << "volume-to";
    for (const QString& name : names) {
        if (parser.values(name).size() > 1) {
            throw UsageError(QStringLiteral("--%1 is given more than once.").arg(name));
        }
    }
}

} // namespace

BatchCall ParseBatchCall(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Draws a contour map of scattered survey points, without a window."));
    parser.addPositionalArgument(
        QStringLiteral("file"),
        QStringLiteral("Point file: a text of x, y, z with or without names and codes, an ASCII "
                       "grid, or, through GDAL, a DXF, GeoPackage, Shapefile, GeoJSON, KML or "
                       "GeoTIFF file. Or a project (*.terravo), which says itself what is not "
                       "given here."));
    const Options known;
    known.AddTo(parser);

    BatchCall call;
    const bool understood = parser.parse(arguments);
    if (parser.isSet(known.help)) {
        call.text = parser.helpText().toStdString();
        return call;
    }
    if (parser.isSet(known.version)) {
        call.text = "terravo-batch " TERRAVO_VERSION "\n";
        return call;
    }
    try {
        if (!understood) {
            throw UsageError(parser.errorText());
        }
        RefuseRepeatedFiles(parser, known);
        call.options = ReadOptions(parser, known);
        call.run = true;
    } catch (const UsageError& error) {
        call.text = error.what();
        call.exitCode = ExitCode::kUsage;
    }
    return call;
}

} // namespace terravo
