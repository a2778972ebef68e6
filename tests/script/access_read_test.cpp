#include <cmath>
#include <cstring>
#include <vector>

#include "script/lua_fixture.h"

using namespace qev;

namespace {

constexpr double kNone = -9; // what is not read stays
const double kNan = std::nan(""), kInfinite = HUGE_VAL;

bool Same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

struct Read : test::LuaTest {
    // A step throws an error that begins with a key and a value, or nothing where the value is null.
    template <class Step>
    void Expect(const std::string& key, const char* value, Step step) {
        const std::string thrown = Run(value ? 1 : 0, step), begin = value ? key + " = " + value + " " : "";
        EXPECT_EQ(thrown.substr(0, begin.size()), begin);
        EXPECT_EQ(thrown.empty(), begin.empty()) << thrown;
    }
};

// By name, by index and as an int. A number outside its bounds is read, but not as an int.
TEST_F(Read, Numbers) {
    const struct {
        const char* value;
        double min, max, number;
        int whole;
        const char* fault; // the value as the error shows it
    } cases[] = {{"7.9", 0, 10, 7.9, 7, nullptr},
                 {"-7.9", -10, 10, -7.9, -7, nullptr},
                 {"'0x10'", 16, 16, 16, 16, nullptr},
                 {"'1mm'", 0, 100, kNone, -9, nullptr},
                 {"11", 0, 10, 11, -9, "11"},
                 {"-0.5", 0, 10, -0.5, -9, "-0.5"},
                 {"11", kNan, kNan, 11, 11, nullptr},
                 {"0/0", 0, 10, kNan, 0, nullptr},
                 {"1e300", 0, 1e300, 1e300, INT_MAX, nullptr},
                 {"-1/0", -kInfinite, 0, -kInfinite, INT_MIN, nullptr}};
    for (const auto& [value, least, most, expected, whole, fault] : cases) {
        const double min = least, max = most, number = expected; // what lambdas may see
        SCOPED_TRACE(value);
        Put(std::string("local v = ") + value + " T = { k = v, v }");
        double byName = kNone, byIndex = kNone;
        int integer = -9, place = -9;
        Expect("k", fault, [&] { EXPECT_EQ(a.Read(byName, "k", min, max), number != kNone); });
        Expect("[1]", fault, [&] { EXPECT_EQ(a.Read(byIndex, 1, min, max), number != kNone); });
        Expect("k", fault, [&] { EXPECT_EQ(a.Read(integer, "k", min, max), number != kNone); });
        EXPECT_PRED2(Same, byName, number);
        EXPECT_PRED2(Same, byIndex, number);
        EXPECT_EQ(integer, whole);
        test::Thrown([&] { a.Read(place, 1); });
        if (!fault) EXPECT_EQ(place, std::isinf(number) ? -9 : whole);
    }
}

TEST_F(Read, Booleans) {
    Put("T = { true, no = false, number = 1, text = 'true' }");
    bool yes = false, no = true, kept = true;
    EXPECT_STEPS(0, true, a.Read(yes, 1), a.Read(no, "no"));
    EXPECT_TRUE(yes);
    EXPECT_FALSE(no);
    EXPECT_STEPS(0, false, a.Read(kept, "number"), a.Read(kept, "text"), a.Read(kept, 2));
    EXPECT_TRUE(kept);
}

// As the name of a mode, and as a text in five bytes with its final zero.
TEST_F(Read, NamesAndTexts) {
    const CLuaAccess::EnumItem modes[] = {{"Fast", 1.9}, {"Fast", 2}, {"7", 3}, {nullptr, 4}};
    const struct {
        const char* value;
        double mode;
        const char* noMode; // the name where it is no mode's
        const char* text;   // ~ where there is none
        bool isCut;
    } cases[] = {{"'Fast'", 1.9, nullptr, "Fast", false},          {"'fast'", kNone, "fast", "fast", false},
                 {"'Faster'", kNone, "Faster", "Fast", true},      {"7", 3, nullptr, "7", false},
                 {"1/3", kNone, "0.33333333333333", "0.33", true}, {"print", kNone, nullptr, "~", false}};
    for (const auto& [value, expected, noMode, text, isCut] : cases) {
        const double mode = expected; // what lambdas may see
        SCOPED_TRACE(value);
        Put(std::string("local v = ") + value + " T = { k = v, v, type = type(v) }");
        double read = kNone;
        int integer = -9;
        Expect("k", noMode, [&] { EXPECT_EQ(a.Read(read, "k", modes), mode != kNone); });
        Expect("k", noMode, [&] { EXPECT_EQ(a.Read(integer, "k", modes), mode != kNone); });
        EXPECT_EQ(read, mode);
        EXPECT_EQ(integer, static_cast<int>(mode));
        char byName[5] = "~", byIndex[5] = "~";
        Expect("k", isCut ? text : nullptr, [&] { a.Read(byName, 5, "k"); });
        Expect("[1]", isCut ? text : nullptr, [&] { a.Read(byIndex, 5, 1); });
        char inPlace[5] = "k";
        Expect("k", isCut ? text : nullptr, [&] { a.Read(inPlace, 5, inPlace); });
        EXPECT_STREQ(byName, text);
        EXPECT_STREQ(byIndex, text);
        EXPECT_HOLDS("type(T.k) == T.type"); // a number is not made a text
    }
}

TEST_F(Read, NothingThere) {
    Put("T = { k = 5, file = io.stdout }");
    double number = kNone;
    char text[] = "~";
    void* pointer = nullptr;
    const char* none = nullptr;
    const CLuaAccess::EnumItem mode{"Fast", 2};
    EXPECT_STEPS(0, false, a.Read(text, 0, "k"), a.Read(nullptr, 5, "k"), a.Read(&pointer, "k"),
                 a.Read(number, none, 0, 9), a.Read(text, 5, none), a.Read(number, none, &mode),
                 a.Read(&pointer, none));
    EXPECT_EQ(pointer, nullptr);
    EXPECT_STEPS(0, true, a.Read(&pointer, "file"));
    EXPECT_NE(pointer, nullptr);
    for (const char* script : {"T = nil", "T = 5", "T = 'k'"}) {
        Put(script);
        EXPECT_STEPS(0, false, a.Read(number, "k", 0, 9), a.Read(text, 5, 1));
    }
    lua_settop(L, 0);
    EXPECT_STEPS(0, false, a.Read(number, "k", 0, 9), a.Write(1.0, "k"));
    EXPECT_EQ(number, kNone);
    EXPECT_STREQ(text, "~");
}

// Metatables are asked as Lua asks them; the second time around the names are known.
TEST_F(Read, Metatables) {
    Put("T=setmetatable({own=1},{__index=function(_,k) return k=='bad' and error('no',0) or 8 end})");
    double number = 0;
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_STEPS(0, true, a.Read(number, "own", 0, 1), a.Read(number, "other", 8, 8));
        EXPECT_STEPS(0, true, a.Read(number, 4, 8, 8));
        EXPECT_FAULT(0, "bad no", a.Read(number, "bad", 0, 9));
    }
}

// Names are told apart by what they say, and not by where they lie, and more than can be kept are read as
// well.
TEST_F(Read, ManyNames) {
    constexpr int kCount = 40'000;
    Put("T = {} for i = 1, 40000 do T['key' .. i] = i end");
    std::vector<std::string> names;
    for (int i = 1; i <= kCount; ++i) names.push_back("key" + std::to_string(i));
    double number = 0;
    char buffer[16];
    for (int pass = 0; pass < 2; ++pass)
        for (int i = 1; i <= kCount; ++i) {
            for (const int next : {i, (i * 7919) % kCount + 1}) {
                ASSERT_EQ(Run(0, [&] { a.Read(number, names[next - 1].c_str(), next, next); }), "");
                std::strcpy(buffer, names[next - 1].c_str());
                ASSERT_EQ(Run(0, [&] { a.Read(number, buffer, next, next); }), "");
            }
        }
}

// A short name is kept once, wherever it lies and whatever stands beside it.
TEST_F(Read, OneNameInManyPlaces) {
    std::string places;
    for (int i = 10'000; i < 15'000; ++i) places += std::to_string(i) + 'k' + '\0';
    Put("T = { k = 5 }");
    const int before = lua_gc(L, LUA_GCCOUNT, 0); // KB
    double number = kNone;
    for (std::size_t at = 5; at < places.size(); at += 7) EXPECT_TRUE(a.Read(number, &places[at], 5, 5));
    EXPECT_LT(lua_gc(L, LUA_GCCOUNT, 0), before + 100);
}

} // namespace
