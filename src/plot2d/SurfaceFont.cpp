#include "plot2d/SurfaceFont.h"

#include <QFontDatabase>

namespace terravo {
namespace {

// The family that stands in where the named one is not installed.
QString AvailableFamily(const std::string& name) {
    QString family = SurfaceText(name);
    if (QFontDatabase::hasFamily(family)) {
        return family;
    }
    if (name == "MS Sans Serif") {
        return QStringLiteral("Liberation Sans");
    }
    if (name == "Courier New") {
        return QStringLiteral("Liberation Mono");
    }
    return family;
}

} // namespace

QFont MakeSurfaceFont(const Font& font) {
    QFont made(AvailableFamily(font.name));
    made.setPixelSize(font.pixelSize);
    made.setBold(font.bold);
    made.setStyleStrategy(QFont::NoAntialias);
    made.setHintingPreference(QFont::PreferFullHinting);
    made.setKerning(false);
    return made;
}

QString SurfaceText(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString PrintableText(std::string_view utf8) {
    QString text = SurfaceText(utf8);
    for (QChar& character : text) {
        if (character.unicode() < u' ' || character.unicode() >= 0xFFFE) {
            character = u' ';
        }
    }
    return text;
}

} // namespace terravo
