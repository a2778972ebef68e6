// Which contour of a group lies at a point.
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "peers/peers.h"
#include "support/contours.h"
#include "support/work.h"

namespace {

using namespace qev::bench;
using math::Bounds;
using math::DPOINT2;

constexpr double kReach = 2;    // mm from the point
constexpr double kSpacing = 30; // mm between the contours' centres
constexpr double kSize = 10;    // mm, their radius
constexpr int kLines = 6;       // of each contour

// n closed contours on a grid; contour i has the id i + 1.
struct Field {
    explicit Field(int n) {
        Random random(4);
        for (int i = 0; i < n; ++i) {
            auto contour = std::make_unique<qev::CCadPolyline>(false);
            contour->SetID(i + 1);
            std::vector<DPOINT2> corners;
            for (int k = 0; k < kLines; ++k) {
                const double angle = math::kTwoPi * k / kLines, r = kSize * random.Uniform(0.8, 1);
                corners.push_back(OnGrid(i, kSpacing) + DPOINT2{r * std::cos(angle), r * std::sin(angle)});
            }
            contour->SetStartPoint(corners[0]);
            boxes.emplace_back();
            for (int k = 0; k < kLines; ++k) {
                nodes.push_back({corners[k], corners[(k + 1) % kLines]});
                contour->AddLine(nodes.back().end);
                boxes.back().Add(corners[k]);
            }
            group.PushBack(contour.release());
        }
        for (DPOINT2& point : questions) {
            const int i = random.Index(n);
            const DPOINT2 beside = random.Point(1);
            point = nodes[i * kLines].start + beside;
        }
    }
    // The id of the contour among some that is nearest within the reach; 0 for none.
    template <class Indices>
    int NearestOf(const Indices& indices, const DPOINT2& p) const {
        double best = kReach * kReach, ratio = 0;
        int found = 0;
        for (const int i : indices)
            for (int k = 0; k < kLines; ++k) {
                const double square = SquareToLine(p, nodes[i * kLines + k], ratio);
                if (square < best) best = square, found = i + 1;
            }
        return found;
    }

    qev::CCadGroup group{false};
    std::vector<Node> nodes;
    std::vector<Bounds> boxes;
    std::vector<DPOINT2> questions = std::vector<DPOINT2>(kQuestions);
};

Bounds Round(const DPOINT2& p) {
    return {{p.x - kReach, p.y - kReach}, {p.x + kReach, p.y + kReach}};
}

auto OverGroup(int n) {
    return [n] {
        return [&field = Kept<Field>(n)](int i) {
            const qev::CCadObject* found = qev::Hit(&field.group, field.questions[i], kReach);
            return found ? found->GetID() : 0;
        };
    };
}

template <class Tree>
struct Indexed {
    explicit Indexed(int n) : tree(Kept<Field>(n).boxes) {}
    Tree tree;
};
template <class Tree>
auto ByTree(int n) {
    return [n] {
        return [&field = Kept<Field>(n), &tree = Kept<Indexed<Tree>>(n).tree,
                found = std::vector<int>()](int i) mutable {
            tree.Collect(Round(field.questions[i]), found);
            return field.NearestOf(found, field.questions[i]);
        };
    };
}

// By hand with an index: the contours of each cell of a grid; the cells are as wide as the field's spacing.
struct Grid {
    explicit Grid(int n) {
        const std::vector<Bounds>& boxes = Kept<Field>(n).boxes;
        for (int i = 0; i < n; ++i)
            for (int x = Cell(boxes[i].lower.x - kReach); x <= Cell(boxes[i].upper.x + kReach); ++x)
                for (int y = Cell(boxes[i].lower.y - kReach); y <= Cell(boxes[i].upper.y + kReach); ++y)
                    cells[Key(x, y)].push_back(i);
    }
    static int Cell(double at) { return static_cast<int>(std::floor(at / kSpacing)); }
    static long long Key(int x, int y) { return (static_cast<long long>(x) << 32) ^ y; }
    std::unordered_map<long long, std::vector<int>> cells;
};
auto ByGrid(int n) {
    return [n] {
        return [&field = Kept<Field>(n), &cells = Kept<Grid>(n).cells](int i) {
            const DPOINT2& p = field.questions[i];
            const auto found = cells.find(Grid::Key(Grid::Cell(p.x), Grid::Cell(p.y)));
            return found == cells.end() ? 0 : field.NearestOf(found->second, p);
        };
    };
}

// By hand without an index: every box is looked at.
auto ByScan(int n) {
    return [n] {
        return [&field = Kept<Field>(n), found = std::vector<int>()](int question) mutable {
            const DPOINT2& p = field.questions[question];
            found.clear();
            for (int i = 0, count = static_cast<int>(field.boxes.size()); i < count; ++i)
                if (field.boxes[i].GetSquaredDistance(p) < kReach * kReach) found.push_back(i);
            return field.NearestOf(found, p);
        };
    };
}

#if __has_include(<qevdata/group_index.h>)
struct GroupIndex {
    explicit GroupIndex(int n) : index(&Kept<Field>(n).group) {}
    qev::CGroupIndex index;
};
auto OverIndex(int n) {
    return [n] {
        return [&field = Kept<Field>(n), &index = Kept<GroupIndex>(n).index](int i) {
            const qev::CCadObject* found = index.Hit(field.questions[i], kReach);
            return found ? found->GetID() : 0;
        };
    };
}
#endif

bool AddField(int n) {
    const std::string of = std::to_string(n) + " contours";
    constexpr int kLong = 100'000; // from so many contours on a scan is asked a few questions only
    const int questions = n > kLong ? 16 : kQuestions;
    Add({"pick among " + of + ", no index", Ask(OverGroup(n)), {}, Ask(ByScan(n)), {0, 1.5}, 0, questions});
    const std::vector<Peer> peers{{"Boost", Ask(ByTree<BoostBoxes>(n))}, {"GEOS", Ask(ByTree<GeosBoxes>(n))}};
#if __has_include(<qevdata/group_index.h>)
    return Add({"pick among " + of + ", indexed", Ask(OverIndex(n)), peers, Ask(ByGrid(n)), {0.4, 0}});
#else
    // until there is an index of a group, what the group itself takes
    return Add(
        {"pick among " + of + ", indexed", Ask(OverGroup(n)), peers, Ask(ByGrid(n)), {0.4, 0}, 0, questions});
#endif
}

const bool added = AddField(100) && AddField(10'000) && AddField(1'000'000);

} // namespace
