#include "app/windows/QtTexts.h"

#include <QLibraryInfo>
#include <QLocale>

std::unique_ptr<QTranslator> QtTextsIn(const std::string& prefix) {
    const QLocale locale(QString::fromStdString(prefix));
    auto texts = std::make_unique<QTranslator>();
    const bool isLoaded = locale.language() != QLocale::C &&
                          locale.language() != QLocale::English &&
                          texts->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                                      QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    return isLoaded ? std::move(texts) : nullptr;
}
