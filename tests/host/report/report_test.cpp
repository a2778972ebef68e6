#include "host/run_host.h"

using namespace test;

namespace {

using Report = HostRun;

TEST_F(Report, RowsOfTheTable) {
    const struct {
        const char *name, *entity, *row;
    } cases[] = {
        {"circle", "0 CIRCLE 10 0 20 0 40 2",
         "1         12.566  yes    ccw                 12.566       0\n"},
        {"triangle", "0 LWPOLYLINE 70 1 10 0 20 0 10 4 20 0 10 4 20 -3",
         "3         12.000  yes    cw                   6.000       3\n"},
        {"turn by 29 degrees", "0 LWPOLYLINE 70 0 10 0 20 0 10 4 20 0 10 8 20 2.217", "                 0\n"},
        {"turn by 31 degrees", "0 LWPOLYLINE 70 0 10 0 20 0 10 4 20 0 10 8 20 2.404", "                 1\n"},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.name);
        Write(DxfFile(expected.entity));
        ExpectRuns({{"", 0, {expected.row}}});
    }
}

TEST_F(Report, WhatAllObjectsComeTo) {
    Write(DxfFile(kSquare + "0 CIRCLE 10 5 20 5 40 2 0 TEXT 10 1 20 1 40 1 1 A 0 HATCH 10 1"));
    ExpectRuns(
        {{"--rows 1",
          0,
          {"    4\n        ... and 2 more\n3 objects: 1 circle, 1 polyline, 1 text\n2 closed contours, "
           "52.566 mm of contour, 4 sharp corners, 0 pieces joined\nfrom (0.000, 0.000) to (10.000, "
           "10.000)\nnot drawn: 1 HATCH\n"}}});
}

} // namespace
