/// \file
/// A single-stroke font of the project's own: what an engraving machine would draw.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <qevmath/point.h>

namespace host {

/// One stroke of a pen: a run of straight lines through two points or more.
using Stroke = std::vector<math::DPOINT2>;

/// The strokes of a text. Its first base line starts at the origin, capitals have height 1 and advance by 1;
/// '\n' begins a new line 5/3 below. Small letters are drawn as capitals, what the font does not have as a
/// box.
std::vector<Stroke> StrokesOf(std::string_view text);

/// A text without the formatting codes that drawings put into it: "\P" becomes a new line; "%%d" and the
/// like, switches of font, height and colour, and braces are dropped.
std::string PlainText(std::string_view text);

} // namespace host
