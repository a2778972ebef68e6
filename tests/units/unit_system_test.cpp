#include <qev/units.h>

#include <gtest/gtest.h>

namespace {

TEST(UnitSystem, IsSetOnceAndConverts) {
    UnitSystem metric = *UnitSystem::GetUnitSystem(), inch = metric; // values of their own
    EXPECT_FALSE(inch.Load("inch"));
    EXPECT_TRUE(inch.Load("Inch"));
    EXPECT_FALSE(inch.Load("Metric"));
    EXPECT_TRUE(metric.Load("Metric"));
    EXPECT_FALSE(metric.Load(UNIT_INCH));
    EXPECT_EQ(metric.MetricToUiUnit(25.4, CONVERT_LENGTH), 25.4);
    EXPECT_EQ(inch.MetricToUiUnit(25.4, CONVERT_LENGTH), 1);
    EXPECT_EQ(inch.MetricToUiUnit(25, CONVERT_ROUNDED), 1);
    EXPECT_EQ(inch.MetricToUiUnit(7, static_cast<convert_type_t>(5)), 7);
    EXPECT_EQ(metric.UiUnitToMetric(2), 2);
    EXPECT_EQ(inch.UiUnitToMetric(2), 50.8);
    EXPECT_EQ(metric.MetricToInch(metric.InchToMetric(0.5)), 0.5);
}

} // namespace
