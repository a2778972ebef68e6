#include <cmath>

#include "script/lua_fixture.h"

namespace {

using namespace qev;

const CLuaAccess::EnumItem kModes[] = {{"Fast", 1}, {"Quick", 1}, {"Slow", 2}, {nullptr, 3}};

using Write = test::LuaTest;

// Each form creates a key only on request, and replaces one that is there; twice, as names are known then.
TEST_F(Write, EveryForm) {
    const struct {
        bool (*write)(CLuaAccess&);
        const char* holds;
    } cases[] = {{[](CLuaAccess& a) { return a.Write(true, "k"); }, "T.k == true"},
                 {[](CLuaAccess& a) { return a.Write(false, 1); }, "T[1] == false"},
                 {[](CLuaAccess& a) { return a.Write(1.5, "k"); }, "T.k == 1.5"},
                 {[](CLuaAccess& a) { return a.Write(1.5, 1); }, "T[1] == 1.5"},
                 {[](CLuaAccess& a) { return a.Write(3, "k"); }, "T.k == 3"},
                 {[](CLuaAccess& a) { return a.Write(3, 1); }, "T[1] == 3 and T['1'] == nil"},
                 {[](CLuaAccess& a) { return a.Write("text", "k"); }, "T.k == 'text'"},
                 {[](CLuaAccess& a) { return a.Write("", 1); }, "T[1] == ''"},
                 {[](CLuaAccess& a) { return a.Write(std::string(999, 'x').c_str(), 1); }, "#T[1] == 999"},
                 {[](CLuaAccess& a) { return a.Write(1.0, "k", kModes); }, "T.k == 'Fast'"},
                 {[](CLuaAccess& a) { return a.Write(2.0, "k", kModes); }, "T.k == 'Slow'"},
                 {[](CLuaAccess& a) { return a.Write(&a, "k"); }, "type(T.k) == 'userdata'"},
                 {[](CLuaAccess& a) { return a.Write(std::nan(""), "k"); }, "T.k == nil"},
                 {[](CLuaAccess& a) { return a.Write(std::nan(""), 1); }, "T[1] == nil"}};
    for (const auto& c : cases)
        for (int pass = 0; pass < 2; ++pass) {
            Put("T = { other = 1 }");
            CLuaAccess access(L);
            EXPECT_STEP(0, false, c.write(access));
            EXPECT_HOLDS("T.k == nil and T[1] == nil");
            access.m_bAutoCreate = true;
            EXPECT_STEP(0, true, c.write(access));
            EXPECT_HOLDS(c.holds);
            access.m_bAutoCreate = false;
            Put("T = { 'before', k = 'before' }");
            EXPECT_STEP(0, true, c.write(access));
            EXPECT_HOLDS(c.holds);
        }
}

TEST_F(Write, Refused) {
    Put("T = { k = 1 }");
    CLuaAccess access(L);
    const char* none = nullptr;
    EXPECT_STEP(0, false,
                access.Write(2.0, none) || access.Write(none, "k") || access.Write(2.0, none, kModes));
    EXPECT_EQ(Run(0, [&] { access.Write(2.5, "k", kModes); }).find("k "), 0u);
    EXPECT_HOLDS("T.k == 1");
    lua_pushnil(L);
    EXPECT_STEP(0, false, access.Write(2.5, "k", kModes));
}

TEST_F(Write, Metatables) {
    Put("T = setmetatable({ own = 1 }, { __index = { known = 1 }, __newindex = function(_, key, value) "
        "if value == 13 then error('unlucky', 0) end Log = key .. value end })");
    CLuaAccess access(L);
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_STEP(0, true, access.Write(2.0, "own") && access.Write(3.0, "known"));
        EXPECT_STEP(0, false, access.Write(4.0, "unknown"));
        EXPECT_FAULT(0, "known unlucky", access.Write(13.0, "known"));
    }
    EXPECT_HOLDS("rawget(T, 'own') == 2 and rawget(T, 'known') == nil and Log == 'known3'");
}

} // namespace
