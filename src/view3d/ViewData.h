// What an axonometric picture shows: points, triangles or a grid.
//
// Data: own copies of the caller's arrays, with their extents, a colour for each point or cell and
// the title. Method: heights are divided by a power of ten when they are large; colours go by
// height. Everything is prepared once; drawings only read it.
#pragma once

#include "plot2d/Colour.h"
#include "triangulation/TriangleList.h"
#include "util/Array1.h"
#include "util/Services.h"

#include <optional>
#include <string>

namespace terravo {

enum class ViewMode { Points = 1, Surface = 2, Triangles = 3 };

/// Limits of the three coordinates in single precision.
struct SingleExtents {
    float xmin = 0;
    float xmax = 0;
    float ymin = 0;
    float ymax = 0;
    float zmin = 0;
    float zmax = 0;

    bool operator==(const SingleExtents&) const = default;
};

/// Limits of the three coordinates.
struct SpaceExtents {
    double xmin = 0;
    double xmax = 0;
    double ymin = 0;
    double ymax = 0;
    double zmin = 0;
    double zmax = 0;

    [[nodiscard]] SingleExtents Single() const;
    bool operator==(const SpaceExtents&) const = default;
};

/// The corners of a triangle list as rows of a table.
Table<Index> TriangleTable(const TriangleList& triangles);

struct ViewData {
    // Each takes its own copy of the arrays. Without given extents they are those of the data.
    // Arrays of different lengths are cut to the shortest.

    /// @param corners  one row a triangle: three 1-based point numbers.
    static ViewData Triangoli(Array1<double> x, Array1<double> y, Array1<double> z,
                              Table<Index> corners, std::string title,
                              const SpaceExtents* extents = nullptr);
    /// Points from the farthest, which has the largest y, to the nearest.
    /// @param messages  of the sort.
    static ViewData Punti(Array1<double> x, Array1<double> y, Array1<double> z, std::string title,
                          MessageService& messages, const SpaceExtents* extents = nullptr);
    /// @param z  height at (i, j) over x(i), y(j).
    static ViewData Superficie(Array1<double> x, Array1<double> y, Table<double> z,
                               std::string title);

    // The same heights, power of ten and title as another kind of picture.

    /// @param data  points or triangles; messages  of the sort.
    static ViewData PointsOf(const ViewData& data, MessageService& messages);
    /// @param data  points or triangles.
    /// @return nothing when the points do not form a regular grid.
    static std::optional<ViewData> SurfaceOf(const ViewData& data);

    [[nodiscard]] Index PointCount() const { return Z.UpperBound(); }
    [[nodiscard]] Index Nx() const { return X.UpperBound(); }
    [[nodiscard]] Index Ny() const { return Y.UpperBound(); }

    ViewMode mode = ViewMode::Points;
    Array1<double> X;
    Array1<double> Y;
    Array1<double> Z;       // points and triangles
    Table<double> gridZ;    // surface: (i, j), i over X, j over Y
    Table<Index> triangles; // rows are triangles
    std::string title;
    SpaceExtents extents; // heights divided as the data's are
    std::string zLabel = "z";
    std::int32_t zExponent = 0; // of the power of ten that heights were divided by
    Array1<Colour> pointColour;
    Table<Colour> cellColour; // (i, j) between the nodes i, i + 1 and j, j + 1
};

} // namespace terravo
