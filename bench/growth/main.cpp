// qev_growth TABLE.csv: how the exported functions' times grow from n to 10 n and 100 n, in a table on the
// standard output and in a file. A time is given by its unit: that of a call over n log2 n, that of a single
// question over log2 n, n of which make n log n. A function whose unit grows by more than its slack is
// marked, and the exit code is 1.
//
// Times are those of the process, the least of some repetitions, so that a busy machine moves them little.
// What would take longer than kTooLong at 100 n is not run there, and judged by its growth from n to 10 n.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <limits>
#include <memory>
#include <optional>

#include <malloc.h>

#include "subject.h"

namespace {

using namespace qev::bench;

constexpr std::array<int, 3> kSizes{1000, 10'000, 100'000};
// By how much a unit may grow. A walk through all of a large input leaves the caches, where each step takes
// up to twenty times as long if it does next to nothing else, as in a pick without an index; a question
// touches little. What is linear a question, or quadratic, grows sixtyfold.
constexpr double kSlackOfWhole = 12;
constexpr double kSlackOfQuestion = 5;
constexpr double kTooLong = 5e9;    // ns
constexpr double kLongEnough = 2e6; // ns, of one repetition, beside which the clock's own step is small
constexpr int kRepetitions = 3;

double ProcessTime() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

volatile double g_sink = 0; // so that no question is left out

// ns of one question.
double TimeOf(const Subject& subject, Input& input) {
    double best = std::numeric_limits<double>::infinity();
    g_sink = subject.ask(input, 0); // what is made on demand is made at the second question
    g_sink = subject.ask(input, 0);
    for (int repetition = 0; repetition < kRepetitions; ++repetition) {
        const double begin = ProcessTime();
        double elapsed = 0;
        int asked = 0;
        for (int goal = 1; elapsed < kLongEnough; goal *= 2) { // the clock is looked at now and then
            for (; asked < goal; ++asked) g_sink = subject.ask(input, asked % Input::kQuestions);
            elapsed = ProcessTime() - begin;
        }
        best = std::min(best, elapsed / asked);
    }
    return best;
}

// What a time is by n log n.
double Unit(const Subject& subject, int n, double ns) {
    const double log = std::log2(n);
    return subject.kind == Kind::kQuestion ? ns / log : ns / (n * log);
}

struct Growth {
    std::array<std::optional<double>, kSizes.size()> times; // ns
    double ofUnit = 1;                                      // from n to 100 n
};

Growth Measure(const Subject& subject, const std::array<std::unique_ptr<Input>, kSizes.size()>& inputs) {
    Growth growth;
    for (std::size_t i = 0; i < kSizes.size(); ++i) {
        if (i == 2 && *growth.times[1] * *growth.times[1] / *growth.times[0] > kTooLong) break;
        growth.times[i] = TimeOf(subject, *inputs[i]);
    }
    const double first = Unit(subject, kSizes[0], *growth.times[0]);
    if (growth.times[2])
        growth.ofUnit = Unit(subject, kSizes[2], *growth.times[2]) / first;
    else
        growth.ofUnit = std::pow(Unit(subject, kSizes[1], *growth.times[1]) / first, 2);
    return growth;
}

bool IsMarked(const Subject& subject, const Growth& growth) {
    return growth.ofUnit > (subject.kind == Kind::kWhole ? kSlackOfWhole : kSlackOfQuestion);
}

void Print(const Subject& subject, const Growth& growth, std::ofstream& table) {
    const bool isMarked = IsMarked(subject, growth);
    const char* kind = subject.kind == Kind::kQuestion ? "question" : "whole";
    std::printf("%-46s %-9s", subject.name, kind);
    table << '"' << subject.name << "\"," << kind;
    for (std::size_t i = 0; i < kSizes.size(); ++i) {
        if (!growth.times[i]) {
            std::printf(" %11s", "-");
            table << ',';
            continue;
        }
        const double unit = Unit(subject, kSizes[i], *growth.times[i]);
        std::printf(" %11.4g", unit);
        table << ',' << unit;
    }
    std::printf(" %9.3g%s\n", growth.ofUnit, isMarked ? "  GROWS FASTER" : "");
    table << ',' << growth.ofUnit << ',' << (isMarked ? "faster" : "") << '\n';
}

// Large blocks come from the heap and stay there: a fresh page of the system at each write would be measured
// instead.
void KeepPages() {
    constexpr int kLargestBlock = 1 << 25; // bytes, the most that the C library takes
    mallopt(M_MMAP_THRESHOLD, kLargestBlock);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

} // namespace

int main(int argc, char** argv) {
    KeepPages();
    if (argc != 2) return std::fputs("usage: qev_growth TABLE.csv\n", stderr), 2;
    std::ofstream table(argv[1]);
    std::array<std::unique_ptr<Input>, kSizes.size()> inputs;
    std::transform(kSizes.begin(), kSizes.end(), inputs.begin(),
                   [](int n) { return std::make_unique<Input>(n); });
    std::printf("%-46s %-9s %11s %11s %11s %9s\n", "ns / (n log2 n), or a question's ns / log2 n", "kind",
                "n = 1e3", "1e4", "1e5", "growth");
    table << "function,kind,unit at 1e3,unit at 1e4,unit at 1e5,growth,verdict\n";
    int marked = 0;
    for (const auto& subjects : {ContourSubjects(), GroupSubjects()})
        for (const Subject& subject : subjects) {
            const Growth growth = Measure(subject, inputs);
            marked += IsMarked(subject, growth);
            Print(subject, growth, table);
        }
    std::printf("%d functions grow faster than n log n\n", marked);
    return marked > 0;
}
