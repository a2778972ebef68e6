// A cursor that is led by bytes through plain tables and those with metatables: what is written is read
// again, each operation leaves the stack as high as it says, and the end of the cursor brings it back.
#include <vector>

#include "sandbox.h"

namespace {

using namespace fuzz;
using qev::CLuaAccess;

constexpr char kTables[] =
    "T = { a = { b = { 1, 2, { c = 'x' } } }, b = 'text', true, 7, { a = {} }, [1e9] = 1 }\n"
    "function f(...) return ... end function g() error({}) end\n"
    "M = setmetatable({ f = f }, { __index = function(t, k) error(k) end,\n"
    "    __newindex = function(t, k, v) rawset(T, k, v) end })";
constexpr std::array kNames{"T", "M", "a", "b", "c", "f", "g", "x"};
constexpr CLuaAccess::EnumItem kItems[] = {{"x", 1}, {"text", 2.5}, {nullptr, 0}};

struct Run {
    Input& in;
    Sandbox& L;
    CLuaAccess cursor{L};
    bool isPlain = true; // no metatable has been entered

    const char* Name() { return kNames[in.Int(0, kNames.size() - 1)]; }
    // An operation that makes the stack so much higher, unless it throws.
    template <class Operation>
    void Grow(int growth, const Operation& operation) {
        const int top = lua_gettop(L);
        if (L.Try(operation))
            Expect(lua_gettop(L) == std::max(0, top + growth), "the stack is as high as stated");
    }
    template <class Key>
    void WriteAndRead(Key key) {
        const double number = in.IsHostile() ? 1e300 : in.Number();
        const std::string text(in.Int(0, 40), 'z');
        const bool flag = in.Coin(), isText = in.Coin();
        double found = 0;
        bool is = !flag;
        char buffer[48] = "";
        Grow(0, [&] {
            const bool written = isText ? cursor.Write(text.c_str(), key) : cursor.Write(number, key);
            const bool read = isText ? cursor.Read(buffer, sizeof buffer, key) && buffer == text
                                     : cursor.Read(found, key, -HUGE_VAL, HUGE_VAL) && found == number;
            Expect(read || !written || !isPlain, "what is written is read again");
            Expect(!cursor.Write(flag, key) || !isPlain || (cursor.Read(is, key) && is == flag),
                   "a flag, too");
        });
    }
    void Read() {
        double number = 0;
        int integer = 0;
        void* pointer = nullptr;
        char buffer[3];
        const char* name = Name();
        const double bound = in.Number(9);
        std::vector<CLuaAccess::FieldInfo> fields;
        Grow(0, [&] { cursor.Read(number, name, bound, 5); });
        Grow(0, [&] { cursor.Read(integer, name, bound, 5); });
        Grow(0, [&] { cursor.Read(integer, in.Int(-1, 4)); });
        Grow(0, [&] { cursor.Read(number, name, kItems); });
        Grow(0, [&] { cursor.Read(buffer, sizeof buffer, name); });
        Grow(0, [&] { cursor.Read(&pointer, name); });
        Grow(0, [&] { cursor.Write(bound, name, kItems); });
        Grow(0, [&] { cursor.CollectFields(fields); });
    }
    void Call() {
        const int count = in.Int(-1, 2), kind = in.Int(0, 5);
        isPlain = false; // a table argument may be any
        L.Try([&] {
            if (kind == 0) cursor.StartCall(in.Coin() ? nullptr : Name(), Name(), count);
            if (kind == 1) cursor.EndCall();
            if (kind == 2) cursor.PushTable();
            if (kind == 3) cursor.PushTable(Name());
            if (kind == 4) cursor.PushTableLeave();
            if (kind == 5) cursor.Push(in.Number()), cursor.Push(Name()), cursor.Push(in.Coin());
        });
    }
    void Step() {
        const int kind = in.Int(0, 8);
        const char* name = Name();
        if (kind == 0) cursor.m_bAutoCreate = in.Coin();
        if (kind == 1) Grow(1, [&] { cursor.Enter(name); });
        if (kind == 2) Grow(1, [&] { cursor.Enter(in.Int(-1, 4)); });
        if (kind == 3) isPlain = isPlain && *name != 'M', Grow(1, [&] { cursor.EnterGlobal(name); });
        if (kind == 4) Grow(-1, [&] { cursor.Leave(); });
        if (kind == 5) WriteAndRead(name);
        if (kind == 6) WriteAndRead(in.Int(-1, 4));
        if (kind == 7) Read();
        if (kind == 8) Call();
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    Sandbox L;
    (void)luaL_dostring(L, kTables);
    for (Run run{in, L}; !in.IsEmpty();) run.Step();
    Expect(lua_gettop(L) == 0, "the end of a cursor brings the stack back");
    return 0;
}
