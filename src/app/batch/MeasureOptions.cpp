#include "app/batch/MeasureOptions.h"

#include "analysis/Profile.h"
#include "app/batch/UsageError.h"
#include "export/PictureExport.h"

#include <QFileInfo>
#include <QStringList>

namespace terravo {
namespace {

constexpr double kMostCoordinate = 1e12; // data units, as lengths in other options
constexpr double kLeastLength = 1e-9;
constexpr double kMostFactor = 1e6;

QString NameOfOption(const QCommandLineOption& option) {
    return option.names().last();
}

std::string FileOf(const QCommandLineOption& option, const QString& file) {
    if (file.isEmpty()) {
        throw UsageError(QStringLiteral("--%1 needs a file name.").arg(NameOfOption(option)));
    }
    return file.toStdString();
}

std::string FileOf(const QCommandLineParser& parser, const QCommandLineOption& option) {
    return parser.isSet(option) ? FileOf(option, parser.value(option)) : std::string();
}

std::string PictureOf(const QCommandLineParser& parser, const QCommandLineOption& option) {
    std::string file = FileOf(parser, option);
    if (!file.empty() && !PictureKindOf(file)) {
        Refuse(option, QStringLiteral("a PDF, SVG or PNG file"), parser.value(option));
    }
    return file;
}

// The numbers between commas; nothing where one is none.
std::optional<std::vector<double>> NumbersIn(const QString& text, double least) {
    std::vector<double> numbers;
    for (const QString& field : text.split(QLatin1Char(','))) {
        bool isNumber = false;
        const double value = field.toDouble(&isNumber);
        if (!isNumber || !(value >= least && value <= kMostCoordinate)) {
            return std::nullopt;
        }
        numbers.push_back(value);
    }
    return numbers;
}

double NumberOf(const QCommandLineOption& option, const QString& text, double least, double most,
                const QString& wanted) {
    const std::optional<std::vector<double>> numbers = NumbersIn(text, least);
    if (!numbers || numbers->size() != 1 || numbers->front() > most) {
        Refuse(option, wanted, text);
    }
    return numbers->front();
}

std::vector<PlanPoint> PlacesOf(const std::vector<double>& numbers) {
    std::vector<PlanPoint> places;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2) {
        places.push_back({numbers[i], numbers[i + 1]});
    }
    return places;
}

PlanPoint PlaceOf(const QCommandLineOption& option, const QString& text) {
    const std::optional<std::vector<double>> numbers = NumbersIn(text, -kMostCoordinate);
    if (!numbers || numbers->size() != 2) {
        Refuse(option, QStringLiteral("a place x,y"), text);
    }
    return PlacesOf(*numbers).front();
}

// What consists of numbers alone is a line, anything else a file: but one that is not there and has
// commas was meant as a line.
SectionCall SectionOf(const QCommandLineOption& option, const QString& text) {
    const std::optional<std::vector<double>> numbers = NumbersIn(text, -kMostCoordinate);
    if (!numbers && (!text.contains(QLatin1Char(',')) || QFileInfo::exists(text))) {
        return {FileOf(option, text), {}};
    }
    constexpr std::size_t kFewest = 4;
    if (!numbers || numbers->size() < kFewest || numbers->size() % 2 != 0) {
        Refuse(option,
               QStringLiteral("a file of lines, or x1,y1,x2,y2 and so on, numbers up to 1e12"),
               text);
    }
    const std::vector<PlanPoint> places = PlacesOf(*numbers);
    if (!HasLength(places)) {
        Refuse(option, QStringLiteral("places that are apart"), text);
    }
    return {{}, places};
}

CrossSizes SizesOf(const QCommandLineOption& option, const QString& text) {
    const std::optional<std::vector<double>> numbers = NumbersIn(text, kLeastLength);
    if (!numbers || numbers->size() != 2) {
        Refuse(option, QStringLiteral("two lengths from 1e-9 to 1e12, SPACING,WIDTH"), text);
    }
    return {numbers->front(), numbers->back()};
}

} // namespace

std::vector<std::string> MeasureCall::Inputs() const {
    std::vector<std::string> files = withinFiles;
    if (!secondFile.empty()) {
        files.push_back(secondFile);
    }
    for (const SectionCall& section : sections) {
        if (!section.file.empty()) {
            files.push_back(section.file);
        }
    }
    return files;
}

void MeasureOptions::AddTo(QCommandLineParser& parser) const {
    parser.addOptions({areas_, hypsometry_, volume_, volumeTo_, within_, section_, crossSections_,
                       heightAt_, table_, picture_, exaggeration_, differenceSheet_});
}

void MeasureOptions::RefuseWithoutSubject(const QCommandLineParser& parser,
                                          const MeasureCall& call) const {
    const bool hasGround =
        call.areas || call.hypsometry || !call.datums.empty() || !call.secondFile.empty();
    if (!call.withinFiles.empty() && !hasGround) {
        throw UsageError(
            QStringLiteral("--within is for areas and volumes: --areas, --hypsometry, --volume Z "
                           "or --volume-to FILE measures them."));
    }
    if (call.crossSections && call.sections.size() != 1) {
        throw UsageError(QStringLiteral("--cross-sections needs one --section, its axis."));
    }
    for (const QCommandLineOption* option : {&table_, &picture_}) {
        if (parser.isSet(*option) && call.sections.empty()) {
            throw UsageError(QStringLiteral("--%1 needs a --section.").arg(NameOfOption(*option)));
        }
    }
    if (parser.isSet(differenceSheet_) && call.secondFile.empty()) {
        throw UsageError(QStringLiteral("--difference-sheet needs a second survey: --volume-to "
                                        "FILE."));
    }
}

MeasureCall MeasureOptions::Parse(const QCommandLineParser& parser) const {
    MeasureCall call;
    call.areas = parser.isSet(areas_);
    call.hypsometry = parser.isSet(hypsometry_);
    for (const QString& text : parser.values(volume_)) {
        call.datums.push_back(NumberOf(volume_, text, -kMostCoordinate, kMostCoordinate,
                                       QStringLiteral("a height within 1e12")));
    }
    call.secondFile = FileOf(parser, volumeTo_);
    for (const QString& file : parser.values(within_)) {
        call.withinFiles.push_back(FileOf(within_, file));
    }
    for (const QString& text : parser.values(section_)) {
        call.sections.push_back(SectionOf(section_, text));
    }
    if (parser.isSet(crossSections_)) {
        call.crossSections = SizesOf(crossSections_, parser.value(crossSections_));
    }
    for (const QString& text : parser.values(heightAt_)) {
        call.places.push_back(PlaceOf(heightAt_, text));
    }
    call.sectionTable = FileOf(parser, table_);
    call.sectionPicture = PictureOf(parser, picture_);
    call.differenceSheet = PictureOf(parser, differenceSheet_);
    if (parser.isSet(exaggeration_) && parser.isSet(picture_)) {
        call.exaggeration = NumberOf(exaggeration_, parser.value(exaggeration_), 1e-6, kMostFactor,
                                     QStringLiteral("a factor from 1e-6 to 1e6"));
    }
    RefuseWithoutSubject(parser, call);
    return call;
}

} // namespace terravo
