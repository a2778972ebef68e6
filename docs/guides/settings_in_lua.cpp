// The guide "Settings in Lua": a machine's tools, with bounds, defaults and errors that its user can read.
#include <cstdio>

#include <qev/lua.h>

#include <lua.hpp>

namespace {

//! [values]
constexpr qev::CLuaAccess::EnumItem kModes[] = {{"Fast", 1}, {"Slow", 2}, {nullptr, 0}};

struct Tool {
    int mode = 1;
    double speed = 800; // mm/min
    bool coolant = false;
};

// The cursor stands in the table of the tools. What a script leaves out keeps its default.
bool ReadTool(qev::CLuaAccess& tools, int number, Tool& tool) {
    const bool isThere = tools.Enter(number);
    tools.Read(tool.mode, "Mode", kModes);
    tools.Read(tool.speed, "Speed", 1, 3000);
    tools.Read(tool.coolant, "Coolant");
    tools.Leave(); // each Enter has its Leave, also one that found nothing
    return isThere;
}
//! [values]

//! [read]
void Print(qev::CLuaScriptEngine& engine, const char* script) {
    lua_State* const L = engine.GetLuaState();
    qev::CLuaAccess cursor(L); // cuts the stack back at its end, also after an error
    if (engine.DoString(script) != 0) {
        std::printf("the script does not run: %s\n", lua_tostring(L, -1));
        return;
    }
    cursor.EnterGlobal("Machine");
    cursor.Enter("Tools");
    Tool tool;
    for (int i = 1; ReadTool(cursor, i, tool); ++i, tool = {})
        std::printf("tool %d: mode %d, %g mm/min%s\n", i, tool.mode, tool.speed,
                    tool.coolant ? ", coolant" : "");
    cursor.Leave();
    cursor.Leave();
}
//! [read]

} // namespace

//! [errors]
int main() {
    qev::CLuaScriptEngine engine;
    Print(engine, "Machine = { Tools = { { Mode = 'Slow' }, { Speed = 1200, Coolant = true } } }");
    try {
        Print(engine, "Machine = { Tools = { { Speed = 'quick' } } }"); // another type: the default stays
        Print(engine, "Machine = { Tools = { { Speed = 5000 } } }");
    } catch (const char* text) { // the keys, the key, the value; then the message, in code page 936
        std::printf("wrong setting: %.30s\n", text);
    }
}
//! [errors]
