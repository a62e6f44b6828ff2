#include "contour/smoothing/SmoothSolver.h"

#include <algorithm>

namespace terravo::smoothing {
namespace {

constexpr std::size_t kRounds = 6;
constexpr int kTrials = 6;
constexpr int kTrialsCut = 3; // trials after which a step is cut, not yet dropped
constexpr double kCut = 0.4;
constexpr double kWorthwhile = 0.999; // of the energy: what a round has to come below
constexpr double kRisen = 1e-3;       // of the mean energy of a vertex
constexpr std::size_t kAbout = 3;     // vertices on either side whose energy a step changes

} // namespace

void SmoothSolver::Solve(const Chain& chain) {
    if (chain.sliders.size() < 3 || !(smoothness_ > 0)) {
        return;
    }
    energy_.Begin(chain);
    int idle = 0;
    for (std::size_t round = 0; round < kRounds && idle < 2; ++round) {
        const double energy = energy_.Renew(chain.parts);
        FindStep(chain, round);
        const bool isWorthwhile = TakeStep(chain, energy) && reached_ <= kWorthwhile * energy;
        idle = isWorthwhile ? 0 : idle + 1;
    }
}

void SmoothSolver::FindStep(const Chain& chain, std::size_t round) {
    energy_.Linearise(box_);
    const std::size_t n = box_.Count();
    for (std::size_t i = 0; i < n; ++i) {
        box_.low[i] = chain.lowest[i] - chain.parts[i];
        box_.high[i] = chain.highest[i] - chain.parts[i];
    }
    if (round % 2 == 0) {
        solver_.SolveByActiveSet(box_, round * (n / 2 + 1) % n, step_);
    } else {
        solver_.SolveBySweeps(box_, step_);
    }
}

// @return whether the energy fell; else nothing is changed.
bool SmoothSolver::TakeStep(const Chain& chain, double energy) {
    const std::size_t n = chain.parts.size();
    old_.assign(chain.parts.begin(), chain.parts.end());
    lengths_.assign(n, 1);
    before_.resize(n);
    for (std::size_t i = 0; i < n; ++i) {
        before_[i] = energy_.OfVertex(i);
    }
    const double leastRise = kRisen * energy / static_cast<double>(n);
    for (int trial = 0; trial < kTrials; ++trial) {
        Apply(chain);
        reached_ = energy_.At(chain.parts);
        const bool isLast = trial + 1 == kTrials;
        if (isLast || !CutWhereRisen(chain.closed, leastRise, trial >= kTrialsCut)) {
            break;
        }
    }
    if (reached_ < energy) {
        return true;
    }
    std::copy(old_.begin(), old_.end(), chain.parts.begin());
    return false;
}

void SmoothSolver::Apply(const Chain& chain) {
    for (std::size_t i = 0; i < chain.parts.size(); ++i) {
        chain.parts[i] =
            std::clamp(old_[i] + lengths_[i] * step_[i], chain.lowest[i], chain.highest[i]);
    }
}

// @return whether any step was cut.
bool SmoothSolver::CutWhereRisen(bool closed, double leastRise, bool entirely) {
    const std::size_t n = lengths_.size();
    const std::size_t about = std::min(kAbout, (n - 1) / 2);
    // Of the vertex that comes k - n after the first one.
    const auto rise = [&](std::size_t k) {
        const bool isThere = closed || (k >= n && k < 2 * n);
        const std::size_t i = k < n ? k : k < 2 * n ? k - n : k - 2 * n;
        return isThere ? energy_.OfVertex(i) - before_[i] : 0;
    };
    double sum = 0;
    for (std::size_t k = n - about; k < n + about; ++k) {
        sum += rise(k);
    }
    bool isAnyCut = false;
    for (std::size_t i = 0; i < n; ++i) {
        sum += rise(n + i + about);
        if (sum > leastRise && lengths_[i] > 0) {
            lengths_[i] = entirely ? 0 : lengths_[i] * kCut;
            isAnyCut = true;
        }
        sum -= rise(n + i - about);
    }
    return isAnyCut;
}

} // namespace terravo::smoothing
