// Curves as chords and as arcs within a deviation. What a row answers is by how much its chords leave the
// curve by more than that.
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "peers/peers.h"
#include "support/contours.h"
#include "support/work.h"

namespace {

using namespace qev::bench;
using math::DPOINT2;
using Points = std::vector<DPOINT2>;
using Curve = DPOINT2 (*)(double t); // t from 0 to 1

constexpr double kError = 1e-3;            // mm
constexpr double kBesideError = 1e-6;      // mm by which an approximated step may be beside the error
constexpr double kAxisX = 50, kAxisY = 25; // mm, of the ellipse
const math::CubicBezier kBezier{{0, 0}, {30, 60}, {90, 60}, {120, 0}};

DPOINT2 OnEllipse(double t) {
    return {kAxisX * std::cos(math::kTwoPi * t), kAxisY * std::sin(math::kTwoPi * t)};
}
DPOINT2 OnBezier(double t) {
    return kBezier.PointAt(t);
}

// The largest distance of the curve's points from the chords, as far as it is above the error. The chords run
// along with the curve.
double Excess(Curve curve, const Points& points) {
    constexpr int kSamples = 100'000;
    double worst = 0, ratio = 0;
    std::size_t chord = 0;
    for (int i = 0; i <= kSamples; ++i) {
        const DPOINT2 p = curve(static_cast<double>(i) / kSamples);
        double square = SquareToLine(p, {points[chord], points[chord + 1]}, ratio);
        while (chord + 2 < points.size()) {
            const double next = SquareToLine(p, {points[chord + 1], points[chord + 2]}, ratio);
            if (next > square) break;
            square = next, ++chord;
        }
        worst = std::max(worst, square);
    }
    return std::max(0.0, std::sqrt(worst) - kError);
}

using Polyline = std::unique_ptr<qev::CCadPolyline>;

Points PointsOf(const Polyline& polyline) {
    Points points{polyline->GetStartPoint()};
    for (const auto& node : polyline->GetNodes()) points.push_back({node.x, node.y});
    return points;
}

// The object of a curve, which the library converts.
const qev::CCadObject& ObjectOf(Curve curve) {
    static const qev::CCadEllipse ellipse({0, 0}, kAxisX, kAxisY, 0);
    static const std::unique_ptr<qev::CCadPolylineEx> bezier = [] {
        auto made = std::make_unique<qev::CCadPolylineEx>();
        made->SetStartPoint(kBezier.start);
        made->AddBezier(kBezier.ctrl1, kBezier.ctrl2, kBezier.end);
        return made;
    }();
    if (curve == OnEllipse) return ellipse;
    return *bezier;
}
Polyline Convert(Curve curve, const char* settings) {
    qev::CCadPolyline* polyline = nullptr;
    qev::CConvertCadObjectToCadPolyline convert(settings);
    convert(&ObjectOf(curve), polyline);
    return Polyline(polyline);
}

// A row that says how many pieces it makes.
Row WithPieces(Row row, std::size_t pieces) {
    row.time = [time = row.time, pieces](benchmark::State& state, int questions) {
        time(state, questions);
        state.counters["pieces"] = static_cast<double>(pieces);
    };
    return row;
}
Row Ours(Curve curve, const char* settings, bool isChords) {
    const auto make = [=] { return [=](int) { return Convert(curve, settings); }; };
    const auto read = [=](const Polyline& made) { return isChords ? Excess(curve, PointsOf(made)) : 0; };
    return WithPieces(Ask(make, read), Convert(curve, settings)->GetNodes().size());
}
template <class Deflect>
Row Others(Curve curve, Deflect deflect) {
    const auto make = [=] {
        return [=, points = Points()](int) mutable {
            deflect(points);
            return points;
        };
    };
    Points points;
    deflect(points);
    return WithPieces(Ask(make, [=](const Points& made) { return Excess(curve, made); }), points.size() - 1);
}

// By hand: the farthest point of a chord of an ellipse is in the middle of its angles m, (1 - cos(step/2)) a
// b / |P'(m)| away. Two rounds bring m and the step together.
void EllipseByHand(Points& points) {
    constexpr double kBesideStep = 1 - 1e-4; // what two rounds leave
    points.assign(1, {kAxisX, 0});
    for (double angle = 0; angle < math::kTwoPi;) {
        double step = 0;
        for (int round = 0; round < 2; ++round) {
            const double sine = std::sin(angle + step / 2), cosine = std::cos(angle + step / 2);
            const double speed = std::sqrt(kAxisX * kAxisX * sine * sine + kAxisY * kAxisY * cosine * cosine);
            step = kBesideStep * std::sqrt(8 * kError * speed / (kAxisX * kAxisY));
        }
        angle = std::min(angle + step, math::kTwoPi);
        points.push_back({kAxisX * std::cos(angle), kAxisY * std::sin(angle)});
    }
}
// By hand: a chord of a gentle curve is off by step^2/8 of the second derivative across it. Two rounds as
// well.
void BezierByHand(Points& points) {
    constexpr double kBesideStep = 1 - 1e-4;
    const DPOINT2 first = (kBezier.ctrl2 - kBezier.ctrl1 * 2 + kBezier.start) * 6;
    const DPOINT2 last = (kBezier.end - kBezier.ctrl2 * 2 + kBezier.ctrl1) * 6;
    points.assign(1, kBezier.start);
    for (double t = 0; t < 1;) {
        double step = 0;
        for (int round = 0; round < 2; ++round) {
            const double middle = std::min(t + step / 2, 1.0);
            const DPOINT2 along = kBezier.DerivativeAt(middle), bend = first + (last - first) * middle;
            step =
                kBesideStep * std::sqrt(8 * kError * math::Norm(along) / std::abs(math::Cross(along, bend)));
        }
        t = std::min(t + step, 1.0);
        points.push_back(kBezier.PointAt(t));
    }
}

struct Case {
    const char* name;
    Curve curve;
    std::shared_ptr<OcctCurve> occt;
    void (*byHand)(Points&);
};

const bool added = [] {
    const Case cases[] = {
        {"an ellipse", OnEllipse, std::make_shared<OcctCurve>(kAxisX, kAxisY), EllipseByHand},
        {"a Bezier", OnBezier, std::make_shared<OcctCurve>(kBezier), BezierByHand},
    };
    for (const Case& c : cases) {
        const auto occt = [&c](OcctRule rule) {
            return Others(c.curve,
                          [=, curve = c.occt](Points& points) { curve->Deflect(rule, kError, points); });
        };
        Add({std::string(c.name) + " as lines",
             Ours(c.curve, "SegmentType=Line;AbsoluteError=0.001;", true),
             {{"OCCT tangential", occt(OcctRule::kTangential)},
              {"OCCT quasi-uniform", occt(OcctRule::kQuasiUniform)}},
             Others(c.curve, c.byHand),
             {0.35, 0, 1.02},
             kBesideError,
             1});
        Add({std::string(c.name) + " as arcs",
             Ours(c.curve, "SegmentType=Arc;AbsoluteError=0.001;", false),
             {},
             {},
             {},
             0,
             1});
    }
    return true;
}();

} // namespace
