#include "host/fixture.h"

using namespace test;

namespace {

struct SavedTechnics : HostRun {
    static void SetUpTestSuite() {
        ASSERT_EQ(RunHost("'" FLANGE "' --rows 0 --plugin '" LEADIN "'").code, 0);
    }
    // Saves a lead-in on the second of some entities, and loads it into others.
    void ExpectLoad(const std::string& entities, const std::string& others, int code,
                    const std::string& part) {
        SCOPED_TRACE(others);
        ExpectRuns({{"--join 0 --pick 30,5 --technics T={LeadIn={}} --save " + saved, 0, {}, entities},
                    {"--join 0 --load " + saved, code, {part}, others}});
    }
    const std::string square = "0 LWPOLYLINE 70 1 10 20 20 0 10 30 20 0 10 30 20 10 10 20 20 10 ",
                      circle = "0 CIRCLE 10 -5 20 5 40 5 ", line = "0 LINE 10 5 20 50 11 9 21 50 ";
};

TEST_F(SavedTechnics, FindTheirContourByItsShape) {
    const std::string moved = "0 LWPOLYLINE 70 1 10 20 20 1 10 30 20 1 10 30 20 11 10 20 20 11 ",
                      turned = "0 LWPOLYLINE 70 1 10 30 20 0 10 30 20 10 10 20 20 10 10 20 20 0 ",
                      path = "lead' d='M35 5L30 5'";
    ExpectLoad(circle + square, circle + square, 0, path);
    ExpectLoad(circle + square, line + circle + square, 0, path);
    ExpectLoad(circle + square, square + circle, 0, path);
    ExpectLoad(circle + square, circle + moved, 1, "the technics of object 1: no contour has its shape");
    ExpectLoad(circle + square, circle + turned, 1, "the technics of object 1: no contour has its shape");
    std::string onLayer = square; // on the same layer one of them would be dropped
    onLayer.insert(onLayer.find(" 70"), " 8 A");
    ExpectLoad(circle + square, square + circle + onLayer, 1, "object 1: several contours have its shape");
}

TEST_F(SavedTechnics, WhatCannotBeLoadedIsNamed) {
    const std::string shape = " 4 1 40 0 0 10 10 0 0 -2.5\n";
    struct {
        std::string file, error;
    } const cases[] = {
        {"0 3" + shape + "T={\n", "the technics of object 0: technics:1:"},
        {"0 12" + shape + "T={Other={}}", "there is no technics Other; loaded are LeadIn"},
        {"0 18" + shape + "T={LeadIn={Foo=1}}", "LeadIn.Foo = 1 is no parameter"},
        {"0 99" + shape + "T={}", "are damaged"},
        {"0 99999999999" + shape, "are damaged"},
        {"0 4\nT={}", "are damaged"},
    };
    for (const auto& [file, error] : cases) {
        std::ofstream(saved, std::ios::binary) << file;
        ExpectRuns({{"--load " + saved, 1, {error}, kSquareWords}});
    }
    ExpectRuns({{"--load nowhere", 1, {"the technics nowhere cannot be opened"}},
                {"--technics T={LeadIn={}} --save /nowhere/x", 1, {"/nowhere/x cannot be written"}}});
}

} // namespace
