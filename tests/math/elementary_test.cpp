#include <algorithm>
#include <cmath>

#include <qevmath/angle.h>
#include <qevmath/elementary.h>

#include <gtest/gtest.h>

#include "support/random.h"
#include "support/shapes.h"

namespace {

using math::kPi;
using test::kInf;
using test::kNaN;

double Moderate(test::Random& random) {
    return random.Uniform(-10, 10);
}

// A number of any size and sign, subnormal ones among them.
double AnyDouble(test::Random& random) {
    return (random.Coin() ? 1 : -1) * std::ldexp(random.Uniform(0.5, 1), random.Int(-1073, 1024));
}

#ifndef _WIN32 // the C library there takes no more than 64 bits of pi in long double, so it is no judge
// Distance in units of the last place of the exact value.
double UlpsBetween(double got, long double exact) {
    const int exponent = exact == 0 ? -1074 : std::max(std::ilogb(exact) - 52, -1074);
    return static_cast<double>(std::abs(got - exact) / std::ldexp(1.0L, exponent));
}

// Next to a multiple of pi/2, where the reduction cancels most.
double NearQuarterTurn(test::Random& random) {
    const double kWorst[] = {0x1.39c6fd67805a7p+18, 0x1.39c6fd67805a7p+20, 0x1.6ac5b262ca1ffp+849};
    if (random.Int(0, 9) == 0) return kWorst[random.Int(0, 2)];
    return random.Int(-2000000, 2000000) * (kPi / 2) * (1 + random.Int(-1, 1) * 0x1p-52);
}

double InUnitRange(test::Random& random) {
    const double nearOne = 1 - std::pow(10, random.Uniform(-16, -1));
    return (random.Coin() ? 1 : -1) * (random.Coin() ? random.Uniform(0, 1) : nearOne);
}

constexpr int kSamples = 30000;

TEST(Elementary, WithinOneUnitOfTheLastPlace) {
    struct Row {
        const char* name;
        double (*ours)(double);
        long double (*exact)(long double);
        double (*argument)(test::Random&);
        double bound; // a little above the largest error of ten million arguments
    };
    constexpr Row kRows[] = {{"sin", math::Sin, std::sin, Moderate, 0.83},
                             {"sin", math::Sin, std::sin, AnyDouble, 0.83},
                             {"sin", math::Sin, std::sin, NearQuarterTurn, 0.51},
                             {"cos", math::Cos, std::cos, Moderate, 0.83},
                             {"cos", math::Cos, std::cos, AnyDouble, 0.83},
                             {"cos", math::Cos, std::cos, NearQuarterTurn, 0.51},
                             {"tan", math::Tan, std::tan, Moderate, 0.95},
                             {"tan", math::Tan, std::tan, AnyDouble, 0.95},
                             {"tan", math::Tan, std::tan, NearQuarterTurn, 0.51},
                             {"asin", math::Asin, std::asin, InUnitRange, 0.95},
                             {"acos", math::Acos, std::acos, InUnitRange, 0.95},
                             {"atan", math::Atan, std::atan, Moderate, 0.93},
                             {"atan", math::Atan, std::atan, AnyDouble, 0.93},
                             {"cbrt", math::Cbrt, std::cbrt, Moderate, 0.67},
                             {"cbrt", math::Cbrt, std::cbrt, AnyDouble, 0.67}};
    test::Random random;
    for (const Row& row : kRows)
        for (int i = 0; i < kSamples; ++i) {
            const double x = row.argument(random);
            ASSERT_LT(UlpsBetween(row.ours(x), row.exact(x)), row.bound)
                << row.name << " of " << std::hexfloat << x;
        }
}

TEST(Elementary, PolarAngleWithinOneUnitOfTheLastPlace) {
    test::Random random;
    for (int i = 0; i < kSamples; ++i) {
        const double x = random.Coin() ? Moderate(random) : AnyDouble(random);
        const double y = random.Coin() ? x * Moderate(random) : AnyDouble(random);
        ASSERT_LT(UlpsBetween(math::Atan2(y, x), std::atan2(static_cast<long double>(y), x)), 0.95)
            << std::hexfloat << y << " " << x;
    }
}
#endif

TEST(Elementary, PairIsSineAndCosine) {
    test::Random random;
    for (int i = 0; i < 1000; ++i) {
        const double x = random.Coin() ? Moderate(random) : AnyDouble(random);
        const auto [sine, cosine] = math::SinCos(x);
        ASSERT_EQ(sine, math::Sin(x));
        ASSERT_EQ(cosine, math::Cos(x));
    }
}

bool SameWithSign(double a, double b) {
    return std::isnan(a) ? std::isnan(b) : a == b && std::signbit(a) == std::signbit(b);
}

// As in the C standard; the odd functions in both directions.
TEST(Elementary, EdgesOfTheDomains) {
    using namespace math;
    struct Row {
        double (*function)(double);
        double x, expected;
    };
    const Row kOdd[] = {{Sin, 0, 0},
                        {Tan, 0, 0},
                        {Asin, 0, 0},
                        {Atan, 0, 0},
                        {Cbrt, 0, 0},
                        {Sin, 5e-324, 5e-324},
                        {Tan, 5e-324, 5e-324},
                        {Asin, 5e-324, 5e-324},
                        {Atan, 5e-324, 5e-324},
                        {Cbrt, 8, 2},
                        {Asin, 1, kHalfPi},
                        {Atan, kInf, kHalfPi},
                        {Cbrt, kInf, kInf},
                        {Sin, kInf, kNaN},
                        {Tan, kInf, kNaN},
                        {Asin, 1.0000000000000002, kNaN},
                        {Sin, kNaN, kNaN},
                        {Tan, kNaN, kNaN},
                        {Asin, kNaN, kNaN},
                        {Atan, kNaN, kNaN},
                        {Cbrt, kNaN, kNaN}};
    for (const auto& [function, x, expected] : kOdd) {
        EXPECT_PRED2(SameWithSign, function(x), expected) << x;
        EXPECT_PRED2(SameWithSign, function(-x), -expected) << x;
    }
    const Row kOthers[] = {{Cos, 0, 1},        {Cos, -kInf, kNaN}, {Cos, kNaN, kNaN}, {Acos, 1, 0},
                           {Acos, 0, kHalfPi}, {Acos, -1, kPi},    {Acos, -2, kNaN},  {Acos, kNaN, kNaN}};
    for (const auto& [function, x, expected] : kOthers)
        EXPECT_PRED2(SameWithSign, function(x), expected) << x;
}

TEST(Elementary, PolarAnglesOnTheAxesAndAtInfinity) {
    const struct {
        double y, x, expected;
    } kRows[] = {{0, 0, 0},
                 {0, -0.0, kPi},
                 {0, 1, 0},
                 {0, -1, kPi},
                 {1, 0, kPi / 2},
                 {1, -0.0, kPi / 2},
                 {1, 1, kPi / 4},
                 {1e308, -1e308, 3 * kPi / 4},
                 {kInf, 1, kPi / 2},
                 {kInf, kInf, kPi / 4},
                 {kInf, -kInf, 3 * kPi / 4},
                 {1, kInf, 0},
                 {1, -kInf, kPi},
                 {5e-324, 5e-324, kPi / 4},
                 {5e-324, 1e308, 0},
                 {kNaN, 1, kNaN},
                 {1, kNaN, kNaN}};
    for (const auto& [y, x, expected] : kRows) {
        EXPECT_PRED2(SameWithSign, math::Atan2(y, x), expected) << y << " " << x;
        EXPECT_PRED2(SameWithSign, math::Atan2(-y, x), -expected) << y << " " << x;
    }
}

} // namespace
