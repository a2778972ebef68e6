// Libraries through the system's loader. Its error numbers are turned into the system's words at once, since
// the next call of the system may replace them.

#include "../dynamic_library.h"

#include <windows.h>

namespace qev::platform {
namespace {

std::string TextOf(DWORD error) {
    char text[512] = "";
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        error, 0, text, sizeof text, nullptr);
    const std::string message(text, length);
    return message.substr(0, message.find_last_not_of(" \r\n.") + 1) + " (" + std::to_string(error) + ")";
}

} // namespace

HMODULE LoadDynamicLibrary(const char* path, std::string* why) {
    const HMODULE module = LoadLibraryA(path);
    if (!module && why) *why = TextOf(GetLastError());
    return module;
}

void FreeDynamicLibrary(HMODULE module) {
    if (module) FreeLibrary(module);
}

void* FindSymbol(HMODULE module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(module, name));
}

std::string ModulePathOf(const void* code) {
    HMODULE module = nullptr;
    // the use that the look-up would count keeps the library from unloading
    constexpr DWORD kFlags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!code || !GetModuleHandleExA(kFlags, static_cast<const char*>(code), &module)) return {};
    char path[kLongestPath + 1];
    const DWORD length = GetModuleFileNameA(module, path, sizeof path);
    return length < sizeof path ? std::string(path, length) : std::string();
}

} // namespace qev::platform
