// The services of the core, done with Qt.
#pragma once

#include "util/Services.h"
#include "util/SettingsStore.h"

#include <QPointer>
#include <QSettings>
#include <QWidget>

namespace terravo {

/// Message boxes with the critical icon, over the window that is active.
class QtMessages : public MessageService {
public:
    void ShowCritical(const std::string& text, const std::string& title) override;
};

class QtClipboard : public ClipboardService {
public:
    [[nodiscard]] std::optional<std::string> Text() const override;
    void SetText(const std::string& text) override;
    void Clear() override;
};

class QtFileDialogs : public FileDialogService {
public:
    std::optional<std::string> Choose(const FileDialogPlan& plan) override;
};

/// Ends the process without closing its windows.
class QtProgramEnd : public ProgramEndService {
public:
    void EndAtOnce() override;
};

/// Per-user settings in one INI file named after the program; sections are its groups.
class QtSettingsStore : public SettingsStore {
public:
    QtSettingsStore();
    [[nodiscard]] std::optional<std::string> Get(const std::string& section,
                                                 const std::string& key) const override;
    void Set(const std::string& section, const std::string& key, const std::string& value) override;

private:
    QSettings settings_;
};

} // namespace terravo
