// What the hand measures on the sheet: sections, polygons, heights.
//
// Data: the view of the sheet, the vertices drawn so far. Method: the view tells of clicks and
// keys; a line or a place that is whole is told to whoever measures it. A click counts for the
// survey point within a few pixels of it.
#pragma once

#include "app/session/Session.h"
#include "app/windows/SheetView.h"
#include "util/RunState.h"

#include <QObject>

#include <vector>

class MeasureTools : public QObject {
    Q_OBJECT

public:
    /// @param view  which it belongs to.
    MeasureTools(const terravo::RunState& state, terravo::Session& session, SheetView& view);

    /// Whether a tool draws a line to measure along or within.
    static bool DrawsLine(SheetTool tool) { return tool >= SheetTool::Section; }

    /// A ring that was drawn cannot be used: its vertices can be taken back one by one.
    void ResumePolygon(const std::vector<terravo::PlanPoint>& ring);

signals:
    void SectionDrawn(const std::vector<terravo::PlanPoint>& line);
    void PolygonDrawn(const std::vector<terravo::PlanPoint>& ring);
    void PlaceChosen(double x, double y);
    /// What there is to say for a moment.
    void Note(const QString& text);

private:
    void Click(double x, double y);
    void EndLine();
    void StepBack();
    void Leave();
    void ShowDraft();
    [[nodiscard]] terravo::PlanPoint Snapped(terravo::PlanPoint place) const;

    const terravo::RunState& state_;
    terravo::Session& session_;
    SheetView& view_;
    std::vector<terravo::PlanPoint> vertices_;
};
