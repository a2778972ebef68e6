#include <cstring>

#include <iconv.h>

#include "script/lua_fixture.h"

using namespace qev;

namespace {

struct Messages : test::LuaTest {
    ~Messages() override { iconv_close(converter); }

    std::string ToUtf8(std::string text) {
        char converted[512];
        char *from = text.data(), *to = converted;
        std::size_t left = text.size(), room = sizeof converted;
        EXPECT_EQ(iconv(converter, &from, &left, &to, &room), 0u) << "not in code page 936";
        return {converted, to};
    }

    const iconv_t converter = iconv_open("UTF-8", "CP936");
};

// What hosts show, byte by byte.
TEST_F(Messages, AreTheirChineseTexts) {
    Put("T = { Tool = { [2] = { Speed = 5000, Mode = 'x', Name = 'long' } } }");
    CLuaAccess access(L);
    const CLuaAccess::EnumItem modes[] = {{nullptr, 0}};
    double number = 0;
    char text[4];
    access.Enter("Tool");
    access.Enter(2);
    access.m_bAutoCreate = true;
    const CLuaAccess entered(access);
    const auto expect = [&](auto step, const char8_t* expected) {
        EXPECT_EQ(ToUtf8(test::Thrown([&] { step(access); })), reinterpret_cast<const char*>(expected));
        access = entered;
        lua_settop(L, 3);
    };
    expect([&](CLuaAccess& a) { a.Read(number, "Speed", 0, 3000); },
           u8"Tool.[2].Speed = 5000 \u4E0D\u5728\u5408\u6CD5\u503C\u8303\u56F4[0,3000]\u5185");
    expect([&](CLuaAccess& a) { a.Write(5000.0, 7), a.Read(number, 7, 0, 3000); },
           u8"Tool.[2].[7] = 5000 \u4E0D\u5728\u5408\u6CD5\u503C\u8303\u56F4[0, 3000]\u5185");
    expect([&](CLuaAccess& a) { a.Read(number, "Mode", modes); },
           u8"Tool.[2].Mode = x \u65E0\u6CD5\u8BC6\u522B\u7684\u679A\u4E3E\u540D");
    expect([&](CLuaAccess& a) { a.Write(1.0, "Mode", modes); },
           u8"Tool.[2].Mode \u8BE5\u503C\u65E0\u6CD5\u5339\u914D\u679A\u4E3E\u540D");
    expect([&](CLuaAccess& a) { a.Read(text, sizeof text, "Name"); },
           u8"Tool.[2].Name = lon \u5B57\u7B26\u4E32\u592A\u957F");
    expect([](CLuaAccess& a) { a.Enter("Speed"); }, u8"Tool.[2].Speed.Speed \u4E0D\u662F\u8868");
    expect([](CLuaAccess& a) { a.Enter(7); }, u8"Tool.[2].[7]. \u4E0D\u662F\u8868");
    expect([](CLuaAccess& a) { a.StartCall(nullptr, nullptr, 0); },
           u8"Tool.[2]. \u6CA1\u6709\u6307\u5B9A\u51FD\u6570");
    expect([](CLuaAccess& a) { a.StartCall("none", "f", 0); },
           u8"Tool.[2]. StartCall\u53C2\u6570\u4E0D\u662F\u4E00\u4E2A\u8868");
    expect([](CLuaAccess& a) { a.StartCall(nullptr, "none", 0); },
           u8"Tool.[2]. \u627E\u4E0D\u5230\u51FD\u6570");
    for (int i = 2; i < 16; ++i) access.Enter("x");
    const std::string tooDeep = ToUtf8(test::Thrown([&] { access.Enter("y"); }));
    const auto* text16 = reinterpret_cast<const char*>(u8"x.y \u8868\u683C\u5D4C\u5957\u592A\u6DF1");
    EXPECT_NE(tooDeep.find(text16), std::string::npos);
}

} // namespace
