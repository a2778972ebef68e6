// Sines of large angles need the remainder by pi/2 with all digits, though the angle holds a multiple of pi/2
// that cancels nearly all of them. Up to 2^20 quarter turns pi/2 is subtracted in three parts, so that the
// products are exact (Cody and Waite). Beyond that, and where what remains is so small that the third part is
// too coarse, the angle is multiplied by just those bits of 2/pi that matter, as integers (Payne and Hanek).
// Both ways give the remainder and its own rounding error, together good to 2^-60 of it. Rejected: fmod by
// pi/2 in double, which is off by a fraction of a turn from 1e16 on, and long double, which is not there on
// every system.
#include "angle_reduction.h"

#include <bit>
#include <cmath>
#include <cstdint>

#include "double_parts.h"

namespace math {
namespace {

// pi/2 in three parts; the first two have 33 bits, so that their products with 20-bit numbers are exact.
constexpr double kFirst = 0x1.921fb54400000p+0;
constexpr double kSecond = 0x1.0b4611a600000p-34;
constexpr double kThird = 0x1.3198a2e037073p-69;
constexpr double kMostTurns = 0x1p20; // quarter turns
// The parts together miss pi/2 by 2^-121 at most: what remains of the angle must be above this for each turn.
constexpr double kLeastRest = 0x1p-60;

constexpr double kQuarterTurns = 0x1.45f306dc9c883p-1; // 2/pi

// 2/pi, behind 64 zero bits: enough for the largest exponent.
constexpr std::uint64_t kTwoOverPi[] = {0,
                                        0xa2f9836e4e441529,
                                        0xfc2757d1f534ddc0,
                                        0xdb6295993c439041,
                                        0xfe5163abdebbc561,
                                        0xb7246e3a424dd2e0,
                                        0x06492eea09d1921c,
                                        0xfe1deb1cb129a73e,
                                        0xe88235f52ebb4484,
                                        0xe99c7026b45f7e41,
                                        0x3991d639835339f4,
                                        0x9c845f8bbdf9283b,
                                        0x1ff897ffde05980f,
                                        0xef2f118b5a0a6d1f,
                                        0x6d367ecf27cb09b7,
                                        0x4f463f669e5fea2d,
                                        0x7527bac7ebe5f17b,
                                        0x3d0739f78a5292ea,
                                        0x6bfb5fb11f8d5d08,
                                        0x56033046fc7b6bab};

__extension__ using Wide = unsigned __int128;
__extension__ using SignedWide = __int128;

std::uint64_t TwoOverPiBits(int at) {
    const int word = at / 64;
    const int shift = at % 64;
    if (shift == 0) return kTwoOverPi[word];
    return kTwoOverPi[word] << shift | kTwoOverPi[word + 1] >> (64 - shift);
}

// The product of an integer and 2/pi needs only those bits of 2/pi that reach neither multiples of four
// quarter turns nor beyond the precision (Payne and Hanek 1983): 192 bits, multiplied as integers. The top
// two bits of the product are the quadrant, the rest a fraction of a quarter turn.
ReducedAngle ReduceExactly(double angle) {
    if (!std::isfinite(angle)) return {angle - angle, 0, 0};
    constexpr int kMantissaBits = 52;
    const auto bits = std::bit_cast<std::uint64_t>(std::abs(angle));
    const int exponent = static_cast<int>(bits >> kMantissaBits) - 1023;
    const std::uint64_t integer =
        (bits & ((std::uint64_t{1} << kMantissaBits) - 1)) | std::uint64_t{1} << kMantissaBits;

    const int window = exponent + 10; // the first bit of weight below four quarter turns
    Wide low = Wide{integer} * TwoOverPiBits(window + 128);
    const Wide middle = Wide{integer} * TwoOverPiBits(window + 64) + (low >> 64);
    const Wide high = (Wide{integer} * TwoOverPiBits(window) << 64) + middle;
    low = high << 2 | static_cast<std::uint64_t>(low) >> 62;

    const auto fraction = static_cast<SignedWide>(low); // from half a quarter turn on of the next one
    int quadrant = static_cast<int>(high >> 126) + (fraction < 0 ? 1 : 0);
    constexpr double kUnit = 0x1p-128;
    auto turn = static_cast<double>(fraction);
    double rest = static_cast<double>(fraction - static_cast<SignedWide>(turn)) * kUnit;
    turn *= kUnit;
    if (angle < 0) {
        turn = -turn;
        rest = -rest;
        quadrant = -quadrant;
    }
    constexpr double kHalfPiHigh = 0x1.921fb54442d18p+0;
    constexpr double kHalfPiLow = 0x1.1a62633145c07p-54;
    const double product = turn * kHalfPiHigh;
    const double lacking = ProductError(turn, kHalfPiHigh, product) + turn * kHalfPiLow + rest * kHalfPiHigh;
    const double value = product + lacking;
    return {value, (product - value) + lacking, quadrant & 3};
}

} // namespace

// Cody and Waite's reduction. The first difference is exact, the error of the second is kept.
ReducedAngle Reduce(double angle) {
    constexpr double kToInteger = 0x1.8p52; // adding it rounds to an integer
    const double turns = (angle * kQuarterTurns + kToInteger) - kToInteger;
    if (!(std::abs(turns) < kMostTurns)) return ReduceExactly(angle);
    const double first = angle - turns * kFirst;
    const double subtrahend = turns * kSecond;
    const double second = first - subtrahend;
    const double undone = second - first;
    const double error = (first - (second - undone)) - (subtrahend + undone);
    const double rest = error - turns * kThird;
    const double value = second + rest;
    if (!(std::abs(value) > std::abs(turns) * kLeastRest)) return ReduceExactly(angle);
    return {value, (second - value) + rest, static_cast<int>(turns) & 3};
}

} // namespace math
