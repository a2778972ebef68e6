#include <cmath>

#include "script/lua_fixture.h"

namespace {

using namespace qev;

const CLuaAccess::EnumItem kModes[] = {{"Fast", 1}, {"Quick", 1}, {"Slow", 2}, {nullptr, 3}};
int g_host;

class Write : public test::LuaTest {
protected:
    struct Case {
        bool (*write)(CLuaAccess&);
        const char* holds; // afterwards
    };
    const Case m_cases[14] = {
        {[](CLuaAccess& a) { return a.Write(true, "k"); }, "T.k == true"},
        {[](CLuaAccess& a) { return a.Write(false, 1); }, "T[1] == false"},
        {[](CLuaAccess& a) { return a.Write(1.5, "k"); }, "T.k == 1.5"},
        {[](CLuaAccess& a) { return a.Write(1.5, 1); }, "T[1] == 1.5"},
        {[](CLuaAccess& a) { return a.Write(3, "k"); }, "T.k == 3"},
        {[](CLuaAccess& a) { return a.Write(3, 1); }, "T[1] == 3 and T['1'] == nil"},
        {[](CLuaAccess& a) { return a.Write("text", "k"); }, "T.k == 'text'"},
        {[](CLuaAccess& a) { return a.Write("", 1); }, "T[1] == ''"},
        {[](CLuaAccess& a) { return a.Write(std::string(1000, 'x').c_str(), 1); }, "#T[1] == 1000"},
        {[](CLuaAccess& a) { return a.Write(1.0, "k", kModes); }, "T.k == 'Fast'"},
        {[](CLuaAccess& a) { return a.Write(2.0, "k", kModes); }, "T.k == 'Slow'"},
        {[](CLuaAccess& a) { return a.Write(&g_host, "k"); }, "type(T.k) == 'userdata'"},
        {[](CLuaAccess& a) { return a.Write(std::nan(""), "k"); }, "T.k == nil"},
        {[](CLuaAccess& a) { return a.Write(std::nan(""), 1); }, "T[1] == nil"},
    };
};

// Each form creates a key only on request, and replaces one that is there; twice, as names are known then.
TEST_F(Write, EveryForm) {
    int i = 0;
    for (const Case& c : m_cases) {
        SCOPED_TRACE(i++);
        for (int pass = 0; pass < 2; ++pass) {
            Run("T = { other = 1 }");
            lua_getglobal(L, "T");
            CLuaAccess access(L);
            EXPECT_FALSE(Do([&] { return c.write(access); }));
            EXPECT_TRUE(Holds("T.k == nil and T[1] == nil"));
            access.m_bAutoCreate = true;
            EXPECT_TRUE(Do([&] { return c.write(access); }));
            EXPECT_TRUE(Holds(c.holds));
            access.m_bAutoCreate = false;
            Run("T.k = 'before' T[1] = 'before'");
            EXPECT_TRUE(Do([&] { return c.write(access); }));
            EXPECT_TRUE(Holds(c.holds));
        }
    }
}

TEST_F(Write, Refused) {
    Run("T = { k = 1 }");
    lua_getglobal(L, "T");
    CLuaAccess access(L);
    const char* none = nullptr;
    EXPECT_FALSE(Do([&] {
        return access.Write(2.0, none) || access.Write(none, "k") || access.Write(2.0, none, kModes);
    }));
    EXPECT_EQ(Fault([&] { access.Write(2.5, "k", kModes); }).find("k "), 0u);
    lua_pushnil(L);
    EXPECT_FALSE(Do([&] { return access.Write(2.5, "k", kModes); })) << "no table comes first";
    EXPECT_TRUE(Holds("T.k == 1"));
}

TEST_F(Write, Metatables) {
    Run("Log = {} T = setmetatable({ own = 1 }, { __index = { known = 1 }, __newindex = function(_, key, "
        "value) "
        "if value == 13 then error('unlucky', 0) end Log[key] = value end })");
    lua_getglobal(L, "T");
    CLuaAccess access(L);
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_TRUE(Do([&] { return access.Write(2.0, "own"); }));
        EXPECT_TRUE(Do([&] { return access.Write(3.0, "known"); })) << "what __index answers counts as there";
        EXPECT_FALSE(Do([&] { return access.Write(4.0, "unknown"); }));
        EXPECT_EQ(Fault([&] { access.Write(13.0, "known"); }), "known unlucky");
    }
    EXPECT_TRUE(Holds(
        "rawget(T, 'own') == 2 and rawget(T, 'known') == nil and Log.known == 3 and Log.unknown == nil"));
}

} // namespace
