/// \file
/// Affine maps of the plane, as nested inserts of blocks make them.
#pragma once

#include <cmath>

#include <qevmath/qevmath.h>

namespace host {

/// Whether the ellipse with two conjugate half diameters is a circle: they are at right angles and equally
/// long, to rounding.
inline bool IsRound(const math::DPOINT2& u, const math::DPOINT2& v) {
    constexpr double kRounding = 1e-9; // of the sum of squares: what some nested maps leave of equality
    const double size = math::Dot(u, u) + math::Dot(v, v);
    return std::abs(math::Dot(u, v)) <= kRounding * size
           && std::abs(math::Dot(u, u) - math::Dot(v, v)) <= kRounding * size;
}

/// The map p -> x*p.x + y*p.y + shift: what becomes of the two axes and of the origin. By default nothing
/// moves.
struct Affine {
    math::DPOINT2 x{1, 0}; ///< where (1, 0) points
    math::DPOINT2 y{0, 1}; ///< where (0, 1) points
    math::DPOINT2 shift;   ///< where the origin goes

    /// What becomes of a vector: it is turned and scaled, and not shifted.
    math::DPOINT2 Vector(const math::DPOINT2& v) const { return x * v.x + y * v.y; }

    /// What becomes of a point.
    math::DPOINT2 Point(const math::DPOINT2& p) const { return Vector(p) + shift; }

    /// The map that does first `inner`, then this.
    Affine operator*(const Affine& inner) const {
        return {Vector(inner.x), Vector(inner.y), Point(inner.shift)};
    }

    /// Whether two maps do the same to vectors, to the bit.
    bool HasSameVectors(const Affine& other) const {
        return x.x == other.x.x && x.y == other.x.y && y.x == other.y.x && y.y == other.y.y;
    }

    /// Whether two maps are the same, to the bit.
    bool operator==(const Affine& other) const {
        return HasSameVectors(other) && shift.x == other.shift.x && shift.y == other.shift.y;
    }

    /// Whether the map turns counter-clockwise into clockwise.
    bool IsMirrored() const { return math::Cross(x, y) < 0; }

    /// Whether circles stay circles.
    bool IsSimilarity() const { return IsRound(x, y); }

    /// Whether the map keeps every coordinate of a drawing (up to 1e9 mm) far from overflow, squares
    /// included.
    bool IsUsable() const {
        constexpr double kLargest = 1e12; // mm, or mm for each mm
        return math::Norm(x) <= kLargest && math::Norm(y) <= kLargest && math::Norm(shift) <= kLargest;
    }

    /// The map that moves everything by a vector.
    static Affine Translation(const math::DPOINT2& shift) { return {{1, 0}, {0, 1}, shift}; }

    /// The map that scales along the axes, from the origin; a negative factor mirrors.
    static Affine Scale(double sx, double sy) { return {{sx, 0}, {0, sy}, {}}; }

    /// The map that turns everything round the origin, counter-clockwise by an angle in radians.
    static Affine Rotation(double angle) {
        return {math::Rotated({1, 0}, angle), math::Rotated({0, 1}, angle), {}};
    }
};

} // namespace host
