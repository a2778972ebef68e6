#include <qev/units.h>

#include <gtest/gtest.h>

#include "platform/dialog.h"
#include "support/dialog.h"
#include "support/random.h"

namespace {

struct TextCase {
    const char *text, *metric, *inch;
};

class Units : public testing::Test {
protected:
    // Runs a check in each unit, which can be set once.
    template <class Check>
    void InBothUnits(Check check) {
        const UnitSystem fresh = m_system;
        for (const char* name : {"Metric", "Inch"}) {
            EXPECT_TRUE(m_system.Load(name));
            check(m_system.GetUnitType() == UNIT_INCH);
            m_system = fresh;
        }
    }
    CString Shown(const char* stored) {
        SetDlgItemTextUnit(m_dialog.Get(), 101, stored);
        return platform::GetItemText(m_dialog.Get(), 101);
    }
    CString Stored(const char* shown, int id = 101) {
        platform::SetItemText(m_dialog.Get(), 101, shown);
        CString value = "before";
        GetDlgItemTextUnit(m_dialog.Get(), id, value);
        return value;
    }

    UnitSystem& m_system = *UnitSystem::GetUnitSystem();
    const test::Dialog m_dialog{{101}};
};

TEST_F(Units, LoadedOnceThenConverting) {
    for (const char* wrong : {"", "inch"}) EXPECT_FALSE(m_system.Load(wrong));
    InBothUnits([&](bool inch) {
        EXPECT_FALSE(m_system.Load("Metric") || m_system.Load("Inch"));
        EXPECT_EQ(m_system.MetricToUiUnit(25.4, CONVERT_LENGTH), inch ? 1 : 25.4);
        EXPECT_EQ(m_system.MetricToUiUnit(25, CONVERT_ROUNDED), inch ? 1 : 25);
        EXPECT_EQ(m_system.MetricToUiUnit(7, static_cast<convert_type_t>(5)), 7);
        EXPECT_EQ(m_system.UiUnitToMetric(2), inch ? 50.8 : 2);
        EXPECT_EQ(m_system.MetricToInch(m_system.InchToMetric(0.5)), 0.5);
    });
}

TEST_F(Units, DialogTexts) {
    const TextCase toShow[] = {{"12.7", "12.7", "0.5"},
                               {"+1.23456", "1.235", "0.0486"},
                               {"100", "100", "3.93701"},
                               {"1e3", "1e3", "1e3"},
                               {"", "", ""},
                               {"-", "0", "0"},
                               {"-.0", "-0", "-0"}};
    const char* const zero = "0.0000000000000000";
    const TextCase toRead[] = {{" +.5e0mm", "0.5000000000000000", "12.6999999999999993"},
                               {"", zero, zero},
                               {"infinite", zero, zero},
                               {"1e999", zero, zero}};
    InBothUnits([&](bool inch) {
        for (const TextCase& c : toShow) EXPECT_EQ(Shown(c.text), inch ? c.inch : c.metric) << c.text;
        for (const TextCase& c : toRead) EXPECT_EQ(Stored(c.text), inch ? c.inch : c.metric) << c.text;
        EXPECT_EQ(Stored("1", 7), zero) << "no such control";
    });
}

TEST_F(Units, ShownTextsDoNotDrift) {
    test::Random random;
    InBothUnits([&](bool) {
        for (int i = 0; i < 300; ++i) {
            const CString shown = Shown(ToStringPrecision(random.Uniform(-1e6, 1e6), random.Int(-1, 12)));
            EXPECT_EQ(Shown(Stored(shown)), shown);
        }
    });
    EXPECT_EQ(ToStringPrecision(100, -1), "100");
    EXPECT_EQ(ToStringPrecision(-1.7e308, 1'000'000'000).GetLength(), 310);
    EXPECT_EQ(ToStringPrecision(-5e-324, 1'000'000'000).GetLength(), 1077);
}

} // namespace
