/// \file
/// Affine maps of the plane, as nested inserts make them.
#pragma once

#include <cmath>

#include <qevmath/qevmath.h>

namespace host {

/// p -> x*p.x + y*p.y + shift: what the axes and the origin become.
struct Affine {
    math::DPOINT2 x{1, 0};
    math::DPOINT2 y{0, 1};
    math::DPOINT2 shift;

    math::DPOINT2 Vector(const math::DPOINT2& v) const { return x * v.x + y * v.y; }
    math::DPOINT2 Point(const math::DPOINT2& p) const { return Vector(p) + shift; }
    /// First `inner`, then this.
    Affine operator*(const Affine& inner) const {
        return {Vector(inner.x), Vector(inner.y), Point(inner.shift)};
    }

    bool IsMirrored() const { return math::Cross(x, y) < 0; }
    /// Whether circles stay circles.
    bool IsSimilarity() const {
        constexpr double kSameScale = 1e-9; // relative, the rounding of a few products
        const double size = math::Dot(x, x) + math::Dot(y, y);
        return std::abs(math::Dot(x, y)) <= kSameScale * size
               && std::abs(math::Dot(x, x) - math::Dot(y, y)) <= kSameScale * size;
    }

    /// Whether the map keeps coordinates of a drawing (up to 1e9) far from overflow.
    bool IsUsable() const {
        constexpr double kLargest = 1e12;
        return math::Norm(x) <= kLargest && math::Norm(y) <= kLargest && math::Norm(shift) <= kLargest;
    }

    static Affine Translation(const math::DPOINT2& shift) { return {{1, 0}, {0, 1}, shift}; }
    static Affine Scale(double sx, double sy) { return {{sx, 0}, {0, sy}, {}}; }
    static Affine Rotation(double angle) {
        return {math::Rotated({1, 0}, angle), math::Rotated({0, 1}, angle), {}};
    }
};

} // namespace host
