// A plug-in: micro-joints, the bridges that hold a part in its sheet until it is broken out.
//
//   MicroJoint = { Width = mm, Spacing = mm, Zone = mm }
//
// Bridges of a width stand about a spacing apart, each whole stretch between the sharp corners by itself, and
// keep clear of the corners by Zone. A contour without a stretch as long as the spacing gets one bridge, away
// from the middle of its longest stretch, which is the place for a lead-in. What is cut is the rest of the
// contour.

#include <ostream>

#include "kit/path_operator.h"
#include "kit/stretches.h"

namespace {

using contours::Stretch;
using plugins::Number;

constexpr int kType = 2;
constexpr double kSharpCorner = 30; // degrees
constexpr double kRounding = 1e-9;  // spacings: a stretch that is short by this much of a whole number has it

class MicroJoint final : public plugins::PathTechnics {
public:
    explicit MicroJoint(qev::CLuaAccess& cursor) : PathTechnics(kType) {
        cursor.Read(m_width, "Width", 0.01, 100);
        cursor.Read(m_spacing, "Spacing", 2 * m_width, 1e6);
        cursor.Read(m_zone, "Zone", 0.01, 1000);
    }

    void Write(std::ostream& out) const override {
        out << "MicroJoint={Width=" << Number(m_width) << ",Spacing=" << Number(m_spacing)
            << ",Zone=" << Number(m_zone) << "},";
    }

protected:
    Paths MakePaths(const qev::CCadMultiSegments& contour) const override;

private:
    std::vector<math::PosRange> FindBridges(const qev::CCadMultiSegments& contour) const;

    double m_width = 0.5;  // mm
    double m_spacing = 50; // mm
    double m_zone = 1;     // mm
};

std::vector<math::PosRange> MicroJoint::FindBridges(const qev::CCadMultiSegments& contour) const {
    std::vector<math::PosRange> bridges;
    const auto addBridge = [&](const math::POLYPOS& from, double offset) {
        math::POLYPOS middle;
        math::PosRange bridge;
        if (qev::GetPosByOffset(&contour, from, offset, middle) >= 0
            && qev::GenerateInvalidRange(&contour, middle, m_width / 2, m_width / 2, bridge))
            bridges.push_back(bridge);
    };
    const auto found = contours::FindStartZones(contour, m_zone, kSharpCorner);
    for (const Stretch& stretch : found.freeStretches) {
        const int count = static_cast<int>(stretch.length / m_spacing + kRounding);
        for (int i = 0; i < count; ++i) addBridge(stretch.range.start, (i + 0.5) * stretch.length / count);
    }
    if (bridges.empty() && found.longest > 2 * m_width) addBridge(found.chosen, -found.longest / 4);
    qev::SortRange(&bridges);
    qev::CombineRange(&bridges, contour.GetSegmentCount());
    return bridges;
}

MicroJoint::Paths MicroJoint::MakePaths(const qev::CCadMultiSegments& contour) const {
    Paths paths;
    const auto bridges = FindBridges(contour);
    if (bridges.empty()) return paths;
    for (const Stretch& stretch : contours::StretchesBetween(contour, bridges))
        if (qev::CCadMultiSegments* const cut = qev::GetMultiSementsByRange(&contour, stretch.range))
            paths.emplace_back(cut);
    return paths;
}

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): a static, which nobody deletes
class MicroJointOperator final : public plugins::PathOperator {
public:
    MicroJointOperator() : PathOperator(kType, "MicroJoint", "micro-joints") {}

protected:
    std::unique_ptr<plugins::PathTechnics> Read(qev::CLuaAccess& cursor, const qev::CCadObject&,
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
