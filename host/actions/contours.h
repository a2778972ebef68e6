/// \file
/// What the host shows of single contours on request: conversion, cutting, picking, walking. Each action
/// prints a line and draws on the picture.
#pragma once

#include <iosfwd>
#include <vector>

#include <qev/types.h>

#include "host/picture/picture.h"
#include "host/report/report.h"

namespace host {

/// A stretch that is to be cut out of an object.
struct CutRequest {
    int object = 0;  ///< number in the table
    double from = 0; ///< position as segment index + ratio
    double to =
        0; ///< position as segment index + ratio; before `from`, a closed contour is cut over its start
};

/// A walk along an object.
struct WalkRequest {
    math::POLYPOS from;
    double offset = 0; ///< mm, negative against the direction of the contour
};

/// Converts every object to lines and arcs within an error in mm, draws the polylines and their joints, and
/// prints how many objects were converted into how many segments. An object that converts to none is passed
/// over.
void DrawConverted(const std::vector<ObjectReport>& reports, double error, Picture& picture,
                   std::ostream& out);

/// Draws the groups of segments that a machine treats as one in the polylines of lines and arcs, marks where
/// each group starts, and prints how many there are of each kind. Other objects are passed over.
void DrawGroups(const std::vector<ObjectReport>& reports, Picture& picture, std::ostream& out);

/// Cuts a stretch out of an object, draws it and prints its length. What is no contour of segments is cut out
/// of its polyline. Throws a DrawingError when there is no such object or it has no such stretch.
void DrawCut(const std::vector<ObjectReport>& reports, const CutRequest& cut, Picture& picture,
             std::ostream& out);

/// Picks the object nearest to a point, draws the nearest point on it and prints the position there. Returns
/// the object's number in the table. Throws a DrawingError when the drawing has nothing to pick.
int DrawPick(const Drawing& drawing, const std::vector<ObjectReport>& reports, const math::DPOINT2& point,
             Picture& picture, std::ostream& out);

/// Walks along the object of a number in the table, draws both ends of the walk and prints where it ends and
/// how often it came past the start of a closed contour. Throws a DrawingError when there is no such object
/// or it has no such position.
void DrawWalk(const std::vector<ObjectReport>& reports, int object, const WalkRequest& walk, Picture& picture,
              std::ostream& out);

} // namespace host
