#include "BenchMap.h"

#include "BenchData.h"

#include <map>

namespace terravo::bench {

BenchMap::BenchMap(Index count) : map(runState, messages, clock) {
    runState.workFolder = folder.Path();
    map.points = MakeSurvey(Survey::Random, count);
    map.Triangulation();
}

BenchMap& KeptMap(Index count) {
    static std::map<Index, BenchMap> kept;
    return kept.try_emplace(count, count).first->second;
}

} // namespace terravo::bench
