/// \file
/// A drawing as an SVG picture.
#pragma once

#include <iosfwd>
#include <string>

#include "host/report/report.h"

namespace host {

/// Collects objects and marks in drawing coordinates (mm, y up) and writes them as one SVG document. Every
/// mark is sized by the drawing's extent, so that it is seen in a picture of any drawing.
class SvgPicture {
public:
    /// A picture that shows a box of the drawing with a margin round it. A box without extent, or of a
    /// drawing without objects, gets a size of its own.
    explicit SvgPicture(const qev::CadRect& box);

    /// Draws the outline of an object: of a group, those of its members; of a text, its strokes; of a dot, a
    /// ring. The style is the name of one of the document's classes and must need no quoting.
    void Draw(const qev::CCadObject& object, const char* style);

    /// Draws the marks of a contour: a ring at its start, an arrow along its direction, a square at each
    /// sharp corner. What is no contour gets none.
    void Mark(const ObjectReport& report);

    /// Draws a ring round a point, as wide as the marks of a long contour.
    void MarkPoint(const math::DPOINT2& p, const char* style);

    /// Draws a small ring at the start of every segment of a contour.
    void MarkJoints(const qev::CCadMultiSegments& contour, const char* style);

    /// Writes the whole document, 1600 pixels along its longer side.
    void Write(std::ostream& out) const;

private:
    void Ring(const math::DPOINT2& p, double radius, const char* style);

    qev::CadRect m_box;
    double m_dUnit; // mm, a thousandth of the picture's diagonal
    std::string m_strBody;
};

} // namespace host
