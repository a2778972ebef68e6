// Any bytes as a technics text. What is taken as data is what Lua makes of it, what is saved of it loads as
// it was, and what is not taken says why.
#include <cstring>

#include "input.h"
#include "technics/test_operator.h"

namespace {

using fuzz::Expect;

// A key or value in a text, whatever its bytes.
std::string Quoted(const std::string& bytes) {
    std::string text = "'";
    for (const char byte : bytes) {
        const std::string code = std::to_string(static_cast<unsigned char>(byte));
        text.append("\\").append(3 - code.size(), '0').append(code);
    }
    return text + "'";
}

// The table in which a cursor stands, with all that it holds as texts.
std::string Written(qev::CLuaAccess& cursor, int depth) {
    std::vector<qev::CLuaAccess::FieldInfo> fields;
    cursor.CollectFields(fields);
    std::string text = "{";
    for (const auto& [name, value] : fields) {
        text.append("[").append(Quoted(name)).append("]=");
        const bool isName = name.find_first_of(std::string_view("[\0", 2)) == std::string::npos;
        const bool isTable = value == "table" && isName && depth > 0 && cursor.Enter(name.c_str());
        text += (isTable ? Written(cursor, depth - 1) : Quoted(value)) + ",";
        if (isTable) cursor.Leave();
    }
    return text + "}";
}

// A manager with two operators that write down what they find, and leave technics that save it.
struct Manager : test::TestManager {
    explicit Manager(bool isData) {
        for (auto* each : {&lead, &joint}) {
            RegisterTechnicsItem(each);
            each->onAdd = [this](qev::CLuaAccess& cursor) {
                found = Written(cursor, 12);
                return true;
            };
            each->onCreate = [each](qev::CLuaAccess& cursor) {
                const std::string text = std::string(each->name) + "=" + Written(cursor, 12);
                return new test::Writing([text](std::ostream& out) { out << text; });
            };
        }
        SetDataOnly(isData);
        // nothing that reaches files or goes on without end
        if (!isData)
            Add("debug.sethook(function() error('too long') end, '', 5000) "
                "debug.getmetatable('').__index=nil\n"
                "string,table,os,io,package,require,dofile,loadfile,load,pcall,xpcall,coroutine,debug,print,"
                "collectgarbage=nil");
    }
    // What is saved of an object that was loaded with a text.
    std::string SavedOf(const std::string& text) {
        qev::CCadGroup object;
        object.SetTechnicsString(text.c_str());
        LoadTechnics(&object);
        const bool isEmpty = object.GetTechnicsList().empty();
        SaveTechnics(&object);
        Expect(GetLastErrorText().empty(), "what was written in Lua can be read");
        return isEmpty ? "" : object.GetTechnicsString().GetString();
    }

    test::TestOperator lead{1, "Lead"}, joint{2, "Joint"};
    std::string found;
};

void Check(const std::string& text) {
    Manager asData(true), asLua(false);
    const bool isData = asData.Add(text);
    Expect(asData.KnowsTechnics(text) || text.empty() || !asData.GetLastErrorText().empty(),
           "what is refused says why");
    const bool mayGrow =
        text.find("..") != std::string::npos; // which the end after some steps does not bound
    const bool isLua = (isData || !mayGrow) && asLua.Add(text);
    if (!isData) return;
    Expect(isLua && asLua.found == asData.found, "data is what Lua makes of it");
    const std::string saved = asData.SavedOf(text);
    Expect(asData.SavedOf(saved) == saved, "what is saved loads as it was");
    Expect(Manager(false).SavedOf(saved) == saved, "in Lua too");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    try {
        Check(std::string(reinterpret_cast<const char*>(data), size).c_str());
    } catch (char*) { // the cursor's text: an operator's name holds something else than a table
    }
    return 0;
}
