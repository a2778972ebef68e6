#include <optional>

#include "script/lua_fixture.h"

using namespace qev;

namespace {

struct Path : test::LuaTest {
    Path() { Put("T = { a = { b = 5, [2] = { c = {} } } }"); }
};

TEST_F(Path, EnterAndLeave) {
    CLuaAccess access(L);
    EXPECT_STEPS(3, true, access.Enter("a"), access.Enter(2), access.Enter("c"));
    EXPECT_STEPS(1, false, access.Enter("missing"));
    EXPECT_STEPS(1, false, access.Enter(1)) << "in what is no table";
    for (int i = 0; i < 5; ++i) access.Leave();
    EXPECT_HOLDS("next(T.a[2].c) == nil");
    EXPECT_STEPS(1, false, access.Enter(static_cast<const char*>(nullptr)));
    access.Leave();
    access.m_bAutoCreate = true;
    EXPECT_STEPS(2, true, access.Enter("new"), access.Enter(-3), access.Write(1.0, "x"));
    access.Leave();
    EXPECT_STEPS(0, true, access.Write(2.0, "y"));
    EXPECT_HOLDS("T.new[-3].x == 1");
    EXPECT_HOLDS("T.new.y == 2");
}

TEST_F(Path, Texts) {
    CLuaAccess access(L);
    access.Enter("a");
    access.Enter(2);
    EXPECT_FAULT(0, "a.[2].Speed = 5000 message", access.ErrorHandle("Speed", "5000", "message"));
    EXPECT_FAULT(0, "a.[2]. ", access.ErrorHandle(nullptr, nullptr, nullptr));
    const std::string x(300, 'x'), y(300, 'y');
    CLuaAccess longest(L);
    longest.Enter(x.c_str());
    longest.Enter(y.c_str());
    EXPECT_FAULT(0, x.substr(0, 127) + "." + y.substr(0, 127), longest.ErrorHandle("cut", nullptr, ""));
    EXPECT_FAULT(0, "key message", CLuaAccess(L).ErrorHandle("key", nullptr, "message")); // it stays
}

TEST_F(Path, Depth) {
    CLuaAccess access(L);
    access.m_bAutoCreate = true;
    for (int i = 0; i < 16; ++i) ASSERT_TRUE(access.Enter("x"));
    EXPECT_EQ(Run(0, [&] { access.Enter("deep"); }).find("x.x.x.x.x.x.x.x.x.x.x.x.x.x.x.x.deep "), 0u);
    EXPECT_EQ(Run(0, [&] { access.Enter(17); }).find("x.x.x.x.x.x.x.x.x.x.x.x.x.x.x.x. "), 0u);
    for (int i = 0; i < 100; ++i) access.Leave();
    EXPECT_EQ(lua_gettop(L), 0);
    EXPECT_NE(Run(0, [&] { access.Enter("x"); }), "") << "more left than entered";
}

// Copies share the path; each goes on alone, and it does not matter which of them ends first.
TEST_F(Path, Copies) {
    std::optional<CLuaAccess> first(std::in_place, L);
    first->Enter("a");
    first->Enter(2);
    CLuaAccess second(*first), third(L);
    third.Enter("other");
    third = second;
    second.Leave();
    second.Enter("else");
    EXPECT_FAULT(0, "a.[2]. ", first->ErrorHandle("", nullptr, ""));
    EXPECT_FAULT(0, "a.else. ", second.ErrorHandle("", nullptr, ""));
    first.reset();
    EXPECT_FAULT(0, "a.[2]. ", third.ErrorHandle("", nullptr, ""));
}

TEST_F(Path, StackIsRestored) {
    for (const int height : {0, 1, 9}) {
        std::optional<CLuaAccess> access(std::in_place, L);
        access->Enter("a");
        lua_settop(L, height);
        access.reset();
        EXPECT_EQ(lua_gettop(L), 1);
    }
    while (lua_checkstack(L, 1)) lua_pushnil(L);
    CLuaAccess access(L);
    EXPECT_FAULT(0, " stack overflow", access.Enter("a"));
}

} // namespace
