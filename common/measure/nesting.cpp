// Contours are taken from the smallest area to the largest. Those that no contour round them has been found
// for yet stand in a tree of boxes. Each contour takes out of the tree what lies in it, which has found its
// parent with that, since every smaller contour has had its turn before; then it goes into the tree itself.
// So every contour is taken out once, and what is asked in vain are the pairs whose boxes meet and of which
// neither lies in the other: few in a drawing. The tree stands still, over the middles of all boxes along a
// Hilbert curve; what is not in it has an empty box.
//
// Whether the smaller contour lies in the larger one is told by a point of it, as long as that is inside.
// Else it may still cross the larger one, or touch it in the very point: so its pieces that come near to the
// larger one's outline are cut where they meet it, and a point between each two cuts is asked. A copy, piece
// by piece, of which no point is inside, is told before that: what a drawing has twice is mostly drawn alike.
//
// Rejected: a sweep over all segments, which finds the parents of contours that do not touch in n log n,
// whatever their shape, but is lost where they touch, cross or share a side, as contours of drawings do; and
// asking each contour for all whose box holds it, which takes the square of the depth.
#include <algorithm>
#include <cmath>
#include <numeric>

#include <qev/measure/nesting.h>
#include <qevdata/tree_walk.h>
#include <qevmath/tolerance.h>

#include "../kinds/cad_kinds.h"
#include "data/hilbert_place.h"
#include "outline.h"
#include "piece_distance.h"

namespace qev {
namespace {

using math::Bounds;
using math::DPOINT2;

// A closed contour of the selection.
struct Closed {
    CCadObject* object;
    Bounds box;      // empty when it cannot be measured: it lies in nothing then, and nothing in it
    double area = 0; // mm^2, not negative
};

double TwiceAreaOf(const SEGMENT& piece, const DPOINT2& origin) {
    return math::Cross(piece.ptStart - origin, piece.ptEnd - origin) + 2 * piece.GetChordArea();
}
double TwiceAreaOf(const math::EllipticArc& piece, const DPOINT2& origin) {
    return math::Cross(StartOf(piece) - origin, EndOf(piece) - origin) + 2 * piece.GetChordArea();
}

// An area to 30 binary digits: more than rounding alters, so that a contour that is repeated from another
// start or the other way round has the same, and less than an offset of 1e-6 mm does on a contour of a metre.
double Rounded(double area) {
    constexpr int kDigits = 30;
    int exponent = 0;
    const double mantissa = std::frexp(area, &exponent);
    return std::ldexp(std::round(std::ldexp(mantissa, kDigits)), exponent - kDigits);
}

Closed Measured(CCadObject& object) {
    Closed closed{&object, {}, 0};
    const int count = object.GetPieceCount();
    if (count <= 0) return closed;
    const DPOINT2 origin = StartOf(object.GetPiece(0));
    double twice = 0;
    Bounds box;
    for (int i = 0; i < count; ++i) {
        const OutlinePiece piece = object.GetPiece(i);
        if (!IsMeasurable(piece)) return closed;
        twice += std::visit([&](const auto& of) { return TwiceAreaOf(of, origin); }, piece);
        box.Add(std::visit([](const auto& of) { return of.GetBounds(); }, piece));
    }
    closed.box = box;
    closed.area = Rounded(std::abs(twice) / 2);
    return closed;
}

bool IsSame(const DPOINT2& p, const DPOINT2& q) {
    return p.x == q.x && p.y == q.y;
}
bool IsSame(const SEGMENT& a, const SEGMENT& b) {
    return a.nType == b.nType && a.dBulge == b.dBulge && IsSame(a.ptStart, b.ptStart)
           && IsSame(a.ptEnd, b.ptEnd) && IsSame(a.ptCtrl1, b.ptCtrl1) && IsSame(a.ptCtrl2, b.ptCtrl2);
}
bool IsSame(const math::EllipticArc& a, const math::EllipticArc& b) {
    return IsSame(a.GetCenter(), b.GetCenter()) && IsSame(a.GetAxisA(), b.GetAxisA())
           && IsSame(a.GetAxisB(), b.GetAxisB()) && a.GetStart() == b.GetStart()
           && a.GetSweep() == b.GetSweep();
}
bool IsSame(const OutlinePiece& a, const OutlinePiece& b) {
    return std::visit(
        [&b]<class Piece>(const Piece& piece) {
            const Piece* const other = std::get_if<Piece>(&b);
            return other && IsSame(piece, *other);
        },
        a);
}

// Whether two contours have the same pieces, from the same start on, to the last digit.
bool AreDrawnAlike(const CCadObject& a, const CCadObject& b) {
    const int count = a.GetPieceCount();
    if (count != b.GetPieceCount()) return false;
    for (int i = 0; i < count; ++i)
        if (!IsSame(a.GetPiece(i), b.GetPiece(i))) return false;
    return true;
}

// Whether a contour lies in a larger one, or in one that is as large.
class Inside {
public:
    Inside(const CCadObject& inner, const CCadObject& outer) : m_inner(inner), m_outer(outer) {}

    bool Answer() {
        if (AreDrawnAlike(m_inner, m_outer)) return true;
        if (AskFirstPieces()) return true;
        const Outline inner(m_inner), outer(m_outer);
        Cut(inner, inner.GetRoot(), outer, outer.GetRoot());
        return AskBetweenCuts(inner) || !m_bIsOutside;
    }

private:
    using Node = Outline::Node;
    struct Place {
        int piece;
        double share;
        bool operator<(const Place& other) const {
            return piece != other.piece ? piece < other.piece : share < other.share;
        }
    };

    // The ends and middles of a few pieces tell most contours that lie inside or cross.
    bool AskFirstPieces() {
        constexpr int kFirst = 4;
        for (int i = 0, count = std::min(m_inner.GetPieceCount(), kFirst); i < count; ++i) {
            const OutlinePiece piece = m_inner.GetPiece(i);
            if (Ask(StartOf(piece)) || Ask(PointAtShare(piece, 0.5))) return true;
        }
        return false;
    }

    // Whether a point of the inner contour is inside of the outer one.
    bool Ask(const DPOINT2& p) {
        const PointSide side = GetPointSide(&m_outer, p, math::kOnCurve);
        m_bIsOutside = m_bIsOutside || side == PointSide::kOutside;
        return side == PointSide::kInside;
    }

    void Cut(const Outline& inner, const Node& a, const Outline& outer, const Node& b) {
        if (!AreNear(a.box, b.box, math::kOnCurve)) return;
        if (a.level < 0 && b.level < 0) return CutPiece(inner, a.place, outer.GetPiece(b.place));
        if (a.level >= b.level)
            inner.VisitBelow(a, [&](const Node& below) { Cut(inner, below, outer, b); });
        else
            outer.VisitBelow(b, [&](const Node& below) { Cut(inner, a, outer, below); });
    }
    void CutPiece(const Outline& inner, int number, const OutlinePiece& by) {
        const OutlinePiece piece = inner.GetPiece(number);
        std::vector<double> shares{0, 1};
        if (IsLineOrArc(by)) {
            AppendMeetings(piece, std::get<SEGMENT>(by), math::kOnCurve, shares);
        } else if (const auto arcs = ArcsOf(by)) {
            for (int i = 0; i < arcs->GetSegmentCount(); ++i)
                AppendMeetings(piece, arcs->GetSegment(i), 2 * FitOf(by), shares);
        }
        for (const double share : shares) m_vecCuts.push_back({number, share});
    }

    bool AskBetweenCuts(const Outline& inner) {
        std::sort(m_vecCuts.begin(), m_vecCuts.end());
        for (std::size_t i = 1; i < m_vecCuts.size(); ++i) {
            const Place &from = m_vecCuts[i - 1], &to = m_vecCuts[i];
            if (from.piece != to.piece || !(from.share < to.share)) continue;
            if (Ask(PointAtShare(inner.GetPiece(to.piece), 0.5 * (from.share + to.share)))) return true;
        }
        return false;
    }

    const CCadObject& m_inner;
    const CCadObject& m_outer;
    std::vector<Place> m_vecCuts;
    bool m_bIsOutside = false;
};

// The contours under the tree, each with the number of its parent.
class Nesting {
public:
    explicit Nesting(const std::vector<Closed>& contours)
        : m_contours(contours), m_vecParents(contours.size(), -1), m_vecOrder(Numbers()),
          m_vecPlaces(contours.size()), m_tree(std::vector<Bounds>(contours.size())) {
        PutInOrder();
        SetPlaces();
    }

    // The number of each contour's parent, -1 for none.
    const std::vector<int>& Run() {
        for (const int outer : m_vecOrder)
            if (!m_contours[outer].box.IsEmpty()) TakeIn(outer);
        return m_vecParents;
    }
    // From the least area to the largest: a parent comes behind what lies in it.
    const std::vector<int>& GetOrder() const { return m_vecOrder; }

private:
    std::vector<int> Numbers() const {
        std::vector<int> numbers(m_contours.size());
        std::iota(numbers.begin(), numbers.end(), 0);
        return numbers;
    }
    void PutInOrder() {
        std::sort(m_vecOrder.begin(), m_vecOrder.end(), [&](int a, int b) {
            const double areaOfA = m_contours[a].area, areaOfB = m_contours[b].area;
            return areaOfA != areaOfB ? areaOfA < areaOfB : a > b;
        });
    }
    void SetPlaces() {
        Bounds all;
        for (const Closed& contour : m_contours) all.Add(contour.box);
        std::vector<std::pair<std::uint32_t, int>> row;
        row.reserve(m_contours.size());
        for (const int i : Numbers()) row.emplace_back(HilbertPlaceOf(m_contours[i].box, all), i);
        std::sort(row.begin(), row.end());
        m_vecContours.reserve(row.size());
        for (const auto& [_, contour] : row) {
            m_vecPlaces[contour] = m_vecContours.size();
            m_vecContours.push_back(contour);
        }
    }

    void TakeIn(int outer) {
        const Bounds& box = m_contours[outer].box;
        m_vecFound.clear();
        m_tree.VisitInOrder(
            [&](double lowerX, double lowerY, double upperX, double upperY) {
                return AreNear({{lowerX, lowerY}, {upperX, upperY}}, box, -math::kOnCurve);
            },
            [&](int place) { m_vecFound.push_back(m_vecContours[place]); });
        for (const int inner : m_vecFound) {
            if (!Inside(*m_contours[inner].object, *m_contours[outer].object).Answer()) continue;
            m_vecParents[inner] = outer;
            m_tree.Replace(m_vecPlaces[inner], {});
        }
        m_tree.Replace(m_vecPlaces[outer], box);
    }

    const std::vector<Closed>& m_contours;
    std::vector<int> m_vecParents;
    std::vector<int> m_vecOrder;
    std::vector<int> m_vecContours;       // in the order of the tree
    std::vector<std::size_t> m_vecPlaces; // of the contours in that order
    std::vector<int> m_vecFound;
    BoxTree m_tree;
};

} // namespace

void GetNesting(const std::list<CCadObject*>* selection, std::vector<ContourNesting>& nesting) {
    std::vector<Closed> contours;
    TreeWalk walk(selection, GroupMembers);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next())
        if (step == TreeWalk::Step::kLeaf && walk.Object()->IsClose())
            contours.push_back(Measured(*walk.Object()));
    Nesting found(contours);
    const std::vector<int>& parents = found.Run();
    std::vector<ContourNesting> answer;
    answer.reserve(contours.size());
    for (std::size_t i = 0; i < contours.size(); ++i)
        answer.push_back({contours[i].object, parents[i] < 0 ? nullptr : contours[parents[i]].object, 0});
    const std::vector<int>& order = found.GetOrder();
    for (std::size_t k = order.size(); k-- > 0;) {
        const int inner = order[k], outer = parents[inner];
        if (outer >= 0) answer[inner].nDepth = answer[outer].nDepth + 1;
    }
    nesting.swap(answer);
}

} // namespace qev
