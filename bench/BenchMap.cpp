#include "BenchMap.h"

#include "BenchData.h"
#include "export/SegmentFile.h"

#include <map>

namespace terravo::bench {

BenchMap::BenchMap(Index count)
    : survey(MakeSurvey(Layout::Random, count)), map(survey, runState, messages, clock) {
    survey.Triangulation();
}

MapReport BenchMap::Draw(DrawSurface& surface, const MapOptions& options) const {
    SegmentFile segments(folder.File(kSegmentFileName));
    MapReport report = map.Draw(surface, options, StopToken(),
                                [&segments](double level, const std::vector<LevelPiece>& pieces) {
                                    segments.Write(level, pieces);
                                });
    segments.Close();
    return report;
}

BenchMap& KeptMap(Index count) {
    static std::map<Index, BenchMap> kept;
    return kept.try_emplace(count, count).first->second;
}

} // namespace terravo::bench
