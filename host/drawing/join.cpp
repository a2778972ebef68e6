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
// exponential.
//
// The free ends are found through a binary tree over them: its root holds all of them, and each node halves
// its ends at the middle one along the longer side of their box. A node knows that box and which of its free
// ends was drawn first, and so bounds what a search can find in it, by distance and, among equal distances,
// by the order of drawing. A node that cannot beat what was found is left out. The distance from a box is
// rounded as the distance from a point is and never exceeds that of an end in it, so that the answer is
// exactly that of a search through all ends. An end that is used goes out of its leaf and of the nodes above
// it. Building and joining take n log n steps for n pieces, also where all of them end in one point or lie
// closer together than the tolerance. A grid of cells as wide as the tolerance was rejected: a cell that
// holds all ends makes the work quadratic. A layer has a tree of its own, as ends of other layers in one
// point would cost as much.

#include "join.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "outline.h"

namespace host {
namespace {

using math::DPOINT2;
using qev::CCadObject;
using qev::SEGMENT;

// A piece that may be joined: its place in the group's list and its two ends, start and end.
struct Piece {
    CCadObject* object;
    std::list<CCadObject*>::iterator place;
    DPOINT2 ends[2];
};

// The open pieces of one layer of a group in drawing order. The start of piece i is the end 2*i, its other
// end is 2*i + 1.
using Pieces = std::vector<Piece>;

int OtherEnd(int end) {
    return end ^ 1;
}

const DPOINT2& PointOf(const Pieces& pieces, int end) {
    return pieces[end / 2].ends[end % 2];
}

// The open pieces of a group by their layers. A piece that is shorter than the tolerance from end to end is
// left out: it would join itself.
std::map<CString, Pieces> PiecesOf(qev::CCadGroup& group, double tolerance) {
    std::map<CString, Pieces> layers;
    auto& objects = group.GetObjectsList();
    for (auto place = objects.begin(); place != objects.end(); ++place) {
        CCadObject* object = *place;
        if (object->GetPieceCount() == 0 || object->GetType() == qev::kCadDot || object->IsClose()) continue;
        const Piece piece{object, place, {object->GetStartPoint(), object->GetEndPoint()}};
        if (math::D2GetDistance(piece.ends[0], piece.ends[1]) > tolerance)
            layers[object->GetKey("Layer")].push_back(piece);
    }
    return layers;
}

constexpr int kNoEnd = std::numeric_limits<int>::max();

// Finds the free ends near a point, and forgets those of pieces that are used.
class FreeEnds {
public:
    // All ends of at least one piece are free at first. The pieces must stay as they are.
    explicit FreeEnds(const Pieces& pieces) : m_vecPieces(pieces), m_vecLeaves(2 * pieces.size()) {
        std::vector<int> ends(m_vecLeaves.size());
        std::iota(ends.begin(), ends.end(), 0);
        m_vecNodes.resize(2 * std::bit_ceil(ends.size()));
        Build(kRoot, ends);
    }

    bool IsFree(int end) const { return m_vecNodes[m_vecLeaves[end]].first != kNoEnd; }

    // The nearest free end within the tolerance, of equally near ones that which was drawn first, and of one
    // piece's its start; kNoEnd when there is none.
    int Nearest(const DPOINT2& p, double tolerance) const {
        Candidate best{tolerance, kNoEnd};
        Search(kRoot, p, best);
        return best.end;
    }

    // Takes both ends of the piece that an end belongs to out of the tree.
    void Use(int end) {
        for (const int used : {end, OtherEnd(end)}) {
            std::size_t node = m_vecLeaves[used];
            m_vecNodes[node].first = kNoEnd;
            while ((node /= 2) != 0)
                m_vecNodes[node].first = std::min(m_vecNodes[2 * node].first, m_vecNodes[2 * node + 1].first);
        }
    }

private:
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

    void Build(std::size_t node, std::span<int> ends) {
        Node& built = m_vecNodes[node];
        for (const int end : ends) built.box.Add(PointOf(m_vecPieces, end));
        built.first = *std::min_element(ends.begin(), ends.end());
        if (ends.size() == 1) {
            m_vecLeaves[ends.front()] = node;
            return;
        }
        const DPOINT2 size = built.box.upper - built.box.lower;
        const auto along = size.x > size.y ? &DPOINT2::x : &DPOINT2::y;
        const std::size_t half = ends.size() / 2;
        std::nth_element(ends.begin(), ends.begin() + half, ends.end(), [&](int a, int b) {
            return PointOf(m_vecPieces, a).*along < PointOf(m_vecPieces, b).*along;
        });
        Build(2 * node, ends.first(half));
        Build(2 * node + 1, ends.subspan(half));
    }

    Candidate BoundOf(std::size_t node, const DPOINT2& p) const {
        const auto& [box, first] = m_vecNodes[node];
        if (first == kNoEnd) return {std::numeric_limits<double>::infinity(), kNoEnd};
        return {std::sqrt(box.GetSquaredDistance(p)), first};
    }

    void Search(std::size_t node, const DPOINT2& p, Candidate& best) const {
        const Candidate bound = BoundOf(node, p);
        if (!(bound < best)) return;
        if (m_vecLeaves[bound.end] == node) {
            best = bound; // the box of a leaf is its end
            return;
        }
        std::size_t sooner = 2 * node;
        std::size_t later = sooner + 1;
        if (BoundOf(later, p) < BoundOf(sooner, p)) std::swap(sooner, later);
        Search(sooner, p, best);
        Search(later, p, best);
    }

    const Pieces& m_vecPieces;
    std::vector<Node> m_vecNodes;
    std::vector<std::size_t> m_vecLeaves; // the node that holds nothing but an end, by the end
};

// The segments of a piece, run from its end when it was met there.
std::vector<SEGMENT> SegmentsOf(const Piece& piece, bool reversed) {
    std::vector<SEGMENT> segments;
    for (int i = 0; i < piece.object->GetPieceCount(); ++i) {
        const qev::OutlinePiece outline = piece.object->GetPiece(i);
        if (const auto* segment = std::get_if<SEGMENT>(&outline))
            segments.push_back(*segment);
        else
            AppendBeziers(std::get<math::EllipticArc>(outline), segments);
    }
    if (!reversed) return segments;
    std::reverse(segments.begin(), segments.end());
    for (SEGMENT& segment : segments) segment = segment.Reversed();
    return segments;
}

// The chain through a free piece, as far as it goes both ways, as the ends at which its pieces are entered.
// Its pieces are used then.
std::vector<int> ChainFrom(int first, const Pieces& pieces, FreeEnds& freeEnds, double tolerance) {
    std::vector<int> chain{first};
    freeEnds.Use(first);
    // goes on from a point until the chain reaches another one; a single piece is never closed
    const auto grow = [&](DPOINT2 from, const DPOINT2& until) {
        while (chain.size() < 2 || math::D2GetDistance(from, until) > tolerance) {
            const int next = freeEnds.Nearest(from, tolerance);
            if (next == kNoEnd) return;
            freeEnds.Use(next);
            chain.push_back(next);
            from = PointOf(pieces, OtherEnd(next));
        }
    };
    grow(PointOf(pieces, OtherEnd(first)), PointOf(pieces, first));
    // what touches the start comes before it: the chain is turned, grown, and turned back
    const auto turn = [&] {
        std::reverse(chain.begin(), chain.end());
        for (int& end : chain) end = OtherEnd(end);
    };
    turn();
    grow(PointOf(pieces, first), PointOf(pieces, chain.front()));
    turn();
    return chain;
}

// Puts the contour of a chain in the place of the piece of it that was drawn first, and deletes the pieces.
void Replace(qev::CCadGroup& group, const Pieces& pieces, const Piece& firstDrawn,
             const std::vector<int>& chain, double tolerance) {
    std::vector<SEGMENT> segments;
    for (const int end : chain) {
        const std::vector<SEGMENT> more = SegmentsOf(pieces[end / 2], end % 2 == 1);
        segments.insert(segments.end(), more.begin(), more.end());
    }
    if (math::D2GetDistance(segments.back().ptEnd, segments.front().ptStart) <= tolerance)
        segments.back().ptEnd = segments.front().ptStart;
    auto contour = MakeContour(segments, {});
    contour->SetKey("Layer", firstDrawn.object->GetKey("Layer"));
    group.GetObjectsList().insert(firstDrawn.place, contour.release());
    for (const int end : chain) {
        group.GetObjectsList().erase(pieces[end / 2].place);
        delete pieces[end / 2].object;
    }
}

int JoinLayer(qev::CCadGroup& group, const Pieces& pieces, double tolerance) {
    FreeEnds freeEnds(pieces);
    int joined = 0;
    for (int start = 0; start < static_cast<int>(2 * pieces.size()); start += 2) {
        if (!freeEnds.IsFree(start)) continue;
        const std::vector<int> chain = ChainFrom(start, pieces, freeEnds, tolerance);
        if (chain.size() < 2) continue;
        Replace(group, pieces, pieces[start / 2], chain, tolerance); // the pieces before it are used
        joined += static_cast<int>(chain.size());
    }
    return joined;
}

} // namespace

int JoinOpenPieces(qev::CCadGroup& root, double tolerance) {
    if (!(tolerance > 0)) return 0;
    std::vector<qev::CCadGroup*> groups{&root};
    int joined = 0;
    while (!groups.empty()) {
        qev::CCadGroup* group = groups.back();
        groups.pop_back();
        for (const auto& [layer, pieces] : PiecesOf(*group, tolerance))
            joined += JoinLayer(*group, pieces, tolerance);
        for (CCadObject* object : group->GetObjectsList())
            if (auto* inner = dynamic_cast<qev::CCadGroup*>(object)) groups.push_back(inner);
    }
    return joined;
}

} // namespace host
