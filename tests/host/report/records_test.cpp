#include "host/fixture.h"

using namespace test;

namespace {

// A layer whose name needs quotes, and one in the code page of old files.
const std::string kNamed = "0 LINE 8 a,\"b\" 10 0 20 0 11 3 21 4 0 CIRCLE 8 \xff 10 0 20 0 40 1 ";

TEST_F(HostRun, JsonIsALineADrawingWithTheFieldsOfTheTable) {
    Write(DxfFile(kNamed));
    const Ran ran = RunHost(drawing + " nowhere.dxf --json --pick 0,0 --unit Inch");
    EXPECT_EQ(ran.code, 1);
    const std::string line = R"({"object":0,"kind":"line","layer":"a,\"b\"","segments":1,)"
                             R"("length_in":0.1968503937007874,"closed":false,"direction":null,)"
                             R"("area_in2":null,"corners":0})";
    ExpectContains(ran.out, {R"(_host.dxf","result":"whole","errors":[],)",
                             R"("kinds":{"circle":1,"line":1},"closed":1,)", line, "\"layer\":\"\xc3\xbf\"",
                             "}]}\n{\"drawing\":\"nowhere.dxf\",\"result\":\"refused\",\"errors\":["});
    EXPECT_EQ(std::count(ran.out.begin(), ran.out.end(), '\n'), 2);
    ExpectContains(ran.errors, {"picked: object 0", "nowhere.dxf: "});
}

TEST_F(HostRun, CsvIsALineAnObjectUnderOneHeading) {
    Write(DxfFile(kNamed));
    const Ran ran = RunHost(drawing + " nowhere.dxf " + drawing + " --csv");
    const std::string rows = drawing + ",0,line,\"a,\"\"b\"\"\",1,5.0,false,,,0\n" + drawing
                             + ",1,circle,\xc3\xbf,1,6.283185307179586,true,ccw,3.141592653589793,0\n";
    EXPECT_EQ(ran.out, "drawing,object,kind,layer,segments,length_mm,closed,direction,area_mm2,corners\n"
                           + rows + rows);
}

} // namespace
