/// \file
/// A single-stroke font of the project's own: what an engraving machine would draw.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <qevmath/point.h>

namespace host {

/// One stroke: a run of straight lines.
using Stroke = std::vector<math::DPOINT2>;

/// The strokes of a text whose first base line starts at the origin, for capitals of height 1; lines of text
/// are parted by '\n'. Small letters are drawn as capitals, what the font does not have as a box.
std::vector<Stroke> StrokesOf(std::string_view text);

/// The text without the formatting codes that drawings put into it: "\P" is a new line, "%%d" and the like,
/// font and colour switches and braces are dropped.
std::string PlainText(std::string_view text);

} // namespace host
