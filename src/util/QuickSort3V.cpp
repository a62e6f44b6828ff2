#include "util/QuickSort3V.h"

#include "util/AppError.h"
#include "util/modUtilita.h"

#include <utility>

namespace terravo {
namespace {

constexpr const char* kTitle = " QuickSort3V";

class Sorter {
public:
    Sorter(Array1<double>& keys, Array1<double>& companion1, Array1<double>& companion2,
           bool ascending)
        : keys_(keys), companion1_(companion1), companion2_(companion2), ascending_(ascending) {}

    // Recurses into the smaller side and goes round again for the larger, so that equal keys, which
    // take a row off one side a turn, cannot exhaust the stack.
    void Sort(Index low, Index high) {
        while (low < high) {
            if (high - low == 1) {
                if (IsAfter(keys_[low], keys_[high])) {
                    Exchange(low, high);
                }
                return;
            }
            const Index pivot = Partition(low, high);
            if (pivot - low < high - pivot) {
                Sort(low, pivot - 1);
                low = pivot + 1;
            } else {
                Sort(pivot + 1, high);
                high = pivot - 1;
            }
        }
    }

private:
    [[nodiscard]] bool IsAfter(double a, double b) const { return ascending_ ? a > b : a < b; }

    void Exchange(Index a, Index b) {
        std::swap(keys_[a], keys_[b]);
        std::swap(companion1_[a], companion1_[b]);
        std::swap(companion2_[a], companion2_[b]);
    }

    // Index at which the pivot ends, with nothing that belongs behind it before it.
    Index Partition(Index low, Index high) {
        Exchange(modUtilita::RoundHalfEven((low + static_cast<double>(high)) / 2), high);
        const double pivot = keys_[high];
        Index i = low;
        Index j = high;
        for (;;) {
            while (i < j && !IsAfter(keys_[i], pivot)) {
                ++i;
            }
            while (j > i && !IsAfter(pivot, keys_[j])) {
                --j;
            }
            if (i == j) {
                break;
            }
            Exchange(i, j);
        }
        Exchange(i, high);
        return i;
    }

    Array1<double>& keys_;
    Array1<double>& companion1_;
    Array1<double>& companion2_;
    bool ascending_;
};

} // namespace

void QuickSort3V(Array1<double>& keys, Array1<double>& companion1, Array1<double>& companion2,
                 Index low, Index high, Index order, MessageService& messages) {
    if (order == 0 || low >= high) {
        return;
    }
    const bool inside = low >= 1 && high <= keys.UpperBound() && high <= companion1.UpperBound() &&
                        high <= companion2.UpperBound();
    if (!inside) {
        messages.ShowCritical("Errore " + std::to_string(ErrorNumber::kSubscript) +
                                  "\r\nSubscript out of range",
                              kTitle);
        return;
    }
    Sorter(keys, companion1, companion2, order > 0).Sort(low, high);
}

} // namespace terravo
