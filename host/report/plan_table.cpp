#include "plan_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>

#include "print.h"

namespace host {
namespace {

// A time as people say it: 42.5 s, 3 min 7 s, 2 h 5 min.
std::string Duration(double seconds) {
    std::array<char, 64> text{};
    const long whole = std::lround(seconds);
    if (seconds < 59.95) // which is shown as 60.0
        std::snprintf(text.data(), text.size(), "%.1f s", seconds);
    else if (whole < 3600)
        std::snprintf(text.data(), text.size(), "%ld min %ld s", whole / 60, whole % 60);
    else
        std::snprintf(text.data(), text.size(), "%ld h %ld min", whole / 3600, whole % 3600 / 60);
    return text.data();
}

} // namespace

void PrintPlan(std::ostream& out, const CuttingPlan& plan, int rows) {
    const std::string unit = UnitName();
    const int digits = UnitDigits();
    const int count = static_cast<int>(plan.cuts.size());
    Print(out, "%6s %7s %14s %14s %8s %10s\n", "cut", "object", ("rapid " + unit).c_str(),
          ("cut " + unit).c_str(), "pierces", "time s");
    for (int i = 0; i < std::min(rows, count); ++i) {
        const Cut& cut = plan.cuts[i];
        Print(out, "%6d %7d %14.*f %14.*f %8d %10.2f\n", cut.number, cut.object, digits,
              ShownLength(cut.rapid), digits, ShownLength(cut.length), cut.pierces, cut.seconds);
    }
    if (rows < count) Print(out, "        ... and %d more\n", count - rows);
    Print(out, "%d cuts: %.*f %s cut, %.*f %s rapid, %d pierces, about %s; %d objects are not cut\n", count,
          digits, ShownLength(plan.length), unit.c_str(), digits, ShownLength(plan.rapid), unit.c_str(),
          plan.pierces, Duration(plan.seconds).c_str(), plan.uncut);
}

} // namespace host
