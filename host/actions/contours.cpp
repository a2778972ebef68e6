// Each action is one question to the library, asked as any host would ask it, and one line of answer. They
// share the numbers of the table: an object is named by its row.

#include "contours.h"

#include <array>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>

#include <qevtechnics/stretches.h>

#include "host/report/print.h"
#include "pick.h"

namespace host {
namespace {

const qev::CCadObject& ObjectOf(const std::vector<ObjectReport>& reports, int number) {
    if (number < 0 || number >= static_cast<int>(reports.size()))
        throw DrawingError("there is no object " + std::to_string(number));
    return *reports[number].object;
}

std::string Shown(const math::DPOINT2& p) {
    return std::string("(") + std::to_string(p.x) + ", " + std::to_string(p.y) + ")";
}

std::string Shown(const math::POLYPOS& pos) {
    std::ostringstream text;
    Print(text, "segment %d, ratio %.9f", pos.nSegIndex,
          pos.dRatio); // 1e-6 mm of a metre, as points are shown
    return text.str();
}

} // namespace

void DrawConverted(const std::vector<ObjectReport>& reports, double error, Picture& picture,
                   std::ostream& out) {
    int converted = 0;
    int segments = 0;
    for (const ObjectReport& report : reports) {
        // the caller owns what the library makes
        const std::unique_ptr<qev::CCadPolyline> polyline(qev::Convert2Polyline(report.object, error));
        if (!polyline) continue;
        ++converted;
        segments += polyline->GetSegmentCount();
        picture.Draw(*polyline, "converted");
        picture.MarkJoints(*polyline, "joint");
    }
    out << converted << " objects converted within " << error << " mm: " << segments << " lines and arcs\n";
}

void DrawGroups(const std::vector<ObjectReport>& reports, Picture& picture, std::ostream& out) {
    using Groups = qev::CTopoMultiPolyline;
    std::array<int, Groups::kCurve + 1> counts{};
    for (const ObjectReport& report : reports) {
        const auto* const polyline = dynamic_cast<const qev::CCadPolyline*>(report.object);
        const std::unique_ptr<Groups> groups(Groups::CreateTopoMultiPolyline(polyline));
        if (!groups) continue;
        for (const Groups::TopoInfo& group : groups->GetTopoInfo()) {
            ++counts[group.nKind];
            picture.MarkPoint(polyline->GetSegment(group.nFirst).ptStart, "joint");
            if (group.nFirst == group.nLast) continue;
            math::PosRange range({group.nFirst, 0}, {group.nLast, 1});
            qev::NormalizePos(polyline, range.end);
            const std::unique_ptr<qev::CCadMultiSegments> part(qev::CutStretch(polyline, range));
            // a whole closed contour is no range, as its start and end are one position
            const qev::CCadMultiSegments* const shown = part ? part.get() : polyline;
            picture.Draw(*shown, "group");
        }
    }
    out << "groups: " << counts[Groups::kLine] << " lines, " << counts[Groups::kArc] << " arcs, "
        << counts[Groups::kLines] << " runs of lines, " << counts[Groups::kArcs] << " runs of arcs, "
        << counts[Groups::kCurve] << " curves\n";
}

void DrawCut(const std::vector<ObjectReport>& reports, const CutRequest& cut, Picture& picture,
             std::ostream& out) {
    // The numbers of a command line become positions on the contour of segments that stands for the object.
    const auto contour = qev::kit::ContourOf(ObjectOf(reports, cut.object));
    if (!contour) throw DrawingError("object " + std::to_string(cut.object) + " cannot be cut");
    const math::PosRange range(qev::DoubleToPolyPos(contour.get(), cut.from),
                               qev::DoubleToPolyPos(contour.get(), cut.to));
    const std::unique_ptr<qev::CCadMultiSegments> stretch(qev::GetMultiSementsByRange(contour.get(), range));
    if (!stretch)
        throw DrawingError("object " + std::to_string(cut.object) + " has no such stretch; it has "
                           + std::to_string(contour->GetSegmentCount()) + " segments");
    picture.Draw(*stretch, "cut");
    out << "cut: " << stretch->GetSegmentCount() << " segments, " << stretch->GetLength() << " mm of "
        << contour->GetLength() << " mm\n";
}

int DrawPick(const Drawing& drawing, const std::vector<ObjectReport>& reports, const math::DPOINT2& point,
             Picture& picture, std::ostream& out) {
    const Pick pick = PickAt(drawing, reports, point);
    picture.MarkPoint(pick.point, "pick");
    out << "picked: object " << pick.object << ", " << (pick.pos ? Shown(*pick.pos) + ", " : "")
        << pick.distance << " mm away at " << Shown(pick.point) << "\n";
    return pick.object;
}

void DrawWalk(const std::vector<ObjectReport>& reports, int object, const WalkRequest& walk, Picture& picture,
              std::ostream& out) {
    const qev::CCadObject& walked = ObjectOf(reports, object);
    math::POLYPOS end;
    math::DPOINT2 from;
    math::DPOINT2 to;
    const int laps = qev::GetPosByOffset(&walked, walk.from, walk.offset, end);
    if (laps < 0 || !qev::PosToCoor(&walked, walk.from.nSegIndex, walk.from.dRatio, from)
        || !qev::PosToCoor(&walked, end.nSegIndex, end.dRatio, to))
        throw DrawingError("object " + std::to_string(object) + " has no walk from " + Shown(walk.from));
    picture.MarkPoint(from, "start");
    picture.MarkPoint(to, "pick");
    out << "walked: object " << object << " by " << walk.offset << " mm to " << Shown(end) << " at "
        << Shown(to) << ", " << laps << " laps\n";
}

} // namespace host
