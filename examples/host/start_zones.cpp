#include "start_zones.h"

#include <array>
#include <cstdio>
#include <memory>
#include <ostream>

#include "actions.h"
#include "units.h"

namespace host {
namespace {

using math::PosRange;

double LengthOf(const qev::CCadObject& contour, const PosRange& range) {
    double length = 0;
    qev::GetLineLength_Dot2Dot2(&contour, range.start, range.end, length);
    return length;
}

// What lies between sorted zones, going round; the whole contour when there are none.
std::vector<PosRange> Between(const std::vector<PosRange>& zones, int count) {
    if (zones.empty()) return {PosRange({0, 0.0}, {count, 0.0})};
    std::vector<PosRange> between;
    for (std::size_t i = 0; i < zones.size(); ++i)
        between.emplace_back(zones[i].end, zones[(i + 1) % zones.size()].start);
    return between;
}

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

StartZones FindStartZones(const qev::CCadMultiSegments& contour, double length, double cornerDegrees) {
    StartZones found;
    const int count = qev::GetCadSegments(&contour);
    if (!qev::GenerateCornerInvalidRange(&contour, length, cornerDegrees, &found.zones)) return found;
    for (PosRange range : Between(found.zones, count)) {
        qev::NormalizePosRange(&contour, range);
        const bool whole = found.zones.empty();
        const double own = whole || !qev::IsInvalidRange(&contour, range) ? LengthOf(contour, range) : 0;
        if (!(own > 0)) continue;
        found.freeStretches.push_back(range);
        if (own <= found.longest) continue;
        found.longest = own;
        qev::GetPosByOffset(&contour, range.start, own / 2, found.chosen);
    }
    return found;
}

void DrawStartZones(const std::vector<ObjectReport>& reports, double length, double cornerDegrees,
                    SvgPicture& picture, std::ostream& out) {
    out << "object  zones   free   longest " << UnitName() << "  start at\n";
    for (std::size_t i = 0; i < reports.size(); ++i) {
        if (!reports[i].object->IsClose()) continue;
        const auto contour = ContourOf(*reports[i].object);
        if (!contour) continue;
        const StartZones found = FindStartZones(*contour, length, cornerDegrees);
        for (const PosRange& zone : found.zones) DrawRange(*contour, zone, "zone", picture);
        for (const PosRange& stretch : found.freeStretches) DrawRange(*contour, stretch, "free", picture);
        math::DPOINT2 start;
        if (found.longest > 0
            && qev::PosToCoor(contour.get(), found.chosen.nSegIndex, found.chosen.dRatio, start))
            picture.MarkPoint(start, "chosen");
        PrintRow(out, i, found, start);
    }
}

} // namespace host
