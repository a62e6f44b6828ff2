// What the hand does on the sheet to the surface: choosing, excluding, flipping, drawing lines.
//
// Data: the view of the sheet, the session, the vertices drawn so far. Method: the view tells of
// clicks and keys; each becomes a command of the session, which can be undone. A click counts for
// the point within a few pixels of it.
#pragma once

#include "app/session/Session.h"
#include "app/windows/SheetView.h"
#include "util/RunState.h"

#include <QObject>

#include <functional>
#include <optional>
#include <vector>

class SurfaceTools : public QObject {
    Q_OBJECT

public:
    /// @param view  which it belongs to.
    SurfaceTools(const terravo::RunState& state, terravo::Session& session, SheetView& view);

    /// Asks for the new height of a point; nothing: none. Tests set another one.
    std::function<std::optional<double>(const QString& label, double height)> askHeight;

    /// Whether a tool changes the surface, and whether it draws a line of vertices.
    static bool IsOne(SheetTool tool);
    static bool DrawsLine(SheetTool tool);

signals:
    /// What there is to say for a moment.
    void Note(const QString& text);

private:
    void Click(double x, double y);
    void EndLine();
    void StepBack();
    void Leave();
    void Select(terravo::PlanPoint place);
    void ChangeHeight(terravo::PlanPoint place);
    void AddVertex(terravo::PlanPoint place);
    void ShowDraft();
    [[nodiscard]] double Reach() const;
    [[nodiscard]] QString NameOf(terravo::Index point) const;
    [[nodiscard]] QString Number(double value) const;

    const terravo::RunState& state_;
    terravo::Session& session_;
    SheetView& view_;
    std::vector<terravo::SpacePoint> vertices_;
};
