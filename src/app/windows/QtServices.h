// The services of the core, done with Qt.
#pragma once

#include "util/Services.h"
#include "util/SettingsStore.h"

#include <QSettings>

#include <memory>

namespace terravo {

/// Message boxes, over the window that is active.
class QtMessages : public MessageService {
public:
    void ShowInformation(const std::string& text, const std::string& title) override;
    void ShowCritical(const std::string& text, const std::string& title) override;
};

class QtClipboard : public ClipboardService {
public:
    [[nodiscard]] std::optional<std::string> Text() const override;
    void SetText(const std::string& text) override;
    void Clear() override;

private:
    mutable bool ownerIsSilent_ = false;
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

/// Per-user settings in one INI file named after the program; sections are its groups. What is in
/// the place of that file and cannot be it (a pipe, a folder, a file of megabytes) is set aside
/// under another name; where that fails, this run has no settings.
class QtSettingsStore : public SettingsStore {
public:
    QtSettingsStore();
    QtSettingsStore(const QtSettingsStore&) = delete;
    QtSettingsStore& operator=(const QtSettingsStore&) = delete;
    /// Writes what was set; tells on standard error when that fails.
    ~QtSettingsStore() override;
    [[nodiscard]] std::optional<std::string> Get(const std::string& section,
                                                 const std::string& key) const override;
    void Set(const std::string& section, const std::string& key, const std::string& value) override;

private:
    std::unique_ptr<QSettings> settings_; // none where the file cannot be used
};

} // namespace terravo
