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
    Write(DxfFile("0 LINE 10 1 20 2 0 CIRCLE 10 0 20 0 40 1 0 CIRCLE 10 0 20 0 40 1 230 0.5"));
    const Ran strict = RunHost(drawing);
    EXPECT_EQ(strict.code, 1);
    EXPECT_EQ(strict.out, "");
    ExpectRuns({{"--lenient", 1, {"1 objects: 1 circle", "not drawn: 1 CIRCLE", strict.errors}}});
}

TEST_F(HostRun, RefusedOptionsNameWhatTheyTake) {
    EXPECT_EQ(RunHost("").errors, "no drawing is named");
    ExpectRuns({
        {"b", 2, {"only one drawing"}},
        {"--what", 2, {"there is no option --what"}},
        {"--rows", 2, {"--rows takes a value"}},
        {"--rows x", 2, {"--rows takes a number, not 'x'"}},
        {"--rows nan", 2, {"--rows takes a number that is not negative"}},
        {"--cut 1:2", 2, {"--cut takes OBJECT:FROM:TO"}},
        {"--walk 1:0.5x:2", 2, {"--walk takes a number, not '0.5x'"}},
    });
}
