// A plug-in: a lead-in, the line or arc on which the tool comes to a contour.
//
//   LeadIn = { Type = "Line" | "Arc", Length = mm, Angle = degrees, Radius = mm, Zone = mm }
//
// It meets the contour where the mouse is or, without one, in the middle of the longest stretch of a closed
// contour that keeps clear of sharp corners by Zone, and at the start of an open one. Angle lies between a
// line and the contour; it is how far an arc turns. A closed contour is entered from its inside, an open one
// from its left.

#include <ostream>

#include <qevmath/elementary.h>

#include "kit/path_operator.h"
#include "kit/stretches.h"

namespace {

using math::DPOINT2;
using plugins::Number;

constexpr int kType = 1;
constexpr double kSharpCorner = 30; // degrees
constexpr double kDegree = math::kPi / 180;
constexpr int kLine = 0;
constexpr int kArc = 1;
constexpr qev::CLuaAccess::EnumItem kKinds[] = {{"Line", kLine}, {"Arc", kArc}, {nullptr, 0}};

class LeadIn final : public plugins::PathTechnics {
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

    int m_kind = kLine;
    double m_length = 5;  // mm
    double m_angle = 90;  // degrees
    double m_radius = 2;  // mm
    double m_zone = 1;    // mm
    math::POLYPOS m_meet; // on the contour that stands for the object
};

void LeadIn::Read(qev::CLuaAccess& cursor, const qev::CCadObject& object,
                  const qev::CCadMultiSegments& contour, bool isPicked) {
    cursor.Read(m_kind, "Type", kKinds);
    cursor.Read(m_length, "Length", 0.1, 100);
    cursor.Read(m_angle, "Angle", 1, 180);
    cursor.Read(m_radius, "Radius", 0.1, 100);
    cursor.Read(m_zone, "Zone", 0.01, 1000);
    if (ReadPosition(cursor, object, contour, isPicked) || !contour.IsClose()) return;
    m_meet = contours::FindStartZones(contour, m_zone, kSharpCorner).chosen;
}

// The position that was saved or the mouse's, which lies on the object itself.
bool LeadIn::ReadPosition(qev::CLuaAccess& cursor, const qev::CCadObject& object,
                          const qev::CCadMultiSegments& contour, bool isPicked) {
    math::POLYPOS pos;
    if (cursor.Read(pos.nSegIndex, "Segment", 0, 1e9) && cursor.Read(pos.dRatio, "Ratio", 0, 1)) {
        m_meet = pos;
        return !qev::IsInvalidPos(&contour, m_meet);
    }
    DPOINT2 mouse;
    return isPicked && cursor.Read(pos.nSegIndex, "MouseSegment", 0, 1e9)
           && cursor.Read(pos.dRatio, "MouseRatio", 0, 1)
           && qev::PosToCoor(&object, pos.nSegIndex, pos.dRatio, mouse)
           && qev::CoorToPos(&contour, mouse, m_meet);
}

void LeadIn::Write(std::ostream& out) const {
    out << "LeadIn={Type=\"" << kKinds[m_kind].name << "\",Length=" << Number(m_length)
        << ",Angle=" << Number(m_angle) << ",Radius=" << Number(m_radius) << ",Zone=" << Number(m_zone)
        << ",Segment=" << m_meet.nSegIndex << ",Ratio=" << Number(m_meet.dRatio) << "},";
}

LeadIn::Paths LeadIn::MakePaths(const qev::CCadMultiSegments& contour) const {
    DPOINT2 meet;
    const DPOINT2 along = qev::GetVector(&contour, m_meet.nSegIndex, m_meet.dRatio);
    if (!qev::PosToCoor(&contour, m_meet.nSegIndex, m_meet.dRatio, meet) || !(math::Norm(along) > 0))
        return {};
    const DPOINT2 ahead = along / math::Norm(along);
    const bool isClockwise = qev::GetCadOBjectDir(&contour) == qev::CContourDirection::CLOCKWISE;
    const double side = contour.IsClose() && isClockwise ? -1 : 1; // 1 when the inside is on the left
    const double angle = m_angle * kDegree;
    auto path = std::make_unique<qev::CCadPolyline>();
    if (m_kind == kLine) {
        path->SetStartPoint(qev::RotatePoint(meet + ahead * m_length, meet, side * (math::kPi - angle)));
        path->AddLine(meet);
    } else {
        const DPOINT2 centre = qev::RotatePoint(meet + ahead * m_radius, meet, side * math::kPi / 2);
        path->SetStartPoint(qev::RotatePoint(meet, centre, -side * angle));
        path->AddArc(meet, side * math::Tan(angle / 4));
    }
    Paths paths;
    paths.push_back(std::move(path));
    return paths;
}

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): a static, which nobody deletes
class LeadInOperator final : public plugins::PathOperator {
public:
    LeadInOperator() : PathOperator(kType, "LeadIn", "lead-ins") {}

protected:
    std::unique_ptr<plugins::PathTechnics> Read(qev::CLuaAccess& cursor, const qev::CCadObject& object,
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
