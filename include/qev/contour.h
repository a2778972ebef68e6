/// \file
/// Contours: positions, queries, conversion and cutting.
///
/// Null is never an error: each function says what it answers for it. Objects are never owned by these
/// functions; what they make belongs to the caller. They are re-entrant and keep no state.
#pragma once

#include <qev/measure/filters.h>
#include <qev/measure/measures.h>
#include <qev/measure/point_tests.h>
#include <qev/measure/positions.h>
#include <qev/measure/selection.h>
#include <qev/position/length_between.h>
#include <qev/position/offset_walk.h>
#include <qev/position/polyline_conversion.h>
#include <qev/position/position_conversion.h>
#include <qev/position/sharp_joints.h>
#include <qev/range/ranges.h>
#include <qev/range/sub_contour.h>
#include <qev/types.h>
#include <qevdata/qevdata.h>
