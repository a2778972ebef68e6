#include <optional>

#include "script/lua_fixture.h"

using namespace qev;

namespace {

struct Path : test::LuaTest {
    Path() { Put("T = { a = { b = 5, [2] = { c = {} } } }"); }
};

TEST_F(Path, EnterAndLeave) {
    EXPECT_STEPS(3, true, a.Enter("a"), a.Enter(2), a.Enter("c"));
    EXPECT_STEPS(1, false, a.Enter("missing"));
    EXPECT_STEPS(1, false, a.Enter(1)) << "in what is no table";
    for (int i = 0; i < 5; ++i) a.Leave();
    EXPECT_HOLDS("next(T.a[2].c) == nil");
    EXPECT_STEPS(1, false, a.Enter(static_cast<const char*>(nullptr)));
    a.Leave();
    a.m_bAutoCreate = true;
    EXPECT_STEPS(2, true, a.Enter("new"), a.Enter(-3), a.Write(1.0, "x"));
    a.Leave();
    EXPECT_STEPS(0, true, a.Write(2.0, "y"));
    EXPECT_HOLDS("T.new[-3].x == 1");
    EXPECT_HOLDS("T.new.y == 2");
}

TEST_F(Path, Texts) {
    a.Enter("a");
    a.Enter(2);
    EXPECT_FAULT(0, "a.[2].Speed = 5000 message", a.ErrorHandle("Speed", "5000", "message"));
    EXPECT_FAULT(0, "a.[2]. ", a.ErrorHandle(nullptr, nullptr, nullptr));
    const std::string x(300, 'x'), y(300, 'y');
    CLuaAccess longest(L);
    longest.Enter(x.c_str());
    longest.Enter(y.c_str());
    EXPECT_FAULT(0, x.substr(0, 127) + "." + y.substr(0, 127), longest.ErrorHandle("cut", nullptr, ""));
    EXPECT_FAULT(0, "key message", CLuaAccess(L).ErrorHandle("key", nullptr, "message")); // it stays
}

TEST_F(Path, MoreLeftThanEntered) {
    for (int i = 0; i < 100; ++i) a.Leave();
    EXPECT_EQ(lua_gettop(L), 0);
    EXPECT_NE(Run(0, [&] { a.Enter("x"); }), "");
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
    EXPECT_FAULT(0, " stack overflow", a.Enter("a"));
}

} // namespace
