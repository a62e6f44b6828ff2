#include "app/windows/PreviewModel.h"

#include "app/windows/ColourContrast.h"
#include "app/windows/Controls.h"
#include "app/windows/ImportWords.h"

#include <QApplication>
#include <QPalette>

using terravo::ColumnRole;
using terravo::LineKind;
using terravo::Misfit;
using terravo::PreviewLine;
using terravo::Text;

namespace {

constexpr double kFaint = 0.45; // of the background in what is not read

bool IsRecord(LineKind kind) {
    return kind == LineKind::Point || kind == LineKind::NoHeight || kind == LineKind::Bad;
}

// Red that is read on dark and on light alike.
QColor Warning(const QColor& back) {
    return back.lightness() < 128 ? QColor(255, 120, 110) : QColor(190, 20, 20);
}

} // namespace

PreviewModel::PreviewModel(const terravo::RunState& state, QObject* parent)
    : QAbstractTableModel(parent), state_(state) {}

void PreviewModel::Show(const terravo::ImportPreview& preview, const terravo::ImportPlan& plan,
                        const std::vector<ColumnRole>& roles) {
    beginResetModel();
    preview_ = preview;
    plan_ = plan;
    roles_ = roles;
    endResetModel();
}

int PreviewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(preview_.lines.size());
}

int PreviewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(preview_.columns) + 1;
}

QString PreviewModel::TextAt(const PreviewLine& line, int column) const {
    if (column > 0) {
        const auto field = static_cast<std::size_t>(column) - 1;
        return field < line.fields.size() ? ToQString(line.fields[field]) : QString();
    }
    const QString number = QString::number(line.line);
    const QString word = LineWord(state_, line.kind);
    return word.isEmpty() ? number : number + QStringLiteral("  ") + word;
}

QVariant PreviewModel::ColourAt(const PreviewLine& line, int column) const {
    const QPalette palette = QApplication::palette();
    const QColor back = palette.color(QPalette::Base);
    const auto field = static_cast<std::size_t>(column);
    const bool isToBlame = line.kind == LineKind::Bad &&
                           (column == 0 || line.misfitField == 0 || line.misfitField == field);
    if (isToBlame) {
        return Warning(back);
    }
    const bool isIgnored = column > 0 && !plan_.freeList && field <= roles_.size() &&
                           roles_[field - 1] == ColumnRole::Ignored;
    if (line.kind != LineKind::Point || isIgnored) {
        return MixedColour(palette.color(QPalette::Text), back, kFaint);
    }
    return {};
}

bool PreviewModel::IsNumber(LineKind kind, int column) const {
    const auto field = static_cast<std::size_t>(column);
    return column > 0 && IsRecord(kind) &&
           (plan_.freeList || (field <= roles_.size() && IsCoordinate(roles_[field - 1])));
}

QVariant PreviewModel::data(const QModelIndex& index, int role) const {
    const PreviewLine& line = preview_.lines.at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case Qt::DisplayRole:
        return TextAt(line, index.column());
    case Qt::ForegroundRole:
        return ColourAt(line, index.column());
    case Qt::ToolTipRole:
        return line.kind == LineKind::Bad ? MisfitSentence(state_, line, plan_) : QVariant();
    case Qt::TextAlignmentRole:
        return IsNumber(line.kind, index.column()) ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                                   : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return {};
    }
}

// The combo boxes lie above the others.
QVariant PreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return section == 0 ? Caption(state_, plan_.freeList ? Text::KindPoints : Text::LineHeading)
                        : Caption(state_, Text::ImportColumn).arg(section);
}
