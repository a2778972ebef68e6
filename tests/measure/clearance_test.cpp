#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

TEST(Clearance, NamedDistances) {
    for (const auto& [name, a, b, distance] : Table<const char*, const char*, const char*, double>{
             {"lines that cross", "line 0 0 10 7", "line 0 3 10 1", 0},
             {"a line that ends on another", "line 0 0 10 0", "line 3 0 3 5", 0},
             {"parallel lines", "line 0 0 10 0", "line -5 3 5 3", 3},
             {"lines on one carrier", "line 0 0 10 0", "line 14 0 20 0", 4},
             {"lines over each other", "line 0 0 10 0", "line 5 0 20 0", 0},
             {"a circle and a line beside it", "circle 0 0 5", "line -10 7 10 7", 2},
             {"a line that touches a circle", "circle 0 0 5", "line -10 5 10 5", 0},
             {"a line through a circle", "circle 0 0 5", "line -10 1 10 2", 0},
             {"a line in a circle", "circle 0 0 5", "line -1 1 1 1", 5 - std::sqrt(2)},
             {"circles apart", "circle 0 0 5", "circle 30 40 5", 40},
             {"a circle in a circle", "circle 0 0 50", "circle 3 4 5", 40},
             {"circles of one centre", "circle 1 2 5", "circle 1 2 3 cw", 2},
             {"circles that touch", "circle 0 0 5", "circle 3 4 10", 0},
             {"circles that cross", "circle 0 0 5", "circle 0 4 5", 0},
             {"one circle twice", "circle 0 0 5", "circle 0 0 5", 0},
             {"nearly straight arcs", "0 0 A 100 0 1e-8", "0 3 A 100 3 1e-8", 3},
             {"an arc beside the circle's other half", "arc 0 0 5 0 3.141592653589793", "line -9 -8 9 -8", 8},
             {"ellipse and curve", "ellipse 0 0 .04 .0125 0", "-.19 .3 B .01 .15 .21 0 .61 -.3", 0.1},
             {"one nearly as near", "0 0 B 0 0 9 0 9 0", "1 4 B 2 1e-6 4 1e-6 5 4 L 6 9 B 6 9 8 1 8 1", 1},
             {"ellipses that cross", "ellipse 0 0 5 2 0", "ellipse 0 0 2 5 0", 0},
             {"ellipses of one shape", "ellipse 0 0 5 2 0", "ellipse 0 0 10 4 0", 2},
             {"a dot in a hollow", "dot 5 5", kOpenSquare, 5},
             {"dots", "dot 0 0", "dot 3 4", 5},
             {"far out", "line 1e8 0 100000010 0", "circle 100000005 8 5", 3},
             {"a bulge beyond all", "0 0 A 1e-3 0 8e72", "line 0 -4.8e69 1 -4.8e69", 8e68},
             {"no object", "null", "dot 0 0", kInf},
             {"beyond measure", "line 1e80 0 1 1", "dot 0 0", kInf},
             {"a group that holds nothing", "group", "dot 0 0", kInf}}) {
        const auto first = Object(a), second = Object(b);
        const double tolerance = std::isfinite(distance) ? 1e-9 * distance : 0;
        for (const double found :
             {GetClearance(first.get(), second.get()), GetClearance(second.get(), first.get())})
            if (!(found == distance)) EXPECT_NEAR(found, distance, tolerance) << name;
    }
}

TEST(Clearance, GroupsCountByTheirMembers) {
    CCadGroup group, *const inner = AddGroup(group);
    Fill(*inner, {Object("circle 0 0 1").release(), TextOf(Object("circle 10 0 1").release())});
    inner->PushBack(&group); // holds what holds it
    EXPECT_NEAR(GetClearance(&group, Object("dot 10 4").get()), 3, 1e-12);
    EXPECT_EQ(GetClearance(&group, &group), 0);
}

} // namespace
