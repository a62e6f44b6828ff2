// The best place for a text on one line.
//
// Data: the line as a course of places at equal steps, and what is already on the paper. Method:
// every place in a stretch has a cost, the cheapest one that is free wins. What costs time, other
// lines and free room, is looked up in the order of the cost so far, until no place can be cheaper.
#pragma once

#include "sheet/LabelRoom.h"
#include "sheet/LineCourse.h"
#include "sheet/LineLabels.h"

#include <optional>
#include <utility>
#include <vector>

namespace terravo {

/// Where a text could stand on a line.
struct LabelPlace {
    double cost = 0; // 0: as good as can be; 1: has a blemish that anybody sees
    int centre = 0;  // place of the course
    TurnedBox text;  // the box of the text alone, in the direction of reading
    double from = 0; // what the text interrupts, steps along the course; on a closed one maybe < 0
    double to = 0;
};

/// Centres to be looked at, in steps along the course; of a closed line any numbers.
struct LabelStretch {
    double first = 0;
    double last = 0;
    std::optional<double> wished; // the nearer the better
};

class LabelSearch {
public:
    /// @param width  of the text, mm.
    LabelSearch(const LineCourse& course, const LabelRoom& room, const LabelWish& wish,
                double width, bool higherOnLeft);

    /// The cheapest place in a stretch.
    /// @param most         only places that cost less.
    /// @param hardPressed  with less room around, and closer to ends of the line.
    /// @return nothing when every such place is taken, crosses the frame or is too close to an end.
    std::optional<LabelPlace> Cheapest(const LabelStretch& stretch, double most, bool hardPressed);

private:
    struct Demands;

    void Rank(const LabelStretch& stretch, int stride, double most);
    [[nodiscard]] double CostOfCentre(int centre, const LabelStretch& stretch) const;
    [[nodiscard]] SheetPoint Reading(SheetPoint along) const;
    [[nodiscard]] bool FindsRoom(LabelPlace& place, const Demands& demands) const;

    const LineCourse& course_;
    const LabelRoom& room_;
    const LabelWish& wish_;
    double width_;
    bool higherOnLeft_;
    int reach_; // of text and gaps from the centre, steps
    std::vector<std::pair<double, int>>
        ranking_; // a heap of costs without other lines, and centres
};

/// Where a line leaves a box, in steps along the line from a place inside.
/// @param direction  1 or -1.
/// @return nothing when the place is outside, the line ends inside, or stays there for long.
std::optional<double> StepsOutOf(const TurnedBox& box, const LineCourse& course, int centre,
                                 int direction);

} // namespace terravo
