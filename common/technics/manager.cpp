// How technics get onto objects and into texts.
//
// A technics is known to its operator alone, and an operator to its plug-in. The manager therefore never
// looks into a technics: it runs a text, steps into the table that bears an operator's name, and lets the
// operator read it through the cursor. Which operator a text is for is told by its tables alone, the first
// registered operator with a table wins.
//
// Whatever uses the interpreter is a Request, which holds the lock and puts the stack back. An operator is
// foreign code: it may throw, leave the cursor anywhere, register operators, have plug-ins unloaded, ask the
// manager again from within (so that the lock can be taken again by its owner), and even have another
// interpreter opened. So each operator gets a cursor of its own, on a Lua thread that holds nothing but its
// work: whatever it leaves there or takes off, the table T lies on the state's main stack, out of its reach.
// A Request keeps its own interpreter alive until it ends, and a Walk what it needs to go on.

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <exception>
#include <mutex>
#include <new>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

#include <qev/measure/filters.h>
#include <qev/script/access.h>
#include <qev/technics/manager.h>
#include <qev/technics/queries.h>
#include <qev/technics/technics_operator.h>
#include <qevdata/cad_object.h>
#include <qevdata/param.h>

#include "data/object_watch.h"
#include "platform/recursive_lock.h"
#include "text_interpreter.h"

namespace qev {
namespace {

// A derived class may name the protected static of the operators; no object of this one is ever made.
struct Context : CITechnicsOperator {
    using CITechnicsOperator::m_TarvelEnvContext;

protected:
    ~Context() = default;
};

// Writes where the mouse was into the table in which the cursor stands: the place on the contour always, 0
// for what the parameters leave out; the start point only as far as they name it, so that the text's own
// stays.
void WriteMouse(CLuaAccess& cursor, const std::string& params) {
    cursor.m_bAutoCreate = true;
    for (const char* key : {"MouseSegment", "MouseRatio", "StartX", "StartY"}) {
        const double value = CParam::GetKey_DBL_FromString(params.c_str(), key);
        const bool isMouse = *key == 'M';
        if (!std::isnan(value))
            cursor.Write(value, key);
        else if (isMouse)
            cursor.Write(0.0, key);
    }
    cursor.m_bAutoCreate = false;
}

// Has a technics write its text, on a stream of its own: what one plug-in does to its stream is no matter of
// the next one. False when the text cannot be stored.
bool WriteEntry(const CTechnics& technics, std::string& entry) {
    std::ostringstream out;
    out.imbue(std::locale::classic()); // numbers as Lua reads them
    technics.Write(out);
    entry = out.str();
    return !out.fail() && entry.find('\0') == std::string::npos;
}

// The technics text of what technics have written, if wanted with a comma behind each that ends without one.
std::string Join(const std::vector<std::string>& entries, bool isSeparated) {
    std::string text = "T={";
    for (const std::string& entry : entries) {
        text += entry;
        const std::size_t last = entry.find_last_not_of(" \t\r\n");
        const bool isOpen = last != std::string::npos && entry[last] != ',' && entry[last] != ';';
        if (isSeparated && isOpen) text += ',';
    }
    return text + "};";
}

// The leaves of a list, then the groups among its objects.
std::vector<CCadObject*> LeavesAndGroups(const std::list<CCadObject*>& objects) {
    std::list<CCadObject*> leaves;
    CollectLeafNode(&objects, &leaves);
    std::vector<CCadObject*> all(leaves.begin(), leaves.end());
    if (all.empty()) return all;
    for (CCadObject* object : objects)
        if (object && object->GetType() == kCadGroup) all.push_back(object);
    return all;
}

// The objects of a list that operators may change: what is no longer on it is not updated any more. (What has
// been destroyed is told by an ObjectWatch.) To see every change of a list of n objects takes n steps, after
// each call of an operator. For long lists that would make the calls quadratic: there a look at the whole
// list is taken every few calls, and its length and its ends, which most changes touch, are looked at after
// each.
class WatchedList {
public:
    explicit WatchedList(const std::list<CCadObject*>& objects)
        : m_rObjects(objects), m_vecKnown(objects.begin(), objects.end()) {}

    // Whether an object that was a leaf of the list, or a group on it, still is.
    bool Holds(CCadObject* object) const { return !m_optLeft || m_optLeft->count(object) > 0; }

    // Looks what a call has changed.
    void LookAfterCall() {
        if (!HasChanged()) return;
        m_vecKnown.assign(m_rObjects.begin(), m_rObjects.end());
        const std::vector<CCadObject*> left = LeavesAndGroups(m_rObjects);
        m_optLeft.emplace(left.begin(), left.end());
    }

private:
    static constexpr std::size_t kPaidByCall = 1024; // objects to look at; about a microsecond

    bool HasChanged() {
        if (m_rObjects.size() != m_vecKnown.size()) return true;
        if (m_vecKnown.empty()) return false;
        if (m_rObjects.front() != m_vecKnown.front() || m_rObjects.back() != m_vecKnown.back()) return true;
        m_nPaid += kPaidByCall;
        if (m_nPaid < m_vecKnown.size()) return false;
        m_nPaid = 0;
        return !std::equal(m_vecKnown.begin(), m_vecKnown.end(), m_rObjects.begin());
    }

    const std::list<CCadObject*>& m_rObjects;
    std::vector<CCadObject*> m_vecKnown;            // the list as it was seen last
    std::optional<std::set<CCadObject*>> m_optLeft; // once it has changed
    std::size_t m_nPaid = 0;                        // for the next look at the whole list
};

// Throws when the text has put an infinite number where the mouse's position belongs.
void CheckMouse(CLuaAccess& cursor) {
    for (const char* key : {"MouseSegment", "MouseRatio", "StartX", "StartY"}) {
        double value = 0;
        cursor.Read(value, key, -DBL_MAX, DBL_MAX);
    }
}

} // namespace

// One use of the interpreter: holds the lock, and leaves the stack as it found it.
class CTechnicsManager::Request {
public:
    explicit Request(CTechnicsManager& manager)
        : m_rManager(manager), m_csGuard(*manager.m_csLock), m_pInterpreter(manager.m_pInterpreter),
          m_nTop(m_pInterpreter ? lua_gettop(m_pInterpreter->State()) : 0) {
        m_rManager.m_strLastError.clear();
    }
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;
    ~Request() {
        m_optCursor.reset(); // its thread goes with the stack
        if (m_pInterpreter) lua_settop(m_pInterpreter->State(), m_nTop);
    }

    // Runs a text. False, with the reason in the manager, when it cannot be run.
    bool Run(const char* text) {
        if (m_pInterpreter) return m_pInterpreter->Run(text, m_rManager.m_strLastError);
        m_rManager.m_strLastError = "there is no interpreter";
        return false;
    }
    // A cursor that stands in the text's table T, and has been nowhere yet; the one before ends. Only after a
    // Run that has worked.
    CLuaAccess& NewCursor() {
        lua_State* const L = m_pInterpreter->State();
        lua_State* const thread = lua_tothread(L, m_nTop + 2);
        m_optCursor.reset();
        lua_settop(thread, 0);
        lua_pushvalue(L, m_nTop + 1);
        lua_xmove(L, thread, 1);
        return m_optCursor.emplace(thread);
    }

private:
    CTechnicsManager& m_rManager;
    const std::lock_guard<platform::RecursiveLock> m_csGuard;
    const std::shared_ptr<TextInterpreter> m_pInterpreter; // an operator may have another one opened
    const int m_nTop;                                      // below T and the thread of the cursors
    std::optional<CLuaAccess> m_optCursor;
};

// A walk over the operators that are registered when it begins. Those that go meanwhile are not called any
// more. The code of a plug-in that is freed meanwhile stays until the outermost walk has ended, as it may be
// running, and longer if it has thrown what is on its way to the host.
class CTechnicsManager::Walk {
public:
    explicit Walk(CTechnicsManager& manager)
        : m_rManager(manager), m_vecOperators(manager.m_vecOperators),
          m_nExceptions(std::uncaught_exceptions()) {
        ++m_rManager.m_nWalks;
    }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk() {
        const bool isOutermost = --m_rManager.m_nWalks == 0;
        if (isOutermost && std::uncaught_exceptions() == m_nExceptions) m_rManager.UnloadFreed();
    }

    // The first operator for which a test holds; null when there is none.
    template <class Test>
    CITechnicsOperator* Find(Test test) const {
        const std::vector<CITechnicsOperator*>& now = m_rManager.m_vecOperators;
        for (CITechnicsOperator* each : m_vecOperators)
            if (std::find(now.begin(), now.end(), each) != now.end() && test(*each)) return each;
        return nullptr;
    }
    // Calls every operator.
    template <class Call>
    void ForEach(Call call) const {
        Find([&](CITechnicsOperator& each) {
            call(each);
            return false;
        });
    }

private:
    CTechnicsManager& m_rManager;
    const std::vector<CITechnicsOperator*> m_vecOperators;
    const int m_nExceptions;
};

CTechnicsManager* CTechnicsManager::m_pTechnicsManager = nullptr;
CTechnicsManager::CAutoDestory CTechnicsManager::m_AutoDestory;

// The manager's own destructor clears the pointer.
CTechnicsManager::CAutoDestory::~CAutoDestory() {
    delete m_pTechnicsManager;
}

CTechnicsManager* GetTechnicsManager() try {
    if (!CTechnicsManager::m_pTechnicsManager) CTechnicsManager::m_pTechnicsManager = new CTechnicsManager;
    return CTechnicsManager::m_pTechnicsManager;
} catch (const std::bad_alloc&) {
    return nullptr;
}

CTechnicsManager::CTechnicsManager() : m_csLock(std::make_unique<platform::RecursiveLock>()) {
    InitLuaEnv();
    if (!m_pTechnicsManager) m_pTechnicsManager = this;
}

CTechnicsManager::~CTechnicsManager() {
    if (m_pTechnicsManager == this) m_pTechnicsManager = nullptr;
}

CTechnicsManager::CTechnicsManager(const CTechnicsManager& other)
    : CITechnicsSerialize(other), m_csLock(std::make_unique<platform::RecursiveLock>()) {
    *this = other;
}

// Everything but the lock, which belongs to one manager, and the static of the process's manager.
CTechnicsManager& CTechnicsManager::operator=(const CTechnicsManager& other) {
    if (this == &other) return *this;
    m_pInterpreter = other.m_pInterpreter;
    m_vecOperators = other.m_vecOperators;
    m_vecPlugInOperators = other.m_vecPlugInOperators;
    m_vecPlugInPaths = other.m_vecPlugInPaths;
    m_vecPlugInModules = other.m_vecPlugInModules;
    m_pfnSetCadTempDir = other.m_pfnSetCadTempDir;
    m_strLastError = other.m_strLastError;
    m_bDataOnly = other.m_bDataOnly;
    m_pDrawing = other.m_pDrawing;
    return *this;
}

bool CTechnicsManager::InitLuaEnv() try {
    m_pInterpreter = std::make_shared<TextInterpreter>(m_bDataOnly);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

void CTechnicsManager::UnInitLuaEnv() {
    m_pInterpreter.reset();
}

bool CTechnicsManager::SetDataOnly(bool dataOnly) {
    const std::lock_guard lock(*m_csLock);
    const bool before = std::exchange(m_bDataOnly, dataOnly);
    const bool isOpen = InitLuaEnv();
    if (!isOpen) m_bDataOnly = before;
    return isOpen;
}

CITechnicsOperator* CTechnicsManager::GetTehchnicsOperator(int type) {
    constexpr int kFallback = 16; // the type that serves those with its bit
    CITechnicsOperator* fallback = nullptr;
    for (CITechnicsOperator* each : m_vecOperators) {
        const int own = each->GetTechnicsType();
        if (own == type) return each;
        if (own == kFallback) fallback = each;
    }
    return type & kFallback ? fallback : nullptr;
}

const std::vector<CITechnicsOperator*>* CTechnicsManager::GetTehcnisItemVector() {
    return &m_vecOperators;
}

// Unlike a text that is added, one that is loaded may hold a table for every operator.
void CTechnicsManager::LoadTechnics(CCadObject* object) {
    const CString text = object ? object->GetTechnicsString() : CString();
    if (text.IsEmpty()) return;
    Request request(*this);
    if (!request.Run(text)) return;
    const Walk walk(*this);
    walk.ForEach([&](CITechnicsOperator& each) {
        CLuaAccess& cursor = request.NewCursor();
        if (cursor.Enter(each.GetTechnicsName())) object->AddTechnics(each.CreateTechnics(object, &cursor));
    });
}

// Whether the joined text can be read again is tried in an interpreter of its own, as no lock is held. A
// technics that leaves out its comma spoils the text for all others; one more comma mends that, but commas
// change no text that can be read without them.
void CTechnicsManager::SaveTechnics(CCadObject* object) {
    if (!object) return;
    m_strLastError.clear();
    std::vector<std::string> entries;
    for (const CTechnics* technics : object->GetTechnicsList()) {
        if (!technics || WriteEntry(*technics, entries.emplace_back())) continue;
        m_strLastError = "a technics of type " + std::to_string(technics->m_nType) + " cannot be written";
        return;
    }
    std::string why, ignored, text = Join(entries, false);
    if (!entries.empty() && !TextInterpreter::CanRead(text, m_bDataOnly, why)) {
        std::string separated = Join(entries, true);
        if (TextInterpreter::CanRead(separated, m_bDataOnly, ignored))
            text.swap(separated);
        else
            m_strLastError = "what was saved cannot be read: " + why;
    }
    object->SetTechnicsString(text.c_str());
}

bool CTechnicsManager::AddTechnics(const std::list<CCadObject*>* objects, const std::string& luaText,
                                   const std::string& params, std::list<CCadObject*>* out1,
                                   std::list<CCadObject*>* out2, std::string& message) {
    if (!objects || objects->empty() || luaText.empty()) return false;
    Request request(*this);
    if (!request.Run(luaText.c_str())) return false;
    const Walk walk(*this);
    CLuaAccess& cursor = request.NewCursor();
    CITechnicsOperator* const found = walk.Find([&](CITechnicsOperator& each) {
        const bool entered = cursor.Enter(each.GetTechnicsName());
        if (!entered) cursor.Leave();
        return entered;
    });
    if (!found) {
        m_strLastError = "no operator has a table in the text";
        return false;
    }
    if (!params.empty()) WriteMouse(cursor, params);
    CheckMouse(cursor);
    return found->AddTechnicsByLua(objects, &cursor, out1, out2, message);
}

bool CTechnicsManager::AddAllTechnics(const std::list<CCadObject*>* objects, const std::string& luaText,
                                      const std::string& params, std::list<CCadObject*>* out1,
                                      std::list<CCadObject*>* out2, std::string& message) {
    if (!objects || objects->empty()) return false;
    Request request(*this);
    if (!request.Run(luaText.c_str()) || !HasOperatorsFor(request.NewCursor())) return false;
    message.clear();
    bool areAdded = true;
    const Walk walk(*this);
    walk.ForEach([&](CITechnicsOperator& each) {
        CLuaAccess& cursor = request.NewCursor();
        if (!cursor.Enter(each.GetTechnicsName())) return;
        if (!params.empty()) WriteMouse(cursor, params);
        CheckMouse(cursor);
        std::string own;
        areAdded = each.AddTechnicsByLua(objects, &cursor, out1, out2, own) && areAdded;
        message += (message.empty() ? "" : "\n") + own;
    });
    return areAdded;
}

bool CTechnicsManager::KnowsTechnics(const std::string& luaText) {
    Request request(*this);
    return request.Run(luaText.c_str()) && HasOperatorsFor(request.NewCursor());
}

// Looks at the table in which the cursor stands. Says of the first entry that no operator is called as, or of
// the last one that is no table.
bool CTechnicsManager::HasOperatorsFor(CLuaAccess& cursor) {
    std::vector<CLuaAccess::FieldInfo> fields;
    cursor.CollectFields(fields);
    if (fields.empty()) m_strLastError = "the text holds no technics, as T={Name={}} does";
    std::string loaded;
    for (CITechnicsOperator* each : m_vecOperators) {
        std::erase_if(fields, [&](const auto& field) {
            const bool isOwn = field.name == each->GetTechnicsName();
            if (isOwn && field.value != "table")
                m_strLastError = field.name + " = " + field.value + " is not a table of parameters";
            return isOwn;
        });
        loaded += (loaded.empty() ? "" : ", ") + std::string(each->GetTechnicsName());
    }
    if (!fields.empty())
        m_strLastError = "there is no technics " + fields.front().name + "; loaded are "
                         + (loaded.empty() ? "none" : loaded);
    return m_strLastError.empty();
}

bool CTechnicsManager::RemoveTechnics(const std::list<CCadObject*>* objects, int type,
                                      std::list<CCadObject*>* out1, std::list<CCadObject*>* out2,
                                      std::string& message) {
    const Walk walk(*this);
    CITechnicsOperator* const found = GetTehchnicsOperator(type);
    if (!found) return false;
    const bool removed = found->RemoveTechnicsOf(objects, type, out1, out2, message);
    return removed && out1 && !out1->empty();
}

void CTechnicsManager::SingleMudifyNotify(const CCadObject* before, CCadObject* after,
                                          const std::vector<int>& indices, int kind) {
    Walk(*this).ForEach([&](CITechnicsOperator& each) { each.SingleModify(before, after, indices, kind); });
}

void CTechnicsManager::MultipleMudifyNotify(const std::list<CCadObject*>* before,
                                            std::list<CCadObject*>* after, int kind) {
    Walk(*this).ForEach([&](CITechnicsOperator& each) { each.MultipleModify(before, after, kind); });
}

void CTechnicsManager::UpdataViewDataNotify(std::list<CCadObject*>* objects) {
    if (!objects) return;
    const Walk walk(*this);
    const std::vector<CCadObject*> all = LeavesAndGroups(*objects);
    const ObjectWatch watch({all.begin(), all.end()});
    WatchedList list(*objects);
    for (CCadObject* object : all) {
        if (!watch.Lives(object) || !list.Holds(object) || !HasTechnics(object)) continue;
        walk.ForEach([&](CITechnicsOperator& each) {
            if (!watch.Lives(object) || !list.Holds(object)) return;
            each.UpdateViewData(object);
            list.LookAfterCall();
        });
    }
}

TarvelEnvContext CITechnicsOperator::m_TarvelEnvContext;

// NOLINTBEGIN(readability-convert-member-functions-to-static): hosts link to these signatures
TarvelEnvContext& CTechnicsManager::GetTarvelEnvContext() {
    return Context::m_TarvelEnvContext;
}

void CTechnicsManager::SetTarvelEnvContext(const TarvelEnvContext& context) {
    Context::m_TarvelEnvContext = context;
}
// NOLINTEND(readability-convert-member-functions-to-static)

CITechnicsOperator::CITechnicsOperator() = default;
CITechnicsOperator::CITechnicsOperator(const CITechnicsOperator&) = default;
CITechnicsOperator& CITechnicsOperator::operator=(const CITechnicsOperator&) = default;

void CITechnicsOperator::CadMultipleModifyEventTenchnicsCollect(const std::list<CCadObject*>*,
                                                                std::list<CCadObject*>*, int,
                                                                std::map<CCadObject*, CCadObject*>&) {}

bool CITechnicsOperator::IncrementalAdd(const CCadObject*, CTechnics*) {
    return false;
}

} // namespace qev
