// What has to be known of a DXF file before its first byte: layers, extents, handles.
//
// Data: the content, and what follows from it. Method: one pass over all that will be written; the
// places of texts are computed here for all who need them.
#pragma once

#include "export/vector/DecimalRounding.h"
#include "export/vector/DxfLayers.h"

#include <algorithm>
#include <cstdint>

namespace terravo {

/// A box in space; while nothing is in it, its low corner is above its high one.
struct DxfBox {
    SpacePoint low{1e20, 1e20, 1e20};
    SpacePoint high{-1e20, -1e20, -1e20};

    void Add(const SpacePoint& place) {
        if (IsEmpty()) {
            low = place;
            high = place;
        }
        low = {std::min(low.x, place.x), std::min(low.y, place.y), std::min(low.z, place.z)};
        high = {std::max(high.x, place.x), std::max(high.y, place.y), std::max(high.z, place.z)};
    }
    [[nodiscard]] bool IsEmpty() const { return low.x > high.x; }
};

/// Kinds of texts that points have, in the order of the file.
inline constexpr VectorPart kDxfPointTexts[] = {VectorPart::Numbers, VectorPart::Codes,
                                                VectorPart::Heights};

class DxfPlan {
public:
    /// @param content  outlives the plan.
    /// @param remarks  gets what had to be changed.
    DxfPlan(const VectorContent& content, const VectorOptions& options,
            std::vector<std::string>& remarks);

    [[nodiscard]] const VectorContent& Content() const { return content_; }
    [[nodiscard]] bool Has(VectorPart part) const { return content_.parts.Has(part); }
    [[nodiscard]] bool IsR12() const { return isR12_; }
    [[nodiscard]] bool ContoursIn3D() const { return contoursIn3D_; }
    [[nodiscard]] const DxfLayers& Layers() const { return layers_; }
    /// Of all places of the entities.
    [[nodiscard]] const DxfBox& Box() const { return box_; }

    /// Handles: those of our layers, then those of the entities; the seed is above all. What every
    /// file has, has lower ones.
    static constexpr std::uint64_t kFirstLayer = 0x100;
    [[nodiscard]] std::uint64_t FirstEntity() const { return kFirstLayer + layers_.All().size(); }
    [[nodiscard]] std::uint64_t HandleSeed() const { return FirstEntity() + entities_; }

    /// The text of a point, UTF-8; empty where it has none.
    [[nodiscard]] std::string TextOf(VectorPart kind, Index point) const;
    /// Where it begins: right of the point, the number above, the code below, the height between.
    [[nodiscard]] SpacePoint TextPlace(VectorPart kind, Index point) const;
    [[nodiscard]] bool HasText(VectorPart kind, Index point) const {
        return kind != VectorPart::Codes || !content_.CodeOf(point).empty();
    }
    [[nodiscard]] Index PointCount() const { return static_cast<Index>(content_.PointCount()); }

    /// Middle of the label, at the height of its level.
    [[nodiscard]] SpacePoint LabelPlace(const VectorLabel& label) const;

private:
    void MeasureContours();
    void MeasureLabels();
    void MeasureTriangles();
    void MeasureLines(VectorPart part, const std::vector<SpaceLine>& lines);
    void MeasurePoints();
    void MeasureTexts(VectorPart kind);
    void ChooseHeightForm();

    const VectorContent& content_;
    bool isR12_;
    bool contoursIn3D_;
    DxfLayers layers_;
    DecimalRounding roundText_; // places of texts, to less than a hundredth of their height
    DxfBox box_;
    std::uint64_t entities_ = 0;
    std::string heightForm_; // of the heights of points, for NumberText::FormatScreen
};

} // namespace terravo
