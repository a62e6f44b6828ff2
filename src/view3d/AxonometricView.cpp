#include "view3d/AxonometricView.h"

#include "plot2d/ColourScale.h"
#include "util/QuickSort3V.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <utility>

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

} // namespace

PlanPlace RotatePoint(double x, double y, double theta, double cx, double cy) {
    const double sine = std::sin(theta);
    const double cosine = std::cos(theta);
    return {(x - cx) * cosine - (y - cy) * sine + cx, (y - cy) * cosine + (x - cx) * sine + cy};
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

AxonometricView::AxonometricView() : palette_(ColourScale::MakePalette(ColourScale::kViewColours)) {
    sinAlfa = std::sin(alfa);
    cosAlfa = std::cos(alfa);
}

void AxonometricView::TakePoints(Array1<double> x, Array1<double> y, Array1<double> z,
                                 std::string newTitle) {
    X = std::move(x);
    Y = std::move(y);
    Z = std::move(z);
    title = std::move(newTitle);
    pointCount = std::min({X.UpperBound(), Y.UpperBound(), Z.UpperBound()});
    X.Resize(pointCount);
    Y.Resize(pointCount);
    Z.Resize(pointCount);
    screenPoint = Array1<PixelPoint>(pointCount);
}

void AxonometricView::Triangoli(Array1<double> x, Array1<double> y, Array1<double> z,
                                Table<Index> corners, std::string newTitle,
                                const SpaceExtents* given) {
    TakePoints(std::move(x), std::move(y), std::move(z), std::move(newTitle));
    triangles = WithoutStrayCorners(std::move(corners), pointCount);
    mode = ViewMode::Triangles;
    PreparePoints(given);
}

void AxonometricView::Punti(Array1<double> x, Array1<double> y, Array1<double> z,
                            std::string newTitle, MessageService& messages,
                            const SpaceExtents* given) {
    TakePoints(std::move(x), std::move(y), std::move(z), std::move(newTitle));
    mode = ViewMode::Points;
    // Farther points first: nearer ones are drawn over them.
    QuickSort3V(Y, X, Z, 1, pointCount, -1, messages);
    PreparePoints(given);
}

void AxonometricView::Superficie(Array1<double> x, Array1<double> y, Table<double> z,
                                 std::string newTitle) {
    X = std::move(x);
    Y = std::move(y);
    gridZ = std::move(z);
    title = std::move(newTitle);
    mode = ViewMode::Surface;
    PrepareSurface();
}

void AxonometricView::PreparePoints(const SpaceExtents* given) {
    if (given != nullptr) {
        dataExtents = *given;
    } else {
        const MinMax x = MinMaxOf(X);
        const MinMax y = MinMaxOf(Y);
        const MinMax z = MinMaxOf(Z);
        dataExtents = {static_cast<float>(x.min), static_cast<float>(x.max),
                       static_cast<float>(y.min), static_cast<float>(y.max),
                       static_cast<float>(z.min), static_cast<float>(z.max)};
    }
    const double divisor = ScaleHeights();
    for (double& z : Z) {
        z /= divisor;
    }
    pointColour = Array1<Colour>(pointCount);
    const double factor = ColourFactor();
    for (Index i = 1; i <= pointCount; ++i) {
        pointColour[i] = ColourOf(Z[i], factor);
    }
}

void AxonometricView::PrepareSurface() {
    nx = X.UpperBound();
    ny = Y.UpperBound();
    const MinMax x = MinMaxOf(X);
    const MinMax y = MinMaxOf(Y);
    const MinMax z = MinMaxOf(gridZ);
    dataExtents = {static_cast<float>(x.min), static_cast<float>(x.max), static_cast<float>(y.min),
                   static_cast<float>(y.max), static_cast<float>(z.min), static_cast<float>(z.max)};
    const double divisor = ScaleHeights();
    for (double& height : gridZ) {
        height /= divisor;
    }
    screenPoint = Array1<PixelPoint>(nx * ny);
    cellColour = Table<Colour>(std::max<Index>(nx - 1, 0), std::max<Index>(ny - 1, 0));
    const double factor = ColourFactor();
    for (Index i = 1; i < nx; ++i) {
        for (Index j = 1; j < ny; ++j) {
            const auto mean = static_cast<float>(
                (gridZ(i, j + 1) + gridZ(i, j) + gridZ(i + 1, j + 1) + gridZ(i + 1, j)) / 4);
            cellColour(i, j) = ColourOf(static_cast<double>(mean), factor);
        }
    }
}

// Chooses the power of ten for the heights, a multiple of three, and divides the extents by it.
double AxonometricView::ScaleHeights() {
    const double largest = std::max(std::fabs(static_cast<double>(dataExtents.zmin)),
                                    std::fabs(static_cast<double>(dataExtents.zmax)));
    zExponent = 0;
    zLabel = "z";
    if (!(largest > kLargestPlainHeight)) {
        return 1;
    }
    zExponent = RoundHalfEven(std::floor(std::log(largest) / kLn10 / 3) * 3);
    zLabel = "z [10^" + std::to_string(zExponent) + "]";
    const double divisor = std::pow(10.0, zExponent);
    dataExtents.zmin = static_cast<float>(static_cast<double>(dataExtents.zmin) / divisor);
    dataExtents.zmax = static_cast<float>(static_cast<double>(dataExtents.zmax) / divisor);
    return divisor;
}

double AxonometricView::ColourFactor() const {
    return dataExtents.zmax > dataExtents.zmin
               ? kLastColour /
                     (static_cast<double>(dataExtents.zmax) - static_cast<double>(dataExtents.zmin))
               : 0.0;
}

// Extents in single precision, or given by a caller, may leave a height a little outside.
Colour AxonometricView::ColourOf(double z, double factor) const {
    const double place = (z - static_cast<double>(dataExtents.zmin)) * factor;
    const double inside = std::clamp(place, 0.0, kLastColour);
    return palette_[static_cast<std::size_t>(RoundHalfEven(inside))];
}

void AxonometricView::TakeFrame() {
    sinAlfa = std::sin(alfa);
    cosAlfa = std::cos(alfa);
    const auto wide = [](float value) { return static_cast<double>(value); };
    centreX = (wide(extents.xmin) + wide(extents.xmax)) / 2;
    centreY = (wide(extents.ymin) + wide(extents.ymax)) / 2;
    xRange = extents.xmax - extents.xmin;
    halfX = xRange / 2;
    halfY = (extents.ymax - extents.ymin) / 2;
    zRange = extents.zmax - extents.zmin;
    const float ratio = xRange / (extents.ymax - extents.ymin);
    slantX = ratio * rayx * cosAlfa;
    slantZ = ratio * rayx * sinAlfa * (-coefficients.Ax / coefficients.Az);
}

PixelPosition AxonometricView::Project(double x, double y, double z) const {
    if (rotating) {
        const PlanPlace turned = RotatePoint(x, y, static_cast<double>(theta), centreX, centreY);
        x = turned.x;
        y = turned.y;
    }
    const auto wide = [](float value) { return static_cast<double>(value); };
    const PixelCoefficients& c = coefficients;
    const double along = wide(c.Ay) * y + wide(c.By);
    return {along * wide(cosAlfa) + (wide(c.Ax) * x + wide(c.Bx)),
            wide(c.Az) * z + wide(c.Bz) - along * wide(sinAlfa)};
}

void AxonometricView::SetStandardView(StandardView view, int outerHeight) {
    switch (view) {
    case StandardView::XY: {
        const double width = (static_cast<double>(rayx) * std::cos(static_cast<double>(alfa)) + 1) *
                             static_cast<double>(xRange) * static_cast<double>(coefficients.Ax);
        const std::int32_t pixels = std::max(RoundHalfEven(width), 1);
        rayx = static_cast<float>(0.8 * outerHeight / pixels);
        alfa = kHalfPi;
        break;
    }
    case StandardView::ZX:
        rayx = 0;
        alfa = kHalfPi;
        break;
    case StandardView::ZY:
        rayx = 1000;
        alfa = 0;
        break;
    }
}

void AxonometricView::DragAxisEnd(double userX, double userZ) {
    const double length = static_cast<double>(xRange) * static_cast<double>(coefficients.Ax);
    const double dx =
        (userX - static_cast<double>(extents.xmin)) * static_cast<double>(coefficients.Ax);
    const double dz =
        (static_cast<double>(extents.zmin) - userZ) * static_cast<double>(coefficients.Az);
    // Adding zero makes a negative zero positive: exactly to the left is +180 degrees.
    alfa = static_cast<float>(std::atan2(dz + 0.0, dx));
    rayx = static_cast<float>(std::sqrt(dx * dx + dz * dz) / length);
}

NearestPoint AxonometricView::FindNearest(PixelPoint pixel) const {
    std::int64_t best = std::numeric_limits<std::int32_t>::max();
    Index bestIndex = 0;
    const auto score = [&](Index k) {
        const std::int64_t dx = std::int64_t{screenPoint[k].x} - pixel.x;
        const std::int64_t dy = std::int64_t{screenPoint[k].y} - pixel.y;
        return dx * dx + dy * dy;
    };
    const auto offer = [&](Index k, std::int64_t value) {
        if (value < best) {
            best = value;
            bestIndex = k;
        }
    };
    if (mode == ViewMode::Surface) {
        for (Index j = 1; j <= ny; ++j) {
            // Rows farther back count as farther off.
            const std::int32_t back = RoundHalfEven(Y[j] - static_cast<double>(extents.ymin));
            for (Index i = 1; i <= nx; ++i) {
                offer((i - 1) * ny + j, score((i - 1) * ny + j) + back);
            }
        }
    } else {
        for (Index k = pointCount; k >= 1; --k) {
            offer(k, score(k));
        }
    }
    NearestPoint nearest;
    if (bestIndex == 0) {
        return nearest;
    }
    const double unit = std::pow(10.0, zExponent);
    nearest.found = true;
    nearest.pixel = screenPoint[bestIndex];
    if (mode == ViewMode::Surface) {
        const Index i = (bestIndex - 1) / ny + 1;
        const Index j = (bestIndex - 1) % ny + 1;
        nearest.x = X[i];
        nearest.y = Y[j];
        nearest.z = gridZ(i, j) * unit;
    } else {
        nearest.x = X[bestIndex];
        nearest.y = Y[bestIndex];
        nearest.z = Z[bestIndex] * unit;
    }
    return nearest;
}

} // namespace terravo
