#include "app/windows/FindingsModel.h"

#include "app/windows/Controls.h"
#include "util/NumberText.h"

#include <algorithm>

using terravo::Index;
using terravo::Text;

namespace {

constexpr quintptr kNoParent = 0;

// The texts of kinds and severities stand in the order of their enumerations.
Text TextOf(terravo::FindingKind kind) {
    return static_cast<Text>(static_cast<int>(Text::KindVoidHeight) + static_cast<int>(kind));
}

Text TextOf(terravo::Severity severity) {
    return static_cast<Text>(static_cast<int>(Text::SeverityError) + static_cast<int>(severity));
}

bool IsPointRow(const QModelIndex& index) {
    return index.internalId() != kNoParent;
}

} // namespace

FindingsModel::FindingsModel(const terravo::RunState& state, terravo::Session& session,
                             QObject* parent)
    : QAbstractItemModel(parent), state_(state), session_(session) {}

bool FindingsModel::Refresh() {
    if (revision_ != session_.Review().Revision()) {
        beginResetModel();
        revision_ = session_.Review().Revision();
        endResetModel();
        return true;
    }
    const int rows = rowCount({});
    if (rows == 0) {
        return false;
    }
    emit dataChanged(index(0, Exclude, {}), index(rows - 1, Exclude, {}), {Qt::CheckStateRole});
    for (int row = 0; row < rows; ++row) {
        const QModelIndex finding = index(row, 0, {});
        if (const int points = rowCount(finding); points > 0) {
            emit dataChanged(index(0, Exclude, finding), index(points - 1, Exclude, finding),
                             {Qt::CheckStateRole});
        }
    }
    return false;
}

const terravo::Finding& FindingsModel::FindingOf(const QModelIndex& index) const {
    const auto row = IsPointRow(index) ? static_cast<std::size_t>(index.internalId()) - 1
                                       : static_cast<std::size_t>(index.row());
    return session_.Review().Findings()[row];
}

std::optional<Index> FindingsModel::PointAt(const QModelIndex& index) const {
    const std::vector<Index>& points = FindingOf(index).points;
    const std::size_t row = IsPointRow(index) ? static_cast<std::size_t>(index.row()) : 0;
    return row < points.size() ? std::optional(points[row]) : std::nullopt;
}

std::vector<Index> FindingsModel::PointsOfBox(const QModelIndex& index) const {
    return IsPointRow(index) ? std::vector<Index>{*PointAt(index)}
                             : terravo::PointsToExclude(FindingOf(index));
}

Qt::CheckState FindingsModel::BoxAt(const QModelIndex& index) const {
    const std::vector<Index> points = PointsOfBox(index);
    const auto excluded = std::count_if(points.begin(), points.end(), [this](Index point) {
        return session_.TheSurvey().IsExcluded(point);
    });
    return excluded == 0                                            ? Qt::Unchecked
           : excluded == static_cast<std::ptrdiff_t>(points.size()) ? Qt::Checked
                                                                    : Qt::PartiallyChecked;
}

QModelIndex FindingsModel::index(int row, int column, const QModelIndex& parent) const {
    const quintptr owner = parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kNoParent;
    return createIndex(row, column, owner);
}

QModelIndex FindingsModel::parent(const QModelIndex& child) const {
    return IsPointRow(child) ? createIndex(static_cast<int>(child.internalId()) - 1, 0, kNoParent)
                             : QModelIndex();
}

int FindingsModel::rowCount(const QModelIndex& parent) const {
    if (revision_ != session_.Review().Revision()) {
        return 0; // until the view hears of the others
    }
    if (!parent.isValid()) {
        return static_cast<int>(session_.Review().Findings().size());
    }
    if (IsPointRow(parent) || parent.column() > 0) {
        return 0;
    }
    const std::size_t points = FindingOf(parent).points.size();
    return points > 1 ? static_cast<int>(points) : 0;
}

int FindingsModel::columnCount(const QModelIndex& /*parent*/) const {
    return ColumnCount;
}

Qt::ItemFlags FindingsModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    if (index.isValid() && index.column() == Exclude && PointAt(index)) {
        flags |= Qt::ItemIsUserCheckable;
    }
    return flags;
}

QString FindingsModel::PlaceOf(Index point) const {
    const terravo::PointSet& points = session_.TheSurvey().AllPoints();
    const auto number = [this](double value) {
        return ToQString(
            terravo::NumberText::FormatScreen(value, "#0.0##", state_.decimalSeparator));
    };
    return QStringLiteral("x: %1   y: %2   z: %3   ")
               .arg(number(points.x[point]), number(points.y[point]), number(points.z[point])) +
           ToQString(std::string(points.labels.Code(point)));
}

qint64 FindingsModel::LineAt(const QModelIndex& index) const {
    if (const std::optional<Index> point = PointAt(index)) {
        return session_.TheSurvey().AllPoints().labels.Line(*point);
    }
    const std::vector<std::int64_t>& lines = FindingOf(index).lines;
    return lines.empty() ? 0 : lines.front();
}

QString FindingsModel::TextAt(const QModelIndex& index) const {
    const terravo::Finding& finding = FindingOf(index);
    const terravo::PointLabels& labels = session_.TheSurvey().AllPoints().labels;
    const bool isPoint = IsPointRow(index);
    switch (index.column()) {
    case Severity:
        return isPoint ? QString() : Caption(state_, TextOf(finding.severity));
    case Kind:
        return isPoint ? QString() : Caption(state_, TextOf(finding.kind));
    case Point:
        return PointAt(index) ? ToQString(labels.NameOrNumber(*PointAt(index))) : QString();
    case Line:
        return LineAt(index) > 0 ? QString::number(LineAt(index)) : QString();
    case Finding:
        return isPoint ? PlaceOf(*PointAt(index))
                       : ToQString(terravo::SentenceOf(finding, labels, state_.texts,
                                                       state_.decimalSeparator));
    default:
        return {};
    }
}

QVariant FindingsModel::SortKey(const QModelIndex& index) const {
    switch (index.column()) {
    case Exclude:
        return static_cast<int>(BoxAt(index));
    case Severity:
        return static_cast<int>(FindingOf(index).severity);
    case Line:
        return LineAt(index);
    default:
        return TextAt(index);
    }
}

QVariant FindingsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return TextAt(index);
    case Qt::ToolTipRole:
        return index.column() == Exclude ? Caption(state_, Text::ExcludeHint) : TextAt(index);
    case Qt::AccessibleTextRole:
        return index.column() == Exclude ? Caption(state_, Text::ExcludeHeading) : TextAt(index);
    case Qt::TextAlignmentRole:
        return index.column() == Line ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::CheckStateRole:
        return index.column() == Exclude && PointAt(index) ? QVariant(BoxAt(index)) : QVariant();
    case kSortRole:
        return SortKey(index);
    default:
        return {};
    }
}

bool FindingsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    return role == Qt::CheckStateRole &&
           session_.SetExcluded(PointsOfBox(index), value.toInt() == Qt::Checked);
}

QVariant FindingsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::ToolTipRole && section == Exclude) {
        return Caption(state_, Text::ExcludeHint);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    constexpr Text kHeadings[ColumnCount] = {Text::ExcludeHeading, Text::SeverityHeading,
                                             Text::KindHeading,    Text::PointHeading,
                                             Text::LineHeading,    Text::FindingHeading};
    return Caption(state_, kHeadings[section]);
}
