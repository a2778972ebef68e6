// One source for all test plug-ins. NAME is the plug-in's, WAY a number: what is wrong with it.

#include <array>
#include <stdexcept>

#include <qev/technics.h>

#define JOIN_(a, b, c) a##b##c
#define JOIN(a, b, c) JOIN_(a, b, c)

// What the host has set last; also an address to tell whether the plug-in is loaded.
extern "C" QEV_EXPORT char* g_directory;
char* g_directory = nullptr;

namespace {

enum { kGood, kNoLoad, kNoSet, kNull, kNoName, kThrowsText, kThrowsItsOwn, kThrowsInType, kThrowsLater };

struct Fault : std::runtime_error { // its code goes with the plug-in
    using std::runtime_error::runtime_error;
};

struct Odd {
    ~Odd() { g_directory = nullptr; }
};

class Operator final : public qev::CITechnicsOperator {
public:
    using Objects = const std::list<qev::CCadObject*>*;
    using Out = std::list<qev::CCadObject*>*;

    explicit Operator(int type) : m_type(type) {}
    int GetTechnicsType() override { return WAY == kThrowsInType ? throw Odd() : m_type; }
    const char* GetTechnicsName() override { return WAY == kNoName && m_type == 22 ? nullptr : "Tiny"; }
    bool AddTechnicsByLua(Objects, qev::CLuaAccess*, Out, Out, std::string&) override { return Called(); }
    qev::CTechnics* CreateTechnics(qev::CCadObject*, qev::CLuaAccess*) override {
        return Called() ? new qev::CTechnics : nullptr;
    }
    bool RemoveTechnicsOf(Objects, int, Out, Out, std::string&) override { return Called(); }
    void Reserved6() override {}
    void SingleModify(const qev::CCadObject*, qev::CCadObject*, const std::vector<int>&, int) override {
        Called();
    }
    void MultipleModify(Objects, Out, int) override { Called(); }
    void UpdateViewData(qev::CCadObject*) override { Called(); }
    void Reserved12() override {}
    void Reserved13() override {}
    void Reserved14() override {}

private:
    static bool Called() { return WAY == kThrowsLater ? throw Fault("later") : true; }

    int m_type;
};

} // namespace

#if WAY != 2
extern "C" QEV_EXPORT void JOIN(Set_, NAME, _CadTempDir)(char* directory) {
    g_directory = directory;
}
#endif
#if WAY != 1
extern "C" QEV_EXPORT qev::CITechnicsOperator** JOIN(Load_, NAME, _Technics)() {
    static Operator first(21);
    static Operator second(22);
    static std::array<qev::CITechnicsOperator*, 4> all = {&first, &second, &first, nullptr};
    if (WAY == kThrowsText) throw "a text";
    if (WAY == kThrowsItsOwn) throw Fault("its own");
    return WAY == kNull ? nullptr : all.data();
}
#endif
