#include <ctime>
#include <set>

#include "host/drawing/join.h"
#include "host/fixture.h"

using namespace test;
using qev::SEGMENT;

namespace {

// Whether a contour passes one joint twice, its start and end being one if it is closed.
bool PassesAJointTwice(const qev::CCadObject& contour) {
    std::set<std::pair<double, double>> joints;
    if (contour.GetPieceCount() == 1) return false; // a line without length, which does not join
    for (int i = 0; i < contour.GetPieceCount(); ++i) {
        const math::DPOINT2 p = std::get<SEGMENT>(contour.GetPiece(i)).ptStart;
        if (!joints.emplace(p.x, p.y).second) return true;
    }
    return !contour.IsClose() && joints.contains({contour.GetEndPoint().x, contour.GetEndPoint().y});
}

// Afterwards no two ends of open contours meet, and of the lines none is lost, doubled or turned in place.
TEST(Join, LeavesNoEndsThatMeet) {
    for (Random random; random.Rounds(300);) {
        const auto point = [&] {
            const double x = random.Int(0, 4), y = random.Int(0, 4);
            return math::DPOINT2{x, y};
        };
        const double tolerance = random.Coin() ? 0.01 : 1.2;
        qev::CCadGroup drawn;
        double pieces = random.Int(1, 12), length = 0;
        for (int i = 0; i < pieces; ++i) {
            drawn.PushBack(new qev::CCadLine(point(), point()));
            length += drawn.GetBack()->GetLength();
        }
        host::JoinOpenPieces(drawn, tolerance);
        std::vector<math::DPOINT2> ends;
        for (const qev::CCadObject* contour : drawn.GetObjectsList()) {
            pieces -= contour->GetPieceCount();
            length -= contour->GetLength();
            if (tolerance > 1) continue; // a loop that is taken out leaves ends within twice of it
            EXPECT_FALSE(PassesAJointTwice(*contour));
            const math::DPOINT2 start = contour->GetStartPoint(), end = contour->GetEndPoint();
            if (math::D2GetDistance(start, end) <= tolerance) continue; // closed, or it would join itself
            for (const auto& other : ends) {
                EXPECT_GT(math::D2GetDistance(start, other), tolerance);
                EXPECT_GT(math::D2GetDistance(end, other), tolerance);
            }
            ends.insert(ends.end(), {start, end});
        }
        EXPECT_EQ(pieces, 0);
        if (tolerance < 1) EXPECT_NEAR(length, 0, 1e-9) << "no gap is closed";
    }
}

TEST(Join, GoesOnWithTheNearestEnd) {
    DrawingOf read(
        DxfFile("0 LINE 10 0 20 0 11 5 21 0 0 LINE 10 6 20 0 11 9 21 9 0 LINE 10 9 20 4 11 5.5 21 0"));
    EXPECT_EQ(host::JoinOpenPieces(read.drawing.root, 1.2), 2);
    EXPECT_POINT_NEAR(read.drawing.Objects()[0]->GetEndPoint(), (math::DPOINT2{9, 4}), 0);
}

// How long joining so many lines computes.
double TimeToJoin(SEGMENT (*line)(int)) {
    qev::CCadGroup drawn;
    for (int i = 0; i < 40'000; ++i) drawn.PushBack(new qev::CCadLine(line(i).ptStart, line(i).ptEnd));
    const std::clock_t start = std::clock();
    host::JoinOpenPieces(drawn, 0.01);
    return static_cast<double>(std::clock() - start);
}

TEST(Join, ACrowdOfEndsCostsLittleMoreThanEndsApart) {
    const auto apart = [](int i) { return SEGMENT({i * 1.0, 0}, {i * 1.0, 1}); };
    const auto crowd = [](int i) { return SEGMENT({i * 1e-7, i % 100 * 1e-5}, {1.0 + i, 1}); };
    EXPECT_LT(TimeToJoin(crowd) / TimeToJoin(apart), 10);
}

// Two lines, one of them in a block, and one of another layer; each goes on where the one before it ends but
// for a gap.
TEST(Join, AcrossInsertsAndOnWishLayers) {
    const auto file = [](const std::string& gap) {
        return DxfFile("0 LINE 8 a 10 0 20 0 11 40 21 0 0 INSERT 8 a 2 B 10 0 20 0 "
                       "0 LINE 8 b 10 40 20 40."
                           + gap + " 11 0 21 0",
                       "0 BLOCK 2 B 0 LINE 8 0 10 40 20 0." + gap + " 11 40 21 40 0 ENDBLK");
    };
    for (const auto& [gap, tolerance, acrossLayers, joined] :
         Table<const char*, std::optional<double>, bool, int>{
             {"000", 0.001, false, 2},
             {"000", 0, false, 0},
             {"000", 0.001, true, 3},
             {"004", std::nullopt, false, 2}, // a ten-thousandth of the diagonal is 0.0057
             {"007", std::nullopt, false, 0},
             {"007", 0.01, true, 3},
         }) {
        DrawingOf read(file(gap));
        EXPECT_EQ(host::JoinOpenPieces(read.drawing.root, tolerance, acrossLayers), joined) << gap;
        const bool isClosed = read.drawing.Objects()[0]->IsClose();
        EXPECT_EQ(isClosed, joined == 3) << gap;
    }
}

TEST(Join, PiecesOfAllKinds) {
    DrawingOf read(DxfFile("0 LINE 8 b 10 1 20 0 11 1 21 -5 0 ARC 8 a 10 0 20 0 40 1 50 0 51 180 "
                           "0 LINE 8 a 10 1 20 -3 11 1.004 21 0 0 LWPOLYLINE 8 a 70 0 10 -1 20 0 10 -1 20 -3 "
                           "0 ELLIPSE 8 a 10 0 20 -3 11 1 21 0 40 0.5 41 3.141592653589793"));
    EXPECT_EQ(host::JoinOpenPieces(read.drawing.root, 0.01), 4);
    const auto objects = read.drawing.Objects();
    ASSERT_EQ(objects.size(), 2u) << "another layer is left alone";
    EXPECT_EQ(objects[1]->GetType(), qev::kCadPolylineEx);
    EXPECT_TRUE(objects[1]->IsClose());
    EXPECT_NEAR(objects[1]->GetLength(), 3 + math::kPi + 3 + kEllipseLength / 4, 0.01);
}

} // namespace
