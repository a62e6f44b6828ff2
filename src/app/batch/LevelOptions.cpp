#include "app/batch/LevelOptions.h"

#include "app/batch/UsageError.h"
#include "contour/LevelRuleText.h"

namespace terravo {
namespace {

Index ParseCount(const QString& text) {
    bool isNumber = false;
    const qlonglong count = text.toLongLong(&isNumber);
    if (!isNumber || count < kFewestLevels || count > kMostLevels) {
        throw UsageError(QStringLiteral("--levels takes a whole number from %1 to %2, not \"%3\".")
                             .arg(kFewestLevels)
                             .arg(kMostLevels)
                             .arg(text));
    }
    return static_cast<Index>(count);
}

double ParseOne(const char* option, const QString& text) {
    const std::optional<double> value = ParseLevelNumber(text.toStdString(), '.');
    if (!value) {
        throw UsageError(
            QStringLiteral("--%1 takes a number, not \"%2\".").arg(QLatin1String(option), text));
    }
    return *value;
}

std::vector<double> ParseList(const QString& text) {
    const auto values = ParseLevelList(text.toStdString(), '.');
    if (!values) {
        throw UsageError(
            QStringLiteral("--level-list takes heights separated by commas, not \"%1\".")
                .arg(text));
    }
    return *values;
}

} // namespace

void LevelOptions::AddTo(QCommandLineParser& parser) const {
    parser.addOptions({levels_, interval_, base_, list_});
}

void LevelOptions::RefuseContradictions(const QCommandLineParser& parser) const {
    if (parser.isSet(levels_) + parser.isSet(interval_) + parser.isSet(list_) > 1) {
        throw UsageError(QStringLiteral(
            "--levels, --interval and --level-list contradict each other: give one of them."));
    }
    if (parser.isSet(base_) && !parser.isSet(interval_)) {
        throw UsageError(QStringLiteral("--base needs an --interval that counts from it."));
    }
}

LevelRule LevelOptions::Parse(const QCommandLineParser& parser) const {
    RefuseContradictions(parser);
    LevelRule rule = RuleByCount(ParseCount(parser.value(levels_)));
    if (parser.isSet(interval_)) {
        rule = RuleByInterval(ParseOne("interval", parser.value(interval_)),
                              ParseOne("base", parser.value(base_)));
    } else if (parser.isSet(list_)) {
        rule = RuleByList(ParseList(parser.value(list_)));
    }
    const LevelFault fault = FaultOf(rule);
    if (fault != LevelFault::None) {
        throw UsageError(QString::fromStdString(SentenceOf(fault, rule, {}, TextCatalogue(), '.')));
    }
    return rule;
}

} // namespace terravo
