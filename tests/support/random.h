/// \file
/// Seeded random numbers: a failing run names its seed, and QEV_SEED repeats it.
#pragma once

#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

#include <qev/types.h>
#include <qevdata/qevdata.h>

#include <gtest/gtest.h>

namespace test {

/// The random numbers of one test.
class Random {
public:
    /// Takes the seed from QEV_SEED, or a fixed one, and records it with the running test.
    Random() {
        const char* given = std::getenv("QEV_SEED");
        const std::uint64_t seed = given ? std::strtoull(given, nullptr, 10) : 20260101;
        testing::Test::RecordProperty("seed", std::to_string(seed));
        m_engine.seed(seed);
    }
    /// A number from [low, high).
    double Uniform(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }
    /// An integer from low to high, both included.
    int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }
    /// The condition of a loop: true `count` times over the life of this object, then false.
    bool Rounds(int count) { return m_round++ < count; }
    /// True or false, equally often.
    bool Coin() { return Int(0, 1) == 1; }
    /// A position on a contour of so many segments, with a ratio below 0.999, so that it is in normal form.
    math::POLYPOS Pos(int segments) { return {Int(0, segments - 1), Uniform(0, 0.999)}; }
    /// A point of the square from -extent to extent (mm) round the origin.
    math::DPOINT2 Point(double extent = 100) {
        return origin + math::DPOINT2{Uniform(-extent, extent), Uniform(-extent, extent)};
    }
    /// A bulge of magnitude 1e-9 to 5, of either sign.
    double Bulge() {
        const double size = Coin() ? Uniform(0.01, 5) : std::pow(10, Uniform(-9, 0));
        return Coin() ? size : -size;
    }
    math::DPOINT2 origin{0, 0}; ///< the middle of the square that Point draws from

private:
    std::mt19937_64 m_engine;
    int m_round = 0;
};

} // namespace test
