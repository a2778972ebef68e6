#include <qevmath/elementary.h>
#include <qevmath/qevmath.h>

#include "digest.h"

namespace digest {

void AddElementary(Sequence& random, Digest& results) {
    for (int i = 0; i < 200; ++i) {
        const double x = random.Uniform(-1, 1);
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
        math::DPOINT2 centre;
        double radius = 0, from = 0, sweep = 0;
        results.Add(math::SolveArc(arc.start, arc.end, arc.bulge, centre, radius, from, sweep));
        results.Add(centre);
        for (const double value : {radius, from, sweep}) results.Add(value);
    }
}

void AddEllipses(Sequence& random, Digest& results) {
    for (int i = 0; i < 60; ++i) {
        const math::DPOINT2 centre = random.Point();
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
        for (math::DPOINT2& point : p) point = random.Point();
        const math::CubicBezier bezier{p[0], p[1], p[2], p[3]};
        results.Add(bezier.GetLength());
        results.Add(bezier.GetChordArea());
        results.Add(bezier.GetBounds());
        results.Add(bezier.GetNearest(random.Point()));
        results.Add(bezier.PointAt(bezier.ParameterAt(random.Uniform(0, 1))));
    }
}

} // namespace digest
