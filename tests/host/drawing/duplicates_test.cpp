#include "host/drawing/duplicates.h"
#include "host/fixture.h"

using namespace test;
using math::DPOINT2;

namespace {

// What the drawing of an ASCII file drops and what it keeps on two layers.
TEST(Duplicates, AreFoundWhicheverWayTheyRun) {
    const std::string square = "0 LWPOLYLINE 70 1 10 0 20 0 10 2 20 0 10 2 20 1 10 0 20 1 ";
    for (const auto& [name, words, dropped, doubled] : Table<const char*, std::string, int, int>{
             {"lines, to and fro", "0 LINE 10 0 20 0 11 3 21 1 0 LINE 10 3 20 1 11 0 21 0", 1, 0},
             {"three times", "0 POINT 10 1 20 1 0 POINT 10 1 20 1 0 POINT 10 1 20 1", 2, 0},
             {"a diagonal's mirror", "0 LINE 10 0 20 0 11 3 21 1 0 LINE 10 0 20 1 11 3 21 0", 0, 0},
             {"a point and a circle", "0 CIRCLE 10 1 20 1 40 1 0 POINT 10 1 20 1", 0, 0},
             {"circles", "0 CIRCLE 10 1 20 1 40 1 0 CIRCLE 10 -1 20 1 40 1 230 -1", 1, 0},
             {"circles of two sizes", "0 CIRCLE 10 1 20 1 40 1 0 CIRCLE 10 1 20 1 40 2", 0, 0},
             {"halves of a circle", "0 ARC 10 0 20 0 40 1 50 0 51 180 0 ARC 10 0 20 0 40 1 50 180 51 0", 0,
              0},
             {"ellipses", "0 ELLIPSE 10 0 20 0 11 2 21 0 40 0.5 0 ELLIPSE 10 0 20 0 11 -2 21 0 40 0.5", 1, 0},
             {"parts of an ellipse, to and fro",
              "0 ELLIPSE 10 0 20 0 11 2 21 0 40 0.5 41 0 42 1 0 ELLIPSE 10 0 20 0 11 2 21 0 40 0.5 41 "
              "5.283185307179586 42 6.283185307179586 230 -1",
              1, 0},
             {"squares", square + "0 LWPOLYLINE 70 1 10 2 20 1 10 2 20 0 10 0 20 0 10 0 20 1", 1, 0},
             {"a square as it looks", square + "0 LWPOLYLINE 70 1 10 0 20 0 10 2 20 1 10 2 20 0 10 0 20 1", 0,
              0},
             {"in an insert", "0 LINE 10 0 20 0 11 1 21 0 0 INSERT 2 B 10 0 20 0", 1, 0},
             {"on two layers", "0 POINT 8 a 10 1 20 1 0 POINT 8 b 10 1 20 1 0 POINT 8 A 10 1 20 1", 1, 1},
         }) {
        SCOPED_TRACE(name);
        const std::string file = DxfFile(words, "0 BLOCK 2 B 0 LINE 10 1 20 0 11 0 21 0 0 ENDBLK");
        const DrawingOf read(file);
        EXPECT_EQ(read.drawing.counts.duplicates, dropped);
        EXPECT_EQ(read.drawing.counts.doubled, doubled);
        const DrawingOf asOne(file, {.joinAcrossLayers = true});
        EXPECT_EQ(asOne.drawing.counts.duplicates, dropped + doubled);
    }
}

// A drawing of random contours, in which some are drawn again, reversed, begun elsewhere and moved by
// rounding.
TEST(Duplicates, AllOfThemAndNothingElse) {
    for (Random random; random.Rounds(50);) {
        host::Drawing drawing;
        const int count = random.Int(1, 40);
        int copies = 0;
        std::vector<const qev::CCadObject*> first;
        const auto add = [&](std::vector<DPOINT2> points, bool again) {
            auto* contour = new qev::CCadPolyline;
            for (DPOINT2& p : points) p.x += again ? 1e-7 * random.Int(-1, 1) : 0;
            contour->SetStartPoint(points.back());
            for (const DPOINT2& p : points) contour->AddArc(p, 0);
            drawing.root.PushBack(contour);
            if (!again) first.push_back(contour);
        };
        for (int i = 0; i < count; ++i) {
            std::vector<DPOINT2> points;
            for (int k = random.Int(3, 8); k > 0; --k) points.push_back(random.Point());
            add(points, false);
            for (; random.Int(0, 2) == 0; ++copies) {
                if (random.Coin()) std::reverse(points.begin(), points.end());
                std::rotate(points.begin(), points.begin() + 1, points.end());
                add(points, true);
            }
        }
        host::DropDuplicates(drawing, false);
        EXPECT_EQ(drawing.counts.duplicates, copies);
        EXPECT_EQ(drawing.Objects(), first) << "those that were drawn first stay";
    }
}

} // namespace
