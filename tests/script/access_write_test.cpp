#include <cmath>

#include "script/lua_fixture.h"

using namespace qev;

namespace {

const CLuaAccess::EnumItem kModes[] = {{"Fast", 1}, {"Quick", 1}, {"Slow", 2}, {nullptr, 3}};

// Each form creates a key only on request, and replaces one that is there; twice, as names are known then.
struct Write : test::LuaTest {
    template <class Step>
    void Check(Step write, const std::string& holds) {
        for (int pass = 0; pass < 2; ++pass)
            for (const bool isThere : {false, true}) {
                Put(isThere ? "T = { 'before', k = 'before' }" : "T = { other = 1 }");
                a.m_bAutoCreate = false;
                if (!isThere) EXPECT_STEPS(0, false, write());
                if (!isThere) EXPECT_HOLDS("next(T, next(T)) == nil"); // nothing but the other one
                a.m_bAutoCreate = !isThere;
                EXPECT_STEPS(0, true, write());
                EXPECT_HOLDS(holds);
            }
    }
    template <class Value>
    void Both(Value value, const std::string& holds) {
        Check([&] { return a.Write(value, "k"); }, "T.k" + holds);
        Check([&] { return a.Write(value, 1); }, "T[1]" + holds + " and T['1'] == nil");
    }
};

TEST_F(Write, EveryForm) {
    Both(true, " == true");
    Both(false, " == false");
    Both(1.5, " == 1.5");
    Both(3, " == 3");
    Both("text", " == 'text'");
    Both(std::nan(""), " == nil");
    Check([&] { return a.Write(1.0, "k", kModes); }, "T.k == 'Fast'");
    Check([&] { return a.Write(2.0, "k", kModes); }, "T.k == 'Slow'");
    Check([&] { return a.Write(&a, "k"); }, "type(T.k) == 'userdata'");
}

TEST_F(Write, Refused) {
    Put("T = { k = 1 }");
    const char* none = nullptr;
    EXPECT_STEPS(0, false, a.Write(2.0, none), a.Write(none, "k"), a.Write(2.0, none, kModes));
    EXPECT_EQ(Run(0, [&] { a.Write(2.5, "k", kModes); }).find("k "), 0u);
    EXPECT_HOLDS("T.k == 1");
}

TEST_F(Write, Metatables) {
    Put("T = setmetatable({ own = 1 }, { __index = { known = 1 }, __newindex = function(_, key, value) "
        "if value == 13 then error('unlucky', 0) end Log = key .. value end })");
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_STEPS(0, true, a.Write(2.0, "own"), a.Write(3.0, "known"));
        EXPECT_STEPS(0, false, a.Write(4.0, "unknown"));
        EXPECT_FAULT(0, "known unlucky", a.Write(13.0, "known"));
    }
    EXPECT_HOLDS("rawget(T, 'own') == 2");
    EXPECT_HOLDS("Log == 'known3'");
}

} // namespace
