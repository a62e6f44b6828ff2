// A wrong command line, with its sentence.
#pragma once

#include <QString>

#include <stdexcept>

namespace terravo {

class UsageError : public std::runtime_error {
public:
    explicit UsageError(const QString& sentence) : std::runtime_error(sentence.toStdString()) {}
};

} // namespace terravo
