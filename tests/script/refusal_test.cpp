#include <functional>

#include "script/lua_fixture.h"

namespace {

using namespace qev;

// While set, the library's own interpreters are opened on this memory: the program's luaL_newstate comes
// first.
test::Memory* g_engineMemory = nullptr;

class Refusal : public test::LuaTest {
protected:
    // Runs a step on a fresh state with n requests for memory granted, for every n up to the first that is
    // enough. Each time the step either works or throws, and works when it is repeated with memory. Answers
    // that n.
    int Sweep(const std::function<void(CLuaAccess&)>& step) {
        for (int granted = 0;; ++granted) {
            Reopen();
            Run("T = { a = { b = 1, [2] = { c = 'x' } }, list = {} } function f(t) return 'r' .. t.x, 5 end");
            m_memory.left = granted;
            const std::string thrown = Step(step);
            m_memory.left = INT_MAX;
            EXPECT_EQ(Step(step), "") << granted;
            if (thrown.empty()) return granted;
            EXPECT_NE(thrown.find("not enough memory"), std::string::npos) << thrown;
        }
    }

private:
    std::string Step(const std::function<void(CLuaAccess&)>& step) {
        lua_rawgeti(L, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS);
        const std::string thrown = test::Thrown([&] {
            CLuaAccess access(L);
            access.m_bAutoCreate = true;
            access.Enter("T");
            step(access);
        });
        EXPECT_EQ(lua_gettop(L), 1);
        lua_settop(L, 0);
        return thrown;
    }
};

} // namespace

extern "C" QEV_EXPORT lua_State* luaL_newstate() {
    if (g_engineMemory) return lua_newstate(qev::test::Memory::Allocate, g_engineMemory);
    static qev::test::Memory unlimited;
    return lua_newstate(qev::test::Memory::Allocate, &unlimited);
}

namespace {

TEST_F(Refusal, Read) {
    const int refused = Sweep([](CLuaAccess& access) {
        double number = 0;
        char text[8];
        bool flag = false;
        access.Read(number, "some name that nobody has used before", 0, 9);
        access.Read(flag, "another name that nobody has used");
        access.Enter("a");
        access.Read(number, "b", 0, 9);
        access.Enter(2);
        access.Read(text, sizeof text, "c");
    });
    EXPECT_GE(refused, 4);
    RecordProperty("refused", refused);
}

TEST_F(Refusal, Write) {
    const int refused = Sweep([](CLuaAccess& access) {
        access.Write("a text that nobody has written before", "a key that is new");
        for (int i = 1; i < 20; ++i) access.Write(1.0, i);
        access.Write(2.0, "a");
        access.Enter("created");
        access.Enter(3);
        access.Write(true, "deep inside");
    });
    EXPECT_GE(refused, 10);
    RecordProperty("refused", refused);
}

TEST_F(Refusal, Call) {
    const int refused = Sweep([](CLuaAccess& access) {
        std::string result(4, '~');
        char* buffer = result.data();
        access.StartCall(nullptr, "f", 2);
        access.PushTable();
        access.Write("y", "x");
        access.PushTable("inner table");
        access.PushTableLeave();
        access.PushTableLeave();
        access.EndCall();
        access.CallLuaFunc("string", "rep", "si>S", "z", 4, &buffer, 4);
        access.CallLuaFunc("math", "abs", "d>S", -0.5, &buffer, 4);
    });
    EXPECT_GE(refused, 4);
    RecordProperty("refused", refused);
}

TEST_F(Refusal, Copy) {
    test::Memory targetMemory;
    lua_State* target = lua_newstate(test::Memory::Allocate, &targetMemory);
    Run("S = { 1, 2, 'text', a = { b = { c = true } }, [2.5] = 'a text that is copied' }");
    lua_getglobal(L, "S");
    for (int granted = 0; lua_gettop(L) == 1; ++granted) {
        lua_settop(target, 0);
        lua_newtable(target);
        targetMemory.left = granted;
        const bool refused = test::Thrown([&] { CopyLuaTable(L, target); }) != "";
        targetMemory.left = INT_MAX;
        EXPECT_EQ(lua_gettop(L) + lua_gettop(target), 2);
        EXPECT_EQ(test::Thrown([&] { CopyLuaTable(L, target); }), "");
        if (!refused) {
            EXPECT_GE(granted, 8);
            break;
        }
    }
    lua_close(target);
    EXPECT_EQ(targetMemory.inUse, 0);
}

TEST_F(Refusal, OpenTheEngine) {
    test::Memory memory;
    g_engineMemory = &memory;
    int refused = -1;
    for (bool isOpen = false; !isOpen;) {
        memory.left = ++refused;
        CLuaScriptEngine engine;
        memory.left = INT_MAX;
        isOpen = engine.GetLuaState() != nullptr;
        EXPECT_EQ(isOpen, engine.GetLuaAccess() != nullptr);
    }
    EXPECT_EQ(memory.inUse, 0);
    EXPECT_GE(refused, 100);
    for (int granted = 0; granted < 40; ++granted) {
        CLuaScriptEngine engine;
        memory.left = granted;
        engine.DoString("x = 'a text' .. tostring({})");
        engine.DoFile("missing.lua");
        memory.left = INT_MAX;
        EXPECT_EQ(engine.DoString("return 1"), 0);
    }
    g_engineMemory = nullptr;
    RecordProperty("refused", refused);
}

} // namespace
