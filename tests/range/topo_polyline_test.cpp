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

// Each source segment lies in exactly one group, lengths add up, and the shape is the source's.
TEST(TopoPolyline, GroupsKeepTheShape) {
    for (Random random; random.Rounds(300);) {
        const auto source = RandomRuns(random);
        const int count = source->GetSegmentCount();
        const auto topo = Make(*source);
        ASSERT_EQ(topo->GetTopoInfo().size(), static_cast<std::size_t>(topo->GetNodeCount()));
        std::vector<int> seen(count, 0);
        double length = 0;
        for (const Topo::TopoInfo& info : topo->GetTopoInfo()) {
            length += info.dLength;
            const int segments = (info.nLast - info.nFirst + count) % count + 1;
            for (int k = 0; k < segments; ++k) ++seen[(info.nFirst + k) % count];
        }
        EXPECT_EQ(seen, std::vector<int>(count, 1));
        EXPECT_NEAR(length, source->GetLength(), 1e-9);
        const DPOINT2 start = source->GetSegment(topo->GetTopoInfo()[0].nFirst).ptStart;
        EXPECT_POINT_NEAR(topo->GetStartPoint(), start, 0);
        for (int k = 0; k < topo->GetNodeCount(); ++k) {
            DPOINT2 nearest;
            if (topo->GetAt(k)->nKind < 2 && topo->GetAt(k)->vecNodes.size() > 1) continue; // its first piece
            for (const double ratio : {0.0, 0.3, 0.8, 1.0})
                EXPECT_LE(GetMinDistance(source.get(), topo->GetPoint(k, ratio), nearest), 1e-9);
        }
        Topo reversed(*topo); // a deep copy
        reversed.ReverseDir();
        const int last = topo->GetNodeCount() - 1;
        EXPECT_POINT_NEAR(reversed.GetPoint(0, 0), topo->GetEndPoint(), 0);
        if (topo->GetAt(last)->vecNodes.size() == 1 || topo->GetAt(last)->nKind > 1)
            EXPECT_POINT_NEAR(reversed.GetPoint(0, 0.3), topo->GetPoint(last, 0.7), 1e-9);
        reversed.ReverseDir();
        EXPECT_EQ(Kinds(reversed), Kinds(*topo));
        EXPECT_POINT_NEAR(reversed.GetPoint(last, 0.4), topo->GetPoint(last, 0.4), 1e-9);
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
             {"short lines of a curve, then a long one", "0 0 L 5 0 L 10 1 L 15 3 L 30 10", "4x3 0x1 ", 4, 0},
             {"short lines of a curve, then a turn", "0 0 L 5 0 L 10 1 L 15 5", "4x2 0x1 ", 4, 0},
             {"a line goes on over the start", "0 0 L 10 0 L 10 20 L -20 20 L -20 0 L 0 0",
              "0x2 0x1 0x1 0x1 ", 0, 4},
             {"a line goes on as a run over the start: the record keeps the line's kind",
              "0 0 L 20 0 L 40 0 L 40 30 L -20 30 L -20 0 L 0 0", "2x3 0x1 0x1 0x1 ", 0, 5},
             {"a run goes on as a run over the start",
              "0 0 L 20 0 L 40 0 L 40 30 L -40 30 L -40 0 L -20 0 L 0 0", "2x4 0x1 0x1 0x1 ", 2, 5},
             {"no length in a run: kept", "0 0 L 0 0 L 20 0", "2x2 ", 2, 0},
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

TEST(TopoPolyline, Moves) {
    const auto topo = Make(*Polyline("1 0 L 3 0 A 5 0 1"));
    topo->Translate(gp_Vec2d(1, 2));
    EXPECT_POINT_NEAR(topo->GetPoint(1, 0.5), (DPOINT2{5, 1}), 1e-12);
    topo->Rotate({2, 2}, kPi / 2);
    EXPECT_POINT_NEAR(topo->GetPoint(1, 0.5), (DPOINT2{3, 5}), 1e-12);
    topo->Rotate({0, 0}, kTwoPi);
    EXPECT_TRUE(topo->Mirror({2, 0}, kPi / 2));
    EXPECT_POINT_NEAR(topo->GetPoint(1, 0.5), (DPOINT2{1, 5}), 1e-12) << "the arc turns the other way";
    for (const double angle : {-0.1, kPi, kNaN}) EXPECT_FALSE(topo->Mirror({0, 0}, angle));
    EXPECT_FALSE(topo->Mirror(math::NoPoint(), 0));
    EXPECT_POINT_NEAR(topo->GetEndPoint(), (DPOINT2{2, 6}), 1e-12);
}

} // namespace
