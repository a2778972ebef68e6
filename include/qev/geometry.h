/// \file
/// Geometry: the maths of arcs and directions.
#pragma once

#include <qev/geometry/arc_math.h>
#include <qev/geometry/directions.h>
#include <qevdata/qevdata.h>
