/// \file
/// Works: the library, its best peers and tight raw code asked the same questions in one run.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "questions.h"

namespace qev::bench {

/// One way to do a work; without functions it is left out.
struct Row {
    std::function<void(benchmark::State&, int)> time; ///< asks so many questions in turn, over and over
    std::function<std::vector<double>(int)> answers;  ///< what so many questions are answered, as numbers
};

/// A row from `make()`, which prepares the data and gives what answers question i, and from `read(answer)`,
/// which says the answer as one number. Only the answering is timed.
template <class Make, class Read>
Row Ask(Make make, Read read) {
    return {[make](benchmark::State& state, int questions) {
                auto ask = make();
                int i = 0;
                for (auto _ : state) {
                    benchmark::DoNotOptimize(ask(i));
                    i = i + 1 < questions ? i + 1 : 0;
                }
            },
            [make, read](int questions) {
                auto ask = make();
                std::vector<double> answers;
                for (int i = 0; i < questions; ++i) answers.push_back(read(ask(i)));
                return answers;
            }};
}
/// A row whose answers are numbers.
template <class Make>
Row Ask(Make make) {
    return Ask(std::move(make), [](auto answer) { return static_cast<double>(answer); });
}

/// What a work is measured beside: another library, or ours on input that should be no easier.
struct Peer {
    std::string name;
    Row row;
    bool isCompared =
        true; ///< false where it answers a neighbouring question, and its answers are not compared
};

/// What the library may need at most, as a multiple of what another row needs; 0 where nothing is promised.
struct Limits {
    double ofPeer = 0;   ///< of the fastest peer's time
    double ofByHand = 0; ///< of the raw code's time
    double ofPieces = 0; ///< of the raw code's counter "pieces"
};

/// A work with its rows, what it promises and how far answers may be apart.
struct Work {
    std::string subject;
    Row ours;
    std::vector<Peer> peers;
    Row byHand;
    Limits limits;
    double tolerance = 0;       ///< the most by which two answers may differ, in the unit of the answers
    int questions = kQuestions; ///< how many different questions there are
};

/// Registers a work's rows. Before the first of them is timed their answers are compared: where they differ
/// no row of the work is timed, and bench/run fails. True, so that a work can be added before main.
bool Add(Work work);

} // namespace qev::bench
