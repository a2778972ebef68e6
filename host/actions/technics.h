/// \file
/// Machining processes on a drawing, by way of plug-ins.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "host/drawing/drawing.h"
#include "host/picture/picture.h"

namespace host {

/// What is to be done about technics, in the order of its members.
struct TechnicsRequest {
    std::vector<std::string> plugIns; ///< files or names to load; those of earlier requests stay loaded
    std::string load;                 ///< file with technics of the contours; empty for none
    std::string text;                 ///< Lua text of technics to add; empty for none
    std::string params;               ///< where the mouse is, handed on with the text
    std::string remove;               ///< name or type of technics to remove; empty for none
    std::string save;                 ///< file that takes the technics of all contours; empty for none
};

/// Does what the request says and draws the tool paths that the contours have then. Technics are added to and
/// removed from the picked contour or, when it is null, all contours; texts and dots take none. Technics are
/// taken as data: their texts may hold no functions and no endless loops. Throws a DrawingError at the first
/// thing that is refused; what was done before stays.
void RunTechnics(const TechnicsRequest& request, const Drawing& drawing, const qev::CCadObject* picked,
                 Picture& picture, std::ostream& out);

} // namespace host
