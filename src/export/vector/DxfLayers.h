// The layers of a DXF drawing: one for each kind of content, or one for each level.
//
// Data: names of capitals, digits and underlines, which every version takes; colours of the index,
// weights in hundredths of a millimetre. Method: the layers of the parts that are asked for, then
// those of the levels that have contours; colour and weight are the layer's, so that the user
// changes them in one place.
#pragma once

#include "export/vector/VectorFormat.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

/// The parts that a DXF file can hold.
VectorParts DxfParts();

struct DxfLayer {
    std::string name;
    int colour = 7;  // of the index, 7 is black on white and white on black
    int weight = -3; // -3: the usual one
};

class DxfLayers {
public:
    /// @param content  outlives the layers.
    /// @param remarks  gets a sentence for each level whose layer cannot be named after its text.
    DxfLayers(const VectorContent& content, const VectorOptions& options,
              std::vector<std::string>& remarks);

    /// All but the layer 0.
    [[nodiscard]] const std::vector<DxfLayer>& All() const { return layers_; }
    /// The name of the layer that a part is on; any but contours.
    [[nodiscard]] static std::string_view NameOf(VectorPart part);
    [[nodiscard]] const std::string& NameOf(const VectorContour& contour) const;

private:
    void AddParts();
    void AddContourKinds();
    void AddLevels(std::vector<std::string>& remarks);
    [[nodiscard]] bool IsHeavy(const VectorLevel& level) const;

    const VectorContent& content_;
    std::vector<DxfLayer> layers_;
    std::vector<std::size_t> ofLevel_; // places in layers_; only those with contours count
};

} // namespace terravo
