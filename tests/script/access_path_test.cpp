#include <optional>

#include "script/lua_fixture.h"

namespace {

using namespace qev;

class Path : public test::LuaTest {
protected:
    Path() {
        Run("T = { a = { b = 5, [2] = { c = {} } } }");
        lua_getglobal(L, "T");
    }
};

TEST_F(Path, EnterAndLeave) {
    CLuaAccess access(L);
    double number = 0;
    EXPECT_TRUE(Do([&] { return access.Enter("a"); }, 1));
    EXPECT_TRUE(Do([&] { return access.Read(number, "b", 0, 9); }));
    EXPECT_TRUE(Do([&] { return access.Enter(2) && access.Enter("c"); }, 2));
    EXPECT_FALSE(Do([&] { return access.Enter("missing"); }, 1));
    EXPECT_FALSE(Do([&] { return access.Enter(1); }, 1)) << "below what is missing";
    EXPECT_FALSE(Do([&] { return access.Enter(static_cast<const char*>(nullptr)); }, 1));
    for (int i = 0; i < 6; ++i) access.Leave();
    EXPECT_TRUE(Holds("next(T.a[2].c) == nil")) << "nothing was created";
    access.m_bAutoCreate = true;
    EXPECT_TRUE(Do([&] { return access.Enter("new") && access.Enter(-3) && access.Write(1.0, "x"); }, 2));
    access.Leave();
    EXPECT_TRUE(Do([&] { return access.Write(2.0, "y"); }));
    EXPECT_TRUE(Holds("T.new[-3].x == 1 and T.new.y == 2"));
}

TEST_F(Path, Texts) {
    CLuaAccess access(L);
    EXPECT_EQ(Fault([&] { access.ErrorHandle("key", nullptr, "message"); }), "key message");
    access.Enter("a");
    access.Enter(2);
    EXPECT_EQ(Fault([&] { access.ErrorHandle("Speed", "5000", "message"); }), "a.[2].Speed = 5000 message");
    access.Leave();
    EXPECT_EQ(Fault([&] { access.ErrorHandle(nullptr, nullptr, nullptr); }), "a. ");
    EXPECT_EQ(Fault([&] { access.Enter("b"); }).find("a.b.b "), 0u) << "the key is there twice";
    lua_settop(L, 1);
    CLuaAccess longest(L);
    longest.Enter(std::string(300, 'x').c_str());
    longest.Enter(std::string(300, 'y').c_str());
    EXPECT_EQ(Fault([&] { longest.ErrorHandle("key", nullptr, ""); }),
              std::string(127, 'x') + "." + std::string(127, 'y'));
}

TEST_F(Path, Depth) {
    CLuaAccess access(L);
    access.m_bAutoCreate = true;
    for (int i = 0; i < 16; ++i) ASSERT_TRUE(access.Enter("x"));
    EXPECT_EQ(Fault([&] { access.Enter("deep"); }).find("x.x.x.x.x.x.x.x.x.x.x.x.x.x.x.x.deep "), 0u);
    EXPECT_EQ(Fault([&] { access.Enter(17); }).find("x.x.x.x.x.x.x.x.x.x.x.x.x.x.x.x. "), 0u);
    for (int i = 0; i < 100; ++i) access.Leave();
    EXPECT_EQ(lua_gettop(L), 0) << "nothing is popped from an empty stack";
    EXPECT_NE(Fault([&] { access.Enter("x"); }), "") << "more left than entered";
}

TEST_F(Path, TextOutlivesTheCursor) {
    const char* text = nullptr;
    try {
        CLuaAccess access(L);
        access.ErrorHandle("key", nullptr, "message");
    } catch (char* thrown) {
        text = thrown;
    }
    EXPECT_STREQ(text, "key message");
}

// Copies share the path; each goes on alone, and it does not matter which of them ends first.
TEST_F(Path, Copies) {
    const auto pathOf = [](CLuaAccess& access) {
        return test::Thrown([&] { access.ErrorHandle("", nullptr, ""); });
    };
    std::optional<CLuaAccess> first(std::in_place, L);
    first->Enter("a");
    first->Enter(2);
    CLuaAccess second(*first), third(L);
    third.Enter("other");
    third = second;
    third = third;
    second.Leave();
    second.Enter("else");
    EXPECT_EQ(pathOf(*first), "a.[2]. ");
    EXPECT_EQ(pathOf(second), "a.else. ");
    first.reset();
    EXPECT_EQ(pathOf(third), "a.[2]. ");
}

TEST_F(Path, StackIsRestored) {
    const int top = lua_gettop(L);
    {
        CLuaAccess access(L);
        access.Enter("a");
        access.Enter("missing");
    }
    EXPECT_EQ(lua_gettop(L), top);
    {
        CLuaAccess access(L);
        lua_settop(L, 0);
    }
    EXPECT_EQ(lua_gettop(L), top) << "also upwards";
    while (lua_checkstack(L, 1)) lua_pushnil(L);
    CLuaAccess access(L);
    EXPECT_EQ(Fault([&] { access.Enter("a"); }), " stack overflow");
}

} // namespace
