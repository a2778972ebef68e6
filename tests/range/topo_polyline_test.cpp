#include <gp_Vec2d.hxx>

#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Topo = CTopoMultiPolyline;

std::unique_ptr<Topo> Make(const CCadPolyline& source) {
    return std::unique_ptr<Topo>(Topo::CreateTopoMultiPolyline(&source));
}

// The groups as texts: the kind, x, the number of segments.
std::string Kinds(const Topo& topo) {
    std::ostringstream kinds;
    for (int i = 0; i < topo.GetNodeCount(); ++i)
        kinds << int(topo.GetAt(i)->nKind) << 'x' << topo.GetAt(i)->vecNodes.size() << ' ';
    return kinds.str();
}

// A contour of runs of every kind.
std::unique_ptr<CCadPolyline> RandomRuns(Random& random) {
    auto contour = std::make_unique<CCadPolyline>();
    DPOINT2 at = random.Point(), along{1, 0};
    contour->SetStartPoint(at);
    for (int run = 0, runs = random.Int(1, 6); run < runs; ++run) {
        const double turn = random.Int(0, 2) == 0 ? 0.05 : 0, step = random.Uniform(2, 30),
                     bulge = random.Coin() ? 0 : 0.3;
        along = math::Rotated(along, random.Uniform(0.5, 3));
        for (int i = 0, count = random.Int(1, 5); i < count; ++i) {
            at = at + along * step;
            contour->AddArc(at, bulge);
            along = math::Rotated(along, bulge == 0 ? turn : 4 * std::atan(bulge));
        }
    }
    if (random.Coin()) contour->AddLine(contour->GetStartPoint());
    return contour;
}

// The groups and their records take up the source's segments in order, from the first record's on.
void ExpectShape(const Topo& topo, const CCadPolyline& source) {
    ASSERT_EQ(topo.GetTopoInfo().size(), static_cast<std::size_t>(topo.GetNodeCount()));
    const int count = source.GetSegmentCount();
    int at = topo.GetTopoInfo()[0].nFirst;
    EXPECT_POINT_NEAR(topo.GetStartPoint(), source.GetSegment(at).ptStart, 0);
    for (int k = 0; k < topo.GetNodeCount(); ++k) {
        const Topo::TopoInfo& info = topo.GetTopoInfo()[k];
        EXPECT_EQ(info.nFirst, at);
        double length = 0;
        for (const CCadPolyline::ARCNODE& node : topo.GetAt(k)->vecNodes) {
            const SEGMENT segment = source.GetSegment(at);
            EXPECT_POINT_NEAR((DPOINT2{node.x, node.y}), segment.ptEnd, 0);
            EXPECT_EQ(node.bulge, segment.dBulge);
            length += segment.GetLength();
            at = (at + 1) % count;
        }
        EXPECT_EQ((info.nLast + 1) % count, at);
        EXPECT_NEAR(info.dLength, length, 1e-9);
        EXPECT_POINT_NEAR(topo.GetAt(k)->ptEnd, source.GetSegment(info.nLast).ptEnd, 0);
    }
}

TEST(TopoPolyline, GroupsKeepTheShape) {
    Topo assigned(*Make(CCadPolyline()));
    for (Random random; random.Rounds(300);) {
        const auto source = RandomRuns(random);
        const auto topo = Make(*source);
        ExpectShape(*topo, *source);
        Topo reversed(*topo); // a deep copy
        reversed.ReverseDir();
        assigned = *topo;
        ExpectShape(assigned, *source);
        const int last = topo->GetNodeCount() - 1;
        EXPECT_POINT_NEAR(reversed.GetPoint(0, 0), topo->GetEndPoint(), 0);
        if (topo->GetAt(last)->vecNodes.size() == 1 || topo->GetAt(last)->nKind > 1)
            EXPECT_POINT_NEAR(reversed.GetPoint(0, 0.3), topo->GetPoint(last, 0.7), 1e-9);
        reversed.ReverseDir();
        EXPECT_EQ(Kinds(reversed), Kinds(*topo));
    }
}

// The groups as the polyline has them (Kinds) and the kind and first segment of the first one's record.
TEST(TopoPolyline, Groups) {
    for (const auto& [name, source, kinds, firstKind, first] :
         Table<const char*, const char*, const char*, int, int>{
             {"corners part lines", "0 0 L 20 0 L 20 20 L 0 20 L 0 0", "0x1 0x1 0x1 0x1 ", 0, 0},
             {"collinear lines", "0 0 L 20 0 L 40 0 L 60 0", "2x3 ", 2, 0},
             {"arcs of one circle, which do not go on over the start", "10 0 A -10 0 1 A 10 0 1", "3x2 ", 3,
              0},
             {"arcs, then a line", "0 0 A 10 0 1 A 0 0 1 L -30 0", "3x2 0x1 ", 3, 0},
             {"short lines of a curve, then 10.5 mm", "0 0 L 10 0 L 19 1 L 28 3 L 37.5 7.5", "4x3 0x1 ", 4,
              0},
             {"short lines of a curve, then a turn", "0 0 L 5 0 L 10 1 L 15 5", "4x2 0x1 ", 4, 0},
             {"a line goes on over the start", "0 0 L 10 0 L 10 20 L -20 20 L -20 0 L 0 0",
              "0x2 0x1 0x1 0x1 ", 0, 4},
             {"a line goes on as a run over the start: the record keeps the line's kind",
              "0 0 L 20 0 L 40 0 L 40 30 L -20 30 L -20 0 L 0 0", "2x3 0x1 0x1 0x1 ", 0, 5},
             {"a run goes on as a run over the start",
              "0 0 L 20 0 L 40 0 L 40 30 L -40 30 L -40 0 L -20 0 L 0 0", "2x4 0x1 0x1 0x1 ", 2, 5},
             {"no length in a run: kept", "0 0 L 0 0 L 20 0", "2x2 ", 2, 0},
             {"no length first, straight on from the last: no way round the corner",
              "0 0 L 0 -5e-10 L 20 0 L 20 20 L 0 20 L 0 0", "0x1 0x1 0x1 0x1 ", 0, 0},
             {"one line", "0 0 L 5 0", "0x1 ", 0, 0},
             {"no length by itself: left out, its record stays", "0 0 L 0 0 A 30 0 1", "1x1 ", 0, 0}}) {
        SCOPED_TRACE(name);
        const auto topo = Make(*Polyline(source));
        EXPECT_EQ(Kinds(*topo), kinds);
        EXPECT_POINT_NEAR(topo->GetPoint(0, 0), topo->GetStartPoint(), 0);
        EXPECT_EQ(topo->GetTopoInfo()[0].nKind, firstKind);
        EXPECT_EQ(topo->GetTopoInfo()[0].nFirst, first);
    }
}

TEST(TopoPolyline, OfNothing) {
    EXPECT_EQ(Topo::CreateTopoMultiPolyline(nullptr), nullptr);
    const auto empty = Make(CCadPolyline());
    empty->ReverseDir();
    EXPECT_EQ(empty->GetNodeCount(), 0);
    EXPECT_EQ(empty->GetAt(0), nullptr);
    EXPECT_POINT_NEAR(empty->GetPoint(0, 0.5), (DPOINT2{0, 0}), 0);
}

// The centres are points of the polyline's own, which move.
TEST(TopoPolyline, Moves) {
    const auto topo = Make(*Polyline("1 0 L 3 0 A 5 0 1"));
    topo->Translate(gp_Vec2d(1, 2));
    EXPECT_POINT_NEAR(topo->GetPoint(1, 0.5), (DPOINT2{5, 1}), 1e-12);
    topo->Rotate(topo->GetAt(0)->ptEnd, kPi / 2);
    EXPECT_POINT_NEAR(topo->GetPoint(1, 0.5), (DPOINT2{5, 3}), 1e-12);
    topo->Rotate({0, 0}, kTwoPi);
    EXPECT_TRUE(topo->Mirror(topo->GetAt(0)->ptEnd, kPi / 4));
    EXPECT_POINT_NEAR(topo->GetPoint(1, 0.5), (DPOINT2{5, 3}), 1e-12) << "the arc turns the other way";
    EXPECT_POINT_NEAR(topo->GetEndPoint(), (DPOINT2{6, 2}), 1e-12);
    for (const double angle : {-0.1, kPi, kNaN}) EXPECT_FALSE(topo->Mirror({0, 0}, angle));
    EXPECT_FALSE(topo->Mirror(math::NoPoint(), 0));
}

} // namespace
