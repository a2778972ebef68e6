#include <qev/technics/load_library.h>

#include "platform/dynamic_library.h"
#include "platform/path.h"

namespace qev {

HINSTANCE _LoadLibrary(const char* name) {
    if (!name) return nullptr;
    if (HINSTANCE found = platform::LoadDynamicLibrary(name)) return found;
    if (!platform::IsRelativePath(name)) return nullptr;
    static const char inHere = 0;
    const std::string folder = platform::RemoveFileSpec(platform::ModulePathOf(&inHere));
    const std::string beside = platform::AppendPath(folder, name);
    return folder.empty() || beside.empty() ? nullptr : platform::LoadDynamicLibrary(beside.c_str());
}

} // namespace qev
