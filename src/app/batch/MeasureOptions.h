// The options of terravo-batch that measure the surface.
//
// Data: the texts of the command line. Method: numbers are checked here; files are read when the
// points have been. What says how something is measured is refused where nothing is.
#pragma once

#include "triangulation/TriangleList.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <optional>
#include <string>
#include <vector>

namespace terravo {

/// Sections across another one.
struct CrossSizes {
    double spacing = 0; // data units
    double width = 0;
};

/// The lines of a section: out of a file, or of the call itself.
struct SectionCall {
    std::string file;              // empty: the places of the line
    std::vector<PlanPoint> places; // data units
};

struct MeasureCall {
    bool areas = false;
    bool hypsometry = false;
    std::vector<double> datums;           // of volumes
    std::string secondFile;               // empty: no second survey
    std::vector<std::string> withinFiles; // of rings
    std::vector<SectionCall> sections;
    std::optional<CrossSizes> crossSections;
    std::vector<PlanPoint> places; // whose heights are asked for
    std::string sectionTable;      // CSV; empty: not wanted, as the next ones
    std::string sectionPicture;
    std::string differenceSheet;
    std::optional<double> exaggeration; // of the section picture; none: what fits

    /// Whether there is anything to measure.
    [[nodiscard]] bool IsWanted() const {
        return areas || hypsometry || !datums.empty() || !secondFile.empty() || !sections.empty() ||
               !places.empty();
    }
    /// Whether any of its outputs is a sheet.
    [[nodiscard]] bool HasSheets() const {
        return !sectionPicture.empty() || !differenceSheet.empty();
    }
    /// The files that are read beside the point file.
    [[nodiscard]] std::vector<std::string> Inputs() const;
};

class MeasureOptions {
public:
    void AddTo(QCommandLineParser& parser) const;

    /// Throws UsageError.
    [[nodiscard]] MeasureCall Parse(const QCommandLineParser& parser) const;

    /// The option that terrains have as well.
    [[nodiscard]] const QCommandLineOption& Exaggeration() const { return exaggeration_; }

private:
    void RefuseWithoutSubject(const QCommandLineParser& parser, const MeasureCall& call) const;

    QCommandLineOption areas_{
        QStringLiteral("areas"),
        QStringLiteral("Measure the surface: plan area, sloping area, perimeter, mean height, "
                       "slopes.")};
    QCommandLineOption hypsometry_{QStringLiteral("hypsometry"),
                                   QStringLiteral("Measure the area and volume above each level.")};
    QCommandLineOption volume_{
        QStringLiteral("volume"),
        QStringLiteral("Measure cut and fill to the horizontal plane at this height; may be given "
                       "several times."),
        QStringLiteral("z")};
    QCommandLineOption volumeTo_{
        QStringLiteral("volume-to"),
        QStringLiteral("Measure cut and fill to the surface of a second survey: a file or a "
                       "project, as the point file may be."),
        QStringLiteral("file")};
    QCommandLineOption within_{
        QStringLiteral("within"),
        QStringLiteral("Measure areas, volumes and the difference inside the rings of this file "
                       "alone; may be given several times."),
        QStringLiteral("file")};
    QCommandLineOption section_{
        QStringLiteral("section"),
        QStringLiteral("Cut the surface along the lines of this file, or along x1,y1,x2,y2 and so "
                       "on; may be given several times."),
        QStringLiteral("line")};
    QCommandLineOption crossSections_{
        QStringLiteral("cross-sections"),
        QStringLiteral("Cut across the one section, too, every <spacing>, <width> wide."),
        QStringLiteral("spacing,width")};
    QCommandLineOption heightAt_{
        QStringLiteral("height-at"),
        QStringLiteral("Measure height, slope and aspect at a place; may be given several times."),
        QStringLiteral("x,y")};
    QCommandLineOption table_{QStringLiteral("section-csv"),
                              QStringLiteral("Write the vertices of the sections as a table."),
                              QStringLiteral("file")};
    QCommandLineOption picture_{
        QStringLiteral("section-picture"),
        QStringLiteral("Draw the sections: PNG, SVG or PDF, by the extension."),
        QStringLiteral("file")};
    QCommandLineOption exaggeration_{
        QStringLiteral("exaggeration"),
        QStringLiteral("How many times higher than long sections and the terrain are drawn. "
                       "Default: what fits."),
        QStringLiteral("f")};
    QCommandLineOption differenceSheet_{
        QStringLiteral("difference-sheet"),
        QStringLiteral("Draw the difference of the two surveys as a sheet to scale: PDF, SVG or "
                       "PNG, by the extension."),
        QStringLiteral("file")};
};

} // namespace terravo
