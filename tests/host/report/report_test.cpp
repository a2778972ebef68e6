#include "host/run_host.h"

using namespace test;

TEST_F(HostRun, TableOfEachContour) {
    ExpectShown({
        {"circle", "0 CIRCLE 10 0 20 0 40 2",
         "1         12.566  yes    ccw                 12.566       0\n"},
        {"triangle, clockwise", "0 LWPOLYLINE 70 1 10 0 20 0 10 4 20 0 10 4 20 -3",
         "3         12.000  yes    cw                   6.000       3\n"},
        {"turn by 29 degrees", "0 LWPOLYLINE 70 0 10 0 20 0 10 4 20 0 10 8 20 2.217", "                 0\n"},
        {"turn by 31 degrees", "0 LWPOLYLINE 70 0 10 0 20 0 10 4 20 0 10 8 20 2.404", "                 1\n"},
    });
}

TEST_F(HostRun, SummaryOfAllObjects) {
    Write(DxfFile(kSquareWords + "0 CIRCLE 10 5 20 5 40 2 0 TEXT 10 1 20 1 40 1 1 A 0 HATCH 10 1"));
    const std::string objects = "    4\n        ... and 2 more\n3 objects: 1 circle, 1 polyline, 1 text\n";
    const std::string sums = "2 closed contours, 52.566 mm of contour, 4 sharp corners, 0 pieces joined\n";
    const std::string box = "from (0.000, 0.000) to (10.000, 10.000)\nnot drawn: 1 HATCH\n";
    ExpectRuns({{"--rows 1", 0, {objects + sums + box}}});
}
