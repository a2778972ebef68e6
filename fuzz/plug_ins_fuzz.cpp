// Plug-ins that are loaded, freed and asked in any order, also from within operators, beside operators of the
// host's: the manager knows of each type the one that came first.
#include "input.h"
#include "technics/test_operator.h"

namespace {

using fuzz::Expect, fuzz::Input;

struct Run {
    Input& in;
    test::TestManager manager;
    std::list<test::TestOperator> own;
    std::vector<const qev::CITechnicsOperator*> known; // of these, what the manager should know
    int depth = 0;

    void Register() {
        const int type = in.Int(40, 55);
        const auto isOfType = [&](auto& each) { return each.type == type; };
        const bool isFirst = std::none_of(own.begin(), own.end(), isOfType);
        test::TestOperator& newcomer = own.emplace_back(type, "Own");
        newcomer.onNotify = [this](qev::CCadObject*) { Within(); };
        newcomer.onAdd = [this](qev::CLuaAccess&) { return Within(), true; };
        if (isFirst) known.push_back(&newcomer);
        manager.RegisterTechnicsItem(&newcomer);
    }
    void Within() {
        if (++depth < 4 && !in.IsEmpty()) Step();
        --depth;
    }
    void Step() {
        qev::CCadLine line({0, 0}, {1, 0});
        line.SetTechnicsString("T={leadin={},microjoint={},Own={}}");
        test::Objects objects{&line}, out;
        const int kind = in.Int(0, 8);
        if (kind == 0) Register();
        if (kind == 1) manager.LoadTechnicsPlugIn(in.Coin() ? LEADIN : MICROJOINT);
        if (kind == 2) manager.FreeTechnicsPlugIn();
        if (kind == 3) manager.LoadTechnicsPlugIn("nothing" + std::string(in.Int(0, 400), 'x'));
        if (kind == 4) manager.Add("T={Own={}}");
        if (kind == 5) manager.LoadTechnics(&line), manager.SaveTechnics(&line);
        if (kind == 6) manager.RemoveTechnics(&objects, in.Int(0, 60), &out, nullptr, manager.message);
        if (kind == 7) manager.SingleMudifyNotify(&line, &line, {0}, 1);
        if (kind == 8) line.AddTechnics(new qev::CTechnics), manager.UpdataViewDataNotify(&objects);
    }
    void ExpectKnown() {
        std::vector<const qev::CITechnicsOperator*> found;
        for (auto* each : *manager.GetTehcnisItemVector()) {
            Expect(manager.GetTehchnicsOperator(each->GetTechnicsType()) == each, "found by its type");
            if (dynamic_cast<const test::TestOperator*>(each)) found.push_back(each);
        }
        Expect(found == known, "of each type the first, in the order of registration");
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    Run run{in, {}, {}, {}};
    for (int steps = 0; steps < 40 && !in.IsEmpty(); ++steps) {
        run.depth = 0;
        try {
            run.Step();
        } catch (const char*) { // a text of the bridge
        }
        run.ExpectKnown();
    }
    run.manager.FreeTechnicsPlugIn();
    return 0;
}
