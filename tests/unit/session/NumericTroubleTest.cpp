// Numeric trouble ends in a sentence: surveys at the edges of the doubles through the whole map.
#include "app/session/ContourMap.h"

#include "support/FakeServices.h"
#include "support/RecordingSurface.h"
#include "support/Surveys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

struct Trouble {
    std::string name;
    double offset; // of x and y
    double scale;  // of x and y
    double base;   // of z
    double height;
    std::string sentence; // part of the first message; empty: the map is drawn
    int width = 800;
    int levels = 300;
};

constexpr double kUlp = std::numeric_limits<double>::epsilon();
constexpr double kLeast = std::numeric_limits<double>::denorm_min();

const std::vector<Trouble> kTroubles{
    {"plain", 100, 1, 0, 50, ""},
    {"plan of 1e14", 1, 1e12, 0, 50, ""},
    {"plan of 1e120: no axis", 1, 1e120, 0, 50, "too large for an axis"},
    {"plan of 1e302: no product", 1, 1e302, 0, 50, "too large"},
    {"plan about zero to 5e307", -5e307, 1e305, 0, 50, "too large"},
    {"plan of 1e-13", 1e-14, 1e-15, 0, 50, ""},
    {"plan of 1e-300", 0, 1e-300, 0, 50, "too close to zero"},
    {"plan of denormals", 0, kLeast, 0, 50, "too close to zero"},
    {"a millimetre at 1e12", 1e12, 1e-3, 0, 50, ""},
    {"all heights equal", 100, 1, 7, 0, ""},
    {"all heights zero", 100, 1, 0, 0, ""},
    {"heights of one unit in the last place", 100, 1, 1, kUlp, ""},
    {"the same at 1e15", 100, 1, 1e15, 0.125, ""},
    {"heights of 1e300", 100, 1, 0, 1e300, ""},
    {"heights of 1e-300", 100, 1, 0, 1e-300, ""},
    {"heights of denormals", 100, 1, 0, kLeast, ""},
    {"heights too far apart", 100, 1, -1.7e308, std::numeric_limits<double>::infinity(),
     "too far apart"},
    {"an area of one pixel", 100, 1, 0, 50, "too narrow for the axis labels", 1},
    {"an area of fifty pixels", 100, 1, 0, 50, "too narrow for the axis labels", 50},
    {"more levels than pixels", 100, 1, 0, 50, "", 160, 5000},
};

PointSet SurveyOf(const Trouble& trouble) {
    PointSet points;
    const Array1<PlanPoint> plan = test::RandomPoints(30, 5);
    const bool tooHigh = std::isinf(trouble.height);
    for (Index i = 1; i <= plan.UpperBound(); ++i) {
        const double part = i % 3 / 2.0;
        const double z =
            tooHigh ? (i % 2 == 0 ? 1.7e308 : trouble.base) : trouble.base + part * trouble.height;
        points.Append(trouble.offset + trouble.scale * plan[i].x,
                      trouble.offset + trouble.scale * plan[i].y, z);
    }
    return points;
}

bool AllPlacesAreNumbers(const RecordingSurface& surface) {
    return std::all_of(surface.userCalls.begin(), surface.userCalls.end(),
                       [](const UserCall& call) {
                           return !std::isnan(call.x1 + call.y1) && !std::isnan(call.x2 + call.y2);
                       });
}

TEST(NumericTrouble, EndsInASentenceOrAMap) {
    for (const Trouble& trouble : kTroubles) {
        for (const MapMode mode : {MapMode::Lines, MapMode::Areas}) {
            SCOPED_TRACE(trouble.name + (mode == MapMode::Lines ? ", lines" : ", areas"));
            RunState state;
            FakeMessages messages;
            FakeClock clock;
            const Survey survey(SurveyOf(trouble));
            const ContourMap map(survey, state, messages, clock);
            RecordingSurface surface(trouble.width, 600);
            const MapReport report =
                map.Draw(surface, {RuleByCount(trouble.levels), mode, true, true, true});
            const std::string sentence =
                report.frameFailure ? report.frameFailure->text : report.contours.error;
            EXPECT_TRUE(AllPlacesAreNumbers(surface));
            EXPECT_EQ(sentence.empty(), trouble.sentence.empty()) << sentence;
            EXPECT_NE(sentence.find(trouble.sentence), std::string::npos) << sentence;
        }
    }
}

} // namespace
} // namespace terravo
