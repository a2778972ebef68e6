/// \file
/// What the host tells of each object, and the table it prints.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "host/drawing/drawing.h"

namespace host {

/// One object of the drawing as the table shows it.
struct ObjectReport {
    const qev::CCadObject* object = nullptr;
    int segments = 0;                   ///< -1 for what is no contour
    double length = 0;                  ///< mm
    int closed = 0;                     ///< as qev::IsClose answers
    int direction = 0;                  ///< as qev::GetCadOBjectDir answers
    double area = 0;                    ///< mm^2, of closed contours
    std::vector<math::DPOINT2> corners; ///< joints that turn by 30 degrees or more
};

/// Areas and corners are taken from the polyline that the object converts to (0.001 mm).
std::vector<ObjectReport> ReportOf(const Drawing& drawing);

/// In the display unit of the process. Prints at most `rows` rows (the rest as their number) and the summary.
void PrintTable(std::ostream& out, const std::vector<ObjectReport>& reports, int rows);
void PrintSummary(std::ostream& out, const Drawing& drawing, const std::vector<ObjectReport>& reports,
                  int joined);

} // namespace host
