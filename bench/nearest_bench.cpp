// The place on one contour that is nearest to a point.
#include <limits>
#include <string>
#include <vector>

#include "by_hand/arcs.h"
#include "by_hand/box_tree.h"
#include "peers/peers.h"
#include "support/contours.h"
#include "support/work.h"

namespace {

using namespace qev::bench;
using math::Bounds;
using math::DPOINT2;
using Points = std::vector<DPOINT2>;

// Index and ratio added up, so that the end of a segment and the start of the next one are one number. Lines
// are measured by Heron's rule, which may take the neighbour for the nearest where both end in the foot, and
// the ratio of an arc goes by its angle, to which a point near the centre is 1e-7 of a segment near.
constexpr double kSamePlace = 1e-6;

class Picker : public qev::CPosCalculator {
public:
    using qev::CPosCalculator::_RetrieveNearestPos;
};

double PlaceOf(const qev::PosInfo& info) {
    return info.nIndex + info.dRatio;
}

// Ours on the contour itself, as a host's tools ask.
template <class W>
auto OnContour(int n, const Points& questions = NearQuestions()) {
    return [n, &questions] {
        return [&contour = Kept<W>(n).contour, &questions](int i) {
            Picker picker;
            qev::PosInfo info;
            picker.Init(nullptr, &questions[i], 0);
            picker._RetrieveNearestPos(&contour, &info, false);
            return PlaceOf(info);
        };
    };
}

// Ours through the pick of a group that holds the one contour.
struct Held {
    explicit Held(qev::CCadObject* object) { group.PushBack(object); }
    ~Held() { group.PickOffAll(); }
    qev::CCadGroup group{false};
};
template <class W>
auto ThroughPick(int n) {
    return [n] {
        return [held = std::make_shared<Held>(&Kept<W>(n).contour)](int i) {
            qev::CPosCalculator calculator;
            qev::PosInfo info;
            calculator.Init(&held->group, &NearQuestions()[i], 10 * kWaveRadius);
            calculator.CalculatePosition(&info, false);
            return PlaceOf(info);
        };
    };
}

struct BoostWave : BoostLines {
    explicit BoostWave(int n) : BoostLines(Kept<LineWave>(n).points) {}
};
struct BoostChords : BoostLines {
    explicit BoostChords(int n) : BoostLines(Kept<ArcWave>(n).points) {}
};
struct GeosWave : GeosLines {
    explicit GeosWave(int n) : GeosLines(Kept<LineWave>(n).points) {}
};
template <class Tree>
auto ByBoost(int n, const Points& questions = NearQuestions()) {
    return [n, &questions] {
        return [&tree = Kept<Tree>(n), &questions](int i) { return tree.Nearest(questions[i]); };
    };
}
auto ByGeos(int n) {
    return [n] { return [&tree = Kept<GeosWave>(n)](int i) { return tree.Distance(NearQuestions()[i]); }; };
}

std::vector<Bounds> BoxesOf(const qev::CCadMultiSegments& contour) {
    std::vector<Bounds> boxes;
    boxes.reserve(contour.GetSegmentCount());
    for (int i = 0; i < contour.GetSegmentCount(); ++i) boxes.push_back(contour.GetSegment(i).GetBounds());
    return boxes;
}

// By hand: few segments are scanned, many are searched through a tree.
constexpr int kFew = 16;

template <class Measure>
int NearestIndex(const BoxTree& tree, int n, const DPOINT2& p, Measure measure) {
    if (n > kFew) return tree.Nearest(p, measure);
    double best = std::numeric_limits<double>::infinity();
    int found = -1;
    for (int i = 0; i < n; ++i) {
        const double square = measure(i);
        if (square < best) best = square, found = i;
    }
    return found;
}

auto LinesByHand(int n, const Points& questions = NearQuestions()) {
    return [n, &questions] {
        const std::vector<Node>& nodes = Kept<LineWave>(n).nodes;
        return [&nodes, &questions, n, tree = BoxTree(BoxesOf(Kept<LineWave>(n).contour))](int question) {
            const DPOINT2& p = questions[question];
            double ratio = 0;
            const int found =
                NearestIndex(tree, n, p, [&](int i) { return SquareToLine(p, nodes[i], ratio); });
            SquareToLine(p, nodes[found], ratio);
            return found + ratio;
        };
    };
}
auto ArcsByHand(int n) {
    return [n] {
        const std::vector<Node>& nodes = Kept<ArcWave>(n).nodes;
        return [arcs = std::vector<SolvedArc>(nodes.begin(), nodes.end()), n,
                tree = BoxTree(BoxesOf(Kept<ArcWave>(n).contour))](int question) {
            const DPOINT2& p = NearQuestions()[question];
            const int found = NearestIndex(tree, n, p, [&](int i) { return arcs[i].Square(p); });
            return found + arcs[found].Ratio(p);
        };
    };
}

// A few are measured beside the scan, many beside the tree.
Limits OnContourLimits(int n) {
    return n <= kFew ? Limits{0, 1.5} : Limits{0.6, 0};
}
constexpr double kPickBesides = 1.3; // what a pick may take for finding the object and asking it
Limits PickLimits(int n) {
    const Limits limits = OnContourLimits(n);
    return {kPickBesides * limits.ofPeer, kPickBesides * limits.ofByHand};
}

// Points far from the contour have much of it at nearly the same distance.
bool AddFarAway(int n) {
    return Add({"nearest of " + std::to_string(n) + " lines, far away",
                Ask(OnContour<LineWave>(n, FarQuestions())),
                {{"Boost", Ask(ByBoost<BoostWave>(n, FarQuestions()))}},
                Ask(LinesByHand(n, FarQuestions())),
                OnContourLimits(n),
                kSamePlace});
}
bool AddLines(int n) {
    const std::vector<Peer> peers{{"Boost", Ask(ByBoost<BoostWave>(n))}, {"GEOS", Ask(ByGeos(n)), false}};
    const std::string of = std::to_string(n) + " lines";
    return Add({"nearest of " + of, Ask(OnContour<LineWave>(n)), peers, Ask(LinesByHand(n)),
                OnContourLimits(n), kSamePlace})
           && Add({"pick one of " + of, Ask(ThroughPick<LineWave>(n)), peers, Ask(LinesByHand(n)),
                   PickLimits(n), kSamePlace});
}
// The peers know no arcs: they are asked about the chords.
bool AddArcs(int n) {
    const std::vector<Peer> peers{{"Boost", Ask(ByBoost<BoostChords>(n)), false}};
    const std::string of = std::to_string(n) + " arcs";
    return Add({"nearest of " + of, Ask(OnContour<ArcWave>(n)), peers, Ask(ArcsByHand(n)), OnContourLimits(n),
                kSamePlace})
           && Add({"pick one of " + of, Ask(ThroughPick<ArcWave>(n)), peers, Ask(ArcsByHand(n)),
                   PickLimits(n), kSamePlace});
}

// A Bezier piece answers the nearest of its samples, whose steps are the number that hosts have stored: 0.01
// in single precision. By hand the pieces are searched through a tree, and those are sampled that may hold
// the nearest.
double NearestSample(const qev::SEGMENT& piece, const DPOINT2& p, double& nearest) {
    constexpr double kStep = 0.01f;
    double best = std::numeric_limits<double>::infinity();
    for (double ratio = 0; ratio <= 1; ratio += kStep) { // NOLINT: the sum is meant
        const DPOINT2 gap = p - piece.GetPoint(ratio);
        const double square = math::Dot(gap, gap);
        if (square < best) best = square, nearest = ratio;
    }
    return best;
}
auto BeziersByHand(int n) {
    return [n] {
        const std::vector<qev::SEGMENT>& pieces = Kept<BezierWave>(n).contour.GetNodes();
        return [&pieces, tree = BoxTree(BoxesOf(Kept<BezierWave>(n).contour))](int question) {
            const DPOINT2& p = NearQuestions()[question];
            double ratio = 0;
            const int found = tree.Nearest(p, [&](int i) { return NearestSample(pieces[i], p, ratio); });
            NearestSample(pieces[found], p, ratio);
            return found + ratio;
        };
    };
}
bool AddBeziers(int n) {
    constexpr int kQuestions = 16;
    return Add({"nearest of " + std::to_string(n) + " Beziers",
                Ask(OnContour<BezierWave>(n)),
                {},
                Ask(BeziersByHand(n)),
                {0, 1.5},
                kSamePlace,
                kQuestions});
}

const bool added = [] {
    for (const int n : {10, 1000, 100'000}) AddLines(n), AddArcs(n);
    AddFarAway(100'000);
    for (const int n : {100, 1000}) AddBeziers(n);
    return true;
}();

} // namespace
