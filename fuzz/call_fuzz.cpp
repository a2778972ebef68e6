// Calls by a format that breaks off or holds a wrong letter anywhere: arguments come back as the results that
// were asked for, or a text is thrown, and no buffer is overrun.
#include "sandbox.h"

namespace {

using fuzz::Expect, fuzz::Input, fuzz::Sandbox;
using qev::CLuaAccess;

// The format that the arguments of Call fit.
constexpr char kFormat[] = "bids>bidsS";

struct Results {
    bool flag = false;
    int integer = 0;
    double number = 0;
    char* copy = nullptr;
    char area[8] = "~~~~~~~";
    char* buffer = area;
    ~Results() { std::free(copy); }
};

// kFormat, at times cut, at times with a letter that stands for nothing.
std::string Format(Input& in) {
    std::string format = kFormat;
    if (in.Coin()) format[in.Int(0, 9)] = "xB0 %\xFF"[in.Int(0, 5)];
    if (in.Coin()) format.resize(in.Int(0, 10));
    return format;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    Sandbox L;
    CLuaAccess cursor(L);
    Results results;
    const std::string format = Format(in), text(in.Int(0, 10), 't');
    const int room = in.Int(-1, 8), flag = in.Int(0, 2), integer = in.Int(-30000, 30000);
    const bool isNull = in.Int(0, 7) == 0;
    const double number = in.Number();
    // the place that answers with another one of the arguments
    (void)luaL_dostring(L, in.Coin() ? "function f(a, b, c, d) return a, b, c, d, d end"
                                     : "function f(a, b, c, d) return d, c, b, a, f end");
    const int top = lua_gettop(L);
    const bool called = L.Try([&] {
        cursor.CallLuaFunc(nullptr, "f", format.c_str(), flag, integer, number, text.c_str(), &results.flag,
                           isNull ? nullptr : &results.integer, &results.number, &results.copy,
                           &results.buffer, room);
    });
    Expect(!called || lua_gettop(L) == top, "the stack is as high as before");
    Expect(std::string_view(results.area + std::max(0, room), 8 - std::max(0, room))
               == std::string_view("~~~~~~~", 8).substr(std::max(0, room)),
           "nothing is written behind the buffer");
    if (!called || format != kFormat) return 0;
    Expect(results.flag == (flag != 0), "a boolean");
    Expect(results.integer == integer, "an integer");
    Expect(results.number == number || std::isnan(number), "a number");
    Expect(results.copy == text, "a text");
    Expect(std::string_view(results.area, text.size()) == text, "a text in a buffer");
    return 0;
}
