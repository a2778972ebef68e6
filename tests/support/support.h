/// \file
/// What every test of geometry includes. A test that writes `using namespace qev;` and `using namespace
/// test;` has the names below without their namespaces.
#pragma once

#include <qev/qev.h>
#include <qevmath/qevmath.h>

#include "support/random.h"
#include "support/shapes.h"

namespace test {
using math::BulgeArc, math::CubicBezier, math::EllipticArc;
using math::DPOINT2, math::kPi, math::kTwoPi, math::POLYPOS, math::PosRange;
} // namespace test
