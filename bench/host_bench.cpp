// The host program on many lines: reading them, and joining them to contours.
#include <charconv>
#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/drawing/join.h"
#include "host/dxf/dxf_objects.h"
#include "support/contours.h"
#include "support/work.h"

namespace {

using namespace qev::bench;
using math::DPOINT2;

constexpr int kSides = 10;          // of each contour
constexpr double kTolerance = 0.01; // mm between ends that are joined

// The lines of contours on a grid, in no order.
struct Lines {
    explicit Lines(int n) {
        Random random(11);
        for (int i = 0; i < n; ++i) {
            const DPOINT2 centre = OnGrid(i / kSides, 30);
            const auto corner = [&](int k) {
                const double angle = math::kTwoPi * (k % kSides) / kSides;
                return centre + DPOINT2{10 * std::cos(angle), 10 * std::sin(angle)};
            };
            lines.push_back({corner(i % kSides), corner(i % kSides + 1)});
        }
        random.Shuffle(lines);
    }
    std::vector<Node> lines;
};
// Lines that all end in one point.
struct Spokes {
    explicit Spokes(int n) {
        for (int i = 0; i < n; ++i) {
            const double angle = math::kTwoPi * i / n;
            lines.push_back({{0, 0}, {1e5 * std::cos(angle), 1e5 * std::sin(angle)}});
        }
    }
    std::vector<Node> lines;
};

struct Text {
    explicit Text(int n) {
        text = "0\nSECTION\n2\nENTITIES\n";
        for (const Node& line : Kept<Lines>(n).lines)
            text += "0\nLINE\n8\nCut\n10\n" + std::to_string(line.start.x) + "\n20\n"
                    + std::to_string(line.start.y) + "\n11\n" + std::to_string(line.end.x) + "\n21\n"
                    + std::to_string(line.end.y) + "\n";
        text += "0\nENDSEC\n0\nEOF\n";
    }
    std::string text;
};

// By hand: code and value in turn, the numbers of the coordinates.
struct Parsed {
    int lines = 0;
    double sum = 0;
};
Parsed Parse(std::string_view text) {
    Parsed parsed;
    const auto next = [&text] {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end + 1);
        return line;
    };
    while (!text.empty()) {
        int code = 0;
        const std::string_view codeText = next();
        std::from_chars(codeText.data(), codeText.data() + codeText.size(), code);
        const std::string_view value = next();
        if (code == 0 && value == "LINE") ++parsed.lines;
        if (code < 10 || code >= 40) continue;
        double number = 0;
        std::from_chars(value.data(), value.data() + value.size(), number);
        parsed.sum += number;
    }
    return parsed;
}

const bool read = [] {
    constexpr int kLines = 100'000;
    return Add({"read 100000 lines",
                Ask([] {
                    return [&text = Kept<Text>(kLines).text](int) {
                        host::ErrorLog log(false);
                        host::Drawing drawing;
                        host::ReadDxfBytes(text, log, drawing);
                        return drawing.root.GetNumOfChild();
                    };
                }),
                {},
                Ask([] {
                    return [&text = Kept<Text>(kLines).text](int) {
                        const Parsed parsed = Parse(text);
                        benchmark::DoNotOptimize(parsed.sum);
                        return parsed.lines;
                    };
                }),
                {},
                0,
                1});
}();

std::unique_ptr<qev::CCadGroup> GroupOf(const std::vector<Node>& lines) {
    auto group = std::make_unique<qev::CCadGroup>(false);
    for (const Node& line : lines) group->PushBack(new qev::CCadLine(line.start, line.end, false));
    return group;
}

// Joining takes its lines, so that they are made anew each time, while the clock stands.
template <class L>
Row Joined(int n) {
    return {[n](benchmark::State& state, int) {
                for (auto _ : state) {
                    state.PauseTiming();
                    auto group = GroupOf(Kept<L>(n).lines);
                    state.ResumeTiming();
                    benchmark::DoNotOptimize(host::JoinOpenPieces(*group, kTolerance));
                    state.PauseTiming();
                    group.reset();
                    state.ResumeTiming();
                }
            },
            [n](int) {
                const auto group = GroupOf(Kept<L>(n).lines);
                host::JoinOpenPieces(*group, kTolerance);
                return std::vector<double>{static_cast<double>(group->GetNumOfChild())};
            }};
}

// By hand: a table of the free ends by cells as wide as the tolerance, a chain from each free line both ways,
// and a polyline for each. An end in a neighbouring cell is looked for as well.
class JoinByHand {
public:
    explicit JoinByHand(const std::vector<Node>& lines) : m_vecLines(lines), m_vecUsed(lines.size()) {
        m_cells.reserve(2 * lines.size());
        for (std::size_t i = 0; i < 2 * lines.size(); ++i) m_cells[Key(PointOf(i), 0, 0)].push_back(i);
    }
    int Count() {
        int contours = 0;
        for (std::size_t i = 0; i < m_vecLines.size(); ++i) {
            if (m_vecUsed[i]) continue;
            ++contours;
            m_vecUsed[i] = true;
            qev::CCadPolyline contour(false);
            contour.SetStartPoint(m_vecLines[i].start);
            Grow(2 * i + 1, contour);
            Grow(2 * i, contour);
        }
        return contours;
    }

private:
    const DPOINT2& PointOf(std::size_t end) const {
        return end % 2 ? m_vecLines[end / 2].end : m_vecLines[end / 2].start;
    }
    static unsigned long long Key(const DPOINT2& p, int dx, int dy) {
        const auto x = static_cast<long long>(std::floor(p.x / kTolerance)) + dx;
        const auto y = static_cast<long long>(std::floor(p.y / kTolerance)) + dy;
        return static_cast<unsigned long long>(x) * 0x9E3779B97F4A7C15ULL
               ^ static_cast<unsigned long long>(y);
    }
    void Grow(std::size_t end, qev::CCadPolyline& contour) {
        for (std::size_t next = end; (next = Nearest(PointOf(next))) != kNone; next ^= 1) {
            m_vecUsed[next / 2] = true;
            contour.AddLine(PointOf(next ^ 1));
        }
    }
    std::size_t Nearest(const DPOINT2& p) {
        std::size_t found = kNone;
        double best = kTolerance * kTolerance;
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy) {
                const auto cell = m_cells.find(Key(p, dx, dy));
                if (cell == m_cells.end()) continue;
                std::erase_if(cell->second, [this](std::size_t end) { return m_vecUsed[end / 2]; });
                for (const std::size_t end : cell->second) {
                    const DPOINT2 gap = PointOf(end) - p;
                    if (math::Dot(gap, gap) <= best) best = math::Dot(gap, gap), found = end;
                }
            }
        return found;
    }

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    const std::vector<Node>& m_vecLines;
    std::vector<bool> m_vecUsed;
    std::unordered_map<unsigned long long, std::vector<std::size_t>> m_cells;
};

const bool join = Add({"join 100000 lines",
                       Joined<Lines>(100'000),
                       {},
                       Ask([] { return [](int) { return JoinByHand(Kept<Lines>(100'000).lines).Count(); }; }),
                       {},
                       0,
                       1});
// Ends that all lie in one point, beside as many that are joined elsewhere.
const bool spokes = Add({"join 100000 from one point",
                         Joined<Spokes>(100'000),
                         {{"ends apart", Joined<Lines>(100'000), false}},
                         {},
                         {1.5, 0},
                         0,
                         1});

} // namespace
