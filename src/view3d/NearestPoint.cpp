#include "view3d/NearestPoint.h"

#include "util/modUtilita.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace terravo {
namespace {

// Keeps the first of the best offers.
class Search {
public:
    Search(const Array1<PixelPoint>& screenPoint, PixelPoint pixel)
        : screenPoint_(screenPoint), pixel_(pixel) {}

    /// @param handicap  added to the squared distance, pixels.
    void Offer(Index k, std::int64_t handicap = 0) {
        const std::int64_t dx = std::int64_t{screenPoint_[k].x} - pixel_.x;
        const std::int64_t dy = std::int64_t{screenPoint_[k].y} - pixel_.y;
        const std::int64_t score = dx * dx + dy * dy + handicap;
        if (score < best_) {
            best_ = score;
            bestIndex_ = k;
        }
    }
    /// 0 while there was no offer.
    [[nodiscard]] Index Best() const { return bestIndex_; }

private:
    const Array1<PixelPoint>& screenPoint_;
    PixelPoint pixel_;
    std::int64_t best_ = std::numeric_limits<std::int32_t>::max();
    Index bestIndex_ = 0;
};

void OfferNodes(Search& search, const ViewData& data, double ymin) {
    for (Index j = 1; j <= data.Ny(); ++j) {
        // Rows farther back count as farther off.
        const std::int32_t back = modUtilita::RoundHalfEven(data.Y[j] - ymin);
        for (Index i = 1; i <= data.Nx(); ++i) {
            search.Offer((i - 1) * data.Ny() + j, back);
        }
    }
}

} // namespace

std::optional<NearestPoint> FindNearest(const ViewData& data, const Drawing3D& drawing,
                                        PixelPoint pixel) {
    const bool isGrid = data.mode == ViewMode::Surface;
    Search search(drawing.screenPoint, pixel);
    if (isGrid) {
        OfferNodes(search, data, drawing.projection.Frame().extents.ymin);
    } else {
        for (Index k = data.PointCount(); k >= 1; --k) {
            search.Offer(k);
        }
    }
    const Index k = search.Best();
    if (k == 0) {
        return std::nullopt;
    }
    const double unit = std::pow(10.0, data.zExponent);
    const PixelPoint at = drawing.screenPoint[k];
    if (!isGrid) {
        return NearestPoint{data.X[k], data.Y[k], data.Z[k] * unit, at, k};
    }
    const Index i = (k - 1) / data.Ny() + 1;
    const Index j = (k - 1) % data.Ny() + 1;
    return NearestPoint{data.X[i], data.Y[j], data.gridZ(i, j) * unit, at, 0};
}

} // namespace terravo
