// A name without a folder is never handed to the system's loader as it is: that would look for it among the
// libraries of the system, and find the file in the working directory on one system and not on the other.

#include "plug_ins.h"

#include <fstream>
#include <set>

#include <qev/technics.h>

#include "host/drawing/drawing.h"
#include "platform/dynamic_library.h"
#include "platform/path.h"

namespace host {
namespace {

constexpr char kInstalled[] = QEV_PLUG_IN_FOLDER; // seen from the program's folder

bool IsFile(const std::string& path) { // a folder can be opened, but not read
    return std::ifstream(path, std::ios::binary).peek() != std::ifstream::traits_type::eof();
}

std::string PlaceOf(const std::string& name) {
    using namespace qev::platform;
    if (StripPath(name) != name) return name;
    if (IsFile(name)) return AppendPath(".", name);
    const std::string program = RemoveFileSpec(ModulePathOf(kInstalled));
    for (const std::string& folder : {AppendPath(program, kInstalled), program})
        for (const char* extension : {"", QEV_PLUG_IN_EXTENSION})
            if (std::string path = AppendPath(folder, name + extension); IsFile(path)) return path;
    throw DrawingError(name + ": there is no such file here, and no such plug-in is installed");
}

} // namespace

void LoadPlugIns(qev::CTechnicsManager& manager, const std::vector<std::string>& names) {
    static std::set<std::string> loaded; // a run over several drawings asks with each of them
    for (const std::string& name : names) {
        const std::string path = PlaceOf(name);
        if (loaded.contains(path)) continue;
        if (!manager.LoadTechnicsPlugIn(path)) throw DrawingError(manager.GetLastErrorText());
        loaded.insert(path);
    }
}

} // namespace host
