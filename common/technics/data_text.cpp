// A reader of data in Lua's notation, by recursive descent: it makes the tables at once, while it reads.
//
// To have Lua compile and run a text, and to bound what it does meanwhile, is no way to take a text as data.
// Whatever the language has must be thought of (a function runs on when its text has ended, the compiler
// looks every label up among all before it), and the compiler keeps all constants of a text in one table,
// whose keys a text can choose so that they collide. This reader knows nothing that could run. It is also
// faster, as there is no code in between.
//
// It answers what Lua answers for a text of these forms, to the least thing: a list in a constructor is
// stored by fifty items, so that `{1, [1] = 2}` holds 1. Only one thing is refused that Lua takes: a table
// under a name that holds one already, as two technics of one name, of which the first would be lost.
//
// Lua raises errors with a longjmp: no object with a destructor may live in here.

#include "data_text.h"

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace qev {
namespace {

constexpr int kListPart = 50;           // items that a constructor stores at a time
constexpr std::ptrdiff_t kGlance = 128; // bytes of a table that are looked at for its size
constexpr int kLongestNumber = 512;     // bytes; more than the longest decimal without an exponent has

constexpr std::string_view kReserved[] = {
    "and", "break", "do",  "else", "elseif", "end",    "false",  "for",  "function", "goto",  "if",
    "in",  "local", "nil", "not",  "or",     "repeat", "return", "then", "true",     "until", "while"};

bool IsReserved(std::string_view name) { // never empty
    return std::any_of(std::begin(kReserved), std::end(kReserved),
                       [&](std::string_view each) { return each[0] == name[0] && each == name; });
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsHexDigit(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
bool StartsName(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool IsLineEnd(char c) {
    return c == '\n' || c == '\r';
}
int HexValue(char c) {
    return IsDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10;
}

class Reader {
public:
    Reader(lua_State* state, std::string_view text, char* room, const TextLimits& limits)
        : L(state), m_szBegin(text.data()), m_szNext(m_szBegin), m_szEnd(m_szBegin + text.size()),
          m_szRoom(room), m_rLimits(limits) {}

    void Read();

private:
    // The character at a place behind the next one; a zero, which no text holds, behind the end.
    char Peek(std::ptrdiff_t ahead = 0) const { return m_szEnd - m_szNext > ahead ? m_szNext[ahead] : '\0'; }
    void SkipLineEnd();
    void SkipBlanks();
    bool Take(char wanted);
    void Expect(char wanted);
    std::string_view TakeName();
    bool TakeFieldName();

    void Value();
    void NamedValue();
    void Minus();
    void Number();
    void Text();
    char Escape();
    char DecimalEscape();
    char HexEscape();
    bool IsLongBracket() const;
    std::string_view LongBracket();
    void LongText();
    void NewTable();
    void Table();
    void Item(int table, int& pending, int& stored, int& keys);
    void CountKey(int table, int& keys);
    void Store(int table);
    void StoreList(int table, int& pending, int& stored);
    [[noreturn]] void Refuse(const char* why);

    lua_State* const L; // NOLINT(readability-identifier-naming): as Lua's own code names its state
    const char* const m_szBegin;
    const char* m_szNext;
    const char* const m_szEnd;
    char* const m_szRoom;
    const TextLimits& m_rLimits;
    const char* m_szChecked = m_szBegin; // where the clock was looked at last
    int m_nGlobals = 0;                  // place of the table of what the text sets
    int m_nDepth = 0;
};

void Reader::Refuse(const char* why) {
    int line = 1;
    for (const char* c = m_szBegin; c < m_szNext; ++c) line += *c == '\n';
    char shown[24] = {};
    std::memcpy(shown, m_szNext, std::min<std::size_t>(sizeof shown - 1, m_szEnd - m_szNext));
    luaL_error(L, "technics:%d: %s near '%s'", line, why, *shown ? shown : "<eof>");
    std::abort(); // is not reached: luaL_error never returns
}

// Two characters that end a line together count as one end.
void Reader::SkipLineEnd() {
    const char first = *m_szNext++;
    if (IsLineEnd(Peek()) && Peek() != first) ++m_szNext;
}

void Reader::SkipBlanks() {
    for (;;) {
        while (IsBlank(Peek())) ++m_szNext;
        if (Peek() != '-' || Peek(1) != '-') return;
        m_szNext += 2;
        if (IsLongBracket())
            LongBracket();
        else
            m_szNext = std::find_if(m_szNext, m_szEnd, IsLineEnd);
    }
}

bool Reader::Take(char wanted) {
    SkipBlanks();
    if (Peek() != wanted) return false;
    ++m_szNext;
    return true;
}

void Reader::Expect(char wanted) {
    char why[] = "' ' expected";
    why[1] = wanted;
    if (!Take(wanted)) Refuse(why);
}

// The name that comes next, a reserved word too; empty when none does.
std::string_view Reader::TakeName() {
    SkipBlanks();
    const char* const begin = m_szNext;
    if (StartsName(Peek()))
        while (StartsName(Peek()) || IsDigit(Peek())) ++m_szNext;
    return {begin, static_cast<std::size_t>(m_szNext - begin)};
}

// Pushes the name of a `name =` that comes next, and passes the `=`. False, where it was, when none does.
bool Reader::TakeFieldName() {
    const char* const before = m_szNext;
    const std::string_view name = TakeName();
    if (name.empty() || IsReserved(name) || !Take('=')) {
        m_szNext = before;
        return false;
    }
    lua_pushlstring(L, name.data(), name.size());
    return true;
}

void Reader::Read() {
    lua_newtable(L);
    m_nGlobals = lua_gettop(L);
    int keys = 0;
    for (;;) {
        while (Take(';')) {
        }
        if (m_szNext == m_szEnd) break;
        if (!TakeFieldName()) Refuse("'name = value' expected");
        CountKey(m_nGlobals, keys);
        Value();
        Store(m_nGlobals);
    }
    lua_getfield(L, m_nGlobals, "T");
}

// Pushes the value that comes next.
void Reader::Value() {
    if (++m_nDepth > TextLimits::kDeepest) Refuse("too many levels");
    SkipBlanks();
    if (m_szNext - m_szChecked >= TextLimits::kCheckEach) {
        m_rLimits.CheckTime(L);
        m_szChecked = m_szNext;
    }
    const char first = Peek();
    if (first == '{')
        Table();
    else if (first == '"' || first == '\'')
        Text();
    else if (IsLongBracket())
        LongText();
    else if (first == '-')
        Minus();
    else if (IsDigit(first) || (first == '.' && IsDigit(Peek(1))))
        Number();
    else
        NamedValue();
    --m_nDepth;
}

void Reader::NamedValue() {
    const char* const before = m_szNext;
    const std::string_view name = TakeName();
    if (name == "nil") {
        lua_pushnil(L);
    } else if (name == "true" || name == "false") {
        lua_pushboolean(L, name == "true");
    } else if (name.empty() || IsReserved(name)) {
        m_szNext = before;
        Refuse("a value expected");
    } else {
        lua_pushlstring(L, name.data(), name.size());
        lua_rawget(L, m_nGlobals);
    }
}

void Reader::Minus() {
    ++m_szNext;
    Value();
    if (lua_type(L, -1) != LUA_TNUMBER) Refuse("a number expected");
    const double number = lua_tonumber(L, -1);
    lua_pop(L, 1);
    lua_pushnumber(L, -number);
}

// Takes what looks like a number as Lua does, and has the C library read it, in whose locale the point may be
// another character.
void Reader::Number() {
    const char* const begin = m_szNext;
    const char exponent = *begin == '0' && (Peek(1) | 0x20) == 'x' ? 'p' : 'e';
    if (exponent == 'p') m_szNext += 2;
    for (;; ++m_szNext) {
        if ((Peek() | 0x20) == exponent) {
            ++m_szNext;
            if (Peek() == '+' || Peek() == '-') ++m_szNext;
        }
        if (!IsHexDigit(Peek()) && Peek() != '.') break;
    }
    const std::ptrdiff_t length = m_szNext - begin;
    if (length > kLongestNumber) Refuse("malformed number");
    // NOLINTNEXTLINE(concurrency-mt-unsafe): Lua's own reader asks for the point like this, number by number
    const char point = *std::localeconv()->decimal_point;
    *std::replace_copy(begin, m_szNext, m_szRoom, '.', point) = '\0';
    char* end = nullptr;
    const double number = std::strtod(m_szRoom, &end);
    if (end != m_szRoom + length) Refuse("malformed number");
    lua_pushnumber(L, number);
}

void Reader::Text() {
    const char quote = *m_szNext++;
    char* out = m_szRoom;
    while (Peek() != quote) {
        if (m_szNext == m_szEnd || IsLineEnd(Peek())) Refuse("unfinished text");
        if (Peek() == '\\' && Peek(1) == 'z') {
            m_szNext += 2;
            while (IsBlank(Peek())) ++m_szNext;
        } else {
            const char next = *m_szNext++;
            *out++ = next == '\\' ? Escape() : next;
        }
    }
    ++m_szNext;
    lua_pushlstring(L, m_szRoom, out - m_szRoom);
}

// The character that an escape stands for, whose backslash has been passed.
char Reader::Escape() {
    static constexpr char kLetters[] = "abfnrtv\\\"'", kMeanings[] = "\a\b\f\n\r\t\v\\\"'";
    if (IsDigit(Peek())) return DecimalEscape();
    if (IsLineEnd(Peek())) {
        SkipLineEnd();
        return '\n';
    }
    const char letter = Peek();
    const char* const found = letter ? std::strchr(kLetters, letter) : nullptr;
    if (!found && letter != 'x') Refuse("invalid escape sequence");
    ++m_szNext;
    return found ? kMeanings[found - kLetters] : HexEscape();
}

char Reader::DecimalEscape() {
    int code = 0;
    for (int i = 0; i < 3 && IsDigit(Peek()); ++i) code = 10 * code + (*m_szNext++ - '0');
    if (code > 255) Refuse("decimal escape too large");
    return static_cast<char>(code);
}

char Reader::HexEscape() {
    if (!IsHexDigit(Peek()) || !IsHexDigit(Peek(1))) Refuse("hexadecimal digit expected");
    const int code = 16 * HexValue(Peek()) + HexValue(Peek(1));
    m_szNext += 2;
    return static_cast<char>(code);
}

bool Reader::IsLongBracket() const {
    if (Peek() != '[') return false;
    std::ptrdiff_t ahead = 1;
    while (Peek(ahead) == '=') ++ahead;
    return Peek(ahead) == '[';
}

// Passes a long bracket and answers what is in it.
std::string_view Reader::LongBracket() {
    const char* const open = m_szNext++;
    m_szNext = std::find(m_szNext, m_szEnd, '[') + 1;
    const std::ptrdiff_t level = m_szNext - open; // characters of either bracket
    for (const char* begin = m_szNext;; ++m_szNext) {
        m_szNext = std::find(m_szNext, m_szEnd, ']');
        if (m_szNext == m_szEnd) Refuse("unfinished long text");
        std::ptrdiff_t ahead = 1;
        while (Peek(ahead) == '=') ++ahead;
        if (Peek(ahead) != ']' || ahead + 1 != level) {
            m_szNext += ahead - 1; // what is passed is looked at once
            continue;
        }
        const std::string_view inside(begin, m_szNext - begin);
        m_szNext += level;
        return inside;
    }
}

void Reader::LongText() {
    const std::string_view inside = LongBracket();
    const char* const behind = m_szNext;
    const char* const end = inside.data() + inside.size();
    m_szNext = inside.data();
    if (IsLineEnd(Peek())) SkipLineEnd();
    char* out = m_szRoom;
    while (m_szNext < end) {
        const bool isLineEnd = IsLineEnd(Peek());
        *out++ = isLineEnd ? '\n' : *m_szNext;
        isLineEnd ? SkipLineEnd() : void(++m_szNext);
    }
    m_szNext = behind;
    lua_pushlstring(L, m_szRoom, out - m_szRoom);
}

// Makes a table of the size that the next characters tell, up to a closing bracket if there is one: to let it
// grow field by field takes longer than to read the fields. Signs in texts and comments count as well; that
// makes the table larger, by no more than the characters that were looked at.
void Reader::NewTable() {
    int depth = 0, fields = 0, keys = 0;
    bool isInField = false;
    const char* const end = m_szNext + std::min(m_szEnd - m_szNext, kGlance);
    for (const char* c = m_szNext; c < end && depth >= 0; ++c) {
        depth += (*c == '{') - (*c == '}');
        if (depth != 0 || IsBlank(*c)) continue;
        const bool wasInField = isInField;
        isInField = *c != ',' && *c != ';';
        fields += isInField && !wasInField;
        keys += *c == '=';
    }
    lua_createtable(L, std::max(fields - keys, 0), keys);
}

void Reader::Table() {
    luaL_checkstack(L, kListPart + LUA_MINSTACK, nullptr);
    ++m_szNext;
    NewTable();
    const int table = lua_gettop(L);
    int pending = 0, stored = 0, keys = 0;
    while (!Take('}')) {
        Item(table, pending, stored, keys);
        if (Take(',') || Take(';')) continue;
        Expect('}');
        break;
    }
    StoreList(table, pending, stored);
}

void Reader::Item(int table, int& pending, int& stored, int& keys) {
    const bool hasName = TakeFieldName();
    if (!hasName && (IsLongBracket() || !Take('['))) {
        Value();
        if (++pending == kListPart) StoreList(table, pending, stored);
        return;
    }
    if (!hasName) {
        Value();
        Expect(']');
        Expect('=');
    }
    CountKey(table, keys);
    Value();
    Store(table);
}

// Counts the key on top, unless it continues the list of its table.
void Reader::CountKey(int table, int& keys) {
    const bool continues = lua_type(L, -1) == LUA_TNUMBER
                           && lua_tonumber(L, -1) == static_cast<double>(lua_rawlen(L, table) + 1);
    if (!continues && ++keys > TextLimits::kMostKeys) Refuse("too many keys in a table");
}

// Writes the value on top under the key below it.
void Reader::Store(int table) {
    if (lua_istable(L, -1) && lua_type(L, -2) == LUA_TSTRING) {
        lua_pushvalue(L, -2);
        lua_rawget(L, table);
        if (lua_istable(L, -1)) luaL_error(L, "technics: %s is there twice", lua_tostring(L, -3));
        lua_pop(L, 1);
    }
    lua_rawset(L, table);
}

// Stores the items on top of the stack as those that follow in the list.
void Reader::StoreList(int table, int& pending, int& stored) {
    for (int i = 1; i <= pending; ++i) { // upwards, so that the list grows at its end
        lua_pushvalue(L, table + i);
        lua_rawseti(L, table, stored + i);
    }
    lua_settop(L, table);
    stored += pending;
    pending = 0;
}

} // namespace

void ReadDataText(lua_State* L, std::string_view text, char* room, const TextLimits& limits) {
    Reader(L, text, room, limits).Read();
}

} // namespace qev
