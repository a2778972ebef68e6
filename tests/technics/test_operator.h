/// \file
/// An operator that does what a test says, and a manager whose inside is open.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <qev/lua.h>
#include <qev/technics.h>

namespace test {

using Objects = std::list<qev::CCadObject*>;

struct TestOperator final : qev::CITechnicsOperator {
    TestOperator(int itsType, const char* itsName) : type(itsType), name(itsName) {}
    int GetTechnicsType() override { return type; }
    const char* GetTechnicsName() override { return name; }
    bool AddTechnicsByLua(const Objects*, qev::CLuaAccess* cursor, Objects*, Objects*,
                          std::string& message) override {
        message = name;
        return onAdd(*cursor);
    }
    qev::CTechnics* CreateTechnics(qev::CCadObject*, qev::CLuaAccess* cursor) override {
        return onCreate(*cursor);
    }
    bool RemoveTechnicsOf(const Objects*, int, Objects*, Objects*, std::string&) override {
        onNotify(nullptr);
        return true;
    }
    void SingleModify(const qev::CCadObject*, qev::CCadObject*, const std::vector<int>&, int) override {
        onNotify(nullptr);
    }
    void MultipleModify(const Objects*, Objects*, int) override { onNotify(nullptr); }
    void UpdateViewData(qev::CCadObject* object) override { onNotify(object); }
    void Reserved6() override {}
    void Reserved12() override {}
    void Reserved13() override {}
    void Reserved14() override {}

    std::function<bool(qev::CLuaAccess&)> onAdd = [](qev::CLuaAccess&) { return true; };
    std::function<qev::CTechnics*(qev::CLuaAccess&)> onCreate = [](qev::CLuaAccess&) { return nullptr; };
    std::function<void(qev::CCadObject*)> onNotify = [](qev::CCadObject*) {};
    int type;
    const char* name;
};

/// Writes what a test says.
struct Writing : qev::CTechnics {
    explicit Writing(std::function<void(std::ostream&)> itsWrite) : write(std::move(itsWrite)) {
        m_nType = 7;
    }
    void Write(std::ostream& out) const override { write(out); }
    std::function<void(std::ostream&)> write;
};

struct TestManager : qev::CTechnicsManager {
    using CTechnicsManager::FreeTechnicsPlugIn;
    using CTechnicsManager::RegisterTechnicsItem;
    using CTechnicsManager::UnInitLuaEnv;

    /// Adds technics to an object of no kind.
    bool Add(const std::string& text, const std::string& params = "") {
        qev::CCadGroup object;
        const Objects objects = {&object};
        return AddTechnics(&objects, text, params, nullptr, nullptr, message);
    }

    std::string message;
};

} // namespace test
