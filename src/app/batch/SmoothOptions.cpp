#include "app/batch/SmoothOptions.h"

#include "app/batch/UsageError.h"

#include <algorithm>

namespace terravo {
namespace {

QString NameOfOption(const QCommandLineOption& option) {
    return option.names().last();
}

template <class IsAllowed>
double NumberOf(const QCommandLineParser& parser, const QCommandLineOption& option,
                const QString& wanted, const IsAllowed& isAllowed) {
    bool isNumber = false;
    const QString text = parser.value(option);
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !isAllowed(value)) {
        throw UsageError(
            QStringLiteral("--%1 takes %2, not \"%3\".").arg(NameOfOption(option), wanted, text));
    }
    return value;
}

double NumberWithin(const QCommandLineParser& parser, const QCommandLineOption& option, double low,
                    double high) {
    return NumberOf(parser, option, QStringLiteral("a number from %1 to %2").arg(low).arg(high),
                    [&](double value) { return value >= low && value <= high; });
}

bool AnyTakesSmoothLines(const ExchangeCall& vectors) {
    return std::any_of(vectors.files.begin(), vectors.files.end(), [](const ExchangeFile& file) {
        return TakesSmoothLines(*file.format, file.parts);
    });
}

} // namespace

void SmoothOptions::AddTo(QCommandLineParser& parser) const {
    parser.addOptions({smooth_, smoothness_, goal_, limit_, flatten_, fewer_, verify_});
}

void SmoothOptions::RefuseWithoutSmooth(const QCommandLineParser& parser) const {
    for (const QCommandLineOption* option :
         {&smoothness_, &goal_, &limit_, &flatten_, &fewer_, &verify_}) {
        if (parser.isSet(*option)) {
            throw UsageError(QStringLiteral("--%1 is for smooth contours: --smooth F, more than 0, "
                                            "makes them.")
                                 .arg(NameOfOption(*option)));
        }
    }
}

SmoothingOptions SmoothOptions::ParseLines(const QCommandLineParser& parser,
                                           double fraction) const {
    constexpr double kSmoothnessOfSurface = 0.4;
    constexpr double kLeastLimit = 1e-9;
    constexpr double kMostLimit = 1e9;
    SmoothingOptions options;
    options.fraction = std::clamp(fraction, kLeastFraction, kMostFraction);
    const QString goal = parser.value(goal_);
    if (goal == QLatin1String("surface")) {
        options.goal = SmoothingGoal::Surface;
        options.smoothness = kSmoothnessOfSurface;
    } else if (goal != QLatin1String("plain")) {
        throw UsageError(
            QStringLiteral("--smooth-goal takes plain or surface, not \"%1\".").arg(goal));
    }
    if (parser.isSet(smoothness_)) {
        options.smoothness = NumberWithin(parser, smoothness_, 0, 1);
    }
    if (parser.isSet(limit_)) {
        options.limit = NumberWithin(parser, limit_, kLeastLimit, kMostLimit);
    }
    return options;
}

SmoothCall SmoothOptions::Parse(const QCommandLineParser& parser, bool hasPicture,
                                const ExchangeCall& vectors) const {
    constexpr double kTooMuch = 0.5; // neighbours could meet halfway
    SmoothCall call;
    call.isChosen = parser.isSet(smooth_);
    const double fraction =
        NumberOf(parser, smooth_, QStringLiteral("a number from 0 to less than 0.5"),
                 [](double value) { return value >= 0 && value < kTooMuch; });
    if (!(fraction > 0)) {
        RefuseWithoutSmooth(parser);
        return call;
    }
    call.options = ParseLines(parser, fraction);
    call.verify = parser.isSet(verify_);
    const bool isInFiles = AnyTakesSmoothLines(vectors);
    if (!hasPicture && !isInFiles) {
        throw UsageError(QStringLiteral(
            "--smooth is for contours on a sheet, a terrain or in vector files other "
            "than LandXML: --sheet FILE writes them, or --dxf FILE, for example, with "
            "contours or bands in its --content."));
    }
    for (const QCommandLineOption* option : {&flatten_, &fewer_}) {
        if (parser.isSet(*option) && !isInFiles) {
            throw UsageError(QStringLiteral("--%1 is for smooth contours in vector files: --dxf "
                                            "FILE or another such option writes one.")
                                 .arg(NameOfOption(*option)));
        }
    }
    call.fewerVertices = parser.isSet(fewer_);
    if (parser.isSet(flatten_)) {
        call.tolerance = NumberWithin(parser, flatten_, kLeastTolerance, kMostTolerance);
    }
    return call;
}

} // namespace terravo
