/// \file
/// What the host tells of each object of a drawing, and the table it prints.
#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "host/drawing/drawing.h"

namespace host {

/// One object of a drawing as the table shows it.
struct ObjectReport {
    const qev::CCadObject* object = nullptr; ///< the drawing's, which owns it
    double length = 0;                       ///< mm
    double area = 0;                         ///< mm^2 inside a closed contour, else 0
    std::vector<math::DPOINT2> corners;      ///< joints that turn by 30 degrees or more
    int segments = 0;                        ///< how many, as qev::GetCadSegments counts; -1: no contour
    int closed = 0;                          ///< 1 for a closed contour, as qev::IsClose answers
    int direction = 0;                       ///< 1 clockwise, 2 counter-clockwise, 0 neither
};

/// What the host calls a kind of objects: "line", "polyline with curves"; "?" for a kind that no drawing has.
const char* KindName(qev::cad_t kind);

/// What the host calls a direction as ObjectReport has it: "cw", "ccw" or nothing.
const char* DirectionName(int direction);

/// Who said which unit a drawing's numbers have, in words for a summary: "as the file says".
const char* SourceName(UnitSource source);

/// The name of the layer that an object lies on.
std::string LayerOf(const qev::CCadObject& object);

/// What the objects of a drawing come to.
struct Summary {
    std::map<std::string, int> kinds; ///< how many objects of which kind
    double length = 0;                ///< mm, of all contours
    int closed = 0;                   ///< how many contours are closed
    int corners = 0;                  ///< how many sharp corners there are
    math::DPOINT2 low;                ///< lower left corner of the drawing's box, mm
    math::DPOINT2 high;               ///< upper right corner of the drawing's box, mm
};

/// Sums the reports of a drawing's objects up. Texts and dots are no contours.
Summary SummaryOf(const Drawing& drawing, const std::vector<ObjectReport>& reports);

/// Reports every object of a drawing in drawing order. Area and corners of a curve are those of the polyline
/// that it converts to within 0.001 mm; an object that converts to none has area 0 and no corners.
std::vector<ObjectReport> ReportOf(const Drawing& drawing);

/// Prints a headline and one row for each of the first `rows` objects, in the display unit of the process,
/// then how many objects there are more.
void PrintTable(std::ostream& out, const std::vector<ObjectReport>& reports, int rows);

/// Prints what all objects come to, in the display unit of the process: how many of which kind, the length of
/// all contours, the drawing's box, how many entities were not drawn, left out or changed, and the unit that
/// the file's numbers have.
void PrintSummary(std::ostream& out, const Drawing& drawing, const std::vector<ObjectReport>& reports);

} // namespace host
