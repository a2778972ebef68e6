#include <qev/units.h>

#include <gtest/gtest.h>

namespace {

TEST(UnitSystem, AnyPrecision) {
    EXPECT_EQ(ToStringPrecision(100, -1), "100");
    EXPECT_EQ(ToStringPrecision(-1.7e308, 1'000'000'000).GetLength(), 310);
    EXPECT_EQ(ToStringPrecision(-5e-324, 1'000'000'000).GetLength(), 1077);
}

TEST(UnitSystem, IsSetOnceAndConverts) {
    UnitSystem metric = *UnitSystem::GetUnitSystem(), inch = metric; // values of their own
    EXPECT_FALSE(inch.Load("inch"));
    EXPECT_TRUE(inch.Load("Inch"));
    EXPECT_FALSE(inch.Load("Metric"));
    EXPECT_TRUE(metric.Load("Metric"));
    EXPECT_EQ(inch.MetricToUiUnit(25.4, CONVERT_LENGTH), 1);
    EXPECT_EQ(inch.MetricToUiUnit(25, CONVERT_ROUNDED), 1);
    EXPECT_EQ(inch.MetricToUiUnit(7, static_cast<convert_type_t>(5)), 7);
    EXPECT_EQ(metric.MetricToInch(metric.InchToMetric(0.5)), 0.5);
}

} // namespace
