#include "host/drawing/join.h"
#include "host/drawings.h"

using namespace test;

namespace {

struct Joined : DrawingOf {
    explicit Joined(const std::string& entities)
        : DrawingOf(DxfFile(entities)), count(host::JoinOpenPieces(drawing.root, 0.01)) {
        objects = drawing.Objects();
    }
    const int count;
};

TEST(Join, PiecesOfAnyOrderBecomeOneContour) {
    std::vector<std::string> pieces = {
        // of a rounded rectangle
        "0 LINE 8 a 10 1 20 0 11 9 21 0 ",          "0 LINE 8 a 10 10 20 5 11 10 21 1 ",
        "0 ARC 8 a 10 9 20 1 40 1 50 270 51 360 ",  "0 ARC 8 a 10 1 20 1 40 1 50 180 51 270 ",
        "0 LINE 8 a 10 -0.004 20 0.996 11 0 21 5 ", "0 LWPOLYLINE 8 a 70 0 10 10 20 5 10 5 20 8 10 0 20 5 "};
    std::sort(pieces.begin(), pieces.end());
    do {
        std::string entities = "0 LINE 8 b 10 1 20 0 11 1 21 -5 ";
        for (const std::string& piece : pieces) entities += piece;
        const Joined joined(entities);
        EXPECT_EQ(joined.count, 6);
        ASSERT_EQ(joined.objects.size(), 2u) << "another layer is left alone";
        const qev::CCadObject& contour = *joined.objects[1];
        EXPECT_TRUE(contour.IsClose());
        EXPECT_EQ(contour.GetSegmentCount(), 7);
        EXPECT_NEAR(contour.GetLength(), 8 + 4 + 4 + math::kPi + 2 * std::sqrt(34.0), 0.02);
    } while (std::next_permutation(pieces.begin(), pieces.end()));
}

TEST(Join, LeavesWhatDoesNotTouch) {
    const Joined apart("0 LINE 10 0 20 0 11 1 21 0 0 LINE 10 1.02 20 0 11 2 21 0 "
                       "0 CIRCLE 10 0 20 0 40 1 0 LINE 10 5 20 5 11 5 21 5");
    EXPECT_EQ(apart.objects.size(), 4u);
    EXPECT_EQ(apart.count, 0);
}

TEST(Join, EllipticArcsAreJoinedAsCurves) {
    const Joined joined("0 ELLIPSE 10 0 20 0 11 2 21 0 40 0.5 41 0 42 3.141592653589793 "
                        "0 LINE 10 -2 20 0 11 2 21 0");
    ASSERT_EQ(joined.objects.size(), 1u);
    EXPECT_EQ(joined.objects[0]->GetType(), qev::kCadPolylineEx);
    EXPECT_NEAR(joined.objects[0]->GetLength(), 4 + kEllipseLength / 2, 1e-6);
}

} // namespace
