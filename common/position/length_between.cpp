// Lengths between two positions, in two variants that callers know apart.
//
// The first measures what it is given: within one segment the length is negative backwards, a closed contour
// is gone round when the end lies in an earlier segment, and an open one has nothing to go round, so that
// only the parts of the two segments count then. The second measures a way: a closed contour always runs
// forward and equal positions are a whole round apart; on an open one the way back is minus the way there.
//
// On one segment the length is its own times the difference of the ratios. Between segments it is the
// difference of two lengths from the contour's start, which a contour that was asked before knows without
// adding them up.
//
// Error: the lengths from the start round by about 1e-16 of the contour's length for each segment. Adding the
// segments between the positions would round less where these are close together on a long contour; it was
// rejected, since it costs a step for each of them.

#include <optional>

#include <qev/measure/measures.h>
#include <qev/position/length_between.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/position_order.h"
#include "length_up_to.h"

namespace qev {
namespace {

using math::POLYPOS;
using Length = std::optional<double>;

// Lengths on one contour.
class Stretch {
public:
    Stretch(const CCadObject& contour, const POLYPOS& from, const POLYPOS& to)
        : m_lengths(contour), m_from(from), m_to(to) {}

    // The end may be (count, 0), as merged ranges write it.
    bool IsOnContour() const {
        const int count = m_lengths.GetCount();
        return m_from.nSegIndex >= 0 && m_from.nSegIndex < count && m_to.nSegIndex >= 0
               && m_to.nSegIndex <= count;
    }

    double WithinSegment() const { return m_lengths.Of(m_from.nSegIndex) * (m_to.dRatio - m_from.dRatio); }

    // Forward to a later segment; over the contour's start when `wraps`.
    double OverJoints(bool wraps) const {
        const double ahead = ContourLengthUpTo(m_lengths, m_to) - ContourLengthUpTo(m_lengths, m_from);
        return wraps ? ahead + m_lengths.Total() : ahead;
    }

    // The rest of the first segment and the beginning of the second one, nothing between them.
    double OfBothParts() const {
        return m_lengths.Of(m_from.nSegIndex) * (1 - m_from.dRatio)
               + m_lengths.Of(m_to.nSegIndex) * m_to.dRatio;
    }

private:
    RunningLengths m_lengths;
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
        const bool isBack = to.nSegIndex < from.nSegIndex;
        return isBack && !object->IsClose() ? stretch.OfBothParts() : stretch.OverJoints(isBack);
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
