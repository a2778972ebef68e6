#include <optional>

#include <qev/measure/measures.h>
#include <qev/position/length_between.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"

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

    // From one segment into another, with the whole segments between, over the start when `wraps`.
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

bool LiesBefore(const POLYPOS& a, const POLYPOS& b) {
    return a.nSegIndex < b.nSegIndex || (a.nSegIndex == b.nSegIndex && a.dRatio < b.dRatio);
}

double OnOpenPiece(double length, const POLYPOS& from, const POLYPOS& to) {
    return length * (to.dRatio - from.dRatio);
}

double OnClosedPiece(double length, const POLYPOS& from, const POLYPOS& to) {
    return to.dRatio > from.dRatio ? length * (to.dRatio - from.dRatio)
                                   : length * (to.dRatio + 1 - from.dRatio);
}

// `onContour` is where the two variants differ.
template <class OnContour>
Length Between(const CCadObject* object, const POLYPOS& from, const POLYPOS& to, const OnContour& onContour) {
    return VisitCad(
        object, kBetweenContours, Length(),
        Handle{
            [&](const SinglePiece auto& piece) -> Length { return OnOpenPiece(piece.GetLength(), from, to); },
            [&](const CCadCircle& circle) -> Length { return OnClosedPiece(circle.GetLength(), from, to); },
            [&](const CCadEllipse& ellipse) -> Length {
                return OnClosedPiece(ellipse.GetLength(), from, to);
            },
            [&](const Contour& contour) {
                const Stretch stretch(contour.object, from, to);
                return stretch.IsOnContour() ? Length(onContour(stretch)) : Length();
            }});
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
    if (from.nSegIndex == to.nSegIndex && IsSame(from.dRatio, to.dRatio))
        return closed ? GetCadLength(object) : 0;
    const bool backwards = LiesBefore(to, from);
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
