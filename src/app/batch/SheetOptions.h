// The options of terravo-batch for the map sheet.
//
// Data: the texts of the command line. Method: each is checked and goes into the plan of the sheet.
#pragma once

#include "sheet/SheetPlan.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <string>

namespace terravo {

struct SheetCall {
    std::string file; // empty: no sheet is wanted
    SheetPlan plan;
    bool planIsChosen = false; // the call says what the sheet is to be
    bool layersAreChosen = false;
    bool labelsAreChosen = false;
    std::string titleOfOthers; // of sheets of something else; empty: what they have themselves
    int dotsPerInch = 300;     // of a PNG
};

class SheetOptions {
public:
    void AddTo(QCommandLineParser& parser) const;

    /// @param paper        text of the option that all pages share; empty: not given.
    /// @param withVectors  vector files are asked for, too, which have some of the options.
    /// @param withOthers   sheets of something else are, which have them, too.
    /// Throws UsageError.
    [[nodiscard]] SheetCall Parse(const QCommandLineParser& parser, const QString& paper,
                                  bool withVectors, bool withOthers) const;

    /// The options that vector files have as well.
    [[nodiscard]] const QCommandLineOption& TextHeight() const { return textHeight_; }
    [[nodiscard]] const QCommandLineOption& IndexEvery() const { return indexEvery_; }

private:
    void ParseStyle(const QCommandLineParser& parser, SheetPlan& plan) const;
    void ParseLabels(const QCommandLineParser& parser, SheetPlan& plan) const;
    [[nodiscard]] bool IsAnySet(const QCommandLineParser& parser) const;
    void RefuseWithoutSheet(const QCommandLineParser& parser, bool withVectors) const;

    QCommandLineOption sheet_{
        QStringLiteral("sheet"),
        QStringLiteral("Write the map as a sheet to scale: PDF, SVG or PNG, by the extension."),
        QStringLiteral("file")};
    QCommandLineOption landscape_{
        QStringLiteral("landscape"),
        QStringLiteral("The sheet lies across. Default: by the shape of the survey.")};
    QCommandLineOption portrait_{QStringLiteral("portrait"),
                                 QStringLiteral("The sheet stands upright.")};
    QCommandLineOption scale_{
        QStringLiteral("scale"),
        QStringLiteral("Scale of the sheet: N for 1:N, or fit, the largest usual scale at which "
                       "the survey fits. Default: fit."),
        QStringLiteral("n"), QStringLiteral("fit")};
    QCommandLineOption rotation_{
        QStringLiteral("rotation"),
        QStringLiteral("Turn of the map on the sheet, degrees counter-clockwise."),
        QStringLiteral("deg")};
    QCommandLineOption dpi_{QStringLiteral("dpi"),
                            QStringLiteral("Dots per inch of a sheet as PNG. Default: 300."),
                            QStringLiteral("d"), QStringLiteral("300")};
    QCommandLineOption theme_{
        QStringLiteral("theme"),
        QStringLiteral("Look of the sheet: brown, height, black or dark. Default: brown."),
        QStringLiteral("name"), QStringLiteral("brown")};
    QCommandLineOption indexEvery_{
        QStringLiteral("index-every"),
        QStringLiteral("Every n-th contour of the sheet and of vector files is heavier; 0: none. "
                       "Default: 5."),
        QStringLiteral("n"), QStringLiteral("5")};
    QCommandLineOption layers_{
        QStringLiteral("layers"),
        QStringLiteral("What the sheet shows, separated by commas: contours, bands, triangles, "
                       "hull, points, numbers, codes, spot-heights, grid, legend, scale-bar, "
                       "north-arrow, title-block."),
        QStringLiteral("list")};
    QCommandLineOption gridLines_{QStringLiteral("grid-lines"),
                                  QStringLiteral("Draw the grid of the sheet as lines, not as "
                                                 "crosses.")};
    QCommandLineOption label_{
        QStringLiteral("label"),
        QStringLiteral("Which contours of the sheet have values: none, index or all. Default: "
                       "index."),
        QStringLiteral("which"), QStringLiteral("index")};
    QCommandLineOption labelSpacing_{
        QStringLiteral("label-spacing"),
        QStringLiteral("Millimetres between the values along a contour. Default: 120."),
        QStringLiteral("mm")};
    QCommandLineOption labelUphill_{
        QStringLiteral("label-uphill"),
        QStringLiteral("Values have their tops uphill. Default: they are never upside down.")};
    QCommandLineOption textHeight_{
        QStringLiteral("text-height"),
        QStringLiteral("Height of the capital letters: of a sheet in millimetres, default 1.8; of "
                       "a DXF file in drawing units, default 2 mm at a usual scale."),
        QStringLiteral("h")};
    QCommandLineOption title_{QStringLiteral("title"),
                              QStringLiteral("Title of the sheet. Default: the name of the file."),
                              QStringLiteral("text")};
    QCommandLineOption project_{QStringLiteral("project"),
                                QStringLiteral("Project, for the title block of the sheet."),
                                QStringLiteral("text")};
    QCommandLineOption author_{QStringLiteral("author"),
                               QStringLiteral("Author, for the title block of the sheet."),
                               QStringLiteral("text")};
    QCommandLineOption datum_{QStringLiteral("datum"),
                              QStringLiteral("Datum of the heights, for the title block."),
                              QStringLiteral("text")};
    QCommandLineOption date_{QStringLiteral("date"),
                             QStringLiteral("Date, for the title block. Default: none."),
                             QStringLiteral("text")};
};

} // namespace terravo
