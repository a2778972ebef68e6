/// \file
/// A cursor over the tables of one Lua 5.2 state: read, write, and call functions.
#pragma once

#include <memory>

#include <qev/export.h>

struct lua_State;

namespace qev {

class CursorScope;
class LuaFields;
class LuaTexts;

/// Reads and writes nested tables by key and calls functions with typed arguments. The current table is the
/// value on top of the Lua stack: push the root (say, with lua_getglobal), then Enter from there.
///
/// A missing key, a value of another type and a null name give false. A fault of the data throws its text as
/// `char*`: the keys entered, each followed by a point, the key, " = " and the value where one is to blame,
/// a blank and the message, partly in Chinese in code page 936, cut at 255 bytes. The text thrown belongs to
/// the thread and stays readable until the next one is thrown. Errors of Lua itself (a metatable's function,
/// refused memory, a full stack) are thrown the same way. After a throw the stack is as it was at the throw,
/// with the value at fault still on it; the destructor cuts it back.
///
/// The state belongs to the caller and must outlive the cursor; one thread at a time uses the two. Copies
/// work on the same state and stack, and share the keys entered so far until the last one has left them.
class QEVCOMMON_API CLuaAccess {
public:
    /// What a text in a script stands for. An array of them ends with a null name.
    struct EnumItem {
        const char* name; ///< compared exactly
        double value;     ///< what Read stores for the name, compared exactly by Write
    };

    /// Works from the value on top of the stack, whose height it remembers. L is never null.
    explicit CLuaAccess(lua_State* L);
    /// Works on the same state and stack, and restores the same height.
    CLuaAccess(const CLuaAccess&) = default;
    /// Moves to the other's state and stack; the stack that it worked on is not restored.
    CLuaAccess& operator=(const CLuaAccess&) = default;
    /// Brings the stack back to the height that it had at construction.
    virtual ~CLuaAccess();

    /// Steps into the table under a key; creates it when it is missing and m_bAutoCreate is set. False when
    /// there is none, or when the value on top is no table. Whatever it answers, it pushes one value and
    /// opens one level, so that each Enter needs its Leave. Throws when 16 levels are open (nothing is opened
    /// then) and when the key holds something else than a table (the level is open, nothing is pushed).
    bool Enter(const char* name);
    /// The same for the table under an index.
    bool Enter(int index);
    /// Closes the innermost level and pops one value, if the stack holds one. A Leave without an Enter pops
    /// too, and every later Enter throws.
    void Leave();

    // Reading. The output stays as it was unless stated otherwise.

    /// A boolean, and nothing that only counts as one.
    bool Read(bool& value, const char* name);
    /// The same by index.
    bool Read(bool& value, int index);
    /// A number or a numeric text. Outside [min, max] it is stored and the error thrown; a NaN never is
    /// outside, and a NaN as a bound never fires.
    bool Read(double& value, const char* name, double min, double max);
    /// The same by index.
    bool Read(double& value, int index, double min, double max);
    /// The bounds apply to the number as it stands (-0.5 is below 0), which is then cut towards zero. Beyond
    /// the range of int it gives the nearest int, a NaN 0. Outside the bounds the error is thrown and nothing
    /// stored.
    bool Read(int& value, const char* name, double min, double max);
    /// The same by index, for any finite number and NaN; infinite ones are outside the bounds.
    bool Read(int& value, int index);
    /// The value of the first item with the name that the script wrote. An unknown name throws, and with null
    /// items every name is one.
    bool Read(double& value, const char* name, const EnumItem* items);
    /// The same, the item's value cut towards zero.
    bool Read(int& value, const char* name, const EnumItem* items);
    /// A text or number into a buffer of `size` bytes, with its final zero. A longer text is cut and the
    /// error thrown. A null buffer and a size of 0 give false.
    bool Read(char* buffer, unsigned long long size, const char* name);
    /// The same by index.
    bool Read(char* buffer, unsigned long long size, int index);
    /// The address of a full or light userdata, which belongs to Lua or to whoever wrote it.
    /// A null pointer gives false.
    bool Read(void** pointer, const char* name);

    // Writing. Unless m_bAutoCreate is set, only a key that holds a value is written, else the answer is
    // false.

    /// A boolean under a name. False without a table on top and for a null name; so everywhere below.
    bool Write(bool value, const char* name);
    /// The same by index.
    bool Write(bool value, int index);
    /// A NaN removes the key.
    bool Write(double value, const char* name);
    /// The same by index.
    bool Write(double value, int index);
    /// As a number.
    bool Write(int value, const char* name);
    /// The same by index.
    bool Write(int value, int index);
    /// The name of the first item with exactly this value. A value without a name throws.
    bool Write(double value, const char* name, const EnumItem* items);
    /// Copies the text; a null text gives false.
    bool Write(const char* text, const char* name);
    /// The same by index.
    bool Write(const char* text, int index);
    /// As a light userdata, null too; what it points to stays the caller's.
    bool Write(void* pointer, const char* name);

    // Calling step by step: StartCall, the arguments, EndCall, then the results lie on the stack.

    /// Looks a function up, in a global table or, when `table` is null, among the globals, and puts it on the
    /// stack. m_bAutoCreate is set until EndCall, so that Write can fill table arguments. Before that it
    /// resumes the state, idly: a function on top of the stack is run, its results stay; a script that has
    /// yielded goes on; whatever a refused resume leaves is dropped. Throws when `func` is null, `table`
    /// names no table or there is no such function. A negative count keeps all results.
    bool StartCall(const char* table, const char* func, int resultCount);
    /// Calls with the arguments pushed so far. False when no StartCall has succeeded yet or the stack holds
    /// less than was pushed. An error in the function is thrown.
    bool EndCall();
    /// One more argument, a boolean; nothing before the first successful StartCall. Always true.
    bool Push(bool value);
    /// The same as a number.
    bool Push(int value);
    /// The same for any number, NaN too.
    bool Push(double value);
    /// The same for a text, which is copied; null is nil.
    bool Push(const char* text);
    /// A new table: one more argument or, inside a table argument, its member under a number: how many the
    /// call has pushed at that level so far, in the tables before it too. Fill it with Write. False before
    /// the first successful StartCall. Throws at the 16th level, or with 16 levels entered.
    bool PushTable();
    /// The same, as a member under a name; an argument has none, and drops it. Null gives false.
    bool PushTable(const char* name);
    /// Ends the innermost table argument. False when none is open, or when the stack no longer holds it.
    /// True, and nothing is done, before the first successful StartCall.
    bool PushTableLeave();

    /// Calls in one step. The format holds a letter for each argument, ">", and a letter for each result; the
    /// values and the pointers to the results follow. Without ">" there are neither arguments nor results.
    /// b: int, non-zero is true / bool*. i: int / int*. d: double / double*. s: const char* / char**, which
    /// receives a copy to be released with free(). S: only as a result, char** to the buffer and its int
    /// size: a text of up to that many bytes, zeros behind it, so that one of exactly that size has no final
    /// zero. A result of another type, an unknown letter or a null pointer for a result throws.
    bool CallLuaFunc(const char* table, const char* func, const char* format, ...);

    /// Composes an error text (see above) and throws it. A null value leaves out " = ".
    [[noreturn]] void ErrorHandle(const char* key, const char* value, const char* message);

    /// Whether Enter creates missing tables and Write adds keys. Starts false.
    bool m_bAutoCreate = false;

private:
    friend class CursorScope;
    friend class LuaFields;
    struct Arguments;
    struct PathName;

    template <class Key>
    bool EnterKey(Key key, const char* shown);
    template <class Pusher>
    bool PushWith(Pusher push);
    template <class T>
    void PopInto(T* value, int index);
    bool PushNewTable(const char* name);
    void SetLevel(const char* name);
    void SetLevel(int index);
    PathName& OwnLevel();
    void ComposeError(const char* key, const char* value, const char* message);
    void ResumeIdly();
    void PushGlobal(const char* name);
    void PushArgument(char letter, Arguments& arguments);
    void PopResult(char letter, int index, Arguments& arguments);
    void PopCopy(char** copy, int index);
    void PopInBuffer(char** buffer, int size, int index);
    void MakeText(int index);
    bool Pop(bool& value, int index);
    bool Pop(int& value, int index);
    bool Pop(double& value, int index);
    bool Pop(const char*& text, int index);

    static constexpr int kMaxDepth = 16;
    static constexpr int kErrorSize = 256;

    lua_State* m_pLuaState;
    int m_nBaseTop;
    std::shared_ptr<PathName> m_szPath[kMaxDepth]; // open levels first; those behind wait to be used again
    int m_nDepth = 0;
    char m_szError[kErrorSize] = {};
    int m_nPushCount[kMaxDepth] = {};
    int m_nResultCount = 0;
    int m_nPushLevel = 0;
    bool m_bCallReady = false;
    bool m_bSavedAutoCreate = false;
    LuaTexts* m_pTexts = nullptr; // the state's own; null until a text has been needed
};

} // namespace qev
