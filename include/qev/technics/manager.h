/// \file
/// The technics manager: plug-ins, their operators, and technics as Lua text.
///
/// Some names are misspelt (GetTehchnicsOperator, GetTehcnisItemVector, SingleMudifyNotify,
/// MultipleMudifyNotify, UpdataViewDataNotify, m_AutoDestory); hosts and plug-ins link to these spellings.
#pragma once

#include <list>
#include <memory>
#include <string>
#include <vector>

#include <qev/export.h>
#include <qev/platform.h>
#include <qevdata/technics.h>

namespace qev {

namespace platform {
class RecursiveLock;
}

class CCadGroup;
class CITechnicsOperator;
class CLuaAccess;
class TextInterpreter;
struct TarvelEnvContext;

/// Keeps the operators that plug-ins bring, at most one for each type, and turns technics texts into technics
/// and back. A text is Lua that sets the global table T, with a table for each type under the name of its
/// operator; saved ones read "T={...};".
///
/// A plug-in is a library whose file name without folder and extension is N. It exports, unmangled,
/// `CITechnicsOperator** Load_N_Technics()`, which gives a null-terminated array, and
/// `void Set_N_CadTempDir(char* directory)`. If it also exports `const int Qev_Interface_Version`, this must
/// be kTechnicsInterface (qev/technics/technics_operator.h); plug-ins without it are of the time before
/// versions.
///
/// LoadTechnics, AddTechnics, AddAllTechnics and KnowsTechnics hold a lock, which an operator may take again
/// by calling them; everything else is for one thread at a time. What an operator or the Lua cursor throws
/// passes to the caller, with the lock free and the interpreter's stack as it was. Each operator gets a
/// cursor of its own, valid during the call; loads within a load may enter 16 levels each. Operators that are
/// registered during a walk over the operators are first called by the next one; those that go meanwhile are
/// not called any more. Every walk (loading, adding, removing, notifying) throws std::bad_alloc when memory
/// is refused.
class QEVCOMMON_API CTechnicsManager : public CITechnicsSerialize {
public:
    /// Creates the technics that an object's technics text describes and attaches them to the object. A text
    /// that cannot be run changes nothing. Throws std::bad_alloc when memory is refused.
    void LoadTechnics(CCadObject* object) override;
    /// Writes an object's technics into its technics text: "T={", what each writes, "};". Where that
    /// cannot be read again, commas are put behind the technics that lack one. If it still cannot be read, it
    /// is stored without these commas, and GetLastErrorText says so. When a technics leaves
    /// its stream failed or writes a zero byte, the text stays as it was and GetLastErrorText names the
    /// technics' type. Nothing for a null object. Throws std::bad_alloc when memory is refused, with the
    /// text as it was, and passes on what a technics throws.
    void SaveTechnics(CCadObject* object) override;
    /// Closes the interpreter. Neither deletes operators nor unloads plug-ins.
    ~CTechnicsManager() override;

    /// Has the operators of the other manager and shares its interpreter, which is closed with the last of
    /// them. The copy has a lock of its own, so that only one of the two may be used at a time, and one of
    /// them may free the plug-ins. Throws std::bad_alloc when memory is refused.
    CTechnicsManager(const CTechnicsManager& other);
    /// Takes over the other's operators and shares its interpreter, which is closed with the last of them.
    /// This manager lets go of its own interpreter, keeps its lock and unloads no plug-in, so that only one
    /// of the two may be used at a time, and one of them may free the plug-ins. Throws std::bad_alloc when
    /// memory is refused; this manager then has some of the other's, and is only to be assigned to or ended.
    CTechnicsManager& operator=(const CTechnicsManager& other);

    /// Loads a plug-in and registers its operators; of those of one type the first stays. False, with the
    /// plug-in unloaded, nothing registered and the reason in GetLastErrorText, for a path of more than 259
    /// bytes or one loaded before, a library with another interface version, which is told before anything
    /// of it is called, or without one of the entries, a load entry that throws or gives null or an operator
    /// without a name, and when memory is refused. After a refusal for a missing Set_N_CadTempDir,
    /// SetCadTempDir calls nobody until the next plug-in has been loaded.
    bool LoadTechnicsPlugIn(const std::string& path);
    /// Calls the Set_N_CadTempDir of the plug-in loaded last, if there is one.
    void SetCadTempDir(char* directory);

    /// The operator of a type. Without one, every type with the bit 16 is served by the operator of type 16.
    /// Null when there is none.
    CITechnicsOperator* GetTehchnicsOperator(int type);
    /// All operators in the order of registration; the vector stays the manager's.
    const std::vector<CITechnicsOperator*>* GetTehcnisItemVector();

    /// Runs a technics text and has the first operator whose table it holds add technics to the objects.
    /// Unless empty, `params` ("MouseSegment=1;MouseRatio=0.5;StartX=3;StartY=4;") is written into that table
    /// before: the mouse's position always, 0 for what is missing, the start point's coordinates if given.
    /// The lists and the message are the operator's, as is the result; by custom out1 gets the objects that
    /// changed and out2 those that were refused. False without objects, for a text that
    /// is empty or cannot be run, and without an operator for it. Throws std::bad_alloc when memory is
    /// refused.
    bool AddTechnics(const std::list<CCadObject*>* objects, const std::string& luaText,
                     const std::string& params, std::list<CCadObject*>* out1, std::list<CCadObject*>* out2,
                     std::string& message);
    /// Runs a technics text and has every operator whose table it holds add technics to the objects, in the
    /// order of registration, where AddTechnics has only the first one. `params` and the lists are handed to
    /// each; the messages follow each other, a line each. False, before any operator is called, without
    /// objects and for a text that KnowsTechnics refuses; false too when an operator says so, and what the
    /// others have added stays. Throws std::bad_alloc when memory is refused.
    bool AddAllTechnics(const std::list<CCadObject*>* objects, const std::string& luaText,
                        const std::string& params, std::list<CCadObject*>* out1, std::list<CCadObject*>* out2,
                        std::string& message);
    /// Whether a technics text can be run and each entry of its table T is a table that is called as an
    /// operator, so that nothing in it is passed over. False, with the reason in GetLastErrorText, which
    /// names the entry that is not and its value or the operators there are. Throws std::bad_alloc when
    /// memory is refused.
    bool KnowsTechnics(const std::string& luaText);
    /// Has the operator of a type remove its technics. True when it says so and out1 holds an object
    /// afterwards; never for a null out1. The operator gets null objects as well. Throws std::bad_alloc when
    /// memory is refused.
    bool RemoveTechnics(const std::list<CCadObject*>* objects, int type, std::list<CCadObject*>* out1,
                        std::list<CCadObject*>* out2, std::string& message);

    /// Passes an edit of one object on to every operator. Throws std::bad_alloc when memory is refused.
    void SingleMudifyNotify(const CCadObject* before, CCadObject* after, const std::vector<int>& indices,
                            int kind);
    /// Passes an edit of several objects on to every operator. Throws std::bad_alloc when memory is refused.
    void MultipleMudifyNotify(const std::list<CCadObject*>* before, std::list<CCadObject*>* after, int kind);
    /// Has every operator update what is shown of the leaves that carry technics, then of the groups among
    /// the given objects that do. Nothing when there is no leaf (CollectLeafNode) at all. Operators may take
    /// objects off the list or put others in their places meanwhile, and delete them: these are not touched
    /// any more, and new ones are not updated. They may delete members of the groups as well. In a list of
    /// more than 1024 objects, one in the middle that gives its place to another and lives on may be updated
    /// for some calls more. Throws std::bad_alloc when memory is refused.
    void UpdataViewDataNotify(std::list<CCadObject*>* objects);

    /// What the host tells its plug-ins, one for the process.
    TarvelEnvContext& GetTarvelEnvContext();
    /// Copies the host's values over those of the process. Throws std::bad_alloc when memory is refused; the
    /// process's text then stays.
    void SetTarvelEnvContext(const TarvelEnvContext& context);

    /// Tells operators which drawing the objects stand in, so that they can look at an object's neighbours;
    /// null, as at first, when there is none. The drawing stays the host's, which sets null before it ends.
    void SetDrawing(const CCadGroup* drawing) { m_pDrawing = drawing; }
    /// What SetDrawing set last; null at first.
    const CCadGroup* GetDrawing() const { return m_pDrawing; }

    /// Whether technics texts are taken as data, off at first. On, a text is a run of `name = value`; a value
    /// is nil, true, false, a number, a text, a table constructor of values, the name of a value that the
    /// text has set before, or a minus before a number. There are no functions, no operators and no control
    /// flow. A text fails when it sets a name that holds a table to another table, which would be lost; when
    /// it is longer than a megabyte; when tables are nested deeper than 200 or one has more than 1024 keys
    /// beside its list 1, 2, 3, ...; and when it takes more than 50 ms of computing or 14 MB. Opens a fresh
    /// interpreter; false, with everything as it was, when memory is refused.
    bool SetDataOnly(bool dataOnly);
    /// What SetDataOnly set last; false at first.
    bool IsDataOnly() const { return m_bDataOnly; }

    /// Why the last LoadTechnicsPlugIn, LoadTechnics, SaveTechnics, AddTechnics, AddAllTechnics or
    /// KnowsTechnics failed; empty when it did not. A call that finds nothing to do (no object, an empty
    /// text) leaves it as it was.
    const std::string& GetLastErrorText() const { return m_strLastError; }

protected:
    /// Opens an interpreter. The manager becomes the process's when there is no other alive. Throws
    /// std::bad_alloc when memory for its lock is refused; without memory for the interpreter there is none.
    CTechnicsManager();

    /// Forgets the plug-ins' operators and unloads the plug-ins; operators that the host has registered stay.
    /// During a call of an operator, the plug-ins are unloaded after it. Throws std::bad_alloc when memory is
    /// refused to a copy of the manager that has loaded them; they then stay loaded.
    void FreeTechnicsPlugIn();
    /// Appends an operator unless one of its type is there. The manager does not own it. Throws
    /// std::bad_alloc when memory is refused.
    void RegisterTechnicsItem(CITechnicsOperator* newcomer);

    /// Opens a fresh interpreter and lets go of the one before, or keeps that and answers false when memory
    /// is refused.
    bool InitLuaEnv();
    /// Lets go of the interpreter; texts cannot be run until the next InitLuaEnv.
    void UnInitLuaEnv();

    /// Deletes the process's manager when the library is unloaded.
    class CAutoDestory {
    public:
        ~CAutoDestory();
    };
    /// Lives as long as the library, and deletes the process's manager when it ends.
    static CAutoDestory m_AutoDestory;

private:
    friend QEVCOMMON_API CTechnicsManager* GetTechnicsManager();
    class Request;
    class Walk;
    void UnloadFreed();
    bool HasOperatorsFor(CLuaAccess& cursor);

    static CTechnicsManager* m_pTechnicsManager;

    std::shared_ptr<TextInterpreter> m_pInterpreter;       // null when none is open
    std::unique_ptr<platform::RecursiveLock> m_csLock;     // guards the interpreter
    std::vector<CITechnicsOperator*> m_vecOperators;       // at most one for each type; the plug-ins' own
    std::vector<std::string> m_vecPlugInPaths;             // as the host gave them
    std::vector<HMODULE> m_vecPlugInModules;               // of the plug-ins with these paths
    void (*m_pfnSetCadTempDir)(char*) = nullptr;           // of the plug-in loaded last
    std::vector<CITechnicsOperator*> m_vecPlugInOperators; // those of all operators that plug-ins brought
    std::vector<HMODULE> m_vecFreedModules; // of plug-ins that were freed, until no walk may run in them
    int m_nWalks = 0;
    std::string m_strLastError;
    bool m_bDataOnly = false;
    const CCadGroup* m_pDrawing = nullptr; // the host's
};

/// The process's manager, created on first use and deleted when the library is unloaded. Null when memory is
/// refused.
QEVCOMMON_API CTechnicsManager* GetTechnicsManager();

} // namespace qev
