/// \file
/// A cursor over the tables of one Lua 5.2 state: read, write, and call functions.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <qev/export.h>

struct lua_State;

namespace qev {

class LuaCall;
class LuaFields;
class LuaPath;
class LuaTexts;

/// Reads and writes nested tables by key and calls functions with typed arguments. The current table is the
/// value on top of the Lua stack: EnterGlobal steps into a global one, Enter from there into those below.
///
/// A missing key, a null name, and for Read a value of another type give false; to enter what is no table is
/// a fault. A fault of the data throws its text as `char*`: the keys entered, each followed by a point, the
/// key, " = " and the value where one is to blame, a blank and the message, partly in Chinese in code page
/// 936, cut at 255 bytes. The text thrown belongs to the thread and stays readable until the next one is
/// thrown. Errors of Lua itself (a metatable's function, refused memory, a full stack) are thrown the same
/// way. After a throw the stack is as it was at the throw, with the value at fault still on it; the
/// destructor cuts it back.
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

    /// What CollectFields tells of a field.
    struct FieldInfo {
        std::string name;  ///< a text that is a key, or an index in brackets: "Speed", "[3]"
        std::string value; ///< a text, a number in Lua's own format, "true", "false", else a type: "table"
    };

    /// Works from the value on top of the stack, whose height it remembers. L is never null.
    explicit CLuaAccess(lua_State* L);
    /// Works on the state and stack of the other cursor, and restores the height that the other remembers.
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
    /// Steps into the table under an index, counted as the script counts; creates it when it is missing and
    /// m_bAutoCreate is set. False when there is none, or when the value on top is no table. Whatever it
    /// answers, it pushes one value and opens one level, so that each Enter needs its Leave. Throws when 16
    /// levels are open (nothing is opened then) and when the index holds something else than a table (the
    /// level is open, nothing is pushed).
    bool Enter(int index);
    /// Steps into the global table of a name, whatever lies on the stack; creates it when it is missing and
    /// m_bAutoCreate is set. False when there is none, and for a null name. Whatever it answers, it pushes
    /// one value and opens one level, so that it needs its Leave. Throws when 16 levels are open (nothing is
    /// opened then) and when the global is something else than a table (the level is open, nothing is
    /// pushed).
    bool EnterGlobal(const char* name);
    /// Closes the innermost level and pops one value, if the stack holds one. A Leave without an Enter pops
    /// too, and every later Enter throws.
    void Leave();

    /// Replaces a list by the fields that the table on top itself holds under texts and numbers, sorted by
    /// name; those under other keys are left out. Empty without a table on top. Throws what Lua raises, and
    /// std::bad_alloc when memory is refused.
    void CollectFields(std::vector<FieldInfo>& fields);

    /// Reads a boolean under a name. False, and the value as it was, for a missing name, for a number, text
    /// or other value that only counts as true, and without a table on top.
    bool Read(bool& value, const char* name);
    /// Reads a boolean under an index. False, and the value as it was, for a missing index, for a number,
    /// text or other value that only counts as true, and without a table on top.
    bool Read(bool& value, int index);
    /// Reads a number, or a text that Lua takes for one, under a name. One outside [min, max] is stored and
    /// the error thrown. A NaN counts as inside, and a bound that is NaN bounds nothing. False, and the value
    /// as it was, for a missing name, another type and without a table on top.
    bool Read(double& value, const char* name, double min, double max);
    /// Reads a number, or a text that Lua takes for one, under an index. One outside [min, max] is stored and
    /// the error thrown. A NaN counts as inside, and a bound that is NaN bounds nothing. False, and the value
    /// as it was, for a missing index, another type and without a table on top.
    bool Read(double& value, int index, double min, double max);
    /// Reads a number under a name and cuts it towards zero. [min, max] applies before the cut, so that -0.5
    /// is below 0; outside, the error is thrown and nothing stored. A number beyond the range of int gives
    /// the nearest int, a NaN 0. False, and the value as it was, for a missing name, another type and without
    /// a table on top.
    bool Read(int& value, const char* name, double min, double max);
    /// Reads a number under an index and cuts it towards zero. A number beyond the range of int gives the
    /// nearest int, a NaN 0. For an infinite number the error of the bounds is thrown and nothing stored.
    /// False, and the value as it was, for a missing index, another type and without a table on top.
    bool Read(int& value, int index);
    /// Reads a text under a name and stores the value of the first item that is called so. Throws when no
    /// item is, and always with null items. False, and the value as it was, for a missing name, a value that
    /// is neither text nor number, and without a table on top.
    bool Read(double& value, const char* name, const EnumItem* items);
    /// Reads a text under a name and stores the value of the first item that is called so, cut towards zero
    /// and to the range of int. Throws when no item is, and always with null items. False, and the value as
    /// it was, for a missing name, a value that is neither text nor number, and without a table on top.
    bool Read(int& value, const char* name, const EnumItem* items);
    /// Reads a text or number under a name into a buffer of `size` bytes, with a final zero. A longer text is
    /// cut and the error thrown. False, and the buffer as it was, for a null buffer, a size of 0, a missing
    /// name, another type and without a table on top.
    bool Read(char* buffer, unsigned long long size, const char* name);
    /// Reads a text or number under an index into a buffer of `size` bytes, with a final zero. A longer text
    /// is cut and the error thrown. False, and the buffer as it was, for a null buffer, a size of 0, a
    /// missing index, another type and without a table on top.
    bool Read(char* buffer, unsigned long long size, int index);
    /// Reads the address of a full or light userdata under a name; it belongs to Lua or to whoever wrote it.
    /// False, and the pointer as it was, for a null `pointer`, a missing name, another type and without a
    /// table on top.
    bool Read(void** pointer, const char* name);

    /// Writes a boolean under a name. False, and nothing is written, without a table on top, for a null name,
    /// and for a name without a value unless m_bAutoCreate is set.
    bool Write(bool value, const char* name);
    /// Writes a boolean under an index. False, and nothing is written, without a table on top, and for an
    /// index without a value unless m_bAutoCreate is set.
    bool Write(bool value, int index);
    /// Writes a number under a name; a NaN removes what is there. False, and nothing is written, without a
    /// table on top, for a null name, and for a name without a value unless m_bAutoCreate is set.
    bool Write(double value, const char* name);
    /// Writes a number under an index; a NaN removes what is there. False, and nothing is written, without a
    /// table on top, and for an index without a value unless m_bAutoCreate is set.
    bool Write(double value, int index);
    /// Writes an int as a number under a name. False, and nothing is written, without a table on top, for a
    /// null name, and for a name without a value unless m_bAutoCreate is set.
    bool Write(int value, const char* name);
    /// Writes an int as a number under an index. False, and nothing is written, without a table on top, and
    /// for an index without a value unless m_bAutoCreate is set.
    bool Write(int value, int index);
    /// Writes the name of the first item with exactly this value under a name. Throws when no item has it,
    /// and always with null items. False, and nothing is written, without a table on top, for a null name,
    /// and for a name without a value unless m_bAutoCreate is set.
    bool Write(double value, const char* name, const EnumItem* items);
    /// Writes a copy of a text under a name. False, and nothing is written, for a null text, without a table
    /// on top, for a null name, and for a name without a value unless m_bAutoCreate is set.
    bool Write(const char* text, const char* name);
    /// Writes a copy of a text under an index. False, and nothing is written, for a null text, without a
    /// table on top, and for an index without a value unless m_bAutoCreate is set.
    bool Write(const char* text, int index);
    /// Writes an address, null too, as a light userdata under a name; what it points to stays the caller's.
    /// False, and nothing is written, without a table on top, for a null name, and for a name without a value
    /// unless m_bAutoCreate is set.
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
    /// Adds a boolean to the arguments of the call; nothing is pushed before the first successful StartCall.
    /// Always true.
    bool Push(bool value);
    /// Adds an int to the arguments of the call, as a number; nothing is pushed before the first successful
    /// StartCall. Always true.
    bool Push(int value);
    /// Adds a number, NaN too, to the arguments of the call; nothing is pushed before the first successful
    /// StartCall. Always true.
    bool Push(double value);
    /// Adds a copy of a text, or nil for null, to the arguments of the call; nothing is pushed before the
    /// first successful StartCall. Always true.
    bool Push(const char* text);
    /// Adds a new table, to be filled with Write, to the arguments or, inside a table argument, to that table
    /// under a number: how many values the call has pushed at that level so far, counting those of earlier
    /// tables at that level. False before the first successful StartCall. Throws when it would be the 16th
    /// level of tables, and with 16 levels entered.
    bool PushTable();
    /// Adds a new table, to be filled with Write, to a table argument under a name; among the arguments
    /// themselves the name means nothing. False for a null name and before the first successful StartCall.
    /// Throws when it would be the 16th level of tables, and with 16 levels entered.
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

    /// Throws, as `char*`, the entered keys each with a point behind it, the key, " = " and the value, a
    /// blank and the message, cut at 255 bytes. A null value leaves out " = "; a null key or message counts
    /// as empty. The text belongs to the thread and stays readable until the next one is thrown.
    [[noreturn]] void ErrorHandle(const char* key, const char* value, const char* message);

    /// Whether Enter creates missing tables and Write adds keys. Starts false; true from StartCall to
    /// EndCall.
    bool m_bAutoCreate = false;

private:
    friend class LuaCall;
    friend class LuaFields;
    friend class LuaPath;
    struct PathName;

    // A result of a call, by its place on the stack. Throws when it is of another type.
    bool Pop(bool& value, int index);
    bool Pop(int& value, int index);
    bool Pop(double& value, int index);
    bool Pop(const char*& text, int index);

    static constexpr int kMaxDepth = 16;
    static constexpr int kErrorSize = 256;

    lua_State* m_pLuaState;
    int m_nBaseTop;                                // height of the stack that the destructor restores
    std::shared_ptr<PathName> m_szPath[kMaxDepth]; // open levels first; those behind wait to be used again
    int m_nDepth = 0;                              // open levels; -1 after a Leave too many
    char m_szError[kErrorSize] = {};
    int m_nPushCount[kMaxDepth] = {}; // values pushed at each level of the call, the arguments at level 0
    int m_nResultCount = 0;
    int m_nPushLevel = 0;            // tables open inside the arguments of the call
    bool m_bCallReady = false;       // from the first StartCall that found its function on
    bool m_bSavedAutoCreate = false; // what EndCall sets m_bAutoCreate back to
    LuaTexts* m_pTexts = nullptr;    // the state's own; null until a text has been needed
};

} // namespace qev
