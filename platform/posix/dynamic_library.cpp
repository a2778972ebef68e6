// Libraries through the dynamic loader. All symbols are bound at once, so that a plug-in which lacks one is
// refused when it is loaded and does not end the process in the middle of a cut; and they stay local, so that
// two plug-ins with a function of one name do not get each other's.

#include "../dynamic_library.h"

#include <cstdlib>
#include <memory>

#include <dlfcn.h>

namespace qev::platform {

HMODULE LoadDynamicLibrary(const char* path, std::string* why) {
    HMODULE module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (!module && why) *why = dlerror(); // NOLINT(concurrency-mt-unsafe): each thread has its own text
    return module;
}

void FreeDynamicLibrary(HMODULE module) {
    if (module) dlclose(module);
}

void* FindSymbol(HMODULE module, const char* name) {
    return module ? dlsym(module, name) : nullptr; // a null handle would search the program
}

std::string ModulePathOf(const void* code) {
    Dl_info info{};
    if (!dladdr(code, &info)) return {};
    const std::unique_ptr<char, decltype(&std::free)> path(realpath(info.dli_fname, nullptr), &std::free);
    const std::string whole = path ? path.get() : "";
    return whole.size() <= kLongestPath ? whole : std::string();
}

} // namespace qev::platform
