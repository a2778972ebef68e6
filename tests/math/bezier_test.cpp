#include <chrono>

#include "support/support.h"

namespace {

using namespace qev;
using namespace test;

CubicBezier RandomBezier(Random& random) {
    const DPOINT2 start = random.Point(), ctrl1 = random.Point(), ctrl2 = random.Point();
    return {start, ctrl1, ctrl2, random.Point()};
}

// Chord sums of n and 2n samples; the extrapolated value is exact to the fourth order of the step.
double ExtrapolatedLength(const CubicBezier& b, int n) {
    const auto chords = [&](int count) {
        double sum = 0;
        for (double i = 0; i < count; ++i)
            sum += math::D2GetDistance(b.PointAt(i / count), b.PointAt((i + 1) / count));
        return sum;
    };
    return (4 * chords(2 * n) - chords(n)) / 3;
}

TEST(Bezier, LengthOfClosedForms) {
    EXPECT_EQ((CubicBezier{{1, 1}, {1, 1}, {1, 1}, {1, 1}}).GetLength(), 0) << "a point";
    const CubicBezier back{{0, 0}, {1, 0}, {-1, 0}, {0, 0}};
    const double extreme = back.PointAt((3 - std::sqrt(3.0)) / 6).x;
    EXPECT_NEAR(back.GetLength() / (4 * extreme), 1, 1e-10) << "on a line, to both extremes and back";
    const CubicBezier cusp{{0, 0}, {1, 1}, {0, 1}, {1, 0}};
    EXPECT_NEAR(cusp.GetLength() / ExtrapolatedLength(cusp, 100000), 1, 1e-9) << "by symmetry at a node";
    EXPECT_EQ(cusp.ParameterAt(0), 0);
    const double whole = cusp.GetLength();
    for (const double t : {0.001, 0.003, 0.999}) // now beside the end of a panel
        EXPECT_NEAR((cusp.Between(0, t).GetLength() + cusp.Between(t, 1).GetLength()) / whole, 1, 1e-12) << t;
}

TEST(Bezier, BoxAndTangentOfDegenerateControlPoints) {
    EXPECT_EQ((CubicBezier{{0, 0}, {1, 1}, {2, 2}, {3, 3}}).GetBounds().upper.x, 3);
    EXPECT_NEAR((CubicBezier{{0, 0}, {1, 2}, {2, 2}, {3, 0}}).GetBounds().upper.y, 1.5, 1e-15);
    const CubicBezier doubled{{0, 0}, {0, 0}, {3, 4}, {3, 4}};
    for (const double t : {0, 1}) EXPECT_POINT_NEAR(doubled.TangentAt(t), (DPOINT2{0.6, 0.8}), 1e-12);
    EXPECT_POINT_NEAR((CubicBezier{{1, 1}, {1, 1}, {1, 1}, {1, 1}}).TangentAt(0.5), (DPOINT2{0, 0}), 0);
    EXPECT_EQ(doubled.SolveFoot({1, {6, 8}}).size(), 0u) << "nearer all the way";
}

// The part up to a parameter has the length that the parameter was found by.
TEST(Bezier, LengthAgainstExtrapolatedChordsAndItsInverse) {
    for (Random random; random.Rounds(100);) {
        const CubicBezier b = RandomBezier(random);
        EXPECT_NEAR(b.GetLength() / ExtrapolatedLength(b, 20000), 1, 3e-10) << "the oracle errs near cusps";
        const double t = b.ParameterAt(random.Uniform(0, 1));
        const double ratio = b.Between(0, t).GetLength() / b.GetLength();
        EXPECT_NEAR(b.ParameterAt(ratio), t, 1e-8);
        EXPECT_NEAR((CubicBezier{b.end, b.ctrl2, b.ctrl1, b.start}).ParameterAt(1 - ratio), 1 - t, 1e-8);
    }
}

TEST(Bezier, PartsLieOnTheWhole) {
    for (Random random; random.Rounds(100);) {
        const CubicBezier b = RandomBezier(random);
        const double from = random.Uniform(0, 1), to = random.Uniform(0, 1), s = random.Uniform(0, 1);
        const CubicBezier part = b.Between(from, to);
        EXPECT_POINT_NEAR(part.PointAt(s), b.PointAt(from + (to - from) * s), 1e-12);
        EXPECT_POINT_NEAR(part.start, b.PointAt(from), 0);
        EXPECT_POINT_NEAR(part.end, b.PointAt(to), 0);
    }
}

// Rounding is noise at the ends of the scale, and no reason to halve for ever.
TEST(Bezier, WorkIsBoundedAtEveryScale) {
    const auto start = std::chrono::steady_clock::now();
    for (const double size : {1e-162, 1e-159, 1e-154, 1e-3, 1e4, 1e150}) {
        const CubicBezier b{{0, 0}, {size, 2 * size}, {-size, 2 * size}, {size, 0}};
        EXPECT_NEAR(b.GetLength() / size, 3.4496, size < 1e-160 ? 1 : 1e-3) << size;
        EXPECT_NEAR(b.PointAt(b.ParameterAt(0.3)).x / size, 0.2974, size < 1e-160 ? 1 : 1e-3) << size;
    }
    for (const double a : {0.0, 1e-320, 1e300, kInf, kNaN}) {
        const CubicBezier b{{a, 0}, {1, a}, {-a, 1}, {a, a}};
        (void)(b.GetLength() + b.ParameterAt(0.5) + b.GetNearest({a, 1}).x + b.GetBounds().lower.x);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(Bezier, NearestBoxAndAreaAgainstSamples) {
    for (Random random; random.Rounds(300);) {
        const CubicBezier b = RandomBezier(random);
        const DPOINT2 p = random.Point();
        const auto curve = [&](double t) { return b.PointAt(t); };
        ExpectFits(curve, 5000, p, b.GetNearest(p), b.GetBounds(), b.GetChordArea(), {0.1, 1e-4, 1e-2});
    }
}

} // namespace
