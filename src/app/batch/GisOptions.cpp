#include "app/batch/GisOptions.h"

#include "app/batch/UsageError.h"

namespace terravo {
namespace {

int ParseEpsg(const QString& text) {
    constexpr int kMostCode = 1000000;
    const QString prefix = QStringLiteral("EPSG:");
    bool isNumber = false;
    const int code =
        text.startsWith(prefix, Qt::CaseInsensitive) ? text.mid(prefix.size()).toInt(&isNumber) : 0;
    if (!isNumber || code < 1 || code > kMostCode) {
        throw UsageError(
            QStringLiteral("--to-crs takes EPSG: and a number, such as EPSG:25832, or none, not "
                           "\"%1\".")
                .arg(text));
    }
    return code;
}

} // namespace

void GisOptions::AddTo(QCommandLineParser& parser) const {
    parser.addOptions({layer_, heightField_, toCrs_, rasterStep_});
}

GisPlan GisOptions::Parse(const QCommandLineParser& parser) const {
    GisPlan plan;
    for (const QString& layer : parser.values(layer_)) {
        plan.layers.push_back(layer.toStdString());
    }
    plan.heightField = parser.value(heightField_).toStdString();
    if (parser.isSet(heightField_) && plan.heightField.empty()) {
        throw UsageError(QStringLiteral("--height-field needs the name of an attribute."));
    }
    const QString system = parser.value(toCrs_);
    if (system == QLatin1String("none")) {
        plan.degreesAsTheyAre = true;
    } else if (parser.isSet(toCrs_)) {
        plan.toEpsg = ParseEpsg(system);
    }
    if (parser.isSet(rasterStep_)) {
        bool isNumber = false;
        plan.rasterStep = parser.value(rasterStep_).toInt(&isNumber);
        if (!isNumber || *plan.rasterStep < 1 || *plan.rasterStep > kMostRasterStep) {
            throw UsageError(
                QStringLiteral("--raster-step takes a whole number from 1 to %1, not \"%2\".")
                    .arg(kMostRasterStep)
                    .arg(parser.value(rasterStep_)));
        }
    }
    return plan;
}

std::string GisOptions::FirstIn(const GisPlan& plan) {
    return !plan.layers.empty()                   ? "--layer"
           : !plan.heightField.empty()            ? "--height-field"
           : plan.toEpsg || plan.degreesAsTheyAre ? "--to-crs"
           : plan.rasterStep                      ? "--raster-step"
                                                  : "";
}

} // namespace terravo
