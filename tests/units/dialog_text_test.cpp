#include <qev/units.h>

#include "platform/dialog.h"
#include "support/dialog.h"
#include "support/random.h"

namespace {

TEST(DialogText, ShownAndStored) {
    const test::Dialog dialog({101});
    const auto shown = [&](const char* text) {
        SetDlgItemTextUnit(dialog.Get(), 101, text);
        return qev::platform::GetItemText(dialog.Get(), 101);
    };
    const auto stored = [&](const char* text) {
        qev::platform::SetItemText(dialog.Get(), 101, text);
        CString value;
        GetDlgItemTextUnit(dialog.Get(), 101, value);
        return value;
    };
    UnitSystem& system = *UnitSystem::GetUnitSystem();
    const UnitSystem fresh = system; // a unit can be set once
    for (const bool inch : {false, true}) {
        ASSERT_TRUE(system.Load(inch ? UNIT_INCH : UNIT_METRIC));
        EXPECT_EQ(shown("+1.23456"), inch ? "0.0486" : "1.235");
        EXPECT_EQ(shown("100"), inch ? "3.93701" : "100");
        EXPECT_EQ(shown("-"), "0");
        for (const char* text : {"", "1e3", "-0"}) EXPECT_EQ(shown(text), text);
        EXPECT_EQ(stored(" +.5e0mm"), inch ? "12.6999999999999993" : "0.5000000000000000");
        for (const char* text : {"", "infinite", "1e999"}) EXPECT_EQ(stored(text), "0.0000000000000000");
        EXPECT_EQ(stored("-0x1.8p1 mm"), inch ? "-76.1999999999999886" : "-3.0000000000000000");
        for (const char* sign : {"+-1", "--1", "0x-1", "0xg"})
            EXPECT_EQ(std::abs(std::atof(stored(sign))), 0) << sign;
        const std::string longNumber = std::string(5000, '0').append(".5");
        EXPECT_EQ(stored(longNumber.c_str()), stored("0.5"));
        test::Random random;
        for (int i = 0; i < 300; ++i) {
            const CString first = shown(ToStringPrecision(random.Uniform(-1e6, 1e6), random.Int(-1, 12)));
            EXPECT_EQ(shown(stored(first)), first);
        }
        system = fresh;
    }
    for (const HWND window : {dialog.Get(), HWND{}}) { // there is no such control
        CString value;
        SetDlgItemTextUnit(window, 7, nullptr);
        GetDlgItemTextUnit(window, 7, value);
        EXPECT_EQ(value, stored(""));
    }
}

} // namespace
