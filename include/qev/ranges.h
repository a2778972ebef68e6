/// \file
/// Ranges of positions, excluded zones, and positions carried between contours.
#pragma once

#include <qev/contour/converted_position.h>
#include <qev/contour/invalid_ranges.h>
#include <qev/contour/ranges.h>
#include <qev/contour/segment_map.h>
#include <qev/types.h>
