#include "support/shapes.h"

#include <cmath>
#include <sstream>

#include <gtest/gtest.h>

namespace test {
namespace {

template <class Contour>
std::unique_ptr<Contour> Parse(const std::string& text) {
    auto contour = std::make_unique<Contour>();
    std::istringstream in(text);
    math::DPOINT2 p;
    in >> p.x >> p.y;
    contour->SetStartPoint(p);
    for (char kind = 0; in >> kind;) {
        math::DPOINT2 c1, c2;
        double bulge = 0;
        if constexpr (std::is_same_v<Contour, qev::CCadPolylineEx>)
            if (kind == 'B') in >> c1.x >> c1.y >> c2.x >> c2.y;
        in >> p.x >> p.y;
        if (kind == 'A') in >> bulge;
        if (kind == 'L')
            contour->AddLine(p);
        else if (kind == 'A')
            contour->AddArc(p, bulge);
        else if constexpr (std::is_same_v<Contour, qev::CCadPolylineEx>)
            contour->AddBezier(c1, c2, p);
        else
            ADD_FAILURE() << "no such segment: " << kind;
    }
    return contour;
}

template <class Contour>
void AddRandom(Random& random, Contour& contour, int segments) {
    const math::DPOINT2 start = random.Point();
    contour.SetStartPoint(start);
    math::DPOINT2 end = start;
    for (int i = 0, count = random.Int(1, segments); i < count; ++i) {
        if (random.Int(0, 9) != 0) end = random.Point(); // one in ten has no length
        if (i + 1 == count && random.Coin()) end = start;
        const int kind = random.Int(0, 2);
        if (kind == 0)
            contour.AddLine(end);
        else if (kind == 1 || std::is_same_v<Contour, qev::CCadPolyline>)
            contour.AddArc(end, random.Bulge());
        else if constexpr (std::is_same_v<Contour, qev::CCadPolylineEx>)
            contour.AddBezier(random.Point(), random.Point(), end);
    }
}

} // namespace

std::unique_ptr<qev::CCadPolyline> Polyline(const std::string& text) {
    return Parse<qev::CCadPolyline>(text);
}

std::unique_ptr<qev::CCadPolylineEx> PolylineEx(const std::string& text) {
    return Parse<qev::CCadPolylineEx>(text);
}

std::unique_ptr<qev::CCadPolyline> RandomPolyline(Random& random, int segments) {
    auto contour = std::make_unique<qev::CCadPolyline>();
    AddRandom(random, *contour, segments);
    return contour;
}

std::unique_ptr<qev::CCadPolylineEx> RandomPolylineEx(Random& random, int segments) {
    auto contour = std::make_unique<qev::CCadPolylineEx>();
    AddRandom(random, *contour, segments);
    return contour;
}

qev::CCadGroup* AddGroup(qev::CCadGroup& parent) {
    auto* group = new qev::CCadGroup(false);
    parent.PushBack(group);
    return group;
}

double SampledLength(const CurvePoint& curve, int samples) {
    double length = 0;
    for (int i = 0; i < samples; ++i)
        length += math::D2GetDistance(curve(i / double(samples)), curve((i + 1) / double(samples)));
    return length;
}

double SampledDistance(const CurvePoint& curve, const math::DPOINT2& p, int samples) {
    double distance = std::numeric_limits<double>::infinity();
    for (int i = 0; i <= samples; ++i)
        distance = std::min(distance, math::D2GetDistance(p, curve(i / double(samples))));
    return distance;
}

math::Bounds SampledBounds(const CurvePoint& curve, int samples) {
    math::Bounds bounds;
    for (int i = 0; i <= samples; ++i) bounds.Add(curve(i / double(samples)));
    return bounds;
}

double SampledArea(const CurvePoint& curve, int samples) {
    double twice = 0;
    const math::DPOINT2 origin = curve(0);
    for (int i = 0; i < samples; ++i)
        twice += math::Cross(curve(i / double(samples)) - origin, curve((i + 1) / double(samples)) - origin);
    return twice / 2;
}

void ExpectBoxFits(const math::Bounds& box, const CurvePoint& curve, int samples, double slack) {
    const math::Bounds sampled = SampledBounds(curve, samples);
    const double rounding = 1e-12 * (1 + math::Norm(box.lower) + math::Norm(box.upper));
    const double gaps[] = {sampled.lower.x - box.lower.x, sampled.lower.y - box.lower.y,
                           box.upper.x - sampled.upper.x, box.upper.y - sampled.upper.y};
    for (const double gap : gaps) {
        EXPECT_GE(gap, -rounding);
        EXPECT_LE(gap, slack);
    }
}

} // namespace test
