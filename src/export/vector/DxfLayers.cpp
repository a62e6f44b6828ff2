#include "export/vector/DxfLayers.h"

#include "export/vector/FewRemarks.h"
#include "export/vector/VectorNumber.h"

#include <algorithm>
#include <unordered_set>

namespace terravo {
namespace {

struct PartLayer {
    VectorPart part;
    const char* name;
    int colour;
    int weight;
};

constexpr PartLayer kPartLayers[] = {
    {VectorPart::Labels, "CONTOUR_LABELS", 7, -3}, {VectorPart::Triangles, "TIN", 253, 9},
    {VectorPart::Points, "POINTS", 2, -3},         {VectorPart::Numbers, "POINT_NUMBERS", 7, -3},
    {VectorPart::Codes, "POINT_CODES", 4, -3},     {VectorPart::Heights, "POINT_HEIGHTS", 3, -3},
    {VectorPart::Hull, "TIN_BOUNDARY", 5, 35},     {VectorPart::Boundary, "BOUNDARY", 6, 35},
    {VectorPart::Breaklines, "BREAKLINES", 1, 25},
};

constexpr int kBrown = 34;
constexpr int kBrightBrown = 32;
constexpr int kThin = 13;
constexpr int kThick = 30;

DxfLayer ContourLayer(std::string name, bool heavy) {
    return {std::move(name), heavy ? kBrightBrown : kBrown, heavy ? kThick : kThin};
}

// A height as part of a name: 102.5 is 102_5; empty for a text that is none.
std::string NamePartOf(std::string_view text) {
    std::string name(text);
    std::replace(name.begin(), name.end(), '.', '_');
    return name.find_first_not_of("0123456789-_") == std::string::npos ? name : std::string();
}

std::string NamePartOf(double value) {
    std::string text;
    VectorNumber::AppendShort(text, value);
    return NamePartOf(text);
}

// Gives every level a name of its own: after its text, else after its exact height, else after its
// number.
class LevelNames {
public:
    std::string NameOf(const VectorLevel& level, std::size_t number) {
        for (const std::string& part : {NamePartOf(level.text), NamePartOf(level.value)}) {
            std::string name = "CONT_" + part;
            if (name.size() <= kMostLetters && !part.empty() && taken_.insert(name).second) {
                return name;
            }
        }
        return "LEVEL_" + std::to_string(number);
    }

private:
    static constexpr std::size_t kMostLetters = 31; // of the oldest version
    std::unordered_set<std::string> taken_;
};

} // namespace

VectorParts DxfParts() {
    return {VectorPart::Contours,  VectorPart::IndexContours, VectorPart::Labels,
            VectorPart::Triangles, VectorPart::Points,        VectorPart::Numbers,
            VectorPart::Codes,     VectorPart::Heights,       VectorPart::Hull,
            VectorPart::Boundary,  VectorPart::Breaklines};
}

DxfLayers::DxfLayers(const VectorContent& content, const VectorOptions& options,
                     std::vector<std::string>& remarks)
    : content_(content) {
    AddParts();
    if (options.layerPerLevel) {
        AddLevels(remarks);
    } else {
        AddContourKinds();
    }
}

std::string_view DxfLayers::NameOf(VectorPart part) {
    const auto* const found =
        std::find_if(std::begin(kPartLayers), std::end(kPartLayers),
                     [part](const PartLayer& layer) { return layer.part == part; });
    return found->name;
}

const std::string& DxfLayers::NameOf(const VectorContour& contour) const {
    return layers_[ofLevel_[static_cast<std::size_t>(contour.level) - 1]].name;
}

bool DxfLayers::IsHeavy(const VectorLevel& level) const {
    return level.index && content_.parts.Has(VectorPart::IndexContours);
}

void DxfLayers::AddParts() {
    for (const PartLayer& layer : kPartLayers) {
        if (content_.parts.Has(layer.part)) {
            layers_.push_back({layer.name, layer.colour, layer.weight});
        }
    }
}

void DxfLayers::AddContourKinds() {
    const bool areTold = content_.parts.Has(VectorPart::IndexContours);
    const std::size_t heavy = layers_.size();
    if (areTold) {
        layers_.push_back(ContourLayer("CONTOUR_INDEX", true));
    }
    const std::size_t light = layers_.size();
    if (content_.parts.Has(VectorPart::Contours)) {
        layers_.push_back(ContourLayer(areTold ? "CONTOUR_MINOR" : "CONTOURS", false));
    }
    for (const VectorLevel& level : content_.levels) {
        ofLevel_.push_back(IsHeavy(level) ? heavy : light);
    }
}

void DxfLayers::AddLevels(std::vector<std::string>& remarks) {
    LevelNames names;
    FewRemarks renamed(remarks, "more levels.");
    ofLevel_.resize(content_.levels.size());
    Index last = 0; // contours come by level
    for (const VectorContour& contour : content_.contours) {
        if (contour.level == last || !content_.Shows(contour)) {
            continue;
        }
        last = contour.level;
        const auto place = static_cast<std::size_t>(last) - 1;
        const VectorLevel& level = content_.levels[place];
        ofLevel_[place] = layers_.size();
        layers_.push_back(ContourLayer(names.NameOf(level, place + 1), IsHeavy(level)));
        if (layers_.back().name != "CONT_" + NamePartOf(level.text)) {
            renamed.Add("The layer of level " + level.text + " is named " + layers_.back().name +
                        ": its text does not make a name of its own.");
        }
    }
    renamed.Finish();
}

} // namespace terravo
