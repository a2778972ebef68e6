// Lengths between two positions, in two variants that callers know apart.
//
// The first measures what it is given: within one segment the length is negative backwards, a closed contour
// is gone round when the end lies in an earlier segment, and an open one has nothing to go round, so that
// only the parts of the two segments count then. The second measures a way: a closed contour always runs
// forward and equal positions are a whole round apart; on an open one the way back is minus the way there.
//
//
// Error: the sums round by about 1e-16 of the length for each segment. The difference of two lengths from the
// start was rejected: it rounds by the whole contour even where the positions are close together.

#include <optional>

#include <qev/measure/measures.h>
#include <qev/position/length_between.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/position_order.h"

namespace qev {
namespace {

using math::POLYPOS;
using Length = std::optional<double>;

// Lengths on one contour.
class Stretch {
public:
    Stretch(const CCadObject& contour, const POLYPOS& from, const POLYPOS& to)
        : m_contour(contour), m_nCount(contour.GetSegmentCount()), m_from(from), m_to(to) {}

    bool IsOnContour() const { return HasSegment(m_from.nSegIndex) && HasSegment(m_to.nSegIndex); }

    double WithinSegment() const { return LengthOf(m_from.nSegIndex) * (m_to.dRatio - m_from.dRatio); }

    // From one segment into another with the whole segments between; over the contour's start when `wraps`.
    double OverJoints(bool wraps) const {
        double length =
            LengthOf(m_from.nSegIndex) * (1 - m_from.dRatio) + LengthOf(m_to.nSegIndex) * m_to.dRatio;
        AddWhole(wraps, length);
        return length;
    }

private:
    bool HasSegment(int i) const { return i >= 0 && i < m_nCount; }
    double LengthOf(int i) const { return m_contour.GetSegment(i).GetLength(); }

    void AddWhole(bool wraps, double& length) const {
        int i = m_from.nSegIndex + 1;
        if (wraps)
            for (; i < m_nCount; ++i) length += LengthOf(i);
        for (i = wraps ? 0 : i; i < m_to.nSegIndex; ++i) length += LengthOf(i);
    }

    const CCadObject& m_contour;
    int m_nCount;
    POLYPOS m_from;
    POLYPOS m_to;
};

double OnOpenPiece(double length, const POLYPOS& from, const POLYPOS& to) {
    return length * (to.dRatio - from.dRatio);
}

// A circle and an ellipse run forward over their start when the end lies before the start or on it.
double OnClosedPiece(double length, const POLYPOS& from, const POLYPOS& to) {
    return to.dRatio > from.dRatio ? length * (to.dRatio - from.dRatio)
                                   : length * (to.dRatio + 1 - from.dRatio);
}

// What both variants do with an object of any kind. They differ on contours alone: `onContour` gives the
// length from the stretch, whose positions lie on the contour.
template <class OnContour>
Length Between(const CCadObject* object, const POLYPOS& from, const POLYPOS& to, const OnContour& onContour) {
    return VisitCad(
        object, kBetweenContours,
        Handle{[&](const SinglePiece auto& piece) { return OnOpenPiece(piece.GetLength(), from, to); },
               [&](const CCadCircle& circle) { return OnClosedPiece(circle.GetLength(), from, to); },
               [&](const CCadEllipse& ellipse) { return OnClosedPiece(ellipse.GetLength(), from, to); },
               [&](const Contour& contour) {
                   const Stretch stretch(contour.object, from, to);
                   return stretch.IsOnContour() ? Length(onContour(stretch)) : Length();
               },
               Others<CCadDot>(Length())});
}

Length FirstVariant(const CCadObject* object, const POLYPOS& from, const POLYPOS& to) {
    return Between(object, from, to, [&](const Stretch& stretch) {
        if (from.nSegIndex == to.nSegIndex) return stretch.WithinSegment();
        return stretch.OverJoints(object->IsClose() && to.nSegIndex < from.nSegIndex);
    });
}

Length SecondVariant(const CCadObject* object, const POLYPOS& from, const POLYPOS& to) {
    if (!object) return std::nullopt;
    const bool closed = object->IsClose();
    if (IsSamePos(from, to)) return closed ? GetCadLength(object) : 0;
    const bool backwards = IsBefore(to, from);
    if (!closed && backwards) {
        const Length forwards = SecondVariant(object, to, from);
        return forwards ? Length(-*forwards) : Length();
    }
    return Between(object, from, to, [&](const Stretch& stretch) {
        if (from.nSegIndex == to.nSegIndex && !backwards) return stretch.WithinSegment();
        return stretch.OverJoints(backwards);
    });
}

} // namespace

void GetLineLength_Dot2Dot(const CCadObject* object, const POLYPOS& from, const POLYPOS& to,
                           double& dLength) {
    if (const Length length = FirstVariant(object, from, to)) dLength = *length;
}

void GetLineLength_Dot2Dot2(const CCadObject* object, const POLYPOS& from, const POLYPOS& to,
                            double& dLength) {
    if (const Length length = SecondVariant(object, from, to)) dLength = *length;
}

} // namespace qev
