#include "app/batch/ImportOptions.h"

#include "app/batch/UsageError.h"
#include "survey/import/Records.h"

#include <string_view>
#include <utility>
#include <vector>

namespace terravo {
namespace {

constexpr int kMostSkipped = 1000000;

[[noreturn]] void Refuse(const QString& option, const char* values, const QString& text) {
    throw UsageError(
        QStringLiteral("--%1 takes %2, not \"%3\".").arg(option, QLatin1String(values), text));
}

void ParseColumnsInto(const QString& text, ImportWish& wish) {
    if (text == QLatin1String("auto")) {
        return;
    }
    wish.freeList = text == QLatin1String("free");
    if (!wish.freeList) {
        wish.columns = ParseColumns(text.toStdString());
        if (!wish.columns) {
            Refuse(QStringLiteral("columns"),
                   "auto, free, xyz, yxz, pxyz, pyxz, pnezd, penzd or a list of p, e, n, z, c and "
                   "- with e, n and z once",
                   text);
        }
    }
}

void ParseSeparatorInto(const QString& text, ImportWish& wish) {
    if (text != QLatin1String("auto")) {
        wish.separator = ParseSeparator(text.toStdString());
        if (!wish.separator) {
            Refuse(QStringLiteral("separator"), "auto, comma, semicolon, tab, blank or bar", text);
        }
    }
}

void ParseDecimalInto(const QString& text, ImportWish& wish) {
    if (text == QLatin1String("point")) {
        wish.decimal = '.';
    } else if (text == QLatin1String("comma")) {
        wish.decimal = ',';
    } else if (text != QLatin1String("auto")) {
        Refuse(QStringLiteral("decimal"), "auto, point or comma", text);
    }
}

// UTF-16 of either order is told by the file itself.
void ParseEncodingInto(const QString& text, ImportWish& wish) {
    if (text == QLatin1String("utf-8")) {
        wish.encoding = TextEncoding::Utf8;
    } else if (text == QLatin1String("latin-1")) {
        wish.encoding = TextEncoding::Latin1;
    } else if (text == QLatin1String("utf-16")) {
        wish.encoding = TextEncoding::Utf16Little;
    } else if (text != QLatin1String("auto")) {
        Refuse(QStringLiteral("encoding"), "auto, utf-8, utf-16 or latin-1", text);
    }
}

// A comma in quotes separates nothing.
void ParseVoidsInto(const std::string& text, ImportWish& wish) {
    std::vector<std::string_view> voids;
    if (QuotesOf(text, FieldSeparator::Comma, '.') == Quotes::Open) {
        throw UsageError(QStringLiteral("--void has a quote that is not closed: %1.")
                             .arg(QString::fromStdString(text)));
    }
    SplitRecord(text, FieldSeparator::Comma, voids);
    for (const std::string_view one : voids) {
        if (!one.empty()) {
            wish.voids.push_back(LabelText(one, TextEncoding::Utf8));
        }
    }
}

} // namespace

// A list of numbers has none of what these say; a value that changes nothing does no harm.
void ImportOptions::RefuseBesideFree(const QCommandLineParser& parser) const {
    const auto isSaid = [&parser](const QCommandLineOption& option, const char* nothing) {
        return parser.isSet(option) && parser.value(option) != QLatin1String(nothing);
    };
    for (const auto& [option, nothing] :
         {std::pair(&separator_, "auto"), std::pair(&decimal_, "auto"), std::pair(&skip_, "0"),
          std::pair(&void_, ""), std::pair(&encoding_, "auto"), std::pair(&bad_, "refuse")}) {
        if (isSaid(*option, nothing)) {
            throw UsageError(
                QStringLiteral("--%1 means nothing for a list of numbers (--columns free).")
                    .arg(option->names().first()));
        }
    }
}

std::string ImportOptions::UnusedForGrid(const ImportCall& call) {
    const ImportWish& wish = call.wish;
    return wish.columns                                                              ? "--columns"
           : wish.separator.value_or(FieldSeparator::Blank) != FieldSeparator::Blank ? "--separator"
           : wish.skip.value_or(0) != 0                                              ? "--skip"
           : call.bad == BadRecords::Skip ? "--bad-records"
                                          : "";
}

std::string ImportOptions::FirstIn(const ImportCall& call) {
    const ImportWish& wish = call.wish;
    return wish.columns || wish.freeList  ? "--columns"
           : wish.separator               ? "--separator"
           : wish.decimal                 ? "--decimal"
           : wish.skip                    ? "--skip"
           : !wish.voids.empty()          ? "--void"
           : wish.encoding                ? "--encoding"
           : call.bad == BadRecords::Skip ? "--bad-records"
                                          : "";
}

void ImportOptions::AddTo(QCommandLineParser& parser) const {
    parser.addOptions({columns_, separator_, decimal_, skip_, void_, encoding_, bad_});
}

ImportCall ImportOptions::Parse(const QCommandLineParser& parser) const {
    ImportCall call;
    ParseColumnsInto(parser.value(columns_), call.wish);
    ParseSeparatorInto(parser.value(separator_), call.wish);
    ParseDecimalInto(parser.value(decimal_), call.wish);
    ParseEncodingInto(parser.value(encoding_), call.wish);
    if (parser.isSet(skip_)) {
        bool isNumber = false;
        const int lines = parser.value(skip_).toInt(&isNumber);
        if (!isNumber || lines < 0 || lines > kMostSkipped) {
            Refuse(QStringLiteral("skip"), "a whole number from 0 to 1000000", parser.value(skip_));
        }
        call.wish.skip = lines;
    }
    ParseVoidsInto(parser.value(void_).toStdString(), call.wish);
    const QString bad = parser.value(bad_);
    if (bad != QLatin1String("refuse") && bad != QLatin1String("skip")) {
        Refuse(QStringLiteral("bad-records"), "refuse or skip", bad);
    }
    call.bad = bad == QLatin1String("skip") ? BadRecords::Skip : BadRecords::Refuse;
    if (call.wish.freeList) {
        RefuseBesideFree(parser);
    }
    return call;
}

} // namespace terravo
