#include "support/support.h"

// Text with | for the semicolon, key, value.
TEST(Param, ReadsNumbersRobustly) {
    for (const auto& [row, text, key, value] : Rows<std::string, std::string, double>(
             "A=1|B=2| B 2; ' A = -1.5e-3 |B=2' A -1.5e-3; A=1|A=2 A 1; 'AbsoluteError=      0.01|' "
             "AbsoluteError 0.01; A=1|B=2 C nan; A=1x| A nan; A=| A nan; A=1,5| A nan; a=1| A nan; '' A nan;"
             "A A nan; =5| '' 5; A=+7 A 7; A=+-7 A nan; A=1e999 A nan; A==1| A nan; |||A=3 A 3")) {
        std::string settings = text;
        std::replace(settings.begin(), settings.end(), '|', ';');
        const double read = CParam::GetKey_DBL_FromString(settings.c_str(), key.c_str());
        EXPECT_TRUE(read == value || (std::isnan(read) && std::isnan(value))) << row << " gives " << read;
    }
    EXPECT_TRUE(std::isnan(CParam::GetKey_DBL_FromString(nullptr, "A")));
    EXPECT_TRUE(std::isnan(CParam::GetKey_DBL_FromString("A=1;", nullptr)));
}
