// The options of terravo-batch that shape the surface: lines, rings, the longest side, excluded
// points.
//
// Data: the texts of the command line. Method: what can be judged without the points is judged
// here; files are read and points are looked for when the point file has been read.
#pragma once

#include "triangulation/constrained/SurfaceConstraints.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <optional>
#include <string>
#include <vector>

namespace terravo {

struct SurfaceCall {
    std::vector<std::string> breaklineFiles;
    std::vector<std::string> boundaryFiles;
    std::vector<std::string> holeFiles;
    std::vector<std::string> codes; // of points that make breaklines
    std::optional<double> longestSide;
    bool proposesLongestSide = false;
    std::string exclude;                   // names or numbers, or a file of them
    std::optional<CrossingRule> crossings; // none: as the plan has it
    bool verify = false;
};

class SurfaceOptions {
public:
    void AddTo(QCommandLineParser& parser) const;

    /// Throws UsageError.
    [[nodiscard]] SurfaceCall Parse(const QCommandLineParser& parser) const;

private:
    QCommandLineOption breaklines_{
        QStringLiteral("breaklines"),
        QStringLiteral("Lay the lines of this file into the triangulation: a text or table of x, "
                       "y, z, DXF, GeoPackage, Shapefile or GeoJSON; may be given several times."),
        QStringLiteral("file")};
    QCommandLineOption breaklineCodes_{
        QStringLiteral("breakline-codes"),
        QStringLiteral(
            "Points of these codes make breaklines, in the order of the file: WALL,KERB* "
            "and so on."),
        QStringLiteral("list")};
    QCommandLineOption boundary_{
        QStringLiteral("boundary"),
        QStringLiteral(
            "Only what lies inside the rings of this file belongs to the surface; may be "
            "given several times."),
        QStringLiteral("file")};
    QCommandLineOption holes_{
        QStringLiteral("holes"),
        QStringLiteral("What lies inside the rings of this file does not belong to the surface; "
                       "may be given several times."),
        QStringLiteral("file")};
    QCommandLineOption maxSide_{
        QStringLiteral("max-side"),
        QStringLiteral("Hide triangles at the rim whose outer side is longer; auto proposes a "
                       "length."),
        QStringLiteral("l")};
    QCommandLineOption exclude_{
        QStringLiteral("exclude"),
        QStringLiteral("Leave these points out: names or numbers separated by commas, or a file "
                       "with one a line."),
        QStringLiteral("list")};
    QCommandLineOption crossing_{
        QStringLiteral("crossings"),
        QStringLiteral("Of two lines that cross at different heights, refuse leaves out the later "
                       "one, earlier takes the height of the earlier one. Default: refuse."),
        QStringLiteral("rule"), QStringLiteral("refuse")};
    QCommandLineOption crossingTolerance_{
        QStringLiteral("crossing-tolerance"),
        QStringLiteral("Heights of crossing lines that differ by no more meet in their mean. "
                       "Default: 0.05."),
        QStringLiteral("d"), QStringLiteral("0.05")};
    QCommandLineOption verify_{
        QStringLiteral("verify-surface"),
        QStringLiteral("Check every triangle, link and line of the surface, and fail when one is "
                       "wrong.")};
};

} // namespace terravo
