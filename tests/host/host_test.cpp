#include <qev/version.h>

#include "host/fixture.h"

using namespace test;

TEST_F(HostRun, FilesThatCannotBeUsed) {
    EXPECT_EQ(RunHost("nowhere.dxf --lenient").errors, "nowhere.dxf: cannot be opened\n");
    EXPECT_EQ(RunHost(".").errors, ".: is a folder, not a drawing\n");
    Write("");
    ExpectRuns({{"", 1, {drawing + ": the file is empty\n"}}});
    Write(DxfFile(kSquareWords));
    ExpectRuns({{"--svg /nowhere/x.svg", 1, {"the picture /nowhere/x.svg cannot be written"}}});
}

TEST_F(HostRun, SettingsSayWhatIsReadOfADrawing) {
    Write(DxfFile("0 LINE 8 a 10 0 20 0 11 4 21 0 0 CIRCLE 8 b 10 0 20 0 40 1 0 LWPOLYLINE 8 a 10 0 20 0", "",
                  "9 $INSUNITS 70 1", "0 LAYER 2 b 62 -5 70 0"));
    ExpectRuns({
        {"", 0, {"1 objects: 1 line", " 101.600 mm of", "unit of the file: in", "1 left out: on layers"}},
        {"", 0, {drawing + ": line "}}, // the remark on what has one point
        {"--all --drawing-unit mm", 0, {"2 objects: 1 circle, 1 line", " 10.283 mm of contour"}},
        {"--layer a,B --all", 0, {"2 objects"}},
        {"--layer B --all", 0, {"1 objects: 1 circle"}},
        {"--layer c", 1, {"has no layer 'c'"}},
        {"--list-layers", 0, {"2  -        yes     a\n", "1  #0000ff  off     b\n"}},
        {"--drawing-unit cubits", 1, {"there is no unit 'cubits' but unitless, inches"}},
    });
}

TEST_F(HostRun, ALenientRunShowsTheRestOfADamagedDrawing) {
    Write(DxfFile("0 LINE 10 1 20 2 0 CIRCLE 10 0 20 0 40 1 0 CIRCLE 10 0 20 0 40 1 230 0.5"));
    const Ran strict = RunHost(drawing);
    EXPECT_EQ(strict.code, 1);
    EXPECT_EQ(strict.out, "");
    ExpectRuns({{"--lenient", 2, {"1 objects: 1 circle", "not drawn: 1 CIRCLE", strict.errors}}});
}

TEST_F(HostRun, SeveralDrawingsAreOneRunAndTheWorstCodeCounts) {
    Write(DxfFile(kSquareWords + "0 LINE 10 1 20 2"));
    const std::string other = picture;
    std::ofstream(other) << DxfFile("0 LINE 10 1 20 2 11 3 21 4");
    const auto codeOf = [](const std::string& line) { return RunHost(line + " --lenient --rows 0").code; };
    EXPECT_EQ(codeOf(other + " " + other), 0);
    EXPECT_EQ(codeOf(other + " " + drawing + " " + other), 2);
    const Ran ran = RunHost(drawing + " nowhere.dxf " + other + " --lenient");
    EXPECT_EQ(ran.code, 1);
    ExpectContains(ran.out,
                   {drawing + ":\n", "1 objects: 1 polyline", "\n" + other + ":\n", "1 objects: 1 line"});
}

TEST_F(HostRun, EachOfSeveralDrawingsHasItsOwnFiles) {
    Write(DxfFile(kSquareWords));
    const std::string twice = drawing + " " + drawing + " --svg ";
    EXPECT_EQ(RunHost(twice + picture).code, 64);
    const std::string own = drawing.substr(0, drawing.size() - 4) + "_own";
    EXPECT_EQ(RunHost(twice + "{}_own").code, 0);
    ExpectContains(BytesOf(own), {"</svg>"});
    std::remove(own.c_str());
}

TEST_F(HostRun, RefusedOptionsNameWhatTheyTake) {
    EXPECT_EQ(RunHost("").errors, "qev_host: no drawing is named (--help lists the options)\n");
    ExpectRuns({
        {"--what", 64, {"not expected: --what"}},
        {"--rows", 64, {"--rows: 1 required N missing"}},
        {"--rows x", 64, {"--rows: takes a number that is not negative, not x"}},
        {"--rows nan", 64, {"--rows: takes a number that is not negative, not nan"}},
        {"--unit Mile", 64, {"--unit: Mile not in {Metric,Inch}"}},
        {"--cut 1:2", 64, {"--cut: takes OBJ:FROM:TO, not 1:2"}},
        {"--pick 1,2,3", 64, {"--pick: takes X,Y"}},
        {"--walk 1:0.5x:2", 64, {"--walk: takes SEG:RATIO:MM, not 1:0.5x:2"}},
    });
}

TEST_F(HostRun, HelpAndVersionAreAllThatIsPrinted) {
    const Ran help = RunHost("--help nowhere.dxf"), version = RunHost("--version");
    EXPECT_EQ(help.code, 0);
    EXPECT_EQ(help.errors, "");
    ExpectContains(help.out,
                   {"Usage: qev_host [OPTIONS] [drawing...]", "\nReading:\n", "--lenient", "Examples:"});
    EXPECT_EQ(version.out, "qev_host " QEV_VERSION_STRING "\n");
}

// A value with a sign, and the last of two values of one option.
TEST_F(HostRun, ValuesMayBeNegativeAndLaterOnesWin) {
    Write(DxfFile(kSquareWords));
    ExpectRuns(
        {{"--pick -1,5 --rows 3 --rows 0", 0, {"... and 1 more", "1 mm away at (0.000000, 5.000000)"}}});
}
