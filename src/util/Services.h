// What the core asks of the world outside: small interfaces, implemented with Qt by the programs
// and by fakes in the tests.
//
// They arrive by reference, so that a routine of the core can report or end the run without
// knowing a window.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace terravo {

/// What a message box shows. A routine that cannot go on returns one; whoever called it shows it.
struct Message {
    std::string text;
    std::string title;

    bool operator==(const Message&) const = default;
};

/// Message boxes.
class MessageService {
public:
    virtual ~MessageService() = default;
    /// Says what the user should know of something that was done.
    virtual void ShowInformation(const std::string& text, const std::string& title) = 0;
    /// With the critical icon.
    virtual void ShowCritical(const std::string& text, const std::string& title) = 0;
};

/// The system clipboard, plain text.
class ClipboardService {
public:
    virtual ~ClipboardService() = default;
    /// The text on the clipboard, UTF-8; nothing when it holds something else or is empty.
    [[nodiscard]] virtual std::optional<std::string> Text() const = 0;
    virtual void SetText(const std::string& text) = 0;
    virtual void Clear() = 0;
};

/// One filter of a file dialog: what it is called and the patterns it shows, separated by ";".
struct FileFilter {
    std::string description;
    std::string patterns;

    bool operator==(const FileFilter&) const = default;
};

/// Everything that a file dialog is opened with.
struct FileDialogPlan {
    bool save = false; // else open: the file must exist; saving over a file asks first
    std::vector<FileFilter> filters; // the first one is chosen
    std::string folder;
    std::string name; // in the name box
    std::string title;
    std::string extension; // without its point: what a name without one gets, before the question
                           // about overwriting
    bool isFolder = false; // of a save: a folder is chosen, which may be there already
};

/// The system's file dialog.
class FileDialogService {
public:
    virtual ~FileDialogService() = default;
    /// @return the chosen path; nothing when the user cancels. Throws AppError when it cannot open.
    virtual std::optional<std::string> Choose(const FileDialogPlan& plan) = 0;
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
