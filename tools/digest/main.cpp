// Prints one line for each subject: its name, the number of results and their hash. Two systems agree when
// their outputs do. The lines go from the maths to what rests on it, so that of several lines that differ the
// first one is nearest to the cause. Every subject draws from a sequence of its own: a result more in one of
// them leaves the lines of the others as they are.
#include <cinttypes>
#include <cstdio>

#include "digest.h"

int main() {
    constexpr digest::Subject kSubjects[] = {{"elementary", digest::AddElementary},
                                             {"arcs", digest::AddArcs},
                                             {"ellipses", digest::AddEllipses},
                                             {"beziers", digest::AddBeziers},
                                             {"objects", digest::AddObjects},
                                             {"conversions", digest::AddConversions},
                                             {"picks", digest::AddPicks},
                                             {"contour queries", digest::AddContourQueries},
                                             {"cuts", digest::AddCuts},
                                             {"arc math", digest::AddArcMath},
                                             {"directions", digest::AddDirections},
                                             {"positions", digest::AddPositions},
                                             {"hulls", digest::AddHulls},
                                             {"zones", digest::AddZones},
                                             {"topology", digest::AddTopology},
                                             {"sides", digest::AddSides}};
    for (const digest::Subject& subject : kSubjects) {
        digest::Sequence random;
        digest::Digest results;
        subject.add(random, results);
        std::printf("%-16s %6d %016" PRIx64 "\n", subject.name, results.GetCount(), results.GetHash());
    }
}
