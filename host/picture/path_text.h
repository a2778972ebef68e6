/// \file
/// Outlines as path data of SVG, and the small texts that a picture is put together from.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <qev/qev.h>

namespace host {

void AppendText(std::string& text, std::string_view part);
/// Appends a number with nine digits, the same in every locale.
void AppendText(std::string& text, double value);
/// Appends a point's coordinates with a blank between them.
void AppendText(std::string& text, const math::DPOINT2& p);

/// Texts, numbers and points, one after the other.
template <class... Parts>
std::string TextOf(const Parts&... parts) {
    std::string text;
    (AppendText(text, parts), ...);
    return text;
}

/// The outline of a leaf as path data in drawing coordinates (mm, y up): "M" once, then "L", "A" or "C" for
/// each segment. An elliptic arc of more than half a turn, which is one piece, takes two "A". Empty for what
/// has no outline.
std::string PathText(const qev::CCadObject& leaf);

/// Segments that join end to start as path data: "M" once, then "L", "A" or "C" for each. Empty for none.
std::string PathText(const std::vector<qev::SEGMENT>& segments);

/// A text from a drawing in UTF-8 without control characters: what is not UTF-8 becomes the replacement
/// character.
std::string CleanText(const std::string& text);

} // namespace host
