#include <GCPnts_QuasiUniformDeflection.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BezierCurve.hxx>
#include <Geom_Ellipse.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <gp_Ax2.hxx>

#include "peers.h"

namespace qev::bench {
namespace {

gp_Pnt At(const math::DPOINT2& p) {
    return {p.x, p.y, 0};
}

Handle(Geom_Curve) CurveOf(const math::CubicBezier& bezier) {
    TColgp_Array1OfPnt poles(1, 4);
    poles.SetValue(1, At(bezier.start));
    poles.SetValue(2, At(bezier.ctrl1));
    poles.SetValue(3, At(bezier.ctrl2));
    poles.SetValue(4, At(bezier.end));
    return new Geom_BezierCurve(poles);
}

template <class Deflection>
void Keep(const Deflection& deflection, std::vector<math::DPOINT2>& points) {
    points.clear();
    for (int i = 1; i <= deflection.NbPoints(); ++i) {
        const gp_Pnt p = deflection.Value(i);
        points.push_back({p.X(), p.Y()});
    }
}

} // namespace

struct OcctCurve::Curve {
    explicit Curve(const Handle(Geom_Curve) & curve) : adaptor(curve) {}
    GeomAdaptor_Curve adaptor;
};
OcctCurve::OcctCurve(double semiAxisX, double semiAxisY)
    : m_pCurve(std::make_unique<Curve>(new Geom_Ellipse(gp_Ax2(), semiAxisX, semiAxisY))) {}
OcctCurve::OcctCurve(const math::CubicBezier& bezier) : m_pCurve(std::make_unique<Curve>(CurveOf(bezier))) {}
OcctCurve::~OcctCurve() = default;
void OcctCurve::Deflect(OcctRule rule, double error, std::vector<math::DPOINT2>& points) const {
    constexpr double kAnyTurn = 3; // radians: the deflection decides
    const GeomAdaptor_Curve& curve = m_pCurve->adaptor;
    switch (rule) {
    case OcctRule::kTangential:
        return Keep(GCPnts_TangentialDeflection(curve, kAnyTurn, error), points);
    case OcctRule::kQuasiUniform:
        return Keep(GCPnts_QuasiUniformDeflection(curve, error), points);
    }
}

} // namespace qev::bench
