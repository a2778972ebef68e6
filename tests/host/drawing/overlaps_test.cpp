#include "host/drawing/join.h"
#include "host/drawing/overlaps.h"
#include "host/fixture.h"

using namespace test;

namespace {

std::string Line(double x, double y, double toX, double toY) {
    std::ostringstream words;
    words << "0 LINE 8 a 10 " << x << " 20 " << y << " 11 " << toX << " 21 " << toY << " ";
    return words.str();
}

const std::string kPlate = "0 LWPOLYLINE 8 a 70 1 10 0 20 0 10 30 20 0 10 30 20 20 10 0 20 20 ";

// What is dropped of a drawing, and after joining how many contours are closed and what they share.
TEST(Overlaps, OfLinesAndSides) {
    const std::string lines =
        Line(0, 0, 30, 0) + Line(30, 0, 30, 20) + Line(30, 20, 0, 20) + Line(0, 20, 0, 0);
    const struct {
        const char* name;
        std::string entities;
        int covered, closed;
        double shared;
    } cases[] = {
        {"over a side", kPlate + Line(30, 0, 0, 0), 1, 1, 0},
        {"over a part of a side, drawn before it", Line(10, 0, 5, 0) + kPlate, 1, 1, 0},
        {"longer than the side", kPlate + Line(-1, 0, 31, 0), 0, 1, 30},
        {"beside the side", kPlate + Line(0, 0.002, 30, 0.002), 0, 1, 0},
        {"across a corner", kPlate + Line(29, 0, 31, 0), 0, 1, 1},
        {"end to end", kPlate + Line(30, 0, 40, 0), 0, 1, 0},
        {"over a part of a line from a corner", Line(0, 0, 10, 0) + lines, 1, 1, 0},
        {"slanted", Line(0, 0, 30, 19) + Line(15, 9.5, 30, 19), 1, 0, 0},
        {"one over the next", Line(0, 0, 30, 0) + Line(5, 0, 20, 0) + Line(6, 0, 10, 0), 2, 0, 0},
        {"another layer", kPlate + "0 LINE 8 b 10 0 20 0 11 30 21 0", 0, 1, 0},
        {"a smaller plate beside it",
         lines + Line(30, 5, 30, 15) + Line(30, 15, 40, 15) + Line(40, 15, 40, 5) + Line(40, 5, 30, 5), 0, 2,
         10},
        {"a table in the corner of a frame",
         lines + Line(30, 0, 30, 8) + Line(30, 8, 18, 8) + Line(18, 8, 18, 0) + Line(18, 0, 30, 0), 0, 2, 20},
        {"over itself", "0 LWPOLYLINE 8 a 70 0 10 0 20 0 10 9 20 0 10 2 20 0", 0, 0, 7},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.name);
        DrawingOf read(DxfFile(expected.entities));
        EXPECT_EQ(read.drawing.counts.covered, expected.covered);
        host::JoinOpenPieces(read.drawing.root, std::nullopt);
        int closed = 0;
        for (const qev::CCadObject* object : read.drawing.Objects()) closed += object->IsClose() ? 1 : 0;
        EXPECT_EQ(closed, expected.closed);
        double shared = 0;
        for (const host::Overlap& each : host::FindOverlaps(read.drawing, false)) shared += each.length;
        EXPECT_NEAR(shared, expected.shared, 1e-9);
    }
}

TEST_F(HostRun, WhatWouldBeCutTwiceIsNamed) {
    ExpectRuns({{"",
                 0,
                 {"objects 0 and 1 share 1 mm of straight sides, which would be cut twice"},
                 kPlate + Line(29, 0, 31, 0)},
                {"", 0, {"1 dropped: lines drawn over longer ones"}, kPlate + Line(3, 0, 4, 0)}});
}

// Lines of a few places and directions, some of them parts of others: what is dropped takes nothing away.
TEST(Overlaps, WhatIsDroppedLiesOnWhatStays) {
    for (Random random; random.Rounds(200);) {
        host::Drawing drawing;
        std::vector<std::unique_ptr<qev::CCadObject>> all;
        for (int i = random.Int(1, 12); i > 0; --i) {
            const double x = random.Int(0, 3), y = random.Int(0, 3), dx = random.Int(0, 1);
            const double dy = random.Int(1, 2) - dx;
            const double length = random.Int(1, 4);
            auto* line = new qev::CCadLine({x, y}, {x + length * dx, y + length * dy});
            all.emplace_back(line->Clone(false));
            drawing.root.PushBack(line);
        }
        host::DropCovered(drawing, false);
        for (const auto& line : all)
            for (const double ratio : {0.01, 0.37, 0.5, 0.99}) {
                const auto p = math::Interpolate(line->GetStartPoint(), line->GetEndPoint(), ratio);
                double least = 1;
                for (const auto* each : drawing.Objects()) {
                    math::DPOINT2 nearest;
                    least = std::min(least, qev::GetMinDistance(each, p, nearest));
                }
                EXPECT_LE(least, 1e-3);
            }
    }
}

} // namespace
