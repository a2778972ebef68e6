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
// The nearest end is found through a hash of square cells as wide as the tolerance: what lies within the
// tolerance of a point lies in its cell or one of the eight round it. The work is linear in the pieces unless
// many ends crowd into one cell. Two cells that share a hash only cost distances that nobody needed.

#include "join.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>
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
    bool used = false;
};

// One end of a piece: 0 its start, 1 its end.
struct EndRef {
    int piece;
    int end;
};

// The open pieces of a group in drawing order. A piece that is shorter than the tolerance from end to end is
// left out: it would join itself.
std::vector<Piece> PiecesOf(qev::CCadGroup& group, double tolerance) {
    std::vector<Piece> pieces;
    auto& objects = group.GetObjectsList();
    for (auto place = objects.begin(); place != objects.end(); ++place) {
        CCadObject* object = *place;
        if (object->GetPieceCount() == 0 || object->GetType() == qev::kCadDot || object->IsClose()) continue;
        Piece piece{object, place, {object->GetStartPoint(), object->GetEndPoint()}};
        if (math::D2GetDistance(piece.ends[0], piece.ends[1]) > tolerance) pieces.push_back(piece);
    }
    return pieces;
}

// Finds the ends near a point.
class EndIndex {
public:
    EndIndex(const std::vector<Piece>& pieces, double tolerance)
        : m_vecPieces(pieces), m_dTolerance(tolerance) {
        for (int i = 0; i < static_cast<int>(pieces.size()); ++i)
            for (int end = 0; end < 2; ++end)
                m_mapCells[CellOf(pieces[i].ends[end], 0, 0)].push_back({i, end});
    }

    // The nearest end of an unused piece of a layer within the tolerance; piece -1 when there is none.
    EndRef Nearest(const DPOINT2& p, const CString& layer) const {
        EndRef best{-1, 0};
        double bestDistance = m_dTolerance;
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy) {
                const auto cell = m_mapCells.find(CellOf(p, dx, dy));
                if (cell == m_mapCells.end()) continue;
                for (const EndRef& ref : cell->second) {
                    const Piece& piece = m_vecPieces[ref.piece];
                    const double distance = math::D2GetDistance(p, piece.ends[ref.end]);
                    if (piece.used || distance > bestDistance || piece.object->GetKey("Layer") != layer)
                        continue;
                    if (best.piece >= 0 && distance == bestDistance && ref.piece > best.piece) continue;
                    best = ref;
                    bestDistance = distance;
                }
            }
        return best;
    }

private:
    std::uint64_t CellOf(const DPOINT2& p, int dx, int dy) const {
        const auto x = static_cast<std::int64_t>(std::floor(p.x / m_dTolerance)) + dx;
        const auto y = static_cast<std::int64_t>(std::floor(p.y / m_dTolerance)) + dy;
        return static_cast<std::uint64_t>(x) * 0x9E3779B97F4A7C15u ^ static_cast<std::uint64_t>(y);
    }

    const std::vector<Piece>& m_vecPieces;
    double m_dTolerance;
    std::unordered_map<std::uint64_t, std::vector<EndRef>> m_mapCells;
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

// The chain through an unused piece, as far as it goes both ways. Its pieces are used then. Each is entered
// at the end that is named.
std::vector<EndRef> ChainFrom(int first, std::vector<Piece>& pieces, const EndIndex& index,
                              double tolerance) {
    const CString layer = pieces[first].object->GetKey("Layer");
    std::vector<EndRef> chain{{first, 0}};
    pieces[first].used = true;
    // goes on from a point until the chain reaches another one; a single piece is never closed
    const auto grow = [&](DPOINT2 from, const DPOINT2& until) {
        while (chain.size() < 2 || math::D2GetDistance(from, until) > tolerance) {
            const EndRef next = index.Nearest(from, layer);
            if (next.piece < 0) return;
            pieces[next.piece].used = true;
            chain.push_back(next);
            from = pieces[next.piece].ends[1 - next.end];
        }
    };
    grow(pieces[first].ends[1], pieces[first].ends[0]);
    // what touches the start comes before it: the chain is turned, grown, and turned back
    const auto turn = [&] {
        std::reverse(chain.begin(), chain.end());
        for (EndRef& ref : chain) ref.end = 1 - ref.end;
    };
    turn();
    const EndRef& last = chain.front();
    grow(pieces[first].ends[0], pieces[last.piece].ends[last.end]);
    turn();
    return chain;
}

// Puts the contour of a chain in the place of the piece of it that was drawn first, and deletes the pieces.
void Replace(qev::CCadGroup& group, std::vector<Piece>& pieces, const std::vector<EndRef>& chain,
             double tolerance) {
    std::vector<SEGMENT> segments;
    for (const EndRef& ref : chain) {
        const std::vector<SEGMENT> more = SegmentsOf(pieces[ref.piece], ref.end == 1);
        segments.insert(segments.end(), more.begin(), more.end());
    }
    if (math::D2GetDistance(segments.back().ptEnd, segments.front().ptStart) <= tolerance)
        segments.back().ptEnd = segments.front().ptStart;
    const auto firstDrawn = std::min_element(
        chain.begin(), chain.end(), [](const EndRef& a, const EndRef& b) { return a.piece < b.piece; });
    auto contour = MakeContour(segments, {});
    contour->SetKey("Layer", pieces[firstDrawn->piece].object->GetKey("Layer"));
    group.GetObjectsList().insert(pieces[firstDrawn->piece].place, contour.release());
    for (const EndRef& ref : chain) {
        group.GetObjectsList().erase(pieces[ref.piece].place);
        delete pieces[ref.piece].object;
    }
}

int JoinInGroup(qev::CCadGroup& group, double tolerance) {
    std::vector<Piece> pieces = PiecesOf(group, tolerance);
    const EndIndex index(pieces, tolerance);
    int joined = 0;
    for (int i = 0; i < static_cast<int>(pieces.size()); ++i) {
        if (pieces[i].used) continue;
        const std::vector<EndRef> chain = ChainFrom(i, pieces, index, tolerance);
        if (chain.size() < 2) continue;
        Replace(group, pieces, chain, tolerance);
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
        joined += JoinInGroup(*group, tolerance);
        for (CCadObject* object : group->GetObjectsList())
            if (auto* inner = dynamic_cast<qev::CCadGroup*>(object)) groups.push_back(inner);
    }
    return joined;
}

} // namespace host
