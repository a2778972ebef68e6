/// \file
/// Geometry: the maths of arcs, directions, picking, hulls and stock.
#pragma once

#include <qev/geometry/arc_math.h>
#include <qev/geometry/directions.h>
#include <qev/geometry/hull.h>
#include <qev/geometry/nearest_position.h>
#include <qev/geometry/stock.h>
#include <qev/geometry/topo_polyline.h>
#include <qevdata/qevdata.h>
