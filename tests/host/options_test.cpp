#include "host/fixture.h"

using namespace test;

TEST_F(HostRun, RefusedOptionsNameWhatTheyTake) {
    EXPECT_EQ(RunHost("").errors, "no drawing is named");
    ExpectRuns({
        {"b", 2, {"only one drawing"}},
        {"--what", 2, {"there is no option --what"}},
        {"--rows", 2, {"--rows takes a value"}},
        {"--rows x", 2, {"--rows takes a number, not 'x'"}},
        {"--rows -1", 2, {"--rows takes a number that is not negative"}},
        {"--join nan", 2, {"--join takes a number that is not negative"}},
        {"--cut 1:2", 2, {"--cut takes OBJECT:FROM:TO"}},
        {"--pick 1,2,3", 2, {"--pick takes X,Y"}},
        {"--walk 1:0.5x:2", 2, {"--walk takes a number, not '0.5x'"}},
    });
}
