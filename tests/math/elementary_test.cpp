#include <qevmath/elementary.h>

#include "support/support.h"

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

double InUnitRange(Random& random) {
    const double nearOne = 1 - std::pow(10, random.Uniform(-16, -1));
    return (random.Coin() ? 1 : -1) * (random.Coin() ? random.Uniform(0, 1) : nearOne);
}

constexpr int kSamples = 30000;

TEST(Elementary, WithinOneUnitOfTheLastPlace) {
    // the bound is a little above the largest error of ten million arguments
    using Row = std::tuple<double (*)(double), long double (*)(long double), double (*)(Random&), double>;
    using namespace math;
    const Row kRows[] = {{Sin, std::sin, Moderate, 0.83},        {Sin, std::sin, AnyDouble, 0.83},
                         {Cos, std::cos, Moderate, 0.83},        {Cos, std::cos, AnyDouble, 0.83},
                         {Tan, std::tan, Moderate, 0.95},        {Tan, std::tan, AnyDouble, 0.95},
                         {Sin, std::sin, NearQuarterTurn, 0.51}, {Cos, std::cos, NearQuarterTurn, 0.51},
                         {Tan, std::tan, NearQuarterTurn, 0.51}, {Asin, std::asin, InUnitRange, 0.95},
                         {Acos, std::acos, InUnitRange, 0.95},   {Atan, std::atan, Moderate, 0.93},
                         {Atan, std::atan, AnyDouble, 0.93},     {Cbrt, std::cbrt, Moderate, 0.67},
                         {Cbrt, std::cbrt, AnyDouble, 0.67}};
    for (const Row& row : kRows)
        for (Random random; random.Rounds(kSamples);) {
            const auto& [ours, exact, argument, bound] = row;
            const double x = argument(random);
            ASSERT_LT(UlpsBetween(ours(x), exact(x)), bound) << &row - kRows << " of " << std::hexfloat << x;
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

TEST(Elementary, PairIsSineAndCosine) {
    for (Random random; random.Rounds(1000);) {
        const double x = random.Coin() ? Moderate(random) : AnyDouble(random);
        const auto [sine, cosine] = math::SinCos(x);
        ASSERT_TRUE(sine == math::Sin(x) && cosine == math::Cos(x)) << x;
    }
}

bool SameWithSign(double a, double b) {
    return std::isnan(a) ? std::isnan(b) : a == b && std::signbit(a) == std::signbit(b);
}

// As in the C standard; the odd functions in both directions. Angles are in quarters of pi.
TEST(Elementary, EdgesOfTheDomains) {
    using namespace math;
    double (*const functions[])(double) = {Sin, Tan, Asin, Atan, Cbrt, Cos, Acos};
    const auto check = [&](int index, double x, double expected) {
        EXPECT_PRED2(SameWithSign, functions[index](x), expected) << index << " of " << x;
    };
    for (const int odd : {0, 1, 2, 3, 4})
        for (const double x : {0.0, -0.0, kNaN}) check(odd, x, x);
    for (const int odd : {0, 1, 2, 3})
        for (const double x : {5e-324, -5e-324}) check(odd, x, x);
    for (const double sign : {1, -1}) {
        check(4, sign * 8, sign * 2);
        check(4, sign * kInf, sign * kInf);
        check(2, sign, sign * kHalfPi);
        check(3, sign * kInf, sign * kHalfPi);
        check(2, sign * 1.0000000000000002, kNaN);
        for (const int wave : {0, 1, 5}) check(wave, sign * kInf, kNaN);
    }
    for (const auto& [row, index, x, quarters] :
         Rows<int, double, double>("5 nan nan; 6 1 0; 6 0 2; 6 -1 4; 6 -2 nan; 6 nan nan"))
        check(index, x, quarters * kPi / 4);
    check(5, 0, 1);
    for (const auto& [row, y, x, quarters] : Rows<double, double, double>(
             "0 0 0; 0 -0 4; 0 1 0; 0 -1 4; 1 0 2; 1 -0 2; 1 1 1; 1e308 -1e308 3; inf 1 2; inf inf 1;"
             "inf -inf 3; 1 inf 0; 1 -inf 4; 5e-324 5e-324 1; 5e-324 1e308 0; nan 1 nan; 1 nan nan")) {
        EXPECT_PRED2(SameWithSign, math::Atan2(y, x), quarters * kPi / 4) << row;
        EXPECT_PRED2(SameWithSign, math::Atan2(-y, x), -quarters * kPi / 4) << row;
    }
}

} // namespace
