/// \file
/// Bytes as numbers, positions, contours and drawings, and the check of what must hold.
#pragma once

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string_view>

#include <qev/qev.h>
#include <qevmath/qevmath.h>

namespace fuzz {

using math::DPOINT2, math::POLYPOS, math::PosRange;

/// Throws unless a fact holds, which fails the test and ends the fuzz program.
inline void Expect(bool holds, const char* fact) {
    if (!holds) throw std::logic_error(fact);
}

/// The bytes of one run, taken from the front; behind their end all are 0. The first one decides whether the
/// numbers are tame (finite, up to some hundred mm) or now and then hostile.
class Input {
public:
    /// The bytes have to outlive it.
    Input(const unsigned char* data, std::size_t size)
        : m_bytes(reinterpret_cast<const char*>(data), size), m_bHostile(Int(0, 3) == 3) {}

    /// Whether all bytes are taken.
    bool IsEmpty() const { return m_bytes.empty(); }
    /// Whether special values are among the numbers.
    bool IsHostile() const { return m_bHostile; }
    /// The bytes that are left, which it takes.
    std::string_view Rest() { return std::exchange(m_bytes, {}); }
    /// An integer from low to high, both included, which are at most 65,535 apart.
    int Int(int low, int high) { return low + (high - low < 256 ? Byte() : Word()) % (high - low + 1); }
    /// True or false.
    bool Coin() { return Int(0, 1) == 1; }
    /// A share in [0, 1]: of eighths, near one of them, or any.
    double Share() {
        const double off = std::array{0.0, 4e-10, 3e-9, 1e-5}[Int(0, 3)];
        return Coin() ? Word() / 65535.0 : std::abs(Int(0, 8) / 8.0 - off);
    }
    /// A coordinate or length from -extent to extent (mm), half of them whole numbers. When hostile one in
    /// eight is special.
    double Number(double extent = 100) {
        if (m_bHostile && Int(0, 7) == 7) return Special();
        const double number = extent * (Word() / 32767.5 - 1);
        return Coin() ? std::round(number / 10) : number;
    }
    /// A length from 0.1 to 100 mm; when hostile a Number.
    double Size() { return m_bHostile ? Number() : 0.1 + std::abs(Number(99)); }
    /// A point of the square of 200 mm round the origin, made of Numbers.
    DPOINT2 Point() {
        const double x = Number();
        return {x, Number()};
    }
    /// A bulge of magnitude 1e-9 to 5, of either sign; when hostile a Number at times.
    double Bulge() {
        if (m_bHostile && Coin()) return Number(5);
        const double size = Coin() ? std::pow(10, -Int(0, 90) / 10.0) : Int(1, 20) / 4.0;
        return Coin() ? size : -size;
    }
    /// A position on a contour of so many segments, in normal form unless it is the end.
    POLYPOS Pos(const qev::CCadObject& contour) {
        POLYPOS pos{Int(0, std::max(0, qev::GetCadSegments(&contour) - 1)), Share()};
        qev::NormalizePos(&contour, pos);
        return pos;
    }
    /// Appends a line, an arc or, to an extended polyline, a Bezier piece, at times one without length and
    /// at times one back to the start.
    template <class Contour>
    void AddSegment(Contour& contour) {
        const int kind = Int(0, std::is_same_v<Contour, qev::CCadPolyline> ? 1 : 2), to = Int(0, 9);
        const DPOINT2 end = to == 0 ? contour.GetEndPoint() : to == 1 ? contour.GetStartPoint() : Point();
        if constexpr (std::is_same_v<Contour, qev::CCadPolylineEx>)
            if (kind == 2) {
                const DPOINT2 ctrl1 = Point();
                contour.AddBezier(ctrl1, Point(), end);
            }
        if (kind == 0) contour.AddLine(end);
        if (kind == 1) contour.AddArc(end, Bulge());
    }
    /// A contour of one to so many segments, half of them closed.
    template <class Contour>
    std::unique_ptr<Contour> Polyline(int most) {
        auto contour = std::make_unique<Contour>();
        contour->SetStartPoint(Point());
        for (int count = Int(1, most); count > 0; --count) AddSegment(*contour);
        if (Coin()) contour->AddLine(contour->GetStartPoint());
        return contour;
    }
    /// An object of any kind that has an outline.
    std::unique_ptr<qev::CCadObject> Object() {
        using namespace qev;
        const int kind = Int(0, 7);
        if (kind == 0) return Polyline<CCadPolyline>(8);
        if (kind == 1) return Polyline<CCadPolylineEx>(3);
        const DPOINT2 p = Point();
        const double a = Size(), b = Size(), start = Number(9), sweep = 6.2 * Share();
        const bool ccw = Coin();
        if (kind == 2) return std::make_unique<CCadLine>(p, Point());
        if (kind == 3) return std::make_unique<CCadCircle>(p, a, ccw);
        if (kind == 4) return std::make_unique<CCadArc>(p, a, start, sweep, ccw);
        if (kind == 5) return std::make_unique<CCadEllipse>(p, a, b, start, ccw);
        if (kind == 6) return std::make_unique<CCadEllipseArc>(p, a, b, start, -start, sweep, ccw);
        return std::make_unique<CCadRectangle>(p, a, b, start);
    }

private:
    int Byte() {
        if (m_bytes.empty()) return 0;
        const auto byte = static_cast<unsigned char>(m_bytes.front());
        m_bytes.remove_prefix(1);
        return byte;
    }
    int Word() {
        const int high = Byte();
        return 256 * high + Byte();
    }
    double Special() {
        using Limits = std::numeric_limits<double>;
        constexpr std::array kSpecial{Limits::quiet_NaN(),
                                      Limits::infinity(),
                                      0.0,
                                      -0.0,
                                      1e300,
                                      Limits::denorm_min(),
                                      1e-9,
                                      1e9,
                                      5e-7,
                                      1e100,
                                      1e-160};
        const double special = kSpecial[Int(0, kSpecial.size() - 1)];
        return Coin() ? special : -special;
    }

    std::string_view m_bytes;
    bool m_bHostile;
};

/// The point of an object's outline at a share in [0, 1], each of its pieces over an equal part.
inline DPOINT2 Along(const qev::CCadObject& object, double share) {
    const double at = share * object.GetPieceCount();
    const int i = std::min(static_cast<int>(at), object.GetPieceCount() - 1);
    const qev::OutlinePiece piece = object.GetPiece(i);
    if (const auto* ellipse = std::get_if<math::EllipticArc>(&piece))
        return ellipse->PointAt(ellipse->GetStart() + (at - i) * ellipse->GetSweep());
    const auto& segment = std::get<qev::SEGMENT>(piece);
    return segment.nType == qev::SEGMENT::kBezier ? segment.GetBezier().PointAt(at - i)
                                                  : segment.GetPoint(at - i);
}

/// The length of a contour in mm up to a position, summed segment by segment.
inline double LengthTo(const qev::CCadObject& contour, const POLYPOS& pos) {
    double length = contour.GetSegment(pos.nSegIndex).GetLength() * pos.dRatio;
    for (int i = 0; i < pos.nSegIndex; ++i) length += contour.GetSegment(i).GetLength();
    return length;
}

} // namespace fuzz
