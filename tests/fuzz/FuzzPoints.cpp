#include "fuzz/FuzzPoints.h"

#include <array>
#include <cmath>
#include <limits>

namespace terravo::fuzz {
namespace {

struct SpaceValues {
    double x = 0;
    double y = 0;
    double z = 0;
};

class PointMaker {
public:
    explicit PointMaker(InputBytes& bytes) : bytes_(bytes) {
        static constexpr std::array kScales{1.0,  0.1,   1e-3,  1e-9,  1e-13,  1e3,
                                            1e12, 1e100, 1e150, 1e290, 1e-160, 1e-300};
        static constexpr std::array kOffsets{0.0,  1.0,   4520000.7, 1e9,   1e15,
                                             -7e5, 1e100, 1e300,     1e-12, 5e-324};
        const auto choose = [this](const auto& list) {
            return list[static_cast<std::size_t>(bytes_.Byte()) % list.size()];
        };
        scale_ = choose(kScales);
        offsetX_ = choose(kOffsets);
        offsetY_ = choose(kOffsets);
        const double angle = 0.01 * bytes_.Byte();
        cosine_ = std::cos(angle);
        sine_ = std::sin(angle);
    }

    // Adds the next point unless a coordinate is beyond the range of doubles.
    void AddTo(PointSet& points) {
        SpaceValues p = Next(points);
        if (std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z)) {
            points.Append(p.x, p.y, p.z);
        }
    }

private:
    [[nodiscard]] SpaceValues Placed(double x, double y, double z) const {
        return {offsetX_ + scale_ * (x * cosine_ - y * sine_),
                offsetY_ + scale_ * (x * sine_ + y * cosine_), z};
    }

    double PowerOfTen() { return std::pow(10, 3 * bytes_.SignedByte()); }

    SpaceValues Earlier(const PointSet& points) {
        const Index i = points.count == 0 ? 0 : bytes_.Byte() % points.count + 1;
        return i == 0 ? SpaceValues{} : SpaceValues{points.x[i], points.y[i], points.z[i]};
    }

    static void Nudge(double& value, int steps) {
        const double towards = steps < 0 ? -std::numeric_limits<double>::infinity()
                                         : std::numeric_limits<double>::infinity();
        for (int i = std::abs(steps) % 4; i > 0; --i) {
            value = std::nextafter(value, towards);
        }
    }

    // On the line through two earlier points, or moved off it by the least steps there are.
    SpaceValues OnLine(const PointSet& points) {
        const SpaceValues a = Earlier(points);
        const SpaceValues b = Earlier(points);
        const double part = bytes_.SignedByte() / 16.0;
        SpaceValues p{a.x + part * (b.x - a.x), a.y + part * (b.y - a.y), a.z};
        const int steps = bytes_.SignedByte();
        Nudge(p.x, steps / 8);
        Nudge(p.y, steps % 8);
        return p;
    }

    SpaceValues Next(const PointSet& points) {
        switch (bytes_.Byte() % 8) {
        case 0:
            return {bytes_.Double(), bytes_.Double(), bytes_.Double()};
        case 1: {
            const SpaceValues p = Earlier(points);
            return {p.x, p.y, static_cast<double>(bytes_.SignedByte())};
        }
        case 2:
            return OnLine(points);
        case 3: {
            const double x = bytes_.Short() * PowerOfTen();
            const double y = bytes_.Short() * PowerOfTen();
            return {x, y, bytes_.SignedByte() * PowerOfTen()};
        }
        case 4: {
            const double x = bytes_.Short();
            const double y = bytes_.Short();
            return Placed(x, y, bytes_.Short() / 10.0);
        }
        default: {
            const double x = bytes_.SignedByte() / 8;
            const double y = bytes_.SignedByte() / 8;
            return Placed(x, y, bytes_.SignedByte());
        }
        }
    }

    InputBytes& bytes_;
    double scale_ = 1;
    double offsetX_ = 0;
    double offsetY_ = 0;
    double cosine_ = 1;
    double sine_ = 0;
};

} // namespace

PointSet TakePoints(InputBytes& bytes) {
    PointSet points;
    points.sourceName = "fuzz.dat";
    PointMaker maker(bytes);
    while (!bytes.IsEmpty() && points.count < kMostPoints) {
        maker.AddTo(points);
    }
    return points;
}

Array1<PlanPoint> PlanOf(const PointSet& points) {
    Array1<PlanPoint> plan(points.count);
    for (Index i = 1; i <= points.count; ++i) {
        plan[i] = {points.x[i], points.y[i]};
    }
    return plan;
}

} // namespace terravo::fuzz
