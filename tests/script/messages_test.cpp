#include "script/lua_fixture.h"

using namespace qev;

namespace {

using Messages = test::LuaTest;

// What hosts show, byte by byte, in code page 936.
TEST_F(Messages, AreTheirChineseTexts) {
    Put("T = { Tool = { [2] = { Speed = 5000, Mode = 'x', Name = 'long' } } }");
    const CLuaAccess::EnumItem modes[] = {{nullptr, 0}};
    double number = 0;
    char text[4];
    a.Enter("Tool");
    a.Enter(2);
    a.m_bAutoCreate = true;
    const CLuaAccess entered(a);
    const auto expect = [&](auto step, const char* expected) {
        EXPECT_EQ(test::Thrown([&] { step(); }), expected);
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

} // namespace
