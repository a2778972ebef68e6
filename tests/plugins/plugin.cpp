// One source for all test plug-ins. NAME is the plug-in's, WAY a number: what is wrong with it.

#include <array>
#include <cstdlib>
#include <stdexcept>

#include "technics/test_operator.h"

#define JOIN_(a, b, c) a##b##c
#define JOIN(a, b, c) JOIN_(a, b, c)

namespace {

enum {
    kGood,
    kNoLoad,
    kNoSet,
    kNull,
    kNoName,
    kThrowsText,
    kThrowsItsOwn,
    kThrowsAnything,
    kThrowsLater,
    kBeside,
    kOther
};

struct Fault : std::runtime_error { // its code goes with the plug-in
    using std::runtime_error::runtime_error;
};

} // namespace

#if WAY == 0 || WAY > 8 // without it, a plug-in is of the time before versions
extern "C" QEV_EXPORT const int Qev_Interface_Version;
const int Qev_Interface_Version = qev::kTechnicsInterface + (WAY == kOther ? 41 : 0);
#endif

// What the host has set last; also an address to tell whether the plug-in is loaded.
extern "C" QEV_EXPORT char* g_directory;
char* g_directory = nullptr;

#if WAY != 2
extern "C" QEV_EXPORT void JOIN(Set_, NAME, _CadTempDir)(char* directory) {
    g_directory = directory;
}
#endif
#if WAY != 1
extern "C" QEV_EXPORT qev::CITechnicsOperator** JOIN(Load_, NAME, _Technics)() {
    static test::TestOperator first(21, "Tiny"), second(22, WAY == kNoName ? nullptr : "Tinier");
    static std::array<qev::CITechnicsOperator*, 4> all = {&first, &second, &first, nullptr};
    if (WAY == kOther) std::abort(); // is not to be called
    if (WAY == kThrowsText) throw "a text";
    if (WAY == kThrowsItsOwn) throw Fault("its own");
    if (WAY == kThrowsAnything) throw std::array{Fault("anything")};
    if (WAY == kThrowsLater) {
        first.onAdd = [](qev::CLuaAccess&) -> bool { throw Fault("add"); };
        first.onCreate = [](qev::CLuaAccess&) -> qev::CTechnics* { throw Fault("create"); };
        first.onNotify = [](qev::CCadObject*) { throw Fault("notify"); };
    }
    return WAY == kNull ? nullptr : all.data();
}
#endif
