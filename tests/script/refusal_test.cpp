#include <functional>
#include <memory>

#include <qev/qev.h>

#include "script/lua_fixture.h"
#include "support/refuse_memory.h"
#include "support/temp_path.h"

using namespace qev;

namespace {

// While set, the library's interpreters are opened on this memory: the program's luaL_newstate comes first.
test::Memory* g_engineMemory = nullptr;

} // namespace

extern "C" QEV_EXPORT lua_State* luaL_newstate() {
    static test::Memory unlimited;
    return lua_newstate(test::Memory::Allocate, g_engineMemory ? g_engineMemory : &unlimited);
}

namespace {

using Step = std::function<void(CLuaAccess&, lua_State*)>;

// What a step throws that has a table T on top of a stack.
std::string Try(lua_State* L, const Step& step) {
    lua_rawgeti(L, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS);
    const std::string thrown = test::Thrown([&] {
        CLuaAccess access(L);
        access.m_bAutoCreate = true;
        access.Enter("T");
        step(access, L);
    });
    EXPECT_EQ(lua_gettop(L), 1);
    lua_settop(L, 0);
    return thrown;
}

// Runs a step on a fresh state with n requests for memory granted, for every n up to the first that is
// enough. Each time it works or throws, and it works when it is repeated with memory. Answers that n.
int Sweep(const Step& step) {
    for (int granted = 0;; ++granted) {
        test::Memory memory;
        lua_State* L = lua_newstate(test::Memory::Allocate, &memory);
        luaL_openlibs(L);
        EXPECT_EQ(luaL_dostring(L, "T={a={b=1,{c='x'}}} function f(t) return 'r'..t.x,5 end"), 0);
        memory.left = granted;
        const std::string thrown = Try(L, step);
        memory.left = INT_MAX;
        EXPECT_EQ(Try(L, step), "") << granted;
        lua_close(L);
        EXPECT_EQ(memory.inUse, 0);
        if (thrown.empty()) return granted;
        EXPECT_NE(thrown.find("not enough memory"), std::string::npos) << thrown;
    }
}

TEST(Refusal, Steps) {
    const struct {
        const char* name;
        int atLeast; // so many requests can be refused
        Step step;
    } cases[] = {
        {"read", 5,
         [](CLuaAccess& access, lua_State*) {
             double number = 0;
             char text[8];
             access.Read(number, "a name that nobody has used", 0, 9);
             access.Enter("a"), access.Read(number, "b", 0, 9);
             access.Enter(1), access.Read(text, sizeof text, "c");
         }},
        {"write", 15,
         [](CLuaAccess& access, lua_State*) {
             access.Write("a text that nobody has written", "a new key");
             for (int i = 1; i < 20; ++i) access.Write(1.0, i);
             access.Enter("created"), access.Enter(3);
             access.Write(true, "deep inside");
         }},
        {"call", 15,
         [](CLuaAccess& access, lua_State*) {
             char area[4], *buffer = area;
             access.StartCall(nullptr, "f", 2);
             access.PushTable(), access.Write("y", "x");
             access.PushTable("inner table"), access.PushTableLeave();
             access.PushTableLeave(), access.EndCall();
             access.CallLuaFunc("string", "rep", "si>S", "z", 4, &buffer, 4);
             access.CallLuaFunc("math", "abs", "d>S", -0.5, &buffer, 4);
         }},
        {"copy", 10, [](CLuaAccess&, lua_State* L) {
             const std::unique_ptr<lua_State, void (*)(lua_State*)> source(luaL_newstate(), lua_close);
             luaL_dostring(source.get(),
                           "return { 1, 2, 'text', x = { y = { z = true } }, [9] = 'another text' }");
             CopyLuaTable(source.get(), L);
         }}};
    for (const auto& [name, atLeast, step] : cases) EXPECT_GE(Sweep(step), atLeast) << name;
}

TEST(Refusal, Engine) {
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
    EXPECT_GE(refused, 100);
    for (int granted = 0; granted < 40; ++granted) {
        CLuaScriptEngine engine;
        memory.left = granted;
        engine.DoString("x = 'a text' .. tostring({})");
        engine.DoFile("missing.lua");
        memory.left = INT_MAX;
        EXPECT_EQ(engine.DoString("return 1"), 0);
    }
    EXPECT_EQ(memory.inUse, 0);
    g_engineMemory = nullptr;
}

void RunScript() {
    CLuaScriptEngine engine, other;
    if (!engine.GetLuaState() || !other.GetLuaState()) return;
    for (CLuaScriptEngine* each : {&engine, &other}) each->DoString("return { a = { b = {} }, c = 5 }");
    test::Thrown([&] { CopyLuaTable(engine.GetLuaState(), other.GetLuaState()); });
    test::Thrown([&] {
        CLuaAccess access(engine.GetLuaState());
        access.Enter("a"), access.Enter("b");
        CLuaAccess(access).Enter("c");
    });
}

void Subscribe() {
    const auto ignore = [](const char*, void*, int, const char*) { return 0; };
    UnsubscribeMsgTopic(SubscribeMsgTopic("A topic of thirty characters", ignore, nullptr));
}

void ShowLength() {
    CString value = ToStringPrecision(1e300, 20);
    GetDlgItemTextUnit(nullptr, 1, value);
}

void LoadPicture() {
    static const std::string path = test::TempPath("picture");
    std::ofstream(path, std::ios::binary)
        .write("GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\1\0\1\0\0\2\2\x44\1\0", 34);
    CImage image;
    LoadImageFile(image, path.c_str());
}

void SortTestData() {
    CCadGroup target;
    CZoneManager zones;
    zones.SetTargetGroup(&target);
    CTestDataHandle::SetIgnoreList({"An ignored test's name"});
    for (int i = 0; i < 2; ++i) {
        auto group = std::make_unique<CCadGroup>();
        group->SetKey("TestName", "Another test's long name");
        CTestDataHandle::AddToZoneManager(group.release(), &zones);
    }
}

TEST(Refusal, OfTheProgram) {
    const struct {
        const char* name;
        void (*call)();
    } cases[] = {{"script", RunScript},
                 {"topic", Subscribe},
                 {"length", ShowLength},
                 {"picture", LoadPicture},
                 {"test data", SortTestData}};
    for (const auto& [name, call] : cases) {
        SCOPED_TRACE(name);
        call(); // what lasts as long as the program is made once
        test::ExpectNothingLeaksWhenRefused([call = call] {
            call();
            return 0;
        });
    }
    CTestDataHandle::SetIgnoreList({});
}

} // namespace
