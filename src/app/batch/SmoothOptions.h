// The options of terravo-batch for smooth contour lines.
//
// Data: the texts of the command line. Method: each is checked; what is asked of lines that nothing
// would show is refused.
#pragma once

#include "app/batch/ExchangeOptions.h"
#include "contour/smoothing/SmoothContours.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <optional>

namespace terravo {

struct SmoothCall {
    bool isChosen = false;                   // the call says it, not the sheet of a project
    std::optional<SmoothingOptions> options; // none: lines as they are cut
    std::optional<double> tolerance;         // of files, data units; none: the usual one
    bool fewerVertices = false;
    bool verify = false;
};

class SmoothOptions {
public:
    void AddTo(QCommandLineParser& parser) const;

    /// @param hasPicture  a sheet or a terrain is asked for.
    /// @param vectors     the vector files that are.
    /// Throws UsageError.
    [[nodiscard]] SmoothCall Parse(const QCommandLineParser& parser, bool hasPicture,
                                   const ExchangeCall& vectors) const;

private:
    [[nodiscard]] SmoothingOptions ParseLines(const QCommandLineParser& parser,
                                              double fraction) const;
    void RefuseWithoutSmooth(const QCommandLineParser& parser) const;

    QCommandLineOption smooth_{
        QStringLiteral("smooth"),
        QStringLiteral("Smooth contours on the sheet, the terrain and in vector files (not "
                       "LandXML), that cannot cross: how far they may leave their height, as a "
                       "part of the way to "
                       "the next level, from 0, off, to less than 0.5; taken as 0.01 to 0.45. "
                       "0.25 suits most. Default: 0."),
        QStringLiteral("f"), QStringLiteral("0")};
    QCommandLineOption smoothness_{
        QStringLiteral("smoothness"),
        QStringLiteral("How long a stretch smooth lines are made even, in triangle edges, 0 to 1. "
                       "Default: 0.5, 0.4 for the goal surface."),
        QStringLiteral("s")};
    QCommandLineOption goal_{
        QStringLiteral("smooth-goal"),
        QStringLiteral("Smooth lines run where the flat triangles have the height, plain, or where "
                       "a curved surface through the points has it, surface. Default: plain."),
        QStringLiteral("goal"), QStringLiteral("plain")};
    QCommandLineOption limit_{
        QStringLiteral("smooth-limit"),
        QStringLiteral("No smooth line leaves its height by more, in units of the heights, "
                       "1e-9 to 1e9."),
        QStringLiteral("metres")};
    QCommandLineOption flatten_{
        QStringLiteral("flatten"),
        QStringLiteral("How far the straight pieces of smooth lines in vector files may be from "
                       "the curve, in data units. Default: 0.02 mm at a usual scale."),
        QStringLiteral("d")};
    QCommandLineOption fewer_{
        QStringLiteral("fewer-vertices"),
        QStringLiteral("Smooth lines in vector files have as few vertices as --flatten allows.")};
    QCommandLineOption verify_{
        QStringLiteral("verify-smooth"),
        QStringLiteral("Check that smooth lines neither cross nor touch nor leave their height, "
                       "and fail when one does.")};
};

} // namespace terravo
