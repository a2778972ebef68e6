#include "host/fixture.h"

using namespace test;

TEST_F(HostRun, PictureOfEachOutline) {
    ExpectRuns({
        {"", 0, {"d='M0 0A2.5 2.5 0 0 1 4 0'/>"}, "0 LWPOLYLINE 70 0 10 0 20 0 42 0.5 10 4 20 0"},
        {"", 0, {"d='M0 0A2.5 2.5 0 1 0 4 0'/>"}, "0 LWPOLYLINE 70 0 10 0 20 0 42 -2 10 4 20 0"},
        {"", 0, {"d='M0 0C1 2 2 4 3 6'/>"}, "0 SPLINE 71 1 40 0 40 0 40 1 40 1 10 0 20 0 10 3 20 6"},
        {"", 0, {"d='M6 2A5 5 0 0 1 -4 2A5 5 0 0 1 6 2'/>"}, "0 CIRCLE 10 1 20 2 40 5"},
        {"", 0, {"A4 2 90 0 1 "}, "0 ELLIPSE 10 0 20 0 11 0 21 4 40 0.5"},
        {"", 0, {"<circle class='outline' cx='3' cy='4' r='1'/>"}, "0 POINT 10 3 20 4"},
        {"", 0, {"class='way' d='M0 4.95L"}, "0 LINE 10 0 20 0 11 0 21 9"},
        {"", 0, {"viewBox='-10 -410 320 420'"}, "0 LINE 10 0 20 0 11 300 21 400"},
    });
}
