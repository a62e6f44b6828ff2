// What the core asks of the world outside: small interfaces, implemented with Qt by the programs
// and by fakes in the tests.
//
// They arrive by reference, so that a routine of the core can report or end the run without
// knowing a window.
#pragma once

#include <string>

namespace terravo {

/// Message boxes with the critical icon.
class MessageService {
public:
    virtual ~MessageService() = default;
    virtual void ShowCritical(const std::string& text, const std::string& title) = 0;
};

/// The system clipboard.
class ClipboardService {
public:
    virtual ~ClipboardService() = default;
    virtual void Clear() = 0;
};

/// The end of the whole program, at once: nothing is saved.
class ProgramEndService {
public:
    virtual ~ProgramEndService() = default;
    virtual void EndAtOnce() = 0;
};

/// One line a call on standard error: file, line and cause of what went wrong.
class LogService {
public:
    virtual ~LogService() = default;
    virtual void Write(const std::string& line) = 0;
};

/// Time of day.
class ClockService {
public:
    virtual ~ClockService() = default;
    /// Seconds since midnight.
    [[nodiscard]] virtual double SecondsOfDay() const = 0;
};

} // namespace terravo
