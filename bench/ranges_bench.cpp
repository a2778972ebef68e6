// Zones of a contour: sorted, combined, asked.
#include <algorithm>
#include <string>
#include <vector>

#include "peers/peers.h"
#include "support/contours.h"
#include "support/work.h"

namespace {

using namespace qev::bench;
using math::POLYPOS;
using math::PosRange;
using Ranges = std::vector<PosRange>;

POLYPOS Place(double at) {
    return {static_cast<int>(at), at - std::floor(at)};
}

// n zones in the order of their starts, a segment or so each, on a contour of 2 n segments. Every fourth
// meets the one before it; or none meets another.
Ranges Zones(int n, bool meeting) {
    Random random(6);
    Ranges zones;
    for (int i = 0; i < n; ++i) {
        const double start = 2 * i + random.Uniform(0.1, 0.4);
        const double end = 2 * i + (meeting && i % 4 == 2 ? 2.5 : random.Uniform(0.6, 1.9));
        zones.emplace_back(Place(start), Place(end));
    }
    return zones;
}
struct Apart {
    explicit Apart(int n) : zones(Zones(n, false)) {
        Random random(7);
        for (POLYPOS& pos : questions) pos = Place(random.Uniform(0, 2 * n));
    }
    Ranges zones;
    std::vector<POLYPOS> questions = std::vector<POLYPOS>(kQuestions);
};
struct Meeting {
    explicit Meeting(int n) : zones(Zones(n, true)) {}
    Ranges zones;
};
struct Shuffled {
    explicit Shuffled(int n) : zones(Zones(n, true)) {
        Random random(8);
        random.Shuffle(zones);
    }
    Ranges zones;
};

constexpr int kMany = 10'000;

// A position among the zones of a list, one after the other.
const bool inList =
    Add({"in one of 10000 zones, a list",
         Ask([] {
             return [&apart = Kept<Apart>(kMany)](int i) {
                 return qev::IsRangeIntersected(&apart.zones, apart.questions[i]);
             };
         }),
         {},
         Ask([] {
             return [&apart = Kept<Apart>(kMany)](int i) {
                 const POLYPOS& pos = apart.questions[i];
                 return std::any_of(apart.zones.begin(), apart.zones.end(), [&pos](const PosRange& zone) {
                     return At(zone.start) <= At(pos) && At(pos) <= At(zone.end);
                 });
             };
         }),
         {0, 1.5}});

// A position among zones that are kept in order.
struct IclApart {
    explicit IclApart(int n) {
        for (const PosRange& zone : Kept<Apart>(n).zones) zones.Add(At(zone.start), At(zone.end));
    }
    IclZones zones;
};
#if __has_include(<qev/range/range_set.h>)
struct SetOfRanges {
    explicit SetOfRanges(int n) : contour(2 * n), set(&contour.contour, Kept<Apart>(n).zones) {}
    LineWave contour;
    qev::CRangeSet set;
};
bool IsHeld(int i) {
    return Kept<SetOfRanges>(kMany).set.Holds(Kept<Apart>(kMany).questions[i]);
}
#else
bool IsHeld(int i) { // until there is a set of ranges, what a list takes
    return qev::IsRangeIntersected(&Kept<Apart>(kMany).zones, Kept<Apart>(kMany).questions[i]);
}
#endif
const bool inSet = Add({"in one of 10000 zones, a set",
                        Ask([] { return IsHeld; }),
                        {{"Boost.ICL", Ask([] {
                              return [&zones = Kept<IclApart>(kMany).zones, &apart = Kept<Apart>(kMany)](
                                         int i) { return zones.Holds(At(apart.questions[i])); };
                          })}},
                        Ask([] {
                            std::vector<double> starts, ends;
                            for (const PosRange& zone : Kept<Apart>(kMany).zones)
                                starts.push_back(At(zone.start)), ends.push_back(At(zone.end));
                            return [starts, ends, &apart = Kept<Apart>(kMany)](int i) {
                                const double at = At(apart.questions[i]);
                                const auto after = std::upper_bound(starts.begin(), starts.end(), at);
                                return after != starts.begin() && at <= ends[after - starts.begin() - 1];
                            };
                        }),
                        {0, 1.2}});

// Zones beside the gaps between them: no two meet, so that each is looked at beside each.
const bool lists = [] {
    constexpr int kEach = 1000;
    const auto gaps = [] {
        const Ranges& zones = Kept<Apart>(kEach).zones;
        Ranges between;
        for (int i = 0; i + 1 < kEach; ++i)
            between.emplace_back(Place(At(zones[i].end) + 0.01), Place(At(zones[i + 1].start) - 0.01));
        return between;
    };
    return Add({"1000 zones beside 1000",
                Ask([gaps] {
                    return [&apart = Kept<Apart>(kEach), between = gaps()](int) {
                        return qev::IsRangeIntersected(&apart.zones, &between);
                    };
                }),
                {},
                Ask([gaps] {
                    return [&apart = Kept<Apart>(kEach), between = gaps()](int) {
                        for (const PosRange& a : apart.zones)
                            for (const PosRange& b : between)
                                if (At(a.start) <= At(b.end) && At(b.start) <= At(a.end)) return true;
                        return false;
                    };
                }),
                {0, 1.5},
                0,
                1});
}();

constexpr int kLong = 100'000;

// Each row copies the list first, as it is changed in place.
const bool combine = Add({"combine 100000 sorted",
                          Ask([] {
                              return [&meeting = Kept<Meeting>(kLong), zones = Ranges()](int) mutable {
                                  zones = meeting.zones;
                                  qev::CombineRange(&zones, 2 * kLong);
                                  return zones.size();
                              };
                          }),
                          {{"Boost.ICL", Ask([] {
                                return [&meeting = Kept<Meeting>(kLong)](int) {
                                    IclZones zones;
                                    for (const PosRange& zone : meeting.zones)
                                        zones.Add(At(zone.start), At(zone.end));
                                    return zones.GetCount();
                                };
                            })}},
                          Ask([] {
                              return [&meeting = Kept<Meeting>(kLong), zones = Ranges()](int) mutable {
                                  zones = meeting.zones;
                                  std::size_t last = 0;
                                  for (std::size_t i = 1; i < zones.size(); ++i)
                                      if (At(zones[last].end) < At(zones[i].start))
                                          zones[++last] = zones[i];
                                      else if (At(zones[last].end) < At(zones[i].end))
                                          zones[last].end = zones[i].end;
                                  zones.resize(last + 1);
                                  return zones.size();
                              };
                          }),
                          {0, 1.3},
                          0,
                          1});

double StartOfMiddle(const Ranges& zones) {
    return At(zones[zones.size() / 2].start);
}
const bool sort =
    Add({"sort 100000",
         Ask([] {
             return [&shuffled = Kept<Shuffled>(kLong), zones = Ranges()](int) mutable {
                 zones = shuffled.zones;
                 qev::SortRange(&zones);
                 return StartOfMiddle(zones);
             };
         }),
         {},
         Ask([] {
             return [&shuffled = Kept<Shuffled>(kLong), zones = Ranges()](int) mutable {
                 zones = shuffled.zones;
                 std::sort(zones.begin(), zones.end(),
                           [](const PosRange& a, const PosRange& b) { return At(a.start) < At(b.start); });
                 return StartOfMiddle(zones);
             };
         }),
         {0, 1.3},
         0,
         1});

} // namespace
