// Memory refused to the manager: by operator new, and by what its interpreter is opened on.
#include <climits>

#include <gtest/gtest.h>

#include "script/lua_fixture.h"
#include "support/refuse_memory.h"
#include "technics/test_operator.h"

namespace {

// While set, interpreters are opened on this memory: the program's luaL_newstate comes first.
test::Memory* g_memory = nullptr;

} // namespace

extern "C" QEV_EXPORT lua_State* luaL_newstate() {
    static test::Memory unlimited;
    return lua_newstate(test::Memory::Allocate, g_memory ? g_memory : &unlimited);
}

namespace {

struct Writing : qev::CTechnics {
    void Write(std::ostream& out) const override {
        out << "Lead={Depth=1,Text='a text longer than any buffer'}";
    }
};

struct Manager : test::TestManager {
    Manager() {
        RegisterTechnicsItem(&lead);
        lead.onAdd = [](qev::CLuaAccess& c) { return c.Enter("Tool"); };
        lead.onCreate = [](qev::CLuaAccess&) { return new Writing; };
    }
    // Whether everything that the manager does with texts works.
    bool UseTexts() {
        qev::CCadGroup object;
        object.SetTechnicsString("T={Lead={Depth=1}}");
        LoadTechnics(&object);
        SaveTechnics(&object);
        const bool isSaved = object.GetTechnicsString().GetLength() > 50;
        return isSaved && Add("T={Lead={Tool={}}}") && Add("T={Lead={Tool={}}} ", "MouseSegment=1;")
               && !Add("T={");
    }
    // The cursor throws its own text when memory is refused to it.
    bool TryTexts() try { return UseTexts(); } catch (const char* text) {
        EXPECT_NE(std::string(text).find("not enough memory"), std::string::npos) << text;
        return false;
    }
    test::TestOperator lead{1, "Lead"};
};

TEST(Refusal, ByOperatorNew) {
    for (const bool dataOnly : {false, true})
        test::ExpectNothingLeaksWhenRefused([dataOnly] {
            Manager manager;
            manager.SetDataOnly(dataOnly);
            try {
                manager.UseTexts();
            } catch (const char*) { // of the cursor
            }
        });
    Manager manager;
    bool worked = false;
    for (int blocks = 0; !worked && blocks < 1000; ++blocks) {
        try {
            const test::RefuseMemory refusal(blocks);
            worked = manager.TryTexts() && !refusal.HasRefused();
        } catch (const std::bad_alloc&) { // as documented
        }
        EXPECT_TRUE(manager.UseTexts()) << blocks;
    }
    EXPECT_TRUE(worked);
}

TEST(Refusal, ByTheInterpreter) {
    bool worked = false;
    for (int granted = 0; !worked && granted < 1000; ++granted) {
        test::Memory memory;
        g_memory = &memory;
        Manager manager;
        g_memory = nullptr;
        memory.left = granted;
        worked = manager.TryTexts();
        memory.left = INT_MAX;
        for (int again = 0; again < 2; ++again) EXPECT_TRUE(manager.UseTexts()) << granted;
    }
    EXPECT_TRUE(worked);
}

} // namespace
