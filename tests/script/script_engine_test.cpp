#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "script/lua_fixture.h"

namespace {

using namespace qev;

class Engine : public CLuaScriptEngine {
public:
    using CLuaScriptEngine::initialize;
    using CLuaScriptEngine::InitLuaEnv;
    using CLuaScriptEngine::UnInitLuaEnv;
    int Top() { return lua_gettop(GetLuaState()); }
};

TEST(ScriptEngine, RunsTextsAndFiles) {
    const std::string path = testing::TempDir() + "qev_script.lua";
    std::ofstream(path) << "return 1, 'two', nil";
    Engine engine;
    EXPECT_EQ(engine.GetLanguage(), "lua");
    const struct {
        int status, height;
        int (*run)(Engine&, const char*);
        const char* argument;
    } cases[] = {
        {0, 2, [](Engine& e, const char* text) { return e.DoString(text); }, "return 1, 2"},
        {0, 0, [](Engine& e, const char* text) { return e.DoString(text); }, "x = string.rep('a', 3)"},
        {1, 1, [](Engine& e, const char* text) { return e.DoString(text); }, "return +"},
        {1, 1, [](Engine& e, const char* text) { return e.DoString(text); }, "error('late')"},
        {1, 1, [](Engine& e, const char* text) { return e.DoString(text); }, nullptr},
        {0, 3, [](Engine& e, const char* file) { return e.DoFile(file); }, path.c_str()},
        {1, 1, [](Engine& e, const char* file) { return e.DoFile(file); }, "missing.lua"},
        {1, 1, [](Engine& e, const char* file) { return e.DoFile(file); }, nullptr},
    };
    for (const auto& c : cases) {
        const CLuaAccess restore(engine.GetLuaState());
        EXPECT_EQ(c.run(engine, c.argument), c.status) << c.argument;
        EXPECT_EQ(engine.Top(), c.height) << c.argument;
        EXPECT_TRUE(c.status == 0 || lua_type(engine.GetLuaState(), -1) == LUA_TSTRING);
    }
    std::remove(path.c_str());
}

TEST(ScriptEngine, FreshInterpreters) {
    Engine engine;
    engine.DoString("kept = 1 return 1");
    EXPECT_TRUE(engine.InitLuaEnv());
    EXPECT_EQ(engine.DoString("assert(kept == nil)"), 0) << "without an UnInitLuaEnv before it";
    engine.UnInitLuaEnv();
    EXPECT_EQ(engine.GetLuaState(), nullptr);
    EXPECT_EQ(engine.GetLuaAccess(), nullptr);
    EXPECT_EQ(engine.DoString("x = 1") + engine.DoFile("missing.lua"), 2);
    engine.PrintLuaStack();
    engine.initialize();
    EXPECT_EQ(engine.DoString("assert(kept == nil)"), 0);
    double pi = 0;
    lua_getglobal(engine.GetLuaState(), "math");
    EXPECT_TRUE(engine.GetLuaAccess()->Read(pi, "pi", 3, 4));
}

// Copies share the interpreter, and the last one closes it (the leak check sees it if none does).
TEST(ScriptEngine, Copies) {
    auto first = std::make_unique<Engine>();
    first->DoString("kept = 1");
    Engine second(*first), third;
    third = second;
    third = third;
    first.reset();
    EXPECT_EQ(third.DoString("assert(kept == 1)"), 0);
    second.UnInitLuaEnv();
    EXPECT_EQ(third.DoString("assert(kept == 1)"), 0);
}

TEST(ScriptEngine, PrintsItsStack) {
    Engine engine;
    engine.DoString("return 0.5, 'text', {}, nil");
    testing::internal::CaptureStdout();
    engine.PrintLuaStack();
    EXPECT_EQ(
        testing::internal::GetCapturedStdout(),
        "--Stack Top(v)(4)--\n(i:4) nil((null))\n(i:3) table((null))\n(i:2) string(text)\n(i:1) number(0.5)\n"
        "--Stack Bottom--\n");
    EXPECT_EQ(lua_type(engine.GetLuaState(), 1), LUA_TNUMBER);
}

// The process's engine is there before main, and its finalizers run when the library is unloaded.
TEST(ScriptEngineDeathTest, LivesAsLongAsTheLibrary) {
    const auto leave = [] {
        CLuaScriptEngine::GetLuaScript()->DoString(
            "kept = setmetatable({}, { __gc = function() io.stderr:write('engine closed') end })");
        std::exit(0);
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "engine closed");
}

} // namespace
