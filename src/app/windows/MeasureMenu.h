// The menu of what can be measured.
//
// Data: the session, which knows beside what and within what is measured; the sheet window, while
// there is one. Method: each entry is told as a command; the tools of the sheet are ticked while
// they are in hand. What cannot be done now is disabled, and its tooltip says why.
#pragma once

#include "app/windows/SheetWindow.h"
#include "util/RunState.h"

#include <QMenu>
#include <QPointer>

#include <optional>
#include <vector>

enum class MeasureCommand {
    Areas,
    Hypsometry,
    ToDatum,
    Compare,
    ForgetSecond,
    Place,
    Section,
    Cross,
    RemoveSection,
    Polygon,
    PolygonFile,
    RemovePolygon,
    Results
};

class MeasureMenu : public QMenu {
    Q_OBJECT

public:
    MeasureMenu(const terravo::Session& session, QWidget* parent);

    void SetCaptions(const terravo::RunState& state);
    /// Whether there is a drawn survey.
    void SetPossible(bool possible);
    void SetWindow(SheetWindow* window);
    /// The second survey, the polygon or the section may be others.
    void Follow();

signals:
    void Asked(MeasureCommand command);

private:
    struct Entry {
        MeasureCommand command;
        terravo::Text caption;
        QAction* action;
    };
    QAction* AddEntry(MeasureCommand command, terravo::Text caption, const char* name);
    void AddTool(MeasureCommand command, terravo::Text caption, const char* name, int key);
    /// Why a command cannot be used now; nothing: it can.
    [[nodiscard]] std::optional<terravo::Text> WhyNot(MeasureCommand command) const;

    const terravo::Session& session_;
    const terravo::RunState* state_ = nullptr; // once there are captions
    QPointer<SheetWindow> window_;
    bool isPossible_ = false;
    std::vector<Entry> entries_;
};

/// The tool of the sheet that a command takes in hand.
std::optional<SheetTool> ToolOf(MeasureCommand command);
