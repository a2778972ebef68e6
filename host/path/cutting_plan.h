/// \file
/// What a machine does with a drawing: which object it cuts when, how far the tool goes, and how long it
/// takes.
#pragma once

#include <vector>

#include "host/drawing/drawing.h"

namespace host {

/// How fast a machine is. The time of a way is its length by its speed: that it speeds up and brakes is not
/// taken into account.
struct Speeds {
    double feed = 2000;   ///< mm/min while it cuts; above 0
    double rapid = 20000; ///< mm/min between cuts; above 0
    double pierce = 0.5;  ///< seconds before each cut
};

/// The cutting of one object: its contour, or between the bridges the pieces of it, with the paths on which
/// the tool comes and leaves.
struct Cut {
    int number = 0;      ///< in the order of cutting, from 1
    int object = 0;      ///< number in the table
    double rapid = 0;    ///< mm not cut: from the end of the cut before, and over the bridges
    double length = 0;   ///< mm cut
    int pierces = 0;     ///< how often the tool begins to cut
    double seconds = 0;  ///< for all of this
    math::DPOINT2 start; ///< where the tool comes down first
    math::DPOINT2 end;   ///< where it leaves
};

/// The cuts of a drawing in the order in which they are made, and what they come to.
struct CuttingPlan {
    Speeds speeds;
    std::vector<Cut> cuts;
    double rapid = 0;   ///< mm
    double length = 0;  ///< mm
    int pierces = 0;    ///< how often the tool begins to cut
    double seconds = 0; ///< from the first rapid to the last cut
    int uncut = 0;      ///< objects that are not cut
};

/// Plans the cutting of the objects that are closed or have tool paths; texts and dots are not cut. Open ones
/// come first, since a contour round them would let them drop; then what lies in a contour comes before it.
/// Of what may come next it is what starts nearest. The tool starts at the lower left corner of the drawing.
CuttingPlan PlanCuts(const Drawing& drawing, const Speeds& speeds);

} // namespace host
