#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Cut = std::unique_ptr<CCadMultiSegments>;

// The segments that are left, each by its type, on a line, an arc, a Bezier piece and a line.
TEST(SubContour, StretchesHaveNoTailOfNoLength) {
    const auto contour = PolylineEx("0 0 L 10 0 A 20 0 1 B 22 5 28 5 30 0 L 0 0");
    for (const auto& [name, range, types] :
         Table<const char*, PosRange, std::string>{{"in a Bezier piece", {{2, 0.2}, {2, 0.7}}, "3"},
                                                   {"from joint to joint", {{1, 0}, {3, 0}}, "23"},
                                                   {"next to the joints", {{1, 4e-10}, {3, 4e-10}}, "23"},
                                                   {"over the start", {{3, 0.5}, {0, 0}}, "1"},
                                                   {"once round from a joint", {{1, 0}, {1, 0}}, ""},
                                                   {"once round on a segment", {{1, 0.5}, {1, 0.2}}, "23112"},
                                                   {"next to nothing", {{1, 2e-10}, {1, 4e-10}}, ""}}) {
        const Cut cut(CutStretch(contour.get(), range));
        std::string found;
        for (int i = 0; cut && i < cut->GetSegmentCount(); ++i)
            found += std::to_string(cut->GetSegment(i).nType);
        EXPECT_EQ(found, types) << name;
        EXPECT_EQ(cut == nullptr, types.empty()) << name;
    }
    EXPECT_EQ(CutStretch(nullptr, {{0, 0}, {1, 0}}), nullptr);
}

// The Bezier piece is segment 2 of 4, or the last one. An empty list of types stands for a plain polyline.
TEST(SubContour, BezierPiecesAreTakenWholeOrNotAtAll) {
    constexpr int kLine = SEGMENT::kLine, kArc = SEGMENT::kArc, kBezier = SEGMENT::kBezier;
    const auto inside = PolylineEx("0 0 L 10 0 A 20 0 1 B 22 5 28 5 30 0 L 40 0");
    const auto atTheEnd = PolylineEx("5 5 L 10 0 B 22 5 28 5 30 0");
    for (const auto& [name, contour, range, types] :
         Table<const char*, const CCadPolylineEx*, PosRange, std::vector<int>>{
             {"whole", inside.get(), {{0, 0.5}, {3, 0.5}}, {kLine, kArc, kBezier, kLine}},
             {"in part", inside.get(), {{2, 0.5}, {3, 0.5}}, {kLine}},
             {"to its end within 1e-9", atTheEnd.get(), {{0, 0.5}, {1, 1 - 4e-10}}, {kLine, kBezier}},
             {"from its start within 1e-9", atTheEnd.get(), {{1, 4e-10}, {1, 1}}, {kBezier}},
             {"none", inside.get(), {{0, 0.5}, {1, 0.5}}, {}}}) {
        SCOPED_TRACE(name);
        const Cut cut(GetPolylineByRange(contour, range));
        EXPECT_EQ(cut->GetType(), types.empty() ? kCadPolyline : kCadPolylineEx);
        const auto& [index, ratio] = range.start;
        EXPECT_POINT_NEAR(cut->GetStartPoint(), contour->GetSegment(index).GetPoint(ratio), 1e-7);
        for (std::size_t i = 0; i < types.size(); ++i)
            EXPECT_EQ(cut->GetSegment(static_cast<int>(i)).nType, types[i]) << i;
    }
}

// The lengths in mm that the modes 0 to 3 leave on a square of side 10; 4 is no mode and rounds nothing.
// Where a mode would leave nothing, the range is cut as it is.
TEST(SubContour, RoundingMovesEndsToJoints) {
    const auto square = Polyline(kSquare);
    for (const auto& [name, range, unrounded, nearest, outward, inward] :
         Table<const char*, PosRange, double, double, double, double>{
             {"both ends inside", {{0, 0.3}, {2, 0.6}}, 23, 30, 30, 10},
             {"to the other joints", {{0, 0.6}, {2, 0.4}}, 18, 10, 30, 10},
             {"nothing would be left", {{0, 0.2}, {0, 0.4}}, 2, 2, 10, 2},
             {"nearly all of it", {{0, 0.3}, {3, 0.5}}, 32, 40, 40, 20},
             {"outward more than all of it", {{0, 0.6}, {0, 0.4}}, 38, 30, 40, 30}}) {
        const double lengths[] = {unrounded, nearest, outward, inward, unrounded};
        for (int mode = 0; mode < 5; ++mode) {
            const Cut cut(GetMultiSementsByRangeRound(square.get(), range, mode));
            ASSERT_TRUE(cut) << name << ", mode " << mode;
            EXPECT_NEAR(cut->GetLength(), lengths[mode], 1e-12) << name << ", mode " << mode;
            const bool isExact = mode % 4 == 0;
            for (int i = 0; i < cut->GetSegmentCount() && !isExact; ++i)
                EXPECT_GT(cut->GetSegment(i).GetLength(), 1) << name << ", mode " << mode;
        }
    }
    EXPECT_EQ(GetMultiSementsByRangeRound(nullptr, {{0, 0}, {1, 0}}, 1), nullptr);
}

} // namespace
