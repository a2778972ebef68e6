/// \file
/// A technics operator that does next to nothing, so that what is measured is the manager.
#pragma once

#include <list>
#include <string>
#include <vector>

#include <qev/technics.h>

namespace qev::bench {

/// A list of objects as operators take it.
using Objects = std::list<CCadObject*>;

/// Reads one number of its table, "Lead".
class Lead final : public CITechnicsOperator {
public:
    int GetTechnicsType() override { return 1; }
    const char* GetTechnicsName() override { return "Lead"; }
    bool AddTechnicsByLua(const Objects*, CLuaAccess*, Objects*, Objects*, std::string&) override {
        return true;
    }
    CTechnics* CreateTechnics(CCadObject*, CLuaAccess* cursor) override {
        cursor->Read(speed, "Speed", 0, 3000);
        return nullptr;
    }
    bool RemoveTechnicsOf(const Objects*, int, Objects*, Objects*, std::string&) override { return false; }
    void Reserved6() override {}
    void SingleModify(const CCadObject*, CCadObject*, const std::vector<int>&, int) override {}
    void MultipleModify(const Objects*, Objects*, int) override {}
    void UpdateViewData(CCadObject*) override {}
    void Reserved12() override {}
    void Reserved13() override {}
    void Reserved14() override {}

    double speed = 0; ///< what it read last
};

/// A manager with this operator alone.
struct Manager : CTechnicsManager {
    Manager() { RegisterTechnicsItem(&lead); }
    Lead lead;
};

} // namespace qev::bench
