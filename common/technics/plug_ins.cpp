// Plug-ins: how their libraries are found, loaded, registered and let go of.
//
// A plug-in is refused as a whole. Everything that can be wrong with it is looked at before the manager
// changes at all: the entries are searched, the load entry is called, its operators are collected in a list
// of their own, and the memory for all lists of the manager is taken. What follows cannot fail, so that
// a plug-in is never half registered and an operator whose library has been unloaded is never in the list.
// The version of the interface is looked at first. One thing does change on a refusal: without an entry for
// the temporary directory nobody is told it any more, because a host expects it to go to the plug-in that it
// has loaded last, and to no other one.

#include <algorithm>
#include <exception>
#include <new>
#include <type_traits>
#include <utility>

#include <qev/technics/load_library.h>
#include <qev/technics/manager.h>
#include <qev/technics/technics_operator.h>

#include "platform/dynamic_library.h"
#include "platform/path.h"

namespace qev {
namespace {

struct Free {
    void operator()(HMODULE module) const { platform::FreeDynamicLibrary(module); }
};
using Module = std::unique_ptr<std::remove_pointer_t<HMODULE>, Free>;

using Operators = std::vector<CITechnicsOperator*>;
using LoadEntry = CITechnicsOperator** (*)();

// Says of a library that is made for another interface; empty for all others. A constant, not a function, so
// that nothing is called of a library that may be called in another way.
std::string OtherInterface(HMODULE module) {
    const void* const version = platform::FindSymbol(module, "Qev_Interface_Version");
    const int made = version ? *static_cast<const int*>(version) : kTechnicsInterface;
    if (made == kTechnicsInterface) return {};
    return "is made for interface " + std::to_string(made) + ", and this library has "
           + std::to_string(kTechnicsInterface);
}

bool Serves(const Operators& operators, int type) {
    return std::any_of(operators.begin(), operators.end(),
                       [type](CITechnicsOperator* each) { return each->GetTechnicsType() == type; });
}

// Calls a plug-in's load entry and takes the operators whose types have none yet. False with the reason. What
// the plug-in throws ends in here: it must be gone before the plug-in is.
bool CollectNewcomers(LoadEntry load, const Operators& registered, Operators& newcomers,
                      std::string& why) try {
    CITechnicsOperator** next = load();
    if (!next) why = "gives null";
    for (; next && *next; ++next) {
        if (!(*next)->GetTechnicsName()) why = "gives an operator without a name";
        const int type = (*next)->GetTechnicsType();
        if (!Serves(registered, type) && !Serves(newcomers, type)) newcomers.push_back(*next);
    }
    return why.empty();
} catch (const std::exception& error) {
    why = std::string("throws: ") + error.what();
    return false;
} catch (const char* text) {
    why = std::string("throws: ") + (text ? text : "");
    return false;
} catch (...) {
    why = "throws";
    return false;
}

} // namespace

bool CTechnicsManager::LoadTechnicsPlugIn(const std::string& path) try {
    m_strLastError.clear();
    const auto refuse = [&](const std::string& why) {
        m_strLastError = path + ": " + why;
        return false;
    };
    if (std::find(m_vecPlugInPaths.begin(), m_vecPlugInPaths.end(), path) != m_vecPlugInPaths.end())
        return refuse("is loaded already");
    if (path.size() > platform::kLongestPath) return refuse("the path is too long");
    std::string why;
    Module module(platform::LoadDynamicLibrary(path.c_str(), &why));
    if (!module) return refuse(why);
    if (why = OtherInterface(module.get()); !why.empty()) return refuse(why);

    const std::string name = platform::RemoveExtension(platform::StripPath(path));
    const std::string loadName = "Load_" + name + "_Technics";
    const auto load = reinterpret_cast<LoadEntry>(platform::FindSymbol(module.get(), loadName.c_str()));
    if (!load) return refuse("has no " + loadName);
    const std::string setName = "Set_" + name + "_CadTempDir";
    const auto setCadTempDir =
        reinterpret_cast<void (*)(char*)>(platform::FindSymbol(module.get(), setName.c_str()));
    if (!setCadTempDir) {
        m_pfnSetCadTempDir = nullptr; // no other plug-in is told in its place
        return refuse("has no " + setName);
    }

    Operators newcomers;
    if (!CollectNewcomers(load, m_vecOperators, newcomers, why)) return refuse(loadName + " " + why);
    m_vecOperators.reserve(m_vecOperators.size() + newcomers.size()); // all or nothing
    m_vecPlugInOperators.reserve(m_vecPlugInOperators.size() + newcomers.size());
    m_vecPlugInModules.reserve(m_vecPlugInModules.size() + 1);
    m_vecFreedModules.reserve(m_vecFreedModules.size() + m_vecPlugInModules.size() + 1);
    m_vecPlugInPaths.push_back(path);
    m_vecPlugInModules.push_back(module.release());
    m_vecOperators.insert(m_vecOperators.end(), newcomers.begin(), newcomers.end());
    m_vecPlugInOperators.insert(m_vecPlugInOperators.end(), newcomers.begin(), newcomers.end());
    m_pfnSetCadTempDir = setCadTempDir;
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

void CTechnicsManager::FreeTechnicsPlugIn() {
    std::erase_if(m_vecOperators, [this](CITechnicsOperator* each) {
        return std::find(m_vecPlugInOperators.begin(), m_vecPlugInOperators.end(), each)
               != m_vecPlugInOperators.end();
    });
    m_vecPlugInOperators.clear();
    m_vecPlugInPaths.clear();
    m_pfnSetCadTempDir = nullptr;
    m_vecFreedModules.insert(m_vecFreedModules.end(), m_vecPlugInModules.begin(), m_vecPlugInModules.end());
    m_vecPlugInModules.clear();
    if (m_nWalks == 0) UnloadFreed();
}

void CTechnicsManager::UnloadFreed() {
    for (HMODULE module : std::exchange(m_vecFreedModules, {})) platform::FreeDynamicLibrary(module);
}

void CTechnicsManager::RegisterTechnicsItem(CITechnicsOperator* newcomer) {
    if (newcomer && !Serves(m_vecOperators, newcomer->GetTechnicsType())) m_vecOperators.push_back(newcomer);
}

void CTechnicsManager::SetCadTempDir(char* directory) {
    if (m_pfnSetCadTempDir) m_pfnSetCadTempDir(directory);
}

HINSTANCE _LoadLibrary(const char* name) {
    if (!name || !*name) return nullptr; // an empty one is this program to some systems
    if (HINSTANCE found = platform::LoadDynamicLibrary(name)) return found;
    if (!platform::IsRelativePath(name)) return nullptr;
    static const char inHere = 0; // lies in this library, whose folder is asked for
    const std::string folder = platform::RemoveFileSpec(platform::ModulePathOf(&inHere));
    const std::string beside = platform::AppendPath(folder, name);
    return folder.empty() || beside.empty() ? nullptr : platform::LoadDynamicLibrary(beside.c_str());
}

} // namespace qev
