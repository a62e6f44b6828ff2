#include "contour/smoothing/LineEnergy.h"

#include <algorithm>
#include <numbers>

namespace terravo::smoothing {
namespace {

constexpr double kShortestChord = 1e-6;  // of the filter length, so that nothing is divided by 0
constexpr double kShortestWeighed = 0.1; // likewise: shorter chords do not weigh more
constexpr double kShortestStood = 0.02;  // likewise: what a vertex stands for at least
constexpr double kMostOfRadius = 0.5;    // filter length of a closed line by its mean radius
constexpr double kLeastOfFilter = 1e-3;  // what of the filter length that leaves at least
constexpr double kAlongEdge = 0.02;      // what a distance along the edge counts
constexpr double kSharpestTurn = 1e-3;   // 1 + cosine, so that a turn back stays finite
constexpr double kFirmness = 1e-9;       // added to the diagonal

} // namespace

void LineEnergy::Begin(const Chain& chain) {
    closed_ = chain.closed;
    nodes_.resize(chain.sliders.size());
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        Node& node = nodes_[i];
        node.low = chain.sliders[i].low;
        node.along = chain.sliders[i].along;
        node.goal = chain.goals[i];
        node.goalPlace = chain.sliders[i].At(node.goal);
    }
    SetFilters();
    Place(chain.parts);
    SetFidelities();
}

// In proportion to the mean edge of five.
void LineEnergy::SetFilters() {
    const std::size_t n = nodes_.size();
    for (Node& node : nodes_) {
        node.chord = Length(node.along); // for now
    }
    for (std::size_t i = 0; i < n; ++i) {
        double sum = 0;
        int count = 0;
        for (std::size_t k = i + n - 2; k <= i + n + 2; ++k) {
            if (closed_ || (k >= n && k < 2 * n)) {
                sum += nodes_[k < n ? k : k < 2 * n ? k - n : k - 2 * n].chord;
                ++count;
            }
        }
        nodes_[i].filter = smoothness_ * sum / count;
    }
}

void LineEnergy::SetFidelities() {
    double around = 0;
    for (std::size_t k = 0; k < ChordCount(); ++k) {
        around += nodes_[k].chord;
    }
    const double radius = around / (2 * std::numbers::pi);
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        Node& node = nodes_[i];
        if (closed_) {
            node.filter = std::max(std::min(node.filter, kMostOfRadius * radius),
                                   kLeastOfFilter * node.filter);
        }
        const double before = closed_ || i > 0 ? nodes_[Before(i)].chord : 0;
        const double after = closed_ || i + 1 < nodes_.size() ? node.chord : 0;
        const double stands = std::max((before + after) / 2, kShortestStood * node.filter);
        const double square = node.filter * node.filter;
        node.fidelity = stands / (square * square);
        node.sideways = node.fidelity * kAlongEdge * Dot(node.along, node.along);
    }
}

void LineEnergy::Place(std::span<const double> parts) {
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        Node& node = nodes_[i];
        node.part = parts[i];
        node.place = node.low + node.part * node.along;
    }
    for (std::size_t k = 0; k < ChordCount(); ++k) {
        Node& node = nodes_[k];
        const PlanPoint chord = nodes_[After(k)].place - node.place;
        const double length = Length(chord);
        node.normal = length > 0 ? (1 / length) * LeftOf(chord) : PlanPoint{};
        node.chord = std::max(length, kShortestChord * node.filter);
    }
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        if (!IsEnd(i)) {
            const PlanPoint before = nodes_[Before(i)].normal;
            const PlanPoint after = nodes_[i].normal;
            nodes_[i].turn =
                2 * Cross(before, after) / std::max(kSharpestTurn, 1 + Dot(before, after));
        }
    }
}

void LineEnergy::SetWeights() {
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        Node& node = nodes_[i];
        if (IsEnd(i)) {
            node.across = nodes_[i == 0 ? 0 : i - 1].normal;
            node.turnWeight = node.turn = 0;
        } else {
            const Node& before = nodes_[Before(i)];
            node.across = Unit(before.normal + node.normal);
            node.turnWeight =
                1 / std::max((before.chord + node.chord) / 2, kShortestWeighed * node.filter);
        }
    }
}

double LineEnergy::Sum() {
    double sum = 0;
    for (Node& node : nodes_) {
        node.offset = Dot(node.across, node.place - node.goalPlace);
        const double slid = node.part - node.goal;
        node.energy = node.turnWeight * node.turn * node.turn +
                      node.fidelity * node.offset * node.offset + node.sideways * slid * slid;
        sum += node.energy;
    }
    return sum;
}

double LineEnergy::Renew(std::span<const double> parts) {
    Place(parts);
    SetWeights();
    return Sum();
}

double LineEnergy::At(std::span<const double> parts) {
    Place(parts);
    return Sum();
}

void LineEnergy::Linearise(BandedBox& box) const {
    box.Begin(nodes_.size(), closed_);
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        const Node& node = nodes_[i];
        const double slope = Dot(node.across, node.along);
        box.diagonal[i] += node.fidelity * slope * slope + node.sideways;
        box.right[i] -=
            node.fidelity * slope * node.offset + node.sideways * (node.part - node.goal);
        if (!IsEnd(i)) {
            AddTurn(i, box);
        }
    }
    for (double& value : box.diagonal) {
        value *= 1 + kFirmness;
    }
}

// The turn at i depends on three parts.
void LineEnergy::AddTurn(std::size_t i, BandedBox& box) const {
    const std::size_t before = Before(i);
    const std::size_t after = After(i);
    const Node& node = nodes_[i];
    const Node& last = nodes_[before];
    const double steepness = 1 + node.turn * node.turn / 4;
    const double in = steepness / last.chord;
    const double out = steepness / node.chord;
    const double byBefore = in * Dot(last.normal, last.along);
    const double byThis = -(out * Dot(node.normal, node.along) + in * Dot(last.normal, node.along));
    const double byAfter = out * Dot(node.normal, nodes_[after].along);
    const double weight = node.turnWeight;
    box.diagonal[before] += weight * byBefore * byBefore;
    box.diagonal[i] += weight * byThis * byThis;
    box.diagonal[after] += weight * byAfter * byAfter;
    box.toNext[before] += weight * byBefore * byThis;
    box.toNext[i] += weight * byThis * byAfter;
    box.toSecond[before] += weight * byBefore * byAfter;
    box.right[before] -= weight * byBefore * node.turn;
    box.right[i] -= weight * byThis * node.turn;
    box.right[after] -= weight * byAfter * node.turn;
}

} // namespace terravo::smoothing
