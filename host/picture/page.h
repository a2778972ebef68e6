/// \file
/// A drawing as a page for a browser.
#pragma once

#include <iosfwd>
#include <vector>

#include "picture.h"

namespace host {

/// Writes one HTML page that needs nothing beside itself: the drawing to move, zoom and point at, its layers
/// and styles to switch, and the table of its objects, which lights contours up and is lit up by them.
/// Lengths are shown in the display unit of the process. `reports` are those of the objects that the picture
/// drew, in the same order; `name` is the page's title. Texts of the drawing that are not UTF-8 are shown
/// with replacement characters.
void WritePage(const Picture& picture, const std::vector<ObjectReport>& reports, std::ostream& out);

} // namespace host
