#include "app/batch/TerrainOptions.h"

#include "app/batch/UsageError.h"
#include "view3d/terrain/TerrainCamera.h"

#include <QFileInfo>

#include <array>

namespace terravo {
namespace {

TerrainDirection DirectionOf(const QCommandLineOption& option, const QString& text) {
    const QStringList parts = text.split(QLatin1Char(','));
    std::array<double, 2> degrees{};
    bool isGood = parts.size() == 2;
    for (qsizetype i = 0; isGood && i < 2; ++i) {
        degrees[static_cast<std::size_t>(i)] = parts[i].toDouble(&isGood);
    }
    if (!isGood || !(degrees[0] >= -360 && degrees[0] <= 360) ||
        !(degrees[1] >= 0 && degrees[1] <= 90)) {
        Refuse(option, QStringLiteral("an azimuth from -360 to 360 and an elevation from 0 to 90"),
               text);
    }
    return {degrees[0], degrees[1]};
}

TerrainColouring ColouringOf(const QCommandLineOption& option, const QString& text) {
    const QStringList names{QStringLiteral("height"), QStringLiteral("slope"),
                            QStringLiteral("aspect"), QStringLiteral("plain")};
    const qsizetype place = names.indexOf(text);
    if (place < 0) {
        Refuse(option, names.join(QStringLiteral(", ")), text);
    }
    return static_cast<TerrainColouring>(place);
}

} // namespace

void TerrainOptions::AddTo(QCommandLineParser& parser) const {
    parser.addOptions({terrain_, view_, colour_});
}

TerrainCall TerrainOptions::Parse(const QCommandLineParser& parser,
                                  const QCommandLineOption& exaggeration) const {
    TerrainCall call;
    if (!parser.isSet(terrain_)) {
        for (const QCommandLineOption* option : {&view_, &colour_}) {
            if (parser.isSet(*option)) {
                throw UsageError(QStringLiteral("--%1 means nothing without --terrain.")
                                     .arg(option->names().last()));
            }
        }
        return call;
    }
    const QString file = parser.value(terrain_);
    if (file.isEmpty()) {
        throw UsageError(QStringLiteral("--terrain needs a file name."));
    }
    const QString suffix = QFileInfo(file).suffix().toLower();
    if (!suffix.isEmpty() && suffix != QLatin1String("png")) {
        throw UsageError(
            QStringLiteral("The terrain is written as PNG, not as a \"%1\" file.").arg(suffix));
    }
    call.file = file.toStdString();
    if (parser.isSet(view_)) {
        call.view = DirectionOf(view_, parser.value(view_));
    }
    if (parser.isSet(colour_)) {
        call.plan.colouring = ColouringOf(colour_, parser.value(colour_));
    }
    if (parser.isSet(exaggeration)) {
        bool isNumber = false;
        const double factor = parser.value(exaggeration).toDouble(&isNumber);
        if (!isNumber || !(factor >= TerrainCamera::kLeastExaggeration &&
                           factor <= TerrainCamera::kMostExaggeration)) {
            Refuse(exaggeration,
                   QStringLiteral("a factor from %1 to %2 for a terrain")
                       .arg(TerrainCamera::kLeastExaggeration)
                       .arg(TerrainCamera::kMostExaggeration),
                   parser.value(exaggeration));
        }
        call.exaggeration = factor;
    }
    return call;
}

} // namespace terravo
