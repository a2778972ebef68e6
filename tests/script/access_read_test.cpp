#include <cmath>
#include <vector>

#include "script/lua_fixture.h"

namespace {

using namespace qev;

const double kNaN = std::nan("");

class Read : public test::LuaTest {
protected:
    // Puts T = { k = value, [1] = value } on top.
    void Put(const std::string& value) {
        lua_settop(L, 0);
        Run("local v = " + value + " T = { k = v, v }");
        lua_getglobal(L, "T");
    }
};

TEST_F(Read, Numbers) {
    const struct {
        const char* value;
        double min, max;
        bool isRead;
        double number;
        int integer;
        const char* shown; // in an error
    } cases[] = {
        {"7.9", 0, 10, true, 7.9, 7, nullptr},
        {"-7.9", -10, 10, true, -7.9, -7, nullptr},
        {"'12'", 0, 12, true, 12, 12, nullptr},
        {"'0x10'", 16, 16, true, 16, 16, nullptr},
        {"'12 mm'", 0, 100, false, 0, 0, nullptr},
        {"true", 0, 10, false, 0, 0, nullptr},
        {"nil", 0, 10, false, 0, 0, nullptr},
        {"11", 0, 10, true, 11, 11, "11"},
        {"-0.5", 0, 10, true, -0.5, 0, "-0.5"},
        {"1e300", 0, 10, true, 1e300, INT_MAX, "1e+300"},
        {"1234567", -1, 1, true, 1234567, 1234567, "1.23457e+06"},
        {"11", kNaN, kNaN, true, 11, 11, nullptr},
        {"0/0", 0, 10, true, kNaN, 0, nullptr},
        {"1e300", 0, 1e301, true, 1e300, INT_MAX, nullptr},
        {"-1/0", -INFINITY, 0, true, -INFINITY, INT_MIN, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        Put(c.value);
        CLuaAccess access(L);
        double byName = -1, byIndex = -1;
        int integer = -1;
        const auto sameAs = [&](double number) {
            return number == c.number || (std::isnan(number) && std::isnan(c.number));
        };
        if (c.shown) {
            EXPECT_EQ(
                Fault([&] { access.Read(byName, "k", c.min, c.max); }, 1).find("k = " + std::string(c.shown)),
                0u);
            EXPECT_EQ(Fault([&] { access.Read(byIndex, 1, c.min, c.max); }, 1)
                          .find("[1] = " + std::string(c.shown)),
                      0u);
            EXPECT_NE(Fault([&] { access.Read(integer, "k", c.min, c.max); }, 1), "");
            EXPECT_TRUE(sameAs(byName) && sameAs(byIndex)) << "stored, though out of range";
            EXPECT_EQ(integer, -1);
            continue;
        }
        EXPECT_EQ(Do([&] { return access.Read(byName, "k", c.min, c.max); }), c.isRead);
        EXPECT_EQ(Do([&] { return access.Read(byIndex, 1, c.min, c.max); }), c.isRead);
        EXPECT_EQ(Do([&] { return access.Read(integer, "k", c.min, c.max); }), c.isRead);
        EXPECT_TRUE(c.isRead ? sameAs(byName) && sameAs(byIndex) : byName == -1 && byIndex == -1);
        EXPECT_EQ(integer, c.isRead ? c.integer : -1);
    }
}

TEST_F(Read, OtherTypes) {
    const CLuaAccess::EnumItem modes[] = {{"Fast", 1.9}, {"Fast", 2}, {"7", 3}, {nullptr, 4}};
    const struct {
        const char* value;
        int boolean;      // -1: not read
        double mode;      // NaN: thrown, -1: not read
        const char* text; // in 5 bytes; null: not read
        bool isCut;
    } cases[] = {
        {"true", 1, -1, nullptr, false},    {"false", 0, -1, nullptr, false},
        {"nil", -1, -1, nullptr, false},    {"{}", -1, -1, nullptr, false},
        {"'Fast'", -1, 1.9, "Fast", false}, {"'fast'", -1, kNaN, "fast", false},
        {"''", -1, kNaN, "", false},        {"'Faster'", -1, kNaN, "Fast", true},
        {"7", -1, 3, "7", false},           {"1/3", -1, kNaN, "0.33", true},
        {"print", -1, -1, nullptr, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        Put(c.value);
        CLuaAccess access(L);
        bool flag = c.boolean == 0;
        EXPECT_EQ(Do([&] { return access.Read(flag, "k"); }) && Do([&] { return access.Read(flag, 1); }),
                  c.boolean >= 0);
        EXPECT_EQ(flag, c.boolean == 1);
        double mode = -1;
        int number = -1;
        EXPECT_EQ(Fault([&] { access.Read(mode, "k", modes); }, std::isnan(c.mode)) != "",
                  std::isnan(c.mode));
        EXPECT_EQ(mode, std::isnan(c.mode) ? -1 : c.mode);
        Fault([&] { access.Read(number, "k", modes); }, std::isnan(c.mode));
        EXPECT_EQ(number, std::isnan(c.mode) ? -1 : static_cast<int>(c.mode));
        char byName[5] = "~", byIndex[5] = "~";
        EXPECT_EQ(Fault([&] { access.Read(byName, sizeof byName, "k"); }, c.isCut)
                          .find("k = " + std::string(byName))
                      == 0,
                  c.isCut);
        EXPECT_EQ(Fault([&] { access.Read(byIndex, sizeof byIndex, 1); }, c.isCut).find("[1] = ") == 0,
                  c.isCut);
        EXPECT_STREQ(byName, c.text ? c.text : "~");
        EXPECT_STREQ(byIndex, c.text ? c.text : "~");
        EXPECT_TRUE(Holds(std::string("T.k == nil or type(T.k) == type(") + c.value + ")"))
            << "not converted in place";
    }
}

TEST_F(Read, Userdata) {
    Put("io.stdout");
    CLuaAccess access(L);
    lua_getfield(L, -1, "k");
    void* const block = lua_touserdata(L, -1);
    lua_pop(L, 1);
    void* pointer = nullptr;
    EXPECT_TRUE(Do([&] { return access.Read(&pointer, "k"); }));
    EXPECT_EQ(pointer, block);
    EXPECT_FALSE(Do([&] { return access.Read(&pointer, "missing"); }));
    EXPECT_EQ(pointer, block);
}

TEST_F(Read, NothingThere) {
    Put("5");
    CLuaAccess access(L);
    double number = -1;
    char text[] = "~";
    EXPECT_FALSE(Do([&] {
        return access.Read(text, 0, "k") || access.Read(nullptr, 5, "k") || access.Read(text, 0, 1);
    }));
    EXPECT_STREQ(text, "~");
    EXPECT_FALSE(Do([&] { return access.Read(number, static_cast<const char*>(nullptr), 0, 9); }));
    for (const char* notATable : {"nil", "5", "'k'"}) {
        Run(std::string("T = ") + notATable);
        lua_settop(L, 0);
        lua_getglobal(L, "T");
        EXPECT_FALSE(Do([&] {
            return access.Read(number, "k", 0, 9) || access.Read(number, 1, 0, 9) || access.Write(1.0, "k");
        }));
    }
    lua_settop(L, 0);
    EXPECT_FALSE(Do([&] { return access.Read(number, "k", 0, 9); })) << "empty stack";
    EXPECT_EQ(number, -1);
}

// Metatables are asked as Lua asks them; what they raise is thrown with the path.
TEST_F(Read, Metatables) {
    Run("T = setmetatable({ own = 1 }, { __index = function(_, key) if key == 'bad' then error('no ' .. key, "
        "0) end return 8 end })");
    lua_getglobal(L, "T");
    CLuaAccess access(L);
    double number = 0;
    for (int i = 0; i < 2; ++i) { // the second time the names are known
        EXPECT_TRUE(Do([&] { return access.Read(number, "own", 0, 9); }) && number == 1);
        EXPECT_TRUE(Do([&] { return access.Read(number, "other", 0, 9); }) && number == 8);
        EXPECT_TRUE(Do([&] { return access.Read(number, 4, 0, 9); }) && number == 8);
        EXPECT_EQ(Fault([&] { access.Read(number, "bad", 0, 9); }), "bad no bad");
    }
}

// Names are told apart by what they say, wherever they lie.
TEST_F(Read, NamesInOneBuffer) {
    Run("T = {} for i = 1, 2000 do T['key' .. i] = i end");
    lua_getglobal(L, "T");
    CLuaAccess access(L);
    std::vector<std::string> names;
    for (int i = 1; i <= 2000; ++i) names.push_back("key" + std::to_string(i));
    double number = 0;
    for (int pass = 0; pass < 2; ++pass)
        for (int i = 1; i <= 2000; ++i) {
            char buffer[16] = "key";
            std::snprintf(buffer, sizeof buffer, "key%d", i);
            ASSERT_TRUE(access.Read(number, buffer, 0, 2000) && number == i);
            ASSERT_TRUE(access.Read(number, names[i - 1].c_str(), 0, 2000) && number == i);
        }
    lua_gc(L, LUA_GCCOLLECT, 0);
    EXPECT_TRUE(access.Read(number, "key7", 0, 9));
}

} // namespace
