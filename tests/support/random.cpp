#include "support/random.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

namespace test {

Random::Random() {
    const char* given = std::getenv("QEV_SEED");
    const std::uint64_t seed = given ? std::strtoull(given, nullptr, 10) : 20260101;
    testing::Test::RecordProperty("seed", std::to_string(seed));
    m_engine.seed(seed);
}

double Random::Uniform(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(m_engine);
}

int Random::Int(int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(m_engine);
}

math::DPOINT2 Random::Point(double extent) {
    return {Uniform(-extent, extent), Uniform(-extent, extent)};
}

double Random::Bulge() {
    const double size = Coin() ? Uniform(0.01, 5) : std::pow(10, Uniform(-9, 0));
    return Coin() ? size : -size;
}

} // namespace test
