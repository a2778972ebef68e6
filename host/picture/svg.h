/// \file
/// The drawing as a picture.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <qevdata/qevdata.h>

#include "host/report/report.h"

namespace host {

/// Draws objects and marks in drawing coordinates; the picture shows a box of the drawing with a margin.
class SvgPicture {
public:
    explicit SvgPicture(const qev::CadRect& box);

    /// The outline of an object (of a text, its strokes) in a colour of its own style.
    void Draw(const qev::CCadObject& object, const char* style);
    /// Marks of a contour: a ring at its start, an arrow along its direction, a square at each sharp corner.
    void Mark(const ObjectReport& report);
    /// A dot of the size of a corner's mark.
    void MarkPoint(const math::DPOINT2& p, const char* style);
    /// Small rings at the ends of all segments.
    void MarkJoints(const qev::CCadMultiSegments& contour, const char* style);

    /// The whole document.
    void Write(std::ostream& out) const;

private:
    void Ring(const math::DPOINT2& p, double radius, const char* style);

    qev::CadRect m_box;
    double m_unit; // a thousandth of the picture's diagonal
    std::string m_body;
};

} // namespace host
