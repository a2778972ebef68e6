// Only closed contours are asked: an open one is entered at its end. The zones are found on the contour of
// segments that stands for an object (qevtechnics/stretches.h), and every range and position here belongs to
// that.

#include "start_zones.h"

#include <memory>
#include <ostream>

#include <qevtechnics/stretches.h>

#include "host/report/print.h"

namespace host {
namespace {

using math::PosRange;
using qev::kit::StartZones;

// A range of a contour is drawn as the contour that the library cuts out there.
void DrawRange(const qev::CCadMultiSegments& contour, const PosRange& range, const char* style,
               Picture& picture) {
    const std::unique_ptr<qev::CCadMultiSegments> stretch(qev::GetMultiSementsByRange(&contour, range));
    if (stretch) picture.Draw(*stretch, style);
}

void PrintRow(std::ostream& out, std::size_t object, const StartZones& found, const math::DPOINT2& start) {
    Print(out, "%6d %6d %6d %12.*f", static_cast<int>(object), static_cast<int>(found.zones.size()),
          static_cast<int>(found.freeStretches.size()), UnitDigits(), ShownLength(found.longest));
    if (found.longest > 0) // else the zones leave no place
        Print(out, "  %4d + %.4f  (%.*f, %.*f)", found.chosen.nSegIndex, found.chosen.dRatio, UnitDigits(),
              ShownLength(start.x), UnitDigits(), ShownLength(start.y));
    out << "\n";
}

} // namespace

void DrawStartZones(const std::vector<ObjectReport>& reports, double length, double cornerDegrees,
                    Picture& picture, std::ostream& out) {
    out << "object  zones   free   longest " << UnitName() << "  start at\n";
    for (std::size_t i = 0; i < reports.size(); ++i) {
        if (!reports[i].object->IsClose()) continue;
        const auto contour = qev::kit::ContourOf(*reports[i].object);
        if (!contour) continue;
        const StartZones found = qev::kit::FindStartZones(*contour, length, cornerDegrees);
        for (const PosRange& zone : found.zones) DrawRange(*contour, zone, "zone", picture);
        for (const auto& stretch : found.freeStretches) DrawRange(*contour, stretch.range, "free", picture);
        math::DPOINT2 start;
        if (found.longest > 0
            && qev::PosToCoor(contour.get(), found.chosen.nSegIndex, found.chosen.dRatio, start))
            picture.MarkPoint(start, "chosen");
        PrintRow(out, i, found, start);
    }
}

} // namespace host
