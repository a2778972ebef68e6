/// \file
/// Ranges of positions, excluded zones, and positions carried between contours.
#pragma once

#include <qev/position/converted_position.h>
#include <qev/range/invalid_ranges.h>
#include <qev/range/range_set.h>
#include <qev/range/ranges.h>
#include <qev/range/segment_map.h>
#include <qev/types.h>
