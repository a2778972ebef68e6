// Results of what a host calls: measures, positions, cuts, hulls, zones and topology. All of them rest on the
// maths and the objects; a line that differs here alone points at the function's own arithmetic.

#include <list>

#include <qev/contour.h>
#include <qev/geometry.h>
#include <qev/ranges.h>

#include "digest.h"

namespace digest {

void AddContourQueries(Sequence& random, Digest& results) {
    for (int i = 0; i < 200; ++i) {
        const auto object = random.Object();
        results.Add(qev::GetCadSegments(object.get()));
        results.Add(qev::GetCadLength(object.get()));
        results.Add(qev::GetSegLength(object.get(), 0));
        results.Add(qev::GetCadOBjectDir(object.get()));
        results.Add(qev::GetCadPolylineArea(dynamic_cast<qev::CCadMultiSegments*>(object.get()), true));
        const math::DPOINT2 p = random.Point();
        results.Add(qev::IntersectionAngle(p, random.Point()));
    }
}

// All four ways of rounding the ends of a range by turns. Every second range ends before it starts and runs
// on over the end of the contour. One that cuts nothing adds nothing.
void AddCuts(Sequence& random, Digest& results) {
    for (int i = 0; i < 100; ++i) {
        const auto contour = random.PolylineEx(5);
        const math::POLYPOS from{random.Int(5), random.Uniform(0, 1)};
        const math::PosRange range(from, {random.Int(5), random.Uniform(0, 1)});
        const std::unique_ptr<qev::CCadMultiSegments> cut(
            qev::GetMultiSementsByRangeRound(contour.get(), range, i % 4));
        if (!cut) continue;
        for (int k = 0; k < cut->GetSegmentCount(); ++k) results.Add(cut->GetSegment(k));
    }
}

// From a bulge to the centre and from that centre back to the bulge.
void AddArcMath(Sequence& random, Digest& results) {
    for (int i = 0; i < 100; ++i) {
        const math::DPOINT2 p = random.Point();
        const math::DPOINT2 q = random.Point();
        math::DPOINT2 centre;
        double radius = 0, from = 0, to = 0, bulge = 0;
        results.Add(qev::CalcArcParam(p, q, random.Bulge(), centre, radius, from, to));
        results.Add(centre);
        qev::CalcArcParam(p, q, centre, i % 2 == 0, bulge);
        for (const double value :
             {radius, from, to, bulge, qev::ComputeAngle(p.x, p.y), qev::GetAngleDir(p, q)})
            results.Add(value);
    }
}

void AddDirections(Sequence& random, Digest& results) {
    for (int i = 0; i < 150; ++i) {
        const auto object = random.Object();
        results.Add(qev::GetVector(object.get(), 0, random.Uniform(0, 1)));
        const auto contour = random.Polyline(3);
        results.Add(qev::GetCornerAngle(contour.get(), 1));
        math::DPOINT2 tangent;
        results.Add(qev::GetTangent(contour->GetSegment(0), 1, &tangent));
        results.Add(tangent);
    }
}

// A chain of conversions, each on what the one before it answered: a position to a point, the point back to a
// position, its length from the start, and a walk from it. A single different bit grows on the way.
void AddPositions(Sequence& random, Digest& results) {
    for (int i = 0; i < 200; ++i) {
        const auto object = random.Object();
        math::DPOINT2 p;
        results.Add(qev::PosToCoor(object.get(), 0, random.Uniform(0, 1), p));
        math::POLYPOS pos;
        math::POLYPOS walked;
        double length = 0;
        results.Add(qev::CoorToPos(object.get(), p, pos));
        results.Add(qev::GetLengthStartToPos(object.get(), pos, length));
        results.Add(qev::GetPosByOffset(object.get(), pos, random.Uniform(-50, 50), walked));
        for (const double value : {p.x, p.y, length, qev::PolyPosToDouble(pos), qev::PolyPosToDouble(walked)})
            results.Add(value);
    }
}

// Only the numbers of the corners are added: which points are corners is decided by signs, and a system that
// rounds differently picks other ones.
void AddHulls(Sequence& random, Digest& results) {
    for (int i = 0; i < 20; ++i) {
        std::vector<qev::CConvexHelper::Point> points;
        points.reserve(50);
        for (int k = 0; k < 50; ++k) points.push_back({random.Uniform(-9, 9), random.Uniform(-9, 9), k});
        qev::CConvexHelper::ConvexGrahamScan(points, points);
        for (const auto& point : points) results.Add(point.nTag);
    }
}

void AddZones(Sequence& random, Digest& results) {
    for (int i = 0; i < 60; ++i) {
        std::vector<math::PosRange> zones;
        const auto contour = random.Polyline(6); // arguments have no order
        qev::GenerateCornerInvalidRange(contour.get(), random.Uniform(1, 20), 30, &zones);
        for (const auto& zone : zones)
            for (const auto& pos : {zone.start, zone.end}) results.Add(qev::PolyPosToDouble(pos));
    }
}

// Turned and mirrored in place, so that the rounding of both maps adds up.
void AddTopology(Sequence& random, Digest& results) {
    for (int i = 0; i < 60; ++i) {
        const std::unique_ptr<qev::CTopoMultiPolyline> shape(
            qev::CTopoMultiPolyline::CreateTopoMultiPolyline(random.Polyline(6).get()));
        if (!shape) continue;
        const math::DPOINT2 p = random.Point();
        shape->Rotate(p, random.Uniform(-7, 7));
        shape->Mirror(p, random.Uniform(-7, 7));
        for (const auto& part : shape->GetTopoInfo()) results.Add(part.dLength);
        for (int node = 0; node < shape->GetNodeCount(); ++node) results.Add(shape->GetPoint(node, 0.3));
    }
}

// A contour is closed, and cut again by CutStretch; the objects meet each other, so that distances are 0 and
// not.
void AddSides(Sequence& random, Digest& results) {
    for (int i = 0; i < 60; ++i) {
        const auto contour = random.PolylineEx(6);
        contour->AddLine(contour->GetStartPoint());
        results.Add(static_cast<int>(qev::GetPointSide(contour.get(), random.Point(), 0.01)));
        const auto object = random.Object();
        results.Add(qev::GetClearance(contour.get(), object.get()));
        std::list<qev::CCadObject*> both{contour.get(), object.get()};
        std::vector<qev::ContourNesting> nesting;
        qev::GetNesting(&both, nesting);
        for (const auto& each : nesting) results.Add(each.nDepth);
        const double ratio = random.Uniform(0, 1);
        const std::unique_ptr<qev::CCadMultiSegments> cut(
            qev::CutStretch(contour.get(), {{1, ratio}, {4, ratio}}));
        for (int k = 0; cut && k < cut->GetSegmentCount(); ++k) results.Add(cut->GetSegment(k));
    }
}

} // namespace digest
