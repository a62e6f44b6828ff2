// How uneven a line is.
//
// Data: the sliders of a chain, the parts of their edges, the goal of each. Method: the sum of the
// squared curvature at the vertices and of the squared distance from the goals, in the balance that
// keeps waves longer than the filter length and takes shorter ones away. Curvature is measured by
// the angles between chords, so that closed lines do not shrink. Weights and directions are held
// while a step is tried: only then do two energies compare.
#pragma once

#include "contour/smoothing/BandedBox.h"
#include "contour/smoothing/Slider.h"

#include <span>
#include <vector>

namespace terravo::smoothing {

/// Sliders that follow each other and are made even together.
struct Chain {
    std::span<const Slider> sliders; // 2 at least, 3 when closed
    std::span<const double> goals;   // parts of the edges
    std::span<double> parts;         // where the vertices are
    std::span<const double> lowest;  // where they may go
    std::span<const double> highest;
    bool closed = false;
};

class LineEnergy {
public:
    /// @param smoothness  filter length in edges, > 0.
    explicit LineEnergy(double smoothness) : smoothness_(smoothness) {}

    /// Takes a chain in; the lengths that the vertices stand for are those of now.
    void Begin(const Chain& chain);

    /// Sets weights and directions as the parts are, and gives the energy.
    double Renew(std::span<const double> parts);
    /// The energy with weights and directions as they are.
    double At(std::span<const double> parts);
    /// What vertex i had in the last one.
    [[nodiscard]] double OfVertex(std::size_t i) const { return nodes_[i].energy; }

    /// The problem whose solution is the best step from the last parts, without its bounds.
    void Linearise(BandedBox& box) const;

private:
    struct Node {
        PlanPoint along;
        PlanPoint low;
        PlanPoint goalPlace;
        double goal = 0;
        double filter = 0;   // length
        double fidelity = 0; // weight of the distance from the goal
        double sideways = 0; // weight of it along the edge
        double part = 0;
        PlanPoint place;
        PlanPoint normal;      // of the chord to the next one, to the left
        double chord = 0;      // its length
        PlanPoint across;      // the direction in which the distance counts
        double turnWeight = 0; // 0 at the ends of an open chain
        double turn = 0;
        double offset = 0; // distance from the goal
        double energy = 0;
    };

    [[nodiscard]] std::size_t After(std::size_t i) const {
        return i + 1 < nodes_.size() ? i + 1 : 0;
    }
    [[nodiscard]] std::size_t Before(std::size_t i) const {
        return i > 0 ? i - 1 : nodes_.size() - 1;
    }
    [[nodiscard]] bool IsEnd(std::size_t i) const {
        return !closed_ && (i == 0 || i + 1 == nodes_.size());
    }
    [[nodiscard]] std::size_t ChordCount() const { return nodes_.size() - (closed_ ? 0 : 1); }
    void SetFilters();
    void SetFidelities();
    void Place(std::span<const double> parts);
    void SetWeights();
    double Sum();
    void AddTurn(std::size_t i, BandedBox& box) const;

    double smoothness_;
    bool closed_ = false;
    std::vector<Node> nodes_;
};

} // namespace terravo::smoothing
