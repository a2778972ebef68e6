/// \file
/// Contours from text, random contours, and oracles by dense sampling.
#pragma once

#include <functional>
#include <limits>
#include <memory>

#include "support/random.h"

namespace test {

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

using CurvePoint = std::function<math::DPOINT2(double)>; // over [0, 1]

/// "0 0 L 10 0 A 10 10 0.5 B 1 2 3 4 5 6": start point, then lines, arcs (end, bulge) and Bezier pieces.
template <class Contour = qev::CCadPolyline>
std::unique_ptr<Contour> Polyline(const std::string& text);
inline constexpr auto& PolylineEx = Polyline<qev::CCadPolylineEx>;

/// "line 0 0 1 1", "circle 1 2 5 cw", "arc 0 0 5 start central", "ellipse 0 0 a b rotation", "ellipsearc
/// ...", "rectangle 0 0 4 2 rotation", "dot 1 2", "text", "group", "relation", "polyline" (empty), "null" or
/// the text of a contour.
std::unique_ptr<qev::CCadObject> Object(const std::string& text);

/// A contour of up to `segments` random lines and arcs, zero-length ones among them, open or closed.
template <class Contour = qev::CCadPolyline>
std::unique_ptr<Contour> RandomPolyline(Random& random, int segments);
/// The same with Bezier pieces.
inline constexpr auto& RandomPolylineEx = RandomPolyline<qev::CCadPolylineEx>;

/// A line, circle, arc, ellipse (down to 10^flattest as flat) or a part of one.
std::unique_ptr<qev::CCadObject> RandomSingle(Random& random, double flattest);

/// A new group at the end of another, which owns it.
qev::CCadGroup* AddGroup(qev::CCadGroup& parent);
/// Hands objects over to a group.
void Fill(qev::CCadGroup& group, std::initializer_list<qev::CCadObject*> members);
/// A relation group that refers to an object.
qev::CCadRelationGroup* RelationTo(qev::CCadObject* object);
/// A text whose outline is an object, which it owns.
qev::CCadText* TextOf(qev::CCadObject* outline);

/// The outline of an object, each piece over an equal part of [0, 1].
CurvePoint Along(const qev::CCadObject& object);
/// The length of a contour up to a position, summed segment by segment.
double LengthTo(const qev::CCadMultiSegments& contour, const math::POLYPOS& pos);
/// Whether a position is the expected one within a small tolerance.
bool IsAt(const math::POLYPOS& pos, const math::POLYPOS& expected, double tolerance = 1e-12);
/// Smallest distance from p to `samples` points.
double SampledDistance(const CurvePoint& curve, const math::DPOINT2& p, int samples);
/// The area of the polygon through `samples` points, counter-clockwise positive.
double SampledArea(const CurvePoint& curve, int samples);

/// How far distance, box and area may be off those of the samples, to the side that they have to be off.
struct Slack {
    double distance, box, area;
};
/// Checks what a curve answers against samples: the point of it that is nearest to p, its box and its area.
void ExpectFits(const CurvePoint& curve, int samples, const math::DPOINT2& p, const math::DPOINT2& nearest,
                const math::Bounds& box, double area, const Slack& slack);

} // namespace test

namespace math {
/// Failure messages show points.
inline void PrintTo(const DPOINT2& p, std::ostream* out) {
    *out << "(" << p.x << ", " << p.y << ")";
}
} // namespace math

/// Points that are the same within a tolerance.
#define EXPECT_POINT_NEAR(p, q, tolerance) EXPECT_LE(math::D2GetDistance((p), (q)), (tolerance))
