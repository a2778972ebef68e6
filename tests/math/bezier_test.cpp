#include "support/support.h"

const auto RandomBezier = [](Random& r) { return CubicBezier{r.Point(), r.Point(), r.Point(), r.Point()}; };
// Chord sums of n and 2n samples; the extrapolated value is exact to the fourth order of the step.
const auto Extrapolated = [](const CubicBezier& b, int n) {
    double sum = 0, fine = 0;
    for (double i = 0; i < n; ++i) sum += math::D2GetDistance(b.PointAt(i / n), b.PointAt((i + 1) / n));
    for (double i = 0; i < n; i += 0.5)
        fine += math::D2GetDistance(b.PointAt(i / n), b.PointAt((i + 0.5) / n));
    return (4 * fine - sum) / 3;
};

// Closed forms: straight pieces with any spacing, a piece that turns back on itself, and a parabola.
TEST(Bezier, ClosedFormsAndDegenerate) {
    EXPECT_NEAR((CubicBezier{{0, 0}, {0, 0}, {3, 4}, {3, 4}}).GetLength(), 5, 1e-13);
    EXPECT_EQ((CubicBezier{{1, 1}, {1, 1}, {1, 1}, {1, 1}}).GetLength(), 0);
    // x = 3t(1-t)^2 - 3t^2(1-t) ... on a line: out to its extremes and back
    const CubicBezier back{{0, 0}, {1, 0}, {-1, 0}, {0, 0}};
    const double extreme = back.PointAt((3 - std::sqrt(3.0)) / 6).x;
    EXPECT_NEAR(back.GetLength() / (4 * extreme), 1, 1e-10);
    // y = x^2 on [0, 1], raised to degree three
    const CubicBezier parabola{{0, 0}, {1 / 3.0, 0}, {2 / 3.0, 1 / 3.0}, {1, 1}};
    EXPECT_NEAR(parabola.GetLength(), std::sqrt(5.0) / 2 + std::asinh(2.0) / 4, 1e-13);
    // a cusp in the middle, by symmetry x = y mirrored: twice one smooth half
    const CubicBezier cusp{{0, 0}, {1, 1}, {0, 1}, {1, 0}};
    const CubicBezier half{{0, 0}, {0.5, 0.5}, {0.5, 0.75}, {0.5, 0.75}};
    EXPECT_NEAR(cusp.GetLength() / (2 * Extrapolated(half, 100000)), 1, 1e-9);
    // equally spaced controls have a derivative of lower degree; doubled ones have none at an end
    EXPECT_EQ((CubicBezier{{0, 0}, {1, 1}, {2, 2}, {3, 3}}).GetBounds().upper.x, 3);
    EXPECT_NEAR((CubicBezier{{0, 0}, {1, 2}, {2, 2}, {3, 0}}).GetBounds().upper.y, 1.5, 1e-15);
    const CubicBezier doubled{{0, 0}, {0, 0}, {3, 4}, {3, 4}};
    EXPECT_POINT_NEAR(doubled.TangentAt(0), (DPOINT2{0.6, 0.8}), 1e-12);
    EXPECT_POINT_NEAR(doubled.TangentAt(1), (DPOINT2{0.6, 0.8}), 1e-12);
    EXPECT_POINT_NEAR((CubicBezier{{1, 1}, {1, 1}, {1, 1}, {1, 1}}).TangentAt(0.5), (DPOINT2{0, 0}), 0);
}

TEST(Bezier, LengthAgainstExtrapolatedChordsAndItsInverse) {
    for (Random random; random.Rounds(100);) {
        const CubicBezier b = RandomBezier(random);
        EXPECT_NEAR(b.GetLength() / Extrapolated(b, 20000), 1, 3e-10); // the oracle errs by 2e-10 near cusps
        const double t = b.ParameterAt(random.Uniform(0, 1));
        // the first part on its own, by de Casteljau
        const DPOINT2 p01 = math::Interpolate(b.start, b.ctrl1, t),
                      p12 = math::Interpolate(b.ctrl1, b.ctrl2, t);
        const CubicBezier part{b.start, p01, math::Interpolate(p01, p12, t), b.PointAt(t)};
        const double ratio = part.GetLength() / b.GetLength();
        EXPECT_NEAR(b.ParameterAt(ratio), t, 1e-8);
        EXPECT_NEAR((CubicBezier{b.end, b.ctrl2, b.ctrl1, b.start}).ParameterAt(1 - ratio), 1 - t, 1e-8);
    }
}

TEST(Bezier, NearestBoxAndAreaAgainstSamples) {
    for (Random random; random.Rounds(300);) {
        const CubicBezier b = RandomBezier(random);
        const DPOINT2 p = random.Point();
        const auto curve = [&](double t) { return b.PointAt(t); };
        ExpectFits(curve, 5000, p, b.GetNearest(p), b.GetBounds(), b.GetChordArea(), {0.1, 1e-4, 1e-2});
    }
}

TEST(Bezier, HostileNumbersEnd) {
    for (const double a : {0.0, 1e-320, 1e300, kInf, kNaN}) {
        const CubicBezier b{{a, 0}, {1, a}, {-a, 1}, {a, a}};
        (void)(b.GetLength() + b.ParameterAt(0.5) + b.GetNearest({a, 1}).x + b.GetBounds().lower.x);
    }
}
