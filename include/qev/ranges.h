/// \file
/// Ranges of positions and positions carried between contours.
#pragma once

#include <qev/contour/converted_position.h>
#include <qev/types.h>
