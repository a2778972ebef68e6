#include <map>

#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// Numbers of the parents and depths as text, a contour after the other: "-:0 1:1" and so on.
std::string Written(const std::list<CCadObject*>& selection) {
    std::vector<ContourNesting> nesting;
    GetNesting(&selection, nesting);
    std::map<const CCadObject*, std::string> numbers{{nullptr, "-"}};
    std::string text;
    for (const auto& each : nesting) numbers.emplace(each.pContour, std::to_string(numbers.size()));
    for (const auto& [_, parent, depth] : nesting)
        text += (text.empty() ? "" : " ") + numbers[parent] + ":" + std::to_string(depth);
    return text;
}

struct Drawn : CCadGroup {
    explicit Drawn(const std::vector<const char*>& texts) {
        for (const char* text : texts) PushBack(Object(text).release());
    }
};

TEST(Nesting, NamedDrawings) {
    constexpr const char* kTilted = "0.1 0.1 L 9.3 0.7 L 7.1 6.3 L 0.9 5.7 L 0.1 0.1";
    constexpr const char* kTurned = "9.3 0.7 L 7.1 6.3 L 0.9 5.7 L 0.1 0.1 L 9.3 0.7";
    for (const auto& [name, contours, written] : Table<const char*, std::vector<const char*>, const char*>{
             {"a ring in a ring", {"circle 0 0 1", "circle 0 0 3", "circle 0 0 2"}, "3:2 -:0 2:1"},
             {"two in one", {"rectangle 0 0 9 9 0", "circle 2 2 1", "circle 6 6 1 cw"}, "-:0 1:1 1:1"},
             {"drawn twice", {"circle 0 0 1", "circle 0 0 1"}, "-:0 1:1"},
             {"drawn from another start", {"0 0 L 9 0 L 9 7 L 0 0", "9 7 L 9 0 L 0 0 L 9 7"}, "-:0 1:1"},
             {"to the rounding of its area", {kTilted, kTurned}, "-:0 1:1"},
             {"and in the other order", {kTurned, kTilted}, "-:0 1:1"},
             {"alike but for curves", {"5 0 L 9 4 L 5 0", "5 0 B 0 0 0 0 9 4 B 0 0 0 0 5 0"}, "-:0 -:0"},
             {"drawn alike up to a side", {kSquare, "0 0 L 10 0 L -3 -9 L -3 5 L 0 0"}, "-:0 -:0"},
             {"alike from a side on, beside it", {"0 0 A 9 4 1 L 0 0", "0 0 A 9 4 -1.1 L 0 0"}, "-:0 -:0"},
             {"a side shared from inside", {kSquare, "10 2 L 6 2 L 6 8 L 10 8 L 10 2"}, "-:0 1:1"},
             {"a joint on a side from inside", {kSquare, "10 5 L 8 6 L 8 4 L 10 5"}, "-:0 1:1"},
             {"circles that touch from inside", {"circle 0 0 5", "circle 3 0 2"}, "-:0 1:1"},
             {"circles that touch from outside", {"circle 0 0 5", "circle 7 0 2"}, "-:0 -:0"},
             {"circles that cross off their joints", {"circle 0 0 10", "circle 9.5 9.5 5"}, "-:0 1:1"},
             {"an ellipse twice", {"ellipse 0 0 5 2 0", "ellipse 0 0 5 2 0"}, "-:0 1:1"},
             {"ellipses that cross", {"ellipse 0 0 5 2 0", "ellipse 0 0 1 4 0"}, "-:0 1:1"},
             {"barely in", {kSquare, "0 10 L 0 9 L 0 8 L 0 7 L -2 6 L 15e-7 5 L 4 15 L 0 10"}, "-:0 1:1"},
             {"along a side, then in", {kSquare, "10 0 L 10 4 L 10 8 L 9 9 L 12 9 L 12 0 L 10 0"}, "-:0 1:1"},
             {"in a hollow", {"0 0 L 9 0 L 9 9 L 8 9 L 8 1 L 0 1 L 0 0", "circle 4 5 2"}, "-:0 -:0"},
             {"open ones are left out", {kSquare, kOpenSquare, "line 1 1 2 2", "circle 5 5 1"}, "-:0 1:1"},
             {"beyond measure", {"circle 1e80 0 1", "circle 0 0 1", "0 0 L 0 0"}, "-:0 -:0 2:1"}}) {
        const Drawn drawn(contours);
        EXPECT_EQ(Written(drawn.GetObjectsList()), written) << name;
    }
    std::vector<ContourNesting> nesting(3);
    GetNesting(nullptr, nesting);
    EXPECT_TRUE(nesting.empty());
}

} // namespace
