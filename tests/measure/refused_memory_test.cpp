#include "support/refuse_memory.h"
#include "support/support.h"

using namespace qev;
using namespace test;

TEST(RefusedMemory, LosesNoPlate) {
    ExpectNothingLeaksWhenRefused([] { return std::unique_ptr<Adobe>(Make_RectPlane(100, 50, 20)); });
}
