// The first lines of a file as a table.
//
// Data: a preview that somebody else owns. Method: the first column tells the line and what it is,
// the others its fields; what is not read is grey, what does not fit is red.
#pragma once

#include "survey/import/ImportPreview.h"
#include "util/RunState.h"

#include <QAbstractTableModel>

class PreviewModel : public QAbstractTableModel {
    Q_OBJECT

public:
    PreviewModel(const terravo::RunState& state, QObject* parent);

    /// Shows another preview, or the same one after a change.
    /// @param roles  of its columns: what is ignored is grey.
    void Show(const terravo::ImportPreview& preview, const terravo::ImportPlan& plan,
              const std::vector<terravo::ColumnRole>& roles);

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] QString TextAt(const terravo::PreviewLine& line, int column) const;
    [[nodiscard]] bool IsNumber(terravo::LineKind kind, int column) const;
    [[nodiscard]] QVariant ColourAt(const terravo::PreviewLine& line, int column) const;

    const terravo::RunState& state_;
    terravo::ImportPreview preview_;
    terravo::ImportPlan plan_;
    std::vector<terravo::ColumnRole> roles_;
};
