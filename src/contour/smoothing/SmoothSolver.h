// Moves the vertices of a chain until it is even.
//
// Data: a chain and what its bounds allow. Method: a few rounds of steps to the minimum of the
// linearised problem, by the active set and by sweeps in turn. Where the energy about a vertex has
// risen, its step alone is cut, and tried again. Whatever comes out is within the bounds.
#pragma once

#include "contour/smoothing/BandedBox.h"
#include "contour/smoothing/LineEnergy.h"

#include <vector>

namespace terravo::smoothing {

class SmoothSolver {
public:
    /// @param smoothness  filter length in edges; 0 moves nothing.
    explicit SmoothSolver(double smoothness) : smoothness_(smoothness), energy_(smoothness) {}

    /// Changes the parts of a chain.
    void Solve(const Chain& chain);

private:
    void FindStep(const Chain& chain, std::size_t round);
    bool TakeStep(const Chain& chain, double energy);
    void Apply(const Chain& chain);
    bool CutWhereRisen(bool closed, double leastRise, bool entirely);

    double smoothness_;
    LineEnergy energy_;
    BandedBox box_;
    BoxSolver solver_;
    std::vector<double> step_;
    std::vector<double> lengths_; // what of its step a vertex goes
    std::vector<double> old_;     // parts before the step
    std::vector<double> before_;  // energy of each vertex then
    double reached_ = 0;          // energy after the step
};

} // namespace terravo::smoothing
