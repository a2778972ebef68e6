#include "host/fixture.h"

using namespace test;

TEST_F(HostRun, ActionsOnASquareACircleAndAText) {
    Write(DxfFile(kSquareWords + "0 CIRCLE 10 5 20 5 40 2 0 TEXT 10 1 20 1 40 1 1 A 0 HATCH 10 1"));
    ExpectRuns({
        {"--rows 1", 0, {"    4  0\n        ... and 2 more\n3 objects: 1 circle,", "\nnot drawn: 1 HATCH\n"}},
        {"--polyline 0.01", 0, {"2 objects converted within 0.01 mm: 6 lines and arcs", "class='converted'"}},
        {"--cut 0:3.5:1.25", 0, {"3 segments, 17.5 mm of 40 mm", "class='cut' d='M0 5L0 0L10 0L10 2.5'"}},
        {"--pick 10.5,4",
         0,
         {"object 0, segment 1, ratio 0.400000000, 0.5 mm away at (10.000000, 4.000000)"}},
        {"--walk 0:0.5:42", 0, {"by 42 mm to segment 0, ratio 0.700000000 at (7.000000, 0.000000), 1 laps"}},
        {"--pick 5,7.5 --walk 0:0:0", 0, {"walked: object 1 by 0 mm", "class='start' cx='7' cy='5'"}},
        {"--cut 7:0:1", 1, {"there is no object 7"}},
        {"--cut 0:-1:1", 1, {"object 0 has no such stretch; it has 4 segments"}},
        {"--cut 2:0:1", 1, {"object 2 cannot be cut"}},
        {"--walk 9:0.5:42", 1, {"object 0 has no walk from segment 9"}},
    });
}

TEST_F(HostRun, LinesInARowAreOneGroup) {
    Write(DxfFile("0 LWPOLYLINE 70 1 10 0 20 0 10 15 20 0 10 30 20 0 42 1 10 30 20 20 10 0 20 20"));
    ExpectRuns({{"--groups",
                 0,
                 {"2 lines, 1 arcs, 1 runs of lines, 0 runs of arcs, 0 curves",
                  "class='group' d='M0 0L15 0L30 0'"}}});
}

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
