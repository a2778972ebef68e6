#include "support/refuse_memory.h"
#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// What is made of a contour is made whole, or memory is given back to the last block.
TEST(RefusedMemory, WhatIsMadeOfAContour) {
    const auto contour = Polyline("0 0 L 5 0 L 10 1 L 10 20 A 0 20 1 L 0 0");
    const auto extended = PolylineEx("0 0 L 10 0 B 22 5 28 5 30 0 L 40 0");
    for (int question = 0; question < 2; ++question) // what they keep of themselves is made now
        EXPECT_GT(contour->GetLength() + extended->GetLength(), 0);
    const std::vector<PosRange> zones{{{0, 0.5}, {1, 0.5}}, {{1, 0.2}, {2, 0.5}}, {{3, 0}, {4, 0}}};
    ExpectNothingLeaksWhenRefused([&] {
        std::unique_ptr<CTopoMultiPolyline> made(CTopoMultiPolyline::CreateTopoMultiPolyline(contour.get()));
        made->GetPoint(0, 0.5);
        CTopoMultiPolyline copy(*made);
        copy = *made;
    });
    ExpectNothingLeaksWhenRefused([&] {
        for (int mode = 0; mode < 4; ++mode)
            std::unique_ptr<CCadMultiSegments>(
                GetMultiSementsByRangeRound(extended.get(), {{0, 0.5}, {2, 0.5}}, mode));
        std::unique_ptr<CCadMultiSegments>(GetMultiSementsByRange(contour.get(), {{3, 0.5}, {1, 0.5}}));
    });
    ExpectNothingLeaksWhenRefused([&] {
        std::vector<PosRange> list = zones;
        SortRange(&list);
        CombineRange(&list, contour->GetSegmentCount());
        GenerateCornerInvalidRange(contour.get(), 1, 30, &list);
        std::vector<int> map;
        GetSegMap(contour.get(), contour.get(), map);
    });
}

} // namespace
