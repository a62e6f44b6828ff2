#include "app/windows/QtServices.h"

#include "util/StopSignals.h"
#include "util/SystemServices.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QMimeData>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace terravo {
namespace {

QString ToQString(const std::string& text) {
    return QString::fromStdString(text);
}

// "*.dat;*.txt" as Qt writes it: "*.dat *.txt". The pattern for every file has no dot there, since
// names without one are files too.
QString FilterText(const FileFilter& filter) {
    QString patterns = ToQString(filter.patterns);
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    if (patterns == QLatin1String("*.*")) {
        patterns = QStringLiteral("*");
    }
    // A bare extension stands for every file that has it.
    if (patterns.startsWith(QLatin1Char('.'))) {
        patterns.prepend(QLatin1Char('*'));
    }
    const QString description = ToQString(filter.description);
    // Qt takes the patterns from the last brackets of the text; those of the description are shown.
    return description + QStringLiteral(" (") + patterns + QLatin1Char(')');
}

constexpr std::uintmax_t kMostSettings = std::uintmax_t{1} << 20; // bytes; a few hundred are usual

// Where Qt keeps the settings of that name. A name of its own asks: once Qt has opened a pipe in
// the place of the file, it waits for ever.
QString SettingsPath(const QString& name) {
    const QSettings neighbour(QSettings::IniFormat, QSettings::UserScope,
                              name + QStringLiteral(".place"));
    return QFileInfo(neighbour.fileName()).dir().filePath(name + QStringLiteral(".ini"));
}

// True when nothing is there, or a file that Qt can read or replace. Everything else goes aside: Qt
// waits for ever for a writer of a pipe, and for a lock that is a folder.
bool KeptClear(const QString& name, std::uintmax_t mostBytes) {
    namespace fs = std::filesystem;
    const fs::path path = name.toStdString();
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status) ||
        (fs::is_regular_file(status) && fs::file_size(path, error) <= mostBytes)) {
        return true;
    }
    const fs::path aside = path.string() + ".aside";
    fs::rename(path, aside, error);
    StderrLog().Write(path.string() + (error ? ": cannot be used as settings."
                                             : ": set aside as " + aside.string() +
                                                   ", since it holds no settings."));
    return !error;
}

} // namespace

namespace {

void ShowBox(QMessageBox::Icon icon, const char* name, const std::string& text,
             const std::string& title) {
    // The system ends the session: nobody will answer a box.
    if (StopSignals::Received() != 0) {
        std::fprintf(stderr, "terravo: %s\n", text.c_str());
        return;
    }
    QMessageBox box(icon, ToQString(title), ToQString(text), QMessageBox::Ok,
                    QApplication::activeWindow());
    box.setObjectName(QLatin1String(name));
    // Commands show the wait cursor while they work; a question is no work.
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    box.exec();
    QApplication::restoreOverrideCursor();
}

} // namespace

void QtMessages::ShowInformation(const std::string& text, const std::string& title) {
    ShowBox(QMessageBox::Information, "informationMessage", text, title);
}

void QtMessages::ShowCritical(const std::string& text, const std::string& title) {
    ShowBox(QMessageBox::Critical, "criticalMessage", text, title);
}

// An owner of the clipboard that does not answer costs seconds at every question, while nothing
// else happens here: one of them is enough. The list of formats is such a question too.
std::optional<std::string> QtClipboard::Text() const {
    constexpr int kPatienceMilliseconds = 2000;
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr || ownerIsSilent_) {
        return std::nullopt;
    }
    QElapsedTimer waited;
    waited.start();
    const QStringList formats = data->formats();
    const bool hasText = formats.contains(QLatin1String("text/plain")) ||
                         formats.contains(QLatin1String("text/uri-list"));
    const std::string text = hasText ? data->text().toStdString() : std::string();
    ownerIsSilent_ = waited.elapsed() > kPatienceMilliseconds;
    return hasText ? std::optional(text) : std::nullopt;
}

void QtClipboard::SetText(const std::string& text) {
    QGuiApplication::clipboard()->setText(ToQString(text));
}

void QtClipboard::Clear() {
    QGuiApplication::clipboard()->clear();
}

namespace {

// Qt's dialog for new files enters a folder that is there and does not let it be chosen.
class SaveDialog : public QFileDialog {
public:
    SaveDialog(const FileDialogPlan& plan)
        : QFileDialog(QApplication::activeWindow(), ToQString(plan.title), ToQString(plan.folder)),
          isFolder_(plan.isFolder) {}

protected:
    void accept() override {
        const QStringList chosen = selectedFiles();
        if (!isFolder_ || chosen.isEmpty() || !QFileInfo(chosen.first()).isDir()) {
            QFileDialog::accept();
        } else if (!HoldsSets(chosen.first()) || MayReplaceIn(chosen.first())) {
            QDialog::accept();
        }
    }

private:
    static bool HoldsSets(const QString& folder) {
        return !QDir(folder).entryList({QStringLiteral("*.shp")}, QDir::Files).isEmpty();
    }

    // In the words in which Qt asks about files.
    bool MayReplaceIn(const QString& folder) {
        return QMessageBox::warning(
                   this, windowTitle(),
                   QFileDialog::tr("%1 already exists.\nDo you want to replace it?")
                       .arg(QFileInfo(folder).fileName()),
                   QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
    }

    bool isFolder_;
};

} // namespace

std::optional<std::string> QtFileDialogs::Choose(const FileDialogPlan& plan) {
    SaveDialog dialog(plan);
    QStringList filters;
    for (const FileFilter& filter : plan.filters) {
        filters.append(FilterText(filter));
    }
    dialog.setNameFilters(filters);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setAcceptMode(plan.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(plan.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setDefaultSuffix(ToQString(plan.extension));
    if (!plan.name.empty()) {
        dialog.selectFile(ToQString(plan.name));
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return dialog.selectedFiles().first().toStdString();
}

void QtProgramEnd::EndAtOnce() {
    // The windowing system has to hear of a cleared clipboard before the connection goes.
    QApplication::processEvents();
    std::_Exit(EXIT_FAILURE);
}

// With the name in the place of the organisation the file has just that name, in no further folder.
QtSettingsStore::QtSettingsStore() {
    const QString name = QStringLiteral("Terravo Vortak");
    const QString path = SettingsPath(name);
    if (path.isEmpty() ||
        (KeptClear(path, kMostSettings) && KeptClear(path + QStringLiteral(".lock"), 4096))) {
        settings_ = std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, name);
    }
}

QtSettingsStore::~QtSettingsStore() {
    if (settings_) {
        settings_->sync();
        if (settings_->status() == QSettings::AccessError) {
            StderrLog().Write(settings_->fileName().toStdString() +
                              ": the settings cannot be saved.");
        }
    }
}

std::optional<std::string> QtSettingsStore::Get(const std::string& section,
                                                const std::string& key) const {
    const QVariant value =
        settings_ ? settings_->value(ToQString(section + "/" + key)) : QVariant();
    if (!value.isValid()) {
        return std::nullopt;
    }
    return value.toString().toStdString();
}

void QtSettingsStore::Set(const std::string& section, const std::string& key,
                          const std::string& value) {
    if (settings_) {
        settings_->setValue(ToQString(section + "/" + key), ToQString(value));
    }
}

} // namespace terravo
