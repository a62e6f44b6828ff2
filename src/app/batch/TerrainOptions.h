// The options of terravo-batch for the picture of the terrain.
//
// Data: the texts of the command line. Method: each is checked and goes into the plan of the
// terrain; what says how a picture is to look is refused where none is wanted.
#pragma once

#include "view3d/terrain/TerrainPlan.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <optional>
#include <string>

namespace terravo {

struct TerrainDirection {
    double azimuth = 330;  // degrees, clockwise from north: where one looks
    double elevation = 35; // degrees above the ground
};

struct TerrainCall {
    std::string file; // PNG; empty: no picture is wanted
    TerrainPlan plan;
    TerrainDirection view;
    std::optional<double> exaggeration; // none: one that shows the relief
    std::string heightUnit = "m";       // its sign
};

class TerrainOptions {
public:
    void AddTo(QCommandLineParser& parser) const;

    /// @param exaggeration  the option that sections have as well.
    /// Throws UsageError.
    [[nodiscard]] TerrainCall Parse(const QCommandLineParser& parser,
                                    const QCommandLineOption& exaggeration) const;

private:
    QCommandLineOption terrain_{
        QStringLiteral("terrain"),
        QStringLiteral("Write a picture of the lit terrain as PNG. Needs OpenGL 3.3, but no "
                       "display."),
        QStringLiteral("file")};
    QCommandLineOption view_{
        QStringLiteral("view"),
        QStringLiteral("Where the picture of the terrain looks: degrees clockwise from north, and "
                       "degrees down from the horizon, 90 from above. Default: 330,35."),
        QStringLiteral("azimuth,elevation")};
    QCommandLineOption colour_{
        QStringLiteral("colour"),
        QStringLiteral("Colours of the terrain: height, slope, aspect or plain. Default: height."),
        QStringLiteral("what")};
};

} // namespace terravo
