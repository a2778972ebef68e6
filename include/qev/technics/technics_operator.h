/// \file
/// What a technics plug-in implements.
#pragma once

#include <list>
#include <map>
#include <string>
#include <vector>

#include <qev/export.h>
#include <qev/platform.h>

namespace qev {

class CCadObject;
class CLuaAccess;
class CTechnics;

/// The version of what plug-ins and this library call of each other: the operations of CITechnicsOperator and
/// CTechnics, and the objects that they get. A plug-in that exports it as `Qev_Interface_Version` is refused
/// by a library of another version.
inline constexpr int kTechnicsInterface = 1;

/// What the host tells its plug-ins: three handles and a text of its own, which this library only hands out.
struct TarvelEnvContext {
    unsigned long long first = 0;  ///< a handle of the host
    unsigned long long second = 0; ///< a handle of the host
    unsigned long long third = 0;  ///< a handle of the host
    CString fourth;                ///< a text of the host; empty at first
};

/// One type of technics. A plug-in makes its operators and keeps them for as long as it is loaded; nobody
/// deletes them through this class. What an operation throws passes through the manager to the host.
///
/// The output lists, the message and the numbers of the notifications are a matter between the host and its
/// plug-ins; by custom the first list takes the objects that changed, the second those that were refused. The
/// order of the operations is the binary interface; the reserved ones are never called by this library.
class QEVCOMMON_API CITechnicsOperator {
public:
    /// Registers nothing: the plug-in's load entry hands the operator to the manager.
    CITechnicsOperator();
    /// Copies nothing: the class holds no data of its object.
    CITechnicsOperator(const CITechnicsOperator&);
    /// Assigns nothing: the class holds no data of its object.
    CITechnicsOperator& operator=(const CITechnicsOperator&);

    /// The type of technics that this operator serves; always the same.
    virtual int GetTechnicsType() = 0;
    /// The key of its table in the table "T" of technics texts; always the same, never null.
    virtual const char* GetTechnicsName() = 0;
    /// Attaches new technics to the objects; true when at least one object took one, which the host is told.
    /// By custom out1 gets the objects that changed and out2 those that were refused. The cursor stands in
    /// the operator's table and is brought back afterwards, wherever it is left.
    virtual bool AddTechnicsByLua(const std::list<CCadObject*>* objects, CLuaAccess* cursor,
                                  std::list<CCadObject*>* out1, std::list<CCadObject*>* out2,
                                  std::string& message) = 0;
    /// A technics as saved in the table in which the cursor stands, or null; the manager attaches it.
    virtual CTechnics* CreateTechnics(CCadObject* object, CLuaAccess* cursor) = 0;
    /// Removes the technics of a type from the objects; true when at least one object had one.
    virtual bool RemoveTechnicsOf(const std::list<CCadObject*>* objects, int type,
                                  std::list<CCadObject*>* out1, std::list<CCadObject*>* out2,
                                  std::string& message) = 0;
    /// Takes the sixth place among the operations; never called by this library.
    virtual void Reserved6() = 0;
    /// An object has been edited. What the manager was told is passed on as it is, null too.
    virtual void SingleModify(const CCadObject* before, CCadObject* after, const std::vector<int>& indices,
                              int kind) = 0;
    /// Several objects have been edited together. What the manager was told is passed on as it is, null too.
    virtual void MultipleModify(const std::list<CCadObject*>* before, std::list<CCadObject*>* after,
                                int kind) = 0;
    /// Several objects have been edited together, with a map for the operator to fill, by custom of objects
    /// before and after. Does nothing by default; this library never calls it. "Tenchnics" is how plug-ins
    /// spell it when they override it.
    virtual void CadMultipleModifyEventTenchnicsCollect(const std::list<CCadObject*>* before,
                                                        std::list<CCadObject*>* after, int kind,
                                                        std::map<CCadObject*, CCadObject*>& pairs);
    /// A technics is to be added to what the object carries already. False by default; this library never
    /// calls it.
    virtual bool IncrementalAdd(const CCadObject* object, CTechnics* technics);
    /// Brings what is shown of an object's technics up to date.
    virtual void UpdateViewData(CCadObject* object) = 0;
    /// Takes the twelfth place among the operations; never called by this library.
    virtual void Reserved12() = 0;
    /// Takes the thirteenth place among the operations; never called by this library.
    virtual void Reserved13() = 0;
    /// Takes the fourteenth place among the operations; never called by this library.
    virtual void Reserved14() = 0;

protected:
    ~CITechnicsOperator() = default;

    /// What the host tells its plug-ins: one for all operators of the process, set through
    /// CTechnicsManager::SetTarvelEnvContext.
    static TarvelEnvContext m_TarvelEnvContext;
};

} // namespace qev
