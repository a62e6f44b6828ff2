// From where a terrain is seen.
//
// Data: places relative to the middle of the terrain, data units, x to the east, y to the north, z
// up; the place looked at, the direction, the distance; the picture in pixels, y down. Method:
// heights are stretched first, all else is the usual orbit about the place looked at. In double
// precision throughout, so that a site far from the origin of its coordinates stands still.
#pragma once

#include "triangulation/SpaceLine.h"

#include <array>
#include <optional>

namespace terravo {

/// A place on the picture, pixels from its upper left corner.
struct PicturePlace {
    double x = 0;
    double y = 0;
    double depth = 0; // from the eye along the direction of view, stretched data units
};

/// A ray of sight, not stretched: places are eye + t * direction.
struct SightRay {
    SpacePoint eye;
    SpacePoint direction;
};

/// The half extents of the box round the terrain, heights not stretched.
struct TerrainReach {
    double x = 1;
    double y = 1;
    double z = 1;
};

/// The factor at which heights are first shown: 1 where the relief can be seen and does not tower
/// over the plan, else the usual factor that makes it about a quarter as high as the plan is wide.
double ProposedExaggeration(const TerrainReach& reach);

enum class TerrainSide : unsigned char { Top, FromNorth, FromSouth, FromEast, FromWest };

class TerrainCamera {
public:
    static constexpr double kFieldOfView = 35; // degrees, of the picture's height
    /// How far the plate reaches beyond the terrain, and lies below it, of the longer half extent.
    static constexpr double kPlateBeyond = 0.04;
    static constexpr double kLeastExaggeration = 0.001;
    static constexpr double kMostExaggeration = 1000;

    [[nodiscard]] double Azimuth() const { return azimuth_; }
    [[nodiscard]] double Elevation() const { return elevation_; }
    [[nodiscard]] double Exaggeration() const { return exaggeration_; }
    [[nodiscard]] bool IsPerspective() const { return perspective_; }
    [[nodiscard]] double Distance() const { return distance_; }
    [[nodiscard]] const SpacePoint& Target() const { return target_; }

    /// Pixels, 1 at least.
    void SetSize(int width, int height);
    void SetReach(const TerrainReach& reach);
    /// @param azimuth    degrees, clockwise from north: where one looks; 0 has north at the top.
    /// @param elevation  degrees above the ground, 0 to 90: 90 looks straight down.
    void SetDirection(double azimuth, double elevation);
    void LookFrom(TerrainSide side);
    /// Parallel or perspective; what lies at the place looked at keeps its size.
    void SetPerspective(bool on) { perspective_ = on; }
    /// The factor of heights, kept within bounds; 1 is true to scale. The ground in the middle of
    /// the picture stays there.
    void SetExaggeration(double factor);

    /// The whole terrain and its plate in the picture, in the direction of now.
    void Fit();
    /// Turned by a drag, pixels.
    void Orbit(double right, double down);
    /// Moved with the hand, pixels.
    void Pan(double right, double down);
    /// Nearer by a factor above 1.
    /// @param place  that stays where it is on the picture.
    void ZoomAt(const SpacePoint& place, double factor);
    /// A place becomes the middle of the picture.
    void CentreOn(const SpacePoint& place) { target_ = place; }

    /// Where a place falls; nothing behind the eye.
    [[nodiscard]] std::optional<PicturePlace> Project(const SpacePoint& place) const;
    [[nodiscard]] SightRay RayAt(double x, double y) const;
    /// The place at a pixel that is as far away as the place looked at.
    [[nodiscard]] SpacePoint PlaceAcross(double x, double y) const;
    /// Pixels of a data unit across the direction of view, at the place looked at.
    [[nodiscard]] double PixelsPerUnit() const;

    /// From places, not stretched, to the cube of the graphics, column by column.
    [[nodiscard]] std::array<float, 16> Matrix() const;
    /// Unit vectors of the picture in the stretched terrain: to the right, up, away from the eye.
    struct Basis {
        SpacePoint right;
        SpacePoint up;
        SpacePoint away;
    };
    [[nodiscard]] Basis Axes() const;

private:
    template <class Use>
    void ForEachCorner(const Use& use) const;
    void FitDistance(double margin);
    [[nodiscard]] double Margin() const;
    [[nodiscard]] SpacePoint Stretched(const SpacePoint& place) const;
    [[nodiscard]] SpacePoint Eye() const; // stretched
    [[nodiscard]] double HalfHeight() const;
    [[nodiscard]] double Aspect() const { return static_cast<double>(width_) / height_; }

    TerrainReach reach_;
    SpacePoint target_; // not stretched
    double azimuth_ = 330;
    double elevation_ = 35;
    double distance_ = 4;
    double exaggeration_ = 1;
    bool perspective_ = true;
    int width_ = 640;
    int height_ = 480;
};

} // namespace terravo
