#include "contour/smoothing/BandedBox.h"

#include <algorithm>

namespace terravo::smoothing {
namespace {

constexpr int kMostChoices = 12;
constexpr int kSweeps = 10;
constexpr double kLeastPivot = 1e-14; // of the diagonal

} // namespace

void BandedBox::Begin(std::size_t count, bool isClosed) {
    closed = isClosed;
    for (std::vector<double>* values : {&diagonal, &toNext, &toSecond, &right}) {
        values->assign(count, 0);
    }
    low.resize(count);
    high.resize(count);
}

void BoxSolver::SolveBySweeps(const BandedBox& box, std::vector<double>& x) {
    const std::size_t n = box.Count();
    x.assign(n, 0);
    inverses_.resize(n);
    for (std::size_t i = 0; i < n; ++i) {
        inverses_[i] = box.diagonal[i] > 0 ? 1 / box.diagonal[i] : 0;
    }
    for (int sweep = 0; sweep < kSweeps; ++sweep) {
        for (std::size_t k = 0; k < n; ++k) {
            const std::size_t i = sweep % 2 == 0 ? k : n - 1 - k;
            const double step = (box.right[i] - box.Row(i, x)) * inverses_[i];
            x[i] = std::clamp(x[i] + step, box.low[i], box.high[i]);
        }
    }
}

void BoxSolver::SolveByActiveSet(const BandedBox& box, std::size_t held, std::vector<double>& x) {
    const std::size_t n = box.Count();
    x.resize(n);
    factors_.resize(n);
    Choose(box, held);
    for (int choice = 0; choice < kMostChoices; ++choice) {
        SolveFree(box, box.closed ? box.After(held, 2) : 0, box.closed ? n - 2 : n, x);
        if (!ChooseAnew(box, x)) {
            return;
        }
    }
}

void BoxSolver::Choose(const BandedBox& box, std::size_t held) {
    states_.resize(box.Count());
    for (std::size_t i = 0; i < box.Count(); ++i) {
        states_[i] = box.low[i] >= 0 && box.right[i] <= 0    ? State::AtLow
                     : box.high[i] <= 0 && box.right[i] >= 0 ? State::AtHigh
                                                             : State::Free;
    }
    if (box.closed) {
        states_[held] = states_[box.After(held, 1)] = State::Held;
    }
}

// With the free ones at 0 first, a row holds what the fixed ones take to the right side.
void BoxSolver::SolveFree(const BandedBox& box, std::size_t first, std::size_t count,
                          std::vector<double>& x) {
    for (std::size_t i = 0; i < box.Count(); ++i) {
        x[i] = states_[i] == State::AtLow    ? box.low[i]
               : states_[i] == State::AtHigh ? box.high[i]
                                             : 0;
    }
    for (std::size_t row = 0; row < count; ++row) {
        const std::size_t i = box.After(first, row);
        if (states_[i] == State::Free) {
            Eliminate(box, row, i, box.right[i] - box.Row(i, x));
        } else {
            factors_[row] = {};
        }
    }
    double next = 0;
    double second = 0;
    for (std::size_t row = count; row-- > 0;) {
        const std::size_t i = box.After(first, row);
        double value = 0;
        if (states_[i] == State::Free) {
            value = factors_[row].value / factors_[row].pivot;
            value -= row + 1 < count ? factors_[row + 1].toLast * next : 0;
            value -= row + 2 < count ? factors_[row + 2].toSecond * second : 0;
            x[i] = value;
        }
        second = next;
        next = value;
    }
}

void BoxSolver::Eliminate(const BandedBox& box, std::size_t row, std::size_t i, double right) {
    Factor made;
    made.pivot = box.diagonal[i];
    made.value = right;
    double toLast = 0; // of what is left after the elimination of the one before the last
    if (row >= 1 && states_[box.Before(i, 1)] == State::Free) {
        toLast = box.toNext[box.Before(i, 1)];
    }
    if (row >= 2 && states_[box.Before(i, 2)] == State::Free) {
        const Factor& second = factors_[row - 2];
        const double coupling = box.toSecond[box.Before(i, 2)];
        made.toSecond = coupling / second.pivot;
        made.pivot -= made.toSecond * coupling;
        made.value -= made.toSecond * second.value;
        toLast -= coupling * factors_[row - 1].toLast;
    }
    if (row >= 1) {
        const Factor& last = factors_[row - 1];
        made.toLast = toLast / last.pivot;
        made.pivot -= made.toLast * toLast;
        made.value -= made.toLast * last.value;
    }
    if (!(made.pivot > kLeastPivot * box.diagonal[i])) {
        made.pivot = box.diagonal[i] > 0 ? box.diagonal[i] : 1;
    }
    factors_[row] = made;
}

bool BoxSolver::ChooseAnew(const BandedBox& box, const std::vector<double>& x) {
    bool isChanged = false;
    for (std::size_t i = 0; i < box.Count(); ++i) {
        const State was = states_[i];
        if (was == State::Held) {
            continue;
        }
        if (was == State::Free) {
            states_[i] = x[i] < box.low[i]    ? State::AtLow
                         : x[i] > box.high[i] ? State::AtHigh
                                              : State::Free;
        } else {
            const double pull = box.right[i] - box.Row(i, x);
            const bool staysOut = was == State::AtLow ? pull <= 0 : pull >= 0;
            states_[i] = staysOut ? was : State::Free;
        }
        isChanged |= states_[i] != was;
    }
    return isChanged;
}

} // namespace terravo::smoothing
