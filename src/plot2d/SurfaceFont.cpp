#include "plot2d/SurfaceFont.h"

#include "plot2d/FontRules.h"

#include <QFile>
#include <QFontDatabase>

namespace terravo {
namespace {

constexpr std::string_view kShippedName = "Liberation"; // as the font files have it
constexpr std::string_view kOwnName = "TerravoMap";
static_assert(kOwnName.size() == kShippedName.size(),
              "the tables of a font file keep their places");

QByteArray InTwoBytes(std::string_view letters) {
    QByteArray bytes;
    for (const char letter : letters) {
        bytes.append('\0').append(letter);
    }
    return bytes;
}

// An installed font of the same name, of another version perhaps, would come before the shipped
// one. A font file has its names in one and in two bytes a letter.
QByteArray UnderOwnName(QByteArray font) {
    font.replace(InTwoBytes(kShippedName), InTwoBytes(kOwnName));
    font.replace(QByteArrayView(kShippedName), QByteArrayView(kOwnName));
    return font;
}

void LoadShippedFonts() {
    for (const char* name : {"Sans-Regular", "Sans-Bold", "Mono-Regular", "Mono-Bold"}) {
        QFile file(QStringLiteral(":/fonts/Liberation%1.ttf").arg(QLatin1String(name)));
        if (file.open(QIODevice::ReadOnly)) {
            QFontDatabase::addApplicationFontFromData(UnderOwnName(file.readAll()));
        }
    }
    for (const char* kind : {"Sans", "Mono"}) {
        KeepFromFontRules(std::string(kOwnName) + " " + kind);
    }
}

// Sans or Mono; nothing for any other font.
QString KindOf(const std::string& name) {
    if (name == "MS Sans Serif") {
        return QStringLiteral("Sans");
    }
    return name == "Courier New" ? QStringLiteral("Mono") : QString();
}

QString Family(std::string_view name, const QString& kind) {
    return SurfaceText(name) + QLatin1Char(' ') + kind;
}

// The installed font of the same kind comes next, for the letters that the shipped one lacks.
QStringList FamiliesOf(const std::string& name) {
    const QString kind = KindOf(name);
    return kind.isEmpty() ? QStringList{SurfaceText(name)}
                          : QStringList{Family(kOwnName, kind), Family(kShippedName, kind)};
}

} // namespace

void LoadSurfaceFonts() {
    [[maybe_unused]] static const bool loaded = (LoadShippedFonts(), true);
}

QFont MakeSurfaceFont(const Font& font) {
    LoadSurfaceFonts();
    QFont made(FamiliesOf(font.name));
    made.setPixelSize(font.pixelSize);
    made.setBold(font.bold);
    made.setStyleStrategy(QFont::NoAntialias);
    made.setHintingPreference(QFont::PreferFullHinting);
    made.setKerning(false);
    return made;
}

QString PublicFamily(const Font& font) {
    const QString kind = KindOf(font.name);
    return kind.isEmpty() ? SurfaceText(font.name) : Family(kShippedName, kind);
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
