// The dialog that lists what is laid over the points, and takes it away.
//
// Data: the plan. Method: one row a line, a held side, a changed height, an excluded point; what is
// removed is removed from a copy, which becomes one step that can be undone.
#pragma once

#include "survey/Survey.h"
#include "util/RunState.h"

#include <QDialog>
#include <QPushButton>
#include <QTreeWidget>

#include <functional>
#include <vector>

class LinesDialog : public QDialog {
    Q_OBJECT

public:
    LinesDialog(const terravo::RunState& state, const terravo::Survey& survey,
                QWidget* parent = nullptr);

    /// The plan without what was removed.
    [[nodiscard]] const terravo::SurfacePlan& Plan() const { return plan_; }

private:
    void Fill();
    void AddLines(terravo::LineRole role, terravo::Text kind);
    void AddRow(terravo::Text kind, const QString& name, const QString& source,
                const QString& vertices, std::function<void()> remove);
    void Remove();
    [[nodiscard]] QString NameOf(terravo::Index point) const;
    [[nodiscard]] QString Number(double value) const;

    const terravo::RunState& state_;
    const terravo::Survey& survey_;
    terravo::SurfacePlan plan_;
    std::vector<std::function<void()>> removals_; // of the rows; the last row goes first
    QTreeWidget* lstLines;
    QPushButton* cmdRemove;
    QPushButton* cmdOk = nullptr;
};
