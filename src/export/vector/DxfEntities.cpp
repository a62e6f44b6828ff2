#include "export/vector/DxfEntities.h"

#include "export/vector/CleanText.h"
#include "export/vector/DxfCorners.h"
#include "export/vector/DxfGroups.h"
#include "export/vector/DxfTables.h"
#include "export/vector/DxfText.h"
#include "export/vector/FewRemarks.h"

#include <initializer_list>
#include <numbers>

namespace terravo {
namespace {

using namespace DxfGroups;

// The groups that the entities of a kind and layer begin with.
class EntityHead {
public:
    /// @param owner  a handle.
    EntityHead(const DxfPlan& plan, std::string_view type, std::string_view layer,
               std::initializer_list<std::string_view> classes,
               std::string_view owner = kDxfModelSpace)
        : hasHandles_(!plan.IsR12()) {
        AppendText(beforeHandle_, 0, type);
        if (hasHandles_) {
            AppendCode(beforeHandle_, 5);
            AppendText(behindHandle_, 330, owner);
            AppendText(behindHandle_, 100, "AcDbEntity");
        }
        AppendText(behindHandle_, 8, layer);
        for (const std::string_view name : classes) {
            AppendClass(name);
        }
    }

    /// @param[in,out] handle  of the entity; then of the next.
    void Append(std::string& out, std::uint64_t& handle) const {
        out += beforeHandle_;
        if (hasHandles_) {
            out += HandleText(handle++);
            out += '\n';
        }
        out += behindHandle_;
    }

private:
    void AppendClass(std::string_view name) {
        if (hasHandles_) {
            AppendText(behindHandle_, 100, name);
        }
    }

    bool hasHandles_;
    std::string beforeHandle_;
    std::string behindHandle_;
};

class EntityWriter {
public:
    EntityWriter(OutputFile& file, const DxfPlan& plan, std::vector<std::string>& remarks)
        : file_(file), out_(file.Buffer()), plan_(plan), content_(plan.Content()),
          handle_(plan.FirstEntity()), cutTexts_(remarks, "more texts.") {}

    void Write() {
        WriteContours();
        WriteLabels();
        WriteTriangles();
        WriteLines(VectorPart::Hull, content_.hull);
        WriteLines(VectorPart::Boundary, content_.boundary);
        WriteLines(VectorPart::Breaklines, content_.breaklines);
        WritePoints();
        for (const VectorPart kind : kDxfPointTexts) {
            WritePointTexts(kind);
        }
        cutTexts_.Finish();
    }

private:
    static constexpr int kClosed = 1;
    static constexpr int kInSpace = 8;

    void AppendClass(std::string_view name) {
        if (!plan_.IsR12()) {
            AppendText(out_, 100, name);
        }
    }

    // --- Lines ---

    void WriteContours() {
        for (const VectorContour& contour : content_.contours) {
            if (!content_.Shows(contour)) {
                continue;
            }
            if (plan_.ContoursIn3D()) {
                WriteContourInSpace(contour);
            } else if (plan_.IsR12()) {
                WriteOldContour(contour);
            } else {
                WriteContour(contour);
            }
        }
    }

    void WriteContour(const VectorContour& contour) {
        const EntityHead head(plan_, "LWPOLYLINE", plan_.Layers().NameOf(contour),
                              {"AcDbPolyline"});
        head.Append(out_, handle_);
        AppendInteger(out_, 90, static_cast<std::int64_t>(contour.count));
        AppendInteger(out_, 70, contour.closed ? kClosed : 0);
        AppendText(out_, 43, "0.0");
        AppendReal(out_, 38, content_.LevelOf(contour).value);
        for (const PlanPoint& vertex : content_.VerticesOf(contour)) {
            AppendReal(out_, 10, vertex.x);
            AppendReal(out_, 20, vertex.y);
            file_.FlushWhenFull();
        }
    }

    // Some readers take the height of the header, some that of the vertices.
    void WriteOldContour(const VectorContour& contour) {
        const std::string& layer = plan_.Layers().NameOf(contour);
        const double height = content_.LevelOf(contour).value;
        std::string heightGroup;
        AppendReal(heightGroup, 30, height);

        BeginPolyline(layer, {0, 0, height}, contour.closed ? kClosed : 0);
        const EntityHead head(plan_, "VERTEX", layer, {});
        for (const PlanPoint& vertex : content_.VerticesOf(contour)) {
            head.Append(out_, handle_);
            AppendReal(out_, 10, vertex.x);
            AppendReal(out_, 20, vertex.y);
            out_ += heightGroup;
            file_.FlushWhenFull();
        }
        EntityHead(plan_, "SEQEND", layer, {}).Append(out_, handle_);
    }

    void BeginPolyline(std::string_view layer, const SpacePoint& place, int flags) {
        EntityHead(plan_, "POLYLINE", layer, {"AcDb3dPolyline"}).Append(out_, handle_);
        AppendText(out_, 66, "1");
        AppendPoint(out_, 10, place);
        AppendInteger(out_, 70, flags);
    }

    void WriteContourInSpace(const VectorContour& contour) {
        const double height = content_.LevelOf(contour).value;
        inSpace_.clear();
        for (const PlanPoint& vertex : content_.VerticesOf(contour)) {
            inSpace_.push_back({vertex.x, vertex.y, height});
        }
        WriteLine(plan_.Layers().NameOf(contour), inSpace_, contour.closed);
    }

    void WriteLine(std::string_view layer, const std::vector<SpacePoint>& vertices, bool closed) {
        const std::string owner = HandleText(handle_);
        BeginPolyline(layer, {}, kInSpace + (closed ? kClosed : 0));
        const EntityHead head(plan_, "VERTEX", layer, {"AcDbVertex", "AcDb3dPolylineVertex"},
                              owner);
        for (const SpacePoint& vertex : vertices) {
            head.Append(out_, handle_);
            AppendPoint(out_, 10, vertex);
            AppendText(out_, 70, "32");
            file_.FlushWhenFull();
        }
        EntityHead(plan_, "SEQEND", layer, {}, owner).Append(out_, handle_);
    }

    void WriteLines(VectorPart part, const std::vector<SpaceLine>& lines) {
        if (plan_.Has(part)) {
            for (const SpaceLine& line : lines) {
                WriteLine(DxfLayers::NameOf(part), line.vertices, line.closed);
            }
        }
    }

    // --- Triangles ---

    void WriteTriangles() {
        if (!plan_.Has(VectorPart::Triangles)) {
            return;
        }
        const DxfCorners corners(content_.points);
        const EntityHead head(plan_, "3DFACE", DxfLayers::NameOf(VectorPart::Triangles),
                              {"AcDbFace"});
        for (std::size_t t = 0; t < content_.triangles.size(); ++t) {
            corners.LookAhead(content_.triangles, t);
            head.Append(out_, handle_);
            corners.AppendFace(out_, content_.triangles[t].vertices);
            file_.FlushWhenFull();
        }
    }

    // --- Points and texts ---

    void WritePoints() {
        if (!plan_.Has(VectorPart::Points)) {
            return;
        }
        const EntityHead head(plan_, "POINT", DxfLayers::NameOf(VectorPart::Points), {"AcDbPoint"});
        for (const SpacePoint& point : content_.SurveyPoints()) {
            head.Append(out_, handle_);
            AppendPoint(out_, 10, point);
            file_.FlushWhenFull();
        }
    }

    // All of a text up to its turn.
    void BeginText(const EntityHead& head, const SpacePoint& place, std::string_view text) {
        const DxfText encoded = EncodeDxfText(text);
        if (!encoded.cutOff.empty()) {
            cutTexts_.Add("The text " + Quoted(CleanText(text)) +
                          " is too long: it is written without " + Quoted(encoded.cutOff) + ".");
        }
        head.Append(out_, handle_);
        AppendPoint(out_, 10, place);
        AppendReal(out_, 40, content_.textHeight);
        AppendText(out_, 1, encoded.bytes);
    }

    void WriteLabels() {
        if (!plan_.Has(VectorPart::Labels)) {
            return;
        }
        const EntityHead head(plan_, "TEXT", DxfLayers::NameOf(VectorPart::Labels), {"AcDbText"});
        for (const VectorLabel& label : content_.labels) {
            const SpacePoint place = plan_.LabelPlace(label);
            BeginText(head, place, content_.levels[static_cast<std::size_t>(label.level) - 1].text);
            AppendReal(out_, 50, label.angle * (180 / std::numbers::pi));
            EndText(place);
            file_.FlushWhenFull();
        }
    }

    // Centred on the place, in both directions.
    void EndText(const SpacePoint& middle) {
        AppendText(out_, 7, DxfTextStyle(plan_));
        AppendText(out_, 72, "1");
        AppendPoint(out_, 11, middle);
        AppendClass("AcDbText");
        AppendText(out_, 73, "2");
    }

    void WritePointTexts(VectorPart kind) {
        if (!plan_.Has(kind)) {
            return;
        }
        const EntityHead head(plan_, "TEXT", DxfLayers::NameOf(kind), {"AcDbText"});
        for (Index point = 1; point <= plan_.PointCount(); ++point) {
            if (plan_.HasText(kind, point)) {
                BeginText(head, plan_.TextPlace(kind, point), plan_.TextOf(kind, point));
                AppendText(out_, 7, DxfTextStyle(plan_));
                AppendClass("AcDbText");
                file_.FlushWhenFull();
            }
        }
    }

    OutputFile& file_;
    std::string& out_;
    const DxfPlan& plan_;
    const VectorContent& content_;
    std::uint64_t handle_;
    FewRemarks cutTexts_;
    std::vector<SpacePoint> inSpace_; // of the contour that is being written
};

} // namespace

void WriteDxfEntities(OutputFile& out, const DxfPlan& plan, std::vector<std::string>& remarks) {
    EntityWriter(out, plan, remarks).Write();
}

} // namespace terravo
