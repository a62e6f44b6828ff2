#include "app/windows/SurfaceTools.h"

#include "app/windows/Controls.h"
#include "app/windows/SheetMeasure.h"
#include "util/NumberText.h"

#include <QInputDialog>

#include <cmath>

using terravo::Index;
using terravo::LineRole;
using terravo::PlanPoint;
using terravo::Text;

namespace {

LineRole RoleOf(SheetTool tool) {
    return tool == SheetTool::Breakline  ? LineRole::Breakline
           : tool == SheetTool::Boundary ? LineRole::Boundary
                                         : LineRole::Hole;
}

std::optional<double> AskHeight(QWidget* parent, const QString& label, double height) {
    constexpr double kMost = 1e9;
    constexpr int kDecimals = 4;
    bool isGiven = false;
    const double value = QInputDialog::getDouble(parent, QString(), label, height, -kMost, kMost,
                                                 kDecimals, &isGiven);
    return isGiven ? std::optional(value) : std::nullopt;
}

} // namespace

SurfaceTools::SurfaceTools(const terravo::RunState& state, terravo::Session& session,
                           SheetView& view)
    : QObject(&view), askHeight([&view](const QString& label, double height) {
          return AskHeight(&view, label, height);
      }),
      state_(state), session_(session), view_(view) {
    connect(&view_, &SheetView::Clicked, this, &SurfaceTools::Click);
    connect(&view_, &SheetView::LineEnded, this, &SurfaceTools::EndLine);
    connect(&view_, &SheetView::SteppedBack, this, &SurfaceTools::StepBack);
    connect(&view_, &SheetView::ToolChanged, this, &SurfaceTools::Leave);
}

bool SurfaceTools::IsOne(SheetTool tool) {
    return tool >= SheetTool::Select && tool <= SheetTool::Hole;
}

bool SurfaceTools::DrawsLine(SheetTool tool) {
    return tool >= SheetTool::Breakline && tool <= SheetTool::Hole;
}

double SurfaceTools::Reach() const {
    constexpr double kPixels = 8;
    return DistanceOf(view_.PlanAt({0, 0}), view_.PlanAt({kPixels, 0})).distance;
}

QString SurfaceTools::Number(double value) const {
    return ToQString(terravo::NumberText::FormatScreen(value, "#0.0##", state_.decimalSeparator));
}

QString SurfaceTools::NameOf(Index point) const {
    const std::string both = session_.TheSurvey().AllPoints().labels.NameAndCode(point);
    return both.empty() ? QString::number(point) : ToQString(both);
}

void SurfaceTools::Click(double x, double y) {
    const PlanPoint place{x, y};
    switch (view_.Tool()) {
    case SheetTool::Select:
        Select(place);
        break;
    case SheetTool::Exclude:
        if (const std::optional<Index> point = session_.SurveyPointAt(place, Reach())) {
            session_.SetExcluded({*point}, true);
        }
        break;
    case SheetTool::Flip:
        session_.FlipSideAt(place);
        break;
    case SheetTool::Hold:
        session_.HoldSideAt(place);
        break;
    case SheetTool::Height:
        ChangeHeight(place);
        break;
    case SheetTool::Breakline:
    case SheetTool::Boundary:
    case SheetTool::Hole:
        AddVertex(place);
        break;
    default:
        break;
    }
}

// What is chosen in one window is marked in all.
void SurfaceTools::Select(PlanPoint place) {
    const std::optional<Index> point = session_.SurveyPointAt(place, Reach());
    session_.MarkPoint(point);
    if (point) {
        const terravo::PointSet& points = session_.TheSurvey().AllPoints();
        emit Note(NameOf(*point) + QStringLiteral("   z: ") + Number(points.z[*point]));
    }
}

void SurfaceTools::ChangeHeight(PlanPoint place) {
    const std::optional<Index> point = session_.SurveyPointAt(place, Reach());
    if (!point) {
        return;
    }
    Select(place);
    double height = session_.TheSurvey().AllPoints().z[*point];
    for (const terravo::ChangedHeight& changed : session_.TheSurvey().Plan().heights) {
        height = changed.point == *point ? changed.height : height;
    }
    const std::optional<double> wanted =
        askHeight(Caption(state_, Text::NewHeightOf).arg(NameOf(*point)), height);
    if (wanted && std::isfinite(*wanted)) {
        session_.SetHeight(*point, *wanted);
    }
}

void SurfaceTools::AddVertex(PlanPoint place) {
    const terravo::SpacePoint vertex = session_.VertexAt(place, Reach());
    if (vertices_.empty() || !(PlanOf(vertices_.back()) == PlanOf(vertex))) {
        vertices_.push_back(vertex);
    }
    ShowDraft();
}

void SurfaceTools::EndLine() {
    if (!DrawsLine(view_.Tool())) {
        return;
    }
    std::vector<terravo::SpacePoint> vertices = std::exchange(vertices_, {});
    ShowDraft();
    session_.AddDrawnLine(RoleOf(view_.Tool()), std::move(vertices));
}

void SurfaceTools::StepBack() {
    if (!vertices_.empty()) {
        vertices_.pop_back();
        ShowDraft();
    }
}

void SurfaceTools::Leave() {
    vertices_.clear();
    view_.SetMark(std::nullopt);
    ShowDraft();
    if (IsOne(view_.Tool())) {
        session_.PrepareEdits();
    }
    if (DrawsLine(view_.Tool())) {
        emit Note(Caption(state_, Text::ToolHint));
    }
}

void SurfaceTools::ShowDraft() {
    std::vector<PlanPoint> places;
    places.reserve(vertices_.size());
    for (const terravo::SpacePoint& vertex : vertices_) {
        places.push_back(PlanOf(vertex));
    }
    view_.SetDraft(std::move(places), RoleOf(view_.Tool()) != LineRole::Breakline);
}
