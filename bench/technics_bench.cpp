#include <cstdlib>
#include <string>

#include <qev/lua.h>
#include <qev/technics.h>

#include <lua.hpp>

#include "support/pair.h"

namespace {

using benchmark::State;
using qev::CCadObject;
using qev::bench::Pair;
using Objects = std::list<CCadObject*>;

// Reads one number of its table.
class Lead final : public qev::CITechnicsOperator {
public:
    int GetTechnicsType() override { return 1; }
    const char* GetTechnicsName() override { return "Lead"; }
    bool AddTechnicsByLua(const Objects*, qev::CLuaAccess*, Objects*, Objects*, std::string&) override {
        return true;
    }
    qev::CTechnics* CreateTechnics(CCadObject*, qev::CLuaAccess* cursor) override {
        cursor->Read(speed, "Speed", 0, 3000);
        return nullptr;
    }
    bool RemoveTechnicsOf(const Objects*, int, Objects*, Objects*, std::string&) override { return false; }
    void Reserved6() override {}
    void SingleModify(const CCadObject*, CCadObject*, const std::vector<int>&, int) override {}
    void MultipleModify(const Objects*, Objects*, int) override {}
    void UpdateViewData(CCadObject*) override {}
    void Reserved12() override {}
    void Reserved13() override {}
    void Reserved14() override {}

    double speed = 0;
};

struct Manager : qev::CTechnicsManager {
    Manager() { RegisterTechnicsItem(&lead); }
    Lead lead;
};

// About 30 kB of technics; the comment in front makes a text that was not seen before.
class Text {
public:
    Text() {
        for (int i = 0; m_text.size() < 30'000; ++i)
            m_text += "{Segment=" + std::to_string(i) + ",Ratio=0." + std::to_string(12345 + i) + "},";
        m_text += "}};";
    }
    const char* Next() {
        m_text.replace(2, 7, std::to_string(m_number++));
        return m_text.c_str();
    }

private:
    std::string m_text = "--0000000\nT={Lead={Speed=12,";
    int m_number = 1'000'000; // of seven digits
};

void LoadRaw(State& state) {
    Text text;
    lua_State* const L = luaL_newstate();
    luaL_openlibs(L);
    double speed = 0;
    for (auto _ : state) {
        if (luaL_loadstring(L, text.Next()) || lua_pcall(L, 0, LUA_MULTRET, 0)) std::abort();
        lua_getglobal(L, "T");
        lua_getfield(L, -1, "Lead");
        lua_getfield(L, -1, "Speed");
        speed += lua_tonumber(L, -1);
        lua_settop(L, 0);
    }
    benchmark::DoNotOptimize(speed);
    lua_close(L);
}

void LoadOurs(State& state) {
    Text text;
    Manager manager;
    qev::CCadGroup object;
    for (auto _ : state) {
        object.SetTechnicsString(text.Next());
        manager.LoadTechnics(&object);
    }
    if (manager.lead.speed != 12) std::abort();
}

void LoadAgain(State& state) {
    Text text;
    Manager manager;
    qev::CCadGroup object;
    object.SetTechnicsString(text.Next());
    for (auto _ : state) manager.LoadTechnics(&object);
    if (manager.lead.speed != 12) std::abort();
}

void LoadAsData(State& state) {
    Text text;
    Manager manager;
    manager.SetDataOnly(true);
    qev::CCadGroup object;
    for (auto _ : state) {
        object.SetTechnicsString(text.Next());
        manager.LoadTechnics(&object);
    }
    if (manager.lead.speed != 12) std::abort();
}

const bool load = Pair("load 30 kB of technics", 1.1, LoadRaw, LoadOurs);
const bool loadAgain = Pair("load 30 kB seen before", 0.7, LoadRaw, LoadAgain);
const bool loadAsData = Pair("load 30 kB taken as data", 1.2, LoadRaw, LoadAsData);

} // namespace
