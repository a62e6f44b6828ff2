// The state of the axonometric picture: data, view, projection.
//
// Data: its own copies of points, triangles or a grid; the slant and length of the y axis, the
// angle of rotation, and the coefficients that the frame gives. x runs to the right, z upwards, y
// along a slanted axis. Method: heights are divided by a power of ten when they are large; each
// point gets a colour by its height; a place is rotated about the middle of the plan extent and
// projected by two linear maps. Fields said to be single precision are floats on purpose.
#pragma once

#include "plot2d/Colour.h"
#include "plot2d/PixelPoint.h"
#include "triangulation/TriangleList.h"
#include "util/Array1.h"
#include "util/Services.h"

#include <string>
#include <vector>

namespace terravo {

enum class ViewMode { Points = 1, Surface = 2, Triangles = 3 };

enum class StandardView { XY, ZX, ZY };

inline constexpr float kHalfPi = 1.5707964F;
inline constexpr double kDegreesPerRadian = 57.29577951308238;

/// Limits of the three coordinates.
struct SpaceExtents {
    float xmin = 0;
    float xmax = 0;
    float ymin = 0;
    float ymax = 0;
    float zmin = 0;
    float zmax = 0;

    bool operator==(const SpaceExtents&) const = default;
};

/// Pixel x of x on the x axis is Ax x + Bx; Ay y + By is the distance along the slanted axis from
/// ymin, pixels; pixel y of z is Az z + Bz, with Az negative.
struct PixelCoefficients {
    float Ax = 0;
    float Bx = 0;
    float Ay = 0;
    float By = 0;
    float Az = 0;
    float Bz = 0;
};

struct PlanPlace {
    double x = 0;
    double y = 0;
};

/// Turns a place about a centre.
/// @param theta  radians, counter-clockwise.
PlanPlace RotatePoint(double x, double y, double theta, double cx, double cy);

/// What the picture reads out at a place of the pointer.
struct NearestPoint {
    bool found = false;
    double x = 0;
    double y = 0;
    double z = 0; // in the data's own unit
    PixelPoint pixel;
};

/// The corners of a triangle list as rows of a table.
Table<Index> TriangleTable(const TriangleList& triangles);

class AxonometricView {
public:
    AxonometricView();

    // Entries: each takes its own copy of the arrays and prepares the data. Without given extents
    // they are those of the data. Arrays of different lengths are cut to the shortest.

    /// @param corners  one row a triangle: three 1-based point numbers.
    void Triangoli(Array1<double> x, Array1<double> y, Array1<double> z, Table<Index> corners,
                   std::string title, const SpaceExtents* extents = nullptr);
    void Punti(Array1<double> x, Array1<double> y, Array1<double> z, std::string title,
               MessageService& messages, const SpaceExtents* extents = nullptr);
    /// @param z  height at (i, j) over x(i), y(j).
    void Superficie(Array1<double> x, Array1<double> y, Table<double> z, std::string title);

    /// Takes the working extents that the frame has widened, and what follows from them: sines,
    /// centre, half ranges and slant factors.
    void TakeFrame();

    /// Where a place falls, turned first while the view rotates.
    [[nodiscard]] PixelPosition Project(double x, double y, double z) const;

    /// Length and slant of the y axis for a standard view.
    /// @param outerHeight  of the drawing area, pixels.
    void SetStandardView(StandardView view, int outerHeight);

    /// The end of the y axis is dragged to a place in the drawing area's user units.
    void DragAxisEnd(double userX, double userZ);

    /// The point or node nearest to a pixel, by the last drawing.
    [[nodiscard]] NearestPoint FindNearest(PixelPoint pixel) const;

    ViewMode mode = ViewMode::Points;
    Array1<double> X;
    Array1<double> Y;
    Array1<double> Z;       // points and triangles
    Table<double> gridZ;    // surface: (i, j), i over X, j over Y
    Table<Index> triangles; // rows are triangles
    std::string title;
    Index pointCount = 0;
    Index nx = 0;
    Index ny = 0;
    SpaceExtents dataExtents; // as prepared
    SpaceExtents extents;     // working copy of a redraw, widened by the frame
    std::string zLabel = "z";
    std::int32_t zExponent = 0;
    float rayx = 1.0F; // length of the drawn y axis in lengths of the drawn x axis
    float alfa = 0.5235988F;
    float sinAlfa = 0;
    float cosAlfa = 0;
    float theta = 0; // radians, 0 to below 2 pi
    bool rotating = false;
    double centreX = 0;
    double centreY = 0;
    float xRange = 0;
    float halfX = 0;
    float halfY = 0;
    float zRange = 0;
    float slantX = 0;
    float slantZ = 0;
    PixelCoefficients coefficients;
    Array1<Colour> pointColour;
    Table<Colour> cellColour;
    Array1<PixelPoint> screenPoint; // of the last drawing; the nodes of a grid row by row in i

private:
    void TakePoints(Array1<double> x, Array1<double> y, Array1<double> z, std::string newTitle);
    void PreparePoints(const SpaceExtents* given);
    void PrepareSurface();
    double ScaleHeights();
    [[nodiscard]] Colour ColourOf(double z, double factor) const;
    [[nodiscard]] double ColourFactor() const;

    std::vector<Colour> palette_;
};

} // namespace terravo
