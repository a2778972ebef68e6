#include <gtest/gtest.h>

#include "platform/cpu_time.h"
#include "technics/test_operator.h"

namespace {

std::string Labels() {
    std::string all;
    for (int i = 0; i < 200'000; ++i) all += "::l" + std::to_string(i) + "::x=1 ";
    return all;
}

struct DataOnly : testing::Test {
    DataOnly() {
        manager.RegisterTechnicsItem(&lead);
        EXPECT_TRUE(manager.SetDataOnly(true));
    }
    test::TestOperator lead{1, "Lead"};
    test::TestManager manager;
};

TEST_F(DataOnly, AttacksEndSoonAndHarmNobody) {
    const std::string half(60'000, 'x'), texts = "local a,b='" + half + "1','" + half + "2' ";
    const std::pair<std::string, const char*> attacks[] = {
        {"while true do end", "too"},
        {"function f() return 1 + f() end f()", ""},
        {"local t,i={},0 while true do i=i+1 t[i]={} end", ""},
        {"local s='x' while true do s=s..s end", "not enough memory"},
        {texts + "while true do local c=a<b end", "takes too long"},
        {texts + "while true do local c=a..b end", ""},
        {Labels(), "takes too long"},
        {"T=" + std::string(100'000, '{'), "levels"},
        {"os.execute('exit')", "index global 'os' (a nil value)"},
        {"local s=('x'):rep(1e9)", "index"},
        {"\x1BLua", "binary chunk"}};
    for (const auto& [text, why] : attacks) { // a part of the reason; any where one limit may beat another
        double seconds = 1;
        for (int tries = 0; tries < 3 && seconds > 0.1; ++tries) { // a busy machine steals time
            const double start = qev::platform::ThreadSeconds();
            EXPECT_FALSE(manager.Add(text));
            seconds = qev::platform::ThreadSeconds() - start;
        }
        EXPECT_LT(seconds, 0.1) << text.substr(0, 60);
        const std::string error = manager.GetLastErrorText();
        EXPECT_FALSE(error.empty()) << text.substr(0, 60);
        EXPECT_NE(error.find(why), std::string::npos) << text.substr(0, 60) << error;
        EXPECT_TRUE(manager.Add("T={Lead={Speed=1}}")) << text.substr(0, 60);
    }
}

TEST_F(DataOnly, TextsFindNothingAndLeaveNothing) {
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(manager.Add("if not (print or _G or n) then T={Lead={}} end n=1")) << "new, then known";
    EXPECT_FALSE(manager.Add("n=1")) << "the table of another text";
    const std::string half = "local s='" + std::string(50'000, 's') + "' x={} for i=1,150 do x[i]=s..i end";
    for (int i = 0; i < 20; ++i) // half the memory each, which goes with its text
        EXPECT_TRUE(manager.Add(half + " T={Lead={}} --" + std::to_string(i))) << manager.GetLastErrorText();
    EXPECT_FALSE(manager.Add("T={Lead={Speed=math.pi}}"));
    EXPECT_TRUE(manager.SetDataOnly(false));
    EXPECT_TRUE(manager.Add("T={Lead={Speed=math.pi}}"));
}

} // namespace
