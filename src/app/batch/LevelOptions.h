// The options of terravo-batch that say where the levels lie.
//
// Data: the texts of the command line. Method: at most one rule may be given; whether it fits the
// heights shows when the points have been read.
#pragma once

#include "contour/LevelRule.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

namespace terravo {

class LevelOptions {
public:
    void AddTo(QCommandLineParser& parser) const;

    /// Whether the call says which levels it wants.
    [[nodiscard]] bool AreChosen(const QCommandLineParser& parser) const {
        return parser.isSet(levels_) || parser.isSet(interval_) || parser.isSet(list_);
    }
    /// Throws UsageError.
    [[nodiscard]] LevelRule Parse(const QCommandLineParser& parser) const;

private:
    void RefuseContradictions(const QCommandLineParser& parser) const;

    QCommandLineOption levels_{
        QStringLiteral("levels"),
        QStringLiteral("Number of levels from the lowest to the highest point, 2 to %1. "
                       "Default: 10.")
            .arg(kMostLevels),
        QStringLiteral("n"), QStringLiteral("10")};
    QCommandLineOption interval_{
        QStringLiteral("interval"),
        QStringLiteral("Levels at the multiples of <d> between the lowest and the highest point."),
        QStringLiteral("d")};
    QCommandLineOption base_{
        QStringLiteral("base"),
        QStringLiteral("Height from which the interval counts, up and down. Default: 0."),
        QStringLiteral("b"), QStringLiteral("0")};
    QCommandLineOption list_{
        QStringLiteral("level-list"),
        QStringLiteral("Levels at these heights, separated by commas; those between the lowest and "
                       "the highest point count."),
        QStringLiteral("a,b,c")};
};

} // namespace terravo
