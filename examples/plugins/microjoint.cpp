// A plug-in: micro-joints, the bridges that hold a part in its sheet until it is broken out.
//
//   MicroJoint = { Width = mm, Spacing = mm, Zone = mm }
//
// Bridges of a width stand about a spacing apart, each whole stretch between the sharp corners by itself, and
// keep clear of the corners, and of the places where lead-ins and lead-outs meet the contour, by Zone. A
// contour without a stretch as long as the spacing gets one bridge, near a quarter of its longest stretch,
// away from the middle, which is the place for a lead-in, or else on another stretch. What is cut is the rest
// of the contour.
//
// A stretch is divided into as many equal fields as whole spacings fit into it, and a bridge stands in the
// middle of each. So the two at the ends of a stretch keep half a field away from its ends, and the order in
// which the contour is run does not matter. Bridges at fixed steps from the start were rejected: they leave a
// rest of any size at the end, and a part then hangs on one side.
//
// Where a lead meets the contour in the middle of a field, the bridge gives way within its field, in steps to
// both sides, and is left out only when the field has no room at all. It stays half its width away from the
// field's ends, so that two bridges are never nearer to each other than they are wide. Lead-ins do not give
// way to bridges: the bridges follow from the lead-ins alone, and do so again after every change, in whatever
// order the two were added or are loaded.

#include <algorithm>
#include <ostream>

#include <qevtechnics/qevtechnics.h>

namespace {

namespace kit = qev::kit;
using kit::Stretch;
using math::PosRange;

constexpr int kType = 2; // among the technics of the host
// Spacings. A stretch that is shorter than a whole number of spacings by less than this counts as that long:
// its length is a sum of rounded ones, and a square of 10 mm must get its bridges 10 mm apart.
constexpr double kRounding = 1e-9;
constexpr int kSteps = 8; // to either side, by which a bridge gives way

class MicroJoint final : public kit::PathTechnics {
public:
    explicit MicroJoint(qev::CLuaAccess& cursor) : PathTechnics(kType) {
        Parameters().Read(cursor, *this);
        if (m_dSpacing < 2 * m_dWidth)
            cursor.ErrorHandle("Spacing", kit::ShortestText(m_dSpacing).c_str(),
                               "is less than twice the Width");
    }

    void Write(std::ostream& out) const override { Parameters().Write(out, *this); }

protected:
    kit::Paths MakePaths(const qev::CCadObject& object, const qev::CCadMultiSegments& contour) const override;

private:
    class Field;
    static const kit::ParameterTable<MicroJoint>& Parameters();
    std::vector<PosRange> FindBridges(const qev::CCadMultiSegments& contour,
                                      const qev::CRangeSet& taken) const;

    double m_dWidth = 0.5;  // mm
    double m_dSpacing = 50; // mm
    double m_dZone = 1;     // mm
};

const kit::ParameterTable<MicroJoint>& MicroJoint::Parameters() {
    static const kit::ParameterTable<MicroJoint> table("MicroJoint",
                                                       {{"Width", &MicroJoint::m_dWidth, 0.01, 100, "mm"},
                                                        {"Spacing", &MicroJoint::m_dSpacing, 0.02, 1e6, "mm"},
                                                        {"Zone", &MicroJoint::m_dZone, 0.01, 1000, "mm"}});
    return table;
}

// The zones round the places where a tool comes to the contour and leaves it, and what it cuts twice.
qev::CRangeSet TakenBy(const std::vector<PosRange>& entries, const qev::CCadMultiSegments& contour,
                       double zone) {
    std::vector<PosRange> taken;
    for (const PosRange& entry : entries) {
        taken.push_back(entry);
        for (const math::POLYPOS& end : {entry.start, entry.end})
            qev::GenerateInvalidRange(&contour, end, zone, zone, taken.emplace_back());
    }
    return {&contour, taken};
}

// Where a bridge may stand: a part of a stretch, by lengths from the stretch's start.
class MicroJoint::Field {
public:
    Field(const qev::CCadMultiSegments& contour, const Stretch& stretch, double begin, double end)
        : m_rContour(contour), m_start(stretch.range.start), m_dBegin(begin), m_dEnd(end) {}

    // Appends a bridge of a width as near to a place as it gets without meeting what is taken.
    void AddBridge(double wanted, double width, const qev::CRangeSet& taken,
                   std::vector<PosRange>& bridges) const {
        const double first = m_dBegin + width, last = m_dEnd - width; // of its middle
        const double step = std::max(last - first, 0.0) / kSteps;
        for (int i = 0; i <= kSteps; ++i)
            for (const double middle : {wanted + i * step, wanted - i * step}) {
                PosRange bridge;
                const bool isInside = i == 0 || (first <= middle && middle <= last);
                if (!isInside || !BridgeAt(middle, width, bridge) || taken.Meets(bridge)) continue;
                bridges.push_back(bridge);
                return;
            }
    }

private:
    bool BridgeAt(double middle, double width, PosRange& bridge) const {
        math::POLYPOS pos;
        return qev::GetPosByOffset(&m_rContour, m_start, middle, pos) >= 0
               && qev::GenerateInvalidRange(&m_rContour, pos, width / 2, width / 2, bridge);
    }

    const qev::CCadMultiSegments& m_rContour;
    math::POLYPOS m_start;
    double m_dBegin; // mm
    double m_dEnd;   // mm
};

std::vector<PosRange> MicroJoint::FindBridges(const qev::CCadMultiSegments& contour,
                                              const qev::CRangeSet& taken) const {
    std::vector<PosRange> bridges;
    const auto found = kit::FindStartZones(contour, m_dZone, kit::kSharpCornerDegrees);
    for (const Stretch& stretch : found.freeStretches) {
        const int count = static_cast<int>(stretch.length / m_dSpacing + kRounding);
        const double length = stretch.length / std::max(count, 1);
        for (int i = 0; i < count; ++i)
            Field(contour, stretch, i * length, (i + 1) * length)
                .AddBridge((i + 0.5) * length, m_dWidth, taken, bridges);
    }
    for (const double least : {found.longest, 2 * m_dWidth}) // the longest first, then any
        for (const Stretch& stretch : found.freeStretches)
            if (bridges.empty() && stretch.length >= std::max(least, 2 * m_dWidth))
                Field(contour, stretch, 0, stretch.length)
                    .AddBridge(stretch.length / 4, m_dWidth, taken, bridges);
    qev::SortRange(&bridges);
    qev::CombineRange(&bridges, contour.GetSegmentCount());
    return bridges;
}

kit::Paths MicroJoint::MakePaths(const qev::CCadObject& object, const qev::CCadMultiSegments& contour) const {
    const auto bridges = FindBridges(contour, TakenBy(kit::FindEntries(object, contour), contour, m_dZone));
    if (bridges.empty()) throw kit::NoRoom("no room: no free stretch takes a bridge");
    kit::Paths paths;
    for (const Stretch& stretch : kit::StretchesBetween(contour, bridges))
        kit::AddPath(paths,
                     std::unique_ptr<qev::CCadObject>(qev::GetMultiSementsByRange(&contour, stretch.range)),
                     kit::kCutRole);
    if (paths.empty()) throw kit::NoRoom("no room: the bridges leave nothing to cut");
    return paths;
}

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): a static, which nobody deletes
class MicroJointOperator final : public kit::PathOperator {
public:
    MicroJointOperator() : PathOperator(kType, "MicroJoint", "micro-joints") {}

protected:
    std::unique_ptr<kit::PathTechnics> Read(qev::CLuaAccess& cursor, const kit::Site&) const override {
        return std::make_unique<MicroJoint>(cursor);
    }
};

} // namespace

QEV_TECHNICS_PLUG_IN(microjoint, MicroJointOperator)
