#include <qevmath/elementary.h>

#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

constexpr auto Moderate = [](Random& random) { return random.Uniform(-10, 10); };
// A number of any size and sign, subnormal ones among them.
constexpr auto AnyDouble = [](Random& random) {
    return (random.Coin() ? 1 : -1) * std::ldexp(random.Uniform(0.5, 1), random.Int(-1073, 1024));
};

#ifndef _WIN32 // the C library there takes no more than 64 bits of pi in long double, so it is no judge
// Distance in units of the last place of the exact value.
double UlpsBetween(double got, long double exact) {
    const int exponent = exact == 0 ? -1074 : std::max(std::ilogb(exact) - 52, -1074);
    return static_cast<double>(std::abs(got - exact) / std::ldexp(1.0L, exponent));
}

// Next to a multiple of pi/2, where the reduction cancels most.
double NearQuarterTurn(Random& random) {
    const double kWorst[] = {0x1.39c6fd67805a7p+18, 0x1.39c6fd67805a7p+20, 0x1.6ac5b262ca1ffp+849};
    if (random.Int(0, 9) == 0) return kWorst[random.Int(0, 2)];
    return random.Int(-2000000, 2000000) * (kPi / 2) * (1 + random.Int(-1, 1) * 0x1p-52);
}

constexpr auto InUnitRange = [](Random& random) { return std::cos(random.Uniform(0, kPi)); };
constexpr int kSamples = 30000;

TEST(Elementary, WithinOneUnitOfTheLastPlace) {
    using Arguments = std::vector<double (*)(Random&)>;
    // the bound is in units of the last place, a little above the largest error of ten million arguments
    for (const auto& [ours, exact, arguments, bound] :
         Table<double (*)(double), long double (*)(long double), Arguments, double>{
             {math::Sin, std::sin, {Moderate, AnyDouble, NearQuarterTurn}, 0.83},
             {math::Cos, std::cos, {Moderate, AnyDouble, NearQuarterTurn}, 0.83},
             {math::Tan, std::tan, {Moderate, AnyDouble, NearQuarterTurn}, 0.95},
             {math::Asin, std::asin, {InUnitRange}, 0.95},
             {math::Acos, std::acos, {InUnitRange}, 0.95},
             {math::Atan, std::atan, {Moderate, AnyDouble}, 0.93},
             {math::Cbrt, std::cbrt, {Moderate, AnyDouble}, 0.67}})
        for (const auto argument : arguments)
            for (Random random; random.Rounds(kSamples);) {
                const double x = argument(random);
                ASSERT_LT(UlpsBetween(ours(x), exact(x)), bound) << std::hexfloat << x;
            }
}

TEST(Elementary, PolarAngleWithinOneUnitOfTheLastPlace) {
    for (Random random; random.Rounds(kSamples);) {
        const double x = random.Coin() ? Moderate(random) : AnyDouble(random);
        const double y = random.Coin() ? x * Moderate(random) : AnyDouble(random);
        ASSERT_LT(UlpsBetween(math::Atan2(y, x), std::atan2(static_cast<long double>(y), x)), 0.95)
            << std::hexfloat << y << " " << x;
    }
}
#endif

bool IsSameWithSign(double a, double b) {
    return std::isnan(a) ? std::isnan(b) : a == b && std::signbit(a) == std::signbit(b);
}

// Zeros, infinities and what lies outside a domain, as in the C standard.
TEST(Elementary, EdgesOfOddFunctions) {
    for (double (*const odd)(double) : {math::Sin, math::Tan, math::Asin, math::Atan, math::Cbrt})
        for (const double x : {0.0, -0.0, kNaN}) EXPECT_PRED2(IsSameWithSign, odd(x), x);
    for (const double sign : {1, -1}) {
        EXPECT_EQ(math::Cbrt(sign * 8), sign * 2);
        EXPECT_EQ(math::Cbrt(sign * kInf), sign * kInf);
        EXPECT_EQ(math::Asin(sign), sign * kPi / 2);
        EXPECT_EQ(math::Atan(sign * kInf), sign * kPi / 2);
        EXPECT_TRUE(std::isnan(math::Asin(sign * 1.0000000000000002)));
        EXPECT_TRUE(std::isnan(math::Sin(sign * kInf)));
    }
}

TEST(Elementary, EdgesOfThePolarAngle) {
    using Case = std::tuple<double, double, double>; // y, x and eighths of a turn; other signs for (x, -y)
    for (const auto& [y, x, eighths] :
         {Case{0, 0, 0}, Case{0, -0.0, 4}, Case{0, -1, 4}, Case{1, -0.0, 2}, Case{1e308, -1e308, 3},
          Case{kInf, 1, 2}, Case{kInf, -kInf, 3}, Case{1, -kInf, 4}, Case{5e-324, 5e-324, 1},
          Case{5e-324, 1e308, 0}, Case{kNaN, 1, kNaN}, Case{1, kNaN, kNaN}}) {
        EXPECT_PRED2(IsSameWithSign, math::Atan2(y, x), eighths * kPi / 4) << y << " " << x;
        EXPECT_PRED2(IsSameWithSign, math::Atan2(-y, x), -eighths * kPi / 4) << -y << " " << x;
    }
}

} // namespace
