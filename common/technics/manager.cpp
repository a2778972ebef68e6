// How technics get onto objects and into texts.
//
// A technics is known to its operator alone, and an operator to its plug-in. The manager therefore never
// looks into a technics: it runs a text, steps into the table that bears an operator's name, and lets the
// operator read it through the cursor. Which operator a text is for is told by its tables alone, the first
// registered operator with a table wins.
//
// Whatever uses the interpreter is a Request, which holds the lock and puts the stack and the cursor back. An
// operator is foreign code: it may throw, leave the cursor anywhere, register operators, ask the manager
// again from within (so that the lock can be taken again by its owner), and even have another interpreter
// opened. So a walk over the operators goes by index and not by iterator, and a Request keeps its own
// interpreter alive until it ends.

#include <cfloat>
#include <cmath>
#include <mutex>
#include <new>
#include <optional>
#include <sstream>
#include <utility>

#include <qev/measure/filters.h>
#include <qev/technics/manager.h>
#include <qev/technics/queries.h>
#include <qev/technics/technics_operator.h>
#include <qevdata/cad_object.h>
#include <qevdata/param.h>

#include "../script/cursor_scope.h"
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

// The first operator for which a test holds; null when there is none. The walk stays sound when operators
// join, or all of them go, while it calls them.
template <class Test>
CITechnicsOperator* FindOperator(const std::vector<CITechnicsOperator*>& operators, Test test) {
    const std::size_t count = operators.size();
    for (std::size_t i = 0; i < count && i < operators.size(); ++i) {
        CITechnicsOperator* const each = operators[i];
        if (test(*each)) return each;
    }
    return nullptr;
}

// Calls every operator that was registered when the walk began.
template <class Call>
void ForEachOperator(const std::vector<CITechnicsOperator*>& operators, Call call) {
    FindOperator(operators, [&](CITechnicsOperator& each) {
        call(each);
        return false;
    });
}

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

// Throws when the text has put an infinite number where the mouse's position belongs.
void CheckMouse(CLuaAccess& cursor) {
    for (const char* key : {"MouseSegment", "MouseRatio", "StartX", "StartY"}) {
        double value = 0;
        cursor.Read(value, key, -DBL_MAX, DBL_MAX);
    }
}

} // namespace

// One use of the interpreter: holds the lock, and leaves the stack and the cursor as it found them.
class CTechnicsManager::Request {
public:
    explicit Request(CTechnicsManager& manager)
        : m_rManager(manager), m_csGuard(*manager.m_csLock), m_pInterpreter(manager.m_pInterpreter),
          m_pCursor(manager.m_pLuaAccess) {
        m_rManager.m_strLastError.clear();
        if (!manager.m_pLuaState) return;
        m_optScope.emplace(*m_pCursor);
        m_pCursor->m_bAutoCreate = false; // an operator that asks may have it on
    }

    // Only after a Run that has worked.
    CLuaAccess& Cursor() const { return *m_pCursor; }
    // Runs a text and pushes its table T. False, with the reason in the manager, when it cannot be run.
    bool Run(const char* text) {
        if (!m_optScope) {
            m_rManager.m_strLastError = "there is no interpreter";
            return false;
        }
        if (!m_pInterpreter->Run(text, m_rManager.m_strLastError)) return false;
        m_optScope->PushGlobal("T");
        return true;
    }

private:
    CTechnicsManager& m_rManager;
    const std::lock_guard<platform::RecursiveLock> m_csGuard;
    const std::shared_ptr<TextInterpreter> m_pInterpreter; // an operator may have another one opened
    CLuaAccess* const m_pCursor;                           // the interpreter's
    std::optional<CursorScope> m_optScope;                 // none without an interpreter
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
    m_pLuaState = other.m_pLuaState;
    m_pLuaAccess = other.m_pLuaAccess;
    m_vecOperators = other.m_vecOperators;
    m_vecPlugInPaths = other.m_vecPlugInPaths;
    m_vecPlugInModules = other.m_vecPlugInModules;
    m_pfnSetCadTempDir = other.m_pfnSetCadTempDir;
    m_strLastError = other.m_strLastError;
    m_bDataOnly = other.m_bDataOnly;
    return *this;
}

bool CTechnicsManager::InitLuaEnv() try {
    m_pInterpreter = std::make_shared<TextInterpreter>(m_bDataOnly);
    m_pLuaState = m_pInterpreter->State();
    m_pLuaAccess = &m_pInterpreter->Cursor();
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

void CTechnicsManager::UnInitLuaEnv() {
    m_pLuaAccess = nullptr;
    m_pLuaState = nullptr;
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
    CITechnicsOperator* const found = FindOperator(m_vecOperators, [&](CITechnicsOperator& each) {
        const int own = each.GetTechnicsType();
        if (own == kFallback) fallback = &each;
        return own == type;
    });
    if (found) return found;
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
    CLuaAccess& cursor = request.Cursor();
    ForEachOperator(m_vecOperators, [&](CITechnicsOperator& each) {
        if (cursor.Enter(each.GetTechnicsName())) object->AddTechnics(each.CreateTechnics(object, &cursor));
        cursor.Leave();
    });
}

void CTechnicsManager::SaveTechnics(CCadObject* object) {
    if (!object) return;
    std::ostringstream text;
    text.imbue(std::locale::classic()); // numbers as Lua reads them
    text << "T={";
    for (const CTechnics* technics : object->GetTechnicsList())
        if (technics) technics->Write(text);
    text << "};";
    object->SetTechnicsString(text.str().c_str());
}

bool CTechnicsManager::AddTechnics(const std::list<CCadObject*>* objects, const std::string& luaText,
                                   const std::string& params, std::list<CCadObject*>* out1,
                                   std::list<CCadObject*>* out2, std::string& message) {
    if (!objects || objects->empty() || luaText.empty()) return false;
    Request request(*this);
    if (!request.Run(luaText.c_str())) return false;
    CLuaAccess& cursor = request.Cursor();
    CITechnicsOperator* const found = FindOperator(m_vecOperators, [&](CITechnicsOperator& each) {
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

bool CTechnicsManager::RemoveTechnics(const std::list<CCadObject*>* objects, int type,
                                      std::list<CCadObject*>* out1, std::list<CCadObject*>* out2,
                                      std::string& message) {
    CITechnicsOperator* const found = GetTehchnicsOperator(type);
    if (!found) return false;
    const bool removed = found->RemoveTechnicsOf(objects, type, out1, out2, message);
    return removed && out1 && !out1->empty();
}

void CTechnicsManager::SingleMudifyNotify(const CCadObject* before, CCadObject* after,
                                          const std::vector<int>& indices, int kind) {
    ForEachOperator(m_vecOperators,
                    [&](CITechnicsOperator& each) { each.SingleModify(before, after, indices, kind); });
}

void CTechnicsManager::MultipleMudifyNotify(const std::list<CCadObject*>* before,
                                            std::list<CCadObject*>* after, int kind) {
    ForEachOperator(m_vecOperators,
                    [&](CITechnicsOperator& each) { each.MultipleModify(before, after, kind); });
}

void CTechnicsManager::UpdataViewDataNotify(std::list<CCadObject*>* objects) {
    std::list<CCadObject*> leaves;
    CollectLeafNode(objects, &leaves);
    if (leaves.empty()) return;
    const auto update = [this](CCadObject* object) {
        if (!HasTechnics(object)) return;
        ForEachOperator(m_vecOperators, [object](CITechnicsOperator& each) { each.UpdateViewData(object); });
    };
    for (CCadObject* leaf : leaves) update(leaf);
    for (CCadObject* object : *objects)
        if (object && object->GetType() == kCadGroup) update(object);
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
