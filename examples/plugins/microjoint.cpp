// A plug-in: micro-joints, the bridges that hold a part in its sheet until it is broken out.
//
//   MicroJoint = { Width = mm, Spacing = mm, Zone = mm }
//
// Bridges of a width stand about a spacing apart, each whole stretch between the sharp corners by itself, and
// keep clear of the corners by Zone. A contour without a stretch as long as the spacing gets one bridge, away
// from the middle of its longest stretch, which is the place for a lead-in. What is cut is the rest of the
// contour.
//
// A stretch is divided into as many equal fields as whole spacings fit into it, and a bridge stands in the
// middle of each. So bridges are never nearer than the spacing, the two at the ends of a stretch keep half a
// field away from its ends, and the order in which the contour is run does not matter. Bridges at fixed
// steps from the start were rejected: they leave a rest of any size at the end, and a part then hangs on one
// side. Bridges of neighbouring stretches may still meet when zones are narrow, so that they are sorted and
// merged before the rest is cut out.

#include <ostream>

#include "kit/path_operator.h"
#include "kit/stretches.h"

namespace {

using kit::ShortestText;
using kit::Stretch;

constexpr int kType = 2; // among the technics of the host
// Spacings. A stretch that is shorter than a whole number of spacings by less than this counts as that long:
// its length is a sum of rounded ones, and a square of 10 mm must get its bridges 10 mm apart.
constexpr double kRounding = 1e-9;

class MicroJoint final : public kit::PathTechnics {
public:
    explicit MicroJoint(qev::CLuaAccess& cursor) : PathTechnics(kType) {
        cursor.Read(m_dWidth, "Width", 0.01, 100);
        cursor.Read(m_dSpacing, "Spacing", 2 * m_dWidth, 1e6);
        cursor.Read(m_dZone, "Zone", 0.01, 1000);
    }

    void Write(std::ostream& out) const override {
        out << "MicroJoint={Width=" << ShortestText(m_dWidth) << ",Spacing=" << ShortestText(m_dSpacing)
            << ",Zone=" << ShortestText(m_dZone) << "},";
    }

protected:
    Paths MakePaths(const qev::CCadMultiSegments& contour) const override;

private:
    std::vector<math::PosRange> FindBridges(const qev::CCadMultiSegments& contour) const;

    double m_dWidth = 0.5;  // mm
    double m_dSpacing = 50; // mm
    double m_dZone = 1;     // mm
};

std::vector<math::PosRange> MicroJoint::FindBridges(const qev::CCadMultiSegments& contour) const {
    std::vector<math::PosRange> bridges;
    const auto addBridge = [&](const math::POLYPOS& from, double offset) {
        math::POLYPOS middle;
        math::PosRange bridge;
        if (qev::GetPosByOffset(&contour, from, offset, middle) >= 0
            && qev::GenerateInvalidRange(&contour, middle, m_dWidth / 2, m_dWidth / 2, bridge))
            bridges.push_back(bridge);
    };
    const auto found = kit::FindStartZones(contour, m_dZone, kit::kSharpCornerDegrees);
    for (const Stretch& stretch : found.freeStretches) {
        const int count = static_cast<int>(stretch.length / m_dSpacing + kRounding);
        for (int i = 0; i < count; ++i) addBridge(stretch.range.start, (i + 0.5) * stretch.length / count);
    }
    // a quarter of the stretch away from its middle
    if (bridges.empty() && found.longest > 2 * m_dWidth) addBridge(found.chosen, -found.longest / 4);
    qev::SortRange(&bridges);
    qev::CombineRange(&bridges, contour.GetSegmentCount());
    return bridges;
}

MicroJoint::Paths MicroJoint::MakePaths(const qev::CCadMultiSegments& contour) const {
    Paths paths;
    const auto bridges = FindBridges(contour);
    if (bridges.empty()) return paths;
    for (const Stretch& stretch : kit::StretchesBetween(contour, bridges))
        if (qev::CCadMultiSegments* const cut = qev::GetMultiSementsByRange(&contour, stretch.range))
            paths.emplace_back(cut);
    return paths;
}

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): a static, which nobody deletes
class MicroJointOperator final : public kit::PathOperator {
public:
    MicroJointOperator() : PathOperator(kType, "MicroJoint", "micro-joints") {}

protected:
    std::unique_ptr<kit::PathTechnics> Read(qev::CLuaAccess& cursor, const qev::CCadObject&,
                                            const qev::CCadMultiSegments&, bool) const override {
        return std::make_unique<MicroJoint>(cursor);
    }
};

} // namespace

extern "C" QEV_EXPORT qev::CITechnicsOperator** Load_microjoint_Technics() {
    static MicroJointOperator microJoints;
    static qev::CITechnicsOperator* operators[] = {&microJoints, nullptr};
    return operators;
}

extern "C" QEV_EXPORT void Set_microjoint_CadTempDir(char*) {} // it writes no files
