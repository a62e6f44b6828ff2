#include "app/windows/ImportWords.h"

#include "app/windows/Controls.h"
#include "survey/PointFile.h"
#include "util/NumberText.h"

#include <QStringList>

#include <algorithm>

using terravo::ColumnRole;
using terravo::DoubtKind;
using terravo::Extent;
using terravo::ImportPlan;
using terravo::ImportPreview;
using terravo::LineKind;
using terravo::Misfit;
using terravo::PreviewLine;
using terravo::RunState;
using terravo::Text;

namespace {

Text TextOfDoubt(DoubtKind kind) {
    switch (kind) {
    case DoubtKind::NoRecord:
        return Text::DoubtNoRecord;
    case DoubtKind::NoNumbers:
        return Text::DoubtNoNumbers;
    case DoubtKind::NamedText:
        return Text::DoubtNamedText;
    case DoubtKind::HeaderCount:
        return Text::DoubtHeaderCount;
    case DoubtKind::Names:
        return Text::DoubtNames;
    case DoubtKind::TooFewNumbers:
        return Text::DoubtTooFew;
    case DoubtKind::ManyNumbers:
        return Text::DoubtMany;
    case DoubtKind::CommaOfNumbers:
        return Text::DoubtComma;
    case DoubtKind::None:
        break;
    }
    return Text::ImportCheck;
}

QString Coordinate(double value) {
    return ToQString(terravo::NumberText::FormatScreen(value, "#0.###", '.'));
}

QString ExtentLine(const char* axis, const Extent& extent) {
    return QStringLiteral("\n%1: %2 \u2026 %3")
        .arg(QLatin1String(axis), Coordinate(extent.min), Coordinate(extent.max));
}

// The first of many line numbers.
QString LineList(const std::vector<std::int64_t>& lines, std::int64_t count) {
    constexpr std::size_t kMostNamed = 8;
    QStringList named;
    for (std::size_t i = 0; i < std::min(lines.size(), kMostNamed); ++i) {
        named += QString::number(lines[i]);
    }
    return named.join(QStringLiteral(", ")) + (count > static_cast<std::int64_t>(named.size())
                                                   ? QStringLiteral(" \u2026")
                                                   : QString());
}

} // namespace

QString DoubtSentence(const RunState& state, const terravo::Inspection& inspection) {
    if (inspection.doubtKind == DoubtKind::None && !inspection.doubt.empty()) {
        return ToQString(inspection.doubt);
    }
    QString sentence = Caption(state, TextOfDoubt(inspection.doubtKind));
    for (const std::size_t count : inspection.doubtCounts) {
        if (sentence.contains(QLatin1Char('%'))) {
            sentence = sentence.arg(count);
        }
    }
    return sentence;
}

QString RoleWord(const RunState& state, ColumnRole role) {
    return Caption(state, static_cast<Text>(static_cast<std::size_t>(Text::RoleIgnored) +
                                            static_cast<std::size_t>(role)));
}

QString ColumnsLine(const RunState& state, const std::vector<ColumnRole>& columns) {
    std::vector<ColumnRole> shown = columns;
    while (!shown.empty() && shown.back() == ColumnRole::Ignored) {
        shown.pop_back();
    }
    QStringList words;
    for (const ColumnRole role : shown) {
        words += role == ColumnRole::Ignored ? QStringLiteral("-") : RoleWord(state, role);
    }
    return ToQString(NameOfColumns(shown)) + QStringLiteral(": ") +
           words.join(QStringLiteral(", "));
}

QString LineWord(const RunState& state, LineKind kind) {
    return kind == LineKind::Point
               ? QString()
               : Caption(state, static_cast<Text>(static_cast<std::size_t>(Text::LineHeader) +
                                                  static_cast<std::size_t>(kind) - 1));
}

QString MisfitSentence(const RunState& state, const PreviewLine& line, const ImportPlan& plan) {
    if (line.misfit == Misfit::FieldCount) {
        return Caption(state, Text::BadCount)
            .arg(line.line)
            .arg(line.fieldCount)
            .arg(std::max(plan.fieldCount, plan.columns.size()));
    }
    const std::size_t field = line.misfitField;
    const bool isKept = field >= 1 && field <= line.fields.size();
    return Caption(state, Text::BadField)
        .arg(QString::number(line.line), QString::number(field),
             isKept ? ToQString(line.fields[field - 1]) : QString());
}

QString PointsText(const RunState& state, const ImportPreview& preview) {
    const auto points = static_cast<qlonglong>(preview.points.count);
    QString text =
        preview.isAll || preview.linesRead == 0
            ? Caption(state, Text::PointsRead).arg(points)
            : Caption(state, Text::HeadRead).arg(points).arg(qlonglong{preview.linesRead});
    if (points > 0) {
        text += ExtentLine("x", preview.points.extentX) + ExtentLine("y", preview.points.extentY) +
                ExtentLine("z", preview.points.extentZ);
    }
    return text;
}

QString LeftOutText(const RunState& state, const ImportPreview& preview, const ImportPlan& plan) {
    if (preview.failure) {
        return ToQString(terravo::Explain(*preview.failure, state.texts));
    }
    QStringList lines;
    const auto add = [&](Text text, std::int64_t count) {
        if (count > 0) {
            lines += Caption(state, text).arg(qlonglong{count});
        }
    };
    add(Text::CountBad, preview.badRecords);
    for (const PreviewLine& bad : preview.bad) {
        lines += QStringLiteral("  ") + MisfitSentence(state, bad, plan);
    }
    if (preview.voidHeights > 0) {
        lines += Caption(state, Text::CountNoHeight)
                     .arg(QString::number(preview.voidHeights),
                          LineList(preview.voidLines, preview.voidHeights));
    }
    add(Text::CountHeader, preview.headerLines);
    add(Text::CountComments, preview.commentLines);
    add(Text::CountBlank, preview.blankLines);
    return lines.isEmpty() ? Caption(state, Text::LeftOutNothing) : lines.join(QLatin1Char('\n'));
}
