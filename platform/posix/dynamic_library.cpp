// Libraries through the dynamic loader. All symbols are bound at once, so that a plug-in which lacks one is
// refused when it is loaded and does not end the process in the middle of a cut; and they stay local, so that
// two plug-ins with a function of one name do not get each other's.
//
// The loader knows the program itself by its argv[0], which is a bare name when a shell has found it on PATH.
// Where it lies is what the system was told to start; the loader's own list has no name for the program.

#include "../dynamic_library.h"

#include <cstdlib>
#include <memory>

#include <dlfcn.h>
#include <link.h>
#include <sys/auxv.h>

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
    link_map* module = nullptr;
    if (!dladdr1(code, &info, reinterpret_cast<void**>(&module), RTLD_DL_LINKMAP)) return {};
    const bool isProgram = !*module->l_name;
    const char* const name =
        isProgram ? reinterpret_cast<const char*>(getauxval(AT_EXECFN)) // NOLINT(performance-no-int-to-ptr)
                  : info.dli_fname;
    const std::unique_ptr<char, decltype(&std::free)> path(realpath(name, nullptr), &std::free);
    const std::string whole = path ? path.get() : "";
    return whole.size() <= kLongestPath ? whole : std::string();
}

} // namespace qev::platform
