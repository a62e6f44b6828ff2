// A combo box over each column of a table, which says what the column means.
//
// Data: the roles of the columns. Method: a header whose sections, but the first, are covered by
// boxes that move and grow with them; the one that has the keyboard is scrolled into sight.
#pragma once

#include "survey/import/ImportPlan.h"
#include "util/RunState.h"

#include <QComboBox>
#include <QHeaderView>

class RoleHeader : public QHeaderView {
    Q_OBJECT

public:
    RoleHeader(const terravo::RunState& state, QWidget* parent);

    /// One box for each role, over the sections from 1 on; none at all for a list without columns.
    void Show(const std::vector<terravo::ColumnRole>& roles);
    [[nodiscard]] const std::vector<QComboBox*>& Boxes() const { return boxes_; }

    [[nodiscard]] QSize sizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// @param column  from 0, of the file.
    void RoleChosen(int column, terravo::ColumnRole role);
    /// A box has got the keyboard.
    void ColumnEntered(int column);

protected:
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override;
    void updateGeometries() override;

private:
    QComboBox* MakeBox(int column);
    void PlaceBoxes();

    const terravo::RunState& state_;
    std::vector<QComboBox*> boxes_;
};
