/// \file
/// Contours: positions, queries, conversion and cutting.
///
/// A null object acts as an unknown kind everywhere: -1 segments, length 0, no point, false. Objects are
/// never owned by these functions; what they make belongs to the caller. They are re-entrant and keep no
/// state.
#pragma once

#include <qev/contour/co_edge.h>
#include <qev/contour/filters.h>
#include <qev/contour/length_between.h>
#include <qev/contour/measures.h>
#include <qev/contour/offset_walk.h>
#include <qev/contour/point_tests.h>
#include <qev/contour/polyline_conversion.h>
#include <qev/contour/position_conversion.h>
#include <qev/contour/positions.h>
#include <qev/contour/selection.h>
#include <qev/contour/sharp_joints.h>
#include <qev/contour/sub_contour.h>
#include <qev/types.h>
#include <qevdata/qevdata.h>
