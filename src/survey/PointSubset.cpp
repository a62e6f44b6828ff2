#include "survey/PointSubset.h"

namespace terravo {

PointSet PointsAt(const PointSet& points, const std::vector<Index>& numbers) {
    PointSet some;
    const auto count = static_cast<Index>(numbers.size());
    some.x.Reserve(count);
    some.y.Reserve(count);
    some.z.Reserve(count);
    for (const Index i : numbers) {
        some.Append(points.x[i], points.y[i], points.z[i]);
    }
    some.labels = points.labels.Of(numbers);
    some.sourceFolder = points.sourceFolder;
    some.sourceName = points.sourceName;
    return some;
}

} // namespace terravo
