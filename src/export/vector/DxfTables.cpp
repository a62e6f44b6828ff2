#include "export/vector/DxfTables.h"

#include "export/vector/DxfGroups.h"

#include <algorithm>
#include <initializer_list>

namespace terravo {
namespace {

using namespace DxfGroups;

struct Group {
    int code;
    std::string_view value;
};

void AppendGroups(std::string& out, std::initializer_list<Group> groups) {
    for (const Group& group : groups) {
        AppendText(out, group.code, group.value);
    }
}

void BeginSection(std::string& out, std::string_view name) {
    AppendGroups(out, {{0, "SECTION"}, {2, name}});
}
void EndSection(std::string& out) {
    AppendText(out, 0, "ENDSEC");
}

// --- Header ---

std::string_view UnitOf(LengthUnit unit) {
    switch (unit) {
    case LengthUnit::Metre:
        break;
    case LengthUnit::Foot:
        return "2";
    case LengthUnit::UsSurveyFoot:
        return "21";
    }
    return "6";
}

void AppendPointVariable(std::string& out, std::string_view name, const SpacePoint& place) {
    AppendText(out, 9, name);
    AppendPoint(out, 10, place);
}

// The usual point symbol is a single pixel; ours is a cross as large as a letter.
void AppendPointSymbol(std::string& out, double size) {
    AppendGroups(out, {{9, "$PDMODE"}, {70, "2"}, {9, "$PDSIZE"}});
    AppendReal(out, 40, size);
}

void AppendHeader(std::string& out, const DxfPlan& plan) {
    BeginSection(out, "HEADER");
    AppendGroups(out, {{9, "$ACADVER"},
                       {1, plan.IsR12() ? "AC1009" : "AC1015"},
                       {9, "$DWGCODEPAGE"},
                       {3, "ANSI_1252"}});
    AppendPointVariable(out, "$INSBASE", {});
    AppendPointVariable(out, "$EXTMIN", plan.Box().low);
    AppendPointVariable(out, "$EXTMAX", plan.Box().high);
    AppendGroups(out, {{9, "$LUNITS"}, {70, "2"}, {9, "$LUPREC"}, {70, "3"}});
    AppendPointSymbol(out, plan.Content().textHeight);
    if (!plan.IsR12()) {
        const LengthUnit unit = plan.Content().unit;
        AppendGroups(out, {{9, "$MEASUREMENT"},
                           {70, unit == LengthUnit::Metre ? "1" : "0"},
                           {9, "$INSUNITS"},
                           {70, UnitOf(unit)},
                           {9, "$HANDSEED"}});
        AppendText(out, 5, HandleText(plan.HandleSeed()));
    }
    EndSection(out);
}

// --- Tables ---

// What the window shows when the drawing is opened.
struct View {
    double x = 0;
    double y = 0;
    double height = 10;

    static constexpr double kWidthOfWindow = 1.5; // its height is 1

    explicit View(const DxfPlan& plan) {
        const DxfBox& box = plan.Box();
        if (box.IsEmpty()) {
            return;
        }
        constexpr double kMargin = 1.1;
        constexpr double kMost = 1e300;
        x = box.low.x / 2 + box.high.x / 2;
        y = box.low.y / 2 + box.high.y / 2;
        const double extent =
            std::max(box.high.y - box.low.y, (box.high.x - box.low.x) / kWidthOfWindow);
        height = std::min(std::max(kMargin * extent, 10 * plan.Content().textHeight), kMost);
    }
};

// Handles as the tables of most files have them.
class TableWriter {
public:
    TableWriter(std::string& out, const DxfPlan& plan) : out_(out), plan_(plan) {}

    void Write() {
        WriteViewports();
        WriteLineTypes();
        WriteTextStyles();
        BeginTable("VIEW", "6", 0);
        EndTable();
        BeginTable("UCS", "7", 0);
        EndTable();
        WriteApplications();
        if (!plan_.IsR12()) {
            WriteDimensionStyles();
            WriteBlockRecords();
        }
    }

private:
    void BeginTable(std::string_view name, std::string_view handle, std::size_t entries) {
        // A reader takes the number for a hint, and it has 16 bits.
        constexpr std::size_t kMost = 32767;
        table_ = handle;
        AppendGroups(out_, {{0, "TABLE"}, {2, name}});
        if (!plan_.IsR12()) {
            AppendGroups(out_, {{5, handle}, {330, "0"}, {100, "AcDbSymbolTable"}});
        }
        AppendInteger(out_, 70, static_cast<std::int64_t>(std::min(entries, kMost)));
    }
    void EndTable() { AppendText(out_, 0, "ENDTAB"); }

    void AppendOwnerAndClass(std::string_view className) {
        AppendGroups(out_, {{330, table_}, {100, "AcDbSymbolTableRecord"}, {100, className}});
    }
    void BeginEntry(std::string_view type, std::string_view handle, std::string_view className,
                    std::string_view name) {
        AppendText(out_, 0, type);
        if (!plan_.IsR12()) {
            AppendText(out_, type == "DIMSTYLE" ? 105 : 5, handle);
            AppendOwnerAndClass(className);
        }
        AppendText(out_, 2, name);
        if (type != "BLOCK_RECORD") {
            AppendText(out_, 70, "0");
        }
    }

    void WriteViewports() {
        const View view(plan_);
        BeginTable("VPORT", "8", 1);
        BeginEntry("VPORT", "29", "AcDbViewportTableRecord", "*ACTIVE");
        AppendGroups(out_, {{10, "0.0"}, {20, "0.0"}, {11, "1.0"}, {21, "1.0"}});
        AppendReal(out_, 12, view.x);
        AppendReal(out_, 22, view.y);
        AppendGroups(out_, {{13, "0.0"},
                            {23, "0.0"},
                            {14, "1.0"},
                            {24, "1.0"},
                            {15, "0.0"},
                            {25, "0.0"},
                            {16, "0.0"},
                            {26, "0.0"},
                            {36, "1.0"},
                            {17, "0.0"},
                            {27, "0.0"},
                            {37, "0.0"}});
        AppendReal(out_, 40, view.height);
        AppendReal(out_, 41, View::kWidthOfWindow);
        AppendGroups(out_, {{42, "50.0"},
                            {43, "0.0"},
                            {44, "0.0"},
                            {50, "0.0"},
                            {51, "0.0"},
                            {71, "0"},
                            {72, "100"},
                            {73, "1"},
                            {74, "1"},
                            {75, "0"},
                            {76, "0"},
                            {77, "0"},
                            {78, "0"}});
        EndTable();
    }

    void WriteLineType(std::string_view handle, std::string_view name, std::string_view text) {
        BeginEntry("LTYPE", handle, "AcDbLinetypeTableRecord", name);
        AppendGroups(out_, {{3, text}, {72, "65"}, {73, "0"}, {40, "0.0"}});
    }
    void WriteLineTypes() {
        BeginTable("LTYPE", "5", plan_.IsR12() ? 1 : 3);
        if (!plan_.IsR12()) {
            WriteLineType("14", "ByBlock", "");
            WriteLineType("15", "ByLayer", "");
        }
        WriteLineType("16", SolidLine(), "Solid line");
        EndTable();
        WriteLayers();
    }
    [[nodiscard]] std::string_view SolidLine() const {
        return plan_.IsR12() ? "CONTINUOUS" : "Continuous";
    }

    void AppendLook(int colour, int weight) {
        AppendInteger(out_, 62, colour);
        AppendText(out_, 6, SolidLine());
        if (!plan_.IsR12()) {
            AppendInteger(out_, 370, weight);
            AppendText(out_, 390, "F");
        }
    }
    void WriteLayer(std::uint64_t handle, const DxfLayer& layer) {
        BeginEntry("LAYER", HandleText(handle), "AcDbLayerTableRecord", layer.name);
        AppendLook(layer.colour, layer.weight);
    }
    void WriteLayers() {
        BeginTable("LAYER", "2", plan_.Layers().All().size() + 1);
        WriteLayer(0x10, {"0", 7, -3});
        std::uint64_t handle = DxfPlan::kFirstLayer;
        for (const DxfLayer& layer : plan_.Layers().All()) {
            WriteLayer(handle++, layer);
        }
        EndTable();
    }

    void WriteTextStyles() {
        BeginTable("STYLE", "3", 1);
        BeginEntry("STYLE", "11", "AcDbTextStyleTableRecord", DxfTextStyle(plan_));
        AppendGroups(
            out_,
            {{40, "0.0"}, {41, "1.0"}, {50, "0.0"}, {71, "0"}, {42, "2.5"}, {3, "txt"}, {4, ""}});
        EndTable();
    }

    void WriteApplications() {
        BeginTable("APPID", "9", 1);
        BeginEntry("APPID", "12", "AcDbRegAppTableRecord", "ACAD");
        EndTable();
    }

    void WriteDimensionStyles() {
        BeginTable("DIMSTYLE", "A", 1);
        AppendGroups(out_, {{100, "AcDbDimStyleTable"}, {71, "0"}});
        BeginEntry("DIMSTYLE", "27", "AcDbDimStyleTableRecord", "Standard");
        EndTable();
    }

    void WriteBlockRecords() {
        BeginTable("BLOCK_RECORD", "1", 2);
        BeginEntry("BLOCK_RECORD", kDxfModelSpace, "AcDbBlockTableRecord", "*Model_Space");
        BeginEntry("BLOCK_RECORD", "1B", "AcDbBlockTableRecord", "*Paper_Space");
        EndTable();
    }

    std::string& out_;
    const DxfPlan& plan_;
    std::string_view table_; // handle of the one that is being written
};

// --- Blocks and objects ---

struct Block {
    std::string_view record;
    std::string_view begin;
    std::string_view end;
    std::string_view name;
    bool isPaper;
};

void AppendBlockPart(std::string& out, const Block& block, std::string_view type,
                     std::string_view handle, std::string_view className) {
    AppendGroups(out, {{0, type}, {5, handle}, {330, block.record}, {100, "AcDbEntity"}});
    if (block.isPaper) {
        AppendText(out, 67, "1");
    }
    AppendGroups(out, {{8, "0"}, {100, className}});
}

void AppendBlock(std::string& out, const Block& block) {
    AppendBlockPart(out, block, "BLOCK", block.begin, "AcDbBlockBegin");
    AppendGroups(out, {{2, block.name}, {70, "0"}});
    AppendPoint(out, 10, {});
    AppendGroups(out, {{3, block.name}, {1, ""}});
    AppendBlockPart(out, block, "ENDBLK", block.end, "AcDbBlockEnd");
}

void AppendBlocks(std::string& out, const DxfPlan& plan) {
    BeginSection(out, "BLOCKS");
    if (!plan.IsR12()) {
        AppendBlock(out, {kDxfModelSpace, "20", "21", "*Model_Space", false});
        AppendBlock(out, {"1B", "1C", "1D", "*Paper_Space", true});
    }
    EndSection(out);
}

void AppendObjects(std::string& out) {
    BeginSection(out, "OBJECTS");
    AppendGroups(out, {{0, "DICTIONARY"},
                       {5, "C"},
                       {330, "0"},
                       {100, "AcDbDictionary"},
                       {281, "1"},
                       {3, "ACAD_GROUP"},
                       {350, "D"},
                       {3, "ACAD_PLOTSTYLENAME"},
                       {350, "E"}});
    AppendGroups(out,
                 {{0, "DICTIONARY"}, {5, "D"}, {330, "C"}, {100, "AcDbDictionary"}, {281, "1"}});
    AppendGroups(out, {{0, "ACDBDICTIONARYWDFLT"},
                       {5, "E"},
                       {330, "C"},
                       {100, "AcDbDictionary"},
                       {281, "1"},
                       {3, "Normal"},
                       {350, "F"},
                       {100, "AcDbDictionaryWithDefault"},
                       {340, "F"}});
    AppendGroups(out, {{0, "ACDBPLACEHOLDER"}, {5, "F"}, {330, "E"}});
    EndSection(out);
}

} // namespace

std::string_view DxfTextStyle(const DxfPlan& plan) {
    return plan.IsR12() ? "STANDARD" : "Standard";
}

void WriteDxfHead(OutputFile& out, const DxfPlan& plan) {
    AppendHeader(out.Buffer(), plan);
    if (!plan.IsR12()) {
        BeginSection(out.Buffer(), "CLASSES");
        EndSection(out.Buffer());
    }
    BeginSection(out.Buffer(), "TABLES");
    TableWriter(out.Buffer(), plan).Write();
    EndSection(out.Buffer());
    AppendBlocks(out.Buffer(), plan);
    BeginSection(out.Buffer(), "ENTITIES");
    out.FlushWhenFull();
}

void WriteDxfTail(OutputFile& out, const DxfPlan& plan) {
    EndSection(out.Buffer());
    if (!plan.IsR12()) {
        AppendObjects(out.Buffer());
    }
    AppendText(out.Buffer(), 0, "EOF");
}

} // namespace terravo
