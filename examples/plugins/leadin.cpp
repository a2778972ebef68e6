// A plug-in: a lead-in, the line or arc on which the tool comes to a contour.
//
//   LeadIn = { Type = "Line" | "Arc", Length = mm, Angle = degrees, Radius = mm, Zone = mm }
//
// It meets the contour where the mouse is or, without one, in the middle of the longest stretch of a closed
// contour that keeps clear of sharp corners by Zone, and at the start of an open one. Angle lies between a
// line and the contour; it is how far an arc turns. A closed contour is entered from its inside, an open one
// from its left.
//
// The path is made backwards from where it meets the contour. A line leaves that point at the given angle
// from the direction in which the contour goes on, seen from behind. An arc touches the contour there, so
// that the tool does not change its direction: its centre lies on the normal, one radius to the side, and its
// start is the meeting point turned back round that centre. Both are turns of one point round another and
// exact to rounding. Whether the path stays inside a narrow contour is not tested: the host shows it, the
// user judges.
//
// The position is saved with the parameters as a position on the contour that stands for the object, so that
// a drawing that is loaded gets its path where it was, and not where the longest stretch happens to be.

#include <ostream>

#include <qevmath/elementary.h>

#include "kit/path_operator.h"
#include "kit/stretches.h"

namespace {

using kit::ShortestText;
using math::DPOINT2;

constexpr int kType = 1; // among the technics of the host
constexpr double kDegree = math::kPi / 180;
constexpr int kLine = 0;
constexpr int kArc = 1;
constexpr qev::CLuaAccess::EnumItem kKinds[] = {{"Line", kLine}, {"Arc", kArc}, {nullptr, 0}};

class LeadIn final : public kit::PathTechnics {
public:
    LeadIn() : PathTechnics(kType) {}

    void Read(qev::CLuaAccess& cursor, const qev::CCadObject& object, const qev::CCadMultiSegments& contour,
              bool isPicked);
    void Write(std::ostream& out) const override;

protected:
    Paths MakePaths(const qev::CCadMultiSegments& contour) const override;

private:
    bool ReadPosition(qev::CLuaAccess& cursor, const qev::CCadObject& object,
                      const qev::CCadMultiSegments& contour, bool isPicked);

    int m_nKind = kLine;
    double m_dLength = 5;    // mm, of a line
    double m_dAngle = 90;    // degrees
    double m_dRadius = 2;    // mm, of an arc
    double m_dZone = 1;      // mm
    math::POLYPOS m_posMeet; // on the contour that stands for the object
};

void LeadIn::Read(qev::CLuaAccess& cursor, const qev::CCadObject& object,
                  const qev::CCadMultiSegments& contour, bool isPicked) {
    cursor.Read(m_nKind, "Type", kKinds);
    cursor.Read(m_dLength, "Length", 0.1, 100);
    cursor.Read(m_dAngle, "Angle", 1, 180);
    cursor.Read(m_dRadius, "Radius", 0.1, 100);
    cursor.Read(m_dZone, "Zone", 0.01, 1000);
    if (ReadPosition(cursor, object, contour, isPicked) || !contour.IsClose()) return;
    m_posMeet = kit::FindStartZones(contour, m_dZone, kit::kSharpCornerDegrees).chosen;
}

// Takes the position that was saved or else the mouse's. The mouse's is a position on the object itself,
// whose segments are not those of the contour that stands for it, and goes over by its point.
bool LeadIn::ReadPosition(qev::CLuaAccess& cursor, const qev::CCadObject& object,
                          const qev::CCadMultiSegments& contour, bool isPicked) {
    math::POLYPOS pos;
    if (cursor.Read(pos.nSegIndex, "Segment", 0, 1e9) && cursor.Read(pos.dRatio, "Ratio", 0, 1)) {
        m_posMeet = pos;
        return !qev::IsInvalidPos(&contour, m_posMeet);
    }
    DPOINT2 mouse;
    return isPicked && cursor.Read(pos.nSegIndex, "MouseSegment", 0, 1e9)
           && cursor.Read(pos.dRatio, "MouseRatio", 0, 1)
           && qev::PosToCoor(&object, pos.nSegIndex, pos.dRatio, mouse)
           && qev::CoorToPos(&contour, mouse, m_posMeet);
}

void LeadIn::Write(std::ostream& out) const {
    out << "LeadIn={Type=\"" << kKinds[m_nKind].name << "\",Length=" << ShortestText(m_dLength)
        << ",Angle=" << ShortestText(m_dAngle) << ",Radius=" << ShortestText(m_dRadius)
        << ",Zone=" << ShortestText(m_dZone) << ",Segment=" << m_posMeet.nSegIndex
        << ",Ratio=" << ShortestText(m_posMeet.dRatio) << "},";
}

LeadIn::Paths LeadIn::MakePaths(const qev::CCadMultiSegments& contour) const {
    DPOINT2 meet;
    const DPOINT2 along = qev::GetVector(&contour, m_posMeet.nSegIndex, m_posMeet.dRatio);
    if (!qev::PosToCoor(&contour, m_posMeet.nSegIndex, m_posMeet.dRatio, meet) || !(math::Norm(along) > 0))
        return {};
    const DPOINT2 ahead = along / math::Norm(along);
    const bool isClockwise = qev::GetCadOBjectDir(&contour) == qev::CContourDirection::CLOCKWISE;
    const double side = contour.IsClose() && isClockwise ? -1 : 1; // 1 when the inside is on the left
    const double angle = m_dAngle * kDegree;
    auto path = std::make_unique<qev::CCadPolyline>();
    if (m_nKind == kLine) {
        path->SetStartPoint(qev::RotatePoint(meet + ahead * m_dLength, meet, side * (math::kPi - angle)));
        path->AddLine(meet);
    } else {
        const DPOINT2 centre = qev::RotatePoint(meet + ahead * m_dRadius, meet, side * math::kPi / 2);
        path->SetStartPoint(qev::RotatePoint(meet, centre, -side * angle));
        path->AddArc(meet, side * math::Tan(angle / 4)); // the bulge of an arc that turns by the angle
    }
    Paths paths;
    paths.push_back(std::move(path));
    return paths;
}

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): a static, which nobody deletes
class LeadInOperator final : public kit::PathOperator {
public:
    LeadInOperator() : PathOperator(kType, "LeadIn", "lead-ins") {}

protected:
    std::unique_ptr<kit::PathTechnics> Read(qev::CLuaAccess& cursor, const qev::CCadObject& object,
                                            const qev::CCadMultiSegments& contour,
                                            bool isPicked) const override {
        auto technics = std::make_unique<LeadIn>();
        technics->Read(cursor, object, contour, isPicked);
        return technics;
    }
};

} // namespace

extern "C" QEV_EXPORT qev::CITechnicsOperator** Load_leadin_Technics() {
    static LeadInOperator leadIns;
    static qev::CITechnicsOperator* operators[] = {&leadIns, nullptr};
    return operators;
}

extern "C" QEV_EXPORT void Set_leadin_CadTempDir(char*) {} // it writes no files
