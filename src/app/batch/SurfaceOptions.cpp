#include "app/batch/SurfaceOptions.h"

#include "app/batch/UsageError.h"

#include <algorithm>

namespace terravo {
namespace {

std::vector<std::string> FilesOf(const QCommandLineParser& parser,
                                 const QCommandLineOption& option) {
    std::vector<std::string> files;
    for (const QString& file : parser.values(option)) {
        if (file.isEmpty()) {
            throw UsageError(QStringLiteral("--%1 needs a file name.").arg(option.names().last()));
        }
        files.push_back(file.toStdString());
    }
    return files;
}

std::vector<std::string> CodesOf(const QCommandLineParser& parser,
                                 const QCommandLineOption& option) {
    std::vector<std::string> codes;
    for (const QString& list : parser.values(option)) {
        for (const QString& code : list.split(QLatin1Char(','))) {
            if (code.trimmed().isEmpty()) {
                throw UsageError(
                    QStringLiteral("--%1 takes codes separated by commas, such as WALL,KERB*, not "
                                   "\"%2\".")
                        .arg(option.names().last(), list));
            }
            codes.push_back(code.trimmed().toStdString());
        }
    }
    return codes;
}

bool NamesNothing(const QString& list) {
    const auto isEmpty = [](QChar c) { return c == QLatin1Char(',') || c.isSpace(); };
    return std::all_of(list.begin(), list.end(), isEmpty);
}

constexpr double kMostLength = 1e12;

double NumberOf(const QCommandLineParser& parser, const QCommandLineOption& option, double low,
                const QString& wanted) {
    bool isNumber = false;
    const double value = parser.value(option).toDouble(&isNumber);
    if (!isNumber || !(value >= low && value <= kMostLength)) {
        throw UsageError(QStringLiteral("--%1 takes %2, not \"%3\".")
                             .arg(option.names().last(), wanted, parser.value(option)));
    }
    return value;
}

} // namespace

void SurfaceOptions::AddTo(QCommandLineParser& parser) const {
    parser.addOptions({breaklines_, breaklineCodes_, boundary_, holes_, maxSide_, exclude_,
                       crossing_, crossingTolerance_, verify_});
}

SurfaceCall SurfaceOptions::Parse(const QCommandLineParser& parser) const {
    constexpr double kLeastSide = 1e-9;
    SurfaceCall call;
    call.breaklineFiles = FilesOf(parser, breaklines_);
    call.boundaryFiles = FilesOf(parser, boundary_);
    call.holeFiles = FilesOf(parser, holes_);
    call.codes = CodesOf(parser, breaklineCodes_);
    if (parser.value(maxSide_) == QLatin1String("auto")) {
        call.proposesLongestSide = true;
    } else if (parser.isSet(maxSide_)) {
        call.longestSide = NumberOf(parser, maxSide_, kLeastSide,
                                    QStringLiteral("a length from 1e-9 to 1e12, or auto"));
    }
    if (parser.isSet(exclude_) && NamesNothing(parser.value(exclude_))) {
        throw UsageError(QStringLiteral("--exclude needs names, numbers or a file."));
    }
    call.exclude = parser.value(exclude_).toStdString();
    const QString rule = parser.value(crossing_);
    if (rule != QLatin1String("refuse") && rule != QLatin1String("earlier")) {
        throw UsageError(
            QStringLiteral("--crossings takes refuse or earlier, not \"%1\".").arg(rule));
    }
    if (parser.isSet(crossing_) || parser.isSet(crossingTolerance_)) {
        call.crossings =
            CrossingRule{NumberOf(parser, crossingTolerance_, 0,
                                  QStringLiteral("a difference of heights from 0 to 1e12")),
                         rule == QLatin1String("earlier")};
    }
    call.verify = parser.isSet(verify_);
    return call;
}

} // namespace terravo
