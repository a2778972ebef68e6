/// \file
/// The process's Lua interpreter.
#pragma once

#include <memory>
#include <string>

#include <qev/export.h>

struct lua_State;

namespace qev {

class CLuaAccess;

/// What every script engine has: the name of its language.
class QEVCOMMON_API CScriptEngine {
public:
    /// Takes any name, which is copied. Throws std::bad_alloc when memory is refused.
    explicit CScriptEngine(const std::string& language);
    /// Copies the name. Throws std::bad_alloc when memory is refused.
    CScriptEngine(const CScriptEngine&) = default;
    /// Copies the name. Throws std::bad_alloc when memory is refused; the name stays then.
    CScriptEngine& operator=(const CScriptEngine&) = default;
    virtual ~CScriptEngine();

    /// The name as it was given last; a CLuaScriptEngine starts with "lua". The reference lasts as long as
    /// the engine.
    const std::string& GetLanguage() const { return m_strLanguage; }
    /// Changes the name and nothing else. Throws std::bad_alloc when memory is refused; the name stays then.
    void SetLanguage(const std::string& language) { m_strLanguage = language; }

private:
    std::string m_strLanguage;
};

/// A Lua interpreter with the standard libraries, and a cursor over it. The process has one, made when the
/// library is loaded and deleted when it is unloaded; a program may make more. One thread at a time uses it.
///
/// A copy works on the same interpreter, which is closed when the last of them is gone or has let go of it.
class QEVCOMMON_API CLuaScriptEngine : public CScriptEngine {
public:
    /// The process's engine, which stays the library's; null when it could not be made.
    static CLuaScriptEngine* GetLuaScript();

    /// Opens an interpreter. When memory is refused there is none, and GetLuaState answers null.
    CLuaScriptEngine();
    /// Shares the other's interpreter and copies its name. Throws std::bad_alloc when memory is refused.
    CLuaScriptEngine(const CLuaScriptEngine&) = default;
    /// Lets go of its interpreter, shares the other's and copies its name. Throws std::bad_alloc when memory
    /// is refused; nothing has changed then.
    CLuaScriptEngine& operator=(const CLuaScriptEngine&) = default;
    ~CLuaScriptEngine() override;

    /// Runs a file. 0, with all results on the stack, or 1, with Lua's message on the stack, as for null. The
    /// caller takes them off, for instance through a cursor that was made before. 1 without an interpreter.
    int DoFile(const char* path);
    /// Runs a text. 0, with all results on the stack, or 1, with Lua's message on the stack, as for null. The
    /// caller takes them off, for instance through a cursor that was made before. 1 without an interpreter.
    int DoString(const char* text);
    /// Prints the stack to the standard output, from its top down, for finding errors.
    void PrintLuaStack();

    /// The interpreter's state, which stays the engine's; null when none is open.
    lua_State* GetLuaState() { return m_pLuaState.get(); }
    /// The engine's own cursor over it, which stays the engine's; null when no interpreter is open.
    CLuaAccess* GetLuaAccess() { return m_pLuaAccess.get(); }

protected:
    /// Calls the virtual InitLuaEnv and nothing else, so that a derived engine opens what it needs.
    void initialize();
    /// Opens a fresh interpreter and its cursor and lets go of the one before, or keeps that and answers
    /// false when memory is refused.
    virtual bool InitLuaEnv();
    /// Lets go of the cursor and the interpreter.
    virtual void UnInitLuaEnv();

private:
    struct AutoRelease {
        ~AutoRelease();
    };

    std::shared_ptr<lua_State> m_pLuaState;
    std::shared_ptr<CLuaAccess> m_pLuaAccess; ///< keeps the interpreter open

    static CLuaScriptEngine* ms_pLuaScriptEngine;
    static AutoRelease ms_Auto;
};

} // namespace qev
