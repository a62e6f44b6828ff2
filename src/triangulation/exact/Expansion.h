// Exact sums and products of doubles.
//
// Data: an expansion, a sum of doubles whose bits do not overlap, by growing magnitude and without
// zeros; its sign is that of the last. Method: each addition and multiplication is done together
// with the error that rounding makes, which is a double as well, and the errors are kept as terms.
// Holds with rounding to nearest, without overflow and underflow, and where no a * b + c becomes
// one operation.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace terravo::exact {

/// A value and what rounding left out of it.
struct WithError {
    double value;
    double error;
};

inline WithError SumOf(double a, double b) {
    const double sum = a + b;
    const double bPart = sum - a;
    const double aPart = sum - bPart;
    return {sum, (a - aPart) + (b - bPart)};
}

inline WithError DifferenceOf(double a, double b) {
    const double difference = a - b;
    const double bPart = a - difference;
    const double aPart = difference + bPart;
    return {difference, (a - aPart) + (bPart - b)};
}

/// The upper 26 bits of a double and the rest: products of halves are exact.
inline WithError Halves(double a) {
    constexpr double kSplitter = 134217729; // 2^27 + 1
    const double c = kSplitter * a;
    const double upper = c - (c - a);
    return {upper, a - upper};
}

inline WithError ProductOf(double a, double b) {
    const double product = a * b;
    const auto [aUpper, aLower] = Halves(a);
    const auto [bUpper, bLower] = Halves(b);
    const double rest = ((product - aUpper * bUpper) - aLower * bUpper) - aUpper * bLower;
    return {product, aLower * bLower - rest};
}

/// An expansion of at most `Most` terms.
template <std::size_t Most>
class Expansion {
public:
    Expansion() = default; // the terms beyond the count are never read, so nobody fills them
    Expansion(const Expansion& other) { *this = other; }
    Expansion& operator=(const Expansion& other) {
        std::copy_n(other.terms_.begin(), other.count_, terms_.begin());
        count_ = other.count_;
        return *this;
    }

    [[nodiscard]] std::size_t Count() const { return count_; }
    double operator[](std::size_t i) const { return terms_[i]; }

    /// Appends a term, greater than all before; zeros are left out.
    void Append(double term) {
        if (term > 0 || term < 0) {
            terms_[count_++] = term;
        }
    }

    void Clear() { count_ = 0; }

    [[nodiscard]] int Sign() const { return count_ == 0 ? 0 : terms_[count_ - 1] > 0 ? 1 : -1; }

    Expansion operator-() const {
        Expansion negative;
        for (std::size_t i = 0; i < count_; ++i) {
            negative.Append(-terms_[i]);
        }
        return negative;
    }

private:
    std::array<double, Most> terms_;
    std::size_t count_ = 0;
};

inline Expansion<2> ExactDifference(double a, double b) {
    const WithError difference = DifferenceOf(a, b);
    Expansion<2> result;
    result.Append(difference.error);
    result.Append(difference.value);
    return result;
}

/// Adds the terms of both by growing magnitude, each to the sum of those before.
template <std::size_t M, std::size_t N>
Expansion<M + N> operator+(const Expansion<M>& a, const Expansion<N>& b) {
    Expansion<M + N> result;
    std::size_t i = 0;
    std::size_t j = 0;
    double sum = 0;
    while (i < a.Count() || j < b.Count()) {
        const bool takesA = j == b.Count() || (i < a.Count() && std::fabs(a[i]) < std::fabs(b[j]));
        const WithError next = SumOf(sum, takesA ? a[i++] : b[j++]);
        result.Append(next.error);
        sum = next.value;
    }
    result.Append(sum);
    return result;
}

template <std::size_t M, std::size_t N>
Expansion<M + N> operator-(const Expansion<M>& a, const Expansion<N>& b) {
    return a + -b;
}

template <std::size_t M>
Expansion<2 * M> Scaled(const Expansion<M>& a, double factor) {
    Expansion<2 * M> result;
    double carried = 0;
    for (std::size_t i = 0; i < a.Count(); ++i) {
        const WithError product = ProductOf(a[i], factor);
        const WithError lower = SumOf(carried, product.error);
        result.Append(lower.error);
        const WithError upper = SumOf(product.value, lower.value);
        result.Append(upper.error);
        carried = upper.value;
    }
    result.Append(carried);
    return result;
}

template <std::size_t M, std::size_t N>
Expansion<2 * M * N> operator*(const Expansion<M>& a, const Expansion<N>& b) {
    Expansion<2 * M * N> result;
    for (std::size_t j = 0; j < b.Count(); ++j) {
        const Expansion<2 * M* N + 2 * M> sum = result + Scaled(a, b[j]);
        result.Clear();
        for (std::size_t i = 0; i < sum.Count(); ++i) {
            result.Append(sum[i]);
        }
    }
    return result;
}

} // namespace terravo::exact
