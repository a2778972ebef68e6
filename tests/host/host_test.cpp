#include "host/fixture.h"

using namespace test;

TEST_F(HostRun, FilesThatCannotBeUsed) {
    EXPECT_EQ(RunHost("nowhere.dxf --lenient").errors, "nowhere.dxf: cannot be opened\n");
    Write("");
    ExpectRuns({{"", 1, {drawing + ": the file is empty\n"}}});
    Write(DxfFile(kSquareWords));
    ExpectRuns({{"--svg /nowhere/x.svg", 1, {"the picture /nowhere/x.svg cannot be written"}}});
}

TEST_F(HostRun, ALenientRunShowsTheRestOfADamagedDrawing) {
    Write(DxfFile("0 LINE 10 1 20 2 0 CIRCLE 10 0 20 0 40 1"));
    const Ran strict = RunHost(drawing);
    EXPECT_EQ(strict.code, 1);
    EXPECT_EQ(strict.out, "");
    ExpectRuns({{"--lenient", 1, {"1 objects: 1 circle", strict.errors}}});
}
