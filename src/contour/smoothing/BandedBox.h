// Quadratic problems with five diagonals and bounds.
//
// Data: minimise x'Hx / 2 - b'x with low <= x <= high; H symmetric, positive on the diagonal, and
// coupling each unknown with the next two, round the end when closed. Method: two that fail in
// different places. The active set fixes unknowns at their bounds, solves the rest as a band and
// mends the choice; where many bounds meet it may go round in circles. Projected sweeps always
// gain, but slowly on long smooth stretches.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace terravo::smoothing {

struct BandedBox {
    bool closed = false;
    std::vector<double> diagonal;
    std::vector<double> toNext;   // of i and i + 1; open: 0 for the last one
    std::vector<double> toSecond; // of i and i + 2; open: 0 for the last two
    std::vector<double> right;    // b
    std::vector<double> low;      // <= 0, so that 0 is allowed
    std::vector<double> high;     // >= 0

    [[nodiscard]] std::size_t Count() const { return diagonal.size(); }
    /// Makes it a problem of so many unknowns; all but the bounds become 0.
    void Begin(std::size_t count, bool isClosed);
    /// Row i of H times x. Where an open problem ends the couplings are 0, so it does not matter
    /// what they are multiplied with.
    [[nodiscard]] double Row(std::size_t i, const std::vector<double>& x) const {
        const std::size_t last = Before(i, 1);
        const std::size_t second = Before(i, 2);
        return diagonal[i] * x[i] + toNext[i] * x[After(i, 1)] + toSecond[i] * x[After(i, 2)] +
               toNext[last] * x[last] + toSecond[second] * x[second];
    }
    /// i + steps, round the end; steps < Count().
    [[nodiscard]] std::size_t After(std::size_t i, std::size_t steps) const {
        return i + steps < Count() ? i + steps : i + steps - Count();
    }
    [[nodiscard]] std::size_t Before(std::size_t i, std::size_t steps) const {
        return i >= steps ? i - steps : i + Count() - steps;
    }
};

class BoxSolver {
public:
    /// Of a closed problem the unknowns `held` and the one after it stay 0, which leaves a band.
    /// @param box        of 3 unknowns at least.
    /// @param[out] x     may be beyond the bounds when the choice of fixed ones has not settled.
    void SolveByActiveSet(const BandedBox& box, std::size_t held, std::vector<double>& x);

    /// Begins at 0 and stays within the bounds.
    void SolveBySweeps(const BandedBox& box, std::vector<double>& x);

private:
    enum class State : std::uint8_t { Free, AtLow, AtHigh, Held };

    void Choose(const BandedBox& box, std::size_t held);
    void SolveFree(const BandedBox& box, std::size_t first, std::size_t count,
                   std::vector<double>& x);
    void Eliminate(const BandedBox& box, std::size_t row, std::size_t i, double right);
    bool ChooseAnew(const BandedBox& box, const std::vector<double>& x);

    // One row of the factors L D L', of unknowns counted along the band.
    struct Factor {
        double pivot = 1;
        double toLast = 0;   // L of the row before
        double toSecond = 0; // of the one before that
        double value = 0;
    };
    std::vector<State> states_;
    std::vector<Factor> factors_;
    std::vector<double> inverses_; // of the diagonal
};

} // namespace terravo::smoothing
