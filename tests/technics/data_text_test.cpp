#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>

#include <gtest/gtest.h>

#include "platform/cpu_time.h"
#include "support/patience.h"
#include "technics/test_operator.h"

namespace {

// Everything that a text puts under some keys of an operator's table, or why it was refused.
struct Reading : test::TestManager {
    explicit Reading(bool dataOnly) {
        RegisterTechnicsItem(&lead);
        EXPECT_TRUE(SetDataOnly(dataOnly));
        lead.onAdd = [this](qev::CLuaAccess& cursor) {
            found.clear();
            for (const char* key : {"a", "b", "_AZ1"}) Describe(cursor, key);
            for (int key = -1; key < 60; ++key) Describe(cursor, key);
            return true;
        };
    }
    template <class Key>
    void Describe(qev::CLuaAccess& cursor, Key key) {
        double number = 0;
        char text[80];
        bool flag = false;
        if (cursor.Read(number, key, -HUGE_VAL, HUGE_VAL)) found += std::to_string(number);
        if (cursor.Read(text, sizeof text, key)) found += text;
        if (cursor.Read(flag, key)) found += flag ? "true" : "false";
        found += ';';
    }
    std::string Of(const std::string& text) { return Add(text) ? found : GetLastErrorText(); }

    test::TestOperator lead{1, "Lead"};
    std::string found;
};

std::vector<std::string> Split(std::string text) {
    std::vector<std::string> parts;
    for (std::size_t end; (end = text.find('|')) != std::string::npos; text.erase(0, end + 1))
        parts.push_back(text.substr(0, end));
    return parts;
}

// Each fragment of data is read as Lua reads it, and of no-data none is taken. Mixed at random: whatever is
// taken as data is what Lua makes of it.
TEST(DataText, ReadsAsLuaDoes) {
    const auto data = Split(
        "a=-5|'\\0651'|_AZ1=0x.8p+4|b=0.1e-3|1e999|.5|3.|0xAe|'x'|a=\"\\65\\066\"|'\\x4B\\x61\\n\\\\\\\"\\''|"
        "[1]=2|[ [[a]] ]='y'|b=[==[\r\n\r\n]]]=]\n]==]|'a\\z \r\n b'|'\\\r\nb'|nil|true|"
        "a=false|a=- -7|{a={1}}|--[[a]]1|--a\n2|b=other|_AZ1=none|[-1]=4,3|[50]=5|"
        "1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1|");
    const auto noData =
        Split("=1|end=1|a=end|1..2|3x|0x|1e|'\n'|'\\400'|'\\q'|[[x]|[nil]=1|a=='x'|-'x'|- -|'|"
              "function() end|a='x'..'y'|1+1|os.exit()|\"\\xg\"|}}goto l::l::b={{|}}::l::b={{|}}do end b={{|"
              "}}while nil do end b={{|}}for i=1,2 do b=1 end b={{|}}function b()end b={{|}}local b={{|");
    Reading asLua(false), asData(true);
    const auto text = [](const std::string& items) { return "other='o' T={Lead={" + items + "}};"; };
    for (const std::string& item : data) EXPECT_EQ(asData.Of(text(item)), asLua.Of(text(item))) << item;
    for (const std::string& item : noData) EXPECT_FALSE(asData.Add(text(item))) << item;
    std::mt19937 random(20);
    for (int i = 0; i < 5'000; ++i) {
        std::string items;
        for (auto count = random() % 6 + 1; count > 0; --count) {
            const auto& from = random() % 16 != 0 ? data : noData;
            items += from[random() % from.size()] + ",;  ,\n"[random() % 6];
        }
        if (asData.Add(text(items))) EXPECT_EQ(asData.found, asLua.Of(text(items))) << items;
    }
}

// A key whose hash is that of all others of the family, as Lua 5.2 adds the halves of the number plus one.
std::string CollidingKey(int i) {
    const std::uint64_t high = 0x41F0'0000u + i, low = 0x7000'0000u - i;
    char text[40];
    std::snprintf(text, sizeof text, "[%.17g]=1,", std::bit_cast<double>(high << 32 | low) - 1);
    return text;
}

// A text whose hash is that of all others of the family: of 40 characters Lua 5.2 looks at every other one.
std::string CollidingText(int i) {
    std::string text(40, 'x');
    for (int bit = 0; bit < 20; ++bit) text[2 * bit] = i >> bit & 1 ? 'y' : 'x';
    return "'" + text + "',";
}

// A key that collides with all others of the family in tables of 65,536 keys, and so when a table grows to
// that size, and with none in smaller ones.
std::string LateKey(int i) {
    char text[40];
    std::snprintf(text, sizeof text, "[%.17g]=1,", 0x1p32 - 1 + (i + 17) * 65535.0 / 0x1p20);
    return text;
}

// The parts 0, 1, 2, ... until they fill so many bytes.
std::string Repeated(const std::function<std::string(int)>& part, std::size_t size = (1 << 20) - 50'000) {
    std::string all;
    for (int i = 0; all.size() < size; ++i) all += part(i);
    return all;
}
std::string Repeated(const std::string& part) {
    return Repeated([&](int) { return part; });
}

TEST(DataText, AttacksEndSoonAndHarmNobody) {
    const std::string keys = Repeated(CollidingKey, 23'000), table = "{" + keys + "},";
    const auto label = [](int i) { return "::l" + std::to_string(i) + "::x=1 "; };
    const auto jump = [](int) { return std::string("goto bb "); };
    const std::pair<const char*, std::string> attacks[] = {
        {"a loop", "t={} for i=17,32800 do t[2^32-1+i*65535/2^20]=1 end T={Lead={}}"},
        {"labels", Repeated(label, 50'000) + "do " + Repeated(jump, 237'000) + "end T={Lead={}}"},
        {"keys", "T={Lead={" + Repeated(CollidingKey) + "}}"},
        {"keys in a table that grows", "T={Lead={" + Repeated(LateKey) + "}}"},
        {"few keys in many tables", "T={Lead={" + Repeated(table) + "}}"},
        {"keys before a list", "T={Lead={" + keys + Repeated("1,") + "}}"},
        {"texts", "T={Lead={" + Repeated(CollidingText) + "}}"},
        {"depth", "T=" + Repeated("{")},
        {"closing brackets", "T=[==[" + Repeated("]=")},
        {"length", "T={Lead={'" + std::string(1 << 20, '-') + "'}}"},
        {"long number", "T=" + Repeated("9")}};
    Reading reading(true);
    const double most = 0.1 * test::Patience(); // s
    for (const auto& [name, text] : attacks) {
        double seconds = most + 1;
        for (int tries = 0; tries < 3 && seconds > most; ++tries) { // a busy machine steals time
            const double start = qev::platform::ThreadSeconds();
            reading.Add(text + std::string(tries, ' ')); // what was taken before is not read
            seconds = qev::platform::ThreadSeconds() - start;
        }
        EXPECT_LT(seconds, most) << name << reading.GetLastErrorText();
        EXPECT_TRUE(reading.Add("T={Lead={Speed=1}}")) << name << reading.GetLastErrorText();
    }
}

// Enters a table that must not be there yet.
bool EnterNew(qev::CLuaAccess& cursor, int index) {
    cursor.m_bAutoCreate = false;
    const bool isThere = cursor.Enter(index);
    cursor.Leave();
    cursor.m_bAutoCreate = true;
    return cursor.Enter(index) && !isThere;
}

// A text that comes again is not read again; whatever an operator has written, it is as it was.
TEST(DataText, WritesDoNotLast) {
    Reading reading(true);
    const std::string text = "T={Lead={a=1,7}}", expected = reading.Of(text);
    const auto describe = reading.lead.onAdd;
    const std::function<bool(qev::CLuaAccess&)> writes[] = {
        [](auto& c) { return c.Write(2.0, "a"); }, [](auto& c) { return c.Write("text", 1); },
        [](auto& c) { return c.Write(true, "b"); }, [](auto& c) { return EnterNew(c, 3); },
        [](auto& c) { return qev::CLuaAccess(c).Write(3, "a"); }};
    for (const auto& write : writes) {
        reading.lead.onAdd = [&](auto& c) { return c.m_bAutoCreate = true, write(c); };
        for (int i = 0; i < 2; ++i) EXPECT_TRUE(reading.Add(text));
        reading.lead.onAdd = describe;
        for (int i = 0; i < 2; ++i) EXPECT_EQ(reading.Of(text), expected);
    }
}

TEST(DataText, TextsFindNothingAndLeaveNothing) {
    Reading reading(true);
    // A good part of the memory of a text, in a small part of its time, so that a busy machine takes it too.
    const int tables = test::Patience() > 1 ? 2'000 : 40'000;
    std::string half = "x={'" + std::string(5 * tables / 2, ' ') + "',"; // larger than all that it has
    for (int i = 0; i < tables; ++i) half += "{},";
    for (int i = 0; i < 20; ++i) // what a text has taken goes with it
        EXPECT_TRUE(reading.Add(half + "} n=5 T={Lead={}}")) << reading.GetLastErrorText();
    for (int i = 0; i < 4; ++i) { // and what is kept of it is no part of the memory of others
        std::string texts = "x={";
        for (int k = 0; k < tables * 3 / 5; ++k)
            texts.append("'").append(std::to_string(32 * k + i)).append("',");
        EXPECT_TRUE(reading.Add(texts + "} T={Lead={}}")) << reading.GetLastErrorText();
    }
    EXPECT_TRUE(reading.Add(half + half.substr(3) + half.substr(3) + "} T={Lead={}}"));
    EXPECT_EQ(reading.Of("T={Lead={a=n,b=print,_AZ1=_G}}").find_first_not_of(';'), std::string::npos);
    EXPECT_FALSE(reading.Add("n=1")) << "the table of another text";
}

} // namespace
