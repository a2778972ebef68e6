/// \file
/// Technics of a drawing's contours in a file.
#pragma once

#include <map>
#include <string>

#include <qev/qev.h>

#include "host/drawing/drawing_error.h"

namespace host {

/// The contours of a drawing under the numbers that the table gives them.
using Numbered = std::map<int, qev::CCadObject*>;

/// Writes the technics of all contours that have some, each with the contour's number and shape. Throws a
/// DrawingError when technics or the file cannot be written.
void SaveTechnics(qev::CTechnicsManager& manager, const Numbered& contours, const std::string& path);

/// Reads technics from a file and puts them on the contours that they were saved of: the one with the number,
/// if it has the shape, and else the only one that has it. Throws a DrawingError, which names the technics,
/// when there is no such contour, when several are alike, when they do not fit on it, and for a damaged file;
/// those before it are on their objects then.
void LoadTechnics(qev::CTechnicsManager& manager, const Numbered& contours, const std::string& path);

} // namespace host
