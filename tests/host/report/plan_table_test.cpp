#include "host/fixture.h"
#include "host/report/plan_table.h"

using namespace test;

namespace {

TEST(PlanTable, TimesAsPeopleSayThem) {
    for (const auto& [seconds, words] : Table<double, const char*>{
             {0.04, "about 0.0 s;"},
             {59.94, "about 59.9 s;"},
             {59.96, "about 1 min 0 s;"},
             {187, "about 3 min 7 s;"},
             {3599.4, "about 59 min 59 s;"},
             {3599.6, "about 1 h 0 min;"},
             {7530, "about 2 h 5 min;"},
         }) {
        host::CuttingPlan plan;
        plan.seconds = seconds;
        std::ostringstream out;
        host::PrintPlan(out, plan, 40);
        ExpectContains(out.str(), {words});
    }
}

} // namespace
