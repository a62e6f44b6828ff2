#include "sheet/section/BetweenProfiles.h"

#include <algorithm>

namespace terravo {
namespace {

// Heights of a run, asked for from left to right.
class Follower {
public:
    explicit Follower(const ProfileRun& run) : run_(run) {}

    /// Goes to the stretch of the run that holds another stretch.
    void GoTo(double from) {
        while (at_ + 2 < run_.size() && run_[at_ + 1].station <= from) {
            ++at_;
        }
    }
    [[nodiscard]] double HeightAt(double station) const {
        const ProfilePoint& a = run_[at_];
        const ProfilePoint& b = run_[at_ + 1];
        if (station <= a.station) {
            return a.z;
        }
        return station >= b.station
                   ? b.z
                   : a.z + (b.z - a.z) * ((station - a.station) / (b.station - a.station));
    }

private:
    const ProfileRun& run_;
    std::size_t at_ = 0;
};

// Builds pieces from stretches over which both profiles are straight.
class PieceBuilder {
public:
    void Add(double from, double to, double firstFrom, double firstTo, double secondFrom,
             double secondTo) {
        const double before = firstFrom - secondFrom;
        const double after = firstTo - secondTo;
        if ((before < 0 && after > 0) || (before > 0 && after < 0)) {
            const double part = before / (before - after);
            const SectionPlace crossing{from + part * (to - from),
                                        firstFrom + part * (firstTo - firstFrom)};
            Begin(before > 0, {from, firstFrom}, {from, secondFrom});
            GoOn(crossing, crossing);
            Begin(after > 0, crossing, crossing);
            GoOn({to, firstTo}, {to, secondTo});
        } else if (before != 0 || after != 0) {
            Begin(before > 0 || after > 0, {from, firstFrom}, {from, secondFrom});
            GoOn({to, firstTo}, {to, secondTo});
        } else {
            Finish();
        }
    }

    void Finish() {
        if (upper_.size() > 1) {
            SectionPiece piece;
            piece.isCut = isCut_;
            piece.ring = std::move(upper_);
            const bool meetAtEnd = lower_.back().z == piece.ring.back().z;
            const bool meetAtStart = lower_.front().z == piece.ring.front().z;
            piece.ring.insert(piece.ring.end(), lower_.rbegin() + (meetAtEnd ? 1 : 0),
                              lower_.rend() - (meetAtStart ? 1 : 0));
            pieces.push_back(std::move(piece));
        }
        upper_.clear();
        lower_.clear();
    }

    std::vector<SectionPiece> pieces;

private:
    void Begin(bool isCut, SectionPlace first, SectionPlace second) {
        if (!upper_.empty() && isCut == isCut_) {
            return;
        }
        Finish();
        isCut_ = isCut;
        GoOn(first, second);
    }
    // A meeting ends the piece, so that rings are simple.
    void GoOn(SectionPlace first, SectionPlace second) {
        upper_.push_back(first);
        lower_.push_back(second);
        if (upper_.size() > 1 && first.z == second.z) {
            Finish();
        }
    }

    bool isCut_ = false;
    std::vector<SectionPlace> upper_; // of the first profile
    std::vector<SectionPlace> lower_; // of the second, as many
};

// The stations of both runs where there are both.
std::vector<double> CommonStations(const ProfileRun& first, const ProfileRun& second) {
    const double from = std::max(first.front().station, second.front().station);
    const double to = std::min(first.back().station, second.back().station);
    std::vector<double> stations{from, to};
    for (const ProfileRun* run : {&first, &second}) {
        for (const ProfilePoint& point : *run) {
            if (point.station > from && point.station < to) {
                stations.push_back(point.station);
            }
        }
    }
    std::sort(stations.begin(), stations.end());
    stations.erase(std::unique(stations.begin(), stations.end()), stations.end());
    return stations;
}

void AddRuns(const ProfileRun& first, const ProfileRun& second, PieceBuilder& builder) {
    const std::vector<double> stations = CommonStations(first, second);
    Follower one(first);
    Follower other(second);
    for (std::size_t i = 1; i < stations.size(); ++i) {
        const double from = stations[i - 1];
        const double to = stations[i];
        one.GoTo(from);
        other.GoTo(from);
        builder.Add(from, to, one.HeightAt(from), one.HeightAt(to), other.HeightAt(from),
                    other.HeightAt(to));
    }
    builder.Finish();
}

} // namespace

std::vector<SectionPiece> PiecesBetween(const Profile& first, const Profile& second) {
    PieceBuilder builder;
    for (const ProfileRun& one : first.runs) {
        for (const ProfileRun& other : second.runs) {
            if (one.front().station < other.back().station &&
                other.front().station < one.back().station) {
                AddRuns(one, other, builder);
            }
        }
    }
    return std::move(builder.pieces);
}

Profile LevelProfile(const Profile& like, double height) {
    Profile level;
    level.length = like.length;
    for (const ProfileRun& run : like.runs) {
        level.runs.push_back({run.front(), run.back()});
        for (ProfilePoint& end : level.runs.back()) {
            end.z = height;
            end.line = 0;
        }
    }
    return level;
}

} // namespace terravo
