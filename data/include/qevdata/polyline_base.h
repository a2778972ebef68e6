/// \file
/// What the two kinds of polylines have in common.
#pragma once

#include <atomic>

#include <qevdata/multi_segments.h>
#include <qevmath/bounds.h>

class gp_Trsf2d;

namespace qev {

class ContourIndex;
class Similarity;

/// A contour that is drawn from a start point on, segment after segment. It keeps what it works out of its
/// segments from the second question on, and forgets it with every change; so every change goes through a
/// method of the contour.
class QEVDATA_API CCadPolylineBase : public CCadMultiSegments {
public:
    /// Forgets what was worked out.
    ~CCadPolylineBase() override;

    /// Runs the contour the other way; with the flag, IsNormalDir toggles too. Throws std::bad_alloc when
    /// memory is refused, and the contour is as before.
    void ReverseDir(bool toggleNormalDir);
    /// Whether the contour still runs the way it was drawn; true at first.
    bool IsNormalDir() const { return m_bNormalDir; }
    /// Moves the contour by a similarity; a mirror turns its arcs.
    void ApplyTransform(const gp_Trsf2d& transform);
    /// Moves the contour by a similarity, as ApplyTransform does; callers know it by both names.
    void ApplyTransform2D(const gp_Trsf2d& transform);

    /// Whether there are segments and the last one ends within 1e-6 mm of where the first one starts.
    bool IsClose() const override;
    /// Where the first segment starts; without segments the point that was set, or math::NoPoint().
    math::DPOINT2 GetStartPoint() const override;

protected:
    /// Without a start point, with a fresh id or with the id 0.
    explicit CCadPolylineBase(bool newId);
    /// Copies everything but what was worked out.
    CCadPolylineBase(const CCadPolylineBase& other);

    /// Where the first segment starts, (0, 0) until it is set.
    const math::DPOINT2& StartOfSegments() const { return m_ptStart; }
    /// Sets where the first segment starts, which from then on is a start point without segments too.
    void MoveStart(const math::DPOINT2& start);
    /// Forgets what was worked out: the contour is being changed. Nobody may ask it at the same time.
    void DropIndex();

private:
    friend class ContourIndex; // which hands out what is kept inside the library
    // The index from the second time on that it is asked for, since many contours are asked once.
    const ContourIndex* Index() const;
    // The box from the second time on that it is asked for: a pick asks all contours of a drawing, most of
    // which need no index.
    const math::Bounds* Box() const;
    // How far the box has come; it is there when m_bKeepsBox says so.
    enum class BoxState : char { kNotAsked, kAsked, kMade };
    // Turns the segments and the order in which they are held; there is at least one.
    virtual void ReverseSegments() = 0;
    // Moves the segments, the start point excepted.
    virtual void MoveSegments(const Similarity& similarity) = 0;

    mutable math::Bounds m_box;
    math::DPOINT2 m_ptStart;
    bool m_bHasStart = false;
    bool m_bNormalDir = true;
    mutable std::atomic<bool> m_bAsked = false;
    mutable std::atomic<BoxState> m_boxState = BoxState::kNotAsked;
    mutable std::atomic<const ContourIndex*> m_pIndex = nullptr; // owned
};

} // namespace qev
