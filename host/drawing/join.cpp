// Joins open pieces to contours, as somebody would do it with a pencil: take the first piece that is drawn,
// go on from its end with the nearest end of another piece as long as one lies within the tolerance, and stop
// when the chain comes back to its start. Then do so backwards from its start. What is left is taken up by
// later pieces.
//
// Each step joins two ends that are no further apart than the tolerance, and the next piece is made to begin
// exactly where the one before it ended; so the contour deviates from the drawing by no more than the
// tolerance. Every piece is used once. Where more than two ends meet, the nearest one wins, and of equally
// near ones the piece that was drawn first: a rule that depends on nothing but the drawing. A search for the
// best way through such places was rejected: the drawing does not say what is best, and the search is
// exponential. What comes back to a point on its way is taken apart there (loops.h).
//
// The free ends are found through a binary tree over them: its root holds all of them, and each node halves
// its ends at the middle one along the longer side of their box, until a few are left. The ends lie in the
// order of the leaves, so that a leaf is a run of them, and which leaf holds an end is told by its place
// alone. A node knows its box and which of its free ends was drawn first, and so bounds what a search can
// find in it, by distance and, among equal distances, by the order of drawing. A search begins in
// the leaf of the end that it goes on from and looks at the other halves on the way up, since the nearest end
// is mostly near in the tree too, until it comes to a node in whose box lies all that is as near as what was
// found: every end of another node lies beside that box, as each half was cut off by a line. A node that
// cannot beat what was found is left out. The distance from a box is rounded as the distance from a point is
// and never exceeds that of an end in it, so that the answer is exactly that of a search through all ends. An
// end that is used goes out of its leaf and of the nodes above it. Building and joining take n log n steps
// for n pieces, also where all of them end in one point or lie closer together than the tolerance. A grid of
// cells as wide as the tolerance was rejected: a cell that holds all ends makes the work quadratic. A tree
// whose leaves are single ends was rejected too: it is no faster, and takes more memory than the pieces. A
// layer has a tree of its own, as ends of other layers in one point would cost as much.

#include "join.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "leaves.h"
#include "loops.h"
#include "outline.h"

namespace host {
namespace {

using math::DPOINT2;
using qev::CCadObject;
using qev::SEGMENT;

// A tolerance that nobody has given: a part of the diagonal of the open ends' box, as large as what drawings
// of few digits are rounded by, and at most so many mm, as a piece that is shorter than the tolerance is not
// joined: small letters on a large sheet are made of such pieces.
constexpr double kPartOfBox = 1e-4;
constexpr double kWidestGap = 0.01;

constexpr int kNoEnd = std::numeric_limits<int>::max();

// An end of a piece. The start of piece i is the end 2*i, its other end is 2*i + 1.
struct End {
    DPOINT2 point;
    int end = kNoEnd; // none any more when it is used
};

// The open pieces of one layer in drawing order, by their places, and their ends.
struct Pieces {
    std::vector<LeafPlace> places;
    std::vector<End> ends;
};

int OtherEnd(int end) {
    return end ^ 1;
}

bool IsOpenPiece(const CCadObject& object) {
    return object.GetPieceCount() > 0 && object.GetType() != qev::kCadDot && !object.IsClose();
}

double ChosenTolerance(qev::CCadGroup& root) {
    math::Bounds box;
    ForEachLeaf(root, [&box](const LeafPlace& place) {
        if (!IsOpenPiece(place.Object())) return;
        box.Add(place.Object().GetStartPoint());
        box.Add(place.Object().GetEndPoint());
    });
    return box.IsEmpty() ? 0 : std::min(kWidestGap, kPartOfBox * math::Norm(box.upper - box.lower));
}

// The open pieces by their layers, or all of them. A piece that is shorter than the tolerance from end to end
// is left out: it would join itself.
std::map<CString, Pieces> PiecesOf(qev::CCadGroup& root, double tolerance, bool acrossLayers) {
    std::map<CString, Pieces> layers;
    ForEachLeaf(root, [&](const LeafPlace& place) {
        const CCadObject& object = place.Object();
        if (!IsOpenPiece(object)) return;
        const DPOINT2 start = object.GetStartPoint();
        const DPOINT2 end = object.GetEndPoint();
        if (!(math::D2GetDistance(start, end) > tolerance)) return;
        auto& [places, ends] = layers[acrossLayers ? CString() : object.GetKey("Layer")];
        const int first = static_cast<int>(ends.size());
        ends.push_back({start, first});
        ends.push_back({end, OtherEnd(first)});
        places.push_back(place);
    });
    return layers;
}

// Finds the free ends near a point, and forgets those of pieces that are used.
class FreeEnds {
public:
    // Takes the ends of at least one piece, all of them free at first.
    explicit FreeEnds(std::vector<End> ends) : m_vecEnds(std::move(ends)), m_vecPlaces(m_vecEnds.size()) {
        m_nLeaves = std::bit_ceil((m_vecEnds.size() + kMostInLeaf - 1) / kMostInLeaf);
        m_vecNodes.resize(2 * m_nLeaves);
        Build(kRoot, 0, m_nLeaves);
        for (std::size_t i = 0; i < m_vecEnds.size(); ++i)
            m_vecPlaces[m_vecEnds[i].end] = static_cast<int>(i);
    }

    const DPOINT2& PointOf(int end) const { return m_vecEnds[m_vecPlaces[end]].point; }
    bool IsFree(int end) const { return m_vecEnds[m_vecPlaces[end]].end != kNoEnd; }

    // The free end that is nearest to an end and within the tolerance, of equally near ones that which was
    // drawn first, and of one piece's its start; kNoEnd when there is none.
    int Nearest(int end, double tolerance) const {
        const DPOINT2& p = PointOf(end);
        Candidate best{tolerance, kNoEnd};
        std::size_t node = LeafOf(end);
        Search(node, BoundOf(node, p), p, best);
        for (; node != kRoot && !HoldsRound(m_vecNodes[node].box, p, best.distance); node /= 2)
            Search(node ^ 1, BoundOf(node ^ 1, p), p, best);
        return best.end;
    }

    // Takes both ends of the piece that an end belongs to out of the tree.
    void Use(int end) {
        for (const int used : {end, OtherEnd(end)}) {
            std::size_t node = LeafOf(used);
            m_vecEnds[m_vecPlaces[used]].end = kNoEnd;
            int first = FirstOf(LeafAt(node));
            // up to where an end that was drawn before it is the first
            for (; node != 0 && m_vecNodes[node].first == used; node /= 2) {
                m_vecNodes[node].first = first;
                first = std::min(first, m_vecNodes[node ^ 1].first);
            }
        }
    }

private:
    // Few enough that to look at all of them costs no more than to go down further, and many enough that
    // nodes take little beside the ends.
    static constexpr std::size_t kMostInLeaf = 16;
    static constexpr std::size_t kRoot = 1; // the nodes below node i are 2*i and 2*i + 1

    struct Node {
        math::Bounds box;   // of all its ends, also the used ones
        int first = kNoEnd; // the free end that was drawn first
    };

    // An end, or a bound of the ends of a node: none of them is less.
    struct Candidate {
        double distance; // mm
        int end;
        bool operator<(const Candidate& other) const {
            return distance < other.distance || (distance == other.distance && end < other.end);
        }
    };

    // Where the ends of a leaf begin, of the leaves counted from 0.
    std::size_t BeginOf(std::size_t leaf) const { return leaf * m_vecEnds.size() / m_nLeaves; }
    std::span<const End> LeafAt(std::size_t node) const {
        const std::size_t leaf = node - m_nLeaves;
        return std::span(m_vecEnds).subspan(BeginOf(leaf), BeginOf(leaf + 1) - BeginOf(leaf));
    }
    // The node of the last leaf that does not begin behind an end's place.
    std::size_t LeafOf(int end) const {
        const auto behind = static_cast<std::size_t>(m_vecPlaces[end]) + 1;
        return m_nLeaves + (behind * m_nLeaves - 1) / m_vecEnds.size();
    }
    static int FirstOf(std::span<const End> ends) {
        int first = kNoEnd;
        for (const End& each : ends) first = std::min(first, each.end);
        return first;
    }

    // Builds a node over so many leaves from one on.
    void Build(std::size_t node, std::size_t leaf, std::size_t leaves) {
        const auto begin = m_vecEnds.begin() + BeginOf(leaf);
        const auto end = m_vecEnds.begin() + BeginOf(leaf + leaves);
        math::Bounds box;
        for (auto each = begin; each != end; ++each) box.Add(each->point);
        m_vecNodes[node] = {box, FirstOf(std::span(begin, end))};
        if (leaves == 1) return;
        const DPOINT2 size = box.upper - box.lower;
        const auto along = size.x > size.y ? &DPOINT2::x : &DPOINT2::y;
        std::nth_element(begin, m_vecEnds.begin() + BeginOf(leaf + leaves / 2), end,
                         [along](const End& a, const End& b) { return a.point.*along < b.point.*along; });
        Build(2 * node, leaf, leaves / 2);
        Build(2 * node + 1, leaf + leaves / 2, leaves / 2);
    }

    // Whether all that is no farther from p than a distance lies in a box, not on its border.
    static bool HoldsRound(const math::Bounds& box, const DPOINT2& p, double distance) {
        return p.x - box.lower.x > distance && box.upper.x - p.x > distance && p.y - box.lower.y > distance
               && box.upper.y - p.y > distance;
    }

    Candidate BoundOf(std::size_t node, const DPOINT2& p) const {
        const auto& [box, first] = m_vecNodes[node];
        if (first == kNoEnd) return {std::numeric_limits<double>::infinity(), kNoEnd};
        return {std::sqrt(box.GetSquaredDistance(p)), first};
    }

    void Search(std::size_t node, const Candidate& bound, const DPOINT2& p, Candidate& best) const {
        if (!(bound < best)) return;
        if (node >= m_nLeaves) {
            for (const End& each : LeafAt(node))
                if (each.end != kNoEnd) best = std::min(best, {math::Norm(each.point - p), each.end});
            return;
        }
        std::size_t sooner = 2 * node;
        std::size_t later = sooner + 1;
        Candidate soonerBound = BoundOf(sooner, p);
        Candidate laterBound = BoundOf(later, p);
        if (laterBound < soonerBound) {
            std::swap(sooner, later);
            std::swap(soonerBound, laterBound);
        }
        Search(sooner, soonerBound, p, best);
        Search(later, laterBound, p, best);
    }

    std::vector<End> m_vecEnds;   // in the order of the leaves
    std::vector<int> m_vecPlaces; // where an end lies among them
    std::size_t m_nLeaves = 1;    // a power of two; the leaves are the last nodes
    std::vector<Node> m_vecNodes;
};

// Appends the segments of a piece, run from its end when it was met there.
void AppendSegments(const CCadObject& piece, bool reversed, std::vector<SEGMENT>& segments) {
    const std::size_t before = segments.size();
    for (int i = 0, count = piece.GetPieceCount(); i < count; ++i) {
        const qev::OutlinePiece outline = piece.GetPiece(i);
        if (const auto* segment = std::get_if<SEGMENT>(&outline))
            segments.push_back(*segment);
        else
            AppendBeziers(std::get<math::EllipticArc>(outline), segments);
    }
    if (!reversed) return;
    const std::span appended = std::span(segments).subspan(before);
    std::reverse(appended.begin(), appended.end());
    for (SEGMENT& segment : appended) segment = segment.Reversed();
}

// The chain through a free piece, as far as it goes both ways, as the ends at which its pieces are entered.
// Its pieces are used then.
std::vector<int> ChainFrom(int first, FreeEnds& freeEnds, double tolerance) {
    std::vector<int> chain{first};
    freeEnds.Use(first);
    // goes on from an end until the chain reaches another one; a single piece is never closed
    const auto grow = [&](int from, int until) {
        const DPOINT2& last = freeEnds.PointOf(until);
        while (chain.size() < 2 || math::D2GetDistance(freeEnds.PointOf(from), last) > tolerance) {
            const int next = freeEnds.Nearest(from, tolerance);
            if (next == kNoEnd) return;
            freeEnds.Use(next);
            chain.push_back(next);
            from = OtherEnd(next);
        }
    };
    grow(OtherEnd(first), first);
    // what touches the start comes before it: the chain is turned, grown, and turned back
    const auto turn = [&] {
        std::reverse(chain.begin(), chain.end());
        for (int& end : chain) end = OtherEnd(end);
    };
    turn();
    grow(first, chain.front());
    turn();
    return chain;
}

// The chain as pieces with both their ends.
std::vector<ChainStep> StepsOf(const std::vector<int>& chain, const FreeEnds& freeEnds) {
    std::vector<ChainStep> steps;
    steps.reserve(chain.size());
    for (const int end : chain)
        steps.push_back({end, freeEnds.PointOf(end), freeEnds.PointOf(OtherEnd(end))});
    return steps;
}

// The chains of two pieces and more, loops apart, in the order in which they were found.
std::vector<std::vector<int>> ChainsOf(std::vector<End> ends, double tolerance) {
    const int count = static_cast<int>(ends.size());
    FreeEnds freeEnds(std::move(ends));
    std::vector<std::vector<int>> chains;
    for (int end = 0; end < count; end += 2) {
        if (!freeEnds.IsFree(end)) continue;
        const std::vector<int> chain = ChainFrom(end, freeEnds, tolerance);
        if (chain.size() < 2) continue;
        for (const std::vector<ChainStep>& part : SplitLoops(StepsOf(chain, freeEnds), tolerance)) {
            if (part.size() < 2) continue;
            std::vector<int>& pieces = chains.emplace_back();
            for (const ChainStep& step : part) pieces.push_back(step.piece);
        }
    }
    return chains;
}

// The contour of a chain, which takes the layer and the colour of a piece.
std::unique_ptr<CCadObject> ContourOf(const std::vector<LeafPlace>& places, const std::vector<int>& chain,
                                      const CCadObject& like, double tolerance) {
    std::vector<SEGMENT> segments;
    segments.reserve(chain.size());
    for (const int end : chain) AppendSegments(places[end / 2].Object(), end % 2 == 1, segments);
    if (math::D2GetDistance(segments.back().ptEnd, segments.front().ptStart) <= tolerance)
        segments.back().ptEnd = segments.front().ptStart;
    auto contour = MakeContour(segments, {});
    for (const char* key : {"Layer", "Color"}) {
        const CString value = like.GetKey(key);
        if (!value.IsEmpty()) contour->SetKey(key, value);
    }
    return contour;
}

// Puts contours in the place of pieces. The pieces are deleted at the end, from the first to the last: most
// lie in memory as they were drawn, so that this is several times as fast as to delete them by their
// contours.
class Replaced {
public:
    explicit Replaced(const std::vector<LeafPlace>& places) : m_places(places), m_vecUsed(places.size()) {}
    Replaced(const Replaced&) = delete;
    Replaced& operator=(const Replaced&) = delete;
    ~Replaced() {
        for (std::size_t i = 0; i < m_places.size(); ++i)
            if (m_vecUsed[i]) m_places[i].Delete();
    }

    // Puts the contour of a chain before the piece of it that was drawn first.
    void Put(const std::vector<int>& chain, double tolerance) {
        const LeafPlace& first = m_places[*std::min_element(chain.begin(), chain.end()) / 2];
        auto contour = ContourOf(m_places, chain, first.Object(), tolerance);
        const auto place = first.group->GetObjectsList().insert(first.object, nullptr); // may throw
        *place = contour.release();
        for (const int end : chain) m_vecUsed[end / 2] = true;
    }

private:
    const std::vector<LeafPlace>& m_places;
    std::vector<bool> m_vecUsed;
};

int JoinLayer(Pieces pieces, double tolerance) {
    // the tree has gone when the contours come
    const std::vector<std::vector<int>> chains = ChainsOf(std::move(pieces.ends), tolerance);
    Replaced replaced(pieces.places);
    std::size_t joined = 0;
    for (const std::vector<int>& chain : chains) {
        replaced.Put(chain, tolerance);
        joined += chain.size();
    }
    return static_cast<int>(joined);
}

} // namespace

int JoinOpenPieces(qev::CCadGroup& root, std::optional<double> tolerance, bool acrossLayers) {
    const double used = tolerance ? *tolerance : ChosenTolerance(root);
    if (!(used > 0)) return 0;
    int joined = 0;
    for (auto& [layer, pieces] : PiecesOf(root, used, acrossLayers))
        joined += JoinLayer(std::move(pieces), used);
    return joined;
}

} // namespace host
