/// \file
/// How things in a picture look: one table for the SVG picture and for the page.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace host {

/// What a mark at a point is drawn as. Styles of lines have kLine, those of outlines that are filled kArea;
/// their points are rings too.
enum class MarkForm { kLine, kArea, kRing, kDisc, kSquare, kArrow, kCross, kDiamond };

/// The look of one sort of things. No two sorts differ by colour alone: a dash pattern, a width or the form
/// of a mark tells them apart as well.
struct Style {
    const char* name;  ///< class in the SVG document, key in the page's data
    const char* title; ///< what the legend says
    const char* light; ///< colour on a white ground, "#rrggbb"; at least 3:1 in contrast
    const char* dark;  ///< colour on a dark ground, "#rrggbb"; at least 3:1 in contrast
    double width;      ///< of lines, in pixels of the screen at any zoom
    const char* dash;  ///< lengths of dashes and gaps in pixels, "6 4"; empty for a solid line
    MarkForm form;     ///< what a point of this style is drawn as
};

/// Whether what has a form is filled; the rest is drawn as lines.
constexpr bool IsFilled(MarkForm form) {
    return form == MarkForm::kArea || form == MarkForm::kDisc || form == MarkForm::kArrow
           || form == MarkForm::kDiamond;
}

/// All styles, those first that lie below others.
std::span<const Style> Styles();

/// The place of a style in Styles(). Throws std::out_of_range with the name when there is no such style.
int StyleIndex(std::string_view name);

/// A colour of a drawing as it is shown on a ground: moved towards another colour, which is seen there, until
/// its contrast with the ground is 3:1 or more (WCAG 2.1). All are "#rrggbb".
std::string SeenOn(const std::string& colour, const std::string& ground, const std::string& towards);

/// The grounds that the colours are made for, "#rrggbb".
inline constexpr const char* kLightGround = "#ffffff";
inline constexpr const char* kDarkGround = "#14181d";

} // namespace host
