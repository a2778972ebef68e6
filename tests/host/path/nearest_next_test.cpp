#include <gtest/gtest.h>

#include "host/path/nearest_next.h"
#include "support/random.h"

using namespace test;
using host::Visit;
using math::DPOINT2;

namespace {

// Goes over all visits for each step.
std::vector<int> ByHand(const std::vector<Visit>& visits, DPOINT2 at) {
    std::vector<int> order;
    std::vector<bool> isDone(visits.size());
    while (order.size() < visits.size()) {
        std::vector<bool> waits(visits.size());
        for (std::size_t i = 0; i < visits.size(); ++i)
            if (!isDone[i] && visits[i].outer >= 0) waits[visits[i].outer] = true;
        int best = -1;
        const auto squared = [&](int i) {
            const DPOINT2 away = visits[i].start - at;
            return away.x * away.x + away.y * away.y;
        };
        for (int i = 0; i < static_cast<int>(visits.size()); ++i)
            if (!isDone[i] && !waits[i] && (best < 0 || squared(i) < squared(best))) best = i;
        isDone[best] = true;
        order.push_back(best);
        at = visits[best].end;
    }
    return order;
}

// Points of a coarse grid, so that many are equally near and many are equal, in a forest of random depth.
TEST(NearestNext, IsTheOrderThatGoingOverAllGives) {
    Random random;
    for (const int count : {0, 1, 2, 7, 100, 400}) {
        const auto point = [&] {
            return DPOINT2{double(random.Int(0, count / 4)), double(random.Int(0, count / 4))};
        };
        std::vector<Visit> visits;
        for (int i = 0; i < count; ++i)
            visits.push_back({point(), point(), std::max(-1, random.Int(-3, i) - 1)});
        EXPECT_EQ(NearestNext(visits, {1, 1}), ByHand(visits, {1, 1})) << count;
    }
}

} // namespace
