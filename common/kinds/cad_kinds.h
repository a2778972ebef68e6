/// \file
/// The library's knowledge of kinds: what shape each kind code has, which codes each family of functions
/// serves, and the one place where an object is used through its class.
#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <list>
#include <type_traits>

#include <qevdata/arc.h>
#include <qevdata/ellipse.h>
#include <qevdata/group.h>
#include <qevdata/kinds.h>
#include <qevdata/line.h>

namespace qev {

/// What an object of a kind is to this library.
enum class Shape {
    kNone,
    kDot,
    kLine,
    kCircle,
    kArc,
    kEllipse,
    kEllipseArc,
    kContour,
    kGroup,
    kRelationGroup,
    kText
};

/// A kind code and what it stands for.
struct KindRow {
    cad_t code;
    Shape shape;
};

/// Every kind that has a shape; all other codes have none.
inline constexpr std::array kKinds{
    KindRow{kCadDot, Shape::kDot},
    KindRow{kCadLine, Shape::kLine},
    KindRow{kCadCircle, Shape::kCircle},
    KindRow{kCadArc, Shape::kArc},
    KindRow{kCadEllipse, Shape::kEllipse},
    KindRow{kCadEllipseArc, Shape::kEllipseArc},
    KindRow{kCad1800, Shape::kContour},
    KindRow{kCadRectangle, Shape::kContour},
    KindRow{kCad1820, Shape::kContour},
    KindRow{kCad1830, Shape::kContour},
    KindRow{kCadPolyline, Shape::kContour},
    KindRow{kCadCurve, Shape::kContour},
    KindRow{kCadPolylineEx, Shape::kContour},
    KindRow{kCadGroup, Shape::kGroup},
    KindRow{kCadGroupLike, Shape::kGroup},
    KindRow{kCadRelationGroup, Shape::kRelationGroup},
    KindRow{kCadText, Shape::kText},
};

/// Whether a code is written as those of kKinds are, 0x1 and two digits and 0.
constexpr bool IsKindCode(cad_t code) {
    return (code & ~0xFF0) == 0x1000;
}

/// The shapes of all such codes by their two digits, as every question to an object begins with its shape.
inline constexpr auto kShapes = [] {
    std::array<Shape, 0x100> shapes{};
    for (const KindRow& row : kKinds) shapes[row.code / 0x10 % 0x100] = row.shape;
    return shapes;
}();
static_assert(std::all_of(kKinds.begin(), kKinds.end(),
                          [](const KindRow& row) { return IsKindCode(row.code); }));

/// What the objects of a kind are; kNone for a code that the library does not know.
constexpr Shape ShapeOf(cad_t code) {
    return IsKindCode(code) ? kShapes[code / 0x10 % 0x100] : Shape::kNone;
}

/// A set of contour kinds, one bit for each code from 0x1800 to 0x1870. Other codes are never in it.
class KindSet {
public:
    constexpr KindSet(std::initializer_list<cad_t> codes) {
        for (const cad_t code : codes) m_nBits |= Bit(code);
    }
    constexpr bool Has(cad_t code) const { return (m_nBits & Bit(code)) != 0; }
    constexpr KindSet operator+(cad_t code) const { return KindSet(m_nBits | Bit(code)); }
    constexpr KindSet operator-(cad_t code) const { return KindSet(m_nBits & ~Bit(code)); }

private:
    constexpr explicit KindSet(std::uint32_t bits) : m_nBits(bits) {}
    static constexpr std::uint32_t Bit(cad_t code) {
        const int place = (code - kCad1800) / 0x10;
        return code >= kCad1800 && place < 8 && code % 0x10 == 0 ? 1u << place : 0;
    }
    std::uint32_t m_nBits = 0;
};

// The functions do not agree on which kinds are segment contours. That is intended: each set is what its
// functions have always served, and callers sort their objects by it.

/// Counts, ends, segment lengths, directions: the kinds with a segment interface.
inline constexpr KindSet kSegmentContours{kCadRectangle, kCad1820, kCad1830, kCadPolyline, kCadPolylineEx};
/// Total length: 0x1800 and 0x1850 know theirs though they have no segments.
inline constexpr KindSet kLengthContours = kSegmentContours + kCad1800 + kCadCurve;
/// Direction at a position and length up to it: without the extended polyline, which is younger than these
/// functions, and with the curve, which answers one segment.
inline constexpr KindSet kDirectionContours = kSegmentContours - kCadPolylineEx + kCadCurve;
/// Point at a position: whatever answers GetSegment, 0x1800 included.
inline constexpr KindSet kPointContours = kSegmentContours + kCad1800;
/// Picking: a curve is picked by the segment that it answers.
inline constexpr KindSet kPickedContours = kSegmentContours + kCadCurve;
/// Ratio of a point on one segment: lines and arcs only, so that the extended polyline is left out.
inline constexpr KindSet kRatioContours = kSegmentContours - kCadPolylineEx;
/// Length between two positions: lines and arcs only, so that the extended polyline is left out, and 0x1800,
/// which answers GetSegment.
inline constexpr KindSet kBetweenContours = kRatioContours + kCad1800;

/// A contour of the set that a visit asked for, used through the virtual operations of CCadObject: a host's
/// own kinds need not share a class.
struct Contour {
    const CCadObject& object;
};

/// What a visit finds when there is nothing to serve: null, a container, a text, a kind without a shape, or a
/// contour that the set does not have.
struct NotServed {};

/// Whether T is one of the classes listed.
template <class T, class... Classes>
concept OneOf = (std::same_as<T, Classes> || ...);

/// The kinds that are one piece.
template <class T>
concept SinglePiece = OneOf<T, CCadLine, CCadCircle, CCadArc, CCadEllipse, CCadEllipseArc>;

/// Joins handlers for classes into one visitor.
template <class... Handlers>
struct Handle : Handlers... {
    using Handlers::operator()...;
};
template <class... Handlers>
Handle(Handlers...) -> Handle<Handlers...>; // deduced for aggregates from gcc 11 and clang 17 on

/// The handler that completes a visitor: it answers one value for NotServed and for the classes that are
/// named as left out. Naming them is what makes a kind that somebody forgot a compile error.
template <class... LeftOut, class Result>
constexpr auto Others(Result result) {
    return [result](const OneOf<NotServed, LeftOut...> auto&) { return result; };
}
/// The handler that completes a visitor without an answer: it does nothing for NotServed and for the classes
/// that are named as left out.
template <class... LeftOut>
constexpr auto Others() {
    return [](const OneOf<NotServed, LeftOut...> auto&) {};
}

/// Calls the handler for what an object is: its class for a dot or a single-piece kind, Contour for a contour
/// of the set, NotServed for everything else. A visitor has a handler for each of these classes (Others names
/// those that it leaves out). The answer has the type that the visitor answers for NotServed.
template <class Visitor>
auto VisitCad(const CCadObject* object, KindSet contours, const Visitor& visitor)
    -> std::invoke_result_t<const Visitor&, NotServed> {
    if (!object) return visitor(NotServed{});
    const cad_t code = object->GetType();
    switch (ShapeOf(code)) {
    case Shape::kDot:
        return visitor(static_cast<const CCadDot&>(*object));
    case Shape::kLine:
        return visitor(static_cast<const CCadLine&>(*object));
    case Shape::kCircle:
        return visitor(static_cast<const CCadCircle&>(*object));
    case Shape::kArc:
        return visitor(static_cast<const CCadArc&>(*object));
    case Shape::kEllipse:
        return visitor(static_cast<const CCadEllipse&>(*object));
    case Shape::kEllipseArc:
        return visitor(static_cast<const CCadEllipseArc&>(*object));
    case Shape::kContour:
        if (contours.Has(code)) return visitor(Contour{*object});
        break;
    case Shape::kGroup:
    case Shape::kRelationGroup:
    case Shape::kText:
    case Shape::kNone:
        break;
    }
    return visitor(NotServed{});
}

/// Whether a code is that of a container by the bits that containers share. 0x1B00 passes and is none, so
/// that the object's class is looked at before its members are.
constexpr bool IsContainerCode(cad_t code) {
    constexpr cad_t kContainerBits = 0x1900;
    return (code & kContainerBits) == kContainerBits;
}

/// Whether a code is that of a group or a relation group.
constexpr bool IsGroupCode(cad_t code) {
    return ShapeOf(code) == Shape::kGroup || ShapeOf(code) == Shape::kRelationGroup;
}

/// Whether an object is a plain group.
inline bool IsPlainGroup(const CCadObject& object) {
    return object.GetType() == kCadGroup && dynamic_cast<const CCadGroup*>(&object);
}

// What a TreeWalk descends into. Each answers the members, or null for a leaf.

/// Plain groups.
inline const std::list<CCadObject*>* GroupMembers(const CCadObject& object) {
    return IsPlainGroup(object) ? object.GetMembers() : nullptr;
}
/// Plain groups and texts.
inline const std::list<CCadObject*>* GroupAndTextMembers(const CCadObject& object) {
    return ShapeOf(object.GetType()) == Shape::kText ? object.GetMembers() : GroupMembers(object);
}
/// Groups and relation groups by their codes: what a selection for picking looks into. A host's own container
/// has another code and is selected as it is.
inline const std::list<CCadObject*>* SelectedMembers(const CCadObject& object) {
    return IsGroupCode(object.GetType()) ? object.GetMembers() : nullptr;
}
/// Every container and text.
inline const std::list<CCadObject*>* ContainerMembers(const CCadObject& object) {
    const cad_t code = object.GetType();
    return IsContainerCode(code) || ShapeOf(code) == Shape::kText ? object.GetMembers() : nullptr;
}

} // namespace qev
