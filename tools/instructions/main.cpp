// qev_instructions WORK: does one small work of the library inside CountedWork, so that a profiler can count
// the instructions of the work without those of its preparation. qev_instructions alone prints the names of
// the works, and with --versions what the counts depend on. tools/check_instructions.py counts and compares.
//
// Each work is done twice before it counts: hosts ask again and again, and what a second question makes is
// there then.

#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <qev/qev.h>

#include <gnu/libc-version.h>
#include <lua.hpp>

namespace {

using math::DPOINT2;
using math::POLYPOS;
using Work = std::function<double()>;

std::mt19937_64 g_engine(1); // NOLINT: seeded, so that each run does the same

double Uniform(double low, double high) {
    return low + (high - low) * static_cast<double>(g_engine() >> 11) * 0x1p-53;
}
DPOINT2 PointWithin(double extent) {
    const double x = Uniform(-extent, extent);
    return {x, Uniform(-extent, extent)};
}

std::vector<DPOINT2> PointsWithin(double extent, int count) {
    std::vector<DPOINT2> points(count);
    for (DPOINT2& p : points) p = PointWithin(extent);
    return points;
}

constexpr double kRadius = 100; // mm, of the contours
constexpr int kQuestions = 64;

DPOINT2 OnWave(int i, int n) {
    const double angle = 0.95 * math::kTwoPi * i / n, r = kRadius * (1 + 0.1 * std::sin(7 * angle));
    return {r * std::cos(angle), r * std::sin(angle)};
}
std::shared_ptr<qev::CCadPolyline> Wave(int n, double bulge) {
    auto wave = std::make_shared<qev::CCadPolyline>(false);
    wave->SetStartPoint(OnWave(0, n));
    for (int i = 1; i <= n; ++i) wave->AddArc(OnWave(i, n), Uniform(-bulge, bulge));
    return wave;
}
std::shared_ptr<qev::CCadPolylineEx> BezierWave(int n) {
    auto wave = std::make_shared<qev::CCadPolylineEx>(false);
    wave->SetStartPoint(OnWave(0, n));
    for (int i = 0; i < n; ++i) {
        const DPOINT2 before = OnWave(i, n), after = OnWave(i + 1, n);
        wave->AddBezier(before + (after - OnWave(i - 1, n)) / 6, after - (OnWave(i + 2, n) - before) / 6,
                        after);
    }
    return wave;
}

class Picker : public qev::CPosCalculator {
public:
    using qev::CPosCalculator::_RetrieveNearestPos;
};
Work Nearest(const std::shared_ptr<qev::CCadObject>& contour, int questions) {
    const std::vector<DPOINT2> points = PointsWithin(1.2 * kRadius, questions);
    return [contour, points] {
        double sum = 0;
        for (const DPOINT2& p : points) {
            Picker picker;
            qev::PosInfo info;
            picker.Init(nullptr, &p, 0);
            picker._RetrieveNearestPos(contour.get(), &info, false);
            sum += info.nIndex + info.dRatio;
        }
        return sum;
    };
}

constexpr double kExtent = 3000; // mm, of the group on either side of the origin
std::shared_ptr<qev::CCadGroup> Circles() {
    auto group = std::make_shared<qev::CCadGroup>(false);
    for (int i = 0; i < 1000; ++i)
        group->PushBack(new qev::CCadCircle(PointWithin(kExtent), Uniform(1, 50), true, false));
    return group;
}

Work Pick() {
    const auto group = Circles();
    const std::vector<DPOINT2> points = PointsWithin(kExtent, kQuestions);
    return [group, points] {
        double hits = 0;
        for (const DPOINT2& p : points) hits += qev::Hit(group.get(), p, 10) ? 1 : 0;
        return hits;
    };
}

Work PickByIndex() {
    const auto group = Circles();
    const auto index = std::make_shared<const qev::CGroupIndex>(group.get());
    const std::vector<DPOINT2> points = PointsWithin(kExtent, kQuestions);
    return [group, index, points] {
        double hits = 0;
        for (const DPOINT2& p : points) hits += index->Hit(p, 10) ? 1 : 0;
        return hits;
    };
}

Work Walk() {
    const auto wave = Wave(1000, 0);
    std::vector<double> lengths(kQuestions);
    for (double& length : lengths) length = Uniform(0, wave->GetLength());
    return [wave, lengths] {
        double sum = 0;
        POLYPOS pos;
        for (const double length : lengths) {
            qev::GetPosByOffset(wave.get(), {0, 0}, length, pos);
            double back = 0;
            qev::GetLineLength_Dot2Dot(wave.get(), {0, 0}, pos, back);
            sum += back;
        }
        return sum;
    };
}

Work Zones() {
    constexpr int kZones = 1000;
    std::vector<math::PosRange> zones;
    for (int i = 0; i < kZones; ++i) {
        const int segment = static_cast<int>(Uniform(0, 4 * kZones));
        zones.emplace_back(POLYPOS{segment, Uniform(0, 0.5)}, POLYPOS{segment, Uniform(0.5, 1)});
    }
    return [zones] {
        auto combined = zones;
        qev::SortRange(&combined);
        qev::CombineRange(&combined, 4 * kZones);
        return static_cast<double>(combined.size())
               + qev::IsRangeIntersected(&combined, POLYPOS{4 * kZones, 0.0});
    };
}

Work Hull() {
    std::vector<qev::CConvexHelper::Point> points;
    for (int i = 0; i < 1000; ++i) {
        const DPOINT2 p = PointWithin(kRadius);
        if (math::Norm(p) <= kRadius) points.push_back({p.x, p.y, i});
    }
    return [points] {
        std::vector<qev::CConvexHelper::Point> corners;
        qev::CConvexHelper::ConvexGrahamScan(points, corners);
        return static_cast<double>(corners.size());
    };
}

Work Convert() {
    const std::vector<std::shared_ptr<const qev::CCadObject>> curves{
        std::make_shared<qev::CCadEllipse>(DPOINT2{0, 0}, 50, 25, 0, true, false), BezierWave(2)};
    return [curves] {
        double pieces = 0;
        for (const auto& curve : curves)
            for (const int type : {1, 2}) { // chords, then arcs
                const std::unique_ptr<qev::CCadPolyline> made(
                    qev::Convert2Polyline(curve.get(), type, 0.001));
                pieces += made->GetNodeCount();
            }
        return pieces;
    };
}

Work Lua() {
    const std::shared_ptr<lua_State> state(luaL_newstate(), lua_close);
    constexpr int kKeys = 1000; // more than a cache of a few hundred texts holds
    lua_newtable(state.get());
    std::vector<std::string> keys;
    for (int i = 0; i < kKeys; ++i) {
        keys.push_back(std::string("Key").append(std::to_string(i)));
        lua_newtable(state.get());
        lua_pushnumber(state.get(), i);
        lua_setfield(state.get(), -2, "Length");
        lua_setfield(state.get(), -2, keys.back().c_str());
    }
    const auto access = std::make_shared<qev::CLuaAccess>(state.get());
    return [state, access, keys] {
        double sum = 0;
        for (const std::string& key : keys) {
            double length = 0;
            access->Enter(key.c_str());
            access->Read(length, "Length", 0, kKeys);
            access->Write(length, "Length");
            access->Leave();
            sum += length;
        }
        return sum;
    };
}

Work Publish() {
    static int calls = 0; // the bus keeps its address
    const auto count = [](const char*, void* user, int, const char*) { return ++*static_cast<int*>(user); };
    for (int i = 0; i < 1000; ++i)
        qev::SubscribeMsgTopic(std::string("Topic").append(std::to_string(i)).c_str(), count, &calls);
    return [] {
        for (int i = 0; i < 1000; ++i) qev::PublishMsgTopic("Topic500", i, "all");
        return static_cast<double>(calls);
    };
}

struct Named {
    const char* name;
    Work (*make)();
};
const Named kWorks[] = {
    {"nearest_of_1000_lines", [] { return Nearest(Wave(1000, 0), kQuestions); }},
    {"nearest_of_10_arcs", [] { return Nearest(Wave(10, 0.5), kQuestions); }},
    {"nearest_of_20_beziers", [] { return Nearest(BezierWave(20), 2); }},
    {"pick_among_1000", Pick},
    {"pick_by_index_among_1000", PickByIndex},
    {"walk_over_1000_lines", Walk},
    {"combine_1000_zones", Zones},
    {"hull_of_1000", Hull},
    {"convert_curves", Convert},
    {"lua_1000_keys", Lua},
    {"publish_1000", Publish},
};

volatile double g_result = 0; // so that no work is left out

} // namespace

/// What is counted. It has a name that a profiler finds, and no work is put into its place.
extern "C" [[gnu::noinline]] void CountedWork(const std::function<double()>& work) {
    g_result = work();
}

int main(int argc, char** argv) {
    const std::string_view wanted = argc > 1 ? argv[1] : "";
    if (wanted == "--versions") std::printf("g++ %s, glibc %s\n", __VERSION__, gnu_get_libc_version());
    for (const Named& named : kWorks) {
        if (wanted.empty()) std::puts(named.name);
        if (wanted != named.name) continue;
        const Work work = named.make();
        g_result = work();
        g_result = work();
        CountedWork(work);
    }
}
