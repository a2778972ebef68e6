#include <ctime>

#include "host/drawing/join.h"
#include "host/fixture.h"

using namespace test;
using qev::SEGMENT;

namespace {

// Goes on from the end of a chain with the nearest end of the lines that are left, looking at all of them.
void Grow(std::vector<SEGMENT>& chain, std::vector<SEGMENT>& left, double tolerance) {
    while (chain.size() < 2 || math::D2GetDistance(chain.back().ptEnd, chain[0].ptStart) > tolerance) {
        std::vector<std::tuple<double, std::size_t, bool>> near;
        for (std::size_t i = 0; i < left.size(); ++i)
            for (const bool turned : {false, true}) {
                const auto& end = turned ? left[i].ptEnd : left[i].ptStart;
                near.emplace_back(math::D2GetDistance(chain.back().ptEnd, end), i, turned);
            }
        const auto nearest = std::min_element(near.begin(), near.end());
        if (nearest == near.end() || std::get<double>(*nearest) > tolerance) return;
        const auto [distance, i, turned] = *nearest;
        chain.push_back(turned ? left[i].Reversed() : left[i]);
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

TEST(Join, JoinsAsASearchThroughAllEndsDoes) {
    for (Random random; random.Rounds(300);) {
        const auto point = [&] { return math::DPOINT2(random.Int(0, 4), random.Int(0, 4)); };
        const double tolerance = random.Coin() ? 0.01 : 1.2;
        qev::CCadGroup drawn;
        std::vector<SEGMENT> left;
        for (int i = random.Int(1, 12); i > 0; --i) {
            const SEGMENT line(point(), point());
            drawn.PushBack(new qev::CCadLine(line.ptStart, line.ptEnd));
            if (line.GetLength() > tolerance) left.push_back(line);
        }
        host::JoinOpenPieces(drawn, tolerance);
        for (const qev::CCadObject* contour : drawn.GetObjectsList()) {
            if (contour->GetLength() <= tolerance) continue; // it would join itself
            ASSERT_FALSE(left.empty());
            std::vector<SEGMENT> chain{left[0]};
            left.erase(left.begin());
            for (int way = 0; way < 2; ++way) { // onwards from the end, then from the start
                Grow(chain, left, tolerance);
                std::reverse(chain.begin(), chain.end());
                for (SEGMENT& line : chain) line = line.Reversed();
            }
            ASSERT_EQ(contour->GetPieceCount(), static_cast<int>(chain.size()));
            for (int i = 0; i + 1 < contour->GetPieceCount(); ++i)
                EXPECT_POINT_NEAR(contour->GetSegment(i).ptEnd, chain[i].ptEnd, 0);
            EXPECT_POINT_NEAR(contour->GetStartPoint(), chain[0].ptStart, 0);
        }
        EXPECT_TRUE(left.empty());
    }
}

// How long joining so many lines computes.
double TimeToJoin(SEGMENT (*line)(int), bool onOneLayer) {
    qev::CCadGroup drawn;
    for (int i = 0; i < 20'000; ++i) {
        drawn.PushBack(new qev::CCadLine(line(i).ptStart, line(i).ptEnd));
        drawn.GetObjectsList().back()->SetKey("Layer", std::to_string(onOneLayer ? 0 : i).c_str());
    }
    const std::clock_t start = std::clock();
    host::JoinOpenPieces(drawn, 0.01);
    return static_cast<double>(std::clock() - start);
}

TEST(Join, ACrowdOfEndsCostsLittleMoreThanEndsApart) {
    const auto apart = [](int i) { return SEGMENT({i * 1.0, 0}, {i * 1.0, 1}); };
    const auto star = [](int i) { return SEGMENT({0, 0}, {1.0 + i, 1}); };
    const auto crowd = [](int i) { return SEGMENT({i * 1e-7, i % 100 * 1e-5}, {1.0 + i, 1}); };
    EXPECT_LT(TimeToJoin(star, true) / TimeToJoin(apart, true), 10) << "in one point";
    EXPECT_LT(TimeToJoin(star, false) / TimeToJoin(apart, false), 10) << "on layers of their own";
    EXPECT_LT(TimeToJoin(crowd, true) / TimeToJoin(apart, true), 10) << "closer than the tolerance";
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
