// The findings of a survey check as a tree: a row for each, and below it one for each of its points
// where it has several.
//
// Data: the session's review. Method: a box in the first column tells and changes whether points
// are excluded; that of a finding stands for the points that it suggests to leave out.
#pragma once

#include "app/session/Session.h"

#include <QAbstractItemModel>

#include <optional>

class FindingsModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { Exclude, Severity, Kind, Point, Line, Finding, ColumnCount };
    /// Sorts rows as their columns mean it: severities from the gravest, lines as numbers.
    static constexpr int kSortRole = Qt::UserRole;

    FindingsModel(const terravo::RunState& state, terravo::Session& session, QObject* parent);

    /// The findings, or what is excluded, may have changed; true when there are others.
    bool Refresh();

    /// The point of a row, the first of a finding's, as a number among all points; none for a
    /// finding that is no matter of single points.
    [[nodiscard]] std::optional<terravo::Index> PointAt(const QModelIndex& index) const;

    /// The points that the box of a row stands for.
    [[nodiscard]] std::vector<terravo::Index> PointsOfBox(const QModelIndex& index) const;
    [[nodiscard]] Qt::CheckState BoxAt(const QModelIndex& index) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] const terravo::Finding& FindingOf(const QModelIndex& index) const;
    [[nodiscard]] QString TextAt(const QModelIndex& index) const;
    [[nodiscard]] QString PlaceOf(terravo::Index point) const;
    [[nodiscard]] qint64 LineAt(const QModelIndex& index) const;
    [[nodiscard]] QVariant SortKey(const QModelIndex& index) const;

    const terravo::RunState& state_;
    terravo::Session& session_;
    std::uint64_t revision_ = 0;
};
