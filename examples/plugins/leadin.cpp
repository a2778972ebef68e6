// A plug-in: lead-ins and lead-outs, the lines and arcs on which the tool comes to a contour and leaves it.
//
//   LeadIn = { Type = "Line" | "Arc", Length = mm, Angle = degrees, Radius = mm, Zone = mm, Clearance = mm,
//              LeadOut = "None" | "Line" | "Arc", Overlap = mm, Side = "Scrap" | "Left" | "Right", ... }
//
// A lead is a line of Length, with Angle between it and the contour, or an arc of Radius that touches the
// contour, so that the tool does not change its direction, and turns by Angle. The tool comes to the contour
// at the meeting position, runs round it and, when it is closed, Overlap further, and leaves on a lead-out of
// the same measures.
//
// The tool starts in the scrap: outside of a part, inside of a hole (qevtechnics/surroundings.h). Its way
// keeps Clearance from all other contours and from its own, but for the place where the two meet. Where this
// cannot be had in the middle of the longest stretch that keeps clear of sharp corners by Zone, other places
// on the free stretches are tried, then half the size, a quarter and an eighth; full size elsewhere is
// preferred to less here, as a lead is as long as the material asks; the lead-out takes the size that it has
// room for. Where the mouse is, only the size is changed. Side, when it is given, overrides what is known of
// the scrap. An open contour is entered at its start and left at its end, on its left unless Side says
// otherwise, and nothing is looked at: what it meets there is mostly the next piece of the same outline.
//
// How near a lead may come to its own contour is a question of the place on the lead: at the meeting point
// the two touch. The lead is cut into pieces that halve towards that point, and of each piece the distance
// from the contour is asked (GetClearance, which is exact): it must be the clearance or, nearer to the
// meeting point, half of what it would be from a straight contour. A round contour bends away or towards the
// lead by less than that as long as the lead fits into it; one that comes back across the lead comes nearer
// at some piece. After kHalvings the rest is a hundredth of the lead, along which a contour that has no
// corner within Zone is as good as straight.
//
// What was found is saved: position, side and scales are parameters, so that a drawing that is loaded gets
// its paths where they were.

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>

#include <qevmath/elementary.h>

#include <qevtechnics/qevtechnics.h>

namespace {

namespace kit = qev::kit;
using math::DPOINT2;
using math::POLYPOS;

constexpr int kType = 1; // among the technics of the host
constexpr double kDegree = math::kPi / 180;
constexpr std::array kScales = {1.0, 0.5, 0.25, 0.125};
constexpr std::size_t kLongStretches = 8;   // that are tried at several places
constexpr std::size_t kOtherStretches = 32; // that are tried in their middles
constexpr std::array kFractions = {0.5, 0.375, 0.625, 0.25, 0.75, 0.125, 0.875}; // of a stretch, outward
constexpr double kRounding = 1e-9; // mm: a lead exactly as far away as asked is clear
constexpr int kHalvings = 7;
constexpr double kBend = 0.5; // the least share of a straight contour's distance

enum Kind { kLine, kArc, kNone };
enum Side { kScrap, kLeft, kRight };

// One way on which the tool comes to the contour, made from the meeting point outward. A way on which it
// leaves is the mirror image of one on which it comes.
struct Lead {
    DPOINT2 meet;
    DPOINT2 ahead; // of length 1, along the contour: as it runs for a lead-in, against that for a lead-out
    double turn;   // 1 when the lead lies left of ahead, else -1
    bool isArc;
    double size;  // mm: a line's length, an arc's radius
    double angle; // radians

    // The point at a fraction of the lead, 0 the meeting point and 1 its far end.
    DPOINT2 At(double fraction) const {
        if (!isArc)
            return qev::RotatePoint(meet + ahead * (size * fraction), meet, turn * (math::kPi - angle));
        return qev::RotatePoint(meet, Centre(), -turn * angle * fraction);
    }
    DPOINT2 Centre() const { return qev::RotatePoint(meet + ahead * size, meet, turn * math::kPi / 2); }
    // How far the point at a fraction lies from the tangent at the meeting point.
    double Depth(double fraction) const {
        return size * (isArc ? 1 - math::Cos(angle * fraction) : math::Sin(angle) * fraction);
    }
    // The piece between two fractions, run from one to the other.
    std::unique_ptr<qev::CCadPolyline> Piece(double from, double to) const {
        auto piece = std::make_unique<qev::CCadPolyline>();
        piece->SetStartPoint(At(from));
        if (isArc)
            piece->AddArc(At(to), turn * math::Tan((from - to) * angle / 4)); // a bulge
        else
            piece->AddLine(At(to));
        return piece;
    }
};

class LeadIn final : public kit::PathTechnics {
public:
    LeadIn() : PathTechnics(kType) {}

    void Read(qev::CLuaAccess& cursor, const kit::Site& site);
    void Write(std::ostream& out) const override { Parameters().Write(out, *this); }

protected:
    kit::Paths MakePaths(const qev::CCadObject& object, const qev::CCadMultiSegments& contour) const override;

private:
    static const kit::ParameterTable<LeadIn>& Parameters();

    POLYPOS Meet() const { return {m_nSegment, m_dRatio}; }
    void SetMeet(const POLYPOS& pos);
    bool ReadMouse(qev::CLuaAccess& cursor, const kit::Site& site);
    void Place(const kit::Site& site, bool isFixed);
    std::vector<POLYPOS> FindPlaces(const qev::CCadMultiSegments& contour) const;
    bool Fits(const kit::Site& site, bool inScrap, double largestOut);
    bool IsClear(const kit::Site& site, const Lead& lead, bool inScrap) const;
    Lead LeadAt(const qev::CCadMultiSegments& contour, const POLYPOS& pos, bool isIn) const;
    POLYPOS LeavingPos(const qev::CCadMultiSegments& contour) const;

    int m_nKind = kLine;
    double m_dLength = 5;      // mm, of a line
    double m_dAngle = 90;      // degrees
    double m_dRadius = 2;      // mm, of an arc
    double m_dZone = 1;        // mm
    double m_dClearance = 0.5; // mm
    int m_nOut = kNone;
    double m_dOverlap = 0; // mm
    int m_nSide = kScrap;
    double m_dScale = 1;    // of the lead-in's length or radius
    double m_dOutScale = 1; // of the lead-out's
    int m_nSegment = -1;    // of the meeting position on the contour that stands for the object; -1: none yet
    double m_dRatio = -1;   // of the meeting position; -1: none yet
};

const kit::ParameterTable<LeadIn>& LeadIn::Parameters() {
    static const kit::ParameterTable<LeadIn> table("LeadIn",
                                                   {{"Type", &LeadIn::m_nKind, {"Line", "Arc"}},
                                                    {"Length", &LeadIn::m_dLength, 0.1, 100, "mm"},
                                                    {"Angle", &LeadIn::m_dAngle, 1, 180, "degrees"},
                                                    {"Radius", &LeadIn::m_dRadius, 0.1, 100, "mm"},
                                                    {"Zone", &LeadIn::m_dZone, 0.01, 1000, "mm"},
                                                    {"Clearance", &LeadIn::m_dClearance, 0.01, 100, "mm"},
                                                    {"LeadOut", &LeadIn::m_nOut, {"Line", "Arc", "None"}},
                                                    {"Overlap", &LeadIn::m_dOverlap, 0, 100, "mm"},
                                                    {"Side", &LeadIn::m_nSide, {"Scrap", "Left", "Right"}},
                                                    {"Scale", &LeadIn::m_dScale, 0.01, 1},
                                                    {"OutScale", &LeadIn::m_dOutScale, 0.01, 1},
                                                    {"Segment", &LeadIn::m_nSegment, 0, 1'000'000'000},
                                                    {"Ratio", &LeadIn::m_dRatio, 0, 1}});
    return table;
}

void LeadIn::SetMeet(const POLYPOS& pos) {
    m_nSegment = pos.nSegIndex;
    m_dRatio = pos.dRatio;
}

void LeadIn::Read(qev::CLuaAccess& cursor, const kit::Site& site) {
    Parameters().Read(cursor, *this);
    const bool isSaved = m_nSegment >= 0 || m_dRatio >= 0;
    if (isSaved && qev::IsInvalidPos(&site.contour, Meet()))
        throw kit::NoRoom("has no position at Segment and Ratio");
    const bool isFixed = isSaved || ReadMouse(cursor, site);
    if (!site.contour.IsClose()) {
        if (!isFixed) SetMeet({0, 0});
        if (m_nSide == kScrap) m_nSide = kLeft;
    } else if (!isSaved || m_nSide == kScrap) {
        Place(site, isFixed);
    }
}

// The mouse's is a position on the object itself, whose segments are not those of the contour that stands for
// it, and goes over by its point.
bool LeadIn::ReadMouse(qev::CLuaAccess& cursor, const kit::Site& site) {
    POLYPOS pos;
    DPOINT2 mouse;
    const bool isThere = site.isPicked && cursor.Read(pos.nSegIndex, "MouseSegment", 0, 1e9)
                         && cursor.Read(pos.dRatio, "MouseRatio", 0, 1)
                         && qev::PosToCoor(&site.object, pos.nSegIndex, pos.dRatio, mouse)
                         && qev::CoorToPos(&site.contour, mouse, pos);
    if (isThere) SetMeet(pos);
    return isThere;
}

// Finds position, side and scale.
void LeadIn::Place(const kit::Site& site, bool isFixed) {
    const auto places = isFixed ? std::vector<POLYPOS>{Meet()} : FindPlaces(site.contour);
    const double largest = m_dScale, largestOut = m_dOutScale;
    const bool inScrap = m_nSide == kScrap;
    const auto sides = inScrap ? std::vector<int>{kLeft, kRight} : std::vector<int>{m_nSide};
    for (const double scale : kScales)
        for (const POLYPOS& place : places)
            for (const int side : sides) {
                SetMeet(place);
                m_nSide = side;
                m_dScale = largest * scale;
                if (Fits(site, inScrap, largestOut)) return;
            }
    if (places.empty()) throw kit::NoRoom("no room: its sharp corners leave no free stretch");
    throw kit::NoRoom("no room: nowhere in the scrap does a lead keep " + kit::ShortestText(m_dClearance)
                      + " mm away from the contours, down to an eighth of its size");
}

// From the middle of each long free stretch outward, the longest first, then the middles of others all round.
std::vector<POLYPOS> LeadIn::FindPlaces(const qev::CCadMultiSegments& contour) const {
    kit::StartZones found = kit::FindStartZones(contour, m_dZone, kit::kSharpCornerDegrees);
    std::vector<POLYPOS> places;
    if (found.longest > 0) places.push_back(found.chosen);
    auto& stretches = found.freeStretches;
    const auto addPlace = [&](const kit::Stretch& stretch, double fraction) {
        POLYPOS pos;
        if (qev::GetPosByOffset(&contour, stretch.range.start, fraction * stretch.length, pos) >= 0)
            places.push_back(pos);
    };
    std::stable_sort(stretches.begin(), stretches.end(),
                     [](const auto& a, const auto& b) { return a.length > b.length; });
    const std::size_t tried = std::min(stretches.size(), kLongStretches);
    for (std::size_t i = 0; i < tried; ++i)
        for (const double fraction : kFractions) addPlace(stretches[i], fraction);
    const std::size_t step = (stretches.size() - tried) / kOtherStretches + 1;
    for (std::size_t i = tried; i < stretches.size(); i += step) addPlace(stretches[i], kFractions[0]);
    return places;
}

// Whether there is room as position, side and scale are; finds the scale of the lead-out.
bool LeadIn::Fits(const kit::Site& site, bool inScrap, double largestOut) {
    if (!IsClear(site, LeadAt(site.contour, Meet(), true), inScrap)) return false;
    const POLYPOS leaving = LeavingPos(site.contour);
    return m_nOut == kNone || std::any_of(kScales.begin(), kScales.end(), [&](double scale) {
               m_dOutScale = largestOut * scale;
               return IsClear(site, LeadAt(site.contour, leaving, false), inScrap);
           });
}

bool LeadIn::IsClear(const kit::Site& site, const Lead& lead, bool inScrap) const {
    DPOINT2 nearest;
    const DPOINT2 far = lead.At(1);
    const double clearance = m_dClearance - kRounding;
    if (!(lead.Depth(1) >= clearance)) return false;
    if (inScrap && !site.around.IsScrap(far, site.object)) return false;
    if (qev::GetMinDistance(&site.contour, far, nearest) < clearance) return false;
    double outer = 1;
    for (int i = 0; i < kHalvings; ++i, outer /= 2) {
        const double wanted = std::min(clearance, kBend * lead.Depth(outer / 2));
        if (qev::GetClearance(lead.Piece(outer, outer / 2).get(), &site.contour) < wanted) return false;
    }
    return site.around.IsClear(*lead.Piece(1, 0), clearance, site.object);
}

Lead LeadIn::LeadAt(const qev::CCadMultiSegments& contour, const POLYPOS& pos, bool isIn) const {
    Lead lead{};
    const DPOINT2 along = qev::GetVector(&contour, pos.nSegIndex, pos.dRatio);
    if (!qev::PosToCoor(&contour, pos.nSegIndex, pos.dRatio, lead.meet) || !(math::Norm(along) > 0))
        throw kit::NoRoom("has no direction where the tool would meet it");
    const double mirror = isIn ? 1 : -1;
    lead.ahead = along * (mirror / math::Norm(along));
    lead.turn = m_nSide == kRight ? -mirror : mirror;
    lead.isArc = (isIn ? m_nKind : m_nOut) == kArc;
    lead.size = (isIn ? m_dScale : m_dOutScale) * (lead.isArc ? m_dRadius : m_dLength);
    lead.angle = m_dAngle * kDegree;
    return lead;
}

// Where the tool leaves the contour.
POLYPOS LeadIn::LeavingPos(const qev::CCadMultiSegments& contour) const {
    if (!contour.IsClose()) return {contour.GetSegmentCount() - 1, 1};
    POLYPOS pos = Meet();
    qev::GetPosByOffset(&contour, Meet(), m_dOverlap, pos);
    return pos;
}

kit::Paths LeadIn::MakePaths(const qev::CCadObject&, const qev::CCadMultiSegments& contour) const {
    kit::Paths paths;
    kit::AddPath(paths, LeadAt(contour, Meet(), true).Piece(1, 0), kit::kLeadInRole);
    const POLYPOS leaving = LeavingPos(contour);
    if (contour.IsClose() && m_dOverlap > 0)
        kit::AddPath(paths,
                     std::unique_ptr<qev::CCadObject>(
                         qev::GetMultiSementsByRange(&contour, math::PosRange(Meet(), leaving))),
                     kit::kOverlapRole);
    if (m_nOut != kNone) kit::AddPath(paths, LeadAt(contour, leaving, false).Piece(0, 1), kit::kLeadOutRole);
    return paths;
}

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): a static, which nobody deletes
class LeadInOperator final : public kit::PathOperator {
public:
    LeadInOperator() : PathOperator(kType, "LeadIn", "lead-ins") {}

protected:
    std::unique_ptr<kit::PathTechnics> Read(qev::CLuaAccess& cursor, const kit::Site& site) const override {
        auto technics = std::make_unique<LeadIn>();
        technics->Read(cursor, site);
        return technics;
    }
};

} // namespace

QEV_TECHNICS_PLUG_IN(leadin, LeadInOperator)
