/// \file
/// How long a test that takes time may wait where everything is slow.
#pragma once

#include <cstdlib>

namespace test {

/// How many times longer a call may take than it should, from QEV_PATIENCE: under a tool that watches each
/// step, or without optimisation. 1 without it.
inline double Patience() {
    const char* const told = std::getenv("QEV_PATIENCE");
    return told ? std::atof(told) : 1;
}

} // namespace test
