// A wrong command line, with its sentence.
#pragma once

#include <QCommandLineOption>
#include <QString>

#include <stdexcept>

namespace terravo {

class UsageError : public std::runtime_error {
public:
    explicit UsageError(const QString& sentence) : std::runtime_error(sentence.toStdString()) {}
};

/// Throws for the value of an option that is not what it takes.
[[noreturn]] inline void Refuse(const QCommandLineOption& option, const QString& wanted,
                                const QString& text) {
    throw UsageError(
        QStringLiteral("--%1 takes %2, not \"%3\".").arg(option.names().last(), wanted, text));
}

} // namespace terravo
