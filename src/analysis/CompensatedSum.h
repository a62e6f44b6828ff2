// A sum that keeps what rounding leaves out of it.
//
// Data: the rounded sum and the rest. Method: each addition yields its own error, which is added
// up beside the sum; a million terms lose no more than one does.
#pragma once

#include "triangulation/exact/Expansion.h"

namespace terravo {

class CompensatedSum {
public:
    void Add(double term) {
        const exact::WithError next = exact::SumOf(sum_, term);
        sum_ = next.value;
        rest_ += next.error;
    }
    void Add(const CompensatedSum& other) {
        Add(other.sum_);
        rest_ += other.rest_;
    }
    [[nodiscard]] double Value() const { return sum_ + rest_; }

private:
    double sum_ = 0;
    double rest_ = 0;
};

} // namespace terravo
