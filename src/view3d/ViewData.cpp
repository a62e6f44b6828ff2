#include "view3d/ViewData.h"

#include "plot2d/ColourScale.h"
#include "util/QuickSort3V.h"
#include "util/modUtilita.h"
#include "view3d/RegularGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace terravo {
namespace {

using modUtilita::RoundHalfEven;

constexpr double kLn10 = 2.30258509299405;
constexpr double kLargestPlainHeight = 1000;
constexpr double kLastColour = ColourScale::kViewColours - 1;

struct MinMax {
    double min = 0;
    double max = 0;
};

template <class Values>
MinMax MinMaxOf(const Values& values) {
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    return low == values.end() ? MinMax{} : MinMax{*low, *high};
}

// The triangles whose corners are all points: arrays of different lengths are cut to the shortest.
Table<Index> WithoutStrayCorners(Table<Index> triangles, Index pointCount) {
    const auto isSound = [&](Index t) {
        for (Index j = 1; j <= 3; ++j) {
            if (triangles(t, j) < 1 || triangles(t, j) > pointCount) {
                return false;
            }
        }
        return true;
    };
    Index sound = 0;
    for (Index t = 1; t <= triangles.Rows(); ++t) {
        sound += isSound(t) ? 1 : 0;
    }
    if (sound == triangles.Rows()) {
        return triangles;
    }
    Table<Index> kept(sound, 3);
    Index row = 0;
    for (Index t = 1; t <= triangles.Rows(); ++t) {
        if (isSound(t)) {
            ++row;
            for (Index j = 1; j <= 3; ++j) {
                kept(row, j) = triangles(t, j);
            }
        }
    }
    return kept;
}

float Narrow(double value) {
    return static_cast<float>(value);
}

double Wide(float value) {
    return static_cast<double>(value);
}

template <class Heights>
SpaceExtents ExtentsOf(const ViewData& data, const Heights& heights) {
    const MinMax x = MinMaxOf(data.X);
    const MinMax y = MinMaxOf(data.Y);
    const MinMax z = MinMaxOf(heights);
    return {x.min, x.max, y.min, y.max, z.min, z.max};
}

// Chooses the power of ten for the heights, a multiple of three, and divides extents and heights by
// it.
template <class Heights>
void ScaleHeights(ViewData& data, Heights& heights) {
    SpaceExtents& extents = data.extents;
    double largest = std::max(std::fabs(extents.zmin), std::fabs(extents.zmax));
    if (largest <= Wide(std::numeric_limits<float>::max())) {
        largest = Wide(Narrow(largest)); // the power of ten goes by the single precision
    }
    if (!(largest > kLargestPlainHeight)) {
        return;
    }
    data.zExponent = RoundHalfEven(std::floor(std::log(largest) / kLn10 / 3) * 3);
    data.zLabel = "z [10^" + std::to_string(data.zExponent) + "]";
    const double divisor = std::pow(10.0, data.zExponent);
    extents.zmin /= divisor;
    extents.zmax /= divisor;
    for (double& height : heights) {
        height /= divisor;
    }
}

// The colour of a height between the extents.
class HeightColours {
public:
    explicit HeightColours(const SingleExtents& extents)
        : lowest_(Wide(extents.zmin)),
          factor_(extents.zmax > extents.zmin ? kLastColour / (Wide(extents.zmax) - lowest_) : 0) {}

    // Extents in single precision, or given by a caller, may leave a height a little outside.
    [[nodiscard]] Colour Of(double z) const {
        static const std::vector<Colour> palette =
            ColourScale::MakePalette(ColourScale::kViewColours);
        const double inside = std::clamp((z - lowest_) * factor_, 0.0, kLastColour);
        return palette[static_cast<std::size_t>(RoundHalfEven(inside))];
    }

private:
    double lowest_;
    double factor_;
};

ViewData TakePoints(ViewMode mode, Array1<double> x, Array1<double> y, Array1<double> z,
                    std::string title) {
    ViewData data;
    data.mode = mode;
    data.X = std::move(x);
    data.Y = std::move(y);
    data.Z = std::move(z);
    data.title = std::move(title);
    const Index count = std::min({data.X.UpperBound(), data.Y.UpperBound(), data.Z.UpperBound()});
    data.X.Resize(count);
    data.Y.Resize(count);
    data.Z.Resize(count);
    return data;
}

// Farther points first: nearer ones are drawn over them.
void SortFromTheFarthest(ViewData& data, MessageService& messages) {
    QuickSort3V(data.Y, data.X, data.Z, 1, data.PointCount(), -1, messages);
}

void ColourPoints(ViewData& data) {
    data.pointColour = Array1<Colour>(data.PointCount());
    const HeightColours colours(data.extents.Single());
    for (Index i = 1; i <= data.PointCount(); ++i) {
        data.pointColour[i] = colours.Of(data.Z[i]);
    }
}

void PreparePoints(ViewData& data, const SpaceExtents* given) {
    data.extents = given != nullptr ? *given : ExtentsOf(data, data.Z);
    ScaleHeights(data, data.Z);
    ColourPoints(data);
}

void ColourCells(ViewData& data) {
    const Table<double>& z = data.gridZ;
    data.cellColour =
        Table<Colour>(std::max<Index>(data.Nx() - 1, 0), std::max<Index>(data.Ny() - 1, 0));
    const HeightColours colours(data.extents.Single());
    for (Index i = 1; i < data.Nx(); ++i) {
        for (Index j = 1; j < data.Ny(); ++j) {
            const float mean = Narrow((z(i, j + 1) + z(i, j) + z(i + 1, j + 1) + z(i + 1, j)) / 4);
            data.cellColour(i, j) = colours.Of(Wide(mean));
        }
    }
}

} // namespace

SingleExtents SpaceExtents::Single() const {
    return {Narrow(xmin), Narrow(xmax), Narrow(ymin), Narrow(ymax), Narrow(zmin), Narrow(zmax)};
}

Table<Index> TriangleTable(const TriangleList& triangles) {
    Table<Index> corners(triangles.count, 3);
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            corners(t, j) = triangles.Vertex(j, t);
        }
    }
    return corners;
}

ViewData ViewData::Triangoli(Array1<double> x, Array1<double> y, Array1<double> z,
                             Table<Index> corners, std::string title, const SpaceExtents* extents) {
    ViewData data =
        TakePoints(ViewMode::Triangles, std::move(x), std::move(y), std::move(z), std::move(title));
    data.triangles = WithoutStrayCorners(std::move(corners), data.PointCount());
    PreparePoints(data, extents);
    return data;
}

ViewData ViewData::Punti(Array1<double> x, Array1<double> y, Array1<double> z, std::string title,
                         MessageService& messages, const SpaceExtents* extents) {
    ViewData data =
        TakePoints(ViewMode::Points, std::move(x), std::move(y), std::move(z), std::move(title));
    SortFromTheFarthest(data, messages);
    PreparePoints(data, extents);
    return data;
}

ViewData ViewData::Superficie(Array1<double> x, Array1<double> y, Table<double> z,
                              std::string title) {
    ViewData data;
    data.mode = ViewMode::Surface;
    data.X = std::move(x);
    data.Y = std::move(y);
    data.gridZ = std::move(z);
    data.title = std::move(title);
    data.extents = ExtentsOf(data, data.gridZ);
    ScaleHeights(data, data.gridZ);
    ColourCells(data);
    return data;
}

ViewData ViewData::PointsOf(const ViewData& data, MessageService& messages) {
    ViewData points = TakePoints(ViewMode::Points, data.X, data.Y, data.Z, data.title);
    points.extents = data.extents;
    points.zLabel = data.zLabel;
    points.zExponent = data.zExponent;
    SortFromTheFarthest(points, messages);
    ColourPoints(points);
    return points;
}

std::optional<ViewData> ViewData::SurfaceOf(const ViewData& data) {
    std::optional<RegularGrid> grid = FindRegularGrid(data.X, data.Y, data.Z, data.PointCount());
    if (!grid) {
        return std::nullopt;
    }
    ViewData surface;
    surface.mode = ViewMode::Surface;
    surface.X = std::move(grid->x);
    surface.Y = std::move(grid->y);
    surface.gridZ = std::move(grid->z);
    surface.title = data.title;
    surface.extents = ExtentsOf(surface, surface.gridZ);
    surface.zLabel = data.zLabel;
    surface.zExponent = data.zExponent;
    ColourCells(surface);
    return surface;
}

} // namespace terravo
