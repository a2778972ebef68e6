#include "support/shapes.h"

#include <sstream>

namespace test {

using namespace qev;
using math::DPOINT2;

template <class Contour>
std::unique_ptr<Contour> Polyline(const std::string& text) {
    auto contour = std::make_unique<Contour>();
    std::istringstream in(text);
    DPOINT2 p;
    in >> p.x >> p.y;
    contour->SetStartPoint(p);
    for (char kind = 0; in >> kind;) {
        DPOINT2 c1, c2;
        double bulge = 0;
        if (kind == 'B') in >> c1.x >> c1.y >> c2.x >> c2.y;
        in >> p.x >> p.y;
        if constexpr (std::is_same_v<Contour, CCadPolylineEx>)
            if (kind == 'B') contour->AddBezier(c1, c2, p);
        if (kind == 'L') contour->AddLine(p);
        if (kind == 'A' && in >> bulge) contour->AddArc(p, bulge);
    }
    EXPECT_TRUE(in.eof()) << text;
    return contour;
}

std::unique_ptr<CCadPolyline> RandomPolyline(Random& random, int segments) {
    auto contour = std::make_unique<CCadPolyline>();
    DPOINT2 start = random.Point(), end = start;
    contour->SetStartPoint(start);
    for (int i = 0, count = random.Int(1, segments); i < count; ++i) {
        if (random.Int(0, 9) != 0) end = random.Point(); // one in ten has no length
        if (i + 1 == count && random.Coin()) end = start;
        random.Coin() ? contour->AddLine(end) : contour->AddArc(end, random.Bulge());
    }
    return contour;
}

template std::unique_ptr<CCadPolyline> Polyline(const std::string&);
template std::unique_ptr<CCadPolylineEx> Polyline(const std::string&);

std::unique_ptr<CCadObject> Object(const std::string& text) {
    if (text.find_first_of("0123456789-") == 0) {
        if (text.find('B') != std::string::npos) return PolylineEx(text);
        return Polyline(text);
    }
    std::istringstream in(text);
    std::string kind;
    double x = 0, y = 0, n[5] = {};
    in >> kind >> x >> y >> n[0] >> n[1] >> n[2] >> n[3] >> n[4];
    const bool ccw = text.find(" cw") == std::string::npos;
    const DPOINT2 p{x, y};
    if (kind == "dot") return std::make_unique<CCadDot>(p);
    if (kind == "line") return std::make_unique<CCadLine>(p, DPOINT2{n[0], n[1]});
    if (kind == "circle") return std::make_unique<CCadCircle>(p, n[0], ccw);
    if (kind == "arc") return std::make_unique<CCadArc>(p, n[0], n[1], n[2], ccw);
    if (kind == "ellipse") return std::make_unique<CCadEllipse>(p, n[0], n[1], n[2], ccw);
    if (kind == "ellipsearc") return std::make_unique<CCadEllipseArc>(p, n[0], n[1], n[2], n[3], n[4], ccw);
    if (kind == "rectangle") return std::make_unique<CCadRectangle>(p, n[0], n[1], n[2]);
    if (kind == "text") return std::make_unique<CCadText>("a");
    if (kind == "group") return std::make_unique<CCadGroup>();
    if (kind == "polyline") return std::make_unique<CCadPolyline>();
    if (kind == "relation") return std::make_unique<CCadRelationGroup>();
    EXPECT_EQ(kind, "null");
    return nullptr;
}

CCadGroup* AddGroup(CCadGroup& parent) {
    auto* group = new CCadGroup(false);
    parent.PushBack(group);
    return group;
}

void Fill(CCadGroup& group, std::initializer_list<CCadObject*> members) {
    for (CCadObject* member : members) group.PushBack(member);
}

CCadRelationGroup* RelationTo(CCadObject* object) {
    auto* relation = new CCadRelationGroup;
    relation->GetRelationPaths().push_back(object);
    return relation;
}

CCadText* TextOf(CCadObject* outline) {
    auto* text = new CCadText("a");
    text->GetTextGroup()->PushBack(outline);
    return text;
}

CurvePoint Along(const CCadObject& object) {
    return [&](double r) {
        const int count = object.GetPieceCount(), i = std::min(static_cast<int>(r * count), count - 1);
        const double u = r * count - i;
        const OutlinePiece piece = object.GetPiece(i);
        if (const auto* ellipse = std::get_if<math::EllipticArc>(&piece))
            return ellipse->PointAt(ellipse->GetStart() + u * ellipse->GetSweep());
        const auto& segment = std::get<SEGMENT>(piece);
        return segment.nType == SEGMENT::kBezier ? segment.GetBezier().PointAt(u) : segment.GetPoint(u);
    };
}

double LengthTo(const CCadMultiSegments& contour, const math::POLYPOS& pos) {
    double length = contour.GetSegment(pos.nSegIndex).GetLength() * pos.dRatio;
    for (int i = 0; i < pos.nSegIndex; ++i) length += contour.GetSegment(i).GetLength();
    return length;
}

testing::AssertionResult IsAt(const math::POLYPOS& pos, const math::POLYPOS& expected, double tolerance) {
    if (pos.nSegIndex == expected.nSegIndex && std::abs(pos.dRatio - expected.dRatio) <= tolerance)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "segment " << pos.nSegIndex << " ratio " << pos.dRatio << " instead of segment "
           << expected.nSegIndex << " ratio " << expected.dRatio;
}

testing::AssertionResult IsAt(const math::PosRange& range, const math::PosRange& expected) {
    if (auto start = IsAt(range.start, expected.start); !start) return start << " at the start";
    if (auto end = IsAt(range.end, expected.end); !end) return end << " at the end";
    if (range.nTag == expected.nTag) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "tag " << range.nTag << " instead of " << expected.nTag;
}

testing::AssertionResult IsAt(const std::vector<math::PosRange>& ranges,
                              const std::vector<math::PosRange>& expected) {
    if (ranges.size() != expected.size())
        return testing::AssertionFailure() << ranges.size() << " ranges instead of " << expected.size();
    for (std::size_t i = 0; i < ranges.size(); ++i)
        if (auto same = IsAt(ranges[i], expected[i]); !same) return same << " of range " << i;
    return testing::AssertionSuccess();
}

double SampledDistance(const CurvePoint& curve, const DPOINT2& p, int samples) {
    double distance = kInf;
    for (int i = 0; i <= samples; ++i)
        distance = std::min(distance, math::D2GetDistance(p, curve(i / double(samples))));
    return distance;
}

double SampledArea(const CurvePoint& curve, int samples) {
    double twice = 0;
    const DPOINT2 origin = curve(0);
    for (int i = 0; i < samples; ++i)
        twice += math::Cross(curve(i / double(samples)) - origin, curve((i + 1) / double(samples)) - origin);
    return twice / 2;
}

void ExpectFits(const CurvePoint& curve, int samples, const DPOINT2& p, const DPOINT2& nearest,
                const math::Bounds& box, double area, const Slack& slack) {
    const double distance = math::D2GetDistance(p, nearest), sampled = SampledDistance(curve, p, samples);
    EXPECT_LE(distance, sampled + 1e-9);
    EXPECT_GE(distance, sampled - slack.distance);
    math::Bounds inner;
    for (int i = 0; i <= samples; ++i) inner.Add(curve(i / double(samples)));
    const double rounding = 1e-12 * (1 + math::Norm(box.lower) + math::Norm(box.upper));
    for (const double gap : {inner.lower.x - box.lower.x, inner.lower.y - box.lower.y,
                             box.upper.x - inner.upper.x, box.upper.y - inner.upper.y}) {
        EXPECT_GE(gap, -rounding);
        EXPECT_LE(gap, slack.box);
    }
    EXPECT_NEAR(area, SampledArea(curve, samples), slack.area);
}

testing::AssertionResult ArePointsNear(const char* pText, const char* qText, const char* toleranceText,
                                       const DPOINT2& p, const DPOINT2& q, double tolerance) {
    const double distance = math::D2GetDistance(p, q);
    if (distance <= tolerance) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << pText << " is " << testing::PrintToString(p) << ",\n"
           << qText << " is " << testing::PrintToString(q) << ", " << distance
           << " mm away instead of at most " << tolerance << " (" << toleranceText << ")";
}

} // namespace test
