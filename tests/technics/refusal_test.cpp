// Memory refused to the manager: by operator new, and by what its interpreter is opened on.
#include <climits>

#include <gtest/gtest.h>

#include "script/lua_fixture.h"
#include "support/refuse_memory.h"
#include "technics/test_operator.h"

namespace {

// What interpreters are opened on, as the program's luaL_newstate comes first: memory of their own, or while
// set this one or the program's.
test::Memory* g_memory = nullptr;
bool g_bPrograms = false;

} // namespace

extern "C" QEV_EXPORT lua_State* luaL_newstate() {
    static test::Memory unlimited;
    if (g_bPrograms) return lua_newstate(test::Memory::AllocateByNew, nullptr);
    return lua_newstate(test::Memory::Allocate, g_memory ? g_memory : &unlimited);
}

namespace {

void WriteLead(std::ostream& out) {
    out << "Lead={Depth=1,Text='a text longer than any buffer'}";
}

struct Manager : test::TestManager {
    explicit Manager(bool dataOnly) {
        RegisterTechnicsItem(&lead);
        SetDataOnly(dataOnly);
        lead.onAdd = [](qev::CLuaAccess& c) { return c.Enter("Tool"); };
        lead.onCreate = [](qev::CLuaAccess&) { return new test::Writing(WriteLead); };
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
    test::TestOperator lead{1, "Lead"};
};

enum class Refused { kProgram, kInterpreter, kBoth };

// After every number of requests, of the program, of the interpreter, or of both.
void Sweep(bool dataOnly, Refused refused) {
    const bool isInterpreters = refused == Refused::kInterpreter;
    bool worked = false;
    for (int granted = 0; !worked && granted < 1000; ++granted) {
        const long before = test::LiveBlocks();
        {
            test::Memory memory;
            g_memory = &memory;
            g_bPrograms = refused == Refused::kBoth;
            Manager manager(dataOnly);
            g_memory = nullptr;
            try {
                const test::RefuseMemory refusal(isInterpreters ? INT_MAX : granted);
                memory.left = isInterpreters ? granted : INT_MAX;
                worked = manager.UseTexts() && !refusal.HasRefused();
            } catch (const char* text) { // the cursor's own
                EXPECT_NE(std::string(text).find("not enough memory"), std::string::npos) << text;
            } catch (const std::bad_alloc&) { // as documented
            }
            memory.left = INT_MAX;
            g_bPrograms = false;
            for (int again = 0; again < 2; ++again) EXPECT_TRUE(manager.UseTexts()) << granted;
        }
        EXPECT_EQ(test::LiveBlocks(), before) << granted;
    }
    EXPECT_TRUE(worked);
}

TEST(Refusal, LeavesTheManagerAsItWas) {
    for (const bool dataOnly : {false, true})
        for (const auto refused : {Refused::kProgram, Refused::kInterpreter, Refused::kBoth})
            Sweep(dataOnly, refused);
}

} // namespace
