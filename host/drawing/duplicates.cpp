// Copies are found by a number that they share: a sum of their box and of the middle of their segments' ends,
// each coordinate times a factor of its own. It does not depend on the direction of an outline nor on where a
// closed one begins, and differs little between copies that rounding has moved, which a hash does not.
// The objects are sorted by it, and each is compared with those shortly before it. Objects that are no copies
// share it hardly ever, as the factors have no simple ratios.
//
// The comparison goes along both outlines piece by piece, from every joint of the second that lies where the
// first begins, forwards and backwards.

#include "duplicates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <variant>
#include <vector>

#include "leaves.h"
#include "outline.h"

namespace host {
namespace {

using math::DPOINT2;
using qev::CCadObject;
using qev::SEGMENT;

// How far copies may lie apart besides kNoLength, as a part of the drawing's largest coordinate: thousands of
// times what doubles round, since inserts turn and scale.
constexpr double kRounding = 1e-12;

// Of objects with one number, an object is compared with so many; more are an attack on the time it takes.
constexpr std::size_t kMostCompared = 64;

// Powers of the real root of x^3 = x + 1, whose sums of small multiples are never near 0.
constexpr std::array kFactors{
    1.0, 0.7548776662466927, 0.5698402909980532, 0.4301597090019468, 0.3247179572447461, 0.2451223337533073};
constexpr double kSumOfFactors = 4; // at least: bounds how far the numbers of copies are apart

// The pieces of an outline, whose ends may lie a tolerance from those of a copy.
class Outline {
public:
    Outline(const CCadObject& object, double tolerance)
        : m_bClosed(object.IsClose()), m_dTolerance(tolerance) {
        for (int i = 0; i < object.GetPieceCount(); ++i) m_vecPieces.push_back(object.GetPiece(i));
    }

    bool IsCopyOf(const Outline& other) const {
        const std::size_t count = m_vecPieces.size();
        if (count != other.m_vecPieces.size() || m_bClosed != other.m_bClosed) return false;
        for (std::size_t first = 0; first < (m_bClosed ? count : std::min<std::size_t>(count, 1)); ++first)
            if (Follows(other, first, false) || Follows(other, count - 1 - first, true)) return true;
        return count == 0;
    }

private:
    // Whether the pieces are those of another outline from one of its pieces on, forwards or backwards.
    bool Follows(const Outline& other, std::size_t first, bool backwards) const {
        const std::size_t count = m_vecPieces.size();
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = backwards ? (first + count - i) % count : (first + i) % count;
            if (!IsSamePiece(m_vecPieces[i], other.m_vecPieces[at], backwards)) return false;
        }
        return true;
    }

    bool IsSamePiece(const qev::OutlinePiece& a, const qev::OutlinePiece& b, bool backwards) const {
        if (a.index() != b.index()) return false;
        if (const auto* segment = std::get_if<SEGMENT>(&a))
            return IsSameSegment(*segment,
                                 backwards ? std::get<SEGMENT>(b).Reversed() : std::get<SEGMENT>(b));
        return IsSameEllipse(std::get<math::EllipticArc>(a), std::get<math::EllipticArc>(b), backwards);
    }

    bool IsNear(const DPOINT2& a, const DPOINT2& b) const {
        return math::D2GetDistance(a, b) <= m_dTolerance;
    }

    bool IsSameSegment(const SEGMENT& a, const SEGMENT& b) const {
        if (a.nType != b.nType || !IsNear(a.ptStart, b.ptStart) || !IsNear(a.ptEnd, b.ptEnd)) return false;
        if (a.nType == SEGMENT::kBezier) return IsNear(a.ptCtrl1, b.ptCtrl1) && IsNear(a.ptCtrl2, b.ptCtrl2);
        return IsNear(a.GetPoint(0.5), b.GetPoint(0.5)); // of arcs, the middle tells the bulge
    }

    // Five points of a conic tell it. A whole ellipse may begin anywhere and is told by its axes.
    bool IsSameEllipse(const math::EllipticArc& a, const math::EllipticArc& b, bool backwards) const {
        const bool isWhole = std::abs(a.GetSweep()) >= math::kTwoPi;
        if (isWhole != (std::abs(b.GetSweep()) >= math::kTwoPi)) return false;
        const auto isSameAxis = [this](const DPOINT2& u, const DPOINT2& v) {
            return IsNear(u, v) || IsNear(u, -v);
        };
        if (isWhole)
            return IsNear(a.GetCenter(), b.GetCenter())
                   && ((isSameAxis(a.GetAxisA(), b.GetAxisA()) && isSameAxis(a.GetAxisB(), b.GetAxisB()))
                       || (isSameAxis(a.GetAxisA(), b.GetAxisB()) && isSameAxis(a.GetAxisB(), b.GetAxisA())));
        constexpr std::array kParts{0.0, 0.25, 0.5, 0.75, 1.0};
        return std::all_of(kParts.begin(), kParts.end(), [&](double part) {
            const double other = backwards ? 1 - part : part;
            return IsNear(a.PointAt(a.GetStart() + part * a.GetSweep()),
                          b.PointAt(b.GetStart() + other * b.GetSweep()));
        });
    }

    bool m_bClosed;
    double m_dTolerance;
    std::vector<qev::OutlinePiece> m_vecPieces;
};

bool IsCopy(const CCadObject& a, const CCadObject& b, double tolerance) {
    const bool isDot = a.GetType() == qev::kCadDot;
    const auto* text = dynamic_cast<const qev::CCadText*>(&a);
    const auto* otherText = dynamic_cast<const qev::CCadText*>(&b);
    if (isDot != (b.GetType() == qev::kCadDot) || !text != !otherText) return false;
    if (!text) return Outline(a, tolerance).IsCopyOf(Outline(b, tolerance));
    const auto& strokes = text->GetTextGroup()->GetObjectsList();
    const auto& others = otherText->GetTextGroup()->GetObjectsList();
    return std::strcmp(text->GetText(), otherText->GetText()) == 0
           && std::equal(strokes.begin(), strokes.end(), others.begin(), others.end(),
                         [tolerance](const CCadObject* x, const CCadObject* y) {
                             return Outline(*x, tolerance).IsCopyOf(Outline(*y, tolerance));
                         });
}

// The middle of a piece's ends; of an elliptic arc, which may begin anywhere, the centre.
DPOINT2 MiddleOf(const qev::OutlinePiece& piece) {
    if (const auto* segment = std::get_if<SEGMENT>(&piece))
        return math::Interpolate(segment->ptStart, segment->ptEnd, 0.5);
    return std::get<math::EllipticArc>(piece).GetCenter();
}

// The number that copies share.
double NumberOf(const CCadObject& object) {
    const qev::CadRect box = object.GetBoundRect();
    DPOINT2 middle;
    const int count = object.GetPieceCount();
    for (int i = 0; i < count; ++i) middle = middle + MiddleOf(object.GetPiece(i)) / count;
    const std::array coordinates{box.x, box.y, box.x + box.width, box.y + box.height, middle.x, middle.y};
    double sum = 0;
    for (std::size_t i = 0; i < coordinates.size(); ++i) sum += kFactors[i] * coordinates[i];
    return sum;
}

// An object with its number, and its place in drawing order.
struct Candidate {
    double number;
    std::size_t order;
    bool operator<(const Candidate& other) const {
        return number < other.number || (number == other.number && order < other.order);
    }
};

bool IsOfOneLayer(const CCadObject& a, const CCadObject& b) {
    return IsSameName(static_cast<const char*>(a.GetKey("Layer")),
                      static_cast<const char*>(b.GetKey("Layer")));
}

} // namespace

void DropDuplicates(Drawing& drawing, bool acrossLayers) {
    std::vector<LeafPlace> places;
    std::vector<Candidate> candidates;
    ForEachLeaf(drawing.root, [&](const LeafPlace& place) {
        candidates.push_back({NumberOf(place.Object()), places.size()});
        places.push_back(place);
    });
    std::sort(candidates.begin(), candidates.end());
    if (candidates.empty()) return;
    const double largest = std::max(std::abs(candidates.front().number), std::abs(candidates.back().number));
    const double tolerance = kNoLength + kRounding * largest;
    std::vector<Candidate> kept;
    for (Candidate candidate : candidates) {
        bool isDoubled = false;
        bool isDropped = false;
        std::size_t compared = 0;
        for (auto each = kept.rbegin(); each != kept.rend() && compared < kMostCompared; ++each, ++compared) {
            if (candidate.number - each->number > kSumOfFactors * tolerance) break;
            const CCadObject& object = places[candidate.order].Object();
            const CCadObject& before = places[each->order].Object();
            if (!IsCopy(object, before, tolerance)) continue;
            isDropped = acrossLayers || IsOfOneLayer(object, before);
            isDoubled = true;
            if (!isDropped) continue;
            if (each->order > candidate.order) std::swap(each->order, candidate.order);
            break;
        }
        if (isDropped) {
            places[candidate.order].Delete();
            ++drawing.counts.duplicates;
        } else {
            kept.push_back(candidate);
            if (isDoubled) ++drawing.counts.doubled;
        }
    }
}

} // namespace host
