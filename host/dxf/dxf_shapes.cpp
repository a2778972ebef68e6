// Each type has its own groups and its own oddities; what they have in common is that the result is made
// under the map at once, so that a circle under a map that squeezes it is an ellipse from the beginning.
//
// What has no length is dropped here: a repeated vertex would be a segment without a direction, and hide the
// corner that it lies on from everything that asks how a contour turns there.
//
// Entities may lie anywhere in space; they are drawn as seen from above. That changes lengths where a line or
// an ellipse is sloped, and loses a height or a width that somebody meant, so that both are counted.

#include "dxf_shapes.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "host/drawing/outline.h"
#include "host/drawing/spline.h"

namespace host {
namespace {

using math::DPOINT2;
using qev::SEGMENT;

// Units of the file: heights and widths below it are the rounding of a program that worked in space.
constexpr double kFlat = 1e-6;

constexpr int kThickness = 39;
constexpr int kFlags = 70;

constexpr int kClosed = 1;  // among the flags of polylines and splines
constexpr int kInSpace = 8; // among the flags of polylines: each vertex has a height

struct Vertex {
    DPOINT2 point;
    double bulge = 0;
    int flags = 0;
};

// The vertices that a run of groups lists. Each begins with a group of `firstCode`: its x, or the group 0 of
// an entity of its own.
std::vector<Vertex> VerticesOf(std::span<const DxfGroup> groups, int xCode, int firstCode) {
    std::vector<Vertex> vertices;
    for (const DxfGroup& group : groups) {
        if (group.code == firstCode) vertices.push_back({});
        if (vertices.empty()) continue;
        if (group.code == xCode) vertices.back().point.x = group.AsNumber();
        if (group.code == xCode + 10) vertices.back().point.y = group.AsNumber();
        if (group.code == 42) vertices.back().bulge = group.AsNumber();
        if (group.code == kFlags) vertices.back().flags = group.AsInteger();
    }
    return vertices;
}

// The points that a run of groups lists, each beginning with its x.
std::vector<DPOINT2> PointsOf(std::span<const DxfGroup> groups, int xCode) {
    std::vector<DPOINT2> points;
    for (const DxfGroup& group : groups) {
        if (group.code == xCode) points.push_back({group.AsNumber(), 0});
        if (group.code == xCode + 10 && !points.empty()) points.back().y = group.AsNumber();
    }
    return points;
}

// A bulge belongs to the segment from its vertex to the next one.
std::vector<SEGMENT> SegmentsOf(const std::vector<Vertex>& vertices, bool closed) {
    std::vector<SEGMENT> segments;
    for (std::size_t i = 0; i + 1 < vertices.size(); ++i)
        segments.emplace_back(vertices[i].point, vertices[i + 1].point, vertices[i].bulge);
    if (closed && vertices.size() > 1)
        segments.emplace_back(vertices.back().point, vertices.front().point, vertices.back().bulge);
    return segments;
}

bool IsClosed(const Fields& fields) {
    return (fields.Integer(kFlags, 0) & kClosed) != 0;
}

Shape ShapeOf(const ConjugateArc& arc, const Affine& map) {
    const double size = math::Norm(map.Vector(arc.u)) + math::Norm(map.Vector(arc.v));
    if (size * std::min(std::abs(arc.sweep), 1.0) <= kNoLength) return {nullptr, 1};
    return {MakeArc(arc, map)};
}

Shape ShapeOf(const std::vector<SEGMENT>& segments, const Affine& map) {
    if (segments.empty()) return {nullptr, 0, "has fewer than two points"};
    Shape shape;
    auto contour = MakeContour(segments, map, &shape.zeroLength);
    if (contour->GetSegmentCount() > 0) shape.object = std::move(contour);
    return shape;
}

// The unit vector of the z axis of an entity's own plane.
struct Normal {
    double x, y, z;
};

Normal NormalOf(const Fields& f) {
    const Normal n{f.Number(210, 0), f.Number(220, 0), f.Number(kNormalZ, 1)};
    const double length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    if (!(length > 0)) return {0, 0, 1};
    return {n.x / length, n.y / length, n.z / length};
}

// Whether an ellipse is seen from above as a narrower one.
bool IsTilted(const Fields& f) {
    return f.Type() == "ELLIPSE" && (std::abs(NormalOf(f).z) < kUpright || std::abs(f.Number(31, 0)) > kFlat);
}

// The heights of an entity's points.
std::vector<double> HeightsOf(const Fields& f) {
    const bool isLine = f.Type() == "LINE";
    const bool isInSpace = f.Type() == "POLYLINE" && (f.Integer(kFlags, 0) & kInSpace) != 0;
    std::vector<double> heights;
    bool ofVertex = false;
    for (const DxfGroup& group : f.Groups()) {
        ofVertex = ofVertex || group.code == 0;
        if (ofVertex != isInSpace) continue; // a plane polyline has its height itself
        if (group.code == 30 || group.code == 38 || (isLine && group.code == 31))
            heights.push_back(group.AsNumber());
    }
    return heights;
}

bool IsWide(const Fields& f) {
    const bool isPolyline = f.Type() == "POLYLINE";
    if (!isPolyline && f.Type() != "LWPOLYLINE") return false;
    return std::any_of(f.Groups().begin(), f.Groups().end(), [isPolyline](const DxfGroup& group) {
        const bool isWidth = group.code == 40 || group.code == 41 || (group.code == 43 && !isPolyline);
        return isWidth && std::abs(group.AsNumber()) > kFlat;
    });
}

} // namespace

Shape MakePoint(const Fields& f, const Affine& map) {
    return {std::make_unique<qev::CCadDot>(map.Point(f.Point(kPoint)))};
}

Shape MakeLine(const Fields& f, const Affine& map) {
    const DPOINT2 start = map.Point(f.Point(kPoint));
    const DPOINT2 end = map.Point(f.Point(11));
    if (math::D2GetDistance(start, end) <= kNoLength) return {nullptr, 1};
    return {std::make_unique<qev::CCadLine>(start, end)};
}

Shape MakeCircle(const Fields& f, const Affine& map) {
    const double radius = f.Number(40);
    return ShapeOf(ConjugateArc{f.Point(kPoint), {radius, 0}, {0, radius}}, map);
}

// Arcs run counter-clockwise in the plane of their normal; from an angle to itself it is a whole circle.
Shape MakeCircularArc(const Fields& f, const Affine& map) {
    const double radius = f.Number(40);
    const double start = math::AngleToRadian(f.Number(50));
    const double sweep = math::RegularizeRadian(math::AngleToRadian(f.Number(51)) - start);
    return ShapeOf(
        ConjugateArc{f.Point(kPoint), {radius, 0}, {0, radius}, start, sweep == 0 ? math::kTwoPi : sweep},
        map);
}

// The centre and the major axis of an ellipse do not belong to the plane of its normal, as those of a circle
// do. The minor axis is at right angles to both, and each is seen from above.
Shape MakeEllipse(const Fields& f, const Affine& map) {
    const DPOINT2 major = f.Point(11);
    const double height = f.Number(31, 0);
    const Normal n = NormalOf(f);
    const DPOINT2 minor{n.y * height - n.z * major.y, n.z * major.x - n.x * height};
    const double start = f.Number(41, 0);
    const double sweep = f.Number(42, math::kTwoPi) - start;
    constexpr double kWhole = 1e-9; // radians: two pi as a file of 10 digits or more has it
    const bool whole = std::abs(std::abs(sweep) - math::kTwoPi) < kWhole || sweep == 0;
    return ShapeOf(ConjugateArc{f.Point(kPoint), major, minor * f.Number(40), start,
                                whole ? math::kTwoPi : math::RegularizeRadian(sweep)},
                   map);
}

Shape MakeLwPolyline(const Fields& f, const Affine& map) {
    return ShapeOf(SegmentsOf(VerticesOf(f.Groups(), kPoint, kPoint), IsClosed(f)), map);
}

Shape MakePolyline(const Fields& f, const Affine& map) {
    constexpr int kFrameVertex = 16;                   // a control point of a smoothed one, not of its curve
    auto vertices = VerticesOf(f.Groups(), kPoint, 0); // each VERTEX begins with its group 0
    std::erase_if(vertices, [](const Vertex& v) { return (v.flags & kFrameVertex) != 0; });
    return ShapeOf(SegmentsOf(vertices, IsClosed(f)), map);
}

// A spline is given by control points or, by some programs, by the points it goes through.
Shape MakeSpline(const Fields& f, const Affine& map) {
    Spline spline;
    spline.degree = f.Integer(71, 3);
    spline.controls = PointsOf(f.Groups(), kPoint);
    for (const DxfGroup& group : f.Groups()) {
        if (group.code == 40) spline.knots.push_back(group.AsNumber());
        if (group.code == 41) spline.weights.push_back(group.AsNumber());
    }
    const std::vector<DPOINT2> fit = PointsOf(f.Groups(), 11);
    if (spline.controls.empty() && fit.size() > 1) return ShapeOf(ThroughPoints(fit, IsClosed(f)), map);
    if (const char* fault = FaultOf(spline)) f.Fail(fault);
    return ShapeOf(ToSegments(spline), map);
}

bool IsMesh(const Fields& polyline) {
    constexpr int kMeshFlags = 16 | 64; // of polygons, or a net
    return (polyline.Integer(kFlags, 0) & kMeshFlags) != 0;
}

void CountFlattened(const Fields& f, ReadCounts& counts) {
    const std::vector<double> heights = HeightsOf(f);
    const auto isHigh = [](double z) { return std::abs(z) > kFlat; };
    const bool isSloped = std::any_of(heights.begin(), heights.end(),
                                      [&](double z) { return std::abs(z - heights.front()) > kFlat; });
    if (isSloped || IsTilted(f))
        ++counts.sloped;
    else if (std::any_of(heights.begin(), heights.end(), isHigh) || isHigh(f.Number(kThickness, 0)))
        ++counts.elevated;
    if (IsWide(f)) ++counts.wide;
}

} // namespace host
