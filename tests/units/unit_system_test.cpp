#include <qev/units.h>

#include <gtest/gtest.h>

namespace {

TEST(UnitSystem, IsSetOnceByItsExactName) {
    UnitSystem system = *UnitSystem::GetUnitSystem();
    EXPECT_FALSE(system.Load("inch"));
    EXPECT_TRUE(system.Load("Inch"));
    EXPECT_FALSE(system.Load("Metric"));
    EXPECT_FALSE(system.Load(UNIT_METRIC));
    EXPECT_EQ(system.GetUnitType(), UNIT_INCH);
}

TEST(UnitSystem, Conversions) {
    UnitSystem metric = *UnitSystem::GetUnitSystem(), inch = metric;
    EXPECT_TRUE(metric.Load("Metric"));
    EXPECT_TRUE(inch.Load("Inch"));
    EXPECT_EQ(metric.MetricToUiUnit(25.4, CONVERT_LENGTH), 25.4);
    EXPECT_EQ(inch.MetricToUiUnit(25.4, CONVERT_LENGTH), 1);
    EXPECT_EQ(inch.MetricToUiUnit(25, CONVERT_ROUNDED), 1);
    EXPECT_EQ(inch.MetricToUiUnit(7, static_cast<convert_type_t>(5)), 7);
    EXPECT_EQ(metric.UiUnitToMetric(2), 2);
    EXPECT_EQ(inch.UiUnitToMetric(2), 50.8);
    EXPECT_EQ(metric.MetricToInch(metric.InchToMetric(0.5)), 0.5);
}

} // namespace
