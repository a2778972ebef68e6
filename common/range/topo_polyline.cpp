// Regrouping the segments of a polyline into lines, arcs, runs of either, and curves.
//
// One pass over the segments: each is tried against the one before it, and joins the run or begins a new one.
// A run that still is a single line or arc takes the kind of the first test that passes; later it keeps its
// kind. So a line may begin a run of collinear lines or a curve, whichever its first neighbour decides: a
// search for the best division was rejected, because machines tell the groups of old programs by this one. On
// a closed source the last run may go on in the first group, over the start point; it is put in front of it
// then, and the start point moves back.
//
// A group as a contour of its own, which answers points at lengths, is made when it is asked for and kept
// until the group changes. Who has a pointer to the group may change it unseen; then nothing is kept.
//
// The shape is never touched: a group keeps the polyline's nodes. The tests compare with fixed limits, so
// that a turn within about 1e-16 of one may fall on either side.

#include <algorithm>
#include <atomic>
#include <cmath>

#include <qev/range/topo_polyline.h>
#include <qevdata/transform.h>
#include <qevmath/angle.h>
#include <qevmath/arc.h>

#include <gp_Vec2d.hxx>

#include "../kinds/tolerance.h"
#include "data/lazy.h"
#include "data/running_lengths.h"

namespace qev {

using math::DPOINT2;
using Node = CCadPolyline::ARCNODE;

struct CTopoMultiPolyline::Group : CompoundNode {
    explicit Group(const CompoundNode& node) : CompoundNode(node) {}
    Group(const Group&) = delete;
    Group& operator=(const Group&) = delete;
    ~Group() { Drop(contour); }

    std::atomic<bool> isHandedOut = false;
    std::atomic<const CCadPolyline*> contour = nullptr; // owned; null until it is asked for
};

// A group while it grows: its record, and the nodes of its segments.
struct CTopoMultiPolyline::Run {
    TopoInfo info;
    std::vector<Node> nodes;

    Run(const SEGMENT& segment, int index)
        : info{IsCurved(segment) ? kArc : kLine, index, index, segment.GetLength()} {
        AddNode(segment);
    }
    void Add(const SEGMENT& segment) {
        ++info.nLast;
        info.dLength += segment.GetLength();
        AddNode(segment);
    }
    static bool IsCurved(const SEGMENT& segment) { return !IsStraight(segment.dBulge); }

private:
    void AddNode(const SEGMENT& segment) {
        nodes.push_back({segment.ptEnd.x, segment.ptEnd.y, segment.dBulge});
    }
};

namespace {

using Topo = CTopoMultiPolyline;

constexpr double kCollinear = 0.001;           // radians: lines that turn by less are one line
constexpr double kGentle = 0.3490658503988659; // radians, 20 degrees: a curve turns by less at each joint
constexpr double kLongestOfCurve = 10;         // mm: longer lines are no pieces of a flattened curve

double TurnBetween(const SEGMENT& a, const SEGMENT& b) {
    const DPOINT2 u = a.ptEnd - a.ptStart;
    const DPOINT2 v = b.ptEnd - b.ptStart;
    return math::D2GetIncludeAngle(gp_Vec2d(u.x, u.y), gp_Vec2d(v.x, v.y));
}

bool AreCollinear(const SEGMENT& a, const SEGMENT& b) {
    return a.dBulge == 0 && b.dBulge == 0 && TurnBetween(a, b) < kCollinear;
}

// All zeros for an arc of no length, so that two of these lie on one circle.
math::CentreArc CircleOf(const SEGMENT& segment) {
    return math::SolveCentreArc(segment.ptStart, segment.ptEnd, segment.dBulge).value_or(math::CentreArc{});
}

bool AreOnOneCircle(const SEGMENT& a, const SEGMENT& b) {
    if (IsStraight(a.dBulge) || IsStraight(b.dBulge)) return false;
    const math::CentreArc u = CircleOf(a);
    const math::CentreArc v = CircleOf(b);
    return math::D2GetDistance(u.centre, v.centre) < kSameLength && IsSameLength(u.radius, v.radius);
}

bool AreOfOneCurve(const SEGMENT& a, const SEGMENT& b) {
    return a.GetLength() <= kLongestOfCurve && b.GetLength() <= kLongestOfCurve && IsStraight(a.dBulge)
           && IsStraight(b.dBulge) && TurnBetween(a, b) < kGentle;
}

// The joining tests in the order they are tried: which single kind and which run they extend.
constexpr struct {
    int single;
    int run;
    bool (*passes)(const SEGMENT&, const SEGMENT&);
} kJoins[] = {{Topo::kLine, Topo::kLines, AreCollinear},
              {Topo::kArc, Topo::kArcs, AreOnOneCircle},
              {Topo::kLine, Topo::kCurve, AreOfOneCurve}};

// The kind of the run that a segment gives with the one after it; -1 when they do not join.
int JoinedKind(const SEGMENT& a, const SEGMENT& b, int kind) {
    for (const auto& join : kJoins)
        if ((kind == join.single || kind == join.run) && join.passes(a, b)) return join.run;
    return -1;
}

// Whether the last run of a closed source goes on in its first group: one test has to serve the kinds of both
// and to pass for the segments that meet at the start point.
bool ClosesOver(const SEGMENT& last, const SEGMENT& first, int runKind, int firstKind) {
    return std::any_of(std::begin(kJoins), std::end(kJoins), [&](const auto& join) {
        const auto serves = [&join](int kind) { return kind == join.single || kind == join.run; };
        return serves(runKind) && serves(firstKind) && join.passes(last, first);
    });
}

// Whether a group begins with a segment. The first group does not begin with the first segment when that one
// had no length and was left out: there may be a corner between them.
bool BeginsWith(const Topo::CompoundNode& group, const SEGMENT& segment) {
    const Node& node = group.vecNodes.front();
    return node.x == segment.ptEnd.x && node.y == segment.ptEnd.y;
}

bool IsSingle(int kind) {
    return kind == Topo::kLine || kind == Topo::kArc;
}

// The point at a fraction of a contour's length. A joint belongs to the segment before it; (0, 0) above 1.
DPOINT2 PointAlong(const CCadPolyline& contour, double ratio) {
    const RunningLengths lengths(contour);
    const double length = lengths.Total() * ratio;
    const RunningLengths::Place place = lengths.EndingFrom(length);
    const SEGMENT segment = contour.GetSegment(place.segment); // behind the last one: of zeros
    const double own = segment.GetLength();
    return segment.GetPoint(own > 0 ? (length - place.before) / own : 0);
}

} // namespace

CTopoMultiPolyline::CTopoMultiPolyline() = default;

CTopoMultiPolyline* CTopoMultiPolyline::CreateTopoMultiPolyline(const CCadPolyline* source) {
    if (!source) return nullptr;
    std::unique_ptr<CTopoMultiPolyline> made(new CTopoMultiPolyline);
    made->m_ptStart = source->GetStartPoint();
    if (source->GetSegmentCount() > 0) made->EmitLast(made->EmitAllButLast(*source), *source);
    return made.release();
}

// Emits the groups of a source with segments, and answers the run that is still growing at its end.
CTopoMultiPolyline::Run CTopoMultiPolyline::EmitAllButLast(const CCadPolyline& source) {
    SEGMENT segment = source.GetSegment(0);
    Run run(segment, 0);
    for (int i = 1, count = source.GetSegmentCount(); i < count; ++i) {
        const SEGMENT next = source.GetSegment(i);
        const int kind = JoinedKind(segment, next, run.info.nKind);
        if (kind < 0) {
            Emit(run);
            run = Run(next, i);
        } else {
            run.info.nKind = kind;
            run.Add(next);
        }
        segment = next;
    }
    return run;
}

// The last run is a group of its own, or goes on over the start point in the first group, if there is one.
void CTopoMultiPolyline::EmitLast(const Run& run, const CCadPolyline& source) {
    const SEGMENT last = source.GetSegment(source.GetSegmentCount() - 1);
    const SEGMENT first = source.GetSegment(0);
    const bool goesOn = !m_vecNodes.empty() && source.IsClose() && BeginsWith(*m_vecNodes.front(), first)
                        && ClosesOver(last, first, run.info.nKind, m_vecNodes.front()->nKind);
    if (!goesOn) return Emit(run);
    MergeIntoFirst(run);
    m_ptStart = source.GetSegment(run.info.nFirst).ptStart;
}

CTopoMultiPolyline::CTopoMultiPolyline(const CTopoMultiPolyline& other)
    : m_vecTopoInfo(other.m_vecTopoInfo), m_ptStart(other.m_ptStart) {
    m_vecNodes.reserve(other.m_vecNodes.size());
    for (const auto& node : other.m_vecNodes)
        m_vecNodes.push_back(std::make_unique<Group>(static_cast<const CompoundNode&>(*node)));
}

CTopoMultiPolyline& CTopoMultiPolyline::operator=(const CTopoMultiPolyline& other) {
    CTopoMultiPolyline copy(other);
    m_vecNodes.swap(copy.m_vecNodes);
    m_vecTopoInfo.swap(copy.m_vecTopoInfo);
    m_ptStart = copy.m_ptStart;
    return *this;
}

CTopoMultiPolyline::~CTopoMultiPolyline() = default;

CTopoMultiPolyline::CompoundNode* CTopoMultiPolyline::GetAt(int index) const {
    if (index < 0 || index >= GetNodeCount()) return nullptr;
    m_vecNodes[index]->isHandedOut = true;
    return m_vecNodes[index].get();
}

void CTopoMultiPolyline::SetStartPoint(const DPOINT2& start) {
    Forget();
    m_ptStart = start;
}

void CTopoMultiPolyline::Forget() {
    for (const auto& group : m_vecNodes) Drop(group->contour);
}

DPOINT2 CTopoMultiPolyline::GetEndPoint() const {
    return m_vecNodes.empty() ? m_ptStart : m_vecNodes.back()->ptEnd;
}

DPOINT2 CTopoMultiPolyline::BeginOf(int node) const {
    return node == 0 ? m_ptStart : m_vecNodes[node - 1]->ptEnd;
}

std::unique_ptr<const CCadPolyline> CTopoMultiPolyline::ContourOf(int node) const {
    auto contour = std::make_unique<CCadPolyline>(false);
    contour->SetStartPoint(BeginOf(node));
    contour->Reserve(static_cast<int>(m_vecNodes[node]->vecNodes.size()));
    for (const Node& n : m_vecNodes[node]->vecNodes) contour->AddArc({n.x, n.y}, n.bulge);
    return contour;
}

DPOINT2 CTopoMultiPolyline::GetPoint(int node, double ratio) const {
    if (node < 0 || node >= GetNodeCount()) return {};
    Group& group = *m_vecNodes[node];
    if (IsSameRatio(ratio, 1)) return group.ptEnd;
    if (group.vecNodes.empty()) return {};
    const Node& first = group.vecNodes.front();
    if (IsSingle(group.nKind)) return SEGMENT(BeginOf(node), {first.x, first.y}, first.bulge).GetPoint(ratio);
    // the group before it gives the start
    const bool mayChange = group.isHandedOut || (node > 0 && m_vecNodes[node - 1]->isHandedOut);
    const auto make = [&] { return ContourOf(node); };
    const CCadPolyline* kept = mayChange ? nullptr : GetOrMake(group.contour, make);
    return kept ? PointAlong(*kept, ratio) : PointAlong(*make(), ratio);
}

// Run backwards, a segment ends where it began: at the point of the node before it, for a group's first
// segment at the point where the group began. The bulge changes its sign, but a straight one stays +0. The
// groups are taken from the last to the first, so that the point where a group began is still that of the
// group before it.
void CTopoMultiPolyline::ReverseDir() {
    if (m_vecNodes.empty()) return;
    Forget();
    const DPOINT2 start = GetEndPoint();
    for (int i = GetNodeCount() - 1; i >= 0; --i) {
        CompoundNode& group = *m_vecNodes[i];
        group.ptEnd = BeginOf(i);
        std::vector<Node>& nodes = group.vecNodes;
        std::reverse(nodes.begin(), nodes.end());
        for (std::size_t m = 0; m < nodes.size(); ++m) {
            const bool last = m + 1 == nodes.size();
            nodes[m].x = last ? group.ptEnd.x : nodes[m + 1].x;
            nodes[m].y = last ? group.ptEnd.y : nodes[m + 1].y;
            nodes[m].bulge = nodes[m].bulge == 0 ? 0 : -nodes[m].bulge;
        }
    }
    std::reverse(m_vecNodes.begin(), m_vecNodes.end());
    m_ptStart = start;
}

template <class Map>
void CTopoMultiPolyline::MapPoints(const Map& map) {
    Forget();
    m_ptStart = map(m_ptStart);
    for (const auto& group : m_vecNodes) {
        group->ptEnd = map(group->ptEnd);
        for (Node& node : group->vecNodes) {
            const DPOINT2 p = map(DPOINT2{node.x, node.y});
            node.x = p.x;
            node.y = p.y;
        }
    }
}

void CTopoMultiPolyline::Translate(const gp_Vec2d& offset) {
    MapPoints([&](const DPOINT2& p) { return DPOINT2{p.x + offset.X(), p.y + offset.Y()}; });
}

void CTopoMultiPolyline::Rotate(const DPOINT2& centre, double angle) {
    if (IsSameAngle(angle, 0) || IsSameAngle(angle, math::kTwoPi)) return;
    // A copy: the centre may be the end point of a group.
    MapPoints([centre, angle](const DPOINT2& p) { return RotatePoint(p, centre, angle); });
}

bool CTopoMultiPolyline::Mirror(const DPOINT2& onLine, double angle) {
    if (math::IsNoPoint(onLine) || !(angle >= 0 && angle < math::kPi)) return false;
    // A copy: the point may be the end point of a group.
    MapPoints([onLine, angle](const DPOINT2& p) { return GetMirrorPoint(p, onLine, angle); });
    for (const auto& group : m_vecNodes)
        for (Node& node : group->vecNodes) node.bulge = -node.bulge;
    return true;
}

void CTopoMultiPolyline::Append(int kind, const std::vector<Node>& nodes) {
    const Node& last = nodes.back();
    m_vecNodes.push_back(std::make_unique<Group>(CompoundNode{kind, nodes, {last.x, last.y}}));
}

void CTopoMultiPolyline::AddLine(const DPOINT2& end) {
    AddArc(end, 0);
}

void CTopoMultiPolyline::AddArc(const DPOINT2& end, double bulge) {
    const DPOINT2 at = GetEndPoint();
    if (IsSameLength(at.x, end.x) && IsSameLength(at.y, end.y)) return;
    const bool line = IsStraight(bulge);
    Append(line ? kLine : kArc, {{end.x, end.y, line ? 0 : bulge}});
}

void CTopoMultiPolyline::AddLines(const std::vector<Node>& nodes) {
    Append(kLines, nodes);
}

void CTopoMultiPolyline::AddArcs(const std::vector<Node>& nodes) {
    Append(kArcs, nodes);
}

void CTopoMultiPolyline::AddCurve(const std::vector<Node>& nodes) {
    Append(kCurve, nodes);
}

void CTopoMultiPolyline::Emit(const Run& run) {
    const Node& first = run.nodes.front();
    switch (run.info.nKind) {
    case kLine:
        AddLine({first.x, first.y});
        break;
    case kArc:
        AddArc({first.x, first.y}, first.bulge);
        break;
    case kLines:
        AddLines(run.nodes);
        break;
    case kArcs:
        AddArcs(run.nodes);
        break;
    default:
        AddCurve(run.nodes);
        break;
    }
    m_vecTopoInfo.push_back(run.info);
}

// The run comes before the first group. A single first group becomes a run of the run's kind; a first group
// that is a run keeps its own, though its record takes the other: callers know both.
void CTopoMultiPolyline::MergeIntoFirst(const Run& run) {
    CompoundNode& group = *m_vecNodes.front();
    if (IsSingle(group.nKind)) group.nKind = run.info.nKind;
    group.vecNodes.insert(group.vecNodes.begin(), run.nodes.begin(), run.nodes.end());
    TopoInfo& info = m_vecTopoInfo.front();
    info.nFirst = run.info.nFirst;
    info.dLength += run.info.dLength;
    info.nKind = run.info.nKind;
}

} // namespace qev
