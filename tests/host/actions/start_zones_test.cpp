#include "host/fixture.h"

using namespace test;

TEST_F(HostRun, ClosedContoursAreEnteredAwayFromTheirCorners) {
    Write(DxfFile(kSquareWords + "0 CIRCLE 10 5 20 5 40 2 0 LINE 10 20 20 0 11 30 21 0"));
    const std::string square =
        "start at\n     0      4      4        6.000     1 + 0.5000  (10.000, 5.000)\n";
    const std::string circle = "     1      0      1       12.566     1 + 0.0000  (3.000, 5.000)\npicture";
    ExpectRuns({
        {"--start-zones 2", 0, {square + circle, "'zone' d='M0 2L0 0L2 0'", "'free' d='M2 0L8 0'"}},
        {"--start-zones 5.1", 0, {"     0      1      0        0.000\n"}},
        {"--start-zones 2 --corner 91", 0, {"     0      0      1       40.000 "}},
    });
}
