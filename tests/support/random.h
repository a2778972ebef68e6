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

class Random {
public:
    /// Takes the seed from QEV_SEED, or a fixed one, and records it with the running test.
    Random() {
        const char* given = std::getenv("QEV_SEED");
        const std::uint64_t seed = given ? std::strtoull(given, nullptr, 10) : 20260101;
        testing::Test::RecordProperty("seed", std::to_string(seed));
        m_engine.seed(seed);
    }
    double Uniform(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }
    int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }
    /// For loops: true that many times.
    bool Rounds(int count) { return m_round++ < count; }
    bool Coin() { return Int(0, 1) == 1; }
    /// A position on a contour of so many segments.
    math::POLYPOS Pos(int segments) { return {Int(0, segments - 1), Uniform(0, 0.999)}; }
    math::DPOINT2 Point(double extent = 100) {
        return origin + math::DPOINT2{Uniform(-extent, extent), Uniform(-extent, extent)};
    }
    /// A bulge of magnitude 1e-9 to 5, of either sign.
    double Bulge() {
        const double size = Coin() ? Uniform(0.01, 5) : std::pow(10, Uniform(-9, 0));
        return Coin() ? size : -size;
    }
    math::DPOINT2 origin{0, 0}; ///< round which points lie

private:
    std::mt19937_64 m_engine;
    int m_round = 0;
};

} // namespace test
