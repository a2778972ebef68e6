/// \file
/// What every test of geometry includes, and the names it uses without their namespaces.
#pragma once

#include <qev/qev.h>

#include "support/random.h"
#include "support/rows.h"
#include "support/shapes.h"

namespace test {
using namespace qev;
using math::BulgeArc, math::CubicBezier, math::EllipticArc;
using math::DPOINT2, math::kPi, math::kTwoPi, math::POLYPOS, math::PosRange;
} // namespace test
using namespace test;
