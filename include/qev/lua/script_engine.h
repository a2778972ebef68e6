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
    explicit CScriptEngine(const std::string& language);
    CScriptEngine(const CScriptEngine&) = default;
    CScriptEngine& operator=(const CScriptEngine&) = default;
    virtual ~CScriptEngine();

    const std::string& GetLanguage() const { return m_strLanguage; }
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

    CLuaScriptEngine();
    CLuaScriptEngine(const CLuaScriptEngine&) = default;
    CLuaScriptEngine& operator=(const CLuaScriptEngine&) = default;
    ~CLuaScriptEngine() override;

    /// Runs a file or a text. 0, with all results on the stack, or 1, with Lua's message on the stack. The
    /// caller takes them off, for instance through a cursor that was made before. 1 without an interpreter.
    int DoFile(const char* path);
    int DoString(const char* text);
    /// Prints the stack to the standard output, from its top down, for finding errors.
    void PrintLuaStack();

    /// Null when no interpreter is open; both belong to the engine.
    lua_State* GetLuaState() { return m_pLuaState.get(); }
    CLuaAccess* GetLuaAccess() { return m_pLuaAccess.get(); }

protected:
    /// Calls InitLuaEnv.
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
