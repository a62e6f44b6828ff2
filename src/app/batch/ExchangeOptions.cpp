#include "app/batch/ExchangeOptions.h"

#include "app/batch/UsageError.h"
#include "exchange/VectorFormats.h"

#include <QStringList>

namespace terravo {
namespace {

QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString NameOfOption(const QCommandLineOption& option) {
    return option.names().last();
}

[[noreturn]] void Refuse(const QCommandLineOption& option, const QString& values,
                         const QString& text) {
    throw UsageError(
        QStringLiteral("--%1 takes %2, not \"%3\".").arg(NameOfOption(option), values, text));
}

QString NamesOf(const VectorParts& parts) {
    QStringList names;
    for (const VectorPart part : AllVectorParts()) {
        if (parts.Has(part)) {
            names.append(QLatin1String(NameOf(part)));
        }
    }
    return names.join(QStringLiteral(", "));
}

VectorParts EveryPart() {
    VectorParts every;
    for (const VectorPart part : AllVectorParts()) {
        every.Add(part);
    }
    return every;
}

double NumberOf(const QCommandLineParser& parser, const QCommandLineOption& option, double low,
                double high) {
    bool isNumber = false;
    const QString text = parser.value(option);
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !(value >= low && value <= high)) {
        Refuse(option, QStringLiteral("a number from %1 to %2").arg(low).arg(high), text);
    }
    return value;
}

int WholeNumberOf(const QCommandLineParser& parser, const QCommandLineOption& option, int most) {
    bool isNumber = false;
    const QString text = parser.value(option);
    const int value = text.toInt(&isNumber);
    if (!isNumber || value < 0 || value > most) {
        Refuse(option, QStringLiteral("a whole number from 0 to %1").arg(most), text);
    }
    return value;
}

LengthUnit UnitOf(const QCommandLineParser& parser, const QCommandLineOption& option) {
    const QString text = parser.value(option);
    if (text == QLatin1String("metre")) {
        return LengthUnit::Metre;
    }
    if (text == QLatin1String("foot")) {
        return LengthUnit::Foot;
    }
    if (text != QLatin1String("us-foot")) {
        Refuse(option, QStringLiteral("metre, foot or us-foot"), text);
    }
    return LengthUnit::UsSurveyFoot;
}

// "EPSG:25832" in any case.
int CodeOf(const QCommandLineParser& parser, const QCommandLineOption& option) {
    const QString text = parser.value(option);
    bool isNumber = false;
    const int code = text.mid(5).toInt(&isNumber);
    if (!text.startsWith(QLatin1String("EPSG:"), Qt::CaseInsensitive) || !isNumber || code < 1 ||
        code > kLargestEpsg) {
        Refuse(option, QStringLiteral("EPSG: and a number, such as EPSG:25832"), text);
    }
    return code;
}

} // namespace

ExchangeOptions::ExchangeOptions()
    : content_(QStringLiteral("content"),
               QStringLiteral("What the vector files hold, separated by commas: %1. Default: what "
                              "is usual for each.")
                   .arg(NamesOf(EveryPart())),
               QStringLiteral("list")) {
    for (const VectorFormat& format : VectorFormats()) {
        files_.emplace_back(ToQString(format.option), ToQString(format.help),
                            format.extension.empty() ? QStringLiteral("folder")
                                                     : QStringLiteral("file"));
    }
}

void ExchangeOptions::AddTo(QCommandLineParser& parser) const {
    for (const QCommandLineOption& file : files_) {
        parser.addOption(file);
    }
    parser.addOptions(
        {content_, dxfVersion_, dxf3D_, layerPerLevel_, units_, crs_, decimals_, noVerify_});
}

bool ExchangeOptions::AreWanted(const QCommandLineParser& parser) const {
    for (const QCommandLineOption& file : files_) {
        if (parser.isSet(file)) {
            return true;
        }
    }
    return false;
}

void ExchangeOptions::RefuseWithoutFiles(const QCommandLineParser& parser) const {
    for (const QCommandLineOption* option : {&content_, &dxfVersion_, &dxf3D_, &layerPerLevel_,
                                             &units_, &crs_, &decimals_, &noVerify_}) {
        if (parser.isSet(*option)) {
            throw UsageError(
                QStringLiteral("--%1 is for vector files: --dxf FILE or another such option "
                               "writes one.")
                    .arg(NameOfOption(*option)));
        }
    }
}

std::vector<ExchangeFile> ExchangeOptions::ParseFiles(const QCommandLineParser& parser) const {
    std::vector<ExchangeFile> files;
    for (std::size_t i = 0; i < files_.size(); ++i) {
        if (!parser.isSet(files_[i])) {
            continue;
        }
        const VectorFormat& format = VectorFormats()[i];
        const std::string path = parser.value(files_[i]).toStdString();
        if (path.empty()) {
            throw UsageError(
                QStringLiteral("--%1 needs a file name.").arg(NameOfOption(files_[i])));
        }
        files.push_back({&format, path, format.usual});
    }
    return files;
}

void ExchangeOptions::ParseContent(const QCommandLineParser& parser,
                                   std::vector<ExchangeFile>& files) const {
    if (!parser.isSet(content_)) {
        return;
    }
    const QString list = parser.value(content_);
    const std::optional<VectorParts> parts = ParseVectorParts(list.toStdString());
    if (!parts) {
        Refuse(content_, NamesOf(EveryPart()), list);
    }
    for (ExchangeFile& file : files) {
        file.parts = parts->And(file.format->known);
        if (file.parts.IsEmpty()) {
            throw UsageError(
                QStringLiteral("--%1 can hold none of \"%2\", only: %3.")
                    .arg(ToQString(file.format->option), list, NamesOf(file.format->known)));
        }
    }
}

void ExchangeOptions::RefuseWithoutDxf(const QCommandLineParser& parser) const {
    for (const QCommandLineOption* option : {&dxfVersion_, &dxf3D_, &layerPerLevel_}) {
        if (parser.isSet(*option)) {
            throw UsageError(QStringLiteral("--%1 is for a DXF file: --dxf FILE writes one.")
                                 .arg(NameOfOption(*option)));
        }
    }
}

void ExchangeOptions::ParseDxf(const QCommandLineParser& parser, VectorOptions& options) const {
    const QString version = parser.value(dxfVersion_).toLower();
    if (version == QLatin1String("r12")) {
        options.dxfVersion = DxfVersion::R12;
    } else if (version != QLatin1String("r2000")) {
        Refuse(dxfVersion_, QStringLiteral("r2000 or r12"), parser.value(dxfVersion_));
    }
    options.contoursIn3D = parser.isSet(dxf3D_);
    options.layerPerLevel = parser.isSet(layerPerLevel_);
}

ExchangeCall ExchangeOptions::Parse(const QCommandLineParser& parser,
                                    const QCommandLineOption& textHeight,
                                    const QCommandLineOption& indexEvery) const {
    ExchangeCall call;
    if (!AreWanted(parser)) {
        RefuseWithoutFiles(parser);
        return call;
    }
    call.files = ParseFiles(parser);
    ParseContent(parser, call.files);
    bool hasDxf = false;
    for (const ExchangeFile& file : call.files) {
        call.wish.parts.Add(file.parts);
        hasDxf = hasDxf || file.format->option == "dxf";
    }
    if (hasDxf) {
        ParseDxf(parser, call.options);
    } else {
        RefuseWithoutDxf(parser);
    }
    call.wish.unit = UnitOf(parser, units_);
    if (parser.isSet(crs_)) {
        call.wish.epsg = CodeOf(parser, crs_);
    }
    if (parser.isSet(decimals_)) {
        call.wish.decimals = WholeNumberOf(parser, decimals_, kMostVectorDecimals);
    }
    if (parser.isSet(textHeight)) {
        call.wish.textHeight = NumberOf(parser, textHeight, kLeastTextHeight, kMostTextHeight);
    }
    call.wish.indexEvery = WholeNumberOf(parser, indexEvery, 100000);
    call.verify = !parser.isSet(noVerify_);
    return call;
}

} // namespace terravo
