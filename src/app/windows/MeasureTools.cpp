#include "app/windows/MeasureTools.h"

#include "app/windows/Controls.h"
#include "app/windows/SheetMeasure.h"

#include <utility>

using terravo::PlanPoint;
using terravo::Text;

MeasureTools::MeasureTools(const terravo::RunState& state, terravo::Session& session,
                           SheetView& view)
    : QObject(&view), state_(state), session_(session), view_(view) {
    connect(&view_, &SheetView::Clicked, this, &MeasureTools::Click);
    connect(&view_, &SheetView::LineEnded, this, &MeasureTools::EndLine);
    connect(&view_, &SheetView::SteppedBack, this, &MeasureTools::StepBack);
    connect(&view_, &SheetView::ToolChanged, this, &MeasureTools::Leave);
}

PlanPoint MeasureTools::Snapped(PlanPoint place) const {
    constexpr double kPixels = 8;
    const double reach = DistanceOf(view_.PlanAt({0, 0}), view_.PlanAt({kPixels, 0})).distance;
    return PlanOf(session_.VertexAt(place, reach));
}

void MeasureTools::Click(double x, double y) {
    if (view_.Tool() == SheetTool::PlaceHeight) {
        view_.SetMark(PlanPoint{x, y});
        emit PlaceChosen(x, y);
    } else if (DrawsLine(view_.Tool())) {
        const PlanPoint vertex = Snapped({x, y});
        if (vertices_.empty() || !(vertices_.back() == vertex)) {
            vertices_.push_back(vertex);
        }
        ShowDraft();
    }
}

void MeasureTools::EndLine() {
    if (!DrawsLine(view_.Tool())) {
        return;
    }
    const bool isSection = view_.Tool() == SheetTool::Section;
    if (vertices_.size() < (isSection ? 2U : 3U)) {
        emit Note(Caption(state_, Text::MeasureDrawHint));
        return;
    }
    const std::vector<PlanPoint> vertices = std::exchange(vertices_, {});
    ShowDraft();
    view_.SetTool(SheetTool::Pan); // one at a time
    if (isSection) {
        emit SectionDrawn(vertices);
    } else {
        emit PolygonDrawn(vertices);
    }
}

void MeasureTools::ResumePolygon(const std::vector<PlanPoint>& ring) {
    view_.SetTool(SheetTool::MeasurePolygon);
    vertices_ = ring;
    ShowDraft();
}

void MeasureTools::StepBack() {
    if (!vertices_.empty()) {
        vertices_.pop_back();
        ShowDraft();
    }
}

void MeasureTools::Leave() {
    vertices_.clear();
    if (DrawsLine(view_.Tool())) {
        ShowDraft();
        emit Note(Caption(state_, Text::MeasureDrawHint));
    }
}

void MeasureTools::ShowDraft() {
    view_.SetDraft(vertices_, view_.Tool() == SheetTool::MeasurePolygon);
}
