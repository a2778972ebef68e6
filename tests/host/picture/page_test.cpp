#include "host/fixture.h"

using namespace test;

TEST_F(HostRun, APageHoldsTheDrawingAndNothingOfItAsMarkup) {
    Write(DxfFile("0 CIRCLE 8 </script><b>\xff 10 5 20 5 40 2 " + kSquareWords));
    EXPECT_EQ(RunHost(drawing + " --html " + picture).code, 0);
    const std::string page = BytesOf(picture);
    ExpectContains(page, {"[\"circle\",0,0,1,12.566", R"("\u003c/script>\u003cb>)",
                          R"(["polyline",1,0,4,40.0,100.0,true,2,4,0,"","M0 0L10 0L10 10L0 10L0 0"])"});
    EXPECT_EQ(page.find("@PAGE"), std::string::npos);
    EXPECT_EQ(page.find("</script><b>"), std::string::npos);
}
