#include <memory>

#include "script/lua_fixture.h"
#include "support/temp_path.h"

using namespace qev;

namespace {

struct Engine : CLuaScriptEngine {
    using CLuaScriptEngine::initialize;
    using CLuaScriptEngine::InitLuaEnv;
    using CLuaScriptEngine::UnInitLuaEnv;
};

TEST(ScriptEngine, RunsTextsAndFiles) {
    const std::string path = test::TempPath("script.lua");
    std::ofstream(path) << "return 1, 'two', nil";
    const struct {
        bool isFile;
        const char* source;
        int status, height; // of the stack: the results, or the message
    } cases[] = {{false, "return 1, 2", 0, 2}, {false, "x = string.rep('a', 3)", 0, 0},
                 {false, "return +", 1, 1},    {false, "error('late')", 1, 1},
                 {false, nullptr, 1, 1},       {true, path.c_str(), 0, 3},
                 {true, "missing.lua", 1, 1},  {true, nullptr, 1, 1}};
    Engine engine;
    EXPECT_EQ(engine.GetLanguage(), "lua");
    for (const auto& [isFile, source, status, height] : cases) {
        const CLuaAccess restore(engine.GetLuaState());
        EXPECT_EQ(isFile ? engine.DoFile(source) : engine.DoString(source), status) << source;
        EXPECT_EQ(lua_gettop(engine.GetLuaState()), height) << source;
    }
    std::remove(path.c_str());
}

TEST(ScriptEngine, FreshInterpreters) {
    Engine engine;
    engine.DoString("kept = 1 return 1");
    EXPECT_TRUE(engine.InitLuaEnv());
    EXPECT_EQ(engine.DoString("assert(kept == nil) kept = 1"), 0) << "without an UnInitLuaEnv before it";
    engine.UnInitLuaEnv();
    EXPECT_EQ(engine.GetLuaState(), nullptr);
    EXPECT_EQ(engine.GetLuaAccess(), nullptr);
    EXPECT_EQ(engine.DoString(""), 1);
    EXPECT_EQ(engine.DoFile(""), 1);
    testing::internal::CaptureStdout();
    engine.PrintLuaStack();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "--Stack Top(v)(0)--\n--Stack Bottom--\n");
    engine.initialize();
    EXPECT_EQ(engine.DoString("assert(kept == nil)"), 0);
    EXPECT_NE(engine.GetLuaAccess(), nullptr);
}

// Copies share the interpreter, and the last one closes it (the leak check sees it if none does).
TEST(ScriptEngine, Copies) {
    auto first = std::make_unique<Engine>();
    first->DoString("kept = 1");
    Engine second(*first), third;
    third = second;
    first.reset();
    second.UnInitLuaEnv();
    EXPECT_EQ(third.DoString("assert(kept == 1)"), 0);
}

TEST(ScriptEngine, PrintsItsStack) {
    Engine engine;
    engine.DoString("return 0.5, 'text', {}");
    testing::internal::CaptureStdout();
    engine.PrintLuaStack();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "--Stack Top(v)(3)--\n(i:3) table((null))\n(i:2) "
                                                      "string(text)\n(i:1) number(0.5)\n--Stack Bottom--\n");
    EXPECT_EQ(lua_type(engine.GetLuaState(), 1), LUA_TNUMBER);
}

} // namespace
