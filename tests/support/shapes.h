/// \file
/// Contours from text, random contours, and oracles by dense sampling.
#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <tuple>
#include <vector>

#include "support/random.h"

namespace test {

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The cases of a test, one a line. Where they are read, the names of a structured binding name the columns:
///     for (const auto& [name, contour, length] : Table<const char*, const char*, double>{
///              {"a line", "0 0 L 3 4", 5}, ...
template <class... Column>
using Table = std::vector<std::tuple<Column...>>;

/// The contours that most tables use, as texts for Polyline and Object: 10 mm wide, counter-clockwise from
/// the origin, closed or open.
inline constexpr const char* kSquare = "0 0 L 10 0 L 10 10 L 0 10 L 0 0";
inline constexpr const char* kOpenSquare = "0 0 L 10 0 L 10 10 L 0 10";
inline constexpr const char* kTriangle = "0 0 L 10 0 L 10 10 L 0 0";
inline constexpr const char* kCircleOf10 = "circle 0 0 1.5915494309189535"; ///< its length is 10 mm

/// A curve as a function: the point at a share of the curve in [0, 1].
using CurvePoint = std::function<math::DPOINT2(double)>;

/// A contour from a text such as "0 0 L 10 0 A 10 10 0.5 B 1 2 3 4 5 6": the start point, then lines (end),
/// arcs (end, bulge) and, on an extended polyline, Bezier pieces (two control points, end).
template <class Contour = qev::CCadPolyline>
std::unique_ptr<Contour> Polyline(const std::string& text);
/// An extended polyline from the text that Polyline takes.
inline constexpr auto& PolylineEx = Polyline<qev::CCadPolylineEx>;

/// An object of any kind from a text: "line 0 0 1 1", "circle 1 2 5 cw", "arc 0 0 5 start central", "ellipse
/// 0 0 a b rotation", "ellipsearc 0 0 a b rotation start sweep", "rectangle 0 0 4 2 rotation", "dot 1 2",
/// "text", "group", "relation", "polyline" (without segments), "null" (no object), or the text of a contour.
std::unique_ptr<qev::CCadObject> Object(const std::string& text);

/// A contour of up to `segments` random lines and arcs, open or closed. One segment in ten has no length.
std::unique_ptr<qev::CCadPolyline> RandomPolyline(Random& random, int segments);
/// A new group at the end of another, which owns it.
qev::CCadGroup* AddGroup(qev::CCadGroup& parent);
/// Hands objects over to a group, which owns them from then on.
void Fill(qev::CCadGroup& group, std::initializer_list<qev::CCadObject*> members);
/// A new relation group, the caller's, that refers to an object and does not own it.
qev::CCadRelationGroup* RelationTo(qev::CCadObject* object);
/// A new text, the caller's, whose outline is an object that the text owns.
qev::CCadText* TextOf(qev::CCadObject* outline);

/// The outline of an object, each of its pieces over an equal part of [0, 1]. The object has to outlive it.
CurvePoint Along(const qev::CCadObject& object);
/// The length of a contour in mm up to a position, summed segment by segment.
double LengthTo(const qev::CCadMultiSegments& contour, const math::POLYPOS& pos);
/// Whether a position is the expected one: on this segment, with this ratio within the tolerance.
testing::AssertionResult IsAt(const math::POLYPOS& pos, const math::POLYPOS& expected,
                              double tolerance = 1e-12);
/// Whether a range has the expected ends, each within 1e-12 of a segment, and the expected tag.
testing::AssertionResult IsAt(const math::PosRange& range, const math::PosRange& expected);
/// Whether a list holds the expected ranges in their order, each as IsAt compares a single one.
testing::AssertionResult IsAt(const std::vector<math::PosRange>& ranges,
                              const std::vector<math::PosRange>& expected);
/// The smallest distance in mm from p to `samples` + 1 points of a curve.
double SampledDistance(const CurvePoint& curve, const math::DPOINT2& p, int samples);
/// The area in mm2 of the polygon through `samples` points of a closed curve, counter-clockwise positive.
double SampledArea(const CurvePoint& curve, int samples);

/// How far the exact distance (mm), box (mm) and area (mm2) of a curve may be off those of its samples:
/// samples lie on the curve, so a distance is never below the exact one and a box never beyond it.
struct Slack {
    double distance, box, area;
};
/// Checks what a curve answers against samples: the point of it that is nearest to p, its box and its area.
void ExpectFits(const CurvePoint& curve, int samples, const math::DPOINT2& p, const math::DPOINT2& nearest,
                const math::Bounds& box, double area, const Slack& slack);

/// Whether two points are at most a tolerance apart. The first three arguments are the texts of the others,
/// as EXPECT_POINT_NEAR hands them over.
testing::AssertionResult ArePointsNear(const char* pText, const char* qText, const char* toleranceText,
                                       const math::DPOINT2& p, const math::DPOINT2& q, double tolerance);

} // namespace test

namespace math {
/// Failure messages show points.
inline void PrintTo(const DPOINT2& p, std::ostream* out) {
    *out << "(" << p.x << ", " << p.y << ")";
}
} // namespace math

/// Expects two points to be at most a tolerance (mm) apart; a failure shows both.
#define EXPECT_POINT_NEAR(p, q, tolerance) EXPECT_PRED_FORMAT3(::test::ArePointsNear, p, q, tolerance)
