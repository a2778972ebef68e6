// The outline is taken piece by piece, so that nothing but lines, arcs, ellipses and Bezier pieces has to be
// known here. Lines, and arcs where they may stay, are copied; a chord of an arc has a closed form, R (1 -
// cos(delta)) from its arc; everything else is laid out by the curve fit of the math library. The bound of
// the deviation is therefore that of the pieces: nothing is approximated twice.
//
// An ellipse is fitted quadrant by quadrant, because the ends of the axes are where its curvature stops
// rising and begins to fall. A whole one is fitted in its first quadrant only and mirrored, which makes the
// polyline as symmetric as the ellipse and takes a quarter of the time.
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include <qevdata/converter.h>
#include <qevdata/param.h>
#include <qevdata/polyline.h>
#include <qevmath/angle.h>
#include <qevmath/curve_fit.h>
#include <qevmath/elementary.h>

namespace qev {
namespace {

// mm. The error is written with six decimals, so that less than this is not a wish that can be expressed.
constexpr double kSmallestError = 1e-6;
// More pieces than this are refused: a plain polyline of them fills 24 MB.
constexpr std::size_t kMaxPieces = 1'000'000;
// mm. Farther out the products overflow that bound the deviation from curves.
constexpr double kFarthestNode = 1e70;
// Radians, half the angle of a chord: however large the error, a circle does not fall below a triangle's
// chords.
constexpr double kWidestChord = math::kPi / 3;

bool IsFinite(const SEGMENT& segment) {
    return math::IsFinite(segment.ptStart) && math::IsFinite(segment.ptEnd) && math::IsFinite(segment.ptCtrl1)
           && math::IsFinite(segment.ptCtrl2) && std::isfinite(segment.dBulge);
}

bool IsFinite(const math::EllipticArc& arc) {
    return math::IsFinite(arc.PointAt(arc.GetStart())) && math::IsFinite(arc.GetAxisA())
           && math::IsFinite(arc.GetAxisB()) && std::isfinite(arc.GetEnd());
}

bool IsNear(const math::DPOINT2& p) {
    return math::Norm(p) < kFarthestNode;
}

// Appends the approximation of one outline piece after another; false when one cannot be made.
class PieceConverter {
public:
    PieceConverter(double error, bool chords, CCadPolyline& out) : m_settings{error, chords, 0}, m_out(out) {}

    bool operator()(const SEGMENT& segment) {
        if (!IsFinite(segment)) return false;
        if (segment.nType == SEGMENT::kBezier) return AddBezier(segment);
        if (m_settings.chords && segment.nType == SEGMENT::kArc) return AddChords(segment.GetArc());
        return Add(segment.ptEnd, segment.GetArc().bulge);
    }

    bool operator()(const math::EllipticArc& arc) {
        if (!IsFinite(arc) || !IsNear(arc.GetAxisA()) || !IsNear(arc.GetAxisB())) return false;
        if (!CanExpressError(arc.GetBounds())) return false;
        if (arc.GetSweep() == 0) return Add(arc.PointAt(arc.GetStart()), 0);
        const bool whole = arc.GetStart() == 0 && std::abs(arc.GetSweep()) == math::kTwoPi;
        return whole ? AddWholeEllipse(arc) : AddQuadrants(arc);
    }

private:
    std::size_t Room() const { return kMaxPieces - static_cast<std::size_t>(m_out.GetNodeCount()); }
    bool HasRoomFor(double pieces) const { return pieces <= static_cast<double>(Room()); }

    // Whether coordinates of this size can tell points apart that lie as near together as the error.
    bool CanExpressError(const math::Bounds& box) const {
        constexpr double kRounding = 4 * std::numeric_limits<double>::epsilon();
        const double size = std::max(math::Norm(box.lower), math::Norm(box.upper));
        return size * kRounding <= m_settings.error;
    }

    bool Add(const math::DPOINT2& end, double bulge) {
        if (!HasRoomFor(1)) return false;
        m_out.AddArc(end, bulge);
        return true;
    }

    // The nodes of a stretch of a curve, which may take so many at most and is laid out so many times. Room
    // for them is made at once where they are more than all before: never for a few at a time.
    template <class Curve>
    bool Fit(const Curve& curve, double from, double to, std::size_t maxNodes, int times = 1) {
        m_vecNodes.clear();
        m_settings.maxNodes = maxNodes;
        if (!math::FitStretch(curve, from, to, m_settings, m_vecNodes)) return false;
        const int made = times * static_cast<int>(m_vecNodes.size());
        if (made > m_out.GetNodeCount()) m_out.Reserve(m_out.GetNodeCount() + made);
        return true;
    }

    // Sagitta R (1 - cos(delta)) = 2 R sin^2(delta / 2) of a chord over the angle 2 delta.
    bool AddChords(const math::BulgeArc& arc) {
        if (!CanExpressError(arc.GetBounds())) return false;
        const double sine = std::sqrt(m_settings.error * std::abs(arc.GetCurvature()) / 2);
        const double delta = sine < math::Sin(kWidestChord / 2) ? 2 * math::Asin(sine) : kWidestChord;
        const double wanted = std::ceil(2 * std::abs(math::Atan(arc.bulge)) / delta);
        const double chords = delta > 0 ? wanted : 1; // an arc without length
        if (!HasRoomFor(chords)) return false;
        const int count = static_cast<int>(chords);
        for (int i = 1; i < count; ++i) m_out.AddLine(arc.PointAt(static_cast<double>(i) / count));
        m_out.AddLine(arc.end);
        return true;
    }

    bool AddBezier(const SEGMENT& segment) {
        const math::CubicBezier bezier = segment.GetBezier();
        if (!IsNear(bezier.start) || !IsNear(bezier.ctrl1) || !IsNear(bezier.ctrl2) || !IsNear(bezier.end))
            return false;
        if (!CanExpressError(bezier.GetBounds()) || !Fit(bezier, 0, 1, Room())) return false;
        for (const math::FitNode& node : m_vecNodes)
            m_out.AddArc(node.u == 1 ? segment.ptEnd : bezier.PointAt(node.u), node.bulge);
        return true;
    }

    // The curvature of an ellipse rises or falls all through a quadrant, which suits the fit.
    bool AddQuadrants(const math::EllipticArc& arc) {
        const double sign = arc.GetSweep() < 0 ? -1 : 1;
        const double end = std::abs(arc.GetSweep());
        const double phase = sign * arc.GetStart() / math::kHalfPi; // quadrants passed before the start
        double from = 0;
        for (double quadrant = std::floor(phase) + 1; from < end; ++quadrant) {
            const double to = std::min(end, (quadrant - phase) * math::kHalfPi);
            if (!Fit(arc, from, to, Room())) return false;
            for (const math::FitNode& node : m_vecNodes)
                m_out.AddArc(arc.PointAt(arc.GetStart() + sign * node.u), node.bulge);
            from = to;
        }
        return true;
    }

    // One quadrant is fitted; the others are its mirror images, run forward and backward in turn.
    bool AddWholeEllipse(const math::EllipticArc& arc) {
        if (!Fit(arc, 0, math::kHalfPi, Room() / 4, 4)) return false;
        const double sign = arc.GetSweep() < 0 ? -1 : 1;
        const int count = static_cast<int>(m_vecNodes.size());
        for (int half = 0; half < 2; ++half) {
            const double passed = half * math::kPi;
            for (const math::FitNode& node : m_vecNodes)
                m_out.AddArc(arc.PointAt(sign * (passed + node.u)), node.bulge);
            for (int i = count - 1; i > 0; --i)
                m_out.AddArc(arc.PointAt(sign * (passed + math::kPi - m_vecNodes[i - 1].u)),
                             m_vecNodes[i].bulge);
            m_out.AddArc(half == 0 ? arc.PointAt(sign * math::kPi) : arc.PointAt(0), m_vecNodes[0].bulge);
        }
        return true;
    }

    math::FitSettings m_settings;
    CCadPolyline& m_out;
    std::vector<math::FitNode> m_vecNodes;
};

} // namespace

CConvertCadObjectToCadPolyline::CConvertCadObjectToCadPolyline(const char* settings) {
    const auto word = CParam::FindKey(settings ? settings : "", "SegmentType");
    const double error = CParam::GetKey_DBL_FromString(settings, "AbsoluteError");
    m_bChords = word == "Line";
    if (std::isfinite(error) && (word == "Both" || word == "Arc" || m_bChords))
        m_dError = std::max(error, kSmallestError);
}

bool CConvertCadObjectToCadPolyline::operator()(const CCadObject* object, CCadPolyline*& out) const {
    out = nullptr;
    const int count = object ? object->GetPieceCount() : 0;
    if (m_dError == 0 || count <= 0 || object->GetType() == kCadDot) return false;
    auto polyline = std::make_unique<CCadPolyline>();
    polyline->SetStartPoint(object->GetStartPoint());
    polyline->Reserve(count <= static_cast<int>(kMaxPieces) ? count : 0);
    PieceConverter convert(m_dError, m_bChords, *polyline);
    for (int i = 0; i < count; ++i)
        if (!std::visit(convert, object->GetPiece(i))) return false;
    out = polyline.release();
    return true;
}

} // namespace qev
