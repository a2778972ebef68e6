#include "host/fixture.h"

using namespace test;

namespace {

// Two squares, one run counter-clockwise from the lower left, one clockwise; a circle, a line and a dot.
struct Technics : HostRun {
    static void SetUpTestSuite() { // the process's technics manager keeps the plug-ins
        const Ran ran = RunHost("'" FLANGE "' --rows 0" + kPlugIns);
        ASSERT_EQ(ran.code, 0) << ran.errors;
    }
    Technics() {
        Write(DxfFile(kSquareWords
                      + "0 LWPOLYLINE 70 1 10 20 20 0 10 20 20 10 10 30 20 10 10 30 20 0 "
                        "0 CIRCLE 10 50 20 5 40 5 0 LINE 10 60 20 0 11 60 21 9 0 POINT 10 0 20 0"));
    }
};

TEST_F(Technics, PathsOfLeadInsAndMicroJoints) {
    const std::string line =
                          "--join 0 --technics T={LeadIn={Length=4}} --params MouseSegment=1;MouseRatio=0.75",
                      arc = "--join 0 --pick 30,5 --technics T={LeadIn={Type='Arc',Angle=90}}",
                      joints = "--join 0 --technics T={MicroJoint={Width=2,Spacing=5,Zone=1}}";
    ExpectRuns({
        {line,
         0,
         {"lead-ins added to 4 of 4", "lead' d='M14 7.5L10 7.5'", "lead' d='M25 14L25 10'", "L60 0'"}},
        {arc, 0, {"lead-ins added to 1 of 1", "lead' d='M23 12A2 2 0 0 1 25 10'"}},
        {joints,
         0,
         {"added to 4 of 4", "path' d='M6 0L10 0L10 4'", "path' d='M60 0L60 3.5'", "bridge' d='M4 0L6 0'"}},
    });
}

TEST_F(Technics, WhatHasNoRoomIsNamedByItsNumber) {
    Write(DxfFile("0 LINE 10 60 20 0 11 60 21 9 0 POINT 10 0 20 0 0 CIRCLE 10 0 20 0 40 5 "
                  "0 CIRCLE 10 0 20 0 40 4.8 0 CIRCLE 10 90 20 0 40 0.5"));
    ExpectRuns({{"--join 0 --technics T={LeadIn={},MicroJoint={}}",
                 0,
                 {"technics: lead-ins added to 2 of 4", "\n  object 2 no room: nowhere",
                  "\n  object 3 no room", "technics: micro-joints added to 3 of 4",
                  "\n  object 4 no room: no free stretch", " bridges\n"}}});
}

TEST_F(Technics, SavingLoadingAndSavingAgainGivesOneText) {
    const std::string save = " --save " + saved, load = "--join 0 --load " + saved + save;
    ExpectRuns({{"--join 0 --technics T={MicroJoint={Width=2,Spacing=5,Zone=1}}" + save, 0, {}},
                {load + " --technics T={LeadIn={}}", 0, {}}});
    const std::string text = BytesOf(saved);
    ExpectContains(text, {"\nT={LeadIn={Type=\"Line\",Length=5,Angle=90,Radius=2,Zone=1,Clearance=0.5,"
                          "LeadOut=\"None\",Overlap=0,Side=\"Right\",Scale=1,OutScale=1,Segment=1,Ratio=0.5},"
                          "MicroJoint={Width=2,Spacing=5,Zone=1},};\n"});
    ExpectRuns({{load, 0, {}}});
    EXPECT_EQ(BytesOf(saved), text);
    ExpectRuns({{load + " --remove LeadIn", 0, {"lead-ins removed from 4 of 4"}},
                {load + " --remove 2", 0, {"micro-joints removed from 4 of 4"}}});
    EXPECT_EQ(BytesOf(saved), "");
}

TEST_F(Technics, BridgesThatALeadInTakesTheRoomOfAreTold) {
    const std::string circle = "0 CIRCLE 10 50 20 5 40 5",
                      lost = "object 0 is left without its MicroJoint: no room";
    ExpectRuns({{"--technics T={MicroJoint={Width=2,Zone=15}} --save " + saved, 0, {"1 bridges"}, circle},
                {"--load " + saved + " --technics T={LeadIn={}}", 0, {lost}},
                {"--load " + saved + " --technics T={LeadIn={},MicroJoint={}}", 0, {"1 bridges"}}});
    EXPECT_EQ(RunHost(drawing + " --load " + saved).out.find("is left without"), std::string::npos);
}

TEST_F(Technics, RefusalsEndInOneLine) {
    ExpectRuns({
        {"--plugin nowhere.so", 1, {"nowhere.so: "}},
        {"--technics T={Other={}}", 1, {"there is no technics Other; loaded are LeadIn, MicroJoint"}},
        {"--technics T={LeadIn={Tpye='Arc'}}", 1, {"LeadIn.Tpye = Arc is no parameter; did you mean Type?"}},
        {"--technics T={LeadIn=5}", 1, {"no technics: LeadIn = 5 is not a table of parameters"}},
        {"--technics T={LeadIn={},LeadIn={}}", 1, {"LeadIn is there twice"}},
        {"--technics os.exit()", 1, {"no technics: technics:1: "}},
    });
}

} // namespace
