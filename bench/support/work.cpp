// A row's name is "subject/who", its label what bench/report.py needs to know: the limits for ours, "by hand"
// or "peer" for the others. Answers are compared once a work, when its first row is about to be timed, so
// that a filter on the names leaves out the comparing too.
#include "work.h"

#include <cmath>
#include <memory>
#include <optional>

namespace qev::bench {
namespace {

using Answers = std::vector<double>;

std::string Difference(const Answers& ours, const Answers& others, const std::string& who, double tolerance) {
    for (std::size_t i = 0; i < ours.size(); ++i)
        if (!(std::abs(ours[i] - others[i]) <= tolerance))
            return "question " + std::to_string(i) + ": ours " + std::to_string(ours[i]) + ", " + who + " "
                   + std::to_string(others[i]);
    return {};
}

// What the rows do not agree on; empty where they do.
std::string Disagreement(const Work& work) {
    const Answers ours = work.ours.answers(work.questions);
    std::string found;
    if (work.byHand.answers)
        found = Difference(ours, work.byHand.answers(work.questions), "by hand", work.tolerance);
    for (const Peer& peer : work.peers)
        if (found.empty() && peer.isCompared)
            found = Difference(ours, peer.row.answers(work.questions), peer.name, work.tolerance);
    return found;
}

class Registered {
public:
    explicit Registered(Work work) : m_work(std::move(work)) {}

    void Run(benchmark::State& state, const Row& row, const std::string& label) {
        if (!m_disagreement) m_disagreement = Disagreement(m_work);
        if (!m_disagreement->empty()) return state.SkipWithError(m_disagreement->c_str());
        row.time(state, m_work.questions);
        state.SetLabel(label);
    }
    const Work& Get() const { return m_work; }

private:
    Work m_work;
    std::optional<std::string> m_disagreement;
};

} // namespace

bool Add(Work work) {
    const auto kept = std::make_shared<Registered>(std::move(work));
    const auto add = [&kept](const std::string& who, const Row& row, const std::string& label) {
        benchmark::RegisterBenchmark(
            (kept->Get().subject + "/" + who).c_str(),
            [kept, &row, label](benchmark::State& state) { kept->Run(state, row, label); });
    };
    const Work& shared = kept->Get();
    const auto& [ofPeer, ofByHand, ofPieces] = shared.limits;
    add("ours", shared.ours,
        "limits " + std::to_string(ofPeer) + " " + std::to_string(ofByHand) + " " + std::to_string(ofPieces));
    for (const Peer& peer : shared.peers) add(peer.name, peer.row, "peer");
    if (shared.byHand.time) add("by hand", shared.byHand, "by hand");
    return true;
}

} // namespace qev::bench
