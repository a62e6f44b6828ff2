#include "survey/PointPlace.h"

namespace terravo {

SpacePoint PlaceOfPoint(const Survey& survey, Index point) {
    const PointSet& used = survey.Points();
    Index low = 1;
    Index high = used.count;
    while (low < high) {
        const Index middle = low + (high - low) / 2;
        if (survey.NumberAmongAll(middle) < point) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    const bool isUsed = low <= used.count && survey.NumberAmongAll(low) == point;
    const PointSet& points = isUsed ? used : survey.AllPoints();
    const Index number = isUsed ? low : point;
    return {points.x[number], points.y[number], points.z[number]};
}

} // namespace terravo
