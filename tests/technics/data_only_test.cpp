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
    const std::pair<const char*, std::string> attacks[] = {
        {"endless loop", "while true do end"},
        {"endless recursion", "function f() return 1 + f() end f()"},
        {"endless tail calls", "function f() return f() end f()"},
        {"table bomb", "T={} local i=0 while true do i=i+1 T[i]={} end"},
        {"string bomb", "local s='x' while true do s=s..s end"},
        {"long comparisons", longText + "while true do local c=a<b end"},
        {"long concatenations", longText + "while true do local c=a..b end"},
        {"labels", Labels()},
        {"deep tables", "T=" + Repeat("{", 100'000)},
        {"long text", "T={" + Repeat("{1},", 2'000'000) + "}"},
        {"command", "os.execute('exit')"},
        {"file", "T={Lead={}} io.open('x','w')"},
        {"method of a text", "local s=('x'):rep(1e9)"},
        {"metatable", "setmetatable(_ENV,{})"},
        {"binary chunk", "\x1BLua"}};
    for (const auto& [name, text] : attacks) {
        const double start = platform::ThreadSeconds();
        EXPECT_FALSE(manager.Add(text)) << name;
        EXPECT_LT(platform::ThreadSeconds() - start, 0.1) << name;
        EXPECT_EQ(manager.GetLastErrorText().find_first_not_of(" -~"), 0u)
            << name << manager.GetLastErrorText();
        EXPECT_TRUE(manager.Add("T={Lead={Speed=1}}")) << name << manager.GetLastErrorText();
    }
}

TEST_F(DataOnly, TextsFindNothingAndLeaveNothing) {
    const std::string noFunction = "T={Lead={}} for k in next do T=nil end";
    EXPECT_FALSE(manager.Add(noFunction));
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
