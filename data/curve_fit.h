/// \file
/// Approximation of a smooth curve by chords or by biarcs under a guaranteed deviation. Private to the data
/// library.
///
/// A curve is walked greedily: each step is as long as the error allows. The deviation of a step is not
/// sampled. It is largest where the distance from the fitted line or circle is stationary, and those
/// parameters are the exact roots of the curve's foot equation (math::FootEquation).
#pragma once

#include <vector>

#include <qevmath/arc.h>
#include <qevmath/bezier.h>
#include <qevmath/ellipse.h>
#include <qevmath/parameters.h>

namespace qev {

/// What the fit has to know of a curve, parametrised by u from 0. It works in a frame with the origin on or
/// in the curve, so that drawings far from their origin lose no digits.
class FitCurve {
public:
    virtual ~FitCurve() = default;
    virtual math::DPOINT2 PointAt(double u) const = 0;
    /// Unit vector of travel just after u (for `arriving` just before it).
    virtual math::DPOINT2 TangentAt(double u, bool arriving) const = 0;
    /// The stationary parameters strictly between two parameters, as far as the curve can list them.
    virtual math::Parameters SolveFoot(const math::FootEquation& equation, double from, double to) const = 0;
    /// Whether the stretch advances along its chord all the way, so that it has no loop or cusp.
    virtual bool Advances(double from, double to) const = 0;
    /// An upper bound of the stretch's length.
    virtual double GetLengthBound(double from, double to) const = 0;
};

/// An elliptic arc; u is the parameter travelled from its start, whichever way it runs. The fit must not be
/// asked for stretches of more than a quadrant.
class FitEllipse final : public FitCurve {
public:
    explicit FitEllipse(const math::EllipticArc& arc)
        : m_arc(arc.Translated(-arc.GetCenter())), m_dSign(arc.GetSweep() < 0 ? -1 : 1) {}

    math::DPOINT2 PointAt(double u) const override { return m_arc.PointAt(ParameterAt(u)); }
    math::DPOINT2 TangentAt(double u, bool) const override {
        return m_arc.TangentAt(ParameterAt(u)) * m_dSign;
    }
    math::Parameters SolveFoot(const math::FootEquation& equation, double from, double to) const override;
    bool Advances(double, double) const override { return true; }
    double GetLengthBound(double from, double to) const override;

private:
    double ParameterAt(double u) const { return m_arc.GetStart() + m_dSign * u; }

    math::EllipticArc m_arc;
    double m_dSign;
};

/// A Bezier piece with its own parameter.
class FitBezier final : public FitCurve {
public:
    explicit FitBezier(const math::CubicBezier& bezier)
        : m_bezier{{}, bezier.ctrl1 - bezier.start, bezier.ctrl2 - bezier.start, bezier.end - bezier.start} {}

    math::DPOINT2 PointAt(double u) const override { return m_bezier.PointAt(u); }
    math::DPOINT2 TangentAt(double u, bool arriving) const override;
    math::Parameters SolveFoot(const math::FootEquation& equation, double from, double to) const override;
    bool Advances(double from, double to) const override;
    double GetLengthBound(double from, double to) const override;

private:
    math::CubicBezier Stretch(double from, double to) const;

    math::CubicBezier m_bezier;
};

/// One line or arc of the approximation: where it ends on the curve, and its bulge.
struct FitNode {
    double u;
    double bulge;
};

/// How a curve is to be approximated.
struct FitSettings {
    double error = 0;    ///< mm
    bool chords = false; ///< straight chords; otherwise biarcs
    std::size_t maxNodes = 0;
};

/// Appends the nodes that approximate the curve between two parameters; false when they would be too many or
/// the curve is not finite.
bool FitStretch(const FitCurve& curve, double from, double to, const FitSettings& settings,
                std::vector<FitNode>& nodes);

} // namespace qev
