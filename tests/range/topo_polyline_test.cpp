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

// The groups as the polyline has them (Kinds) and the kind and first segment of the first one's record.
TEST(TopoPolyline, Groups) {
    for (const auto& [name, source, kinds, firstKind, first] :
         Table<const char*, const char*, const char*, int, int>{
             {"corners part lines", "0 0 L 20 0 L 20 20 L 0 20 L 0 0", "0x1 0x1 0x1 0x1 ", 0, 0},
             {"collinear lines", "0 0 L 20 0 L 40 0 L 60 0", "2x3 ", 2, 0},
             {"arcs of one circle, which do not go on over the start", "10 0 A -10 0 1 A 10 0 1", "3x2 ", 3,
              0},
             {"short lines of a curve, then 10.5 mm", "0 0 L 10 0 L 19 1 L 28 3 L 37.5 7.5", "4x3 0x1 ", 4,
              0},
             {"short lines of a curve, then a turn", "0 0 L 5 0 L 10 1 L 15 5", "4x2 0x1 ", 4, 0},
             {"a line goes on over the start", "0 0 L 10 0 L 10 20 L -20 20 L -20 0 L 0 0",
              "0x2 0x1 0x1 0x1 ", 0, 4},
             {"a run goes on as a run over the start",
              "0 0 L 20 0 L 40 0 L 40 30 L -40 30 L -40 0 L -20 0 L 0 0", "2x4 0x1 0x1 0x1 ", 2, 5},
             {"no length in a run: kept", "0 0 L 0 0 L 20 0", "2x2 ", 2, 0},
             {"no length first, straight on from the last: no way round the corner",
              "0 0 L 0 -5e-10 L 20 0 L 20 20 L 0 20 L 0 0", "0x1 0x1 0x1 0x1 ", 0, 0},
             {"no length by itself: left out, its record stays", "0 0 A 0 0 1 L 9 0", "0x1 ", 1, 0}}) {
        SCOPED_TRACE(name);
        const auto contour = Polyline(source);
        const auto topo = Make(*contour);
        EXPECT_EQ(Kinds(*topo), kinds);
        EXPECT_POINT_NEAR(topo->GetPoint(0, 0), topo->GetStartPoint(), 0);
        EXPECT_EQ(topo->GetTopoInfo()[0].nKind, firstKind);
        EXPECT_EQ(topo->GetTopoInfo()[0].nFirst, first);
        EXPECT_POINT_NEAR(topo->GetStartPoint(), contour->GetSegment(first).ptStart, 0);
        const int count = contour->GetSegmentCount();
        double length = 0;
        int segments = 0;
        for (const Topo::TopoInfo& info : topo->GetTopoInfo()) {
            length += info.dLength;
            segments += (info.nLast - info.nFirst + count) % count + 1;
        }
        EXPECT_NEAR(length, contour->GetLength(), 1e-9);
        EXPECT_EQ(segments, count);
        Topo reversed(*topo); // a deep copy
        reversed.ReverseDir();
        EXPECT_POINT_NEAR(reversed.GetPoint(0, 0), topo->GetEndPoint(), 0);
        reversed.ReverseDir();
        EXPECT_POINT_NEAR(reversed.GetStartPoint(), topo->GetStartPoint(), 0);
        EXPECT_EQ(Kinds(reversed), kinds);
        EXPECT_EQ(CCadGroup().GetID(), contour->GetID() + 1) << "points of groups take no id";
    }
}

// Points by length, asked again and again, between changes of every kind; a copy that was assigned goes its
// way.
TEST(TopoPolyline, PointsOfGroupsFollowChanges) {
    const auto topo = Make(*Polyline("0 0 L 10 0 L 20 0 L 25 0 L 30 0 L 35 0 L 40 0 L 50 0 L 60 0 L 60 30"));
    const auto expectPoint = [&](const char* change, const DPOINT2& expected) {
        for (int question = 0; question < 3; ++question)
            EXPECT_POINT_NEAR(topo->GetPoint(0, 0.75), expected, 1e-12) << change;
    };
    expectPoint("none", {45, 0});
    Topo copy(*Make(*Polyline("5 5 L 6 6")));
    copy = *topo;
    EXPECT_POINT_NEAR(copy.GetStartPoint(), (DPOINT2{0, 0}), 0);
    EXPECT_EQ(copy.GetTopoInfo().size(), 2u);
    copy.Translate(gp_Vec2d(0, 7));
    EXPECT_POINT_NEAR(copy.GetPoint(0, 0.75), (DPOINT2{45, 7}), 1e-12);
    expectPoint("of the copy", {45, 0});
    topo->Translate(gp_Vec2d(1, 0));
    expectPoint("Translate", {46, 0});
    topo->SetStartPoint({-19, 0});
    expectPoint("SetStartPoint", {41, 0});
    EXPECT_POINT_NEAR(topo->GetPoint(0, -1e8), (DPOINT2{-8e9 - 19, 0}), 1e-5) << "back on the first line";
    for (const double x : {81.0, 101.0})
        topo->GetAt(0)->vecNodes.back().x = x, expectPoint("through the pointer", {0.75 * x - 4.75, 0});
    EXPECT_POINT_NEAR(topo->GetPoint(0, 1.5), (DPOINT2{0, 0}), 0);
}

TEST(TopoPolyline, OfNothing) {
    EXPECT_EQ(Topo::CreateTopoMultiPolyline(nullptr), nullptr);
    const auto empty = Make(CCadPolyline());
    empty->ReverseDir();
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
}

} // namespace
