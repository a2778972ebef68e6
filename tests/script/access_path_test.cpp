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

TEST_F(Path, GlobalTables) {
    lua_settop(L, 0);
    EXPECT_STEPS(2, true, a.EnterGlobal("T"), a.Enter("a"));
    EXPECT_FAULT(0, "T.a.b ", a.ErrorHandle("b", nullptr, ""));
    EXPECT_STEPS(2, false, a.EnterGlobal("missing"), a.EnterGlobal(nullptr));
    for (int i = 0; i < 4; ++i) a.Leave();
    EXPECT_EQ(lua_gettop(L), 0);
    a.m_bAutoCreate = true;
    EXPECT_STEPS(1, true, a.EnterGlobal("made"), a.Write(3.0, "x"));
    EXPECT_HOLDS("made.x == 3");
    EXPECT_NE(Run(0, [&] { a.EnterGlobal("print"); }), "");
}

TEST_F(Path, FieldsAreCollectedByName) {
    Put("T = { b = true, [3] = 2.5, ['a b'] = 'text', c = {}, [print] = 1, f = print }");
    std::vector<CLuaAccess::FieldInfo> fields;
    const int top = lua_gettop(L);
    a.CollectFields(fields);
    EXPECT_EQ(lua_gettop(L), top);
    std::string all;
    for (const auto& [name, value] : fields) all += name + "=" + value + ";";
    EXPECT_EQ(all, "[3]=2.5;a b=text;b=true;c=table;f=function;");
    lua_pushnil(L);
    a.CollectFields(fields);
    EXPECT_EQ(fields.size(), 0u) << "without a table";
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
    EXPECT_NE(Run(0, [&] { a.Enter("x"); }), "");
}

// What hosts show, byte by byte, in code page 936.
TEST_F(Path, Messages) {
    Put("T = { Tool = { [2] = { Speed = 5000, Mode = 'x', Name = 'long' } } }");
    const CLuaAccess::EnumItem modes[] = {{nullptr, 0}};
    double number = 0;
    char text[4];
    a.Enter("Tool");
    a.Enter(2);
    a.m_bAutoCreate = true;
    const CLuaAccess entered(a);
    const auto expect = [&](auto step, const char* expected) {
        EXPECT_EQ(test::Thrown(step), expected);
        a = entered;
        lua_settop(L, 3);
    };
    expect([&] { a.Read(number, "Speed", 0, 3000); },
           "Tool.[2].Speed = 5000 \xB2\xBB\xD4\xDA\xBA\xCF\xB7\xA8\xD6\xB5\xB7\xB6\xCE\xA7[0,3000]\xC4\xDA");
    expect([&] { a.Write(5000.0, 7), a.Read(number, 7, 0, 3000); },
           "Tool.[2].[7] = 5000 \xB2\xBB\xD4\xDA\xBA\xCF\xB7\xA8\xD6\xB5\xB7\xB6\xCE\xA7[0, 3000]\xC4\xDA");
    expect([&] { a.Read(number, "Mode", modes); },
           "Tool.[2].Mode = x \xCE\xDE\xB7\xA8\xCA\xB6\xB1\xF0\xB5\xC4\xC3\xB6\xBE\xD9\xC3\xFB");
    expect([&] { a.Write(1.0, "Mode", modes); },
           "Tool.[2].Mode \xB8\xC3\xD6\xB5\xCE\xDE\xB7\xA8\xC6\xA5\xC5\xE4\xC3\xB6\xBE\xD9\xC3\xFB");
    expect([&] { a.Read(text, sizeof text, "Name"); },
           "Tool.[2].Name = lon \xD7\xD6\xB7\xFB\xB4\xAE\xCC\xAB\xB3\xA4");
    expect([&] { a.Enter("Speed"); }, "Tool.[2].Speed.Speed \xB2\xBB\xCA\xC7\xB1\xED");
    expect([&] { a.Enter(7); }, "Tool.[2].[7]. \xB2\xBB\xCA\xC7\xB1\xED");
    expect([&] { a.StartCall(nullptr, nullptr, 0); },
           "Tool.[2]. \xC3\xBB\xD3\xD0\xD6\xB8\xB6\xA8\xBA\xAF\xCA\xFD");
    expect([&] { a.StartCall("none", "f", 0); },
           "Tool.[2]. StartCall\xB2\xCE\xCA\xFD\xB2\xBB\xCA\xC7\xD2\xBB\xB8\xF6\xB1\xED");
    expect([&] { a.StartCall(nullptr, "none", 0); }, "Tool.[2]. \xD5\xD2\xB2\xBB\xB5\xBD\xBA\xAF\xCA\xFD");
    for (int i = 2; i < 16; ++i) a.Enter("x");
    EXPECT_FAULT(0, "Tool.[2].x.x.x.x.x.x.x.x.x.x.x.x.x.x.x \xB1\xED\xB8\xF1\xC7\xB6\xCC\xD7\xCC\xAB\xC9\xEE",
                 a.Enter("x"));
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
}

} // namespace
