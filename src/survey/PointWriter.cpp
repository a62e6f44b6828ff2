#include "survey/PointWriter.h"

#include <array>
#include <charconv>

namespace terravo {

void WritePoints(const OutputTarget& target, const PointSet& points) {
    OutputFile file(target);
    std::array<char, 32> number{};
    for (Index i = 1; i <= points.count; ++i) {
        for (const double value : {points.x[i], points.y[i], points.z[i]}) {
            const auto written = std::to_chars(number.data(), number.data() + number.size(), value);
            file.Buffer().append(number.data(), written.ptr);
            file.Buffer() += ',';
        }
        file.Buffer().back() = '\n';
        file.FlushWhenFull();
    }
    file.Commit();
}

} // namespace terravo
