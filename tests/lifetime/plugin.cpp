// A plug-in that uses the probe for as long as it is loaded, also in its own static's destructor.
#include "probe.h"

namespace {

struct AtUnload {
    ~AtUnload() { Probe::GetInstance()->Call(); }
} s_atUnload;

} // namespace

extern "C" QEV_EXPORT void Use() {
    Probe::GetInstance()->Call();
}
