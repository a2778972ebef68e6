#include <cmath>

#include <qevdata/param.h>

#include <gtest/gtest.h>

namespace {

TEST(Param, ReadsNumbersRobustly) {
    const struct {
        const char* text;
        const char* key;
        double value;
    } cases[] = {
        {"A=1;B=2;", "B", 2},  {" A = -1.5e-3 ;B=2", "A", -1.5e-3},
        {"A=1;A=2", "A", 1},   {"AbsoluteError=      0.010000;", "AbsoluteError", 0.01},
        {"A=1;B=2", "C", NAN}, {"A=1x;", "A", NAN},
        {"A=;", "A", NAN},     {"A=1,5;", "A", NAN},
        {"a=1;", "A", NAN},    {"", "A", NAN},
        {nullptr, "A", NAN},   {"A=1;", nullptr, NAN},
        {"A", "A", NAN},       {"=5;", "", 5},
        {"A=+7", "A", 7},      {"A=+-7", "A", NAN},
        {"A=1e999", "A", NAN}, {"A==1;", "A", NAN},
        {";;;A=3", "A", 3},
    };
    for (const auto& c : cases) {
        const double value = qev::CParam::GetKey_DBL_FromString(c.text, c.key);
        const bool same = value == c.value || (std::isnan(value) && std::isnan(c.value));
        EXPECT_TRUE(same) << (c.text ? c.text : "null") << " gives " << value;
    }
}

} // namespace
