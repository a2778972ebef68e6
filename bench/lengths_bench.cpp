// Walks along a contour, the point at a length, lengths between positions.
#include <string>
#include <utility>
#include <vector>

#include "peers/peers.h"
#include "support/contours.h"
#include "support/work.h"

namespace {

using namespace qev::bench;
using math::DPOINT2;
using math::POLYPOS;

// mm: sums of up to 1e5 lengths, and what a boundary between segments that is met to the last bit moves a
// ratio.
constexpr double kSameLength = 1e-7;

// The lengths up to each point of a wave, and lengths to ask for.
struct Sums {
    explicit Sums(int n) {
        before.push_back(0);
        for (const Node& node : Kept<LineWave>(n).nodes)
            before.push_back(before.back() + math::D2GetDistance(node.start, node.end));
        Random random(5);
        for (double& length : questions) length = random.Uniform(0, before.back());
    }
    POLYPOS At(double length) const {
        const auto after = std::upper_bound(before.begin() + 1, before.end() - 1, length);
        const int i = static_cast<int>(after - before.begin()) - 1;
        return {i, (length - before[i]) / (before[i + 1] - before[i])};
    }
    double Length(const POLYPOS& pos) const {
        return before[pos.nSegIndex] + pos.dRatio * (before[pos.nSegIndex + 1] - before[pos.nSegIndex]);
    }
    std::vector<double> before;
    std::vector<double> questions = std::vector<double>(kQuestions);
};

struct BoostWave : BoostLineString {
    explicit BoostWave(int n) : BoostLineString(Kept<LineWave>(n).points) {}
};

bool AddPointAt(int n, double ofPeer) {
    const auto ours = [n] {
        return [&contour = Kept<LineWave>(n).contour, &sums = Kept<Sums>(n)](int i) {
            POLYPOS pos;
            DPOINT2 point;
            qev::GetPosByOffset(&contour, {0, 0}, sums.questions[i], pos);
            qev::PosToCoor(&contour, pos.nSegIndex, pos.dRatio, point);
            return point;
        };
    };
    const auto boost = [n] {
        return [&line = Kept<BoostWave>(n), &sums = Kept<Sums>(n)](int i) {
            return line.PointAt(sums.questions[i]);
        };
    };
    const auto byHand = [n] {
        return [&nodes = Kept<LineWave>(n).nodes, &sums = Kept<Sums>(n)](int i) {
            const POLYPOS pos = sums.At(sums.questions[i]);
            const Node& node = nodes[pos.nSegIndex];
            return node.start + (node.end - node.start) * pos.dRatio;
        };
    };
    return Add({"point at a length of " + std::to_string(n),
                Ask(ours, Blend),
                {{"Boost", Ask(boost, Blend)}},
                Ask(byHand, Blend),
                {ofPeer, 0},
                kSameLength});
}

// The second position of a question, behind the first.
int Other(int i) {
    return (i + 1) % kQuestions;
}

bool AddBetween(int n) {
    const auto ours = [n] {
        std::vector<POLYPOS> positions;
        for (const double length : Kept<Sums>(n).questions) positions.push_back(Kept<Sums>(n).At(length));
        return [&contour = Kept<LineWave>(n).contour, positions](int i) {
            double length = 0;
            qev::GetLineLength_Dot2Dot2(&contour, positions[i], positions[Other(i)], length);
            return length;
        };
    };
    const auto byHand = [n] {
        std::vector<POLYPOS> positions;
        for (const double length : Kept<Sums>(n).questions) positions.push_back(Kept<Sums>(n).At(length));
        return [&sums = Kept<Sums>(n), positions](int i) {
            return sums.Length(positions[Other(i)]) - sums.Length(positions[i]);
        };
    };
    // Both positions are looked at for whether they lie on the contour, which by hand nobody asks.
    return Add({"length between, of " + std::to_string(n), Ask(ours), {}, Ask(byHand), {0, 10}, kSameLength});
}

const bool added =
    AddPointAt(1000, 1 / 25.0) && AddPointAt(100'000, 1 / 1500.0) && AddBetween(1000) && AddBetween(100'000);

} // namespace
