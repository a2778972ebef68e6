#include <cmath>

#include "script/lua_fixture.h"

namespace {

using namespace qev;

const double kNaN = std::nan("");

bool Same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

using Read = test::LuaTest;

// Read by name, by index and as an int from T = { k = value, value }.
TEST_F(Read, Numbers) {
    const struct {
        const char* value;
        double min, max, number; // -9: not read
        int integer;
        const char* shown = ""; // in the error
    } cases[] = {{"7.9", 0, 10, 7.9, 7},
                 {"-7.9", -10, 10, -7.9, -7},
                 {"'12'", 0, 12, 12, 12},
                 {"'0x10'", 16, 16, 16, 16},
                 {"'1 mm'", 0, 100, -9, -9},
                 {"true", 0, 10, -9, -9},
                 {"nil", 0, 10, -9, -9},
                 {"11", 0, 10, 11, 11, "11"},
                 {"11", kNaN, kNaN, 11, 11},
                 {"-0.5", 0, 10, -0.5, 0, "-0.5"},
                 {"0/0", 0, 10, kNaN, 0},
                 {"1234567", 0, 9, 1234567, 0, "1.23457e+06"},
                 {"1e6", 0, 1e6, 1e6, 1000000},
                 {"1e300", 0, 1e300, 1e300, INT_MAX},
                 {"-1/0", -INFINITY, 0, -INFINITY, INT_MIN}};
    for (const auto& c : cases) {
        Put("local v = " + std::string(c.value) + " T = { k = v, v }");
        CLuaAccess access(L);
        const bool isFault = *c.shown, isRead = c.number != -9 && !isFault;
        double byName = -9, byIndex = -9;
        int integer = -9;
        const auto fault = [&](const std::string& key, const std::string& text) {
            return text.find(isFault ? key + " = " + c.shown + " " : "") == 0 && text.empty() != isFault;
        };
        EXPECT_PRED2(fault, "k",
                     Run(isFault, [&] { EXPECT_EQ(access.Read(byName, "k", c.min, c.max), isRead); }));
        EXPECT_PRED2(fault, "[1]",
                     Run(isFault, [&] { EXPECT_EQ(access.Read(byIndex, 1, c.min, c.max), isRead); }));
        EXPECT_PRED2(fault, "k",
                     Run(isFault, [&] { EXPECT_EQ(access.Read(integer, "k", c.min, c.max), isRead); }));
        EXPECT_TRUE(Same(byName, c.number) && Same(byIndex, c.number))
            << c.value << ", also when it is a fault";
        EXPECT_EQ(integer, isRead ? c.integer : -9) << c.value;
    }
}

TEST_F(Read, OtherTypes) {
    const CLuaAccess::EnumItem modes[] = {{"Fast", 1.9}, {"Fast", 2}, {"7", 3}, {nullptr, 4}};
    const struct {
        const char* value;
        int flag;         // -9: not read
        double mode;      // -9: not read, NaN: a fault
        const char* text; // in 5 bytes; "~": not read
        bool isCut = false;
    } cases[] = {{"true", 1, -9, "~"},
                 {"false", 0, -9, "~"},
                 {"nil", -9, -9, "~"},
                 {"{}", -9, -9, "~"},
                 {"'Fast'", -9, 1.9, "Fast"},
                 {"'fast'", -9, kNaN, "fast"},
                 {"''", -9, kNaN, ""},
                 {"'Faster'", -9, kNaN, "Fast", true},
                 {"7", -9, 3, "7"},
                 {"print", -9, -9, "~"},
                 {"1/3", -9, kNaN, "0.33", true}};
    for (const auto& c : cases) {
        Put("local v = " + std::string(c.value) + " T = { k = v, v, type = type(v) }");
        CLuaAccess access(L);
        bool flag = c.flag == 0;
        EXPECT_STEP(0, c.flag >= 0, access.Read(flag, "k") && access.Read(flag, 1));
        EXPECT_EQ(flag, c.flag == 1);
        const bool isFault = std::isnan(c.mode);
        double mode = -9;
        int integer = -9;
        EXPECT_EQ(Run(isFault, [&] { access.Read(mode, "k", modes); }).empty(), !isFault);
        EXPECT_EQ(Run(isFault, [&] { access.Read(integer, "k", modes); }).empty(), !isFault);
        EXPECT_TRUE(mode == (isFault ? -9 : c.mode) && integer == static_cast<int>(mode)) << c.value;
        char byName[5] = "~", byIndex[5] = "~";
        EXPECT_EQ(Run(c.isCut, [&] { access.Read(byName, 5, "k"); }).find(std::string("k = ") + c.text) == 0,
                  c.isCut);
        EXPECT_EQ(Run(c.isCut, [&] { access.Read(byIndex, 5, 1); }).find(std::string("[1] = ") + c.text) == 0,
                  c.isCut);
        EXPECT_TRUE(std::string(byName) == c.text && std::string(byIndex) == c.text) << byName << byIndex;
        EXPECT_HOLDS("type(T.k) == T.type and type(T[1]) == T.type");
    }
}

TEST_F(Read, NothingThere) {
    Put("T = { k = 5, file = io.stdout }");
    CLuaAccess access(L);
    double number = -9;
    char text[] = "~";
    void* pointer = &number;
    const char* none = nullptr;
    EXPECT_STEP(0, false,
                access.Read(text, 0, "k") || access.Read(nullptr, 5, "k") || access.Read(text, 5, none));
    EXPECT_STEP(0, false, access.Read(number, none, 0, 9) || access.Read(&pointer, "k"));
    EXPECT_TRUE(pointer == &number && access.Read(&pointer, "file") && pointer != &number);
    for (const char* script : {"T = nil", "T = 5", "T = 'k'"}) {
        Put(script);
        EXPECT_STEP(0, false,
                    access.Read(number, "k", 0, 9) || access.Read(number, 1, 0, 9)
                        || access.Read(text, 5, 1));
    }
    lua_settop(L, 0);
    EXPECT_STEP(0, false, access.Read(number, "k", 0, 9) || access.Write(1.0, "k"));
    EXPECT_TRUE(number == -9 && *text == '~');
}

// Metatables are asked as Lua asks them; the second time around the names are known.
TEST_F(Read, Metatables) {
    Put("T = setmetatable({ own = 1 }, { __index = function(_, key) return key == 'bad' and error('no', 0) "
        "or 8 end })");
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
    std::string buffer, names[2000];
    double number = 0;
    for (int pass = 0; pass < 2; ++pass)
        for (int i = 1; i <= 2000; ++i) {
            buffer = names[i - 1] = "key" + std::to_string(i);
            ASSERT_TRUE(access.Read(number, buffer.c_str(), i, i)
                        && access.Read(number, names[i - 1].c_str(), i, i));
        }
}

} // namespace
