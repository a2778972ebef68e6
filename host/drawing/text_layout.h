/// \file
/// Where the letters of a text stand.
#pragma once

#include <vector>

#include "affine.h"
#include "font.h"
#include "text_codes.h"

namespace host {

/// How the lines of a text are set. Lengths are in text heights.
struct TextSetting {
    double width = 0;            ///< lines are wrapped at blanks to this width; 0 wraps none
    double spacing = 1;          ///< factor of the way from a line to the next, which is 5/3 at 1
    bool isSpacingExact = false; ///< whether lines with larger letters stay where they are
    /// How lines stand that do not say it themselves, and on which side of x = 0 the box of the width lies.
    Column column = Column::kLeft;
};

/// A letter in its place.
struct PlacedLetter {
    const Glyph* glyph; ///< the font's
    Affine place;       ///< from the glyph's units to text heights
};

/// A line that belongs to a text: under or over letters, or the bar of a stack. In text heights.
struct PlacedBar {
    math::DPOINT2 from, to;
};

/// A text in its place: the first base line is the x axis, and lines begin, have their middle, or end at x =
/// 0, as the setting's column says; those that stand otherwise, within the box
/// of the width. Lengths are in text heights.
struct TextLayout {
    std::vector<PlacedLetter> letters;
    std::vector<PlacedBar> bars;
    double width = 0;  ///< of the longest line, without the blanks at its end
    double top = 0;    ///< of the capitals of the first line
    double bottom = 0; ///< base line of the last line
};

/// Sets a text, in which every line has its end. A word that is longer than the width has a line of its own.
TextLayout LayOut(const std::vector<TextItem>& items, const TextSetting& setting, Font& font);

} // namespace host
