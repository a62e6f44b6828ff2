// The smooth lines of one level.
//
// Data: the lines of a level with their repeats, the sliders of one line at a time. Method: each
// line is cut in its corners into chains, each chain is made even, and the curve is led through all
// vertices of the line.
#pragma once

#include "contour/smoothing/ErrorMeter.h"
#include "contour/smoothing/PointGradients.h"
#include "contour/smoothing/Slider.h"
#include "contour/smoothing/SmoothCurve.h"
#include "contour/smoothing/SmoothSolver.h"

#include <vector>

namespace terravo::smoothing {

class LevelSmoother {
public:
    /// Keeps references to the first two.
    /// @param gradients  null for the plain goal.
    LevelSmoother(const SliderMaker& sliders, const PointGradients* gradients, double smoothness)
        : sliderMaker_(sliders), gradients_(gradients), solver_(smoothness) {}

    /// @param contours  of the level, with repeats.
    /// @param[out] made  empty before.
    /// @return how far the lines leave their height.
    SmoothError Make(const ContourLevel& contours, const LevelSpacing& spacing, SmoothLevel& made);

private:
    void BeginLine(std::span<const ContourVertex> vertices, bool closed, double level,
                   const LevelSpacing& spacing);
    void BeginAtCorner();
    void SetParts();
    void SolveChains();
    void SolveChain(std::size_t first, std::size_t count);
    void AddLine(bool closed, const LevelSpacing& spacing, SmoothLevel& made);
    void Measure(const SmoothLevel& made, ErrorMeter& meter) const;

    const SliderMaker& sliderMaker_;
    const PointGradients* gradients_;
    SmoothSolver solver_;
    CurveMaker curve_;
    // Of one line. One that is closed and has corners begins with one and repeats it at its end.
    std::vector<Slider> sliders_;
    bool isRing_ = false; // closed without corners
    std::vector<double> goals_;
    std::vector<double> parts_;
    std::vector<double> lowest_;
    std::vector<double> highest_;
};

} // namespace terravo::smoothing
