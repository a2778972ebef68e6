#include "support/refuse_memory.h"
#include "support/support.h"

using namespace qev;
using namespace test;

TEST(RefusedMemory, LosesNoPolyline) {
    const auto object = Object("0 0 L 1 0 A 1 1 1 L 0 0");
    ExpectNothingLeaksWhenRefused([&] {
        std::vector<int> map;
        return std::unique_ptr<CCadPolyline>(Convert2Polyline(object.get(), map, 0.1));
    });
}
