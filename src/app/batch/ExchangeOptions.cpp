#include "app/batch/ExchangeOptions.h"

#include "app/batch/UsageError.h"
#include "exchange/VectorFormats.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace terravo {
namespace {

QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString NameOfOption(const QCommandLineOption& option) {
    return option.names().last();
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

// Its points are crossings for the most part, which have neither names nor heights to be read.
VectorParts PartsOfDifference(const VectorFormat& format) {
    const VectorParts parts{VectorPart::Contours, VectorPart::IndexContours, VectorPart::Labels,
                            VectorPart::Bands,    VectorPart::Triangles,     VectorPart::Hull};
    const VectorParts usual = format.usual.And(parts);
    return usual.IsEmpty() ? format.usual : usual;
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
    parser.addOptions({difference_, content_, dxfVersion_, dxf3D_, layerPerLevel_, units_, crs_,
                       decimals_, noVerify_});
}

QStringList ExchangeOptions::FileNames() const {
    QStringList names;
    for (const QCommandLineOption& file : files_) {
        names += NameOfOption(file);
    }
    return names;
}

bool ExchangeOptions::AreWanted(const QCommandLineParser& parser) const {
    return parser.isSet(difference_) ||
           std::any_of(files_.begin(), files_.end(),
                       [&](const QCommandLineOption& file) { return parser.isSet(file); });
}

void ExchangeOptions::RefuseWithoutFiles(const QCommandLineParser& parser, bool namesUnit) const {
    for (const QCommandLineOption* option : {&content_, &dxfVersion_, &dxf3D_, &layerPerLevel_,
                                             &units_, &crs_, &decimals_, &noVerify_}) {
        if (parser.isSet(*option) && !(namesUnit && option == &units_)) {
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

// The first format of an extension; the tables of contours and triangles have an option alone.
std::optional<ExchangeFile>
ExchangeOptions::ParseDifference(const QCommandLineParser& parser) const {
    if (!parser.isSet(difference_)) {
        return std::nullopt;
    }
    const QString path = parser.value(difference_);
    const std::string extension = QFileInfo(path).suffix().toLower().toStdString();
    QStringList known;
    for (const VectorFormat& format : VectorFormats()) {
        if (!format.extension.empty() && format.extension == extension) {
            return ExchangeFile{&format, path.toStdString(), PartsOfDifference(format)};
        }
        if (!format.extension.empty() && !known.contains(ToQString(format.extension))) {
            known.append(ToQString(format.extension));
        }
    }
    Refuse(difference_,
           QStringLiteral("a file whose name ends in ") + known.join(QStringLiteral(", ")), path);
}

void ExchangeOptions::ParseContent(const QCommandLineParser& parser, ExchangeFile& file) const {
    if (!parser.isSet(content_)) {
        return;
    }
    const QString list = parser.value(content_);
    const std::optional<VectorParts> parts = ParseVectorParts(list.toStdString());
    if (!parts) {
        Refuse(content_, NamesOf(EveryPart()), list);
    }
    file.parts = parts->And(file.format->known);
    if (file.parts.IsEmpty()) {
        throw UsageError(
            QStringLiteral("--%1 can hold none of \"%2\", only: %3.")
                .arg(ToQString(file.format->option), list, NamesOf(file.format->known)));
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

void ExchangeOptions::ParseWish(const QCommandLineParser& parser, VectorWish& wish) const {
    if (parser.isSet(crs_)) {
        wish.epsg = CodeOf(parser, crs_);
    }
    if (parser.isSet(decimals_)) {
        wish.decimals = WholeNumberOf(parser, decimals_, kMostVectorDecimals);
    }
}

void ExchangeOptions::ParseUnit(const QCommandLineParser& parser, ExchangeCall& call) const {
    call.wish.unit = UnitOf(parser, units_);
    call.unitIsChosen = parser.isSet(units_);
}

ExchangeCall ExchangeOptions::Parse(const QCommandLineParser& parser, bool namesUnit,
                                    const QCommandLineOption& textHeight,
                                    const QCommandLineOption& indexEvery) const {
    ExchangeCall call;
    if (!AreWanted(parser)) {
        RefuseWithoutFiles(parser, namesUnit);
        ParseUnit(parser, call);
        return call;
    }
    call.files = ParseFiles(parser);
    call.difference = ParseDifference(parser);
    bool hasDxf = false;
    const auto take = [&](ExchangeFile& file) {
        ParseContent(parser, file);
        hasDxf = hasDxf || file.format->option == "dxf";
    };
    for (ExchangeFile& file : call.files) {
        take(file);
        call.wish.parts.Add(file.parts);
    }
    if (call.difference) {
        take(*call.difference);
    }
    if (hasDxf) {
        ParseDxf(parser, call.options);
    } else {
        RefuseWithoutDxf(parser);
    }
    ParseUnit(parser, call);
    ParseWish(parser, call.wish);
    if (parser.isSet(textHeight)) {
        call.wish.textHeight = NumberOf(parser, textHeight, kLeastTextHeight, kMostTextHeight);
    }
    call.wish.indexEvery = WholeNumberOf(parser, indexEvery, 100000);
    call.verify = !parser.isSet(noVerify_);
    return call;
}

} // namespace terravo
