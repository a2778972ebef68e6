#include "start_zones.h"

#include <array>
#include <cstdio>
#include <memory>
#include <ostream>

#include "host/report/units.h"
#include "kit/stretches.h"

namespace host {
namespace {

using contours::StartZones;
using math::PosRange;

void DrawRange(const qev::CCadMultiSegments& contour, const PosRange& range, const char* style,
               SvgPicture& picture) {
    const std::unique_ptr<qev::CCadMultiSegments> stretch(qev::GetMultiSementsByRange(&contour, range));
    if (stretch) picture.Draw(*stretch, style);
}

void PrintRow(std::ostream& out, std::size_t object, const StartZones& found, const math::DPOINT2& start) {
    std::array<char, 160> line{};
    std::snprintf(line.data(), line.size(), "%6zu %6zu %6zu %12.*f", object, found.zones.size(),
                  found.freeStretches.size(), UnitDigits(), ShownLength(found.longest));
    out << line.data();
    if (found.longest > 0) {
        std::snprintf(line.data(), line.size(), "  %4d + %.4f  (%.*f, %.*f)", found.chosen.nSegIndex,
                      found.chosen.dRatio, UnitDigits(), ShownLength(start.x), UnitDigits(),
                      ShownLength(start.y));
        out << line.data();
    }
    out << "\n";
}

} // namespace

void DrawStartZones(const std::vector<ObjectReport>& reports, double length, double cornerDegrees,
                    SvgPicture& picture, std::ostream& out) {
    out << "object  zones   free   longest " << UnitName() << "  start at\n";
    for (std::size_t i = 0; i < reports.size(); ++i) {
        if (!reports[i].object->IsClose()) continue;
        const auto contour = contours::ContourOf(*reports[i].object);
        if (!contour) continue;
        const StartZones found = contours::FindStartZones(*contour, length, cornerDegrees);
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
