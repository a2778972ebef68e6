#include "support/support.h"

using namespace qev;
using namespace test;

TEST(Param, ReadsNumbersOrNone) {
    const auto value = [](const char* text) { return CParam::GetKey_DBL_FromString(text, "A"); };
    EXPECT_EQ(value("B=1;A=2;"), 2);
    EXPECT_EQ(value("A = +1.5e-3 ;B=2"), 1.5e-3) << "blanks are dropped";
    EXPECT_EQ(value(";;;A=1;A=2"), 1) << "the first counts";
    for (const char* text : {"A=1x;", "A=;", "A=1,5;", "a=1;", "", "A", "A=+-7", "A=1e999", "A==1;", "AB=1;"})
        EXPECT_TRUE(std::isnan(value(text))) << text;
    EXPECT_TRUE(std::isnan(value(nullptr)));
    EXPECT_TRUE(std::isnan(CParam::GetKey_DBL_FromString("A=1;", nullptr)));
}
