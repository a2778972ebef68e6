#include <cmath>
#include <sstream>

#include "script/lua_fixture.h"

namespace {

const auto Same = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
using Read = test::LuaTest;

// Read by name, by index and as an int from T = { k = value, value }: the value, the bounds, the number and
// the int read (-9: none), and what the error shows (-: no error).
TEST_F(Read, Numbers) {
    std::istringstream rows(
        "7.9 0 10 7.9 7 -  -7.9 -10 10 -7.9 -7 -  '12' 0 12 12 12 -  '0x10' 16 16 16 16 -  "
        "'1mm' 0 100 -9 -9 -  true 0 10 -9 -9 -  nil 0 10 -9 -9 -  11 0 10 11 -9 11  "
        "11 nan nan 11 11 -  -0.5 0 10 -0.5 -9 -0.5  0/0 0 10 nan 0 -  "
        "1234567 0 9 1234567 -9 1.23457e+06  1e6 0 1e6 1e6 1000000 -  "
        "1e300 0 1e300 1e300 2147483647 -  -1/0 -inf 0 -inf -2147483648 -");
    for (std::string value, low, high, number, whole, shown;
         rows >> value >> low >> high >> number >> whole >> shown;) {
        SCOPED_TRACE(value);
        Put("local v = " + value + " T = { k = v, v }");
        CLuaAccess access(L);
        const double min = std::stod(low), max = std::stod(high), expected = std::stod(number);
        const bool isFault = shown != "-", isRead = expected != -9 && !isFault;
        double byName = -9, byIndex = -9;
        int integer = -9;
        const auto check = [&](const std::string& key, auto step) {
            const std::string text = Run(isFault, [&] { EXPECT_EQ(step(), isRead); });
            EXPECT_TRUE(isFault ? text.find(key + " = " + shown + " ") == 0 : text.empty()) << text;
        };
        check("k", [&] { return access.Read(byName, "k", min, max); });
        check("[1]", [&] { return access.Read(byIndex, 1, min, max); });
        check("k", [&] { return access.Read(integer, "k", min, max); });
        EXPECT_TRUE(Same(byName, expected) && Same(byIndex, expected)) << "also when it is a fault";
        EXPECT_EQ(integer, std::stoi(whole));
    }
}

// The value; the flag, the mode and the text in 5 bytes that are read (-9 and ~: none, NaN: a fault, ".": an
// empty text); whether the text is cut.
TEST_F(Read, OtherTypes) {
    const CLuaAccess::EnumItem modes[] = {{"Fast", 1.9}, {"Fast", 2}, {"7", 3}, {nullptr, 4}};
    std::istringstream rows(
        "true 1 -9 ~ 0  false 0 -9 ~ 0  nil -9 -9 ~ 0  {} -9 -9 ~ 0  'Fast' -9 1.9 Fast 0  "
        "'fast' -9 nan fast 0  '' -9 nan . 0  'Faster' -9 nan Fast 1  7 -9 3 7 0  "
        "print -9 -9 ~ 0  1/3 -9 nan 0.33 1");
    int flagRead = 0;
    bool isCut = false;
    for (std::string value, modeRead, text; rows >> value >> flagRead >> modeRead >> text >> isCut;) {
        SCOPED_TRACE(value);
        if (text == ".") text = "";
        Put("local v = " + value + " T = { k = v, v, type = type(v) }");
        CLuaAccess access(L);
        bool flag = flagRead == 0;
        EXPECT_STEP(0, flagRead >= 0, access.Read(flag, "k") && access.Read(flag, 1));
        EXPECT_EQ(flag, flagRead == 1);
        const double expected = std::stod(modeRead);
        const bool isFault = std::isnan(expected);
        double mode = -9;
        int integer = -9;
        EXPECT_EQ(Run(isFault, [&] { access.Read(mode, "k", modes); }).empty(), !isFault);
        EXPECT_EQ(Run(isFault, [&] { access.Read(integer, "k", modes); }).empty(), !isFault);
        EXPECT_TRUE(mode == (isFault ? -9 : expected) && integer == static_cast<int>(mode));
        char byName[5] = "~", byIndex[5] = "~";
        EXPECT_EQ(Run(isCut, [&] { access.Read(byName, 5, "k"); }).find("k = " + text) == 0, isCut);
        EXPECT_EQ(Run(isCut, [&] { access.Read(byIndex, 5, 1); }).find("[1] = " + text) == 0, isCut);
        EXPECT_TRUE(byName == text && byIndex == text) << byName << byIndex;
        EXPECT_HOLDS("type(T.k) == T.type and type(T[1]) == T.type");
    }
}

TEST_F(Read, NothingThere) {
    Put("T = { k = 5, file = io.stdout }");
    CLuaAccess a(L);
    double number = -9;
    char text[] = "~";
    void* pointer = &number;
    const char* none = nullptr;
    EXPECT_STEP(0, false, a.Read(text, 0, "k") || a.Read(nullptr, 5, "k") || a.Read(&pointer, "k"));
    EXPECT_STEP(0, false, a.Read(number, none, 0, 9) || a.Read(text, 5, none));
    EXPECT_TRUE(pointer == &number && a.Read(&pointer, "file") && pointer != &number);
    for (const char* script : {"T = nil", "T = 5", "T = 'k'"}) {
        Put(script);
        EXPECT_STEP(0, false, a.Read(number, "k", 0, 9) || a.Read(number, 1, 0, 9));
        EXPECT_STEP(0, false, a.Read(text, 5, 1));
    }
    lua_settop(L, 0);
    EXPECT_STEP(0, false, a.Read(number, "k", 0, 9) || a.Write(1.0, "k"));
    EXPECT_TRUE(number == -9 && *text == '~');
}

// Metatables are asked as Lua asks them; the second time around the names are known.
TEST_F(Read, Metatables) {
    Put("T=setmetatable({own=1},{__index=function(_,k) return k=='bad' and error('no',0) or 8 end})");
    CLuaAccess access(L);
    double number = 0;
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_STEP(0, true, access.Read(number, "own", 0, 1) && access.Read(number, "other", 8, 8));
        EXPECT_STEP(0, true, access.Read(number, 4, 8, 8));
        EXPECT_FAULT(0, "bad no", access.Read(number, "bad", 0, 9));
    }
}

// Names are told apart by what they say, wherever they lie.
TEST_F(Read, NamesInOneBuffer) {
    Put("T = {} for i = 1, 2000 do T['key' .. i] = i end");
    CLuaAccess access(L);
    std::string buffer, names[2001];
    double number = 0;
    for (int pass = 0; pass < 2; ++pass)
        for (int i = 1; i <= 2000; ++i) {
            buffer = names[i] = "key" + std::to_string(i);
            for (const char* name : {buffer.c_str(), names[i].c_str()})
                ASSERT_TRUE(access.Read(number, name, i, i));
        }
}

} // namespace
