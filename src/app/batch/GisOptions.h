// The options of terravo-batch that say what is read of a file that goes through GDAL.
//
// Data: the texts of the command line. Method: what is given goes into a plan, which is judged when
// the file is known.
#pragma once

#include "gis/GisPlan.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <string>

namespace terravo {

class GisOptions {
public:
    void AddTo(QCommandLineParser& parser) const;

    /// Throws UsageError.
    [[nodiscard]] GisPlan Parse(const QCommandLineParser& parser) const;

    /// The first of these options that the plan was made with, with its dashes; empty for none.
    static std::string FirstIn(const GisPlan& plan);

private:
    QCommandLineOption layer_{
        QStringLiteral("layer"),
        QStringLiteral("Layer of a DXF, GeoPackage, Shapefile, GeoJSON, KML or raster file to "
                       "read; may be given several times."),
        QStringLiteral("name")};
    QCommandLineOption heightField_{
        QStringLiteral("height-field"),
        QStringLiteral("Attribute of such a file that holds the heights. Default: the heights of "
                       "the vertices."),
        QStringLiteral("name")};
    QCommandLineOption toCrs_{
        QStringLiteral("to-crs"),
        QStringLiteral("Project the coordinates of such a file to this system; none takes "
                       "longitude and latitude as they are."),
        QStringLiteral("EPSG:n")};
    QCommandLineOption rasterStep_{
        QStringLiteral("raster-step"),
        QStringLiteral("Take every <n>th column and row of a raster. Default: 1."),
        QStringLiteral("n")};
};

} // namespace terravo
