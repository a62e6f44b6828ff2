// What is read off profiles: heights, places, and the areas between two of them.
#include "analysis/CompensatedSum.h"
#include "analysis/Profile.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

double LengthOf(PlanPoint a, PlanPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

// A run as a function of the station.
class RunHeights {
public:
    explicit RunHeights(const ProfileRun& run) : run_(run) {}

    // Stations are asked for in ascending order, within the run. Where the run is upright at a
    // station, the height behind it counts when `isBehind`.
    double At(double station, bool isBehind) {
        while (next_ + 1 < run_.size() &&
               (run_[next_].station < station || (isBehind && run_[next_].station <= station))) {
            ++next_;
        }
        const ProfilePoint& from = run_[next_ - 1];
        const ProfilePoint& to = run_[next_];
        const double length = to.station - from.station;
        return length > 0 ? from.z + (station - from.station) / length * (to.z - from.z)
               : isBehind ? from.z
                          : to.z;
    }

private:
    const ProfileRun& run_;
    std::size_t next_ = 1;
};

struct AreaSums {
    CompensatedSum cut;
    CompensatedSum fill;
    CompensatedSum length;

    // A strip over which the difference goes from one value to another.
    void Add(double width, double from, double to) {
        length.Add(width);
        if (from * to >= 0) {
            CompensatedSum& side = from + to > 0 ? cut : fill;
            side.Add(width * std::fabs(from + to) / 2);
            return;
        }
        const double before = width * (from / (from - to));
        const double behind = width * (to / (to - from));
        (from > 0 ? cut : fill).Add(before * std::fabs(from) / 2);
        (to > 0 ? cut : fill).Add(behind * std::fabs(to) / 2);
    }
    [[nodiscard]] SectionAreas Areas() const { return {cut.Value(), fill.Value(), length.Value()}; }
};

void AddRuns(const ProfileRun& first, const ProfileRun& second, AreaSums& sums) {
    const double begin = std::max(first.front().station, second.front().station);
    const double end = std::min(first.back().station, second.back().station);
    if (!(begin < end)) {
        return;
    }
    std::vector<double> stations{begin, end};
    for (const ProfileRun* run : {&first, &second}) {
        for (const ProfilePoint& point : *run) {
            if (point.station > begin && point.station < end) {
                stations.push_back(point.station);
            }
        }
    }
    std::sort(stations.begin(), stations.end());
    RunHeights a(first);
    RunHeights b(second);
    for (std::size_t i = 1; i < stations.size(); ++i) {
        const double width = stations[i] - stations[i - 1];
        if (width > 0) {
            const double from = a.At(stations[i - 1], true) - b.At(stations[i - 1], true);
            sums.Add(width, from, a.At(stations[i], false) - b.At(stations[i], false));
        }
    }
}

} // namespace

SectionAreas AreasBetween(const Profile& first, const Profile& second) {
    AreaSums sums;
    for (const ProfileRun& a : first.runs) {
        for (const ProfileRun& b : second.runs) {
            AddRuns(a, b, sums);
        }
    }
    return sums.Areas();
}

SectionAreas AreasAgainst(const Profile& profile, double datum) {
    AreaSums sums;
    for (const ProfileRun& run : profile.runs) {
        for (std::size_t i = 1; i < run.size(); ++i) {
            sums.Add(run[i].station - run[i - 1].station, run[i - 1].z - datum, run[i].z - datum);
        }
    }
    return sums.Areas();
}

std::optional<double> HeightAtStation(const Profile& profile, double station) {
    for (const ProfileRun& run : profile.runs) {
        if (station >= run.front().station && station <= run.back().station) {
            return RunHeights(run).At(station, false);
        }
    }
    return std::nullopt;
}

PlanPoint PlaceAtStation(std::span<const PlanPoint> line, double station) {
    double before = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const double length = LengthOf(line[i - 1], line[i]);
        if (length > 0 && (station <= before + length || i + 1 == line.size())) {
            const double part = std::clamp((station - before) / length, 0.0, 1.0);
            return {line[i - 1].x + part * (line[i].x - line[i - 1].x),
                    line[i - 1].y + part * (line[i].y - line[i - 1].y)};
        }
        before += length;
    }
    return line.empty() ? PlanPoint() : line.back();
}

double StationNearest(std::span<const PlanPoint> line, PlanPoint place) {
    double nearest = std::numeric_limits<double>::infinity();
    double station = 0;
    double before = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        const double length = LengthOf(line[i - 1], line[i]);
        const double distance = DistanceToSide(line[i - 1], line[i], place);
        if (distance < nearest) {
            const double along = ((place.x - line[i - 1].x) * (line[i].x - line[i - 1].x) +
                                  (place.y - line[i - 1].y) * (line[i].y - line[i - 1].y)) /
                                 (length > 0 ? length : 1);
            nearest = distance;
            station = before + std::clamp(along, 0.0, length);
        }
        before += length;
    }
    return station;
}

} // namespace terravo
