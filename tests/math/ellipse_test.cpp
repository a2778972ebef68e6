#include <cmath>

#include <qevmath/qevmath.h>

#include <gtest/gtest.h>

#include "support/shapes.h"

namespace {

using math::DPOINT2;
using math::EllipticArc;
using math::kTwoPi;

// Whole perimeter by the arithmetic-geometric mean (Gauss): independent of what the library uses.
long double AgmPerimeter(long double a, long double b) {
    long double sum = (a * a + b * b) / 2;
    long double weight = 1;
    long double x = a, y = b;
    for (int i = 0; i < 12; ++i) {
        const long double c = (x - y) / 2;
        const long double next = (x + y) / 2;
        y = std::sqrt(x * y);
        x = next;
        weight *= 2;
        sum -= weight / 2 * c * c;
    }
    return 2 * 3.14159265358979323846264338327950288L * sum / x;
}

// Incomplete integral of the second kind, in long double, measured from the end of the axis B.
long double LongLength(long double a, long double b, long double t) {
    const long double quarter = 1.57079632679489661923132169163975144L;
    if (a >= b) return a * std::ellint_2(std::sqrt(1 - b / a * (b / a)), t - quarter);
    return b * std::ellint_2(std::sqrt(1 - a / b * (a / b)), t);
}

EllipticArc RandomArc(test::Random& random) {
    const double ratio = std::pow(10, random.Uniform(-4, 0));
    const double a = random.Uniform(1, 100);
    const double b = a * ratio;
    return {random.Point(),        random.Coin() ? a : b, random.Coin() ? b : a,
            random.Uniform(-4, 4), random.Uniform(-4, 4), random.Uniform(-7, 7)};
}

test::CurvePoint Curve(const EllipticArc& arc) {
    return [arc](double r) { return arc.PointAt(arc.GetStart() + r * arc.GetSweep()); };
}

TEST(Ellipse, PerimeterAgainstTheArithmeticGeometricMean) {
    for (double ratio = 1; ratio > 0.9e-4; ratio /= 10) {
        const auto exact = static_cast<double>(AgmPerimeter(50, 50 * static_cast<long double>(ratio)));
        EXPECT_NEAR(EllipticArc({0, 0}, 50, 50 * ratio, 0.3).GetLength() / exact, 1, 1e-12) << ratio;
        EXPECT_NEAR(EllipticArc({0, 0}, 50 * ratio, 50, 0.3).GetLength() / exact, 1, 1e-12) << ratio;
    }
    EXPECT_DOUBLE_EQ(EllipticArc({0, 0}, 50, 0, 0).GetLength(), 200);
}

TEST(Ellipse, PartialLengthsToOnePartInTenToTheTen) {
    test::Random random;
    double worst = 0;
    for (int i = 0; i < 500; ++i) {
        const EllipticArc arc = RandomArc(random);
        const long double a = arc.GetSemiAxisA();
        const long double b = arc.GetSemiAxisB();
        const auto exact =
            static_cast<double>(std::abs(LongLength(a, b, arc.GetEnd()) - LongLength(a, b, arc.GetStart())));
        worst = std::max(worst, std::abs(arc.GetLength() / exact - 1));
    }
    EXPECT_LT(worst, 1e-10);
}

TEST(Ellipse, ParameterAtLengthInvertsTheLength) {
    test::Random random;
    for (int i = 0; i < 300; ++i) {
        const EllipticArc arc = RandomArc(random);
        const double ratio = random.Uniform(0, 1);
        EXPECT_NEAR(arc.GetLength(arc.GetStart(), arc.ParameterAt(ratio)) / arc.GetLength(), ratio, 1e-10);
    }
    const EllipticArc whole({0, 0}, 2, 1, 0);
    EXPECT_EQ(whole.ParameterAt(-1), 0);
    EXPECT_EQ(whole.ParameterAt(test::kNaN), 0);
    EXPECT_EQ(whole.ParameterAt(2), kTwoPi);
}

TEST(Ellipse, NearestAndBoxAgainstSamples) {
    test::Random random;
    for (int i = 0; i < 300; ++i) {
        const EllipticArc arc = RandomArc(random);
        const DPOINT2 p = random.Coin() ? random.Point() : arc.GetCenter() + random.Point(arc.GetSemiAxisA());
        const double distance = math::D2GetDistance(p, arc.GetNearest(p));
        const double sampled = test::SampledDistance(Curve(arc), p, 3000);
        EXPECT_LE(distance, sampled + 1e-10);
        EXPECT_GE(distance, sampled - 0.12) << "one sample step";
        test::ExpectBoxFits(arc.GetBounds(), Curve(arc), 3000, 1e-3);
        EXPECT_NEAR(arc.GetChordArea(), test::SampledArea(Curve(arc), 3000),
                    1e-4 * arc.GetSemiAxisA() * arc.GetSemiAxisB() + 1e-9);
    }
}

// On the axes and at the centre feet fall together or lie on the ends of quadrants.
TEST(Ellipse, NearestOnTheAxes) {
    const EllipticArc whole({1, 2}, 5, 3, 0);
    const struct {
        DPOINT2 p;
        double distance;
    } cases[] = {{{1, 2}, 3},
                 {{1 + 9, 2}, 4},
                 {{1 - 9, 2}, 4},
                 {{1, 2 + 4}, 1},
                 {{1, 2 - 4}, 1},
                 {{1, 2 + 2.9}, 0.1},
                 {{1 + 4.9, 2}, 0.1},
                 {{1 - 4.9, 2}, 0.1},
                 {{1 + 1e-12, 2}, 3},
                 {{1, 2 - 1e-12}, 3},
                 {{1 + 1.6, 2}, 3 * std::sqrt(1 - 1.6 * 1.6 / 16)}};
    for (const auto& c : cases)
        EXPECT_NEAR(math::D2GetDistance(c.p, whole.GetNearest(c.p)), c.distance, 1e-11) << c.p.x;
    // the lower half alone, from a point whose nearest point lies above as well as below
    const EllipticArc lower({0, 0}, 5, 3, 0, math::kPi, math::kPi);
    EXPECT_NEAR(math::D2GetDistance({1.6, 0}, lower.GetNearest({1.6, 0})), 3 * std::sqrt(1 - 0.16), 1e-11);
    const EllipticArc circle({0, 0}, 5, 5, 0);
    EXPECT_NEAR(math::D2GetDistance({3, 0}, circle.GetNearest({3, 0})), 2, 1e-12);
}

TEST(Ellipse, HostileNumbersEnd) {
    for (const double a : {0.0, 1.0, 1e300, test::kInf, test::kNaN})
        for (const double t : {0.0, -3.0, 1e300, test::kInf, test::kNaN}) {
            const EllipticArc arc({a, 0}, a, 1, t, t, t);
            (void)arc.GetLength();
            (void)arc.ParameterAt(0.5);
            (void)arc.GetNearest({1, t});
            (void)arc.GetBounds();
        }
}

} // namespace
