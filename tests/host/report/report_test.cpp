#include "host/fixture.h"

using namespace test;

TEST_F(HostRun, TableAndSummaryOfContours) {
    Write(DxfFile("0 CIRCLE 10 0 20 0 40 2 "
                  "0 LWPOLYLINE 70 1 10 0 20 0 10 4 20 0 10 4 20 -3 "
                  "0 LWPOLYLINE 70 0 10 0 20 0 10 4 20 0 10 8 20 2.217 " // turns by 29 degrees
                  "0 LWPOLYLINE 70 0 10 0 20 0 10 4 20 0 10 8 20 2.404 " // by 31 degrees
                  "0 TEXT 10 1 20 1 40 1 1 A 0 HATCH 10 1"));
    ExpectRuns({{"--join 0 --rows 4",
                 0,
                 {"circle                      1         12.566  yes    ccw                 12.566       0\n",
                  "polyline                    3         12.000  yes    cw                   6.000       3\n",
                  "polyline                    2          8.573  no     ccw                              0\n",
                  "polyline                    2          8.667  no     ccw                              1\n",
                  "        ... and 1 more\n5 objects: 1 circle, 3 polyline, 1 text\n",
                  "2 closed contours, 41.806 mm of contour, 4 sharp corners, 0 pieces joined\n",
                  "from (-2.000, -3.000) to (8.000, 2.404)\nnot drawn: 1 HATCH\n"}}});
}
