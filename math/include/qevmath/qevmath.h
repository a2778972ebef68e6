/// \file
/// The 2-D math library: points, angles, lines, circular arcs, elliptic arcs and cubic Bezier pieces.
#pragma once

#include <qevmath/angle.h>
#include <qevmath/arc.h>
#include <qevmath/bezier.h>
#include <qevmath/bounds.h>
#include <qevmath/curve_fit.h>
#include <qevmath/elementary.h>
#include <qevmath/ellipse.h>
#include <qevmath/line.h>
#include <qevmath/parameters.h>
#include <qevmath/point.h>
#include <qevmath/root.h>
#include <qevmath/tolerance.h>
