#include "export/readback/DxfFrame.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace terravo {
namespace {

std::string InCapitals(std::string_view text) {
    std::string capitals;
    for (const char c : text) {
        capitals += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return capitals;
}

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

void AppendWord(std::string& words, std::string_view word) {
    words += words.empty() ? "" : " ";
    words += word;
}

bool IsHandleCode(int code) {
    return code == 5 || code == 105;
}
bool IsReferenceCode(int code) {
    return code == 330 || code == 340 || code == 350 || code == 390;
}
bool IsRealCode(int code) {
    return code >= 10 && code < 60;
}
bool IsShortCode(int code) {
    return (code >= 60 && code < 80) || code == 281 || code == 370;
}

bool IsLayerName(std::string_view name) {
    constexpr std::size_t kMostLetters = 31;
    return !name.empty() && name.size() <= kMostLetters &&
           std::all_of(name.begin(), name.end(), [](char c) {
               return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
           });
}

bool IsLineWeight(std::int64_t weight) {
    constexpr std::array<std::int64_t, 27> kWeights{-3, -2, -1,  0,   5,   9,   13,  15,  18,
                                                    20, 25, 30,  35,  40,  50,  53,  60,  70,
                                                    80, 90, 100, 106, 120, 140, 158, 200, 211};
    return std::binary_search(kWeights.begin(), kWeights.end(), weight);
}

std::int64_t IntegerOf(std::string_view text) {
    std::int64_t value = 0;
    ReadDxfInteger(text, value);
    return value;
}

} // namespace

void DxfExtents::Include(const SpacePoint& place) {
    low = {std::min(low.x, place.x), std::min(low.y, place.y), std::min(low.z, place.z)};
    high = {std::max(high.x, place.x), std::max(high.y, place.y), std::max(high.z, place.z)};
}

const DxfFrame::Table DxfFrame::kTables[] = {
    {"VPORT", "", "AcDbViewportTableRecord",
     "2 70 10 20 11 21 12 22 13 23 14 24 15 25 16 26 36 17 27 37 40 41 42 43 44 50 51 71 72 73 74 "
     "75 76 77 78",
     "*ACTIVE", "*ACTIVE"},
    {"LTYPE", "", "AcDbLinetypeTableRecord", "2 70 3 72 73 40", "BYBLOCK BYLAYER CONTINUOUS",
     "CONTINUOUS"},
    {"LAYER", "", "AcDbLayerTableRecord", "2 70 62 6 370 390", "", ""},
    {"STYLE", "", "AcDbTextStyleTableRecord", "2 70 40 41 50 71 42 3 4", "STANDARD", "STANDARD"},
    {"VIEW", "", "AcDbViewTableRecord", "2 70", "", ""},
    {"UCS", "", "AcDbUCSTableRecord", "2 70", "", ""},
    {"APPID", "", "AcDbRegAppTableRecord", "2 70", "ACAD", "ACAD"},
    {"DIMSTYLE", " 100 71", "AcDbDimStyleTableRecord", "2 70", "STANDARD", ""},
    {"BLOCK_RECORD", "", "AcDbBlockTableRecord", "2", "*MODEL_SPACE *PAPER_SPACE", ""},
};

DxfFrame::DxfFrame(DxfTags& tags, const VectorContent& content, const VectorOptions& options)
    : tags_(tags), content_(content), isR12_(options.dxfVersion == DxfVersion::R12) {}

std::string_view DxfFrame::Record::Value(int code) const {
    const auto found = std::find(codes.begin(), codes.end(), code);
    return found == codes.end() ? std::string_view()
                                : values[static_cast<std::size_t>(found - codes.begin())];
}

// --- Records ---

// The codes that the version has.
std::string DxfFrame::Without(std::string_view codes) const {
    constexpr std::array<std::string_view, 6> kLater{"5", "105", "330", "100", "370", "390"};
    std::string kept;
    for (const std::string_view code : Words(codes)) {
        if (!isR12_ || std::find(kLater.begin(), kLater.end(), code) == kLater.end()) {
            AppendWord(kept, code);
        }
    }
    return kept;
}

DxfFrame::Record DxfFrame::ReadRecord(const Shape& shape) {
    tags_.Expect(0, shape.type);
    Record record;
    std::string codes;
    std::string classes;
    while (tags_.Peek().code != 0) {
        const DxfTag& tag = tags_.Take();
        CheckGroup(tag.code, tag.value);
        record.codes.push_back(tag.code);
        record.values.emplace_back(tag.value);
        AppendWord(codes, std::to_string(tag.code));
        if (tag.code == 100) {
            AppendWord(classes, tag.value);
        }
    }
    if (codes != Without(shape.codes) || (!isR12_ && classes != shape.classes)) {
        tags_.Differ("the groups of " + std::string(shape.type) + " are not what they have to be");
    }
    return record;
}

void DxfFrame::CheckGroup(int code, std::string_view value) {
    double real = 0;
    std::int64_t integer = 0;
    if (IsHandleCode(code)) {
        NoteHandle(value);
    } else if (IsReferenceCode(code)) {
        if (!ReadDxfInteger(value, integer, 16)) {
            tags_.Differ("a handle is expected");
        }
        references_.insert(static_cast<std::uint64_t>(integer));
    } else if (IsRealCode(code) && !ReadDxfReal(value, real)) {
        tags_.Differ("a number with a period is expected");
    } else if (IsShortCode(code) &&
               (!ReadDxfInteger(value, integer) || integer < -32768 || integer > 32767)) {
        tags_.Differ("a small whole number is expected");
    }
}

void DxfFrame::NoteHandle(std::string_view text) {
    std::int64_t handle = 0;
    if (!ReadDxfInteger(text, handle, 16) || handle <= 0) {
        tags_.Differ("a handle is expected");
    }
    if (!handles_.insert(static_cast<std::uint64_t>(handle)).second) {
        tags_.Differ("the handle " + std::string(text) + " occurs twice");
    }
    highest_ = std::max(highest_, static_cast<std::uint64_t>(handle));
}

// --- Header ---

void DxfFrame::ReadHead() {
    ReadHeader();
    if (!isR12_) {
        tags_.Expect(0, "SECTION");
        tags_.Expect(2, "CLASSES");
        tags_.Expect(0, "ENDSEC");
    }
    ReadTables();
    ReadBlocks();
    tags_.Expect(0, "SECTION");
    tags_.Expect(2, "ENTITIES");
}

void DxfFrame::ReadHeader() {
    tags_.Expect(0, "SECTION");
    tags_.Expect(2, "HEADER");
    ReadVariable("$ACADVER", "1");
    ReadVariable("$DWGCODEPAGE", "3");
    ReadVariable("$INSBASE", "10 20 30");
    ReadVariable("$EXTMIN", "10 20 30");
    ReadVariable("$EXTMAX", "10 20 30");
    ReadVariable("$LUNITS", "70");
    ReadVariable("$LUPREC", "70");
    ReadVariable("$PDMODE", "70");
    ReadVariable("$PDSIZE", "40");
    if (!isR12_) {
        ReadVariable("$MEASUREMENT", "70");
        ReadVariable("$INSUNITS", "70");
        tags_.Expect(9, "$HANDSEED");
        variables_["$HANDSEED"].emplace_back(tags_.Text(5));
    }
    tags_.Expect(0, "ENDSEC");
    CheckVariables();
}

void DxfFrame::ReadVariable(std::string_view name, std::string_view codes) {
    tags_.Expect(9, name);
    std::vector<std::string>& values = variables_[std::string(name)];
    for (const std::string_view code : Words(codes)) {
        const std::string_view value = tags_.Text(static_cast<int>(IntegerOf(code)));
        CheckGroup(static_cast<int>(IntegerOf(code)), value);
        values.emplace_back(value);
    }
}

void DxfFrame::CheckVariable(const char* name, std::string_view value) {
    if (variables_[name].front() != value) {
        tags_.Differ(std::string(name) + " is " + variables_[name].front() + " instead of " +
                     std::string(value));
    }
}

void DxfFrame::CheckVariables() {
    CheckVariable("$ACADVER", isR12_ ? "AC1009" : "AC1015");
    CheckVariable("$DWGCODEPAGE", "ANSI_1252");
    if (!isR12_) {
        const bool isMetre = content_.unit == LengthUnit::Metre;
        CheckVariable("$MEASUREMENT", isMetre ? "1" : "0");
        CheckVariable("$INSUNITS", isMetre ? "6" : content_.unit == LengthUnit::Foot ? "2" : "21");
    }
}

// --- Tables ---

void DxfFrame::ReadTables() {
    tags_.Expect(0, "SECTION");
    tags_.Expect(2, "TABLES");
    for (const Table& table : kTables) {
        if (!isR12_ || (table.name != "DIMSTYLE" && table.name != "BLOCK_RECORD")) {
            ReadTable(table);
        }
    }
    tags_.Expect(0, "ENDSEC");
}

void DxfFrame::ReadTable(const Table& table) {
    constexpr std::int64_t kMostTold = 32767;
    const bool hasExtra = !table.extraCodes.empty();
    const Record head =
        ReadRecord({"TABLE", "2 5 330 100 70" + std::string(table.extraCodes),
                    hasExtra ? "AcDbSymbolTable AcDbDimStyleTable" : "AcDbSymbolTable"});
    if (head.Value(2) != table.name) {
        tags_.Differ("the table " + std::string(table.name) + " is expected");
    }
    const std::string codes = (table.name == "DIMSTYLE" ? "105 330 100 100 " : "5 330 100 100 ") +
                              std::string(table.entryCodes);
    const std::string classes = "AcDbSymbolTableRecord " + std::string(table.entryClass);
    std::string names;
    std::int64_t count = 0;
    for (; tags_.Peek().value != "ENDTAB"; ++count) {
        const Record entry = ReadRecord({table.name, codes, classes});
        if (entry.Value(330) != head.Value(5)) {
            tags_.Differ("an entry belongs to another table");
        }
        if (table.name == "LAYER") {
            NoteLayer(entry);
        } else {
            AppendWord(names, InCapitals(entry.Value(2)));
        }
        if (InCapitals(entry.Value(2)) == "*MODEL_SPACE") {
            std::int64_t handle = 0;
            ReadDxfInteger(entry.Value(5), handle, 16);
            modelSpace_ = static_cast<std::uint64_t>(handle);
        }
    }
    tags_.Expect(0, "ENDTAB");
    if (names != (isR12_ ? table.namesInR12 : table.names) ||
        IntegerOf(head.Value(70)) != std::min(count, kMostTold)) {
        tags_.Differ("the table " + std::string(table.name) + " has other entries");
    }
}

void DxfFrame::NoteLayer(const Record& record) {
    DxfSeenLayer layer{std::string(record.Value(2)), IntegerOf(record.Value(62))};
    if (!IsLayerName(layer.name) || !layerNames_.insert(layer.name).second ||
        layers_.empty() != (layer.name == "0")) {
        tags_.Differ("the name of layer \"" + layer.name + "\" is no name of its own");
    }
    if (layer.colour < 1 || layer.colour > 255 || InCapitals(record.Value(6)) != "CONTINUOUS" ||
        !IsLineWeight(IntegerOf(record.Value(370)))) {
        tags_.Differ("the look of layer " + layer.name + " is none that there is");
    }
    layers_.push_back(std::move(layer));
}

// --- Blocks and objects ---

void DxfFrame::ReadBlocks() {
    tags_.Expect(0, "SECTION");
    tags_.Expect(2, "BLOCKS");
    if (!isR12_) {
        for (const std::string paper : {"", "67 "}) {
            const std::string head = "5 330 100 " + paper + "8 100";
            ReadRecord({"BLOCK", head + " 2 70 10 20 30 3 1", "AcDbEntity AcDbBlockBegin"});
            ReadRecord({"ENDBLK", head, "AcDbEntity AcDbBlockEnd"});
        }
    }
    tags_.Expect(0, "ENDSEC");
}

void DxfFrame::ReadObjects() {
    tags_.Expect(0, "SECTION");
    tags_.Expect(2, "OBJECTS");
    ReadRecord({"DICTIONARY", "5 330 100 281 3 350 3 350", "AcDbDictionary"});
    ReadRecord({"DICTIONARY", "5 330 100 281", "AcDbDictionary"});
    ReadRecord({"ACDBDICTIONARYWDFLT", "5 330 100 281 3 350 100 340",
                "AcDbDictionary AcDbDictionaryWithDefault"});
    ReadRecord({"ACDBPLACEHOLDER", "5 330", ""});
    tags_.Expect(0, "ENDSEC");
}

void DxfFrame::CheckReferences() {
    for (const std::uint64_t reference : references_) {
        if (reference != 0 && handles_.count(reference) == 0) {
            tags_.Differ("a handle is referred to that nothing has");
        }
    }
}

void DxfFrame::CheckExtents(const char* name, const SpacePoint& expected) {
    std::array<double, 3> found{};
    for (std::size_t i = 0; i < found.size(); ++i) {
        ReadDxfReal(variables_[name][i], found[i]);
    }
    if (SpacePoint{found[0], found[1], found[2]} != expected) {
        tags_.Differ(std::string(name) + " is not that of the entities");
    }
}

void DxfFrame::ReadTail(const DxfExtents& extents, std::uint64_t highest) {
    constexpr double kNotSet = 1e20;
    const bool isEmpty = extents.low.x > extents.high.x;
    CheckExtents("$EXTMIN", isEmpty ? SpacePoint{kNotSet, kNotSet, kNotSet} : extents.low);
    CheckExtents("$EXTMAX", isEmpty ? SpacePoint{-kNotSet, -kNotSet, -kNotSet} : extents.high);
    if (!isR12_) {
        ReadObjects();
        CheckReferences();
        std::int64_t seed = 0;
        if (!ReadDxfInteger(variables_["$HANDSEED"].front(), seed, 16) || seed <= 0 ||
            static_cast<std::uint64_t>(seed) <= std::max(highest, highest_)) {
            tags_.Differ("$HANDSEED is not above all handles");
        }
    }
    tags_.Expect(0, "EOF");
    tags_.ExpectEnd();
}

} // namespace terravo
