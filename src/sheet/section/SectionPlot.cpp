#include "sheet/section/SectionPlot.h"

#include "sheet/Clip.h"
#include "sheet/FitText.h"
#include "sheet/GridLines.h"
#include "sheet/section/BetweenProfiles.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace terravo {
namespace {

// The round values along an axis.
struct Ticks {
    double step = 0;
    std::vector<double> values;
};

Ticks TicksWithin(double from, double to, double least) {
    Ticks ticks;
    ticks.step = RoundNumber(least);
    ticks.values = MultiplesWithin(from, to, ticks.step);
    return ticks;
}

Ticks HeightTicks(const SectionContext& context, const SectionView& view) {
    const double least = std::max(2.5 * context.textHeight, std::min(10.0, view.box.Height() / 5));
    return TicksWithin(view.height, view.HeightAt(view.box.top), least / view.perHeight);
}

class Plot {
public:
    Plot(const SectionContext& context, const SectionSource& source, const SectionView& view,
         SheetScene& scene)
        : context_(context), source_(source), view_(view), scene_(scene),
          heights_(HeightTicks(context, view)), lengths_(LengthTicks()) {}

    void Add() {
        const bool hasProfile = !source_.first.runs.empty() || HasSecond();
        AddAreas();
        if (context_.plan.grid) {
            AddGrid(hasProfile);
        }
        if (hasProfile) {
            AddUprights();
        }
        AddProfiles();
        AddCrossed(source_.first);
        if (HasSecond()) {
            AddCrossed(*source_.second);
        }
        scene_.AddBox(SheetLayer::Frame,
                      {context_.style.theme.text, context_.style.theme.frameWidth, {}}, view_.box);
        AddLengths();
        if (hasProfile) {
            AddHeights();
        } else {
            SayThatItMisses();
        }
    }

private:
    [[nodiscard]] bool HasSecond() const {
        return source_.second != nullptr && !source_.second->runs.empty();
    }

    // The step grows until the values have room beside each other.
    [[nodiscard]] Ticks LengthTicks() const {
        const double from = view_.station - view_.zero;
        const double to = from + view_.box.Width() / view_.perStation;
        double least = std::min(12.0, view_.box.Width() / 4);
        for (;; least *= 2) {
            Ticks ticks = TicksWithin(from, to, least / view_.perStation);
            double width = 0;
            for (const double value : ticks.values) {
                width = std::max(width, context_.Width(LengthText(ticks, value)));
            }
            if (ticks.values.size() < 2 ||
                ticks.step * view_.perStation >= width + 1.5 * context_.textHeight) {
                return ticks;
            }
        }
    }

    [[nodiscard]] std::string LengthText(const Ticks& ticks, double value) const {
        return GridValueText(value, ticks.step, context_.words.decimalSeparator);
    }
    [[nodiscard]] double XOf(double value) const { return view_.ToPaper(value + view_.zero, 0).x; }
    [[nodiscard]] double YOf(double height) const { return view_.ToPaper(0, height).y; }

    void AddRing(Colour fill, const std::vector<SectionPlace>& ring) {
        std::vector<SheetPoint> paper;
        paper.reserve(ring.size());
        for (const SectionPlace& place : ring) {
            paper.push_back(view_.ToPaper(place.station, place.z));
        }
        const std::vector<SheetPoint> inside = ClipRing(paper, view_.box);
        if (inside.size() > 2) {
            scene_.AddArea(SheetLayer::Bands, fill, inside);
        }
    }

    void AddAreas() {
        if (HasSecond()) {
            AddPieces(*source_.second);
        } else if (source_.second == nullptr && source_.datum) {
            AddPieces(LevelProfile(source_.first, *source_.datum));
        } else if (source_.second == nullptr && context_.plan.ground) {
            AddGround();
        }
    }

    void AddPieces(const Profile& other) {
        if (!context_.plan.areas) {
            return;
        }
        for (const SectionPiece& piece : PiecesBetween(source_.first, other)) {
            AddRing(piece.isCut ? context_.style.cut : context_.style.fill, piece.ring);
        }
    }

    void AddGround() {
        for (const ProfileRun& run : source_.first.runs) {
            std::vector<SectionPlace> ring;
            for (const ProfilePoint& point : run) {
                ring.push_back({point.station, point.z});
            }
            ring.push_back({run.back().station, view_.height});
            ring.push_back({run.front().station, view_.height});
            AddRing(context_.style.ground, ring);
        }
    }

    void AddStroke(SheetLayer layer, const SheetInk& ink, SheetPoint from, SheetPoint to) {
        const SheetPoint ends[] = {from, to};
        scene_.AddLine(layer, ink, ends);
    }

    void AddGrid(bool hasHeights) {
        for (const double value : lengths_.values) {
            AddStroke(SheetLayer::Grid, context_.style.grid, {XOf(value), view_.box.top},
                      {XOf(value), view_.box.bottom});
        }
        for (const double value : heights_.values) {
            if (hasHeights) {
                AddStroke(SheetLayer::Grid, context_.style.grid, {view_.box.left, YOf(value)},
                          {view_.box.right, YOf(value)});
            }
        }
    }

    // Where the line bends, and the axis of a cross-section.
    void AddUprights() {
        const auto add = [this](double station, const SheetInk& ink) {
            const double x = view_.ToPaper(station, 0).x;
            if (x > view_.box.left && x < view_.box.right) {
                AddStroke(SheetLayer::Hull, ink, {x, view_.box.top}, {x, view_.box.bottom});
            }
        };
        for (const double station : source_.bends) {
            add(station, context_.style.bend);
        }
        if (source_.station) {
            add(view_.zero, context_.style.axis);
        }
    }

    void AddProfiles() {
        if (source_.second == nullptr && source_.datum) {
            AddProfile(LevelProfile(source_.first, *source_.datum), context_.style.datum);
        }
        if (HasSecond()) {
            AddProfile(*source_.second, context_.style.second);
        }
        AddProfile(source_.first, context_.style.first);
    }

    // One line with a piece for each stretch of surface inside the frame.
    void AddProfile(const Profile& profile, const SheetInk& ink) {
        SheetLine line;
        line.layer = SheetLayer::Profiles;
        line.ink = scene_.InkNumber(ink);
        line.firstPiece = scene_.pieces.size();
        ClippedLine inside;
        for (const ProfileRun& run : profile.runs) {
            std::vector<SheetPoint> paper;
            for (const ProfilePoint& point : run) {
                paper.push_back(view_.ToPaper(point.station, point.z));
            }
            ClipLine(paper, false, view_.box, inside);
        }
        for (const ClippedLine::Part& part : inside.parts) {
            scene_.AddPiece(inside.PointsOf(part), false);
        }
        line.pieces = scene_.pieces.size() - line.firstPiece;
        if (line.pieces > 0) {
            scene_.lines.push_back(line);
        }
    }

    // Breaklines that are crossed: short strokes upwards from the ground, with their names.
    void AddCrossed(const Profile& profile) {
        constexpr double kStroke = 2.4; // millimetres
        for (const ProfileRun& run : profile.runs) {
            for (const ProfilePoint& point : run) {
                const SheetPoint foot = view_.ToPaper(point.station, point.z);
                if (point.line == 0 || !view_.box.Contains(foot)) {
                    continue;
                }
                const SheetPoint end{foot.x, std::max(foot.y - kStroke, view_.box.top)};
                AddStroke(SheetLayer::Breaklines, context_.style.breakline, foot, end);
                AddName(LineNameAt(profile, point), foot, end);
            }
        }
    }

    // Upright, at the top of the frame, or where the ground leaves no room there below it; beside
    // the name before, and not at all where that leads too far away.
    void AddName(const std::string& name, SheetPoint foot, SheetPoint stroke) {
        const double h = context_.textHeight;
        const double width = context_.Width(name);
        const SheetBox& box = view_.box;
        const SheetPoint above{std::max({stroke.x - h, box.left + h, namedAbove_ + 1.5 * h}),
                               box.top + h + width};
        const SheetPoint below{std::max(stroke.x + h, namedBelow_ + 1.5 * h),
                               foot.y + 1.5 * h + width};
        const auto isBeside = [&](double x) {
            return x <= std::min(stroke.x + 5 * h, box.right - h);
        };
        SheetPoint place;
        if (name.empty()) {
            return;
        }
        if (isBeside(above.x) && above.y + h < stroke.y) {
            namedAbove_ = above.x;
            place = above;
            AddStroke(SheetLayer::Breaklines, context_.style.grid, stroke,
                      {above.x, above.y + h / 2});
        } else if (isBeside(below.x) && below.y + h / 2 < box.bottom) {
            namedBelow_ = below.x;
            place = below;
        } else {
            return;
        }
        AddText(scene_, SheetLayer::Breaklines, {name, h, false, width}, {place.x + h / 2, place.y},
                TextAnchor::Left, context_.style.breakline.colour, std::numbers::pi / 2);
    }

    void AddTick(SheetPoint at, SheetPoint end) {
        AddStroke(SheetLayer::Frame,
                  {context_.style.theme.text, context_.style.theme.frameWidth / 2, {}}, at, end);
    }

    void Write(const std::string& text, SheetPoint place, TextAnchor anchor) {
        AddText(scene_, SheetLayer::Frame, {text, context_.textHeight, false, context_.Width(text)},
                place, anchor, context_.style.theme.text);
    }

    void AddLengths() {
        const double bottom = view_.box.bottom;
        for (const double value : lengths_.values) {
            const double x = XOf(value);
            AddTick({x, bottom}, {x, bottom + context_.tick});
            Write(LengthText(lengths_, value),
                  {x, bottom + context_.tick + 1.5 * context_.textHeight}, TextAnchor::Middle);
        }
    }

    void AddHeights() {
        const double left = view_.box.left;
        for (const double value : heights_.values) {
            const double y = YOf(value);
            AddTick({left, y}, {left - context_.tick, y});
            Write(LengthText(heights_, value),
                  {left - context_.tick - 0.5 * context_.textHeight, y + context_.textHeight / 2},
                  TextAnchor::Right);
        }
    }

    void SayThatItMisses() {
        AddText(scene_, SheetLayer::Frame,
                FitText(context_.words.measure, context_.words.texts[Text::SectionMisses],
                        1.2 * context_.textHeight, false, 0.9 * view_.box.Width()),
                view_.box.Middle(), TextAnchor::Centre, context_.style.theme.quietText);
    }

    const SectionContext& context_;
    const SectionSource& source_;
    const SectionView& view_;
    SheetScene& scene_;
    Ticks heights_;
    Ticks lengths_;
    double namedAbove_ = -1e9; // where the last name stands, millimetres
    double namedBelow_ = -1e9;
};

} // namespace

std::vector<double> BendsOf(std::span<const PlanPoint> line) {
    std::vector<double> stations;
    double station = 0;
    for (std::size_t i = 1; i + 1 < line.size(); ++i) {
        station += std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
        stations.push_back(station);
    }
    return stations;
}

Extent HeightsOf(const SectionSource& source) {
    Extent heights{std::numeric_limits<double>::infinity(),
                   -std::numeric_limits<double>::infinity()};
    const auto include = [&heights](const Profile& profile) {
        for (const ProfileRun& run : profile.runs) {
            for (const ProfilePoint& point : run) {
                heights.Include(point.z);
            }
        }
    };
    include(source.first);
    if (source.second != nullptr) {
        include(*source.second);
    } else if (source.datum && !source.first.runs.empty()) {
        heights.Include(*source.datum);
    }
    return heights;
}

double HeightValueRoom(const SectionContext& context, const SectionView& view) {
    const Ticks ticks = HeightTicks(context, view);
    double width = 0;
    for (const double value : ticks.values) {
        width = std::max(
            width, context.Width(GridValueText(value, ticks.step, context.words.decimalSeparator)));
    }
    return width + context.tick + 0.5 * context.textHeight;
}

void AddSectionPlot(const SectionContext& context, const SectionSource& source,
                    const SectionView& view, SheetScene& scene) {
    Plot(context, source, view, scene).Add();
}

} // namespace terravo
