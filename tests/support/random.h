/// \file
/// Seeded random numbers: a failing run names its seed, and QEV_SEED repeats it.
#pragma once

#include <random>

#include <qevdata/qevdata.h>

namespace test {

class Random {
public:
    /// Takes the seed from QEV_SEED, or a fixed one, and records it with the running test.
    Random();

    double Uniform(double low, double high);
    int Int(int low, int high);
    bool Coin() { return Int(0, 1) == 1; }
    math::DPOINT2 Point(double extent = 100);
    /// A bulge of magnitude 1e-9 to 5, of either sign.
    double Bulge();

private:
    std::mt19937_64 m_engine;
};

} // namespace test
