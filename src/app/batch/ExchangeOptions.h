// The options of terravo-batch for the vector files of other programs.
//
// Data: the texts of the command line. Method: one option a format, made from the list of formats;
// what the files are to hold is checked against what each can.
#pragma once

#include "export/vector/MakeVectorContent.h"
#include "export/vector/VectorFormat.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <string>
#include <vector>

namespace terravo {

struct ExchangeFile {
    const VectorFormat* format = nullptr;
    std::string path;
    VectorParts parts; // that the format knows
};

struct ExchangeCall {
    std::vector<ExchangeFile> files;
    std::optional<ExchangeFile> difference; // of two surveys
    bool unitIsChosen = false;
    VectorWish wish; // its parts are those of all files but the difference
    VectorOptions options;
    bool verify = true;
};

class ExchangeOptions {
public:
    ExchangeOptions();

    void AddTo(QCommandLineParser& parser) const;

    /// Names of the options that write a file each.
    [[nodiscard]] QStringList FileNames() const;
    /// Whether the call asks for any such file.
    [[nodiscard]] bool AreWanted(const QCommandLineParser& parser) const;

    /// @param namesUnit   the call measures or shows heights, in the unit that it may name.
    /// @param textHeight  option that the sheet has too: there it is in millimetres.
    /// @param indexEvery  option that the sheet has too.
    /// Throws UsageError.
    [[nodiscard]] ExchangeCall Parse(const QCommandLineParser& parser, bool namesUnit,
                                     const QCommandLineOption& textHeight,
                                     const QCommandLineOption& indexEvery) const;

private:
    [[nodiscard]] std::vector<ExchangeFile> ParseFiles(const QCommandLineParser& parser) const;
    [[nodiscard]] std::optional<ExchangeFile>
    ParseDifference(const QCommandLineParser& parser) const;
    void ParseContent(const QCommandLineParser& parser, ExchangeFile& file) const;
    void ParseWish(const QCommandLineParser& parser, VectorWish& wish) const;
    void ParseUnit(const QCommandLineParser& parser, ExchangeCall& call) const;
    void ParseDxf(const QCommandLineParser& parser, VectorOptions& options) const;
    void RefuseWithoutDxf(const QCommandLineParser& parser) const;
    void RefuseWithoutFiles(const QCommandLineParser& parser, bool namesUnit) const;

    std::vector<QCommandLineOption> files_; // one a format, in their order
    QCommandLineOption difference_{
        QStringLiteral("difference"),
        QStringLiteral("Write the difference of the two surveys as a surface with contours, for "
                       "other programs: one of these formats, by the extension."),
        QStringLiteral("file")};
    QCommandLineOption content_;
    QCommandLineOption dxfVersion_{
        QStringLiteral("dxf-version"),
        QStringLiteral("r2000 or r12, the form of the DXF file. Default: r2000."),
        QStringLiteral("v"), QStringLiteral("r2000")};
    QCommandLineOption dxf3D_{QStringLiteral("dxf-3d"),
                              QStringLiteral("Contours of the DXF file are 3D polylines.")};
    QCommandLineOption layerPerLevel_{
        QStringLiteral("layer-per-level"),
        QStringLiteral("Each level of the DXF file has a layer with its height in the name.")};
    QCommandLineOption units_{
        QStringLiteral("units"),
        QStringLiteral("Unit of the coordinates: metre, foot or us-foot (US survey foot). Nothing "
                       "is converted. Default: metre."),
        QStringLiteral("unit"), QStringLiteral("metre")};
    QCommandLineOption crs_{
        QStringLiteral("crs"),
        QStringLiteral("Coordinate system of the points, to be named in the files: EPSG:N."),
        QStringLiteral("code")};
    QCommandLineOption decimals_{
        QStringLiteral("decimals"),
        QStringLiteral("Decimals of the coordinates in vector files, 0 to %1. Default: every "
                       "digit.")
            .arg(kMostVectorDecimals),
        QStringLiteral("n")};
    QCommandLineOption noVerify_{
        QStringLiteral("no-verify"),
        QStringLiteral("Do not read vector files back after writing them.")};
};

} // namespace terravo
