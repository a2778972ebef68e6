// Reads a settings script: settings_example FILE. A wrong value ends it with the text that its user sees.
#include <cstdio>

#include <qev/lua.h>

#include <lua.hpp>

namespace {

constexpr qev::CLuaAccess::EnumItem kModes[] = {{"Fast", 1}, {"Slow", 2}, {nullptr, 0}};

struct Tool {
    int mode = 1;
    double speed = 0; // mm/min
    bool coolant = false;
};

// The cursor stands in the table of the tools. What is missing keeps its default.
bool ReadTool(qev::CLuaAccess& settings, int number, Tool& tool) {
    const bool isThere = settings.Enter(number);
    settings.Read(tool.mode, "Mode", kModes);
    settings.Read(tool.speed, "Speed", 0, 3000);
    settings.Read(tool.coolant, "Coolant");
    settings.Leave();
    return isThere;
}

void PrintSettings(lua_State* L) {
    qev::CLuaAccess settings(L); // restores the stack at its end, also after an error
    char name[32] = "unnamed";
    settings.EnterGlobal("Machine");
    settings.Read(name, sizeof name, "Name");
    std::printf("machine: %s\n", name);
    settings.Enter("Tools");
    Tool tool;
    for (int i = 1; ReadTool(settings, i, tool); ++i, tool = {})
        std::printf("tool %d: mode %d, %g mm/min%s\n", i, tool.mode, tool.speed,
                    tool.coolant ? ", coolant" : "");
}

} // namespace

int main(int count, char** arguments) {
    qev::CLuaScriptEngine* engine = qev::CLuaScriptEngine::GetLuaScript();
    if (count != 2 || !engine) return std::puts("usage: settings_example FILE"), 2;
    if (engine->DoFile(arguments[1]) != 0) return std::puts(lua_tostring(engine->GetLuaState(), -1)), 1;
    try {
        PrintSettings(engine->GetLuaState());
    } catch (
        char* text) { // such as "Tools.[2].Speed = 5000 ", and in Chinese: outside the legal range [0,3000]
        return std::printf("wrong setting: %s\n", text), 1;
    }
    return 0;
}
