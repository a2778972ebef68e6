// A digest answers one question: does another system compute the same bits? So it needs results of everything
// that computes, on numbers that are the same everywhere, and a hash in which a single bit shows. It says
// nothing about whether the results are right; the tests do.
//
// The numbers come from SplitMix64, integer arithmetic alone, and reach a range by one product and one sum.
// Objects are made of such numbers without any elementary function, so that a difference is the library's and
// not the digest's.

#include "digest.h"

#include <bit>
#include <cmath>
#include <limits>

namespace digest {
namespace {

// Appends a line, an arc or, on an extended contour, a Bezier piece to an end point.
template <class Contour>
void AddPiece(Sequence& random, Contour& contour, const math::DPOINT2& end) {
    const int kind = random.Int(3);
    if constexpr (std::is_same_v<Contour, qev::CCadPolylineEx>)
        if (kind == 2) {
            const math::DPOINT2 ctrl1 = random.Point();
            contour.AddBezier(ctrl1, random.Point(), end);
            return;
        }
    if (kind == 0)
        contour.AddLine(end);
    else
        contour.AddArc(end, random.Bulge());
}

// A contour of so many segments. The last one leads back to the start in about every third contour.
template <class Contour>
std::unique_ptr<Contour> Make(Sequence& random, int segments) {
    auto contour = std::make_unique<Contour>(false);
    const math::DPOINT2 start = random.Point();
    contour->SetStartPoint(start);
    for (int i = 1; i < segments; ++i) AddPiece(random, *contour, random.Point());
    AddPiece(random, *contour, random.Int(3) == 0 ? start : random.Point());
    return contour;
}

} // namespace

void Digest::Add(double value) {
    if (std::isnan(value)) value = std::numeric_limits<double>::quiet_NaN();
    const auto bits = std::bit_cast<std::uint64_t>(value);
    constexpr std::uint64_t kPrime = 0x100000001b3;
    for (int shift = 0; shift < 64; shift += 8) m_nHash = (m_nHash ^ (bits >> shift & 0xff)) * kPrime;
    ++m_nCount;
}

void Digest::Add(const math::DPOINT2& p) {
    Add(p.x);
    Add(p.y);
}

void Digest::Add(const math::Bounds& box) {
    Add(box.lower);
    Add(box.upper);
}

void Digest::Add(const qev::SEGMENT& segment) {
    for (const math::DPOINT2& p : {segment.ptStart, segment.ptEnd, segment.ptCtrl1, segment.ptCtrl2}) Add(p);
    Add(segment.dBulge);
}

std::uint64_t Sequence::Next() {
    std::uint64_t z = m_nState += 0x9e3779b97f4a7c15;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
    z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
    return z ^ (z >> 31);
}

double Sequence::Uniform(double low, double high) {
    return low + (high - low) * (static_cast<double>(Next() >> 11) * 0x1p-53);
}

double Sequence::Bulge() {
    const double mantissa = Uniform(1, 2); // drawn before the exponent: arguments have no order
    const double size = std::ldexp(mantissa, Int(26) - 24);
    return Int(2) == 0 ? size : -size;
}

std::unique_ptr<qev::CCadPolyline> Sequence::Polyline(int segments) {
    return Make<qev::CCadPolyline>(*this, segments);
}

std::unique_ptr<qev::CCadPolylineEx> Sequence::PolylineEx(int segments) {
    return Make<qev::CCadPolylineEx>(*this, segments);
}

std::unique_ptr<qev::CCadObject> Sequence::Object() {
    const math::DPOINT2 p = Point();
    const double a = Uniform(1, 50);
    const double b = a * Uniform(0.01, 2);
    const double turn = Uniform(-7, 7);
    const double sweep = Uniform(0.1, 6);
    const bool ccw = Int(2) == 0;
    switch (m_nObjects++ % 8) {
    case 0:
        return std::make_unique<qev::CCadLine>(p, Point(), false);
    case 1:
        return std::make_unique<qev::CCadCircle>(p, a, ccw, false);
    case 2:
        return std::make_unique<qev::CCadArc>(p, a, turn, sweep, ccw, false);
    case 3:
        return std::make_unique<qev::CCadEllipse>(p, a, b, turn, ccw, false);
    case 4:
        return std::make_unique<qev::CCadEllipseArc>(p, a, b, turn, turn / 2, sweep, ccw, false);
    case 5:
        return std::make_unique<qev::CCadRectangle>(p, a, b, turn, false);
    case 6:
        return Polyline(1 + Int(6));
    default:
        return PolylineEx(1 + Int(6));
    }
}

} // namespace digest
