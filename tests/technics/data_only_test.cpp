#include <gtest/gtest.h>

#include "platform/cpu_time.h"
#include "technics/test_operator.h"

namespace {

using test::TestOperator;

std::string Repeat(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

std::string Labels() {
    std::string all;
    for (int i = 0; i < 200'000; ++i) all += "::l" + std::to_string(i) + "::";
    return all;
}

struct DataOnly : testing::Test {
    DataOnly() {
        manager.RegisterTechnicsItem(&lead);
        EXPECT_TRUE(manager.SetDataOnly(true));
    }
    TestOperator lead{1, "Lead"};
    test::TestManager manager;
};

TEST_F(DataOnly, AttacksEndSoonAndHarmNobody) {
    const std::string longText =
        "local a,b='" + std::string(60'000, 'x') + "1','" + std::string(60'000, 'x') + "2' ";
    const struct {
        const char* name;
        std::string text;
        const char* why;
    } attacks[] = {{"endless loop", "while true do end", "too many instructions"},
                   {"endless recursion", "function f() return 1 + f() end f()", ""},
                   {"endless tail calls", "function f() return f() end f()", "too many instructions"},
                   {"table bomb", "local t,i={},0 while true do i=i+1 t[i]={} end", "not enough memory"},
                   {"string bomb", "local s='x' while true do s=s..s end", "not enough memory"},
                   {"comparisons", longText + "while true do local c=a<b end", "takes too long"},
                   {"concatenations", longText + "while true do local c=a..b end", "not enough memory"},
                   {"labels", Labels(), "takes too long"},
                   {"deep tables", "T=" + Repeat("{", 100'000), "levels"},
                   {"long text", "T={" + Repeat("{1},", 2'000'000) + "}", "takes too long"},
                   {"command", "os.execute('exit')", "index global 'os' (a nil value)"},
                   {"method of a text", "local s=('x'):rep(1e9)", "index"},
                   {"metatable", "setmetatable(_ENV,{})", "'setmetatable' (a nil value)"},
                   {"binary chunk", "\x1BLua", "binary chunk"}};
    for (const auto& [name, text, why] : attacks) {
        const double start = platform::ThreadSeconds();
        EXPECT_FALSE(manager.Add(text)) << name;
        EXPECT_LT(platform::ThreadSeconds() - start, 0.1) << name;
        EXPECT_NE(manager.GetLastErrorText().find(why), std::string::npos)
            << name << manager.GetLastErrorText();
        EXPECT_NE(manager.GetLastErrorText(), "") << name;
        EXPECT_TRUE(manager.Add("T={Lead={Speed=1}}")) << name << manager.GetLastErrorText();
    }
}

TEST_F(DataOnly, TextsFindNothingAndLeaveNothing) {
    EXPECT_TRUE(manager.Add("if not (print or _G or n) then T={Lead={}} end n=1"));
    EXPECT_TRUE(manager.Add("if not (print or _G or n) then T={Lead={}} end n=1")) << "seen before";
    EXPECT_FALSE(manager.Add("n=1")) << "the table of another text";
    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE(manager.Add("x={} for i=1,5e3 do x[i]={i} end T={Lead={}} --" + std::to_string(i)))
            << manager.GetLastErrorText();
}

TEST_F(DataOnly, IsAChoice) {
    EXPECT_TRUE(manager.IsDataOnly());
    EXPECT_FALSE(manager.Add("T={Lead={Speed=math.pi}}"));
    EXPECT_TRUE(manager.SetDataOnly(false));
    EXPECT_TRUE(manager.Add("T={Lead={Speed=math.pi}}"));
}

} // namespace
