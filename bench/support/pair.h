/// \file
/// Pairs of benchmarks: ours and the limit that it is measured against, in one run.
#pragma once

#include <string>

#include <benchmark/benchmark.h>

namespace qev::bench {

/// Registers "subject/raw" and "subject/ours"; bench/run prints their ratio beside what it may be at most.
/// The two functions run the same work; a label carries the bound.
inline bool Pair(const std::string& subject, double bound, void (*raw)(benchmark::State&),
                 void (*ours)(benchmark::State&)) {
    benchmark::RegisterBenchmark((subject + "/raw").c_str(), raw);
    benchmark::RegisterBenchmark((subject + "/ours").c_str(), [ours, bound](benchmark::State& state) {
        ours(state);
        state.SetLabel(std::to_string(bound));
    });
    return true;
}

} // namespace qev::bench
