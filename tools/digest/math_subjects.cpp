// Results of the maths below all objects. The elementary functions come first: where a system's own sine or
// cube root creeps in, their line differs, and with it most lines behind it.

#include <qevmath/elementary.h>
#include <qevmath/qevmath.h>

#include "digest.h"

namespace digest {

void AddElementary(Sequence& random, Digest& results) {
    for (int i = 0; i < 200; ++i) {
        const double x = random.Uniform(-1, 1);
        // up to angles whose reduction by turns needs every digit of pi
        for (const double angle : {x, 10 * x, 1e6 * x, 1e300 * x})
            for (const auto f : {math::Sin, math::Cos, math::Tan}) results.Add(f(angle));
        for (const auto f : {math::Asin, math::Acos, math::Atan, math::Cbrt}) results.Add(f(x));
        results.Add(math::Atan2(x, random.Uniform(-1, 1)));
    }
}

void AddArcs(Sequence& random, Digest& results) {
    for (int i = 0; i < 60; ++i) {
        const math::DPOINT2 start = random.Point();
        const math::BulgeArc arc{start, random.Point(), random.Bulge()};
        results.Add(arc.GetLength());
        results.Add(arc.GetChordArea());
        results.Add(arc.GetBounds());
        results.Add(arc.PointAt(random.Uniform(0, 1)));
        results.Add(arc.DirectionAt(random.Uniform(0, 1)));
        results.Add(arc.GetFootRatio(random.Point()));
        // a bulge that is almost none has its centre far away, where digits are lost first
        const auto circle = math::SolveCentreArc(arc.start, arc.end, arc.bulge);
        results.Add(circle.has_value());
        const auto [centre, radius, from, sweep] = circle.value_or(math::CentreArc{});
        results.Add(centre);
        for (const double value : {radius, from, sweep}) results.Add(value);
    }
}

void AddEllipses(Sequence& random, Digest& results) {
    for (int i = 0; i < 60; ++i) {
        const math::DPOINT2 centre = random.Point();
        // half axes in any order, so that the integrals of the length get moduli of both kinds
        const double a = random.Uniform(0.01, 50);
        const double b = random.Uniform(0.01, 50);
        const math::EllipticArc arc{
            centre, a, b, random.Uniform(-7, 7), random.Uniform(-7, 7), random.Uniform(-7, 7)};
        results.Add(arc.GetLength());
        results.Add(arc.GetChordArea());
        results.Add(arc.GetBounds());
        results.Add(arc.GetNearest(random.Point()));
        results.Add(arc.PointAt(arc.ParameterAt(random.Uniform(0, 1))));
        results.Add(arc.TangentAt(random.Uniform(-7, 7)));
    }
}

void AddBeziers(Sequence& random, Digest& results) {
    for (int i = 0; i < 60; ++i) {
        math::DPOINT2 p[4];
        for (math::DPOINT2& point : p) point = random.Point(); // loops and inflections among them
        const math::CubicBezier bezier{p[0], p[1], p[2], p[3]};
        results.Add(bezier.GetLength());
        results.Add(bezier.GetChordArea());
        results.Add(bezier.GetBounds());
        results.Add(bezier.GetNearest(random.Point()));
        results.Add(bezier.PointAt(bezier.ParameterAt(random.Uniform(0, 1))));
    }
}

} // namespace digest
