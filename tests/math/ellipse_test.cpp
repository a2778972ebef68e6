#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// Incomplete integral of the second kind, in long double, measured from the end of the axis B.
long double LongLength(long double a, long double b, long double t) {
    const long double quarter = 1.57079632679489661923132169163975144L;
    if (a >= b) return a * std::ellint_2(std::sqrt(1 - b / a * (b / a)), t - quarter);
    return b * std::ellint_2(std::sqrt(1 - a / b * (a / b)), t);
}

EllipticArc RandomArc(Random& random) {
    const double longer = random.Uniform(1, 100);
    const double shorter = longer * std::pow(10, random.Uniform(-4, 0));
    const bool isLongerA = random.Coin();
    const double rotation = random.Uniform(-4, 4), start = random.Uniform(-4, 4);
    return {random.Point(), isLongerA ? longer : shorter, isLongerA ? shorter : longer, rotation,
            start,          random.Uniform(-7, 7)};
}

TEST(Ellipse, LengthAndItsInverseToOnePartInTenToTheTen) {
    for (Random random; random.Rounds(500);) {
        const EllipticArc arc = RandomArc(random);
        const long double a = arc.GetSemiAxisA(), b = arc.GetSemiAxisB();
        const long double exact = std::abs(LongLength(a, b, arc.GetEnd()) - LongLength(a, b, arc.GetStart()));
        EXPECT_NEAR(static_cast<double>(arc.GetLength() / exact), 1, 1e-10);
        const double ratio = random.Uniform(0, 1);
        EXPECT_NEAR(arc.GetLength(arc.GetStart(), arc.ParameterAt(ratio)) / arc.GetLength(), ratio, 1e-10);
    }
    EXPECT_DOUBLE_EQ(EllipticArc({0, 0}, 50, 0, 0, 3).GetLength(), 200) << "flat: there and back";
    const EllipticArc whole({0, 0}, 2, 1, 0);
    for (const double below : {-1.0, kNaN}) EXPECT_EQ(whole.ParameterAt(below), 0);
    EXPECT_EQ(whole.ParameterAt(2), kTwoPi);
}

TEST(Ellipse, NearestBoxAndAreaAgainstSamples) {
    for (Random random; random.Rounds(300);) {
        const EllipticArc arc = RandomArc(random);
        const DPOINT2 p = random.Coin() ? random.Point() : arc.GetCenter() + random.Point(arc.GetSemiAxisA());
        const double area = arc.GetSemiAxisA() * arc.GetSemiAxisB();
        const double t = random.Uniform(-4, 4), step = 1e-6;
        const DPOINT2 ahead = arc.PointAt(t + step) - arc.PointAt(t - step);
        EXPECT_NEAR(math::Dot(arc.TangentAt(t), ahead), math::Norm(ahead), 1e-6 * math::Norm(ahead)) << t;
        const auto curve = [&](double r) { return arc.PointAt(arc.GetStart() + r * arc.GetSweep()); };
        ExpectFits(curve, 3000, p, arc.GetNearest(p), arc.GetBounds(), arc.GetChordArea(),
                   {0.12, 1e-3, 1e-4 * area + 1e-9});
    }
}

// On the axes and at the centre feet fall together or lie on the ends of quadrants.
TEST(Ellipse, NearestOnTheAxes) {
    const auto distance = [](const EllipticArc& arc, const DPOINT2& p) {
        return math::D2GetDistance(p, arc.GetNearest(p));
    };
    const EllipticArc whole({1, 2}, 5, 3, 0), lower({0, 0}, 5, 3, 0, 4.2, 1.2), circle({0, 0}, 5, 5, 0);
    EXPECT_NEAR(distance(whole, {1, 1.999999999999}), 3, 1e-11) << "below the centre";
    EXPECT_NEAR(distance(whole, {2.6, 2}), 2.749545416973504, 1e-11) << "inside the evolute";
    EXPECT_NEAR(distance(lower, {0, 4}), 7, 1e-11) << "the half away from it";
    EXPECT_NEAR(distance(circle, {3, 0}), 2, 1e-11);
}

} // namespace
