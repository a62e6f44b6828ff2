#include "app/QtServices.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>

#include <cstdlib>

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

} // namespace

void QtMessages::ShowCritical(const std::string& text, const std::string& title) {
    QMessageBox box(QMessageBox::Critical, ToQString(title), ToQString(text), QMessageBox::Ok,
                    QApplication::activeWindow());
    box.setObjectName(QStringLiteral("criticalMessage"));
    // Commands show the wait cursor while they work; a question is no work.
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    box.exec();
    QApplication::restoreOverrideCursor();
}

std::optional<std::string> QtClipboard::Text() const {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr || !data->hasText()) {
        return std::nullopt;
    }
    return data->text().toStdString();
}

void QtClipboard::SetText(const std::string& text) {
    QGuiApplication::clipboard()->setText(ToQString(text));
}

void QtClipboard::Clear() {
    QGuiApplication::clipboard()->clear();
}

std::optional<std::string> QtFileDialogs::Choose(const FileDialogPlan& plan) {
    QFileDialog dialog(QApplication::activeWindow(), ToQString(plan.title), ToQString(plan.folder));
    QStringList filters;
    for (const FileFilter& filter : plan.filters) {
        filters.append(FilterText(filter));
    }
    dialog.setNameFilters(filters);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setAcceptMode(plan.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(plan.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
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
QtSettingsStore::QtSettingsStore()
    : settings_(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Terravo Vortak")) {}

std::optional<std::string> QtSettingsStore::Get(const std::string& section,
                                                const std::string& key) const {
    const QVariant value = settings_.value(ToQString(section + "/" + key));
    if (!value.isValid()) {
        return std::nullopt;
    }
    return value.toString().toStdString();
}

void QtSettingsStore::Set(const std::string& section, const std::string& key,
                          const std::string& value) {
    settings_.setValue(ToQString(section + "/" + key), ToQString(value));
}

} // namespace terravo
