/// \file
/// Geometry: the maths of arcs, directions, picking, hulls and stock.
#pragma once

#include <qev/measure/arc_math.h>
#include <qev/measure/directions.h>
#include <qev/measure/hull.h>
#include <qev/measure/nesting.h>
#include <qev/measure/stock.h>
#include <qev/position/nearest_position.h>
#include <qev/range/topo_polyline.h>
#include <qevdata/qevdata.h>
