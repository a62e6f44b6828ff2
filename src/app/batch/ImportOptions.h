// The options of terravo-batch that say how the point file is to be read.
//
// Data: the texts of the command line. Method: what is given goes into a wish, the rest is left to
// the inspection of the file.
#pragma once

#include "survey/import/PointImport.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <string>

namespace terravo {

struct ImportCall {
    ImportWish wish;
    BadRecords bad = BadRecords::Refuse;
};

class ImportOptions {
public:
    void AddTo(QCommandLineParser& parser) const;

    /// Throws UsageError.
    [[nodiscard]] ImportCall Parse(const QCommandLineParser& parser) const;

    /// The option of a call that means nothing for a grid, with its dashes; empty for none.
    static std::string UnusedForGrid(const ImportCall& call);

    /// The first of these options that says something, with its dashes; empty for none.
    static std::string FirstIn(const ImportCall& call);

private:
    void RefuseBesideFree(const QCommandLineParser& parser) const;

    QCommandLineOption columns_{
        QStringLiteral("columns"),
        QStringLiteral("What the columns are: auto, free (a list of numbers), xyz, yxz, pxyz, "
                       "pyxz, pnezd, penzd, or a list of p, e, n, z, c and -. Default: auto."),
        QStringLiteral("columns"), QStringLiteral("auto")};
    QCommandLineOption separator_{
        QStringLiteral("separator"),
        QStringLiteral("auto, comma, semicolon, tab, blank or bar. Default: auto."),
        QStringLiteral("name"), QStringLiteral("auto")};
    QCommandLineOption decimal_{
        QStringLiteral("decimal"),
        QStringLiteral("Decimal sign of the file: auto, point or comma. Default: auto."),
        QStringLiteral("sign"), QStringLiteral("auto")};
    QCommandLineOption skip_{QStringLiteral("skip"),
                             QStringLiteral("Lines at the top that hold no points. Default: those "
                                            "without numbers."),
                             QStringLiteral("n")};
    QCommandLineOption void_{
        QStringLiteral("void"),
        QStringLiteral("Further texts for a missing height, separated by commas; one that holds a "
                       "comma is put in double quotes."),
        QStringLiteral("list")};
    QCommandLineOption encoding_{QStringLiteral("encoding"),
                                 QStringLiteral("auto, utf-8, utf-16 or latin-1. Default: auto."),
                                 QStringLiteral("name"), QStringLiteral("auto")};
    QCommandLineOption bad_{QStringLiteral("bad-records"),
                            QStringLiteral("refuse a file with records that do not fit, or skip "
                                           "them. Default: refuse."),
                            QStringLiteral("what"), QStringLiteral("refuse")};
};

} // namespace terravo
