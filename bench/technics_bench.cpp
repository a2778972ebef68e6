// Technics texts beside Lua's own way to their values.
#include <cstdlib>
#include <memory>
#include <string>

#include <qev/lua.h>
#include <qev/technics.h>

#include <lua.hpp>

#include "support/lead.h"
#include "support/work.h"

namespace {

using namespace qev::bench;

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

// A row of a manager that loads texts, each of which has to reach its operator.
template <class Prepare>
Row Load(Prepare prepare, bool isNew) {
    return Ask([=] {
        const auto manager = std::make_shared<Manager>();
        const auto object = std::make_shared<qev::CCadGroup>(false);
        const auto text = std::make_shared<Text>();
        prepare(*manager);
        object->SetTechnicsString(text->Next());
        return [=](int) {
            if (isNew) object->SetTechnicsString(text->Next());
            manager->lead.speed = 0;
            manager->LoadTechnics(object.get());
            return manager->lead.speed;
        };
    });
}
void AsScript(Manager&) {}
void AsData(Manager& manager) {
    manager.SetDataOnly(true);
}

// Lua's own way to the number.
Row LoadRaw() {
    return Ask([] {
        const std::shared_ptr<lua_State> state(luaL_newstate(), lua_close);
        luaL_openlibs(state.get());
        return [state, text = std::make_shared<Text>()](int) {
            lua_State* const L = state.get();
            if (luaL_loadstring(L, text->Next()) || lua_pcall(L, 0, LUA_MULTRET, 0)) std::abort();
            lua_getglobal(L, "T");
            lua_getfield(L, -1, "Lead");
            lua_getfield(L, -1, "Speed");
            const double speed = lua_tonumber(L, -1);
            lua_settop(L, 0);
            return speed;
        };
    });
}

bool AddLoad(const char* subject, const Row& ours, double ofByHand) {
    return Add({subject, ours, {}, LoadRaw(), {0, ofByHand}, 0, 16});
}
const bool load = AddLoad("load 30 kB of technics", Load(AsScript, true), 1.1);
const bool loadAgain = AddLoad("load 30 kB seen before", Load(AsScript, false), 0.15);
const bool loadAsData = AddLoad("load 30 kB as data", Load(AsData, true), 1.05);
const bool loadAsDataAgain = AddLoad("load 30 kB as data, seen before", Load(AsData, false), 0.15);

} // namespace
